// Roots of cubics and quartics, the companions of GetEquation2Root
// (complex.h): the same result array, the same append rule.
//
// Contract shared by both solvers:
//  - The roots are APPENDED to `roots`; earlier contents stay in front.
//  - Order: the real roots first, ascending, each with imaginary part exactly
//    0; then the complex conjugate pairs, by ascending real part (then by
//    ascending |imaginary part|), each pair with its positive imaginary part
//    first and the exact conjugate next.
//  - A root of multiplicity m is appended m times with the same value: the
//    root of the derivative at which the polynomial vanishes too (within
//    kRootResidualUlps * degree rounding units of the polynomial's scale). So
//    roots closer together than the coefficients can tell apart come out as
//    one multiple root, e.g. (x - 0.1)^3 with its rounded coefficients.
//  - A leading coefficient of exactly 0 falls back to the lower degree, and
//    so on down: the roots of the polynomial that remains, in the order above
//    (not the order of GetEquation2Root). A constant polynomial, zero or not,
//    has no roots: nothing is appended.
//  - Any non-finite coefficient, or coefficients whose ratios to the leading
//    one overflow: nothing is appended.
//  - Accuracy: each simple root is polished (Newton steps kept apart by
//    Aberth's correction) until its residual is at the rounding level of the
//    polynomial's scale (sum of |coefficient| * |x|^power). The closed forms
//    (trigonometric or Cardano for the cubic, Ferrari for the quartic) only
//    give the start; x is first scaled by a power of two so the largest root
//    is near 1, and roots far smaller, which the closed forms lose, are found
//    again from the quotient left after dividing out the large ones.
// Nothing throws.
#pragma once

#include <orvmath/complex.h>
#include <orvmath/export.h>
#include <orvmath/host/array.h>

namespace ORVMATH {

// Residual allowance, in units of rounding (2^-52) times the degree, under
// which a point counts as a root when multiple roots are looked for.
constexpr double kRootResidualUlps = 16.0;

// Roots of a*x^3 + b*x^2 + c*x + d = 0, appended in the order above.
ORVMATH_API void GetEquation3Root(double a, double b, double c, double d, CArray<dcomplex, dcomplex>& roots);

// Roots of a*x^4 + b*x^3 + c*x^2 + d*x + e = 0, appended in the order above.
ORVMATH_API void GetEquation4Root(double a, double b, double c, double d, double e, CArray<dcomplex, dcomplex>& roots);

}  // namespace ORVMATH
