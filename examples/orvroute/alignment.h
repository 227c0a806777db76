// The built-in sample road and a generated alignment for tests and benchmarks.
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

}  // namespace orvroute
