// Splitting a concave polygon into convex pieces along its diagonals.
//
// The polygon is a point array of its vertices in order, the closing edge
// from the last vertex back to the first implied (as for the polygon
// predicates), straight edges only, either orientation.
#pragma once

#include <orvmath/clip.h>
#include <orvmath/containers.h>
#include <orvmath/export.h>

namespace ORVMATH {

// Splits the simple polygon `polygon` (no holes) into convex pieces whose
// edges are the polygon's edges and diagonals between its vertices. `pieces`
// is emptied, then receives the pieces, each counter-clockwise and made of
// polygon vertices; returns their number. The pieces cover the polygon
// exactly and do not overlap, so their areas add up to the polygon's.
//
// Method: ear-clipping triangulation, then Hertel-Mehlhorn: a diagonal is
// dropped whenever the two pieces beside it join into a convex piece. The
// count is at most 2r + 1 for r reflex vertices and at most four times the
// fewest convex pieces possible. Cost: O(n^2) for n vertices in the worst
// case (each ear test looks at every reflex vertex).
//
// Before splitting, a vertex equal to the one before it (CDblPointEpsilon),
// or the last one equal to the first, is dropped, and so is a vertex where
// the boundary runs exactly straight on; the pieces do not carry them. A
// convex polygon, straight angles allowed, is one piece.
//
// An invalid polygon gives 0 pieces: fewer than three vertices left after
// the clean-up, a non-finite coordinate, a signed area of 0, or a boundary
// that crosses or touches itself (spikes included), judged on the signs of
// cross products without tolerance. So does a nearly degenerate polygon on
// which rounding leaves no ear to clip. The order of the pieces follows the
// triangulation: do not rely on it.
ORVMATH_API int SplitConcavePolygon(const CDblPointArray& polygon, CDblPolygonArray& pieces);

}  // namespace ORVMATH
