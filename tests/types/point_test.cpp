#include <orvmath/point2.h>
#include <orvmath/point3.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

using namespace ORVMATH;

namespace {
// A one-dimensional double safe array with the given lower bound, wrapped in a variant.
VARIANT DoubleArrayVariant(const std::vector<double>& values, LONG lbound = 0) {
    SAFEARRAY* psa = SafeArrayCreateVector(VT_R8, lbound, static_cast<ULONG>(values.size()));
    for (std::size_t i = 0; i < values.size(); ++i) {
        LONG index = lbound + static_cast<LONG>(i);
        double v = values[i];
        SafeArrayPutElement(psa, &index, &v);
    }
    VARIANT var;
    VariantInit(&var);
    var.vt = VT_ARRAY | VT_R8;
    var.parray = psa;
    return var;
}
}  // namespace

TEST(CDblPoint, EqualityIsPerAxisAndInclusive) {
    EXPECT_TRUE(CDblPoint(1, 2) == CDblPoint(1 + 1e-6, 2 - 1e-6));
    EXPECT_TRUE(CDblPoint(1, 2) != CDblPoint(1 + 2e-6, 2));
    EXPECT_TRUE(CDblPoint(1, 2, 99) == CDblPoint(1, 2));
}

TEST(CDblPoint, IsNullIsExact) {
    EXPECT_FALSE(CDblPoint(1e-300, 0).IsNull());
    EXPECT_TRUE(CDblPoint(-0.0, 0.0).IsNull());
    EXPECT_FALSE(CDblPoint(std::nan(""), 0.0).IsNull());
}

TEST(CDblPoint, ArithmeticAndOperandOrder) {
    const CDblPoint p(1, 2), q(4, 6);
    const CDblSize d = q - p;  // point minus point is a size
    EXPECT_EQ(d.cx, 3);
    EXPECT_EQ(d.cy, 4);
    EXPECT_EQ((p + d).x, 4);
    // size minus point moves the point back by the size
    const CDblPoint back = CDblSize(1, 1) - CDblPoint(5, 5);
    EXPECT_EQ(back.x, 4);
    EXPECT_EQ(back.y, 4);
    CDblPoint m = p;
    m -= CDblSize(1, 2);
    EXPECT_TRUE(m.IsNull());
    EXPECT_TRUE(std::signbit((-CDblPoint(0, 0)).x));  // sign bit flipped
    EXPECT_DOUBLE_EQ(Distance(p, q), 5.0);
}

TEST(CDblPoint, IntegerConversionAddsHalfAndTruncatesTowardZero) {
    struct Row { double v; LONG i; } rows[] = {
        {-1.7, -1}, {2.5, 3}, {-2.5, -2}, {-0.4, 0}, {0.49, 0}, {1e12, INT32_MIN}, {std::nan(""), INT32_MIN},
    };
    for (const Row& r : rows) {
        const CPoint ip = CDblPoint(r.v, r.v);
        EXPECT_EQ(ip.x, r.i) << r.v;
        const CSize is = CDblSize(r.v, 0);
        EXPECT_EQ(is.cx, r.i) << r.v;
    }
    const CDblPoint back(CPoint(-3, 7));
    EXPECT_EQ(back.x, -3.0);
    EXPECT_EQ(back.y, 7.0);
}

TEST(CDblPoint, FunctorsUseTheScalarEpsilon) {
    const CDblPoint a(1.0, 5.0), b(1.0 + 1e-6, 2.0);
    EXPECT_FALSE(CDblPoint_LessX()(a, b));
    EXPECT_TRUE(CDblPoint_LessEqX()(a, b));
    EXPECT_TRUE(CDblPoint_EqX()(a, b));
    EXPECT_TRUE(CDblPoint_GreatY()(a, b));
    EXPECT_TRUE(CDblPoint_GreatEqY()(b, CDblPoint(0, 2.0000005)));
    std::vector<CDblPoint> v = {{3, 0}, {1, 0}, {2, 0}};
    std::sort(v.begin(), v.end(), CDblPoint_LessX());
    EXPECT_EQ(v[0].x, 1);
    EXPECT_EQ(CDblPoint_assignX(7)(a).x, 7);
    EXPECT_EQ(CDblPoint_assignY(7)(3.0).x, 3);
    const CDblPoint s = CDblPoint_multiXY(2, -1)(a);
    EXPECT_EQ(s.x, 2);
    EXPECT_EQ(s.y, -5);
}

