#include "route/route_test_util.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

using namespace route_test;

namespace {

// The clothoid A at l in the frame (origin, theta) as `mode` evaluates it; `keepSide` false mirrors it.
CDblPoint Clothoid(ClothoidMode mode, const CDblPoint& o, double theta, double A, double l, bool keepSide = true) {
    const bool exact = mode == CLOTHOID_EXACT;
    const CDblPoint q = exact ? CRoute2::GetStandardPointExact(A, l, 0) : CRoute2::GetStandardPoint(A, l, 0);
    return CRoute2::Standard2World(o, theta, keepSide, q);
}

// Every element kind, its transitions stored on the clothoid of `mode`: a straight, a spiral A 120 out of it to
// R 240 (l = 60, 0.125 rad), an arc of 0.4 rad, a spiral from R 240 to 120 (l 60 to 120, 0.375 rad), an arc of
// 0.3 rad, a spiral back to a straight (0.5 rad), a straight. Mirrored, every turn goes right.
CRoute2 Sample(ClothoidMode mode, bool mirrored, double offset = 0.0) {
    const double A = 120;
    double a = 0.3;
    CDblPoint at(100 * std::cos(a), 100 * std::sin(a));
    const auto arc = [&](double R, double sweep) {  // turning left: the centre is on the left normal
        const CDblPoint c(at.x - R * std::sin(a), at.y + R * std::cos(a));
        a += sweep;
        at = CDblPoint(c.x + R * std::sin(a), c.y - R * std::cos(a));
    };
    CCriticalPointArray p;
    p.Add(Pt(SEGMENT_LINE, 0, 0, a, -1));
    p.Add(Pt(SEGMENT_TRANSITION, at.x, at.y, a, -1, A));
    at = Clothoid(mode, at, a, A, 60), a += 0.125;
    p.Add(Pt(SEGMENT_ARC, at.x, at.y, a, 240));
    arc(240, 0.4);
    p.Add(Pt(SEGMENT_TRANSITION, at.x, at.y, a, 240, A, 120));                // stores its far radius
    const CDblPoint q60 = Clothoid(mode, CDblPoint(0, 0), a - 0.125, A, 60);  // the frame that puts l = 60 here
    at = Clothoid(mode, CDblPoint(at.x - q60.x, at.y - q60.y), a - 0.125, A, 120), a += 0.375;
    p.Add(Pt(SEGMENT_ARC, at.x, at.y, a, 120));
    arc(120, 0.3);
    p.Add(Pt(SEGMENT_TRANSITION, at.x, at.y, a, 120, A));
    // Out of the curve the frame sits at the far end pointing back; seen from there the curve turns right.
    a += 0.5;
    const CDblPoint back = Clothoid(mode, CDblPoint(0, 0), a + kPi, A, 120, false);
    at = CDblPoint(at.x - back.x, at.y - back.y);
    p.Add(Pt(SEGMENT_LINE, at.x, at.y, a, -1));
    p.Add(Pt(SEGMENT_LINE, at.x + 80 * std::cos(a), at.y + 80 * std::sin(a), a, -1));
    CRoute2 route(p, 1000, offset);
    route.SetClothoidMode(mode);
    if (mirrored) route.SelfMirror(CDblPoint(0, 0), CDblPoint(1, 0));
    return route;
}

std::vector<double> Boundaries(const CRoute2& r) {
    std::vector<double> b{r.GetStartMile()};
    for (int i = 0; i + 1 < r.GetCriticalPoints().GetSize(); ++i) b.push_back(b.back() + r.GetSegMile(i));
    return b;
}

// The edited route gives the original's points, and tangents (offset 1.5), at 1000 miles of [from, to] outside the
// end snaps.
void ExpectSameAlong(const CRoute2& edited, const CRoute2& original, double from, double to) {
    double worst = 0.0;
    for (int k = 0; k <= 2000; ++k) {
        const double m = from + 0.011 + (to - from - 0.022) * (k / 2) / 1000, d = k % 2 * 1.5;
        worst = std::max(worst, Distance(edited.GetPoint(m, d), original.GetPoint(m, d)));
    }
    EXPECT_LE(worst, 1e-9);
}

}  // namespace

