// 4x4 matrix products: the uBLAS prod on the c_matrix that CMatrix4 holds,
// against the hand-written row-major product CMatrix4 uses. Run in Release:
//   orvmath_matrix4_bench --benchmark_min_time=1
#include <orvmath/matrix4.h>

#include <benchmark/benchmark.h>

#include <boost/numeric/ublas/matrix.hpp>

namespace {

using ORVMATH::CMatrix4;
using Elements = CMatrix4::Elements;

// Two rigid transforms, so that no product drifts toward overflow or denormals.
CMatrix4 Operand(double angle, double shift) {
    CMatrix4 m;
    m.Rotate(ORVMATH::Vector3d(1, 2, 2) / 3.0, angle);
    m(3, 0) = shift;
    return m;
}

Elements ToUblas(const CMatrix4& m) {
    Elements e;
    for (int i = 0; i < 4; ++i)
        for (int j = 0; j < 4; ++j) e(i, j) = m(i, j);
    return e;
}

// One timed loop for the three products of the elements: `multiply(a, b, c)`.
template <class Multiply>
void ElementProduct(benchmark::State& state, Multiply multiply) {
    Elements a = ToUblas(Operand(0.3, 1)), b = ToUblas(Operand(-1.1, 2)), c;
    for (auto _ : state) {
        benchmark::DoNotOptimize(a);
        benchmark::DoNotOptimize(b);
        multiply(a, b, c);
        benchmark::DoNotOptimize(c);
    }
}

void BM_UblasProd(benchmark::State& state) {
    ElementProduct(state, [](const Elements& a, const Elements& b, Elements& c) { c = boost::numeric::ublas::prod(a, b); });
}
BENCHMARK(BM_UblasProd);

// prod without the temporary that plain assignment makes for aliasing safety.
void BM_UblasProdNoalias(benchmark::State& state) {
    ElementProduct(state, [](const Elements& a, const Elements& b, Elements& c) {
        boost::numeric::ublas::noalias(c) = boost::numeric::ublas::prod(a, b);
    });
}
BENCHMARK(BM_UblasProdNoalias);

void BM_HandProduct(benchmark::State& state) {
    ElementProduct(state, [](const Elements& a, const Elements& b, Elements& c) {
        ORVMATH::detail::MultiplyRowMajor4(a.data(), b.data(), c.data());
    });
}
BENCHMARK(BM_HandProduct);

// What callers get: CMatrix4::operator*.
void BM_CMatrix4Product(benchmark::State& state) {
    CMatrix4 a = Operand(0.3, 1), b = Operand(-1.1, 2);
    for (auto _ : state) {
        benchmark::DoNotOptimize(a);
        benchmark::DoNotOptimize(b);
        CMatrix4 c = a * b;
        benchmark::DoNotOptimize(c);
    }
}
BENCHMARK(BM_CMatrix4Product);

void BM_CMatrix4Inverse(benchmark::State& state) {
    const CMatrix4 a = Operand(0.3, 1);
    for (auto _ : state) {
        CMatrix4 c = a;
        benchmark::DoNotOptimize(c.InvMatrix(0.0));
        benchmark::DoNotOptimize(c);
    }
}
BENCHMARK(BM_CMatrix4Inverse);

}  // namespace
