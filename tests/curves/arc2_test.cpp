#include <orvmath/arc2.h>
#include <orvmath/circle2.h>

#include <gtest/gtest.h>

#include <cmath>

using namespace ORVMATH;

constexpr double kTol = 1e-9, kDeg = kPi / 180.0;

static void ExpectPoint(const CDblPoint& p, double x, double y) {
    EXPECT_TRUE(std::fabs(p.x - x) < kTol && std::fabs(p.y - y) < kTol) << p.x << "," << p.y << " vs " << x << "," << y;
}

// Scores the points of a.Intersection(b, ...): 1 for each (-1.6, 1.2), 10 for each (-1.6, -1.2), 100 for others.
template <class A, class B, class... Extend>
static int Hits(const A& a, const B& b, Extend... extend) {
    CDblPointArray out;
    a.Intersection(b, out, extend...);
    int s = 0;
    for (INT_PTR i = 0; i < out.GetSize(); ++i)
        s += out[i] == CDblPoint(-1.6, 1.2) ? 1 : out[i] == CDblPoint(-1.6, -1.2) ? 10 : 100;
    return s;
}

// Radius 2 about the origin from 170 degrees over 20: through (-2, 0), across +-180.
const CArc2 kWrap(CDblPoint(0, 0), 2, 170 * kDeg, 20 * kDeg);

TEST(CArc2, ConstructorNormalisesStartAndReducesSweepKeepingSign) {
    struct Row { double start, sweep, wantStart, wantSweep; } rows[] = {
        {1.5 * kPi, kPi / 2, -kPi / 2, kPi / 2}, {-kPi, 1, kPi, 1}, {-1.5 * kPi, -1, kPi / 2, -1},
        {0, 2 * kPi, 0, 2 * kPi}, {0, -2 * kPi, 0, -2 * kPi},  // a full circle stays a full circle
        {0, 2.5 * kPi, 0, kPi / 2}, {0, -2.5 * kPi, 0, -kPi / 2},
        {0, 4 * kPi, 0, 2 * kPi}, {1, 0, 1, 0},  // whole turns are one full turn, not 0
    };
    for (const Row& r : rows) {
        const CArc2 a(CDblPoint(1, 2), 3, r.start, r.sweep);
        EXPECT_TRUE(std::fabs(a.startAngle - r.wantStart) < kTol && std::fabs(a.sweepAngle - r.wantSweep) < kTol)
            << r.start << " " << r.sweep << ": " << a.startAngle << " " << a.sweepAngle;
    }
    EXPECT_TRUE(CArc2().IsNull() && !CArc2(CDblPoint(0, 0), 1, 0, 0).IsNull());
}

TEST(CArc2, PointsReverseRotateAndOnArcTestAcrossPlusMinus180) {
    ExpectPoint(kWrap.MidPoint(), -2, 0);
    EXPECT_NEAR(kWrap.EndAngle(), -170 * kDeg, kTol);
    EXPECT_NEAR(kWrap.TangentAngle(0.5), -kPi / 2, kTol);  // at 180 degrees, heading down
    EXPECT_NEAR(CArc2(CDblPoint(0, 0), 1, 0, -1).TangentAngle(0), -kPi / 2, kTol);
    const CArc2 rev = kWrap.Reverse(), t = kWrap.Rotate(CDblPoint(1, 0), kPi / 2);
    EXPECT_NEAR(rev.startAngle, -170 * kDeg, kTol);  // the old end
    EXPECT_NEAR(rev.sweepAngle, -20 * kDeg, kTol);
    ExpectPoint(t.centre, 1, -1);                  // (0, 0) a quarter turn about (1, 0)
    EXPECT_NEAR(t.startAngle, -100 * kDeg, kTol);  // 170 + 90 = 260 = -100
    // rev runs clockwise over the same points. 5 degrees before the start of kWrap,
    // the chord to the start is 2 * 2 * sin(2.5 deg) = 0.1745.
    struct Row { double angleDeg, r, tol; bool on; } rows[] = {
        {180, 2, 1e-9, true}, {-175, 2, 1e-9, true}, {175, 2.05, 0.1, true}, {0, 2, 0.1, false},
        {90, 2, 0.1, false},  {165, 2, 0.1, false},  {165, 2, 0.2, true},
    };
    for (const Row& r : rows) {
        const CDblPoint p(r.r * std::cos(r.angleDeg * kDeg), r.r * std::sin(r.angleDeg * kDeg));
        EXPECT_TRUE(kWrap.IsPointOnArc(p, r.tol) == r.on && rev.IsPointOnArc(p, r.tol) == r.on) << r.angleDeg;
    }
}

