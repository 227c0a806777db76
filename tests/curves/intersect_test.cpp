#include <orvmath/angle.h>
#include <orvmath/intersect.h>
#include <orvmath/pointline.h>

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

using namespace ORVMATH;

namespace {

constexpr double kTol = 1e-9;
const double kS45 = std::sqrt(0.5);

void ExpectPoints(const CDblPointArray& out, const std::vector<CDblPoint>& want, double tol = kTol) {
    ASSERT_EQ(out.GetSize(), static_cast<INT_PTR>(want.size()));
    for (std::size_t k = 0; k < want.size(); ++k) {
        EXPECT_NEAR(out[static_cast<INT_PTR>(k)].x, want[k].x, tol) << "point " << k;
        EXPECT_NEAR(out[static_cast<INT_PTR>(k)].y, want[k].y, tol) << "point " << k;
    }
}

CDblPoint Polar(double deg, double r = 1.0) { return CDblPoint(r * std::cos(deg / kRadToDeg), r * std::sin(deg / kRadToDeg)); }

// An array holding one stale point, to show that a function empties it.
CDblPointArray Stale() {
    CDblPointArray a;
    a.Add(-99, -99);
    return a;
}

// Residual of ((p - c)/semi-axes)^2 = 1.
double OnEllipse(const CDblPoint& p, double cx, double cy, double a, double b) {
    const double u = (p.x - cx) / a, v = (p.y - cy) / b;
    return u * u + v * v - 1.0;
}

}  // namespace

TEST(XLineLine, SegmentFormBoundsExtensionsSharedEndsAndDegenerateSegments) {
    struct Row {
        CDblPoint p1, p2, q1, q2;
        int how;
        std::vector<CDblPoint> want;
    };
    const CDblPoint o(0, 0), x1(1, 0);
    const Row rows[] = {
        {o, {2, 2}, {0, 2}, {2, 0}, 0, {{1, 1}}},
        // Up to CDistanceEpsilon (0.001) beyond an end counts as on the segment.
        {o, x1, {1.0005, -1}, {1.0005, 1}, 0, {{1.0005, 0}}},
        {o, x1, {1.002, -1}, {1.002, 1}, 0, {}},
        {o, x1, {1.002, -1}, {1.002, 1}, 1, {{1.002, 0}}},
        {o, x1, {-0.0009, -1}, {-0.0009, 1}, 0, {{-0.0009, 0}}},
        // The second segment stops 1 short of the first's line: only bit 1 reaches it.
        {o, x1, {0.5, 1}, {0.5, 2}, 0, {}},
        {o, x1, {0.5, 1}, {0.5, 2}, 1, {}},
        {o, x1, {0.5, 1}, {0.5, 2}, 2, {{0.5, 0}}},
        {o, x1, {0.5, 1}, {0.5, 2}, 3, {{0.5, 0}}},
        // Collinear: nothing, unless an end is shared and how is 0.
        {o, {2, 0}, x1, {3, 0}, 0, {}},
        {o, x1, x1, {2, 0}, 0, {{1, 0}}},
        {o, x1, {2, 0}, x1, 0, {{1, 0}}},
        {o, x1, x1, {2, 0}, 1, {}},
        // A point-sized first (second) segment is reported when within 1e-6 of the
        // other's infinite line, however far beyond its ends.
        {{5, 0}, {5, 0}, o, x1, 0, {{5, 0}}},
        {{0.5, 1e-7}, {0.5, 1e-7}, o, x1, 0, {{0.5, 1e-7}}},
        {{0.5, 1e-3}, {0.5, 1e-3}, o, x1, 0, {}},
        {o, x1, {-3, 0}, {-3, 0}, 0, {{-3, 0}}},
        {{5, 5}, {5, 5}, {7, 7}, {7, 7}, 0, {}},
    };
    for (const Row& r : rows) {
        CDblPointArray out = Stale();
        XLineLine(r.p1, r.p2, r.q1, r.q2, out, static_cast<ExtendType>(r.how));
        SCOPED_TRACE(testing::Message() << "q1 " << r.q1.x << "," << r.q1.y << " how " << r.how);
        ExpectPoints(out, r.want);
    }
    // The end slack is the distance epsilon in force.
    CEpsilonReserveDistance wide(0.01);
    CDblPointArray out;
    XLineLine(CDblPoint(0, 0), CDblPoint(1, 0), CDblPoint(1.002, -1), CDblPoint(1.002, 1), out, ExtendNone);
    ExpectPoints(out, {{1.002, 0}});
}

