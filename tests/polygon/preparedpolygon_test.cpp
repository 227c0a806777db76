#include "points.h"

#include <orvmath/angle.h>
#include <orvmath/polygon.h>
#include <orvmath/preparedpolygon.h>

#include <gtest/gtest.h>

#include <cmath>
#include <random>

using namespace ORVMATH;

namespace {

// A star of `tips` points (radii 10 and 4), a figure eight, and a comb with deep teeth.
CDblPointArray Star(int tips) {
    CDblPointArray a;
    for (int k = 0; k < 2 * tips; ++k) {
        const double r = k % 2 ? 4.0 : 10.0, t = kPi * k / tips;
        a.Add(r * std::cos(t), r * std::sin(t));
    }
    return a;
}
}  // namespace

// Off the boundary the prepared answer is PtInPolygonEx's (nonzero winding), on shapes where bands hold many edges.
TEST(CPreparedPolygon, AgreesWithPtInPolygonExOffTheBoundary) {
    const CDblPointArray shapes[] = {
        Star(500),
        Poly({{0, 0}, {4, 4}, {4, 0}, {0, 4}}),  // figure eight: both loops inside
        Poly({{0, 0}, {9, 0}, {9, 5}, {8, 5}, {8, 1}, {7, 1}, {7, 5}, {6, 5}, {6, 1}, {5, 1}, {5, 5}, {0, 5}}),
        // wound twice: a region covered twice is inside under the nonzero rule
        Poly({{0, 0}, {4, 0}, {4, 4}, {0, 4}, {0, 0}, {4, 0}, {4, 4}, {0, 4}}),
    };
    std::mt19937 rng(11);
    std::uniform_real_distribution<double> u(-11, 11);
    for (const CDblPointArray& shape : shapes) {
        const CPreparedPolygon prepared(shape);
        for (int k = 0; k < 20000; ++k) {
            const CDblPoint p(u(rng), u(rng));
            int edge = 7;
            const PolygonLocation where = prepared.Locate(p, &edge);
            if (where == POLYGON_BOUNDARY) continue;  // measure zero for random doubles
            ASSERT_EQ(where == POLYGON_INSIDE, PtInPolygonEx(shape, p)) << p.x << " " << p.y;
            ASSERT_EQ(edge, -1);
        }
    }
}

// Exactly on an edge or a vertex: the boundary, with the lowest edge index; within a tolerance when one is given.
TEST(CPreparedPolygon, BoundaryCarriesTheEdgeIndex) {
    const CDblPointArray square = Poly({{0, 0}, {4, 0}, {4, 4}, {0, 4}});
    const CPreparedPolygon exact(square), loose(square, 0.1);
    const struct {
        CDblPoint p;
        PolygonLocation exact, loose;
        int edge;
    } rows[] = {
        {{2, 0}, POLYGON_BOUNDARY, POLYGON_BOUNDARY, 0},           {{4, 2}, POLYGON_BOUNDARY, POLYGON_BOUNDARY, 1},
        {{0, 4}, POLYGON_BOUNDARY, POLYGON_BOUNDARY, 2},    // vertex 3 ends edge 2 and starts edge 3
        {{0, 1}, POLYGON_BOUNDARY, POLYGON_BOUNDARY, 3},    // the closing edge
        {{2, 0.05}, POLYGON_INSIDE, POLYGON_BOUNDARY, 0},   // 0.05 from edge 0
        {{4.08, 2}, POLYGON_OUTSIDE, POLYGON_BOUNDARY, 1},  // 0.08 beyond edge 1
        {{4.2, 2}, POLYGON_OUTSIDE, POLYGON_OUTSIDE, -1},          {{2, 2}, POLYGON_INSIDE, POLYGON_INSIDE, -1},
        {{std::nan(""), 2}, POLYGON_OUTSIDE, POLYGON_OUTSIDE, -1},
    };
    for (const auto& row : rows) {
        int e1 = 9, e2 = 9;
        EXPECT_EQ(exact.Locate(row.p, &e1), row.exact) << row.p.x << " " << row.p.y;
        EXPECT_EQ(loose.Locate(row.p, &e2), row.loose) << row.p.x << " " << row.p.y;
        EXPECT_EQ(e2, row.edge);
        if (row.exact == POLYGON_BOUNDARY) {
            EXPECT_EQ(e1, row.edge);
        }
    }
    EXPECT_FALSE(CPreparedPolygon().Contains(CDblPoint(0, 0)));  // no vertices
    EXPECT_FALSE(exact.Contains(CDblPoint(2, 0)));               // boundary is not contained
}
