// Arrays (on the framework's growable, serialisable CArray) and vectors (on
// std::vector) of numbers and points: tolerant equality, simple statistics,
// search, conversion between the two kinds and automation variant exchange.
#pragma once

#include <orvmath/export.h>
#include <orvmath/host/array.h>
#include <orvmath/host/object.h>
#include <orvmath/host/variant.h>
#include <orvmath/point2.h>
#include <orvmath/tolerance.h>

#include <cstdint>
#include <vector>

namespace ORVMATH {

class CDblVector;
class CDblPointVector;

namespace detail {

// Integer arithmetic wraps as the 32-bit original did, instead of being
// undefined on overflow.
inline int WrapAdd(int a, int b) noexcept {
    return static_cast<int>(static_cast<std::uint32_t>(a) + static_cast<std::uint32_t>(b));
}
inline int WrapSub(int a, int b) noexcept {
    return static_cast<int>(static_cast<std::uint32_t>(a) - static_cast<std::uint32_t>(b));
}
inline double Add(double a, double b) noexcept { return a + b; }
inline double Sub(double a, double b) noexcept { return a - b; }
inline int Add(int a, int b) noexcept { return WrapAdd(a, b); }
inline int Sub(int a, int b) noexcept { return WrapSub(a, b); }

template <class T>
T Summation(const T* p, std::size_t n) noexcept {
    T s = 0;
    for (std::size_t i = 0; i < n; ++i) s = Add(s, p[i]);
    return s;
}
template <class T>
double Average(const T* p, std::size_t n) noexcept {
    return n == 0 ? 0.0 : static_cast<double>(Summation(p, n)) / static_cast<double>(n);
}
// The first largest (greater = true) or smallest element; 0 when empty.
template <class T>
T Extreme(const T* p, std::size_t n, bool greater) noexcept {
    if (n == 0) return 0;
    T m = p[0];
    for (std::size_t i = 1; i < n; ++i)
        if (greater ? p[i] > m : p[i] < m) m = p[i];
    return m;
}
template <class T, class U, class Eq>
bool SequenceEqual(const T* a, std::size_t na, const U* b, std::size_t nb, Eq eq) {
    if (na != nb) return false;
    for (std::size_t i = 0; i < na; ++i)
        if (!eq(a[i], b[i])) return false;
    return true;
}
struct TolerantEqual {
    bool operator()(double a, double b) const noexcept { return IsDoubleEqual(a, b); }
    template <class T>
    bool operator()(const T& a, const T& b) const { return a == b; }
};

template <class A>
std::size_t Count(const A& a) noexcept { return static_cast<std::size_t>(a.GetSize()); }

}  // namespace detail

// Doubles, compared with IsDoubleEqual.
class ORVMATH_API CDblArray : public CArray<double, const double&> {
    DECLARE_SERIAL(CDblArray)
public:
    CDblArray() = default;
    CDblArray(const CDblArray&) = default;
    CDblArray& operator=(const CDblArray&) = default;

    bool operator==(const CDblArray& o) const {
        return detail::SequenceEqual(GetData(), detail::Count(*this), o.GetData(), detail::Count(o), detail::TolerantEqual());
    }
    bool operator!=(const CDblArray& o) const { return !(*this == o); }
    double summation() const noexcept { return detail::Summation(GetData(), detail::Count(*this)); }
    double average_value() const noexcept { return detail::Average(GetData(), detail::Count(*this)); }
    double maximum_value() const noexcept { return detail::Extreme(GetData(), detail::Count(*this), true); }
    double minimum_value() const noexcept { return detail::Extreme(GetData(), detail::Count(*this), false); }

    // Sets every existing element to v; the size does not change.
    CDblArray& operator=(double v) noexcept {
        for (INT_PTR i = 0; i < GetSize(); ++i) GetData()[i] = v;
        return *this;
    }
    // Copies the vector. An empty vector leaves the array as it was (it is
    // not emptied); kept, callers rely on it.
    void from(const CDblVector& v);
};

// 32-bit integers.
class ORVMATH_API CIntArray : public CArray<int, const int&> {
    DECLARE_SERIAL(CIntArray)
public:
    CIntArray() = default;
    CIntArray(const CIntArray&) = default;
    CIntArray& operator=(const CIntArray&) = default;

