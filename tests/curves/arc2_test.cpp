#include <orvmath/arc2.h>
#include <orvmath/circle2.h>

#include <gtest/gtest.h>

#include <cmath>
#include <utility>
#include <vector>

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

struct ArcRow {
    CArc2 got;
    double start, sweep;
};

static void ExpectArcs(const ArcRow* rows, std::size_t n) {
    for (const ArcRow* r = rows; r != rows + n; ++r)
        EXPECT_TRUE(std::fabs(NormalizeAng_Rad(r->got.startAngle - r->start)) < kTol &&
                    std::fabs(r->got.sweepAngle - r->sweep) < kTol)
            << "row " << r - rows << ": " << r->got.startAngle << " " << r->got.sweepAngle;
}

// P: radius 2 counter-clockwise from 0 over a quarter, Q its reverse: a length d turns the moved end by d / 2. A full
// turn stops lengthening; a trim at a point behind the start leaves sweep 0, NaN, a zero radius or the centre nothing.
TEST(CArc2, LengthEditsAndTrimsAtAPointMoveOneEndKeepingTheSense) {
    const CArc2 P(CDblPoint(0, 0), 2, 0, kPi / 2), Q = P.Reverse();
    const CDblPoint diag(3, 3);
    // clang-format off
    const ArcRow rows[] = {
        {P.LengthenEnd(kPi), 0, kPi}, {P.LengthenStart(kPi), -kPi / 2, kPi}, {Q.LengthenEnd(kPi), kPi / 2, -kPi},
        {Q.LengthenStart(1), kPi / 2 + 0.5, -kPi / 2 - 0.5}, {P.LengthenStart(100), kPi / 2, 2 * kPi},
        {P.LengthenEnd(-kPi), 0, 0}, {P.LengthenEnd(std::nan("")), 0, kPi / 2},
        {CArc2(CDblPoint(1, 1), 0, 0, 1).LengthenEnd(1), 0, 1}, {P.ExtendEndToAngle(-kPi / 2), 0, 1.5 * kPi},
        {P.ExtendEndToAngle(0), 0, 2 * kPi}, {P.ExtendStartToAngle(kPi), kPi, 1.5 * kPi},
        {Q.ExtendEndToAngle(kPi), kPi / 2, -1.5 * kPi}, {P.TrimEndAt(diag), 0, kPi / 4},
        {P.TrimStartAt(diag), kPi / 4, kPi / 4}, {Q.TrimEndAt(diag), kPi / 2, -kPi / 4},
        {P.TrimEndAt(CDblPoint(1, -0.1)), 0, 0}, {P.TrimEndAt(CDblPoint(0, 0)), 0, kPi / 2}};
    // clang-format on
    ExpectArcs(rows, std::size(rows));
    EXPECT_TRUE(P.LengthenEnd(-3.15).IsNull());  // more than its length pi
}

// By hand: x = 0.6 meets the unit circle at +-0.927295218 (atan2(0.8, 0.6)), y = -0.5 at -30 and 210 degrees (t -1/3,
// 7/3: the end takes the larger |t|), the unit circle about (1, 0) at +-60 degrees.
TEST(CArc2, ExTrimsChooseAsTheSegmentDoesAlongTheArc) {
    const double a = 0.927295218;
    const CArc2 U(CDblPoint(0, 0), 1, 0, kPi / 2), V = U.Reverse();
    const CLine2 x06(0.6, -5, 0.6, 5), yHalf(-5, -0.5, 5, -0.5);
    const CCircle2 c(CDblPoint(1, 0), 1);
    // clang-format off
    const ArcRow rows[] = {
        {U.ExTrimEnd(x06), 0, a}, {U.ExTrimStart(x06), a, kPi / 2 - a}, {V.ExTrimEnd(x06), kPi / 2, a - kPi / 2},
        {V.ExTrimStart(x06), a, -a}, {U.ExTrimEnd(yHalf), 0, 7 * kPi / 6}, {U.ExTrimStart(yHalf), -kPi / 6, 2 * kPi / 3},
        {U.ExTrimEnd(c), 0, kPi / 3}, {U.ExTrimStart(c), kPi / 3, kPi / 6},
        {U.ExTrimEnd(CArc2(c.centre, 1, 200 * kDeg, 60 * kDeg)), 0, 5 * kPi / 3},
        {U.ExTrimEnd(CLine2(0, 5, 1, 5)), 0, kPi / 2}};
    // clang-format on
    ExpectArcs(rows, std::size(rows));
}