TEST(XLineLine, EquationAndTwoPointForms) {
    CDblPoint x(9, 9);
    EXPECT_FALSE(XLineLine(0, 0, 1, 1, 1, 0, x));
    EXPECT_FALSE(XLineLine(1, 1, 0, 2, 2, 5, x));
    // Normals (1, 0) and (1, t): |det/dot| = t, refused below 8.46097e-9.
    EXPECT_FALSE(XLineLine(1, 0, 0, 1, 1e-9, -1, x));
    EXPECT_EQ(x.x, 9.0);
    ASSERT_TRUE(XLineLine(1, 0, 0, 1, 1e-8, -1, x));  // x = 0 and x + 1e-8 y = 1
    EXPECT_NEAR(x.y, 1e8, 1e-3);
    ASSERT_TRUE(XLineLine(1, 0, -2, 0, 1, -3, x));  // perpendicular: no ratio test
    EXPECT_DOUBLE_EQ(x.x, 2.0);
    EXPECT_DOUBLE_EQ(x.y, 3.0);

    const CDblPoint base(1e6, -1e6);
    ASSERT_TRUE(XLineLine(base, base + CDblPoint(2, 2), base + CDblPoint(0, 2), base + CDblPoint(2, 0), x));
    EXPECT_NEAR(x.x, 1e6 + 1, kTol);
    EXPECT_NEAR(x.y, -1e6 + 1, kTol);
    EXPECT_FALSE(XLineLine(base, base + CDblPoint(5e-7, 0), CDblPoint(0, 0), CDblPoint(0, 1), x));
}

TEST(XLineCircle, EquationFormRootOrderTangencyAndFilters) {
    struct Row {
        double a, b, c, cx, cy, r;
        std::vector<CDblPoint> want;
    };
    const Row rows[] = {
        // y eliminated (|b| > |a|): the quadratic in x gives the larger x first.
        {0, 1, -0.6, 0, 0, 1, {{0.8, 0.6}, {-0.8, 0.6}}},
        // |b| == |a|: x eliminated, the larger y first.
        {1, -1, 0, 0, 0, 1, {{kS45, kS45}, {-kS45, -kS45}}},
        // Vertical line: upper point first.
        {1, 0, -0.6, 0, 0, 1, {{0.6, 0.8}, {0.6, -0.8}}},
        {2, 0, -2, 0, 0, 1, {{1, 0}}},  // vertical tangent: once
        // The edge-case list expects one point for the exact tangent y = 1; the
        // algorithm gives the zero-discriminant root twice, so two equal points.
        {0, 1, -1, 0, 0, 1, {{0, 1}, {0, 1}}},
        // y = 1 + d: roots 0 +- i*sqrt(2d + d^2). A conjugate pair with a small
        // imaginary part yields its one tangent point.
        {0, 1, -(1 + 1e-9), 0, 0, 1, {{0, 1 + 1e-9}}},
        {0, 1, -1.00004, 0, 0, 1, {{0, 1.00004}}},  // |im| = 0.00894 < 0.01
        {0, 1, -1.00006, 0, 0, 1, {}},              // |im| = 0.01095
        {0, 1, -2, 0, 0, 1, {}},
        // Real part 100: |im|/100 passes, so the radial filter (1e-4 relative) decides.
        {0, 1, -1.00005, 100, 0, 1, {{100, 1.00005}}},
        {0, 1, -1.001, 100, 0, 1, {}},
        {0, 0, 1, 0, 0, 1, {}},
    };
    for (const Row& r : rows) {
        CDblPointArray out = Stale();
        XLineCircle(r.a, r.b, r.c, r.cx, r.cy, r.r, out);
        SCOPED_TRACE(testing::Message() << r.a << " " << r.b << " " << r.c << " at " << r.cx);
        ExpectPoints(out, r.want, 1e-7);
    }
}