    bool operator==(const CIntArray& o) const {
        return detail::SequenceEqual(GetData(), detail::Count(*this), o.GetData(), detail::Count(o), detail::TolerantEqual());
    }
    bool operator!=(const CIntArray& o) const { return !(*this == o); }
    int summation() const noexcept { return detail::Summation(GetData(), detail::Count(*this)); }
    double average_value() const noexcept { return detail::Average(GetData(), detail::Count(*this)); }
    int maximum_value() const noexcept { return detail::Extreme(GetData(), detail::Count(*this), true); }
    int minimum_value() const noexcept { return detail::Extreme(GetData(), detail::Count(*this), false); }
    bool find(int v) const noexcept { return index(v) >= 0; }
    // Index of the first element equal to v, or -1.
    INT_PTR index(int v) const noexcept {
        for (INT_PTR i = 0; i < GetSize(); ++i)
            if (GetData()[i] == v) return i;
        return -1;
    }
};

// Planar points, compared with CDblPoint equality. Archive record: the count,
// then the point records.
class ORVMATH_API CDblPointArray : public CArray<CDblPoint, const CDblPoint&> {
    DECLARE_SERIAL(CDblPointArray)
public:
    CDblPointArray() = default;
    CDblPointArray(const CDblPointArray&) = default;
    CDblPointArray& operator=(const CDblPointArray&) = default;

    bool operator==(const CDblPointArray& o) const {
        return detail::SequenceEqual(GetData(), detail::Count(*this), o.GetData(), detail::Count(o), detail::TolerantEqual());
    }
    bool operator!=(const CDblPointArray& o) const { return !(*this == o); }

    using CArray<CDblPoint, const CDblPoint&>::Add;
    INT_PTR Add(double x, double y) { return Add(CDblPoint(x, y)); }

    // Copies the vector's points; an empty vector leaves the array as it was.
    void from(const CDblPointVector& v);

    // Replace the contents by the points of a one-dimensional VT_ARRAY|VT_R8
    // variant holding x, y pairs (2D) or x, y, z triples with z dropped (3D).
    // Elements are read from index 0 whatever the lower bound. A variant of
    // another kind, or whose count is not a multiple of 2 (3), leaves the
    // array unchanged.
    void From2DArrayVariant(const VARIANT& v);
    void From3DArrayVariant(const VARIANT& v);
    // The reverse: a new variant of 2n (3n, with z = 0) doubles, lower bound
    // 0, owned by the caller.
    VARIANT To2DArrayVariant() const;
    VARIANT To3DArrayVariant() const;
};

// Arrays of arrays.
class ORVMATH_API CDblArray2D : public CArray<CDblArray, const CDblArray&> {
    DECLARE_SERIAL(CDblArray2D)
public:
    bool operator==(const CDblArray2D& o) const {
        return detail::SequenceEqual(GetData(), detail::Count(*this), o.GetData(), detail::Count(o), detail::TolerantEqual());
    }
    bool operator!=(const CDblArray2D& o) const { return !(*this == o); }
};

class ORVMATH_API CIntArray2D : public CArray<CIntArray, const CIntArray&> {
    DECLARE_SERIAL(CIntArray2D)
public:
    bool operator==(const CIntArray2D& o) const {
        return detail::SequenceEqual(GetData(), detail::Count(*this), o.GetData(), detail::Count(o), detail::TolerantEqual());
    }
    bool operator!=(const CIntArray2D& o) const { return !(*this == o); }
};

// Element-wise a op b over a's size. When b is shorter than a the result is
// empty: that is the defined answer for mismatched sizes, kept as callers
// test for it. b's surplus elements are ignored.
ORVMATH_API CDblArray operator+(const CDblArray& a, const CDblArray& b);
ORVMATH_API CDblArray operator-(const CDblArray& a, const CDblArray& b);
ORVMATH_API CDblArray operator+(const CDblArray& a, double s);
ORVMATH_API CDblArray operator-(const CDblArray& a, double s);
ORVMATH_API CIntArray operator+(const CIntArray& a, const CIntArray& b);
ORVMATH_API CIntArray operator-(const CIntArray& a, const CIntArray& b);
ORVMATH_API CIntArray operator+(const CIntArray& a, int s);
ORVMATH_API CIntArray operator-(const CIntArray& a, int s);

// Doubles, compared with IsDoubleEqual.
class ORVMATH_API CDblVector : public std::vector<double> {
public:
    using std::vector<double>::vector;
    CDblVector() = default;
    CDblVector(const std::vector<double>& v) : std::vector<double>(v) {}

