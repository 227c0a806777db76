#include <orvmath/angle.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace ORVMATH;

TEST(NormalizeAng, IntoHalfOpenRangeWhileNormalAngleFixesOnlyNegativesAndTwoPi) {
    struct Row { double in, out; } rows[] = {
        {180, 180}, {-180, 180}, {540, 180}, {-190, 170}, {359, -1}, {0, 0}, {720, 0}, {-540, 180}, {181, -179},
    };
    for (const Row& r : rows) EXPECT_DOUBLE_EQ(NormalizeAng(r.in), r.out) << r.in;
    EXPECT_TRUE(NormalizeAng_Rad(-kPi) == kPi && NormalizeAng_Rad(kPi) == kPi);
    EXPECT_NEAR(NormalizeAng_Rad(3 * kPi / 2), -kPi / 2, 1e-15);
    EXPECT_NEAR(NormalizeAng_Rad(-7.0), -7.0 + k2Pi, 1e-15);
    // Out of the quotient's range the result is meaningless; it must merely not trap.
    (void)NormalizeAng(1e300);
    (void)NormalizeAng_Rad(-1e300);
    EXPECT_TRUE(std::isnan(NormalizeAng(std::numeric_limits<double>::quiet_NaN())));
    // NormalAngle reduces only negatives and exactly 2 pi.
    const double nan = std::numeric_limits<double>::quiet_NaN();
    struct Fix { double in, out; } fixes[] = {
        {k2Pi, 0.0}, {7.0, 7.0}, {-1.0, k2Pi - 1.0}, {-k2Pi, k2Pi}, {0.0, 0.0}, {1.0, 1.0}, {-k2Pi - 1.0, k2Pi - 1.0},
        {nan, nan},
    };
    for (const Fix& r : fixes) {
        double a = r.in;
        NormalAngle(a);
        EXPECT_TRUE(std::fabs(a - r.out) < 1e-14 || (std::isnan(a) && std::isnan(r.out))) << r.in << " -> " << a;
    }
}

TEST(IsAngleInSector, WrapsAndFixedSlackInBothUnitsWhileVectorsBetweenAreExact) {
    struct Row { double ang, start, sweep; bool in; } rows[] = {
        {179, 170, 20, true},   {-175, 170, 20, true},   {-169, 170, 20, false}, {169, 170, 20, false},
        {10.00005, 0, 10, true}, {10.0002, 0, 10, false}, {-0.00005, 0, 10, true},
        {-175, -170, -20, true}, {175, -170, -20, true},  {169, -170, -20, false},  // past -180
        {-5, 0, -10, true},     {-10.00005, 0, -10, true}, {5, 0, -10, false},
    };
    const double k = kPi / 180.0;
    for (const Row& r : rows) {
        EXPECT_EQ(IsAngleInSector(r.ang, r.start, r.sweep), r.in) << r.ang << " in " << r.start << "+" << r.sweep;
        EXPECT_EQ(IsAngleInSector_Rad(r.ang * k, r.start * k, r.sweep * k), r.in) << r.ang;
    }
    // Vector directions: exact, both ends included.
    EXPECT_TRUE(IsVectorBetweenDegAngs(-1, 0, 170, -170));  // a = 180 in the wrapping interval
    EXPECT_FALSE(IsVectorBetweenDegAngs(1, 0, 170, -170));
    EXPECT_TRUE(IsVectorBetweenDegAngs(1, 1, 45, 90) && IsVectorBetweenDegAngs(0, 1, 45, 90));
    EXPECT_FALSE(IsVectorBetweenDegAngs(1, 0, 45, 90));
    EXPECT_TRUE(IsVectorBetweenRadAngs(-1, -0.01, 3.0, -3.0));
    EXPECT_FALSE(IsVectorBetweenRadAngs(0, 1, 3.0, -3.0));
}

TEST(Deg2DMS, TruncatesTowardZeroWithSign) {
    // Rad2DMS(1): 57.29577951308232 deg; .29577951308232 * 60 = 17.7467707849392 min; .7467707849392 * 60 s.
    struct Row { double deg; bool rad; int d, m; double s; } rows[] = {
        {370.5, false, 10, 30, 0.0}, {-10.5, false, -10, -30, 0.0}, {-0.5, false, 0, -30, 0.0},
        {12.5125, false, 12, 30, 45.0}, {1.0, true, 57, 17, 44.806247096352},
    };
    for (const Row& r : rows) {
        int d = 99, m = 99;
        double s = 99;
        if (r.rad) Rad2DMS(r.deg, d, m, s);
        else Deg2DMS(r.deg, d, m, s);
        EXPECT_TRUE(d == r.d && m == r.m) << r.deg << ": " << d << " " << m;
        EXPECT_NEAR(s, r.s, 1e-8) << r.deg;
    }
}

// Near and across the bounds up to which the turn count is known without dividing, the result must be the
// defining formula's to the bit: k = floor(rad / 2pi), rad - 2k pi, less 2pi above pi. Expected values worked out
// with that formula in Python's doubles (float.hex).
TEST(NormalizeAng, RadiansBitExactAcrossTheTurnBounds) {
    const double k2 = 6.283185307179586;
    struct Row { double in, out; } rows[] = {
        {6.28, -0x1.a1812c53fc800p-9},  {6.281, -0x1.1e6ebdbc6f800p-9}, {6.2832, 0x1.ed025dc780000p-17},
        {6.2835, 0x1.49fab5f390000p-12}, {12.56, -0x1.a1812c53fc800p-8}, {12.57, 0x1.dbb5f9438c000p-9},
        {-6.28, 0x1.a1812c53fc800p-9},  {-6.2832, -0x1.ed025dc780000p-17}, {-12.56, 0x1.a1812c53fc800p-8},
        {-12.57, -0x1.dbb5f9438c000p-9}, {9.0, 0x1.5bc095777a5d0p+1},    {-9.0, -0x1.5bc095777a5d0p+1},
        {k2, 0.0}, {-k2, 0.0}, {2 * k2, 0.0}, {-2 * k2, 0.0},
        // -1e-200 + 2pi rounds to 2pi, then wraps to 0; the quotient of the smallest subnormal underflows to -0,
        // so that one is returned as it is.
        {-1e-200, 0.0}, {-0x0.0000000000001p-1022, -0x0.0000000000001p-1022},
    };
    for (const Row& r : rows) EXPECT_EQ(NormalizeAng_Rad(r.in), r.out) << std::hexfloat << r.in;
    EXPECT_TRUE(std::signbit(NormalizeAng_Rad(-0.0)));
}
