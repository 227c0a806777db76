#include <orvmath/point2.h>
#include <orvmath/point3.h>
#include <orvmath/tolerance.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <limits>
#include <thread>
#include <vector>

using namespace ORVMATH;

namespace {

constexpr double kInf = std::numeric_limits<double>::infinity();
const double kNaN = std::numeric_limits<double>::quiet_NaN();

// set() twice puts the default in both the value and the backup slot.
void RestoreDefaults() {
    for (int i = 0; i < 2; ++i) {
        CDoubleEpsilon::set(1e-6);
        CDistanceEpsilon::set(1e-3);
        CDblPointEpsilon::set(1e-6);
        CDblPoint3Epsilon::set(1e-6);
        CDblRectEpsilon::set(1e-6);
    }
}

class EpsilonTest : public ::testing::Test {
protected:
    void TearDown() override { RestoreDefaults(); }
};

}  // namespace

TEST(ToleranceDefaults, HoldersStartAtTheirDocumentedValues) {
    EXPECT_EQ(CDoubleEpsilon::get(), 1e-6);
    EXPECT_EQ(CDistanceEpsilon::get(), 1e-3);
    EXPECT_EQ(CDblPointEpsilon::x(), 1e-6);
    EXPECT_EQ(CDblPoint3Epsilon::z(), 1e-6);
    EXPECT_EQ(CDblRectEpsilon::y(), 1e-6);
    EXPECT_EQ(CDoubleEpsilon::max_value(), 1e6);
    EXPECT_EQ(CDistanceEpsilon::max_value(), 1e6);
}

TEST(TolerantCompare, BoundariesAtDefaultEpsilon) {
    // Differences that are exact in binary so the boundary itself is tested.
    const double e = 1.0 / 1048576.0;  // 2^-20 ~ 9.5e-7, below 1e-6
    struct Row { double a, b; bool eq, gt, ge, lt, le; } rows[] = {
        {1.0, 1.0, true, false, true, false, true},
        {1.0 + e, 1.0, true, false, true, false, true},
        {1.0 + 4 * e, 1.0, false, true, true, false, false},  // 3.8e-6 apart
        {1.0, 1.0 + 4 * e, false, false, false, true, true},
        {0.9999995, 1.0, true, false, true, false, true},
    };
    for (const Row& r : rows) {
        SCOPED_TRACE(testing::Message() << r.a << " vs " << r.b);
        EXPECT_EQ(IsDoubleEqual(r.a, r.b), r.eq);
        EXPECT_EQ(IsDoubleGreater(r.a, r.b), r.gt);
        EXPECT_EQ(IsDoubleGreaterEqual(r.a, r.b), r.ge);
        EXPECT_EQ(IsDoubleLess(r.a, r.b), r.lt);
        EXPECT_EQ(IsDoubleLessEqual(r.a, r.b), r.le);
    }
    EXPECT_TRUE(IsDoubleEqual(1.0, 1.0 + 1e-6));
    EXPECT_FALSE(IsDoubleEqual(1.0, 1.0 + 2e-6));
    EXPECT_FALSE(IsDoubleGreater(1.0000005, 1.0));
    EXPECT_TRUE(IsDoubleEqualEps(0.0, 0.5, 0.5));  // boundary included
    EXPECT_FALSE(IsDoubleEqualEps(0.0, 0.5, 0.25));
}

TEST(TolerantCompare, NaNAndInfinity) {
    EXPECT_FALSE(IsDoubleEqual(kNaN, kNaN));
    EXPECT_FALSE(IsDoubleGreaterEqual(kNaN, 1.0));
    EXPECT_FALSE(IsDoubleLessEqual(1.0, kNaN));
    EXPECT_FALSE(IsDoubleGreater(kNaN, 1.0));
    // inf - inf is NaN, so equal infinities are not tolerantly equal.
    EXPECT_FALSE(IsDoubleEqual(kInf, kInf));
    EXPECT_FALSE(IsDoubleGreaterEqual(kInf, kInf));
    EXPECT_TRUE(IsDoubleGreater(kInf, 1.0));
    EXPECT_TRUE(IsDoubleLess(-kInf, 1.0));
}

TEST(TolerantCompare, NegativeAndZeroEpsilon) {
    // A negative epsilon makes nothing equal, not even identical values.
    EXPECT_FALSE(IsDoubleEqualEps(2.0, 2.0, -1.0));
    EXPECT_FALSE(IsDoubleGreaterEqualEps(2.0, 2.0, -1.0));
    EXPECT_TRUE(IsDoubleGreaterEps(2.0 + 1e-12, 2.0, -1.0));
    EXPECT_TRUE(IsDoubleEqualEps(2.0, 2.0, 0.0));
    EXPECT_FALSE(IsDoubleEqualEps(2.0, std::nextafter(2.0, 3.0), 0.0));
}

