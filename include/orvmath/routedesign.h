// Route design by parameters: the critical points of a route laid out from
// what an alignment is designed with, either a start, a heading and a list
// of elements (length and radius, clothoids by length or by A), or the
// tangent polygon (PI coordinates with a radius and the clothoid parameters
// at each). GetRouteElements and CRoute2::GetStandardIntersection read a
// route back into those forms.
//
// Clothoids are laid out with the evaluation of the given ClothoidMode, so
// that a route built with CLOTHOID_EXACT (the default) and evaluated in that
// mode meets every critical point it was built with within rounding (about
// 1e-9 m on alignments of kilometres).
#pragma once

#include <orvmath/export.h>
#include <orvmath/route2.h>

namespace ORVMATH {

// A clothoid may turn at most this far from its point of zero curvature
// (radians): within it the exact evaluation holds 1e-9 m and the next point
// stays ahead of the clothoid's start, as the route model requires.
constexpr double kRouteDesignMaxClothoidTurn = kPi / 2;

// Lays out the critical points of `elements` starting at `start` in the
// direction `startAngle`: one point where each element begins, plus the end.
// Straights and arcs give one element each (an arc turns to the side of its
// radius's sign, by less than a full circle). A transition runs from
// startRadius to radius with curvature changing linearly along it; one whose
// radii lie on opposite sides is split where the curvature passes zero into
// two (both with its A), since an element of the route turns one way only.
// The end point takes the type SEGMENT_LINE, the final direction and radius.
// `points` is emptied first. Returns -1 when all is well, or the index of the
// first element that cannot be laid out (points then empty): a length that is
// not positive and finite (a transition may give a positive spiralA instead),
// an arc of radius 0 or of a full turn or more, a transition with equal radii
// at both ends or turning beyond kRouteDesignMaxClothoidTurn from zero
// curvature, or a type that is none of the three.
ORVMATH_API int BuildRouteFromElements(const CDblPoint& start, double startAngle, const CRouteElementArray& elements,
                                       CCriticalPointArray& points, ClothoidMode mode = CLOTHOID_EXACT);

// The elements of `route` in the form BuildRouteFromElements takes (length
// from the mile table, radii signed by the side the element turns to,
// transitions with both radii and their A), so that laying them out from the
// route's first point and direction rebuilds the route. `elements` is
// emptied first; returns the number of elements. An element of another type
// comes back as it is (its fields other than type and length are 0).
ORVMATH_API int GetRouteElements(const CRoute2& route, CRouteElementArray& elements);

// Lays out the route of a tangent polygon (at least two vertices): from the
// first vertex to the last, with at each interior vertex the curve of its
// radius and clothoids, placed so that the curve's ends lie on the two
// tangents (the curve may be asymmetric: T1 and T2, the distances from the
// vertex to where it leaves and rejoins the tangents, are solved for).
// A vertex where the polygon runs straight on has no curve. `points` is
// emptied first. Returns -1 when all is well, or the index of the first
// vertex whose curve cannot be placed (points then empty): two vertices
// that coincide, a polygon that turns back on itself, a radius that is not
// positive, clothoids turning further than the vertex deflects, or a curve
// whose tangent length overlaps its neighbour's (or passes an end).
ORVMATH_API int BuildRouteFromPI(const CRoutePIArray& pis, CCriticalPointArray& points,
                                 ClothoidMode mode = CLOTHOID_EXACT);

}  // namespace ORVMATH
