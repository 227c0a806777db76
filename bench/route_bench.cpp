// CRoute2 evaluation against the first implementation (route_reference.h,
// which rebuilds each element's geometry per call), in one process so the
// speed-up is a ratio of one run:
//   - GetPoint at uniformly random miles and swept in order, on the sample
//     road (5 elements) and a generated 1000-element alignment;
//   - GetPoints over 100k increasing miles against one call per mile of the
//     first implementation;
//   - GetPoints over 10^6 increasing miles on the alignment that
//     bench/python_bench.py evaluates through the Python module, so that the
//     binding's cost per point is the difference of the two.
// Run in Release:
//   orvmath_route_bench --benchmark_repetitions=5 --benchmark_report_aggregates_only=true
#include "orvroute/alignment.h"
#include "route/route_reference.h"

#include <orvmath/route2.h>
#include <orvmath/routedesign.h>

#include <benchmark/benchmark.h>

#include <cstddef>
#include <random>
#include <vector>

namespace {

using ORVMATH::CDblPoint;
using ORVMATH::CRoute2;

constexpr double kOffset = 1.75;  // a lane's width off the centre line
constexpr double kStep = 0.1;     // sweep step, metres

CRoute2 Sample() { return orvroute::SampleRoute(); }
CRoute2 Generated1000() { return orvroute::GeneratedRoute(1000); }

using Ends = std::vector<double>;
CDblPoint Current(const CRoute2& r, const Ends&, double mile) { return r.GetPoint(mile, kOffset); }
// The first implementation, with its mile index (the running sums) built once.
CDblPoint Reference(const CRoute2& r, const Ends& ends, double mile) {
    return route_reference::Point(r, mile, kOffset, &ends);
}

using Evaluator = CDblPoint (*)(const CRoute2&, const Ends&, double);

void BM_Sweep(benchmark::State& state, Evaluator Eval, CRoute2 (*make)()) {
    const CRoute2 route = make();
    const Ends ends = route_reference::MileEnds(route);
    const double start = route.GetStartMile(), end = route.GetEndMile();
    double mile = start;
    for (auto _ : state) {
        benchmark::DoNotOptimize(Eval(route, ends, mile));
        mile += kStep;
        if (mile > end) mile = start;
    }
    state.SetItemsProcessed(state.iterations());
}

void BM_Random(benchmark::State& state, Evaluator Eval, CRoute2 (*make)()) {
    const CRoute2 route = make();
    const Ends ends = route_reference::MileEnds(route);
    // Drawn once with a fixed seed; 4096 miles stay in cache, so the loop
    // measures the evaluation rather than memory traffic for the inputs.
    std::mt19937_64 rng(12345);
    std::uniform_real_distribution<double> dist(route.GetStartMile(), route.GetEndMile());
    std::vector<double> miles(4096);
    for (double& m : miles) m = dist(rng);
    std::size_t i = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(Eval(route, ends, miles[i]));
        if (++i == miles.size()) i = 0;
    }
    state.SetItemsProcessed(state.iterations());
}

// 100k increasing miles over the whole 1000-element alignment.
std::vector<double> IncreasingMiles(const CRoute2& route) {
    std::vector<double> miles(100000);
    for (std::size_t k = 0; k < miles.size(); ++k)
        miles[k] = route.GetStartMile() + route.GetMile() * static_cast<double>(k) / static_cast<double>(miles.size());
    return miles;
}

void BM_IncreasingOneCallPerMile(benchmark::State& state) {
    const CRoute2 route = Generated1000();
    const std::vector<double> miles = IncreasingMiles(route);
    const Ends ends = route_reference::MileEnds(route);
    std::vector<CDblPoint> points(miles.size());
    for (auto _ : state) {
        for (std::size_t k = 0; k < miles.size(); ++k) points[k] = Reference(route, ends, miles[k]);
        benchmark::DoNotOptimize(points.data());
    }
    state.SetItemsProcessed(state.iterations() * static_cast<long>(miles.size()));
}

void BM_IncreasingBatch(benchmark::State& state) {
    const CRoute2 route = Generated1000();
    const std::vector<double> miles = IncreasingMiles(route);
    const std::vector<double> offsets(miles.size(), kOffset);
    std::vector<CDblPoint> points(miles.size());
    std::vector<double> angles(miles.size());
    for (auto _ : state) {
        route.GetPoints(miles.data(), offsets.data(), static_cast<INT_PTR>(miles.size()), points.data(), angles.data());
        benchmark::DoNotOptimize(points.data());
    }
    state.SetItemsProcessed(state.iterations() * static_cast<long>(miles.size()));
}

BENCHMARK_CAPTURE(BM_Random, reference_sample, &Reference, &Sample);
BENCHMARK_CAPTURE(BM_Random, current_sample, &Current, &Sample);
BENCHMARK_CAPTURE(BM_Random, reference_generated1000, &Reference, &Generated1000);
BENCHMARK_CAPTURE(BM_Random, current_generated1000, &Current, &Generated1000);
BENCHMARK_CAPTURE(BM_Sweep, reference_generated1000, &Reference, &Generated1000);
BENCHMARK_CAPTURE(BM_Sweep, current_generated1000, &Current, &Generated1000);
// The alignment of bench/python_bench.py: 250 times a straight of 200, a
// clothoid of A = 150 into R = 300, 100 m of arc and a clothoid out, turning
// left and right in turn; 10^6 increasing miles, offset 1.75.
void BM_MillionBatch(benchmark::State& state) {
    ORVMATH::CRouteElementArray elements;
    for (int i = 0; i < 250; ++i) {
        const double r = i % 2 == 0 ? 300.0 : -300.0;
        elements.Add(ORVMATH::CRouteElement{ORVMATH::SEGMENT_LINE, 200.0, 0.0, 0.0, 0.0});
        elements.Add(ORVMATH::CRouteElement{ORVMATH::SEGMENT_TRANSITION, 0.0, r, 0.0, 150.0});
        elements.Add(ORVMATH::CRouteElement{ORVMATH::SEGMENT_ARC, 100.0, r, 0.0, 0.0});
        elements.Add(ORVMATH::CRouteElement{ORVMATH::SEGMENT_TRANSITION, 0.0, 0.0, r, 150.0});
    }
    ORVMATH::CCriticalPointArray pts;
    ORVMATH::BuildRouteFromElements(CDblPoint(0.0, 0.0), 0.0, elements, pts);
    const CRoute2 route(pts, 0.0, 0.0);
    const std::size_t n = 1000000;
    std::vector<double> miles(n), offsets(n, kOffset), angles(n);
    for (std::size_t k = 0; k < n; ++k) miles[k] = route.GetMile() * static_cast<double>(k) / static_cast<double>(n);
    std::vector<CDblPoint> points(n);
    for (auto _ : state) {
        route.GetPoints(miles.data(), offsets.data(), static_cast<INT_PTR>(n), points.data(), angles.data());
        benchmark::DoNotOptimize(points.data());
    }
    state.SetItemsProcessed(state.iterations() * static_cast<long>(n));
}

BENCHMARK(BM_IncreasingOneCallPerMile)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_IncreasingBatch)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_MillionBatch)->Unit(benchmark::kMillisecond);

}  // namespace
