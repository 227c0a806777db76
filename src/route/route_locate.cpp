// CRoute2: from a world point back to the miles and offsets of its feet on
// the alignment.
#include <orvmath/route2.h>

#include <orvmath/angle.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

namespace ORVMATH {

namespace {

constexpr int kSamplesPerElement = 32;  // sign-change search on curves solved numerically
constexpr double kSameFoot = 1e-9;      // feet this close in mile and offset are one (element boundaries)

struct Candidate {
    double s, offset;
};

}  // namespace

int CRoute2::Locate(const CDblPoint& p, CArray<CRouteFoot>& feet) const {
    feet.RemoveAll();
    const int elements = static_cast<int>(std::min<INT_PTR>(m_CriticalPoints.GetSize() - 1, m_SegMiles.GetSize()));
    if (!std::isfinite(p.x) || !std::isfinite(p.y)) return 0;
    std::vector<CRouteFoot> found;
    double startOfElement = m_dStartMile;
    for (int i = 0; i < elements; startOfElement += m_SegMiles[i], ++i) {
        const double length = m_SegMiles[i];
        if (!(length > 0.0)) continue;
        std::vector<Candidate> cands;
        // (p - C(s)) . T(s): zero at a foot. Also the offset there.
        const auto along = [&](double s, double& offset) {
            CCriticalPoint cp;
            CDblSize t;
            EvaluateElement(i, s, cp, t);
            const double dx = p.x - cp.pt.x, dy = p.y - cp.pt.y;
            offset = -dx * t.cy + dy * t.cx;
            return dx * t.cx + dy * t.cy;
        };
        const detail::RouteElementGeometry* g =
            static_cast<std::size_t>(i) < m_Geometry.size() ? &m_Geometry[static_cast<std::size_t>(i)] : nullptr;
        if (g && (g->kind == detail::RouteElementGeometry::Line || g->kind == detail::RouteElementGeometry::Chord)) {
            // p = P1 + s U + o N, U the chord's unit vector, N the left normal of
            // the element's direction: two linear equations.
            const CDblPoint& a = g->chord.start;
            const double dx = (g->chord.end.x - a.x) / g->length, dy = (g->chord.end.y - a.y) / g->length;
            const double nx = -g->tangent.cy, ny = g->tangent.cx;
            const double det = dx * ny - dy * nx;
            if (det != 0.0) {
                const double px = p.x - a.x, py = p.y - a.y;
                cands.push_back({(px * ny - py * nx) / det, (dx * py - dy * px) / det});
            }
        } else if (g && g->kind == detail::RouteElementGeometry::Arc) {
            // The near and the far point of the circle on the line through p and the centre.
            const CArc2& arc = g->arc;
            const double dist = Distance(p, arc.centre);
            if (dist > 0.0) {
                const double theta = std::atan2(p.y - arc.centre.y, p.x - arc.centre.x);
                for (double dir : {theta, theta + kPi}) {
                    double turn = arc.sweepAngle > 0.0 ? dir - arc.startAngle : arc.startAngle - dir;
                    turn -= k2Pi * std::floor(turn / k2Pi);  // into [0, 2 pi)
                    // Just below a whole turn is just before the start.
                    if (turn > std::fabs(arc.sweepAngle) && k2Pi - turn < 1e-12) turn -= k2Pi;
                    const double s = turn / std::fabs(arc.sweepAngle) * length;
                    double offset = 0.0;
                    along(std::min(std::max(s, 0.0), length), offset);
                    cands.push_back({s, offset});
                }
            }
        } else {
            // Sign changes over samples, then bisection to the double.
            double prevS = 0.0, prevOffset = 0.0, prevF = along(0.0, prevOffset);
            if (prevF == 0.0) cands.push_back({0.0, prevOffset});
            for (int k = 1; k <= kSamplesPerElement; ++k) {
                const double s = length * k / kSamplesPerElement;
                double offset = 0.0;
                const double f = along(s, offset);
                if (f == 0.0) {
                    cands.push_back({s, offset});
                } else if ((prevF < 0.0) != (f < 0.0) && prevF != 0.0) {
                    double lo = prevS, hi = s, flo = prevF;
                    for (int it = 0; it < 100 && hi - lo > 1e-12 * length; ++it) {
                        const double mid = 0.5 * (lo + hi);
                        double unused = 0.0;
                        const double fm = along(mid, unused);
                        if ((fm < 0.0) == (flo < 0.0)) {
                            lo = mid;
                            flo = fm;
                        } else {
                            hi = mid;
                        }
                    }
                    const double root = 0.5 * (lo + hi);
                    double at = 0.0;
                    along(root, at);
                    cands.push_back({root, at});
                }
                prevS = s;
                prevF = f;
            }
        }
        for (const Candidate& c : cands) {
            // Feet just outside the element (rounding at its ends) belong to it.
            if (!(c.s >= -kSameFoot && c.s <= length + kSameFoot)) continue;
            const double s = std::min(std::max(c.s, 0.0), length);
            found.push_back({startOfElement + s, c.offset, i});
        }
    }
    std::sort(found.begin(), found.end(), [](const CRouteFoot& a, const CRouteFoot& b) {
        return std::fabs(a.offset) != std::fabs(b.offset) ? std::fabs(a.offset) < std::fabs(b.offset) : a.mile < b.mile;
    });
    for (const CRouteFoot& f : found) {
        bool seen = false;
        for (const CRouteFoot& g : feet)
            seen = seen || (std::fabs(g.mile - f.mile) <= kSameFoot && std::fabs(g.offset - f.offset) <= kSameFoot);
        if (!seen) feet.Add(f);
    }
    return static_cast<int>(feet.GetSize());
}

void CRoute2::LocateNearest(const CDblPoint* points, INT_PTR count, double* miles, double* offsets) const {
    CArray<CRouteFoot> feet;
    for (INT_PTR k = 0; k < count; ++k) {
        const bool any = Locate(points[k], feet) > 0;
        miles[k] = any ? feet[0].mile : std::numeric_limits<double>::quiet_NaN();
        offsets[k] = any ? feet[0].offset : std::numeric_limits<double>::quiet_NaN();
    }
}

}  // namespace ORVMATH
