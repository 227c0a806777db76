#include <orvmath/vector3d.h>

#include <gtest/gtest.h>

#include <cmath>

using namespace ORVMATH;

namespace {
void ExpectVector(const Vector3d& v, double x, double y, double z) {
    EXPECT_DOUBLE_EQ(v.x, x);
    EXPECT_DOUBLE_EQ(v.y, y);
    EXPECT_DOUBLE_EQ(v.z, z);
}
}  // namespace

TEST(Vector3d, ScalarOperatorsChangeTheVectorItself) {
    Vector3d a(1, 2, 3);
    EXPECT_EQ(&(a * 3.0), &a);
    ExpectVector(a, 3, 6, 9);
    a / 0.0;
    a / 1e-7;  // within the default epsilon (1e-6) of zero: ignored
    ExpectVector(a, 3, 6, 9);
    a / 3.0;
    ExpectVector(a, 1, 2, 3);
}

TEST(Vector3d, FromPointsCrossAndNormalize) {
    const Vector3d d(CDblPoint3(1, 2, 3), CDblPoint3(4, 6, 8));
    ExpectVector(d, 3, 4, 5);
    EXPECT_DOUBLE_EQ(d.Length(), std::sqrt(50.0));  // 9 + 16 + 25
    ExpectVector(Vector3d(1, 0, 0).CrossP(Vector3d(0, 1, 0)), 0, 0, 1);
    ExpectVector(Vector3d(0, 1, 0).CrossP(Vector3d(1, 0, 0)), 0, 0, -1);

    Vector3d v(0, 3, 4);
    ExpectVector(v.Normalize(), 0, 0.6, 0.8);
    ExpectVector(v, 0, 3, 4);  // the copying form leaves v alone
    v.SelfNormalize();
    ExpectVector(v, 0, 0.6, 0.8);
    ExpectVector(Vector3d().SelfNormalize(), 0, 0, 0);
}

TEST(Vector3d, OrderingComparesLengthsWithTolerance) {
    const Vector3d a(3, 4, 0), b(0, 0, 5), c(0, 0, 5 + 1e-7), d(0, 0, 6);
    EXPECT_FALSE(a < b);
    EXPECT_TRUE(a <= b);
    EXPECT_TRUE(a >= b);
    EXPECT_FALSE(a > b);
    EXPECT_FALSE(b < c);  // 1e-7 apart: equal lengths
    EXPECT_TRUE(a < d);
    EXPECT_TRUE(d > a);
    EXPECT_TRUE(b == c);
    EXPECT_TRUE(b != Vector3d(0, 1e-5, 5));
}

TEST(Vector3d, SameDirectionAndNull) {
    struct Row { Vector3d a, b; bool same; };
    const Row rows[] = {
        {{2, 0, 0}, {5, 0, 0}, true},
        {{0, 0, 0}, {0, 0, 0}, true},
        {{1, 0, 0}, {-1, 0, 0}, false},
        {{1, 1, 0}, {3, 3, 1e-9}, true},
        {{1, 1, 0}, {1, 1.01, 0}, false},
    };
    for (const Row& r : rows) EXPECT_EQ(r.a.IsSameDirection(r.b), r.same) << r.b.x << "," << r.b.y;
    EXPECT_FALSE(Vector3d(1e-300, 0, 0).IsNull());
    EXPECT_TRUE(Vector3d(-0.0, 0, 0).IsNull());
}
