// Vector products shared by the polygon sources (not installed). Inline:
// they are the inner loops of the predicates, clips and offsets.
#pragma once

#include <orvmath/point2.h>

namespace ORVMATH {
namespace detail {

// The planar cross product u x v (positive when v turns left of u).
inline double Cross(double ux, double uy, double vx, double vy) noexcept { return ux * vy - uy * vx; }
inline double Cross(const CDblSize& u, const CDblSize& v) noexcept { return u.cx * v.cy - u.cy * v.cx; }
inline double Dot(const CDblSize& u, const CDblSize& v) noexcept { return u.cx * v.cx + u.cy * v.cy; }

}  // namespace detail
}  // namespace ORVMATH
