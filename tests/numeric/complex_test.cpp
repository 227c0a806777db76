#include <orvmath/complex.h>

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

using namespace ORVMATH;

namespace {
void ExpectComplex(const dcomplex& z, double r, double i) {
    EXPECT_DOUBLE_EQ(z.r, r);
    EXPECT_DOUBLE_EQ(z.i, i);
}
}  // namespace

TEST(Dcomplex, DivisionFollowsItsExactZeroRulesAndBothSmithBranches) {
    const struct { dcomplex num, den, want; } rows[] = {
        {{1, 2}, {0, 0}, {0, 0}},        // zero divisor: zero, not infinity
        {{1, 1}, {0, 1}, {1, -1}},       // pure imaginary divisor: (i/z.i, -r/z.i)
        {{1, 2}, {3, 4}, {0.44, 0.08}},  // (1+2i)(3-4i)/25 = (11+2i)/25, |z.r| < |z.i|
        {{1, 2}, {4, 3}, {0.4, 0.2}},    // (1+2i)(4-3i)/25 = (10+5i)/25, |z.r| >= |z.i|
    };
    for (const auto& row : rows) ExpectComplex(row.num / row.den, row.want.r, row.want.i);
    // A real divisor divides the imaginary part by its zero imaginary part: 0/0 and 1/0.
    const dcomplex nan = dcomplex(4, 0) / dcomplex(2, 0), inf = dcomplex(4, 1) / dcomplex(2, 0);
    EXPECT_TRUE(nan.r == 2.0 && std::isnan(nan.i));
    EXPECT_TRUE(inf.r == 2.0 && std::isinf(inf.i) && inf.i > 0);
    dcomplex z(5, -7);
    z /= dcomplex(0, 0);
    ExpectComplex(z, 0, 0);
    z = dcomplex(3, 4);
    const dcomplex& self = z;  // the divisor is the object itself (named twice to keep clang quiet)
    z /= self;
    ExpectComplex(z, 1, 0);
    z = dcomplex(1, 2);
    z *= self;  // (1 + 2i)^2 = 1 + 4i - 4, from the old parts
    ExpectComplex(z, -3, 4);
    ExpectComplex(dcomplex(1, 2) * dcomplex(3, 4), -5, 10);  // 3 + 4i + 6i - 8
}

TEST(Dcomplex, ModulusAndPrincipalRoot) {
    EXPECT_DOUBLE_EQ(dcomplex(3, 4).cabs(), 5.0);
    EXPECT_DOUBLE_EQ(dcomplex(0, -2).cabs(), 2.0);
    EXPECT_DOUBLE_EQ(dcomplex(3e200, 4e200).cabs(), 5e200);  // scaled: the squares would overflow
    ExpectComplex(dcomplex(0, 0).csqrt(), 0, 0);
    ExpectComplex(dcomplex(-4, 0).csqrt(), 0, 2);
    ExpectComplex(dcomplex(3, 4).csqrt(), 2, 1);     // (2 + i)^2 = 3 + 4i
    ExpectComplex(dcomplex(-3, -4).csqrt(), 1, -2);  // (1 - 2i)^2 = -3 - 4i
}

TEST(GetEquation2Root, RootsComeInTheirFixedOrderAndAreAppended) {
    const struct { double a, b, c; std::vector<dcomplex> roots; } rows[] = {
        {1, -3, 2, {{2, 0}, {1, 0}}},    // (x-2)(x-1): the + sqrt root first
        {-1, 3, -2, {{1, 0}, {2, 0}}},   // same roots, a < 0: (-3+1)/-2 = 1 first
        {1, 2, 1, {{-1, 0}, {-1, 0}}},   // double root twice
        {1, 0, 1, {{0, 1}, {0, -1}}},    // conjugate pair, +i first (a > 0)
        {-1, 0, -1, {{0, -1}, {0, 1}}},  // a < 0: -i first
        {1, -2, 5, {{1, 2}, {1, -2}}},   // D = 4 - 20 = -16: 1 +- 2i
        {0, 2, -4, {{2, 0}}},            // linear: -c/b
        {0, 0, 5, {}},                   // no equation
    };
    CArray<dcomplex, dcomplex> roots;  // never cleared: each call appends
    for (const auto& row : rows) {
        const INT_PTR before = roots.GetSize();
        GetEquation2Root(row.a, row.b, row.c, roots);
        ASSERT_EQ(roots.GetSize() - before, static_cast<INT_PTR>(row.roots.size())) << row.a << " " << row.b;
        for (std::size_t k = 0; k < row.roots.size(); ++k)
            ExpectComplex(roots[before + static_cast<INT_PTR>(k)], row.roots[k].r, row.roots[k].i);
    }
}
