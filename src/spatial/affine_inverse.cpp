#include "affine_inverse.h"

#include <cmath>
#include <utility>

namespace ORVMATH {
namespace detail {

namespace {

// The 3x3 block is worked on in a local array indexed only by constants
// (every loop below has a fixed trip count and row and column exchanges
// branch to constant indices), so that the compiler keeps it in registers
// instead of reading and writing memory at each step. The operations and
// their order are those of plain Gauss-Jordan on the block in place.
using Block = double[3][3];

// Interchanges rows (columns when Columns) R and S.
template <bool Columns, int R, int S>
inline void Swap(Block& a) noexcept {
    for (int k = 0; k < 3; ++k) {
        if constexpr (Columns)
            std::swap(a[k][R], a[k][S]);
        else
            std::swap(a[R][k], a[S][k]);
    }
}

// Interchanges rows (columns when Columns) K and p, K <= p <= 2.
template <bool Columns, int K>
inline void Exchange(Block& a, int p) noexcept {
    if constexpr (K + 1 < 3)
        if (p == K + 1) Swap<Columns, K, K + 1>(a);
    if constexpr (K + 2 < 3)
        if (p == K + 2) Swap<Columns, K, K + 2>(a);
}

// Row of the first largest |a(i, K)| for i in K..2 (a later row must be
// strictly larger to win).
template <int K>
inline int PivotRow(const Block& a) noexcept {
    int row = K;
    double best = std::fabs(a[K][K]);
    for (int i = K + 1; i < 3; ++i) {
        const double v = std::fabs(a[i][K]);
        if (v > best) {
            row = i;
            best = v;
        }
    }
    return row;
}

// One elimination step on column K; false when its pivot is within eps of 0.
template <int K>
inline bool Eliminate(Block& a, double eps, int& pivotRow) noexcept {
    const int p = PivotRow<K>(a);
    const double pivot = p == K ? a[K][K] : (p == K + 1 ? a[(K + 1) % 3][K] : a[(K + 2) % 3][K]);
    if (eps >= std::fabs(pivot)) return false;
    Exchange<false, K>(a, p);
    pivotRow = p;
    a[K][K] = 1.0 / pivot;
    for (int i = 0; i < 3; ++i) {
        if (i == K) continue;
        a[i][K] = -a[i][K] * a[K][K];
        for (int j = 0; j < 3; ++j)
            if (j != K) a[i][j] += a[K][j] * a[i][K];
    }
    for (int j = 0; j < 3; ++j)
        if (j != K) a[K][j] *= a[K][K];
    return true;
}

void Store(const Block& a, double* m) noexcept {
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j) m[4 * i + j] = a[i][j];
}

}  // namespace

bool InvertAffineRowMajor(double* m, double eps) noexcept {
    const double t[3] = {m[12], m[13], m[14]};
    Block a;
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j) a[i][j] = m[4 * i + j];
    int pivotRow[3] = {0, 1, 2};
    const bool ok = Eliminate<0>(a, eps, pivotRow[0]) && Eliminate<1>(a, eps, pivotRow[1]) &&
                    Eliminate<2>(a, eps, pivotRow[2]);
    if (ok) {
        // Row interchanges come back as column interchanges, last first; the
        // last column is never interchanged.
        Exchange<true, 1>(a, pivotRow[1]);
        Exchange<true, 0>(a, pivotRow[0]);
    }
    Store(a, m);
    if (!ok) return false;
    for (int j = 0; j < 3; ++j) m[12 + j] = -(t[0] * a[0][j] + t[1] * a[1][j] + t[2] * a[2][j]);
    return true;
}

}  // namespace detail
}  // namespace ORVMATH
