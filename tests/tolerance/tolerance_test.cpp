#include <orvmath/point2.h>
#include <orvmath/point3.h>
#include <orvmath/tolerance.h>

#include <gtest/gtest.h>

#include <atomic>
#include <cmath>
#include <limits>
#include <thread>

using namespace ORVMATH;

constexpr double kInf = std::numeric_limits<double>::infinity();
const double kNaN = std::numeric_limits<double>::quiet_NaN();

static_assert(CDoubleEpsilon::max_value() == 1e6 && CDistanceEpsilon::max_value() == 1e6, "fixed maxima");

// The epsilons are process-wide: put the defaults back, twice so that the
// backup slot holds them too.
class EpsilonTest : public ::testing::Test {
protected:
    void TearDown() override {
        for (int i = 0; i < 2; ++i) {
            CDoubleEpsilon::set(1e-6); CDistanceEpsilon::set(1e-3); CDblPointEpsilon::set(1e-6);
            CDblPoint3Epsilon::set(1e-6); CDblRectEpsilon::set(1e-6);
        }
    }
};

TEST(TolerantCompare, FunctionsAndFunctorsAtDefaultEpsilonWithNaNAndInfinity) {
    const double e = 1.0 / 1048576.0;  // 2^-20 ~ 9.5e-7: exact in binary, just below 1e-6
    struct Row { double a, b; bool eq, gt, ge, lt, le; } rows[] = {
        {1.0, 1.0, true, false, true, false, true},          {1.0 + e, 1.0, true, false, true, false, true},
        {1.0 + 4 * e, 1.0, false, true, true, false, false}, {1.0, 1.0 + 4 * e, false, false, false, true, true},
        {0.9999995, 1.0, true, false, true, false, true},    {1.0000005, 1.0, true, false, true, false, true},
        // Every comparison with a NaN is false; inf - inf is NaN, so equal infinities are not equal.
        {kNaN, kNaN, false, false, false, false, false},     {kNaN, 1.0, false, false, false, false, false},
        {1.0, kNaN, false, false, false, false, false},      {kInf, kInf, false, false, false, false, false},
        {kInf, 1.0, false, true, true, false, false},        {-kInf, 1.0, false, false, false, true, true},
        {1.0, 1.0 + 1e-6, true, false, true, false, true},   {1.0, 1.0 + 2e-6, false, false, false, true, true},
    };
    for (const Row& r : rows) {
        SCOPED_TRACE(testing::Message() << r.a << " vs " << r.b);
        EXPECT_EQ(IsDoubleEqual(r.a, r.b), r.eq);
        EXPECT_TRUE(IsDoubleGreater(r.a, r.b) == r.gt && IsDoubleGreaterEqual(r.a, r.b) == r.ge);
        EXPECT_TRUE(IsDoubleLess(r.a, r.b) == r.lt && IsDoubleLessEqual(r.a, r.b) == r.le);
        EXPECT_TRUE(CDoubleEqual()(r.a, r.b) == r.eq && CDoubleMax()(r.a, r.b) == r.gt &&
                    CDoubleMaxEqual()(r.a, r.b) == r.ge && CDoubleMin()(r.a, r.b) == r.lt &&
                    CDoubleMinEqual()(r.a, r.b) == r.le) << "functors";
    }
}

TEST(TolerantCompare, ExplicitEpsilonIncludingZeroAndNegative) {
    const double next = std::nextafter(2.0, 3.0);
    struct Row { double a, b, eps; bool eq, gt, ge; } rows[] = {
        {0.0, 0.5, 0.5, true, false, true}, {0.5, 0.0, 0.25, false, true, true},  // boundary included
        {2.0, 2.0, 0.0, true, false, true}, {next, 2.0, 0.0, false, true, true},
        {2.0, 2.0, -1.0, false, false, false}, {next, 2.0, -1.0, false, true, true},  // nothing equal, not even a, a
    };
    for (const Row& r : rows) {
        SCOPED_TRACE(testing::Message() << r.a << " vs " << r.b << " eps " << r.eps);
        EXPECT_EQ(IsDoubleEqualEps(r.a, r.b, r.eps), r.eq);
        EXPECT_TRUE(IsDoubleGreaterEps(r.a, r.b, r.eps) == r.gt && IsDoubleLessEps(r.b, r.a, r.eps) == r.gt);
        EXPECT_TRUE(IsDoubleGreaterEqualEps(r.a, r.b, r.eps) == r.ge && IsDoubleLessEqualEps(r.b, r.a, r.eps) == r.ge);
    }
}

