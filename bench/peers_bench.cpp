// This library against the peers a user would pick instead, each pair in one
// process on the same inputs (answers checked equal before timing):
//   - point in polygon on 1000-vertex circle and star, 100k points:
//     PtInPolygonEx, PtInPolygon (convex circle), CPreparedPolygon against
//     GEOS prepared contains and Boost.Geometry within;
//   - 4x4 product and inverse against Eigen Matrix4d;
//   - segment x segment on random pairs (most do not cross) against
//     Boost.Geometry intersection.
// GEOS and Eigen are benchmark-only dependencies (libgeos-dev, libeigen3-dev).
// Run in Release:
//   orvmath_peers_bench --benchmark_repetitions=5 --benchmark_report_aggregates_only=true
#include <orvmath/intersect.h>
#include <orvmath/matrix4.h>
#include <orvmath/polygon.h>
#include <orvmath/preparedpolygon.h>

#include <benchmark/benchmark.h>

#include <Eigen/Dense>
#include <boost/geometry.hpp>
#include <boost/geometry/geometries/point_xy.hpp>
#include <boost/geometry/geometries/polygon.hpp>
#include <boost/geometry/geometries/segment.hpp>
#include <geos_c.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <vector>

namespace {

using namespace ORVMATH;
namespace bg = boost::geometry;
using BPoint = bg::model::d2::point_xy<double>;
using BPolygon = bg::model::polygon<BPoint, false>;  // counter-clockwise
using BSegment = bg::model::segment<BPoint>;

constexpr int kVertices = 1000;
constexpr int kQueries = 100000;

CDblPointArray Shape(bool star) {
    CDblPointArray a;
    for (int k = 0; k < kVertices; ++k) {
        const double t = 2 * 3.141592653589793 * k / kVertices, r = star && k % 2 ? 40.0 : 100.0;
        a.Add(r * std::cos(t), r * std::sin(t));
    }
    return a;
}

std::vector<CDblPoint> Queries() {
    std::mt19937 rng(5);
    std::uniform_real_distribution<double> u(-110, 110);
    std::vector<CDblPoint> q(kQueries);
    for (CDblPoint& p : q) p = CDblPoint(u(rng), u(rng));
    return q;
}

void Check(bool ok, const char* what) {
    if (!ok) {
        std::fprintf(stderr, "answers differ: %s\n", what);
        std::exit(1);
    }
}

template <class Inside>
void RunQueries(benchmark::State& state, Inside inside) {
    const std::vector<CDblPoint> q = Queries();
    for (auto _ : state) {
        int count = 0;
        for (const CDblPoint& p : q) count += inside(p) ? 1 : 0;
        benchmark::DoNotOptimize(count);
    }
    state.SetItemsProcessed(state.iterations() * kQueries);
}

// GEOS through its reentrant C API.
struct Geos {
    GEOSContextHandle_t ctx = GEOS_init_r();
    GEOSGeometry* polygon = nullptr;
    const GEOSPreparedGeometry* prepared = nullptr;
    explicit Geos(const CDblPointArray& shape) {
        GEOSCoordSequence* seq = GEOSCoordSeq_create_r(ctx, static_cast<unsigned>(shape.GetSize() + 1), 2);
        for (INT_PTR k = 0; k <= shape.GetSize(); ++k) {
            const CDblPoint& p = shape[k % shape.GetSize()];
            GEOSCoordSeq_setXY_r(ctx, seq, static_cast<unsigned>(k), p.x, p.y);
        }
        polygon = GEOSGeom_createPolygon_r(ctx, GEOSGeom_createLinearRing_r(ctx, seq), nullptr, 0);
        prepared = GEOSPrepare_r(ctx, polygon);
    }
    ~Geos() {
        GEOSPreparedGeom_destroy_r(ctx, prepared);
        GEOSGeom_destroy_r(ctx, polygon);
        GEOS_finish_r(ctx);
    }
    bool Contains(const CDblPoint& p) const {
        GEOSGeometry* g = GEOSGeom_createPointFromXY_r(ctx, p.x, p.y);
        const bool in = GEOSPreparedContains_r(ctx, prepared, g) == 1;
        GEOSGeom_destroy_r(ctx, g);
        return in;
    }
};

BPolygon ToBoost(const CDblPointArray& shape) {
    BPolygon poly;
    for (const CDblPoint& p : shape) bg::append(poly.outer(), BPoint(p.x, p.y));
    bg::append(poly.outer(), BPoint(shape[0].x, shape[0].y));
    return poly;
}

void BM_PtInPolygonEx(benchmark::State& state, bool star) {
    const CDblPointArray shape = Shape(star);
    RunQueries(state, [&](const CDblPoint& p) { return PtInPolygonEx(shape, p); });
}
void BM_PtInPolygonConvex(benchmark::State& state) {
    const CDblPointArray shape = Shape(false);
    RunQueries(state, [&](const CDblPoint& p) { return PtInPolygon(shape, p); });
}
void BM_Prepared(benchmark::State& state, bool star) {
    const CDblPointArray shape = Shape(star);
    const CPreparedPolygon prepared(shape);
    for (const CDblPoint& p : Queries()) Check(prepared.Contains(p) == PtInPolygonEx(shape, p), "prepared");
    RunQueries(state, [&](const CDblPoint& p) { return prepared.Contains(p); });
}
void BM_GeosPrepared(benchmark::State& state, bool star) {
    const CDblPointArray shape = Shape(star);
    const Geos geos(shape);
    for (const CDblPoint& p : Queries()) Check(geos.Contains(p) == PtInPolygonEx(shape, p), "GEOS");
    RunQueries(state, [&](const CDblPoint& p) { return geos.Contains(p); });
}
void BM_BoostWithin(benchmark::State& state, bool star) {
    const CDblPointArray shape = Shape(star);
    const BPolygon poly = ToBoost(shape);
    for (const CDblPoint& p : Queries())
        Check(bg::within(BPoint(p.x, p.y), poly) == PtInPolygonEx(shape, p), "Boost.Geometry");
    RunQueries(state, [&](const CDblPoint& p) { return bg::within(BPoint(p.x, p.y), poly); });
}
BENCHMARK_CAPTURE(BM_PtInPolygonEx, circle, false)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_PtInPolygonEx, star, true)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_PtInPolygonConvex)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_Prepared, circle, false)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_Prepared, star, true)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_GeosPrepared, circle, false)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_GeosPrepared, star, true)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_BoostWithin, circle, false)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_BoostWithin, star, true)->Unit(benchmark::kMillisecond);

