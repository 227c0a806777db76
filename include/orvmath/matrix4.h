// CMatrix4: a 4x4 affine transform of doubles, serialisable through the host
// framework (run-time class "CMatrix4"; CreateObject gives the identity).
//
// Row vectors: p' = [x y z 1] * M, the translation sits in row 3, and A * B
// applies A first, then B. The fourth column is never read by a transforming
// operation and there is no projective division. Angles are radians.
#pragma once

#include <orvmath/detail/affine4.h>
#include <orvmath/export.h>
#include <orvmath/host/object.h>
#include <orvmath/point3.h>
#include <orvmath/tolerance.h>
#include <orvmath/vector3d.h>

#include <boost/numeric/ublas/matrix.hpp>

#include <cstring>

namespace ORVMATH {

// Below this on both |x| and |y|, a normal counts as near the world Z axis and
// its entity frame takes X from the world Y axis instead (the arbitrary-axis rule).
constexpr double kArbitraryAxisThreshold = 1.0 / 64.0;

class ORVMATH_API CMatrix4 : public CObject {
    DECLARE_SERIAL(CMatrix4)
public:
    using Elements = boost::numeric::ublas::c_matrix<double, 4, 4>;

    CMatrix4() noexcept { SetUnitary(); }  // identity
    CMatrix4(const CMatrix4& b) noexcept : CObject(b) { CopyElements(b); }
    CMatrix4(const Elements& m) : m_(m) {}
    // Element (i, j) = a[i][j].
    explicit CMatrix4(const double (*a)[4]) noexcept;
    CMatrix4& operator=(const CMatrix4& b) noexcept {
        if (this != &b) {
            CObject::operator=(b);
            CopyElements(b);
        }
        return *this;
    }
    ~CMatrix4() override = default;

    // Element at (row, column), 0..3 each; not checked.
    double& operator()(int r, int c) noexcept { return m_.data()[4 * r + c]; }
    const double& operator()(int r, int c) const noexcept { return m_.data()[4 * r + c]; }

    // All zero, then 1.0 on the diagonal.
    void SetUnitary() noexcept;
    // Every element exactly equal to the identity's (no tolerance).
    bool IsUnitary() const noexcept;

    // The elementary setters overwrite only the elements they name and keep
    // all others: they neither reset to the identity nor multiply into the
    // matrix, so callers start from SetUnitary() or a fresh object. Kept:
    // callers build combined matrices on this.
    //
    // Diagonal 1.0 and row 3 = (dx, dy, dz, 1).
    void Move(double dx, double dy, double dz) noexcept;
    void Move(const CDblPoint3& d) noexcept { Move(d.x, d.y, d.z); }
    // (0,0) = sx, (1,1) = sy, (2,2) = sz, (3,3) = 1.
    void Scale(double sx, double sy, double sz) noexcept;
    // Counter-clockwise about +Z: the 2x2 rotation block, (2,2) = (3,3) = 1.
    void RotateZ(double angle) noexcept;
    // Upper-left 3x3 of the rotation about axis, which is used exactly as given
    // (a non-unit axis gives a non-orthogonal block). Row 3 and column 3 stay.
    void Rotate(const Vector3d& axis, double angle) noexcept {
        detail::WriteAxisRotation(m_.data(), axis.x, axis.y, axis.z, angle);
    }

    // this = this * M, M being the frame of the entity coordinate system whose
    // Z axis is normal: rows Ax, Ay, normal, with Ax = (0,1,0) x N when |N.x|
    // and |N.y| are both below kArbitraryAxisThreshold, else (0,0,1) x N, and
    // Ay = N x Ax. Nothing is normalised: a unit N gives rows of length
    // sin(angle to Z), not 1 (kept: stored drawings depend on it). A null
    // normal, or one equal to (0,0,1) within tolerance, changes nothing.
    void ApplyECS2WCS(const Vector3d& normal) noexcept;

    // In-place inverse. eps < 0 (with tolerance) means the current
    // CDoubleEpsilon; 0 is kept as 0. Returns false when a pivot has
    // |p| <= eps; the matrix is then partly processed and its content
    // undefined. The fourth column is not touched.
    bool InvMatrix(double eps) noexcept;

    // [x y z 1] * M.
    CDblPoint3 Transform(const CDblPoint3& p) const noexcept {
        double r[3];
        detail::TransformRow(m_.data(), p.x, p.y, p.z, 1.0, r);
        return CDblPoint3(r[0], r[1], r[2]);
    }
    // [x y z 0] * M: directions are not translated.
    Vector3d Transform(const Vector3d& v) const noexcept {
        double r[3];
        detail::TransformRow(m_.data(), v.x, v.y, v.z, 0.0, r);
        return Vector3d(r[0], r[1], r[2]);
    }

    // Matrix product this * b (this applied first).
    CMatrix4 operator*(const CMatrix4& b) const noexcept {
        CMatrix4 r(NoInit{});
        detail::MultiplyRowMajor4(m_.data(), b.m_.data(), r.m_.data());
        return r;
    }
    CMatrix4& operator*=(const CMatrix4& b) noexcept {
        detail::MultiplyRowMajor4(m_.data(), b.m_.data(), m_.data());
        return *this;
    }

    // Element-wise. A divisor within CDoubleEpsilon of zero changes nothing.
    CMatrix4& operator*=(double k) noexcept;
    CMatrix4& operator/=(double k) noexcept;
    CMatrix4& operator+=(const CMatrix4& b) noexcept;
    CMatrix4& operator-=(const CMatrix4& b) noexcept;
    CMatrix4 operator*(double k) const noexcept { return CMatrix4(*this) *= k; }
    CMatrix4 operator/(double k) const noexcept { return CMatrix4(*this) /= k; }
    CMatrix4 operator+(const CMatrix4& b) const noexcept { return CMatrix4(*this) += b; }
    CMatrix4 operator-(const CMatrix4& b) const noexcept { return CMatrix4(*this) -= b; }

    // All 16 elements within CDoubleEpsilon.
    bool operator==(const CMatrix4& b) const noexcept;
    bool operator!=(const CMatrix4& b) const noexcept { return !(*this == b); }

    // Record: the 16 elements as doubles, row by row.
    void Serialize(CArchive& ar) override;

private:
    struct NoInit {};
    explicit CMatrix4(NoInit) noexcept {}
    // The 16 elements as one block: c_matrix's own copy goes row by row
    // through a library call each.
    void CopyElements(const CMatrix4& b) noexcept {
        m_.resize(b.m_.size1(), b.m_.size2(), false);
        std::memcpy(m_.data(), b.m_.data(), sizeof(double) * 16);
    }

    Elements m_;
};

}  // namespace ORVMATH
