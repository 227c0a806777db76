// Small helpers shared by the route sources (not installed).
#pragma once

#include <orvmath/angle.h>
#include <orvmath/line2.h>
#include <orvmath/route2.h>

#include <cfloat>
#include <cmath>

namespace ORVMATH {
namespace route_detail {

constexpr double kHalfPi = kPi * 0.5;
constexpr double kInfiniteRadius = -1.0;

// Radius at the far end of a transition: its own end radius when set, else
// the next point's radius.
inline double FarRadius(const CCriticalPoint& p1, const CCriticalPoint& p2) {
    return p1.endRadius != 0.0 ? p1.endRadius : p2.radius;
}

// Arc length from a clothoid's origin to the point of radius r (0 for an infinite radius).
inline double ClothoidLength(double A, double r) { return r == kInfiniteRadius ? 0.0 : A * A / r; }

// Tangent angle there: A^2 / (2 r^2) (0 for an infinite radius).
inline double ClothoidAngle(double A, double r) { return r == kInfiniteRadius ? 0.0 : A * A / (2.0 * r * r); }

// Is p2 ahead of p1, that is, right of p1's left normal by more than kRouteAheadTol?
inline bool IsAhead(const CCriticalPoint& p1, const CCriticalPoint& p2) {
    return CLine2(p1.pt, p1.angle + kHalfPi, 1.0).WhichSide(p2.pt, kRouteAheadTol) == -1;
}

// The margin by which a mile d must clear the running sums e of the element
// lengths (n of them) for a search over e to give the answer the walk over
// the lengths gives, whatever the rounding of the sums.
inline double SureSlack(const double* e, INT_PTR n, double d) {
    return (2.0 * static_cast<double>(n) + 4.0) * DBL_EPSILON * (std::fabs(d) + e[n - 1]);
}

}  // namespace route_detail
}  // namespace ORVMATH
