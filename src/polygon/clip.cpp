// Clipping of segments, arcs and circles by polygons; line visibility descriptors.
#include <orvmath/clip.h>

#include <orvmath/preparedpolygon.h>
#include <orvmath/tolerance.h>

#include "polygon_detail.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace ORVMATH {

namespace {

using detail::Cross;
using detail::Dot;

CDblPoint Along(const CDblPoint& a, const CDblSize& e, double u) { return CDblPoint(a.x + u * e.cx, a.y + u * e.cy); }

double DistanceEpsilon() { return std::max(CDistanceEpsilon::get(), 0.0); }

// Twice the signed area (positive counter-clockwise), taken about the first
// vertex for accuracy; 0 for a polygon that encloses nothing.
double TwiceSignedArea(const CDblPointArray& polygon) {
    const INT_PTR n = polygon.GetSize();
    if (n < 3) return 0.0;
    const CDblPoint* v = polygon.GetData();
    if (!std::all_of(v, v + n, IsFinite)) return 0.0;
    double s = 0.0;
    for (INT_PTR i = 1; i + 1 < n; ++i) s += Cross(v[i] - v[0], v[i + 1] - v[0]);
    return std::isfinite(s) ? s : 0.0;
}

// A stretch of a curve's parameter, inside the polygon (boundary included) or outside.
struct Piece {
    double t0, t1;
    bool inside;
};

// Keeps a cut strictly inside the curve: 0 and 1 are always cuts anyway.
void AddCut(double t, std::vector<double>& cuts) {
    if (t > 0.0 && t < 1.0) cuts.push_back(t);
}

// A segment as a curve of the clipping mechanism.
class SegmentCurve {
public:
    explicit SegmentCurve(const CLine2& l) : m_line(l), m_d(l.end - l.start), m_length(l.Length()) {}

    double Length() const { return m_length; }
    CDblPoint Point(double t) const { return m_line.Point(t); }
    void Box(CDblPoint& lo, CDblPoint& hi) const {
        lo = CDblPoint(std::min(m_line.start.x, m_line.end.x), std::min(m_line.start.y, m_line.end.y));
        hi = CDblPoint(std::max(m_line.start.x, m_line.end.x), std::max(m_line.start.y, m_line.end.y));
    }
    // Where the edge a-b meets the segment: its crossing of the segment's line,
    // and the feet of its end points that lie within eps of that line (so an
    // edge along the segment cuts it where the edge begins and ends).
    void AddCuts(const CDblPoint& a, const CDblPoint& b, double eps, std::vector<double>& cuts) const {
        const double da = Side(a), db = Side(b);
        if (std::fabs(da) <= eps) AddCut(Project(a), cuts);
        if (std::fabs(db) <= eps) AddCut(Project(b), cuts);
        if ((da < 0.0 && db > 0.0) || (da > 0.0 && db < 0.0)) {
            const double u = da / (da - db);
            AddCut(Project(Along(a, b - a, u)), cuts);
        }
    }

private:
    double Side(const CDblPoint& p) const { return Cross(m_d, p - m_line.start) / m_length; }
    double Project(const CDblPoint& p) const { return Dot(p - m_line.start, m_d) / (m_length * m_length); }

    const CLine2& m_line;
    CDblSize m_d;
    double m_length;
};

// An arc (its parameter the fraction of the sweep) as a curve of the clipping mechanism.
class ArcCurve {
public:
    explicit ArcCurve(const CArc2& a) : m_arc(a) {}

