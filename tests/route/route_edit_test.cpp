#include "route/route_test_util.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

using namespace route_test;

namespace {

// A point of the clothoid A in the frame (origin, theta), turning left, as the mode evaluates it.
CDblPoint Clothoid(ClothoidMode mode, const CDblPoint& origin, double theta, double A, double l) {
    const CDblPoint q =
        mode == CLOTHOID_EXACT ? CRoute2::GetStandardPointExact(A, l, 0) : CRoute2::GetStandardPoint(A, l, 0);
    return CRoute2::Standard2World(origin, theta, true, q);
}

// Every element kind, its transitions stored on the clothoid of `mode`: a straight, a spiral out of it (A 120 to
// R 240), an arc of 0.4 rad, a spiral between two radii (240 to 120), an arc of 0.3 rad, a spiral back to a
// straight, a straight. Mirrored, every turn goes right.
CRoute2 Sample(ClothoidMode mode, bool mirrored, double offset = 0.0) {
    const double A = 120, tau60 = 0.125, tau120 = 0.5;  // l^2 / (2 A^2) at l = 60 and 120
    std::vector<CCriticalPoint> p;
    double a = 0.3;
    CDblPoint at(100 * std::cos(a), 100 * std::sin(a));
    p.push_back(Pt(SEGMENT_LINE, 0, 0, a, -1));
    p.push_back(Pt(SEGMENT_TRANSITION, at.x, at.y, a, -1, A));
    at = Clothoid(mode, at, a, A, 60);
    a += tau60;
    const auto arc = [&](double R, double sweep) {  // left turn: centre on the left normal
        const CDblPoint c(at.x - R * std::sin(a), at.y + R * std::cos(a));
        a += sweep;
        at = CDblPoint(c.x + R * std::sin(a), c.y - R * std::cos(a));
    };
    p.push_back(Pt(SEGMENT_ARC, at.x, at.y, a, 240));
    arc(240, 0.4);
    p.push_back(Pt(SEGMENT_TRANSITION, at.x, at.y, a, 240, A, 120));  // stores its far radius
    const double theta = a - tau60;  // the clothoid's frame: q(60) lands here with this tangent
    const CDblPoint q60 = Clothoid(mode, CDblPoint(0, 0), theta, A, 60);
    const CDblPoint origin(at.x - q60.x, at.y - q60.y);
    at = Clothoid(mode, origin, theta, A, 120);
    a = theta + tau120;
    p.push_back(Pt(SEGMENT_ARC, at.x, at.y, a, 120));
    arc(120, 0.3);
    p.push_back(Pt(SEGMENT_TRANSITION, at.x, at.y, a, 120, A));
    // Out of the curve: the frame sits at the far end pointing back, and seen from there the curve turns right.
    a += tau120;
    const CDblPoint back = CRoute2::Standard2World(
        CDblPoint(0, 0), a + kPi, false,
        mode == CLOTHOID_EXACT ? CRoute2::GetStandardPointExact(A, 120, 0) : CRoute2::GetStandardPoint(A, 120, 0));
    at = CDblPoint(at.x - back.x, at.y - back.y);
    p.push_back(Pt(SEGMENT_LINE, at.x, at.y, a, -1));
    p.push_back(Pt(SEGMENT_LINE, at.x + 80 * std::cos(a), at.y + 80 * std::sin(a), a, -1));
    CCriticalPointArray pts;
    for (const CCriticalPoint& c : p) pts.Add(c);
    CRoute2 route(pts, 1000, offset);
    route.SetClothoidMode(mode);
    if (mirrored) route.SelfMirror(CDblPoint(0, 0), CDblPoint(1, 0));
    return route;
}

std::vector<double> Boundaries(const CRoute2& r) {
    std::vector<double> b{r.GetStartMile()};
    for (int i = 0; i + 1 < r.GetCriticalPoints().GetSize(); ++i) b.push_back(b.back() + r.GetSegMile(i));
    return b;
}

// The edited route gives the original's points (and tangents: an offset of 1.5 too) at 1000 miles of [from, to],
// away from the end snaps.
void ExpectSameAlong(const CRoute2& edited, const CRoute2& original, double from, double to, double tol = 1e-9) {
    const double a = from + 0.011, b = to - 0.011;
    double worst = 0.0, where = 0.0;
    for (int k = 0; k <= 1000; ++k) {
        const double m = a + (b - a) * k / 1000;
        for (double d : {0.0, 1.5}) {
            const double e = Distance(edited.GetPoint(m, d), original.GetPoint(m, d));
            if (e > worst) worst = e, where = m;
        }
    }
    EXPECT_LE(worst, tol) << "at mile " << where;
}

}  // namespace

