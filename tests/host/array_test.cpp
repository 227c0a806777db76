#include <orvmath/host/array.h>
#include <orvmath/host/cstring.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <vector>

namespace {

using CDoubles = CArray<double, double>;
using CNested = CArray<CDoubles>;

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
    for (INT_PTR i : {INT_PTR(-1), INT_PTR(3), INT_PTR(1) << 40}) {
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
    EXPECT_THROW(a.SetSize(INT_PTR(1) << 62), CMemoryException);  // 2^65 bytes
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
    struct Row {
        const char* name;
        void (*edit)(CDoubles&);
        std::vector<double> expected;
    };
    const Row rows[] = {
        {"insert 2 copies before 1", [](CDoubles& a) { a.InsertAt(1, 9, 2); }, {1, 9, 9, 2, 3}},
        {"insert at the end", [](CDoubles& a) { a.InsertAt(3, 9); }, {1, 2, 3, 9}},
        {"insert none", [](CDoubles& a) { a.InsertAt(0, 9, 0); }, {1, 2, 3}},
        {"insert own element", [](CDoubles& a) { a.InsertAt(0, a[2], 3); }, {3, 3, 3, 1, 2, 3}},
        {"remove middle", [](CDoubles& a) { a.RemoveAt(1); }, {1, 3}},
        {"remove tail", [](CDoubles& a) { a.RemoveAt(1, 2); }, {1}},
        {"remove none at end", [](CDoubles& a) { a.RemoveAt(3, 0); }, {1, 2, 3}},
        {"grow by setting", [](CDoubles& a) { a.SetAtGrow(5, 6); }, {1, 2, 3, 0, 0, 6}},
        {"append self", [](CDoubles& a) { EXPECT_EQ(a.Append(a), 3); }, {1, 2, 3, 1, 2, 3}},
        {"add own element many times", [](CDoubles& a) { for (int i = 0; i < 20; ++i) a.Add(a[0]); },
         {1, 2, 3, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1}},
    };
    for (const Row& row : rows) {
        CDoubles a = Make({1, 2, 3});
        row.edit(a);
        EXPECT_EQ(Values(a), row.expected) << row.name;
    }
}

TEST(CArrayNested, CopiesAreDeepAndIndependent) {
    CNested outer;
    outer.SetSize(2);
    outer[0] = Make({1, 2});
    outer[1] = Make({3});
    CNested copy(outer);
    copy[0][0] = 10;
    copy.Append(outer);
    copy.InsertAt(1, outer[1], 2);
    copy.RemoveAt(0);
    EXPECT_EQ(Values(outer[0]), (std::vector<double>{1, 2}));
    ASSERT_EQ(copy.GetSize(), 5);
    EXPECT_EQ(Values(copy[0]), (std::vector<double>{3}));
    EXPECT_EQ(Values(copy[3]), (std::vector<double>{1, 2}));
    outer.Copy(copy);
    EXPECT_EQ(outer.GetSize(), 5);
    outer.FreeExtra();
    EXPECT_EQ(Values(outer[4]), (std::vector<double>{3}));
}

namespace {

template <class A>
std::vector<BYTE> StoreArray(A& a) {
    CMemFile file;
    {
        CArchive ar(&file, CArchive::store);
        a.Serialize(ar);
    }
    std::vector<BYTE> bytes(static_cast<std::size_t>(file.GetLength()));
    file.SeekToBegin();
    file.Read(bytes.data(), static_cast<UINT>(bytes.size()));
    return bytes;
}

template <class A>
void LoadArray(std::vector<BYTE> bytes, A& a) {
    CMemFile file(bytes.data(), static_cast<UINT>(bytes.size()));
    CArchive ar(&file, CArchive::load, 16);
    a.Serialize(ar);
}

}  // namespace

TEST(CArraySerialize, DoublesGoAsCountThenRawLittleEndianBlock) {
    CDoubles a = Make({1.0, -2.0});
    // count WORD 2, then 1.0 = 0x3FF0000000000000 and -2.0 = 0xC000000000000000
    const std::vector<BYTE> golden = {2, 0, 0, 0, 0, 0, 0, 0, 0xF0, 0x3F, 0, 0, 0, 0, 0, 0, 0, 0xC0};
    EXPECT_EQ(StoreArray(a), golden);
    CDoubles back = Make({5});
    LoadArray(golden, back);
    EXPECT_EQ(Values(back), (std::vector<double>{1.0, -2.0}));
}

TEST(CArraySerialize, NestedAndStringElementsRoundTrip) {
    CNested nested;
    nested.Add(Make({1, 2}));
    nested.Add(CDoubles());
    CNested nestedBack;
    LoadArray(StoreArray(nested), nestedBack);
    ASSERT_EQ(nestedBack.GetSize(), 2);
    EXPECT_EQ(Values(nestedBack[0]), (std::vector<double>{1, 2}));
    EXPECT_TRUE(nestedBack[1].IsEmpty());

    CArray<CString> strings;
    strings.Add("ab");
    strings.Add("");
    CArray<CString> stringsBack;
    LoadArray(StoreArray(strings), stringsBack);
    ASSERT_EQ(stringsBack.GetSize(), 2);
    EXPECT_EQ(stringsBack[0], "ab");
    EXPECT_EQ(stringsBack[1], "");
}

TEST(CArraySerialize, CountBeyondTheStreamThrowsBeforeAllocating) {
    struct Row {
        const char* name;
        std::vector<BYTE> bytes;
    };
    const Row rows[] = {
        {"3 doubles promised, 2 present", {3, 0, 0, 0, 0, 0, 0, 0, 0xF0, 0x3F, 0, 0, 0, 0, 0, 0, 0, 0xC0}},
        {"count 0xFFFFFFFE", {0xFF, 0xFF, 0xFE, 0xFF, 0xFF, 0xFF, 1, 2, 3}},
        // 2^61 doubles = 2^64 bytes: the byte count itself overflows
        {"count 2^61", {0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0, 0, 0, 0, 0, 0, 0, 0x20}},
        {"count 2^64-1", {0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF}},
        {"truncated count", {0xFF, 0xFF, 0x01}},
    };
    for (const Row& row : rows) {
        CDoubles a = Make({4});
        try {
            LoadArray(row.bytes, a);
            ADD_FAILURE() << row.name << ": no exception";
        } catch (const CArchiveException& e) {
            EXPECT_EQ(e.m_cause, CArchiveException::endOfFile) << row.name;
        }
        EXPECT_EQ(Values(a), (std::vector<double>{4})) << row.name;  // untouched
        if (&row == &rows[0]) continue;  // 16 bytes can hold 3 nested records (3 empty counts)
        CNested nested;  // non-raw elements count as one byte each
        EXPECT_THROW(LoadArray(row.bytes, nested), CArchiveException) << row.name;
        EXPECT_TRUE(nested.IsEmpty()) << row.name;
    }
}
