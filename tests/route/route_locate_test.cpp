#include "orvroute/alignment.h"
#include "route/route_test_util.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

using namespace route_test;

// Points built by offsetting random miles come back to a foot that reproduces them within 1e-9 m, on every element
// kind of a generated alignment (curves of radius 100 and 300, offsets up to 60 m either side).
TEST(CRoute2Locate, RandomMilesAndOffsetsComeBack) {
    const CRoute2 route = orvroute::GeneratedRoute(40);
    std::mt19937_64 rng(17);
    std::uniform_real_distribution<double> mile(route.GetStartMile(), route.GetEndMile()), offset(-60, 60);
    CArray<CRouteFoot> feet;
    for (int k = 0; k < 10000; ++k) {
        const double m = mile(rng), o = offset(rng);
        const CDblPoint p = route.GetPoint(m, o);
        ASSERT_GT(route.Locate(p, feet), 0) << m << " " << o;
        bool back = false;
        for (const CRouteFoot& f : feet) {
            ASSERT_LE(Distance(route.GetPoint(f.mile, f.offset), p), 1e-9) << m << " " << o << " " << f.mile;
            back = back || (std::fabs(f.mile - m) < 1e-6 && std::fabs(f.offset - o) < 1e-6);
        }
        ASSERT_TRUE(back) << m << " " << o;
        for (INT_PTR j = 1; j < feet.GetSize(); ++j)
            ASSERT_LE(std::fabs(feet[j - 1].offset), std::fabs(feet[j].offset));
    }
}

// By hand: a straight of 100 east from (0,0) then a left quarter of radius 100 about (100,100).
TEST(CRoute2Locate, StraightArcEndsAndCentre) {
    const CRoute2 route =
        Route({Pt(SEGMENT_LINE, 0, 0, 0, -1), Pt(SEGMENT_ARC, 100, 0, 0, 100), Pt(SEGMENT_LINE, 200, 100, kHalfPi, -1)},
              10.0, 2.0);  // the route's own offset does not enter the answers
    CArray<CRouteFoot> feet;
    ASSERT_EQ(route.Locate(CDblPoint(30, -4), feet), 1);  // mile 10 + 30, 4 to the right
    EXPECT_NEAR(feet[0].mile, 40, 1e-12);
    EXPECT_NEAR(feet[0].offset, -4, 1e-12);
    EXPECT_EQ(feet[0].element, 0);
    // (100 + 50, 100 - 50 sqrt 3): 100 from the centre at -60 degrees, 30 degrees into the arc, so on the arc itself:
    // mile 10 + 100 + 100 pi / 6, offset 0; nothing else faces it.
    ASSERT_EQ(route.Locate(CDblPoint(150, 100 - 50 * std::sqrt(3.0)), feet), 1);
    EXPECT_NEAR(feet[0].mile, 110 + 100 * kPi / 6, 1e-9);
    EXPECT_NEAR(feet[0].offset, 0, 1e-9);
    // Inside the curve, 20 from the centre at -45 degrees: the arc's foot 80 to the left, 45 degrees into it; its far
    // side (135 degrees) and the straight (x > 100) do not face the point.
    const double d = 20 / std::sqrt(2.0);
    ASSERT_EQ(route.Locate(CDblPoint(100 + d, 100 - d), feet), 1);
    EXPECT_NEAR(feet[0].mile, 110 + 100 * kPi / 4, 1e-9);
    EXPECT_NEAR(feet[0].offset, 80, 1e-9);
    EXPECT_EQ(feet[0].element, 1);
    // (100, 50) faces the join: the straight's end and the arc's start are one foot, 50 to the left at mile 110.
    ASSERT_EQ(route.Locate(CDblPoint(100, 50), feet), 1);
    EXPECT_NEAR(feet[0].mile, 110, 1e-9);
    EXPECT_NEAR(feet[0].offset, 50, 1e-9);
    EXPECT_EQ(route.Locate(CDblPoint(-5, 3), feet), 0);  // before the start: no perpendicular meets the route
    EXPECT_EQ(route.Locate(CDblPoint(std::nan(""), 0), feet), 0);
    // The centre faces the whole arc: no foot there, only the straight's, 100 to the left at its end.
    ASSERT_EQ(route.Locate(CDblPoint(100, 100), feet), 1);
    EXPECT_NEAR(feet[0].mile, 110, 1e-9);
    EXPECT_NEAR(feet[0].offset, 100, 1e-9);
}
