#include <orvmath/line2.h>

#include <orvmath/host/archive.h>

#include <orvmath/angle.h>
#include <orvmath/arc2.h>
#include <orvmath/circle2.h>
#include <orvmath/intersect.h>
#include <orvmath/pointline.h>

#include "curve_detail.h"

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

namespace ORVMATH {

IMPLEMENT_SERIAL(CLine2Array, CObject, 1)

namespace {

// Unit vector start->end; false (u untouched) when the segment has exactly zero length.
bool UnitDirection(const CLine2& l, CDblPoint& u) noexcept {
    const double dx = l.end.x - l.start.x, dy = l.end.y - l.start.y;
    if (dx == 0.0 && dy == 0.0) return false;
    const double len = std::hypot(dx, dy);
    u = CDblPoint(dx / len, dy / len);
    return true;
}

CDblPoint Along(const CDblPoint& p, const CDblPoint& u, double d) noexcept {
    return CDblPoint(p.x + d * u.x, p.y + d * u.y);
}

// Which of the intersection points a trim moves the end (or the start) to,
// by the rule the arc and circle trims share; -1 when there is none.
int TrimPointIndex(const CLine2& l, const CDblPointArray& points, bool atEnd) noexcept {
    const int n = static_cast<int>(points.GetSize());
    if (n < 2) return n - 1;
    return detail::TrimChoice(n, ProjectOnLine(points.GetData()[0], l.start, l.end),
                              ProjectOnLine(points.GetData()[1], l.start, l.end), 1.0, atEnd);
}

// Moves one end (`which`) to the chosen intersection of the infinite line with the arc or circle.
template <class Curve>
CLine2& TrimToCurve(CLine2& l, const Curve& curve, CDblPoint CLine2::*which) {
    CDblPointArray points;
    l.Intersection(curve, points, true);
    const int i = TrimPointIndex(l, points, which == &CLine2::end);
    if (i >= 0) l.*which = points.GetData()[i];
    return l;
}

CDblPoint Reflected(const CDblPoint& a, const CDblPoint& b, const CDblPoint& p) noexcept {
    CDblPoint out;
    MirrorPoint(a, b, p, out);
    return out;
}

}  // namespace

// ---- construction ----

CLine2& CLine2::Set(double x1, double y1, double x2, double y2) noexcept {
    start = CDblPoint(x1, y1);
    end = CDblPoint(x2, y2);
    return *this;
}

CLine2& CLine2::Set(const CDblPoint& s, double angle, double length) noexcept {
    start = s;
    end = Along(s, CDblPoint(std::cos(angle), std::sin(angle)), length);
    return *this;
}

CLine2& CLine2::Set(double angle, const CDblPoint& e, double length) noexcept {
    start = Along(e, CDblPoint(std::cos(angle), std::sin(angle)), -length);
    end = e;
    return *this;
}

CLine2& CLine2::Set(double angle, double length, const CDblPoint& middle) noexcept {
    const CDblPoint u(std::cos(angle), std::sin(angle));
    start = Along(middle, u, -length / 2.0);
    end = Along(middle, u, length / 2.0);
    return *this;
}

CLine2& CLine2::Set(const CDblPoint& s, const CDblSize& size) noexcept {
    start = s;
    end = s + size;
    return *this;
}

CLine2& CLine2::Set(const CDblSize& size, const CDblPoint& e) noexcept {
    start = e + size;
    end = e;
    return *this;
}

// ---- measures and queries ----

// A single conditional step, not a full reduction: both inputs are already in
// (-pi, pi], and one step gives the exact difference without re-rounding.
static double IntoHalfTurn(double a) noexcept {
    if (a > kPi) return a - k2Pi;
    if (a <= -kPi) return a + k2Pi;
    return a;
}

double CLine2::Angle(const CLine2& other) const noexcept { return IntoHalfTurn(other.Angle() - Angle()); }

double CLine2::NormalAngle() const noexcept { return IntoHalfTurn(Angle() + kPi / 2.0); }

double CLine2::Distance(const CDblPoint& p) const noexcept { return DPointLine(p, start, end); }

CDblPoint CLine2::FootPoint(const CDblPoint& p) const noexcept { return Point(ProjectOnLine(p, start, end)); }

double CLine2::X(double y) const noexcept {
    const double dy = end.y - start.y;
    if (dy == 0.0) return start.x;
    return start.x + (y - start.y) / dy * (end.x - start.x);
}

double CLine2::Y(double x) const noexcept {
    const double dx = end.x - start.x;
    if (dx == 0.0) return start.y;
    return start.y + (x - start.x) / dx * (end.y - start.y);
}

int CLine2::WhichSide(const CDblPoint& p, double tolerance) const noexcept {
    // Relative to p, for accuracy far from the origin.
    const double sx = start.x - p.x, sy = start.y - p.y;
    const double dx = end.x - start.x, dy = end.y - start.y;
    if (dx == 0.0 && dy == 0.0) return -2;
    if (tolerance >= Distance(p)) return 0;
    const double c = -sy * dx + sx * dy;
    return c > 0.0 ? 1 : (c < 0.0 ? -1 : 0);
}

bool CLine2::IsPointOnSegment(const CDblPoint& p, double tolerance) const noexcept {
    const double t = ProjectOnLine(p, start, end);
    if (t < 0.0) return ORVMATH::Distance(p, start) <= tolerance;
    if (t > 1.0) return ORVMATH::Distance(p, end) <= tolerance;
    return Distance(p) <= tolerance;
}

bool CLine2::IsOverlapped(CLine2 other, CLine2& common) const noexcept {
    const double theta = Angle(other);
    const bool parallel = std::fabs(theta) < kParallelAngle || std::fabs(theta - kPi) < kParallelAngle ||
                          std::fabs(theta + kPi) < kParallelAngle;
    if (!parallel || Distance(other.start) >= kOverlapDistance) return false;
    const double t1 = ProjectOnLine(other.start, start, end);
    const double t2 = ProjectOnLine(other.end, start, end);
    const bool inner1 = t1 > 0.0 && t1 < 1.0, inner2 = t2 > 0.0 && t2 < 1.0;
    const bool covers = (t1 <= 0.0 && t2 >= 1.0) || (t2 <= 0.0 && t1 >= 1.0);
    if (!inner1 && !inner2 && !covers) return false;
    const double lo = std::fmax(0.0, std::fmin(t1, t2)), hi = std::fmin(1.0, std::fmax(t1, t2));
    common = CLine2(Point(lo), Point(hi));
    return true;
}

void CLine2::EqualDistPoints(unsigned int n, CDblPointArray& out) const {
    if (n <= 1) return;
    const double parts = static_cast<double>(n);
    for (unsigned int k = 1; k < n; ++k) out.Add(Point(k / parts));
}

// ---- placement ----

CLine2& CLine2::SelfMove(double dx, double dy) noexcept {
    start.Offset(dx, dy);
    end.Offset(dx, dy);
    return *this;
}

CLine2& CLine2::SelfMoveStart(double dx, double dy) noexcept {
    start.Offset(dx, dy);
    return *this;
}

CLine2& CLine2::SelfMoveEnd(double dx, double dy) noexcept {
    end.Offset(dx, dy);
    return *this;
}

CLine2& CLine2::SelfMirrorX(double a) noexcept {
    start.x = 2.0 * a - start.x;
    end.x = 2.0 * a - end.x;
    return *this;
}

CLine2& CLine2::SelfMirrorY(double b) noexcept {
    start.y = 2.0 * b - start.y;
    end.y = 2.0 * b - end.y;
    return *this;
}

CLine2& CLine2::SelfMirror(const CDblPoint& p1, const CDblPoint& p2) noexcept {
    start = Reflected(p1, p2, start);
    end = Reflected(p1, p2, end);
    return *this;
}

CLine2& CLine2::SelfRotate(const CDblPoint& centre, double angle) noexcept {
    RotatePoint(centre.x, centre.y, angle, start);
    RotatePoint(centre.x, centre.y, angle, end);
    return *this;
}

CLine2& CLine2::SelfReverse() noexcept {
    std::swap(start, end);
    return *this;
}

CLine2& CLine2::SelfOffset(double d) noexcept {
    if (!OffsetLine(start, end, d)) *this = CLine2();
    return *this;
}

CDblPoint CLine2::Mirror(const CDblPoint& p) const noexcept { return Reflected(start, end, p); }

void CLine2::Offset(double d, int count, CLine2Array& out) const {
    for (int k = 1; k <= count; ++k) out.Add(Offset(k * d));
}

// ---- length editing ----

CLine2& CLine2::LengthenEnd(double d) noexcept {
    CDblPoint u;
    if (UnitDirection(*this, u)) end = Along(end, u, d);
    return *this;
}

CLine2& CLine2::LengthenStart(double d) noexcept {
    CDblPoint u;
    if (UnitDirection(*this, u)) start = Along(start, u, -d);
    return *this;
}

CLine2& CLine2::StartFitTo(double len) noexcept {
    CDblPoint u;
    if (UnitDirection(*this, u)) end = Along(start, u, len);
    return *this;
}

CLine2& CLine2::EndFitTo(double len) noexcept { return SelfReverse().StartFitTo(len).SelfReverse(); }

CLine2& CLine2::MiddleFitTo(double len) noexcept {
    CDblPoint u;
    if (!UnitDirection(*this, u)) return *this;
    const CDblPoint m = MidPoint();
    start = Along(m, u, -len / 2.0);
    end = Along(m, u, len / 2.0);
    return *this;
}

CLine2& CLine2::Normalize() noexcept {
    const double dx = start.x - end.x;
    if (dx > kNormalizeSlack || (std::fabs(dx) <= kNormalizeSlack && start.y > end.y)) SelfReverse();
    return *this;
}

// ---- trimming and extension ----

CLine2& CLine2::ExTrimEnd(const CLine2& other) noexcept {
    Intersection(other, end, ExtendBoth);
    return *this;
}

CLine2& CLine2::ExTrimStart(const CLine2& other) noexcept {
    Intersection(other, start, ExtendBoth);
    return *this;
}

CLine2& CLine2::ExTrimEnd(const CArc2& arc) { return TrimToCurve(*this, arc, &CLine2::end); }
CLine2& CLine2::ExTrimEnd(const CCircle2& circle) { return TrimToCurve(*this, circle, &CLine2::end); }
CLine2& CLine2::ExTrimStart(const CArc2& arc) { return TrimToCurve(*this, arc, &CLine2::start); }
CLine2& CLine2::ExTrimStart(const CCircle2& circle) { return TrimToCurve(*this, circle, &CLine2::start); }

CLine2& CLine2::ExTrimEndX(double x) noexcept {
    end = CDblPoint(x, Y(x));
    return *this;
}

CLine2& CLine2::ExTrimEndY(double y) noexcept {
    end = CDblPoint(X(y), y);
    return *this;
}

CLine2& CLine2::ExTrimStartX(double x) noexcept {
    start = CDblPoint(x, Y(x));
    return *this;
}

CLine2& CLine2::ExTrimStartY(double y) noexcept {
    start = CDblPoint(X(y), y);
    return *this;
}

CLine2 CLine2::Perpendicular(const CDblPoint& p, double length) const noexcept {
    const int side = WhichSide(p, kPerpendicularSide);
    CDblPoint u;
    if (!UnitDirection(*this, u)) return CLine2();
    const CDblPoint normal = side == 1 ? CDblPoint(u.y, -u.x) : CDblPoint(-u.y, u.x);
    return CLine2(p, Along(p, normal, length));
}

// ---- intersection ----

bool CLine2::Intersection(const CLine2& other, CDblPoint& x, ExtendType how) const {
    CDblPointArray points;
    XLineLine(start, end, other.start, other.end, points, how);
    if (points.GetSize() == 0) return false;
    x = points.GetData()[0];
    return true;
}

void CLine2::Intersection(const CArc2& arc, CDblPointArray& out, bool extend) const {
    arc.Intersection(*this, out, extend);
}

void CLine2::Intersection(const CCircle2& circle, CDblPointArray& out, bool extend) const {
    circle.Intersection(*this, out, extend);
}

void CLine2::Intersection(const CDblPointArray& polyline, CDblPointArray& out) const {
    const CDblPoint* v = polyline.GetData();
    for (INT_PTR i = 0; i + 1 < polyline.GetSize(); ++i) {
        CDblPoint x;
        if (Intersection(CLine2(v[i], v[i + 1]), x, ExtendNone)) out.Add(x);
    }
}

// ---- chamfers ----

CLine2 CLine2::ChamferStartStart(CLine2& other, double dx, double dy) {
    CDblPoint corner;
    if (!Intersection(other, corner, ExtendBoth)) return CLine2();
    if (ProjectOnLine(corner, start, end) < 0.0 || ProjectOnLine(corner, other.start, other.end) < 0.0)
        return CLine2();
    const double sinCorner = std::fabs(std::sin(Angle(other)));
    if (sinCorner < kChamferMinSine) return CLine2();
    // Law of sines in the triangle corner, C1, C2: the side corner-C1 faces the
    // angle at C2, between the other line and the chamfer vector.
    const double sinAtC2 = std::fabs(std::sin(other.Angle(CLine2(0.0, 0.0, dx, dy))));
    const double back = sinAtC2 * (std::hypot(dx, dy) / sinCorner) / Length();
    const CDblPoint first(corner.x - back * (end.x - start.x), corner.y - back * (end.y - start.y));
    const CDblPoint second(first.x + dx, first.y + dy);
    if (!IsPointOnLine(first, start, end) || !IsPointOnLine(second, other.start, other.end)) return CLine2();
    end = first;
    other.end = second;
    return CLine2(first, second);
}

CLine2 CLine2::ChamferEndEnd(CLine2& other, double dx, double dy) {
    SelfReverse();
    other.SelfReverse();
    const CLine2 chamfer = ChamferStartStart(other, dx, dy);
    SelfReverse();
    other.SelfReverse();
    return chamfer;
}

CLine2 CLine2::ChamferEndStart(CLine2& other, double dx, double dy) {
    SelfReverse();
    const CLine2 chamfer = ChamferStartStart(other, dx, dy);
    SelfReverse();
    return chamfer;
}

CLine2 CLine2::ChamferStartEnd(CLine2& other, double dx, double dy) {
    other.SelfReverse();
    const CLine2 chamfer = ChamferStartStart(other, dx, dy);
    other.SelfReverse();
    return chamfer;
}

// ---- volume of revolution ----
//
// The outline is taken in the frame of the axis: s along it, r the signed
// distance to its left. A point of space at angle phi round the axis, with
// meridian coordinates (s, rho), lies in the solid when the outline's part
// above the axis (U), turned through [0, a], or its part below folded up (D),
// turned through [pi, pi + a], covers (s, rho). By Pappus a region of first
// moment M about the axis turned through a sweeps a * M, and for a > pi the
// two turns overlap over 2 (a - pi), so
//   V = a (M(U) + M(D)) - 2 max(0, a - pi) M(U and D).
// One sweep across s gives the three moments: between consecutive vertices
// (and the crossings of edges found on the way) the edges are ordered
// straight lines, and each strip between neighbours is a trapezoid whose
// moment is exact.

namespace {

// Relative size, against the outline's extent, below which two edges that
// seem to swap order within a strip are taken as touching, not crossing.
constexpr double kSweepCrossSlack = 1e-12;

enum SweepOwner { kOutline = 0, kFolded = 1, kAxis = 2 };

// An edge of the outline (or of its image folded across the axis), s1 != s2;
// `sign` is the direction along s, for the winding count.
struct SweepEdge {
    double s1, r1, s2, r2;
    int owner, sign;
    double RAt(double s) const noexcept { return r1 + (r2 - r1) * ((s - s1) / (s2 - s1)); }
};

// An edge within a strip [lo, hi]: its distances from the axis at the two sides.
struct StripEdge {
    double ra, rb;
    int owner, sign;
};

struct SweepMoments {
    double upper = 0.0, lower = 0.0, both = 0.0;  // M(U), M(D), M(U and D)
};

// Adds the moments of the slab [lo, hi], crossed in full by `active`.
void AddSlab(double lo, double hi, const std::vector<const SweepEdge*>& active, double slack, SweepMoments& m) {
    std::vector<std::pair<double, double>> todo{{lo, hi}};
    std::vector<StripEdge> edges;
    while (!todo.empty()) {
        const double a = todo.back().first, b = todo.back().second;
        todo.pop_back();
        edges.assign(1, StripEdge{0.0, 0.0, kAxis, 0});  // the axis splits strips that reach across it
        for (const SweepEdge* e : active) edges.push_back(StripEdge{e->RAt(a), e->RAt(b), e->owner, e->sign});
        // Ordered in the middle, where edges that meet at a side of the slab are already apart.
        std::sort(edges.begin(), edges.end(),
                  [](const StripEdge& p, const StripEdge& q) { return p.ra + p.rb < q.ra + q.rb; });
        // Neighbours in the wrong order at a side cross within the slab: split at the crossing.
        bool split = false;
        for (std::size_t i = 0; i + 1 < edges.size() && !split; ++i) {
            const double da = edges[i + 1].ra - edges[i].ra, db = edges[i + 1].rb - edges[i].rb;
            if (!(da < -slack) && !(db < -slack)) continue;
            const double s = a + (b - a) * (da / (da - db));
            if (s > a && s < b) {
                todo.push_back({a, s});
                todo.push_back({s, b});
                split = true;
            }
        }
        if (split) continue;
        int winding[2] = {0, 0};
        bool above = false;
        for (std::size_t i = 0; i + 1 < edges.size(); ++i) {
            const StripEdge &e = edges[i], &n = edges[i + 1];
            if (e.owner == kAxis)
                above = true;
            else
                winding[e.owner] += e.sign;
            const bool inU = winding[kOutline] != 0, inD = winding[kFolded] != 0;
            if (!above || !(inU || inD)) continue;
            // The integral of r over the trapezoid, (1/2) * integral of (top^2 - bottom^2) ds.
            const double dm =
                (b - a) / 6.0 * (n.ra * n.ra + n.ra * n.rb + n.rb * n.rb - e.ra * e.ra - e.ra * e.rb - e.rb * e.rb);
            if (inU) m.upper += dm;
            if (inD) m.lower += dm;
            if (inU && inD) m.both += dm;
        }
    }
}

}  // namespace

double CLine2::GetRotateVolume(const CDblPointArray& outline, double angle) const {
    const INT_PTR n = outline.GetSize();
    const bool axisOk = IsFinite(start) && IsFinite(end) && !(start == end);
    if (n < 3 || !axisOk || !std::isfinite(angle)) return -1.0;
    const double len = Length(), ux = (end.x - start.x) / len, uy = (end.y - start.y) / len;
    std::vector<double> s(static_cast<std::size_t>(n)), r(s.size());
    double extent = 0.0;
    for (std::size_t i = 0; i < s.size(); ++i) {
        const CDblPoint& p = outline[static_cast<INT_PTR>(i)];
        if (!IsFinite(p)) return -1.0;
        const double dx = p.x - start.x, dy = p.y - start.y;
        s[i] = dx * ux + dy * uy;
        r[i] = ux * dy - uy * dx;
        extent = std::max({extent, std::fabs(s[i] - s[0]), std::fabs(r[i])});
    }
    // Edges along the axis direction's normal add nothing to any strip.
    std::vector<SweepEdge> edges;
    for (std::size_t i = 0; i < s.size(); ++i) {
        const std::size_t j = (i + 1) % s.size();
        if (s[i] == s[j]) continue;
        const int sign = s[j] > s[i] ? 1 : -1;
        edges.push_back(SweepEdge{s[i], r[i], s[j], r[j], kOutline, sign});
        edges.push_back(SweepEdge{s[i], -r[i], s[j], -r[j], kFolded, sign});
    }
    std::sort(edges.begin(), edges.end(),
              [](const SweepEdge& p, const SweepEdge& q) { return std::min(p.s1, p.s2) < std::min(q.s1, q.s2); });
    std::vector<double> events(s);
    std::sort(events.begin(), events.end());
    events.erase(std::unique(events.begin(), events.end()), events.end());
    SweepMoments m;
    std::vector<const SweepEdge*> active;
    std::size_t next = 0;
    for (std::size_t k = 0; k + 1 < events.size(); ++k) {
        const double lo = events[k];
        for (; next < edges.size() && std::min(edges[next].s1, edges[next].s2) <= lo; ++next)
            active.push_back(&edges[next]);
        active.erase(std::remove_if(active.begin(), active.end(),
                                    [lo](const SweepEdge* e) { return std::max(e->s1, e->s2) <= lo; }),
                     active.end());
        AddSlab(lo, events[k + 1], active, kSweepCrossSlack * extent, m);
    }
    const double a = std::min(std::fabs(angle), k2Pi);
    const double volume = a * (m.upper + m.lower) - 2.0 * std::max(0.0, a - kPi) * m.both;
    return std::isfinite(volume) ? std::max(0.0, volume) : -1.0;
}

// ---- free functions ----

bool IsSameDirectLine(const CLine2& a, const CLine2& b) {
    const double dx1 = a.start.x - a.end.x, dx2 = b.start.x - b.end.x;
    double dy1 = a.start.y - a.end.y, dy2 = b.start.y - b.end.y;
    const bool zeroDx1 = IsDoubleEqual(dx1, 0.0), zeroDx2 = IsDoubleEqual(dx2, 0.0);
    if (zeroDx1 && zeroDx2) return dy1 * dy2 > 0.0;
    if (IsDoubleEqual(dy1, 0.0)) {
        if (IsDoubleEqual(dy2, 0.0)) return dx1 * dx2 > 0.0;
        // Kept as it stands: callers' results depend on this substitution.
        dy1 = 1.0;
        dy2 = 2.0;
    }
    if (dy2 == 0.0) return false;  // dx2 / dy2 would be infinite, never equal to dx1 / dy1
    return IsDoubleEqual(dx1 / dy1, dx2 / dy2) && dx1 * dx2 >= 0.0 && dy1 * dy2 >= 0.0;
}

// ---------------------------------------------------------------- archive

CArchive& operator<<(CArchive& ar, const CLine2& l) { return ar << l.start << l.end; }
CArchive& operator>>(CArchive& ar, CLine2& l) { return ar >> l.start >> l.end; }
void CLine2::Serialize(CArchive& ar) { SerializeByOperators(ar, *this); }

}  // namespace ORVMATH