TEST(CRoute2Trim, KeptPartEvaluatesAsTheOriginalForCutsAtNearAndInsideEveryElement) {
    for (ClothoidMode mode : {CLOTHOID_SERIES, CLOTHOID_EXACT})
        for (bool mirrored : {false, true})
            for (double offset : {0.0, -2.5}) {
                const CRoute2 route = Sample(mode, mirrored, offset);
                const std::vector<double> b = Boundaries(route);
                const int n = static_cast<int>(b.size());
                ASSERT_EQ(n, 8);
                for (int i = 0; i + 1 < n; ++i)
                    for (double into : {0.0, 1e-7, -1e-7, 0.37}) {
                        SCOPED_TRACE(testing::Message() << "mode " << mode << " mirrored " << mirrored << " offset "
                                                        << offset << " element " << i << " into " << into);
                        const bool inside = into > 1e-6;
                        const double cut = b[i] + (inside ? into * (b[i + 1] - b[i]) : into);
                        CRoute2 tail(route), head(route);
                        if (i > 0 || inside) {
                            ASSERT_TRUE(tail.TrimStart(cut));
                            // A cut within the boundary tolerance cuts at the boundary: no sliver element.
                            EXPECT_EQ(tail.GetCriticalPoints().GetSize(), n - i);
                            EXPECT_NEAR(tail.GetStartMile(), inside ? cut : b[i], 1e-12);
                            EXPECT_NEAR(tail.GetEndMile(), route.GetEndMile(), 1e-9);
                            EXPECT_EQ(tail.GetOffset(), route.GetOffset());
                            EXPECT_EQ(tail.GetClothoidMode(), mode);
                            ExpectSameAlong(tail, route, tail.GetStartMile(), route.GetEndMile());
                        }
                        if (i > 0 || inside) {
                            ASSERT_TRUE(head.TrimEnd(cut));
                            EXPECT_EQ(head.GetCriticalPoints().GetSize(), i + (inside ? 2 : 1));
                            EXPECT_NEAR(head.GetEndMile(), inside ? cut : b[i], 1e-9);
                            ExpectSameAlong(head, route, route.GetStartMile(), head.GetEndMile());
                        }
                    }
            }
}

TEST(CRoute2Trim, BothCutsInsideOneTransitionAndTheMiddleRemoved) {
    for (ClothoidMode mode : {CLOTHOID_SERIES, CLOTHOID_EXACT}) {
        const CRoute2 route = Sample(mode, true);
        const std::vector<double> b = Boundaries(route);
        for (int i : {1, 3, 5}) {  // spiral out of a straight, between two radii, back to a straight
            SCOPED_TRACE(testing::Message() << "mode " << mode << " element " << i);
            const double m1 = b[i] + 13, m2 = b[i + 1] - 21;
            CRoute2 piece(route);
            ASSERT_TRUE(piece.Trim2Side(m2, m1));
            EXPECT_EQ(piece.GetCriticalPoints().GetSize(), 2);
            EXPECT_NEAR(piece.GetMile(), m2 - m1, 1e-9);
            ExpectSameAlong(piece, route, m1, m2);

            CRoute2 before, after;
            route.TrimMiddle(m1, m2, before, after);
            EXPECT_NEAR(before.GetEndMile(), m1, 1e-9);
            EXPECT_NEAR(after.GetStartMile(), m2, 1e-12);
            EXPECT_NEAR(after.GetEndMile(), route.GetEndMile(), 1e-9);
            ExpectSameAlong(before, route, route.GetStartMile(), m1);
            ExpectSameAlong(after, route, m2, route.GetEndMile());
        }
        // Removing up to an end leaves a null part.
        CRoute2 before, after;
        route.TrimMiddle(b[2], route.GetEndMile(), before, after);
        EXPECT_TRUE(after.IsNull());
        EXPECT_EQ(before.GetCriticalPoints().GetSize(), 3);
    }
}

