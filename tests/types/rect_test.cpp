#include <orvmath/rect.h>

#include <gtest/gtest.h>

using namespace ORVMATH;

static void ExpectRect(const CDblRect& r, double l, double t, double rt, double b) {
    EXPECT_TRUE(r.left == l && r.top == t && r.right == rt && r.bottom == b)
        << r.left << "," << r.top << "," << r.right << "," << r.bottom;
}

TEST(CDblRect, IntersectUnionAndTouching) {
    CDblRect r(9, 9, 9, 9);
    EXPECT_FALSE(r.IntersectRect(CDblRect(0, 0, 10, 10), CDblRect(10, 0, 20, 10)));  // touching only
    ExpectRect(r, 0, 0, 0, 0);
    EXPECT_TRUE(r.IntersectRect(CDblRect(0, 0, 10, 10), CDblRect(5, -5, 20, 5)));
    ExpectRect(r, 5, 0, 10, 5);
    EXPECT_TRUE(r.UnionRect(CDblRect(0, 0, 0, 0), CDblRect(1, 1, 2, 2)));
    ExpectRect(r, 1, 1, 2, 2);
    r.UnionRect(CDblRect(5, 5, 5, 5), CDblRect(1, 1, 2, 2));  // empty but not null takes part
    ExpectRect(r, 1, 1, 5, 5);
    r.UnionRect(CDblRect(), CDblRect());
    EXPECT_TRUE(r.IsRectNull());
}

TEST(CDblRect, SubtractRectCutsOnlyFullSpans) {
    struct Row { CDblRect b; double l, t, r, bt; } rows[] = {
        // Full cover of a = (0, 0, 10, 10): unchanged on an exact tie at the top, collapsed when b starts before.
        {{-1, 0, 11, 10}, 0, 0, 10, 10}, {{-1, -1, 11, 10}, 0, 0, 0, 0}, {{-2, -1, 12, 12}, 0, 0, 0, 0},
        {{-1, 5, 11, 12}, 0, 0, 10, 5}, {{-1, -1, 11, 4}, 0, 4, 10, 10},  // lower part cut; upper part cut
        {{-1, 0, 11, 4}, 0, 4, 10, 10}, {{3, 3, 6, 6}, 0, 0, 10, 10},     // top tie, partial: upper cut; no full span
        {{6, -1, 12, 11}, 0, 0, 6, 10}, {{-2, -1, 3, 11}, 3, 0, 10, 10},  // vertical spans: right, left part cut
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(testing::Message() << row.b.left << "," << row.b.top << "," << row.b.right << "," << row.b.bottom);
        CDblRect r;
        EXPECT_TRUE(r.SubtractRect(CDblRect(0, 0, 10, 10), row.b));
        ExpectRect(r, row.l, row.t, row.r, row.bt);
    }
}

TEST(CDblRect, DeflateCollapsesToTheSumNormaliseCornersAndPredicates) {
    CDblRect r(10, 0, 12, 4);
    r.DeflateRect(5, 0);
    ExpectRect(r, 22, 0, 22, 4);
    r = CDblRect(0, 0, 10, 10);
    r.DeflateRect(1, 2);
    ExpectRect(r, 1, 2, 9, 8);
    r.InflateRect(1, 2);
    r.TopLeft().x = 1;  // the corners alias the edges
    r.BottomRight() = CDblPoint(31, 40);
    ExpectRect(r, 1, 0, 31, 40);
    EXPECT_TRUE(r.Size().cx == 30 && r.CenterPoint().y == 20);
    r = CDblRect(10, 8, 0, 2);
    r.NormalizeRect();
    ExpectRect(r, 0, 2, 10, 8);
    r.Rearrange(true, false);  // unconditional swap
    ExpectRect(r, 10, 2, 0, 8);

    EXPECT_TRUE(CDblRect(0, 0, 0.1, 5).IsRectSmall());
    EXPECT_FALSE(CDblRect(0, 0, 0.1000001, 0.1000001).IsRectSmall());
    EXPECT_TRUE(CDblRect(0, 0, 0, 5).IsRectEmpty() && CDblRect(10, 0, 0, 10).IsRectEmpty());
    for (const CDblPoint& p : {CDblPoint(0, 0), CDblPoint(10, 10), CDblPoint(10, 5), CDblPoint(0, 10)}) {
        EXPECT_TRUE(CDblRect(0, 0, 10, 10).PtInRect(p));
        EXPECT_FALSE(CDblRect(10, 0, 0, 10).PtInRect(p));  // unnormalised: nothing inside
    }
}

TEST(CDblRect, EqualityAndIntegerConversion) {
    EXPECT_TRUE(CDblRect(0, 0, 1, 1) == CDblRect(1e-6, 0, 1, 1));
    EXPECT_TRUE(CDblRect(0, 0, 1, 1) != CDblRect(2e-6, 0, 1, 1));
    {
        CEpsilonReserveDblRect guard(0.5, 0.0);
        EXPECT_TRUE(CDblRect(0, 0, 1, 1) == CDblRect(0.5, 0, 1.5, 1));
        EXPECT_FALSE(CDblRect(0, 0, 1, 1) == CDblRect(0, 1e-9, 1, 1));
    }
    EXPECT_EQ(CRect(CDblRect(-1.7, 2.5, 3.49, -2.5)), CRect(-1, 3, 3, -2));  // + 0.5, truncated toward zero
}