TEST(XLineCircle, SegmentFormKeepsPointsBetweenTheEnds) {
    struct Row {
        CDblPoint p1, p2;
        int how;
        std::vector<CDblPoint> want;
    };
    const Row rows[] = {
        {{8, 20.6}, {12, 20.6}, 0, {{10.8, 20.6}, {9.2, 20.6}}},
        {{10, 20.6}, {12, 20.6}, 0, {{10.8, 20.6}}},
        {{10, 20.6}, {12, 20.6}, 1, {{10.8, 20.6}, {9.2, 20.6}}},
        // (X - p1).(X - p2) up to 1e-8 counts as between: 0.8 * 1e-9 kept, 0.8 * 1e-7 not.
        {{10, 20.6}, {10.8 - 1e-9, 20.6}, 0, {{10.8, 20.6}}},
        {{10, 20.6}, {10.8 - 1e-7, 20.6}, 0, {}},
        {{10, 20}, {10.0000005, 20}, 1, {}},  // no line
    };
    for (const Row& r : rows) {
        CDblPointArray out = Stale();
        XLineCircle(r.p1, r.p2, 10, 20, 1, out, static_cast<ExtendType>(r.how));
        SCOPED_TRACE(testing::Message() << r.p1.x << " -> " << r.p2.x << " how " << r.how);
        ExpectPoints(out, r.want);
    }
}

TEST(XLineCircle, ToleranceFormAppendsFartherPointFirstAndMergesNearTangents) {
    CDblPointArray out = Stale();
    const CDblPoint c(0, 0);
    XLineCircle(CDblPoint(-2, 0.6), CDblPoint(2, 0.6), c, 1, out, 1e-6);
    ExpectPoints(out, {{-99, -99}, {0.8, 0.6}, {-0.8, 0.6}});
    XLineCircle(CDblPoint(2, 0.6), CDblPoint(-2, 0.6), c, 1, out, 1e-6);  // reversed
    EXPECT_NEAR(out[3].x, -0.8, kTol);
    // y = 1 + 1e-9: disc = -2e-9 > -tol^2; the two parameters 2*sqrt(2e-9) apart merge.
    out.RemoveAll();
    XLineCircle(CDblPoint(-2, 1 + 1e-9), CDblPoint(2, 1 + 1e-9), c, 1, out, 1e-3);
    ExpectPoints(out, {{0, 1 + 1e-9}});
    XLineCircle(CDblPoint(-2, 1.01), CDblPoint(2, 1.01), c, 1, out, 1e-3);  // misses by 0.01
    XLineCircle(CDblPoint(1, 1), CDblPoint(1, 1.0001), c, 1, out, 1e-3);    // shorter than tol
    EXPECT_EQ(out.GetSize(), 1);
}

TEST(XCircleCircle, ContactSlackRadicalLineAndNesting) {
    struct Row {
        double x1, y1, r1, x2, y2, r2;
        std::vector<CDblPoint> want;
    };
    const Row rows[] = {
        {0, 0, 1, 2, 0, 1, {{1, 0}}},
        {0, 0, 1, 2.0001, 0, 1, {{1.00005, 0}}},  // gap 0.0001 <= 0.0001 * 2
        {0, 0, 1, 2.0003, 0, 1, {}},
        {0, 0, 1, 3, 0, 1, {}},
        {0, 0, 1, 1, 0, 1, {{0.5, std::sqrt(0.75)}, {0.5, -std::sqrt(0.75)}}},  // radical line x = 0.5
        {0, 0, 5, 0, 8, 5, {{3, 4}, {-3, 4}}},                                    // radical line y = 4
        {0, 0, 2, 1, 0, 1, {{2, 0}}},                                             // internal tangent
        {0, 0, 5, 1, 0, 1, {}},                                                   // nested
        {0, 0, 1, 0, 0, 2, {}},                                                   // concentric
    };
    for (const Row& r : rows) {
        CDblPointArray out = Stale();
        XCircleCircle(r.x1, r.y1, r.r1, r.x2, r.y2, r.r2, out);
        SCOPED_TRACE(testing::Message() << r.x2 << "," << r.y2 << " r " << r.r1 << "," << r.r2);
        ExpectPoints(out, r.want);
    }
}

