#include <orvmath/polygon.h>

#include "polygon_detail.h"

#include <cmath>

#if defined(__SSE2__) || defined(_M_X64)
#include <emmintrin.h>
#define ORVMATH_POLYGON_SSE2 1
#endif

namespace ORVMATH {

namespace {

constexpr int kTooFewVertices = 3;  // thrown (as a plain int) by the convexity tests below three vertices

// The planar cross product, as CrossProduct of two 2-vectors computes it.
using detail::Cross;

// +1, 0 or -1; NaN counts as negative.
int Sign(double c) noexcept { return c > 0 ? 1 : (c == 0 ? 0 : -1); }

// Follows the sense of successive turns: the first non-zero sign becomes the
// reference, and a later opposite sign is a reversal. Zeros never decide.
class TurnSense {
public:
    // False on the first sign opposite to the reference.
    bool Accept(int s) noexcept {
        if (s * m_ref == -1) return false;
        if (m_ref == 0) m_ref = s;
        return true;
    }
    bool Undecided() const noexcept { return m_ref == 0; }

private:
    int m_ref = 0;
};

// Vertex quadrant around pt, counter-clockwise from 0 (upper right); ties
// go to the higher x and y.
int Quadrant(const CDblPoint& v, const CDblPoint& pt) noexcept {
    if (v.y >= pt.y) return v.x >= pt.x ? 0 : 1;
    return v.x < pt.x ? 2 : 3;
}

}  // namespace

double PolygonArea(const CDblPointArray& polygon) {
    const INT_PTR n = polygon.GetSize();
    if (n < 3) return 0.0;
    const CDblPoint* v = polygon.GetData();
    double s = 0.0;
    for (INT_PTR i = 0; i < n; ++i) {
        const CDblPoint& a = v[i];
        const CDblPoint& b = v[i + 1 == n ? 0 : i + 1];
        s += (b.x - a.x) * (a.y + b.y);
    }
    return std::fabs(s * 0.5);
}

bool PtInPolygon(const CDblPointArray& polygon, const CDblPoint& pt) {
    const INT_PTR n = polygon.GetSize();
    if (n < 3) throw kTooFewVertices;
    const CDblPoint* v = polygon.GetData();
    TurnSense sense;
    for (INT_PTR i = 0; i < n; ++i) {
        if (!sense.Accept(Sign(Cross(v[i + 1 == n ? 0 : i + 1] - v[i], pt - v[i])))) return false;
    }
    return true;
}

namespace {

// The first index from i on (at most n) where a block of four vertices does
// not lie wholly in quadrant q around pt, stepping four at a time. Only a
// shortcut past the runs a winding count ignores: the test is strict enough
// never to pass a vertex whose Quadrant differs from q (a NaN coordinate ends
// the run), and the caller treats the vertices from the returned index one by
// one as before.
INT_PTR SkipQuadrantRun(const CDblPoint* v, INT_PTR i, INT_PTR n, int q, const CDblPoint& pt) noexcept {
#ifdef ORVMATH_POLYGON_SSE2
    const __m128d p = _mm_set_pd(pt.y, pt.x);
    // Lanes (x, y). Quadrants 0, 1 and 3 compare with >= and then flip the
    // lanes that must be false; quadrant 2 needs x < pt.x and y < pt.y.
    const __m128d all = _mm_castsi128_pd(_mm_set1_epi32(-1)), none = _mm_setzero_pd();
    const __m128d flip = q == 1 ? _mm_move_sd(none, all) : (q == 3 ? _mm_move_sd(all, none) : none);
    const auto inQ = [&](const CDblPoint& a) {
        const __m128d c = _mm_loadu_pd(&a.x);
        return q == 2 ? _mm_cmplt_pd(c, p) : _mm_xor_pd(_mm_cmpge_pd(c, p), flip);
    };
    for (; i + 4 <= n; i += 4) {
        const __m128d in = _mm_and_pd(_mm_and_pd(inQ(v[i]), inQ(v[i + 1])), _mm_and_pd(inQ(v[i + 2]), inQ(v[i + 3])));
        if (_mm_movemask_pd(in) != 3) break;
    }
#else
    (void)v, (void)n, (void)q, (void)pt;
#endif
    return i;
}

}  // namespace

bool PtInPolygonEx(const CDblPointArray& polygon, const CDblPoint& pt) {
    const INT_PTR n = polygon.GetSize();
    // Indexed access, so that an empty array raises the array's own
    // invalid-argument exception.
    const CDblPoint& last = polygon[n - 1];
    const CDblPoint* v = polygon.GetData();
    int q = Quadrant(last, pt);
    int w = 0;  // quarter turns around pt
    for (INT_PTR i = 0; i < n;) {
        // Vertices in the quadrant of the one before change nothing: skip
        // their runs, then take the block that ended the run one by one.
        i = SkipQuadrantRun(v, i, n, q, pt);
        for (const INT_PTR stop = i + 4 < n ? i + 4 : n; i < stop; ++i) {
            const int q1 = Quadrant(v[i], pt);
            if (q1 == q) continue;
            if (q1 == ((q + 1) & 3)) {
                ++w;
            } else if (q == ((q1 + 1) & 3)) {
                --w;
            } else {
                // A jump to the opposite quadrant: the side of pt decides the
                // direction. c == 0 (pt on the edge) counts as clockwise.
                const CDblPoint* prev = i == 0 ? &last : &v[i - 1];
                const double c = (prev->x - pt.x) * (v[i].y - pt.y) - (v[i].x - pt.x) * (prev->y - pt.y);
                w += c > 0 ? 2 : -2;
            }
            q = q1;
        }
    }
    return w != 0;
}

bool IsPolygonCCW(const CDblPointArray& polygon) {
    const INT_PTR n = polygon.GetSize();
    if (n < 3) return false;
    const CDblPoint* v = polygon.GetData();
    INT_PTR k = 0;
    for (INT_PTR i = 1; i < n; ++i)
        if (v[i].x > v[k].x) k = i;
    const INT_PTR prev = (k + n - 1) % n;
    INT_PTR next = (k + 1) % n;
    // Both neighbours on the vertical line through k: look further along for
    // the first vertex off it, within the n - 3 vertices left.
    if (v[prev].x == v[k].x && v[next].x == v[k].x) {
        for (INT_PTR step = 0; step < n - 3 && !(v[next].x < v[k].x); ++step) next = (next + 1) % n;
    }
    return Cross(v[k] - v[prev], v[next] - v[k]) > 0;
}

int IsConcavePolygon(const CDblPointArray& polygon) {
    const INT_PTR n = polygon.GetSize();
    if (n < 3) throw kTooFewVertices;
    const CDblPoint* v = polygon.GetData();
    CDblSize e = v[0] - v[n - 1];
    TurnSense sense;
    for (INT_PTR i = 0; i < n; ++i) {
        const CDblSize e1 = v[i + 1 == n ? 0 : i + 1] - v[i];
        if (!sense.Accept(Sign(Cross(e, e1)))) return 1;
        e = e1;
    }
    return sense.Undecided() ? -1 : 0;
}

}  // namespace ORVMATH
