#include <orvmath/arc2.h>
#include <orvmath/circle2.h>
#include <orvmath/line2.h>

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

using namespace ORVMATH;

static void ExpectLine(const CLine2& l, double x1, double y1, double x2, double y2) {
    EXPECT_TRUE(std::fabs(l.start.x - x1) < 1e-9 && std::fabs(l.start.y - y1) < 1e-9 &&
                std::fabs(l.end.x - x2) < 1e-9 && std::fabs(l.end.y - y2) < 1e-9)
        << l.start.x << "," << l.start.y << " - " << l.end.x << "," << l.end.y;
}

TEST(CLine2, ZeroLengthSegmentGivesSentinelsAndStaysUnchanged) {
    CLine2 p(2, 3, 2, 3);
    EXPECT_TRUE(p.WhichSide(CDblPoint(2, 3), 0.5) == -2 && p.WhichSide(CDblPoint(100, -7), 0.0) == -2);
    EXPECT_TRUE(p.Perpendicular(CDblPoint(5, 5), 1.0).IsNull() && p.Offset(1.0).IsNull());
    for (CLine2* l : {&p.LengthenEnd(1), &p.LengthenStart(1), &p.StartFitTo(4), &p.EndFitTo(4), &p.MiddleFitTo(4)})
        ExpectLine(*l, 2, 3, 2, 3);
    CDblPoint x(9, 9);
    EXPECT_FALSE(p.Intersection(CLine2(0, 0, 5, 5), x, ExtendBoth));
    EXPECT_TRUE(x.x == 9 && x.y == 9);
}

TEST(CLine2, SideTestsUseTheInfiniteLineStadiumAndPerpendicular) {
    const CLine2 l(0, 0, 1, 0);
    struct Row { double x, y, tol; int side; } rows[] = {
        {0.5, 1, 0.1, 1}, {0.5, -1, 0.1, -1}, {50, 0.05, 0.1, 0},  // far beyond the end, still on the line
        {0.5, 0.1, 0.1, 0}, {0.5, 0.1001, 0.1, 1},                  // exactly at the tolerance is on the line
    };
    for (const Row& r : rows) EXPECT_EQ(l.WhichSide(CDblPoint(r.x, r.y), r.tol), r.side) << r.x << "," << r.y;
    struct Seg { double x, y, tol; bool on; } segs[] = {  // a stadium: |(-0.3, 0.4)| = 0.5 from the start
        {1.5, 0, 0.4, false}, {1.5, 0, 0.5, true}, {-0.3, 0.4, 0.49, false}, {0.7, 0.4, 0.4, true}};
    for (const Seg& r : segs) EXPECT_EQ(l.IsPointOnSegment(CDblPoint(r.x, r.y), r.tol), r.on) << r.x << "," << r.y;
    // A perpendicular points back toward the line from its left, else along the left normal.
    ExpectLine(l.Perpendicular(CDblPoint(1, 2), 2), 1, 2, 1, 0);
    ExpectLine(l.Perpendicular(CDblPoint(1, -2), 1), 1, -2, 1, -1);
    ExpectLine(l.Perpendicular(CDblPoint(1, 0.005), 1), 1, 0.005, 1, 1.005);  // on the line within 0.01
}

TEST(CLine2, AnglesStayInHalfOpenRangeUpToPiAndNormalizeHasVerticalSlack) {
    EXPECT_DOUBLE_EQ(CLine2(0, 0, -1, -0.0).Angle(), kPi);  // atan2(-0.0, -1) is -pi
    // Opposite segments: 0 - pi = -pi is brought to pi, as is pi - 0.
    EXPECT_DOUBLE_EQ(CLine2(0, 0, -1, 0).Angle(CLine2(0, 0, 1, 0)), kPi);
    EXPECT_DOUBLE_EQ(CLine2(0, 0, 1, 0).Angle(CLine2(0, 0, -1, 0)), kPi);
    // -3pi/4 - 3pi/4 = -3pi/2, plus 2pi = pi/2.
    EXPECT_NEAR(CLine2(0, 0, -1, 1).Angle(CLine2(0, 0, -1, -1)), kPi / 2, 1e-9);
    EXPECT_NEAR(CLine2(0, 0, -1, 0).NormalAngle(), -kPi / 2, 1e-9);  // 3pi/2 wraps
    struct Row { double x1, y1, x2, y2; bool swapped; } rows[] = {  // |dx| up to 1e-6 is vertical: lower start
        {5, 0, 1, 0, true}, {0, 3, 0.0000005, 1, true}, {0, 3, 0.000002, 1, false}, {0.000002, 3, 0, 1, true},
        {0, 1, 0.0000005, 3, false},
    };
    for (const Row& r : rows) {
        CLine2 l(r.x1, r.y1, r.x2, r.y2);
        EXPECT_EQ(l.Normalize().start == CDblPoint(r.x2, r.y2), r.swapped) << r.x1 << "," << r.y1;
    }
}

