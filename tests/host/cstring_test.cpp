#include <orvmath/host/archive.h>
#include <orvmath/host/cstring.h>

#include <gtest/gtest.h>

TEST(CStringTest, EditingAndSearching) {
    CString s;
    s.Format("%d|%.2f|%s", 42, 1.5, "x");
    EXPECT_EQ(s, "42|1.50|x");
    CString t(" \tMixed Case\n");
    EXPECT_EQ(t.Trim(), "Mixed Case");
    EXPECT_EQ(CString(t).MakeUpper(), "MIXED CASE");
    EXPECT_EQ(CString(t).MakeLower(), "mixed case");
    EXPECT_EQ(t.Find('e'), 3);  // M i x e
    EXPECT_EQ(t.Find('e', 5), 9);
    EXPECT_EQ(t.Find("Case"), 6);
    EXPECT_EQ(t.Find("case"), -1);
    EXPECT_EQ(t.Find('M', 99), -1);
    // Positions and counts clamp to the string (length 10).
    EXPECT_EQ(t.Mid(6), "Case");
    EXPECT_EQ(t.Mid(-3, 5), "Mixed");
    EXPECT_EQ(t.Mid(8, 100), "se");
    EXPECT_EQ(t.Mid(20, 1), "");
    EXPECT_EQ(t.Left(100), t);
    EXPECT_EQ(t.Right(2), "se");
    EXPECT_EQ(t.Right(-1), "");
    EXPECT_EQ(CString("a") + "b" + CString("c"), "abc");
    EXPECT_THROW(t.GetAt(10), CInvalidArgException);
}

TEST(CStringTest, ArchiveRecordIsCountThenBytes) {
    CMemFile file;
    {
        CArchive ar(&file, CArchive::store);
        ar << CString("hi") << CString();
    }
    ASSERT_EQ(file.GetLength(), 6u);  // WORD 2, 'h', 'i', WORD 0
    file.SeekToBegin();
    CArchive ar(&file, CArchive::load);
    CString a("old"), b("old");
    ar >> a >> b;
    EXPECT_EQ(a, "hi");
    EXPECT_TRUE(b.IsEmpty());
    EXPECT_THROW(ar >> a, CArchiveException);  // stream exhausted
}

TEST(CStringTest, DamagedLengthFailsWithoutAllocating) {
    BYTE bytes[] = {0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0x7F, 'a'};  // length 0x7FFFFFFF, one byte present
    CMemFile file(bytes, sizeof bytes);
    CArchive ar(&file, CArchive::load);
    CString s("kept");
    EXPECT_THROW(ar >> s, CArchiveException);
    EXPECT_EQ(s, "kept");
}
