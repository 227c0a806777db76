#include <orvmath/angle.h>
#include <orvmath/coordsys.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>

using namespace ORVMATH;

namespace {
void ExpectNear(const Vector& v, const Vector& want) {
    EXPECT_NEAR(v.x, want.x, 1e-12);
    EXPECT_NEAR(v.y, want.y, 1e-12);
    EXPECT_NEAR(v.z, want.z, 1e-12);
}
void ExpectNear(const Point& p, const Point& want) { ExpectNear(Vector(p.x, p.y, p.z), Vector(want.x, want.y, want.z)); }
}  // namespace

TEST(BoundingBall, UnionCoversOverlappingNestedAndCoincidentBalls) {
    const struct { BoundingBall a, b, want; } rows[] = {
        // Equal radii: L = b, d = 4, R' = (1 + 1 + 4) / 2 = 3, centre moves (3 - 1) / 4 of the way.
        {{{0, 0, 0}, 1}, {{4, 0, 0}, 1}, {{2, 0, 0}, 3}},
        // Spans x in [-2, 3]: radius (2 + 1 + 2) / 2 = 2.5, centre 0.5.
        {{{0, 0, 0}, 2}, {{2, 0, 0}, 1}, {{0.5, 0, 0}, 2.5}},
        {{{0, 0, 0}, 5}, {{1, 1, 0}, 1}, {{0, 0, 0}, 5}},  // nested: 5 > 1 + sqrt(2)
        {{{1, 1, 0}, 1}, {{0, 0, 0}, 5}, {{0, 0, 0}, 5}},  // nested, larger second
        {{{1, 2, 3}, 2}, {{1, 2, 3}, 1}, {{1, 2, 3}, 2}},  // concentric
        {{{9, 9, 9}, 0}, {{1, 2, 3}, 1}, {{1, 2, 3}, 1}},  // empty first
        {{{1, 2, 3}, 1}, {{9, 9, 9}, 0}, {{1, 2, 3}, 1}},  // empty second
    };
    for (const auto& r : rows) {
        BoundingBall u, self = r.a;
        u.Union(r.a, r.b);
        self.Union(self, r.b);  // the result may overwrite an operand
        for (const BoundingBall* got : {&u, &self}) {
            ExpectNear(got->centre, r.want.centre);
            EXPECT_NEAR(got->radius, r.want.radius, 1e-12);
        }
    }
}

TEST(Transformer, AxisRotationsMirrorsAndProducts) {
    const struct { int axis; Vector from, to; } rows[] = {
        {2, {1, 0, 0}, {0, 1, 0}}, {0, {0, 1, 0}, {0, 0, 1}}, {1, {0, 0, 1}, {1, 0, 0}}};
    for (const auto& r : rows) {
        Transformer t;
        t.Rotate(r.axis, kPi / 2);  // counter-clockwise looking down the axis
        ExpectNear(t.Transform(r.from), r.to);
    }
    // Reflection in the line y = x - 1: (a, b) -> (b + 1, a - 1); z is kept.
    Transformer m, a, id, st;
    m.Mirror(CDblPoint(1, 0), CDblPoint(2, 1));
    EXPECT_TRUE(m.IsMirrored());
    ExpectNear(m.Transform(Point(1, 1, 5)), Point(2, 0, 5));
    ExpectNear(m.Transform(Point(3, 2, 7)), Point(3, 2, 7));
    a.Mirror(0);
    a.Multiply(a, a);  // reflecting twice: exactly the identity, the flags XOR to false
    id.LoadIdentity();
    EXPECT_TRUE(a == id);
    // Scale 2 then move by (1, 0, 0): centre (1,1,1) -> (3,2,2), radius 3 -> 6.
    st.ScaleTranslate(2, 1, 0, 0);
    const BoundingBall ball = st.Transform(BoundingBall(Point(1, 1, 1), 3));
    ExpectNear(ball.centre, Point(3, 2, 2));
    EXPECT_DOUBLE_EQ(ball.radius, 6);
}

