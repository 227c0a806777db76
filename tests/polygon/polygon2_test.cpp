#include "record_bytes.h"

#include <orvmath/polygon2.h>

#include <gtest/gtest.h>

#include <cmath>

using namespace ORVMATH;

namespace {

CPolygon2 Polygon(std::initializer_list<CDblPoint> pts, std::initializer_list<double> bulges = {}) {
    CPolygon2 p;
    auto b = bulges.begin();
    for (const CDblPoint& v : pts) p.AddVertex(v, b != bulges.end() ? *b++ : 0.0);
    return p;
}

// The square 0..10 whose top edge (10,10) -> (0,10) is a half circle about (5,10): bulge +1 bulges right of the
// travel, here upward (outward); -1 dents it inward.
CPolygon2 Tombstone(double bulge) { return Polygon({{0, 0}, {10, 0}, {10, 10}, {0, 10}}, {0, 0, bulge, 0}); }

}  // namespace

// By hand: area 100 +- 25 pi / 2, perimeter 30 + 5 pi; centroid y = (100 * 5 +- 12.5 pi (10 +- 20 / (3 pi))) / area,
// 7.008207500514442 and 3.139041056744088; the bulge reaches y = 15.
TEST(CPolygon2, MeasuresCountTheArcs) {
    const CPolygon2 out = Tombstone(1.0), in = Tombstone(-1.0);
    EXPECT_NEAR(out.Area(), 139.26990816987242, 1e-12);
    EXPECT_NEAR(in.Area(), 60.730091830127584, 1e-12);
    EXPECT_NEAR(out.Length(), 45.70796326794897, 1e-12);
    EXPECT_NEAR(out.Centroid().x, 5.0, 1e-12);
    EXPECT_NEAR(out.Centroid().y, 7.008207500514442, 1e-12);
    EXPECT_NEAR(in.Centroid().y, 3.139041056744088, 1e-12);
    const CDblRect r = out.GetBoundRect();
    EXPECT_TRUE(r.left == 0 && r.right == 10 && r.top == 0 && std::fabs(r.bottom - 15) < 1e-12);
    EXPECT_TRUE(out.IsCCW());
    EXPECT_NEAR(out.Reverse().Area(), -out.Area(), 1e-12);
    // A quarter disc of radius 10 about (0,0): the edge (10,0) -> (0,10) sweeps 90 degrees, bulge tan(pi / 8);
    // area 25 pi, centroid 40 / (3 pi) on each axis.
    const CPolygon2 quarter = Polygon({{0, 0}, {10, 0}, {0, 10}}, {0, std::tan(kPi / 8), 0});
    EXPECT_NEAR(quarter.Area(), 25 * kPi, 1e-12);
    EXPECT_NEAR(quarter.Centroid().x, 40 / (3 * kPi), 1e-12);
    EXPECT_EQ(quarter.Locate(CDblPoint(7, 7)), POLYGON_INSIDE);  // 9.9 from the centre
    // Two half circles make the unit circle: area pi, extremes from the axis crossings.
    const CPolygon2 circle = Polygon({{-1, 0}, {1, 0}}, {1, 1});
    EXPECT_NEAR(circle.Area(), kPi, 1e-12);
    const CDblRect c = circle.GetBoundRect();
    EXPECT_NEAR(c.top, -1, 1e-12);
    EXPECT_NEAR(c.bottom, 1, 1e-12);
    EXPECT_NEAR(circle.Centroid().y, 0, 1e-12);
}

