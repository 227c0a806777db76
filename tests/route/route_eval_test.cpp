#include "orvroute/alignment.h"
#include "route/route_reference.h"
#include "route/route_test_util.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

using namespace route_test;

namespace {
CCriticalPoint ExpectAt(const CRoute2& route, double mile, double x, double y, double angle, int index) {
    CCriticalPoint cp;
    EXPECT_EQ(route.GetCriticalPoint(mile, cp), index) << mile;
    ExpectPoint(cp.pt, x, y, 1e-6);
    EXPECT_NEAR(cp.angle, angle, 1e-9) << mile;
    return cp;
}
}  // namespace

TEST(CRoute2Standard, SeriesOffsetAndFrame) {
    // The series point at l = 30, A = 100 (worked out for the spiral below) moved 1 to the left of the tangent at
    // 900/20000 = 0.045 rad: plus (-sin, cos).
    EXPECT_DOUBLE_EQ(CRoute2::GetStandardTangetAngle(100, 30), 0.045);
    ExpectPoint(CRoute2::GetStandardPoint(100, 30, 1), 29.9939255695 - std::sin(0.045), 0.4499349153 + std::cos(0.045),
                1e-9);
    // Frame at (10, 5) turned by pi/2: (x, y) -> (10 - y, 5 + x); mirrored: (10 + y, 5 + x). The side point (0, 5) lies
    // left of the axis pointing up from (10, 5); (20, 5) right; on it mirrors.
    const CDblPoint p(3, 2), origin(10, 5);
    ExpectPoint(CRoute2::World2Standard(origin, kHalfPi, false, CDblPoint(12, 8)), 3, 2, 1e-12);
    ExpectPoint(CRoute2::Standard2World(origin, kHalfPi, CDblPoint(0, 5), p), 8, 8, 1e-12);
    ExpectPoint(CRoute2::Standard2World(origin, kHalfPi, CDblPoint(20, 5), p), 12, 8, 1e-12);
    ExpectPoint(CRoute2::Standard2World(origin, kHalfPi, CDblPoint(10, 9), p), 12, 8, 1e-12);
}

TEST(CRoute2Points, OnEachElementKind) {
    const CRoute2 line = Route({Pt(SEGMENT_LINE, 0, 0, 0, -1), Pt(SEGMENT_LINE, 10, 0, 0, -1)}, 100);
    ExpectAt(line, 103, 3, 0, 0, 0);
    // Quarter circle R 10 about (0, 10): half way the radial direction is -pi/4.
    const CRoute2 arc = Route({Pt(SEGMENT_ARC, 0, 0, 0, 10), Pt(SEGMENT_LINE, 10, 10, kHalfPi, -1)});
    ExpectAt(arc, 5 * kPi / 2, 10 * std::cos(kPi / 4), 10 - 10 * std::sin(kPi / 4), kPi / 4, 0);
    // Stored radius 5 does not fit: the arc through (10, 10) tangent at the start is the same circle, but the table
    // says 5*pi/2, so mile 5*pi/4 is a quarter of the real arc: angle pi/8.
    const CRoute2 refit = Route({Pt(SEGMENT_ARC, 0, 0, 0, 5), Pt(SEGMENT_LINE, 10, 10, kHalfPi, -1)});
    ExpectAt(refit, 5 * kPi / 4, 10 * std::sin(kPi / 8), 10 - 10 * std::cos(kPi / 8), kPi / 8, 0);
    // The next point on the tangent: no arc fits, the chord is used with the mean angle.
    const CRoute2 chord = Route({Pt(SEGMENT_ARC, 0, 0, 0, 10), Pt(SEGMENT_LINE, 10, 0, 0.2, -1)});
    EXPECT_EQ(ExpectAt(chord, 4, 4, 0, 0.1, 0).type, SEGMENT_LINE);
    // Clothoid A 100 from a straight heading north at (100, 50), turning left. Standard point at l = 30: x = 30 -
    // 30^5/40e8 + 30^9/3456e16, y = 30^3/6e4 - 30^7/336e12 + 30^11/42240e20; it lands at (100 - y, 50 + x), with radius
    // 10000/30 and direction pi/2 + 0.045.
    const CRoute2 spiral = Route({Pt(SEGMENT_TRANSITION, 100, 50, kHalfPi, -1, 100),
                                  Pt(SEGMENT_ARC, 100 - 2.081009, 50 + 49.921931, kHalfPi + 0.125, 200)});
    EXPECT_NEAR(ExpectAt(spiral, 30, 100 - 0.4499349153, 50 + 29.9939255695, kHalfPi + 0.045, 0).radius,
                10000.0 / 30, 1e-9);

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
    const CRoute2 route =
        Route({Pt(SEGMENT_LINE, 0, 0, 0.3, -1), Pt(SEGMENT_LINE, 10, 0, 0.1, -1), Pt(SEGMENT_LINE, 20, 0, 0.2, -1)}, 100);
    // Within 0.01 of an end: the stored point and angle, not the chord's.
    const struct { double mile; int index; double x, angle; } rows[] = {
        {100.005, 0, 0, 0.3}, {99.995, 0, 0, 0.3}, {119.991, 1, 20, 0.2}, {120.009, 1, 20, 0.2}, {100.02, 0, 0.02, 0.3}};
    for (const auto& r : rows) ExpectAt(route, r.mile, r.x, 0, r.angle, r.index);
    CCriticalPoint cp;
    EXPECT_EQ(route.GetCriticalPoint(99.98, cp), -1);
    EXPECT_EQ(route.GetCriticalPoint(120.02, cp), -1);
}

