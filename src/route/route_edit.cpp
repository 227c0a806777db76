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
constexpr int kLoopSearch = 64;                   // pieces searched on each side of a loop for the crossing closing it

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
        // One end after the other, so that an arc extended at both ends sees its whole sweep.
        for (const bool atStart : {false, true}) {
            const double length = atStart ? lengthStart : lengthEnd;
            if (!(length > 0.0)) continue;
            CCriticalPointArray pts;
            pts.Copy(r.m_CriticalPoints);
            Extend(r, atStart, length, pts);
            r.Set(pts, atStart ? r.m_dStartMile - length : r.m_dStartMile, r.m_dOffset);
        }
        return true;
    }

    // ---- crossings with a line

    // The element's point at distance s, shifted `shift` to the left, and its unit tangent.
    static CDblPoint ShiftedPoint(const CRoute2& r, int i, double s, double shift, CDblSize& t) {
        CCriticalPoint cp;
        r.EvaluateElement(i, s, cp, t);
        return CDblPoint(cp.pt.x - shift * t.cy, cp.pt.y + shift * t.cx);
    }

    // Signed distance of p from the line through a with unit direction u, left positive.
    static double Side(const CDblPoint& a, const CDblSize& u, const CDblPoint& p) {
        return u.cx * (p.y - a.y) - u.cy * (p.x - a.x);
    }

    // Distances along a straight (or chord) element where it meets the line.
    static void LineRoots(const Geometry& g, double shift, const CDblPoint& a, const CDblSize& u,
                          std::vector<double>& out) {
        // Side(P0 + s c) = Side(P0) + s cross(u, c): linear in s.
        const CDblSize c = Unit(g.chord.start, g.chord.end);
        const double slope = u.cx * c.cy - u.cy * c.cx;
        if (slope == 0.0) return;  // parallel, or lying along the line: no single crossing
        const CDblPoint p0(g.chord.start.x - shift * g.tangent.cy, g.chord.start.y + shift * g.tangent.cx);
        out.push_back(-Side(a, u, p0) / slope);
    }

    // The same on an arc: its offset is the circle of radius rho about the
    // centre, which meets the line where rho sin(theta - phi) = -h.
    static void ArcRoots(const Geometry& g, double shift, const CDblPoint& a, const CDblSize& u,
                         std::vector<double>& out) {
        const double sweep = g.arc.sweepAngle;
        const double rho = g.arc.radius - (sweep > 0.0 ? shift : -shift);
        const double h = Side(a, u, g.arc.centre), phi = std::atan2(u.cy, u.cx);
        if (rho == 0.0) return;
        std::vector<double> thetas;
        if (std::fabs(std::fabs(h) - std::fabs(rho)) <= kCrossingTol) {
            thetas.push_back(phi + (-h / rho > 0.0 ? kHalfPi : -kHalfPi));  // a touch: once
        } else if (std::fabs(h) < std::fabs(rho)) {
            const double k = std::asin(-h / rho);
            thetas.push_back(phi + k);
            thetas.push_back(phi + kPi - k);
        }
        for (double theta : thetas) {
            double turn = sweep > 0.0 ? theta - g.arc.startAngle : g.arc.startAngle - theta;
            turn -= k2Pi * std::floor(turn / k2Pi);
            if (turn > std::fabs(sweep) && k2Pi - turn < 1e-12) turn -= k2Pi;  // just before the start
            out.push_back(turn / std::fabs(sweep) * g.length);                 // as the evaluation maps s to the angle
        }
    }

    // The same on any other element, numerically: the tangent turns
    // monotonically between the points where it is parallel to the line, so
    // the distance to the line is monotone there and each sign change holds
    // one root.
    static void CurveRoots(const CRoute2& r, int i, double length, double shift, const CDblPoint& a, const CDblSize& u,
                           std::vector<double>& out) {
        const auto f = [&](double s) {
            CDblSize t;
            return Side(a, u, ShiftedPoint(r, i, s, shift, t));
        };
        const auto slopeAt = [&](double s) {
            CDblSize t;
            ShiftedPoint(r, i, s, shift, t);
            return u.cx * t.cy - u.cy * t.cx;
        };
        std::vector<double> breaks{0.0};
        double prevS = 0.0, prev = slopeAt(0.0);
        for (int k = 1; k <= kCrossingSamples; ++k) {
            const double s = length * k / kCrossingSamples, cur = slopeAt(s);
            if ((prev < 0.0 && cur > 0.0) || (prev > 0.0 && cur < 0.0))
                breaks.push_back(Bisect(slopeAt, prevS, s, length));
            prevS = s;
            prev = cur;
        }
        breaks.push_back(length);
        // Values within the tolerance count as zero: a touch is a root on its own.
        const auto sign = [&](double s) {
            const double v = f(s);
            return std::fabs(v) <= kCrossingTol ? 0 : (v < 0.0 ? -1 : 1);
        };
        int prevSign = sign(breaks[0]);
        if (prevSign == 0) out.push_back(breaks[0]);
        for (std::size_t k = 1; k < breaks.size(); ++k) {
            const int cur = sign(breaks[k]);
            if (cur == 0)
                out.push_back(breaks[k]);
            else if (prevSign != 0 && cur != prevSign)
                out.push_back(Bisect(f, breaks[k - 1], breaks[k], length));
            prevSign = cur;
        }
    }

    // Distances along element i (0..length) where it meets the line.
    static void ElementRoots(const CRoute2& r, int i, double length, double shift, const CDblPoint& a,
                             const CDblSize& u, std::vector<double>& out) {
        const Geometry* g = GeometryOf(r, i);
        if (g && (g->kind == Geometry::Line || g->kind == Geometry::Chord))
            LineRoots(*g, shift, a, u, out);
        else if (g && g->kind == Geometry::Arc)
            ArcRoots(*g, shift, a, u, out);
        else
            CurveRoots(r, i, length, shift, a, u, out);
    }

    // A root of fn between lo and hi, where it changes sign, to 1e-13 of `scale`.
    template <class Fn>
    static double Bisect(const Fn& fn, double lo, double hi, double scale) {
        const bool negLo = fn(lo) < 0.0;
        for (int it = 0; it < 200 && hi - lo > 1e-13 * scale; ++it) {
            const double mid = 0.5 * (lo + hi);
            if ((fn(mid) < 0.0) == negLo)
                lo = mid;
            else
                hi = mid;
        }
        return 0.5 * (lo + hi);
    }

    static int Intersect(const CRoute2& r, const CLine2& line, bool infinite, CArray<CRoute2::Crossing>& crossings,
                         double offset) {
        crossings.RemoveAll();
        const double len = line.Length();
        const int n = Elements(r);
        if (!(len > 0.0) || n <= 0) return 0;
        const CDblSize u((line.end.x - line.start.x) / len, (line.end.y - line.start.y) / len);
        const double shift = r.m_dOffset + offset;
        std::vector<CRoute2::Crossing> found;
        double base = r.m_dStartMile;
        for (int i = 0; i < n; base += r.m_SegMiles[i], ++i) {
            const double length = r.m_SegMiles[i];
            if (!(length > 0.0)) continue;
            std::vector<double> roots;
            ElementRoots(r, i, length, shift, line.start, u, roots);
            for (double s : roots) {
                // Roots just outside the element (rounding at its ends) belong to it.
                if (!(s >= -kCrossingTol && s <= length + kCrossingTol)) continue;
                s = std::min(std::max(s, 0.0), length);
                CDblSize t;
                const CDblPoint p = ShiftedPoint(r, i, s, shift, t);
                const double along = u.cx * (p.x - line.start.x) + u.cy * (p.y - line.start.y);
                if (!infinite && !(along >= -kCrossingTol && along <= len + kCrossingTol)) continue;
                CRoute2::Crossing c;
                c.mile = base + s;
                c.pt = p;
                c.element = i;
                found.push_back(c);
            }
        }
        std::stable_sort(found.begin(), found.end(),
                         [](const CRoute2::Crossing& a, const CRoute2::Crossing& b) { return a.mile < b.mile; });
        for (const CRoute2::Crossing& c : found) {
            const INT_PTR k = crossings.GetSize();
            if (k > 0 && c.mile - crossings[k - 1].mile <= kCrossingTol &&
                Distance(c.pt, crossings[k - 1].pt) <= kCrossingTol)
                continue;  // an element boundary, reached from both sides
            crossings.Add(c);
        }
        return static_cast<int>(crossings.GetSize());
    }

    // ---- straights and arcs

    struct Raw {
        CRoute2::Piece piece;
        bool backwards = false;  // runs against the direction of travel (an offset beyond the radius)
    };

    static CRoute2::Piece MakeLine(const CDblPoint& a, const CDblPoint& b, double m0, double m1) {
        CRoute2::Piece p;
        p.line = CLine2(a, b);
        p.startMile = m0;
        p.endMile = m1;
        return p;
    }

    static CRoute2::Piece MakeArc(const CArc2& arc, double m0, double m1) {
        CRoute2::Piece p;
        p.isArc = true;
        p.arc = arc;
        p.startMile = m0;
        p.endMile = m1;
        return p;
    }

    // A curve of the element between s0 and s1 as arcs through three of its
    // points (or lines where flat enough), halved until within tol.
    template <class Curve>
    static void Approximate(const Curve& at, double s0, double s1, double base, double tol, int depth,
                            std::vector<Raw>& out) {
        CDblSize t0, tm, t1;
        const double sm = 0.5 * (s0 + s1);
        const CDblPoint p0 = at(s0, t0), pm = at(sm, tm), p1 = at(s1, t1);
        const CLine2 chord(p0, p1);
        const CArc2 arc = CalArcFrom3Points(p0, pm, p1);
        double lineErr = 0.0, arcErr = 0.0;
        for (int k = 1; k <= kPieceChecks; ++k) {
            CDblSize t;
            const CDblPoint q = at(s0 + (s1 - s0) * k / (kPieceChecks + 1), t);
            lineErr = std::max(lineErr, chord.Distance(q));
            if (!arc.IsNull()) arcErr = std::max(arcErr, std::fabs(Distance(q, arc.centre) - arc.radius));
        }
        const bool lineFits = lineErr <= tol, arcFits = !arc.IsNull() && arcErr <= tol;
        if (lineFits || arcFits || depth >= kPieceMaxDepth) {
            Raw raw;
            raw.piece =
                lineFits || arc.IsNull() ? MakeLine(p0, p1, base + s0, base + s1) : MakeArc(arc, base + s0, base + s1);
            raw.backwards = (p1.x - p0.x) * tm.cx + (p1.y - p0.y) * tm.cy < 0.0;
            out.push_back(raw);
            return;
        }
        Approximate(at, s0, sm, base, tol, depth + 1, out);
        Approximate(at, sm, s1, base, tol, depth + 1, out);
    }

    static void Pieces(const CRoute2& r, double shift, double tol, std::vector<Raw>& out) {
        if (!(tol > 0.0)) tol = 1e-3;
        double base = r.m_dStartMile;
        const int n = Elements(r);
        for (int i = 0; i < n; base += r.m_SegMiles[i], ++i) {
            const double length = r.m_SegMiles[i];
            const Geometry* g = GeometryOf(r, i);
            if (!(length > 0.0) || !g) continue;
            const auto at = [&](double s, CDblSize& t) { return ShiftedPoint(r, i, s, shift, t); };
            Raw raw;
            if (g->kind == Geometry::Line || g->kind == Geometry::Chord) {
                CDblSize t;
                raw.piece = MakeLine(at(0.0, t), at(length, t), base, base + length);
            } else if (g->kind == Geometry::Arc) {
                // A concentric arc; a radius through 0 puts it on the far side, running backwards.
                const double rho = g->arc.radius - (g->arc.sweepAngle > 0.0 ? shift : -shift);
                const double start = rho > 0.0 ? g->arc.startAngle : NormalizeAng_Rad(g->arc.startAngle + kPi);
                // The chainage may span a little more or less of the circle than the arc's own sweep.
                const double sweep = g->arc.sweepAngle * (length / g->length);
                raw.piece = MakeArc(CArc2(g->arc.centre, std::fabs(rho), start, sweep), base, base + length);
                raw.backwards = !(rho > 0.0);
            } else {
                Approximate(at, 0.0, length, base, tol, 0, out);
                continue;
            }
            out.push_back(raw);
        }
    }

    // Where a point lies along a piece, 0 at its start and 1 at its end.
    static double ParamOf(const CRoute2::Piece& p, const CDblPoint& x) {
        if (!p.isArc) {
            const double dx = p.line.end.x - p.line.start.x, dy = p.line.end.y - p.line.start.y;
            const double l2 = dx * dx + dy * dy;
            return l2 > 0.0 ? ((x.x - p.line.start.x) * dx + (x.y - p.line.start.y) * dy) / l2 : 0.0;
        }
        const double sweep = p.arc.sweepAngle;
        double turn = std::atan2(x.y - p.arc.centre.y, x.x - p.arc.centre.x) - p.arc.startAngle;
        if (sweep < 0.0) turn = -turn;
        turn -= k2Pi * std::floor(turn / k2Pi);
        if (turn > std::fabs(sweep) && k2Pi - turn < 1e-12) turn -= k2Pi;
        return sweep != 0.0 ? turn / std::fabs(sweep) : 0.0;
    }

    // The crossing of two pieces nearest the start of the second; false when they do not cross.
    static bool Cross(const CRoute2::Piece& a, const CRoute2::Piece& b, double& ta, double& tb) {
        CDblPointArray pts;
        const auto deg = [](double rad) { return rad * 180.0 / kPi; };
        if (!a.isArc && !b.isArc)
            XLineLine(a.line.start, a.line.end, b.line.start, b.line.end, pts, ExtendNone);
        else if (!a.isArc || !b.isArc) {
            const CRoute2::Piece& l = a.isArc ? b : a;
            const CArc2& c = a.isArc ? a.arc : b.arc;
            XLineArc(l.line.start, l.line.end, c.centre.x, c.centre.y, c.radius, deg(c.startAngle), deg(c.sweepAngle),
                     pts, ExtendNone);
        } else {
            XArcArc(a.arc.centre.x, a.arc.centre.y, a.arc.radius, deg(a.arc.startAngle), deg(a.arc.sweepAngle),
                    b.arc.centre.x, b.arc.centre.y, b.arc.radius, deg(b.arc.startAngle), deg(b.arc.sweepAngle), pts);
        }
        bool any = false;
        for (const CDblPoint& x : pts) {
            const double pa = ParamOf(a, x), pb = ParamOf(b, x);
            if (!(pa >= -1e-9 && pa <= 1 + 1e-9 && pb >= -1e-9 && pb <= 1 + 1e-9)) continue;
            if (!any || pb < tb) ta = std::min(std::max(pa, 0.0), 1.0), tb = std::min(std::max(pb, 0.0), 1.0);
            any = true;
        }
        return any;
    }

    // The piece from fraction t0 to t1 of its length.
    static CRoute2::Piece Part(const CRoute2::Piece& p, double t0, double t1) {
        CRoute2::Piece q = p;
        q.startMile = p.startMile + (p.endMile - p.startMile) * t0;
        q.endMile = p.startMile + (p.endMile - p.startMile) * t1;
        if (p.isArc) {
            q.arc.startAngle = NormalizeAng_Rad(p.arc.startAngle + p.arc.sweepAngle * t0);
            q.arc.sweepAngle = p.arc.sweepAngle * (t1 - t0);
        } else {
            q.line = CLine2(p.line.Point(t0), p.line.Point(t1));
        }
        return q;
    }

    static int OffsetCurve(const CRoute2& r, double d, double tol, CArray<CRoute2::Piece>& pieces,
                           CArray<CDblPair>* loops) {
        pieces.RemoveAll();
        if (loops) loops->RemoveAll();
        std::vector<Raw> raw;
        Pieces(r, r.m_dOffset + d, tol, raw);
        std::vector<CRoute2::Piece> out;
        const int n = static_cast<int>(raw.size());
        for (int k = 0; k < n;) {
            if (!raw[k].backwards) {
                out.push_back(raw[k++].piece);
                continue;
            }
            int next = k;  // the first forward piece after the run that runs backwards
            while (next < n && raw[next].backwards) ++next;
            CDblPair loop(raw[k].piece.startMile, raw[next - 1].piece.endMile);
            // Cut the pieces on either side where they cross, trying the pairs nearest the run first.
            bool cut = false;
            const int before = static_cast<int>(out.size());
            for (int reach = 0; reach < 2 * kLoopSearch && !cut; ++reach)
                for (int back = 0; back <= reach && !cut; ++back) {
                    const int j = before - 1 - back, f = next + (reach - back);
                    double ta = 0.0, tb = 0.0;
                    if (j < 0 || f >= n || back >= kLoopSearch || reach - back >= kLoopSearch) continue;
                    if (raw[f].backwards || !Cross(out[j], raw[f].piece, ta, tb)) continue;
                    out.resize(static_cast<std::size_t>(j + 1));
                    out[j] = Part(out[j], 0.0, ta);
                    loop = CDblPair(out[j].endMile, 0.0);
                    raw[f].piece = Part(raw[f].piece, tb, 1.0);
                    loop.second = raw[f].piece.startMile;
                    next = f;
                    cut = true;
                }
            if (loops) loops->Add(loop);
            k = next;
        }
        for (const CRoute2::Piece& p : out)
            if (p.endMile > p.startMile) pieces.Add(p);  // a piece cut down to its end point is dropped
        return static_cast<int>(pieces.GetSize());
    }
};

int CRoute2::GetSegments(double tolerance, CArray<Piece>& pieces, double offset) const {
    pieces.RemoveAll();
    std::vector<RouteEditor::Raw> raw;
    RouteEditor::Pieces(*this, m_dOffset + offset, tolerance, raw);
    for (const RouteEditor::Raw& p : raw)
        if (!p.backwards) pieces.Add(p.piece);
    return static_cast<int>(pieces.GetSize());
}

int CRoute2::GetOffsetCurve(double d, double tolerance, CArray<Piece>& pieces, CArray<CDblPair>* loops) const {
    return RouteEditor::OffsetCurve(*this, d, tolerance, pieces, loops);
}

int CRoute2::IntersectionWithLine(const CLine2& line, bool infinite, CArray<Crossing>& crossings, double offset) const {
    return RouteEditor::Intersect(*this, line, infinite, crossings, offset);
}

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
