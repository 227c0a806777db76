// Offsetting polygons and polylines by a distance, keeping arcs as arcs.
//
// The offset of a polygon is the region grown (positive distance) or shrunk
// (negative) by the distance: the set of points whose distance from the
// region is at most d, or whose distance from the outside is more than |d|.
// The offset of a polyline is its buffer: every point within |d| of it.
// Straight edges move to parallel lines, arcs to concentric arcs; where the
// moved edges leave a gap at a vertex the join fills it; where they overlap,
// or where the offset closes a bay or cuts a neck, the raw offset crosses
// itself and the crossed parts are removed. The result is a set of simple
// polygons: outer boundaries counter-clockwise, holes clockwise, each
// polygon's boundary in one CPolygon2 (holes are separate polygons, and lie
// inside an outer one of the result). Parts that vanish are dropped.
//
// Cost: O((n + k) log n) for n edges and k crossings of the raw offset on
// ordinary input (a sweep finds the crossings, a grid the distances).
#pragma once

#include <orvmath/export.h>
#include <orvmath/host/array.h>
#include <orvmath/polygon2.h>

namespace ORVMATH {

// What fills the gap at a vertex where the offset edges part.
enum OffsetJoin : int {
    // An arc about the vertex, of radius |d|.
    OFFSET_JOIN_ROUND = 0,
    // The two offset edges extended to meet, cut square where the meeting
    // point lies more than miterLimit * |d| from the vertex.
    OFFSET_JOIN_MITER = 1,
    // Cut square at |d| from the vertex, across the bisector.
    OFFSET_JOIN_SQUARE = 2,
};

// How a polyline's buffer ends at its first and last vertex.
enum OffsetCap : int {
    OFFSET_CAP_ROUND = 0,   // a half circle about the end
    OFFSET_CAP_BUTT = 1,    // straight across at the end
    OFFSET_CAP_SQUARE = 2,  // straight across |d| beyond the end
};

using CPolygon2Array = CArray<CPolygon2, const CPolygon2&>;

// Offsets `polygon` (either orientation; read by the nonzero rule, and
// expected simple) by `distance`, positive outward. `out` is emptied, then
// receives the result; returns the number of polygons. miterLimit (at least
// 1; smaller values count as 1) matters for OFFSET_JOIN_MITER only. A
// distance of 0 gives the polygon itself (counter-clockwise, clean of
// duplicate vertices); a polygon with fewer than two vertices or a
// non-finite distance gives nothing.
ORVMATH_API int PolygonOffset(const CPolygon2& polygon, double distance, CPolygon2Array& out,
                              OffsetJoin join = OFFSET_JOIN_ROUND, double miterLimit = 2.0);

// The buffer of `line` at |distance|, with joins as above and `cap` at both
// ends. `out` is emptied, then receives the result; returns the number of
// polygons. A distance of 0, or a polyline of fewer than two distinct
// vertices, gives nothing.
ORVMATH_API int PolygonOffset(const CPolyline2& line, double distance, CPolygon2Array& out, OffsetJoin join,
                              double miterLimit, OffsetCap cap);

}  // namespace ORVMATH