TEST(CDblPoint, VariantImportAcceptsOnlyOneDimensionalDoubleArrays) {
    CDblPoint p(9, 9);
    VARIANT v = DoubleArrayVariant({1.5, -2.5});
    p.FromVariant(v);
    EXPECT_EQ(p.x, 1.5);
    EXPECT_EQ(p.y, -2.5);
    VariantClear(&v);

    VARIANT one = DoubleArrayVariant({4.0});
    p.FromVariant(one);  // one element: unchanged
    EXPECT_EQ(p.x, 1.5);
    VariantClear(&one);

    VARIANT byref = DoubleArrayVariant({4.0, 5.0});
    SAFEARRAY* psa = byref.parray;
    VARIANT ref;
    VariantInit(&ref);
    ref.vt = VT_ARRAY | VT_R8 | VT_BYREF;
    ref.pparray = &psa;
    p.FromVariant(ref);  // by-reference: unchanged
    EXPECT_EQ(p.x, 1.5);
    VariantClear(&byref);

    SAFEARRAYBOUND b[2] = {{2, 0}, {2, 0}};
    VARIANT two;
    VariantInit(&two);
    two.vt = VT_ARRAY | VT_R8;
    two.parray = SafeArrayCreate(VT_R8, 2, b);
    p.FromVariant(two);  // two dimensions: unchanged
    EXPECT_EQ(p.x, 1.5);
    VariantClear(&two);
}

TEST(CDblPoint, VariantExportRoundTrips) {
    VARIANT v2 = CDblPoint(3, 4).To2DVariant();
    ASSERT_EQ(v2.vt, VT_ARRAY | VT_R8);
    LONG lb = -1, ub = -1;
    SafeArrayGetLBound(v2.parray, 1, &lb);
    SafeArrayGetUBound(v2.parray, 1, &ub);
    EXPECT_EQ(lb, 0);
    EXPECT_EQ(ub, 1);
    CDblPoint back;
    back.FromVariant(v2);
    EXPECT_EQ(back.y, 4);
    VariantClear(&v2);

    VARIANT v3 = CDblPoint(3, 4).To3DVariant();
    CDblPoint3 p3(7, 7, 7);
    p3.FromVariant(v3);
    EXPECT_EQ(p3.x, 3);
    EXPECT_EQ(p3.z, 0);
    VariantClear(&v3);
}

TEST(CDblPoint3, StrictEqualityAndConversions) {
    // The difference equals the epsilon: planar points are equal, spatial ones are not.
    EXPECT_FALSE(CDblPoint3(0, 0, 0) == CDblPoint3(0, 0, 1e-6));
    EXPECT_TRUE(CDblPoint(0, 0) == CDblPoint(0, 1e-6));
    EXPECT_TRUE(CDblPoint3(0, 0, 0) == CDblPoint3(0, 0, 9e-7));
    EXPECT_FALSE(CDblPoint3(0, 0, 1e-300).IsNull());

    CDblPoint3 p(1, 2, 5);
    p = CDblPoint(3, 4);
    EXPECT_EQ(p.z, 0);  // z reset, not kept
    const CDblPoint flat = CDblPoint3(1, 2, 3);
    EXPECT_EQ(flat.y, 2);
    const double raw[3] = {7, 8, 9};
    EXPECT_EQ(CDblPoint3(raw).z, 9);
}

TEST(CDblPoint3, VariantImportNeedsThreeElements) {
    CDblPoint3 p(1, 1, 1);
    VARIANT two = DoubleArrayVariant({5, 6});
    p.FromVariant(two);
    EXPECT_EQ(p.x, 1);
    VariantClear(&two);
    VARIANT three = DoubleArrayVariant({5, 6, 7});
    p.FromVariant(three);
    EXPECT_EQ(p.z, 7);
    VariantClear(&three);
    // Literal indices: with a lower bound of 1, index 0 is not in the array
    // and index 3 is; the reads that miss leave their coordinates alone.
    VARIANT shifted = DoubleArrayVariant({10, 20, 30}, 1);
    p.FromVariant(shifted);
    EXPECT_EQ(p.x, 5);
    EXPECT_EQ(p.y, 10);
    EXPECT_EQ(p.z, 20);
    VariantClear(&shifted);
}
