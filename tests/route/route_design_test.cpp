#include "orvroute/alignment.h"
#include "route/route_test_util.h"

#include <orvmath/routedesign.h>

#include <gtest/gtest.h>

#include <cmath>

using namespace route_test;

namespace {

CRouteElement El(SegmentType t, double length, double radius, double startRadius = 0.0, double A = 0.0) {
    return CRouteElement{t, length, radius, startRadius, A};
}

template <class T>
CArray<T, const T&> Array(std::initializer_list<T> items) {
    CArray<T, const T&> a;
    for (const T& t : items) a.Add(t);
    return a;
}

// Straight 100 east from (0,0), A = 200 into R = 400 turning right, 300 m of arc, A = 200 out, straight 100.
CRouteElementArray RightCurve() {
    return Array<CRouteElement>({El(SEGMENT_LINE, 100, 0), El(SEGMENT_TRANSITION, 0, -400, 0, 200),
                                 El(SEGMENT_ARC, 300, -400), El(SEGMENT_TRANSITION, 0, 0, -400, 200),
                                 El(SEGMENT_LINE, 100, 0)});
}

// Every element but the last (whose end the route snaps to its last point), evaluated in exact mode 1e-6 before
// its end and carried on along the tangent (off by 1e-12 / radius), meets the next critical point.
void ExpectElementsMeet(const CCriticalPointArray& pts) {
    CRoute2 route(pts, 0.0, 0.0);
    route.SetClothoidMode(CLOTHOID_EXACT);
    double mile = 0.0;
    for (INT_PTR i = 0; i + 2 < pts.GetSize(); ++i) {
        mile += route.GetSegMile(static_cast<int>(i));
        CCriticalPoint end;
        ASSERT_EQ(route.GetCriticalPoint(mile - 1e-6, end), i);
        end.pt = CDblPoint(end.pt.x + 1e-6 * std::cos(end.angle), end.pt.y + 1e-6 * std::sin(end.angle));
        EXPECT_LE(Distance(end.pt, pts[i + 1].pt), 1e-9) << "element " << i;
        // The direction still turns by 1e-6 / radius over the last 1e-6 (radii of 100 m and more here).
        EXPECT_NEAR(NormalizeAng_Rad(end.angle - pts[i + 1].angle), 0.0, 1e-8) << "element " << i;
    }
}

}  // namespace

// Element ends against an independent integration of the piecewise-linear curvature (Simpson's rule on 2e5
// intervals per element, numpy): (x, y, heading) after each element.
TEST(RouteDesign, ElementsLaidOutWithExactClothoids) {
    CCriticalPointArray pts;
    ASSERT_EQ(BuildRouteFromElements(CDblPoint(0, 0), 0.0, RightCurve(), pts), -1);
    ASSERT_EQ(pts.GetSize(), 6);
    const double expected[6][3] = {{0, 0, 0},
                                   {100, 0, 0},
                                   {199.843862987321, -4.162018680355, -0.125},
                                   {456.991370527640, -144.642342306756, -0.875},
                                   {514.439457884219, -226.409307731660, -1.0},
                                   {568.469688471033, -310.556406212449, -1.0}};
    for (int i = 0; i < 6; ++i) {
        EXPECT_NEAR(pts[i].pt.x, expected[i][0], 1e-9) << i;
        EXPECT_NEAR(pts[i].pt.y, expected[i][1], 1e-9) << i;
        EXPECT_NEAR(pts[i].angle, expected[i][2], 1e-12) << i;
    }
    // The route model's fields: unsigned radii, -1 for infinite, the clothoid's far radius set.
    EXPECT_EQ(pts[1].type, SEGMENT_TRANSITION);
    EXPECT_EQ(pts[1].radius, -1.0);
    EXPECT_EQ(pts[1].endRadius, 400.0);
    EXPECT_EQ(pts[3].radius, 400.0);
    EXPECT_EQ(pts[3].endRadius, -1.0);
    ExpectElementsMeet(pts);

    // Read back: the same elements (signed radii, both radii of each clothoid), which lay out the same points.
    CRouteElementArray back;
    ASSERT_EQ(GetRouteElements(CRoute2(pts, 0.0, 0.0), back), 5);
    EXPECT_NEAR(back[1].length, 100, 1e-9);  // A^2 / R
    EXPECT_EQ(back[2].radius, -400.0);
    EXPECT_EQ(back[3].startRadius, -400.0);
    EXPECT_EQ(back[3].radius, 0.0);
    CCriticalPointArray again;
    ASSERT_EQ(BuildRouteFromElements(CDblPoint(0, 0), 0.0, back, again), -1);
    for (int i = 0; i < 6; ++i) EXPECT_LE(Distance(again[i].pt, pts[i].pt), 1e-9);
}

