// Route records: golden bytes written out by hand, the 56-byte point blocks
// and the earlier 48-byte layout, round trips and damaged input.
#include "record_bytes.h"
#include "route/route_test_util.h"

#include <orvroute/alignment.h>

#include <gtest/gtest.h>

#include <cstring>
#include <string>

using namespace ORVMATH;
using namespace record_bytes;
using namespace route_test;

namespace {

const std::string k0 = "0000000000000000 ", k2 = "0000000000000040 ", kM1 = "000000000000f0bf ",
                  kEighth = "000000000000c03f ", k50 = "0000000000004940 ", k100 = "0000000000005940 ",
                  k200 = "0000000000006940 ", k1000 = "0000000000408f40 ", k1050 = "0000000000689040 ";

// A transition of A = 100 from a straight into R 200, 50 m long (A^2 / R),
// from mile 1000.
CRoute2 Transition() {
    return Route({Pt(SEGMENT_TRANSITION, 0, 0, 0, -1, 100, 200), Pt(SEGMENT_ARC, 50, 2, 0.125, 200)}, 1000);
}

const std::string kHeader = k1000 + k1050 + k0;  // start mile, end mile, offset
const std::string kTables = "0100 " + k50 + "0100 " + k50;
// type, four zero fill bytes, x, y, angle, radius, spiralA (and endRadius)
const std::string kBlock1 = "02000000 00000000 " + k0 + k0 + k0 + kM1 + k100;
const std::string kBlock2 = "01000000 00000000 " + k50 + k2 + kEighth + k200 + k0;

const auto kLoad = [](CArchive& ar) {
    CRoute2 r;
    ar >> r;
};
const auto kLoadEarlier = [](CArchive& ar) {
    CRoute2 r;
    r.LoadDataWithoutEndRadius(ar);
};

}  // namespace

TEST(RouteRecord, GoldenBytesAndEveryTruncation) {
    CRoute2 route = Transition();
    const Bytes want = Hex(kHeader + "0200 " + kBlock1 + k200 + kBlock2 + k0 + kTables);
    EXPECT_EQ(Store([&](CArchive& ar) { ar << route; }), want);
    Load(want, [&](CArchive& ar) {
        CRoute2 loaded;
        loaded.Serialize(ar);
        EXPECT_EQ(loaded, route);
        EXPECT_EQ(loaded.GetCriticalPoints()[0].endRadius, 200.0);
        EXPECT_EQ(loaded.GetEndMile(), 1050.0);
        EXPECT_EQ(loaded.GetSegLength(0), 50.0);
    });
    ExpectEveryTruncationFails(want, kLoad);

    // The null route: three doubles (end mile -1) and three empty counts.
    CRoute2 null;
    EXPECT_EQ(Store([&](CArchive& ar) { ar << null; }), Hex(k0 + kM1 + k0 + "0000 0000 0000"));
}

TEST(RouteRecord, TablesAreTakenAsStored) {
    // Mile table 100 for an element 50 long: loaded as it stands, and the
    // lookup follows it.
    const Bytes bytes = Hex(kHeader + "0200 " + kBlock1 + k200 + kBlock2 + k0 + "0100 " + k100 + "0100 " + k50);
    Load(bytes, [](CArchive& ar) {
        CRoute2 r;
        ar >> r;
        EXPECT_EQ(r.GetSegMile(0), 100.0);
        EXPECT_EQ(r.GetEndMile(), 1050.0);
        EXPECT_EQ(r.GetSegmentTypeB(1040), SEGMENT_TRANSITION);
    });
}

TEST(RouteRecord, EarlierLayoutHas48ByteBlocksAndNoEndRadius) {
    // The fill bytes of the second block are junk: readers ignore them.
    const std::string block2 = "01000000 deadbeef " + k50 + k2 + kEighth + k200 + k0;
    const Bytes bytes = Hex(kHeader + "0200 " + kBlock1 + block2 + kTables);
    Load(bytes, [](CArchive& ar) {
        CRoute2 r;
        r.LoadDataWithoutEndRadius(ar);
        ASSERT_EQ(r.GetCriticalPoints().GetSize(), 2);
        const CCriticalPoint& p = r.GetCriticalPoints()[0];
        EXPECT_TRUE(p.type == SEGMENT_TRANSITION && p.radius == -1 && p.spiralA == 100);
        EXPECT_EQ(r.GetCriticalPoints()[1].pt.y, 2.0);
        for (INT_PTR i = 0; i < 2; ++i) EXPECT_EQ(r.GetCriticalPoints()[i].endRadius, 0.0);
        EXPECT_EQ(r.GetSegMile(0), 50.0);
    });
    ExpectEveryTruncationFails(bytes, kLoadEarlier);
}

