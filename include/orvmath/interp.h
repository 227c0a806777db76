// Piecewise Newton interpolation: the value at x of the polynomial through
// the k nodes nearest x, in Newton's divided-difference form.
#pragma once

#include <orvmath/containers.h>
#include <orvmath/export.h>

namespace ORVMATH {

// Nodes (x_i, y_i) with strictly increasing x, and a window of k nodes.
// Estimate(x) takes the k consecutive nodes starting at
//   clamp(j - (k + 1) / 2, 0, n - k),   j = number of nodes with x_i <= x,
// that is k/2 nodes on each side of x for even k, one more at or below x for
// odd k, and the end windows outside the nodes' range (extrapolation). The
// divided differences of that window give the polynomial of degree k - 1
// through it, evaluated at x by nested multiplication; so data from a
// polynomial of degree <= k - 1 is reproduced up to rounding. A window larger
// than the node count uses all nodes; k < 1 is taken as 1 (the node at or
// below x, or the first one).
class ORVMATH_API CNewtonPWEstimate {
public:
    explicit CNewtonPWEstimate(int window = 4) noexcept : m_k(window < 1 ? 1 : window) {}

    // Replaces the nodes. false, keeping the previous nodes, when `pts` is
    // empty or its x are not strictly increasing (NaN included).
    bool SetPoints(const CDblPointArray& pts);
    int GetWindow() const noexcept { return m_k; }
    INT_PTR GetCount() const noexcept { return m_pts.GetSize(); }

    // y = the window's polynomial at x. false (y unchanged) when there are no nodes.
    bool Estimate(double x, double& y) const;

private:
    int m_k;
    CDblPointArray m_pts;
};

}  // namespace ORVMATH