TEST(TolerantCompare, InRegionEndsBoundOrderAndNaN) {
    struct Row { double v, b1, b2; int type; bool in; } rows[] = {
        {5, 10, 0, DblRegionClosed, true},  // bounds reversed
        {0, 0, 10, DblRegionClosed, true},
        {0, 0, 10, DblRegionLeftOpen, false},
        {10, 0, 10, DblRegionLeftOpen, true},
        {10, 0, 10, DblRegionRightOpen, false},
        {0, 0, 10, DblRegionRightOpen, true},
        {10, 0, 10, DblRegionOpen, false},
        {10, 0, 10, 7, false},  // unknown types act as open
        {5, 0, 10, -1, true},
        {10.0000005, 0, 10, DblRegionClosed, true},  // within the scalar epsilon
        {5, kNaN, 5, DblRegionClosed, true},         // NaN bound: both ends take b2
        {5, 5, kNaN, DblRegionClosed, false},
    };
    for (const Row& r : rows) {
        SCOPED_TRACE(testing::Message() << r.v << " in " << r.b1 << ".." << r.b2 << " type " << r.type);
        EXPECT_EQ(IsDoubleInRegion(r.v, r.b1, r.b2, static_cast<DblRegionType>(r.type)), r.in);
    }
    EXPECT_TRUE(IsDoubleInRegionEps(10.4, 0, 10, 0.5, DblRegionClosed));
    EXPECT_FALSE(IsDoubleInRegionEps(10.4, 0, 10, 0.5, DblRegionOpen));
}

TEST(TolerantCompare, FunctorsSortAndSearch) {
    std::vector<double> v = {3.0, 1.0, 2.0};
    std::sort(v.begin(), v.end(), CDoubleMin());
    EXPECT_EQ(v, (std::vector<double>{1.0, 2.0, 3.0}));
    std::sort(v.begin(), v.end(), CDoubleMax());
    EXPECT_EQ(v.front(), 3.0);
    EXPECT_TRUE(CDoubleEqual()(1.0, 1.0000005));
    EXPECT_TRUE(CDoubleMaxEqual()(1.0, 1.0000005));
    EXPECT_TRUE(CDoubleMinEqual()(1.0000005, 1.0));
}

TEST_F(EpsilonTest, SetReturnsPreviousAndResetRestoresOnlyTheSingleBackup) {
    EXPECT_EQ(CDoubleEpsilon::set(1e-3), 1e-6);
    EXPECT_EQ(CDoubleEpsilon::set(1e-2), 1e-3);
    CDoubleEpsilon::reset();
    EXPECT_EQ(CDoubleEpsilon::get(), 1e-3);  // not the default
    CDoubleEpsilon::reset();
    EXPECT_EQ(CDoubleEpsilon::get(), 1e-3);  // a second reset changes nothing

    const CDblPoint old = CDblPointEpsilon::set(2.0);
    EXPECT_EQ(old.x, 1e-6);
    EXPECT_EQ(old.y, 1e-6);
    EXPECT_EQ(CDblPointEpsilon::x(), 2.0);
    EXPECT_EQ(CDblPointEpsilon::y(), 2.0);
    const CDblPoint3 old3 = CDblPoint3Epsilon::set(1.0, 2.0, 3.0);
    EXPECT_EQ(old3.z, 1e-6);
    EXPECT_EQ(CDblPoint3Epsilon::get().y, 2.0);
    EXPECT_EQ(CDblRectEpsilon::set(0.5, 0.25).x, 1e-6);
    EXPECT_EQ(CDblRectEpsilon::get().y, 0.25);
}

TEST_F(EpsilonTest, GuardsOfOneKindDoNotNestButKindsAreIndependent) {
    {
        CEpsilonReserveDouble outer(0.1);
        {
            CEpsilonReserveDouble inner(0.2);
            CEpsilonReserveDistance other(5.0);
            EXPECT_EQ(CDoubleEpsilon::get(), 0.2);
            EXPECT_EQ(CDistanceEpsilon::get(), 5.0);
        }
        EXPECT_EQ(CDoubleEpsilon::get(), 0.1);
        EXPECT_EQ(CDistanceEpsilon::get(), 1e-3);
    }
    // The outer guard restores the only backup, which is its own value: the
    // original default is lost.
    EXPECT_EQ(CDoubleEpsilon::get(), 0.1);
    {
        CEpsilonReserveDblPoint guard(0.5, 0.25);
        EXPECT_TRUE(CDblPoint(0, 0) == CDblPoint(0.5, 0.25));
    }
    EXPECT_FALSE(CDblPoint(0, 0) == CDblPoint(0.5, 0.25));
}

TEST_F(EpsilonTest, ConcurrentReadersAndWriterStayWellDefined) {
    // Run under the thread-free sanitizers too: the point is that readers see
    // one of the values written, never a torn or undefined one.
    std::atomic<bool> stop{false};
    std::atomic<long> bad{0};
    std::thread reader([&] {
        while (!stop.load()) {
            const double e = CDoubleEpsilon::get();
            if (e != 1e-6 && e != 1e-3) ++bad;
        }
    });
    for (int i = 0; i < 20000; ++i) CDoubleEpsilon::set(i % 2 ? 1e-6 : 1e-3);
    stop = true;
    reader.join();
    EXPECT_EQ(bad.load(), 0);
}
