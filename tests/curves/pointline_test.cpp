#include <orvmath/angle.h>
#include <orvmath/pointline.h>

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

using namespace ORVMATH;

namespace {

constexpr double kTol = 1e-9;

void ExpectPoint(const CDblPoint& p, double x, double y, double tol = kTol) {
    EXPECT_NEAR(p.x, x, tol);
    EXPECT_NEAR(p.y, y, tol);
}

void ExpectPoints(const CDblPointArray& out, const std::vector<CDblPoint>& want, double tol = kTol) {
    ASSERT_EQ(out.GetSize(), static_cast<INT_PTR>(want.size()));
    for (std::size_t k = 0; k < want.size(); ++k) ExpectPoint(out[static_cast<INT_PTR>(k)], want[k].x, want[k].y, tol);
}

CDblPoint Polar(double deg, double r = 1.0) { return CDblPoint(r * std::cos(deg / kRadToDeg), r * std::sin(deg / kRadToDeg)); }

const CDblPoint O(0, 0), X1(1, 0);

}  // namespace

TEST(ProjectOnLine, RefusesCollinearPointsAndFeetOutsideTheSegment) {
    CDblPoint foot(9, 9);
    EXPECT_FALSE(ProjectOnLine(CDblPoint(0.5, 0), O, X1, foot));  // exactly on the line
    EXPECT_FALSE(ProjectOnLine(CDblPoint(2, 1), O, X1, foot));    // t = 2
    EXPECT_FALSE(ProjectOnLine(CDblPoint(2, 1), X1, X1, foot));   // no line
    ExpectPoint(foot, 9, 9);
    EXPECT_TRUE(ProjectOnLine(CDblPoint(0.5, 1), O, X1, foot));
    ExpectPoint(foot, 0.5, 0);
    EXPECT_DOUBLE_EQ(ProjectOnLine(CDblPoint(2, 1), O, X1), 2.0);
    EXPECT_DOUBLE_EQ(ProjectOnLine(CDblPoint(2, 1), X1, X1), 0.0);
}

TEST(IsPointOnLine, LooksOnlyAtTheFootParameterWithRelativeSlack) {
    struct Row {
        CDblPoint p;
        bool on;
    };
    const Row rows[] = {
        {{0.5, 7}, true},           // far from the line, foot inside
        {{1.0000005, 0}, true},     // t = 1 + 5e-7 < 1 + 1e-6
        {{1.00001, 0}, false},      // t = 1 + 1e-5
        {{-0.0000005, 3}, true},    // t = -5e-7
        {{-0.000002, 0}, false},    // t = -2e-6
    };
    for (const Row& row : rows) EXPECT_EQ(IsPointOnLine(row.p, O, X1), row.on) << row.p.x << "," << row.p.y;
    EXPECT_TRUE(IsPointOnLine(CDblPoint(50, 50), X1, X1));
}

TEST(IsPointNear, SquareTestIsStrictAtItsEdge) {
    EXPECT_FALSE(IsPointNearPoint(O, CDblPoint(0.5, 0), 0.5));
    EXPECT_TRUE(IsPointNearPoint(O, CDblPoint(0.5, -0.25), 0.5000001));
    // Nearest point of the segment: the end, the foot, the start.
    EXPECT_FALSE(IsPointNearLineSeg(CDblPoint(2, 0.05), O, X1, 0.1));
    EXPECT_TRUE(IsPointNearLineSeg(CDblPoint(1.09, 0.09), O, X1, 0.1));
    EXPECT_TRUE(IsPointNearLineSeg(CDblPoint(0.5, 0.05), O, X1, 0.1));
    EXPECT_TRUE(IsPointNearLineSeg(CDblPoint(-0.05, 0.05), O, X1, 0.1));
    EXPECT_FALSE(IsPointNearLineSeg(CDblPoint(0.5, 0.1), O, X1, 0.1));
}

TEST(IsOnDifferentSides, ReportsSidesLineAndDegenerateLine) {
    struct Row {
        CDblPoint p, q;
        int want;
    };
    const Row rows[] = {
        {{0, 1}, {0, -1}, 1}, {{0, 1}, {5, 2}, 0}, {{3, -1}, {-2, -4}, 0},
        {{3, 0}, {0, 1}, 2},  // p on the line, whatever q is
        {{0, 1}, {7, 0}, 2},
    };
    for (const Row& row : rows) EXPECT_EQ(IsOnDifferentSides(O, X1, row.p, row.q), row.want);
    EXPECT_EQ(IsOnDifferentSides(X1, CDblPoint(1.0000005, 0), CDblPoint(0, 1), CDblPoint(0, -1)), -1);
}

