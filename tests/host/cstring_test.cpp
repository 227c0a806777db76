#include <orvmath/host/cstring.h>
#include <orvmath/host/exceptions.h>

#include <gtest/gtest.h>

TEST(CStringTest, EditingSearchingAndClampedSubstrings) {
    CString s;
    s.Format("%d|%.2f|%s", 42, 1.5, "x");
    EXPECT_EQ(s, "42|1.50|x");
    CString t(" \tMixed Case\n");
    EXPECT_EQ(t.Trim(), "Mixed Case");
    EXPECT_EQ(CString(t).MakeUpper(), "MIXED CASE");
    EXPECT_EQ(CString("MiX").MakeLower(), "mix");
    EXPECT_EQ(t.Find('e'), 3);  // M i x e
    EXPECT_EQ(t.Find('e', 5), 9);
    EXPECT_EQ(t.Find("Case"), 6);
    EXPECT_EQ(t.Find("case"), -1);
    EXPECT_EQ(t.Find('M', 99), -1);
    // Positions and counts clamp to the string (length 10).
    EXPECT_EQ(t.Mid(-3, 5), "Mixed");
    EXPECT_EQ(t.Mid(8, 100), "se");
    EXPECT_EQ(t.Mid(20, 1), "");
    EXPECT_EQ(t.Left(100), t);
    EXPECT_EQ(t.Right(2), "se");
    EXPECT_EQ(t.Right(-1), "");
    EXPECT_EQ(CString("a") + "b" + CString("c"), "abc");
    EXPECT_THROW(t.GetAt(10), CInvalidArgException);
}
