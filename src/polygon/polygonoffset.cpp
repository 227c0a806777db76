// Offsetting polygons and polylines with straight and circular edges.
//
// The raw offset is one closed chain of pieces (lines and arcs): every edge
// moved |d| to the right of the direction of travel, joined at the vertices.
// Split where it crosses itself, its sub-pieces lie on the result's
// boundary exactly when they are no closer than |d| to the input, so the
// closer ones go and the rest are linked back into loops; each keeps the
// region on its left, which makes outer loops counter-clockwise and holes
// clockwise.
#include <orvmath/polygonoffset.h>

#include <orvmath/angle.h>

#include "polygon_detail.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>
#include <unordered_map>
#include <vector>

namespace ORVMATH {

namespace {

constexpr double kParamEps = 1e-12;  // a crossing this close to a piece's end does not split it

struct Vec {
    double x = 0.0, y = 0.0;
};
using detail::Cross;

// A piece of a chain: the segment a -> b, or the arc about c of radius r
// from angle a0 through `sweep` (signed), whose ends are a and b.
struct Piece {
    CDblPoint a, b;
    bool arc = false;
    CDblPoint c;
    double r = 0.0, a0 = 0.0, sweep = 0.0;
    double minx = 0, miny = 0, maxx = 0, maxy = 0;

