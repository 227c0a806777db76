#include <orvmath/angle.h>
#include <orvmath/coordsys.h>
#include <orvmath/matrix4.h>

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstring>
#include <memory>
#include <random>

using namespace ORVMATH;

namespace {
using Row3 = std::array<double, 3>;

void ExpectRow(const CMatrix4& m, int r, const Row3& want) {
    for (int c = 0; c < 3; ++c) EXPECT_NEAR(m(r, c), want[c], 1e-15) << "(" << r << "," << c << ")";
}

void ExpectIdentity(const double* m, double tol) {
    for (int k = 0; k < 16; ++k) EXPECT_NEAR(m[k], k % 5 == 0 ? 1.0 : 0.0, tol) << "element " << k;
}

const double* Data(const CMatrix4& m) { return &m(0, 0); }

// Inverts m through both matrix classes: both must succeed, give the very same elements (one elimination serves both),
// and multiply back to the identity.
void CheckInverse(const CMatrix4& m) {
    CMatrix4 inv = m;
    ASSERT_TRUE(inv.InvMatrix(0.0));
    double rows[4][4];
    std::memcpy(rows, Data(m), sizeof rows);
    Transformer tinv;
    tinv.SetMatrix(rows, false);
    ASSERT_TRUE(tinv.Invert(0.0));
    EXPECT_EQ(std::memcmp(tinv.GetMatrix(), Data(inv), sizeof rows), 0);
    ExpectIdentity(Data(m * inv), 1e-12);
    ExpectIdentity(Data(inv * m), 1e-12);
}
}  // namespace

TEST(CMatrix4, ElementarySettersWriteOnlyTheirOwnElements) {
    CMatrix4 m;
    m(2, 0) = 7;  // touched by none of them
    m.Move(1, 2, 3);
    m.Scale(2, 3, 4);
    ExpectRow(m, 1, {0, 3, 0});
    m.RotateZ(kPi / 2);  // the 2x2 block becomes (0, 1; -1, 0), (2,2) = 1
    ExpectRow(m, 0, {0, 1, 0});
    ExpectRow(m, 1, {-1, 0, 0});
    ExpectRow(m, 2, {7, 0, 1});
    ExpectRow(m, 3, {1, 2, 3});
    EXPECT_TRUE(m.Transform(CDblPoint3(0, 0, 0)) == CDblPoint3(1, 2, 3));
    EXPECT_TRUE(m.Transform(Vector3d(1, 0, 0)) == Vector3d(0, 1, 0));  // directions are not moved
}

TEST(CMatrix4, InverseOfRandomRigidAndScaledTransformsMultipliesBackToIdentity) {
    std::mt19937 rng(20240611);
    std::uniform_real_distribution<double> unit(-1, 1), scale(0.2, 5), shift(-100, 100);
    for (int i = 0; i < 200; ++i) {
        CMatrix4 s, r, t;
        s.Scale(scale(rng), scale(rng), i % 2 ? scale(rng) : -scale(rng));  // every other one mirrors
        r.Rotate(Vector3d(unit(rng), unit(rng), unit(rng)).SelfNormalize(), 4 * unit(rng));
        t.Move(shift(rng), shift(rng), shift(rng));
        CheckInverse(s * r * t);
    }
    // Zero diagonal: every column needs a row interchange.
    const double perm[4][4] = {{0, 0, 2, 0}, {3, 0, 0, 0}, {0, 4, 0, 0}, {5, 6, 7, 1}};
    CheckInverse(CMatrix4(perm));
}

TEST(CMatrix4, InversionFailsOnSingularBlockAndHonoursEpsilon) {
    double zeroColumn[4][4] = {{1, 0, 2, 0}, {3, 0, 4, 0}, {5, 0, 6, 0}, {1, 2, 3, 1}};
    CMatrix4 m(zeroColumn);
    EXPECT_FALSE(m.InvMatrix(0.0));
    Transformer t;
    t.SetMatrix(zeroColumn, false);
    EXPECT_FALSE(t.Invert(0.0));
    // A 1e-7 pivot: below the default epsilon (1e-6) that eps < 0 stands for.
    CMatrix4 tiny, copy;
    tiny.Scale(1e-7, 1, 1);
    copy = tiny;
    EXPECT_FALSE(tiny.InvMatrix(-1));
    EXPECT_TRUE(copy.InvMatrix(0.0));
    EXPECT_DOUBLE_EQ(copy(0, 0), 1e7);
    t.Scale(1e-7);
    EXPECT_TRUE(t.Invert(-1));  // Transformer takes eps as given
}