TEST(Transformer, SetMatrixDetectsMirrorFromUnitRows) {
    // Rows (d0,0,0), (0,d1,0), row2; whether to detect, the flag before and after.
    const struct { double d0, d1, row2[3]; bool detect, before, after; } rows[] = {
        {-1, 1, {0, 0, 1}, true, false, true},
        {-1, 1, {0, 0, 1}, false, true, false},     // no detection: cleared
        {0.1, 0.1, {0, 0, 0.1}, true, true, false},  // d of the raw rows is 0.001, of unit rows 1
        {1, 1, {1, 0, 0}, true, true, true},         // row 2 = row 0: d = 0 keeps the flag
    };
    for (const auto& r : rows) {
        double m[4][4] = {{r.d0, 0, 0, 0}, {0, r.d1, 0, 0}, {r.row2[0], r.row2[1], r.row2[2], 0}, {0, 0, 0, 1}};
        Transformer t;
        t.Mirror(0);
        if (!r.before) t.LoadIdentity();
        t.SetMatrix(m, r.detect);
        EXPECT_EQ(t.IsMirrored(), r.after) << r.d0 << " " << r.row2[0];
        EXPECT_EQ(std::memcmp(t.GetMatrix(), m, sizeof m), 0);
        m[0][1] = -0.0;
        Transformer z = t;
        z.SetMatrix(m, r.detect);
        EXPECT_FALSE(z == t);  // -0.0 and 0.0 differ bit by bit
    }
}

TEST(UCS, SettersNeedTenDegreesBetweenAxes) {
    using Setter = bool (UCS::*)(const Point&, const Vector&, const Vector&);
    const double h = std::sqrt(0.5);
    const struct { Setter set; Vector a, b; bool ok; } rows[] = {
        {&UCS::SetOXY, {1, 0, 0}, {1, 0.17, 0}, false},  // atan 0.17 = 9.6 degrees
        {&UCS::SetOXY, {1, 0, 0}, {-1, -0.17, 0}, false},
        {&UCS::SetOXY, {1, 0, 0}, {1, 0.18, 0}, true},  // 10.2 degrees
        {&UCS::SetOXY, {1, 0, 0}, {-1, 0.18, 0}, true},
        {&UCS::SetOXY, {0, 0, 0}, {0, 1, 0}, false},
        {&UCS::SetOXZ, {2, 0, 0}, {1, 0, 1}, true},  // X kept, Y = Z x X, Z rebuilt as X x Y
        {&UCS::SetOYZ, {0, 1, 1}, {0, 0, 3}, true},  // Z kept, X = Y x Z, Y rebuilt as Z x X
        {&UCS::SetOYZ, {0, h, h}, {0, 1, 1}, false},
    };
    for (const auto& r : rows) {
        UCS u;
        ASSERT_EQ((u.*r.set)(Point(1, 2, 3), r.a, r.b), r.ok) << r.b.x << " " << r.b.y;
        if (!r.ok) continue;  // every good row gives the world axes
        ExpectNear(u.GetXDirecton(), Vector(1, 0, 0));
        ExpectNear(u.GetYDirecton(), Vector(0, 1, 0));
        ExpectNear(u.GetZDirecton(), Vector(0, 0, 1));
    }
    EXPECT_THROW(try { UCS(Point(0, 0, 0), Vector(1, 0, 0), Vector(2, 0, 0)); } catch (const char* what) {
        EXPECT_STREQ(what, "Invalid UCS");
        throw;
    }, const char*);
}

TEST(UCS, ChangeViewKeepsARightHandedFrame) {
    // X' Y' Z' as signed indices into (X, Y, Z): 1 = X, -1 = -X, 2 = Y, 3 = Z.
    const int views[6][3] = {{1, 2, 3}, {-1, 2, -3}, {-2, 3, -1}, {2, 3, 1}, {1, 3, -2}, {-1, 3, 2}};
    const UCS base(Point(1, 2, 3), Vector(1, 1, 0), Vector(0, 1, 1));
    const Vector axes[3] = {base.GetXDirecton(), base.GetYDirecton(), base.GetZDirecton()};
    for (int side = 0; side < 6; ++side) {
        UCS u = base;
        u.ChangeView(static_cast<ViewSide>(side));
        const Vector got[3] = {u.GetXDirecton(), u.GetYDirecton(), u.GetZDirecton()};
        for (int k = 0; k < 3; ++k) {
            const int i = views[side][k];
            ExpectNear(got[k], i < 0 ? -axes[-i - 1] : axes[i - 1]);
        }
        Vector z;
        z.CrossProduct(got[0], got[1]);
        ExpectNear(z, got[2]);
        EXPECT_TRUE(u.GetOrigin() == base.GetOrigin());
    }
    Transformer t;
    base.GetTransformerToWCS(t);
    EXPECT_FALSE(t.IsMirrored());
    const Vector& x = axes[0];
    ExpectNear(t.Transform(Point(2, 0, 0)), Point(1 + 2 * x.x, 2 + 2 * x.y, 3 + 2 * x.z));
}