TEST(OffsetLine, MovesLeftOrTowardTheSidePoint) {
    CDblPoint a = O, b = X1;
    EXPECT_TRUE(OffsetLine(a, b, 1.0));
    ExpectPoint(a, 0, 1);
    ExpectPoint(b, 1, 1);

    struct Row {
        CDblPoint side;
        double d;
        int ret;
        double y;  // y of both points afterwards
    };
    const Row rows[] = {{{0, -5}, 1, -1, -1}, {{0, 5}, 2, 1, 2}, {{0, 5}, -2, 1, -2}, {{7, 0}, 1, 0, 0}};
    for (const Row& row : rows) {
        a = O, b = X1;
        EXPECT_EQ(OffsetLine(a, b, row.d, row.side), row.ret);
        ExpectPoint(a, 0, row.y);
        ExpectPoint(b, 1, row.y);
    }
    a = b = X1;
    EXPECT_FALSE(OffsetLine(a, b, 1.0));
    EXPECT_EQ(OffsetLine(a, b, 1.0, CDblPoint(0, 3)), 0);  // cross product exactly 0
    ExpectPoint(a, 1, 0);
}

TEST(PointLineMeasures, LengthSineCosineLineEquationAndDistance) {
    double s = 9, c = 9;
    EXPECT_DOUBLE_EQ(GetLineLenSinCos(X1, X1, s, c), 0.0);
    EXPECT_EQ(s, 0.0);
    EXPECT_EQ(c, 0.0);
    EXPECT_DOUBLE_EQ(GetLineLenSinCos(O, CDblPoint(3, 4), s, c), 5.0);
    EXPECT_DOUBLE_EQ(s, 0.8);
    EXPECT_DOUBLE_EQ(c, 0.6);

    double A = 0, B = 0, C = 0;
    ASSERT_TRUE(CalLineABC(CDblPoint(1, 2), CDblPoint(3, 5), A, B, C));
    EXPECT_EQ(A, -3.0);  // 2 - 5
    EXPECT_EQ(B, 2.0);   // 3 - 1
    EXPECT_EQ(C, -1.0);  // 1*5 - 3*2
    C = 42;
    EXPECT_FALSE(CalLineABC(X1, CDblPoint(1.0000005, 0), A, B, C));
    EXPECT_EQ(C, 42.0);

    EXPECT_DOUBLE_EQ(DPointLine(CDblPoint(0, 3), CDblPoint(-1, 0), X1), 3.0);
    EXPECT_DOUBLE_EQ(DPointLine(CDblPoint(3, 4), O, O), 5.0);  // a point, not a line
    EXPECT_DOUBLE_EQ(GetOffsetLength(10, 2, -3, true), 16.0);
    EXPECT_DOUBLE_EQ(GetOffsetLength(10, 2, -3, false), 4.0);
}

TEST(PointTransforms, MirrorRotateScaleAndRectangle) {
    CDblPoint out;
    MirrorPoint(O, CDblPoint(1, 1), X1, out);
    ExpectPoint(out, 0, 1);
    MirrorPoint(CDblPoint(1, 1), CDblPoint(1, 1), CDblPoint(3, 2), out);  // reflected in the point (1, 1)
    ExpectPoint(out, -1, 0);

    CDblPoint p(2, 1);
    RotatePoint(1, 1, kPi / 2, p);
    ExpectPoint(p, 1, 2);
    ScalePoint(CDblPoint(1, 1), CDblPoint(3, 2), out, 2.0);
    ExpectPoint(out, 5, 3);

    CDblPoint r[4];
    MakeRectangle(O, 0, 2, 4, r);
    ExpectPoint(r[0], -1, -2), ExpectPoint(r[1], 1, -2), ExpectPoint(r[2], 1, 2), ExpectPoint(r[3], -1, 2);
    // Centre (1, 1), a quarter turn: (x, y) -> (1 - (y - 1), 1 + (x - 1)) on the corners
    // (0, -1), (2, -1), (2, 3), (0, 3).
    MakeRectangle(CDblPoint(1, 1), kPi / 2, 2, 4, r);
    ExpectPoint(r[0], 3, 0), ExpectPoint(r[1], 3, 2), ExpectPoint(r[2], -1, 2), ExpectPoint(r[3], -1, 0);
    RotatePoints(0, 0, 1.0, r, 0);
    ExpectPoint(r[0], 3, 0);
}

