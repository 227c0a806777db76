// Kernels shared by the two spatial matrix families (CMatrix4 and
// Transformer). Both keep 16 doubles row-major, element (r, c) at 4r + c, and
// use row vectors: p' = [x y z 1] * M, translation in row 3, A * B applies A
// first. Not part of the public API; included by matrix4.h and coordsys.h.
#pragma once

#include <cmath>

#if defined(__SSE2__) || defined(_M_X64)
#include <emmintrin.h>
#endif

namespace ORVMATH {
namespace detail {

// out = a * b over all 16 elements, each summed as
// a(i,0) b(0,j) + a(i,1) b(1,j) + a(i,2) b(2,j) + a(i,3) b(3,j) from the left.
// out may alias a or b.
inline void MultiplyRowMajor4(const double* a, const double* b, double* out) noexcept {
#if defined(__SSE2__) || defined(_M_X64)
    // Two adjacent elements of a row per register, the same operations in the
    // same order. b is read whole before any store and row i of a before row
    // i of out is written, so aliasing either is safe.
    __m128d bl[4], bh[4];
    for (int k = 0; k < 4; ++k) {
        bl[k] = _mm_loadu_pd(b + 4 * k);
        bh[k] = _mm_loadu_pd(b + 4 * k + 2);
    }
    for (int i = 0; i < 4; ++i) {
        const __m128d a0 = _mm_set1_pd(a[4 * i]), a1 = _mm_set1_pd(a[4 * i + 1]);
        const __m128d a2 = _mm_set1_pd(a[4 * i + 2]), a3 = _mm_set1_pd(a[4 * i + 3]);
        __m128d lo = _mm_add_pd(_mm_mul_pd(a0, bl[0]), _mm_mul_pd(a1, bl[1]));
        __m128d hi = _mm_add_pd(_mm_mul_pd(a0, bh[0]), _mm_mul_pd(a1, bh[1]));
        lo = _mm_add_pd(_mm_add_pd(lo, _mm_mul_pd(a2, bl[2])), _mm_mul_pd(a3, bl[3]));
        hi = _mm_add_pd(_mm_add_pd(hi, _mm_mul_pd(a2, bh[2])), _mm_mul_pd(a3, bh[3]));
        _mm_storeu_pd(out + 4 * i, lo);
        _mm_storeu_pd(out + 4 * i + 2, hi);
    }
#else
    double r[16];
    for (int i = 0; i < 4; ++i) {
        const double a0 = a[4 * i], a1 = a[4 * i + 1], a2 = a[4 * i + 2], a3 = a[4 * i + 3];
        for (int j = 0; j < 4; ++j) r[4 * i + j] = a0 * b[j] + a1 * b[4 + j] + a2 * b[8 + j] + a3 * b[12 + j];
    }
    for (int k = 0; k < 16; ++k) out[k] = r[k];
#endif
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
