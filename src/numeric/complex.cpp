#include <orvmath/complex.h>

#include <cmath>
#include <limits>

namespace ORVMATH {

// The z.i == 0 branch of the division relies on IEEE quotients by zero.
static_assert(std::numeric_limits<double>::is_iec559, "IEEE 754 doubles are required");

namespace {

// sqrt(big^2 + small^2) for big >= small >= 0, big > 0, without overflow.
double ScaledHypot(double big, double small) noexcept {
    const double q = small / big;
    return big * std::sqrt(1.0 + q * q);
}

}  // namespace

dcomplex dcomplex::operator/(const dcomplex& z) const noexcept {
    if (z.r == 0.0 && z.i == 0.0) return z;
    if (z.i == 0.0) return dcomplex(r / z.r, i / z.i);
    if (z.r == 0.0) return dcomplex(i / z.i, -r / z.i);
    if (std::fabs(z.r) >= std::fabs(z.i)) {
        const double q = z.i / z.r, den = z.r + z.i * q;
        return dcomplex((r + i * q) / den, (i - r * q) / den);
    }
    const double q = z.r / z.i, den = z.r * q + z.i;
    return dcomplex((r * q + i) / den, (i * q - r) / den);
}

double dcomplex::cabs() const noexcept {
    const double x = std::fabs(r), y = std::fabs(i);
    if (x == 0.0) return y;
    if (y == 0.0) return x;
    return x > y ? ScaledHypot(x, y) : ScaledHypot(y, x);
}

dcomplex dcomplex::csqrt() const noexcept {
    if (r == 0.0 && i == 0.0) return dcomplex(0.0, 0.0);
    const double x = std::fabs(r), y = std::fabs(i);
    const double m = x >= y ? ScaledHypot(x, y) : ScaledHypot(y, x);
    const double w = std::sqrt((m + x) / 2.0);
    if (r >= 0.0) return dcomplex(w, i / (2.0 * w));
    return dcomplex(std::fabs(i) / (2.0 * w), i >= 0.0 ? w : -w);
}

void GetEquation2Root(double a, double b, double c, CArray<dcomplex, dcomplex>& roots) {
    if (a == 0.0) {
        if (b != 0.0) roots.Add(dcomplex(-c / b, 0.0));
        return;
    }
    const double d = b * b - a * 4.0 * c;
    if (d > 0.0) {
        const double s = std::sqrt(d);
        roots.Add(dcomplex((-b + s) / (2.0 * a), 0.0));
        roots.Add(dcomplex((-b - s) / (2.0 * a), 0.0));
    } else if (d == 0.0) {
        const dcomplex x(-b / (2.0 * a), 0.0);
        roots.Add(x);
        roots.Add(x);
    } else {
        const dcomplex s = dcomplex(d, 0.0).csqrt() * (0.5 / a);
        const dcomplex mid(-b / (2.0 * a), 0.0);
        roots.Add(mid + s);
        roots.Add(mid - s);
    }
}

CArchive& operator<<(CArchive& ar, const dcomplex& z) { return ar << z.r << z.i; }
CArchive& operator>>(CArchive& ar, dcomplex& z) { return ar >> z.r >> z.i; }

}  // namespace ORVMATH
