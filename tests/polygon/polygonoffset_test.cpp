#include <orvmath/polygonoffset.h>

// Boost.Geometry's buffer, the oracle here, trips GCC's uninitialised-use
// analysis inside its own headers.
#if defined(__GNUC__) && !defined(__clang__)
#pragma GCC diagnostic ignored "-Wmaybe-uninitialized"
#endif
#include <boost/geometry.hpp>

#include <gtest/gtest.h>

#include <cmath>

using namespace ORVMATH;

namespace {

CPolygon2 Polygon(std::initializer_list<CDblPoint> pts) {
    CPolygon2 p;
    for (const CDblPoint& v : pts) p.AddVertex(v);
    return p;
}

double TotalArea(const CPolygon2Array& a) {
    double sum = 0.0;
    for (const CPolygon2& p : a) sum += p.Area();
    return sum;
}

// Boost.Geometry's buffer of the same polygon, arcs as 3600 chords a turn (area off by about 5e-7 of the arcs').
double BoostBufferArea(const CPolygon2& poly, double d, int* parts) {
    namespace bg = boost::geometry;
    using Pt = bg::model::d2::point_xy<double>;
    bg::model::polygon<Pt> in;
    for (int i = poly.GetSize() - 1; i >= 0; --i) bg::append(in.outer(), Pt(poly.GetVertex(i).x, poly.GetVertex(i).y));
    bg::append(in.outer(), Pt(poly.GetVertex(poly.GetSize() - 1).x, poly.GetVertex(poly.GetSize() - 1).y));
    bg::correct(in);
    bg::model::multi_polygon<bg::model::polygon<Pt>> out;
    bg::buffer(in, out, bg::strategy::buffer::distance_symmetric<double>(d), bg::strategy::buffer::side_straight(),
               bg::strategy::buffer::join_round(3600), bg::strategy::buffer::end_flat(),
               bg::strategy::buffer::point_circle(3600));
    *parts = static_cast<int>(out.size());
    return bg::area(out);
}

}  // namespace

// A 10 x 10 square grown by 1: 100 + 40 + the corners, pi with round joins, 4 with mitres, 4 (1 - (sqrt 2 - 1)^2)
// cut square at 1 from each corner; shrunk by 1 to 8 x 8; shrunk by 6 it vanishes.
TEST(PolygonOffset, SquareEveryJoin) {
    const CPolygon2 sq = Polygon({{0, 0}, {10, 0}, {10, 10}, {0, 10}});
    const double cut = (std::sqrt(2.0) - 1) * (std::sqrt(2.0) - 1);
    struct Row {
        double d;
        OffsetJoin join;
        double limit, area;
    } rows[] = {{1, OFFSET_JOIN_ROUND, 2, 140 + kPi},     {1, OFFSET_JOIN_MITER, 2, 144},
                {1, OFFSET_JOIN_MITER, 1.2, 140 + 4 * (1 - (std::sqrt(2.0) - 1.2) * (std::sqrt(2.0) - 1.2))},
                {1, OFFSET_JOIN_SQUARE, 2, 140 + 4 * (1 - cut)}, {-1, OFFSET_JOIN_ROUND, 2, 64}};
    for (const Row& r : rows) {
        CPolygon2Array out;
        ASSERT_EQ(PolygonOffset(sq, r.d, out, r.join, r.limit), 1) << r.join;
        EXPECT_NEAR(out[0].Area(), r.area, 1e-9) << r.join << " " << r.limit;
        // The clockwise polygon is the same region.
        ASSERT_EQ(PolygonOffset(sq.Reverse(), r.d, out, r.join, r.limit), 1);
        EXPECT_NEAR(out[0].Area(), r.area, 1e-9);
    }
    CPolygon2Array out;
    out.Add(sq);
    EXPECT_EQ(PolygonOffset(sq, -6, out), 0);
    EXPECT_EQ(out.GetSize(), 0);
}