TEST(CRoute2Points, SampleRouteIsContinuousAcrossEveryBoundary) {
    const CRoute2 route = orvroute::SampleRoute();
    const CCriticalPointArray& pts = route.GetCriticalPoints();
    ASSERT_EQ(pts.GetSize(), 6);
    EXPECT_NEAR(route.GetMile(), 800 + 125 + 700 + 125 + 1200, 1e-9);  // A^2/R = 62500/500 = 125
    // Total turn: 2 * 0.125 + 700/500 = 1.65 rad to the left of the 20 degree start.
    EXPECT_NEAR(pts[5].angle, 20 * kPi / 180 + 1.65, 1e-12);
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
}

// The table search answers exactly as walking the table from the start does, also right at the 1e-6 limits where
// rounding decides.
TEST(CRoute2Lookup, SearchAgreesWithWalkingTheTable) {
    const CRoute2 route = orvroute::GeneratedRoute(400);
    const CCriticalPointArray& pts = route.GetCriticalPoints();
    const int n = static_cast<int>(pts.GetSize()) - 1;
    auto walk = [&](double mile, bool upper) {
        double d = mile - route.GetStartMile();
        if (d < -1e-6) return SEGMENT_NONE;
        for (int i = 0; i < n; ++i) {
            d -= route.GetSegMile(i);
            if (std::fabs(d) < 1e-6) return pts[upper && i + 1 < n ? i + 1 : i].type;
            if (d < 0) return pts[i].type;
        }
        return SEGMENT_NONE;
    };
    double end = route.GetStartMile();
    for (int i = 0; i < n; ++i) {
        end += route.GetSegMile(i);
        for (double delta : {0.0, 5e-7, -5e-7, 1e-6, -1e-6, 1e-6 + 1e-12, -1e-6 - 1e-12, 3e-6, -3e-6, 7.0}) {
            EXPECT_EQ(route.GetSegmentTypeB(end + delta), walk(end + delta, false)) << i << " " << delta;
            EXPECT_EQ(route.GetSegmentTypeE(end + delta), walk(end + delta, true)) << i << " " << delta;
        }
        CCriticalPoint cp;
        if (i + 1 < n) {
            EXPECT_EQ(route.GetCriticalPoint(end - 1e-9, cp), i);
            EXPECT_EQ(route.GetCriticalPoint(end + 1e-9, cp), i + 1);
        }
    }
}

// The precomputed element geometry answers as the first implementation did (route_reference.h rebuilds every
// element's geometry per call): the same element, positions within 1e-9 m, angles within 1e-12 rad, over 10^5 random
// miles on the sample road and a 1000-element alignment, with boundary miles, transforms and an offset route.
TEST(CRoute2Points, PrecomputedGeometryAgreesWithTheReference) {
    CRoute2 generated = orvroute::GeneratedRoute(1000);
    generated.SelfRotate(CDblPoint(50, -20), 0.4);
    generated.SelfMirror(CDblPoint(0, 0), CDblPoint(1, 2));
    const CRoute2 routes[] = {orvroute::SampleRoute(), generated, orvroute::SampleRoute().Offset(-3.5)};
    std::mt19937_64 rng(7);
    for (const CRoute2& route : routes) {
        std::uniform_real_distribution<double> mile(route.GetStartMile() - 1, route.GetEndMile() + 1);
        std::vector<double> miles(100000);
        for (double& m : miles) m = mile(rng);
        double end = route.GetStartMile();
        for (int i = 0; i + 1 < route.GetCriticalPoints().GetSize(); ++i, end += route.GetSegMile(i - 1))
            for (double delta : {-1e-9, 0.0, 1e-9}) miles.push_back(end + route.GetSegMile(i) + delta);
        for (double m : miles) {
            CCriticalPoint want, got;
            const int index = route_reference::CriticalPoint(route, m, want);
            ASSERT_EQ(route.GetCriticalPoint(m, got), index) << m;
            const CDblPoint a = route_reference::Point(route, m, 1.75), b = route.GetPoint(m, 1.75);
            ASSERT_LE(Distance(a, b), 1e-9) << m;
            if (index < 0) continue;
            ASSERT_LE(Distance(want.pt, got.pt), 1e-9) << m;
            ASSERT_LE(std::fabs(want.angle - got.angle), 1e-12) << m;
            ASSERT_NEAR(1 / want.radius, 1 / got.radius, 1e-12) << m;  // curvature; s may round differently
        }
    }
}

