// Small linear algebra kernels on plain C arrays in the manner of Numerical
// Recipes in C: vectors and matrices with arbitrary index ranges, the fatal
// error reporter nrerror, Gauss-Jordan elimination with full pivoting, and a
// few flat-array products. Nothing here keeps state between calls; every
// array belongs to the caller.
//
// Fatal errors: an allocation that cannot be satisfied and a singular matrix
// in gaussj end the whole process through nrerror (exit status 1). Callers
// cannot catch them. Kept: callers depend on these kernels never returning
// a half-solved system.
#pragma once

#include <orvmath/export.h>

#include <cmath>

namespace ORVMATH {

// ---- Index-ranged allocation -------------------------------------------------
//
// dvector(nl, nh) returns a pointer valid for v[nl] .. v[nh]. The block
// underneath holds nh - nl + 2 elements (one spare element in front) and the
// pointer returned is the block start + 1 - nl. Release it with the partner
// free_... function and the same nl. A range that cannot be allocated (too
// long, or nh < nl - 1) ends the process:
//   "allocation failure in dvector()" / "allocation failure in ivector()".

ORVMATH_API double* dvector(long nl, long nh);
ORVMATH_API int* ivector(long nl, long nh);
// Frees the block at v + nl - 1; nh is not needed and is ignored.
ORVMATH_API void free_dvector(double* v, long nl, long nh);
ORVMATH_API void free_ivector(int* v, long nl, long nh);

// A matrix valid for m[i][j], nrl <= i <= nrh, ncl <= j <= nch. Two blocks:
// nrow + 1 row pointers, and one contiguous data block of nrow * ncol + 1
// doubles in which row nrl starts at data + 1 - ncl and each following row
// ncol elements after the previous one (so m[i + 1][ncl] directly follows
// m[i][nch]). Failures end the process: "allocation failure 1 in dmatrix()"
// for the row pointers, "allocation failure 2 in dmatrix()" for the data.
ORVMATH_API double** dmatrix(long nrl, long nrh, long ncl, long nch);
// Frees the data block at m[nrl] + ncl - 1, then the row pointers at
// m + nrl - 1.
ORVMATH_API void free_dmatrix(double** m, long nrl, long nrh, long ncl, long nch);

// Writes three lines to standard error:
//   Numerical Recipes run-time error...
//   TEXT (the argument)
//   ...now exiting to system...
// and ends the process with exit status 1. Never returns.
[[noreturn]] ORVMATH_API void nrerror(const char* text);

// ---- Solvers and flat-array products -----------------------------------------

// Gauss-Jordan elimination with full pivoting. a is n x n and b is n x m,
// both indexed from 1 (as made by dmatrix(1, n, 1, ...)). On return a holds
// its inverse and b the solutions x of a * x = b, column by column.
// Among pivot candidates of equal magnitude the last one scanned (row-major)
// wins. A singular matrix ends the process with "gaussj: Singular Matrix-1"
// (a column chosen twice, reachable only with NaN elements) or
// "gaussj: Singular Matrix-2" (a pivot of exactly 0.0). n < 1 does nothing.
ORVMATH_API void gaussj(double** a, int n, double** b, int m);

// C (m x p) = A (m x n) * B (n x p), all flat row-major from index 0; C must
// not alias A or B. m < 1 or p < 1 writes nothing; n < 1 zero-fills C.
ORVMATH_API void MulMat(int m, int n, int p, double* A, double* B, double* C);

// Inverse of the lower-triangular n x n matrix L into Linv, flat row-major.
// Only the diagonal and the strictly lower part of Linv are written; the
// upper part keeps what the caller had there. A zero diagonal element is not
// checked (the division yields an infinity).
ORVMATH_API void LMInvert(int n, double* L, double* Linv);

// Sum of a[i] * b[i] for i = 0 .. n - 1; 0.0 when n < 1.
inline double DotProduct(double* a, double* b, int n) noexcept {
    double s = 0.0;
    for (int i = 0; i < n; ++i) s += a[i] * b[i];
    return s;
}

// c = a x b for 3-vectors (right-handed); returns c. c must not alias a or b.
inline double* CrossProduct(double* const a, double* const b, double* const c) noexcept {
    c[0] = a[1] * b[2] - a[2] * b[1];
    c[1] = a[2] * b[0] - a[0] * b[2];
    c[2] = a[0] * b[1] - a[1] * b[0];
    return c;
}

// Planar form: a[0] * b[1] - a[1] * b[0], the z component of the product of
// two vectors of the plane. Positive when b turns counter-clockwise from a.
inline double CrossProduct(double* const a, double* const b) noexcept { return a[0] * b[1] - a[1] * b[0]; }

// Divides the 3-vector v by its length in place. A vector of length exactly
// 0.0 is left unchanged.
inline void NormalizeVector(double* const v) noexcept {
    const double len = std::sqrt(v[0] * v[0] + v[1] * v[1] + v[2] * v[2]);
    if (len == 0.0) return;
    v[0] /= len;
    v[1] /= len;
    v[2] /= len;
}

}  // namespace ORVMATH
