#include <orvmath/angle.h>
#include <orvmath/intersect.h>
#include <orvmath/pointline.h>

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <vector>

using namespace ORVMATH;

constexpr double kTol = 1e-9, kDeg = kPi / 180;
const double kS45 = std::sqrt(0.5), kS75 = std::sqrt(0.75);

static void ExpectPoints(const CDblPointArray& out, const std::vector<CDblPoint>& want, double tol = kTol) {
    ASSERT_EQ(out.GetSize(), static_cast<INT_PTR>(want.size()));
    for (INT_PTR k = 0; k < out.GetSize(); ++k)
        EXPECT_TRUE(std::fabs(out[k].x - want[k].x) <= tol && std::fabs(out[k].y - want[k].y) <= tol)
            << "point " << k << ": " << out[k].x << "," << out[k].y;
}

static CDblPoint Polar(double d, double r = 1) { return CDblPoint(r * std::cos(d * kDeg), r * std::sin(d * kDeg)); }

// An array holding one stale point, to show that a function empties it.
static CDblPointArray Stale() { CDblPointArray a; a.Add(-99, -99); return a; }

// Runs each row's call on a stale array and compares the result with the row's points.
template <std::size_t N, class Row, class Call>
static void ExpectRows(const Row (&rows)[N], Call call, double tol = kTol) {
    for (std::size_t i = 0; i < N; ++i) {
        SCOPED_TRACE(testing::Message() << "row " << i);
        CDblPointArray out = Stale();
        call(rows[i], out);
        ExpectPoints(out, rows[i].want, tol);
    }
}

TEST(XLineLine, SegmentFormBoundsExtensionsSharedEndsAndDegenerateSegments) {
    struct Row { CDblPoint p1, p2, q1, q2; int how; std::vector<CDblPoint> want; };
    const CDblPoint o(0, 0), x1(1, 0), q1(0.5, 1), q2(0.5, 2);
    const Row rows[] = {
        {o, {2, 2}, {0, 2}, {2, 0}, 0, {{1, 1}}},
        // Up to CDistanceEpsilon (0.001) beyond an end counts as on the segment.
        {o, x1, {1.0005, -1}, {1.0005, 1}, 0, {{1.0005, 0}}}, {o, x1, {1.002, -1}, {1.002, 1}, 0, {}},
        {o, x1, {1.002, -1}, {1.002, 1}, 1, {{1.002, 0}}},    {o, x1, {-0.0009, -1}, {-0.0009, 1}, 0, {{-0.0009, 0}}},
        // The same from the side: an end 0.0005 off the other segment still meets it at (0.5, 0), from either
        // operand; 0.002 off, both ends lie beyond the slack on one side of the other's line.
        {o, x1, {0.5, 0.0005}, {0.5, 1}, 0, {{0.5, 0}}}, {{0.5, -0.0005}, {0.5, -1}, o, x1, 0, {{0.5, 0}}},
        {o, x1, {0.5, 0.002}, {0.5, 1}, 0, {}}, {{0.5, 0.002}, {0.5, 1}, o, x1, 0, {}},
        // The second segment stops 1 short of the first's line: only bit 1 reaches it.
        {o, x1, q1, q2, 1, {}}, {o, x1, q1, q2, 2, {{0.5, 0}}}, {o, x1, q1, q2, 3, {{0.5, 0}}},
        // Collinear: nothing, unless an end is shared and how is 0.
        {o, {2, 0}, x1, {3, 0}, 0, {}}, {o, x1, x1, {2, 0}, 0, {{1, 0}}}, {o, x1, {2, 0}, x1, 0, {{1, 0}}},
        {o, x1, x1, {2, 0}, 1, {}},
        // A point-sized segment is reported when within 1e-6 of the other's infinite line, however far beyond its ends.
        {{5, 0}, {5, 0}, o, x1, 0, {{5, 0}}}, {{0.5, 1e-7}, {0.5, 1e-7}, o, x1, 0, {{0.5, 1e-7}}},
        {{0.5, 1e-3}, {0.5, 1e-3}, o, x1, 0, {}}, {o, x1, {-3, 0}, {-3, 0}, 0, {{-3, 0}}},
        {{5, 5}, {5, 5}, {7, 7}, {7, 7}, 0, {}},
    };
    ExpectRows(rows, [](const Row& r, CDblPointArray& out) {
        XLineLine(r.p1, r.p2, r.q1, r.q2, out, static_cast<ExtendType>(r.how));
    });
    CEpsilonReserveDistance wide(0.01);  // the end slack is the distance epsilon in force
    CDblPointArray out;
    XLineLine(CDblPoint(0, 0), CDblPoint(1, 0), CDblPoint(1.002, -1), CDblPoint(1.002, 1), out, ExtendNone);
    ExpectPoints(out, {{1.002, 0}});
}

