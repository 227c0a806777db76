#include <orvmath/angle.h>
#include <orvmath/coordsys.h>
#include <orvmath/host/archive.h>
#include <orvmath/host/file.h>
#include <orvmath/matrix4.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <random>

using namespace ORVMATH;

namespace {

void ExpectRow(const CMatrix4& m, int r, double a, double b, double c) {
    EXPECT_NEAR(m(r, 0), a, 1e-15) << "row " << r;
    EXPECT_NEAR(m(r, 1), b, 1e-15) << "row " << r;
    EXPECT_NEAR(m(r, 2), c, 1e-15) << "row " << r;
}

void ExpectIdentity(const double* m, double tol) {
    for (int k = 0; k < 16; ++k) EXPECT_NEAR(m[k], k % 5 == 0 ? 1.0 : 0.0, tol) << "element " << k;
}

const double* Data(const CMatrix4& m) { return &m(0, 0); }

// Inverts m through both matrix classes: both must succeed, give the very same
// elements (one elimination serves both), and multiply back to the identity.
void CheckInverse(const CMatrix4& m) {
    CMatrix4 inv = m;
    ASSERT_TRUE(inv.InvMatrix(0.0));
    double rows[4][4];
    std::memcpy(rows, Data(m), sizeof rows);
    Transformer t, tinv;
    t.SetMatrix(rows, false);
    tinv.SetMatrix(rows, false);
    ASSERT_TRUE(tinv.Invert(0.0));
    EXPECT_EQ(std::memcmp(tinv.GetMatrix(), Data(inv), sizeof rows), 0);
    ExpectIdentity(Data(m * inv), 1e-12);
    ExpectIdentity(Data(inv * m), 1e-12);
    Transformer back;
    back.Multiply(t, tinv);
    ExpectIdentity(back.GetMatrix(), 1e-12);
}

}  // namespace

TEST(CMatrix4, ElementarySettersWriteOnlyTheirOwnElements) {
    CMatrix4 m;
    m(0, 1) = 7;
    m(2, 3) = 9;
    m.Move(1, 2, 3);
    m.Scale(2, 3, 4);
    EXPECT_EQ(m(0, 1), 7.0);
    EXPECT_EQ(m(2, 3), 9.0);
    ExpectRow(m, 3, 1, 2, 3);
    ExpectRow(m, 1, 0, 3, 0);
    m.RotateZ(kPi / 2);  // (0,1) <- sin = 1, (2,3) stays
    EXPECT_EQ(m(2, 3), 9.0);
    ExpectRow(m, 0, 0, 1, 0);
    ExpectRow(m, 2, 0, 0, 1);

    CMatrix4 t;
    t.Move(1, 2, 3);
    const CDblPoint3 p = t.Transform(CDblPoint3(0, 0, 0));
    EXPECT_TRUE(p == CDblPoint3(1, 2, 3));
    EXPECT_TRUE(t.Transform(Vector3d(1, 0, 0)) == Vector3d(1, 0, 0));  // directions are not moved
    EXPECT_TRUE(t.InvMatrix(-1));
    ExpectRow(t, 3, -1, -2, -3);
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
    CMatrix4 tiny;
    tiny.Scale(1e-7, 1, 1);
    CMatrix4 copy = tiny;
    EXPECT_FALSE(copy.InvMatrix(-1));
    copy = tiny;
    EXPECT_TRUE(copy.InvMatrix(0.0));
    EXPECT_DOUBLE_EQ(copy(0, 0), 1e7);
    t.Scale(1e-7);
    EXPECT_TRUE(t.Invert(-1));  // Transformer takes eps as given
}