TEST(TolerantCompare, InRegionEndsBoundOrderAndNaN) {
    struct Row { double v, b1, b2; int type; bool in; } rows[] = {
        {5, 10, 0, DblRegionClosed, true},  // bounds reversed
        {0, 0, 10, DblRegionClosed, true},     {0, 0, 10, DblRegionLeftOpen, false},
        {10, 0, 10, DblRegionLeftOpen, true},  {10, 0, 10, DblRegionRightOpen, false},
        {0, 0, 10, DblRegionRightOpen, true},  {10, 0, 10, DblRegionOpen, false},
        {10, 0, 10, 7, false}, {5, 0, 10, -1, true},  // unknown types act as open
        {10.0000005, 0, 10, DblRegionClosed, true},  // within the scalar epsilon
        {5, kNaN, 5, DblRegionClosed, true}, {5, 5, kNaN, DblRegionClosed, false},  // NaN bound: both ends take b2
    };
    for (const Row& r : rows)
        EXPECT_EQ(IsDoubleInRegion(r.v, r.b1, r.b2, static_cast<DblRegionType>(r.type)), r.in)
            << r.v << " in " << r.b1 << ".." << r.b2 << " type " << r.type;
    EXPECT_TRUE(IsDoubleInRegionEps(10.4, 0, 10, 0.5, DblRegionClosed));
    EXPECT_FALSE(IsDoubleInRegionEps(10.4, 0, 10, 0.5, DblRegionOpen));
}

TEST_F(EpsilonTest, SetResetAndGuardsShareTheSingleBackup) {
    EXPECT_EQ(CDistanceEpsilon::get(), 1e-3);
    EXPECT_EQ(CDoubleEpsilon::set(1e-3), 1e-6);
    EXPECT_EQ(CDoubleEpsilon::set(1e-2), 1e-3);
    CDoubleEpsilon::reset();
    EXPECT_EQ(CDoubleEpsilon::get(), 1e-3);  // not the default
    CDoubleEpsilon::reset();
    EXPECT_EQ(CDoubleEpsilon::get(), 1e-3);  // a second reset changes nothing

    const CDblPoint old = CDblPointEpsilon::set(2.0), oldRect = CDblRectEpsilon::set(0.5, 0.25);
    const CDblPoint3 old3 = CDblPoint3Epsilon::set(1.0, 2.0, 3.0);
    EXPECT_TRUE(old.x == 1e-6 && old.y == 1e-6 && oldRect.x == 1e-6 && oldRect.y == 1e-6);
    EXPECT_TRUE(old3.x == 1e-6 && old3.y == 1e-6 && old3.z == 1e-6);
    EXPECT_TRUE(CDblPointEpsilon::x() == 2.0 && CDblPointEpsilon::y() == 2.0);
    EXPECT_TRUE(CDblPoint3Epsilon::get().y == 2.0 && CDblPoint3Epsilon::z() == 3.0 && CDblRectEpsilon::y() == 0.25);
    // Guards of one kind therefore do not nest; kinds are independent.
    {
        CEpsilonReserveDouble outer(0.1);
        {
            CEpsilonReserveDouble inner(0.2);
            CEpsilonReserveDistance other(5.0);
            EXPECT_TRUE(CDoubleEpsilon::get() == 0.2 && CDistanceEpsilon::get() == 5.0);
        }
        EXPECT_TRUE(CDoubleEpsilon::get() == 0.1 && CDistanceEpsilon::get() == 1e-3);
    }
    EXPECT_EQ(CDoubleEpsilon::get(), 0.1);  // the outer guard restores the only backup, its own value
}

TEST_F(EpsilonTest, ConcurrentReadersAndWriterStayWellDefined) {
    // Readers must only ever see one of the values written, never a torn one.
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
