#include "points.h"

// Clipping by polygons against cases worked out by hand (arithmetic in the comments) and, for the U-shaped polygon
// and the arcs, against shapely (LineString intersection and difference, arcs densified to 400000 points).
#include <orvmath/clip.h>

#include <gtest/gtest.h>

#include <cmath>
#include <tuple>
#include <utility>
#include <vector>

using namespace ORVMATH;

namespace {
using Rows = std::vector<std::vector<double>>;
const double kNaN = std::nan("");
const double kA = 0.927295218001612;  // atan(4/3): the circle (3,2) r 2.5 meets y = 0 and y = 4 at x = 3 +- 1.5

CDblPointArray Square(bool reversed) { return Poly({{0, 0}, {2, 0}, {2, 2}, {0, 2}}, reversed); }
// A U: arms x in [0,2] and [4,6] up to y = 4, joined below y = 1; the notch between them is outside.
CDblPointArray U(bool rev) { return Poly({{0, 0}, {6, 0}, {6, 4}, {4, 4}, {4, 1}, {2, 1}, {2, 4}, {0, 4}}, rev); }

std::vector<double> Fields(const CLine2& l) { return {l.start.x, l.start.y, l.end.x, l.end.y}; }
std::vector<double> Fields(const CArc2& c) { return {c.startAngle, c.sweepAngle}; }
std::vector<double> Fields(const CLineVisibilityInterval& i) { return {i.t0, i.t1, i.visible ? 1.0 : 0.0}; }
template <class A>
Rows Flat(const A& a) {
    Rows r;
    for (const auto& x : a) r.push_back(Fields(x));
    return r;
}
void ExpectRows(const Rows& got, const Rows& want, double tol = 1e-9) {
    ASSERT_EQ(got.size(), want.size());
    for (std::size_t i = 0; i < want.size(); ++i)
        for (std::size_t j = 0; j < want[i].size(); ++j) EXPECT_NEAR(got[i][j], want[i][j], tol) << i << ", " << j;
}
}  // namespace

// Square [0,2]^2 in both orientations; x (or y) = -1 + 4t on the four-long lines gives the parameters.
TEST(ClipLineCB, ConvexInBothOrientationsAndFalseOtherwise) {
    const std::tuple<CLine2, bool, double, double> rows[] = {
        {{-1, 1, 3, 1}, true, .25, .75},
        {{3, 1, -1, 1}, true, .25, .75},          // the other way
        {{-1, -1, 3, 3}, true, .25, .75},         // through two vertices
        {{-1, 0, 3, 0}, true, .25, .75},          // along an edge
        {{-1, -5e-4, 3, -5e-4}, true, .25, .75},  // along it, outside within the distance epsilon
        {{1, 1, 3, 1}, true, 0, .5},
        {{.5, .5, 1.5, 1}, true, 0, 1},
        {{1, 1, 1, 1}, true, 0, 1},      // a point inside
        {{3, 3, 3, 3}, false, -7, -7},   // a point outside; false leaves the outputs untouched
        {{3, 0, 5, 0}, false, -7, -7},   // on an edge's line, beyond it
        {{-1, 1, 1, 3}, false, -7, -7},  // touching the vertex (0,2) only
    };
    for (bool reversed : {false, true}) {
        for (const auto& [line, ok, want0, want1] : rows) {
            double t0 = -7, t1 = -7;
            CLine2 clipped(9, 9, 9, 9);
            ASSERT_EQ(ClipLineCB(line, Square(reversed), t0, t1, clipped), ok);
            const CLine2 want = ok ? CLine2(line.Point(want0), line.Point(want1)) : CLine2(9, 9, 9, 9);
            ExpectRows({{t0, t1}, Fields(clipped)}, {{want0, want1}, Fields(want)});
        }
    }
    // The U's kernel is empty above y = 1, so Cyrus-Beck finds nothing there; polygons enclosing nothing fail.
    double t0, t1;
    CLine2 c, across(-1, 1, 3, 1);
    EXPECT_FALSE(ClipLineCB(CLine2(-1, 2, 7, 2), U(false), t0, t1, c));
    EXPECT_FALSE(ClipLineCB(across, Poly({{0, 0}, {1, 1}, {2, 2}}), t0, t1, c));
    EXPECT_FALSE(ClipLineCB(across, Poly({{0, 0}, {2, 0}, {2, kNaN}, {0, 2}}), t0, t1, c));
    EXPECT_FALSE(ClipLineCB(CLine2(kNaN, 1, 3, 1), Square(false), t0, t1, c));
}

