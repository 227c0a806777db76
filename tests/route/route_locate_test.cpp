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

// By hand: a straight of 100 east from (0,0) then a left quarter of radius 100 about (100,100), from mile 10; the
// route's own offset does not enter the answers. Each point has one foot, or none: before the start; the centre,
// which faces the whole arc, has only the straight's. Element -1: not checked.
TEST(CRoute2Locate, StraightArcEndsAndCentre) {
    const CRoute2 route =
        Route({Pt(SEGMENT_LINE, 0, 0, 0, -1), Pt(SEGMENT_ARC, 100, 0, 0, 100), Pt(SEGMENT_LINE, 200, 100, kHalfPi, -1)},
              10.0, 2.0);
    const double d = 20 / std::sqrt(2.0);
    const struct { CDblPoint p; int count; double mile, offset; int element; } rows[] = {
        {{30, -4}, 1, 40, -4, 0},  // 4 to the right of the straight
        {{150, 100 - 50 * std::sqrt(3.0)}, 1, 110 + 100 * kPi / 6, 0, -1},  // on the arc, 30 degrees in
        {{100 + d, 100 - d}, 1, 110 + 100 * kPi / 4, 80, 1},  // inside: 20 from the centre at -45 degrees
        {{100, 50}, 1, 110, 50, -1},                          // facing the join: one foot for both elements
        {{100, 100}, 1, 110, 100, -1},                        // the centre
        {{-5, 3}, 0, 0, 0, -1},
        {{std::nan(""), 0}, 0, 0, 0, -1},
    };
    CArray<CRouteFoot> feet;
    for (const auto& r : rows) {
        SCOPED_TRACE(testing::Message() << r.p.x << "," << r.p.y);
        ASSERT_EQ(route.Locate(r.p, feet), r.count);
        if (r.count == 0) continue;
        EXPECT_NEAR(feet[0].mile, r.mile, 1e-9);
        EXPECT_NEAR(feet[0].offset, r.offset, 1e-9);
        if (r.element >= 0) {
            EXPECT_EQ(feet[0].element, r.element);
        }
    }
}

// A route that starts with a left arc (R 100, a fifth of a turn) at headings that are not multiples of a right
// angle: a point on the normal at the start faces the arc's first point, whose direction from the centre rounds to
// either side of the arc's start angle; either way its foot is the start mile, offset R (1 - t) to the left.
TEST(CRoute2Locate, PointsOnTheStartNormalOfAnArcFindTheStart) {
    const double R = 100, sweep = 0.4 * kPi;
    CArray<CRouteFoot> feet;
    for (int k = 0; k < 24; ++k) {
        const double h = 0.1 + 0.27 * k;  // headings across the whole turn
        const CDblPoint c(-R * std::sin(h), R * std::cos(h));
        const CRoute2 route = Route({Pt(SEGMENT_ARC, 0, 0, h, R),
                                     Pt(SEGMENT_LINE, c.x + R * std::sin(h + sweep), c.y - R * std::cos(h + sweep),
                                        h + sweep, -1)},
                                    5.0);
        for (double t : {0.3, 0.7, 1.3, 1.9}) {
            SCOPED_TRACE(testing::Message() << "h " << h << " t " << t);
            const CDblPoint p(c.x * (1 - t), c.y * (1 - t));  // c + t (start - c), the start being (0, 0)
            ASSERT_GE(route.Locate(p, feet), 1);
            EXPECT_NEAR(feet[0].mile, 5.0, 1e-9);
            EXPECT_NEAR(feet[0].offset, R * (1 - t), 1e-9);
        }
    }
}
