#include "points.h"

#include <orvmath/angle.h>
#include <orvmath/polygon.h>

#include <gtest/gtest.h>

#include <cmath>
#include <initializer_list>

using namespace ORVMATH;

namespace {

const CDblPointArray kSquare = Poly({{0, 0}, {1, 0}, {1, 1}, {0, 1}});
const CDblPointArray kSquareCW = Poly({{0, 1}, {1, 1}, {1, 0}, {0, 0}});
const CDblPointArray kEll = Poly({{0, 0}, {2, 0}, {2, 1}, {1, 1}, {1, 2}, {0, 2}});  // notch at (1..2, 1..2)
const CDblPointArray kPair = Poly({{0, 0}, {2, 2}});
}  // namespace

TEST(PolygonShape, AreaOrientationAndConcavity) {
    const struct { CDblPointArray poly; double area; bool ccw; int concave; } rows[] = {
        // Square: (1-0)(0+0) + (1-1)(0+1) + (0-1)(1+1) + (0-0)(1+0) = -2, so 1.
        {kSquare, 1, true, 0}, {kSquareCW, 1, false, 0},
        {kEll, 3, true, 1},  // 2 x 2 less the 1 x 1 notch
        {Poly({{0, 2}, {1, 2}, {1, 1}, {2, 1}, {2, 0}, {0, 0}}), 3, false, 1},
        {Poly({{0, 0}, {1, 0}, {2, 0}, {2, 1}, {0, 1}}), 2, true, 0},  // a straight angle is allowed
        // Vertex 0 is in the middle of the vertical right edge: the turn is taken towards the first vertex off that
        // edge, here (0,1): cross((0,.5),(-1,.5)) = .5.
        {Poly({{1, 0.5}, {1, 1}, {0, 1}, {0, 0}, {1, 0}}), 1, true, 0},
        {Poly({{1, 0.5}, {1, 0.8}, {1, 1}, {0, 1}, {0, 0}, {1, 0}}), 1, true, 0},
        {Poly({{1, 0.5}, {1, 0}, {0, 0}, {0, 1}, {1, 1}}), 1, false, 0},  // cross((0,-.5),(-1,-.5)) = -.5
        {Poly({{0, 0}, {1, 1}, {2, 2}}), 0, false, -1},
        {Poly({{0, 0}, {0, 1}, {0, 2}, {0, 3}}), 0, false, -1},  // all on one vertical line
    };
    for (const auto& r : rows) {
        SCOPED_TRACE(&r - rows);
        EXPECT_EQ(PolygonArea(r.poly), r.area);
        EXPECT_EQ(IsPolygonCCW(r.poly), r.ccw);
        EXPECT_EQ(IsConcavePolygon(r.poly), r.concave);
    }
    EXPECT_EQ(PolygonArea(kPair), 0.0);
    EXPECT_FALSE(IsPolygonCCW(kPair));
    EXPECT_THROW(try { IsConcavePolygon(kPair); } catch (int e) { EXPECT_EQ(e, 3); throw; }, int);
}

TEST(PtInPolygon, SameSideOfEveryEdgeInEitherOrder) {
    const struct { CDblPoint pt; bool in; } rows[] = {
        {{0.5, 0.5}, true}, {{1, 0.5}, true}, {{1, 1}, true}, {{2, 0.5}, false},
        {{2, 0}, false},  // on the bottom edge's line, but outside the right edge
    };
    for (const auto& r : rows) {
        EXPECT_EQ(PtInPolygon(kSquare, r.pt), r.in) << r.pt.x << "," << r.pt.y;
        EXPECT_EQ(PtInPolygon(kSquareCW, r.pt), r.in) << r.pt.x << "," << r.pt.y;
    }
    EXPECT_THROW(try { PtInPolygon(kPair, {0, 0}); } catch (int e) { EXPECT_EQ(e, 3); throw; }, int);
}

