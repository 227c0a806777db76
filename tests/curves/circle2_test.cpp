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
}

// (7, 10) lies 10 from (1, 2) along (0.6, 0.8): nearest (4, 6), 5 away, at atan2(0.8, 0.6) = 0.927295218. Three
// points with a right angle at (0, 0) put the centre in the middle of the hypotenuse (4, 0)-(0, 2).
TEST(CCircle2, NearestPointBoundRectEqualityAndThreePoints) {
    const CCircle2 c(CDblPoint(1, 2), 5);
    EXPECT_TRUE(c.NearestPoint(CDblPoint(7, 10)) == CDblPoint(4, 6) && c.NearestPoint(c.centre) == CDblPoint(6, 2));
    EXPECT_NEAR(c.NearestAngle(CDblPoint(7, 10)), 0.927295218, 1e-9);
    EXPECT_NEAR(c.TangentAngle(0.75 * kPi) + c.Distance(CDblPoint(7, 10)), -0.75 * kPi + 5, 1e-12);  // 5/4 pi wraps
    const CDblRect box = c.GetBoundRect();
    EXPECT_TRUE(box.left == -4 && box.top == -3 && box.right == 6 && box.bottom == 7);
    EXPECT_TRUE(c == CCircle2(CDblPoint(1 + 5e-7, 2), 5 + 5e-7) && c != CCircle2(c.centre, 5 + 2e-6));
    // Collinear and coincident points are covered through CalArcFrom3Points; a NaN gives the null circle too.
    EXPECT_TRUE(CalCircleFrom3Points({0, 0}, {4, 0}, {0, 2}) == CCircle2(CDblPoint(2, 1), std::sqrt(5.0)));
    EXPECT_TRUE(CalCircleFrom3Points({0, 0}, {1, 0}, {std::nan(""), 1}).IsNull());
}

// From (2, 0) the unit circle is touched at (0.5, +-h), h = sqrt 3 / 2 (cos = r / d = 1/2); tangent points within
// the distance epsilon 1e-3 merge (from x = 1 + 1e-7 they lie 2 sqrt(2e-7) = 9e-4 apart). Unit circles 4 apart: outer
// tangents y = +-1, inner ones at cos = 2/4 from the line of centres, touching at (0.5, +-h) and (3.5, -+h).
TEST(CCircle2, TangentsLeftFirstOuterBeforeInnerAndTheirDegenerateCases) {
    const double h = std::sqrt(3.0) / 2;
    const CCircle2 unit(CDblPoint(0, 0), 1), big(CDblPoint(0, 0), 2);
    CLine2Array out;
    ASSERT_EQ(unit.TangentLines(CDblPoint(2, 0), out), 2);
    EXPECT_TRUE(out[0] == CLine2(2, 0, 0.5, h) && out[0].start == CDblPoint(2, 0) && out[1] == CLine2(2, 0, 0.5, -h));
    const double from[][2] = {{1.001, 2}, {1.0000001, 1}, {1, 1}, {0.9995, 1}, {0.99, 0}, {0, 0}};  // x, count
    for (const auto& r : from) EXPECT_EQ(unit.TangentLines(CDblPoint(r[0], 0), out), r[1]) << r[0];
    ASSERT_EQ(unit.CommonTangents(CCircle2(CDblPoint(4, 0), 1), out), 4);
    EXPECT_TRUE(out[0].start == CDblPoint(0, 1) && out[0].end == CDblPoint(4, 1) && out[1] == CLine2(0, -1, 4, -1));
    EXPECT_TRUE(out[2].start == CDblPoint(0.5, h) && out[2].end == CDblPoint(3.5, -h) &&
                out[3] == CLine2(0.5, -h, 3.5, h));
    // Radius 2 against (x, 0) of radius r: apart, touching outside, overlapping, touching inside (either way),
    // nested, concentric, equal. Every tangent must touch both circles at right angles to the radius.
    const double pairs[][3] = {{5, 1, 4}, {3, 1, 3},   {2, 1, 2}, {1, 1, 1},
                               {1, 3, 1}, {0.5, 1, 0}, {0, 1, 0}, {0, 2, 0}};
    for (const auto& r : pairs) {
        const CCircle2 other(CDblPoint(r[0], 0), r[1]);
        ASSERT_EQ(big.CommonTangents(other, out), r[2]) << r[0] << " " << r[1];
        for (const CLine2& t : out) {
            const double dot = t.start.x * (t.end.x - t.start.x) + t.start.y * (t.end.y - t.start.y);
            EXPECT_TRUE(big.IsPointOnCircle(t.start, 1e-12) && other.IsPointOnCircle(t.end, 1e-12) && std::fabs(dot) < 1e-12);
        }
    }
}
