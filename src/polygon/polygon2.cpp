// CPolygon2: area, centroid and containment of the region a closed path of
// straight and circular edges bounds.
#include <orvmath/polygon2.h>

#include <orvmath/host/archive.h>
#include <orvmath/tolerance.h>

#include <cmath>

namespace ORVMATH {

IMPLEMENT_SERIAL(CPolygon2, CObject, 1)

namespace {

// The circular segment between an arc and its chord: signed area (positive
// for a counter-clockwise sweep) and its centroid.
double SegmentArea(const CArc2& a) {
    const double t = a.sweepAngle;
    return 0.5 * a.radius * a.radius * (t - std::sin(t));
}

CDblPoint SegmentCentroid(const CArc2& a) {
    const double t = std::fabs(a.sweepAngle);
    const double s = std::sin(t * 0.5);
    const double d = 4.0 * a.radius * s * s * s / (3.0 * (t - std::sin(t)));
    const double mid = a.startAngle + a.sweepAngle * 0.5;
    return CDblPoint(a.centre.x + d * std::cos(mid), a.centre.y + d * std::sin(mid));
}

// Winding of the segment (arc, then the chord back) about p: the sign of
// the sweep inside it, 0 outside. Inside: in the disc and on the arc's side of the chord.
int SegmentWinding(const CArc2& a, const CLine2& chord, const CDblPoint& p) {
    if (!(Distance(p, a.centre) < a.radius)) return 0;
    const CDblPoint mid = a.MidPoint();
    const double dx = chord.end.x - chord.start.x, dy = chord.end.y - chord.start.y;
    const double sideMid = dx * (mid.y - chord.start.y) - dy * (mid.x - chord.start.x);
    const double sideP = dx * (p.y - chord.start.y) - dy * (p.x - chord.start.x);
    if (!(sideMid * sideP > 0.0)) return 0;
    return a.sweepAngle > 0.0 ? 1 : -1;
}

// Winding number of the chord p -> q about pt (one edge of the crossing count).
int ChordWinding(const CDblPoint& p, const CDblPoint& q, const CDblPoint& pt) {
    const double cross = (q.x - p.x) * (pt.y - p.y) - (pt.x - p.x) * (q.y - p.y);
    if (p.y <= pt.y) return (q.y > pt.y && cross > 0.0) ? 1 : 0;
    return (q.y <= pt.y && cross < 0.0) ? -1 : 0;
}

}  // namespace

CPolygon2::CPolygon2(const CDblPointArray& points) : PolyPathEdits(true) {
    for (const CDblPoint& p : points) AddVertex(p);
}

CPolygon2::CPolygon2(const CPolyline2& open) : PolyPathEdits(true) {
    for (int i = 0; i < open.GetSize(); ++i) AddVertex(open.GetVertex(i), open.GetBulge(i));
}

CPolyline2 CPolygon2::Open() const {
    CPolyline2 out;
    for (int i = 0; i < GetSize(); ++i) out.AddVertex(GetVertex(i), GetBulge(i));
    if (!IsEmpty()) out.AddVertex(GetVertex(0));
    return out;
}

double CPolygon2::Area() const {
    double twice = 0.0, segments = 0.0;
    CLine2 chord;
    CArc2 arc;
    for (int i = 0; i < GetEdgeCount(); ++i) {
        if (GetEdge(i, chord, arc)) segments += SegmentArea(arc);
        twice += chord.start.x * chord.end.y - chord.end.x * chord.start.y;
    }
    return 0.5 * twice + segments;
}

CDblPoint CPolygon2::Centroid() const {
    if (IsEmpty()) return CDblPoint();
    // Moments about the first vertex, which keeps the digits of far-off coordinates.
    const CDblPoint o = GetVertex(0);
    double area = 0.0, mx = 0.0, my = 0.0;
    CLine2 c;
    CArc2 arc;
    for (int i = 0; i < GetEdgeCount(); ++i) {
        // The triangle (first vertex, start, end) and, for an arc, its segment.
        const bool isArc = GetEdge(i, c, arc);
        const double sx = c.start.x - o.x, sy = c.start.y - o.y, ex = c.end.x - o.x, ey = c.end.y - o.y;
        const double tri = 0.5 * (sx * ey - ex * sy);
        area += tri;
        mx += tri * (sx + ex) / 3.0;
        my += tri * (sy + ey) / 3.0;
        if (isArc) {
            const double a = SegmentArea(arc);
            const CDblPoint g = SegmentCentroid(arc);
            area += a;
            mx += a * (g.x - o.x);
            my += a * (g.y - o.y);
        }
    }
    if (area != 0.0 && std::isfinite(area)) return CDblPoint(o.x + mx / area, o.y + my / area);
    double sx = 0.0, sy = 0.0;
    for (const CDblPoint& p : GetVertices()) {
        sx += p.x;
        sy += p.y;
    }
    return CDblPoint(sx / GetSize(), sy / GetSize());
}

PolygonLocation CPolygon2::Locate(const CDblPoint& p, int* edge) const {
    int near = -1;
    const CDblPoint foot = NearestPoint(p, &near);
    if (edge) *edge = -1;
    if (near >= 0 && ORVMATH::Distance(foot, p) <= CDistanceEpsilon::get()) {
        if (edge) *edge = near;
        return POLYGON_BOUNDARY;
    }
    int winding = 0;
    CLine2 chord;
    CArc2 arc;
    for (int i = 0; i < GetEdgeCount(); ++i) {
        if (GetEdge(i, chord, arc)) winding += SegmentWinding(arc, chord, p);
        winding += ChordWinding(chord.start, chord.end, p);
    }
    return winding != 0 ? POLYGON_INSIDE : POLYGON_OUTSIDE;
}

void CPolygon2::Serialize(CArchive& ar) {
    CObject::Serialize(ar);
    SerializePath(ar);
}

}  // namespace ORVMATH
