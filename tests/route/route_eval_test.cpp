#include "orvroute/alignment.h"
#include "route/route_test_util.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

using namespace ORVMATH;
using namespace route_test;

namespace {

constexpr double kHalfPi = kPi / 2;

void ExpectAt(const CRoute2& route, double mile, double x, double y, double angle, int index) {
    CCriticalPoint cp;
    ASSERT_EQ(route.GetCriticalPoint(mile, cp), index) << mile;
    EXPECT_NEAR(cp.pt.x, x, 1e-6) << mile;
    EXPECT_NEAR(cp.pt.y, y, 1e-6) << mile;
    EXPECT_NEAR(cp.angle, angle, 1e-9) << mile;
}

}  // namespace

TEST(CRoute2Standard, SeriesFrameAndItsInverse) {
    // l = 30, A = 100: x = 30 - 30^5/(40e8) + 30^9/(3456e16) = 30 - 0.006075 + 5.695e-7
    //                  y = 30^3/6e4 - 30^7/336e12 + 30^11/42240e20 = 0.45 - 6.5089e-5 + 4.19e-9
    const CDblPoint q = CRoute2::GetStandardPoint(100, 30, 0);
    EXPECT_NEAR(q.x, 29.9939255695, 1e-9);
    EXPECT_NEAR(q.y, 0.4499349153, 1e-9);
    EXPECT_DOUBLE_EQ(CRoute2::GetStandardTangetAngle(100, 30), 0.045);  // 900 / 20000
    EXPECT_EQ(CRoute2::GetStandardPoint(100, 0, 0).x, 0.0);
    // Offset 1 to the left of the tangent at 0.045 rad: (-sin, cos) * 1.
    const CDblPoint o = CRoute2::GetStandardPoint(100, 30, 1);
    EXPECT_NEAR(o.x, q.x - std::sin(0.045), 1e-9);
    EXPECT_NEAR(o.y, q.y + std::cos(0.045), 1e-9);

    // Frame at (10, 5) turned by pi/2: (x, y) -> (10 - y, 5 + x); mirrored: (10 + y, 5 + x).
    const CDblPoint p(3, 2), origin(10, 5);
    const CDblPoint kept = CRoute2::Standard2World(origin, kHalfPi, true, p);
    const CDblPoint flipped = CRoute2::Standard2World(origin, kHalfPi, false, p);
    EXPECT_NEAR(kept.x, 8, 1e-12);
    EXPECT_NEAR(kept.y, 8, 1e-12);
    EXPECT_NEAR(flipped.x, 12, 1e-12);
    EXPECT_NEAR(CRoute2::World2Standard(origin, kHalfPi, false, flipped).y, 2, 1e-12);
    // The side point (0, 5) lies left of the axis pointing up from (10, 5); (20, 5) right; on it mirrors.
    EXPECT_NEAR(CRoute2::Standard2World(origin, kHalfPi, CDblPoint(0, 5), p).x, 8, 1e-12);
    EXPECT_NEAR(CRoute2::Standard2World(origin, kHalfPi, CDblPoint(20, 5), p).x, 12, 1e-12);
    EXPECT_NEAR(CRoute2::Standard2World(origin, kHalfPi, CDblPoint(10, 9), p).x, 12, 1e-12);
}

TEST(CRoute2Points, OnEachElementKind) {
    // Line (0,0)-(10,0), then a left quarter circle R 10 about (0,10)... shifted: see below.
    const CRoute2 line = Route({Pt(SEGMENT_LINE, 0, 0, 0, -1), Pt(SEGMENT_LINE, 10, 0, 0, -1)}, 100);
    ExpectAt(line, 103, 3, 0, 0, 0);

    // Quarter circle R 10 about (0, 10): half way the radial direction is -pi/4.
    const CRoute2 arc = Route({Pt(SEGMENT_ARC, 0, 0, 0, 10), Pt(SEGMENT_LINE, 10, 10, kHalfPi, -1)});
    ExpectAt(arc, 5 * kPi / 2, 10 * std::cos(kPi / 4), 10 - 10 * std::sin(kPi / 4), kPi / 4, 0);

    // Stored radius 5 does not fit: the arc through (10, 10) tangent at the start is the same circle,
    // but the table says 5*pi/2, so mile 5*pi/4 is a quarter of the real arc: angle pi/8.
    const CRoute2 refit = Route({Pt(SEGMENT_ARC, 0, 0, 0, 5), Pt(SEGMENT_LINE, 10, 10, kHalfPi, -1)});
    ExpectAt(refit, 5 * kPi / 4, 10 * std::sin(kPi / 8), 10 - 10 * std::cos(kPi / 8), kPi / 8, 0);

    // The next point on the tangent: no arc fits, the chord is used with the mean angle.
    const CRoute2 chord = Route({Pt(SEGMENT_ARC, 0, 0, 0, 10), Pt(SEGMENT_LINE, 10, 0, 0.2, -1)});
    CCriticalPoint cp;
    ASSERT_EQ(chord.GetCriticalPoint(4, cp), 0);
    EXPECT_EQ(cp.type, SEGMENT_LINE);
    EXPECT_NEAR(cp.pt.x, 4, 1e-12);
    EXPECT_NEAR(cp.angle, 0.1, 1e-12);

    // Clothoid A 100 from a straight heading north at (100, 50), turning left: the standard
    // point (x, y) lands at (100 - y, 50 + x); radius 10000/30, direction pi/2 + 0.045.
    const CRoute2 spiral = Route({Pt(SEGMENT_TRANSITION, 100, 50, kHalfPi, -1, 100),
                                  Pt(SEGMENT_ARC, 100 - 2.081009, 50 + 49.921931, kHalfPi + 0.125, 200)});
    ExpectAt(spiral, 30, 100 - 0.4499349153, 50 + 29.9939255695, kHalfPi + 0.045, 0);
    ASSERT_EQ(spiral.GetCriticalPoint(30, cp), 0);
    EXPECT_NEAR(cp.radius, 10000.0 / 30, 1e-9);

    // Offsets: 2 to the left of a line heading +x; the route's own offset adds to it.
    EXPECT_NEAR(line.GetPoint(103, 2).y, 2, 1e-12);
    const CRoute2 shifted(line.GetCriticalPoints(), 100, -1);
    EXPECT_NEAR(shifted.GetPoint(103, 2).y, 1, 1e-12);
    EXPECT_NEAR(shifted.GetStartPoint().y, -1, 1e-12);  // includes the route's offset...
    EXPECT_EQ(shifted.GetProportionalPoint(0).y, 0.0);    // ...these do not
    EXPECT_EQ(shifted.GetPointOnBase(100).y, 0.0);
    EXPECT_NEAR(shifted.GetProportionalPoint(0.5).x, 5, 1e-12);
    EXPECT_EQ(shifted.GetProportionalPoint(1.5).x, 0.0);
}

