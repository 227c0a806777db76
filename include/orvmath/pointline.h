// Free functions on points and infinite lines: distances, projections,
// reflections, rotations, offsets, side tests, the implicit line equation
// and tangent points.
//
// Angles are radians, counter-clockwise positive with y up, unless a
// function says degrees. "a == b" of two points is CDblPoint equality
// (within CDblPointEpsilon per axis). A line through a and b is the infinite
// line unless a function says segment. No function keeps state or throws.
#pragma once

#include <orvmath/angle.h>
#include <orvmath/containers.h>
#include <orvmath/export.h>
#include <orvmath/point2.h>
#include <orvmath/rect.h>
#include <orvmath/tolerance.h>

#include <cmath>

namespace ORVMATH {

// Slack of IsPointOnLine on the relative parameter at both ends of the segment.
constexpr double kOnLineParamSlack = 1e-6;

namespace detail {
// b - a is within CDblPointEpsilon on both axes: the "line" is a point.
inline bool IsDegenerateLine(const CDblPoint& a, const CDblPoint& b) noexcept {
    return std::fabs(b.y - a.y) <= CDblPointEpsilon::y() && std::fabs(b.x - a.x) <= CDblPointEpsilon::x();
}
// Direction of (dx, dy) in degrees, in (-180, 180]. Adding +0.0 turns a -0.0
// dy into +0.0, so that a point on the negative x axis gets 180, never -180.
inline double PolarAngleDeg(double dx, double dy) noexcept { return std::atan2(dy + 0.0, dx) * kRadToDeg; }
}  // namespace detail

// ---------------------------------------------------------------- measures

// Distance of p from the line ab; |p - a| when a and b coincide within
// CDblPointEpsilon.
ORVMATH_API double DPointLine(const CDblPoint& p, const CDblPoint& a, const CDblPoint& b);

// Returns L = |b - a| and sets sine := (b.y - a.y)/L, cosine := (b.x - a.x)/L;
// both 0 when L is exactly 0.
ORVMATH_API double GetLineLenSinCos(const CDblPoint& a, const CDblPoint& b, double& sine, double& cosine);

// The line ab as A*x + B*y + C = 0, not normalised: A := a.y - b.y,
// B := b.x - a.x, C := a.x*b.y - b.x*a.y. A and B are always written; when
// both are within CDblPointEpsilon of 0 the result is false and C is left
// as it was.
ORVMATH_API bool CalLineABC(const CDblPoint& a, const CDblPoint& b, double& A, double& B, double& C);

// length + |fa*fb| when `add`, else length - |fa*fb| (the route code's
// offset of a length by the product of two factors).
inline double GetOffsetLength(double length, double fa, double fb, bool add) noexcept {
    return add ? length + std::fabs(fa * fb) : length - std::fabs(fa * fb);
}

// ---------------------------------------------------------------- projections

// Relative parameter t of the foot of p on the line ab:
// ((p - a).(b - a)) / |b - a|^2, 0 at a and 1 at b; 0 when a == b.
ORVMATH_API double ProjectOnLine(const CDblPoint& p, const CDblPoint& a, const CDblPoint& b);

// Foot of the perpendicular from p when it falls within the segment ab
// (0 <= t <= 1): foot := it and true. False, foot untouched, when a == b,
// when the foot lies outside the segment, or when p lies EXACTLY on the line
// (kept: callers rely on collinear points being refused).
ORVMATH_API bool ProjectOnLine(const CDblPoint& p, const CDblPoint& a, const CDblPoint& b, CDblPoint& foot);

// `out` is emptied; unless p == centre it receives the two points of the
// circle on the ray through p: the nearer one first, then the opposite one.
ORVMATH_API void ProjectOnCircle(const CDblPoint& p, const CDblPoint& centre, double radius, CDblPointArray& out);

// out := the point of the circle nearest p; left as it was when p == centre.
ORVMATH_API void NearestProjectOnCircle(const CDblPoint& p, const CDblPoint& centre, double radius, CDblPoint& out);

// The arc runs counter-clockwise from startDeg over sweepDeg (DEGREES; a
// negative sweep runs clockwise; any start, the sector may pass +-180).
// When the direction of p from the centre lies within the arc (bounds
// widened by kSectorSlackDeg), out := the point of the arc in that
// direction and true. Otherwise, and when p is exactly the centre, false and
// out untouched.
ORVMATH_API bool NearestProjectOnArc(const CDblPoint& p, const CDblPoint& centre, double radius, double startDeg,
                                     double sweepDeg, CDblPoint& out);

// ---------------------------------------------------------------- transforms

// out := reflection of p in the line ab (in the point a when b - a is
// exactly (0, 0)). out may be p itself.
ORVMATH_API void MirrorPoint(const CDblPoint& a, const CDblPoint& b, const CDblPoint& p, CDblPoint& out);

// Rotates p in place about (cx, cy) by `angle` radians, counter-clockwise.
inline void RotatePoint(double cx, double cy, double angle, CDblPoint& p) noexcept {
    const double c = std::cos(angle), s = std::sin(angle);
    const double dx = p.x - cx, dy = p.y - cy;
    p.x = c * dx - s * dy + cx;
    p.y = c * dy + s * dx + cy;
}

// RotatePoint on `count` consecutive points (nothing when count <= 0).
ORVMATH_API void RotatePoints(double cx, double cy, double angle, CDblPoint* points, int count);

// out := base + factor*(p - base). out may be p itself.
inline void ScalePoint(const CDblPoint& base, const CDblPoint& p, CDblPoint& out, double factor) noexcept {
    out = CDblPoint(base.x + factor * (p.x - base.x), base.y + factor * (p.y - base.y));
}

// Moves a and b by d along the left normal of a->b (negative d: right).
// False, nothing moved, when b - a is exactly (0, 0).
ORVMATH_API bool OffsetLine(CDblPoint& a, CDblPoint& b, double d);

// Moves a and b by d toward the side of the line a->b on which `side` lies
// (away from it for negative d). Returns 1 when `side` is left of a->b, -1
// when right; 0, nothing moved, when `side` lies exactly on the line. When
// b - a is exactly (0, 0) nothing moves, the sign is still returned.
ORVMATH_API int OffsetLine(CDblPoint& a, CDblPoint& b, double d, const CDblPoint& side);

// Writes the four corners of the width x height rectangle centred on
// `centre` and turned by `angle` radians: counter-clockwise from the corner
// that is lower-left before the turn. `corners` must hold four points.
ORVMATH_API void MakeRectangle(const CDblPoint& centre, double angle, double width, double height,
                               CDblPoint* const corners);

// ---------------------------------------------------------------- predicates

// |p.x - q.x| < tolerance and |p.y - q.y| < tolerance: a square, strict at
// its edge.
inline bool IsPointNearPoint(const CDblPoint& p, const CDblPoint& q, double tolerance) noexcept {
    return std::fabs(p.x - q.x) < tolerance && std::fabs(p.y - q.y) < tolerance;
}

// The square test of IsPointNearPoint between p and the point of the
// segment ab nearest p (a when a == b).
ORVMATH_API bool IsPointNearLineSeg(const CDblPoint& p, const CDblPoint& a, const CDblPoint& b, double tolerance);

// Does the foot of p fall within the segment ab, its relative parameter in
// the open interval (-kOnLineParamSlack, 1 + kOnLineParamSlack)? True when
// a == b. The distance of p from the line is NOT looked at: callers use it
// on points they know to lie on the line.
ORVMATH_API bool IsPointOnLine(const CDblPoint& p, const CDblPoint& a, const CDblPoint& b);

// Do p and q lie on different sides of the line ab? 1 different sides, 0
// the same side, 2 when either lies exactly on the line (p is tested
// first), -1 when a and b coincide within CDblPointEpsilon.
ORVMATH_API int IsOnDifferentSides(const CDblPoint& a, const CDblPoint& b, const CDblPoint& p, const CDblPoint& q);

// ---------------------------------------------------------------- tangents

// `out` is emptied, then receives the tangent points from p to the circle:
// the polar line of p intersected with the circle by the equation form of
// XLineCircle (its point order; nothing when p lies inside the circle).
ORVMATH_API void TCircle(const CDblPoint& p, const CDblPoint& centre, double radius, CDblPointArray& out);

// `out` is emptied, then receives the tangent points from p to the
// axis-parallel ellipse inscribed in `box` (a normalised copy): the polar
// line of p intersected with the ellipse by XLineEllipse (its point order).
// Nothing when p lies inside or the box has a zero side; p on the ellipse
// gives p itself.
ORVMATH_API void TEllipse(CDblPoint p, const CDblRect& box, CDblPointArray& out);

}  // namespace ORVMATH
