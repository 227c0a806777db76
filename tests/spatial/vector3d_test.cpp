#include <orvmath/vector3d.h>

#include <gtest/gtest.h>

using namespace ORVMATH;

namespace {
void ExpectVector(const Vector3d& v, double x, double y, double z) {
    EXPECT_DOUBLE_EQ(v.x, x);
    EXPECT_DOUBLE_EQ(v.y, y);
    EXPECT_DOUBLE_EQ(v.z, z);
}
}  // namespace

TEST(Vector3d, ScalarOperatorsChangeTheVectorItselfAndZeroStaysUnnormalized) {
    Vector3d a(1, 2, 3), v(0, 3, 4);
    EXPECT_EQ(&(a * 3.0), &a);
    ExpectVector(a, 3, 6, 9);
    a / 0.0;
    a / 1e-7;  // within the default epsilon (1e-6) of zero: ignored
    ExpectVector(a, 3, 6, 9);
    a / 3.0;
    ExpectVector(a, 1, 2, 3);
    ExpectVector(v.SelfNormalize(), 0, 0.6, 0.8);
    ExpectVector(Vector3d().SelfNormalize(), 0, 0, 0);  // a zero vector stays as it is
}
