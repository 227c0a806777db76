// Angle normalisation, sector tests and degree-minute-second splitting.
// Functions ending in _Rad (and Rad2DMS, IsVectorBetweenRadAngs) take
// radians; all others take degrees. None of them reads the global epsilons.
#pragma once

#include <orvmath/export.h>

namespace ORVMATH {

constexpr double kPi = 3.141592653589793;
constexpr double k2Pi = 6.283185307179586;
constexpr double kRadToDeg = 57.29577951308232;
constexpr double kSectorSlackDeg = 1e-4;  // widens sector bounds so end points count as inside

// deg into (-180, 180]; -180 becomes 180.
ORVMATH_API double NormalizeAng(double deg);
// rad into (-pi, pi]; -pi becomes pi.
ORVMATH_API double NormalizeAng_Rad(double rad);
// In place: exactly 2*pi becomes 0, negative values move into (0, 2*pi], and
// every other value (above 2*pi too, and NaN) is left alone. This partial
// reduction is what callers were built against and is kept.
ORVMATH_API void NormalAngle(double& rad);

// Is ang within the sector from start over sweep (degrees, sweep may be
// negative)? Bounds are widened by kSectorSlackDeg; ang and start are
// expected in (-180, 180].
ORVMATH_API bool IsAngleInSector(double ang, double start, double sweep);
ORVMATH_API bool IsAngleInSector_Rad(double ang, double start, double sweep);

// Does the direction of (dx, dy) lie between a1 and a2 (both included, exact)?
// When a1 > a2 the interval wraps through +-180 degrees (+-pi).
ORVMATH_API bool IsVectorBetweenDegAngs(double dx, double dy, double a1, double a2);
ORVMATH_API bool IsVectorBetweenRadAngs(double dx, double dy, double a1, double a2);

// Degrees, minutes and seconds, each truncated toward zero and carrying the
// sign of the angle; the degrees are reduced by the remainder of 360.
ORVMATH_API void Deg2DMS(double deg, int& d, int& m, double& s);
ORVMATH_API void Rad2DMS(double rad, int& d, int& m, double& s);

}  // namespace ORVMATH