TEST(CRoute2Trim, CutsAtNearAndInsideEveryElementKeepMilesAndPoints) {
    for (ClothoidMode mode : {CLOTHOID_SERIES, CLOTHOID_EXACT})
        for (bool mirrored : {false, true})
            for (double offset : {0.0, -2.5}) {
                const CRoute2 route = Sample(mode, mirrored, offset);
                const std::vector<double> b = Boundaries(route);
                const int n = static_cast<int>(b.size());
                for (int i = 0; i + 1 < n; ++i)
                    for (double into : {0.0, 1e-7, -1e-7, 0.37}) {  // fraction 0.37 of the element
                        SCOPED_TRACE(testing::Message()
                                     << mode << mirrored << offset << " element " << i << " " << into);
                        const bool inside = into > 1e-6;
                        const double cut = b[i] + (inside ? into * (b[i + 1] - b[i]) : into), at = inside ? cut : b[i];
                        if (i == 0 && !inside) continue;
                        CRoute2 tail(route), head(route);
                        ASSERT_TRUE(tail.TrimStart(cut));
                        ASSERT_TRUE(head.TrimEnd(cut));
                        // Within the boundary tolerance the cut falls on the boundary: no sliver element.
                        EXPECT_EQ(tail.GetCriticalPoints().GetSize(), n - i);
                        EXPECT_EQ(head.GetCriticalPoints().GetSize(), i + (inside ? 2 : 1));
                        EXPECT_NEAR(tail.GetStartMile(), at, 1e-12);
                        EXPECT_NEAR(tail.GetEndMile(), route.GetEndMile(), 1e-9);
                        EXPECT_NEAR(head.GetEndMile(), at, 1e-9);
                        ExpectSameAlong(tail, route, at, route.GetEndMile());
                        ExpectSameAlong(head, route, route.GetStartMile(), at);
                        if (!inside) continue;
                        // The normal there crosses the route (at an offset of -0.5) there only.
                        CArray<CRoute2::Crossing> x;
                        const CLine2 normal(route.GetPoint(cut, -5), route.GetPoint(cut, 5));
                        ASSERT_EQ(route.IntersectionWithLine(normal, false, x, -0.5), 1);
                        EXPECT_NEAR(x[0].mile, cut, 1e-9);
                        EXPECT_LE(Distance(x[0].pt, route.GetPoint(cut, -0.5)), 1e-9);
                        // A second cut further into the same element: both cut points come from the original.
                        const double cut2 = cut + 0.4 * (b[i + 1] - b[i]);
                        CRoute2 piece(route), before, after;
                        ASSERT_TRUE(piece.Trim2Side(cut2, cut));
                        EXPECT_EQ(piece.GetCriticalPoints().GetSize(), 2);
                        ExpectSameAlong(piece, route, cut, cut2);
                        route.TrimMiddle(cut, cut2, before, after);  // the same cuts as head and tail
                        EXPECT_NEAR(before.GetMile() + (cut2 - cut) + after.GetMile(), route.GetMile(), 1e-9);
                        EXPECT_NEAR(after.GetStartMile(), cut2, 1e-12);
                    }
            }
}

TEST(CRoute2Trim, NothingLeftOrOffTheRoute) {
    CRoute2 copy = Sample(CLOTHOID_SERIES, false), before, after;
    const double end = copy.GetEndMile();
    // Removing up to an end leaves a null part.
    copy.TrimMiddle(1150, end, before, after);
    EXPECT_TRUE(after.IsNull() && before.GetEndMile() == 1150);
    // Nothing would remain, or a mile is off the route: false and unchanged.
    EXPECT_FALSE(copy.Trim2Side(1010, 1010) || copy.Trim2Side(999, 1010) || copy.Trim2Side(end, end + 1) ||
                 copy.TrimStart(end) || copy.TrimEnd(1000 + 1e-7) || CRoute2().TrimStart(0));
    EXPECT_TRUE(copy == Sample(CLOTHOID_SERIES, false));
}

