// Faces of a drawing of loose segments: node the segments into a planar
// graph, walk the faces, drop the edges with one face on both sides (dangles
// and bridges) and walk again, then put each island's outer ring into the
// face round it as a hole.
#include <orvmath/polygonize.h>

#include <orvmath/polygon.h>
#include <orvmath/tolerance.h>

#include "polygon_detail.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <tuple>
#include <vector>

namespace ORVMATH {

namespace {

constexpr std::size_t kNone = static_cast<std::size_t>(-1);  // no node, no cycle, no place
constexpr double kMaxCellsPerAxis = 1 << 20;  // bounds the crossing grid whatever the spread of the input

using detail::Cross;

struct Box {
    double minx, miny, maxx, maxy;
    bool Holds(const CDblPoint& p) const { return minx <= p.x && p.x <= maxx && miny <= p.y && p.y <= maxy; }
};

// Union-find whose root is always the smallest index of its set, so that a
// node keeps the coordinates of its first point.
class Sets {
public:
    explicit Sets(std::size_t n) : parent_(n) { std::iota(parent_.begin(), parent_.end(), 0); }
    std::size_t Find(std::size_t k) {
        while (parent_[k] != k) k = parent_[k] = parent_[parent_[k]];
        return k;
    }
    void Join(std::size_t a, std::size_t b) {
        a = Find(a);
        b = Find(b);
        if (a != b) parent_[std::max(a, b)] = std::min(a, b);
    }

private:
    std::vector<std::size_t> parent_;
};

// The input segments with their split points: points 2i and 2i + 1 are the
// ends of segment i, crossings follow.
class Noding {
public:
    Noding(const std::vector<CDblPoint>& ends, double eps) : pts_(ends), cuts_(ends.size() / 2), eps_(eps) {}

    // Splits the segments wherever two meet: found by a uniform grid whose
    // cells are about an average segment wide; each pair is tested once, in
    // the cell that holds the low corner of the overlap of their boxes.
    void FindCrossings() {
        const std::size_t n = cuts_.size();
        if (n < 2) return;
        std::vector<Box> box(n);
        Box all{pts_[0].x, pts_[0].y, pts_[0].x, pts_[0].y};
        double extent = 0.0;
        for (std::size_t i = 0; i < n; ++i) {
            const CDblPoint &a = pts_[2 * i], &b = pts_[2 * i + 1];
            box[i] = Box{std::min(a.x, b.x) - eps_, std::min(a.y, b.y) - eps_, std::max(a.x, b.x) + eps_,
                         std::max(a.y, b.y) + eps_};
            all = Box{std::min(all.minx, box[i].minx), std::min(all.miny, box[i].miny), std::max(all.maxx, box[i].maxx),
                      std::max(all.maxy, box[i].maxy)};
            extent += std::max(box[i].maxx - box[i].minx, box[i].maxy - box[i].miny);
        }
        const double w = all.maxx - all.minx, h = all.maxy - all.miny;
        const double cell = std::max({extent / n, std::sqrt(w * h / n), w / kMaxCellsPerAxis, h / kMaxCellsPerAxis});
        const long long nx = static_cast<long long>(w / cell) + 1, ny = static_cast<long long>(h / cell) + 1;
        auto cx = [&](double x) { return std::min(nx - 1, static_cast<long long>((x - all.minx) / cell)); };
        auto cy = [&](double y) { return std::min(ny - 1, static_cast<long long>((y - all.miny) / cell)); };
        // Cells as one sorted list of (cell, segment).
        std::vector<std::pair<long long, std::size_t>> entries;
        entries.reserve(2 * n);
        for (std::size_t i = 0; i < n; ++i)
            for (long long gx = cx(box[i].minx); gx <= cx(box[i].maxx); ++gx)
                for (long long gy = cy(box[i].miny); gy <= cy(box[i].maxy); ++gy) entries.emplace_back(gx * ny + gy, i);
        std::sort(entries.begin(), entries.end());
        for (std::size_t s = 0, e = 0; s < entries.size(); s = e) {
            while (e < entries.size() && entries[e].first == entries[s].first) ++e;
            for (std::size_t u = s; u < e; ++u) {
                for (std::size_t v = u + 1; v < e; ++v) {
                    const Box &p = box[entries[u].second], &q = box[entries[v].second];
                    if (p.maxx < q.minx || q.maxx < p.minx || p.maxy < q.miny || q.maxy < p.miny) continue;
                    if (cx(std::max(p.minx, q.minx)) * ny + cy(std::max(p.miny, q.miny)) != entries[s].first) continue;
                    Meet(entries[u].second, entries[v].second);
                }
            }
        }
    }

