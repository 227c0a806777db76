#include <orvmath/angle.h>
#include <orvmath/pointline.h>

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

using namespace ORVMATH;

static void ExpectPoints(const CDblPoint* got, const std::vector<CDblPoint>& want, double tol = 1e-9) {
    for (std::size_t k = 0; k < want.size(); ++k)
        EXPECT_TRUE(std::fabs(got[k].x - want[k].x) <= tol && std::fabs(got[k].y - want[k].y) <= tol)
            << "point " << k << ": " << got[k].x << "," << got[k].y << " vs " << want[k].x << "," << want[k].y;
}
static void ExpectPoints(const CDblPointArray& out, const std::vector<CDblPoint>& want) {
    ASSERT_EQ(out.GetSize(), static_cast<INT_PTR>(want.size()));
    ExpectPoints(out.GetData(), want);
}
static void ExpectPoint(const CDblPoint& p, double x, double y) { ExpectPoints(&p, {{x, y}}); }

constexpr double kDeg = kPi / 180;
static CDblPoint Polar(double d, double r = 1) { return CDblPoint(r * std::cos(d * kDeg), r * std::sin(d * kDeg)); }

const CDblPoint O(0, 0), X1(1, 0);

TEST(PointOnLine, ProjectionAndOnLineLookOnlyAtTheFootParameter) {
    CDblPoint foot(9, 9);
    EXPECT_FALSE(ProjectOnLine(CDblPoint(0.5, 0), O, X1, foot));  // exactly on the line
    EXPECT_FALSE(ProjectOnLine(CDblPoint(2, 1), O, X1, foot));    // t = 2
    EXPECT_FALSE(ProjectOnLine(CDblPoint(2, 1), X1, X1, foot));   // no line
    ExpectPoint(foot, 9, 9);
    EXPECT_TRUE(ProjectOnLine(CDblPoint(0.5, 1), O, X1, foot));
    ExpectPoint(foot, 0.5, 0);
    EXPECT_TRUE(ProjectOnLine(CDblPoint(2, 1), O, X1) == 2.0 && ProjectOnLine(CDblPoint(2, 1), X1, X1) == 0.0);
    // IsPointOnLine: t within 1e-6 of [0, 1], however far from the line.
    struct Row { CDblPoint p; bool on; } rows[] = {
        {{0.5, 7}, true}, {{1.0000005, 0}, true}, {{1.00001, 0}, false}, {{-5e-7, 3}, true}, {{-2e-6, 0}, false},
    };
    for (const Row& row : rows) EXPECT_EQ(IsPointOnLine(row.p, O, X1), row.on) << row.p.x << "," << row.p.y;
    EXPECT_TRUE(IsPointOnLine(CDblPoint(50, 50), X1, X1));
}

TEST(PointOnLine, NearnessIsASquareStrictAtItsEdgeSidesAndOffsets) {
    EXPECT_FALSE(IsPointNearPoint(O, CDblPoint(0.5, 0), 0.5));
    EXPECT_TRUE(IsPointNearPoint(O, CDblPoint(0.5, -0.25), 0.5000001));
    // Nearest point of the segment: the end, the end, the foot, the start, the foot.
    struct Near { CDblPoint p; bool near; } nears[] = {
        {{2, 0.05}, false}, {{1.09, 0.09}, true}, {{0.5, 0.05}, true}, {{-0.05, 0.05}, true}, {{0.5, 0.1}, false}};
    for (const Near& n : nears) EXPECT_EQ(IsPointNearLineSeg(n.p, O, X1, 0.1), n.near) << n.p.x << "," << n.p.y;
    struct Side { CDblPoint p, q; int want; } sides[] = {
        {{0, 1}, {0, -1}, 1}, {{0, 1}, {5, 2}, 0}, {{3, -1}, {-2, -4}, 0},
        {{3, 0}, {0, 1}, 2}, {{0, 1}, {7, 0}, 2},  // a point on the line, whatever the other is
    };
    for (const Side& r : sides) EXPECT_EQ(IsOnDifferentSides(O, X1, r.p, r.q), r.want) << r.p.x << "," << r.p.y;
    EXPECT_EQ(IsOnDifferentSides(X1, CDblPoint(1.0000005, 0), CDblPoint(0, 1), CDblPoint(0, -1)), -1);
    // OffsetLine moves to the left, or toward a side point.
    struct Off { bool sided; CDblPoint side; double d; int ret; double y; } offs[] = {  // y of both points after
        {false, O, 1, 1, 1}, {true, {0, -5}, 1, -1, -1}, {true, {0, 5}, 2, 1, 2}, {true, {0, 5}, -2, 1, -2},
        {true, {7, 0}, 1, 0, 0},
    };
    for (const Off& row : offs) {
        CDblPoint ab[2] = {O, X1};
        const int ret = row.sided ? OffsetLine(ab[0], ab[1], row.d, row.side) : OffsetLine(ab[0], ab[1], row.d);
        EXPECT_EQ(ret, row.ret);
        ExpectPoints(ab, {{0, row.y}, {1, row.y}});
    }
    CDblPoint a = X1, b = X1;
    EXPECT_FALSE(OffsetLine(a, b, 1.0));
    EXPECT_EQ(OffsetLine(a, b, 1.0, CDblPoint(0, 3)), 0);  // cross product exactly 0
    ExpectPoint(a, 1, 0);
}

