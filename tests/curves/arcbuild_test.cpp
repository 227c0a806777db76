// Arc constructions against arcs worked out by hand (the arithmetic is in the comments).
#include <orvmath/arcbuild.h>

#include <gtest/gtest.h>

#include <cmath>

using namespace ORVMATH;

namespace {
constexpr double kTol = 1e-12;
const double kR3 = std::sqrt(3.0);

void ExpectArc(const CArc2& a, double cx, double cy, double r, double start, double sweep) {
    EXPECT_NEAR(a.centre.x, cx, kTol);
    EXPECT_NEAR(a.centre.y, cy, kTol);
    EXPECT_NEAR(a.radius, r, kTol);
    EXPECT_NEAR(a.startAngle, start, kTol);
    EXPECT_NEAR(a.sweepAngle, sweep, kTol);
}
}  // namespace

// (0,0) -> (2,0). R = 1: the half circle about (1,0), starting at angle pi. R = sqrt 2: the centre is 1 off the chord's
// middle, (1,1) on the left or (1,-1) on the right; from (1,1) the start lies at -3pi/4 and the end at -pi/4.
TEST(CalArcFromSER, FourCandidatesAndTheSentinels) {
    const CDblPoint s(0, 0), e(2, 0);
    ExpectArc(CalArcFromSER(s, e, 1), 1, 0, 1, kPi, kPi);
    ExpectArc(CalArcFromSER(s, e, 1, {false, false}), 1, 0, 1, kPi, -kPi);
    const double r2 = std::sqrt(2.0);
    ExpectArc(CalArcFromSER(s, e, r2, {true, false}), 1, 1, r2, -3 * kPi / 4, kPi / 2);
    ExpectArc(CalArcFromSER(s, e, r2, {true, true}), 1, -1, r2, 3 * kPi / 4, 3 * kPi / 2);
    ExpectArc(CalArcFromSER(s, e, r2, {false, false}), 1, -1, r2, 3 * kPi / 4, -kPi / 2);
    ExpectArc(CalArcFromSER(s, e, r2, {false, true}), 1, 1, r2, -3 * kPi / 4, -3 * kPi / 2);
    ExpectArc(CalArcFromSER(s, e, 0.9995), 1, 0, 0.9995, kPi, kPi);  // 5e-4 short: within the distance epsilon
    EXPECT_TRUE(CalArcFromSER(s, e, 0.99).IsNull());
    EXPECT_TRUE(CalArcFromSER(s, s, 1).IsNull());
    EXPECT_TRUE(CalArcFromSER(s, e, std::nan("")).IsNull());
}

// The x and y axes with R = 1: centre (1,1), tangent points (1,0) and (0,1), the quarter from -pi/2 clockwise.
// Rays at 0 and 60 degrees: half angle 30, so the tangent points lie 1/tan 30 = sqrt 3 from the corner and the centre
// 1/sin 30 = 2 along the bisector: (sqrt 3, 1); the arc runs from -pi/2 (270 degrees) clockwise past 210 degrees (the
// direction of the corner) to 150 degrees: a sweep of -120 degrees.
TEST(CalArcFromTTR, FilletInTheCornerOfTheSegments) {
    CDblPoint t1, t2;
    ExpectArc(CalArcFromTTR(CLine2(0, 0, 5, 0), CLine2(0, 0, 0, 5), 1, &t1, &t2), 1, 1, 1, -kPi / 2, -kPi / 2);
    EXPECT_TRUE(t1 == CDblPoint(1, 0) && t2 == CDblPoint(0, 1));
    // Segments that do not reach the corner still pick it by where they lie: the quadrant x < 0, y > 0.
    ExpectArc(CalArcFromTTR(CLine2(-9, 0, -3, 0), CLine2(0, 9, 0, 2), 1), -1, 1, 1, -kPi / 2, kPi / 2);
    ExpectArc(CalArcFromTTR(CLine2(0, 0, 4, 0), CLine2(0, 0, 2, 2 * kR3), 1, &t1, &t2), kR3, 1, 1, -kPi / 2,
              -2 * kPi / 3);
    EXPECT_NEAR(t1.x, kR3, kTol);
    EXPECT_NEAR(t2.x, kR3 / 2, kTol);
    EXPECT_NEAR(t2.y, 1.5, kTol);
    t1 = CDblPoint(7, 7);
    EXPECT_TRUE(CalArcFromTTR(CLine2(0, 0, 5, 0), CLine2(0, 1, 5, 1), 1, &t1).IsNull());  // parallel
    EXPECT_TRUE(t1 == CDblPoint(7, 7));
    EXPECT_TRUE(CalArcFromTTR(CLine2(0, 0, 5, 0), CLine2(0, 0, 0, 5), 0).IsNull());
    EXPECT_TRUE(CalArcFromTTR(CLine2(1, 1, 1, 1), CLine2(0, 0, 0, 5), 1).IsNull());
}

// Three points, start with tangent, start with tangent, radius and length, and centre with start and end.
TEST(CalArc, FromPointsTangentsAndCentre) {
    ExpectArc(CalArcFrom3Points({1, 0}, {0, 1}, {-1, 0}), 0, 0, 1, 0, kPi);     // turning left: counter-clockwise
    ExpectArc(CalArcFrom3Points({-1, 0}, {0, 1}, {1, 0}), 0, 0, 1, kPi, -kPi);  // turning right: clockwise
    EXPECT_TRUE(CalArcFrom3Points({0, 0}, {1, 1}, {2, 2}).IsNull());
    EXPECT_TRUE(CalArcFrom3Points({0, 0}, {0, 0}, {2, 2}).IsNull());
    // Leaving (0,0) eastward through (1,1): r = |d|^2 / (2 d.n) = 2 / 2 = 1, centre (0,1), a quarter.
    ExpectArc(CalArcFromSTE({0, 0}, 0, {1, 1}), 0, 1, 1, -kPi / 2, kPi / 2);
    EXPECT_TRUE(CalArcFromSTE({0, 0}, 0, {2, 0}).IsNull());  // on the tangent: a straight
    // Heading north, R = -2 (right) for pi: the centre is 2 east, the arc ends at (2,2) heading east.
    const CArc2 right = CalArcFromSTRL({0, 0}, kPi / 2, -2, kPi);
    ExpectArc(right, 2, 0, 2, kPi, -kPi / 2);
    EXPECT_NEAR(right.EndPoint().x, 2, kTol);
    EXPECT_NEAR(right.EndPoint().y, 2, kTol);
    EXPECT_TRUE(CalArcFromSTRL({0, 0}, 0, 0, 1).IsNull());
    EXPECT_TRUE(CalArcFromSTRL({0, 0}, 0, 5, 0).IsNull());
    // About (0,0) from (1,0) toward (0,2): a quarter counter-clockwise or three quarters clockwise; the same
    // direction twice is a full turn.
    ExpectArc(CalArcFromCSE({0, 0}, {1, 0}, {0, 2}, true), 0, 0, 1, 0, kPi / 2);
    ExpectArc(CalArcFromCSE({0, 0}, {1, 0}, {0, 2}, false), 0, 0, 1, 0, -3 * kPi / 2);
    ExpectArc(CalArcFromCSE({0, 0}, {1, 0}, {3, 0}, true), 0, 0, 1, 0, 2 * kPi);
    EXPECT_TRUE(CalArcFromCSE({0, 0}, {0, 0}, {3, 0}, true).IsNull());
}