TEST(CRoute2Trim, NothingLeftOrOffTheRouteLeavesItUnchanged) {
    const CRoute2 route = Sample(CLOTHOID_SERIES, false);
    const struct { double m1, m2; } rows[] = {{1010, 1010}, {999, 1010}, {route.GetEndMile(), route.GetEndMile() + 1}};
    for (const auto& r : rows) {
        CRoute2 copy(route);
        EXPECT_FALSE(copy.Trim2Side(r.m1, r.m2)) << r.m1;
        EXPECT_TRUE(copy == route);
    }
    CRoute2 copy(route);
    EXPECT_FALSE(copy.TrimStart(route.GetEndMile()));
    EXPECT_FALSE(copy.TrimEnd(route.GetStartMile() + 1e-7));
    EXPECT_FALSE(CRoute2().TrimStart(0));
}

TEST(CRoute2Extend, ContinuesPositionAndDirectionAndKeepsTheOldPart) {
    const CRoute2 route = Sample(CLOTHOID_SERIES, false, 1.0);
    const std::vector<double> b = Boundaries(route);
    // Straight ends: the first element runs from (0, 0) at 0.3 rad, the last leaves its start at 0.3 + 0.125 + 0.4 +
    // 0.375 + 0.3 + 0.5 = 2.0 rad for 80.
    CRoute2 lines(route);
    ASSERT_TRUE(lines.Extend2Ends(10, 20));
    EXPECT_EQ(lines.GetCriticalPoints().GetSize(), route.GetCriticalPoints().GetSize());
    EXPECT_DOUBLE_EQ(lines.GetStartMile(), 990);
    EXPECT_NEAR(lines.GetEndMile(), route.GetEndMile() + 20, 1e-9);
    const CDblPoint e = route.GetCriticalPoints()[7].pt;
    const struct {
        double mile;
        double x, y;
    } rows[] = {{990.02, -9.98 * std::cos(0.3), -9.98 * std::sin(0.3)},
                {route.GetEndMile() + 19.98, e.x + 19.98 * std::cos(2.0), e.y + 19.98 * std::sin(2.0)}};
    for (const auto& r : rows) {
        const CDblPoint p = lines.GetPointOnBase(r.mile);
        EXPECT_NEAR(p.x, r.x, 1e-9);
        EXPECT_NEAR(p.y, r.y, 1e-9);
    }
    ExpectSameAlong(lines, route, route.GetStartMile(), route.GetEndMile());

    // An arc start (R 240 from 0.425 rad, centre on its left) runs back along its circle; a transition end that
    // stops at R 120 gets a straight along its end tangent.
    CRoute2 curves(route);
    ASSERT_TRUE(curves.Trim2Side(b[2] + 30, b[4] - 20));
    const CCriticalPoint s = curves.GetCriticalPoints()[0], t = curves.GetCriticalPoints()[2];
    CRoute2 extended(curves);
    ASSERT_TRUE(extended.Extend2Ends(24, 15));
    EXPECT_EQ(extended.GetCriticalPoints().GetSize(), 4);
    const CDblPoint c(s.pt.x - 240 * std::sin(s.angle), s.pt.y + 240 * std::cos(s.angle));
    const double back = s.angle - 0.1;  // 24 / 240 rad earlier
    CCriticalPoint cp;
    extended.GetCriticalPoint(extended.GetStartMile(), cp);
    EXPECT_NEAR(cp.pt.x, c.x + 240 * std::sin(back), 1e-9);
    EXPECT_NEAR(cp.pt.y, c.y - 240 * std::cos(back), 1e-9);
    EXPECT_NEAR(cp.angle, back, 1e-12);
    extended.GetCriticalPoint(extended.GetEndMile() - 7.5, cp);
    EXPECT_NEAR(cp.pt.x, t.pt.x + 7.5 * std::cos(t.angle), 1e-9);
    EXPECT_NEAR(cp.pt.y, t.pt.y + 7.5 * std::sin(t.angle), 1e-9);
    EXPECT_NEAR(cp.angle, t.angle, 1e-12);
    EXPECT_EQ(cp.radius, -1.0);
    EXPECT_NEAR(extended.GetEndMile(), curves.GetEndMile() + 15, 1e-9);
    ExpectSameAlong(extended, curves, curves.GetStartMile(), curves.GetEndMile());
    EXPECT_FALSE(CRoute2().Extend2Ends(1, 1));
}

