#include <orvmath/arc2.h>
#include <orvmath/circle2.h>

#include <gtest/gtest.h>

#include <cmath>

using namespace ORVMATH;

namespace {

constexpr double kTol = 1e-9;
constexpr double kDeg = kPi / 180.0;

void ExpectPoint(const CDblPoint& p, double x, double y) {
    EXPECT_NEAR(p.x, x, kTol);
    EXPECT_NEAR(p.y, y, kTol);
}

bool Has(const CDblPointArray& pts, double x, double y) {
    for (INT_PTR i = 0; i < pts.GetSize(); ++i)
        if (std::fabs(pts[i].x - x) < 1e-9 && std::fabs(pts[i].y - y) < 1e-9) return true;
    return false;
}

// Radius 2 about the origin from 170 degrees over 20: through (-2, 0), across +-180.
const CArc2 kWrap(CDblPoint(0, 0), 2, 170 * kDeg, 20 * kDeg);

}  // namespace

TEST(CArc2, ConstructorNormalisesStartAndReducesSweepKeepingSign) {
    struct Row { double start, sweep, wantStart, wantSweep; } rows[] = {
        {1.5 * kPi, kPi / 2, -kPi / 2, kPi / 2},
        {-kPi, 1, kPi, 1},
        {-1.5 * kPi, -1, kPi / 2, -1},
        {0, 2 * kPi, 0, 2 * kPi},     // a full circle stays a full circle
        {0, -2 * kPi, 0, -2 * kPi},
        {0, 2.5 * kPi, 0, kPi / 2},
        {0, -2.5 * kPi, 0, -kPi / 2},
        {0, 4 * kPi, 0, 2 * kPi},     // whole turns are one full turn, not 0
        {1, 0, 1, 0},
    };
    for (const Row& r : rows) {
        const CArc2 a(CDblPoint(1, 2), 3, r.start, r.sweep);
        EXPECT_NEAR(a.startAngle, r.wantStart, kTol) << r.start << " " << r.sweep;
        EXPECT_NEAR(a.sweepAngle, r.wantSweep, kTol) << r.start << " " << r.sweep;
    }
    EXPECT_TRUE(CArc2().IsNull());
    EXPECT_FALSE(CArc2(CDblPoint(0, 0), 1, 0, 0).IsNull());
}

TEST(CArc2, PointsAndMeasuresAcrossPlusMinus180) {
    ExpectPoint(kWrap.StartPoint(), 2 * std::cos(170 * kDeg), 2 * std::sin(170 * kDeg));
    ExpectPoint(kWrap.EndPoint(), 2 * std::cos(170 * kDeg), -2 * std::sin(170 * kDeg));
    ExpectPoint(kWrap.MidPoint(), -2, 0);
    EXPECT_NEAR(kWrap.EndAngle(), -170 * kDeg, kTol);
    EXPECT_NEAR(kWrap.Length(), 2 * 20 * kDeg, kTol);
    EXPECT_NEAR(kWrap.TangentAngle(0.5), -kPi / 2, kTol);  // at 180 degrees, heading down
    EXPECT_NEAR(CArc2(CDblPoint(0, 0), 1, 0, -1).TangentAngle(0), -kPi / 2, kTol);
    ExpectPoint(kWrap.Chord().end, kWrap.EndPoint().x, kWrap.EndPoint().y);
}

TEST(CArc2, IsPointOnArcAcrossPlusMinus180) {
    const CArc2 clockwise(CDblPoint(0, 0), 2, -170 * kDeg, -20 * kDeg);  // the same points
    struct Row { double angleDeg, r, tol; bool on; } rows[] = {
        {180, 2, 1e-9, true},   {-175, 2, 1e-9, true}, {175, 2.05, 0.1, true},
        {0, 2, 0.1, false},     {90, 2, 0.1, false},
        // 5 degrees before the start: chord to the start 2 * 2 * sin(2.5 deg) = 0.1745
        {165, 2, 0.1, false},   {165, 2, 0.2, true},
    };
    for (const Row& r : rows) {
        const CDblPoint p(r.r * std::cos(r.angleDeg * kDeg), r.r * std::sin(r.angleDeg * kDeg));
        EXPECT_EQ(kWrap.IsPointOnArc(p, r.tol), r.on) << r.angleDeg;
        EXPECT_EQ(clockwise.IsPointOnArc(p, r.tol), r.on) << r.angleDeg;
    }
}

