// Arc constructions from engineering inputs: an arc from its start, end and
// radius, the fillet of two lines, the fillet of any two lines, arcs and
// circles chosen by pick points, the arc through three points, from a start
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
#include <orvmath/circle2.h>
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

// Tangent points within this sine of a half turn apart (seen from the
// fillet's centre) count as opposite: the fillet is then a half circle and
// its sense is settled by the first pick point (see CalFillet).
constexpr double kFilletHalfTurnSine = 1e-6;

// The fillet of radius R between two curves, each a segment, an arc or a
// circle, given with a point the user picked near it; `trim` also trims or
// extends the curves to the fillet.
//
// Each curve counts as its carrier: a segment as its infinite line, an arc as
// its full circle. Candidates are the circles of radius R tangent to both
// carriers (centres where the carriers offset by +-R meet; a circle offset to
// radius r + R and |r - R|), each with its tangent points T1 on the first
// curve and T2 on the second. The candidate is chosen as a CAD program does:
//   - the carriers cut each other into pieces at the points where they meet
//     (a line at most into three, a circle into arcs); a candidate stays only
//     when T1 lies on the piece of the first carrier under pick1 (the pick
//     projected on the carrier) and T2 on the piece under pick2. A pick or a
//     tangent point within the distance epsilon (CDistanceEpsilon) of a cut,
//     or a pick exactly at a circle's centre, does not restrict its curve.
//     Carriers that do not meet are one piece each. Candidates whose T1 and
//     T2 coincide (CDblPointEpsilon) are dropped;
//   - of those left, the one with the smallest |T1 - pick1| + |T2 - pick2|
//     wins (the first found on a tie).
// For two lines this is the fillet in the corner of the two rays from their
// crossing that hold the picks, wherever along them the picks lie.
//
// The fillet runs from T1 to T2 the shorter way round (|sweep| < pi). When T1
// and T2 are opposite (a half turn within kFilletHalfTurnSine) it is a half
// circle that leaves T1 heading away from pick1 (counter-clockwise when
// neither way does), so that the part of the first curve on the pick's side
// is the one kept. `t1` and `t2`, when given, receive T1 and T2.
//
// With `trim`, each segment or arc gets its tangent point as one of its ends,
// so that the first curve, the fillet and the second curve join smoothly:
// the first curve keeps its part behind T1 (against the fillet's direction
// where it leaves T1), the second its part beyond T2 (along the fillet's
// direction where it arrives). The end that moves is the curve's end when the
// curve runs toward the removed part at its tangent point, else its start, so
// a curve keeps its direction and is trimmed or extended as needed (a segment
// lying wholly on the removed side turns round; an arc may grow up to nearly
// a full circle). A circle is never cut: it stays unchanged.
//
// Null arc, nothing changed, pointers untouched, for R <= 0, anything not
// finite, a degenerate curve (a segment whose ends coincide, a radius <= 0, an
// arc of sweep 0), no candidate left (parallel lines, no circle of radius R
// touches both in the picked pieces), or a trim that would leave a segment or
// an arc of zero length (it lay wholly on the removed side with an end at
// its tangent point).
ORVMATH_API CArc2 CalFillet(CLine2& curve1, const CDblPoint& pick1, CLine2& curve2, const CDblPoint& pick2, double R,
                            bool trim, CDblPoint* t1 = nullptr, CDblPoint* t2 = nullptr);
// The same for the other pairs of curve kinds.
ORVMATH_API CArc2 CalFillet(CLine2& curve1, const CDblPoint& pick1, CArc2& curve2, const CDblPoint& pick2, double R,
                            bool trim, CDblPoint* t1 = nullptr, CDblPoint* t2 = nullptr);
ORVMATH_API CArc2 CalFillet(CLine2& curve1, const CDblPoint& pick1, CCircle2& curve2, const CDblPoint& pick2, double R,
                            bool trim, CDblPoint* t1 = nullptr, CDblPoint* t2 = nullptr);
ORVMATH_API CArc2 CalFillet(CArc2& curve1, const CDblPoint& pick1, CLine2& curve2, const CDblPoint& pick2, double R,
                            bool trim, CDblPoint* t1 = nullptr, CDblPoint* t2 = nullptr);
ORVMATH_API CArc2 CalFillet(CArc2& curve1, const CDblPoint& pick1, CArc2& curve2, const CDblPoint& pick2, double R,
                            bool trim, CDblPoint* t1 = nullptr, CDblPoint* t2 = nullptr);
ORVMATH_API CArc2 CalFillet(CArc2& curve1, const CDblPoint& pick1, CCircle2& curve2, const CDblPoint& pick2, double R,
                            bool trim, CDblPoint* t1 = nullptr, CDblPoint* t2 = nullptr);
ORVMATH_API CArc2 CalFillet(CCircle2& curve1, const CDblPoint& pick1, CLine2& curve2, const CDblPoint& pick2, double R,
                            bool trim, CDblPoint* t1 = nullptr, CDblPoint* t2 = nullptr);
ORVMATH_API CArc2 CalFillet(CCircle2& curve1, const CDblPoint& pick1, CArc2& curve2, const CDblPoint& pick2, double R,
                            bool trim, CDblPoint* t1 = nullptr, CDblPoint* t2 = nullptr);
ORVMATH_API CArc2 CalFillet(CCircle2& curve1, const CDblPoint& pick1, CCircle2& curve2, const CDblPoint& pick2,
                            double R, bool trim, CDblPoint* t1 = nullptr, CDblPoint* t2 = nullptr);

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
