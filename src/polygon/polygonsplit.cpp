// Convex pieces of a simple polygon: ear clipping, then Hertel-Mehlhorn.
#include <orvmath/polygonsplit.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>
#include <unordered_map>
#include <vector>

namespace ORVMATH {

namespace {

using Ring = std::vector<CDblPoint>;

inline double Turn(const CDblPoint& a, const CDblPoint& b, const CDblPoint& c) noexcept {
    return (b.x - a.x) * (c.y - b.y) - (b.y - a.y) * (c.x - b.x);
}
inline int Sign(double v) noexcept { return v > 0.0 ? 1 : (v < 0.0 ? -1 : 0); }

double SignedArea(const Ring& v) {
    double s = 0.0;
    for (std::size_t i = 0, n = v.size(); i < n; ++i) {
        const CDblPoint &a = v[i], &b = v[(i + 1) % n];
        s += a.x * b.y - b.x * a.y;
    }
    return 0.5 * s;
}

// Do the closed segments ab and cd share a point? Decided on the signs of
// the turns, without tolerance.
bool SegmentsMeet(const CDblPoint& a, const CDblPoint& b, const CDblPoint& c, const CDblPoint& d) {
    const int o1 = Sign(Turn(a, b, c)), o2 = Sign(Turn(a, b, d)), o3 = Sign(Turn(c, d, a)), o4 = Sign(Turn(c, d, b));
    if (o1 * o2 < 0 && o3 * o4 < 0) return true;
    auto within = [](const CDblPoint& p, const CDblPoint& q, const CDblPoint& r) {  // r in the box of pq
        return std::min(p.x, q.x) <= r.x && r.x <= std::max(p.x, q.x) && std::min(p.y, q.y) <= r.y &&
               r.y <= std::max(p.y, q.y);
    };
    return (o1 == 0 && within(a, b, c)) || (o2 == 0 && within(a, b, d)) || (o3 == 0 && within(c, d, a)) ||
           (o4 == 0 && within(c, d, b));
}

// True when no two edges that are not neighbours meet. A sweep along x over
// the edges' boxes keeps the pairs tested to those that overlap in x.
bool IsSimple(const Ring& v) {
    const std::size_t n = v.size();
    std::vector<std::size_t> order(n);
    std::iota(order.begin(), order.end(), 0);
    auto minx = [&](std::size_t i) { return std::min(v[i].x, v[(i + 1) % n].x); };
    auto maxx = [&](std::size_t i) { return std::max(v[i].x, v[(i + 1) % n].x); };
    std::sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) { return minx(a) < minx(b); });
    std::vector<std::size_t> active;
    for (std::size_t e : order) {
        active.erase(std::remove_if(active.begin(), active.end(), [&](std::size_t a) { return maxx(a) < minx(e); }),
                     active.end());
        for (std::size_t a : active) {
            if ((a + 1) % n == e || (e + 1) % n == a) continue;  // neighbours meet at their shared vertex only
            if (SegmentsMeet(v[a], v[(a + 1) % n], v[e], v[(e + 1) % n])) return false;
        }
        active.push_back(e);
    }
    return true;
}

// The polygon cleaned and counter-clockwise, or empty when it is invalid.
Ring Clean(const CDblPointArray& polygon) {
    Ring v;
    for (const CDblPoint& p : polygon) {
        if (!IsFinite(p)) return Ring();
        if (v.empty() || !(p == v.back())) v.push_back(p);
    }
    while (v.size() > 1 && v.back() == v.front()) v.pop_back();
    const std::size_t n = v.size();
    if (n < 3) return Ring();
    Ring kept;
    for (std::size_t i = 0; i < n; ++i) {
        const CDblPoint &p = v[(i + n - 1) % n], &c = v[i], &q = v[(i + 1) % n];
        if (Turn(p, c, q) != 0.0) {
            kept.push_back(c);
            continue;
        }
        // Straight on: dropped. Turning straight back is a spike, where the boundary touches itself.
        if ((c.x - p.x) * (q.x - c.x) + (c.y - p.y) * (q.y - c.y) < 0.0) return Ring();
    }
    if (kept.size() < 3) return Ring();
    const double area = SignedArea(kept);
    if (!(area != 0.0) || !std::isfinite(area)) return Ring();
    if (area < 0.0) std::reverse(kept.begin(), kept.end());
    return IsSimple(kept) ? kept : Ring();
}

using Triangle = std::array<int, 3>;
struct Diagonal {
    int a, b;
};

