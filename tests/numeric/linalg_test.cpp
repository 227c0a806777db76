#include <orvmath/linalg.h>

#include <gtest/gtest.h>

#include <climits>
#include <cstdint>
#include <cstdlib>
#include <functional>
#include <random>
#include <vector>

using namespace ORVMATH;

namespace {
// A 1-based n x c matrix from dmatrix, filled row by row.
struct Mat {
    long n, c;
    double** m;
    Mat(long rows, long cols, std::vector<double> v = {}) : n(rows), c(cols), m(dmatrix(1, rows, 1, cols)) {
        for (long i = 0; i < n * c; ++i) m[1 + i / c][1 + i % c] = v.empty() ? 0.0 : v[i];
    }
    ~Mat() { free_dmatrix(m, 1, n, 1, c); }
};

void ExpectFatal(const std::function<void()>& f, const std::string& text) {
    EXPECT_EXIT(f(), ::testing::ExitedWithCode(1),
                "^Numerical Recipes run-time error\\.\\.\\.\n" + text + "\n\\.\\.\\.now exiting to system\\.\\.\\.\n$");
}

void Solve(std::vector<double> a, std::vector<double> b = {0, 0}) {
    Mat A(static_cast<long>(b.size()), static_cast<long>(b.size()), a), B(static_cast<long>(b.size()), 1, b);
    gaussj(A.m, static_cast<int>(b.size()), B.m, 1);
}

std::vector<double> V(const double* p, int n) { return std::vector<double>(p, p + n); }
}  // namespace

TEST(RangedAlloc, RangesSpareAndContiguousRows) {
    // ASan reports any access outside a block and a free at a wrong address.
    for (auto [lo, hi] : {std::pair<long, long>{1, 3}, {0, 0}, {-2, 2}, {5, 7}, {1, 0}}) {
        double* v = dvector(lo, hi);
        int* iv = ivector(lo, hi);
        for (long i = lo - 1; i <= hi; ++i) v[i] = iv[i] = static_cast<int>(i);  // lo - 1: the spare
        for (long i = lo - 1; i <= hi; ++i) EXPECT_EQ(v[i], iv[i]);
        free_dvector(v, lo, hi);
        free_ivector(iv, lo, hi);
        double** w = dmatrix(lo, lo + 2, hi, hi + 1);  // 3 x 2, rows back to back
        for (long r = lo; r <= lo + 2; ++r) w[r][hi] = w[r][hi + 1] = 1.0;
        EXPECT_EQ(&w[lo + 1][hi], &w[lo][hi + 1] + 1);
        EXPECT_EQ(&w[lo + 2][hi + 1], &w[lo][hi] + 5);
        free_dmatrix(w, lo, lo + 2, hi, hi + 1);
    }
}

TEST(NrError, FatalReportsEndTheProcessWithStatusOne) {
    ExpectFatal([] { nrerror("some text"); }, "some text");
    // Negative blocks fail on every host.
    ExpectFatal([] { dvector(5, 2); }, "allocation failure in dvector\\(\\)");
    ExpectFatal([] { ivector(5, 2); }, "allocation failure in ivector\\(\\)");
    ExpectFatal([] { dmatrix(5, 2, 1, 2); }, "allocation failure 1 in dmatrix\\(\\)");
    ExpectFatal([] { dmatrix(1, 2, 5, 2); }, "allocation failure 2 in dmatrix\\(\\)");
    // Blocks larger than the address space, where a long can ask for one: a 64-bit long on a 64-bit host, or any
    // 32-bit host. With a 32-bit long on a 64-bit host (Windows) the largest range is a few GiB, which may succeed.
    if (static_cast<unsigned long long>(LONG_MAX) < SIZE_MAX / sizeof(double)) return;
    ExpectFatal([] { dvector(1, LONG_MAX); }, "allocation failure in dvector\\(\\)");
    ExpectFatal([] { ivector(0, LONG_MAX); }, "allocation failure in ivector\\(\\)");
    ExpectFatal([] { dmatrix(1, LONG_MAX, 1, 2); }, "allocation failure 1 in dmatrix\\(\\)");
    ExpectFatal([] { dmatrix(1, 2, 1, LONG_MAX); }, "allocation failure 2 in dmatrix\\(\\)");
}

