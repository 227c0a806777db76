#include <orvmath/linalg.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <utility>

namespace ORVMATH {

namespace {

constexpr long kSpare = 1;  // spare element in front of every block (the book's NR_END)
constexpr std::size_t kTooMany = SIZE_MAX;

// Elements of the block behind indices lo .. hi: hi - lo + 1 plus the spare.
// kTooMany when that is negative (hi < lo - 2) or does not fit in size_t.
std::size_t BlockCount(long lo, long hi) noexcept {
    const unsigned long ulo = static_cast<unsigned long>(lo), uhi = static_cast<unsigned long>(hi);
    if (hi < lo) return ulo - uhi <= 2 ? static_cast<std::size_t>(2 - (ulo - uhi)) : kTooMany;
    return uhi - ulo >= kTooMany - 2 ? kTooMany : static_cast<std::size_t>(uhi - ulo) + 2;
}

// count elements of T from malloc. A count that does not fit, or malloc
// failing, ends the process with `failure`.
template <class T>
T* AllocateBlock(std::size_t count, const char* failure) {
    if (count > SIZE_MAX / sizeof(T)) nrerror(failure);
    void* p = std::malloc(count == 0 ? 1 : count * sizeof(T));
    if (p == nullptr) nrerror(failure);
    return static_cast<T*>(p);
}

// p shifted by n elements, n taken modulo 2^N. The index-ranged pointers lie
// before their block whenever the lower index exceeds the spare (nl > 1),
// and pointer arithmetic that leaves an object is undefined, so the shift is
// done on the address as an unsigned (wrapping, hence well defined) integer.
// Every element actually indexed, nl .. nh, lies inside the block, and the
// opposite shift restores exactly the address malloc returned.
template <class T>
T* Shift(T* p, std::uintptr_t n) noexcept {
    return reinterpret_cast<T*>(reinterpret_cast<std::uintptr_t>(p) + n * sizeof(T));
}

std::uintptr_t AsOffset(long n) noexcept { return static_cast<std::uintptr_t>(n); }

template <class T>
T* RangedVector(long nl, long nh, const char* failure) {
    return Shift(AllocateBlock<T>(BlockCount(nl, nh), failure), AsOffset(kSpare) - AsOffset(nl));
}

template <class T>
void FreeRangedVector(T* v, long nl) noexcept {
    std::free(Shift(v, AsOffset(nl) - AsOffset(kSpare)));
}

}  // namespace

void nrerror(const char* text) {
    std::fprintf(stderr, "Numerical Recipes run-time error...\n");
    std::fprintf(stderr, "%s\n", text);
    std::fprintf(stderr, "...now exiting to system...\n");
    std::exit(1);
}

double* dvector(long nl, long nh) { return RangedVector<double>(nl, nh, "allocation failure in dvector()"); }
int* ivector(long nl, long nh) { return RangedVector<int>(nl, nh, "allocation failure in ivector()"); }
void free_dvector(double* v, long nl, long /*nh*/) { FreeRangedVector(v, nl); }
void free_ivector(int* v, long nl, long /*nh*/) { FreeRangedVector(v, nl); }

double** dmatrix(long nrl, long nrh, long ncl, long nch) {
    const char* const failure1 = "allocation failure 1 in dmatrix()";
    const char* const failure2 = "allocation failure 2 in dmatrix()";
    const std::size_t rowBlock = BlockCount(nrl, nrh), colBlock = BlockCount(ncl, nch);
    if (rowBlock == kTooMany || rowBlock == 0) nrerror(failure1);
    if (colBlock == kTooMany || colBlock == 0) nrerror(failure2);
    const std::size_t nrow = rowBlock - 1, ncol = colBlock - 1;
    // At least one row pointer beyond the spare, so that m[nrl] can always
    // hold the data block for free_dmatrix, even with no rows.
    double** m = Shift(AllocateBlock<double*>(nrow == 0 ? 2 : rowBlock, failure1), AsOffset(kSpare) - AsOffset(nrl));
    const std::size_t cells = nrow != 0 && ncol > (kTooMany - 1) / nrow ? kTooMany : nrow * ncol + 1;
    double* data = AllocateBlock<double>(cells, failure2);
    // Row nrl starts at data + 1 - ncl and every following row ncol elements
    // further on: the rows are contiguous.
    m[nrl] = Shift(data, AsOffset(kSpare) - AsOffset(ncl));
    for (std::size_t r = 1; r < nrow; ++r) m[nrl + static_cast<long>(r)] = Shift(m[nrl], r * ncol);
    return m;
}

void free_dmatrix(double** m, long nrl, long /*nrh*/, long ncl, long /*nch*/) {
    FreeRangedVector(m[nrl], ncl);
    FreeRangedVector(m, nrl);
}

namespace {

// One Gauss-Jordan step on pivot (col, col): scale the pivot row of a and b
// by 1/pivot, then clear column col from every other row. a[col][col] is set
// to 1.0 before scaling so that a ends up holding the inverse in place.
void EliminateColumn(double** a, int n, double** b, int m, int col) {
    if (a[col][col] == 0.0) nrerror("gaussj: Singular Matrix-2");
    const double pivinv = 1.0 / a[col][col];
    a[col][col] = 1.0;
    for (int l = 1; l <= n; ++l) a[col][l] *= pivinv;
    for (int l = 1; l <= m; ++l) b[col][l] *= pivinv;
    for (int ll = 1; ll <= n; ++ll) {
        if (ll == col) continue;
        const double dum = a[ll][col];
        a[ll][col] = 0.0;
        for (int l = 1; l <= n; ++l) a[ll][l] -= a[col][l] * dum;
        for (int l = 1; l <= m; ++l) b[ll][l] -= b[col][l] * dum;
    }
}

}  // namespace

void gaussj(double** a, int n, double** b, int m) {
    // n < 1 allocates empty work arrays and does nothing else.
    const long top = n < 1 ? 0 : n;
    int* indxc = ivector(1, top);
    int* indxr = ivector(1, top);
    int* ipiv = ivector(1, top);
    for (int j = 1; j <= n; ++j) ipiv[j] = 0;
    // irow/icol keep their previous values when a round finds no candidate
    // (only NaN elements left); the next round then reports Singular Matrix-1.
    // They start at 1 so that even a first such round stays in range.
    int irow = 1, icol = 1;
    for (int i = 1; i <= n; ++i) {
        double big = 0.0;
        for (int j = 1; j <= n; ++j) {
            if (ipiv[j] == 1) continue;
            for (int k = 1; k <= n; ++k) {
                if (ipiv[k] == 0) {
                    // >=: a later element of equal size replaces an earlier
                    // one. Kept: results of existing callers depend on the
                    // pivot order this gives.
                    if (std::fabs(a[j][k]) >= big) {
                        big = std::fabs(a[j][k]);
                        irow = j;
                        icol = k;
                    }
                } else if (ipiv[k] > 1) {
                    nrerror("gaussj: Singular Matrix-1");
                }
            }
        }
        ++ipiv[icol];
        if (irow != icol) {
            for (int l = 1; l <= n; ++l) std::swap(a[irow][l], a[icol][l]);
            for (int l = 1; l <= m; ++l) std::swap(b[irow][l], b[icol][l]);
        }
        indxr[i] = irow;
        indxc[i] = icol;
        EliminateColumn(a, n, b, m, icol);
    }
    // Undo the column interchanges in reverse order.
    for (int l = n; l >= 1; --l) {
        if (indxr[l] == indxc[l]) continue;
        for (int k = 1; k <= n; ++k) std::swap(a[k][indxr[l]], a[k][indxc[l]]);
    }
    free_ivector(ipiv, 1, top);
    free_ivector(indxr, 1, top);
    free_ivector(indxc, 1, top);
}

void MulMat(int m, int n, int p, double* A, double* B, double* C) {
    for (int i = 0; i < m; ++i) {
        for (int j = 0; j < p; ++j) {
            double s = 0.0;
            for (int k = 0; k < n; ++k) s += A[i * n + k] * B[k * p + j];
            C[i * p + j] = s;
        }
    }
}

void LMInvert(int n, double* L, double* Linv) {
    for (int i = 0; i < n; ++i) Linv[i * n + i] = 1.0 / L[i * n + i];
    for (int j = 0; j < n - 1; ++j) {
        for (int i = j + 1; i < n; ++i) {
            double s = 0.0;
            for (int k = j; k < i; ++k) s += L[i * n + k] * Linv[k * n + j];
            Linv[i * n + j] = -s / L[i * n + i];
        }
    }
}

}  // namespace ORVMATH
