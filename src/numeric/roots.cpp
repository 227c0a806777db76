#include <orvmath/roots.h>

#include <algorithm>
#include <cmath>
#include <complex>
#include <cstddef>
#include <limits>
#include <vector>

namespace ORVMATH {

namespace {

using cd = std::complex<double>;

constexpr double kEps = std::numeric_limits<double>::epsilon();
constexpr int kPolishSteps = 16;  // Newton/Aberth steps; good starts need three or four
constexpr double kPi = 3.14159265358979323846;
// After scaling the largest root is at least 1/8 in magnitude; roots down to
// this size keep their digits in the closed forms and may be divided out.
constexpr double kLargeRoot = 1.0 / 64.0;

// Monic polynomial x^n + c[n-1]*x^(n-1) + ... + c[0]: c holds the n lower
// coefficients, constant first.
using Coeffs = std::vector<double>;

// A multiset of roots of a real polynomial: the real ones, and the member
// with positive imaginary part of each conjugate pair.
struct RootSet {
    std::vector<double> real;
    std::vector<cd> upper;
    int Count() const { return static_cast<int>(real.size() + 2 * upper.size()); }
    void Add(const RootSet& o) {
        real.insert(real.end(), o.real.begin(), o.real.end());
        upper.insert(upper.end(), o.upper.begin(), o.upper.end());
    }
    std::vector<cd> All() const {
        std::vector<cd> all(real.begin(), real.end());
        for (const cd& z : upper) all.push_back(z);
        for (const cd& z : upper) all.push_back(std::conj(z));
        return all;
    }
};

// p(z) and p'(z) by Horner.
void Eval(const Coeffs& c, cd z, cd& p, cd& dp) {
    p = 1.0;
    dp = 0.0;
    for (std::size_t i = c.size(); i-- > 0;) {
        dp = dp * z + p;
        p = p * z + c[i];
    }
}

double AbsP(const Coeffs& c, cd z) {
    cd p, dp;
    Eval(c, z, p, dp);
    return std::abs(p);
}

// True when |p(z)| is within the rounding allowance of the polynomial's scale
// sum |c_i| |z|^i at z.
bool VanishesAt(const Coeffs& c, cd z) {
    const double az = std::abs(z);
    double scale = 1.0;
    for (std::size_t i = c.size(); i-- > 0;) scale = scale * az + std::fabs(c[i]);
    return AbsP(c, z) <= kRootResidualUlps * static_cast<double>(c.size()) * kEps * scale;
}

Coeffs MonicDerivative(const Coeffs& c) {
    const std::size_t n = c.size();
    Coeffs d(n - 1);
    for (std::size_t j = 0; j + 1 < n; ++j) d[j] = static_cast<double>(j + 1) * c[j + 1] / static_cast<double>(n);
    return d;
}

// x^2 + c1*x + c0, without the cancellation of the school formula.
void Quadratic(double c1, double c0, RootSet& out) {
    const double h = -0.5 * c1;
    const double disc = h * h - c0;
    if (disc < 0.0) {
        out.upper.push_back(cd(h, std::sqrt(-disc)));
        return;
    }
    const double q = h + std::copysign(std::sqrt(disc), h);
    out.real.push_back(q);
    out.real.push_back(q != 0.0 ? c0 / q : 0.0);
}

// Simultaneous (Aberth) correction of the roots in rs: Newton's step bent away
// from the other roots, so two starts never settle on the same root. `fixed`
// roots repel but do not move. A step is kept only when it lowers |p|.
void Polish(const Coeffs& c, RootSet& rs, const std::vector<cd>& fixed = {}) {
    for (int step = 0; step < kPolishSteps; ++step) {
        std::vector<cd> all = rs.All();
        all.insert(all.end(), fixed.begin(), fixed.end());
        auto better = [&](cd z, std::size_t self, cd& out) {
            cd p, dp;
            Eval(c, z, p, dp);
            if (p == 0.0 || dp == 0.0) return false;
            const cd w = p / dp;
            cd repel = 0.0;
            for (std::size_t j = 0; j < all.size(); ++j)
                if (j != self && all[j] != z) repel += 1.0 / (z - all[j]);
            const cd den = 1.0 - w * repel;
            out = z - (den != 0.0 ? w / den : w);
            return true;
        };
        bool moved = false;
        for (std::size_t k = 0; k < rs.real.size(); ++k) {
            cd next;
            if (!better(rs.real[k], k, next)) continue;
            const double x = next.real();
            if (AbsP(c, x) < AbsP(c, rs.real[k])) rs.real[k] = x, moved = true;
        }
        for (std::size_t k = 0; k < rs.upper.size(); ++k) {
            cd next;
            if (!better(rs.upper[k], rs.real.size() + k, next) || !(next.imag() > 0.0)) continue;
            if (AbsP(c, next) < AbsP(c, rs.upper[k])) rs.upper[k] = next, moved = true;
        }
        if (!moved) break;
    }
}

RootSet Solve(const Coeffs& c);
RootSet SolveMonic(const Coeffs& c);

// The real root of largest magnitude from the closed forms (trigonometric
// when all three are real, Cardano otherwise), polished, then the quadratic
// left after dividing it out. Dividing from the constant end is the stable
// direction when the root is the larger, from the leading end otherwise.
RootSet Cubic(const Coeffs& c) {
    const double A = c[2], B = c[1], C = c[0];
    const double Q = (A * A - 3.0 * B) / 9.0, R = (2.0 * A * A * A - 9.0 * A * B + 27.0 * C) / 54.0;
    double x1;
    if (R * R < Q * Q * Q) {
        const double sq = std::sqrt(Q), th = std::acos(std::clamp(R / (sq * sq * sq), -1.0, 1.0));
        x1 = 0.0;
        for (int k = 0; k < 3; ++k) {
            const double x = -2.0 * sq * std::cos((th + 2.0 * kPi * k) / 3.0) - A / 3.0;
            if (std::fabs(x) > std::fabs(x1)) x1 = x;
        }
    } else {
        const double big = -std::copysign(std::cbrt(std::fabs(R) + std::sqrt(R * R - Q * Q * Q)), R);
        x1 = big + (big != 0.0 ? Q / big : 0.0) - A / 3.0;
    }
    RootSet first;
    first.real.push_back(x1);
    Polish(c, first);
    x1 = first.real[0];
    double q1, q0;
    if (x1 != 0.0 && std::fabs(x1) * x1 * x1 >= std::fabs(C)) {
        q0 = -C / x1;
        q1 = (q0 - B) / x1;
    } else {
        q1 = A + x1;
        q0 = B + x1 * q1;
    }
    Quadratic(q1, q0, first);
    return first;
}

// Ferrari: shift to y^4 + p*y^2 + q*y + r, split it into two real quadratics
// through the largest root of the resolvent cubic.
RootSet Quartic(const Coeffs& c) {
    const double s = c[3] / 4.0;
    const double p = c[2] - 6.0 * s * s;
    const double q = c[1] - 2.0 * s * c[2] + 8.0 * s * s * s;
    const double r = c[0] - s * c[1] + s * s * c[2] - 3.0 * s * s * s * s;
    RootSet y;
    if (q == 0.0) {  // biquadratic: y^2 = z
        RootSet z;
        Quadratic(p, r, z);
        for (double zr : z.real) {
            if (zr >= 0.0) {
                y.real.push_back(std::sqrt(zr));
                y.real.push_back(-std::sqrt(zr));
            } else {
                y.upper.push_back(cd(0.0, std::sqrt(-zr)));
            }
        }
        for (const cd& zu : z.upper) {
            const cd w = std::sqrt(zu);
            y.upper.push_back(w);
            y.upper.push_back(-std::conj(w));
        }
    } else {
        const RootSet res = Solve({-q * q / 8.0, p * p / 4.0 - r, p});
        double m = res.real.empty() ? 0.0 : *std::max_element(res.real.begin(), res.real.end());
        m = std::max(m, std::numeric_limits<double>::min());  // q != 0 makes it positive but for rounding
        const double sq = std::sqrt(2.0 * m), t = q / (2.0 * sq);
        Quadratic(-sq, p / 2.0 + m + t, y);
        Quadratic(sq, p / 2.0 + m - t, y);
    }
    for (double& x : y.real) x -= s;
    for (cd& z : y.upper) z -= s;
    return y;
}

RootSet SimpleRoots(const Coeffs& c) {
    RootSet rs;
    switch (c.size()) {
        case 2:
            Quadratic(c[1], c[0], rs);
            break;
        case 3:
            rs = Cubic(c);
            break;
        default:
            rs = Quartic(c);
            break;
    }
    Polish(c, rs);
    return rs;
}

// A root w of p' of multiplicity k at which p vanishes too is a root of p of
// multiplicity k + 1. p' is solved at its own scale, and w must pass the
// residual test of p' as well: a root of p' lost to cancellation can land on
// a simple root of p by chance.
RootSet MultipleRoots(const Coeffs& c) {
    const Coeffs dc = MonicDerivative(c);
    RootSet d = SolveMonic(dc), out;
    auto multiple = [&](cd w) { return VanishesAt(c, w) && VanishesAt(dc, w); };
    const int n = static_cast<int>(c.size());
    std::sort(d.real.begin(), d.real.end());
    for (std::size_t i = 0; i < d.real.size();) {
        std::size_t j = i;
        while (j < d.real.size() && d.real[j] == d.real[i]) ++j;
        if (multiple(d.real[i]))
            for (std::size_t k = 0; k <= j - i && out.Count() < n; ++k) out.real.push_back(d.real[i]);
        i = j;
    }
    for (const cd& w : d.upper)  // a cubic derivative has at most one pair: simple
        if (out.Count() + 4 <= n && multiple(w)) out.upper.insert(out.upper.end(), 2, w);
    return out;
}

// Roots of the monic polynomial c, degree 0 to 4.
RootSet Solve(const Coeffs& c) {
    const std::size_t n = c.size();
    RootSet out;
    if (n == 0) return out;
    if (n == 1) {
        out.real.push_back(-c[0]);
        return out;
    }
    RootSet multi = MultipleRoots(c);
    if (multi.Count() == 0) return SimpleRoots(c);
    RootSet rest;
    const int left = static_cast<int>(n) - multi.Count();
    if (left == 1) {  // the sum of the roots is -c[n-1]
        double sum = 0.0;
        for (double x : multi.real) sum += x;
        for (const cd& z : multi.upper) sum += 2.0 * z.real();
        rest.real.push_back(-c[n - 1] - sum);
    } else if (left == 2) {  // a quartic with one double real root w: divide by x^2 - 2wx + w^2
        const double w = multi.real[0], sw = 2.0 * w, tw = w * w;
        double q1, q0;
        if (tw != 0.0 && tw >= std::fabs(c[0] / tw)) {  // w the larger: from the constant end
            q0 = c[0] / tw;
            q1 = (c[1] + sw * q0) / tw;
        } else {
            q1 = c[3] + sw;
            q0 = c[2] + sw * q1 - tw;
        }
        rest = Solve({q0, q1});
    }
    Polish(c, rest, multi.All());
    multi.Add(rest);
    return multi;
}

// Divides the monic c by (x - r) for each real root and by
// (x^2 - 2 Re z x + |z|^2) for each pair of `by`, from the constant end (the
// top relation is dropped: the quotient is monic): the stable direction when
// the roots divided out are the larger ones. No root of `by` is 0.
Coeffs DeflateFromConstant(Coeffs c, const RootSet& by) {
    for (double r : by.real) {  // c_i = q_(i-1) - r q_i
        Coeffs q(c.size() - 1);
        for (std::size_t i = 0; i < q.size(); ++i) q[i] = ((i > 0 ? q[i - 1] : 0.0) - c[i]) / r;
        c = q;
    }
    for (const cd& z : by.upper) {  // c_i = q_(i-2) - s q_(i-1) + t q_i
        const double s = 2.0 * z.real(), t = std::norm(z);
        Coeffs q(c.size() - 2);
        for (std::size_t i = 0; i < q.size(); ++i)
            q[i] = (c[i] - (i > 1 ? q[i - 2] : 0.0) + s * (i > 0 ? q[i - 1] : 0.0)) / t;
        c = q;
    }
    return c;
}

// Roots of the monic polynomial c of any scale. x is scaled by a power of two
// (exact) so the largest roots are near 1 and the closed forms neither
// overflow nor underflow. Roots far smaller than the largest are lost to
// cancellation there: when some root fails the residual test, the large good
// ones are divided out and the quotient is solved again at its own scale.
RootSet SolveMonic(const Coeffs& c) {
    const std::size_t n = c.size();
    double bound = 0.0;  // within a factor 4 of the largest root's magnitude
    for (std::size_t i = 0; i < n; ++i)
        bound = std::max(bound, std::pow(std::fabs(c[i]), 1.0 / static_cast<double>(n - i)));
    int e = 0;
    if (bound > 0.0) std::frexp(bound, &e);
    Coeffs cs(c);
    for (std::size_t i = 0; i < n; ++i) cs[i] = std::ldexp(c[i], -e * static_cast<int>(n - i));
    RootSet rs = Solve(cs), large;
    // The m-th copy of one value passes only when the derivatives up to order
    // m - 1 vanish there too: a start that two closed-form roots share stays
    // shared under the polish even when the root is simple.
    bool failed = false;
    std::vector<cd> passed;
    auto good = [&](cd z) {
        Coeffs d = cs;
        for (std::ptrdiff_t k = std::count(passed.begin(), passed.end(), z); k >= 0 && !d.empty(); --k) {
            if (!VanishesAt(d, z)) return !(failed = true);
            d = MonicDerivative(d);
        }
        passed.push_back(z);
        return std::abs(z) >= kLargeRoot;
    };
    for (double x : rs.real)
        if (good(x)) large.real.push_back(x);
    for (const cd& z : rs.upper)
        if (good(z)) large.upper.push_back(z);
    if (failed && large.Count() > 0) {
        RootSet rest = SolveMonic(DeflateFromConstant(cs, large));
        Polish(cs, rest, large.All());
        large.Add(rest);
        rs = large;
    }
    for (double& x : rs.real) x = std::ldexp(x, e) + 0.0;  // + 0.0: no negative zero
    for (cd& z : rs.upper) z = cd(std::ldexp(z.real(), e) + 0.0, std::ldexp(z.imag(), e));
    return rs;
}

void AppendRoots(const double* a, int degree, CArray<dcomplex, dcomplex>& roots) {
    for (int i = 0; i <= degree; ++i)
        if (!std::isfinite(a[i])) return;
    int lead = 0;
    while (lead <= degree && a[lead] == 0.0) ++lead;
    const int n = degree - lead;
    if (n <= 0) return;
    Coeffs c(static_cast<std::size_t>(n));
    for (int i = 0; i < n; ++i) {
        c[static_cast<std::size_t>(i)] = a[degree - i] / a[lead];
        if (!std::isfinite(c[static_cast<std::size_t>(i)])) return;
    }
    RootSet rs = SolveMonic(c);
    std::sort(rs.real.begin(), rs.real.end());
    std::sort(rs.upper.begin(), rs.upper.end(), [](const cd& u, const cd& v) {
        return u.real() != v.real() ? u.real() < v.real() : u.imag() < v.imag();
    });
    for (double x : rs.real) roots.Add(dcomplex(x, 0.0));
    for (const cd& z : rs.upper) {
        roots.Add(dcomplex(z.real(), z.imag()));
        roots.Add(dcomplex(z.real(), -z.imag()));
    }
}

}  // namespace

void GetEquation3Root(double a, double b, double c, double d, CArray<dcomplex, dcomplex>& roots) {
    const double coef[] = {a, b, c, d};
    AppendRoots(coef, 3, roots);
}

void GetEquation4Root(double a, double b, double c, double d, double e, CArray<dcomplex, dcomplex>& roots) {
    const double coef[] = {a, b, c, d, e};
    AppendRoots(coef, 4, roots);
}

}  // namespace ORVMATH
