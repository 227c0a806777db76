// Least-squares fitting of a straight line y = a + b*x through points.
#pragma once

#include <orvmath/containers.h>
#include <orvmath/export.h>

namespace ORVMATH {

// Fits y = intercept + slope * x to `pts`, minimising the sum of squared
// vertical deviations. `residual` receives the root mean square of those
// deviations, sqrt(sum (y_i - intercept - slope*x_i)^2 / n) (0 for points on
// the line). Sums are taken about the mean point, so large offsets cost no
// digits.
// false, with the three outputs unchanged, when there are fewer than two
// points or all x are equal (the line would be vertical, not a function of x).
// The x spread is compared exactly against 0: no tolerance.
ORVMATH_API bool linearFit(const CDblPointArray& pts, double& intercept, double& slope, double& residual);

// Value at x of the line linearFit gives for `pts` (the fitted line's
// estimate of y at x, inside or outside the points' range). false, with y
// unchanged, when linearFit fails.
ORVMATH_API bool getFLCValue(const CDblPointArray& pts, double x, double& y);

}  // namespace ORVMATH