TEST(PtInPolygonEx, NonzeroWindingOnAnyPolygon) {
    const CDblPointArray bowtie = Poly({{0, 0}, {2, 2}, {2, 0}, {0, 2}});  // loops left and right of (1, 1)
    // Regular pentagram (every second vertex of a pentagon): the centre is wound twice.
    const CDblPointArray star = Poly({{0, 10}, {5.878, -8.09}, {-9.511, 3.09}, {9.511, 3.09}, {-5.878, -8.09}});
    const CDblPointArray diamond = Poly({{1, 0}, {2, 1}, {1, 2}, {0, 1}});
    const struct { const CDblPointArray& poly; CDblPoint pt; bool in; } rows[] = {
        {kSquare, {0.5, 0.5}, true}, {kSquareCW, {0.5, 0.5}, true}, {kSquare, {2, 0.5}, false},
        // Vertex quadrants tie toward higher x and y: (0,0) sees every vertex in quadrant 0 (no turn); (1,1) sees
        // quadrants 2, 3, 0, 1 (a full turn).
        {kSquare, {0, 0}, false}, {kSquare, {1, 1}, true},
        {kEll, {1.5, 1.5}, false}, {kEll, {0.5, 1.5}, true}, {kEll, {1.5, 0.5}, true},
        {bowtie, {0.5, 1}, true}, {bowtie, {1.5, 1}, true}, {bowtie, {1, 0.5}, false},
        {star, {0, 0}, true}, {star, {0, 8}, true}, {star, {0, -9}, false},
        // Level with vertices. (0.5,1): D(0,1) is in quadrant 1, A(1,0) in 3: the opposite jump D->A has c =
        // (0-0.5)(0-1) - (1-0.5)(1-1) = 0.5 > 0, +2.
        {diamond, {0.5, 1}, true}, {diamond, {-1, 1}, false}, {diamond, {3, 1}, false},
        // On the edge (0,0)-(2,2) of a clockwise triangle: quadrants 2, 0, 3 from a start of 3 give -1, then the jump 2
        // -> 0 with c = -1 + 1 = 0 counts -2, then -1: w = -4.
        {Poly({{0, 0}, {2, 2}, {2, 0}}), {1, 1}, true},
        {kPair, {1, 0}, false}, {Poly({{1, 1}}), {1, 1}, false},
    };
    for (const auto& r : rows) EXPECT_EQ(PtInPolygonEx(r.poly, r.pt), r.in) << r.pt.x << "," << r.pt.y;
    EXPECT_THROW(PtInPolygonEx(CDblPointArray(), {0, 0}), CInvalidArgException);
}

// Long runs of vertices in one quadrant are passed over in blocks; the answer must not depend on where a block
// ends. A square [0, 4]^2 subdivided unevenly (8, 6, 7 and 9 pieces per side: 30 vertices, counter-clockwise and
// reversed) and queried on a half-unit grid, many queries level with a vertex: inside exactly in the open square.
// Then circles of 1001 and 1003 vertices (radius 1): inside at radius 0.9, outside at 1.1.
TEST(PtInPolygonEx, RunsOfOneQuadrantKeepTheWinding) {
    CDblPointArray square, reversed;
    const int pieces[4] = {8, 6, 7, 9};
    const CDblPoint corner[5] = {{0, 0}, {4, 0}, {4, 4}, {0, 4}, {0, 0}};
    for (int s = 0; s < 4; ++s)
        for (int k = 0; k < pieces[s]; ++k) {
            const double t = static_cast<double>(k) / pieces[s];
            square.Add(corner[s].x + t * (corner[s + 1].x - corner[s].x), corner[s].y + t * (corner[s + 1].y - corner[s].y));
        }
    for (INT_PTR k = square.GetSize() - 1; k >= 0; --k) reversed.Add(square[k]);
    for (double x = -1.5; x <= 5.5; x += 0.5)
        for (double y = -1.5; y <= 5.5; y += 0.5) {
            if (x == 0 || x == 4 || y == 0 || y == 4) continue;  // the boundary follows the tie rules, not this test
            const bool in = x > 0 && x < 4 && y > 0 && y < 4;
            EXPECT_EQ(PtInPolygonEx(square, {x, y}), in) << x << "," << y;
            EXPECT_EQ(PtInPolygonEx(reversed, {x, y}), in) << x << "," << y;
        }
    for (int n : {1001, 1003}) {
        CDblPointArray circle;
        for (int k = 0; k < n; ++k) circle.Add(std::cos(2 * kPi * k / n), std::sin(2 * kPi * k / n));
        for (int a = 0; a < 360; a += 7) {
            const double c = std::cos(a * kPi / 180), s = std::sin(a * kPi / 180);
            EXPECT_TRUE(PtInPolygonEx(circle, {0.9 * c, 0.9 * s})) << n << " " << a;
            EXPECT_FALSE(PtInPolygonEx(circle, {1.1 * c, 1.1 * s})) << n << " " << a;
        }
    }
}
