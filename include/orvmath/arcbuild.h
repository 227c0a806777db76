// Arc constructions from engineering inputs: an arc from its start, end and
// radius, the fillet of two lines, the arc through three points, from a start
// with its tangent, about a centre, and from a start, tangent, radius and
// length.
//
// Every construction returns the arc by value, angles in radians as CArc2
// holds them (a positive sweep runs counter-clockwise). Impossible input --
// coincident points, a radius too small for the chord, parallel lines, NaN --
// gives the null arc (CArc2::IsNull), never an exception. "Coincident" means
// equal under the point epsilon (CDblPointEpsilon), as CDblPoint's == says.
#pragma once

#include <orvmath/arc2.h>
#include <orvmath/export.h>
#include <orvmath/line2.h>
#include <orvmath/point2.h>

namespace ORVMATH {

// Which of the four arcs of radius R from a start to an end point:
// `ccw` true runs counter-clockwise (turning left from start to end), false
// clockwise; `major` true takes the arc longer than a half circle, false the
// shorter one.
struct CArcChoice {
    bool ccw = true;
    bool major = false;
};

// The arc of the circle (centre, radius) from the direction of `start` to the
// direction of `end` seen from the centre, counter-clockwise when ccw (sweep
// in (0, 2*pi]) or clockwise (sweep in [-2*pi, 0)); the same direction for
// both gives a full turn. The points need not lie on the circle: only their
// directions count. Null when radius is not positive or a point is exactly
// the centre.
ORVMATH_API CArc2 CalArcFromCenter(const CDblPoint& centre, double radius, const CDblPoint& start, const CDblPoint& end,
                                   bool ccw);

// Centre, start and end: CalArcFromCenter with the radius |start - centre|.
ORVMATH_API CArc2 CalArcFromCSE(const CDblPoint& centre, const CDblPoint& start, const CDblPoint& end, bool ccw);

// Start, end and radius R, the candidate chosen by `choice`. With c the
// chord length, the centre lies on the chord's perpendicular bisector at
// sqrt(R^2 - (c/2)^2) from its middle: on the left of start -> end for a
// counter-clockwise minor or a clockwise major arc, on the right otherwise.
// R within the distance epsilon (CDistanceEpsilon) below c/2 still gives the
// half circle about the chord's middle. Null when start and end coincide or
// R < c/2 beyond that tolerance.
ORVMATH_API CArc2 CalArcFromSER(const CDblPoint& start, const CDblPoint& end, double R, CArcChoice choice = {});

// The fillet of radius R between two segments: the arc tangent to both
// infinite lines, in the corner where the segments lie, seen from the lines'
// intersection X (for each segment, the side of X holding its middle point,
// or its direction when the middle is X itself). It runs from the tangent
// point on line1 to the tangent point on line2, the shorter way (sweep in
// (-pi, pi)). `t1` and `t2`, when given, receive the tangent points. Null
// (tangent points untouched) for R <= 0, a degenerate segment or parallel
// lines (no intersection).
ORVMATH_API CArc2 CalArcFromTTR(const CLine2& line1, const CLine2& line2, double R, CDblPoint* t1 = nullptr,
                                CDblPoint* t2 = nullptr);

// The arc from p1 through p2 to p3. Null when two points coincide or the
// three are collinear (to the exactness of a zero cross product).
ORVMATH_API CArc2 CalArcFrom3Points(const CDblPoint& p1, const CDblPoint& p2, const CDblPoint& p3);

// The arc that leaves `start` in the direction `tangent` (radians) and passes
// through `end`; it turns to the side of end. Null when end lies exactly on
// the tangent line (a straight, not an arc), end == start included.
ORVMATH_API CArc2 CalArcFromSTE(const CDblPoint& start, double tangent, const CDblPoint& end);

// The arc that leaves `start` in the direction `tangent` (radians) with the
// signed radius R (positive: turning left, counter-clockwise) for an arc
// length `length`. Null when R is 0 or not finite, or length is not positive.
ORVMATH_API CArc2 CalArcFromSTRL(const CDblPoint& start, double tangent, double R, double length);

}  // namespace ORVMATH