TEST(CLine2, ConstructorsCopyingFormsAndCoordinatesOnTheLine) {
    ExpectLine(CLine2().Set(CDblSize(1, 2), CDblPoint(5, 5)), 6, 7, 5, 5);  // the size runs from the end
    ExpectLine(CLine2(CDblPoint(1, 1), kPi / 2, 2), 1, 1, 1, 3);
    ExpectLine(CLine2(kPi, CDblPoint(1, 1), 2), 3, 1, 1, 1);
    ExpectLine(CLine2(0.0, 4.0, CDblPoint(1, 1)), -1, 1, 3, 1);
    EXPECT_EQ(CLine2(0, 0, 1, 0), CLine2(1, 0, 0, 0));
    EXPECT_NE(CLine2(0, 0, 1, 0), CLine2(0, 0, 1, 0.01));
    const CLine2 l(0, 0, 2, 0);
    ExpectLine(l.Mirror(CLine2(0, 0, 1, 1)), 0, 0, 0, 2);
    EXPECT_TRUE(l.Mirror(CDblPoint(1, 3)) == CDblPoint(1, -3));
    ExpectLine(l.Offset(-1.5), 0, -1.5, 2, -1.5);
    // X and Y fall back to the start on axis-parallel segments.
    EXPECT_TRUE(CLine2(2, 1, 6, 1).X(5) == 2 && CLine2(2, 1, 2, 6).Y(5) == 1);
    EXPECT_DOUBLE_EQ(CLine2(0, 0, 2, 4).X(1), 0.5);
    ExpectLine(CLine2(0, 0, 2, 4).ExTrimStartY(-2), -1, -2, 2, 4);
}

TEST(CLine2, ArrayOutputsAreAppendedTo) {
    CDblPointArray pts, want, poly;
    pts.Add(9, 9);
    CLine2(0, 0, 4, 0).EqualDistPoints(4, pts);
    CLine2(0, 0, 4, 0).EqualDistPoints(1, pts);
    for (double x : {9.0, 1.0, 2.0, 3.0}) want.Add(x, x == 9 ? 9 : 0);
    EXPECT_TRUE(pts == want);
    // A polyline crossed at a vertex reports the crossing for both pieces.
    for (double x : {0.0, 1.0, 2.0}) poly.Add(x, x == 1 ? 1 : -1);
    CLine2(-1, 1, 3, 1).Intersection(poly, pts);
    for (int k = 0; k < 2; ++k) want.Add(1, 1);
    EXPECT_TRUE(pts == want);
    CLine2Array lines;
    CLine2(0, 0, 1, 0).Offset(1.0, 3, lines);
    CLine2(0, 0, 1, 0).Offset(1.0, 0, lines);
    ASSERT_EQ(lines.GetSize(), 3);
    for (int k = 0; k < 3; ++k) ExpectLine(lines[k], 0, k + 1, 1, k + 1);
}

