// CPreparedPolygon: edges sorted into horizontal bands for point location.
#include <orvmath/preparedpolygon.h>

#include <algorithm>
#include <cmath>

namespace ORVMATH {

namespace {

// Distance from p to the segment a-b.
double DistanceToSegment(const CDblPoint& p, const CDblPoint& a, const CDblPoint& b) {
    const double dx = b.x - a.x, dy = b.y - a.y;
    const double len2 = dx * dx + dy * dy;
    double t = len2 > 0.0 ? ((p.x - a.x) * dx + (p.y - a.y) * dy) / len2 : 0.0;
    t = std::min(1.0, std::max(0.0, t));
    return std::hypot(p.x - (a.x + t * dx), p.y - (a.y + t * dy));
}

}  // namespace

int CPreparedPolygon::BandOf(double y) const {
    const double b = std::floor((y - m_yMin) / m_bandHeight);
    const int last = m_bands - 1;
    if (!(b > 0.0)) return 0;
    return b >= last ? last : static_cast<int>(b);
}

void CPreparedPolygon::Set(const CDblPointArray& polygon, double tolerance) {
    m_vertices.assign(polygon.begin(), polygon.end());
    m_tolerance = tolerance > 0.0 ? tolerance : 0.0;
    m_bandStart.clear();
    m_bandEdges.clear();
    const int n = static_cast<int>(m_vertices.size());
    m_bands = 0;
    if (n == 0) {
        m_xMin = m_yMin = 0.0;
        m_xMax = m_yMax = -1.0;
        return;
    }
    const auto byX = [](const CDblPoint& a, const CDblPoint& b) { return a.x < b.x; };
    const auto byY = [](const CDblPoint& a, const CDblPoint& b) { return a.y < b.y; };
    m_xMin = std::min_element(m_vertices.begin(), m_vertices.end(), byX)->x - m_tolerance;
    m_xMax = std::max_element(m_vertices.begin(), m_vertices.end(), byX)->x + m_tolerance;
    m_yMin = std::min_element(m_vertices.begin(), m_vertices.end(), byY)->y - m_tolerance;
    m_yMax = std::max_element(m_vertices.begin(), m_vertices.end(), byY)->y + m_tolerance;
    // About one band per edge; a flat polygon gets one band.
    m_bands = m_yMax > m_yMin ? n : 1;
    m_bandHeight = m_yMax > m_yMin ? (m_yMax - m_yMin) / m_bands : 1.0;
    m_bandStart.assign(static_cast<std::size_t>(m_bands) + 2, 0);
    // Two passes over the edges' band spans: count, then place (counting sort,
    // which keeps the edges of a band in increasing order).
    auto span = [&](int e, int& lo, int& hi) {
        const CDblPoint &a = m_vertices[e], &b = m_vertices[(e + 1 == n) ? 0 : e + 1];
        lo = BandOf(std::min(a.y, b.y) - m_tolerance);
        hi = BandOf(std::max(a.y, b.y) + m_tolerance);
    };
    for (int e = 0; e < n; ++e) {
        int lo, hi;
        span(e, lo, hi);
        for (int b = lo; b <= hi; ++b) ++m_bandStart[static_cast<std::size_t>(b) + 2];
    }
    for (std::size_t b = 2; b < m_bandStart.size(); ++b) m_bandStart[b] += m_bandStart[b - 1];
    m_bandEdges.resize(static_cast<std::size_t>(m_bandStart.back()));
    for (int e = 0; e < n; ++e) {
        int lo, hi;
        span(e, lo, hi);
        for (int b = lo; b <= hi; ++b)
            m_bandEdges[static_cast<std::size_t>(m_bandStart[static_cast<std::size_t>(b) + 1]++)] = e;
    }
    m_bandStart.pop_back();
}

PolygonLocation CPreparedPolygon::Locate(const CDblPoint& pt, int* edge) const {
    if (edge) *edge = -1;
    if (!(pt.x >= m_xMin && pt.x <= m_xMax && pt.y >= m_yMin && pt.y <= m_yMax)) return POLYGON_OUTSIDE;
    const int n = static_cast<int>(m_vertices.size());
    const int band = BandOf(pt.y);
    const int* e = m_bandEdges.data() + m_bandStart[static_cast<std::size_t>(band)];
    const int* last = m_bandEdges.data() + m_bandStart[static_cast<std::size_t>(band) + 1];
    int winding = 0;
    for (; e != last; ++e) {
        const CDblPoint& a = m_vertices[*e];
        const CDblPoint& b = m_vertices[*e + 1 == n ? 0 : *e + 1];
        const double side = (b.x - a.x) * (pt.y - a.y) - (pt.x - a.x) * (b.y - a.y);  // > 0: pt left of a->b
        const bool onEdge = m_tolerance > 0.0
                                ? DistanceToSegment(pt, a, b) <= m_tolerance
                                : side == 0.0 && pt.x >= std::min(a.x, b.x) && pt.x <= std::max(a.x, b.x) &&
                                      pt.y >= std::min(a.y, b.y) && pt.y <= std::max(a.y, b.y);
        if (onEdge) {
            if (edge) *edge = *e;
            return POLYGON_BOUNDARY;
        }
        // Signed crossings of the ray from pt toward +x (the winding number).
        if (a.y <= pt.y) {
            if (b.y > pt.y && side > 0.0) ++winding;
        } else if (b.y <= pt.y && side < 0.0) {
            --winding;
        }
    }
    return winding != 0 ? POLYGON_INSIDE : POLYGON_OUTSIDE;
}

}  // namespace ORVMATH
