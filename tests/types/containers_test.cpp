#include <orvmath/containers.h>

#include <gtest/gtest.h>

#include <climits>
#include <initializer_list>

using namespace ORVMATH;

template <class A, class T>
static A Make(std::initializer_list<T> values) {
    A a;
    for (const T& v : values) a.Add(v);
    return a;
}
static CDblArray Dbl(std::initializer_list<double> v) { return Make<CDblArray>(v); }
static CIntArray Int(std::initializer_list<int> v) { return Make<CIntArray>(v); }

TEST(ArrayOperators, ShorterSecondOperandGivesEmptyResult) {
    EXPECT_TRUE((Dbl({1, 2, 3}) + Dbl({10, 20})).IsEmpty());
    EXPECT_TRUE(Dbl({1, 2}) + Dbl({10, 20, 30}) == Dbl({11, 22}));
    EXPECT_TRUE(Dbl({1, 2}) - Dbl({10, 20, 30}) == Dbl({-9, -18}));
    EXPECT_TRUE(Dbl({1, 2}) - 1.0 == Dbl({0, 1}));
    EXPECT_TRUE(Int({1, 2}) + Int({1, 1}) == Int({2, 3}));
    EXPECT_TRUE((Int({1, 2, 3}) - Int({1})).IsEmpty());
    EXPECT_TRUE(Int({INT_MAX}) + 1 == Int({INT_MIN}));  // wraps as the 32-bit original did
}

TEST(ArrayStatistics, EmptyIsZeroFirstMatchAndTolerantEquality) {
    EXPECT_TRUE(CDblArray().average_value() == 0.0 && CDblVector().average_value() == 0.0);  // not 0/0
    EXPECT_TRUE(CDblArray().maximum_value() == 0.0 && CIntArray().minimum_value() == 0);
    const CDblArray a = Dbl({2, -1, 5, 5});
    EXPECT_TRUE(a.summation() == 11.0 && a.average_value() == 2.75);
    EXPECT_TRUE(a.maximum_value() == 5.0 && a.minimum_value() == -1.0);
    const CIntArray i = Int({4, 7, 7});
    EXPECT_TRUE(i.index(7) == 1 && i.index(9) == -1 && i.find(4));
    EXPECT_EQ(i.average_value(), 6.0);  // in double, not integer division

    EXPECT_TRUE(Dbl({1, 2}) == Dbl({1 + 1e-6, 2}));
    EXPECT_FALSE(Dbl({1, 2}) == Dbl({1 + 2e-6, 2}));
    EXPECT_FALSE(Dbl({1}) == Dbl({1, 2}));
    CDblArray2D n, m;
    n.Add(Dbl({1, 2}));
    m.Add(Dbl({1, 2.0000005}));
    EXPECT_TRUE(n == m);
}

TEST(ArrayConversions, EmptyVectorLeavesArrayAloneAndScalarFillsKeepSize) {
    CDblArray a = Dbl({7, 8}), none;
    a.from(CDblVector());
    EXPECT_TRUE(a == Dbl({7, 8}));
    a.from(CDblVector{1, 2, 3});
    a = 4.0;
    none = 4.0;
    EXPECT_TRUE(a == Dbl({4, 4, 4}) && none.IsEmpty());
    CDblVector v{9};
    v.from(a);  // replaces
    EXPECT_TRUE(v == CDblVector({4, 4, 4}));

    CDblPointArray pa;
    pa.Add(1, 1);
    pa.from(CDblPointVector());
    EXPECT_EQ(pa.GetSize(), 1);
    CDblPointVector pv{CDblPoint(5, 5), CDblPoint(6, 6)};
    pv.from(pa);
    EXPECT_TRUE(pv == CDblPointVector({CDblPoint(1, 1)}));
}

TEST(Vectors, CompareBySizeThenFirstDifferencePointFillersAppendInOrder) {
    EXPECT_EQ(CDblVector({1, 2}).compare(CDblVector{1, 2 + 1e-7}), 0);
    EXPECT_EQ(CDblVector({1, 2}).compare(CDblVector{1, 3}), -1);
    EXPECT_EQ(CDblVector({1, 4}).compare(CDblVector{1, 3}), 1);
    EXPECT_EQ(CDblVector({5}).compare(CDblVector{1, 2}), -1);  // size decides first
    CDblPointVector v;
    v.from_x(2.5);
    v.from_y(-1);
    v.push_back(3, 4);
    v.from(CDblPoint(0, 0), CDblPoint(1, 1), CDblPoint(2, 2), CDblPoint(3, 3));
    const CDblPointVector want{{2.5, -1e9}, {2.5, 1e9}, {-1e9, -1}, {1e9, -1}, {3, 4}, {0, 0}, {1, 1}, {2, 2}, {3, 3}};
    EXPECT_TRUE(v == want);
    v[0].x += 5e-7;
    EXPECT_TRUE(v == want);
    v[0].x += 2e-6;
    EXPECT_FALSE(v == want);
}
