#include <orvmath/interp.h>

#include <algorithm>
#include <vector>

namespace ORVMATH {

bool CNewtonPWEstimate::SetPoints(const CDblPointArray& pts) {
    if (pts.GetSize() == 0) return false;
    for (INT_PTR i = 1; i < pts.GetSize(); ++i)
        if (!(pts[i].x > pts[i - 1].x)) return false;
    m_pts.Copy(pts);
    return true;
}

bool CNewtonPWEstimate::Estimate(double x, double& y) const {
    const INT_PTR n = m_pts.GetSize();
    if (n == 0) return false;
    const CDblPoint* p = m_pts.GetData();
    const INT_PTR k = std::min<INT_PTR>(m_k, n);
    const INT_PTR j = std::upper_bound(p, p + n, x, [](double v, const CDblPoint& q) { return v < q.x; }) - p;
    const INT_PTR start = std::clamp<INT_PTR>(j - (k + 1) / 2, 0, n - k);
    p += start;
    // In place: after pass m, d[i] holds f[x_(i-m) .. x_i].
    std::vector<double> d(static_cast<std::size_t>(k));
    for (INT_PTR i = 0; i < k; ++i) d[static_cast<std::size_t>(i)] = p[i].y;
    for (INT_PTR m = 1; m < k; ++m)
        for (INT_PTR i = k - 1; i >= m; --i)
            d[static_cast<std::size_t>(i)] =
                (d[static_cast<std::size_t>(i)] - d[static_cast<std::size_t>(i - 1)]) / (p[i].x - p[i - m].x);
    double v = d[static_cast<std::size_t>(k - 1)];
    for (INT_PTR i = k - 2; i >= 0; --i) v = v * (x - p[i].x) + d[static_cast<std::size_t>(i)];
    y = v;
    return true;
}

}  // namespace ORVMATH