TEST(XLineLine, EquationAndTwoPointFormsRefuseNearParallels) {
    CDblPoint x(9, 9);
    EXPECT_FALSE(XLineLine(0, 0, 1, 1, 1, 0, x));
    EXPECT_FALSE(XLineLine(1, 1, 0, 2, 2, 5, x));
    // Normals (1, 0) and (1, t): |det/dot| = t, refused below 8.46097e-9.
    EXPECT_FALSE(XLineLine(1, 0, 0, 1, 1e-9, -1, x));
    EXPECT_EQ(x.x, 9.0);
    ASSERT_TRUE(XLineLine(1, 0, 0, 1, 1e-8, -1, x));  // x = 0 and x + 1e-8 y = 1
    EXPECT_NEAR(x.y, 1e8, 1e-3);
    ASSERT_TRUE(XLineLine(1, 0, -2, 0, 1, -3, x));  // perpendicular: no ratio test
    EXPECT_TRUE(x.x == 2.0 && x.y == 3.0);
    const CDblPoint base(1e6, -1e6);
    ASSERT_TRUE(XLineLine(base, base + CDblPoint(2, 2), base + CDblPoint(0, 2), base + CDblPoint(2, 0), x));
    EXPECT_TRUE(std::fabs(x.x - 1e6 - 1) < kTol && std::fabs(x.y + 1e6 - 1) < kTol);
    EXPECT_FALSE(XLineLine(base, base + CDblPoint(5e-7, 0), CDblPoint(0, 0), CDblPoint(0, 1), x));
}

TEST(XLineCircle, EquationFormRootOrderTangencyAndFilters) {
    struct Row { double a, b, c, cx; std::vector<CDblPoint> want; };  // the unit circle about (cx, 0)
    const Row rows[] = {
        {0, 1, -0.6, 0, {{0.8, 0.6}, {-0.8, 0.6}}},     // y eliminated (|b| > |a|): larger x first
        {1, -1, 0, 0, {{kS45, kS45}, {-kS45, -kS45}}},  // |b| == |a|: x eliminated, larger y first
        {1, 0, -0.6, 0, {{0.6, 0.8}, {0.6, -0.8}}}, {2, 0, -2, 0, {{1, 0}}},  // vertical: upper first; tangent once
        // Exact tangent y = 1: the zero discriminant gives its double root twice, so two equal
        // points; only a conjugate pair (below) is cut down to one.
        {0, 1, -1, 0, {{0, 1}, {0, 1}}},
        // y = 1 + d: roots 0 +- i*sqrt(2d + d^2). A conjugate pair with a small
        // imaginary part yields its one tangent point.
        {0, 1, -(1 + 1e-9), 0, {{0, 1 + 1e-9}}}, {0, 1, -2, 0, {}},
        {0, 1, -1.00004, 0, {{0, 1.00004}}}, {0, 1, -1.00006, 0, {}},  // |im| 0.00894 < 0.01; 0.01095
        // Real part 100: |im|/100 passes, so the radial filter (1e-4 relative) decides.
        {0, 1, -1.00005, 100, {{100, 1.00005}}}, {0, 1, -1.001, 100, {}}, {0, 0, 1, 0, {}},
    };
    ExpectRows(rows, [](const Row& r, CDblPointArray& out) { XLineCircle(r.a, r.b, r.c, r.cx, 0, 1, out); }, 1e-7);
}

