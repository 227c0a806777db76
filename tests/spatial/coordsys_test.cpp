#include <orvmath/angle.h>
#include <orvmath/coordsys.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>

using namespace ORVMATH;

namespace {

void ExpectNear(const Vector& v, double x, double y, double z, double tol = 1e-12) {
    EXPECT_NEAR(v.x, x, tol);
    EXPECT_NEAR(v.y, y, tol);
    EXPECT_NEAR(v.z, z, tol);
}
void ExpectNear(const Point& p, double x, double y, double z) { ExpectNear(Vector(p.x, p.y, p.z), x, y, z); }

}  // namespace

TEST(Vector, NormalizeSkipsZeroAndUnitSquaredLength) {
    Vector zero(0, 0, 0), unit(1, 0, 0), v(3, 0, 4);
    zero.Normalize();
    unit.Normalize();
    v.Normalize();
    EXPECT_TRUE(zero.IsNull());
    EXPECT_EQ(unit.x, 1.0);
    ExpectNear(v, 0.6, 0, 0.8, 1e-15);
}

TEST(BoundingBall, UnionCoversOverlappingNestedAndCoincidentBalls) {
    struct Row { BoundingBall a, b, want; };
    const Row rows[] = {
        // Equal radii: L = b, d = 4, R' = (1 + 1 + 4) / 2 = 3, centre moves (3 - 1) / 4 of the way.
        {{{0, 0, 0}, 1}, {{4, 0, 0}, 1}, {{2, 0, 0}, 3}},
        // Spans x in [-2, 3]: radius (2 + 1 + 2) / 2 = 2.5, centre 0.5.
        {{{0, 0, 0}, 2}, {{2, 0, 0}, 1}, {{0.5, 0, 0}, 2.5}},
        {{{0, 0, 0}, 5}, {{1, 1, 0}, 1}, {{0, 0, 0}, 5}},    // nested: 5 > 1 + sqrt(2)
        {{{1, 1, 0}, 1}, {{0, 0, 0}, 5}, {{0, 0, 0}, 5}},    // nested, larger second
        {{{1, 2, 3}, 2}, {{1, 2, 3}, 1}, {{1, 2, 3}, 2}},    // concentric
        {{{9, 9, 9}, 0}, {{1, 2, 3}, 1}, {{1, 2, 3}, 1}},    // empty first
        {{{1, 2, 3}, 1}, {{9, 9, 9}, 0}, {{1, 2, 3}, 1}},    // empty second
    };
    for (const Row& r : rows) {
        BoundingBall u;
        u.Union(r.a, r.b);
        ExpectNear(u.centre, r.want.centre.x, r.want.centre.y, r.want.centre.z);
        EXPECT_NEAR(u.radius, r.want.radius, 1e-12);
        BoundingBall self = r.a;
        self.Union(self, r.b);  // the result may overwrite an operand
        EXPECT_NEAR(self.radius, r.want.radius, 1e-12);
    }
}

TEST(Transformer, AxisRotationsMirrorsAndProducts) {
    struct Row { int axis; Vector from, to; };
    const Row rows[] = {{2, {1, 0, 0}, {0, 1, 0}}, {0, {0, 1, 0}, {0, 0, 1}}, {1, {0, 0, 1}, {1, 0, 0}}};
    for (const Row& r : rows) {
        Transformer t;
        t.Rotate(r.axis, kPi / 2);  // counter-clockwise looking down the axis
        ExpectNear(t.Transform(r.from), r.to.x, r.to.y, r.to.z);
    }
    // Reflection in the line y = x - 1: (a, b) -> (b + 1, a - 1); z is kept.
    Transformer m;
    m.Mirror(CDblPoint(1, 0), CDblPoint(2, 1));
    EXPECT_TRUE(m.IsMirrored());
    ExpectNear(m.Transform(Point(1, 1, 5)), 2, 0, 5);
    ExpectNear(m.Transform(Point(3, 2, 7)), 3, 2, 7);

    Transformer a, b, id;
    a.Mirror(0);
    b.Mirror(0);
    id.LoadIdentity();
    a.Multiply(a, b);
    EXPECT_TRUE(a == id);  // bitwise, flag false
    a.NegateZ();
    EXPECT_TRUE(a.IsMirrored());
    ExpectNear(a.Transform(Vector(0, 0, 1)), 0, 0, -1);

    // Scale 2 then move by (1, 0, 0): centre (1,1,1) -> (3,2,2), radius 3 -> 6.
    Transformer st;
    st.ScaleTranslate(2, 1, 0, 0);
    const BoundingBall ball = st.Transform(BoundingBall(Point(1, 1, 1), 3));
    ExpectNear(ball.centre, 3, 2, 2);
    EXPECT_DOUBLE_EQ(ball.radius, 6);
}