TEST(CPolygon2, LocateInsideOutsideAndOnArcs) {
    struct Row {
        double bulge, x, y;
        PolygonLocation want;
        int edge;
    } rows[] = {
        {1, 5, 14, POLYGON_INSIDE, -1},     // in the half disc above the square
        {1, 9.9, 14, POLYGON_OUTSIDE, -1},  // 6.32 from (5,10): beside the bulge
        {1, 5, 15.5, POLYGON_OUTSIDE, -1},
        {1, 5, 15, POLYGON_BOUNDARY, 2},  // the top of the arc
        {1, 10, 4, POLYGON_BOUNDARY, 1},
        {-1, 5, 8, POLYGON_OUTSIDE, -1},  // in the dent
        {-1, 5, 4, POLYGON_INSIDE, -1},   // 6 below (5,10)
        {-1, 5, 5, POLYGON_BOUNDARY, 2},  // the bottom of the dent
    };
    for (const Row& r : rows) {
        int edge = 7;
        const CPolygon2 p = Tombstone(r.bulge);
        EXPECT_EQ(p.Locate(CDblPoint(r.x, r.y), &edge), r.want) << r.bulge << " " << r.x << " " << r.y;
        EXPECT_EQ(edge, r.edge) << r.x << " " << r.y;
        // Reversed, mirrored or moved, the region is the same set of points.
        EXPECT_EQ(p.Reverse().Locate(CDblPoint(r.x, r.y)), r.want);
        EXPECT_EQ(p.Mirror(CDblPoint(0, 0), CDblPoint(1, 0)).Locate(CDblPoint(r.x, -r.y)), r.want);
        EXPECT_EQ(p.Move(3, -4).Locate(CDblPoint(r.x + 3, r.y - 4)), r.want);
    }
    int edge = -1;
    EXPECT_NEAR(Tombstone(1).NearestPoint(CDblPoint(5, 20), &edge).y, 15, 1e-12);
    EXPECT_EQ(edge, 2);
    EXPECT_NEAR(Tombstone(1).Distance(CDblPoint(13, 4)), 3, 1e-12);
}

// Duplicates (one repeated vertex, the first repeated at the end) and a vertex half way along an edge go; a spike
// back along the same line and the ends of an arc stay.
TEST(CPolyPath, CleanUpsAndSimplify) {
    CPolygon2 sq = Polygon({{0, 0}, {5, 0}, {5, 0}, {10, 0}, {10, 10}, {0, 10}, {0, 0}});
    EXPECT_EQ(sq.RemoveDuplicateVertices(), 2);
    EXPECT_EQ(sq.RemoveCollinearVertices(), 1);
    ASSERT_EQ(sq.GetSize(), 4);
    EXPECT_NEAR(sq.Area(), 100, 1e-12);
    CDblPointArray spike;
    spike.Add(0, 0);
    spike.Add(10, 0);
    spike.Add(5, 0);
    EXPECT_EQ(CPolyline2(spike).RemoveCollinearVertices(), 0);

    // Noise of 0.01 along y = 0, then up to (3, 5): tolerance 0.1 keeps (0,0), (3,0), (3,5) (the chord to (3,5)
    // is 2.57 from (3,0), and the run (0,0) -> (3,0) passes 0.01 from the noise).
    CPolyline2 line;
    for (const CDblPoint& p : {CDblPoint(0, 0), CDblPoint(1, 0.01), CDblPoint(2, -0.01), CDblPoint(3, 0),
                               CDblPoint(3, 5)})
        line.AddVertex(p);
    CPolyline2 kept = line;
    EXPECT_EQ(kept.Simplify(0.1), 2);
    ASSERT_EQ(kept.GetSize(), 3);
    EXPECT_TRUE(kept.GetVertex(1) == CDblPoint(3, 0));
    // An arc on the edge from (1, 0.01) keeps both its ends.
    line.SetBulge(1, 0.2);
    EXPECT_EQ(line.Simplify(0.1), 0);
}

// Record: closed flag, vertices, bulges. A polyline's record does not load into a polygon.
TEST(CPolyPath, RecordBytes) {
    using namespace record_bytes;
    CPolyline2 line;
    line.AddVertex(CDblPoint(1, 2), 0.5);
    const Bytes bytes = Store([&](CArchive& ar) { line.Serialize(ar); });
    EXPECT_EQ(bytes, Hex("00000000 0100 000000000000f03f 0000000000000040 0100 000000000000e03f"));
    Load(bytes, [](CArchive& ar) {
        CPolyline2 back;
        back.Serialize(ar);
        ASSERT_EQ(back.GetSize(), 1);
        EXPECT_TRUE(back.GetVertex(0) == CDblPoint(1, 2) && back.GetBulge(0) == 0.5);
    });
    ExpectEveryTruncationFails(bytes, [](CArchive& ar) { CPolyline2().Serialize(ar); });
    CPolygon2 poly = Tombstone(1);
    EXPECT_EQ(CauseOf([&] {
                  CMemFile file(const_cast<BYTE*>(bytes.data()), static_cast<UINT>(bytes.size()));
                  CArchive ar(&file, CArchive::load);
                  poly.Serialize(ar);
              }),
              CArchiveException::badIndex);
    EXPECT_EQ(poly.GetSize(), 4);
}