TEST(CRoute2Extend, ContinuesStraightsAndArcsAndKeepsTheOldPart) {
    const CRoute2 line = Route({Pt(SEGMENT_LINE, 0, 0, 0, -1), Pt(SEGMENT_LINE, 100, 0, 0, -1)}, 50);
    // By hand: on the quarter circle R 10 about (0, 10) beta is at (10 sin beta, 10 - 10 cos beta); 20 more at the
    // start would pass 3/4 of a turn, so the start gets a straight back along the x axis.
    const CRoute2 arc = Route({Pt(SEGMENT_ARC, 0, 0, 0, 10), Pt(SEGMENT_LINE, 10, 10, kHalfPi, -1)}, 50);
    const double b1 = kHalfPi + 1, b2 = kHalfPi + 2, up = kHalfPi + 0.125;
    // A transition gets straights along its end tangents: north from (100, 50), and on at pi/2 + 0.125.
    const CRoute2 spiral =
        Route({Pt(SEGMENT_TRANSITION, 100, 50, kHalfPi, -1, 100), Pt(SEGMENT_ARC, 97.92, 99.92, up, 200)}, 50);
    const struct {
        const CRoute2* route;
        double l0, l1;
        int count;
        double x0, y0, x1, y1;
    } rows[] = {
        {&line, 10, 20, 2, -10, 0, 120, 0},
        {&arc, 10, 10, 2, 10 * std::sin(-1.0), 10 - 10 * std::cos(-1.0), 10 * std::sin(b1), 10 - 10 * std::cos(b1)},
        {&arc, 20, 20, 3, -20, 0, 10 * std::sin(b2), 10 - 10 * std::cos(b2)},
        {&spiral, 10, 15, 4, 100, 40, 97.92 + 15 * std::cos(up), 99.92 + 15 * std::sin(up)},
    };
    for (const auto& r : rows) {
        CRoute2 e(*r.route);
        ASSERT_TRUE(e.Extend2Ends(r.l0, r.l1));
        EXPECT_EQ(e.GetCriticalPoints().GetSize(), r.count);
        EXPECT_NEAR(e.GetStartMile(), 50 - r.l0, 1e-12);
        EXPECT_NEAR(e.GetMile(), r.route->GetMile() + r.l0 + r.l1, 1e-9);
        ExpectPoint(e.GetPointOnBase(e.GetStartMile()), r.x0, r.y0);
        ExpectPoint(e.GetPointOnBase(e.GetEndMile()), r.x1, r.y1);
        ExpectSameAlong(e, *r.route, r.route->GetStartMile(), r.route->GetEndMile());
    }
}