TEST(CLine2, IsOverlappedGivesTheCommonPartInThisDirection) {
    const CLine2 l(0, 0, 4, 0);
    struct Row { CLine2 other; bool overlap; double from, to; } rows[] = {
        {CLine2(3, 0, 6, 0), true, 3, 4},  {CLine2(6, 0, 3, 0), true, 3, 4},
        {CLine2(-1, 0, 5, 0), true, 0, 4}, {CLine2(1, 0.005, 2, 0.005), true, 1, 2},
        {CLine2(4, 0, 6, 0), false, 7, 7}, {CLine2(0, 0, -2, 0), false, 7, 7},  // touching at an end only
        {CLine2(1, 0.02, 2, 0.02), false, 7, 7}, {CLine2(1, 0, 2, 0.01), false, 7, 7},  // too far; not parallel
    };
    for (const Row& r : rows) {
        CLine2 common(7, 0, 7, 0);  // left alone on failure
        EXPECT_EQ(l.IsOverlapped(r.other, common), r.overlap);
        ExpectLine(common, r.from, 0, r.to, 0);
    }
}

// By hand (law of sines): corner X = (6, 0) of y = 0 and y = x - 6; the chamfer (5, 2) has |X C1| = 3: (3, 0)-(8, 2).
TEST(CLine2, ChamferFollowsTheLawOfSinesOrFailsChangingNothing) {
    CLine2 a(0, 0, 5, 0), b(12, 6, 7, 1), ra(5, 0, 0, 0), rb(7, 1, 12, 6);
    ExpectLine(a.ChamferStartStart(b, 5, 2), 3, 0, 8, 2);
    ExpectLine(a, 0, 0, 3, 0);
    ExpectLine(b, 12, 6, 8, 2);
    ExpectLine(ra.ChamferEndEnd(rb, 5, 2), 3, 0, 8, 2);
    ExpectLine(ra, 3, 0, 0, 0);
    ExpectLine(rb, 8, 2, 12, 6);
    struct Row { CLine2 a, b; double dx, dy; } rows[] = {
        {CLine2(0, 0, 5, 0), CLine2(0, 1, 5, 1), 1, 1},     // parallel
        {CLine2(0, 0, 5, 0), CLine2(12, 6, 7, 1), 15, 6},   // |X C1| = 3 * 3 = 9: C1 = (-3, 0) off the segment
        {CLine2(7, 0, 10, 0), CLine2(12, 6, 7, 1), 5, 2},   // corner (6, 0) behind this start
    };
    for (const Row& r : rows) {
        CLine2 fa = r.a, fb = r.b;
        EXPECT_TRUE(fa.ChamferStartStart(fb, r.dx, r.dy).IsNull());
        EXPECT_TRUE(fa.start == r.a.start && fa.end == r.a.end && fb.start == r.b.start && fb.end == r.b.end);
    }
}

// The circle of radius 5 about the origin meets y = 3 at (-4, 3) and (4, 3).
// Parameters along each segment decide which point a trim takes.
TEST(CLine2, TrimsChooseBetweenTwoCirclePoints) {
    const CCircle2 c(CDblPoint(0, 0), 5);
    struct Row { double x1, x2, endX, startX; } rows[] = {
        {-6, 6, 4, -4}, {6, -6, -4, 4},    // both within: end takes the larger t, start the smaller
        {0, 6, 4, 4},   {-6, 0, -4, -4},   // one within (t 2/3), the other behind (t -2/3)
        {-2, 2, 4, -4}, {2, -2, -4, 4},    // both outside (t -0.5, 1.5): end the larger |t|, start the smaller
        {-10, -8, 4, -4}, {10, 12, -4, 4}, // both ahead (t 3, 7); both behind (t -7, -3)
    };
    for (const Row& r : rows) {
        CLine2 e(r.x1, 3, r.x2, 3), s(r.x1, 3, r.x2, 3);
        ExpectLine(e.ExTrimEnd(c), r.x1, 3, r.endX, 3);
        ExpectLine(s.ExTrimStart(c), r.startX, 3, r.x2, 3);
    }
    ExpectLine(CLine2(0, 6, 1, 6).ExTrimEnd(c), 0, 6, 1, 6);  // a miss leaves the segment alone
    // On an arc only its own points count: the x >= 0 half leaves (4, 3).
    const CArc2 right(CDblPoint(0, 0), 5, -kPi / 2, kPi);
    ExpectLine(CLine2(-6, 3, -5, 3).ExTrimEnd(right), -6, 3, 4, 3);
    ExpectLine(CLine2(-6, 3, -5, 3).ExTrimStart(right), 4, 3, -5, 3);
    ExpectLine(CLine2(0, 1, 5, 1).ExTrimEnd(CLine2(3, -1, 3, 0)), 0, 1, 3, 1);
}

