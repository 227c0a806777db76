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

    // ---- intersection; `out` is emptied first ----
    // With a segment: `extend` takes the segment as its infinite line.
    void Intersection(const CLine2& line, CDblPointArray& out, bool extend) const;
    void Intersection(const CCircle2& other, CDblPointArray& out) const;
    void Intersection(const CArc2& arc, CDblPointArray& out) const;

    // Stores or loads the archive record (see operator<<).
    void Serialize(CArchive& ar);
};

// Archive record: the centre point record, then the radius.
ORVMATH_API CArchive& operator<<(CArchive& ar, const CCircle2& c);
ORVMATH_API CArchive& operator>>(CArchive& ar, CCircle2& c);

}  // namespace ORVMATH
