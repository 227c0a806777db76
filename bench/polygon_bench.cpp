// How the polygon algorithms' cost grows with the size of their input, at
// 10^3, 10^4 and 10^5; the exponent is log(t(10^5) / t(10^3)) / log(100).
// - PolygonOffset: a star of n vertices on radii n and n - 3 in turn (every
//   other vertex reflex, edges about 6.5 long whatever n, so the offset
//   meets the same local shapes) grown and shrunk by 1.
// - GetPolygons: a square lattice turned by 0.3 rad, each unit edge its own
//   segment running 0.25 past both lattice nodes, so that every segment
//   crosses two others, overlaps its two collinear neighbours and leaves
//   dangling ends; about n segments and n / 2 faces.
//   orvmath_polygon_bench --benchmark_repetitions=3 --benchmark_report_aggregates_only=true
#include <orvmath/polygonize.h>
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

// The lattice of m x m cells: 2 m (m + 1) segments.
ORVMATH::CLine2Array Lattice(int m) {
    const double c = std::cos(0.3), s = std::sin(0.3);
    auto at = [&](double x, double y) { return ORVMATH::CDblPoint(c * x - s * y, s * x + c * y); };
    ORVMATH::CLine2Array lines;
    for (int i = 0; i <= m; ++i) {
        for (int j = 0; j < m; ++j) {
            lines.Add(ORVMATH::CLine2(at(j - 0.25, i), at(j + 1.25, i)));
            lines.Add(ORVMATH::CLine2(at(i, j - 0.25), at(i, j + 1.25)));
        }
    }
    return lines;
}

void BM_GetPolygons(benchmark::State& state) {
    const ORVMATH::CLine2Array lines = Lattice(static_cast<int>(std::lround(std::sqrt(state.range(0) / 2.0))));
    ORVMATH::CPolygonFaceArray faces;
    for (auto _ : state) benchmark::DoNotOptimize(ORVMATH::GetPolygons(lines, faces));
    state.SetItemsProcessed(state.iterations() * lines.GetSize());
    state.counters["segments"] = static_cast<double>(lines.GetSize());
    state.counters["faces"] = static_cast<double>(faces.GetSize());
}

}  // namespace

BENCHMARK_CAPTURE(BM_PolygonOffset, grow, 1.0)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_PolygonOffset, shrink, -1.0)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_GetPolygons)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