// E: radius 2 about (1, 1), clockwise from -60 degrees over 240. Nearest (x, y, t, distance) and the boxes by brute
// force over 2e6 points of each arc (numpy); E's box also by hand: ends (2, 1 -+ sqrt 3), crossings of 90, 180, 270
// degrees. Equal arcs move no point by more than the point epsilon 1e-6: at radius 2, 1e-7 rad moves 2e-7.
TEST(CArc2, NearestPointBoundRectSplitAndTolerantEquality) {
    const CArc2 E(CDblPoint(1, 1), 2, -kPi / 3, -4 * kPi / 3);
    // clang-format off
    const double nears[][4] = {{-2, 1, 0.5, 1}, {4, 0.9, 0, 2.581393003}, {1.3213938048, 1.3830222216, 1, 1.5100942},
                               {0, -3, 0.183484, 2.123105626}, {1, 1, 0, 2}};
    const std::pair<CArc2, CDblRect> boxes[] = {
        {E, {-1, -1, 2, 3}}, {CArc2(CDblPoint(2, -1), 1, 0.3, 2 * kPi), {1, -2, 3, 0}},
        {CArc2(CDblPoint(0, 0), 1, 10 * kDeg, 30 * kDeg), {0.766044443, 0.173648178, 0.984807753, 0.64278761}}};
    const std::pair<CArc2, bool> eqs[] = {
        {E.Reverse(), true}, {E.Move(5e-7, 0), true}, {E.Move(2e-6, 0), false},
        {CArc2(E.centre, 2 + 5e-7, -kPi / 3, E.sweepAngle), true}, {CArc2(E.centre, 2, -kPi / 3 + 1e-7, E.sweepAngle), true},
        {CArc2(E.centre, 2, -kPi / 3 + 1e-6, E.sweepAngle), false}, {CArc2(E.centre, 2, -kPi / 3, 2 * kPi / 3), false}};
    // clang-format on
    for (const auto& r : nears) {
        EXPECT_NEAR(E.NearestParam(CDblPoint(r[0], r[1])), r[2], 1e-5) << r[0] << "," << r[1];
        EXPECT_NEAR(E.Distance(CDblPoint(r[0], r[1])), r[3], 1e-8) << r[0] << "," << r[1];
    }
    for (const auto& b : boxes) {
        const CDblRect g = b.first.GetBoundRect(), w = b.second;
        const double off = std::fabs(g.left - w.left) + std::fabs(g.top - w.top) + std::fabs(g.right - w.right);
        EXPECT_NEAR(off + std::fabs(g.bottom - w.bottom), 0, 1e-8) << w.left << " " << w.top;
    }
    CArc2 first, second;
    EXPECT_FALSE(E.Split(CDblPoint(4, 0.9), first, second));  // at the start
    ASSERT_TRUE(E.Split(CDblPoint(-2, 1), first, second));
    const ArcRow halves[] = {{first, -kPi / 3, -2 * kPi / 3}, {second, kPi, -2 * kPi / 3}};
    ExpectArcs(halves, 2);
    for (const auto& r : eqs) EXPECT_EQ(E == r.first, r.second) << r.first.startAngle << " " << r.first.sweepAngle;
}

template <class A, class B, class... Extend>
static CDblPointArray Points(const A& a, const B& b, Extend... extend) {
    CDblPointArray out;
    out.Add(CDblPoint(9, 9));  // emptied first
    a.Intersection(b, out, extend...);
    return out;
}

// Every pair against shapely on polylines of 2e5 points per curve, ordered by the stated rule. L: (-3, -1) to
// (1, 0.4), LR its reverse; C: radius 2 about the origin, D: 1.5 about (2.5, 1); A on C from -30 degrees over 200,
// A2 on C from 30 over 200, F all of C; B on D from 140 over 120. The tangent y = 2 touches C at (0, 2), once.
TEST(CurveIntersections, EveryPairInTheStatedOrder) {
    const CLine2 L(-3, -1, 1, 0.4);
    const CCircle2 C(CDblPoint(0, 0), 2), D(CDblPoint(2.5, 1), 1.5);
    const CArc2 A(C.centre, 2, -30 * kDeg, 200 * kDeg), A2(C.centre, 2, 30 * kDeg, 200 * kDeg),
        F(C.centre, 2, 0, 2 * kPi), B(D.centre, 1.5, 140 * kDeg, 120 * kDeg);
    const CDblPoint l0(-1.902781306, -0.615973457), l1(1.871600905, 0.705060317);
    const CDblPoint up(1.143718636, 1.640703411), down(1.95972964, -0.3993241);
    // clang-format off
    const std::pair<CDblPointArray, std::vector<CDblPoint>> rows[] = {
        {Points(L, C, false), {l0}}, {Points(L, C, true), {l0, l1}}, {Points(C, L.Reverse(), true), {l1, l0}},
        {Points(L, A2, true), {l0}}, {Points(A2, L, true), {l0}}, {Points(F, L, true), {l0, l1}},
        {Points(C, D), {up, down}}, {Points(D, C), {down, up}}, {Points(A, D), {down, up}}, {Points(D, A2), {up}},
        {Points(A, B), {down, up}}, {Points(B, A), {up, down}}, {Points(C, B), {up, down}},
        {Points(C, CLine2(-1, 2, 1, 2), false), {CDblPoint(0, 2)}}, {Points(C, L, false), {l0}}};
    // clang-format on
    for (const auto& r : rows) {
        ASSERT_EQ(r.first.GetSize(), static_cast<INT_PTR>(r.second.size())) << "row " << &r - rows;
        for (std::size_t k = 0; k < r.second.size(); ++k)
            EXPECT_TRUE(std::fabs(r.first[k].x - r.second[k].x) < 1e-7 &&
                        std::fabs(r.first[k].y - r.second[k].y) < 1e-7)
                << "row " << &r - rows << " point " << k << ": " << r.first[k].x << "," << r.first[k].y;
    }
}
