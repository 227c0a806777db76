#include "route/route_test_util.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace route_test;

TEST(CRoute2Lengths, EachElementKindWithAndWithoutOffset) {
    const CCriticalPoint spiral = Pt(SEGMENT_TRANSITION, 0, 0, 0, -1, 100), arc = Pt(SEGMENT_ARC, 0, 0, 0, 10);
    const CCriticalPoint outOf = Pt(SEGMENT_TRANSITION, 0, 0, 0, 200, 100);
    const struct { const char* what; CCriticalPoint p1, p2; double offset, mile, length; } rows[] = {
        {"line ignores the offset", Pt(SEGMENT_LINE, 0, 0, 0, -1), Pt(SEGMENT_LINE, 3, 4, 0, -1), 2, 5, 5},
        // Quarter circle R 10 to the left: 10*pi/2; offset 2 to the inside: 8*pi/2.
        {"arc left", arc, Pt(SEGMENT_LINE, 10, 10, kHalfPi, -1), 2, 5 * kPi, 4 * kPi},
        // To the right the angles run 0 -> -pi/2 (3pi/2 after raising); offset 2 is outside: 12*pi/2.
        {"arc right", arc, Pt(SEGMENT_LINE, 10, -10, -kHalfPi, -1), 2, 5 * kPi, 6 * kPi},
        {"arc of equal end angles is a full turn", arc, Pt(SEGMENT_LINE, 0, 1, 0, -1), 0, 20 * kPi, 20 * kPi},
        // 0.0005 off the tangent is within 0.001: the chord sqrt(49 + 2.5e-7).
        {"arc along its tangent", arc, Pt(SEGMENT_LINE, 7, 0.0005, 0, -1), 3, std::sqrt(49 + 2.5e-7),
         std::sqrt(49 + 2.5e-7)},
        // A = 100 into R 200: L = 10000/200 = 50, tangent angle 10000/(2*200^2) = 0.125; 2*0.125 = 0.25.
        {"into a left curve", spiral, Pt(SEGMENT_ARC, 49.9, 2.08, 0.125, 200), 2, 50, 49.75},
        {"into a left curve, offset right", spiral, Pt(SEGMENT_ARC, 49.9, 2.08, 0.125, 200), -2, 50, 50.25},
        {"into a right curve", spiral, Pt(SEGMENT_ARC, 49.9, -2.08, -0.125, 200), 2, 50, 50.25},
        {"out of a left curve", outOf, Pt(SEGMENT_LINE, 50, 2, 0.25, -1), 2, 50, 49.75},
        {"out of a right curve", outOf, Pt(SEGMENT_LINE, 50, -2, -0.25, -1), 2, 50, 50.25},
        // R 100 -> 200 with A 100: L 100 -> 50; angles 0.5 -> 0.125, 2*0.375 = 0.75 (left: inside).
        {"between two radii, own end radius", Pt(SEGMENT_TRANSITION, 0, 0, 0, 100, 100, 200),
         Pt(SEGMENT_LINE, 49, 12, 0.4, -1), 2, 50, 49.25},
        {"next point behind", spiral, Pt(SEGMENT_ARC, -5, 2, 0.1, 200), 2, 0, 0},
        {"next point within 0.01 of abreast", spiral, Pt(SEGMENT_ARC, 0.009, 2, 0.1, 200), 2, 0, 0},
        {"unknown kinds leave the outputs alone", Pt(SegmentType(5), 0, 0, 0, -1), arc, 1, -7, -7},
    };
    for (const auto& r : rows) {
        double mile = -7, length = -7;
        CRoute2::GetSegLength(r.p1, r.p2, r.offset, mile, length);
        EXPECT_NEAR(mile, r.mile, 1e-9) << r.what;
        EXPECT_NEAR(length, r.length, 1e-9) << r.what;
    }
}

// Element 0: a line of 10; element 1: a quarter arc of radius 40/pi, length 20; start mile 100.
static CRoute2 LineThenArc() {
    const double r = 40 / kPi;
    return Route({Pt(SEGMENT_LINE, 0, 0, 0, -1), Pt(SEGMENT_ARC, 10, 0, 0, r), Pt(SEGMENT_LINE, 10 + r, r, kHalfPi, -1)},
                 100);
}

