#include <orvmath/linalg.h>

#include <gtest/gtest.h>

#include <climits>
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

const char* const kSingular2 = "gaussj: Singular Matrix-2";

void ExpectFatal(const std::function<void()>& f, const std::string& text) {
    EXPECT_EXIT(f(), ::testing::ExitedWithCode(1),
                "^Numerical Recipes run-time error\\.\\.\\.\n" + text + "\n\\.\\.\\.now exiting to system\\.\\.\\.\n$");
}

void Solve(std::vector<double> a, std::vector<double> b = {0, 0}) {
    const long n = static_cast<long>(b.size());
    Mat A(n, n, a), B(n, 1, b);
    gaussj(A.m, static_cast<int>(n), B.m, 1);
}

}  // namespace

TEST(RangedAlloc, EveryIndexOfTheRangeAndTheSpareAreInsideTheBlock) {
    // ASan reports any access outside the block and a free at a wrong address.
    for (auto [nl, nh] : {std::pair<long, long>{1, 3}, {0, 0}, {-2, 2}, {5, 7}, {1, 0}}) {
        double* v = dvector(nl, nh);
        int* iv = ivector(nl, nh);
        for (long i = nl - 1; i <= nh; ++i) v[i] = iv[i] = static_cast<int>(i);
        for (long i = nl - 1; i <= nh; ++i) EXPECT_EQ(v[i], iv[i]);
        free_dvector(v, nl, nh);
        free_ivector(iv, nl, nh);
    }
}

TEST(RangedAlloc, MatrixRowsAreContiguous) {
    double** m = dmatrix(1, 2, 1, 3);
    EXPECT_EQ(&m[2][1], &m[1][3] + 1);
    free_dmatrix(m, 1, 2, 1, 3);
    m = dmatrix(4, 6, 3, 4);  // both ranges start beyond the spare
    for (long i = 4; i <= 6; ++i)
        for (long j = 3; j <= 4; ++j) m[i][j] = 1.0;
    EXPECT_EQ(&m[6][3], &m[4][3] + 4);
    free_dmatrix(m, 4, 6, 3, 4);
}

TEST(NrError, FatalReportsEndTheProcessWithStatusOne) {
    ExpectFatal([] { nrerror("some text"); }, "some text");
    ExpectFatal([] { dvector(1, LONG_MAX); }, "allocation failure in dvector\\(\\)");
    ExpectFatal([] { dvector(5, 2); }, "allocation failure in dvector\\(\\)");  // a negative block
    ExpectFatal([] { ivector(0, LONG_MAX); }, "allocation failure in ivector\\(\\)");
    ExpectFatal([] { dmatrix(1, LONG_MAX, 1, 2); }, "allocation failure 1 in dmatrix\\(\\)");
    ExpectFatal([] { dmatrix(1, 2, 1, LONG_MAX); }, "allocation failure 2 in dmatrix\\(\\)");
}

TEST(Gaussj, InvertsAndSolvesKnownSystems) {
    Mat a(2, 2, {2, 0, 0, 4}), b(2, 1, {2, 8});
    gaussj(a.m, 2, b.m, 1);
    EXPECT_EQ(std::vector<double>({a.m[1][1], a.m[1][2], a.m[2][1], a.m[2][2]}), std::vector<double>({0.5, 0, 0, 0.25}));
    EXPECT_EQ(b.m[1][1], 1.0);
    EXPECT_EQ(b.m[2][1], 2.0);
    // det = 1(0 - 24) - 2(0 - 20) + 3(0 - 5) = 1, so the inverse is the integer
    // adjugate; b = A (1, 2, 3). Pivots move across rows and columns.
    Mat c(3, 3, {1, 2, 3, 0, 1, 4, 5, 6, 0}), d(3, 1, {14, 14, 17});
    const double inv[9] = {-24, 18, 5, 20, -15, -4, -5, 4, 1};
    gaussj(c.m, 3, d.m, 1);
    for (int i = 0; i < 9; ++i) EXPECT_NEAR(c.m[1 + i / 3][1 + i % 3], inv[i], 1e-12);
    for (int i = 1; i <= 3; ++i) EXPECT_NEAR(d.m[i][1], i, 1e-12);
}

TEST(Gaussj, RandomSystemMultipliesBack) {
    const int n = 6, m = 2;
    std::mt19937 gen(12345);
    std::uniform_real_distribution<double> u(-1.0, 1.0);
    Mat a(n, n), b(n, m);
    std::vector<double> a0(n * n), b0(n * m);
    for (int i = 0; i < n * n; ++i) a0[i] = a.m[1 + i / n][1 + i % n] = u(gen) + (i % (n + 1) == 0 ? n : 0);
    for (int i = 0; i < n * m; ++i) b0[i] = b.m[1 + i / m][1 + i % m] = u(gen);
    gaussj(a.m, n, b.m, m);
    for (int i = 1; i <= n; ++i) {
        for (int j = 1; j <= n; ++j) {
            double s = 0;  // (A0 * A^-1)(i, j) must be the identity
            for (int k = 1; k <= n; ++k) s += a0[(i - 1) * n + k - 1] * a.m[k][j];
            EXPECT_NEAR(s, i == j ? 1.0 : 0.0, 1e-10);
        }
        for (int j = 1; j <= m; ++j) {
            double s = 0;  // (A0 * x)(i, j) must give b back
            for (int k = 1; k <= n; ++k) s += a0[(i - 1) * n + k - 1] * b.m[k][j];
            EXPECT_NEAR(s, b0[(i - 1) * m + j - 1], 1e-10);
        }
    }
}

