#include <orvmath/fit.h>

#include <gtest/gtest.h>

#include <cmath>

using namespace ORVMATH;

TEST(LinearFit, LeastSquaresLineResidualAndValueAgainstHandSums) {
    // (0,0) (1,1) (2,1) (3,3): mean (1.5, 1.25), Sxx = 5, Sxy = 4.5, so slope 0.9 and
    // intercept 1.25 - 1.35 = -0.1; deviations 0.1, 0.2, -0.7, 0.4, rms sqrt(0.70 / 4).
    // Shifted by 1e8 on both axes the slope and rms stay, the intercept becomes 1e7 - 0.1.
    const struct { double shift, a, b, rms; } rows[] = {{0, -0.1, 0.9, std::sqrt(0.175)},
                                                        {1e8, 1e7 - 0.1, 0.9, std::sqrt(0.175)}};
    for (const auto& row : rows) {
        CDblPointArray pts;
        const double xy[][2] = {{0, 0}, {1, 1}, {2, 1}, {3, 3}};
        for (const auto& p : xy) pts.Add(p[0] + row.shift, p[1] + row.shift);
        double a = 0, b = 0, r = 0, y = 0;
        ASSERT_TRUE(linearFit(pts, a, b, r));
        EXPECT_NEAR(b, row.b, 1e-12);
        EXPECT_NEAR(a, row.a, 1e-12 * std::fmax(1.0, row.shift));
        EXPECT_NEAR(r, row.rms, 1e-12);
        ASSERT_TRUE(getFLCValue(pts, 10 + row.shift, y));  // -0.1 + 0.9 * 10 = 8.9 above the shift
        EXPECT_NEAR(y, 8.9 + row.shift, 1e-12 * std::fmax(1.0, row.shift));
    }
}

TEST(LinearFit, TooFewPointsOrOneAbscissaFailAndLeaveOutputs) {
    CDblPointArray one, vertical;
    one.Add(1, 2), vertical.Add(2, 0), vertical.Add(2, 5);
    for (const CDblPointArray* pts : {&one, &vertical}) {
        double a = 7, b = 8, r = 9, y = 10;
        EXPECT_TRUE(!linearFit(*pts, a, b, r) && !getFLCValue(*pts, 0, y));
        EXPECT_TRUE(a == 7 && b == 8 && r == 9 && y == 10);
    }
}
