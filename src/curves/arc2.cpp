#include <orvmath/arc2.h>

#include <orvmath/host/archive.h>

#include <orvmath/angle.h>
#include <orvmath/circle2.h>
#include <orvmath/intersect.h>
#include <orvmath/pointline.h>

#include "curve_detail.h"

#include <algorithm>
#include <cmath>

namespace ORVMATH {

namespace {

// Sweep with its sign kept and its magnitude brought into [0, 2*pi]; a
// non-zero whole number of turns is one full turn.
double ReduceSweep(double sweep) noexcept {
    if (std::fabs(sweep) <= k2Pi) return sweep;
    const double r = std::fmod(sweep, k2Pi);
    return r == 0.0 ? std::copysign(k2Pi, sweep) : r;
}

// Turn from `from` to `to` in the arc's own sense, in [0, 2*pi).
double SenseTurn(const CArc2& a, double from, double to) noexcept {
    return a.IsCounterClockwise() ? detail::CcwTurn(from, to) : detail::CcwTurn(to, from);
}

// The turn (radians, in the arc's sense) from the start to the direction
// `angle`, placed in [|sweep|/2 - pi, |sweep|/2 + pi): within the sweep it
// lies in [0, |sweep|], outside it past the nearer end. Every position along
// the arc (parameters, nearest points, trims, ordering) goes through here.
double Turn(const CArc2& a, double angle) noexcept {
    const double t = SenseTurn(a, a.startAngle, angle);
    return t >= std::fabs(a.sweepAngle) / 2.0 + kPi ? t - k2Pi : t;
}

double DirectionOf(const CArc2& a, const CDblPoint& p) noexcept {
    return std::atan2(p.y - a.centre.y, p.x - a.centre.x);
}

// Moves the end (atEnd) or the start to the direction at `turn` from the
// start (as Turn gives it), the other end staying; the moved end travels in
// the arc's sense, so |sweep| comes out in [0, 2*pi].
CArc2& MoveEndToTurn(CArc2& a, double turn, bool atEnd) noexcept {
    const double sense = a.IsCounterClockwise() ? 1.0 : -1.0;
    double kept = atEnd ? turn : std::fabs(a.sweepAngle) - turn;
    if (kept < 0.0) kept += k2Pi;
    if (!atEnd) a.startAngle = NormalizeAng_Rad(a.startAngle + sense * turn);
    a.sweepAngle = sense * kept;
    return a;
}

CArc2& Lengthen(CArc2& a, double d, bool atEnd) noexcept {
    if (!(a.radius > 0.0) || std::isnan(d)) return a;
    const double len = std::fabs(a.sweepAngle), grown = len + d / a.radius;
    if (grown < 0.0) return a = CArc2();
    const double kept = std::min(grown, k2Pi);
    return MoveEndToTurn(a, atEnd ? kept : len - kept, atEnd);
}

CArc2& ExtendToAngle(CArc2& a, double angle, bool atEnd) noexcept {
    if (std::isnan(angle)) return a;
    const double endAngle = a.startAngle + a.sweepAngle;
    double kept = atEnd ? SenseTurn(a, a.startAngle, angle) : SenseTurn(a, angle, endAngle);
    if (kept == 0.0) kept = k2Pi;
    const double sense = a.IsCounterClockwise() ? 1.0 : -1.0;
    if (!atEnd) a.startAngle = NormalizeAng_Rad(angle);
    a.sweepAngle = sense * kept;
    return a;
}

CArc2& TrimAt(CArc2& a, const CDblPoint& p, bool atEnd) noexcept {
    if (p.x == a.centre.x && p.y == a.centre.y) return a;
    return MoveEndToTurn(a, a.NearestParam(p) * std::fabs(a.sweepAngle), atEnd);
}

// The points where the arc's full circle meets the other curve (a segment
// as its infinite line).
void CirclePoints(const CArc2& a, const CLine2& line, CDblPointArray& pts) { a.Circle().Intersection(line, pts, true); }
template <class Curve>
void CirclePoints(const CArc2& a, const Curve& other, CDblPointArray& pts) {
    a.Circle().Intersection(other, pts);
}

template <class Curve>
CArc2& TrimToCurve(CArc2& a, const Curve& other, bool atEnd) {
    if (!(a.radius > 0.0)) return a;
    CDblPointArray pts;
    CirclePoints(a, other, pts);
    const int n = static_cast<int>(std::min<INT_PTR>(pts.GetSize(), 2));
    double t[2] = {0.0, 0.0};
    for (int k = 0; k < n; ++k) t[k] = Turn(a, DirectionOf(a, pts[k]));
    const int i = detail::TrimChoice(n, t[0], t[1], std::fabs(a.sweepAngle), atEnd);
    return i < 0 ? a : MoveEndToTurn(a, t[i], atEnd);
}

// Same arc travelled the same way, within the point epsilon.
bool SameTravel(const CArc2& a, const CArc2& b) noexcept {
    const double eps = detail::PointEpsilonLength(), r = std::max(std::fabs(a.radius), std::fabs(b.radius));
    return a.centre == b.centre && std::fabs(a.radius - b.radius) <= eps &&
           r * std::fabs(NormalizeAng_Rad(a.startAngle - b.startAngle)) <= eps &&
           r * std::fabs(a.sweepAngle - b.sweepAngle) <= eps;
}

}  // namespace

CArc2::CArc2(const CDblPoint& c, double r, double start, double sweep) noexcept
    : centre(c), radius(r), startAngle(NormalizeAng_Rad(start)), sweepAngle(ReduceSweep(sweep)) {}

double CArc2::EndAngle() const noexcept { return NormalizeAng_Rad(startAngle + sweepAngle); }

double CArc2::TangentAngle(double t) const noexcept {
    const double quarter = IsCounterClockwise() ? kPi / 2.0 : -kPi / 2.0;
    return NormalizeAng_Rad(startAngle + t * sweepAngle + quarter);
}

bool CArc2::ContainsAngle(double angle) const noexcept {
    if (IsCounterClockwise()) return detail::CcwTurn(startAngle, angle) <= sweepAngle;
    return detail::CcwTurn(angle, startAngle) <= -sweepAngle;
}

bool CArc2::IsPointOnArc(const CDblPoint& p, double tolerance) const noexcept {
    const double gap = ContainsAngle(std::atan2(p.y - centre.y, p.x - centre.x))
                           ? std::fabs(ORVMATH::Distance(p, centre) - radius)
                           : std::min(ORVMATH::Distance(p, StartPoint()), ORVMATH::Distance(p, EndPoint()));
    return gap <= tolerance;
}

double CArc2::AngleToParam(double angle) const noexcept {
    const double len = std::fabs(sweepAngle);
    return len == 0.0 ? 0.0 : Turn(*this, angle) / len;
}

double CArc2::NearestParam(const CDblPoint& p) const noexcept {
    if (p.x == centre.x && p.y == centre.y) return 0.0;
    return std::clamp(AngleToParam(DirectionOf(*this, p)), 0.0, 1.0);
}

double CArc2::Distance(const CDblPoint& p) const noexcept { return ORVMATH::Distance(p, NearestPoint(p)); }

CDblRect CArc2::GetBoundRect() const noexcept {
    const CDblPoint s = StartPoint(), e = EndPoint();
    CDblRect r(std::min(s.x, e.x), std::min(s.y, e.y), std::max(s.x, e.x), std::max(s.y, e.y));
    if (ContainsAngle(0.0)) r.right = std::max(r.right, centre.x + radius);
    if (ContainsAngle(kPi / 2.0)) r.bottom = std::max(r.bottom, centre.y + radius);
    if (ContainsAngle(kPi)) r.left = std::min(r.left, centre.x - radius);
    if (ContainsAngle(-kPi / 2.0)) r.top = std::min(r.top, centre.y - radius);
    return r;
}

bool CArc2::operator==(const CArc2& o) const noexcept { return SameTravel(*this, o) || SameTravel(*this, o.Reverse()); }

CArc2& CArc2::SelfRotate(const CDblPoint& c, double angle) noexcept {
    RotatePoint(c.x, c.y, angle, centre);
    startAngle = NormalizeAng_Rad(startAngle + angle);
    return *this;
}

CArc2& CArc2::SelfMirror(const CDblPoint& p1, const CDblPoint& p2) noexcept {
    const double ax = p2.x - p1.x, ay = p2.y - p1.y;
    if (ax == 0.0 && ay == 0.0) return SelfRotate(p1, kPi);
    CDblPoint c;
    MirrorPoint(p1, p2, centre, c);
    centre = c;
    // A direction theta reflects to 2 * axis - theta.
    startAngle = NormalizeAng_Rad(2.0 * std::atan2(ay, ax) - startAngle);
    sweepAngle = -sweepAngle;
    return *this;
}

CArc2& CArc2::SelfReverse() noexcept {
    startAngle = NormalizeAng_Rad(startAngle + sweepAngle);
    sweepAngle = -sweepAngle;
    return *this;
}

CArc2& CArc2::SelfOffset(double d) noexcept {
    if (IsNull()) return *this;
    const double r = IsCounterClockwise() ? radius - d : radius + d;
    if (r <= 0.0)
        *this = CArc2();
    else
        radius = r;
    return *this;
}

// ---- length editing and trims ----

CArc2& CArc2::SelfLengthenEnd(double d) noexcept { return Lengthen(*this, d, true); }
CArc2& CArc2::SelfLengthenStart(double d) noexcept { return Lengthen(*this, d, false); }
CArc2& CArc2::SelfExtendEndToAngle(double angle) noexcept { return ExtendToAngle(*this, angle, true); }
CArc2& CArc2::SelfExtendStartToAngle(double angle) noexcept { return ExtendToAngle(*this, angle, false); }
CArc2& CArc2::SelfTrimEndAt(const CDblPoint& p) noexcept { return TrimAt(*this, p, true); }
CArc2& CArc2::SelfTrimStartAt(const CDblPoint& p) noexcept { return TrimAt(*this, p, false); }
CArc2& CArc2::SelfExTrimEnd(const CLine2& line) { return TrimToCurve(*this, line, true); }
CArc2& CArc2::SelfExTrimEnd(const CArc2& arc) { return TrimToCurve(*this, arc, true); }
CArc2& CArc2::SelfExTrimEnd(const CCircle2& circle) { return TrimToCurve(*this, circle, true); }
CArc2& CArc2::SelfExTrimStart(const CLine2& line) { return TrimToCurve(*this, line, false); }
CArc2& CArc2::SelfExTrimStart(const CArc2& arc) { return TrimToCurve(*this, arc, false); }
CArc2& CArc2::SelfExTrimStart(const CCircle2& circle) { return TrimToCurve(*this, circle, false); }

bool CArc2::Split(const CDblPoint& p, CArc2& first, CArc2& second) const {
    if (p.x == centre.x && p.y == centre.y) return false;
    const CDblPoint cut = NearestPoint(p);
    if (cut == StartPoint() || cut == EndPoint()) return false;
    first = TrimEndAt(p);
    second = TrimStartAt(p);
    return true;
}

double CArc2::StartDeg() const noexcept { return NormalizeAng(startAngle * kRadToDeg); }

double CArc2::SweepDeg() const noexcept { return sweepAngle * kRadToDeg; }

void CArc2::Intersection(const CLine2& line, CDblPointArray& out, bool extend) const {
    XLineArc(line.start, line.end, centre.x, centre.y, radius, StartDeg(), SweepDeg(), out,
             extend ? ExtendFirst : ExtendNone);
    detail::OrderPoints(out, [&line](const CDblPoint& p) { return ProjectOnLine(p, line.start, line.end); });
}

void CArc2::Intersection(const CCircle2& circle, CDblPointArray& out) const {
    XCircleArc(circle.centre.x, circle.centre.y, circle.radius, centre.x, centre.y, radius, StartDeg(), SweepDeg(),
               out);
    detail::OrderPoints(out, [this](const CDblPoint& p) { return Turn(*this, DirectionOf(*this, p)); });
}

void CArc2::Intersection(const CArc2& other, CDblPointArray& out) const {
    XArcArc(centre.x, centre.y, radius, StartDeg(), SweepDeg(), other.centre.x, other.centre.y, other.radius,
            other.StartDeg(), other.SweepDeg(), out);
    detail::OrderPoints(out, [this](const CDblPoint& p) { return Turn(*this, DirectionOf(*this, p)); });
}

// ---------------------------------------------------------------- archive

CArchive& operator<<(CArchive& ar, const CArc2& a) {
    return ar << a.centre << a.radius << a.startAngle << a.sweepAngle;
}
CArchive& operator>>(CArchive& ar, CArc2& a) { return ar >> a.centre >> a.radius >> a.startAngle >> a.sweepAngle; }
void CArc2::Serialize(CArchive& ar) { SerializeByOperators(ar, *this); }

}  // namespace ORVMATH
