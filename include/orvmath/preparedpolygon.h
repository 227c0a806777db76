// A polygon prepared once for many point-location queries: its edges are
// sorted into horizontal bands, so a query looks only at the edges that cross
// its own band instead of at every edge.
#pragma once

#include <orvmath/containers.h>
#include <orvmath/export.h>
#include <orvmath/point2.h>

#include <vector>

namespace ORVMATH {

// Where a point lies with respect to a polygon.
enum PolygonLocation : int {
    POLYGON_OUTSIDE = 0,
    POLYGON_INSIDE = 1,
    POLYGON_BOUNDARY = 2,
};

class ORVMATH_API CPreparedPolygon {
public:
    // No vertices: every point is outside.
    CPreparedPolygon() = default;
    // As Set.
    explicit CPreparedPolygon(const CDblPointArray& polygon, double tolerance = 0.0) { Set(polygon, tolerance); }

    // Takes a copy of the vertices (in order; the closing edge from the last
    // vertex to the first is implied, as for the polygon predicates) and
    // builds the band index: O(n + total band spans), about O(n) for ordinary
    // polygons. `tolerance` is the distance within which a point counts as on
    // the boundary (0: only points exactly on an edge, by an exact
    // cross-product test).
    void Set(const CDblPointArray& polygon, double tolerance = 0.0);

    // POLYGON_BOUNDARY when pt lies within the tolerance of an edge (`edge`
    // receives the lowest such edge index; edge i runs from vertex i to
    // vertex i + 1); otherwise POLYGON_INSIDE or POLYGON_OUTSIDE by the
    // nonzero winding rule, the answer PtInPolygonEx gives, and `edge`
    // receives -1. A NaN coordinate is outside. Cost: the edges of pt's band,
    // O(1) for polygons whose edges are spread evenly in y.
    PolygonLocation Locate(const CDblPoint& pt, int* edge = nullptr) const;
    // Locate(pt) == POLYGON_INSIDE: points on the boundary are not contained.
    bool Contains(const CDblPoint& pt) const { return Locate(pt) == POLYGON_INSIDE; }

    INT_PTR GetSize() const { return static_cast<INT_PTR>(m_vertices.size()); }
    double GetTolerance() const { return m_tolerance; }

private:
    int BandOf(double y) const;

    std::vector<CDblPoint> m_vertices;
    double m_tolerance = 0.0;
    double m_xMin = 0.0, m_xMax = -1.0, m_yMin = 0.0, m_yMax = -1.0;  // an empty box when there is nothing
    double m_bandHeight = 1.0;
    int m_bands = 0;
    std::vector<int> m_bandStart;  // band b holds m_bandEdges[m_bandStart[b] .. m_bandStart[b + 1])
    std::vector<int> m_bandEdges;  // edge indices, increasing within a band
};

}  // namespace ORVMATH
