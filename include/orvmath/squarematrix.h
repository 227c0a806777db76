// A dense n x n matrix of doubles with the usual small-system operations:
// determinant, inverse and solution by LU decomposition with partial
// pivoting, transpose, product, identity.
//
// Unlike gaussj (linalg.h), nothing here ends the process: a singular matrix
// is reported by the result (false from Inverse and Solve, true from
// IsSingular) and the outputs are left as they were. Singular means an LU
// pivot of magnitude at most kSingularPivotRel * n * (largest |element|), so
// a matrix singular in exact arithmetic is caught even when rounding leaves a
// tiny pivot. Nothing throws except element access with a bad index.
#pragma once

#include <orvmath/containers.h>
#include <orvmath/export.h>

#include <limits>
#include <vector>

namespace ORVMATH {

// Relative pivot size, per unit of the order n, under which a matrix counts
// as singular (a few rounding units of the largest element).
constexpr double kSingularPivotRel = 4.0 * std::numeric_limits<double>::epsilon();

class ORVMATH_API CSquareMatrix {
public:
    // The empty 0 x 0 matrix (also the result of a product of mismatched orders).
    CSquareMatrix() noexcept = default;
    // n x n zeros; a negative n gives the empty matrix.
    explicit CSquareMatrix(int n);
    // n x n from `rows` (row-major, n * n values).
    CSquareMatrix(int n, const double* rows);
    static CSquareMatrix Identity(int n);

    int GetOrder() const noexcept { return m_n; }
    // Element (row, col), both from 0. Outside 0 .. n-1: CInvalidArgException,
    // like the framework's arrays.
    double& operator()(int row, int col);
    double operator()(int row, int col) const;

    CSquareMatrix Transpose() const;
    // this * o. Orders that differ give the empty matrix.
    CSquareMatrix operator*(const CSquareMatrix& o) const;

    // Product of the LU pivots with the sign of the row exchanges, with no
    // tolerance (a singular matrix may give a tiny nonzero value). The empty
    // matrix has determinant 1.
    double Determinant() const;
    bool IsSingular() const;
    // inv = this^-1. false when singular (inv unchanged).
    bool Inverse(CSquareMatrix& inv) const;
    // x with this * x = b. false when singular or b.GetSize() != n (x unchanged);
    // otherwise x is resized to n and overwritten.
    bool Solve(const CDblArray& b, CDblArray& x) const;

private:
    // In-place LU of a copy with partial pivoting: the factors in `lu`, the
    // pivot row of each step in `perm`, the sign of the permutation in `sign`.
    // false when a pivot is under the singularity threshold.
    bool Decompose(std::vector<double>& lu, std::vector<int>& perm, double& sign) const;
    void CheckIndex(int row, int col) const;

    int m_n = 0;
    std::vector<double> m_a;  // row-major
};

}  // namespace ORVMATH
