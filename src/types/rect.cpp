#include <orvmath/rect.h>

#include <algorithm>
#include <utility>

namespace ORVMATH {

namespace {

// One axis of DeflateRect.
void DeflateAxis(double& lo, double& hi, double d) {
    if (lo + d > hi - d) {
        lo = hi = lo + hi;
    } else {
        lo += d;
        hi -= d;
    }
}

// One axis of SubtractRect: b spans a along the other axis; lo/hi are a's
// edges on this axis (in the result), blo/bhi b's. Returns true when b covers
// a entirely with b starting before a, which collapses the result.
bool SubtractAxis(double alo, double ahi, double blo, double bhi, double& lo, double& hi) {
    const double d = blo - alo;
    if (d > 0.0) {
        if (bhi >= ahi) hi = blo;
    } else if (d == 0.0) {
        if (ahi > bhi) lo = bhi;
    } else if (bhi > alo) {
        if (ahi > bhi) lo = bhi;
        else return true;
    }
    return false;
}

}  // namespace

void CDblRect::DeflateRect(double dx, double dy) noexcept {
    DeflateAxis(left, right, dx);
    DeflateAxis(top, bottom, dy);
}

void CDblRect::NormalizeRect() noexcept {
    if (left > right) std::swap(left, right);
    if (top > bottom) std::swap(top, bottom);
}

void CDblRect::Rearrange(bool swapX, bool swapY) noexcept {
    if (swapX) std::swap(left, right);
    if (swapY) std::swap(top, bottom);
}

bool CDblRect::IntersectRect(const CDblRect& a, const CDblRect& b) noexcept {
    const CDblRect r(std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right),
                     std::min(a.bottom, b.bottom));
    if (r.right - r.left > 0.0 && r.bottom - r.top > 0.0) {
        *this = r;
        return true;
    }
    Reset();
    return false;
}

bool CDblRect::UnionRect(const CDblRect& a, const CDblRect& b) noexcept {
    if (a.IsRectNull()) {
        *this = b;
    } else if (b.IsRectNull()) {
        *this = a;
    } else {
        *this = CDblRect(std::min(a.left, b.left), std::min(a.top, b.top), std::max(a.right, b.right),
                         std::max(a.bottom, b.bottom));
    }
    return true;
}

bool CDblRect::SubtractRect(const CDblRect& a, const CDblRect& b) noexcept {
    CDblRect r = a;
    bool collapse = false;
    if (b.left <= a.left && b.right >= a.right) {
        collapse = SubtractAxis(a.top, a.bottom, b.top, b.bottom, r.top, r.bottom);
    } else if (b.top <= a.top && b.bottom >= a.bottom) {
        collapse = SubtractAxis(a.left, a.right, b.left, b.right, r.left, r.right);
    }
    if (collapse) {
        // Full cover with b starting before a: only the top-left corner is
        // left. Unlike an exact tie, which leaves a unchanged; kept as is.
        r = CDblRect(a.left, a.top, a.left, a.top);
    }
    *this = r;
    return true;
}

}  // namespace ORVMATH