TEST(CRoute2Lookup, BoundariesWithinOneMillionthAndBeyondTheEnds) {
    const CRoute2 route = LineThenArc();
    EXPECT_DOUBLE_EQ(route.GetEndMile(), 130);
    const SegmentType N = SEGMENT_NONE, L = SEGMENT_LINE, A = SEGMENT_ARC;
    const struct { double mile; SegmentType b, e; } rows[] = {
        {99.999998, N, N},   {99.9999995, L, L},  {105, L, L},         {109.9999985, L, L},
        {109.9999995, L, A}, {110, L, A},         {110.0000005, L, A}, {110.0000015, A, A},
        {130, A, A},         {130.0000005, A, A}, {130.1, N, N},
    };
    for (const auto& r : rows) {
        SegmentType b, e;
        route.GetSegmentType(r.mile, b, e);
        EXPECT_EQ(b, r.b) << r.mile;
        EXPECT_EQ(e, r.e) << r.mile;
    }
}

TEST(CRoute2Model, NullEmptySinglePointAndAnglesBroughtIntoRange) {
    CRoute2 route;
    EXPECT_TRUE(route.IsNull() && route.GetEndMile() == -1.0);
    route.Set(CCriticalPointArray(), 5, 0);  // no elements: the end mile is the start mile
    EXPECT_TRUE(route.IsNull() && route.GetEndMile() == 5.0);
    const CRoute2 one = Route({Pt(SEGMENT_LINE, 1, 1, 0, -1)}, 5);
    EXPECT_EQ(one.GetMile(), 0.0);
    EXPECT_EQ(one.GetSegmentTypeB(5.5), SEGMENT_NONE);
    route = Route({Pt(SEGMENT_LINE, 0, 0, -kPi, -1), Pt(SEGMENT_LINE, 1, 0, 3 * kPi + 0.5, -1)});
    EXPECT_DOUBLE_EQ(route.GetCriticalPoints()[0].angle, kPi);  // into (-pi, pi]
    EXPECT_NEAR(route.GetCriticalPoints()[1].angle, 0.5 - kPi, 1e-12);
    route.SetNull();
    EXPECT_TRUE(route.IsNull() && route.GetEndMile() == -1.0);
}

TEST(CRoute2Equality, ComparesWhatTheTypeUsesAndPositionsWithinOne) {
    const CCriticalPoint a = Pt(SEGMENT_ARC, 0, 0, 0.5, 100);
    EXPECT_TRUE(a == Pt(SEGMENT_ARC, 0.9, -1.0, 0.5, 100));  // within 1.0 per axis
    EXPECT_FALSE(a == Pt(SEGMENT_ARC, 1.1, 0, 0.5, 100));
    EXPECT_FALSE(a == Pt(SEGMENT_ARC, 0, 0, 0.6, 100));
    EXPECT_FALSE(a == Pt(SEGMENT_LINE, 0, 0, 0.5, 100));
    EXPECT_TRUE(Pt(SegmentType(5), 0, 0, 1, 2) == Pt(SegmentType(5), 50, 50, 3, 4));  // nothing else compared
    EXPECT_TRUE(Pt(SegmentType(-3), 0, 0, 1, 2) == Pt(SegmentType(-3), 50, 50, 3, 4));
    EXPECT_FALSE(Pt(SEGMENT_TRANSITION, 0, 0, 0, -1, 100) == Pt(SEGMENT_TRANSITION, 0, 0, 0, -1, 101));
    EXPECT_FALSE(Pt(SEGMENT_TRANSITION, 0, 0, 0, -1, 100, 0) == Pt(SEGMENT_TRANSITION, 0, 0, 0, -1, 100, 300));
    const CRoute2 r = LineThenArc();
    EXPECT_TRUE(r == r.Translate(0.5, 0.5));
    EXPECT_TRUE(r == CRoute2(r.GetCriticalPoints(), 100.009, 0));
    EXPECT_FALSE(r == CRoute2(r.GetCriticalPoints(), 100.011, 0));
    EXPECT_FALSE(r == CRoute2(r.GetCriticalPoints(), 100, 0.5));
}