TEST(CRoute2Crossings, AgainstCrossingsWorkedOutByHand) {
    const CRoute2 line = Route({Pt(SEGMENT_LINE, 0, 0, 0, -1), Pt(SEGMENT_LINE, 100, 0, 0, -1)});
    // Line (0, 0)-(20, 0), quarter circle R 10 about (20, 10) to (30, 10), line up to (30, 40). A point of the arc at
    // beta from its start is (20 + 10 sin beta, 10 - 10 cos beta).
    const CRoute2 bend = Route({Pt(SEGMENT_LINE, 0, 0, 0, -1), Pt(SEGMENT_ARC, 20, 0, 0, 10),
                                Pt(SEGMENT_LINE, 30, 10, kHalfPi, -1), Pt(SEGMENT_LINE, 30, 40, kHalfPi, -1)});
    // Clothoid A 100 north from (100, 50), turning left, to R 200 at l = 50. At l = 30 the series gives x = 30 -
    // 30^5/(40 A^4) + 30^9/(3456 A^8) = 29.99392556953125, y = 30^3/(6 A^2) - 30^7/(336 A^6) + 30^11/(42240 A^10) =
    // 0.4499349149081067, the Fresnel integrals (Simpson, 2e5 steps) 29.99392556950444 and 0.44993491490795967; the
    // world point is (100 - y, 50 + x), the tangent pi/2 + 30^2/(2 A^2) = pi/2 + 0.045.
    const CRoute2 spiral =
        Route({Pt(SEGMENT_TRANSITION, 100, 50, kHalfPi, -1, 100), Pt(SEGMENT_ARC, 97.92, 99.92, kHalfPi + 0.125, 200)});
    CRoute2 exactSpiral(spiral);
    exactSpiral.SetClothoidMode(CLOTHOID_EXACT);
    const double xs = 29.99392556953125, ys = 0.4499349149081067, xe = 29.99392556950444, ye = 0.44993491490795967;
    const CDblPoint touch(100 - ys, 50 + xs), dir(-std::sin(0.045), std::cos(0.045));
    const struct {
        const CRoute2* route;
        CLine2 cut;
        bool infinite;
        double offset;
        std::vector<double> miles, xs, ys;
    } rows[] = {
        {&line, CLine2(CDblPoint(30, -5), CDblPoint(30, 5)), false, 0, {30}, {30}, {0}},
        {&line, CLine2(CDblPoint(30, 3), CDblPoint(30, 5)), false, 2, {}, {}, {}},  // the segment stops short
        {&line, CLine2(CDblPoint(30, 3), CDblPoint(30, 5)), true, 2, {30}, {30}, {2}},
        {&line, CLine2(CDblPoint(30, 2), CDblPoint(30, 5)), false, 2, {30}, {30}, {2}},  // its end touches
        {&line, CLine2(CDblPoint(0, 1), CDblPoint(50, 1)), true, 0, {}, {}, {}},         // parallel
        // x = 25: sin beta = 1/2, mile 20 + 10 pi/6, y = 10 - 5 sqrt 3; the far root 5 pi/6 is off the arc.
        {&bend,
         CLine2(CDblPoint(25, -9), CDblPoint(25, 30)),
         false,
         0,
         {20 + 10 * kPi / 6},
         {25},
         {10 - 5 * std::sqrt(3.0)}},
        // Offset 2 inward: radius 8, sin beta = 5/8, mile 20 + 10 asin(5/8) = 26.751315329370317, y = 10 - 8 cos beta.
        {&bend,
         CLine2(CDblPoint(25, -9), CDblPoint(25, 30)),
         true,
         2,
         {26.751315329370317},
         {25},
         {3.7550020016016017}},
        // y = x - 20 passes through both ends of the arc, each on an element boundary: counted once each.
        {&bend, CLine2(CDblPoint(0, -20), CDblPoint(1, -19)), true, 0, {20, 20 + 5 * kPi}, {20, 30}, {0, 10}},
        // The tangent of the arc at beta = pi/4 touches once.
        {&bend,
         CLine2(CDblPoint(20 + 10 * std::sqrt(0.5), 10 - 10 * std::sqrt(0.5)),
                CDblPoint(21 + 10 * std::sqrt(0.5), 11 - 10 * std::sqrt(0.5))),
         true,
         0,
         {20 + 10 * kPi / 4},
         {20 + 10 * std::sqrt(0.5)},
         {10 - 10 * std::sqrt(0.5)}},
        {&spiral, CLine2(CDblPoint(90, 50 + xs), CDblPoint(110, 50 + xs)), false, 0, {30}, {100 - ys}, {50 + xs}},
        {&exactSpiral, CLine2(CDblPoint(90, 50 + xe), CDblPoint(110, 50 + xe)), false, 0, {30}, {100 - ye}, {50 + xe}},
        {&spiral,
         CLine2(CDblPoint(touch.x - 40 * dir.x, touch.y - 40 * dir.y), touch),
         true,
         0,
         {30},
         {touch.x},
         {touch.y}},
    };
    int row = 0;
    for (const auto& r : rows) {
        SCOPED_TRACE(row++);
        CArray<CRoute2::Crossing> found;
        ASSERT_EQ(r.route->IntersectionWithLine(r.cut, r.infinite, found, r.offset), static_cast<int>(r.miles.size()));
        for (std::size_t k = 0; k < r.miles.size(); ++k) {
            EXPECT_NEAR(found[k].mile, r.miles[k], 1e-9);
            EXPECT_NEAR(found[k].pt.x, r.xs[k], 1e-9);
            EXPECT_NEAR(found[k].pt.y, r.ys[k], 1e-9);
        }
    }
}