TEST(CMatrix4, ApplyECS2WCSFollowsTheArbitraryAxisRule) {
    const double q = 1.0 / 64;
    const struct { Vector3d n; bool changes; Row3 ax, ay; } rows[] = {
        {{0, 0, 0}, false, {}, {}},
        {{0, 0, 1}, false, {}, {}},
        {{0, 0, 1 + 1e-7}, false, {}, {}},  // equal to +Z within tolerance
        // |x|, |y| < 1/64: Ax = (0,1,0) x N, Ay = N x Ax, neither normalised.
        {{0, 0, 2}, true, {2, 0, 0}, {0, 4, 0}},
        {{0.01, 0, 1}, true, {1, 0, -0.01}, {0, 1.0001, 0}},  // 1 + 0.01^2
        {{0, 0, -1}, true, {-1, 0, 0}, {0, 1, 0}},            // (0,0,-1) x (-1,0,0) = (0, 1, 0)
        // |x| = 1/64 is not below the threshold: Ax = (0,0,1) x N.
        {{q, 0, 1}, true, {0, q, 0}, {-q, 0, q * q}},
        {{1, 2, 2}, true, {-2, 1, 0}, {-2, -4, 5}},
    };
    for (const auto& r : rows) {
        CMatrix4 m;
        m.ApplyECS2WCS(r.n);
        if (!r.changes) {
            EXPECT_TRUE(m.IsUnitary()) << r.n.z;
            continue;
        }
        ExpectRow(m, 0, r.ax);
        ExpectRow(m, 1, r.ay);
        ExpectRow(m, 2, {r.n.x, r.n.y, r.n.z});
        ExpectRow(m, 3, {0, 0, 0});
    }
    // Post-multiplied: the existing translation goes through the frame, (1,2,3) * [Ax; Ay; N] = (-2,1,0) + 2(-2,-4,5) +
    // 3(1,2,2) = (-3,-1,16).
    CMatrix4 moved;
    moved.Move(1, 2, 3);
    moved.ApplyECS2WCS(Vector3d(1, 2, 2));
    ExpectRow(moved, 3, {-3, -1, 16});
}

TEST(CMatrix4, RotateAgreesWithTransformerAndTurnsCounterClockwise) {
    std::mt19937 rng(7);
    std::uniform_real_distribution<double> unit(-1, 1);
    for (int i = 0; i < 50; ++i) {
        const Vector3d axis = Vector3d(unit(rng), unit(rng), unit(rng)).SelfNormalize();
        const double angle = 4 * unit(rng);
        CMatrix4 m;
        m.Rotate(axis, angle);
        Transformer t;
        t.Rotate(Vector(3 * axis.x, 3 * axis.y, 3 * axis.z), angle);  // Transformer normalises its axis
        for (int k = 0; k < 16; ++k) EXPECT_NEAR(t.GetMatrix()[k], Data(m)[k], 1e-14) << k;
    }
    // 120 degrees about (1,1,1) sends X to Y: c = -1/2, s = sqrt(3)/2, t = 3/2, (0,0) = 1/3 - 1/3 = 0, (0,1) = 1/2 +
    // 1/2 = 1, (0,2) = 1/2 - 1/2 = 0.
    CMatrix4 m;
    const double k = 1 / std::sqrt(3.0);
    m.Rotate(Vector3d(k, k, k), 2 * kPi / 3);
    ExpectRow(m, 0, {0, 1, 0});
}

TEST(CMatrix4, RuntimeClassesCreateTheZeroVectorAndTheIdentity) {
    std::unique_ptr<CObject> v(CRuntimeClass::FromName("Vector3d")->CreateObject());
    std::unique_ptr<CObject> m(CRuntimeClass::FromName("CMatrix4")->CreateObject());
    ASSERT_TRUE(v && m);
    EXPECT_TRUE(v->IsKindOf(RUNTIME_CLASS(Vector3d)) && v->IsSerializable());
    EXPECT_TRUE(m->IsKindOf(RUNTIME_CLASS(CMatrix4)) && m->IsSerializable());
    EXPECT_TRUE(static_cast<Vector3d*>(v.get())->IsNull());
    EXPECT_TRUE(static_cast<CMatrix4*>(m.get())->IsUnitary());
}
