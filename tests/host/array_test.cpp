#include <orvmath/host/array.h>

#include <gtest/gtest.h>

#include <limits>
#include <vector>

namespace {
using CDoubles = CArray<double, double>;

// A point whose constructor leaves the members unset.
struct RawPoint {
    double x, y;
    RawPoint() {}
};

std::vector<double> Values(const CDoubles& a) { return std::vector<double>(a.begin(), a.end()); }

CDoubles Make(std::initializer_list<double> values) {
    CDoubles a;
    for (double v : values) a.Add(v);
    return a;
}
}  // namespace

TEST(CArrayAccess, EveryIndexedAccessRejectsOutOfRange) {
    CDoubles a = Make({1, 2, 3});
    const CDoubles& c = a;
    for (INT_PTR i : {INT_PTR(-1), INT_PTR(3), std::numeric_limits<INT_PTR>::max()}) {
        SCOPED_TRACE(i);
        EXPECT_THROW(a.GetAt(i), CInvalidArgException);
        EXPECT_THROW(c.GetAt(i), CInvalidArgException);
        EXPECT_THROW(a.SetAt(i, 0), CInvalidArgException);
        EXPECT_THROW(a.ElementAt(i), CInvalidArgException);
        EXPECT_THROW(a[i], CInvalidArgException);
        EXPECT_THROW(c[i], CInvalidArgException);
        EXPECT_THROW(a.RemoveAt(i), CInvalidArgException);
    }
    EXPECT_THROW(a.InsertAt(4, 0), CInvalidArgException);  // one past the end appends; two past does not
    EXPECT_THROW(a.InsertAt(-1, 0), CInvalidArgException);
    EXPECT_THROW(a.RemoveAt(2, 2), CInvalidArgException);  // range runs past the end
    EXPECT_THROW(a.SetSize(-1), CInvalidArgException);
    EXPECT_THROW(a.SetAtGrow(-1, 0), CInvalidArgException);
    // 2^61 (2^29 on a 32-bit host) doubles: more bytes than the address space.
    EXPECT_THROW(a.SetSize(std::numeric_limits<INT_PTR>::max() / 4), CMemoryException);
    EXPECT_EQ(Values(a), (std::vector<double>{1, 2, 3}));
}

TEST(CArrayGrow, NewElementsAreZeroEvenInReusedMemory) {
    CArray<RawPoint> a;
    a.SetSize(5);
    for (RawPoint& p : a) p.x = p.y = 7;
    a.SetSize(2);  // keeps the block, so elements 2..4 are re-created over the 7s
    a.SetSize(5);
    a.SetAtGrow(7, a[0]);  // grows with an argument that lives in the array
    a.InsertAt(8, a[1]);
    ASSERT_EQ(a.GetSize(), 9);
    for (INT_PTR i = 0; i < a.GetSize(); ++i) {
        const double expected = (i < 2 || i >= 7) ? 7.0 : 0.0;
        EXPECT_EQ(a[i].x, expected) << i;
        EXPECT_EQ(a[i].y, expected) << i;
    }
}

TEST(CArrayEdit, InsertRemoveAndAppendKeepOrder) {
    const struct { const char* name; void (*edit)(CDoubles&); std::vector<double> expected; } rows[] = {
        {"insert 2 copies before 1", [](CDoubles& a) { a.InsertAt(1, 9, 2); }, {1, 9, 9, 2, 3}},
        {"insert at the end", [](CDoubles& a) { a.InsertAt(3, 9); }, {1, 2, 3, 9}},
        {"insert none", [](CDoubles& a) { a.InsertAt(0, 9, 0); }, {1, 2, 3}},
        {"insert own element", [](CDoubles& a) { a.InsertAt(0, a[2], 3); }, {3, 3, 3, 1, 2, 3}},
        {"remove middle", [](CDoubles& a) { a.RemoveAt(1); }, {1, 3}},
        {"remove tail", [](CDoubles& a) { a.RemoveAt(1, 2); }, {1}},
        {"remove none at end", [](CDoubles& a) { a.RemoveAt(3, 0); }, {1, 2, 3}},
        {"grow by setting", [](CDoubles& a) { a.SetAtGrow(5, 6); }, {1, 2, 3, 0, 0, 6}},
        {"append self", [](CDoubles& a) { EXPECT_EQ(a.Append(a), 3); }, {1, 2, 3, 1, 2, 3}},
        // Adding its own element while the block is reallocated, several times over.
        {"add own element", [](CDoubles& a) { for (int i = 0; i < 21; ++i) a.Add(a[i]); },
         {1, 2, 3, 1, 2, 3, 1, 2, 3, 1, 2, 3, 1, 2, 3, 1, 2, 3, 1, 2, 3, 1, 2, 3}},
    };
    for (const auto& row : rows) {
        CDoubles a = Make({1, 2, 3});
        row.edit(a);
        EXPECT_EQ(Values(a), row.expected) << row.name;
    }
}