// Ear clipping of the counter-clockwise simple ring. An ear is a convex
// vertex whose triangle holds no other vertex; only vertices that are not
// convex can block it, and clipping an ear changes the status of its two
// neighbours only. False when no ear is found (rounding on a nearly
// degenerate ring).
bool Triangulate(const Ring& v, std::vector<Triangle>& tris, std::vector<Diagonal>& diags) {
    const int n = static_cast<int>(v.size());
    std::vector<int> prev(n), next(n);
    std::vector<char> gone(n, 0), reflex(n, 0), ear(n, 0);
    for (int i = 0; i < n; ++i) {
        prev[i] = (i + n - 1) % n;
        next[i] = (i + 1) % n;
    }
    auto isReflex = [&](int i) { return !(Turn(v[prev[i]], v[i], v[next[i]]) > 0.0); };
    std::vector<int> blockers;  // reflex when listed; skipped once gone or convex
    for (int i = 0; i < n; ++i)
        if ((reflex[i] = isReflex(i))) blockers.push_back(i);
    auto isEar = [&](int i) {
        if (reflex[i]) return false;
        const int p = prev[i], q = next[i];
        for (int r : blockers) {
            if (gone[r] || !reflex[r] || r == p || r == q) continue;
            if (Turn(v[p], v[i], v[r]) >= 0.0 && Turn(v[i], v[q], v[r]) >= 0.0 && Turn(v[q], v[p], v[r]) >= 0.0)
                return false;
        }
        return true;
    };
    std::vector<int> stack;
    for (int i = 0; i < n; ++i)
        if ((ear[i] = isEar(i))) stack.push_back(i);
    for (int left = n; left > 3;) {
        if (stack.empty()) return false;
        const int i = stack.back();
        stack.pop_back();
        if (gone[i] || !ear[i]) continue;
        const int p = prev[i], q = next[i];
        tris.push_back({p, i, q});
        diags.push_back({p, q});
        gone[i] = 1;
        next[p] = q;
        prev[q] = p;
        --left;
        for (int k : {p, q}) {
            reflex[k] = isReflex(k);
            if ((ear[k] = isEar(k))) stack.push_back(k);
        }
    }
    int i = 0;
    while (gone[i]) ++i;
    tris.push_back({prev[i], i, next[i]});
    return true;
}

// Hertel-Mehlhorn: drops each diagonal, in the order given, when the pieces
// on its two sides join into a convex piece (straight angles allowed).
std::vector<std::vector<int>> MergeConvex(const Ring& v, const std::vector<Triangle>& tris,
                                          const std::vector<Diagonal>& diags) {
    const long long n = static_cast<long long>(v.size());
    std::vector<std::vector<int>> pieces;
    std::vector<int> parent(tris.size());
    std::iota(parent.begin(), parent.end(), 0);
    auto find = [&](int k) {
        while (parent[k] != k) k = parent[k] = parent[parent[k]];
        return k;
    };
    std::unordered_map<long long, int> owner;  // directed edge a -> b to the triangle on its left
    for (std::size_t t = 0; t < tris.size(); ++t) {
        pieces.emplace_back(tris[t].begin(), tris[t].end());
        for (int k = 0; k < 3; ++k) owner[tris[t][k] * n + tris[t][(k + 1) % 3]] = static_cast<int>(t);
    }
    auto at = [](const std::vector<int>& r, std::size_t k) { return r[k % r.size()]; };
    for (const Diagonal& d : diags) {
        const int P = find(owner[d.a * n + d.b]), Q = find(owner[d.b * n + d.a]);
        const std::vector<int>&rp = pieces[P], &rq = pieces[Q];
        const std::size_t ia = std::find(rp.begin(), rp.end(), d.a) - rp.begin();  // rp: .. pa, a, b, nb ..
        const std::size_t ib = std::find(rq.begin(), rq.end(), d.b) - rq.begin();  // rq: .. qp, b, a, qn ..
        const int pa = at(rp, ia + rp.size() - 1), nb = at(rp, ia + 2);
        const int qp = at(rq, ib + rq.size() - 1), qn = at(rq, ib + 2);
        if (Turn(v[pa], v[d.a], v[qn]) < 0.0 || Turn(v[qp], v[d.b], v[nb]) < 0.0) continue;
        std::vector<int> joined;
        joined.reserve(rp.size() + rq.size() - 2);
        for (std::size_t k = 1; k <= rp.size(); ++k) joined.push_back(at(rp, ia + k));  // b .. a
        for (std::size_t k = 2; k < rq.size(); ++k) joined.push_back(at(rq, ib + k));   // qn .. qp
        pieces[P] = std::move(joined);
        pieces[Q].clear();
        parent[Q] = P;
    }
    pieces.erase(std::remove_if(pieces.begin(), pieces.end(), [](const std::vector<int>& r) { return r.empty(); }),
                 pieces.end());
    return pieces;
}

CDblPointArray ToArray(const Ring& v, const std::vector<int>& idx) {
    CDblPointArray out;
    out.SetSize(static_cast<INT_PTR>(idx.size()));
    for (std::size_t k = 0; k < idx.size(); ++k) out[static_cast<INT_PTR>(k)] = v[idx[k]];
    return out;
}

bool IsConvex(const Ring& v) {
    for (std::size_t i = 0, n = v.size(); i < n; ++i)
        if (Turn(v[(i + n - 1) % n], v[i], v[(i + 1) % n]) < 0.0) return false;
    return true;
}

}  // namespace

int SplitConcavePolygon(const CDblPointArray& polygon, CDblPolygonArray& pieces) {
    pieces.RemoveAll();
    const Ring v = Clean(polygon);
    if (v.empty()) return 0;
    std::vector<int> all(v.size());
    std::iota(all.begin(), all.end(), 0);
    if (IsConvex(v)) {
        pieces.Add(ToArray(v, all));
        return 1;
    }
    std::vector<Triangle> tris;
    std::vector<Diagonal> diags;
    if (!Triangulate(v, tris, diags)) return 0;
    for (const std::vector<int>& piece : MergeConvex(v, tris, diags)) pieces.Add(ToArray(v, piece));
    return static_cast<int>(pieces.GetSize());
}

}  // namespace ORVMATH
