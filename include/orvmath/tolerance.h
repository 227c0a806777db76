// Process-wide tolerance model: epsilon holders, tolerant comparisons,
// comparison functors and scope guards.
//
// Every epsilon holder keeps the value in force and one backup slot (not a
// stack): set() moves the current value into the backup, reset() moves the
// backup back. Guards of the same kind therefore do not nest; callers and
// stored behaviour depend on that, so it is kept.
//
// The holders are process-wide. Each axis is a relaxed atomic so that reads
// and writes from several threads are well defined without locks; a change
// made on one thread is seen by all of them.
#pragma once

#include <orvmath/export.h>

#include <atomic>
#include <cmath>
#include <cstdint>

namespace ORVMATH {

class CDblPoint;
class CDblPoint3;

namespace detail {

// N per-axis epsilons with their backup slots.
template <int N>
struct EpsilonSlots {
    std::atomic<double> axis[N];

    double Get(int i) const noexcept { return axis[i].load(std::memory_order_relaxed); }
    void Put(int i, double v) noexcept { axis[i].store(v, std::memory_order_relaxed); }
};

// Moves the current values into the backup and stores the new ones; the
// previous values are written to old.
template <int N>
void SetEpsilon(EpsilonSlots<N>& cur, EpsilonSlots<N>& backup, const double (&v)[N], double (&old)[N]) noexcept {
    for (int i = 0; i < N; ++i) {
        old[i] = cur.Get(i);
        backup.Put(i, old[i]);
        cur.Put(i, v[i]);
    }
}

template <int N>
void ResetEpsilon(EpsilonSlots<N>& cur, const EpsilonSlots<N>& backup) noexcept {
    for (int i = 0; i < N; ++i) cur.Put(i, backup.Get(i));
}

// Double to 32-bit integer by truncation toward zero. Out-of-range values and
// NaN give INT32_MIN, the value the original x86 conversion produced, instead
// of undefined behaviour.
inline std::int32_t TruncToInt32(double v) noexcept {
    if (!(v > -2147483649.0 && v < 2147483648.0)) return INT32_MIN;
    return static_cast<std::int32_t>(v);
}

}  // namespace detail

// Scalar epsilon for number comparisons (default 1e-6).
class ORVMATH_API CDoubleEpsilon {
public:
    static double get() noexcept { return s_epsilon.Get(0); }
    static double set(double eps) noexcept;  // returns the previous value
    static void reset() noexcept;            // back to the single saved value
    static constexpr double max_value() noexcept { return 1000000.0; }

private:
    static detail::EpsilonSlots<1> s_epsilon, s_backup;
};

// Epsilon for distance decisions (default 1e-3).
class ORVMATH_API CDistanceEpsilon {
public:
    static double get() noexcept { return s_epsilon.Get(0); }
    static double set(double eps) noexcept;
    static void reset() noexcept;
    static constexpr double max_value() noexcept { return 1000000.0; }

private:
    static detail::EpsilonSlots<1> s_epsilon, s_backup;
};

// Per-axis epsilon of planar point equality (default 1e-6, 1e-6).
class ORVMATH_API CDblPointEpsilon {
public:
    static CDblPoint get() noexcept;
    static double x() noexcept { return s_epsilon.Get(0); }
    static double y() noexcept { return s_epsilon.Get(1); }
    static CDblPoint set(double e) noexcept;
    static CDblPoint set(double ex, double ey) noexcept;
    static void reset() noexcept;

private:
    static detail::EpsilonSlots<2> s_epsilon, s_backup;
};

// Per-axis epsilon of spatial point equality (default 1e-6 on each axis).
class ORVMATH_API CDblPoint3Epsilon {
public:
    static CDblPoint3 get() noexcept;
    static double x() noexcept { return s_epsilon.Get(0); }
    static double y() noexcept { return s_epsilon.Get(1); }
    static double z() noexcept { return s_epsilon.Get(2); }
    static CDblPoint3 set(double e) noexcept;
    static CDblPoint3 set(double ex, double ey, double ez) noexcept;
    static void reset() noexcept;

private:
    static detail::EpsilonSlots<3> s_epsilon, s_backup;
};

// Per-axis epsilon of rectangle equality (default 1e-6, 1e-6).
class ORVMATH_API CDblRectEpsilon {
public:
    static CDblPoint get() noexcept;
    static double x() noexcept { return s_epsilon.Get(0); }
    static double y() noexcept { return s_epsilon.Get(1); }
    static CDblPoint set(double e) noexcept;
    static CDblPoint set(double ex, double ey) noexcept;
    static void reset() noexcept;

private:
    static detail::EpsilonSlots<2> s_epsilon, s_backup;
};

// Which ends of the interval IsDoubleInRegion includes. Any other value acts
// as DblRegionOpen.
enum DblRegionType : int {  // fixed type: any int is a valid value
    DblRegionClosed = 0,     // lo <= v <= hi
    DblRegionLeftOpen = 1,   // lo <  v <= hi
    DblRegionRightOpen = 2,  // lo <= v <  hi
    DblRegionOpen = 3        // lo <  v <  hi
};

// Tolerant comparisons. Equality is absolute and includes the boundary;
// anything compared with a NaN is false.
inline bool IsDoubleEqualEps(double a, double b, double eps) noexcept { return std::fabs(a - b) <= eps; }
inline bool IsDoubleGreaterEps(double a, double b, double eps) noexcept {
    return a > b && !IsDoubleEqualEps(a, b, eps);
}
inline bool IsDoubleGreaterEqualEps(double a, double b, double eps) noexcept {
    return a > b || IsDoubleEqualEps(a, b, eps);
}
inline bool IsDoubleLessEps(double a, double b, double eps) noexcept { return b > a && !IsDoubleEqualEps(a, b, eps); }
inline bool IsDoubleLessEqualEps(double a, double b, double eps) noexcept {
    return b > a || IsDoubleEqualEps(a, b, eps);
}

inline bool IsDoubleEqual(double a, double b) noexcept { return IsDoubleEqualEps(a, b, CDoubleEpsilon::get()); }
inline bool IsDoubleGreater(double a, double b) noexcept { return IsDoubleGreaterEps(a, b, CDoubleEpsilon::get()); }
inline bool IsDoubleGreaterEqual(double a, double b) noexcept {
    return IsDoubleGreaterEqualEps(a, b, CDoubleEpsilon::get());
}
inline bool IsDoubleLess(double a, double b) noexcept { return IsDoubleLessEps(a, b, CDoubleEpsilon::get()); }
inline bool IsDoubleLessEqual(double a, double b) noexcept { return IsDoubleLessEqualEps(a, b, CDoubleEpsilon::get()); }

// v between b1 and b2 (given in either order) with the ends chosen by type.
// With a NaN bound both ends take b2.
inline bool IsDoubleInRegionEps(double v, double b1, double b2, double eps, DblRegionType type) noexcept {
    const double hi = b1 > b2 ? b1 : b2;
    const double lo = b2 > b1 ? b1 : b2;
    switch (type) {
        case DblRegionClosed: return IsDoubleGreaterEqualEps(v, lo, eps) && IsDoubleLessEqualEps(v, hi, eps);
        case DblRegionLeftOpen: return IsDoubleGreaterEps(v, lo, eps) && IsDoubleLessEqualEps(v, hi, eps);
        case DblRegionRightOpen: return IsDoubleGreaterEqualEps(v, lo, eps) && IsDoubleLessEps(v, hi, eps);
        default: return IsDoubleGreaterEps(v, lo, eps) && IsDoubleLessEps(v, hi, eps);
    }
}
inline bool IsDoubleInRegion(double v, double b1, double b2, DblRegionType type) noexcept {
    return IsDoubleInRegionEps(v, b1, b2, CDoubleEpsilon::get(), type);
}

// Comparison functors for sorting and searching, on the scalar epsilon.
struct CDoubleEqual {
    bool operator()(const double& a, const double& b) const noexcept { return IsDoubleEqual(a, b); }
};
struct CDoubleMax {
    bool operator()(const double& a, const double& b) const noexcept { return IsDoubleGreater(a, b); }
};
struct CDoubleMaxEqual {
    bool operator()(const double& a, const double& b) const noexcept { return IsDoubleGreaterEqual(a, b); }
};
struct CDoubleMin {
    bool operator()(const double& a, const double& b) const noexcept { return IsDoubleLess(a, b); }
};
struct CDoubleMinEqual {
    bool operator()(const double& a, const double& b) const noexcept { return IsDoubleLessEqual(a, b); }
};

// Scope guards: set one epsilon for the lifetime of the guard, then reset()
// it. Not copyable (a copy would reset twice).
class ORVMATH_API CEpsilonReserveDouble {
public:
    explicit CEpsilonReserveDouble(double eps) noexcept;
    ~CEpsilonReserveDouble();
    CEpsilonReserveDouble(const CEpsilonReserveDouble&) = delete;
    CEpsilonReserveDouble& operator=(const CEpsilonReserveDouble&) noexcept { return *this; }
};

class ORVMATH_API CEpsilonReserveDistance {
public:
    explicit CEpsilonReserveDistance(double eps) noexcept;
    ~CEpsilonReserveDistance();
    CEpsilonReserveDistance(const CEpsilonReserveDistance&) = delete;
    CEpsilonReserveDistance& operator=(const CEpsilonReserveDistance&) noexcept { return *this; }
};

class ORVMATH_API CEpsilonReserveDblPoint {
public:
    explicit CEpsilonReserveDblPoint(double e) noexcept;
    CEpsilonReserveDblPoint(double ex, double ey) noexcept;
    ~CEpsilonReserveDblPoint();
    CEpsilonReserveDblPoint(const CEpsilonReserveDblPoint&) = delete;
    CEpsilonReserveDblPoint& operator=(const CEpsilonReserveDblPoint&) noexcept { return *this; }
};

class ORVMATH_API CEpsilonReserveDblPoint3 {
public:
    explicit CEpsilonReserveDblPoint3(double e) noexcept;
    CEpsilonReserveDblPoint3(double ex, double ey, double ez) noexcept;
    ~CEpsilonReserveDblPoint3();
    CEpsilonReserveDblPoint3(const CEpsilonReserveDblPoint3&) = delete;
    CEpsilonReserveDblPoint3& operator=(const CEpsilonReserveDblPoint3&) noexcept { return *this; }
};

class ORVMATH_API CEpsilonReserveDblRect {
public:
    explicit CEpsilonReserveDblRect(double e) noexcept;
    CEpsilonReserveDblRect(double ex, double ey) noexcept;
    ~CEpsilonReserveDblRect();
    CEpsilonReserveDblRect(const CEpsilonReserveDblRect&) = delete;
    CEpsilonReserveDblRect& operator=(const CEpsilonReserveDblRect&) noexcept { return *this; }
};

}  // namespace ORVMATH