TEST(XLineArc, SectorFilterSlackWrapAndStartNormalisation) {
    struct Row {
        double lineDeg;  // direction of a line through the centre; it meets the circle at lineDeg and lineDeg+180
        double start, sweep;
        int how;
        std::vector<double> wantDeg;
    };
    const Row rows[] = {
        {45, 0, 90, 1, {45}},     {135, 0, 90, 1, {}},       {120, 0, 90, 3, {120, -60}},  // root order: y = +sin first; not 135, where a and b tie
        {45, 90, -90, 1, {45}},   {-0.00005, 0, 90, 1, {-0.00005}}, {-0.0002, 0, 90, 1, {}},
        {0, 170, 20, 1, {180}},   {5, 170, 20, 1, {-175}},  {0, 530, 20, 1, {180}},
        {0, -170, -20, 1, {180}}, {45, 0, 90, 0, {}},  // the bounded segment stops at radius 0.5
    };
    for (const Row& r : rows) {
        const CDblPoint c(3, -2);
        CDblPointArray out = Stale();
        XLineArc(c, c + Polar(r.lineDeg, 0.5), c.x, c.y, 1, r.start, r.sweep, out, static_cast<ExtendType>(r.how));
        std::vector<CDblPoint> want;
        for (double d : r.wantDeg) want.push_back(c + Polar(d));
        SCOPED_TRACE(testing::Message() << "line " << r.lineDeg << " arc " << r.start << "+" << r.sweep);
        ExpectPoints(out, want);
    }
}

TEST(XArcs, EquationCircleAndArcArcKeepPointsOnEveryArc) {
    CDblPointArray out = Stale();
    XLineArc(1, -1, 0, 0, 0, 1, 0, 90, out);  // x = y through a quarter arc
    ExpectPoints(out, {{kS45, kS45}});
    // Circles (0,0,1) and (1,0,1) meet at (0.5, +-0.866): 60/-60 degrees about the
    // first centre, 120/-120 about the second.
    const CDblPoint up(0.5, std::sqrt(0.75)), down(0.5, -std::sqrt(0.75));
    XCircleArc(0, 0, 1, 1, 0, 1, 90, 90, out);
    ExpectPoints(out, {up});
    XArcArc(0, 0, 1, -90, 90, 1, 0, 1, 180, 90, out);  // second arc 180..270 runs through 180
    ExpectPoints(out, {down});
    XArcArc(0, 0, 1, -90, 90, 1, 0, 1, 90, 90, out);
    EXPECT_EQ(out.GetSize(), 0);
}

TEST(XLineEllipse, PointsLieOnBothCurvesInLineDirectionOrder) {
    // Ellipse centre (1, 2), semi-axes 3 and 2; P and Q built on it at parametric 30 and 200 degrees.
    const double cx = 1, cy = 2, ea = 3, eb = 2;
    const CDblPoint P(cx + ea * std::cos(kPi / 6), cy + eb * std::sin(kPi / 6));
    const CDblPoint Q(cx + ea * std::cos(200 / kRadToDeg), cy + eb * std::sin(200 / kRadToDeg));
    double A = 0, B = 0, C = 0;
    ASSERT_TRUE(CalLineABC(Q, P, A, B, C));  // (-B, A) = Q - P: the direction runs P -> Q
    CDblPointArray out = Stale();
    XLineEllipse(A, B, C, cx, cy, ea, eb, out);
    ExpectPoints(out, {Q, P});  // the point farther along the direction first
    XLineEllipse(-A, -B, -C, cx, cy, -ea, eb, out);  // reversed direction; the sign of a semi-axis is ignored
    ExpectPoints(out, {P, Q});

    // Tangent y = 4 touches at (1, 4); within 1e-10 of a semi-axis it still does; beyond, nothing.
    for (double y : {4.0, 4.0 + 1e-11, 4.0 - 1e-11}) {
        XLineEllipse(0, 1, -y, cx, cy, ea, eb, out);
        ExpectPoints(out, {{1, 4}});
    }
    XLineEllipse(0, 1, -4.001, cx, cy, ea, eb, out);
    EXPECT_EQ(out.GetSize(), 0);
    out = Stale();
    XLineEllipse(1, 0, 0, cx, cy, 0, eb, out);
    EXPECT_EQ(out.GetSize(), 0);
}

