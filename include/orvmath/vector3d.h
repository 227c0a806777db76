// Vector3d: a free 3-D vector of doubles, serialisable through the host
// framework (run-time class "Vector3d"; CreateObject gives the zero vector).
#pragma once

#include <orvmath/export.h>
#include <orvmath/host/object.h>
#include <orvmath/point3.h>
#include <orvmath/selfcopy.h>
#include <orvmath/tolerance.h>

#include <cmath>

namespace ORVMATH {

class ORVMATH_API Vector3d : public CObject {
    DECLARE_SERIAL(Vector3d)
public:
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;

    Vector3d() noexcept = default;
    Vector3d(double x_, double y_, double z_) noexcept : x(x_), y(y_), z(z_) {}
    Vector3d(const Vector3d&) noexcept = default;
    // to - from: the vector pointing from the first point to the second.
    Vector3d(const CDblPoint3& from, const CDblPoint3& to) noexcept : x(to.x - from.x), y(to.y - from.y), z(to.z - from.z) {}
    Vector3d& operator=(const Vector3d&) noexcept = default;
    ~Vector3d() override = default;

    void Set(double x_, double y_, double z_) noexcept { x = x_; y = y_; z = z_; }
    void Set(const Vector3d& v) noexcept { Set(v.x, v.y, v.z); }
    void Set(const CDblPoint3& from, const CDblPoint3& to) noexcept { *this = Vector3d(from, to); }
    void SetNull() noexcept { Set(0.0, 0.0, 0.0); }

    double X() const noexcept { return x; }
    double Y() const noexcept { return y; }
    double Z() const noexcept { return z; }

    double Length() const noexcept { return std::sqrt(x * x + y * y + z * z); }
    double Dot(const Vector3d& v) const noexcept { return x * v.x + y * v.y + z * v.z; }
    // this x v, right-handed.
    Vector3d CrossP(const Vector3d& v) const noexcept {
        return Vector3d(y * v.z - z * v.y, z * v.x - x * v.z, x * v.y - y * v.x);
    }

    // Divides by the length; a vector of length exactly 0.0 is left as it is.
    Vector3d& SelfNormalize() noexcept {
        const double len = Length();
        if (len != 0.0) Set(x / len, y / len, z / len);
        return *this;
    }
    ORVMATH_COPYING_FORM(Vector3d, Normalize)

    // All three components exactly 0.0 (no tolerance).
    bool IsNull() const noexcept { return x == 0.0 && y == 0.0 && z == 0.0; }
    // The normalised vectors compare equal; two zero vectors count as the same direction.
    bool IsSameDirection(const Vector3d& v) const noexcept { return Normalize() == v.Normalize(); }

    // Component-wise within the default CDoubleEpsilon.
    bool operator==(const Vector3d& v) const noexcept {
        return IsDoubleEqual(x, v.x) && IsDoubleEqual(y, v.y) && IsDoubleEqual(z, v.z);
    }
    bool operator!=(const Vector3d& v) const noexcept { return !(*this == v); }
    // The ordering operators compare lengths, with the default tolerance.
    bool operator<(const Vector3d& v) const noexcept { return IsDoubleLess(Length(), v.Length()); }
    bool operator<=(const Vector3d& v) const noexcept { return IsDoubleLessEqual(Length(), v.Length()); }
    bool operator>(const Vector3d& v) const noexcept { return IsDoubleGreater(Length(), v.Length()); }
    bool operator>=(const Vector3d& v) const noexcept { return IsDoubleGreaterEqual(Length(), v.Length()); }

    // Both scale THIS vector in place and return it: `a * 2.0` changes a.
    // Kept: callers depend on the mutation, unlike CMatrix4's operators.
    Vector3d& operator*(double k) noexcept {
        Set(x * k, y * k, z * k);
        return *this;
    }
    // A divisor within CDoubleEpsilon of zero leaves the vector unchanged.
    Vector3d& operator/(double k) noexcept {
        if (!IsDoubleEqual(k, 0.0)) Set(x / k, y / k, z / k);
        return *this;
    }

    // Record: x, y, z as doubles.
    void Serialize(CArchive& ar) override;
};

}  // namespace ORVMATH
