#include <orvmath/interp.h>

#include <gtest/gtest.h>

using namespace ORVMATH;

static double Cubic(double x) { return x * x * x - 2 * x + 1; }

TEST(CNewtonPWEstimate, WindowAroundXAndExactnessForItsDegree) {
    CDblPointArray pts;  // nodes 0 .. 6 of x^3 - 2x + 1: 1, 0, 5, 22, 57, 116, 205
    for (int i = 0; i <= 6; ++i) pts.Add(i, Cubic(i));
    const struct { int k; double x, want; } rows[] = {
        {4, 2.5, Cubic(2.5)}, {4, 0.3, Cubic(0.3)}, {4, 5.7, Cubic(5.7)},  // degree 3 through 4 nodes: exact
        {4, -1.0, Cubic(-1.0)}, {9, 7.5, Cubic(7.5)},                       // outside: end window; k > n: all
        {2, 2.5, 13.5},  // (5 + 22) / 2
        {3, 2.5, 12.0},  // nodes 1, 2, 3: 0 + 5 * 1.5 + 6 * 1.5 * 0.5 (divided differences 5, 17 -> 6)
        {1, 2.5, 5.0}, {1, -1.0, 1.0}, {0, 6.0, 205.0},  // the node at or below x, else the first
    };
    for (const auto& row : rows) {
        CNewtonPWEstimate est(row.k);
        ASSERT_TRUE(est.SetPoints(pts));
        double y = 0;
        ASSERT_TRUE(est.Estimate(row.x, y));
        EXPECT_NEAR(y, row.want, 1e-12 * std::max(1.0, std::fabs(row.want))) << row.k << " at " << row.x;
    }
}

TEST(CNewtonPWEstimate, RejectsUnorderedNodesAndKeepsThePrevious) {
    CNewtonPWEstimate est(2);
    double y = 3;
    EXPECT_TRUE(!est.Estimate(0, y) && y == 3);  // no nodes yet
    CDblPointArray good, repeated;
    good.Add(0, 0), good.Add(1, 2), repeated.Add(1, 0), repeated.Add(1, 5);
    ASSERT_TRUE(est.SetPoints(good));
    EXPECT_TRUE(!est.SetPoints(repeated) && !est.SetPoints(CDblPointArray()));
    ASSERT_TRUE(est.Estimate(0.25, y));
    EXPECT_DOUBLE_EQ(y, 0.5);  // still the line through (0,0), (1,2)
}
