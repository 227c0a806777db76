// The spatial point in double precision.
#pragma once

#include <orvmath/export.h>
#include <orvmath/host/variant.h>
#include <orvmath/point2.h>
#include <orvmath/tolerance.h>

#include <cmath>

namespace ORVMATH {

class ORVMATH_API CDblPoint3 {
public:
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;

    CDblPoint3() noexcept = default;
    CDblPoint3(double x_, double y_, double z_) noexcept : x(x_), y(y_), z(z_) {}
    explicit CDblPoint3(const double* p) noexcept : x(p[0]), y(p[1]), z(p[2]) {}  // p: three doubles
    CDblPoint3(const CDblPoint& p) noexcept : x(p.x), y(p.y), z(0.0) {}

    // z is reset to 0, not kept.
    CDblPoint3& operator=(const CDblPoint& p) noexcept { return *this = CDblPoint3(p); }
    operator CDblPoint() const noexcept { return CDblPoint(x, y); }

    void Set(double x_, double y_, double z_) noexcept { x = x_; y = y_; z = z_; }
    void Set(const double* p) noexcept { Set(p[0], p[1], p[2]); }
    void Offset(double dx, double dy, double dz) noexcept { x += dx; y += dy; z += dz; }

    bool IsNull() const noexcept { return x == 0.0 && y == 0.0 && z == 0.0; }

    // Strictly within CDblPoint3Epsilon on each axis. Unlike every other
    // equality of the library the boundary is excluded; kept, as stored
    // comparisons depend on it.
    bool operator==(const CDblPoint3& p) const noexcept {
        return std::fabs(x - p.x) < CDblPoint3Epsilon::x() && std::fabs(y - p.y) < CDblPoint3Epsilon::y() &&
               std::fabs(z - p.z) < CDblPoint3Epsilon::z();
    }
    bool operator!=(const CDblPoint3& p) const noexcept { return !(*this == p); }

    // Reads elements 0, 1 and 2 of a one-dimensional VT_ARRAY|VT_R8 variant
    // of at least three elements; any other variant leaves the point unchanged.
    void FromVariant(const VARIANT& v);
    // A new VT_ARRAY|VT_R8 variant of {x, y, z} (lower bound 0), owned by the caller.
    VARIANT ToVariant() const;

    // Stores or loads the archive record (see operator<<).
    void Serialize(CArchive& ar);
};

// Archive record: x, y, z as doubles.
ORVMATH_API CArchive& operator<<(CArchive& ar, const CDblPoint3& p);
ORVMATH_API CArchive& operator>>(CArchive& ar, CDblPoint3& p);

}  // namespace ORVMATH
