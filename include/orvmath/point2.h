// Planar points, sizes and pairs in double precision, with the point functors
// used by the standard sorting and searching algorithms.
#pragma once

#include <orvmath/export.h>
#include <orvmath/host/geometry.h>
#include <orvmath/host/variant.h>
#include <orvmath/tolerance.h>

#include <cmath>

class CArchive;

namespace ORVMATH {

class CDblSize;

// A planar point or vector. Equality is per axis within CDblPointEpsilon,
// boundary included.
class ORVMATH_API CDblPoint {
public:
    double x = 0.0;
    double y = 0.0;

    CDblPoint() noexcept = default;
    CDblPoint(double x_, double y_) noexcept : x(x_), y(y_) {}
    // The third coordinate is ignored, so that a spatial triple narrows to the plane.
    CDblPoint(double x_, double y_, double /*z*/) noexcept : x(x_), y(y_) {}
    CDblPoint(const CPoint& p) noexcept : x(p.x), y(p.y) {}

    void SetPoint(double x_, double y_) noexcept { x = x_; y = y_; }
    void Offset(double dx, double dy) noexcept { x += dx; y += dy; }
    void Offset(const CDblPoint& d) noexcept { Offset(d.x, d.y); }
    inline void Offset(const CDblSize& d) noexcept;

    CDblPoint operator+(const CDblPoint& p) const noexcept { return CDblPoint(x + p.x, y + p.y); }
    inline CDblPoint operator+(const CDblSize& s) const noexcept;
    inline CDblPoint operator-(const CDblSize& s) const noexcept;
    inline CDblSize operator-(const CDblPoint& p) const noexcept;  // this - p, as a size
    CDblPoint operator-() const noexcept { return CDblPoint(-x, -y); }
    CDblPoint& operator+=(const CDblPoint& p) noexcept { Offset(p.x, p.y); return *this; }
    CDblPoint& operator-=(const CDblPoint& p) noexcept { return *this += -p; }
    inline CDblPoint& operator+=(const CDblSize& s) noexcept;
    inline CDblPoint& operator-=(const CDblSize& s) noexcept;

    bool operator==(const CDblPoint& p) const noexcept {
        return std::fabs(x - p.x) <= CDblPointEpsilon::x() && std::fabs(y - p.y) <= CDblPointEpsilon::y();
    }
    bool operator!=(const CDblPoint& p) const noexcept { return !(*this == p); }

    // Exactly (0, 0), no tolerance; -0.0 counts as 0.
    bool IsNull() const noexcept { return x == 0.0 && y == 0.0; }

    // Each coordinate + 0.5, truncated toward zero: round-half-up only for
    // non-negative values. Kept: callers' pixel positions depend on it.
    operator CPoint() const noexcept {
        return CPoint(detail::TruncToInt32(x + 0.5), detail::TruncToInt32(y + 0.5));
    }

    // Reads elements 0 and 1 of a one-dimensional VT_ARRAY|VT_R8 variant of at
    // least two elements; any other variant leaves the point unchanged.
    void FromVariant(const VARIANT& v);
    // A new VT_ARRAY|VT_R8 variant of {x, y} (lower bound 0); the caller owns
    // it and frees it with VariantClear.
    VARIANT To2DVariant() const;
    // The same for the spatial point (x, y, 0).
    VARIANT To3DVariant() const;

    // Stores or loads the archive record (see operator<<).
    void Serialize(CArchive& ar);
};

// A planar extent or displacement.
class ORVMATH_API CDblSize {
public:
    double cx = 0.0;
    double cy = 0.0;

    CDblSize() noexcept = default;
    CDblSize(double cx_, double cy_) noexcept : cx(cx_), cy(cy_) {}

    CDblSize operator+(const CDblSize& s) const noexcept { return CDblSize(cx + s.cx, cy + s.cy); }
    CDblSize operator-(const CDblSize& s) const noexcept { return *this + -s; }
    CDblSize operator-() const noexcept { return CDblSize(-cx, -cy); }
    CDblSize& operator+=(const CDblSize& s) noexcept { cx += s.cx; cy += s.cy; return *this; }
    CDblSize& operator-=(const CDblSize& s) noexcept { return *this += -s; }

    CDblPoint operator+(const CDblPoint& p) const noexcept { return CDblPoint(p.x + cx, p.y + cy); }
    // The point moved back by the size (not size minus point). Kept: callers
    // depend on this operand order.
    CDblPoint operator-(const CDblPoint& p) const noexcept { return CDblPoint(p.x - cx, p.y - cy); }

    operator CSize() const noexcept {
        return CSize(detail::TruncToInt32(cx + 0.5), detail::TruncToInt32(cy + 0.5));
    }

