#include <orvmath/circle2.h>

#include <gtest/gtest.h>

#include <cmath>

using namespace ORVMATH;

namespace {

void ExpectPoint(const CDblPoint& p, double x, double y) {
    EXPECT_NEAR(p.x, x, 1e-9);
    EXPECT_NEAR(p.y, y, 1e-9);
}

}  // namespace

TEST(CCircle2, MeasuresAndPoints) {
    const CCircle2 c(CDblPoint(1, 1), 2);
    EXPECT_NEAR(c.Length(), 4 * kPi, 1e-12);
    EXPECT_NEAR(c.Area(), 4 * kPi, 1e-12);
    ExpectPoint(c.Point(kPi / 2), 1, 3);
    EXPECT_TRUE(CCircle2().IsNull());
}

TEST(CCircle2, OnAndInsideTestsIncludeTheBoundary) {
    const CCircle2 c(CDblPoint(0, 0), 5);
    struct Row { double x, y, tol; bool on, in; } rows[] = {
        {3, 4, 0, true, true}, {0, 0, 0, false, true}, {3, 4.1, 0, false, false},
        {3, 4.1, 0.1, true, true},  // |(3, 4.1)| = 5.0804
        {6, 0, 0.5, false, false},
    };
    for (const Row& r : rows) {
        EXPECT_EQ(c.IsPointOnCircle(CDblPoint(r.x, r.y), r.tol), r.on) << r.x << "," << r.y;
        EXPECT_EQ(c.PtInCircle(CDblPoint(r.x, r.y), r.tol), r.in) << r.x << "," << r.y;
    }
}

TEST(CCircle2, PlacementAndOffset) {
    const CCircle2 c(CDblPoint(1, 2), 2);
    ExpectPoint(c.Rotate(CDblPoint(0, 0), kPi / 2).centre, -2, 1);
    ExpectPoint(c.Mirror(CDblPoint(0, 0), CDblPoint(1, 0)).centre, 1, -2);
    ExpectPoint(c.Move(CDblPoint(1, 2), CDblPoint(0, 0)).centre, 0, 0);
    EXPECT_DOUBLE_EQ(c.Offset(1).radius, 3);
    EXPECT_TRUE(c.Offset(-2).IsNull());
    EXPECT_TRUE(c.Offset(-3).IsNull());
    EXPECT_TRUE(CCircle2().Offset(1).IsNull());
    ExpectPoint(c.centre, 1, 2);
}

// Radius 5 about the origin: y = 3 meets it at (-4, 3) and (4, 3); the circle
// of radius 5 about (8, 0) meets it at (4, +-3).
TEST(CCircle2, Intersections) {
    const CCircle2 c(CDblPoint(0, 0), 5);
    CDblPointArray out;
    c.Intersection(CLine2(0, 3, 6, 3), out, false);
    ASSERT_EQ(out.GetSize(), 1);
    ExpectPoint(out[0], 4, 3);
    c.Intersection(CLine2(0, 3, 6, 3), out, true);
    EXPECT_EQ(out.GetSize(), 2);
    c.Intersection(CCircle2(CDblPoint(8, 0), 5), out);
    ASSERT_EQ(out.GetSize(), 2);
    EXPECT_NEAR(out[0].x, 4, 1e-9);
    EXPECT_NEAR(std::fabs(out[0].y), 3, 1e-9);
    EXPECT_NEAR(out[0].y + out[1].y, 0, 1e-9);
}
