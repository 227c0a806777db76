#include "orvroute/alignment.h"
#include "route/route_test_util.h"

#include <orvmath/pointline.h>

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

using namespace ORVMATH;

namespace {

std::vector<double> Table(const CRoute2& r, bool lengths) {
    std::vector<double> t;
    for (int i = 0; i + 1 < r.GetCriticalPoints().GetSize(); ++i) t.push_back(lengths ? r.GetSegLength(i) : r.GetSegMile(i));
    return t;
}

// Probe miles through every element of the sample (start 1000, 2950 of chainage).
const double kMiles[] = {1400, 1850, 2300, 2700, 3500};

}  // namespace

TEST(CRoute2Transform, TranslateAndRotateMoveThePointsAndKeepTheTables) {
    const CRoute2 base(orvroute::SampleRoute().GetCriticalPoints(), 1000, 2.5);
    const CDblPoint c(300, -40);
    const double turn = 2.0;
    CRoute2 out;
    base.Rotate(c, turn, out);
    const CRoute2 rotated = out;
    const CRoute2 moved = base.Translate(10.0, -20.0);
    for (const CRoute2* r : {&rotated, &moved}) {
        EXPECT_EQ(Table(*r, false), Table(base, false));
        EXPECT_EQ(Table(*r, true), Table(base, true));
        EXPECT_EQ(r->GetEndMile(), base.GetEndMile());
    }
    for (double m : kMiles) {
        CDblPoint p = base.GetPoint(m, 1.0);
        EXPECT_NEAR(moved.GetPoint(m, 1.0).x, p.x + 10, 1e-9);
        RotatePoint(c.x, c.y, turn, p);
        EXPECT_NEAR(Distance(rotated.GetPoint(m, 1.0), p), 0, 1e-9) << m;
    }
}

TEST(CRoute2Transform, MirrorNegatesTheOffsetKeepsTheTablesAndUndoesItself) {
    const CRoute2 base(orvroute::SampleRoute().GetCriticalPoints(), 1000, 2.5);
    const CDblPoint a(100, 0), b(200, 50);
    const CRoute2 mirrored = base.Mirror(a, b);
    EXPECT_EQ(mirrored.GetOffset(), -2.5);
    EXPECT_EQ(Table(mirrored, true), Table(base, true));
    // The mirrored route turns right, so its recomputed tables must agree with the kept ones.
    const CRoute2 rebuilt(mirrored.GetCriticalPoints(), 1000, -2.5);
    for (int i = 0; i < 5; ++i) EXPECT_NEAR(rebuilt.GetSegLength(i), base.GetSegLength(i), 1e-9) << i;
    for (double m : kMiles) {
        CDblPoint p;
        MirrorPoint(a, b, base.GetPoint(m, 0), p);
        EXPECT_NEAR(Distance(mirrored.GetPoint(m, 0), p), 0, 1e-9) << m;
    }
    EXPECT_TRUE(mirrored.Mirror(a, b) == base);
}

TEST(CRoute2Transform, ScaleScalesPositionsRadiiChainageAndTablesButNotTheStartMile) {
    const CRoute2 base(orvroute::SampleRoute().GetCriticalPoints(), 1000, 2.5);
    const CRoute2 big = base.Scale(CDblPoint(0, 0), 2.0);
    EXPECT_EQ(big.GetStartMile(), 1000);
    EXPECT_NEAR(big.GetEndMile(), 1000 + 2 * 2950, 1e-9);
    EXPECT_EQ(big.GetOffset(), 5.0);
    EXPECT_EQ(big.GetCriticalPoints()[0].radius, -1.0);
    EXPECT_EQ(big.GetCriticalPoints()[2].radius, 1000.0);
    EXPECT_EQ(big.GetCriticalPoints()[1].spiralA, 500.0);
    EXPECT_EQ(big.GetCriticalPoints()[1].endRadius, 500.0);  // deliberately not scaled
    for (int i = 0; i < 5; ++i) EXPECT_EQ(big.GetSegLength(i), 2 * base.GetSegLength(i));
    for (double m : kMiles) {
        const CDblPoint p = base.GetPoint(m, 0), q = big.GetPoint(1000 + 2 * (m - 1000), 0);
        EXPECT_NEAR(q.x, 2 * p.x, 1e-6);
        EXPECT_NEAR(q.y, 2 * p.y, 1e-6);
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