    // Points within eps of each other, by buckets of side eps sorted by key:
    // each point looks for partners in its own and the eight neighbouring buckets.
    Sets Snap() const {
        Sets sets(pts_.size());
        const double side = eps_ > 0.0 ? eps_ : 1.0;
        auto key = [&](double v) { return static_cast<long long>(std::floor(std::clamp(v / side, -4e18, 4e18))); };
        std::vector<std::tuple<long long, long long, std::size_t>> buckets;
        buckets.reserve(pts_.size());
        for (std::size_t k = 0; k < pts_.size(); ++k) buckets.emplace_back(key(pts_[k].x), key(pts_[k].y), k);
        std::sort(buckets.begin(), buckets.end());
        for (std::size_t k = 0; k < pts_.size(); ++k) {
            const long long bx = key(pts_[k].x), by = key(pts_[k].y);
            for (long long dx = -1; dx <= 1; ++dx) {
                const auto lo =
                    std::lower_bound(buckets.begin(), buckets.end(), std::make_tuple(bx + dx, by - 1, std::size_t{0}));
                for (auto it = lo; it != buckets.end() && std::get<0>(*it) == bx + dx && std::get<1>(*it) <= by + 1;
                     ++it)
                    if (Distance(pts_[k], pts_[std::get<2>(*it)]) <= eps_) sets.Join(k, std::get<2>(*it));
            }
        }
        return sets;
    }

    // Segment i as its chain of points from start to end, ordered along it.
    std::vector<std::size_t> Chain(std::size_t i) {
        std::vector<std::pair<double, std::size_t>>& c = cuts_[i];
        std::sort(c.begin(), c.end());
        std::vector<std::size_t> chain{2 * i};
        for (const auto& cut : c) chain.push_back(cut.second);
        chain.push_back(2 * i + 1);
        return chain;
    }

    const std::vector<CDblPoint>& Points() const { return pts_; }
    std::size_t SegmentCount() const { return cuts_.size(); }

private:
    // Parameter of p along segment s when p lies within eps of it, away from
    // its ends (near an end, snapping joins p to the end instead); else -1.
    double Along(std::size_t s, const CDblPoint& p) const {
        const CDblPoint &a = pts_[2 * s], &b = pts_[2 * s + 1];
        const double dx = b.x - a.x, dy = b.y - a.y;
        const double t = std::clamp(((p.x - a.x) * dx + (p.y - a.y) * dy) / (dx * dx + dy * dy), 0.0, 1.0);
        if (Distance(p, CDblPoint(a.x + t * dx, a.y + t * dy)) > eps_) return -1.0;
        return Distance(p, a) > eps_ && Distance(p, b) > eps_ ? t : -1.0;
    }

