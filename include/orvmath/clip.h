// Clipping of segments, arcs and circles by polygons, and the line
// visibility descriptors of hidden-line drawing.
//
// A polygon is a point array of its vertices in order, the closing edge from
// the last vertex back to the first implied (as for the polygon predicates),
// straight edges only, either orientation. Its inside is read by the nonzero
// winding rule; the contract is a simple polygon.
//
// One boundary rule holds for every function here: a point within
// CDistanceEpsilon of an edge is on the boundary, and the boundary belongs to
// the polygon. So a piece that runs along an edge counts as inside (hidden,
// for ClipLineWithMultiPolygon), and a curve that only touches the polygon at
// a point has no inside piece.
//
// Except for ClipLineCB, the clips share one mechanism: the parameters at
// which the curve meets the polygon's edges are sorted, parameters closer
// together than CDistanceEpsilon (as a length along the curve) are merged,
// and each piece between two of them is classified by its middle point.
// Hence no piece is shorter than CDistanceEpsilon unless the whole curve is,
// and a crossing point is the end of one piece and the start of the next.
//
// A polygon with fewer than three vertices, a non-finite coordinate or a
// signed area of exactly 0 (all vertices on one line) encloses nothing. A
// curve with a non-finite coordinate or a negative radius gives no pieces at
// all (every output emptied). A curve of zero
// length (a segment whose ends coincide, an arc of radius or sweep 0) is one
// piece, inside or outside as its point lies.
#pragma once

#include <orvmath/arc2.h>
#include <orvmath/circle2.h>
#include <orvmath/containers.h>
#include <orvmath/export.h>
#include <orvmath/host/array.h>
#include <orvmath/line2.h>

#include <vector>

namespace ORVMATH {

// Parameter distance under which UnifyLineVisibilityDescriptor takes two
// interval ends as the same parameter and an interval as empty.
constexpr double kVisibilityParamTolerance = 1e-9;

// Polygons, each given as its vertices.
using CDblPolygonArray = CArray<CDblPointArray, const CDblPointArray&>;

// One interval of a curve's relative parameter (0 at the start, 1 at the
// end; for an arc, the fraction of its sweep) with its visibility.
struct CLineVisibilityInterval {
    double t0 = 0.0;
    double t1 = 0.0;
    bool visible = true;
};

// Which parts of one segment or arc are drawn: intervals within [0, 1],
// ordered by t0, each visible or hidden. Parameters not covered by any
// interval are simply not described. The functions that fill a descriptor
// leave it in the minimal form of UnifyLineVisibilityDescriptor.
class ORVMATH_API CLineVisibilityDescriptor {
public:
    std::vector<CLineVisibilityInterval> intervals;

    // Appends [t0, t1] with its state, unchecked; UnifyLineVisibilityDescriptor
    // puts an edited descriptor back in order.
    void Add(double t0, double t1, bool visible) { intervals.push_back(CLineVisibilityInterval{t0, t1, visible}); }
    void Clear() noexcept { intervals.clear(); }
    bool IsEmpty() const noexcept { return intervals.empty(); }
};

// Rewrites `descriptor` in its minimal form: ends are clamped to [0, 1] (an
// interval given as t0 > t1 is turned round); ends closer than
// kVisibilityParamTolerance become one parameter; intervals left no longer
// than that, or with a non-finite end, are dropped. Where intervals overlap,
// hidden wins over visible. Then intervals of one state that overlap or touch
// (a gap up to kVisibilityParamTolerance) are joined, so neighbouring
// intervals of the result differ in state or are separated by an
// undescribed gap. The result is ordered by t0.
ORVMATH_API void UnifyLineVisibilityDescriptor(CLineVisibilityDescriptor& descriptor);

// Cyrus-Beck clipping of `line` against the convex `polygon` (either
// orientation, taken from its signed area). On true, [t0, t1] is the
// parameter interval of the line inside (0 <= t0 <= t1 <= 1) and `clipped`
// runs from line.Point(t0) to line.Point(t1), in the line's direction (the
// line's own end points where t0 is 0 or t1 is 1).
// The result is true when the part inside is longer than CDistanceEpsilon, or
// when the whole line lies inside (so a line of zero length whose point is
// inside gives true with t0 = 0, t1 = 1). A line that only touches the
// polygon, at a vertex or over less than CDistanceEpsilon, gives false. An
// edge along which the whole line runs within CDistanceEpsilon does not cut
// it (the line counts as inside there).
// A non-convex polygon gives the part within every edge's inner half-plane
// (its kernel), which can be less than the part inside: use
// CLine2::ClipByPolygon for such polygons. False, outputs untouched, for a
// polygon that encloses nothing, a non-finite coordinate, or a line outside.
ORVMATH_API bool ClipLineCB(const CLine2& line, const CDblPointArray& polygon, double& t0, double& t1, CLine2& clipped);

// The pieces of `arc` inside and outside `polygon`, each array emptied first
// and then filled in order along the arc from its start, every piece running
// in the arc's own sense (a clockwise arc gives clockwise pieces). Together
// the pieces make up the arc: its start point begins the first piece, its
// end point ends the last.
ORVMATH_API void ClipArc(const CArc2& arc, const CDblPointArray& polygon, CArc2Array& inside, CArc2Array& outside);

// The pieces of `circle` inside and outside `polygon` as counter-clockwise
// arcs, each array emptied first. A circle that meets the boundary is cut
// only there: the pieces follow counter-clockwise from the first cut at or
// after angle 0 (the circle's east point), and no piece is split at angle 0.
// A circle that does not cross the boundary is one full-turn arc (start 0,
// sweep 2*pi) in `inside` or `outside`. A circle of radius 0 is one arc of
// radius 0 and sweep 2*pi, placed by its centre.
ORVMATH_API void ClipCircle(const CCircle2& circle, const CDblPointArray& polygon, CArc2Array& inside,
                            CArc2Array& outside);

// Hidden-line clipping: each polygon hides the part of `line` inside it
// (boundary included). `descriptor` is emptied, then receives the minimal
// descriptor over the whole of [0, 1]: hidden where any polygon hides, visible
// elsewhere. `visible` is emptied, then receives the visible pieces as
// segments in order along the line. A visible stretch no longer than
// CDistanceEpsilon between two hidden ones (a narrow gap between polygons)
// lies within that distance of a boundary and is hidden too. Polygons that
// enclose nothing hide nothing; no polygon at all leaves the line visible. A
// non-finite line gives an empty descriptor and no pieces.
ORVMATH_API void ClipLineWithMultiPolygon(const CLine2& line, const CDblPolygonArray& polygons,
                                          CLineVisibilityDescriptor& descriptor, CLine2Array& visible);

}  // namespace ORVMATH