    double Length() const { return m_arc.Length(); }
    CDblPoint Point(double t) const { return m_arc.Point(t); }
    // The box of the whole circle: enough to tell a polygon far away.
    void Box(CDblPoint& lo, CDblPoint& hi) const {
        lo = CDblPoint(m_arc.centre.x - m_arc.radius, m_arc.centre.y - m_arc.radius);
        hi = CDblPoint(m_arc.centre.x + m_arc.radius, m_arc.centre.y + m_arc.radius);
    }
    // Where the edge a-b (taken eps longer at both ends) crosses the circle. A
    // tangent edge needs no cut: the circle stays on one side of it.
    void AddCuts(const CDblPoint& a, const CDblPoint& b, double eps, std::vector<double>& cuts) const {
        const CDblSize e = b - a, w = a - m_arc.centre;
        const double qa = Dot(e, e);
        if (qa == 0.0) return;
        const double qb = Dot(e, w), qc = Dot(w, w) - m_arc.radius * m_arc.radius;
        const double disc = qb * qb - qa * qc;
        if (disc < 0.0) return;
        const double slack = eps / std::sqrt(qa), r = std::sqrt(disc);
        for (const double root : {-r, r}) {
            const double u = (root - qb) / qa;
            if (u >= -slack && u <= 1.0 + slack) {
                const CDblPoint q = Along(a, e, u);
                AddCut(m_arc.AngleToParam(std::atan2(q.y - m_arc.centre.y, q.x - m_arc.centre.x)), cuts);
            }
        }
    }

private:
    const CArc2& m_arc;
};

// The shared mechanism: the curve's cuts by the polygon's edges, sorted, those
// closer than the distance epsilon merged, and each stretch between two cuts
// classified by its middle point. Neighbouring stretches of one state are
// joined, so pieces alternate between inside and outside.
template <class Curve>
std::vector<Piece> ClassifyPieces(const Curve& curve, const CDblPointArray& polygon) {
    const double eps = DistanceEpsilon();
    const INT_PTR n = polygon.GetSize();
    const CDblPoint* v = polygon.GetData();
    if (TwiceSignedArea(polygon) == 0.0) return {Piece{0.0, 1.0, false}};

    // The polygon's box against the curve's, in one pass over the vertices.
    CDblPoint lo, hi;
    curve.Box(lo, hi);
    double x0 = v[0].x, x1 = x0, y0 = v[0].y, y1 = y0;
    for (INT_PTR i = 1; i < n; ++i) {
        x0 = std::min(x0, v[i].x), x1 = std::max(x1, v[i].x);
        y0 = std::min(y0, v[i].y), y1 = std::max(y1, v[i].y);
    }
    if (x1 < lo.x - eps || x0 > hi.x + eps || y1 < lo.y - eps || y0 > hi.y + eps) return {Piece{0.0, 1.0, false}};

    std::vector<double> cuts{0.0};
    const double length = curve.Length();
    if (length > 0.0) {
        std::vector<double> found;
        for (INT_PTR i = 0; i < n; ++i) curve.AddCuts(v[i], v[i + 1 == n ? 0 : i + 1], eps, found);
        std::sort(found.begin(), found.end());
        const double slack = eps / length;
        for (const double t : found)
            if (t - cuts.back() > slack && 1.0 - t > slack) cuts.push_back(t);
    }
    cuts.push_back(1.0);

    const CPreparedPolygon located(polygon, eps);
    std::vector<Piece> pieces;
    for (std::size_t i = 0; i + 1 < cuts.size(); ++i) {
        const bool inside = located.Locate(curve.Point(0.5 * (cuts[i] + cuts[i + 1]))) != POLYGON_OUTSIDE;
        if (!pieces.empty() && pieces.back().inside == inside) {
            pieces.back().t1 = cuts[i + 1];
        } else {
            pieces.push_back(Piece{cuts[i], cuts[i + 1], inside});
        }
    }
    return pieces;
}

// The part of the segment from t0 to t1, its own ends kept exactly.
CLine2 SubSegment(const CLine2& l, double t0, double t1) {
    return CLine2(t0 == 0.0 ? l.start : l.Point(t0), t1 == 1.0 ? l.end : l.Point(t1));
}

CArc2 SubArc(const CArc2& a, double t0, double t1) {
    return CArc2(a.centre, a.radius, a.startAngle + t0 * a.sweepAngle, (t1 - t0) * a.sweepAngle);
}

// Arcs that give no pieces: a non-finite field or a negative radius.
bool IsClippableArc(const CArc2& a) {
    return IsFinite(a.centre) && std::isfinite(a.startAngle) && std::isfinite(a.sweepAngle) &&
           std::isfinite(a.radius) && a.radius >= 0.0;
}

}  // namespace

void UnifyLineVisibilityDescriptor(CLineVisibilityDescriptor& descriptor) {
    constexpr double tol = kVisibilityParamTolerance;
    std::vector<CLineVisibilityInterval> in;
    std::vector<double> ends;
    for (const CLineVisibilityInterval& iv : descriptor.intervals) {
        if (!std::isfinite(iv.t0) || !std::isfinite(iv.t1)) continue;
        const double t0 = std::clamp(std::min(iv.t0, iv.t1), 0.0, 1.0);
        const double t1 = std::clamp(std::max(iv.t0, iv.t1), 0.0, 1.0);
        in.push_back(CLineVisibilityInterval{t0, t1, iv.visible});
        ends.push_back(t0);
        ends.push_back(t1);
    }
    // Ends within tol above a kept parameter become that parameter.
    std::sort(ends.begin(), ends.end());
    std::vector<double> reps;
    for (const double t : ends)
        if (reps.empty() || t - reps.back() > tol) reps.push_back(t);
    const auto rank = [&reps](double t) {
        return static_cast<std::size_t>(std::upper_bound(reps.begin(), reps.end(), t) - reps.begin()) - 1;
    };
    // Sweep: how many hidden and visible intervals cover each stretch between kept parameters.
    std::vector<int> hidden(reps.size() + 1, 0), visible(reps.size() + 1, 0);
    for (const CLineVisibilityInterval& iv : in) {
        const std::size_t i0 = rank(iv.t0), i1 = rank(iv.t1);
        if (i0 == i1) continue;  // no longer than tol
        std::vector<int>& count = iv.visible ? visible : hidden;
        ++count[i0];
        --count[i1];
    }
    std::vector<CLineVisibilityInterval> out;
    int h = 0, w = 0;
    for (std::size_t i = 0; i + 1 < reps.size(); ++i) {
        h += hidden[i];
        w += visible[i];
        if (h == 0 && w == 0) continue;
        const bool state = h == 0;
        if (!out.empty() && out.back().visible == state && out.back().t1 == reps[i]) {
            out.back().t1 = reps[i + 1];
        } else {
            out.push_back(CLineVisibilityInterval{reps[i], reps[i + 1], state});
        }
    }
    descriptor.intervals.swap(out);
}

