// The planar circle CCircle2: a centre and a radius.
//
// The all-zero circle is the null circle that failing edits leave behind
// (IsNull). Angles are radians, counter-clockwise from the positive x axis.
//
// Edits come in pairs: SelfName(...) changes the circle and returns it,
// Name(...) const returns an edited copy (derived with ORVMATH_COPYING_FORM).
#pragma once

#include <orvmath/angle.h>
#include <orvmath/containers.h>
#include <orvmath/export.h>
#include <orvmath/line2.h>
#include <orvmath/point2.h>
#include <orvmath/rect.h>
#include <orvmath/selfcopy.h>

#include <cmath>

namespace ORVMATH {

class CArc2;

namespace detail {

// The translations of the curves placed by a centre (CCircle2, CArc2): they
// move the centre only.
template <class Curve>
class CentredMoves {
public:
    Curve& SelfMove(double dx, double dy) noexcept {
        Curve& self = static_cast<Curve&>(*this);
        self.centre.Offset(dx, dy);
        return self;
    }
    Curve& SelfMove(const CDblSize& d) noexcept { return SelfMove(d.cx, d.cy); }
    Curve& SelfMove(const CDblPoint& from, const CDblPoint& to) noexcept {
        return SelfMove(to.x - from.x, to.y - from.y);
    }
};

}  // namespace detail

class ORVMATH_API CCircle2 : public detail::CentredMoves<CCircle2> {
public:
    CDblPoint centre;
    double radius = 0.0;

    CCircle2() noexcept = default;  // the null circle
    CCircle2(const CDblPoint& c, double r) noexcept : centre(c), radius(r) {}

    // Centre exactly (0, 0) and radius exactly 0.
    bool IsNull() const noexcept { return centre.IsNull() && radius == 0.0; }

    double Length() const noexcept { return k2Pi * radius; }
    double Area() const noexcept { return kPi * radius * radius; }
    // Point of the circle in the direction `angle` (radians) from the centre.
    CDblPoint Point(double angle) const noexcept {
        return CDblPoint(centre.x + radius * std::cos(angle), centre.y + radius * std::sin(angle));
    }
    // Is p within `tolerance` of the circle line: | |p - c| - r | <= tolerance?
    bool IsPointOnCircle(const CDblPoint& p, double tolerance) const noexcept {
        return std::fabs(ORVMATH::Distance(p, centre) - radius) <= tolerance;
    }
    // Is p inside the disc, boundary included: |p - c| <= r + tolerance?
    bool PtInCircle(const CDblPoint& p, double tolerance = 0.0) const noexcept {
        return ORVMATH::Distance(p, centre) <= radius + tolerance;
    }

    // Direction (radians, in (-pi, pi]) of the point of the circle nearest
    // p: the direction of p from the centre; 0 when p is exactly the centre.
    // It is the circle's parameter, as Point takes it.
    double NearestAngle(const CDblPoint& p) const noexcept;
    // The point of the circle nearest p; Point(0) when p is exactly the centre.
    CDblPoint NearestPoint(const CDblPoint& p) const noexcept;
    // Distance from p to the circle line: | |p - c| - r |.
    double Distance(const CDblPoint& p) const noexcept { return std::fabs(ORVMATH::Distance(p, centre) - radius); }
    // Direction of counter-clockwise travel at the point in the direction
    // `angle`: angle + pi/2, in (-pi, pi].
    double TangentAngle(double angle) const noexcept { return NormalizeAng_Rad(angle + kPi / 2.0); }
    // The square (centre -+ |radius| on each axis) with left <= right and
    // top <= bottom as y grows, as CPolyPath::GetBoundRect.
    CDblRect GetBoundRect() const noexcept {
        const double r = std::fabs(radius);
        return CDblRect(centre.x - r, centre.y - r, centre.x + r, centre.y + r);
    }

    // Tolerant equality: centres equal as CDblPoint's == says and radii
    // within the larger axis of CDblPointEpsilon.
    bool operator==(const CCircle2& o) const noexcept;
    bool operator!=(const CCircle2& o) const noexcept { return !(*this == o); }

