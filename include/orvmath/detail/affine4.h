// Kernels shared by the two spatial matrix families (CMatrix4 and
// Transformer). Both keep 16 doubles row-major, element (r, c) at 4r + c, and
// use row vectors: p' = [x y z 1] * M, translation in row 3, A * B applies A
// first. Not part of the public API; included by matrix4.h and coordsys.h.
#pragma once

#include <cmath>

namespace ORVMATH {
namespace detail {

// out = a * b over all 16 elements. out may alias a or b.
inline void MultiplyRowMajor4(const double* a, const double* b, double* out) noexcept {
    double r[16];
    for (int i = 0; i < 4; ++i) {
        const double a0 = a[4 * i], a1 = a[4 * i + 1], a2 = a[4 * i + 2], a3 = a[4 * i + 3];
        for (int j = 0; j < 4; ++j) r[4 * i + j] = a0 * b[j] + a1 * b[4 + j] + a2 * b[8 + j] + a3 * b[12 + j];
    }
    for (int k = 0; k < 16; ++k) out[k] = r[k];
}

// [x y z w] * m, columns 0..2 only (the fourth column is never read): w = 1
// transforms a point, w = 0 a direction.
inline void TransformRow(const double* m, double x, double y, double z, double w, double out[3]) noexcept {
    for (int j = 0; j < 3; ++j) out[j] = m[j] * x + m[4 + j] * y + m[8 + j] * z + m[12 + j] * w;
}

// Writes the upper-left 3x3 of the rotation by angle (radians, counter-
// clockwise looking down the axis) about the axis (x, y, z), taken as given:
// a non-unit axis gives a non-orthogonal block. Nothing else is written.
inline void WriteAxisRotation(double* m, double x, double y, double z, double angle) noexcept {
    const double c = std::cos(angle), s = std::sin(angle), t = 1.0 - c;
    m[0] = x * x + (1.0 - x * x) * c;
    m[1] = x * y * t + z * s;
    m[2] = x * z * t - y * s;
    m[4] = x * y * t - z * s;
    m[5] = y * y + (1.0 - y * y) * c;
    m[6] = y * z * t + x * s;
    m[8] = x * z * t + y * s;
    m[9] = y * z * t - x * s;
    m[10] = z * z + (1.0 - z * z) * c;
}

}  // namespace detail
}  // namespace ORVMATH
