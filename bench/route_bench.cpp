// CRoute2::GetPoint throughput: miles swept in order from start to end, and
// uniformly random miles, on the sample road (5 elements) and on a generated
// 1000-element route, so the cost of finding the element for a mile shows.
// Run in Release:
//   orvmath_route_bench --benchmark_min_time=0.5
#include "orvroute/alignment.h"

#include <orvmath/route2.h>

#include <benchmark/benchmark.h>

#include <cstddef>
#include <random>
#include <vector>

namespace {

using ORVMATH::CRoute2;

constexpr double kOffset = 1.75;  // a lane's width off the centre line
constexpr double kStep = 0.1;     // sweep step, metres

CRoute2 Sample() { return orvroute::SampleRoute(); }
CRoute2 Generated1000() { return orvroute::GeneratedRoute(1000); }

void BM_GetPointSweep(benchmark::State& state, CRoute2 (*make)()) {
    const CRoute2 route = make();
    const double start = route.GetStartMile(), end = route.GetEndMile();
    double mile = start;
    for (auto _ : state) {
        benchmark::DoNotOptimize(route.GetPoint(mile, kOffset));
        mile += kStep;
        if (mile > end) mile = start;
    }
    state.SetItemsProcessed(state.iterations());
}

void BM_GetPointRandom(benchmark::State& state, CRoute2 (*make)()) {
    const CRoute2 route = make();
    // Drawn once with a fixed seed; 4096 miles stay in cache, so the loop
    // measures the lookup rather than memory traffic for the inputs.
    std::mt19937_64 rng(12345);
    std::uniform_real_distribution<double> dist(route.GetStartMile(), route.GetEndMile());
    std::vector<double> miles(4096);
    for (double& m : miles) m = dist(rng);
    std::size_t i = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(route.GetPoint(miles[i], kOffset));
        if (++i == miles.size()) i = 0;
    }
    state.SetItemsProcessed(state.iterations());
}

BENCHMARK_CAPTURE(BM_GetPointSweep, sample, &Sample);
BENCHMARK_CAPTURE(BM_GetPointSweep, generated1000, &Generated1000);
BENCHMARK_CAPTURE(BM_GetPointRandom, sample, &Sample);
BENCHMARK_CAPTURE(BM_GetPointRandom, generated1000, &Generated1000);

}  // namespace
