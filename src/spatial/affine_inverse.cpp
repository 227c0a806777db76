#include "affine_inverse.h"

#include <cmath>
#include <utility>

namespace ORVMATH {
namespace detail {

namespace {

inline double& At(double* m, int r, int c) noexcept { return m[4 * r + c]; }

// Row of the first largest |m(i, k)| for i in k..2 (a later row must be
// strictly larger to win).
int PivotRow(double* m, int k) noexcept {
    int row = k;
    for (int i = k + 1; i < 3; ++i)
        if (std::fabs(At(m, i, k)) > std::fabs(At(m, row, k))) row = i;
    return row;
}

}  // namespace

bool InvertAffineRowMajor(double* m, double eps) noexcept {
    const double t[3] = {At(m, 3, 0), At(m, 3, 1), At(m, 3, 2)};
    int pivotRow[3];
    for (int k = 0; k < 3; ++k) {
        const int p = PivotRow(m, k);
        const double pivot = At(m, p, k);
        if (eps >= std::fabs(pivot)) return false;
        if (p != k)
            for (int j = 0; j < 3; ++j) std::swap(At(m, k, j), At(m, p, j));
        pivotRow[k] = p;
        At(m, k, k) = 1.0 / pivot;
        for (int i = 0; i < 3; ++i) {
            if (i == k) continue;
            At(m, i, k) = -At(m, i, k) * At(m, k, k);
            for (int j = 0; j < 3; ++j)
                if (j != k) At(m, i, j) += At(m, k, j) * At(m, i, k);
        }
        for (int j = 0; j < 3; ++j)
            if (j != k) At(m, k, j) *= At(m, k, k);
    }
    // Row interchanges come back as column interchanges, last first; the last
    // column is never interchanged.
    for (int k = 1; k >= 0; --k)
        if (pivotRow[k] != k)
            for (int i = 0; i < 3; ++i) std::swap(At(m, i, pivotRow[k]), At(m, i, k));
    for (int j = 0; j < 3; ++j) At(m, 3, j) = -(t[0] * At(m, 0, j) + t[1] * At(m, 1, j) + t[2] * At(m, 2, j));
    return true;
}

}  // namespace detail
}  // namespace ORVMATH
