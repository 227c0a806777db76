#include <orvmath/tolerance.h>

#include <orvmath/point2.h>
#include <orvmath/point3.h>

namespace ORVMATH {

// Constant-initialised, so they hold their defaults before any other static
// initialiser can run.
detail::EpsilonSlots<1> CDoubleEpsilon::s_epsilon{{1e-6}};
detail::EpsilonSlots<1> CDoubleEpsilon::s_backup{{1e-6}};
detail::EpsilonSlots<1> CDistanceEpsilon::s_epsilon{{1e-3}};
detail::EpsilonSlots<1> CDistanceEpsilon::s_backup{{1e-3}};
detail::EpsilonSlots<2> CDblPointEpsilon::s_epsilon{{1e-6, 1e-6}};
detail::EpsilonSlots<2> CDblPointEpsilon::s_backup{{1e-6, 1e-6}};
detail::EpsilonSlots<3> CDblPoint3Epsilon::s_epsilon{{1e-6, 1e-6, 1e-6}};
detail::EpsilonSlots<3> CDblPoint3Epsilon::s_backup{{1e-6, 1e-6, 1e-6}};
detail::EpsilonSlots<2> CDblRectEpsilon::s_epsilon{{1e-6, 1e-6}};
detail::EpsilonSlots<2> CDblRectEpsilon::s_backup{{1e-6, 1e-6}};

namespace {

template <int N>
double SetScalar(detail::EpsilonSlots<N>& cur, detail::EpsilonSlots<N>& backup, double eps) noexcept {
    const double v[1] = {eps};
    double old[1];
    detail::SetEpsilon(cur, backup, v, old);
    return old[0];
}

CDblPoint SetPair(detail::EpsilonSlots<2>& cur, detail::EpsilonSlots<2>& backup, double ex, double ey) noexcept {
    const double v[2] = {ex, ey};
    double old[2];
    detail::SetEpsilon(cur, backup, v, old);
    return CDblPoint(old[0], old[1]);
}

}  // namespace

double CDoubleEpsilon::set(double eps) noexcept { return SetScalar(s_epsilon, s_backup, eps); }
void CDoubleEpsilon::reset() noexcept { detail::ResetEpsilon(s_epsilon, s_backup); }

double CDistanceEpsilon::set(double eps) noexcept { return SetScalar(s_epsilon, s_backup, eps); }
void CDistanceEpsilon::reset() noexcept { detail::ResetEpsilon(s_epsilon, s_backup); }

CDblPoint CDblPointEpsilon::get() noexcept { return CDblPoint(x(), y()); }
CDblPoint CDblPointEpsilon::set(double e) noexcept { return set(e, e); }
CDblPoint CDblPointEpsilon::set(double ex, double ey) noexcept { return SetPair(s_epsilon, s_backup, ex, ey); }
void CDblPointEpsilon::reset() noexcept { detail::ResetEpsilon(s_epsilon, s_backup); }

CDblPoint3 CDblPoint3Epsilon::get() noexcept { return CDblPoint3(x(), y(), z()); }
CDblPoint3 CDblPoint3Epsilon::set(double e) noexcept { return set(e, e, e); }
CDblPoint3 CDblPoint3Epsilon::set(double ex, double ey, double ez) noexcept {
    const double v[3] = {ex, ey, ez};
    double old[3];
    detail::SetEpsilon(s_epsilon, s_backup, v, old);
    return CDblPoint3(old[0], old[1], old[2]);
}
void CDblPoint3Epsilon::reset() noexcept { detail::ResetEpsilon(s_epsilon, s_backup); }

CDblPoint CDblRectEpsilon::get() noexcept { return CDblPoint(x(), y()); }
CDblPoint CDblRectEpsilon::set(double e) noexcept { return set(e, e); }
CDblPoint CDblRectEpsilon::set(double ex, double ey) noexcept { return SetPair(s_epsilon, s_backup, ex, ey); }
void CDblRectEpsilon::reset() noexcept { detail::ResetEpsilon(s_epsilon, s_backup); }

CEpsilonReserveDouble::CEpsilonReserveDouble(double eps) noexcept { CDoubleEpsilon::set(eps); }
CEpsilonReserveDouble::~CEpsilonReserveDouble() { CDoubleEpsilon::reset(); }
CEpsilonReserveDistance::CEpsilonReserveDistance(double eps) noexcept { CDistanceEpsilon::set(eps); }
CEpsilonReserveDistance::~CEpsilonReserveDistance() { CDistanceEpsilon::reset(); }
CEpsilonReserveDblPoint::CEpsilonReserveDblPoint(double e) noexcept { CDblPointEpsilon::set(e); }
CEpsilonReserveDblPoint::CEpsilonReserveDblPoint(double ex, double ey) noexcept { CDblPointEpsilon::set(ex, ey); }
CEpsilonReserveDblPoint::~CEpsilonReserveDblPoint() { CDblPointEpsilon::reset(); }
CEpsilonReserveDblPoint3::CEpsilonReserveDblPoint3(double e) noexcept { CDblPoint3Epsilon::set(e); }
CEpsilonReserveDblPoint3::CEpsilonReserveDblPoint3(double ex, double ey, double ez) noexcept {
    CDblPoint3Epsilon::set(ex, ey, ez);
}
CEpsilonReserveDblPoint3::~CEpsilonReserveDblPoint3() { CDblPoint3Epsilon::reset(); }
CEpsilonReserveDblRect::CEpsilonReserveDblRect(double e) noexcept { CDblRectEpsilon::set(e); }
CEpsilonReserveDblRect::CEpsilonReserveDblRect(double ex, double ey) noexcept { CDblRectEpsilon::set(ex, ey); }
CEpsilonReserveDblRect::~CEpsilonReserveDblRect() { CDblRectEpsilon::reset(); }

}  // namespace ORVMATH