// The L of arms 10 wide (area 300, perimeter 80). Out by 1: 300 + 80 + five quarter discs (5 pi / 4) less the
// unit square where the strips of the two edges at the inner corner overlap; with mitres five unit squares. In by
// 1: 224 (two rectangles 18 x 8 and 8 x 10), plus at the inner corner what lies beyond 1 from it in [9,10]^2:
// 1 - pi / 4 with a round join, (sqrt 2 - 1)^2 cut square, nothing with a mitre.
TEST(PolygonOffset, LShapeBothWays) {
    const CPolygon2 L = Polygon({{0, 0}, {20, 0}, {20, 10}, {10, 10}, {10, 20}, {0, 20}});
    struct Row {
        double d;
        OffsetJoin join;
        double area;
    } rows[] = {{1, OFFSET_JOIN_ROUND, 379 + 1.25 * kPi},
                {1, OFFSET_JOIN_MITER, 384},
                {-1, OFFSET_JOIN_ROUND, 225 - kPi / 4},
                {-1, OFFSET_JOIN_SQUARE, 224 + (std::sqrt(2.0) - 1) * (std::sqrt(2.0) - 1)},
                {-1, OFFSET_JOIN_MITER, 224}};
    for (const Row& r : rows) {
        CPolygon2Array out;
        ASSERT_EQ(PolygonOffset(L, r.d, out, r.join, 2.0), 1) << r.d << " " << r.join;
        EXPECT_NEAR(out[0].Area(), r.area, 1e-9) << r.d << " " << r.join;
    }
}

// A square ring with a slit 1 wide: grown by 1 the slit closes and the cavity [2,8]^2 leaves the hole [3,7]^2,
// clockwise inside the grown square (140 + pi). Over the slit both lose what lies within 1 of the slit's corners
// only: 2 int_0^0.5 (1 - sqrt(1 - u^2)) du = 1 - sqrt(0.75) / 2 - pi / 6 (a notch above, a bump into the hole). Two squares joined by a neck 2 wide: shrunk by 1.5 the neck goes
// and two parts remain, as in Boost.Geometry's buffer.
TEST(PolygonOffset, HolesAppearAndPartsSplit) {
    const CPolygon2 ring = Polygon({{0, 0}, {10, 0}, {10, 10}, {5.5, 10}, {5.5, 8}, {8, 8}, {8, 2}, {2, 2}, {2, 8},
                                    {4.5, 8}, {4.5, 10}, {0, 10}});
    CPolygon2Array out;
    ASSERT_EQ(PolygonOffset(ring, 1, out), 2);
    const int outer = out[0].Area() > 0 ? 0 : 1;
    const double notch = 1 - std::sqrt(0.75) / 2 - kPi / 6;
    EXPECT_NEAR(out[outer].Area(), 140 + kPi - notch, 1e-9);
    EXPECT_NEAR(out[1 - outer].Area(), -16 - notch, 1e-9);
    EXPECT_EQ(out[outer].Locate(out[1 - outer].Centroid()), POLYGON_INSIDE);

    const CPolygon2 dumbbell = Polygon({{0, 0}, {10, 0}, {10, 4}, {20, 4}, {20, 0}, {30, 0}, {30, 10}, {20, 10},
                                        {20, 6}, {10, 6}, {10, 10}, {0, 10}});
    int parts = 0;
    const double boost = BoostBufferArea(dumbbell, -1.5, &parts);
    ASSERT_EQ(PolygonOffset(dumbbell, -1.5, out), parts);
    EXPECT_EQ(parts, 2);
    EXPECT_NEAR(TotalArea(out), boost, 1e-6 * boost);
    const double grown = BoostBufferArea(dumbbell, 2.5, &parts);
    ASSERT_EQ(PolygonOffset(dumbbell, 2.5, out), parts);
    EXPECT_NEAR(TotalArea(out), grown, 1e-6 * grown);
}

// Buffers of open paths. A segment of 10 at 1: 20 and a disc (round), 20 (butt), 24 (square). The corner
// (0,0) -> (10,0) -> (10,10) at 1 with butt ends: two strips of 20 overlapping in a unit square, and a quarter
// disc outside the corner.
TEST(PolygonOffset, PolylineCaps) {
    CPolyline2 seg, corner;
    seg.AddVertex(CDblPoint(0, 0));
    seg.AddVertex(CDblPoint(10, 0));
    corner = seg;
    corner.AddVertex(CDblPoint(10, 10));
    struct Row {
        const CPolyline2* line;
        OffsetCap cap;
        double area;
    } rows[] = {{&seg, OFFSET_CAP_ROUND, 20 + kPi},
                {&seg, OFFSET_CAP_BUTT, 20},
                {&seg, OFFSET_CAP_SQUARE, 24},
                {&corner, OFFSET_CAP_BUTT, 39 + kPi / 4},
                {&corner, OFFSET_CAP_ROUND, 39 + kPi / 4 + kPi}};
    for (const Row& r : rows) {
        CPolygon2Array out;
        ASSERT_EQ(PolygonOffset(*r.line, -1, out, OFFSET_JOIN_ROUND, 2, r.cap), 1) << r.cap;
        EXPECT_NEAR(out[0].Area(), r.area, 1e-9) << r.cap;
    }
}