TEST(XLineCircle, SegmentFormsKeepPointsBetweenTheEndsOrAppendWithinATolerance) {
    struct Row { CDblPoint p1, p2; int how; std::vector<CDblPoint> want; };
    const Row rows[] = {
        {{8, 20.6}, {12, 20.6}, 0, {{10.8, 20.6}, {9.2, 20.6}}}, {{10, 20.6}, {12, 20.6}, 0, {{10.8, 20.6}}},
        {{10, 20.6}, {12, 20.6}, 1, {{10.8, 20.6}, {9.2, 20.6}}},
        // (X - p1).(X - p2) up to 1e-8 counts as between: 0.8 * 1e-9 kept, 0.8 * 1e-7 not.
        {{10, 20.6}, {10.8 - 1e-9, 20.6}, 0, {{10.8, 20.6}}}, {{10, 20.6}, {10.8 - 1e-7, 20.6}, 0, {}},
        {{10, 20}, {10.0000005, 20}, 1, {}},  // no line
    };
    ExpectRows(rows, [](const Row& r, CDblPointArray& out) {
        XLineCircle(r.p1, r.p2, 10, 20, 1, out, static_cast<ExtendType>(r.how));
    });
    // The tolerance form appends, the point farther along the direction first.
    CDblPointArray out = Stale();
    const CDblPoint c(0, 0);
    XLineCircle(CDblPoint(-2, 0.6), CDblPoint(2, 0.6), c, 1, out, 1e-6);
    XLineCircle(CDblPoint(2, 0.6), CDblPoint(-2, 0.6), c, 1, out, 1e-6);  // reversed
    ExpectPoints(out, {{-99, -99}, {0.8, 0.6}, {-0.8, 0.6}, {-0.8, 0.6}, {0.8, 0.6}});
    // y = 1 + 1e-9: disc = -2e-9 > -tol^2; the two parameters 2*sqrt(2e-9) apart merge.
    out.RemoveAll();
    XLineCircle(CDblPoint(-2, 1 + 1e-9), CDblPoint(2, 1 + 1e-9), c, 1, out, 1e-3);
    XLineCircle(CDblPoint(-2, 1.01), CDblPoint(2, 1.01), c, 1, out, 1e-3);  // misses by 0.01
    XLineCircle(CDblPoint(1, 1), CDblPoint(1, 1.0001), c, 1, out, 1e-3);    // shorter than tol
    ExpectPoints(out, {{0, 1 + 1e-9}});
}

TEST(XCircleCircle, ContactSlackRadicalLineAndNesting) {
    struct Row { double x2, y2, r1, r2; std::vector<CDblPoint> want; };  // the first centre is the origin
    const Row rows[] = {
        {2, 0, 1, 1, {{1, 0}}}, {2.0001, 0, 1, 1, {{1.00005, 0}}}, {2.0003, 0, 1, 1, {}},  // gap 0.0001 <= 0.0001 * 2
        {3, 0, 1, 1, {}}, {1, 0, 2, 1, {{2, 0}}}, {1, 0, 5, 1, {}}, {0, 0, 1, 2, {}},  // internal tangent; nested
        {1, 0, 1, 1, {{0.5, kS75}, {0.5, -kS75}}}, {0, 8, 5, 5, {{3, 4}, {-3, 4}}},  // radical lines x = 0.5, y = 4
    };
    ExpectRows(rows, [](const Row& r, CDblPointArray& out) { XCircleCircle(0, 0, r.r1, r.x2, r.y2, r.r2, out); });
}

TEST(XArcs, SectorFilterSlackWrapAndStartNormalisation) {
    // A line through the centre c in direction lineDeg meets the unit circle at lineDeg and lineDeg + 180.
    const CDblPoint c(3, -2);
    auto at = [&](double deg) { return c + Polar(deg); };
    struct Row { double lineDeg, start, sweep; int how; std::vector<CDblPoint> want; };
    const Row rows[] = {
        {45, 0, 90, 1, {at(45)}}, {135, 0, 90, 1, {}},
        {120, 0, 90, 3, {at(120), at(-60)}},  // root order: y = +sin first; not 135, where a and b tie
        {45, 90, -90, 1, {at(45)}}, {-0.00005, 0, 90, 1, {at(-0.00005)}}, {-0.0002, 0, 90, 1, {}},
        {0, 170, 20, 1, {at(180)}}, {5, 170, 20, 1, {at(-175)}}, {0, 530, 20, 1, {at(180)}},
        {0, -170, -20, 1, {at(180)}}, {45, 0, 90, 0, {}},  // the bounded segment stops at radius 0.5
    };
    ExpectRows(rows, [&](const Row& r, CDblPointArray& out) {
        XLineArc(c, c + Polar(r.lineDeg, 0.5), c.x, c.y, 1, r.start, r.sweep, out, static_cast<ExtendType>(r.how));
    });
    CDblPointArray out = Stale();  // the other forms keep only points on every arc
    XLineArc(1, -1, 0, 0, 0, 1, 0, 90, out);  // x = y through a quarter arc
    ExpectPoints(out, {{kS45, kS45}});
    // Circles (0,0,1) and (1,0,1) meet at (0.5, +-0.866): +-60 degrees about the first centre, +-120 about the second.
    XCircleArc(0, 0, 1, 1, 0, 1, 90, 90, out);
    ExpectPoints(out, {{0.5, kS75}});
    XArcArc(0, 0, 1, -90, 90, 1, 0, 1, 180, 90, out);  // second arc 180..270 runs through 180
    ExpectPoints(out, {{0.5, -kS75}});
    XArcArc(0, 0, 1, -90, 90, 1, 0, 1, 90, 90, out);
    EXPECT_EQ(out.GetSize(), 0);
}

