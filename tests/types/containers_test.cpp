#include <orvmath/containers.h>

#include <gtest/gtest.h>

#include <climits>
#include <initializer_list>

using namespace ORVMATH;

namespace {
template <class A, class T>
A Make(std::initializer_list<T> values) {
    A a;
    for (const T& v : values) a.Add(v);
    return a;
}
CDblArray Dbl(std::initializer_list<double> v) { return Make<CDblArray>(v); }
CIntArray Int(std::initializer_list<int> v) { return Make<CIntArray>(v); }

VARIANT Doubles(int n) {
    SAFEARRAY* psa = SafeArrayCreateVector(VT_R8, 0, n);
    for (LONG i = 0; i < n; ++i) {
        double v = i + 1.0;
        SafeArrayPutElement(psa, &i, &v);
    }
    VARIANT var;
    VariantInit(&var);
    var.vt = VT_ARRAY | VT_R8;
    var.parray = psa;
    return var;
}
}  // namespace

TEST(ArrayOperators, ShorterSecondOperandGivesEmptyResult) {
    EXPECT_TRUE((Dbl({1, 2, 3}) + Dbl({10, 20})).IsEmpty());
    EXPECT_TRUE(Dbl({1, 2}) + Dbl({10, 20, 30}) == Dbl({11, 22}));
    EXPECT_TRUE(Dbl({1, 2}) - Dbl({10, 20, 30}) == Dbl({-9, -18}));
    EXPECT_TRUE(Dbl({1, 2}) - 1.0 == Dbl({0, 1}));
    EXPECT_TRUE(Int({1, 2}) + Int({1, 1}) == Int({2, 3}));
    EXPECT_TRUE((Int({1, 2, 3}) - Int({1})).IsEmpty());
    EXPECT_TRUE(Int({INT_MAX}) + 1 == Int({INT_MIN}));  // wraps as the 32-bit original did
}

TEST(ArrayStatistics, EmptyIsZeroAndFirstExtremeWins) {
    CDblArray empty;
    EXPECT_EQ(empty.summation(), 0.0);
    EXPECT_EQ(empty.average_value(), 0.0);
    EXPECT_EQ(empty.maximum_value(), 0.0);
    EXPECT_EQ(CIntArray().minimum_value(), 0);
    EXPECT_EQ(CDblVector().average_value(), 0.0);

    const CDblArray a = Dbl({2, -1, 5, 5});
    EXPECT_EQ(a.summation(), 11.0);
    EXPECT_EQ(a.average_value(), 2.75);
    EXPECT_EQ(a.maximum_value(), 5.0);
    EXPECT_EQ(a.minimum_value(), -1.0);
    const CIntArray i = Int({4, 7, 7});
    EXPECT_EQ(i.index(7), 1);
    EXPECT_EQ(i.index(9), -1);
    EXPECT_TRUE(i.find(4));
    EXPECT_EQ(i.average_value(), 6.0);
}

TEST(ArrayEquality, TolerantForDoublesAndPoints) {
    EXPECT_TRUE(Dbl({1, 2}) == Dbl({1 + 1e-6, 2}));
    EXPECT_FALSE(Dbl({1, 2}) == Dbl({1 + 2e-6, 2}));
    EXPECT_FALSE(Dbl({1}) == Dbl({1, 2}));
    EXPECT_TRUE(CDblArray() == CDblArray());
    CDblPointArray p, q;
    p.Add(1, 2);
    q.Add(1 + 1e-6, 2 - 1e-6);
    EXPECT_TRUE(p == q);
    CDblArray2D n, m;
    n.Add(Dbl({1, 2}));
    m.Add(Dbl({1, 2.0000005}));
    EXPECT_TRUE(n == m);
}

TEST(ArrayConversions, EmptyVectorLeavesArrayAlone) {
    CDblArray a = Dbl({7, 8});
    a.from(CDblVector());
    EXPECT_TRUE(a == Dbl({7, 8}));
    a.from(CDblVector{1, 2, 3});
    EXPECT_TRUE(a == Dbl({1, 2, 3}));
    a = 4.0;  // every element, size kept
    EXPECT_TRUE(a == Dbl({4, 4, 4}));
    CDblArray none;
    none = 4.0;
    EXPECT_TRUE(none.IsEmpty());

    CDblVector v{9};
    v.from(a);
    EXPECT_EQ(v.size(), 3u);
    CDblPointArray pa;
    pa.Add(1, 1);
    pa.from(CDblPointVector());
    EXPECT_EQ(pa.GetSize(), 1);
    CDblPointVector pv;
    pv.from(pa);
    EXPECT_EQ(pv.size(), 1u);
}

TEST(CDblVector, CompareBySizeThenFirstDifference) {
    EXPECT_EQ(CDblVector({1, 2}).compare(CDblVector{1, 2 + 1e-7}), 0);
    EXPECT_EQ(CDblVector({1, 2}).compare(CDblVector{1, 3}), -1);
    EXPECT_EQ(CDblVector({1, 4}).compare(CDblVector{1, 3}), 1);
    EXPECT_EQ(CDblVector({5}).compare(CDblVector{1, 2}), -1);  // size decides first
    EXPECT_EQ(CDblVector().compare(CDblVector()), 0);
}

TEST(CDblPointVector, FillersAndAppenders) {
    CDblPointVector v;
    v.from_x(2.5);
    ASSERT_EQ(v.size(), 2u);
    EXPECT_EQ(v[0].y, -1e9);
    EXPECT_EQ(v[1].y, 1e9);
    v.from_y(-1);
    EXPECT_EQ(v[2].x, -1e9);
    v.push_back(3, 4);
    v.from(CDblPoint(0, 0), CDblPoint(1, 1), CDblPoint(2, 2), CDblPoint(3, 3));
    EXPECT_EQ(v.size(), 9u);
    EXPECT_EQ(v.back().x, 3);
    CDblPointVector w = v;
    w[0].x += 5e-7;
    EXPECT_TRUE(v == w);
}

TEST(CDblPointArray, VariantImportRules) {
    CDblPointArray pts;
    pts.Add(42, 42);
    VARIANT five = Doubles(5);
    pts.From2DArrayVariant(five);  // odd count: unchanged
    EXPECT_EQ(pts.GetSize(), 1);
    VariantClear(&five);

    VARIANT six = Doubles(6);
    pts.From3DArrayVariant(six);  // (1,2,3) (4,5,6): z dropped
    ASSERT_EQ(pts.GetSize(), 2);
    EXPECT_EQ(pts[1].x, 4);
    EXPECT_EQ(pts[1].y, 5);
    pts.From2DArrayVariant(six);
    ASSERT_EQ(pts.GetSize(), 3);
    EXPECT_EQ(pts[2].y, 6);
    VariantClear(&six);

    VARIANT out = pts.To3DArrayVariant();
    CDblPointArray back;
    back.From3DArrayVariant(out);
    EXPECT_TRUE(back == pts);
    VariantClear(&out);
    out = pts.To2DArrayVariant();
    back.From2DArrayVariant(out);
    EXPECT_TRUE(back == pts);
    VariantClear(&out);
}
