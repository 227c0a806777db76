// Assembling polygons from loose segments: the faces that a drawing's lines
// enclose, as a hatching or area tool needs them.
#pragma once

#include <orvmath/clip.h>
#include <orvmath/containers.h>
#include <orvmath/export.h>
#include <orvmath/host/array.h>
#include <orvmath/line2.h>

namespace ORVMATH {

// One face of a drawing: its outer boundary counter-clockwise and the
// boundaries of its holes clockwise, each ring given by its vertices with
// the closing edge implied (the first vertex is not repeated).
struct CPolygonFace {
    CDblPointArray outer;
    CDblPolygonArray holes;
};

using CPolygonFaceArray = CArray<CPolygonFace, const CPolygonFace&>;

// The closed faces that the segments form. `faces` is emptied, then
// receives them; returns their number.
//
// The segments, in any order and direction, are first made into a planar
// graph: each is split where another crosses it or ends on it, and points
// within CDistanceEpsilon of each other become one node (taken
// transitively; the node keeps the coordinates of its first point, input
// end points before crossings, in input order). An end within
// CDistanceEpsilon of another segment splits that segment there, so lines
// that stop just short of or just past a line meet it. Collinear overlapping
// segments merge into one edge. Segments no longer than CDistanceEpsilon and
// segments with a non-finite coordinate are ignored.
//
// A walk round each node in angle order traces the faces. Edges with the
// same face on both sides then go: dangling lines, and bridges such as a
// line that joins an island to its surroundings. Each bounded face is one
// CPolygonFace; every node on its boundary is a vertex, so a ring may have
// straight vertices where other lines meet it. A piece of the drawing that
// lies inside a face is a hole of that face (the ring round that piece),
// and its own faces are faces of the result as well. Rings are simple:
// where a boundary passes a node twice it is split there, so a piece that
// touches the face's boundary at one node is still a hole, and a piece made
// of two parts that touch at one node gives two holes sharing that node.
// Holes are never filled in, and faces do not overlap (short of the shifts,
// under CDistanceEpsilon, that snapping makes).
//
// Order: each ring starts at its vertex of least x (least y on ties); the
// faces, and the holes of each face, are sorted by that start vertex (x,
// then y), then by the direction of the first edge, counter-clockwise from
// the +x axis.
//
// Cost: O((n + k) log(n + k)) for n segments and k crossings when the
// segments are of like length: a uniform grid of cells about as large as an
// average segment finds the pairs to test, so a segment that spans many
// cells costs as many cells, and many long segments in one region make it
// quadratic. Finding the face round each island tries the faces smallest
// first: O(h * f) box tests for h islands and f faces, and a point-in-ring
// test for each face whose box holds the island's first vertex.
ORVMATH_API int GetPolygons(const CLine2Array& segments, CPolygonFaceArray& faces);

}  // namespace ORVMATH