    bool operator==(const CDblVector& o) const {
        return detail::SequenceEqual(data(), size(), o.data(), o.size(), detail::TolerantEqual());
    }
    bool operator!=(const CDblVector& o) const { return !(*this == o); }
    double summation() const noexcept { return detail::Summation(data(), size()); }
    double average_value() const noexcept { return detail::Average(data(), size()); }
    double maximum_value() const noexcept { return detail::Extreme(data(), size(), true); }
    double minimum_value() const noexcept { return detail::Extreme(data(), size(), false); }
    // -1, 0 or 1: the shorter vector is the smaller; otherwise the first
    // element that differs by more than the scalar epsilon decides.
    int compare(const CDblVector& o) const noexcept;
    void from(const CDblArray& a);
};

class CIntVector : public std::vector<int> {
public:
    using std::vector<int>::vector;
    CIntVector() = default;
    CIntVector(const std::vector<int>& v) : std::vector<int>(v) {}
};

// Planar points, compared with CDblPoint equality.
class ORVMATH_API CDblPointVector : public std::vector<CDblPoint> {
public:
    using std::vector<CDblPoint>::vector;
    CDblPointVector() = default;
    CDblPointVector(const std::vector<CDblPoint>& v) : std::vector<CDblPoint>(v) {}

    bool operator==(const CDblPointVector& o) const {
        return detail::SequenceEqual(data(), size(), o.data(), o.size(), detail::TolerantEqual());
    }
    bool operator!=(const CDblPointVector& o) const { return !(*this == o); }

    // Stores or loads the archive record (see operator<<).
    void Serialize(CArchive& ar);

    using std::vector<CDblPoint>::push_back;
    void push_back(double x, double y) { push_back(CDblPoint(x, y)); }
    // Append the points in argument order.
    void from(const CDblPoint& p1, const CDblPoint& p2) { push_back(p1); push_back(p2); }
    void from(const CDblPoint& p1, const CDblPoint& p2, const CDblPoint& p3) { from(p1, p2); push_back(p3); }
    void from(const CDblPoint& p1, const CDblPoint& p2, const CDblPoint& p3, const CDblPoint& p4) {
        from(p1, p2, p3);
        push_back(p4);
    }
    // Replace the contents by the array's points.
    void from(const CDblPointArray& a);
    // Append a far-reaching vertical line through x: (x, -1e9) then (x, 1e9).
    void from_x(double x) { from(CDblPoint(x, -kFarCoordinate), CDblPoint(x, kFarCoordinate)); }
    // Append a far-reaching horizontal line through y: (-1e9, y) then (1e9, y).
    void from_y(double y) { from(CDblPoint(-kFarCoordinate, y), CDblPoint(kFarCoordinate, y)); }

    static constexpr double kFarCoordinate = 1e9;  // "infinitely far" end of the filler lines
};

class CDblVector2D : public std::vector<CDblVector> {
public:
    using std::vector<CDblVector>::vector;
    CDblVector2D() = default;
    CDblVector2D(const std::vector<CDblVector>& v) : std::vector<CDblVector>(v) {}
};

class CIntVector2D : public std::vector<CIntVector> {
public:
    using std::vector<CIntVector>::vector;
    CIntVector2D() = default;
    CIntVector2D(const std::vector<CIntVector>& v) : std::vector<CIntVector>(v) {}
};

class CDblPointVector2D : public std::vector<CDblPointVector> {
public:
    using std::vector<CDblPointVector>::vector;
    CDblPointVector2D() = default;
    CDblPointVector2D(const std::vector<CDblPointVector>& v) : std::vector<CDblPointVector>(v) {}

    bool operator==(const CDblPointVector2D& o) const {
        return detail::SequenceEqual(data(), size(), o.data(), o.size(), detail::TolerantEqual());
    }
    bool operator!=(const CDblPointVector2D& o) const { return !(*this == o); }
};

// Archive records. CDblArray: the count (the archive's count encoding), then
// the doubles; CIntArray: the count, then 4-byte integers; CDblPointVector:
// the count, then the point records. The array operators go through the
// arrays' Serialize; each throws CArchiveException(readOnly) when storing into
// a loading archive and (writeOnly) when loading from a storing one. Loading
// rejects a count larger than the stream still holds with (endOfFile) before
// allocating.
ORVMATH_API CArchive& operator<<(CArchive& ar, CDblArray& a);
ORVMATH_API CArchive& operator>>(CArchive& ar, CDblArray& a);
ORVMATH_API CArchive& operator<<(CArchive& ar, CIntArray& a);
ORVMATH_API CArchive& operator>>(CArchive& ar, CIntArray& a);
ORVMATH_API CArchive& operator<<(CArchive& ar, const CDblPointVector& v);
ORVMATH_API CArchive& operator>>(CArchive& ar, CDblPointVector& v);

}  // namespace ORVMATH