TEST(CRoute2Crossings, EveryCrossingOfTheSampleLiesOnTheLineInRouteOrder) {
    for (ClothoidMode mode : {CLOTHOID_SERIES, CLOTHOID_EXACT}) {
        const CRoute2 route = Sample(mode, false, 1.0);
        // The chord between points on the two straights crosses the offset curve near both; the chord's
        // perpendicular bisector crosses the curve once.
        const CDblPoint s = route.GetPoint(1050, 0), e = route.GetPoint(route.GetEndMile() - 40, 0);
        const CDblPoint mid((s.x + e.x) / 2, (s.y + e.y) / 2);
        const CLine2 bisector(mid, CDblPoint(mid.x - (e.y - s.y), mid.y + (e.x - s.x)));
        for (const auto& l : {std::make_pair(CLine2(s, e), 2), std::make_pair(bisector, 1)}) {
            CArray<CRoute2::Crossing> found;
            const int n = route.IntersectionWithLine(l.first, true, found, -0.5);
            EXPECT_EQ(n, l.second);
            for (int k = 0; k < n; ++k) {
                EXPECT_LE(l.first.Distance(found[k].pt), 1e-9);
                const CDblPoint at = route.GetPoint(found[k].mile, -0.5);
                EXPECT_LE(Distance(at, found[k].pt), 1e-9);
                if (k > 0) {
                    EXPECT_GT(found[k].mile, found[k - 1].mile);
                }
            }
        }
        // The normal of the route at a mile inside each element crosses it there.
        const std::vector<double> b = Boundaries(route);
        for (std::size_t i = 0; i + 1 < b.size(); ++i) {
            const double m = b[i] + 0.37 * (b[i + 1] - b[i]);
            CArray<CRoute2::Crossing> found;
            ASSERT_EQ(
                route.IntersectionWithLine(CLine2(route.GetPoint(m, -5), route.GetPoint(m, 5)), false, found, -0.5), 1);
            EXPECT_NEAR(found[0].mile, m, 1e-9);
            EXPECT_EQ(found[0].element, static_cast<int>(i));
        }
    }
}

namespace {
CDblPoint PieceStart(const CRoute2::Piece& p) { return p.isArc ? p.arc.StartPoint() : p.line.start; }
CDblPoint PieceEnd(const CRoute2::Piece& p) { return p.isArc ? p.arc.EndPoint() : p.line.end; }
}  // namespace