    CDblPoint At(double t) const {
        if (!arc) return CDblPoint(a.x + t * (b.x - a.x), a.y + t * (b.y - a.y));
        const double angle = a0 + t * sweep;
        return CDblPoint(c.x + r * std::cos(angle), c.y + r * std::sin(angle));
    }
    // The parameter of a point of the arc's circle at `angle`, in [0, 1] when it lies on the arc.
    double ArcParam(double angle) const {
        double delta = angle - a0;
        if (sweep > 0.0) {
            delta = std::fmod(delta, k2Pi);
            if (delta < 0.0) delta += k2Pi;
            if (delta > sweep && delta - k2Pi > -kParamEps * k2Pi) delta -= k2Pi;  // just before the start
        } else {
            delta = std::fmod(delta, k2Pi);
            if (delta > 0.0) delta -= k2Pi;
            if (delta < sweep && delta + k2Pi < kParamEps * k2Pi) delta += k2Pi;
        }
        return delta / sweep;
    }
    void Bound() {
        minx = std::min(a.x, b.x);
        maxx = std::max(a.x, b.x);
        miny = std::min(a.y, b.y);
        maxy = std::max(a.y, b.y);
        if (!arc) return;
        for (int k = 0; k < 4; ++k) {
            const double t = ArcParam(k * kPi * 0.5);
            if (t < 0.0 || t > 1.0) continue;
            const CDblPoint p = At(t);
            minx = std::min(minx, p.x);
            maxx = std::max(maxx, p.x);
            miny = std::min(miny, p.y);
            maxy = std::max(maxy, p.y);
        }
    }
};

Piece LinePiece(const CDblPoint& a, const CDblPoint& b) {
    Piece p;
    p.a = a;
    p.b = b;
    p.Bound();
    return p;
}

Piece ArcPiece(const CDblPoint& c, double r, double sweep, const CDblPoint& a, const CDblPoint& b) {
    Piece p;
    p.arc = true;
    p.a = a;
    p.b = b;
    p.c = c;
    p.r = r;
    p.a0 = std::atan2(a.y - c.y, a.x - c.x);
    p.sweep = sweep;
    p.Bound();
    return p;
}

// Unit tangent of an edge at its start and end.
void EdgeTangents(bool isArc, const CLine2& line, const CArc2& arc, Vec& t0, Vec& t1) {
    if (!isArc) {
        const double len = line.Length();
        t0 = t1 = Vec{(line.end.x - line.start.x) / len, (line.end.y - line.start.y) / len};
        return;
    }
    const double s = arc.sweepAngle > 0.0 ? 1.0 : -1.0, e = arc.startAngle + arc.sweepAngle;
    t0 = Vec{-s * std::sin(arc.startAngle), s * std::cos(arc.startAngle)};
    t1 = Vec{-s * std::sin(e), s * std::cos(e)};
}

CDblPoint Right(const CDblPoint& p, const Vec& t, double d) { return CDblPoint(p.x + d * t.y, p.y - d * t.x); }

// The pieces that fill the turn from tangent tin to tout at vertex v, from
// e (the end of the offset edge before) to s (the start of the one after).
void Join(const CDblPoint& v, const Vec& tin, const Vec& tout, const CDblPoint& e, const CDblPoint& s, double d,
          OffsetJoin join, double limit, std::vector<Piece>& out) {
    if (e == s) return;
    const double turn = std::atan2(Cross(tin.x, tin.y, tout.x, tout.y), tin.x * tout.x + tin.y * tout.y);
    if (!(turn * d > 0.0)) {
        // The offset edges overlap here: through the vertex, a detour the clean-up removes.
        out.push_back(LinePiece(e, v));
        out.push_back(LinePiece(v, s));
        return;
    }
    const double ad = std::fabs(d), half = std::fabs(turn) * 0.5;
    if (join == OFFSET_JOIN_ROUND) {
        out.push_back(ArcPiece(v, ad, turn, e, s));
        return;
    }
    if (join == OFFSET_JOIN_MITER && 1.0 <= limit * std::cos(half)) {
        const double k = ad * std::tan(half);
        const CDblPoint m(e.x + tin.x * k, e.y + tin.y * k);
        out.push_back(LinePiece(e, m));
        out.push_back(LinePiece(m, s));
        return;
    }
    // Cut square across the bisector, at |d| (square) or at the mitre limit.
    const double reach = join == OFFSET_JOIN_MITER ? limit * ad : ad;
    const double k = (reach - ad * std::cos(half)) / std::sin(half);
    const CDblPoint p1(e.x + tin.x * k, e.y + tin.y * k), p2(s.x - tout.x * k, s.y - tout.y * k);
    out.push_back(LinePiece(e, p1));
    out.push_back(LinePiece(p1, p2));
    out.push_back(LinePiece(p2, s));
}

// The offset pieces of a path's edges `first`.. in order, `d` to the right,
// with joins between consecutive edges (and from the last back to the first
// when closed). Returns false when the path has no edge of positive length.
struct EdgeInfo {
    bool isArc;
    CLine2 line;
    CArc2 arc;
    Vec t0, t1;
};

std::vector<EdgeInfo> Edges(const CPolyPath& path) {
    std::vector<EdgeInfo> edges;
    for (int i = 0; i < path.GetEdgeCount(); ++i) {
        EdgeInfo e;
        e.isArc = path.GetEdge(i, e.line, e.arc);
        if (!(e.line.Length() > 0.0)) continue;
        EdgeTangents(e.isArc, e.line, e.arc, e.t0, e.t1);
        edges.push_back(e);
    }
    return edges;
}

void OffsetEdge(const EdgeInfo& e, double d, std::vector<Piece>& out) {
    const CDblPoint a = Right(e.line.start, e.t0, d), b = Right(e.line.end, e.t1, d);
    if (e.isArc) {
        // Right of a counter-clockwise arc is away from its centre.
        const double r = e.arc.radius + (e.arc.sweepAngle > 0.0 ? d : -d);
        if (r > 1e-12 * e.arc.radius) {
            out.push_back(ArcPiece(e.arc.centre, r, e.arc.sweepAngle, a, b));
            return;
        }
    }
    out.push_back(LinePiece(a, b));  // a straight edge, or an arc shrunk past its centre
}

void OffsetChain(const std::vector<EdgeInfo>& edges, bool closed, double d, OffsetJoin join, double limit,
                 std::vector<Piece>& out) {
    const std::size_t n = edges.size();
    for (std::size_t i = 0; i < n; ++i) {
        if (i > 0 || closed) {
            const EdgeInfo& prev = edges[(i + n - 1) % n];
            const CDblPoint& v = edges[i].line.start;
            Join(v, prev.t1, edges[i].t0, Right(prev.line.end, prev.t1, d), Right(v, edges[i].t0, d), d, join, limit,
                 out);
        }
        OffsetEdge(edges[i], d, out);
    }
}

// Distances from the input, by a grid of its edges. With butt ends, a point
// whose nearest point of the path is one of its two ends does not count as
// near it (the buffer stops square there).
class Proximity {
public:
    Proximity(const std::vector<EdgeInfo>& edges, double reach, bool buttEnds, bool closed)
        : edges_(edges), reach_(reach), butt_(buttEnds && !closed) {
        double minx = std::numeric_limits<double>::infinity(), miny = minx, maxx = -minx, maxy = -minx, sum = 0.0;
        for (const EdgeInfo& e : edges) {
            const Piece p = Box(e);
            minx = std::min(minx, p.minx);
            miny = std::min(miny, p.miny);
            maxx = std::max(maxx, p.maxx);
            maxy = std::max(maxy, p.maxy);
            sum += std::max(p.maxx - p.minx, p.maxy - p.miny);
        }
        cell_ = std::max(reach, sum / std::max<std::size_t>(1, edges.size()));
        ox_ = minx - reach;
        oy_ = miny - reach;
        nx_ = static_cast<long long>((maxx - minx + 2 * reach) / cell_) + 1;
        ny_ = static_cast<long long>((maxy - miny + 2 * reach) / cell_) + 1;
        for (std::size_t i = 0; i < edges.size(); ++i) {
            const Piece p = Box(edges[i]);
            for (long long gx = CellX(p.minx); gx <= CellX(p.maxx); ++gx)
                for (long long gy = CellY(p.miny); gy <= CellY(p.maxy); ++gy) grid_[gx * ny_ + gy].push_back(i);
        }
        first_ = edges.empty() ? CDblPoint() : edges.front().line.start;
        last_ = edges.empty() ? CDblPoint() : edges.back().line.end;
    }

