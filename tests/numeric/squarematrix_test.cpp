#include <orvmath/squarematrix.h>

#include <gtest/gtest.h>

#include <cmath>
#include <numeric>

using namespace ORVMATH;

static void ExpectNear(const CSquareMatrix& got, const CSquareMatrix& want, double tol) {
    ASSERT_EQ(got.GetOrder(), want.GetOrder());
    for (int i = 0; i < want.GetOrder(); ++i)
        for (int j = 0; j < want.GetOrder(); ++j) EXPECT_NEAR(got(i, j), want(i, j), tol) << i << "," << j;
}

TEST(CSquareMatrix, DeterminantInverseAndSolveAgainstHandWorkedSystems) {
    const double swap[] = {0, 1, 1, 0};  // needs a row exchange: det -1, its own inverse
    const double a2[] = {4, 3, 6, 3};    // det 12 - 18 = -6; inverse [[3, -3], [-6, 4]] / -6
    const double a2inv[] = {-0.5, 0.5, 1, -4.0 / 6.0};
    const double a3[] = {2, -1, 0, -1, 2, -1, 0, -1, 2};  // det 4; inverse [[3,2,1],[2,4,2],[1,2,3]] / 4
    const double a3inv[] = {0.75, 0.5, 0.25, 0.5, 1, 0.5, 0.25, 0.5, 0.75};
    const double a4[] = {4, 1, 2, 0.5, 1, 3, 0, 1, 2, 0, 5, 1, 0.5, 1, 1, 2};  // det by numpy.linalg.det
    const double seq[] = {1, 2, 3, 4};
    const struct { int n; const double *a, *inv; double det; } rows[] = {
        {2, swap, swap, -1}, {2, a2, a2inv, -6}, {3, a3, a3inv, 4}, {4, a4, nullptr, 62.25}};
    for (const auto& row : rows) {
        const CSquareMatrix m(row.n, row.a), id = CSquareMatrix::Identity(row.n);
        EXPECT_NEAR(m.Determinant(), row.det, 1e-13 * std::fabs(row.det));
        EXPECT_FALSE(m.IsSingular());
        CSquareMatrix inv;
        ASSERT_TRUE(m.Inverse(inv));
        if (row.inv) ExpectNear(inv, CSquareMatrix(row.n, row.inv), 1e-15);
        ExpectNear(m * inv, id, 1e-14);
        CDblArray b, x;  // b = m * (1, 2, .., n) from the rows
        for (int i = 0; i < row.n; ++i) b.Add(std::inner_product(row.a + i * row.n, row.a + i * row.n + row.n, seq, 0.0));
        ASSERT_TRUE(m.Solve(b, x) && x.GetSize() == row.n);
        for (int i = 0; i < row.n; ++i) EXPECT_NEAR(x[i], i + 1, 1e-14);
    }
}

TEST(CSquareMatrix, SingularIsReportedAndLeavesOutputsAlone) {
    const double rank2[] = {1, 2, 3, 4, 5, 6, 7, 8, 9};  // row3 = 2 row2 - row1, pivots leave rounding dust
    const double zero[] = {0, 0, 0, 0};
    for (const CSquareMatrix& m : {CSquareMatrix(3, rank2), CSquareMatrix(2, zero)}) {
        EXPECT_TRUE(m.IsSingular());
        EXPECT_NEAR(m.Determinant(), 0.0, 1e-12);
        CSquareMatrix inv = CSquareMatrix::Identity(1);
        CDblArray b, x;
        b.SetSize(m.GetOrder());
        x.Add(42);
        EXPECT_TRUE(!m.Inverse(inv) && inv.GetOrder() == 1);
        EXPECT_TRUE(!m.Solve(b, x) && x.GetSize() == 1);
    }
    CDblArray x;
    EXPECT_FALSE(CSquareMatrix::Identity(2).Solve(CDblArray(), x));  // b of the wrong length
}

TEST(CSquareMatrix, ProductTransposeAndBadIndex) {
    const double a[] = {1, 2, 3, 4}, b[] = {0, 1, 1, 0};
    const double ab[] = {2, 1, 4, 3}, at[] = {1, 3, 2, 4};  // by hand: columns of a swapped; a mirrored
    ExpectNear(CSquareMatrix(2, a) * CSquareMatrix(2, b), CSquareMatrix(2, ab), 0);
    ExpectNear(CSquareMatrix(2, a).Transpose(), CSquareMatrix(2, at), 0);
    EXPECT_EQ((CSquareMatrix(2) * CSquareMatrix(3)).GetOrder(), 0);  // orders differ: empty
    EXPECT_EQ(CSquareMatrix().Determinant(), 1.0);
    EXPECT_THROW(CSquareMatrix(2)(2, 0), CInvalidArgException);
    EXPECT_THROW(CSquareMatrix(2)(0, -1), CInvalidArgException);
}
