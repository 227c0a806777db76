#include "orvroute/alignment.h"
#include "route/route_test_util.h"

#include <orvmath/routedesign.h>

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

using namespace route_test;

namespace {

struct Expected {
    CRoute2::ProblemKind kind;
    int element;
    double size;
};

std::string Describe(const CArray<CRoute2::Problem>& got) {
    std::string s;
    for (const CRoute2::Problem& p : got)
        s += std::to_string(p.kind) + "@" + std::to_string(p.element) + "=" + std::to_string(p.size) + " ";
    return s;
}

// Curves of radius 50 with clothoids of A = 60 (72 m, 0.72 rad), turning left.
CRoute2 LeftCurve(double offset) {
    CRouteElementArray e;
    for (const CRouteElement& el :
         {CRouteElement{SEGMENT_LINE, 100, 0, 0, 0}, CRouteElement{SEGMENT_TRANSITION, 0, 50, 0, 60},
          CRouteElement{SEGMENT_ARC, 30, 50, 0, 0}, CRouteElement{SEGMENT_TRANSITION, 0, 0, 50, 60},
          CRouteElement{SEGMENT_LINE, 50, 0, 0, 0}})
        e.Add(el);
    CCriticalPointArray pts;
    BuildRouteFromElements(CDblPoint(0, 0), 0.0, e, pts, CLOTHOID_SERIES);  // the series the route evaluates with
    return CRoute2(pts, 0.0, offset);
}

}  // namespace

