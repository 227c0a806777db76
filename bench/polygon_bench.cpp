// How PolygonOffset's cost grows with the number of vertices: a star of n
// vertices on radii n and n - 3 in turn (every other vertex reflex, edges
// about 6.5 long whatever n, so the offset meets the same local shapes)
// grown and shrunk by 1, at n = 10^3, 10^4 and 10^5. The exponent is
// log(t(10^5) / t(10^3)) / log(100).
//   orvmath_polygon_bench --benchmark_repetitions=3 --benchmark_report_aggregates_only=true
#include <orvmath/polygonoffset.h>

#include <benchmark/benchmark.h>

#include <cmath>

namespace {

ORVMATH::CPolygon2 Star(int n) {
    ORVMATH::CPolygon2 p;
    for (int i = 0; i < n; ++i) {
        const double a = 2 * ORVMATH::kPi * i / n, r = i % 2 == 0 ? n : n - 3.0;
        p.AddVertex(ORVMATH::CDblPoint(r * std::cos(a), r * std::sin(a)));
    }
    return p;
}

void BM_PolygonOffset(benchmark::State& state, double d) {
    const ORVMATH::CPolygon2 star = Star(static_cast<int>(state.range(0)));
    ORVMATH::CPolygon2Array out;
    for (auto _ : state) benchmark::DoNotOptimize(ORVMATH::PolygonOffset(star, d, out));
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

}  // namespace

BENCHMARK_CAPTURE(BM_PolygonOffset, grow, 1.0)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_PolygonOffset, shrink, -1.0)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
