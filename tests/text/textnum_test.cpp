// The number grammar and coordinate pairs, against rows written out by hand.
#include <orvmath/textnum.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

using namespace ORVMATH;

TEST(IsNotLegalNum, GrammarTable) {
    const char* const legal[] = {"5",  "-5", "+5", "5.", ".5", "-.5", "1e5", "1.5E-3", "007", " 42 ", "\t-1.25e+2\n",
                                 "0", "-0", "1e-400", "1.7976931348623157e308"};  // the last: the largest double
    for (const char* text : legal) EXPECT_FALSE(IsNotLegalNum(text)) << '"' << text << '"';
    // 1.8e308 lies beyond the largest double; the last row holds a NUL after the digits.
    const std::string notLegal[] = {"", "   ", "+", "-", ".", "+.", "e5", "1e", "1e+", "1.2.3", "--5", "+-5", "0x1A",
                                    "inf", "nan", "1,5", "1,000", "1 000", "1_000", "5 m", "1e5.5", ". 5", "1.5 e3",
                                    "- 5", "1e400", "-1e400", "1.8e308", std::string("1\0", 2)};
    for (const std::string& text : notLegal) EXPECT_TRUE(IsNotLegalNum(CString(text))) << '"' << text << '"';
}

TEST(StrToXY, ReadsPairsWithEachSeparator) {
    struct Row { const char* text; double x, y; };
    // "1,5": the comma is never a decimal point.
    const Row rows[] = {{"12.5, -3", 12.5, -3}, {"12.5 -3", 12.5, -3}, {"12.5;-3", 12.5, -3}, {"12.5\t-3", 12.5, -3},
                        {" 12.5 ; -3 ", 12.5, -3}, {"1 , 2", 1, 2}, {"1,5", 1, 5}, {"-.5 5.", -0.5, 5},
                        {"1e3,2E-2", 1000, 0.02}, {"+0.1;1e-400", 0.1, 0}};
    for (const Row& row : rows) {
        CDblPoint pt(7, 7);
        ASSERT_TRUE(StrToXY(row.text, pt)) << row.text;
        EXPECT_EQ(pt.x, row.x) << row.text;  // exact: the nearest double, as the literal in this file
        EXPECT_EQ(pt.y, row.y) << row.text;
    }
    // The conversion is correctly rounded at the ends of the range: the smallest subnormal 4.9e-324 and a value
    // below half of it (rounds to -0).
    CDblPoint pt;
    ASSERT_TRUE(StrToXY("4.9e-324 -2e-324", pt));
    EXPECT_EQ(pt.x, std::numeric_limits<double>::denorm_min());
    EXPECT_TRUE(pt.y == 0.0 && std::signbit(pt.y));
}

TEST(StrToXY, FailsAndLeavesThePointUntouched) {
    const char* const rows[] = {"", "  ", "12.5", "12.5,", ",12.5", "1,,2", "1;,2", "1 2 3", "1,5 2,5", "1-3", "1 - 3",
                                "1, 2;", "(1, 2)", "1e400, 2", "1:2", "1.5.2 3", "1 2x", "x 1", "1,inf"};
    for (const char* text : rows) {
        CDblPoint pt(7, 8);
        EXPECT_FALSE(StrToXY(text, pt)) << '"' << text << '"';
        EXPECT_TRUE(pt.x == 7 && pt.y == 8) << text;
    }
}