TEST(Gaussj, InvertsAKnownMatrixAndARandomSystemMultipliesBack) {
    // det = 1(0 - 24) - 2(0 - 20) + 3(0 - 5) = 1, so the inverse is the integer adjugate; b = A (1, 2, 3). Pivots move
    // across rows and columns.
    Mat c(3, 3, {1, 2, 3, 0, 1, 4, 5, 6, 0}), d(3, 1, {14, 14, 17});
    const double inv[9] = {-24, 18, 5, 20, -15, -4, -5, 4, 1};
    gaussj(c.m, 3, d.m, 1);
    for (int i = 0; i < 9; ++i) EXPECT_NEAR(c.m[1 + i / 3][1 + i % 3], inv[i], 1e-12);
    for (int i = 1; i <= 3; ++i) EXPECT_NEAR(d.m[i][1], i, 1e-12);

    const int n = 6, m = 2;  // diagonally dominant: well conditioned
    std::mt19937 gen(12345);
    std::uniform_real_distribution<double> u(-1.0, 1.0);
    Mat a(n, n), b(n, m);
    std::vector<double> a0(n * n), b0(n * m);
    for (int i = 0; i < n * n; ++i) a0[i] = a.m[1 + i / n][1 + i % n] = u(gen) + (i % (n + 1) == 0 ? n : 0);
    for (int i = 0; i < n * m; ++i) b0[i] = b.m[1 + i / m][1 + i % m] = u(gen);
    gaussj(a.m, n, b.m, m);
    for (int i = 1; i <= n; ++i) {
        for (int j = 1; j <= n + m; ++j) {  // A0 * [A^-1 | x] must give [I | b]
            double s = 0;
            for (int k = 1; k <= n; ++k) s += a0[(i - 1) * n + k - 1] * (j <= n ? a.m[k][j] : b.m[k][j - n]);
            EXPECT_NEAR(s, j <= n ? (i == j ? 1.0 : 0.0) : b0[(i - 1) * m + j - n - 1], 1e-10);
        }
    }
}

TEST(Gaussj, EqualPivotCandidatesTakeTheLastOneAndBothSingularReports) {
    // Column 1 holds two equal 49s. Pivoting on one row reduces the other row's second element d by fl(fl(e * fl(1/49))
    // * 49), e the pivot row's second element; for e = 1 that is fl(49 * fl(1/49)) = u = 1 - 2^-53. So rows (49, 1),
    // (49, u) reach an exact 0 pivot only if the first row is taken.
    const double u = 1.0 - 0x1p-53, q = std::nan("");
    const char* const singular2 = "gaussj: Singular Matrix-2";
    EXPECT_EXIT((Solve({49, 1, 49, u}), std::exit(0)), ::testing::ExitedWithCode(0), "");
    ExpectFatal([u] { Solve({49, u, 49, 1}); }, singular2);
    // A zero candidate still qualifies (>= against a start of 0.0).
    ExpectFatal([] { Solve({1, 2, 2, 4}); }, singular2);
    ExpectFatal([] { Solve({0, 1, 0, 2}); }, singular2);
    // A NaN block never beats the start, so the last pivot column is picked again.
    ExpectFatal([q] { Solve({1, 0, 0, 0, q, q, 0, q, q}, {0, 0, 0}); }, "gaussj: Singular Matrix-1");
    // n < 1: any access to a or b would crash, an allocation report exit with 1.
    EXPECT_EXIT((gaussj(nullptr, 0, nullptr, 0), gaussj(nullptr, -3, nullptr, 2), std::exit(0)),
                ::testing::ExitedWithCode(0), "");
}

TEST(FlatKernels, MulMatLMInvertAndNormalizeVector) {
    double A[6] = {1, 2, 3, 4, 5, 6}, B[6] = {7, 8, 9, 10, 11, 12}, C[4] = {9, 9, 9, 9};
    MulMat(0, 3, 2, A, B, C);  // writes nothing
    EXPECT_EQ(V(C, 4), std::vector<double>(4, 9.0));
    MulMat(2, 3, 2, A, B, C);  // (1*7 + 2*9 + 3*11, 1*8 + 2*10 + 3*12; 4*7 + 5*9 + 6*11, 4*8 + 5*10 + 6*12)
    EXPECT_EQ(V(C, 4), std::vector<double>({58, 64, 139, 154}));
    MulMat(2, 0, 2, A, B, C);  // an empty sum
    EXPECT_EQ(V(C, 4), std::vector<double>(4, 0.0));
    // [[2,0],[1,4]]^-1 = [[0.5,0],[-1/8,1/4]]; the upper element keeps the caller's 7.
    double L[4] = {2, 0, 1, 4}, Li[4] = {7, 7, 7, 7};
    LMInvert(2, L, Li);
    EXPECT_EQ(V(Li, 4), std::vector<double>({0.5, 7, -0.125, 0.25}));
    // Unit lower: Linv(2,0) = -(3*1 + 4*(-2)) = 5, Linv(2,1) = -4.
    double L3[9] = {1, 0, 0, 2, 1, 0, 3, 4, 1}, L3i[9] = {7, 7, 7, 7, 7, 7, 7, 7, 7};
    LMInvert(3, L3, L3i);
    EXPECT_EQ(V(L3i, 9), std::vector<double>({1, 7, 7, -2, 1, 7, 5, -4, 1}));
    double v[3] = {3, 0, 4}, z[3] = {};
    NormalizeVector(v);
    NormalizeVector(z);
    EXPECT_EQ(V(v, 3), std::vector<double>({0.6, 0, 0.8}));  // 3/5, 4/5
    EXPECT_EQ(V(z, 3), std::vector<double>(3, 0.0));
}