// ---- 4x4 transforms ----
CMatrix4 Operand(double angle, double shift) {
    CMatrix4 m;
    m.Rotate(Vector3d(1, 2, 2) / 3.0, angle);
    m(3, 0) = shift;
    return m;
}
Eigen::Matrix4d ToEigen(const CMatrix4& m) {
    Eigen::Matrix4d e;
    for (int i = 0; i < 4; ++i)
        for (int j = 0; j < 4; ++j) e(i, j) = m(i, j);
    return e;
}

void BM_CMatrix4Product(benchmark::State& state) {
    CMatrix4 a = Operand(0.3, 1), b = Operand(-1.1, 2);
    for (auto _ : state) {
        benchmark::DoNotOptimize(a);
        benchmark::DoNotOptimize(b);
        CMatrix4 c = a * b;
        benchmark::DoNotOptimize(c);
    }
}
void BM_EigenProduct(benchmark::State& state) {
    Eigen::Matrix4d a = ToEigen(Operand(0.3, 1)), b = ToEigen(Operand(-1.1, 2));
    for (auto _ : state) {
        benchmark::DoNotOptimize(a);
        benchmark::DoNotOptimize(b);
        Eigen::Matrix4d c = a * b;
        benchmark::DoNotOptimize(c);
    }
}
void BM_CMatrix4Inverse(benchmark::State& state) {
    const CMatrix4 a = Operand(0.3, 1);
    for (auto _ : state) {
        CMatrix4 c = a;
        benchmark::DoNotOptimize(c.InvMatrix(0.0));
        benchmark::DoNotOptimize(c);
    }
}
void BM_EigenInverse(benchmark::State& state) {
    Eigen::Matrix4d a = ToEigen(Operand(0.3, 1));
    for (auto _ : state) {
        benchmark::DoNotOptimize(a);
        Eigen::Matrix4d c = a.inverse();
        benchmark::DoNotOptimize(c);
    }
}
BENCHMARK(BM_CMatrix4Product);
BENCHMARK(BM_EigenProduct);
BENCHMARK(BM_CMatrix4Inverse);
BENCHMARK(BM_EigenInverse);

// ---- segment x segment ----
struct Pair {
    CDblPoint p1, p2, q1, q2;
};
// Segments of length up to 10 scattered over a 1000 x 1000 field: few pairs cross.
std::vector<Pair> Pairs() {
    std::mt19937 rng(9);
    std::uniform_real_distribution<double> where(0, 1000), d(-10, 10);
    std::vector<Pair> pairs(4096);
    for (Pair& s : pairs) {
        s.p1 = CDblPoint(where(rng), where(rng));
        s.p2 = CDblPoint(s.p1.x + d(rng), s.p1.y + d(rng));
        s.q1 = CDblPoint(s.p1.x + d(rng) * 2, s.p1.y + d(rng) * 2);
        s.q2 = CDblPoint(s.q1.x + d(rng), s.q1.y + d(rng));
    }
    return pairs;
}
void BM_XLineLine(benchmark::State& state) {
    const std::vector<Pair> pairs = Pairs();
    CDblPointArray out;
    std::size_t i = 0;
    for (auto _ : state) {
        const Pair& s = pairs[i];
        XLineLine(s.p1, s.p2, s.q1, s.q2, out, ExtendType(0));
        benchmark::DoNotOptimize(out.GetData());
        if (++i == pairs.size()) i = 0;
    }
}
void BM_BoostIntersection(benchmark::State& state) {
    std::vector<std::pair<BSegment, BSegment>> segs;
    for (const Pair& s : Pairs())
        segs.emplace_back(BSegment(BPoint(s.p1.x, s.p1.y), BPoint(s.p2.x, s.p2.y)),
                          BSegment(BPoint(s.q1.x, s.q1.y), BPoint(s.q2.x, s.q2.y)));
    std::vector<BPoint> out;
    std::size_t i = 0;
    for (auto _ : state) {
        out.clear();
        bg::intersection(segs[i].first, segs[i].second, out);
        benchmark::DoNotOptimize(out.data());
        if (++i == segs.size()) i = 0;
    }
}
BENCHMARK(BM_XLineLine);
BENCHMARK(BM_BoostIntersection);

}  // namespace