TEST(XEllipseEllipse, CommonPointsInParametricOrderOnTheFirstEllipse) {
    const double s = std::sqrt(0.8);  // x^2/4 + y^2 = 1 and x^2 + y^2/4 = 1 meet where x^2 = y^2 = 0.8
    CDblPointArray out = Stale();
    XEllipseEllipse(CDblRect(-2, -1, 2, 1), CDblRect(-1, -2, 1, 2), 0, 360, 0, 360, out);
    ExpectPoints(out, {{s, s}, {-s, s}, {-s, -s}, {s, -s}});
    XEllipseEllipse(CDblRect(-2, -1, 2, 1), CDblRect(-1, -2, 1, 2), 0, 180, 0, 360, out);  // upper half of the first
    ExpectPoints(out, {{s, s}, {-s, s}});
    XEllipseEllipse(CDblRect(-2, -1, 2, 1), CDblRect(-1, -2, 1, 2), 0, 180, 90, 90, out);
    ExpectPoints(out, {{-s, s}});

    // Circle (x-1)^2 + y^2 = 1 inside x^2/4 + y^2 = 1: with x = 1 + c the residual is
    // -(3c + 1)(c - 1)/4, so a touching point at c = 1 and crossings at c = -1/3.
    XEllipseEllipse(CDblRect(-2, -1, 2, 1), CDblRect(0, -1, 2, 1), 0, 360, 0, 360, out);
    ExpectPoints(out, {{2, 0}, {2.0 / 3, std::sqrt(8.0) / 3}, {2.0 / 3, -std::sqrt(8.0) / 3}});

    // Small circle at the right vertex: (2 + 0.1c)^2/4 + 0.01(1 - c^2) = 1 gives
    // 0.0075c^2 - 0.1c - 0.01 = 0. Order runs across the first ellipse's angle 0.
    const double c = (0.1 - std::sqrt(0.01 + 0.0003)) / 0.015, y = 0.1 * std::sqrt(1 - c * c);
    XEllipseEllipse(CDblRect(-2, -1, 2, 1), CDblRect(1.9, -0.1, 2.1, 0.1), 0, 360, 0, 360, out);
    ExpectPoints(out, {{2 + 0.1 * c, y}, {2 + 0.1 * c, -y}});

    // Two circles touching at 37 degrees: one point. A tangent point is ill-conditioned, hence 1e-6.
    const CDblPoint t = Polar(37), m = Polar(37, 2);
    XEllipseEllipse(CDblRect(-1, -1, 1, 1), CDblRect(m.x - 1, m.y - 1, m.x + 1, m.y + 1), 0, 360, 0, 360, out);
    ExpectPoints(out, {t}, 1e-6);

    for (const CDblRect& other : {CDblRect(-2, -1, 2, 1), CDblRect(5, 5, 6, 6), CDblRect(-1, 0, 1, 0)}) {
        out = Stale();
        XEllipseEllipse(CDblRect(-2, -1, 2, 1), other, 0, 360, 0, 360, out);
        EXPECT_EQ(out.GetSize(), 0);  // coincident, apart, degenerate
    }
}

TEST(XEllipseEllipse, FindsPointsConstructedOnBothEllipses) {
    // P and its mirror image lie on x^2/9 + y^2/4 = 1; the second ellipse, centre (4, 0)
    // and semi-axis 2 along x, gets the y semi-axis that puts P on it too.
    const CDblPoint P(3 * std::cos(40 / kRadToDeg), 2 * std::sin(40 / kRadToDeg));
    const double b2 = P.y / std::sqrt(1 - std::pow((P.x - 4) / 2, 2));
    CDblPointArray out;
    XEllipseEllipse(CDblRect(-3, -2, 3, 2), CDblRect(2, -b2, 6, b2), 0, 360, 0, 360, out);
    ExpectPoints(out, {P, {P.x, -P.y}});

    // An off-centre ellipse through P: ((P.x - cx)/2.5)^2 = 0.36, so b = 0.5/0.8 puts P on it.
    const double cx = P.x + 1.5, cy = P.y - 0.5;
    XEllipseEllipse(CDblRect(-3, -2, 3, 2), CDblRect(cx - 2.5, cy - 0.625, cx + 2.5, cy + 0.625), 0, 360, 0, 360, out);
    bool foundP = false;
    for (INT_PTR k = 0; k < out.GetSize(); ++k) {
        EXPECT_NEAR(OnEllipse(out[k], 0, 0, 3, 2), 0.0, kTol);
        EXPECT_NEAR(OnEllipse(out[k], cx, cy, 2.5, 0.625), 0.0, kTol);
        foundP = foundP || Distance(out[k], P) < kTol;
    }
    EXPECT_TRUE(foundP);
    EXPECT_EQ(out.GetSize() % 2, 0);  // two crossing closed curves cross an even number of times
}
