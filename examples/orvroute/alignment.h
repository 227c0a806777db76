// The built-in sample road, a generated alignment for tests and benchmarks,
// and a check that a route's elements join up.
#pragma once

#include <orvmath/route2.h>

#include <string>
#include <vector>

namespace orvroute {

// The built-in sample: a road from mile 1000 of a straight of 800 m, a
// clothoid (A = 250) into a 500 m left-hand curve of 700 m, a clothoid out
// and a straight of 1200 m: 2950 m in all.
ORVMATH::CRoute2 SampleRoute();

// An alignment of `elements` elements (a multiple of 4): straights of 200 m
// and curves of radius 300 m and 100 m with clothoids of A = 150, turning
// left and right in turn. Starts at mile 0.
ORVMATH::CRoute2 GeneratedRoute(int elements);

// One message for every element whose end does not meet the next critical
// point: a gap in position above `gapTol` or in direction above `angleTol`
// (radians). `pointLines` (may be empty) gives source lines for the messages.
std::vector<std::string> JoinProblems(const ORVMATH::CRoute2& route, const std::vector<int>& pointLines,
                                      double gapTol, double angleTol);

}  // namespace orvroute