    // Stores or loads the archive record (see operator<<).
    void Serialize(CArchive& ar);
};

// Archive records, plain little-endian doubles with no tag: a point is x then
// y, a size cx then cy. Storing into a loading archive throws
// CArchiveException(readOnly); a stream that ends inside a record throws
// CArchiveException(endOfFile), leaving the fields read so far.
ORVMATH_API CArchive& operator<<(CArchive& ar, const CDblPoint& p);
ORVMATH_API CArchive& operator>>(CArchive& ar, CDblPoint& p);
ORVMATH_API CArchive& operator<<(CArchive& ar, const CDblSize& s);
ORVMATH_API CArchive& operator>>(CArchive& ar, CDblSize& s);

inline void CDblPoint::Offset(const CDblSize& d) noexcept { Offset(d.cx, d.cy); }
inline CDblPoint CDblPoint::operator+(const CDblSize& s) const noexcept { return CDblPoint(x + s.cx, y + s.cy); }
inline CDblPoint CDblPoint::operator-(const CDblSize& s) const noexcept { return CDblPoint(x - s.cx, y - s.cy); }
inline CDblSize CDblPoint::operator-(const CDblPoint& p) const noexcept { return CDblSize(x - p.x, y - p.y); }
inline CDblPoint& CDblPoint::operator+=(const CDblSize& s) noexcept { Offset(s.cx, s.cy); return *this; }
inline CDblPoint& CDblPoint::operator-=(const CDblSize& s) noexcept { return *this += -s; }

// A plain pair of doubles.
struct CDblPair {
    double first = 0.0;
    double second = 0.0;
    CDblPair() noexcept = default;
    CDblPair(double a, double b) noexcept : first(a), second(b) {}
};

// Euclidean distance, computed directly (no overflow guard).
inline double Distance(const CDblPoint& a, const CDblPoint& b) noexcept {
    const double dx = b.x - a.x, dy = b.y - a.y;
    return std::sqrt(dx * dx + dy * dy);
}

// True when neither coordinate is infinite or NaN.
inline bool IsFinite(const CDblPoint& p) noexcept { return std::isfinite(p.x) && std::isfinite(p.y); }

// Point comparison functors. They compare one coordinate with the scalar
// tests, so they use CDoubleEpsilon, not CDblPointEpsilon.
#define ORVMATH_POINT_COMPARATOR(Name, Test, axis)                                  \
    struct Name {                                                                   \
        bool operator()(const CDblPoint& a, const CDblPoint& b) const noexcept {   \
            return Test(a.axis, b.axis);                                            \
        }                                                                           \
    };
ORVMATH_POINT_COMPARATOR(CDblPoint_EqX, IsDoubleEqual, x)
ORVMATH_POINT_COMPARATOR(CDblPoint_EqY, IsDoubleEqual, y)
ORVMATH_POINT_COMPARATOR(CDblPoint_LessX, IsDoubleLess, x)
ORVMATH_POINT_COMPARATOR(CDblPoint_LessY, IsDoubleLess, y)
ORVMATH_POINT_COMPARATOR(CDblPoint_LessEqX, IsDoubleLessEqual, x)
ORVMATH_POINT_COMPARATOR(CDblPoint_LessEqY, IsDoubleLessEqual, y)
ORVMATH_POINT_COMPARATOR(CDblPoint_GreatX, IsDoubleGreater, x)
ORVMATH_POINT_COMPARATOR(CDblPoint_GreatY, IsDoubleGreater, y)
ORVMATH_POINT_COMPARATOR(CDblPoint_GreatEqX, IsDoubleGreaterEqual, x)
ORVMATH_POINT_COMPARATOR(CDblPoint_GreatEqY, IsDoubleGreaterEqual, y)
#undef ORVMATH_POINT_COMPARATOR

struct CDblPoint_getX {
    double operator()(const CDblPoint& p) const noexcept { return p.x; }
};
struct CDblPoint_getY {
    double operator()(const CDblPoint& p) const noexcept { return p.y; }
};

// Imposes x0 on a point, or builds (x0, y).
struct CDblPoint_assignX {
    double x0;
    explicit CDblPoint_assignX(double x) noexcept : x0(x) {}
    CDblPoint operator()(const CDblPoint& p) const noexcept { return CDblPoint(x0, p.y); }
    CDblPoint operator()(double y) const noexcept { return CDblPoint(x0, y); }
};

// Imposes y0 on a point, or builds (x, y0).
struct CDblPoint_assignY {
    double y0;
    explicit CDblPoint_assignY(double y) noexcept : y0(y) {}
    CDblPoint operator()(const CDblPoint& p) const noexcept { return CDblPoint(p.x, y0); }
    CDblPoint operator()(double x) const noexcept { return CDblPoint(x, y0); }
};

// Scales x by sx and y by sy.
struct CDblPoint_multiXY {
    double sx, sy;
    CDblPoint_multiXY(double sx_, double sy_) noexcept : sx(sx_), sy(sy_) {}
    CDblPoint operator()(const CDblPoint& p) const noexcept { return CDblPoint(p.x * sx, p.y * sy); }
};

}  // namespace ORVMATH