TEST(IsSameDirectLine, ComparesDirectionsIncludingTheKeptHorizontalQuirk) {
    struct Row { CLine2 a, b; bool same; } rows[] = {
        {CLine2(0, 0, 0, 2), CLine2(5, 1, 5, 9), true},   {CLine2(0, 0, 0, 2), CLine2(5, 9, 5, 1), false},
        {CLine2(0, 0, 2, 0), CLine2(1, 1, 7, 1), true},   {CLine2(0, 0, 2, 0), CLine2(7, 1, 1, 1), false},
        {CLine2(0, 0, 1, 2), CLine2(3, 3, 5, 7), true},   {CLine2(0, 0, 1, 2), CLine2(5, 7, 3, 3), false},
        {CLine2(0, 0, 1, 2), CLine2(0, 0, 1, 3), false},
        {CLine2(0, 0, 2, 0), CLine2(0, 0, 4, 3), true},  // dy1 := 1, dy2 := 2: -2/1 == -4/2
    };
    for (const Row& r : rows) EXPECT_EQ(IsSameDirectLine(r.a, r.b), r.same);
}

// By hand with Pappus (area x centroid distance x angle), the part folded across the axis counted once beyond pi;
// the concave outline's values from shapely moments of its parts above and below (a Monte Carlo count agreed).
TEST(CLine2, RotateVolumeTurnsEachSideInItsHalfSpaceAndCountsOverlapOnce) {
    const double nan = std::nan("");
    const CLine2 x(0, 0, 1, 0);
    const std::vector<CDblPoint> square{{0, 1}, {1, 1}, {1, 2}, {0, 2}}, cross{{0, -1}, {1, -1}, {1, 2}, {0, 2}},
        concave{{0, -2}, {4, -1}, {3, 2}, {2, 0.5}, {1, 3}, {-1, 1}};
    // clang-format off
    struct Row { CLine2 axis; std::vector<CDblPoint> outline; double angle, volume; } rows[] = {
        {x, square, 2 * kPi, 3 * kPi}, {x, {{0, 2}, {1, 2}, {1, 1}, {0, 1}}, -kPi / 2, 0.75 * kPi},
        {x, square, 7 * kPi, 3 * kPi}, {x, square, 0, 0},
        {CLine2(0, 0, 3, 4), {{-0.8, 0.6}, {-0.2, 1.4}, {-1.0, 2.0}, {-1.6, 1.2}}, 2 * kPi, 3 * kPi},
        {x, {{0, 1}, {3, 1}, {0, 4}}, kPi / 3, 3 * kPi}, {x, {{0, 0}, {1, 0}, {1, 1}, {0, 1}}, 2 * kPi, kPi},
        {x, cross, kPi / 2, 1.25 * kPi}, {x, cross, 1.5 * kPi, 3.25 * kPi}, {x, cross, 2 * kPi, 4 * kPi},
        {x, concave, kPi / 2, 19.5476876223365}, {x, concave, 1.5 * kPi, 45.5054358043052},
        {x, concave, 2 * kPi, 51.9154963639375}, {x, {{0, 1}, {1, 2}, {2, 3}}, kPi, 0},
        {CLine2(1, 1, 1, 1), square, kPi, -1}, {x, {{0, 1}, {1, 1}}, kPi, -1},
        {x, {{0, 1}, {1, nan}, {1, 2}}, kPi, -1}, {x, square, nan, -1}, {x, square, HUGE_VAL, -1}};
    // clang-format on
    for (const Row& r : rows) {
        CDblPointArray outline;
        for (const CDblPoint& p : r.outline) outline.Add(p);
        EXPECT_NEAR(r.axis.GetRotateVolume(outline, r.angle), r.volume, 1e-9) << r.outline.size() << " " << r.angle;
    }
}