TEST(RouteRecord, EveryElementKindRoundTripsAcrossManyBlocks) {
    // 1001 points: the blocks are staged in chunks, which must not show.
    CCriticalPointArray pts = orvroute::GeneratedRoute(1000).GetCriticalPoints();
    for (INT_PTR i = 0; i < pts.GetSize(); ++i)
        if (pts[i].type == SEGMENT_TRANSITION) pts[i].endRadius = i % 2 ? -1.0 : 300.0;
    CRoute2 route(pts, 0, 1.5);
    const Bytes bytes = Store([&](CArchive& ar) { ar << route; });
    ASSERT_EQ(bytes.size(), 24u + 2 + 1001 * 56 + 2 * (2 + 1000 * 8));
    const BYTE* block = bytes.data() + 24 + 2 + 700 * 56;  // in the second chunk
    EXPECT_EQ(block[0], static_cast<BYTE>(pts[700].type));
    EXPECT_EQ(LittleEndianDouble(block + 8), pts[700].pt.x);

    Load(bytes, [&](CArchive& ar) {
        CRoute2 loaded;
        ar >> loaded;
        EXPECT_EQ(loaded, route);
        for (INT_PTR i = 0; i < pts.GetSize(); ++i) EXPECT_EQ(loaded.GetCriticalPoints()[i].endRadius, pts[i].endRadius);
        for (int i = 0; i < 1000; i += 97) EXPECT_EQ(loaded.GetSegLength(i), route.GetSegLength(i));
        EXPECT_EQ(loaded.GetPoint(1234.5, 0).x, route.GetPoint(1234.5, 0).x);
    });
}

TEST(RouteRecord, DamagedInputFailsCleanlyAndLeavesAUsableRoute) {
    EXPECT_EQ(CauseOf([] { Load(Hex(kHeader + "ffff ffffff7f" + kBlock1), kLoad); }), CArchiveException::endOfFile);
    EXPECT_EQ(CauseOf([] { Load(Hex(kHeader + "ffff ffffffff ffffffffffffffff"), kLoadEarlier); }),
              CArchiveException::endOfFile);
    Load(Hex(k0), [](CArchive& ar) {
        CRoute2 r = Transition();
        EXPECT_EQ(CauseOf([&] { ar << r; }), CArchiveException::readOnly);
        EXPECT_THROW(SerializeElements<CCriticalPoint>(ar, nullptr, 1), CInvalidArgException);
        double rest;
        ar >> rest;
    });

    // Cut inside the length table: the route holds what was read, and can be
    // evaluated, copied and loaded again.
    CRoute2 route = Transition();
    const Bytes whole = Store([&](CArchive& ar) { ar << route; });
    Bytes cut(whole.begin(), whole.end() - 4);
    CRoute2 partial = Route({Pt(SEGMENT_LINE, 0, 0, 0, -1), Pt(SEGMENT_LINE, 1, 0, 0, -1), Pt(SEGMENT_LINE, 2, 0, 0, -1)});
    EXPECT_EQ(CauseOf([&] { Load(cut, [&](CArchive& ar) { ar >> partial; }); }), CArchiveException::endOfFile);
    EXPECT_EQ(partial.GetCriticalPoints().GetSize(), 2);
    CRoute2 copy = partial;
    for (double mile : {1000.0, 1025.0, 1050.0}) (void)copy.GetPoint(mile, 0);
    Load(whole, [&](CArchive& ar) { ar >> copy; });
    EXPECT_EQ(copy, route);
}

TEST(RouteRecord, StoredAnglesAreNotNormalisedYetEvaluationEnds) {
    // An arc element whose end is off the circle of its radius falls back to
    // the arc through both points; a stored end angle of 1e300 once made its
    // turn reduction loop for ever.
    CRoute2 route = Route({Pt(SEGMENT_ARC, 0, 0, 0, 10), Pt(SEGMENT_LINE, 5, 5, 0.5, -1)});
    Bytes bytes = Store([&](CArchive& ar) { ar << route; });
    const double huge = 1e300;
    PutLittleEndianDouble(bytes.data() + 24 + 2 + 56 + 24, huge);  // the second block's angle
    Load(bytes, [&](CArchive& ar) {
        CRoute2 loaded;
        ar >> loaded;
        EXPECT_EQ(loaded.GetCriticalPoints()[1].angle, huge);
        const CDblPoint p = loaded.GetPoint(route.GetStartMile() + 1.0, 0);
        EXPECT_NEAR(Distance(p, CDblPoint(0, 0)), 1.0, 0.01);  // about 1 m along a gentle arc
    });
}
