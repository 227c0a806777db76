// CPolyPath: the vertices and bulges of polylines and polygons, their
// edges, measures, nearest points, clean-ups and records.
#include <orvmath/polyline2.h>

#include <orvmath/angle.h>
#include <orvmath/host/archive.h>
#include <orvmath/tolerance.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <vector>

namespace ORVMATH {

namespace {

// The arc from p to q with `bulge` (not 0): false when the chord is too
// short to place it (the edge is then treated as straight).
bool BulgeArc(const CDblPoint& p, const CDblPoint& q, double bulge, CArc2& arc) {
    const double dx = q.x - p.x, dy = q.y - p.y, chord = std::hypot(dx, dy);
    if (!(chord > 0.0) || !(bulge != 0.0) || !std::isfinite(bulge)) return false;
    const double sweep = 4.0 * std::atan(bulge);
    const double radius = chord / (2.0 * std::fabs(std::sin(sweep * 0.5)));
    // The centre lies off the chord's midpoint along its left normal by
    // (chord / 2) (1 - b^2) / (2 b): on the left for a small counter-clockwise bulge.
    const double k = (1.0 - bulge * bulge) / (4.0 * bulge);
    const CDblPoint centre(p.x + dx * 0.5 - dy * k, p.y + dy * 0.5 + dx * k);
    arc = CArc2(centre, radius, std::atan2(p.y - centre.y, p.x - centre.x), sweep);
    return true;
}

CDblPoint NearestOnSegment(const CLine2& s, const CDblPoint& p) {
    const double dx = s.end.x - s.start.x, dy = s.end.y - s.start.y, len2 = dx * dx + dy * dy;
    if (!(len2 > 0.0)) return s.start;
    const double t = std::clamp(((p.x - s.start.x) * dx + (p.y - s.start.y) * dy) / len2, 0.0, 1.0);
    return s.Point(t);
}

void Extend(CDblRect& r, bool& any, const CDblPoint& p) {
    if (!any) {
        r = CDblRect(p.x, p.y, p.x, p.y);
        any = true;
        return;
    }
    r.left = std::min(r.left, p.x);
    r.right = std::max(r.right, p.x);
    r.top = std::min(r.top, p.y);
    r.bottom = std::max(r.bottom, p.y);
}

// Douglas-Peucker over pts[first..last]: marks the vertices to keep.
void MarkDP(const std::vector<CDblPoint>& pts, std::size_t first, std::size_t last, double tol,
            std::vector<char>& keep) {
    if (last <= first + 1) return;
    const CLine2 chord(pts[first], pts[last]);
    double worst = -1.0;
    std::size_t at = first;
    for (std::size_t i = first + 1; i < last; ++i) {
        const double d = Distance(NearestOnSegment(chord, pts[i]), pts[i]);
        if (d > worst) {
            worst = d;
            at = i;
        }
    }
    if (worst > tol) {
        keep[at] = 1;
        MarkDP(pts, first, at, tol, keep);
        MarkDP(pts, at, last, tol, keep);
    }
}

}  // namespace

void CPolyPath::AddVertex(const CDblPoint& p, double bulge) {
    m_Vertices.Add(p);
    m_Bulges.Add(bulge);
}

void CPolyPath::RemoveVertex(int i) {
    m_Vertices.RemoveAt(i);
    m_Bulges.RemoveAt(i);
}

void CPolyPath::RemoveAll() {
    m_Vertices.RemoveAll();
    m_Bulges.RemoveAll();
}

int CPolyPath::GetEdgeCount() const {
    const int n = GetSize();
    if (n < 2) return 0;
    return m_bClosed ? n : n - 1;
}

bool CPolyPath::GetEdge(int i, CLine2& line, CArc2& arc) const {
    const int n = GetSize();
    const CDblPoint& p = m_Vertices[i];
    const CDblPoint& q = m_Vertices[i + 1 < n ? i + 1 : 0];
    line = CLine2(p, q);
    return BulgeArc(p, q, m_Bulges[i], arc);
}

double CPolyPath::Length() const {
    double sum = 0.0;
    CLine2 line;
    CArc2 arc;
    for (int i = 0; i < GetEdgeCount(); ++i) sum += GetEdge(i, line, arc) ? arc.Length() : line.Length();
    return sum;
}

CDblRect CPolyPath::GetBoundRect() const {
    CDblRect r;
    bool any = false;
    for (const CDblPoint& p : m_Vertices) Extend(r, any, p);
    CLine2 line;
    CArc2 arc;
    for (int i = 0; i < GetEdgeCount(); ++i) {
        if (!GetEdge(i, line, arc)) continue;
        const CDblRect box = arc.GetBoundRect();
        Extend(r, any, box.TopLeft());
        Extend(r, any, box.BottomRight());
    }
    return r;
}

CDblPoint CPolyPath::NearestPoint(const CDblPoint& p, int* edge) const {
    if (edge) *edge = -1;
    if (IsEmpty()) return p;
    CDblPoint best = m_Vertices[0];
    double bestDistance = std::numeric_limits<double>::infinity();
    CLine2 line;
    CArc2 arc;
    for (int i = 0; i < GetEdgeCount(); ++i) {
        const CDblPoint q = GetEdge(i, line, arc) ? arc.NearestPoint(p) : NearestOnSegment(line, p);
        const double d = ORVMATH::Distance(q, p);
        if (d < bestDistance) {
            best = q;
            bestDistance = d;
            if (edge) *edge = i;
        }
    }
    return best;
}

int CPolyPath::RemoveDuplicateVertices() {
    int removed = 0;
    for (int i = 1; i < GetSize();) {
        if (m_Vertices[i] == m_Vertices[i - 1]) {
            m_Bulges[i - 1] = m_Bulges[i];
            RemoveVertex(i);
            ++removed;
        } else {
            ++i;
        }
    }
    if (m_bClosed && GetSize() > 1 && m_Vertices[GetSize() - 1] == m_Vertices[0]) {
        RemoveVertex(GetSize() - 1);
        ++removed;
    }
    return removed;
}

int CPolyPath::RemoveCollinearVertices() {
    int removed = 0;
    const double eps = CDistanceEpsilon::get();
    for (int i = m_bClosed ? 0 : 1; GetSize() > (m_bClosed ? 3 : 2) && i < GetSize();) {
        const int n = GetSize();
        if (!m_bClosed && i >= n - 1) break;
        const int prev = (i + n - 1) % n, next = (i + 1) % n;
        const CDblPoint &a = m_Vertices[prev], &v = m_Vertices[i], &b = m_Vertices[next];
        const double dot = (v.x - a.x) * (b.x - v.x) + (v.y - a.y) * (b.y - v.y);
        const bool straight = m_Bulges[prev] == 0.0 && m_Bulges[i] == 0.0;
        if (straight && dot > 0.0 && CLine2(a, b).Distance(v) <= eps) {
            RemoveVertex(i);
            ++removed;
            if (i > 0 && m_bClosed) --i;  // the previous vertex may have become collinear
        } else {
            ++i;
        }
    }
    return removed;
}

int CPolyPath::Simplify(double tolerance) {
    const int n = GetSize();
    if (n < 3 || !(tolerance >= 0.0)) return 0;
    // Runs of straight edges between fixed vertices (ends, arc ends); on a
    // closed path the run wraps round, and at least vertex 0 stays fixed.
    std::vector<char> keep(static_cast<std::size_t>(n), 0);
    for (int i = 0; i < n; ++i) {
        const int prev = (i + n - 1) % n;
        const bool arcEnd = m_Bulges[i] != 0.0 || ((m_bClosed || i > 0) && m_Bulges[prev] != 0.0);
        if (arcEnd || (!m_bClosed && (i == 0 || i == n - 1))) keep[static_cast<std::size_t>(i)] = 1;
    }
    keep[0] = 1;
    std::vector<int> fixed;
    for (int i = 0; i < n; ++i)
        if (keep[static_cast<std::size_t>(i)]) fixed.push_back(i);
    if (m_bClosed) fixed.push_back(n);  // vertex 0 again, closing the last run
    std::vector<CDblPoint> pts;
    for (std::size_t f = 0; f + 1 < fixed.size(); ++f) {
        const int a = fixed[f], b = fixed[f + 1];
        if (b - a < 2) continue;
        pts.clear();
        for (int i = a; i <= b; ++i) pts.push_back(m_Vertices[i % n]);
        std::vector<char> runKeep(pts.size(), 0);
        MarkDP(pts, 0, pts.size() - 1, tolerance, runKeep);
        for (int i = a + 1; i < b; ++i) keep[static_cast<std::size_t>(i)] = runKeep[static_cast<std::size_t>(i - a)];
    }
    // A closed path keeps a triangle: the farthest dropped vertices come back.
    int kept = static_cast<int>(std::count(keep.begin(), keep.end(), 1));
    if (m_bClosed && kept < 3) {
        for (int want = 3 - kept; want > 0; --want) {
            double worst = -1.0;
            int at = -1;
            for (int i = 0; i < n; ++i) {
                if (keep[static_cast<std::size_t>(i)]) continue;
                const double d = ORVMATH::Distance(m_Vertices[i], m_Vertices[0]);
                if (d > worst) {
                    worst = d;
                    at = i;
                }
            }
            if (at >= 0) keep[static_cast<std::size_t>(at)] = 1;
        }
    }
    int removed = 0;
    for (int i = n - 1; i >= 0; --i) {
        if (keep[static_cast<std::size_t>(i)]) continue;
        RemoveVertex(i);
        ++removed;
    }
    return removed;
}

void CPolyPath::MovePath(double dx, double dy) {
    for (CDblPoint& p : m_Vertices) p = CDblPoint(p.x + dx, p.y + dy);
}

void CPolyPath::RotatePath(const CDblPoint& centre, double angle) {
    const double c = std::cos(angle), s = std::sin(angle);
    for (CDblPoint& p : m_Vertices) {
        const double x = p.x - centre.x, y = p.y - centre.y;
        p = CDblPoint(centre.x + x * c - y * s, centre.y + x * s + y * c);
    }
}

void CPolyPath::MirrorPath(const CDblPoint& p1, const CDblPoint& p2) {
    const double dx = p2.x - p1.x, dy = p2.y - p1.y, len2 = dx * dx + dy * dy;
    if (!(len2 > 0.0)) return;  // no axis: nothing changes
    for (CDblPoint& p : m_Vertices) {
        const double t = ((p.x - p1.x) * dx + (p.y - p1.y) * dy) / len2;
        const CDblPoint foot(p1.x + t * dx, p1.y + t * dy);
        p = CDblPoint(2.0 * foot.x - p.x, 2.0 * foot.y - p.y);
    }
    for (double& b : m_Bulges) b = -b;
}

void CPolyPath::ScalePath(const CDblPoint& centre, double factor) {
    for (CDblPoint& p : m_Vertices)
        p = CDblPoint(centre.x + (p.x - centre.x) * factor, centre.y + (p.y - centre.y) * factor);
}

void CPolyPath::ReversePath() {
    const int n = GetSize();
    if (n < 2) return;
    // Edge i (vertex i to i + 1) becomes the edge from i + 1 to i, with its bulge negated.
    std::reverse(m_Vertices.GetData(), m_Vertices.GetData() + n);
    std::vector<double> b(m_Bulges.GetData(), m_Bulges.GetData() + n);
    if (m_bClosed) {
        // New vertex k is old n - 1 - k; its edge goes to old n - 2 - k (wrapping), old edge n - 2 - k.
        for (int k = 0; k < n; ++k) m_Bulges[k] = -b[static_cast<std::size_t>((2 * n - 2 - k) % n)];
    } else {
        for (int k = 0; k + 1 < n; ++k) m_Bulges[k] = -b[static_cast<std::size_t>(n - 2 - k)];
        m_Bulges[n - 1] = 0.0;
    }
}

void CPolyPath::SerializePath(CArchive& ar) {
    if (ar.IsStoring()) {
        ar << static_cast<std::int32_t>(m_bClosed ? 1 : 0);
        m_Vertices.Serialize(ar);
        m_Bulges.Serialize(ar);
        return;
    }
    std::int32_t closed = 0;
    ar >> closed;
    CDblPointArray vertices;
    CDblArray bulges;
    vertices.Serialize(ar);
    bulges.Serialize(ar);
    if (closed != (m_bClosed ? 1 : 0) || vertices.GetSize() != bulges.GetSize())
        throw CArchiveException(CArchiveException::badIndex);
    m_Vertices.Copy(vertices);
    m_Bulges.Copy(bulges);
}

CPolyline2::CPolyline2(const CDblPointArray& points) : PolyPathEdits(false) {
    for (const CDblPoint& p : points) AddVertex(p);
}

}  // namespace ORVMATH