// Pieces in order along the segment; the last two rows are shapely's.
TEST(CLine2ClipByPolygon, PiecesInsideAndOutsideTheU) {
    const std::tuple<CLine2, Rows, Rows> rows[] = {
        {{-1, 2, 7, 2}, {{0, 2, 2, 2}, {4, 2, 6, 2}}, {{-1, 2, 0, 2}, {2, 2, 4, 2}, {6, 2, 7, 2}}},
        {{1, 0, 3, 2}, {{1, 0, 2, 1}}, {{2, 1, 3, 2}}},  // y = x - 1 from the floor through the notch's corner
        {{-1, 0, 7, 0}, {{0, 0, 6, 0}}, {{-1, 0, 0, 0}, {6, 0, 7, 0}}},  // along the bottom edge and beyond it
        {{3, 1, 5, 1}, {{3, 1, 5, 1}}, {}},                              // along the notch's floor, then in the arm
        {{5, 5, 7, 3}, {}, {{5, 5, 7, 3}}},                              // touches the corner (6,4) only
        {{-.5, .5, 6.5, 3.7},
         {{0, 0.72857142857, 2, 1.64285714286}, {4, 2.55714285714, 6, 3.47142857143}},
         {{-.5, .5, 0, 0.72857142857}, {2, 1.64285714286, 4, 2.55714285714}, {6, 3.47142857143, 6.5, 3.7}}},
        {{1, 3, 5, 2}, {{1, 3, 2, 2.75}, {4, 2.25, 5, 2}}, {{2, 2.75, 4, 2.25}}},
    };
    CLine2Array in, out;
    for (bool reversed : {false, true}) {
        for (const auto& [line, wantIn, wantOut] : rows) {
            in.Add(CLine2(9, 9, 9, 9));  // emptied first
            line.ClipByPolygon(U(reversed), in, out);
            ExpectRows(Flat(in), wantIn);
            ExpectRows(Flat(out), wantOut);
        }
    }
    CLine2(-1, 2, 7, 2).ClipByPolygon(Poly({{0, 2}, {3, 2}, {6, 2}}), in, out);  // encloses nothing
    ExpectRows(Flat(in), {});
    ExpectRows(Flat(out), {{-1, 2, 7, 2}});
    CLine2(kNaN, 2, 7, 2).ClipByPolygon(U(false), in, out);
    EXPECT_TRUE(in.IsEmpty() && out.IsEmpty());
}

// About (3,2) with r 2.5 the U is crossed at +-atan(4/3) and pi -+ atan(4/3) only (x = 2 and 4 meet the circle at
// y = 2 +- sqrt(5.25), off the notch). A circle starts at its first cut after angle 0 and the piece through angle 0
// comes last; circles that do not cross are one turn, even touching ((5,1) r 1 touches y = 0, x = 6 and (4,1)).
TEST(ClipArc, PiecesInTheArcsSenseAndCirclesFromTheFirstCut) {
    const double pi = kPi;
    const std::tuple<bool, CArc2, Rows, Rows> rows[] = {
        // circle?, the arc (or the circle's centre and radius), pieces inside, pieces outside
        {false, {{3, 2}, 2.5, pi, -1.5 * pi}, {{pi, -kA}, {kA, -2 * kA}}, {{pi - kA, 2 * kA - pi}, {-kA, kA - pi / 2}}},
        {false, {{5, 0}, 1, 0, pi}, {{0, pi}}, {}},  // from the corner (6,0) over the arm to (4,0)
        {true, {{3, 2}, 2.5, 0, 0}, {{pi - kA, 2 * kA}, {-kA, 2 * kA}}, {{kA, pi - 2 * kA}, {kA - pi, pi - 2 * kA}}},
        {true, {{5, 1}, 1, 0, 0}, {{0, 2 * pi}}, {}},  // touches only
        {true, {{10, 10}, 1, 0, 0}, {}, {{0, 2 * pi}}},
        {true, {{1, 1}, 0, 0, 0}, {{0, 2 * pi}}, {}},
    };
    CArc2Array in, out;
    for (const auto& [circle, arc, wantIn, wantOut] : rows) {
        circle ? ClipCircle(CCircle2(arc.centre, arc.radius), U(false), in, out) : ClipArc(arc, U(false), in, out);
        ExpectRows(Flat(in), wantIn, 1e-6);
        ExpectRows(Flat(out), wantOut, 1e-6);
    }
    ClipCircle(CCircle2({3, 2}, -1), U(false), in, out);
    EXPECT_TRUE(in.IsEmpty() && out.IsEmpty());
}