    void Meet(std::size_t i, std::size_t j) {
        for (int k = 0; k < 2; ++k) {
            const double ti = Along(i, pts_[2 * j + k]), tj = Along(j, pts_[2 * i + k]);
            if (ti >= 0.0) cuts_[i].emplace_back(ti, 2 * j + k);
            if (tj >= 0.0) cuts_[j].emplace_back(tj, 2 * i + k);
        }
        const CDblPoint &p = pts_[2 * i], &q = pts_[2 * j];
        const double rx = pts_[2 * i + 1].x - p.x, ry = pts_[2 * i + 1].y - p.y;
        const double sx = pts_[2 * j + 1].x - q.x, sy = pts_[2 * j + 1].y - q.y;
        const double den = Cross(rx, ry, sx, sy);
        if (den == 0.0) return;
        const double t = Cross(q.x - p.x, q.y - p.y, sx, sy) / den, u = Cross(q.x - p.x, q.y - p.y, rx, ry) / den;
        if (!(t > 0.0 && t < 1.0 && u > 0.0 && u < 1.0)) return;
        const CDblPoint x(p.x + t * rx, p.y + t * ry);
        for (std::size_t e : {2 * i, 2 * i + 1, 2 * j, 2 * j + 1})
            if (Distance(x, pts_[e]) <= eps_) return;  // an end near the crossing has split the other segment
        pts_.push_back(x);
        cuts_[i].emplace_back(t, pts_.size() - 1);
        cuts_[j].emplace_back(u, pts_.size() - 1);
    }

    std::vector<CDblPoint> pts_;
    std::vector<std::vector<std::pair<double, std::size_t>>> cuts_;  // (parameter, point) inside each segment
    double eps_;
};

// The planar graph: nodes with their points, undirected edges a < b.
// Half-edge 2e runs a -> b along edge e, 2e + 1 back.
struct Graph {
    std::vector<CDblPoint> node;
    std::vector<std::pair<std::size_t, std::size_t>> edge;
    std::vector<char> alive;

    std::size_t From(std::size_t h) const { return h % 2 == 0 ? edge[h / 2].first : edge[h / 2].second; }
    std::size_t To(std::size_t h) const { return From(h ^ 1); }

    // The boundary cycles: each half-edge has the face on its left, and the
    // next one leaves its end just clockwise of its twin. Bounded faces come
    // out counter-clockwise, the outside of each connected piece clockwise.
    std::vector<std::vector<std::size_t>> Cycles(std::vector<std::size_t>& cycleOf) const {
        std::vector<std::vector<std::size_t>> out(node.size());
        for (std::size_t e = 0; e < edge.size(); ++e)
            if (alive[e]) out[edge[e].first].push_back(2 * e), out[edge[e].second].push_back(2 * e + 1);
        std::vector<std::size_t> pos(2 * edge.size());
        for (std::vector<std::size_t>& list : out) {
            std::vector<std::pair<double, std::size_t>> byAngle;
            for (std::size_t h : list) {
                const CDblPoint &a = node[From(h)], &b = node[To(h)];
                byAngle.emplace_back(std::atan2(b.y - a.y, b.x - a.x), h);
            }
            std::sort(byAngle.begin(), byAngle.end());
            for (std::size_t k = 0; k < list.size(); ++k) list[k] = byAngle[k].second, pos[list[k]] = k;
        }
        cycleOf.assign(2 * edge.size(), kNone);
        std::vector<std::vector<std::size_t>> cycles;
        for (std::size_t h0 = 0; h0 < 2 * edge.size(); ++h0) {
            if (!alive[h0 / 2] || cycleOf[h0] != kNone) continue;
            std::vector<std::size_t> cycle;
            for (std::size_t h = h0; cycleOf[h] == kNone;) {
                cycleOf[h] = cycles.size();
                cycle.push_back(h);
                const std::vector<std::size_t>& around = out[To(h)];
                h = around[(pos[h ^ 1] + around.size() - 1) % around.size()];
            }
            cycles.push_back(std::move(cycle));
        }
        return cycles;
    }
};

Graph BuildGraph(const CLine2Array& segments, double eps) {
    std::vector<CDblPoint> ends;
    for (const CLine2& s : segments) {
        if (!IsFinite(s.start) || !IsFinite(s.end) || !(Distance(s.start, s.end) > eps)) continue;
        ends.push_back(s.start);
        ends.push_back(s.end);
    }
    Noding noding(ends, eps);
    noding.FindCrossings();
    Sets sets = noding.Snap();
    Graph g;
    std::vector<std::size_t> id(noding.Points().size(), kNone);
    auto nodeOf = [&](std::size_t point) {
        const std::size_t root = sets.Find(point);
        if (id[root] == kNone) id[root] = g.node.size(), g.node.push_back(noding.Points()[root]);
        return id[root];
    };
    for (std::size_t i = 0; i < noding.SegmentCount(); ++i) {
        const std::vector<std::size_t> chain = noding.Chain(i);
        for (std::size_t k = 0; k + 1 < chain.size(); ++k) {
            const std::size_t a = nodeOf(chain[k]), b = nodeOf(chain[k + 1]);
            if (a != b) g.edge.emplace_back(std::min(a, b), std::max(a, b));
        }
    }
    std::sort(g.edge.begin(), g.edge.end());
    g.edge.erase(std::unique(g.edge.begin(), g.edge.end()), g.edge.end());  // overlaps merged
    g.alive.assign(g.edge.size(), 1);
    return g;
}

// A ring with its sort key: it starts at its vertex of least x (least y on
// ties), and the key adds the direction of its first edge.
struct Ring {
    CDblPointArray pts;
    double area = 0.0, angle = 0.0;
    std::size_t component = 0;
    Box box{0, 0, 0, 0};