TEST(CRoute2Crossings, AgainstCrossingsWorkedOutByHand) {
    const CRoute2 line = Route({Pt(SEGMENT_LINE, 0, 0, 0, -1), Pt(SEGMENT_LINE, 100, 0, 0, -1)});
    // Line to (20, 0), quarter circle R 10 about (20, 10) to (30, 10), line north: the arc's point beta from its
    // start is (20 + 10 sin beta, 10 - 10 cos beta), and with an offset o to the left its radius is 10 - o.
    const CRoute2 bend = Route({Pt(SEGMENT_LINE, 0, 0, 0, -1), Pt(SEGMENT_ARC, 20, 0, 0, 10),
                                Pt(SEGMENT_LINE, 30, 10, kHalfPi, -1), Pt(SEGMENT_LINE, 30, 40, kHalfPi, -1)});
    // Clothoid A 100 north from (100, 50), turning left: at l = 30 (x, y) by three series terms and by the Fresnel
    // integrals (Simpson, 2e5 steps), the world point (100 - y, 50 + x), the tangent pi/2 + 30^2 / (2 A^2).
    CRoute2 spiral = Route({Pt(SEGMENT_TRANSITION, 100, 50, kHalfPi, -1, 100),
                            Pt(SEGMENT_ARC, 97.92, 99.92, kHalfPi + 0.125, 200)}),
            exact(spiral);
    exact.SetClothoidMode(CLOTHOID_EXACT);
    const double xs = 29.99392556953125, ys = 0.4499349149081067, xe = 29.99392556950444, ye = 0.44993491490795967;
    const double tx = 100 - ys - 40 * -std::sin(0.045), ty = 50 + xs - 40 * std::cos(0.045), c = std::sqrt(0.5);
    const auto L = [](double x0, double y0, double x1, double y1) {
        return CLine2(CDblPoint(x0, y0), CDblPoint(x1, y1));
    };
    using Hits = std::vector<std::array<double, 3>>;  // mile, x, y
    const struct {
        const CRoute2* route;
        CLine2 cut;
        bool infinite;
        double offset;
        Hits hits;
    } rows[] = {
        {&line, L(30, -5, 30, 5), false, 0, {{30, 30, 0}}},
        {&line, L(30, 3, 30, 5), false, 2, {}},             // the segment stops short of the offset line
        {&line, L(30, 2, 30, 5), false, 2, {{30, 30, 2}}},  // its end touches
        {&line, L(0, 1, 50, 1), true, 0, {}},               // parallel
        // x = 25: sin beta = 1/2, mile 20 + 10 pi/6, y = 10 - 5 sqrt 3; the other root, 5 pi/6, is off the arc.
        {&bend, L(25, -9, 25, 30), false, 0, {{20 + 10 * kPi / 6, 25, 10 - 5 * std::sqrt(3.0)}}},
        // Offset 2: radius 8, sin beta = 5/8, mile 20 + 10 asin(5/8) = 26.751315329370317, y = 10 - 8 cos beta.
        {&bend, L(25, -9, 25, 30), true, 2, {{26.751315329370317, 25, 3.7550020016016017}}},
        // y = x - 20 meets both ends of the arc, each an element boundary: once each.
        {&bend, L(0, -20, 1, -19), true, 0, {{20, 20, 0}, {20 + 5 * kPi, 30, 10}}},
        // The arc's tangent at beta = pi/4 touches once.
        {&bend,
         L(20 + 10 * c, 10 - 10 * c, 21 + 10 * c, 11 - 10 * c),
         true,
         0,
         {{20 + 10 * kPi / 4, 20 + 10 * c, 10 - 10 * c}}},
        {&spiral, L(90, 50 + xs, 110, 50 + xs), false, 0, {{30, 100 - ys, 50 + xs}}},
        {&exact, L(90, 50 + xe, 110, 50 + xe), false, 0, {{30, 100 - ye, 50 + xe}}},
        {&spiral, L(tx, ty, 100 - ys, 50 + xs), true, 0, {{30, 100 - ys, 50 + xs}}},  // its tangent at l = 30 touches
    };
    for (const auto& r : rows) {
        SCOPED_TRACE(&r - rows);
        CArray<CRoute2::Crossing> found;
        ASSERT_EQ(r.route->IntersectionWithLine(r.cut, r.infinite, found, r.offset), static_cast<int>(r.hits.size()));
        for (std::size_t k = 0; k < r.hits.size(); ++k) {
            EXPECT_NEAR(found[k].mile, r.hits[k][0], 1e-9);
            ExpectPoint(found[k].pt, r.hits[k][1], r.hits[k][2]);
        }
    }
}

