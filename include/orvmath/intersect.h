// Intersections of lines, segments, circles, circular arcs and axis-parallel
// ellipses.
//
// Lines come either as two points or as the implicit equation
// A*x + B*y + C = 0; circles as centre and radius; arcs as a circle plus a
// start angle and a sweep in DEGREES (positive sweep counter-clockwise). The
// angle of a point on an arc is atan2 about the arc's centre, in
// (-180, 180]. Results go into a CDblPointArray: each function says whether
// it empties the array first or appends to it. Nothing throws; no
// intersection is an empty result (or false).
#pragma once

#include <orvmath/containers.h>
#include <orvmath/export.h>
#include <orvmath/point2.h>
#include <orvmath/rect.h>

namespace ORVMATH {

// Which operands of an intersection are taken as unbounded: bit 0 extends
// the first operand (the line) to its full line, bit 1 the second (a segment
// to its line, an arc to its full circle).
enum ExtendType {
    ExtendNone = 0,    // both operands bounded
    ExtendFirst = 1,   // the first operand is its full line
    ExtendSecond = 2,  // the second operand is its full line or circle
    ExtendBoth = 3     // both extended
};

// Parallel test of the equation form: lines whose normals make an angle with
// |tan| below this count as parallel.
constexpr double kParallelTangent = 8.46097e-9;
// Slack of the circle root filters: a root's imaginary part relative to its
// real part, and a point's relative radial error.
constexpr double kRootImagSlack = 0.01;
constexpr double kRadialSlack = 0.0001;
// Segment-circle: a point X lies between the ends p1, p2 when (X-p1).(X-p2)
// does not exceed this.
constexpr double kBetweenEndsSlack = 1e-8;
// Two circles touch externally when the gap between them is at most this
// fraction of the sum of the radii.
constexpr double kCircleContactSlack = 0.0001;
// Side tolerance with which a degenerate segment (a point) is tested against
// the other segment's line in the segment form of XLineLine.
constexpr double kDegenerateSideTolerance = 1e-6;
// Relative gap (in units of the semi-axes) within which a line or an ellipse
// counts as touching an ellipse: one tangent point is reported instead of
// two nearly equal ones (or none).
constexpr double kEllipseTangentSlack = 1e-10;

// ---------------------------------------------------------------- lines

// Two lines a1*x + b1*y + c1 = 0 and a2*x + b2*y + c2 = 0. False when either
// has a1 = b1 = 0 (a2 = b2 = 0) exactly, or when the lines are parallel
// (|det/dot| of the normals below kParallelTangent; perpendicular lines skip
// that test). Otherwise x := the intersection and true; x is untouched on
// false.
ORVMATH_API bool XLineLine(double a1, double b1, double c1, double a2, double b2, double c2, CDblPoint& x);

// The infinite lines p1p2 and q1q2. Computed relative to p1 for accuracy.
// False when either pair of points coincides within CDblPointEpsilon, or the
// lines are parallel; x is untouched on false.
ORVMATH_API bool XLineLine(const CDblPoint& p1, const CDblPoint& p2, const CDblPoint& q1, const CDblPoint& q2,
                           CDblPoint& x);

// Segments p1p2 and q1q2, each extended to its line when its bit of `how` is
// set. `out` is emptied, then receives at most one point.
// With how == ExtendNone, shared ends are settled first: p1 equal to q1 or
// q2 gives p1, else p2 equal to q1 or q2 gives p2; a segment whose ends
// coincide is reported when its midpoint lies within
// kDegenerateSideTolerance of the other segment's infinite line (however far
// beyond its ends) and the call ends there.
// A bounded segment accepts a point up to CDistanceEpsilon beyond its ends.
// Parallel and collinear segments give nothing (apart from a shared end).
ORVMATH_API void XLineLine(const CDblPoint& p1, const CDblPoint& p2, const CDblPoint& q1, const CDblPoint& q2,
                           CDblPointArray& out, ExtendType how);

// ---------------------------------------------------------------- circles

// The line a*x + b*y + c = 0 and the circle (cx, cy, r). `out` is emptied.
// Up to two points, in the order of the roots of GetEquation2Root for the
// eliminated coordinate (y eliminated when |b| > |a|, else x); a secant's
// point with the larger remaining coordinate comes first. An exact tangent
// gives its point twice (the double root); a near-tangent whose roots come
// out as a conjugate pair gives one point. A vertical line (b == 0 after
// normalising) gives the upper point first and its tangent point once.
ORVMATH_API void XLineCircle(double a, double b, double c, double cx, double cy, double r, CDblPointArray& out);

// The segment p1p2 (its line when bit 0 of `how` is set; bit 1 is ignored,
// the circle is always whole) and the circle (cx, cy, r). `out` is emptied.
// Nothing when p1 and p2 coincide within CDblPointEpsilon. Order as for the
// equation form.
ORVMATH_API void XLineCircle(const CDblPoint& p1, const CDblPoint& p2, double cx, double cy, double r,
                             CDblPointArray& out, ExtendType how);

// The infinite line p1p2 and the circle (centre, r), with an explicit
// tolerance. APPENDS to `out` (never empties it). Nothing when |p2 - p1| <
// tolerance, or when the line misses the circle by more than the tolerance
// (r^2 - h^2 < -tolerance^2, h the distance of the centre from the line).
// Two points closer (in line parameter) than the tolerance give their mean;
// otherwise the point farther along p1->p2 comes first.
ORVMATH_API void XLineCircle(const CDblPoint& p1, const CDblPoint& p2, const CDblPoint& centre, double r,
                             CDblPointArray& out, double tolerance);

// Two circles. `out` is emptied. External contact (gap up to
// kCircleContactSlack*(r1 + r2)) gives the one point on the line of centres;
// overlapping circles go through their radical line and the equation form
// of XLineCircle. Circles apart, nested or concentric give nothing.
ORVMATH_API void XCircleCircle(double x1, double y1, double r1, double x2, double y2, double r2, CDblPointArray& out);

// ---------------------------------------------------------------- arcs
// An arc keeps the points of its circle whose angle lies in its sector, the
// bounds widened by kSectorSlackDeg (IsAngleInSector); the sector may run
// through +-180 degrees. The order is that of the underlying circle
// intersection.

// The segment p1p2 and the arc (cx, cy, r, start, sweep); degrees. `out` is
// emptied. Bit 0 of `how` extends the segment to its line, bit 1 the arc to
// its full circle. `start` is first brought into (-180, 180].
ORVMATH_API void XLineArc(const CDblPoint& p1, const CDblPoint& p2, double cx, double cy, double r, double start,
                          double sweep, CDblPointArray& out, ExtendType how);

// The line a*x + b*y + c = 0 and the arc; degrees, `start` expected in
// (-180, 180]. `out` is emptied.
ORVMATH_API void XLineArc(double a, double b, double c, double cx, double cy, double r, double start, double sweep,
                          CDblPointArray& out);

// The circle (x1, y1, r1) and the arc (x2, y2, r2, start, sweep); degrees,
// `start` expected in (-180, 180]. `out` is emptied.
ORVMATH_API void XCircleArc(double x1, double y1, double r1, double x2, double y2, double r2, double start,
                            double sweep, CDblPointArray& out);

// Two arcs; degrees, starts expected in (-180, 180]. A point is kept only
// when it lies on both. `out` is emptied.
ORVMATH_API void XArcArc(double x1, double y1, double r1, double start1, double sweep1, double x2, double y2,
                         double r2, double start2, double sweep2, CDblPointArray& out);

// ---------------------------------------------------------------- ellipses

// The line a*x + b*y + c = 0 and the axis-parallel ellipse
// ((x - cx)/ea)^2 + ((y - cy)/eb)^2 = 1. `out` is emptied. The semi-axes are
// taken by absolute value; a zero semi-axis or a = b = 0 gives nothing.
// Two points, the one farther along the line direction (-b, a) first; one
// point when the line touches the ellipse within kEllipseTangentSlack;
// nothing when it misses.
ORVMATH_API void XLineEllipse(double a, double b, double c, double cx, double cy, double ea, double eb,
                              CDblPointArray& out);

// The common points of two axis-parallel elliptic arcs. Each ellipse is the
// one inscribed in its rectangle (a normalised copy: centre the middle,
// semi-axes half the width and half the height; a zero side gives nothing).
// The four numbers are start1, sweep1, start2, sweep2: the sector of each
// ellipse in DEGREES, a point's angle taken with atan2 about that ellipse's
// centre, as for circular arcs; a sweep of 360 keeps the whole ellipse.
// `out` is emptied. The points come in counter-clockwise order of their
// parametric angle on the first ellipse, starting from its right-most
// point; a touching pair (within kEllipseTangentSlack) gives one point;
// coincident ellipses give nothing.
ORVMATH_API void XEllipseEllipse(const CDblRect& box1, const CDblRect& box2, double start1, double sweep1,
                                 double start2, double sweep2, CDblPointArray& out);

}  // namespace ORVMATH