// Rows of intervals in and the minimal descriptor out (1 visible, 0 hidden).
TEST(UnifyLineVisibilityDescriptor, HiddenWinsAndNeighboursOfOneStateJoin) {
    const std::pair<Rows, Rows> rows[] = {
        {{{0, .6, 1}, {.4, 1, 0}}, {{0, .4, 1}, {.4, 1, 0}}},
        {{{0, 1, 1}, {.2, .3, 0}}, {{0, .2, 1}, {.2, .3, 0}, {.3, 1, 1}}},
        {{{.5, 1, 1}, {0, .5, 1}}, {{0, 1, 1}}},                  // touching, out of order
        {{{0, .5, 1}, {.5 + 5e-10, 1, 1}}, {{0, 1, 1}}},          // a gap within the tolerance
        {{{.3, .3 + 5e-10, 0}, {0, 1, 1}}, {{0, 1, 1}}},          // too short to hide
        {{{1.5, .8, 0}, {-1, .2, 1}}, {{0, .2, 1}, {.8, 1, 0}}},  // turned round and clamped
        {{{kNaN, .5, 0}, {0, 1, 1}}, {{0, 1, 1}}},
    };
    for (const auto& [given, want] : rows) {
        CLineVisibilityDescriptor d;
        for (const auto& i : given) d.Add(i[0], i[1], i[2] != 0);
        UnifyLineVisibilityDescriptor(d);
        ExpectRows(Flat(d.intervals), want, 2 * kVisibilityParamTolerance);
    }
}

// y = 1 from x = 0 to 10 (t = x / 10) behind squares over x in [1,3], [2,4] and [4.0005, 5] (a gap within the distance
// epsilon), and the triangle (6,0) (8,0) (7,3), which covers x in [6 + 1/3, 8 - 1/3] at y = 1.
TEST(ClipLineWithMultiPolygon, VisibleWhereNoPolygonHides) {
    CDblPolygonArray polygons;
    for (const CDblPointArray& p :
         {Poly({{1, 0}, {3, 0}, {3, 2}, {1, 2}}), Poly({{2, .5}, {4, .5}, {4, 1.5}, {2, 1.5}}),
          Poly({{4.0005, 0}, {5, 0}, {5, 2}, {4.0005, 2}}), Poly({{6, 0}, {8, 0}, {7, 3}})})
        polygons.Add(p);
    const CLine2 line(0, 1, 10, 1);
    const double a = 6 + 1.0 / 3, b = 8 - 1.0 / 3;
    CLineVisibilityDescriptor d;
    CLine2Array visible;
    ClipLineWithMultiPolygon(line, polygons, d, visible);
    ExpectRows(Flat(d.intervals), {{0, .1, 1}, {.1, .5, 0}, {.5, a / 10, 1}, {a / 10, b / 10, 0}, {b / 10, 1, 1}});
    ExpectRows(Flat(visible), {{0, 1, 1, 1}, {5, 1, a, 1}, {b, 1, 10, 1}});
    ClipLineWithMultiPolygon(CLine2(0, kNaN, 1, 1), polygons, d, visible);
    EXPECT_TRUE(d.IsEmpty() && visible.IsEmpty());
}
