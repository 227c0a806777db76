#include "points.h"

#include <orvmath/polygonsplit.h>

#include <orvmath/polygon.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>

using namespace ORVMATH;

namespace {

// A bar 2k - 1 long and 1 high with k teeth 1 wide and 2 high on top, at x = 0, 2, .., 2k - 2.
CDblPointArray Comb(int k) {
    CDblPointArray a = Poly({{0, 0}, {2.0 * k - 1, 0}});
    for (int i = k - 1; i >= 0; --i) {
        a.Add(CDblPoint(2 * i + 1, 3));
        a.Add(CDblPoint(2 * i, 3));
        if (i > 0) a.Add(CDblPoint(2 * i, 1)), a.Add(CDblPoint(2 * i - 1, 1));
    }
    return a;
}

// n vertices on radii 10 and 4 in turn.
CDblPointArray Star(int n) {
    CDblPointArray a;
    for (int i = 0; i < n; ++i) {
        const double r = i % 2 == 0 ? 10 : 4, t = 2 * kPi * i / n;
        a.Add(CDblPoint(r * std::cos(t), r * std::sin(t)));
    }
    return a;
}

// Do the convex pieces overlap? They do not when some edge of one has all of the other on its outer side.
bool Overlap(const CDblPointArray& p, const CDblPointArray& q) {
    for (const CDblPointArray* s : {&p, &q}) {
        const CDblPointArray& o = s == &p ? q : p;
        for (INT_PTR i = 0; i < s->GetSize(); ++i) {
            const CDblPoint a = (*s)[i], b = (*s)[(i + 1) % s->GetSize()];
            bool apart = true;
            for (const CDblPoint& v : o)
                apart = apart && (b.x - a.x) * (v.y - a.y) - (b.y - a.y) * (v.x - a.x) <= 1e-12;
            if (apart) return false;
        }
    }
    return true;
}

}  // namespace

// Comb of k teeth: every piece that holds a tooth's top holds nothing beside the tooth, and the bar under each
// gap needs a piece of its own, so the fewest convex pieces are k + 1 (2k - 2 reflex vertices). Spiral (area 17 by
// counting unit cells, 4 reflex vertices): at least ceil(4 / 2) + 1 = 3 pieces. Star of 40 vertices on radii 10
// and 4: area 20 * 10 * 4 * sin(2 pi / 40), 20 reflex vertices, at least 11 pieces. Hertel-Mehlhorn may give up
// to 2r + 1 pieces (and at most 4x the fewest). Areas checked with shapely 1.8.5: 15, 17, 125.14757203218467.
// The L (area 3, one reflex vertex: 2 or 3 pieces) comes with a repeated vertex, its first vertex repeated at the
// end and a straight vertex (1, 0), which no piece may keep.
TEST(SplitConcavePolygon, ConvexPiecesCoverCombSpiralStarAndL) {
    struct Row {
        std::string name;
        CDblPointArray polygon;
        double area;
        int fewest, most;
        CDblPoint dropped{-99, -99};
    } rows[] = {
        {"comb", Comb(4), 15.0, 5, 13},
        {"comb clockwise", Comb(4), 15.0, 5, 13},
        {"spiral",
         Poly({{0, 0}, {5, 0}, {5, 5}, {0, 5}, {0, 2}, {3, 2}, {3, 3}, {1, 3}, {1, 4}, {4, 4}, {4, 1}, {0, 1}}), 17.0,
         3, 9},
        {"star", Star(40), 800 * std::sin(2 * kPi / 40), 11, 41},
        {"hexagon", Poly({{0, 0}, {2, 0}, {3, 1}, {2, 2}, {0, 2}, {-1, 1}}), 6.0, 1, 1},
        {"L", Poly({{0, 0}, {1, 0}, {2, 0}, {2, 1}, {2, 1}, {1, 1}, {1, 2}, {0, 2}, {0, 0}}), 3.0, 2, 3, {1, 0}},
    };
    std::reverse(rows[1].polygon.begin(), rows[1].polygon.end());
    for (const Row& r : rows) {
        CDblPolygonArray pieces;
        const int n = SplitConcavePolygon(r.polygon, pieces);
        ASSERT_EQ(n, pieces.GetSize()) << r.name;
        EXPECT_GE(n, r.fewest) << r.name;
        EXPECT_LE(n, r.most) << r.name;
        double sum = 0.0;
        for (INT_PTR i = 0; i < pieces.GetSize(); ++i) {
            EXPECT_EQ(IsConcavePolygon(pieces[i]), 0) << r.name << " piece " << i;
            EXPECT_TRUE(IsPolygonCCW(pieces[i])) << r.name << " piece " << i;
            sum += PolygonArea(pieces[i]);
            for (const CDblPoint& v : pieces[i]) EXPECT_NE(v, r.dropped) << r.name;
            for (INT_PTR j = 0; j < i; ++j)
                EXPECT_FALSE(Overlap(pieces[i], pieces[j])) << r.name << " " << i << "/" << j;
        }
        EXPECT_NEAR(sum, r.area, 1e-9) << r.name;
    }
}

TEST(SplitConcavePolygon, InvalidPolygonGivesNoPiece) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const CDblPointArray rows[] = {
        Poly({{0, 0}, {1, 0}}),                                          // two vertices
        Poly({{0, 0}, {1, 0}, {1, 0}, {0, 0}}),                          // two once duplicates go
        Poly({{0, 0}, {1, 1}, {2, 2}}),                                  // all on one line
        Poly({{0, 0}, {2, 2}, {2, 0}, {0, 2}}),                          // bow tie
        Poly({{0, 0}, {2, 0}, {2, 2}, {1, 2}, {1, 3}, {1, 2}, {0, 2}}),  // spike up from the top edge
        Poly({{0, 0}, {4, 0}, {4, 2}, {2, 0}, {0, 2}}),                  // vertex (2, 0) touches the bottom edge
        Poly({{0, 0}, {1, 0}, {nan, 1}}),
    };
    for (const CDblPointArray& r : rows) {
        CDblPolygonArray pieces;
        pieces.Add(r);
        EXPECT_EQ(SplitConcavePolygon(r, pieces), 0) << r.GetSize();
        EXPECT_EQ(pieces.GetSize(), 0);
    }
}