TEST(ProjectOnCircle, NearerPointFirstAndCentreSentinels) {
    CDblPointArray out;
    ProjectOnCircle(CDblPoint(3, 0), O, 1, out);
    ExpectPoints(out, {{1, 0}, {-1, 0}});
    ProjectOnCircle(O, O, 1, out);  // emptied
    EXPECT_EQ(out.GetSize(), 0);

    CDblPoint n(9, 9);
    NearestProjectOnCircle(O, O, 2, n);
    ExpectPoint(n, 9, 9);
    NearestProjectOnCircle(CDblPoint(0, 5), O, 2, n);
    ExpectPoint(n, 0, 2);
}

TEST(NearestProjectOnArc, SectorMayWrapThroughPlusMinus180) {
    struct Row {
        double start, sweep, dirDeg;
        bool hit;
    };
    const Row rows[] = {
        {170, 20, 180, true},  {170, 20, -175, true}, {170, 20, 0, false}, {170, 20, 165, false},
        {-170, -20, 175, true}, {-170, -20, -175, true}, {-170, -20, -90, false},
        {190, 20, -160, true},  {190, 20, 170, false},  // start 190 is -170
        {0, 90, -0.00005, true}, {0, 90, -0.0002, false}, {0, 90, 90.00005, true},
    };
    for (const Row& row : rows) {
        CDblPoint out(9, 9);
        const bool hit = NearestProjectOnArc(Polar(row.dirDeg, 3.0) + CDblPoint(1, 1), CDblPoint(1, 1), 2.0, row.start,
                                             row.sweep, out);
        EXPECT_EQ(hit, row.hit) << row.start << " " << row.sweep << " " << row.dirDeg;
        const CDblPoint want = row.hit ? Polar(row.dirDeg, 2.0) + CDblPoint(1, 1) : CDblPoint(9, 9);
        ExpectPoint(out, want.x, want.y);
    }
    CDblPoint out(9, 9);
    EXPECT_FALSE(NearestProjectOnArc(X1, X1, 1, 0, 360, out));
}

TEST(Tangents, TangentPointsOfCircleAndEllipse) {
    CDblPointArray out;
    // From (2, 0) to the unit circle: x = r^2/d = 0.5, y = +-sqrt(1 - 0.25).
    TCircle(CDblPoint(2, 0), O, 1, out);
    ExpectPoints(out, {{0.5, std::sqrt(0.75)}, {0.5, -std::sqrt(0.75)}});
    // Any tangent point T satisfies (T - c).(p - T) = 0 and |T - c| = r.
    const CDblPoint c(1, 1), p(3, 5);
    TCircle(p, c, 1.5, out);
    ASSERT_EQ(out.GetSize(), 2);
    for (const CDblPoint& t : {out[0], out[1]}) {
        EXPECT_NEAR(Distance(t, c), 1.5, kTol);
        EXPECT_NEAR((t.x - c.x) * (p.x - t.x) + (t.y - c.y) * (p.y - t.y), 0.0, kTol);
    }
    TCircle(CDblPoint(0.5, 0.5), O, 1, out);  // inside
    EXPECT_EQ(out.GetSize(), 0);

    // Ellipse x^2/4 + y^2 = 1 from (4, 0): the polar line x*4/4 = 1, so x = 1, y = +-sqrt(3/4);
    // the box is given with its edges reversed and is normalised.
    TEllipse(CDblPoint(4, 0), CDblRect(2, 1, -2, -1), out);
    ExpectPoints(out, {{1, std::sqrt(0.75)}, {1, -std::sqrt(0.75)}});
    TEllipse(CDblPoint(0, 1), CDblRect(-2, -1, 2, 1), out);  // on the ellipse: the point itself
    ExpectPoints(out, {{0, 1}});
    for (const CDblPoint& q : {CDblPoint(0.5, 0), O}) {
        TEllipse(q, CDblRect(-2, -1, 2, 1), out);
        EXPECT_EQ(out.GetSize(), 0);
    }
    TEllipse(CDblPoint(4, 0), CDblRect(-2, 0, 2, 0), out);
    EXPECT_EQ(out.GetSize(), 0);
}
