#include <orvmath/host/archive.h>
#include <orvmath/matrix4.h>

#include "affine_inverse.h"

namespace ORVMATH {

IMPLEMENT_SERIAL(CMatrix4, CObject, 1)

CMatrix4::CMatrix4(const double (*a)[4]) noexcept {
    for (int i = 0; i < 4; ++i)
        for (int j = 0; j < 4; ++j) (*this)(i, j) = a[i][j];
}

void CMatrix4::SetUnitary() noexcept {
    for (int i = 0; i < 4; ++i)
        for (int j = 0; j < 4; ++j) (*this)(i, j) = i == j ? 1.0 : 0.0;
}

bool CMatrix4::IsUnitary() const noexcept {
    for (int i = 0; i < 4; ++i)
        for (int j = 0; j < 4; ++j)
            if ((*this)(i, j) != (i == j ? 1.0 : 0.0)) return false;
    return true;
}

void CMatrix4::Move(double dx, double dy, double dz) noexcept {
    for (int i = 0; i < 4; ++i) (*this)(i, i) = 1.0;
    (*this)(3, 0) = dx;
    (*this)(3, 1) = dy;
    (*this)(3, 2) = dz;
}

void CMatrix4::Scale(double sx, double sy, double sz) noexcept {
    (*this)(0, 0) = sx;
    (*this)(1, 1) = sy;
    (*this)(2, 2) = sz;
    (*this)(3, 3) = 1.0;
}

void CMatrix4::RotateZ(double angle) noexcept {
    const double c = std::cos(angle), s = std::sin(angle);
    (*this)(0, 0) = c;
    (*this)(0, 1) = s;
    (*this)(1, 0) = -s;
    (*this)(1, 1) = c;
    (*this)(2, 2) = 1.0;
    (*this)(3, 3) = 1.0;
}

void CMatrix4::ApplyECS2WCS(const Vector3d& n) noexcept {
    if (n.IsNull() || n == Vector3d(0.0, 0.0, 1.0)) return;
    const bool nearZ = std::fabs(n.x) < kArbitraryAxisThreshold && std::fabs(n.y) < kArbitraryAxisThreshold;
    const Vector3d ax = (nearZ ? Vector3d(0.0, 1.0, 0.0) : Vector3d(0.0, 0.0, 1.0)).CrossP(n);
    const Vector3d ay = n.CrossP(ax);
    const double frame[4][4] = {{ax.x, ax.y, ax.z, 0.0}, {ay.x, ay.y, ay.z, 0.0}, {n.x, n.y, n.z, 0.0}, {0.0, 0.0, 0.0, 1.0}};
    *this *= CMatrix4(frame);
}

bool CMatrix4::InvMatrix(double eps) noexcept {
    if (IsDoubleLess(eps, 0.0)) eps = CDoubleEpsilon::get();
    return detail::InvertAffineRowMajor(m_.data(), eps);
}

CMatrix4& CMatrix4::operator*=(double k) noexcept {
    for (double* p = m_.data(); p != m_.data() + 16; ++p) *p *= k;
    return *this;
}

CMatrix4& CMatrix4::operator/=(double k) noexcept {
    if (!IsDoubleEqual(k, 0.0))
        for (double* p = m_.data(); p != m_.data() + 16; ++p) *p /= k;
    return *this;
}

CMatrix4& CMatrix4::operator+=(const CMatrix4& b) noexcept {
    for (int k = 0; k < 16; ++k) m_.data()[k] += b.m_.data()[k];
    return *this;
}

CMatrix4& CMatrix4::operator-=(const CMatrix4& b) noexcept {
    for (int k = 0; k < 16; ++k) m_.data()[k] -= b.m_.data()[k];
    return *this;
}

bool CMatrix4::operator==(const CMatrix4& b) const noexcept {
    for (int k = 0; k < 16; ++k)
        if (!IsDoubleEqual(m_.data()[k], b.m_.data()[k])) return false;
    return true;
}

void CMatrix4::Serialize(CArchive& ar) {
    CObject::Serialize(ar);
    for (double* p = m_.data(); p != m_.data() + 16; ++p) {
        if (ar.IsStoring())
            ar << *p;
        else
            ar >> *p;
    }
}

}  // namespace ORVMATH