bool ClipLineCB(const CLine2& line, const CDblPointArray& polygon, double& t0, double& t1, CLine2& clipped) {
    const double area2 = TwiceSignedArea(polygon);
    if (area2 == 0.0 || !IsFinite(line.start) || !IsFinite(line.end)) return false;
    const double eps = DistanceEpsilon(), orient = area2 > 0.0 ? 1.0 : -1.0;
    const CDblSize d = line.end - line.start;
    const INT_PTR n = polygon.GetSize();
    const CDblPoint* v = polygon.GetData();
    double lo = 0.0, hi = 1.0;
    for (INT_PTR i = 0; i < n; ++i) {
        const CDblPoint& a = v[i];
        const CDblSize e = v[i + 1 == n ? 0 : i + 1] - a;
        const double len = std::hypot(e.cx, e.cy);
        if (len == 0.0) continue;
        // Outward unit normal: right of the edge on a counter-clockwise polygon.
        const CDblSize normal(orient * e.cy / len, -orient * e.cx / len);
        const double num = Dot(normal, line.start - a);                      // start's distance outside the edge's line
        const double den = Dot(normal, d);                                   // its change from start to end
        if (std::fabs(num) <= eps && std::fabs(num + den) <= eps) continue;  // the line runs along the edge
        if (den == 0.0) {
            if (num > 0.0) return false;
            continue;
        }
        if (den < 0.0) {
            lo = std::max(lo, -num / den);
        } else {
            hi = std::min(hi, -num / den);
        }
        if (lo > hi) return false;
    }
    if (!(lo == 0.0 && hi == 1.0) && !((hi - lo) * line.Length() > eps)) return false;
    t0 = lo;
    t1 = hi;
    clipped = SubSegment(line, lo, hi);
    return true;
}

void CLine2::ClipByPolygon(const CDblPointArray& polygon, CLine2Array& inside, CLine2Array& outside) const {
    inside.RemoveAll();
    outside.RemoveAll();
    if (!IsFinite(start) || !IsFinite(end)) return;
    for (const Piece& p : ClassifyPieces(SegmentCurve(*this), polygon))
        (p.inside ? inside : outside).Add(SubSegment(*this, p.t0, p.t1));
}

void ClipArc(const CArc2& arc, const CDblPointArray& polygon, CArc2Array& inside, CArc2Array& outside) {
    inside.RemoveAll();
    outside.RemoveAll();
    if (!IsClippableArc(arc)) return;
    for (const Piece& p : ClassifyPieces(ArcCurve(arc), polygon))
        (p.inside ? inside : outside).Add(SubArc(arc, p.t0, p.t1));
}

void ClipCircle(const CCircle2& circle, const CDblPointArray& polygon, CArc2Array& inside, CArc2Array& outside) {
    inside.RemoveAll();
    outside.RemoveAll();
    const CArc2 full(circle.centre, circle.radius, 0.0, k2Pi);
    if (!IsClippableArc(full)) return;
    std::vector<Piece> pieces = ClassifyPieces(ArcCurve(full), polygon);
    // Angle 0 is no cut of its own: the pieces either side of it, when of one
    // state, are one piece, which then goes last.
    if (pieces.size() > 1 && pieces.front().inside == pieces.back().inside) {
        pieces.back().t1 = 1.0 + pieces.front().t1;
        pieces.erase(pieces.begin());
    }
    for (const Piece& p : pieces) (p.inside ? inside : outside).Add(SubArc(full, p.t0, p.t1));
}

void ClipLineWithMultiPolygon(const CLine2& line, const CDblPolygonArray& polygons,
                              CLineVisibilityDescriptor& descriptor, CLine2Array& visible) {
    descriptor.Clear();
    visible.RemoveAll();
    if (!IsFinite(line.start) || !IsFinite(line.end)) return;
    descriptor.Add(0.0, 1.0, true);
    const SegmentCurve curve(line);
    for (const CDblPointArray& polygon : polygons)
        for (const Piece& p : ClassifyPieces(curve, polygon))
            if (p.inside) descriptor.Add(p.t0, p.t1, false);
    UnifyLineVisibilityDescriptor(descriptor);
    // A gap between two hiding polygons shorter than the distance epsilon lies
    // within it of a boundary: hidden, as each polygon's own pieces would be.
    const double length = line.Length(), eps = DistanceEpsilon();
    const std::size_t count = descriptor.intervals.size();
    for (std::size_t i = 0; count > 1 && i < count; ++i) {
        const CLineVisibilityInterval iv = descriptor.intervals[i];
        if (iv.visible && (iv.t1 - iv.t0) * length <= eps) descriptor.Add(iv.t0, iv.t1, false);
    }
    if (descriptor.intervals.size() > count) UnifyLineVisibilityDescriptor(descriptor);
    for (const CLineVisibilityInterval& iv : descriptor.intervals)
        if (iv.visible) visible.Add(SubSegment(line, iv.t0, iv.t1));
}

}  // namespace ORVMATH
