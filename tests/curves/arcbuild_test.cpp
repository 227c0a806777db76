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

// By hand: the x and y axes with R = 1 give centre (1,1), tangent points (1,0) and (0,1); rays at 0 and 60 degrees
// give the centre 1/sin 30 = 2 along the bisector, (sqrt 3, 1), tangent points sqrt 3 from the corner, sweep -120.
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

namespace {
void ExpectLine(const CLine2& l, const CLine2& want) {
    EXPECT_TRUE(std::fabs(l.start.x - want.start.x) < kTol && std::fabs(l.start.y - want.start.y) < kTol &&
                std::fabs(l.end.x - want.end.x) < kTol && std::fabs(l.end.y - want.end.y) < kTol)
        << l.start.x << "," << l.start.y << " - " << l.end.x << "," << l.end.y;
}
}  // namespace

// By hand: the x and y axes with R = 1; picks in quadrant (sx, sy) give centre (sx, sy), tangent points (sx, 0) and
// (0, sy), a quarter turn toward the corner; trimmed, each axis runs from its tangent point to its picked end.
TEST(CalFillet, TwoLinesTakeTheCornerOfThePickedRaysAndTrimToTheTangentPoints) {
    const double rows[][4] = {{3, 3, 1, 1}, {-3, 3, -1, 1}, {-3, -3, -1, -1}, {3, -3, 1, -1}, {0.5, 0.2, 1, 1}};
    for (const auto& r : rows) {  // pick1 x, pick2 y, sx, sy
        const double sx = r[2], sy = r[3];
        CLine2 x(-5, 0, 5, 0), y(0, -5, 0, 5);
        CDblPoint t1, t2;
        ExpectArc(CalFillet(x, {r[0], 0}, y, {0, r[1]}, 1, true, &t1, &t2), sx, sy, 1, -sy * kPi / 2,
                  -sx * sy * kPi / 2);
        EXPECT_TRUE(t1 == CDblPoint(sx, 0) && t2 == CDblPoint(0, sy));
        ExpectLine(x, sx > 0 ? CLine2(sx, 0, 5, 0) : CLine2(-5, 0, sx, 0));
        ExpectLine(y, sy > 0 ? CLine2(0, sy, 0, 5) : CLine2(0, -5, 0, sy));
    }
    // clang-format off
    struct Trim { CLine2 a, b, wantA, wantB; bool trim; } trims[] = {
        {{-9, 0, -3, 0}, {0, 9, 0, 2}, {-9, 0, -1, 0}, {0, 9, 0, 1}, true},
        {{2, 0, 6, 0}, {0, 5, 0, -5}, {2, 0, -1, 0}, {0, 5, 0, 1}, true},
        {{-9, 0, -3, 0}, {0, 9, 0, 2}, {-9, 0, -3, 0}, {0, 9, 0, 2}, false}};
    // clang-format on
    for (Trim& r : trims) {
        ExpectArc(CalFillet(r.a, {-5, 0}, r.b, {0, 5}, 1, r.trim), -1, 1, 1, -kPi / 2, kPi / 2);
        ExpectLine(r.a, r.wantA);
        ExpectLine(r.b, r.wantB);
    }
}

// By hand: y = 0 and the circle (0, 2) r 1 with R = 1 give centre (sqrt 3, 1), T1 (sqrt 3, 0), T2 (sqrt 3 / 2, 1.5);
// circles (0, 0) and (4, 0) r 1 with R = 1.5 give centre (2, +-1.5), T1 (0.8, +-0.6), a turn of 2 asin 0.8.
TEST(CalFillet, LinesArcsAndCirclesInEitherOrder) {
    CLine2 line(-10, 0, 10, 0), again(-10, 0, 10, 0);
    CCircle2 circle({0, 2}, 1), c1({0, 0}, 1), c2({4, 0}, 1);
    CDblPoint t2;
    ExpectArc(CalFillet(line, {5, 0}, circle, {2, 2}, 1, true, nullptr, &t2), kR3, 1, 1, -kPi / 2, -2 * kPi / 3);
    EXPECT_TRUE(t2 == CDblPoint(kR3 / 2, 1.5) && circle.centre == CDblPoint(0, 2) && circle.radius == 1);
    ExpectLine(line, {kR3, 0, 10, 0});
    CArc2 arc({0, 2}, 1, 0, kPi);
    ExpectArc(CalFillet(arc, {2, 2}, again, {5, 0}, 1, true), kR3, 1, 1, 5 * kPi / 6, 2 * kPi / 3);
    ExpectArc(arc, 0, 2, 1, -kPi / 6, 7 * kPi / 6);
    ExpectLine(again, {kR3, 0, 10, 0});
    const double turn = 2 * std::asin(0.8), start = std::atan2(-0.9, -1.2), a0 = std::atan(0.75);
    ExpectArc(CalFillet(c1, {0, 1.2}, c2, {4, 1.2}, 1.5, true), 2, 1.5, 1.5, start, turn);
    ExpectArc(CalFillet(c1, {0, -1.2}, c2, {4, -1.2}, 1.5, true), 2, -1.5, 1.5, -start, -turn);
    CArc2 a1({0, 0}, 1, 0, kPi), a2({4, 0}, 1, 0, kPi);
    ExpectArc(CalFillet(a1, {0, 1.2}, a2, {4, 1.2}, 1.5, true), 2, 1.5, 1.5, start, turn);
    ExpectArc(a1, 0, 0, 1, a0, kPi - a0);
    ExpectArc(a2, 4, 0, 1, 0, kPi - a0);
}

