#include <orvmath/fit.h>

#include <cmath>

namespace ORVMATH {

bool linearFit(const CDblPointArray& pts, double& intercept, double& slope, double& residual) {
    const INT_PTR n = pts.GetSize();
    if (n < 2) return false;
    double mx = 0.0, my = 0.0;
    for (INT_PTR i = 0; i < n; ++i) mx += pts[i].x, my += pts[i].y;
    mx /= static_cast<double>(n);
    my /= static_cast<double>(n);
    double sxx = 0.0, sxy = 0.0;
    for (INT_PTR i = 0; i < n; ++i) {
        const double dx = pts[i].x - mx;
        sxx += dx * dx;
        sxy += dx * (pts[i].y - my);
    }
    if (sxx == 0.0) return false;
    const double b = sxy / sxx, a = my - b * mx;
    double ss = 0.0;
    for (INT_PTR i = 0; i < n; ++i) {
        const double r = (pts[i].y - my) - b * (pts[i].x - mx);  // about the mean: no cancellation
        ss += r * r;
    }
    intercept = a;
    slope = b;
    residual = std::sqrt(ss / static_cast<double>(n));
    return true;
}

bool getFLCValue(const CDblPointArray& pts, double x, double& y) {
    double a, b, r;
    if (!linearFit(pts, a, b, r)) return false;
    y = a + b * x;
    return true;
}

}  // namespace ORVMATH
