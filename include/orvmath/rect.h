// The axis-aligned rectangle in double precision. "Normal" means
// left <= right and top <= bottom (y grows downward); nothing enforces it,
// only NormalizeRect orders the edges.
#pragma once

#include <orvmath/export.h>
#include <orvmath/host/geometry.h>
#include <orvmath/point2.h>
#include <orvmath/tolerance.h>

#include <cmath>
#include <cstddef>

namespace ORVMATH {

class ORVMATH_API CDblRect {
public:
    double left = 0.0;
    double top = 0.0;
    double right = 0.0;
    double bottom = 0.0;

    CDblRect() noexcept = default;
    CDblRect(double l, double t, double r, double b) noexcept : left(l), top(t), right(r), bottom(b) {}
    CDblRect(const CDblPoint& topLeft, const CDblPoint& bottomRight) noexcept
        : left(topLeft.x), top(topLeft.y), right(bottomRight.x), bottom(bottomRight.y) {}
    CDblRect(const CRect& r) noexcept : left(r.left), top(r.top), right(r.right), bottom(r.bottom) {}

    void SetRect(double l, double t, double r, double b) noexcept { *this = CDblRect(l, t, r, b); }
    void Reset() noexcept { *this = CDblRect(); }

    double Width() const noexcept { return right - left; }    // signed
    double Height() const noexcept { return bottom - top; }   // signed
    CDblSize Size() const noexcept { return CDblSize(Width(), Height()); }
    CDblPoint CenterPoint() const noexcept { return CDblPoint((left + right) * 0.5, (top + bottom) * 0.5); }

    // References into the rectangle's own storage, which is laid out as two
    // consecutive points, as the framework's integer rectangle is.
    CDblPoint& TopLeft() noexcept { return *reinterpret_cast<CDblPoint*>(&left); }
    const CDblPoint& TopLeft() const noexcept { return *reinterpret_cast<const CDblPoint*>(&left); }
    CDblPoint& BottomRight() noexcept { return *reinterpret_cast<CDblPoint*>(&right); }
    const CDblPoint& BottomRight() const noexcept { return *reinterpret_cast<const CDblPoint*>(&right); }

    void OffsetRect(const CDblSize& d) noexcept { left += d.cx; right += d.cx; top += d.cy; bottom += d.cy; }
    CDblRect& operator-=(const CDblPoint& p) noexcept { OffsetRect(CDblSize(-p.x, -p.y)); return *this; }
    void InflateRect(double dx, double dy) noexcept { left -= dx; right += dx; top -= dy; bottom += dy; }
    // Shrinks each axis; an axis that would turn inside out collapses to
    // left = right = left + right (the plain sum, not the mean). Kept:
    // stored drawings depend on it.
    void DeflateRect(double dx, double dy) noexcept;
    void NormalizeRect() noexcept;
    // Swaps the named edge pairs unconditionally.
    void Rearrange(bool swapX, bool swapY) noexcept;

    bool IsRectEmpty() const noexcept { return Width() <= 0.0 || Height() <= 0.0; }
    bool IsRectNull() const noexcept { return left == 0.0 && top == 0.0 && right == 0.0 && bottom == 0.0; }
    bool IsRectSmall() const noexcept { return std::fabs(Width()) <= kSmallRectSide || std::fabs(Height()) <= kSmallRectSide; }
    // All four edges included, no tolerance.
    bool PtInRect(const CDblPoint& p) const noexcept {
        return left <= p.x && p.x <= right && top <= p.y && p.y <= bottom;
    }

    // Overlap of a and b; false and all zero when they do not overlap with a
    // positive area (touching rectangles do not intersect).
    bool IntersectRect(const CDblRect& a, const CDblRect& b) noexcept;
    // Bounding rectangle of a and b; an exactly null operand is left out.
    // Always true.
    bool UnionRect(const CDblRect& a, const CDblRect& b) noexcept;
    // a with b cut away where b spans a fully along one axis. Always true.
    bool SubtractRect(const CDblRect& a, const CDblRect& b) noexcept;

    bool operator==(const CDblRect& r) const noexcept {
        const double ex = CDblRectEpsilon::x(), ey = CDblRectEpsilon::y();
        return std::fabs(left - r.left) <= ex && std::fabs(right - r.right) <= ex && std::fabs(top - r.top) <= ey &&
               std::fabs(bottom - r.bottom) <= ey;
    }
    bool operator!=(const CDblRect& r) const noexcept { return !(*this == r); }

    // Each coordinate + 0.5, truncated toward zero, as for points.
    operator CRect() const noexcept {
        return CRect(detail::TruncToInt32(left + 0.5), detail::TruncToInt32(top + 0.5),
                     detail::TruncToInt32(right + 0.5), detail::TruncToInt32(bottom + 0.5));
    }

    static constexpr double kSmallRectSide = 0.1;  // a side this short or shorter makes the rectangle "small"
};

// Archive record: left, top, right, bottom as doubles.
ORVMATH_API CArchive& operator<<(CArchive& ar, const CDblRect& r);
ORVMATH_API CArchive& operator>>(CArchive& ar, CDblRect& r);

static_assert(sizeof(CDblPoint) == 2 * sizeof(double), "CDblPoint must be two packed doubles");
static_assert(offsetof(CDblRect, right) == sizeof(CDblPoint), "CDblRect must be two consecutive points");

}  // namespace ORVMATH