    // Is any edge nearer to p than `limit`?
    bool Near(const CDblPoint& p, double limit) const {
        for (long long gx = CellX(p.x - reach_); gx <= CellX(p.x + reach_); ++gx) {
            for (long long gy = CellY(p.y - reach_); gy <= CellY(p.y + reach_); ++gy) {
                const auto it = grid_.find(gx * ny_ + gy);
                if (it == grid_.end()) continue;
                for (std::size_t i : it->second) {
                    const CDblPoint q = NearestOn(edges_[i], p);
                    if (butt_ && ((i == 0 && q == first_) || (i + 1 == edges_.size() && q == last_))) continue;
                    if (Distance(p, q) < limit) return true;
                }
            }
        }
        return false;
    }

private:
    static Piece Box(const EdgeInfo& e) {
        return e.isArc ? ArcPiece(e.arc.centre, e.arc.radius, e.arc.sweepAngle, e.line.start, e.line.end)
                       : LinePiece(e.line.start, e.line.end);
    }
    long long Cell(double v, double origin, long long count) const {
        return std::max(0LL, std::min(static_cast<long long>((v - origin) / cell_), count - 1));
    }
    long long CellX(double x) const { return Cell(x, ox_, nx_); }
    long long CellY(double y) const { return Cell(y, oy_, ny_); }
    static CDblPoint NearestOn(const EdgeInfo& e, const CDblPoint& p) {
        if (e.isArc) {
            const double dx = p.x - e.arc.centre.x, dy = p.y - e.arc.centre.y;
            if ((dx != 0.0 || dy != 0.0) && e.arc.ContainsAngle(std::atan2(dy, dx)))
                return e.arc.PointAtAngle(std::atan2(dy, dx));
            return Distance(p, e.line.start) <= Distance(p, e.line.end) ? e.line.start : e.line.end;
        }
        const CLine2& s = e.line;
        const double dx = s.end.x - s.start.x, dy = s.end.y - s.start.y;
        const double t = std::clamp(((p.x - s.start.x) * dx + (p.y - s.start.y) * dy) / (dx * dx + dy * dy), 0.0, 1.0);
        return t == 0.0 ? s.start : t == 1.0 ? s.end : s.Point(t);
    }

