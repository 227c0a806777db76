// Rules shared by the curve classes' trims and intersections (not installed).
#pragma once

#include <orvmath/angle.h>
#include <orvmath/containers.h>
#include <orvmath/point2.h>
#include <orvmath/tolerance.h>

#include <algorithm>
#include <cmath>

namespace ORVMATH {
namespace detail {

// The point epsilon as one length: the larger of its two axes. Radii and
// arc lengths are compared with it where points are compared per axis.
inline double PointEpsilonLength() noexcept { return std::max(CDblPointEpsilon::x(), CDblPointEpsilon::y()); }

// Counter-clockwise turn from `from` to `to`, in [0, 2*pi).
inline double CcwTurn(double from, double to) noexcept {
    const double d = NormalizeAng_Rad(to - from);
    return d < 0.0 ? d + k2Pi : d;
}

// Which of `count` intersection points (0, 1 or 2, parameters t0 and t1
// along the trimmed curve, whose own extent is [0, extent]) a trim moves one
// end to; -1 when there is none. Points within the extent win. Of two within
// it, the end takes the larger t and the start the smaller (a tie takes
// point 1). Of two outside, the end takes the larger |t| (point 0 only when
// |t0| > |t1|) and the start the smaller (point 0 only when |t0| < |t1|).
inline int TrimChoice(int count, double t0, double t1, double extent, bool atEnd) noexcept {
    if (count < 2) return count - 1;
    const bool in0 = t0 >= 0.0 && t0 <= extent, in1 = t1 >= 0.0 && t1 <= extent;
    if (atEnd) {
        if (in0) return in1 && t0 <= t1 ? 1 : 0;
        return in1 || std::fabs(t0) <= std::fabs(t1) ? 1 : 0;
    }
    if (in0 && in1) return t0 < t1 ? 0 : 1;
    if (in0 || in1) return in0 ? 0 : 1;
    return std::fabs(t1) > std::fabs(t0) ? 0 : 1;
}

// Sorts the points by key(point), ascending, and drops a point equal
// (CDblPoint ==) to the one before it, so that a touching point counts once.
template <class Key>
void OrderPoints(CDblPointArray& pts, Key key) {
    CDblPoint* p = pts.GetData();
    std::stable_sort(p, p + pts.GetSize(), [&key](const CDblPoint& a, const CDblPoint& b) { return key(a) < key(b); });
    for (INT_PTR k = pts.GetSize() - 1; k > 0; --k)
        if (pts[k] == pts[k - 1]) pts.RemoveAt(k);
}

}  // namespace detail
}  // namespace ORVMATH