// A clothoid from R = +400 to R = -400 over 200 m passes zero curvature half way: two elements of A = 200
// (A^2 = 200 / (2 / 400)); by symmetry the heading comes back to 0; end (199.167493025003, 16.636923544965) by the
// same integration.
TEST(RouteDesign, ReverseClothoidSplitsAtZeroCurvature) {
    CCriticalPointArray pts;
    const CRouteElementArray reverse =
        Array<CRouteElement>({El(SEGMENT_TRANSITION, 200, -400, 400), El(SEGMENT_LINE, 10, 0)});
    ASSERT_EQ(BuildRouteFromElements(CDblPoint(0, 0), 0.0, reverse, pts), -1);
    ASSERT_EQ(pts.GetSize(), 4);
    EXPECT_EQ(pts[1].radius, -1.0);
    EXPECT_NEAR(pts[1].spiralA, 200, 1e-12);
    EXPECT_NEAR(pts[2].pt.x, 199.167493025003, 1e-9);
    EXPECT_NEAR(pts[2].pt.y, 16.636923544965, 1e-9);
    EXPECT_NEAR(pts[2].angle, 0.0, 1e-12);
    ExpectElementsMeet(pts);
}

// The same curve from its tangent polygon: vertex 1 where the tangents meet, (369.063713210917, 0) by the
// integration above (the end tangent traced back to y = 0); the PI form read back gives the polygon again.
TEST(RouteDesign, TangentPolygonBuildsTheCurveAndReadsBack) {
    const CRoutePIArray pis = Array<CRoutePI>({CRoutePI{CDblPoint(0, 0), 0, 0, 0},
                                               CRoutePI{CDblPoint(369.063713210917, 0), 400, 200, 200},
                                               CRoutePI{CDblPoint(568.469688471033, -310.556406212449), 0, 0, 0}});
    CCriticalPointArray pts, direct;
    ASSERT_EQ(BuildRouteFromPI(pis, pts), -1);
    ASSERT_EQ(BuildRouteFromElements(CDblPoint(0, 0), 0.0, RightCurve(), direct), -1);
    ASSERT_EQ(pts.GetSize(), direct.GetSize());
    for (INT_PTR i = 0; i < pts.GetSize(); ++i) EXPECT_LE(Distance(pts[i].pt, direct[i].pt), 1e-8) << i;

    // An asymmetric left and right pair, reverse curves with no straight between them, and a vertex on a straight.
    const CRoutePIArray polygon = Array<CRoutePI>(
        {CRoutePI{CDblPoint(0, 0), 0, 0, 0}, CRoutePI{CDblPoint(800, 0), 500, 250, 150},
         CRoutePI{CDblPoint(1300, 600), 300, 0, 120}, CRoutePI{CDblPoint(1900, 600), 0, 0, 0},
         CRoutePI{CDblPoint(2400, 600), 0, 0, 0}});
    ASSERT_EQ(BuildRouteFromPI(polygon, pts), -1);
    ExpectElementsMeet(pts);
    CRoute2 route(pts, 0.0, 0.0);
    EXPECT_LE(Distance(pts[pts.GetSize() - 1].pt, CDblPoint(2400, 600)), 1e-9);
    CRoutePIArray back;
    ASSERT_TRUE(route.GetStandardIntersection(back));
    ASSERT_EQ(back.GetSize(), 4);  // the vertex on the straight has no curve to read back
    const int from[4] = {0, 1, 2, 4};
    for (int i = 0; i < 4; ++i) {
        const CRoutePI& want = polygon[from[i]];
        EXPECT_LE(Distance(back[i].pt, want.pt), 1e-8) << i;
        EXPECT_NEAR(back[i].radius, want.radius, 1e-9) << i;
        EXPECT_NEAR(back[i].A1, want.A1, 1e-9) << i;
        EXPECT_NEAR(back[i].A2, want.A2, 1e-9) << i;
    }
}

