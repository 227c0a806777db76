// CRoute2: editing a route (trims and extension), its crossings with a line,
// and its drawing as straights and arcs at an offset.
#include <orvmath/route2.h>

#include <orvmath/angle.h>
#include <orvmath/arcbuild.h>
#include <orvmath/intersect.h>

#include "route_detail.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace ORVMATH {

using namespace route_detail;

namespace {

using Geometry = detail::RouteElementGeometry;

constexpr double kCrossingTol = 1e-9;             // a crossing lies this close to the line; touches and repeats merge
constexpr int kCrossingSamples = 32;              // samples per element when bracketing on a transition
constexpr double kArcExtendMaxSweep = 1.5 * kPi;  // an arc extended along its circle stays below this
constexpr int kPieceChecks = 8;                   // inner points checked against an approximating arc
constexpr int kPieceMaxDepth = 30;                // halvings of a transition before a piece is taken as it is

// Where a mile falls on a route: on critical point `point`, or inside element
// `element` at distance s from its start.
struct Place {
    int point = -1;
    int element = -1;
    double s = 0.0;
    double mile = 0.0;  // the mile of the place (a boundary's own mile when snapped to it)
    bool Before(const Place& o) const {
        const int a = point >= 0 ? point : element, b = o.point >= 0 ? o.point : o.element;
        const double sa = point >= 0 ? 0.0 : s, sb = o.point >= 0 ? 0.0 : o.s;
        return a < b || (a == b && sa < sb);
    }
};

CDblSize Unit(const CDblPoint& a, const CDblPoint& b) {
    const double len = Distance(a, b);
    return len > 0.0 ? CDblSize((b.x - a.x) / len, (b.y - a.y) / len) : CDblSize(0.0, 0.0);
}

CDblPoint Along(const CDblPoint& p, double cx, double cy, double length) {
    return CDblPoint(p.x + cx * length, p.y + cy * length);
}

}  // namespace

// The editing code: a friend of CRoute2, so that it can read the element
// geometry the evaluation has prepared.
class RouteEditor {
public:
    static int Elements(const CRoute2& r) {
        return static_cast<int>(std::min<INT_PTR>(r.m_CriticalPoints.GetSize() - 1, r.m_SegMiles.GetSize()));
    }

    static const Geometry* GeometryOf(const CRoute2& r, int i) {
        return static_cast<std::size_t>(i) < r.m_Geometry.size() ? &r.m_Geometry[static_cast<std::size_t>(i)] : nullptr;
    }

    // The place of `mile`; false when it is off the route. Running sums are
    // taken in the order of the route's own walk, so boundary miles agree.
    static bool Find(const CRoute2& r, double mile, Place& at) {
        const int n = Elements(r);
        const double d = mile - r.m_dStartMile;
        if (n <= 0 || !(d >= -kRouteMileBoundaryTol) || !(d <= r.GetMile() + kRouteMileBoundaryTol)) return false;
        double base = 0.0;
        for (int i = 0; i < n; ++i) {
            const double rest = d - base, m = r.m_SegMiles[i];
            if (rest <= kRouteMileBoundaryTol) {
                at.point = i;
                at.mile = r.m_dStartMile + base;
                return true;
            }
            if (rest < m - kRouteMileBoundaryTol) {
                at.element = i;
                at.s = rest;
                at.mile = mile;
                return true;
            }
            base += m;
        }
        at.point = n;
        at.mile = r.m_dEndMile;
        return true;
    }

    // The critical point the route evaluates at a place inside an element.
    static CCriticalPoint CutPoint(const CRoute2& r, const Place& at) {
        CCriticalPoint cp;
        CDblSize tangent;
        r.EvaluateElement(at.element, at.s, cp, tangent);
        return cp;
    }