TEST(Gaussj, EqualPivotCandidatesTakeTheLastOne) {
    // Both 49s of column 1 tie; the pivot row is swapped to row 1 and the other
    // row's second element d becomes d - fl(49 * fl(1/49) * e), e the pivot
    // row's second element. 49 * fl(1/49) rounds to u = 1 - 2^-53, so with the
    // (1, u) split that is exactly 0 only when the pivot row holds e = 1 and
    // d = u: the later row must be the pivot row.
    const double u = 1.0 - 0x1p-53;
    EXPECT_EXIT((Solve({49, 1, 49, u}), std::exit(0)), ::testing::ExitedWithCode(0), "");
    ExpectFatal([u] { Solve({49, u, 49, 1}); }, kSingular2);
    // A zero candidate still qualifies (>= against a start of 0.0).
    ExpectFatal([] { Solve({1, 2, 2, 4}); }, kSingular2);
    ExpectFatal([] { Solve({0, 1, 0, 2}); }, kSingular2);
}

TEST(Gaussj, NanBlockReusesTheLastPivotAndReportsSingular1) {
    const double q = std::nan("");
    ExpectFatal([q] { Solve({1, 0, 0, 0, q, q, 0, q, q}, {0, 0, 0}); }, "gaussj: Singular Matrix-1");
}

TEST(Gaussj, EmptySystemTouchesNothing) {
    // Any access to a or b would crash; an allocation report would exit with 1.
    EXPECT_EXIT((gaussj(nullptr, 0, nullptr, 0), gaussj(nullptr, -3, nullptr, 2), std::exit(0)),
                ::testing::ExitedWithCode(0), "");
}

TEST(FlatKernels, MulMatAndLMInvert) {
    double A[6] = {1, 2, 3, 4, 5, 6}, B[6] = {7, 8, 9, 10, 11, 12}, C[4] = {9, 9, 9, 9};
    MulMat(2, 3, 2, A, B, C);  // (1*7 + 2*9 + 3*11, 1*8 + 2*10 + 3*12; 4*7 + 5*9 + 6*11, 4*8 + 5*10 + 6*12)
    EXPECT_EQ(std::vector<double>(C, C + 4), std::vector<double>({58, 64, 139, 154}));
    MulMat(2, 0, 2, A, B, C);
    EXPECT_EQ(std::vector<double>(C, C + 4), std::vector<double>(4, 0.0));
    C[0] = 5;
    MulMat(0, 3, 2, A, B, C);
    EXPECT_EQ(C[0], 5.0);
    // [[2,0],[1,4]]^-1 = [[0.5,0],[-1/8,1/4]]; the upper element keeps the caller's 7.
    double L[4] = {2, 0, 1, 4}, Li[4] = {7, 7, 7, 7};
    LMInvert(2, L, Li);
    EXPECT_EQ(std::vector<double>(Li, Li + 4), std::vector<double>({0.5, 7, -0.125, 0.25}));
    // Unit lower: Linv(2,0) = -(3*1 + 4*(-2)) = 5, Linv(2,1) = -4.
    double L3[9] = {1, 0, 0, 2, 1, 0, 3, 4, 1}, L3i[9] = {7, 7, 7, 7, 7, 7, 7, 7, 7};
    LMInvert(3, L3, L3i);
    EXPECT_EQ(std::vector<double>(L3i, L3i + 9), std::vector<double>({1, 7, 7, -2, 1, 7, 5, -4, 1}));
}

TEST(VectorKernels, ProductsAndNormalize) {
    double a[3] = {1, 2, 3}, b[3] = {4, 5, 6}, c[3];
    EXPECT_EQ(DotProduct(a, b, 3), 32.0);  // 4 + 10 + 18
    EXPECT_EQ(DotProduct(a, b, 0), 0.0);
    EXPECT_EQ(CrossProduct(a, b, c), c);  // (2*6 - 3*5, 3*4 - 1*6, 1*5 - 2*4)
    EXPECT_EQ(std::vector<double>(c, c + 3), std::vector<double>({-3, 6, -3}));
    double x[2] = {1, 0}, y[2] = {0, 1};
    EXPECT_EQ(CrossProduct(x, y), 1.0);
    EXPECT_EQ(CrossProduct(y, x), -1.0);
    double v[3] = {3, 0, 4}, z[3] = {0, 0, 0};
    NormalizeVector(v);
    NormalizeVector(z);
    EXPECT_EQ(std::vector<double>(v, v + 3), std::vector<double>({0.6, 0, 0.8}));
    EXPECT_EQ(std::vector<double>(z, z + 3), std::vector<double>(3, 0.0));
}