// Bad input gives the index of the first element or vertex that cannot be laid out, and no points.
TEST(RouteDesign, BadInputNamesTheElementOrVertex) {
    struct Row { CRouteElement bad; const char* why; } rows[] = {
        {El(SEGMENT_LINE, 0, 0), "zero length"},
        {El(SEGMENT_LINE, std::nan(""), 0), "NaN length"},
        {El(SEGMENT_ARC, 100, 0), "arc of infinite radius"},
        {El(SEGMENT_ARC, 2 * kPi * 10 + 1e-6, 10), "arc of more than a full turn"},
        {El(SEGMENT_TRANSITION, 50, 300, 300), "equal radii"},
        {El(SEGMENT_TRANSITION, 0, 300, 0, 0), "neither length nor A"},
        {El(SEGMENT_TRANSITION, 0, 10, 0, 20), "turns 2 rad from zero curvature: (20^2 / 10)^2 / (2 20^2)"},
        {El(static_cast<SegmentType>(7), 10, 0), "unknown type"},
    };
    for (const Row& r : rows) {
        CCriticalPointArray pts;
        pts.Add(CCriticalPoint());
        const CRouteElementArray elements = Array<CRouteElement>({El(SEGMENT_LINE, 10, 0), r.bad});
        EXPECT_EQ(BuildRouteFromElements(CDblPoint(), 0.0, elements, pts), 1) << r.why;
        EXPECT_EQ(pts.GetSize(), 0) << r.why;
    }
    const CRoutePI a{CDblPoint(0, 0)}, end{CDblPoint(1000, 1000)};
    struct PiRow { CRoutePI vertex; const char* why; } piRows[] = {
        {CRoutePI{CDblPoint(500, 0), 0, 0, 0}, "no radius at a bend"},
        {CRoutePI{CDblPoint(500, 0), 100, 300, 300}, "clothoids turn 4.5 rad at a 90 degree bend"},
        {CRoutePI{CDblPoint(500, 0), 5000, 0, 0}, "tangent length 5000 passes both ends"},
        {CRoutePI{CDblPoint(0, 0), 100, 0, 0}, "vertex on the start"},
    };
    for (const PiRow& r : piRows) {
        CCriticalPointArray pts;
        EXPECT_EQ(BuildRouteFromPI(Array<CRoutePI>({a, r.vertex, end}), pts), 1) << r.why;
        EXPECT_EQ(pts.GetSize(), 0) << r.why;
    }
    // Two arcs joined by a clothoid between their radii have no tangent-polygon form.
    CCriticalPointArray pts;
    const CRouteElementArray compound = Array<CRouteElement>({El(SEGMENT_LINE, 10, 0), El(SEGMENT_ARC, 50, 200),
        El(SEGMENT_TRANSITION, 30, 300, 200), El(SEGMENT_ARC, 50, 300), El(SEGMENT_LINE, 10, 0)});
    ASSERT_EQ(BuildRouteFromElements(CDblPoint(), 0.0, compound, pts), -1);
    CRoutePIArray back;
    back.Add(CRoutePI{});
    EXPECT_FALSE(CRoute2(pts, 0.0, 0.0).GetStandardIntersection(back));
    EXPECT_EQ(back.GetSize(), 0);
}

// The sample road, read into elements and laid out again with the series its points were made with, is the
// same route.
TEST(RouteDesign, SampleRoadRebuildsFromItsElements) {
    const CRoute2 sample = orvroute::SampleRoute();
    CRouteElementArray elements;
    ASSERT_EQ(GetRouteElements(sample, elements), 5);
    const CCriticalPoint& p0 = sample.GetCriticalPoints()[0];
    CCriticalPointArray pts;
    ASSERT_EQ(BuildRouteFromElements(p0.pt, p0.angle, elements, pts, CLOTHOID_SERIES), -1);
    ASSERT_EQ(pts.GetSize(), 6);
    for (int i = 0; i < 6; ++i) EXPECT_LE(Distance(pts[i].pt, sample.GetCriticalPoints()[i].pt), 1e-9) << i;
    EXPECT_NEAR(CRoute2(pts, 1000.0, 0.0).GetEndMile(), 3950.0, 1e-9);

    // Its tangent polygon by hand: the clothoids (L = A^2 / R = 125, three terms of the series) shift the arc by
    // p = y - R (1 - cos t) and k = x - R sin t (t = 0.125); deflection 2 t + 700 / 500 = 1.65 rad; the tangent length
    // T = (R + p) tan(1.65 / 2) + k = 605.133470476840, so the vertex lies 800 + T along 20 degrees.
    CRoutePIArray pis;
    ASSERT_TRUE(sample.GetStandardIntersection(pis));
    ASSERT_EQ(pis.GetSize(), 3);
    EXPECT_NEAR(pis[1].pt.x, 1320.393553426381, 1e-8);
    EXPECT_NEAR(pis[1].pt.y, 480.583950964183, 1e-8);
    EXPECT_EQ(pis[1].radius, 500.0);
    EXPECT_EQ(pis[1].A1, 250.0);
    EXPECT_EQ(pis[1].A2, 250.0);
    // And back: the polygon laid out in the same series gives the sample's points.
    ASSERT_EQ(BuildRouteFromPI(pis, pts, CLOTHOID_SERIES), -1);
    for (int i = 0; i < 6; ++i) EXPECT_LE(Distance(pts[i].pt, sample.GetCriticalPoints()[i].pt), 1e-8) << i;
}
