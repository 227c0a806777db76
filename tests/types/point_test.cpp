#include <orvmath/containers.h>
#include <orvmath/point2.h>
#include <orvmath/point3.h>

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

using namespace ORVMATH;

// A one-dimensional double safe array with the given lower bound, in a variant.
static VARIANT DoubleArrayVariant(std::vector<double> values, LONG lbound = 0) {
    VARIANT var;
    VariantInit(&var);
    var.vt = VT_ARRAY | VT_R8;
    var.parray = SafeArrayCreateVector(VT_R8, lbound, static_cast<ULONG>(values.size()));
    for (LONG i = 0; i < static_cast<LONG>(values.size()); ++i) {
        LONG index = lbound + i;
        SafeArrayPutElement(var.parray, &index, &values[static_cast<std::size_t>(i)]);
    }
    return var;
}

TEST(CDblPoint, EqualityIsPerAxisInclusiveIsNullExactOperandOrderAndFunctors) {
    EXPECT_TRUE(CDblPoint(1, 2) == CDblPoint(1 + 1e-6, 2 - 1e-6));
    EXPECT_TRUE(CDblPoint(1, 2) != CDblPoint(1 + 2e-6, 2) && CDblPoint(1, 2) != CDblPoint(1, 2 + 2e-6));
    EXPECT_TRUE(CDblPoint(1, 2, 99) == CDblPoint(1, 2));
    EXPECT_FALSE(CDblPoint(1e-300, 0).IsNull() || CDblPoint(std::nan(""), 0.0).IsNull());
    EXPECT_TRUE(CDblPoint(-0.0, 0.0).IsNull());
    const CDblSize d = CDblPoint(4, 6) - CDblPoint(1, 2);  // point minus point is a size
    EXPECT_TRUE(d.cx == 3 && d.cy == 4);
    EXPECT_TRUE(CDblSize(1, 1) - CDblPoint(5, 5) == CDblPoint(4, 4));  // the point moved back by the size
    EXPECT_TRUE(CDblPoint(5, 5) - CDblSize(1, 2) == CDblPoint(4, 3));
    // The functors compare one coordinate with the scalar tests and epsilon.
    const CDblPoint a(1.0, 5.0), b(1.0 + 1e-6, 2.0);
    EXPECT_FALSE(CDblPoint_LessX()(a, b));
    EXPECT_TRUE(CDblPoint_LessEqX()(a, b) && CDblPoint_EqX()(a, b) && CDblPoint_GreatY()(a, b));
    EXPECT_TRUE(CDblPoint_GreatEqY()(b, CDblPoint(0, 2.0000005)));
    {
        CEpsilonReserveDblPoint wide(1.0);  // the point epsilon plays no part
        EXPECT_FALSE(CDblPoint_EqY()(CDblPoint(0, 0), CDblPoint(0, 0.5)));
    }
    EXPECT_TRUE(CDblPoint_assignX(7)(a) == CDblPoint(7, 5) && CDblPoint_assignY(7)(3.0) == CDblPoint(3, 7));
    EXPECT_TRUE(CDblPoint_multiXY(2, -1)(a) == CDblPoint(2, -5));
}

TEST(CDblPoint, IntegerConversionAddsHalfAndTruncatesTowardZero) {
    struct Row { double v; LONG i; } rows[] = {
        {-1.7, -1}, {2.5, 3}, {-2.5, -2}, {-0.4, 0}, {0.49, 0}, {1e12, INT32_MIN}, {std::nan(""), INT32_MIN},
    };
    for (const Row& r : rows) {
        const CPoint ip = CDblPoint(0, r.v);
        const CSize is = CDblSize(r.v, 0);
        EXPECT_TRUE(ip.y == r.i && is.cx == r.i) << r.v << ": " << ip.y << " " << is.cx;
    }
}