TEST(CRoute2Validate, ReportsEachInconsistencyWithElementAndSize) {
    using R = CRoute2;
    const double nan = std::nan("");
    const auto L = [](double x, double y, double angle = 0) { return Pt(SEGMENT_LINE, x, y, angle, -1); };
    const CCriticalPoint spiral = Pt(SEGMENT_TRANSITION, 0, 0, 0, -1, 100), arc = Pt(SEGMENT_ARC, 0, 0, 0, 50);
    const struct Row {
        const char* name;
        CRoute2 route;
        std::vector<Expected> want;
    } rows[] = {
        {"consistent", orvroute::GeneratedRoute(8), {}},
        {"null route", CRoute2(), {{R::PROBLEM_NO_CHAINAGE, -1, 0}}},
        {"one point", Route({L(3, 4)}), {{R::PROBLEM_NO_CHAINAGE, -1, 0}}},
        // Both points at (5, 5): no chainage, and the one element is 0 long.
        {"coinciding points", Route({L(5, 5), L(5, 5)}),
         {{R::PROBLEM_NO_CHAINAGE, -1, 0}, {R::PROBLEM_ZERO_LENGTH, 0, 0}}},
        // Heading 0 toward (100, 1): off by atan(1/100) = 0.009999666686665238.
        {"straight heading", Route({L(0, 0), L(100, 1)}), {{R::PROBLEM_HEADING, 0, 0.009999666686665238}}},
        // A transition to (-5, 3): 5 m behind along its tangent; the route spans nothing, the farthest point is
        // sqrt(25 + 9) = 5.830951894845301 from the first.
        {"transition behind", Route({spiral, Pt(SEGMENT_ARC, -5, 3, 0, 200)}),
         {{R::PROBLEM_NO_CHAINAGE, -1, 5.830951894845301}, {R::PROBLEM_BEHIND, 0, 5}}},
        {"transition without change of radius", Route({spiral, L(50, 0)}),
         {{R::PROBLEM_NO_CHAINAGE, -1, 50}, {R::PROBLEM_BAD_SPIRAL, 0, 0}}},
        // A = 100 into R = 200 is 50 long and turns 50^2 / (2 * 100^2) = 0.125 rad; by the series its end is
        // (49.92193151403357, 2.081009340492678), 2.082473184393706 from the stored (50, 0) and its heading 0.
        {"transition end misses", Route({spiral, Pt(SEGMENT_ARC, 50, 0, 0, 200)}),
         {{R::PROBLEM_GAP, 0, 2.082473184393706}, {R::PROBLEM_KINK, 0, 0.125}}},
        // Centre (0, 100): (100, 101) is sqrt(10001) - 100 = 0.004999875006248544 off the circle.
        {"arc off its circle", Route({Pt(SEGMENT_ARC, 0, 0, 0, 100), L(100, 101, kHalfPi)}),
         {{R::PROBLEM_OFF_CIRCLE, 0, 0.004999875006248544}}},
        {"arc radius -1", Route({L(0, 0), Pt(SEGMENT_ARC, 10, 0, 0, -1), L(20, 0)}), {{R::PROBLEM_BAD_RADIUS, 1, -1}}},
        // Two straights meeting at an angle point of 0.1 rad.
        {"kink", Route({L(0, 0), L(100, 0, 0.1), L(100 + 100 * std::cos(0.1), 100 * std::sin(0.1), 0.1)}),
         {{R::PROBLEM_KINK, 0, 0.1}}},
        {"unknown type", Route({L(0, 0), Pt(SegmentType(7), 10, 0, 0, -1), L(20, 0)}),
         {{R::PROBLEM_UNKNOWN_TYPE, 1, 7}}},
        {"not finite", Route({L(0, 0), L(10, 0, nan), L(20, 0)}), {{R::PROBLEM_NOT_FINITE, 1, 0}}},
        // Left quarter of radius 50 with the route 60 to the left (inside): 10 m past the centre; on the right
        // (outside) nothing is wrong. On a right turn inside is the right.
        {"offset loop on an arc", Route({arc, L(50, 50, kHalfPi)}, 0, 60), {{R::PROBLEM_OFFSET_LOOP, 0, 10}}},
        {"offset outside an arc", Route({arc, L(50, 50, kHalfPi)}, 0, -60), {}},
        {"offset loop on a right arc", Route({arc, L(50, -50, -kHalfPi)}, 0, -60),
         {{R::PROBLEM_OFFSET_LOOP, 0, 10}}},
        // Both clothoids (in and out) and the arc reach radius 50: 55 - 50 = 5 past it on each.
        {"offset loop on transitions", LeftCurve(55),
         {{R::PROBLEM_OFFSET_LOOP, 1, 5}, {R::PROBLEM_OFFSET_LOOP, 2, 5}, {R::PROBLEM_OFFSET_LOOP, 3, 5}}},
        {"offset outside transitions", LeftCurve(-55), {}},
    };
    CArray<CRoute2::Problem> got;
    for (const Row& r : rows) {
        const CCriticalPointArray before = r.route.GetCriticalPoints();
        EXPECT_EQ(r.route.Validate(got), static_cast<int>(r.want.size())) << r.name << ": " << Describe(got);
        if (got.GetSize() != static_cast<INT_PTR>(r.want.size())) continue;
        for (std::size_t k = 0; k < r.want.size(); ++k) {
            const CRoute2::Problem& p = got[static_cast<INT_PTR>(k)];
            EXPECT_EQ(p.kind, r.want[k].kind) << r.name << " #" << k;
            EXPECT_EQ(p.element, r.want[k].element) << r.name << " #" << k;
            EXPECT_NEAR(p.size, r.want[k].size, 1e-9) << r.name << " #" << k;
        }
        EXPECT_EQ(r.route.GetCriticalPoints().GetSize(), before.GetSize()) << r.name;
    }
}

// The tolerances are the caller's: a heading 0.0099997 rad off passes at 0.01 rad, and a 2 mm straight at 3 mm.
TEST(CRoute2Validate, TolerancesAreTheCallers) {
    CArray<CRoute2::Problem> got;
    const CRoute2 r = Route({Pt(SEGMENT_LINE, 0, 0, 0, -1), Pt(SEGMENT_LINE, 100, 1, 0, -1)});
    EXPECT_EQ(r.Validate(got, 1e-3, 0.01), 0) << Describe(got);
    EXPECT_EQ(r.Validate(got, 1e-3, 0.005), 1) << Describe(got);
    const CRoute2 s = Route({Pt(SEGMENT_LINE, 0, 0, 0, -1), Pt(SEGMENT_LINE, 0.002, 0, 0, -1)});
    EXPECT_EQ(s.Validate(got, 1e-3), 0) << Describe(got);
    EXPECT_EQ(s.Validate(got, 3e-3), 2) << Describe(got);  // no chainage, and the element is 0 long
}
