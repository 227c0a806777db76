// The planar circular arc CArc2.
//
// An arc is a centre, a radius, a start angle and a signed sweep, both angles
// in radians: a positive sweep runs counter-clockwise, a negative one
// clockwise. The constructor brings the start angle into (-pi, pi] and the
// sweep into [-2*pi, 2*pi] with its sign kept:
//   - a sweep within [-2*pi, 2*pi] is kept as given, so +-2*pi stays a full
//     circle traversed in that sense (a legitimate arc for drawing);
//   - a larger one is reduced modulo 2*pi, and a non-zero whole number of
//     turns becomes one full turn (+-2*pi), never 0;
//   - a sweep of 0 stays 0.
// The fields are public; the members assume these ranges and stay well
// defined (if less tidy) when a caller writes other values directly.
//
// The all-zero arc is the null arc that failing edits leave behind (IsNull).
// An arc of sweep 0 counts as counter-clockwise wherever a sense is needed.
//
// Edits come in pairs: SelfName(...) changes the arc and returns it,
// Name(...) const returns an edited copy (derived with ORVMATH_COPYING_FORM).
#pragma once

#include <orvmath/circle2.h>
#include <orvmath/containers.h>
#include <orvmath/export.h>
#include <orvmath/line2.h>
#include <orvmath/point2.h>
#include <orvmath/selfcopy.h>

#include <cmath>

namespace ORVMATH {

class ORVMATH_API CArc2 : public detail::CentredMoves<CArc2> {
public:
    CDblPoint centre;
    double radius = 0.0;
    double startAngle = 0.0;  // radians, (-pi, pi]
    double sweepAngle = 0.0;  // radians, signed, [-2*pi, 2*pi]

    CArc2() noexcept = default;  // the null arc
    CArc2(const CDblPoint& c, double r, double start, double sweep) noexcept;

    // Every field exactly zero.
    bool IsNull() const noexcept {
        return centre.IsNull() && radius == 0.0 && startAngle == 0.0 && sweepAngle == 0.0;
    }
    bool IsCounterClockwise() const noexcept { return sweepAngle >= 0.0; }

    // ---- measures and points ----
    double Length() const noexcept { return radius * std::fabs(sweepAngle); }
    // Direction from the centre to the end point, in (-pi, pi].
    double EndAngle() const noexcept;
    // Point at the relative parameter t of the sweep: 0 at the start, 1 at the
    // end, extrapolating around the circle outside [0, 1].
    CDblPoint Point(double t) const noexcept { return PointAtAngle(startAngle + t * sweepAngle); }
    CDblPoint StartPoint() const noexcept { return Point(0.0); }
    CDblPoint EndPoint() const noexcept { return Point(1.0); }
    CDblPoint MidPoint() const noexcept { return Point(0.5); }
    // Point of the underlying circle in the direction `angle` (radians) from the centre.
    CDblPoint PointAtAngle(double angle) const noexcept {
        return CDblPoint(centre.x + radius * std::cos(angle), centre.y + radius * std::sin(angle));
    }
    // Direction of travel at the relative parameter t, in (-pi, pi].
    double TangentAngle(double t) const noexcept;
    // The segment from the start point to the end point.
    CLine2 Chord() const noexcept { return CLine2(StartPoint(), EndPoint()); }
    // Does the direction `angle` (radians, any range) from the centre fall within
    // the sweep? Exact bounds, both included; a full sweep contains every direction.
    bool ContainsAngle(double angle) const noexcept;
    // Is p within `tolerance` of the arc? The distance to the arc is | |p - c| - r |
    // when p's direction lies within the sweep, else the distance to the nearer end point.
    bool IsPointOnArc(const CDblPoint& p, double tolerance) const noexcept;

    // ---- placement: Self forms change the arc, plain forms copy ----
    // SelfMove(dx, dy), SelfMove(size), SelfMove(from, to): see detail::CentredMoves.
    // Rotation about c by angle radians, counter-clockwise positive.
    CArc2& SelfRotate(const CDblPoint& c, double angle) noexcept;
    // Reflection in the infinite line p1p2; the sweep changes sign (the arc
    // turns the other way) and the start point is the reflected start point.
    // When p1p2 is exactly degenerate the reflection is in the point p1, a half
    // turn that keeps the sense, as MirrorPoint does for points.
    CArc2& SelfMirror(const CDblPoint& p1, const CDblPoint& p2) noexcept;
    CArc2& SelfMirror(const CLine2& axis) noexcept { return SelfMirror(axis.start, axis.end); }
    // Same curve, travelled from the old end to the old start.
    CArc2& SelfReverse() noexcept;
    // Parallel curve at distance d to the left of the direction of travel
    // (negative d: right). Counter-clockwise arcs have the centre on their
    // left, so their radius shrinks by d; clockwise arcs grow by d. A radius
    // that reaches zero or below leaves the null arc; the null arc stays null.
    CArc2& SelfOffset(double d) noexcept;

    ORVMATH_COPYING_FORM(CArc2, Move)
    ORVMATH_COPYING_FORM(CArc2, Rotate)
    ORVMATH_COPYING_FORM(CArc2, Mirror)
    ORVMATH_COPYING_FORM(CArc2, Reverse)
    ORVMATH_COPYING_FORM(CArc2, Offset)

    // ---- intersection; `out` is emptied first ----
    // With a segment: `extend` takes the segment as its infinite line, the arc
    // stays bounded (as CLine2::Intersection with an arc).
    void Intersection(const CLine2& line, CDblPointArray& out, bool extend) const;
    void Intersection(const CCircle2& circle, CDblPointArray& out) const;
    void Intersection(const CArc2& other, CDblPointArray& out) const;

    // Start and sweep in degrees, start in (-180, 180], as the free arc
    // intersection functions take them.
    double StartDeg() const noexcept;
    double SweepDeg() const noexcept;

    // Stores or loads the archive record (see operator<<).
    void Serialize(CArchive& ar);
};

// Archive record: the centre point record, then radius, start angle and sweep
// angle, in radians as the arc holds them. Loading takes the values as they
// are (no normalisation).
ORVMATH_API CArchive& operator<<(CArchive& ar, const CArc2& a);
ORVMATH_API CArchive& operator>>(CArchive& ar, CArc2& a);

}  // namespace ORVMATH
