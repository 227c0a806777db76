#include <orvmath/angle.h>

#include <orvmath/tolerance.h>

#include <cmath>

namespace ORVMATH {

double NormalizeAng(double deg) {
    const int k = detail::TruncToInt32(std::floor(deg / 360.0));
    double r = deg - k * 360.0;
    if (r > 180.0) r -= 360.0;
    return r;
}

double NormalizeAng_Rad(double rad) {
    // Within two turns of zero the quotient's floor is known without
    // dividing: these bounds keep rad / 2pi clear of the integers (it cannot
    // round onto one, nor underflow to -0). The arithmetic after it is the same.
    int k;
    if (rad >= 0.0 && rad <= 6.28)
        k = 0;
    else if (rad >= -6.28 && rad <= -1e-200)
        k = -1;
    else if (rad >= 6.2832 && rad <= 12.56)
        k = 1;
    else if (rad >= -12.56 && rad <= -6.2832)
        k = -2;
    else
        k = detail::TruncToInt32(std::floor(rad / k2Pi));
    double r = rad - (2.0 * k) * kPi;
    if (r > kPi) r -= k2Pi;
    return r;
}

void NormalAngle(double& rad) {
    if (rad == k2Pi) {
        rad = 0.0;
    } else if (rad < 0.0) {
        const int k = detail::TruncToInt32(std::fabs(rad) / k2Pi);
        rad += (k + 1.0) * k2Pi;
    }
}

bool IsAngleInSector(double ang, double start, double sweep) {
    const double end = start + sweep;
    const double t = kSectorSlackDeg;
    if (end > 180.0) return ang + t >= start || ang <= end - 360.0 + t;
    if (end < -180.0) return ang <= start + t || ang + t >= end + 360.0;
    return (start <= ang + t && ang <= end + t) || (end <= ang + t && ang <= start + t);
}

bool IsAngleInSector_Rad(double ang, double start, double sweep) {
    return IsAngleInSector(ang * kRadToDeg, start * kRadToDeg, sweep * kRadToDeg);
}

namespace {
bool IsBetween(double a, double a1, double a2) { return (a1 <= a && a <= a2) || (a1 > a2 && (a >= a1 || a <= a2)); }
}  // namespace

bool IsVectorBetweenDegAngs(double dx, double dy, double a1, double a2) {
    return IsBetween(std::atan2(dy, dx) * kRadToDeg, a1, a2);
}

bool IsVectorBetweenRadAngs(double dx, double dy, double a1, double a2) {
    return IsBetween(std::atan2(dy, dx), a1, a2);
}

void Deg2DMS(double deg, int& d, int& m, double& s) {
    d = detail::TruncToInt32(deg);
    const double f = (deg - d) * 60.0;
    m = detail::TruncToInt32(f);
    s = (f - m) * 60.0;
    d = d % 360;
}

void Rad2DMS(double rad, int& d, int& m, double& s) { Deg2DMS(rad * kRadToDeg, d, m, s); }

}  // namespace ORVMATH