    const std::vector<EdgeInfo>& edges_;
    double reach_, cell_ = 1.0, ox_ = 0.0, oy_ = 0.0;
    long long nx_ = 1, ny_ = 1;
    bool butt_;
    CDblPoint first_, last_;
    std::unordered_map<long long, std::vector<std::size_t>> grid_;
};

struct Split {
    double t;
    CDblPoint p;
};

void AddCrossing(std::vector<std::vector<Split>>& splits, std::size_t i, double ti, std::size_t j, double tj,
                 const CDblPoint& p) {
    if (ti < -kParamEps || ti > 1.0 + kParamEps || tj < -kParamEps || tj > 1.0 + kParamEps) return;
    if (ti > kParamEps && ti < 1.0 - kParamEps) splits[i].push_back({ti, p});
    if (tj > kParamEps && tj < 1.0 - kParamEps) splits[j].push_back({tj, p});
}

// The line a + t (b - a) meets the circle of arc piece q.
void LineArc(const std::vector<Piece>& pc, std::size_t i, std::size_t j, std::vector<std::vector<Split>>& splits) {
    const Piece &l = pc[i], &q = pc[j];
    const double rx = l.b.x - l.a.x, ry = l.b.y - l.a.y, fx = l.a.x - q.c.x, fy = l.a.y - q.c.y;
    const double A = rx * rx + ry * ry, B = 2.0 * (fx * rx + fy * ry), C = fx * fx + fy * fy - q.r * q.r;
    const double disc = B * B - 4.0 * A * C;
    if (!(disc >= 0.0) || !(A > 0.0)) return;
    const double root = std::sqrt(disc);
    for (double t : {(-B - root) / (2.0 * A), (-B + root) / (2.0 * A)}) {
        const CDblPoint p = l.At(t);
        AddCrossing(splits, i, t, j, q.ArcParam(std::atan2(p.y - q.c.y, p.x - q.c.x)), p);
        if (root == 0.0) break;
    }
}

void Intersect(const std::vector<Piece>& pc, std::size_t i, std::size_t j, std::vector<std::vector<Split>>& splits) {
    const Piece &p = pc[i], &q = pc[j];
    if (!p.arc && !q.arc) {
        const double rx = p.b.x - p.a.x, ry = p.b.y - p.a.y, sx = q.b.x - q.a.x, sy = q.b.y - q.a.y;
        const double den = Cross(rx, ry, sx, sy);
        if (!(std::fabs(den) > 1e-15 * std::hypot(rx, ry) * std::hypot(sx, sy))) return;  // parallel
        const double qx = q.a.x - p.a.x, qy = q.a.y - p.a.y;
        const double t = Cross(qx, qy, sx, sy) / den, u = Cross(qx, qy, rx, ry) / den;
        AddCrossing(splits, i, t, j, u, p.At(t));
        return;
    }
    if (!p.arc) return LineArc(pc, i, j, splits);
    if (!q.arc) return LineArc(pc, j, i, splits);
    const double dx = q.c.x - p.c.x, dy = q.c.y - p.c.y, dist = std::hypot(dx, dy);
    if (!(dist > 0.0) || dist > p.r + q.r || dist < std::fabs(p.r - q.r)) return;
    const double along = (dist * dist + p.r * p.r - q.r * q.r) / (2.0 * dist);
    const double h = std::sqrt(std::max(0.0, p.r * p.r - along * along));
    const double mx = p.c.x + along * dx / dist, my = p.c.y + along * dy / dist;
    for (double sgn : {1.0, -1.0}) {
        const CDblPoint x(mx - sgn * h * dy / dist, my + sgn * h * dx / dist);
        AddCrossing(splits, i, p.ArcParam(std::atan2(x.y - p.c.y, x.x - p.c.x)), j,
                    q.ArcParam(std::atan2(x.y - q.c.y, x.x - q.c.x)), x);
        if (h == 0.0) break;
    }
}

// Every crossing of two pieces, by a sweep over their boxes along x.
std::vector<std::vector<Split>> Crossings(const std::vector<Piece>& pc, double slack) {
    std::vector<std::size_t> order(pc.size());
    std::iota(order.begin(), order.end(), 0);
    std::sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) { return pc[a].minx < pc[b].minx; });
    std::vector<std::vector<Split>> splits(pc.size());
    std::vector<std::size_t> active;
    for (std::size_t k : order) {
        const Piece& p = pc[k];
        active.erase(std::remove_if(active.begin(), active.end(),
                                    [&](std::size_t a) { return pc[a].maxx + slack < p.minx; }),
                     active.end());
        for (std::size_t a : active) {
            const Piece& q = pc[a];
            if (q.maxy + slack < p.miny || p.maxy + slack < q.miny) continue;
            Intersect(pc, std::min(a, k), std::max(a, k), splits);
        }
        active.push_back(k);
    }
    return splits;
}

