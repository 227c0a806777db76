// Integer point, size and rectangle of the host framework layer. Plain values,
// zero when default-constructed.
#pragma once

#include <orvmath/host/types.h>

struct CPoint {
    LONG x = 0;
    LONG y = 0;
    constexpr CPoint() noexcept = default;
    constexpr CPoint(int initX, int initY) noexcept : x(initX), y(initY) {}
    constexpr bool operator==(const CPoint& o) const noexcept { return x == o.x && y == o.y; }
    constexpr bool operator!=(const CPoint& o) const noexcept { return !(*this == o); }
};

struct CSize {
    LONG cx = 0;
    LONG cy = 0;
    constexpr CSize() noexcept = default;
    constexpr CSize(int initCX, int initCY) noexcept : cx(initCX), cy(initCY) {}
    constexpr bool operator==(const CSize& o) const noexcept { return cx == o.cx && cy == o.cy; }
    constexpr bool operator!=(const CSize& o) const noexcept { return !(*this == o); }
};

// Edges as given; nothing normalises left <= right or top <= bottom.
struct CRect {
    LONG left = 0;
    LONG top = 0;
    LONG right = 0;
    LONG bottom = 0;
    constexpr CRect() noexcept = default;
    constexpr CRect(int l, int t, int r, int b) noexcept : left(l), top(t), right(r), bottom(b) {}
    constexpr bool operator==(const CRect& o) const noexcept {
        return left == o.left && top == o.top && right == o.right && bottom == o.bottom;
    }
    constexpr bool operator!=(const CRect& o) const noexcept { return !(*this == o); }
};