TEST(Transformer, SetMatrixDetectsMirrorFromUnitRows) {
    struct Row { double d0, d1, row2[3]; bool detect, before, after; };  // rows (d0,0,0), (0,d1,0), row2
    const Row rows[] = {
        {1, 1, {0, 0, 1}, true, true, false},
        {-1, 1, {0, 0, 1}, true, false, true},
        {-1, 1, {0, 0, 1}, false, true, false},     // no detection: cleared
        {0.1, 0.1, {0, 0, 0.1}, true, true, false},  // d of the raw rows is 0.001, of unit rows 1
        {1, 1, {1, 0, 0}, true, true, true},         // row 2 = row 0: d = 0 keeps the flag
        {1, 1, {1, 0, 0}, true, false, false},
    };
    for (const Row& r : rows) {
        double m[4][4] = {{r.d0, 0, 0, 0}, {0, r.d1, 0, 0}, {r.row2[0], r.row2[1], r.row2[2], 0}, {0, 0, 0, 1}};
        Transformer t;
        t.Mirror(0);
        if (!r.before) t.LoadIdentity();
        t.SetMatrix(m, r.detect);
        EXPECT_EQ(t.IsMirrored(), r.after) << r.d0 << " " << r.row2[0];
        EXPECT_EQ(std::memcmp(t.GetMatrix(), m, sizeof m), 0);
    }
    double id[4][4] = {{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}};
    Transformer a, b;
    a.SetMatrix(id, false);
    id[0][1] = -0.0;
    b.SetMatrix(id, false);
    EXPECT_FALSE(a == b);  // -0.0 and 0.0 differ bit by bit
}

TEST(UCS, SettersNeedTenDegreesBetweenAxes) {
    using Setter = bool (UCS::*)(const Point&, const Vector&, const Vector&);
    struct Row { Setter set; Vector a, b; bool ok; Vector x, y, z; };
    const double h = std::sqrt(0.5);
    const Row rows[] = {
        {&UCS::SetOXY, {1, 0, 0}, {1, 0.17, 0}, false, {}, {}, {}},  // atan 0.17 = 9.6 degrees
        {&UCS::SetOXY, {1, 0, 0}, {-1, -0.17, 0}, false, {}, {}, {}},
        {&UCS::SetOXY, {1, 0, 0}, {1, 0.18, 0}, true, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}},  // 10.2 degrees
        {&UCS::SetOXY, {1, 0, 0}, {-1, 0.18, 0}, true, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}},
        {&UCS::SetOXY, {0, 0, 0}, {0, 1, 0}, false, {}, {}, {}},
        // X kept, Y = Z x X = (0, 1, 0) after normalising, Z rebuilt as X x Y.
        {&UCS::SetOXZ, {2, 0, 0}, {1, 0, 1}, true, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}},
        // Z kept, X = Y x Z = (1, 0, 0) after normalising, Y rebuilt as Z x X.
        {&UCS::SetOYZ, {0, 1, 1}, {0, 0, 3}, true, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}},
        {&UCS::SetOYZ, {0, h, h}, {0, 1, 1}, false, {}, {}, {}},
    };
    for (const Row& r : rows) {
        UCS u;
        ASSERT_EQ((u.*r.set)(Point(1, 2, 3), r.a, r.b), r.ok) << r.b.x << " " << r.b.y;
        if (!r.ok) continue;
        ExpectNear(u.GetXDirecton(), r.x.x, r.x.y, r.x.z);
        ExpectNear(u.GetYDirecton(), r.y.x, r.y.y, r.y.z);
        ExpectNear(u.GetZDirecton(), r.z.x, r.z.y, r.z.z);
    }
    try {
        UCS bad(Point(0, 0, 0), Vector(1, 0, 0), Vector(2, 0, 0));
        FAIL() << "no throw";
    } catch (const char* what) {
        EXPECT_STREQ(what, "Invalid UCS");
    }
}

TEST(UCS, ChangeViewKeepsARightHandedFrame) {
    // X' Y' Z' as signed indices into (X, Y, Z): 1 = X, -1 = -X, 2 = Y, 3 = Z.
    const int views[6][3] = {{1, 2, 3}, {-1, 2, -3}, {-2, 3, -1}, {2, 3, 1}, {1, 3, -2}, {-1, 3, 2}};
    const UCS base(Point(1, 2, 3), Vector(1, 1, 0), Vector(0, 1, 1));
    const Vector axes[3] = {base.GetXDirecton(), base.GetYDirecton(), base.GetZDirecton()};
    for (int side = 0; side < 6; ++side) {
        UCS u = base;
        u.ChangeView(static_cast<ViewSide>(side));
        const Vector* got[3] = {&u.GetXDirecton(), &u.GetYDirecton(), &u.GetZDirecton()};
        for (int k = 0; k < 3; ++k) {
            const int i = views[side][k];
            Vector want = axes[std::abs(i) - 1];
            if (i < 0) want = -want;
            ExpectNear(*got[k], want.x, want.y, want.z);
        }
        Vector z;
        z.CrossProduct(*got[0], *got[1]);
        ExpectNear(z, got[2]->x, got[2]->y, got[2]->z);
        EXPECT_TRUE(u.GetOrigin() == base.GetOrigin());
    }
    Transformer t;
    base.GetTransformerToWCS(t);
    EXPECT_FALSE(t.IsMirrored());
    ExpectNear(t.Transform(Point(0, 0, 0)), 1, 2, 3);
    const Vector& x = base.GetXDirecton();
    ExpectNear(t.Transform(Point(2, 0, 0)), 1 + 2 * x.x, 2 + 2 * x.y, 3 + 2 * x.z);
}
