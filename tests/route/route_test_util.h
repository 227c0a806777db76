// Small builders shared by the route tests.
#pragma once

#include <orvmath/route2.h>

#include <gtest/gtest.h>

#include <initializer_list>

namespace route_test {
using namespace ORVMATH;

inline CCriticalPoint Pt(SegmentType t, double x, double y, double angle, double radius, double A = 0.0,
                         double endRadius = 0.0) {
    return CCriticalPoint(t, CDblPoint(x, y), angle, radius, A, endRadius);
}

inline CRoute2 Route(std::initializer_list<CCriticalPoint> pts, double startMile = 0.0, double offset = 0.0) {
    CCriticalPointArray a;
    for (const CCriticalPoint& p : pts) a.Add(p);
    return CRoute2(a, startMile, offset);
}

inline void ExpectPoint(const CDblPoint& p, double x, double y, double tol = 1e-9) {
    EXPECT_NEAR(p.x, x, tol);
    EXPECT_NEAR(p.y, y, tol);
}

constexpr double kHalfPi = kPi / 2;
}  // namespace route_test