// The circle of radius 2 about the origin meets x = -1.6 at (-1.6, +-1.2),
// at +-143.13 degrees; the circle of radius 2 about (-3.2, 0) meets it there too.
TEST(CArc2, IntersectionsAcrossPlusMinus180) {
    const CArc2 both(CDblPoint(0, 0), 2, 140 * kDeg, 80 * kDeg);   // 140 .. 220 (= -140)
    const CArc2 upper(CDblPoint(0, 0), 2, 140 * kDeg, 40 * kDeg);  // 140 .. 180
    const CArc2 upperCw(CDblPoint(0, 0), 2, kPi, -40 * kDeg);      // 180 .. 140
    const CLine2 through(-1.6, -5, -1.6, 5), lowerHalf(-1.6, -5, -1.6, 0);
    CDblPointArray out;
    both.Intersection(through, out, false);
    EXPECT_TRUE(out.GetSize() == 2 && Has(out, -1.6, 1.2) && Has(out, -1.6, -1.2));
    upper.Intersection(through, out, false);
    EXPECT_TRUE(out.GetSize() == 1 && Has(out, -1.6, 1.2));
    both.Intersection(lowerHalf, out, false);
    EXPECT_TRUE(out.GetSize() == 1 && Has(out, -1.6, -1.2));
    lowerHalf.Intersection(both, out, true);
    EXPECT_EQ(out.GetSize(), 2);

    const CArc2 right(CDblPoint(-3.2, 0), 2, -kPi / 2, kPi);
    const CCircle2 circle(CDblPoint(-3.2, 0), 2);
    for (const CArc2* a : {&upper, &upperCw}) {
        a->Intersection(right, out);
        EXPECT_TRUE(out.GetSize() == 1 && Has(out, -1.6, 1.2));
        a->Intersection(circle, out);
        EXPECT_TRUE(out.GetSize() == 1 && Has(out, -1.6, 1.2));
    }
    both.Intersection(right, out);
    EXPECT_EQ(out.GetSize(), 2);
    CArc2 raw = upper;  // a start written directly, a turn out of range
    raw.startAngle += 2 * kPi;
    raw.Intersection(circle, out);
    EXPECT_TRUE(out.GetSize() == 1 && Has(out, -1.6, 1.2));
}

TEST(CArc2, MirrorReversesTheTurningSense) {
    const CArc2 a(CDblPoint(2, 1), 1, 0, kPi / 2);  // (3, 1) counter-clockwise to (2, 2)
    struct Row { CLine2 axis; double cx, cy, sx, sy, ex, ey, sweep; } rows[] = {
        {CLine2(0, 0, 1, 0), 2, -1, 3, -1, 2, -2, -kPi / 2},
        {CLine2(0, 0, 1, 1), 1, 2, 1, 3, 2, 2, -kPi / 2},
        {CLine2(0, 0, 0, 0), -2, -1, -3, -1, -2, -2, kPi / 2},  // a point: half turn, sense kept
    };
    for (const Row& r : rows) {
        const CArc2 m = a.Mirror(r.axis);
        ExpectPoint(m.centre, r.cx, r.cy);
        ExpectPoint(m.StartPoint(), r.sx, r.sy);
        ExpectPoint(m.EndPoint(), r.ex, r.ey);
        EXPECT_NEAR(m.sweepAngle, r.sweep, kTol);
    }
    EXPECT_DOUBLE_EQ(a.sweepAngle, kPi / 2);
}

TEST(CArc2, ReverseAndRotateKeepTheCurve) {
    const CArc2 r = kWrap.Reverse();
    ExpectPoint(r.StartPoint(), kWrap.EndPoint().x, kWrap.EndPoint().y);
    ExpectPoint(r.EndPoint(), kWrap.StartPoint().x, kWrap.StartPoint().y);
    EXPECT_NEAR(r.startAngle, -170 * kDeg, kTol);
    EXPECT_NEAR(r.sweepAngle, -20 * kDeg, kTol);

    const CArc2 t = kWrap.Rotate(CDblPoint(1, 0), kPi / 2);  // centre (0, 0) -> (1, -1)
    ExpectPoint(t.centre, 1, -1);
    EXPECT_NEAR(t.startAngle, -100 * kDeg, kTol);  // 170 + 90 = 260 = -100
}

TEST(CArc2, OffsetGoesLeftOfTravelAndEndsAtTheNullArc) {
    struct Row { double sweep, d, radius; } rows[] = {
        {1, 0.5, 1.5}, {-1, 0.5, 2.5}, {1, -1, 3},   // radius 2 to start with
        {1, 2, 0}, {1, 3, 0}, {-1, -2, 0}, {-1, -2.5, 0},
    };
    for (const Row& r : rows) {
        const CArc2 o = CArc2(CDblPoint(1, 1), 2, 0, r.sweep).Offset(r.d);
        EXPECT_EQ(o.IsNull(), r.radius == 0) << r.sweep << " " << r.d;
        if (r.radius > 0) ExpectPoint(o.StartPoint(), 1 + r.radius, 1);
    }
    EXPECT_TRUE(CArc2().Offset(-1).IsNull());
}
