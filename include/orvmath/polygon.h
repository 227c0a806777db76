// Predicates and measures of a polygon given as its vertices in order; the
// closing edge from the last vertex back to the first is implied (the first
// vertex is not repeated). Every comparison is exact: no tolerance applies.
//
// PtInPolygon and IsConcavePolygon throw the plain int 3 below three vertices
// (kept: callers catch it). An int is not a std::exception, so
// catch (const std::exception&) does not see it: catch (int) or catch (...).
#pragma once

#include <orvmath/containers.h>
#include <orvmath/export.h>
#include <orvmath/point2.h>

namespace ORVMATH {

// Unsigned area by the trapezoid sum; no orientation. Fewer than three
// vertices give 0.
ORVMATH_API double PolygonArea(const CDblPointArray& polygon);

// True when pt lies on the same side of every edge (either vertex order),
// points on an edge or on its extension counting as inside. Meaningful only
// for convex polygons. Throws the int 3 for fewer than three vertices.
ORVMATH_API bool PtInPolygon(const CDblPointArray& polygon, const CDblPoint& pt);

// True when pt is inside any polygon, simple or self-intersecting, by the
// nonzero winding rule (so a region wound twice counts as inside). Boundary
// points get no special handling: vertex quadrants are taken with ties going
// to the higher x and y. No minimum vertex count (one vertex gives false);
// an empty array throws CInvalidArgException.
ORVMATH_API bool PtInPolygonEx(const CDblPointArray& polygon, const CDblPoint& pt);

// True when the vertices run counter-clockwise, judged at the vertex of
// greatest x (the first one on ties). False for fewer than three vertices
// and when the turn found there is straight.
ORVMATH_API bool IsPolygonCCW(const CDblPointArray& polygon);

// 1 when the polygon turns both ways (concave), 0 when every turn has the
// same sense or is straight (convex, either orientation), -1 when every turn
// is straight (all vertices collinear). Throws the int 3 for fewer than
// three vertices.
ORVMATH_API int IsConcavePolygon(const CDblPointArray& polygon);

}  // namespace ORVMATH
