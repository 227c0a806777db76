#include <orvmath/arc2.h>

#include <orvmath/host/archive.h>

#include <orvmath/angle.h>
#include <orvmath/circle2.h>
#include <orvmath/intersect.h>
#include <orvmath/pointline.h>

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

// Counter-clockwise turn from `from` to `to`, in [0, 2*pi).
double CcwTurn(double from, double to) noexcept {
    const double d = NormalizeAng_Rad(to - from);
    return d < 0.0 ? d + k2Pi : d;
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
    if (IsCounterClockwise()) return CcwTurn(startAngle, angle) <= sweepAngle;
    return CcwTurn(angle, startAngle) <= -sweepAngle;
}

bool CArc2::IsPointOnArc(const CDblPoint& p, double tolerance) const noexcept {
    const double gap = ContainsAngle(std::atan2(p.y - centre.y, p.x - centre.x))
                           ? std::fabs(Distance(p, centre) - radius)
                           : std::min(Distance(p, StartPoint()), Distance(p, EndPoint()));
    return gap <= tolerance;
}

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

double CArc2::StartDeg() const noexcept { return NormalizeAng(startAngle * kRadToDeg); }

double CArc2::SweepDeg() const noexcept { return sweepAngle * kRadToDeg; }

void CArc2::Intersection(const CLine2& line, CDblPointArray& out, bool extend) const {
    XLineArc(line.start, line.end, centre.x, centre.y, radius, StartDeg(), SweepDeg(), out,
             extend ? ExtendFirst : ExtendNone);
}

void CArc2::Intersection(const CCircle2& circle, CDblPointArray& out) const {
    XCircleArc(circle.centre.x, circle.centre.y, circle.radius, centre.x, centre.y, radius, StartDeg(), SweepDeg(),
               out);
}

void CArc2::Intersection(const CArc2& other, CDblPointArray& out) const {
    XArcArc(centre.x, centre.y, radius, StartDeg(), SweepDeg(), other.centre.x, other.centre.y, other.radius,
            other.StartDeg(), other.SweepDeg(), out);
}

// ---------------------------------------------------------------- archive

CArchive& operator<<(CArchive& ar, const CArc2& a) { return ar << a.centre << a.radius << a.startAngle << a.sweepAngle; }
CArchive& operator>>(CArchive& ar, CArc2& a) { return ar >> a.centre >> a.radius >> a.startAngle >> a.sweepAngle; }
void CArc2::Serialize(CArchive& ar) { SerializeByOperators(ar, *this); }

}  // namespace ORVMATH