TEST(CRoute2Pieces, FollowGetPointWithinTheToleranceOnTransitionsAndExactlyElsewhere) {
    for (ClothoidMode mode : {CLOTHOID_SERIES, CLOTHOID_EXACT})
        for (double d : {0.0, 3.0, -4.0})
            for (double tol : {1e-3, 1e-5}) {
                SCOPED_TRACE(testing::Message() << "mode " << mode << " offset " << d << " tol " << tol);
                const CRoute2 route = Sample(mode, mode == CLOTHOID_EXACT, 0.5);
                CArray<CRoute2::Piece> pieces;
                CArray<CDblPair> loops;
                const int n = route.GetOffsetCurve(d, tol, pieces, &loops);
                EXPECT_EQ(loops.GetSize(), 0);
                if (d == 0.0) {
                    CArray<CRoute2::Piece> same;
                    EXPECT_EQ(route.GetSegments(tol, same), n);
                }
                ASSERT_GT(n, 7);
                EXPECT_NEAR(pieces[0].startMile, route.GetStartMile(), 1e-12);
                EXPECT_NEAR(pieces[n - 1].endMile, route.GetEndMile(), 1e-9);
                for (int k = 0; k + 1 < n; ++k) {  // one chain, in order
                    EXPECT_NEAR(pieces[k].endMile, pieces[k + 1].startMile, 1e-9);
                    EXPECT_LE(Distance(PieceEnd(pieces[k]), PieceStart(pieces[k + 1])), 1e-9) << k;
                }
                int k = 0;
                for (int j = 1; j < 1000; ++j) {
                    const double m = route.GetStartMile() + route.GetMile() * j / 1000;
                    while (pieces[k].endMile < m) ++k;
                    const CRoute2::Piece& p = pieces[k];
                    const CDblPoint at = route.GetPoint(m, d);
                    if (route.GetSegmentTypeB(m) == SEGMENT_TRANSITION) {
                        const double off =
                            p.isArc ? std::fabs(Distance(at, p.arc.centre) - p.arc.radius) : p.line.Distance(at);
                        EXPECT_LE(off, tol) << m;
                    } else {  // lines and arcs run with the chainage
                        const double t = (m - p.startMile) / (p.endMile - p.startMile);
                        EXPECT_LE(Distance(at, p.isArc ? p.arc.Point(t) : p.line.Point(t)), 1e-9) << m;
                    }
                }
            }
}

TEST(CRoute2Pieces, OffsetBeyondARadiusLosesItsLoop) {
    // Straight east to (0, 0), a quarter circle R 5 about (0, 5) to (5, 5), straight north to (5, 50). At 8 to the
    // left the arc's offset radius is 5 - 8 < 0: it runs backwards. The offset straights y = 8 (from x = -50) and
    // x = -3 (from y = 5) cross at (-3, 8): mile 47 on the first (x + 50), and 3 into the second, which begins at
    // mile 50 + 5 pi/2.
    const CRoute2 route = Route({Pt(SEGMENT_LINE, -50, 0, 0, -1), Pt(SEGMENT_ARC, 0, 0, 0, 5),
                                 Pt(SEGMENT_LINE, 5, 5, kHalfPi, -1), Pt(SEGMENT_LINE, 5, 50, kHalfPi, -1)});
    CArray<CRoute2::Piece> pieces;
    CArray<CDblPair> loops;
    ASSERT_EQ(route.GetOffsetCurve(8, 1e-3, pieces, &loops), 2);
    ASSERT_EQ(loops.GetSize(), 1);
    EXPECT_NEAR(loops[0].first, 47, 1e-9);
    EXPECT_NEAR(loops[0].second, 53 + 5 * kHalfPi, 1e-9);
    const struct { double x0, y0, x1, y1; } rows[] = {{-50, 8, -3, 8}, {-3, 8, -3, 50}};
    for (int k = 0; k < 2; ++k) {
        EXPECT_FALSE(pieces[k].isArc);
        EXPECT_NEAR(pieces[k].line.start.x, rows[k].x0, 1e-9);
        EXPECT_NEAR(pieces[k].line.start.y, rows[k].y0, 1e-9);
        EXPECT_NEAR(pieces[k].line.end.x, rows[k].x1, 1e-9);
        EXPECT_NEAR(pieces[k].line.end.y, rows[k].y1, 1e-9);
    }
    // GetSegments only leaves the backwards arc out; on the outside the arc stays, radius 5 + 8.
    EXPECT_EQ(route.GetSegments(1e-3, pieces, 8), 2);
    ASSERT_EQ(route.GetOffsetCurve(-8, 1e-3, pieces, &loops), 3);
    EXPECT_EQ(loops.GetSize(), 0);
    EXPECT_NEAR(pieces[1].arc.radius, 13, 1e-12);
}