TEST(XLineEllipse, PointsLieOnBothCurvesInLineDirectionOrder) {
    // Ellipse centre (1, 2), semi-axes 3 and 2; P and Q on it at parametric 30 and 200 degrees.
    const double cx = 1, cy = 2, ea = 3, eb = 2;
    const CDblPoint P(cx + ea * std::cos(kPi / 6), cy + eb * std::sin(kPi / 6));
    const CDblPoint Q(cx + ea * std::cos(200 / kRadToDeg), cy + eb * std::sin(200 / kRadToDeg));
    double A = 0, B = 0, C = 0;
    ASSERT_TRUE(CalLineABC(Q, P, A, B, C));  // (-B, A) = Q - P: the direction runs P -> Q
    CDblPointArray out = Stale();
    XLineEllipse(A, B, C, cx, cy, ea, eb, out);
    ExpectPoints(out, {Q, P});  // the point farther along the direction first
    XLineEllipse(-A, -B, -C, cx, cy, -ea, eb, out);  // reversed; the sign of a semi-axis is ignored
    ExpectPoints(out, {P, Q});
    // Tangent y = 4 touches at (1, 4), and still does within 1e-10 of a semi-axis; beyond, nothing.
    struct Row { double a, b, c, ea; std::vector<CDblPoint> want; } rows[] = {
        {0, 1, -4.0, 3, {{1, 4}}}, {0, 1, -4.0 - 1e-11, 3, {{1, 4}}}, {0, 1, -4.0 + 1e-11, 3, {{1, 4}}},
        {0, 1, -4.001, 3, {}}, {1, 0, 0, 0, {}},  // a flat ellipse gives nothing
    };
    ExpectRows(rows, [&](const Row& r, CDblPointArray& o) { XLineEllipse(r.a, r.b, r.c, cx, cy, r.ea, eb, o); });
}