TEST(CDblPoint, VariantImportAcceptsOnlyOneDimensionalDoubleArraysAndExportRoundTrips) {
    CDblPoint p(9, 9);
    VARIANT v = DoubleArrayVariant({1.5, -2.5}), one = DoubleArrayVariant({4.0}), byref = DoubleArrayVariant({4, 5});
    VARIANT ref, two;
    VariantInit(&ref);
    ref.vt = VT_ARRAY | VT_R8 | VT_BYREF;
    ref.pparray = &byref.parray;
    SAFEARRAYBOUND b[2] = {{2, 0}, {2, 0}};
    VariantInit(&two);
    two.vt = VT_ARRAY | VT_R8;
    two.parray = SafeArrayCreate(VT_R8, 2, b);
    p.FromVariant(v);
    EXPECT_TRUE(p.x == 1.5 && p.y == -2.5);
    for (const VARIANT* x : {&one, &ref, &two}) p.FromVariant(*x);  // one element, by reference, two dimensions
    EXPECT_TRUE(p.x == 1.5 && p.y == -2.5);
    for (VARIANT* x : {&v, &one, &byref, &two}) VariantClear(x);

    VARIANT v2 = CDblPoint(3, 4).To2DVariant(), v3 = CDblPoint(3, 4).To3DVariant();
    ASSERT_EQ(v2.vt, VT_ARRAY | VT_R8);
    LONG lb = -1, ub = -1;
    SafeArrayGetLBound(v2.parray, 1, &lb);
    SafeArrayGetUBound(v2.parray, 1, &ub);
    EXPECT_TRUE(lb == 0 && ub == 1) << lb << " " << ub;
    p.FromVariant(v2);
    EXPECT_TRUE(p == CDblPoint(3, 4));
    CDblPoint3 p3(7, 7, 7);
    p3.FromVariant(v3);
    EXPECT_TRUE(p3.x == 3 && p3.y == 4 && p3.z == 0);
    for (VARIANT* x : {&v2, &v3}) VariantClear(x);
}

TEST(CDblPoint3, StrictEqualityConversionsAndVariantImportAtLiteralIndices) {
    // A difference equal to the epsilon: planar points are equal, spatial ones are not.
    EXPECT_FALSE(CDblPoint3(0, 0, 0) == CDblPoint3(0, 0, 1e-6));
    EXPECT_TRUE(CDblPoint(0, 0) == CDblPoint(0, 1e-6) && CDblPoint3(0, 0, 0) == CDblPoint3(0, 0, 9e-7));
    EXPECT_FALSE(CDblPoint3(0, 0, 1e-300).IsNull());
    CDblPoint3 p(1, 2, 5);
    p = CDblPoint(3, 4);
    EXPECT_EQ(p.z, 0);  // z reset, not kept

    VARIANT two = DoubleArrayVariant({5, 6}), three = DoubleArrayVariant({5, 6, 7});
    VARIANT shifted = DoubleArrayVariant({10, 20, 30}, 1);
    p.FromVariant(two);
    EXPECT_EQ(p.x, 3);
    p.FromVariant(three);
    EXPECT_TRUE(p.x == 5 && p.y == 6 && p.z == 7);
    // With a lower bound of 1, index 0 is not in the array and 3 is; the read
    // that misses leaves its coordinate alone.
    p.FromVariant(shifted);
    EXPECT_TRUE(p.x == 5 && p.y == 10 && p.z == 20) << p.x << " " << p.y << " " << p.z;
    for (VARIANT* x : {&two, &three, &shifted}) VariantClear(x);
}

TEST(CDblPointArray, VariantImportRulesRoundTripsAndTolerantEquality) {
    CDblPointArray pts;
    pts.Add(42, 42);
    VARIANT five = DoubleArrayVariant({1, 2, 3, 4, 5}), six = DoubleArrayVariant({1, 2, 3, 4, 5, 6});
    pts.From2DArrayVariant(five);  // odd count: unchanged
    EXPECT_EQ(pts.GetSize(), 1);
    pts.From3DArrayVariant(six);  // (1,2,3) (4,5,6): z dropped, replaces
    ASSERT_EQ(pts.GetSize(), 2);
    EXPECT_TRUE(pts[0] == CDblPoint(1, 2) && pts[1] == CDblPoint(4, 5));
    pts.From2DArrayVariant(six);
    ASSERT_EQ(pts.GetSize(), 3);
    EXPECT_TRUE(pts[2] == CDblPoint(5, 6));
    for (VARIANT* x : {&five, &six}) VariantClear(x);
    for (bool threeD : {true, false}) {
        VARIANT out = threeD ? pts.To3DArrayVariant() : pts.To2DArrayVariant();
        CDblPointArray back;
        if (threeD) back.From3DArrayVariant(out);
        else back.From2DArrayVariant(out);
        EXPECT_TRUE(back == pts) << threeD;
        VariantClear(&out);
        back[0].y += 1e-6 * (threeD ? 0.5 : 2);  // equality goes through the points' own
        EXPECT_EQ(back == pts, threeD);
    }
}
