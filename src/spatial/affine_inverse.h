// In-place inverse of a row-major 4x4 affine matrix, shared by
// CMatrix4::InvMatrix and Transformer::Invert.
#pragma once

namespace ORVMATH {
namespace detail {

// Inverts the upper-left 3x3 block of m (16 doubles, row-major) by Gauss-Jordan
// elimination with partial pivoting, then sets row 3 to -t * inverse, t being
// the old row 3. The fourth column is neither read nor written. Returns false
// as soon as a pivot p has eps >= |p|; the columns processed so far stay
// modified, so m is then garbage. Callers and stored results depend on this
// exact pivot choice and on the partial modification; keep both.
bool InvertAffineRowMajor(double* m, double eps) noexcept;

}  // namespace detail
}  // namespace ORVMATH
