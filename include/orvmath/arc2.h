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
// This holds for the length edits and trims too: arc.ExTrimEnd(line)
// returns a trimmed copy, where CLine2's ExTrimEnd and LengthenEnd change
// the segment in place.
//
// Positions along the arc are relative parameters: 0 at the start, 1 at the
// end (Point, AngleToParam, NearestParam).
#pragma once

#include <orvmath/circle2.h>
#include <orvmath/containers.h>
#include <orvmath/export.h>
#include <orvmath/line2.h>
#include <orvmath/point2.h>
#include <orvmath/rect.h>
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
    bool IsNull() const noexcept { return centre.IsNull() && radius == 0.0 && startAngle == 0.0 && sweepAngle == 0.0; }
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
    // The full circle the arc lies on.
    CCircle2 Circle() const noexcept { return CCircle2(centre, radius); }

    // Relative parameter of the direction `angle` (radians, any range) from
    // the centre: 0 at the start, 1 at the end. A direction outside the sweep
    // is placed past the end it is nearer to along the circle: above 1 beyond
    // the end, below 0 before the start (the direction opposite the arc's
    // middle counts as before the start). A full turn gives [0, 1); an arc of
    // sweep 0 gives 0.
    double AngleToParam(double angle) const noexcept;
    // Parameter in [0, 1] of the point of the arc nearest p: its direction
    // from the centre when that lies within the sweep, else the nearer end
    // (the start on a tie). 0 when p is exactly the centre.
    double NearestParam(const CDblPoint& p) const noexcept;
    CDblPoint NearestPoint(const CDblPoint& p) const noexcept { return Point(NearestParam(p)); }
    // Distance from p to the nearest point of the arc.
    double Distance(const CDblPoint& p) const noexcept;
    // The smallest rectangle holding the arc: its end points and the points
    // where the sweep crosses the directions 0, pi/2, pi and 3*pi/2. left <=
    // right and top <= bottom as y grows (top is the smallest y), as
    // CPolyPath::GetBoundRect.
    CDblRect GetBoundRect() const noexcept;

    // Tolerant equality: centres equal as CDblPoint's == says, and radius,
    // start and sweep so close that no point of the arc moves by more than
    // the point epsilon: |dr| and r*|d angle| within the larger axis of
    // CDblPointEpsilon (r the larger radius, the start compared modulo
    // 2*pi). As a segment equals its reverse, an arc equals its reverse.
    bool operator==(const CArc2& o) const noexcept;
    bool operator!=(const CArc2& o) const noexcept { return !(*this == o); }

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

    // ---- length editing; each keeps the centre, the radius and the sense ----
    // The end (start) moves d further along the circle: |sweep| grows by
    // d / radius, a negative d shortens. The sweep stops at a full turn; an
    // arc shortened below zero length becomes the null arc (to exactly zero
    // it keeps sweep 0). Unchanged when the radius is not positive or d is NaN.
    CArc2& SelfLengthenEnd(double d) noexcept;
    CArc2& SelfLengthenStart(double d) noexcept;
    // The end (start) moves to the direction `angle` (radians) from the
    // centre, the other end staying: the arc grows or shrinks to reach it
    // in its own sense, |sweep| in (0, 2*pi], so the direction of the other
    // end gives a full turn. Unchanged when angle is NaN.
    CArc2& SelfExtendEndToAngle(double angle) noexcept;
    CArc2& SelfExtendStartToAngle(double angle) noexcept;
    // Cuts the arc at its point nearest p (NearestParam) and keeps the part
    // from the start to it (TrimEndAt) or from it to the end (TrimStartAt);
    // p beyond an end leaves that end, p nearest the other end leaves sweep
    // 0. Unchanged when p is exactly the centre.
    CArc2& SelfTrimEndAt(const CDblPoint& p) noexcept;
    CArc2& SelfTrimStartAt(const CDblPoint& p) noexcept;

    // ---- trimming to another curve; unchanged when nothing is found ----
    // The end (start) moves to a point where the arc's full circle meets the
    // other curve: a segment taken as its infinite line, an arc bounded, a
    // circle whole. Each point's parameter is AngleToParam of its direction,
    // and the choice is CLine2's along the arc: points within the arc win,
    // of two the one nearer the moving end; of two outside, the end goes to
    // the larger |parameter| and the start to the smaller. The moved end
    // reaches its point in the arc's own sense, so |sweep| stays within
    // [0, 2*pi) and the other end stays. A radius that is not positive leaves
    // the arc unchanged.
    CArc2& SelfExTrimEnd(const CLine2& line);
    CArc2& SelfExTrimEnd(const CArc2& arc);
    CArc2& SelfExTrimEnd(const CCircle2& circle);
    CArc2& SelfExTrimStart(const CLine2& line);
    CArc2& SelfExTrimStart(const CArc2& arc);
    CArc2& SelfExTrimStart(const CCircle2& circle);

    ORVMATH_COPYING_FORM(CArc2, LengthenEnd)
    ORVMATH_COPYING_FORM(CArc2, LengthenStart)
    ORVMATH_COPYING_FORM(CArc2, ExtendEndToAngle)
    ORVMATH_COPYING_FORM(CArc2, ExtendStartToAngle)
    ORVMATH_COPYING_FORM(CArc2, TrimEndAt)
    ORVMATH_COPYING_FORM(CArc2, TrimStartAt)
    ORVMATH_COPYING_FORM(CArc2, ExTrimEnd)
    ORVMATH_COPYING_FORM(CArc2, ExTrimStart)

    // Splits the arc at its point nearest p into first (start to that point)
    // and second (that point to the end), both with this arc's sense. False,
    // first and second untouched, when p is exactly the centre or the point
    // equals an end point (CDblPoint ==).
    bool Split(const CDblPoint& p, CArc2& first, CArc2& second) const;

    // ---- intersection; `out` is emptied first, a touching point comes once ----
    // With a segment, in order along the segment from its start: `extend`
    // takes the segment as its infinite line, the arc stays bounded.
    // CLine2::Intersection with an arc hands over to this one, so it gives
    // the same points in the same order.
    void Intersection(const CLine2& line, CDblPointArray& out, bool extend) const;
    // With a circle or another arc, in order along this arc from its start
    // (CCircle2::Intersection with an arc gives the same). A point is kept
    // when it lies on both within the sector slack of the free functions
    // (kSectorSlackDeg); two circles count as touching within
    // kCircleContactSlack of their radii (see XCircleCircle).
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

// Arcs on the framework's array.
using CArc2Array = CArray<CArc2, const CArc2&>;

}  // namespace ORVMATH