    // ---- tangents; `out` is emptied first, the count is returned ----
    // The tangents from p, each a segment from p to its tangent point: first
    // the one that has the circle on its left, then the other. One segment
    // (p to the point nearest p) when the two tangent points would lie
    // within CDistanceEpsilon of each other, that is p on the circle or
    // inside it by at most CDistanceEpsilon; none when p lies farther inside
    // or the radius is not positive.
    int TangentLines(const CDblPoint& p, CLine2Array& out) const;
    // The common tangents with `other`, each a segment from its tangent
    // point on this circle to the one on the other: first the outer ones
    // (both circles on the same side), then the inner ones (crossing between
    // the centres); of each pair, first the one that touches this circle on
    // the left of the line from this centre to the other. So 4 for circles
    // apart; 3 when they touch from outside, the contact point giving one
    // inner tangent of zero length; 2 when they overlap; 1 of zero length at
    // the contact point when one touches the other from inside; none when
    // one lies inside the other, the centres coincide, either radius is not
    // positive or the circles are equal (==). Circles that overlap, or lie
    // one inside the other, by at most CDistanceEpsilon count as touching;
    // two tangents whose tangent points would lie within CDistanceEpsilon of
    // each other merge into one.
    int CommonTangents(const CCircle2& other, CLine2Array& out) const;

    // ---- placement: Self forms change the circle, plain forms copy ----
    // SelfMove(dx, dy), SelfMove(size), SelfMove(from, to): see detail::CentredMoves.
    // Rotation of the centre about c by angle radians, counter-clockwise positive.
    CCircle2& SelfRotate(const CDblPoint& c, double angle) noexcept;
    // Reflection of the centre in the infinite line p1p2 (in the point p1 when
    // p1p2 is exactly degenerate).
    CCircle2& SelfMirror(const CDblPoint& p1, const CDblPoint& p2) noexcept;
    CCircle2& SelfMirror(const CLine2& axis) noexcept { return SelfMirror(axis.start, axis.end); }
    // Concentric circle with the radius grown by d (shrunk for negative d). A
    // radius that reaches zero or below leaves the null circle; the null
    // circle stays null.
    CCircle2& SelfOffset(double d) noexcept;

    ORVMATH_COPYING_FORM(CCircle2, Move)
    ORVMATH_COPYING_FORM(CCircle2, Rotate)
    ORVMATH_COPYING_FORM(CCircle2, Mirror)
    ORVMATH_COPYING_FORM(CCircle2, Offset)

    // ---- intersection; `out` is emptied first, a touching point comes once ----
    // With a segment, in order along the segment from its start: `extend`
    // takes the segment as its infinite line. CLine2::Intersection with a
    // circle hands over to this one, so it gives the same.
    void Intersection(const CLine2& line, CDblPointArray& out, bool extend) const;
    // With another circle: the point left of the line from this centre to
    // the other first. Circles within kCircleContactSlack of touching from
    // outside give the one contact point; nested, concentric or equal
    // circles give nothing (see XCircleCircle).
    void Intersection(const CCircle2& other, CDblPointArray& out) const;
    // With an arc: the arc's points, in order along the arc from its start
    // (CArc2::Intersection with a circle).
    void Intersection(const CArc2& arc, CDblPointArray& out) const;

    // Stores or loads the archive record (see operator<<).
    void Serialize(CArchive& ar);
};

// The circle through three points: its centre is where the perpendicular
// bisectors meet. The null circle when two points coincide (CDblPoint ==),
// when the three are collinear to the exactness of a zero cross product
// (nearly collinear points give a very large circle), or when the centre
// is not finite.
ORVMATH_API CCircle2 CalCircleFrom3Points(const CDblPoint& p1, const CDblPoint& p2, const CDblPoint& p3);

// Archive record: the centre point record, then the radius.
ORVMATH_API CArchive& operator<<(CArchive& ar, const CCircle2& c);
ORVMATH_API CArchive& operator>>(CArchive& ar, CCircle2& c);

}  // namespace ORVMATH