TEST(CMatrix4, ApplyECS2WCSFollowsTheArbitraryAxisRule) {
    struct Row { Vector3d n; bool changes; double ax[3], ay[3]; };
    const double q = 1.0 / 64;
    const Row rows[] = {
        {{0, 0, 0}, false, {}, {}},
        {{0, 0, 1}, false, {}, {}},
        {{0, 0, 1 + 1e-7}, false, {}, {}},  // equal to +Z within tolerance
        // |x|, |y| < 1/64: Ax = (0,1,0) x N, Ay = N x Ax, neither normalised.
        {{0, 0, 2}, true, {2, 0, 0}, {0, 4, 0}},
        {{0.01, 0, 1}, true, {1, 0, -0.01}, {0, 1.0001, 0}},   // 1 + 0.01^2
        {{0, 0, -1}, true, {-1, 0, 0}, {0, 1, 0}},  // (0,0,-1) x (-1,0,0) = (0, 1, 0)
        // |x| = 1/64 is not below the threshold: Ax = (0,0,1) x N.
        {{q, 0, 1}, true, {0, q, 0}, {-q, 0, q * q}},
        {{1, 2, 2}, true, {-2, 1, 0}, {-2, -4, 5}},
    };
    for (const Row& r : rows) {
        CMatrix4 m;
        m.ApplyECS2WCS(r.n);
        if (!r.changes) {
            EXPECT_TRUE(m.IsUnitary()) << r.n.z;
            continue;
        }
        ExpectRow(m, 0, r.ax[0], r.ax[1], r.ax[2]);
        ExpectRow(m, 1, r.ay[0], r.ay[1], r.ay[2]);
        ExpectRow(m, 2, r.n.x, r.n.y, r.n.z);
        ExpectRow(m, 3, 0, 0, 0);
    }
    // Post-multiplied: the existing translation goes through the frame,
    // (1,2,3) * [Ax; Ay; N] = (-2,1,0) + 2(-2,-4,5) + 3(1,2,2) = (-3,-1,16).
    CMatrix4 moved;
    moved.Move(1, 2, 3);
    moved.ApplyECS2WCS(Vector3d(1, 2, 2));
    ExpectRow(moved, 3, -3, -1, 16);
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
    // 120 degrees about (1,1,1) sends X to Y: c = -1/2, s = sqrt(3)/2, t = 3/2,
    // (0,0) = 1/3 - 1/3 = 0, (0,1) = 1/2 + 1/2 = 1, (0,2) = 1/2 - 1/2 = 0.
    CMatrix4 m;
    const double k = 1 / std::sqrt(3.0);
    m.Rotate(Vector3d(k, k, k), 2 * kPi / 3);
    ExpectRow(m, 0, 0, 1, 0);
    CMatrix4 z, rz;
    z.Rotate(Vector3d(0, 0, 1), 0.3);
    rz.RotateZ(0.3);
    EXPECT_TRUE(z == rz);
}

TEST(CMatrix4, RuntimeClassesCreateZeroVectorAndIdentity) {
    std::unique_ptr<CObject> v(CRuntimeClass::FromName("Vector3d")->CreateObject());
    std::unique_ptr<CObject> m(RUNTIME_CLASS(CMatrix4)->CreateObject());
    ASSERT_TRUE(v && m);
    EXPECT_TRUE(v->IsKindOf(RUNTIME_CLASS(Vector3d)) && v->IsSerializable());
    EXPECT_TRUE(m->IsKindOf(RUNTIME_CLASS(CObject)));
    EXPECT_STREQ(m->GetRuntimeClass()->m_lpszClassName, "CMatrix4");
    EXPECT_TRUE(static_cast<Vector3d*>(v.get())->IsNull());
    EXPECT_TRUE(static_cast<CMatrix4*>(m.get())->IsUnitary());
}

TEST(CMatrix4, ArchiveRecordsAreRawDoublesRowByRow) {
    CMatrix4 m;
    m.Move(1, 2, 3);
    m(0, 3) = -2;
    Vector3d v(0.5, -2, 1);
    CMemFile file;
    {
        CArchive ar(&file, CArchive::store);
        m.Serialize(ar);
        v.Serialize(ar);
    }
    ASSERT_EQ(file.GetLength(), 128u + 24u);
    std::unique_ptr<BYTE, void (*)(void*)> bytes(file.Detach(), std::free);
    // Little-endian binary64: 1.0 = ..F0 3F, -2.0 = ..00 C0; (0,3) is the 4th double.
    EXPECT_EQ(bytes.get()[7], 0x3F);
    EXPECT_EQ(bytes.get()[6], 0xF0);
    EXPECT_EQ(bytes.get()[3 * 8 + 7], 0xC0);
    EXPECT_EQ(bytes.get()[12 * 8 + 7], 0x3F);  // (3,0) = 1.0
    CMemFile in(bytes.get(), 152);
    CArchive ar(&in, CArchive::load);
    CMatrix4 m2;
    Vector3d v2;
    m2.Serialize(ar);
    v2.Serialize(ar);
    EXPECT_EQ(std::memcmp(Data(m2), Data(m), 128), 0);
    EXPECT_TRUE(v2.x == 0.5 && v2.y == -2 && v2.z == 1);
}