    // The part between two places as a route; false when it would be empty.
    static bool Keep(const CRoute2& r, double mileA, double mileB, CRoute2& out) {
        Place a, b;
        if (r.IsNull() || !Find(r, mileA, a) || !Find(r, mileB, b) || !a.Before(b)) return false;
        const CCriticalPointArray& src = r.m_CriticalPoints;
        CCriticalPointArray pts;
        if (a.point < 0) pts.Add(CutPoint(r, a));
        const int first = a.point >= 0 ? a.point : a.element + 1;
        const int last = b.point >= 0 ? b.point : b.element;
        for (int k = first; k <= last; ++k) pts.Add(src[k]);
        if (b.point < 0) {
            pts.Add(CutPoint(r, b));
            // A transition that stores its far radius now ends at the cut.
            CCriticalPoint& p1 = pts[pts.GetSize() - 2];
            if (p1.type == SEGMENT_TRANSITION && p1.endRadius != 0.0) p1.endRadius = pts[pts.GetSize() - 1].radius;
        }
        // A transition piece too short to be ahead of its start has no length
        // in the model: keep it as the straight it nearly is.
        const INT_PTR n = pts.GetSize();
        if (a.point < 0 && pts[0].type == SEGMENT_TRANSITION && !IsAhead(pts[0], pts[1])) {
            pts[0].type = SEGMENT_LINE;
            pts[0].radius = kInfiniteRadius;
        }
        if (b.point < 0 && pts[n - 2].type == SEGMENT_TRANSITION && !IsAhead(pts[n - 2], pts[n - 1]))
            pts[n - 2].type = SEGMENT_LINE;  // its radius may be the far radius of the element before
        CRoute2 kept(r);                     // keeps the clothoid mode
        kept.Set(pts, a.mile, r.m_dOffset);
        out = kept;
        return true;
    }

    // Continues the first (atStart) or last element by `length`.
    static void Extend(const CRoute2& r, bool atStart, double length, CCriticalPointArray& pts) {
        const int n = Elements(r);
        const int e = atStart ? 0 : n - 1;
        const Geometry* g = GeometryOf(r, e);
        const INT_PTR endIdx = atStart ? 0 : pts.GetSize() - 1;
        CCriticalPoint& end = pts[endIdx];
        const double sign = atStart ? -1.0 : 1.0;
        if (g && g->kind == Geometry::Line) {
            const CDblSize u = Unit(g->chord.start, g->chord.end);  // the chord carries the positions
            end.pt = Along(end.pt, u.cx, u.cy, sign * length);
            return;
        }
        if (g && g->kind == Geometry::Arc &&
            std::fabs(g->arc.sweepAngle) + length / g->arc.radius < kArcExtendMaxSweep) {
            const double turn = (g->arc.sweepAngle > 0.0 ? 1.0 : -1.0) * length / g->arc.radius;
            const double at = atStart ? g->arc.startAngle - turn : g->arc.startAngle + g->arc.sweepAngle + turn;
            end.pt = g->arc.PointAtAngle(at);
            end.angle = NormalizeAng_Rad(end.angle + sign * turn);
            return;
        }
        // A new straight along the end tangent.
        const double c = std::cos(end.angle), s = std::sin(end.angle);
        CCriticalPoint added(SEGMENT_LINE, Along(end.pt, c, s, sign * length), end.angle, kInfiniteRadius);
        if (atStart) {
            pts.InsertAt(0, added);
            return;
        }
        CCriticalPoint& before = pts[endIdx - 1];
        if (before.type == SEGMENT_TRANSITION && before.endRadius == 0.0) before.endRadius = end.radius;
        end.type = SEGMENT_LINE;
        end.radius = kInfiniteRadius;
        pts.Add(added);
    }

    static bool Extend2Ends(CRoute2& r, double lengthStart, double lengthEnd) {
        if (Elements(r) <= 0) return false;
        CCriticalPointArray pts;
        pts.Copy(r.m_CriticalPoints);
        const double l0 = lengthStart > 0.0 ? lengthStart : 0.0, l1 = lengthEnd > 0.0 ? lengthEnd : 0.0;
        if (l1 > 0.0) Extend(r, false, l1, pts);
        if (l0 > 0.0) Extend(r, true, l0, pts);
        r.Set(pts, r.m_dStartMile - l0, r.m_dOffset);
        return true;
    }
};

bool CRoute2::TrimStart(double mile) { return RouteEditor::Keep(*this, mile, m_dEndMile, *this); }

bool CRoute2::TrimEnd(double mile) { return RouteEditor::Keep(*this, m_dStartMile, mile, *this); }

bool CRoute2::Trim2Side(double mile1, double mile2) {
    return RouteEditor::Keep(*this, std::min(mile1, mile2), std::max(mile1, mile2), *this);
}

void CRoute2::TrimMiddle(double mile1, double mile2, CRoute2& before, CRoute2& after) const {
    CRoute2 a, b;
    if (!RouteEditor::Keep(*this, m_dStartMile, std::min(mile1, mile2), a)) a.SetNull();
    if (!RouteEditor::Keep(*this, std::max(mile1, mile2), m_dEndMile, b)) b.SetNull();
    before = a;
    after = b;
}

bool CRoute2::Extend2Ends(double lengthStart, double lengthEnd) {
    return RouteEditor::Extend2Ends(*this, lengthStart, lengthEnd);
}

}  // namespace ORVMATH
