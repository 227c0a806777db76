#include <orvmath/polygonize.h>

#include <orvmath/tolerance.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace ORVMATH;

namespace {

using Ring = std::vector<CDblPoint>;
struct Face {
    Ring outer;
    std::vector<Ring> holes;
};

// Segments as x1, y1, x2, y2 in turn.
CLine2Array Lines(std::initializer_list<double> v) {
    CLine2Array a;
    for (auto p = v.begin(); p + 3 < v.end(); p += 4) a.Add(CLine2(p[0], p[1], p[2], p[3]));
    return a;
}

void ExpectRing(const CDblPointArray& got, const Ring& want, const std::string& what) {
    ASSERT_EQ(got.GetSize(), static_cast<INT_PTR>(want.size())) << what;
    for (std::size_t k = 0; k < want.size(); ++k) {
        EXPECT_NEAR(got[k].x, want[k].x, 1e-12) << what << " vertex " << k;
        EXPECT_NEAR(got[k].y, want[k].y, 1e-12) << what << " vertex " << k;
    }
}

void ExpectFaces(const CLine2Array& lines, const std::vector<Face>& want, const std::string& name) {
    CPolygonFaceArray faces;
    faces.Add(CPolygonFace());
    ASSERT_EQ(GetPolygons(lines, faces), static_cast<int>(want.size())) << name;
    ASSERT_EQ(faces.GetSize(), static_cast<INT_PTR>(want.size())) << name;
    for (std::size_t f = 0; f < want.size(); ++f) {
        const std::string what = name + " face " + std::to_string(f);
        ExpectRing(faces[f].outer, want[f].outer, what);
        ASSERT_EQ(faces[f].holes.GetSize(), static_cast<INT_PTR>(want[f].holes.size())) << what;
        for (std::size_t h = 0; h < want[f].holes.size(); ++h) ExpectRing(faces[f].holes[h], want[f].holes[h], what);
    }
}

}  // namespace

// Expected faces drawn by hand, then checked with shapely 1.8.5 (polygonize(unary_union(lines)), rings turned to
// start at their least (x, y), outer counter-clockwise, holes clockwise): the same rings, areas 1 each for the grid,
// 84, 8 and 8 for the drawing with an island, 4 and 4 for the overlap, 92 and 8 for the touching hole.
TEST(GetPolygons, GridIslandAndOverlapAgainstHandWork) {
    struct Row {
        std::string name;
        CLine2Array lines;
        std::vector<Face> faces;
    } rows[] = {
        // Three lines each way, 0.5 past the outer ones at both ends: four unit squares, the ends dangle.
        {"grid",
         Lines({-0.5, 0, 2.5, 0, -0.5, 1, 2.5, 1, -0.5, 2, 2.5, 2, 0, -0.5, 0, 2.5, 1, -0.5, 1, 2.5, 2, -0.5, 2, 2.5}),
         {{{{0, 0}, {1, 0}, {1, 1}, {0, 1}}, {}},
          {{{0, 1}, {1, 1}, {1, 2}, {0, 2}}, {}},
          {{{1, 0}, {2, 0}, {2, 1}, {1, 1}}, {}},
          {{{1, 1}, {2, 1}, {2, 2}, {1, 2}}, {}}}},
        // A 10 square with a 4 square island cut by its diagonal; a bridge from the island to (10, 5), a dangle
        // on to (12, 5) and a loose line inside. (10, 5) and (7, 5) stay as straight vertices.
        {"island",
         Lines({0, 0, 10, 0, 10, 0, 10, 10, 10, 10, 0, 10, 0, 10, 0,  0, 3,  3, 7,  3, 7, 3, 7, 7,
                7, 7, 3,  7, 3,  7, 3,  3,  3,  3,  7, 7,  7, 5,  10, 5, 10, 5, 12, 5, 1, 1, 2, 2}),
         {{{{0, 0}, {10, 0}, {10, 5}, {10, 10}, {0, 10}}, {{{3, 3}, {3, 7}, {7, 7}, {7, 5}, {7, 3}}}},
          {{{3, 3}, {7, 3}, {7, 5}, {7, 7}}, {}},
          {{{3, 3}, {7, 7}, {3, 7}}, {}}}},
        // The middle wall given as two overlapping pieces, (2, 0)-(2, 1.5) and (2, 1)-(2, 2): merged, both
        // faces get (2, 1) and (2, 1.5).
        {"overlap",
         Lines({0, 0, 4, 0, 4, 0, 4, 2, 4, 2, 0, 2, 0, 2, 0, 0, 2, 0, 2, 1.5, 2, 1, 2, 2}),
         {{{{0, 0}, {2, 0}, {2, 1}, {2, 1.5}, {2, 2}, {0, 2}}, {}},
          {{{2, 0}, {4, 0}, {4, 2}, {2, 2}, {2, 1.5}, {2, 1}}, {}}}},
        // A diamond inside a 10 square, touching its bottom edge at (5, 0): a hole of the square all the same.
        {"touching hole",
         Lines(
             {0, 0, 10, 0, 10, 0, 10, 10, 10, 10, 0, 10, 0, 10, 0, 0, 5, 0, 7, 2, 7, 2, 5, 4, 5, 4, 3, 2, 3, 2, 5, 0}),
         {{{{0, 0}, {5, 0}, {10, 0}, {10, 10}, {0, 10}}, {{{3, 2}, {5, 4}, {7, 2}, {5, 0}}}},
          {{{3, 2}, {5, 0}, {7, 2}, {5, 4}}, {}}}},
    };
    for (const Row& r : rows) {
        ExpectFaces(r.lines, r.faces, r.name);
        // Order and direction of the input do not matter.
        CLine2Array turned;
        for (INT_PTR i = r.lines.GetSize() - 1; i >= 0; --i) turned.Add(CLine2(r.lines[i].end, r.lines[i].start));
        ExpectFaces(turned, r.faces, r.name + " reversed");
    }
}

// A 4 square whose corners miss by up to 0.0005, split by a wall whose ends stop 0.0006 above the bottom edge
// and 0.0006 below the top one: within the default distance epsilon 0.001, so two faces, each node at its first
// input point. Shapely does not snap: the same rings came from it once the ends were joined by hand (areas
// 7.9991 and 7.9989). At an epsilon of 1e-4 nothing closes.
TEST(GetPolygons, SnapsEndsWithinDistanceEpsilon) {
    const CLine2Array lines =
        Lines({0, 0, 4, 0, 4.0004, 0.0003, 4, 4, 4, 4, 0, 4.0002, 0, 4, 0, 0.0005, 2, 0.0006, 2, 3.9995});
    ExpectFaces(
        lines,
        {{{{0, 0}, {2, 0.0006}, {2, 3.9995}, {0, 4.0002}}, {}}, {{{2, 0.0006}, {4, 0}, {4, 4}, {2, 3.9995}}, {}}},
        "snap");
    CEpsilonReserveDistance tight(1e-4);
    ExpectFaces(lines, {}, "tight");
}