TEST(PointLineMeasures, DegenerateLinesGiveSentinelsMirrorsRectangleAndRotations) {
    double s = 9, c = 9, A = 0, B = 0, C = 0;
    EXPECT_TRUE(GetLineLenSinCos(X1, X1, s, c) == 0.0 && s == 0.0 && c == 0.0);
    EXPECT_DOUBLE_EQ(GetLineLenSinCos(O, CDblPoint(3, 4), s, c), 5.0);
    EXPECT_TRUE(std::fabs(s - 0.8) < 1e-15 && std::fabs(c - 0.6) < 1e-15);
    ASSERT_TRUE(CalLineABC(CDblPoint(1, 2), CDblPoint(3, 5), A, B, C));
    EXPECT_TRUE(A == -3.0 && B == 2.0 && C == -1.0);  // 2 - 5, 3 - 1, 1*5 - 3*2
    C = 42;
    EXPECT_FALSE(CalLineABC(X1, CDblPoint(1.0000005, 0), A, B, C));
    EXPECT_EQ(C, 42.0);
    EXPECT_DOUBLE_EQ(DPointLine(CDblPoint(0, 3), CDblPoint(-1, 0), X1), 3.0);
    EXPECT_DOUBLE_EQ(DPointLine(CDblPoint(3, 4), O, O), 5.0);  // a point, not a line
    CDblPoint out;
    MirrorPoint(O, CDblPoint(1, 1), X1, out);
    ExpectPoint(out, 0, 1);
    MirrorPoint(CDblPoint(1, 1), CDblPoint(1, 1), CDblPoint(3, 2), out);  // reflected in the point (1, 1)
    ExpectPoint(out, -1, 0);
    // Centre (1, 1), a quarter turn: (x, y) -> (1 - (y - 1), 1 + (x - 1)) on the corners
    // (0, -1), (2, -1), (2, 3), (0, 3).
    CDblPoint r[4];
    MakeRectangle(CDblPoint(1, 1), kPi / 2, 2, 4, r);
    ExpectPoints(r, {{3, 0}, {3, 2}, {-1, 2}, {-1, 0}});
    RotatePoints(0, 0, kPi / 2, r, 1);  // the first point only
    ExpectPoints(r, {{0, 3}, {3, 2}});
}

TEST(ProjectOnCircle, NearerPointFirstCentreSentinelsAndArcsThroughPlusMinus180) {
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
    // Onto an arc, whose sector may wrap through +-180.
    struct Row { double start, sweep, dirDeg; bool hit; } rows[] = {
        {170, 20, 180, true}, {170, 20, -175, true}, {170, 20, 165, false}, {-170, -20, 175, true},
        {-170, -20, -90, false}, {190, 20, -160, true}, {190, 20, 170, false},  // start 190 is -170
        {0, 90, -0.00005, true}, {0, 90, -0.0002, false}, {0, 90, 90.00005, true},
    };
    const CDblPoint c(1, 1);
    for (const Row& row : rows) {
        n = CDblPoint(9, 9);
        EXPECT_EQ(NearestProjectOnArc(c + Polar(row.dirDeg, 3.0), c, 2.0, row.start, row.sweep, n), row.hit)
            << row.start << " " << row.sweep << " " << row.dirDeg;
        ExpectPoints(&n, {row.hit ? c + Polar(row.dirDeg, 2.0) : CDblPoint(9, 9)});
    }
    EXPECT_FALSE(NearestProjectOnArc(X1, X1, 1, 0, 360, n));
}

TEST(Tangents, TangentPointsOfCircleAndEllipseInTheLineCircleRootOrder) {
    CDblPointArray out;
    // From (2, 0) to the unit circle: x = r^2/d = 0.5, y = +-sqrt(1 - 0.25); a vertical polar line, upper first.
    TCircle(CDblPoint(2, 0), O, 1, out);
    ExpectPoints(out, {{0.5, std::sqrt(0.75)}, {0.5, -std::sqrt(0.75)}});
    // From c + (3, 4) to radius 3 about c: foot 9/5 along (0.6, 0.8), half chord 3 * 4/5 = 2.4 along (-0.8, 0.6);
    // the polar line has |B| > |A|, so the larger x comes first.
    TCircle(CDblPoint(4, 5), CDblPoint(1, 1), 3, out);
    ExpectPoints(out, {{4, 1}, {0.16, 3.88}});
    TCircle(CDblPoint(0.5, 0.5), O, 1, out);  // inside
    EXPECT_EQ(out.GetSize(), 0);
    // Ellipse x^2/4 + y^2 = 1 from (4, 0), its box given with the edges reversed: the polar line
    // x*4/4 = 1, so x = 1, y = +-sqrt(3/4).
    TEllipse(CDblPoint(4, 0), CDblRect(2, 1, -2, -1), out);
    ExpectPoints(out, {{1, std::sqrt(0.75)}, {1, -std::sqrt(0.75)}});
    TEllipse(CDblPoint(0, 1), CDblRect(-2, -1, 2, 1), out);  // on the ellipse: the point itself
    ExpectPoints(out, {{0, 1}});
    struct Miss { CDblPoint q; CDblRect box; } misses[] = {  // inside, at the centre, a flat box
        {{0.5, 0}, {-2, -1, 2, 1}}, {O, {-2, -1, 2, 1}}, {{4, 0}, {-2, 0, 2, 0}}};
    for (const Miss& m : misses) {
        TEllipse(m.q, m.box, out);
        EXPECT_EQ(out.GetSize(), 0) << m.q.x << "," << m.q.y;
    }
}
