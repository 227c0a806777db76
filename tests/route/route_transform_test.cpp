#include "orvroute/alignment.h"
#include "route/route_test_util.h"

#include <orvmath/pointline.h>

#include <gtest/gtest.h>

#include <vector>

using namespace route_test;

namespace {
std::vector<double> Table(const CRoute2& r, bool lengths) {
    std::vector<double> t;
    for (int i = 0; i + 1 < r.GetCriticalPoints().GetSize(); ++i) t.push_back(lengths ? r.GetSegLength(i) : r.GetSegMile(i));
    return t;
}

// The sample (start 1000, 2950 of chainage) offset 2.5, and miles in each of its elements.
CRoute2 Base() { return CRoute2(orvroute::SampleRoute().GetCriticalPoints(), 1000, 2.5); }
const double kMiles[] = {1400, 1850, 2300, 2700, 3500};
}  // namespace

TEST(CRoute2Transform, TranslateRotateAndMirrorMoveThePointsAndKeepTheTables) {
    const CRoute2 base = Base();
    const CDblPoint c(300, -40), a(100, 0), b(200, 50);
    const CRoute2 rotated = base.Rotate(c, 2.0), moved = base.Translate(10.0, -20.0), mirrored = base.Mirror(a, b);
    for (const CRoute2* r : {&rotated, &moved, &mirrored}) {
        EXPECT_EQ(Table(*r, false), Table(base, false));
        EXPECT_EQ(Table(*r, true), Table(base, true));
        EXPECT_EQ(r->GetEndMile(), base.GetEndMile());
    }
    EXPECT_EQ(mirrored.GetOffset(), -2.5);
    for (double m : kMiles) {
        CDblPoint p = base.GetPoint(m, 1.0), q;
        EXPECT_NEAR(Distance(moved.GetPoint(m, 1.0), CDblPoint(p.x + 10, p.y - 20)), 0, 1e-9) << m;
        MirrorPoint(a, b, p, q);
        EXPECT_NEAR(Distance(mirrored.GetPoint(m, -1.0), q), 0, 1e-9) << m;
        RotatePoint(c.x, c.y, 2.0, p);
        EXPECT_NEAR(Distance(rotated.GetPoint(m, 1.0), p), 0, 1e-9) << m;
    }
    // The mirrored route turns right: its recomputed tables must agree with the kept ones.
    const CRoute2 rebuilt(mirrored.GetCriticalPoints(), 1000, -2.5);
    for (int i = 0; i < 5; ++i) EXPECT_NEAR(rebuilt.GetSegLength(i), base.GetSegLength(i), 1e-9) << i;
    EXPECT_TRUE(mirrored.Mirror(a, b) == base);
}

TEST(CRoute2Transform, ScaleScalesPositionsRadiiChainageAndTablesButNotTheStartMile) {
    const CRoute2 base = Base();
    const CRoute2 big = base.Scale(CDblPoint(0, 0), 2.0);
    const CCriticalPointArray& pts = big.GetCriticalPoints();
    EXPECT_NEAR(big.GetEndMile(), 1000 + 2 * 2950, 1e-9);
    // Start mile, offset, radii -1 and 500, A 250 and the transition's endRadius 500 (deliberately kept).
    EXPECT_EQ((std::vector<double>{big.GetStartMile(), big.GetOffset(), pts[0].radius, pts[2].radius, pts[1].spiralA,
                                   pts[1].endRadius}),
              (std::vector<double>{1000, 5, -1, 1000, 500, 500}));
    for (int i = 0; i < 5; ++i) EXPECT_EQ(big.GetSegLength(i), 2 * base.GetSegLength(i));
    for (double m : kMiles) {
        const CDblPoint p = base.GetPoint(m, 0), q = big.GetPoint(1000 + 2 * (m - 1000), 0);
        EXPECT_NEAR(Distance(q, CDblPoint(2 * p.x, 2 * p.y)), 0, 1e-6) << m;
    }
}

TEST(CRoute2Transform, OffsetRebuildsTheLengthsOfACopy) {
    const CRoute2 base = orvroute::SampleRoute();
    CRoute2 out;
    base.Offset(3.0, out);
    EXPECT_EQ(base.GetOffset(), 0.0);
    EXPECT_EQ(out.GetOffset(), 3.0);
    // A left turn of 0.125 + 1.4 + 0.125 rad: 3 m inside shortens it by 3 * 1.65.
    EXPECT_NEAR(out.GetLength(), 2950 - 3 * 1.65, 1e-9);
    EXPECT_NEAR(out.GetSegLength(2), 700 - 3 * 1.4, 1e-9);
    EXPECT_EQ(out.GetMile(), base.GetMile());
}
