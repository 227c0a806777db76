#include <orvmath/squarematrix.h>

#include <cmath>
#include <cstddef>
#include <utility>

namespace ORVMATH {

namespace {
std::size_t Cells(int n) { return static_cast<std::size_t>(n) * static_cast<std::size_t>(n); }
}  // namespace

CSquareMatrix::CSquareMatrix(int n) : m_n(n > 0 ? n : 0), m_a(Cells(m_n), 0.0) {}

CSquareMatrix::CSquareMatrix(int n, const double* rows) : CSquareMatrix(n) {
    for (std::size_t k = 0; k < m_a.size(); ++k) m_a[k] = rows[k];
}

CSquareMatrix CSquareMatrix::Identity(int n) {
    CSquareMatrix m(n);
    for (int i = 0; i < m.m_n; ++i) m(i, i) = 1.0;
    return m;
}

void CSquareMatrix::CheckIndex(int row, int col) const {
    if (row < 0 || row >= m_n || col < 0 || col >= m_n) AfxThrowInvalidArgException();
}

double& CSquareMatrix::operator()(int row, int col) {
    CheckIndex(row, col);
    return m_a[static_cast<std::size_t>(row) * static_cast<std::size_t>(m_n) + static_cast<std::size_t>(col)];
}

double CSquareMatrix::operator()(int row, int col) const {
    CheckIndex(row, col);
    return m_a[static_cast<std::size_t>(row) * static_cast<std::size_t>(m_n) + static_cast<std::size_t>(col)];
}

CSquareMatrix CSquareMatrix::Transpose() const {
    CSquareMatrix t(m_n);
    for (int i = 0; i < m_n; ++i)
        for (int j = 0; j < m_n; ++j) t(j, i) = (*this)(i, j);
    return t;
}

CSquareMatrix CSquareMatrix::operator*(const CSquareMatrix& o) const {
    if (o.m_n != m_n) return CSquareMatrix();
    CSquareMatrix p(m_n);
    for (int i = 0; i < m_n; ++i)
        for (int j = 0; j < m_n; ++j) {
            double s = 0.0;
            for (int k = 0; k < m_n; ++k) s += (*this)(i, k) * o(k, j);
            p(i, j) = s;
        }
    return p;
}

bool CSquareMatrix::Decompose(std::vector<double>& lu, std::vector<int>& perm, double& sign) const {
    const std::size_t n = static_cast<std::size_t>(m_n);
    lu = m_a;
    perm.assign(n, 0);
    sign = 1.0;
    double largest = 0.0;
    for (double v : m_a) largest = std::fmax(largest, std::fabs(v));
    const double threshold = kSingularPivotRel * static_cast<double>(n) * largest;
    bool regular = true;
    for (std::size_t k = 0; k < n; ++k) {
        std::size_t piv = k;
        for (std::size_t i = k + 1; i < n; ++i)
            if (std::fabs(lu[i * n + k]) > std::fabs(lu[piv * n + k])) piv = i;
        perm[k] = static_cast<int>(piv);
        if (piv != k) {
            for (std::size_t j = 0; j < n; ++j) std::swap(lu[k * n + j], lu[piv * n + j]);
            sign = -sign;
        }
        const double pivot = lu[k * n + k];
        if (std::fabs(pivot) <= threshold) regular = false;
        if (pivot == 0.0) continue;  // the column is zero below too: nothing to eliminate
        for (std::size_t i = k + 1; i < n; ++i) {
            const double f = lu[i * n + k] / pivot;
            lu[i * n + k] = f;
            for (std::size_t j = k + 1; j < n; ++j) lu[i * n + j] -= f * lu[k * n + j];
        }
    }
    return regular;
}

double CSquareMatrix::Determinant() const {
    std::vector<double> lu;
    std::vector<int> perm;
    double det;
    Decompose(lu, perm, det);
    const std::size_t n = static_cast<std::size_t>(m_n);
    for (std::size_t k = 0; k < n; ++k) det *= lu[k * n + k];
    return det;
}

bool CSquareMatrix::IsSingular() const {
    std::vector<double> lu;
    std::vector<int> perm;
    double sign;
    return !Decompose(lu, perm, sign);
}

namespace {
// Forward and back substitution on the packed factors; x holds b on entry.
void Substitute(const std::vector<double>& lu, const std::vector<int>& perm, double* x) {
    const std::size_t n = perm.size();
    for (std::size_t k = 0; k < n; ++k) std::swap(x[k], x[static_cast<std::size_t>(perm[k])]);
    for (std::size_t i = 1; i < n; ++i)
        for (std::size_t j = 0; j < i; ++j) x[i] -= lu[i * n + j] * x[j];
    for (std::size_t i = n; i-- > 0;) {
        for (std::size_t j = i + 1; j < n; ++j) x[i] -= lu[i * n + j] * x[j];
        x[i] /= lu[i * n + i];
    }
}
}  // namespace

bool CSquareMatrix::Inverse(CSquareMatrix& inv) const {
    std::vector<double> lu;
    std::vector<int> perm;
    double sign;
    if (!Decompose(lu, perm, sign)) return false;
    CSquareMatrix out(m_n);
    std::vector<double> col(static_cast<std::size_t>(m_n));
    for (int j = 0; j < m_n; ++j) {
        for (int i = 0; i < m_n; ++i) col[static_cast<std::size_t>(i)] = i == j ? 1.0 : 0.0;
        Substitute(lu, perm, col.data());
        for (int i = 0; i < m_n; ++i) out(i, j) = col[static_cast<std::size_t>(i)];
    }
    inv = std::move(out);
    return true;
}

bool CSquareMatrix::Solve(const CDblArray& b, CDblArray& x) const {
    if (b.GetSize() != m_n) return false;
    std::vector<double> lu;
    std::vector<int> perm;
    double sign;
    if (!Decompose(lu, perm, sign)) return false;
    std::vector<double> v(b.GetData(), b.GetData() + m_n);
    Substitute(lu, perm, v.data());
    x.SetSize(m_n);
    for (int i = 0; i < m_n; ++i) x[i] = v[static_cast<std::size_t>(i)];
    return true;
}

}  // namespace ORVMATH