// A sub-piece kept for the result: from a to b, with the bulge of its arc.
struct Sub {
    CDblPoint a, b;
    double bulge;
};

// Links the sub-pieces end to start into loops.
void Link(const std::vector<Sub>& subs, double tol, CPolygon2Array& out) {
    // Ends closer than tol are one node.
    std::vector<CDblPoint> ends;
    for (const Sub& s : subs) {
        ends.push_back(s.a);
        ends.push_back(s.b);
    }
    std::vector<std::size_t> order(ends.size()), node(ends.size());
    std::iota(order.begin(), order.end(), 0);
    std::sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) { return ends[a].x < ends[b].x; });
    std::iota(node.begin(), node.end(), 0);
    auto root = [&](std::size_t k) {
        while (node[k] != k) k = node[k] = node[node[k]];
        return k;
    };
    for (std::size_t u = 0; u < order.size(); ++u)
        for (std::size_t w = u + 1; w < order.size() && ends[order[w]].x - ends[order[u]].x <= tol; ++w)
            if (std::fabs(ends[order[w]].y - ends[order[u]].y) <= tol) node[root(order[w])] = root(order[u]);
    std::unordered_map<std::size_t, std::vector<std::size_t>> leaving;
    for (std::size_t s = 0; s < subs.size(); ++s) leaving[root(2 * s)].push_back(s);
    std::vector<char> used(subs.size(), 0);
    for (std::size_t s0 = 0; s0 < subs.size(); ++s0) {
        if (used[s0]) continue;
        CPolygon2 loop;
        const std::size_t start = root(2 * s0);
        std::size_t s = s0;
        bool closed = false;
        while (true) {
            used[s] = 1;
            loop.AddVertex(subs[s].a, subs[s].bulge);
            const std::size_t at = root(2 * s + 1);
            if (at == start) {
                closed = true;
                break;
            }
            std::size_t next = subs.size();
            for (std::size_t c : leaving[at])
                if (!used[c]) {
                    next = c;
                    break;
                }
            if (next == subs.size()) break;  // an open end: rounding left a gap, drop the piece
            s = next;
        }
        loop.RemoveDuplicateVertices();
        if (closed && std::fabs(loop.Area()) > tol * tol) out.Add(loop);
    }
}

int Offset(const std::vector<EdgeInfo>& edges, const std::vector<Piece>& raw, double d, bool closed, bool buttEnds,
           CPolygon2Array& out) {
    double scale = 0.0;
    for (const Piece& p : raw) scale = std::max({scale, std::fabs(p.minx), std::fabs(p.maxx), std::fabs(p.miny),
                                                 std::fabs(p.maxy)});
    const double ad = std::fabs(d), tol = 1e-9 * (1.0 + scale + ad);
    const std::vector<std::vector<Split>> splits = Crossings(raw, tol);
    const Proximity near(edges, ad, buttEnds, closed);
    std::vector<Sub> kept;
    kept.reserve(raw.size());
    for (std::size_t i = 0; i < raw.size(); ++i) {
        const Piece& p = raw[i];
        std::vector<Split> cuts = splits[i];
        std::sort(cuts.begin(), cuts.end(), [](const Split& x, const Split& y) { return x.t < y.t; });
        cuts.insert(cuts.begin(), Split{0.0, p.a});
        cuts.push_back(Split{1.0, p.b});
        for (std::size_t k = 0; k + 1 < cuts.size(); ++k) {
            const Split &u = cuts[k], &w = cuts[k + 1];
            if (u.p == w.p && !(p.arc && w.t - u.t > 0.5)) continue;
            if (near.Near(p.At(0.5 * (u.t + w.t)), ad - tol)) continue;
            kept.push_back(Sub{u.p, w.p, p.arc ? std::tan((w.t - u.t) * p.sweep / 4.0) : 0.0});
        }
    }
    Link(kept, tol, out);
    return static_cast<int>(out.GetSize());
}

}  // namespace