TEST(CRoute2Pieces, FollowGetPointWithinTheToleranceOnTransitionsAndExactlyElsewhere) {
    const double tol = 1e-4;
    for (ClothoidMode mode : {CLOTHOID_SERIES, CLOTHOID_EXACT})
        for (double d : {0.0, 3.0, -4.0}) {
            SCOPED_TRACE(testing::Message() << mode << " offset " << d);
            const CRoute2 route = Sample(mode, mode == CLOTHOID_EXACT, 0.5);
            CArray<CRoute2::Piece> p, same;
            CArray<CDblPair> loops;
            const int n = route.GetOffsetCurve(d, tol, p, &loops);
            ASSERT_GT(n, 7);
            EXPECT_TRUE(loops.GetSize() == 0 && route.GetSegments(tol, same, d) == n);
            EXPECT_NEAR(p[n - 1].endMile, route.GetEndMile(), 1e-9);
            for (int k = 0; k + 1 < n; ++k) {  // one chain, in order
                const CDblPoint e = p[k].isArc ? p[k].arc.EndPoint() : p[k].line.end;
                EXPECT_LE(Distance(e, p[k + 1].isArc ? p[k + 1].arc.StartPoint() : p[k + 1].line.start), 1e-9);
                EXPECT_EQ(p[k].endMile, p[k + 1].startMile);
            }
            for (int j = 1, k = 0; j < 1000; ++j) {
                const double m = route.GetStartMile() + route.GetMile() * j / 1000;
                while (p[k].endMile < m) ++k;
                const CDblPoint at = route.GetPoint(m, d);
                const double t = (m - p[k].startMile) / (p[k].endMile - p[k].startMile);
                if (route.GetSegmentTypeB(m) == SEGMENT_TRANSITION)
                    EXPECT_LE(p[k].isArc ? std::fabs(Distance(at, p[k].arc.centre) - p[k].arc.radius)
                                         : p[k].line.Distance(at),
                              tol);
                else  // straights and arcs run with the chainage
                    EXPECT_LE(Distance(at, p[k].isArc ? p[k].arc.Point(t) : p[k].line.Point(t)), 1e-9) << m;
            }
        }
}

TEST(CRoute2Pieces, OffsetBeyondARadiusLosesItsLoop) {
    // East to (0, 0), a quarter circle R 5 about (0, 5) to (5, 5), north to (5, 50). At 8 to the left the arc's radius
    // would be 5 - 8: it runs backwards. The offset straights y = 8 (from x = -50) and x = -3 (from y = 5) cross at
    // (-3, 8): mile 47 on the first, and 3 into the second, which starts at mile 50 + 5 pi/2. Outside, radius 13.
    const CRoute2 route = Route({Pt(SEGMENT_LINE, -50, 0, 0, -1), Pt(SEGMENT_ARC, 0, 0, 0, 5),
                                 Pt(SEGMENT_LINE, 5, 5, kHalfPi, -1), Pt(SEGMENT_LINE, 5, 50, kHalfPi, -1)});
    CArray<CRoute2::Piece> p;
    CArray<CDblPair> loops;
    ASSERT_EQ(route.GetOffsetCurve(8, 1e-3, p, &loops), 2);
    ASSERT_EQ(loops.GetSize(), 1);
    EXPECT_NEAR(loops[0].first, 47, 1e-9);
    EXPECT_NEAR(loops[0].second, 53 + 5 * kHalfPi, 1e-9);
    ExpectPoint(p[0].line.start, -50, 8);
    ExpectPoint(p[0].line.end, -3, 8);
    ExpectPoint(p[1].line.start, -3, 8);
    ExpectPoint(p[1].line.end, -3, 50);
    EXPECT_EQ(route.GetSegments(1e-3, p, 8), 2);  // the backwards arc left out, the straights whole
    ExpectPoint(p[0].line.end, 0, 8);
    ASSERT_EQ(route.GetOffsetCurve(-8, 1e-3, p, &loops), 3);  // outside: radius 13, no loop
    EXPECT_TRUE(loops.GetSize() == 0 && p[1].arc.radius == 13);
}