TEST(XEllipseEllipse, CommonPointsInParametricOrderOnTheFirstEllipse) {
    const double s = std::sqrt(0.8);  // x^2/4 + y^2 = 1 and x^2 + y^2/4 = 1 meet where x^2 = y^2 = 0.8
    // By hand: the circle (x-1)^2 + y^2 = 1 in x^2/4 + y^2 = 1 leaves -(3c + 1)(c - 1)/4 at x = 1 + c: c = 1, -1/3.
    const double r8 = std::sqrt(8.0) / 3;
    // A small circle at the right vertex: 0.0075c^2 - 0.1c - 0.01 = 0 by hand; the order runs across angle 0.
    const double c = (0.1 - std::sqrt(0.01 + 0.0003)) / 0.015, y = 0.1 * std::sqrt(1 - c * c);
    // P and its mirror image on x^2/9 + y^2/4 = 1, and on the ellipse about (4, 0) whose y semi-axis b2 is fitted to P.
    const CDblPoint P(3 * std::cos(40 / kRadToDeg), 2 * std::sin(40 / kRadToDeg));
    const double b2 = P.y / std::sqrt(1 - std::pow((P.x - 4) / 2, 2));
    // Its copy moved by (1.8, 1.6): in u = x/3, v = y/2 unit circles meeting at (0.3, 0.4) -+ sqrt(0.75) (0.8, -0.6).
    const double h = std::sqrt(0.75);
    // The unit circle about the top vertex: 5y^2 + 16y - 48 = 0 by hand; the first ellipse's order: right point first.
    const double yt = (std::sqrt(1216.0) - 16) / 10, xt = std::sqrt(1 - (yt - 2) * (yt - 2));
    const CDblRect wide(-2, -1, 2, 1), tall(-1, -2, 1, 2), big(-3, -2, 3, 2);
    struct Row { CDblRect e1, e2; std::vector<CDblPoint> want; double s1 = 0, w1 = 360, s2 = 0, w2 = 360; };
    const Row rows[] = {
        {wide, tall, {{s, s}, {-s, s}, {-s, -s}, {s, -s}}},
        {wide, tall, {{s, s}, {-s, s}}, 0, 180}, {wide, tall, {{-s, s}}, 0, 180, 90, 90},  // parts of the curves
        {wide, {0, -1, 2, 1}, {{2, 0}, {2.0 / 3, r8}, {2.0 / 3, -r8}}},
        {wide, {1.9, -0.1, 2.1, 0.1}, {{2 + 0.1 * c, y}, {2 + 0.1 * c, -y}}},
        {big, {2, -b2, 6, b2}, {P, {P.x, -P.y}}},
        {big, {-1.2, -0.4, 4.8, 3.6}, {{0.9 - 2.4 * h, 0.8 + 1.2 * h}, {0.9 + 2.4 * h, 0.8 - 1.2 * h}}},
        {big, {-1, 1, 1, 3}, {{xt, yt}, {-xt, yt}}},
        {wide, wide, {}}, {wide, {5, 5, 6, 6}, {}}, {wide, {-1, 0, 1, 0}, {}},  // coincident, apart, degenerate
    };
    ExpectRows(rows, [](const Row& r, CDblPointArray& o) { XEllipseEllipse(r.e1, r.e2, r.s1, r.w1, r.s2, r.w2, o); });
    // Two circles touching at 37 degrees: one point. A tangent point is ill-conditioned, hence 1e-6.
    const CDblPoint t = Polar(37), m = Polar(37, 2);
    CDblPointArray out;
    XEllipseEllipse(CDblRect(-1, -1, 1, 1), CDblRect(m.x - 1, m.y - 1, m.x + 1, m.y + 1), 0, 360, 0, 360, out);
    ExpectPoints(out, {t}, 1e-6);
}

// The early rejection of segment pairs by their boxes changes no answer: against the full computation (the lines'
// intersection, then each segment's end rule with the distance epsilon) on pairs that miss, touch within the epsilon,
// end just beyond it and cross, at small and large coordinates.
TEST(XLineLine, BoxRejectionKeepsEveryAnswer) {
    std::mt19937 rng(21);
    std::uniform_int_distribution<int> grid(0, 4);
    std::uniform_real_distribution<double> jitter(-2.5e-3, 2.5e-3);
    const auto onSegment = [](const CDblPoint& x, const CDblPoint& a, const CDblPoint& b) {
        const double t = ProjectOnLine(x, a, b);
        return t < 0 ? Distance(x, a) <= 1e-3 : t > 1 ? Distance(x, b) <= 1e-3 : true;
    };
    for (double base : {0.0, 1e6}) {
        for (int k = 0; k < 20000; ++k) {
            CDblPoint v[4];
            for (CDblPoint& p : v) p = CDblPoint(base + grid(rng) + jitter(rng), base + grid(rng) + jitter(rng));
            if (v[0] == v[1] || v[2] == v[3] || v[0] == v[2] || v[0] == v[3] || v[1] == v[2] || v[1] == v[3])
                continue;  // shared ends and point segments are settled before any box is looked at
            CDblPointArray got;
            XLineLine(v[0], v[1], v[2], v[3], got, ExtendType(0));
            CDblPoint x;
            const bool want = XLineLine(v[0], v[1], v[2], v[3], x) && onSegment(x, v[0], v[1]) && onSegment(x, v[2], v[3]);
            ASSERT_EQ(got.GetSize(), want ? 1 : 0) << k;
            if (want) {
                ASSERT_TRUE(got[0].x == x.x && got[0].y == x.y) << k;
            }
        }
    }
}