int PolygonOffset(const CPolygon2& polygon, double distance, CPolygon2Array& out, OffsetJoin join,
                  double miterLimit) {
    out.RemoveAll();
    if (polygon.GetSize() < 2 || !std::isfinite(distance)) return 0;
    CPolygon2 ccw = polygon.Area() < 0.0 ? polygon.Reverse() : polygon;
    ccw.RemoveDuplicateVertices();
    if (distance == 0.0) {
        if (ccw.GetSize() >= 2) out.Add(ccw);
        return static_cast<int>(out.GetSize());
    }
    const std::vector<EdgeInfo> edges = Edges(ccw);
    if (edges.empty()) return 0;
    std::vector<Piece> raw;
    raw.reserve(4 * edges.size());  // an edge and at most three join pieces each
    OffsetChain(edges, true, distance, join, std::max(1.0, miterLimit), raw);
    return Offset(edges, raw, distance, true, false, out);
}

int PolygonOffset(const CPolyline2& line, double distance, CPolygon2Array& out, OffsetJoin join, double miterLimit,
                  OffsetCap cap) {
    out.RemoveAll();
    const double d = std::fabs(distance);
    if (!(d > 0.0) || !std::isfinite(d)) return 0;
    CPolyline2 path = line;
    path.RemoveDuplicateVertices();
    std::vector<EdgeInfo> edges = Edges(path);
    if (edges.empty()) return 0;
    if (cap == OFFSET_CAP_SQUARE) {
        // Square ends are butt ends of the path lengthened by d at both ends.
        EdgeInfo head, tail;
        head.isArc = tail.isArc = false;
        head.t0 = head.t1 = edges.front().t0;
        tail.t0 = tail.t1 = edges.back().t1;
        const CDblPoint s = edges.front().line.start, e = edges.back().line.end;
        head.line = CLine2(CDblPoint(s.x - d * head.t0.x, s.y - d * head.t0.y), s);
        tail.line = CLine2(e, CDblPoint(e.x + d * tail.t0.x, e.y + d * tail.t0.y));
        edges.insert(edges.begin(), head);
        edges.push_back(tail);
    }
    const double limit = std::max(1.0, miterLimit);
    std::vector<Piece> raw;
    raw.reserve(8 * edges.size() + 2);  // both sides
    OffsetChain(edges, false, d, join, limit, raw);
    // Back along the other side: the reversed path's right.
    std::vector<EdgeInfo> back;
    for (auto it = edges.rbegin(); it != edges.rend(); ++it) {
        EdgeInfo e = *it;
        std::swap(e.line.start, e.line.end);
        e.t0 = Vec{-it->t1.x, -it->t1.y};
        e.t1 = Vec{-it->t0.x, -it->t0.y};
        if (e.isArc) e.arc = CArc2(it->arc.centre, it->arc.radius, it->arc.startAngle + it->arc.sweepAngle, -it->arc.sweepAngle);
        back.push_back(e);
    }
    const CDblPoint endA = raw.back().b, endB = Right(back.front().line.start, back.front().t0, d);
    const CDblPoint& tip = edges.back().line.end;
    if (cap == OFFSET_CAP_ROUND)
        raw.push_back(ArcPiece(tip, d, kPi, endA, endB));
    else
        raw.push_back(LinePiece(endA, endB));
    OffsetChain(back, false, d, join, limit, raw);
    const CDblPoint startA = raw.back().b, startB = raw.front().a;
    if (cap == OFFSET_CAP_ROUND)
        raw.push_back(ArcPiece(edges.front().line.start, d, kPi, startA, startB));
    else
        raw.push_back(LinePiece(startA, startB));
    return Offset(edges, raw, d, false, cap != OFFSET_CAP_ROUND, out);
}

}  // namespace ORVMATH
