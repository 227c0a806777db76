#include <orvmath/circle2.h>

#include <gtest/gtest.h>

#include <cmath>

using namespace ORVMATH;

TEST(CCircle2, MeasuresBoundaryInclusiveTestsPlacementAndOffset) {
    const CCircle2 c(CDblPoint(0, 0), 5);
    EXPECT_TRUE(std::fabs(c.Length() - 10 * kPi) < 1e-12 && std::fabs(c.Area() - 25 * kPi) < 1e-12);
    struct Row { double x, y, tol; bool on, in; } rows[] = {
        {3, 4, 0, true, true}, {0, 0, 0, false, true}, {3, 4.1, 0, false, false},
        {3, 4.1, 0.1, true, true}, {6, 0, 0.5, false, false},  // |(3, 4.1)| = 5.0804
    };
    for (const Row& r : rows) {
        EXPECT_EQ(c.IsPointOnCircle(CDblPoint(r.x, r.y), r.tol), r.on) << r.x << "," << r.y;
        EXPECT_EQ(c.PtInCircle(CDblPoint(r.x, r.y), r.tol), r.in) << r.x << "," << r.y;
    }
    const CCircle2 d(CDblPoint(1, 2), 2);
    EXPECT_TRUE(d.Rotate(CDblPoint(0, 0), kPi / 2).centre == CDblPoint(-2, 1));
    EXPECT_TRUE(d.Mirror(CDblPoint(0, 0), CDblPoint(1, 0)).centre == CDblPoint(1, -2));
    EXPECT_TRUE(d.Move(CDblPoint(1, 2), CDblPoint(0, 0)).centre == CDblPoint(0, 0));
    EXPECT_DOUBLE_EQ(d.Offset(1).radius, 3);  // outward; reaching zero or below leaves the null circle
    EXPECT_TRUE(d.Offset(-2).IsNull() && d.Offset(-3).IsNull() && CCircle2().Offset(1).IsNull());
    EXPECT_TRUE(d.centre == CDblPoint(1, 2) && d.radius == 2);
}

// Radius 5 about the origin: y = 3 meets it at (-4, 3) and (4, 3); the circle
// of radius 5 about (8, 0) meets it at (4, +-3).
TEST(CCircle2, Intersections) {
    const CCircle2 c(CDblPoint(0, 0), 5);
    CDblPointArray out;
    c.Intersection(CLine2(0, 3, 6, 3), out, false);
    EXPECT_TRUE(out.GetSize() == 1 && out[0] == CDblPoint(4, 3));
    c.Intersection(CLine2(0, 3, 6, 3), out, true);
    EXPECT_EQ(out.GetSize(), 2);
    c.Intersection(CCircle2(CDblPoint(8, 0), 5), out);  // in either order
    ASSERT_EQ(out.GetSize(), 2);
    EXPECT_TRUE(out[0] == CDblPoint(4, out[0].y > 0 ? 3 : -3) && out[1] == CDblPoint(4, -out[0].y));
}