// The circle of radius 2 about the origin meets x = -1.6 at (-1.6, +-1.2),
// at +-143.13 degrees; the circle of radius 2 about (-3.2, 0) meets it there too.
TEST(CArc2, IntersectionsAcrossPlusMinus180) {
    const CArc2 both(CDblPoint(0, 0), 2, 140 * kDeg, 80 * kDeg);   // 140 .. 220 (= -140)
    const CArc2 upper(CDblPoint(0, 0), 2, 140 * kDeg, 40 * kDeg);  // 140 .. 180
    const CArc2 upperCw(CDblPoint(0, 0), 2, kPi, -40 * kDeg);      // 180 .. 140
    const CArc2 right(CDblPoint(-3.2, 0), 2, -kPi / 2, kPi);
    const CCircle2 circle(CDblPoint(-3.2, 0), 2);
    const CLine2 through(-1.6, -5, -1.6, 5), lowerHalf(-1.6, -5, -1.6, 0);
    EXPECT_EQ(Hits(both, through, false), 11);
    EXPECT_EQ(Hits(upper, through, false), 1);
    EXPECT_EQ(Hits(both, lowerHalf, false), 10);
    EXPECT_EQ(Hits(lowerHalf, both, true), 11);
    for (const CArc2* a : {&upper, &upperCw}) EXPECT_TRUE(Hits(*a, right) == 1 && Hits(*a, circle) == 1);
    EXPECT_EQ(Hits(both, right), 11);
    CArc2 raw = upper;  // a start written directly, a turn out of range
    raw.startAngle += 2 * kPi;
    EXPECT_EQ(Hits(raw, circle), 1);
}

TEST(CArc2, MirrorReversesTheTurningSenseAndOffsetsEndAtTheNullArc) {
    const CArc2 a(CDblPoint(2, 1), 1, 0, kPi / 2);  // (3, 1) counter-clockwise to (2, 2)
    struct Row { CLine2 axis; double sx, sy, ex, ey, sweep; } rows[] = {
        {CLine2(0, 0, 1, 0), 3, -1, 2, -2, -kPi / 2}, {CLine2(0, 0, 1, 1), 1, 3, 2, 2, -kPi / 2},
        {CLine2(0, 0, 0, 0), -3, -1, -2, -2, kPi / 2},  // a point: half turn, sense kept
    };
    for (const Row& r : rows) {
        const CArc2 m = a.Mirror(r.axis);
        ExpectPoint(m.StartPoint(), r.sx, r.sy);
        ExpectPoint(m.EndPoint(), r.ex, r.ey);
        EXPECT_NEAR(m.sweepAngle, r.sweep, kTol);
    }
    // Offsets go left of the direction of travel; radius 2 to start with.
    struct Off { double sweep, d, radius; } offs[] = {
        {1, 0.5, 1.5}, {-1, 0.5, 2.5}, {1, -1, 3}, {1, 2, 0}, {1, 3, 0}, {-1, -2, 0}, {-1, -2.5, 0},
    };
    for (const Off& r : offs) {
        const CArc2 o = CArc2(CDblPoint(1, 1), 2, 0, r.sweep).Offset(r.d);
        EXPECT_EQ(o.IsNull(), r.radius == 0) << r.sweep << " " << r.d;
        if (r.radius > 0) ExpectPoint(o.StartPoint(), 1 + r.radius, 1);
    }
    EXPECT_TRUE(CArc2().Offset(-1).IsNull());
}