// By hand (turns checked with atan2 in Python): y = 0 and the circle r 2 about the origin, R = 1: outer fillets about
// (+-sqrt 8, +-1) turning acos(1/3), the inner one about (0, 1); circles r 1 about (-+2, 0): the fillet about (0, 0).
TEST(CalFillet, PicksChooseThePiecesTheCurvesCutEachOtherIntoAndTheSideOfAHalfCircle) {
    const double r8 = std::sqrt(8.0), turn = std::acos(1.0 / 3.0);
    // clang-format off
    struct Row { double p1x, p2y, cx, cy, start, sweep; } rows[] = {
        {4, 2, r8, 1, -kPi / 2, -turn}, {4, -2, r8, -1, kPi / 2, turn}, {-4, 2, -r8, 1, -kPi / 2, turn},
        {1, 2, 0, 1, -kPi / 2, -kPi}, {-1, 2, 0, 1, -kPi / 2, kPi}};
    // clang-format on
    for (const Row& r : rows) {
        CLine2 line(-5, 0, 5, 0);
        CCircle2 circle({0, 0}, 2), left({-2, 0}, 1), right({2, 0}, 1);
        ExpectArc(CalFillet(line, {r.p1x, 0}, circle, {0, r.p2y}, 1, false), r.cx, r.cy, 1, r.start, r.sweep);
        // Picks above the circles: the fillet leaves (-1, 0) downward, the lower half.
        ExpectArc(CalFillet(left, {-2, r.p2y / 2}, right, {2, r.p2y / 2}, 1, false), 0, 0, 1, kPi,
                  r.p2y > 0 ? kPi : -kPi);
    }
    // Lines at 30 degrees picked 0.1 from the corner keep the 30 degree corner (the tangent points of the wider
    // corner would lie nearer the picks): centre (1 / tan 15, 1) = (2 + sqrt 3, 1), a turn of 180 - 30 degrees.
    CLine2 x(-5, 0, 5, 0), slope(0, 0, 5 * kR3 / 2, 2.5);
    ExpectArc(CalFillet(x, {0.1, 0}, slope, {0.1 * kR3 / 2, 0.05}, 1, false), 2 + kR3, 1, 1, -kPi / 2, -5 * kPi / 6);
}

TEST(CalFillet, ImpossibleInputGivesTheNullArcAndChangesNothing) {
    const double nan = std::nan("");
    CLine2 x(-1, 0, 1, 0), y(0, -5, 0, 5), parallel(0, 2, 5, 2), dot(1, 1, 1, 1);
    CCircle2 far({0, 5}, 1), chord({0, 0}, 2), none;
    CArc2 flat({0, 0}, 1, 0.5, 0);
    CDblPoint t1(7, 7);
    const CDblPoint p(3, 0), q(0, 3);
    for (double R : {0.0, -1.0, nan, HUGE_VAL}) EXPECT_TRUE(CalFillet(x, p, y, q, R, true, &t1).IsNull());
    // clang-format off
    // Last: a gap of 4 is more than 2R; no circle of 1.5 in the half disc; T1 = (1, 0) is the end x keeps.
    const CArc2 results[] = {
        CalFillet(x, {nan, 0}, y, q, 1, true, &t1), CalFillet(x, p, parallel, q, 1, true, &t1),
        CalFillet(dot, p, y, q, 1, true, &t1), CalFillet(x, p, none, q, 1, true, &t1),
        CalFillet(flat, p, y, q, 1, true, &t1), CalFillet(x, p, far, q, 1, true, &t1),
        CalFillet(x, {1, 0}, chord, {0, 2}, 1.5, true, &t1), CalFillet(x, p, y, q, 1, true, &t1)};
    // clang-format on
    for (const CArc2& a : results) EXPECT_TRUE(a.IsNull());
    ExpectLine(x, {-1, 0, 1, 0});
    ExpectLine(y, {0, -5, 0, 5});
    EXPECT_TRUE(t1 == CDblPoint(7, 7) && flat.startAngle == 0.5 && far.radius == 1);
}
