// Double-precision complex numbers in the manner of the Numerical Recipes
// complex utilities (scaled modulus, scaled division, principal square
// root), and the roots of a quadratic.
#pragma once

#include <orvmath/export.h>
#include <orvmath/host/array.h>

namespace ORVMATH {

// A complex value r + i*i. A plain value; the default constructor leaves
// both parts unset.
class ORVMATH_API dcomplex {
public:
    double r;  // real part
    double i;  // imaginary part

    dcomplex() noexcept = default;
    dcomplex(double re, double im) noexcept : r(re), i(im) {}

    dcomplex operator+(const dcomplex& z) const noexcept { return dcomplex(r + z.r, i + z.i); }
    dcomplex operator-(const dcomplex& z) const noexcept { return dcomplex(r - z.r, i - z.i); }
    dcomplex operator-() const noexcept { return dcomplex(-r, -i); }
    dcomplex& operator+=(const dcomplex& z) noexcept { r += z.r; i += z.i; return *this; }
    dcomplex& operator-=(const dcomplex& z) noexcept { r -= z.r; i -= z.i; return *this; }
    dcomplex operator*(const dcomplex& z) const noexcept { return dcomplex(r * z.r - i * z.i, r * z.i + i * z.r); }
    dcomplex operator*(double k) const noexcept { return dcomplex(r * k, i * k); }
    dcomplex& operator*=(double k) noexcept { r *= k; i *= k; return *this; }
    // Safe when z is this object (z *= z squares it): the product is formed
    // from the old parts before either is written.
    dcomplex& operator*=(const dcomplex& z) noexcept { return *this = *this * z; }

    // Division with exact-zero rules tested in this order:
    //  - z == 0 + 0i: the result is 0 + 0i (no infinity, no error);
    //  - z.i == 0:    (r / z.r, i / z.i) -- the imaginary part is divided by
    //                 the zero imaginary part, giving +-infinity or NaN. Kept:
    //                 callers and stored results depend on it;
    //  - z.r == 0:    (i / z.i, -r / z.i);
    //  - otherwise Smith's scaled division.
    dcomplex operator/(const dcomplex& z) const noexcept;
    // this = this / z; a zero z makes this 0 + 0i.
    dcomplex& operator/=(const dcomplex& z) noexcept { return *this = *this / z; }

    dcomplex Conjg() const noexcept { return dcomplex(r, -i); }
    // Modulus, scaled against overflow.
    double cabs() const noexcept;
    // Principal square root (non-negative real part; for a negative real
    // number, +i*sqrt|r|). The root of 0 + 0i is 0 + 0i.
    dcomplex csqrt() const noexcept;
};

// Archive record: r, then i, as doubles (so arrays of roots store the same
// bytes on every host).
ORVMATH_API CArchive& operator<<(CArchive& ar, const dcomplex& z);
ORVMATH_API CArchive& operator>>(CArchive& ar, dcomplex& z);

// Roots of a*x^2 + b*x + c = 0, APPENDED to `roots` (earlier contents stay in
// front). a == 0 exactly: the single root -c/b, or nothing when b == 0 too.
// Two distinct real roots: (-b + sqrt D)/(2a) first, then (-b - sqrt D)/(2a),
// D = b^2 - 4ac. A zero discriminant: -b/(2a) twice. A negative one: the
// conjugate pair, the root whose imaginary part has the sign of a first.
// Real roots have imaginary part exactly 0.
ORVMATH_API void GetEquation2Root(double a, double b, double c, CArray<dcomplex, dcomplex>& roots);

}  // namespace ORVMATH