// Many miles at once give exactly what one call per mile gives, in increasing, decreasing and random order, with
// miles off the route as (0, 0) and a NaN direction.
TEST(CRoute2Points, BatchEqualsOneCallPerMile) {
    const CRoute2 route = orvroute::GeneratedRoute(200);
    CDblArray miles, offsets;
    for (double m = route.GetStartMile() - 3; m <= route.GetEndMile() + 3; m += 0.37) miles.Add(m);
    for (INT_PTR k = miles.GetSize() - 1; k >= 0; k -= 3) miles.Add(miles[k]);  // backwards
    std::mt19937 rng(3);
    std::uniform_real_distribution<double> any(route.GetStartMile(), route.GetEndMile());
    for (int k = 0; k < 500; ++k) miles.Add(any(rng));
    for (INT_PTR k = 0; k < miles.GetSize(); ++k) offsets.Add((k % 5 - 2) * 1.5);
    CDblPointArray points;
    CDblArray angles;
    route.GetPoints(miles, offsets, points, angles);
    ASSERT_EQ(points.GetSize(), miles.GetSize());
    for (INT_PTR k = 0; k < miles.GetSize(); ++k) {
        CCriticalPoint cp;
        const bool on = route.GetCriticalPoint(miles[k], cp) >= 0;
        const CDblPoint p = route.GetPoint(miles[k], offsets[k]);
        ASSERT_TRUE(points[k].x == p.x && points[k].y == p.y) << k;
        if (on)
            ASSERT_EQ(angles[k], cp.angle) << k;
        else
            ASSERT_TRUE(std::isnan(angles[k]) && points[k].IsNull()) << k;
    }
    offsets.RemoveAt(0);  // one offset short: nothing is evaluated
    route.GetPoints(miles, offsets, points, angles);
    EXPECT_TRUE(points.IsEmpty() && angles.IsEmpty());
}

// The clothoid itself against the Fresnel integrals: x = k C(l / k), y = k S(l / k), k = A sqrt(pi), from
// scipy.special.fresnel, at deflections 0.5, 1 and pi/2 rad. A route in the exact mode evaluates its transition on the
// clothoid; the series mode stays as stored routes have always evaluated (0.17 mm off here at 0.5 rad).
TEST(CRoute2Standard, ExactClothoidAgainstFresnelAndTheExactMode) {
    const struct { double A, l, x, y; } rows[] = {
        {250, 250, 243.82192205008613, 40.92851184392514},
        {250, 250 * std::sqrt(2.0), 319.79761118343816, 109.6964100679183},
        {100, 100 * std::sqrt(kPi), 138.23250607936973, 77.67941134866022},
    };
    for (const auto& r : rows) ExpectPoint(CRoute2::GetStandardPointExact(r.A, r.l, 0), r.x, r.y, 1e-9);
    // A straight to (100, 0), then a clothoid of A = 100 turning left into R = 100 for 100 m, ending where the
    // Fresnel integrals put it: (100 + 97.52876882003446, 16.371404737570057), heading 0.5 rad.
    CRoute2 route = Route({Pt(SEGMENT_LINE, 0, 0, 0, -1), Pt(SEGMENT_TRANSITION, 100, 0, 0, -1, 100),
                           Pt(SEGMENT_LINE, 197.52876882003446, 16.371404737570057, 0.5, 100)});
    const double mile = 199.98;  // 99.98 m into the transition: (197.51121621012652, 16.361817981910004)
    const CDblPoint series = route.GetPoint(mile, 0);
    route.SetClothoidMode(CLOTHOID_EXACT);
    const double end = route.GetEndMile();
    ExpectPoint(route.GetPoint(mile, 0), 197.51121621012652, 16.361817981910004, 1e-9);
    EXPECT_GT(Distance(series, route.GetPoint(mile, 0)), 1e-4);
    CCriticalPoint cp;
    route.GetCriticalPoint(mile, cp);
    EXPECT_NEAR(cp.angle, 99.98 * 99.98 / 20000, 1e-12);  // angles and radii do not depend on the mode
    EXPECT_EQ(route.GetEndMile(), end);
    const CRoute2 copy = route;
    EXPECT_EQ(copy.GetClothoidMode(), CLOTHOID_EXACT);
}
