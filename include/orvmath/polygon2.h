// Polygons with straight and circular edges: the closed paths of
// polyline2.h, with the measures and the containment of the region they bound.
#pragma once

#include <orvmath/export.h>
#include <orvmath/host/object.h>
#include <orvmath/polyline2.h>
#include <orvmath/preparedpolygon.h>

namespace ORVMATH {

// A closed path: the region it bounds (by the nonzero rule).
class ORVMATH_API CPolygon2 : public CObject, public detail::PolyPathEdits<CPolygon2> {
    DECLARE_SERIAL(CPolygon2)

public:
    CPolygon2() : PolyPathEdits(true) {}
    // Straight edges through the points and back to the first.
    explicit CPolygon2(const CDblPointArray& points);
    // The polyline closed by an edge from its last vertex back to its first
    // (with the polyline's last bulge).
    explicit CPolygon2(const CPolyline2& open);
    CPolygon2(const CPolygon2&) = default;
    CPolygon2& operator=(const CPolygon2&) = default;
    ~CPolygon2() override = default;

    // The polyline that runs once round from vertex 0 back to it (n + 1
    // vertices, the last equal to the first).
    CPolyline2 Open() const;

    // Signed area, arcs included: positive when the boundary runs
    // counter-clockwise. 0 below three vertices without arcs.
    virtual double Area() const;
    bool IsCCW() const { return Area() > 0.0; }
    // Centroid of the region (of the vertices' mean when the area is 0).
    virtual CDblPoint Centroid() const;
    // POLYGON_BOUNDARY within CDistanceEpsilon of an edge (`edge` gets it,
    // else -1), otherwise POLYGON_INSIDE or POLYGON_OUTSIDE by the winding
    // number of the boundary, arcs included.
    virtual PolygonLocation Locate(const CDblPoint& p, int* edge = nullptr) const;

    // Copying forms: Move, Rotate, Mirror, Scale, Reverse.
    ORVMATH_COPYING_FORM(CPolygon2, Move)
    ORVMATH_COPYING_FORM(CPolygon2, Rotate)
    ORVMATH_COPYING_FORM(CPolygon2, Mirror)
    ORVMATH_COPYING_FORM(CPolygon2, Scale)
    ORVMATH_COPYING_FORM(CPolygon2, Reverse)

    void Serialize(CArchive& ar) override;
};

}  // namespace ORVMATH