TEST(CRoute2Points, SnapsWithinOneHundredthOfTheEnds) {
    const CRoute2 route = Route({Pt(SEGMENT_LINE, 0, 0, 0.3, -1), Pt(SEGMENT_LINE, 10, 0, 0.1, -1),
                                 Pt(SEGMENT_LINE, 20, 0, 0.2, -1)},
                                100);
    struct Row {
        double mile;
        int index;
        double x, angle;  // the stored point's, not the chord's
    } rows[] = {{100.005, 0, 0, 0.3}, {99.995, 0, 0, 0.3}, {119.991, 1, 20, 0.2}, {120.009, 1, 20, 0.2}};
    for (const Row& r : rows) ExpectAt(route, r.mile, r.x, 0, r.angle, r.index);
    ExpectAt(route, 100.02, 0.02, 0, 0.3, 0);
    CCriticalPoint cp;
    EXPECT_EQ(route.GetCriticalPoint(99.98, cp), -1);
    EXPECT_EQ(route.GetCriticalPoint(120.02, cp), -1);
}

TEST(CRoute2Points, SampleRouteIsContinuousAcrossEveryBoundary) {
    const CRoute2 route = orvroute::SampleRoute();
    const CCriticalPointArray& pts = route.GetCriticalPoints();
    ASSERT_EQ(pts.GetSize(), 6);
    EXPECT_NEAR(route.GetMile(), 800 + 125 + 700 + 125 + 1200, 1e-9);  // A^2/R = 62500/500 = 125
    double mile = route.GetStartMile();
    for (int i = 0; i + 1 < pts.GetSize(); ++i) {
        mile += route.GetSegMile(i);
        CCriticalPoint before, after;
        route.GetCriticalPoint(mile - 1e-7, before);
        route.GetCriticalPoint(mile + 1e-7, after);
        EXPECT_LT(Distance(before.pt, pts[i + 1].pt), 1e-6) << i;
        EXPECT_LT(Distance(before.pt, after.pt), 1e-6) << i;
        EXPECT_NEAR(NormalizeAng_Rad(before.angle - pts[i + 1].angle), 0, 1e-9) << i;
        EXPECT_NEAR(NormalizeAng_Rad(before.angle - after.angle), 0, 1e-9) << i;
    }
    // Total turn: 2 * 0.125 + 700/500 = 1.65 rad to the left of the 20 degree start.
    EXPECT_NEAR(pts[5].angle, 20 * kPi / 180 + 1.65, 1e-12);
}

// The lookups answer exactly as walking the table from the start does,
// also right at the 1e-6 limits where rounding decides.
TEST(CRoute2Lookup, SearchAgreesWithWalkingTheTable) {
    const CRoute2 route = orvroute::GeneratedRoute(400);
    const CCriticalPointArray& pts = route.GetCriticalPoints();
    const int n = static_cast<int>(pts.GetSize()) - 1;
    auto walk = [&](double mile, bool upper) {
        double d = mile - route.GetStartMile();
        if (d < -1e-6) return -1;
        for (int i = 0; i < n; ++i) {
            d -= route.GetSegMile(i);
            if (std::fabs(d) < 1e-6) return upper && i + 1 < n ? i + 1 : i;
            if (d < 0) return i;
        }
        return -1;
    };
    auto typeAt = [&](int i) { return i < 0 ? SEGMENT_NONE : pts[i].type; };
    double end = route.GetStartMile();
    for (int i = 0; i < n; ++i) {
        end += route.GetSegMile(i);
        for (double delta : {0.0, 5e-7, -5e-7, 1e-6, -1e-6, 1e-6 + 1e-12, -1e-6 - 1e-12, 3e-6, -3e-6, 7.0}) {
            const double m = end + delta;
            EXPECT_EQ(route.GetSegmentTypeB(m), typeAt(walk(m, false))) << i << " " << delta;
            EXPECT_EQ(route.GetSegmentTypeE(m), typeAt(walk(m, true))) << i << " " << delta;
        }
        CCriticalPoint cp;
        if (i + 1 < n) {
            EXPECT_EQ(route.GetCriticalPoint(end - 1e-9, cp), i);
            EXPECT_EQ(route.GetCriticalPoint(end + 1e-9, cp), i + 1);
        }
    }
}