    bool operator<(const Ring& o) const {
        const CDblPoint &a = pts[0], &b = o.pts[0];
        return std::tie(a.x, a.y, angle) < std::tie(b.x, b.y, o.angle);
    }
};

// A boundary walk as simple loops of nodes: where the walk comes back to a
// node it has passed (a hole or a neighbour that touches at one node), the
// loop since then is taken out on its own. `place` (a node's place on the
// stack) is all kNone on entry and on return.
std::vector<std::vector<std::size_t>> SimpleLoops(const Graph& g, const std::vector<std::size_t>& cycle,
                                                  std::vector<std::size_t>& place) {
    std::vector<std::vector<std::size_t>> loops;
    std::vector<std::size_t> stack;
    for (std::size_t h : cycle) {
        const std::size_t v = g.From(h), at = place[v];
        if (at == kNone) {
            place[v] = stack.size();
            stack.push_back(v);
            continue;
        }
        loops.emplace_back(stack.begin() + static_cast<std::ptrdiff_t>(at), stack.end());
        for (std::size_t k = at + 1; k < stack.size(); ++k) place[stack[k]] = kNone;
        stack.resize(at + 1);
    }
    for (std::size_t v : stack) place[v] = kNone;
    loops.push_back(std::move(stack));
    return loops;
}

Ring MakeRing(const Graph& g, const std::vector<std::size_t>& loop, std::size_t component) {
    const std::size_t n = loop.size();
    std::size_t first = 0;
    for (std::size_t k = 1; k < n; ++k) {
        const CDblPoint &p = g.node[loop[k]], &q = g.node[loop[first]];
        if (p.x < q.x || (p.x == q.x && p.y < q.y)) first = k;
    }
    Ring r;
    r.component = component;
    r.pts.SetSize(static_cast<INT_PTR>(n));
    for (std::size_t k = 0; k < n; ++k) r.pts[static_cast<INT_PTR>(k)] = g.node[loop[(first + k) % n]];
    const CDblPoint &a = r.pts[0], &b = r.pts[n > 1 ? 1 : 0];
    r.angle = std::atan2(b.y - a.y, b.x - a.x);
    if (r.angle < 0.0) r.angle += 2.0 * kPi;
    r.box = Box{a.x, a.y, a.x, a.y};
    for (std::size_t k = 0; k < n; ++k) {
        const CDblPoint &p = r.pts[static_cast<INT_PTR>(k)], &q = r.pts[static_cast<INT_PTR>((k + 1) % n)];
        r.area += 0.5 * Cross(p.x, p.y, q.x, q.y);
        r.box = Box{std::min(r.box.minx, p.x), std::min(r.box.miny, p.y), std::max(r.box.maxx, p.x),
                    std::max(r.box.maxy, p.y)};
    }
    return r;
}

// Each island's ring goes to the smallest face of another piece of the
// drawing that holds it; one that no face holds is the outside of its piece.
void PlaceIslands(const std::vector<Ring>& outer, std::vector<Ring>& islands, std::vector<std::vector<Ring>>& holesOf) {
    std::vector<std::size_t> bySize(outer.size());
    std::iota(bySize.begin(), bySize.end(), 0);
    std::stable_sort(bySize.begin(), bySize.end(),
                     [&](std::size_t a, std::size_t b) { return outer[a].area < outer[b].area; });
    for (Ring& h : islands) {
        const CDblPoint& p = h.pts[0];
        for (std::size_t f : bySize) {
            if (outer[f].component == h.component || !outer[f].box.Holds(p) || !PtInPolygonEx(outer[f].pts, p))
                continue;
            holesOf[f].push_back(std::move(h));
            break;
        }
    }
}

}  // namespace

int GetPolygons(const CLine2Array& segments, CPolygonFaceArray& faces) {
    faces.RemoveAll();
    Graph g = BuildGraph(segments, CDistanceEpsilon::get());
    std::vector<std::size_t> cycleOf;
    std::vector<std::vector<std::size_t>> cycles;
    // Dangling lines and bridges have the same face on both sides; once
    // they are gone, the faces are walked again.
    for (bool bridges = true; bridges;) {
        cycles = g.Cycles(cycleOf);
        bridges = false;
        for (std::size_t e = 0; e < g.edge.size(); ++e)
            if (g.alive[e] && cycleOf[2 * e] == cycleOf[2 * e + 1]) g.alive[e] = 0, bridges = true;
    }
    Sets pieces(g.node.size());
    for (std::size_t e = 0; e < g.edge.size(); ++e)
        if (g.alive[e]) pieces.Join(g.edge[e].first, g.edge[e].second);
    std::vector<Ring> outer, holes;
    std::vector<std::vector<Ring>> holesOf;
    std::vector<std::size_t> place(g.node.size(), kNone);
    for (const std::vector<std::size_t>& c : cycles) {
        std::vector<Ring> loops;
        for (const std::vector<std::size_t>& loop : SimpleLoops(g, c, place))
            if (loop.size() >= 3) loops.push_back(MakeRing(g, loop, pieces.Find(loop[0])));
        // A face's walk has one counter-clockwise loop; clockwise ones are
        // holes that touch its boundary at a node.
        const auto face = std::find_if(loops.begin(), loops.end(), [](const Ring& r) { return r.area > 0.0; });
        if (face != loops.end()) {
            outer.push_back(*face);
            holesOf.emplace_back();
        }
        for (Ring& r : loops) {
            if (r.area >= 0.0) continue;
            if (face != loops.end())
                holesOf.back().push_back(std::move(r));
            else
                holes.push_back(std::move(r));
        }
    }
    PlaceIslands(outer, holes, holesOf);
    std::vector<std::size_t> order(outer.size());
    std::iota(order.begin(), order.end(), 0);
    std::sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) { return outer[a] < outer[b]; });
    for (std::size_t f : order) {
        CPolygonFace face;
        face.outer = outer[f].pts;
        std::sort(holesOf[f].begin(), holesOf[f].end());
        for (const Ring& h : holesOf[f]) face.holes.Add(h.pts);
        faces.Add(face);
    }
    return static_cast<int>(faces.GetSize());
}

}  // namespace ORVMATH
