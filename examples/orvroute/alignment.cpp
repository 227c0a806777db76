#include "alignment.h"

#include <orvmath/angle.h>
#include <orvmath/routedesign.h>

#include <cmath>
#include <cstdio>

namespace orvroute {

using ORVMATH::CCriticalPoint;
using ORVMATH::CDblPoint;
using ORVMATH::CRoute2;

namespace {

ORVMATH::CRouteElement Straight(double length) { return {ORVMATH::SEGMENT_LINE, length, 0.0, 0.0, 0.0}; }
ORVMATH::CRouteElement Arc(double radius, double length) { return {ORVMATH::SEGMENT_ARC, length, radius, 0.0, 0.0}; }
ORVMATH::CRouteElement SpiralIn(double A, double radius) {
    return {ORVMATH::SEGMENT_TRANSITION, 0.0, radius, 0.0, A};
}
ORVMATH::CRouteElement SpiralOut(double A, double radius) {
    return {ORVMATH::SEGMENT_TRANSITION, 0.0, 0.0, radius, A};
}

// Laid out with the series the routes evaluate with by default, so that each
// element meets the next point in that mode.
CRoute2 LaidOut(double angle, const ORVMATH::CRouteElementArray& elements, double startMile) {
    ORVMATH::CCriticalPointArray pts;
    ORVMATH::BuildRouteFromElements(CDblPoint(0.0, 0.0), angle, elements, pts, ORVMATH::CLOTHOID_SERIES);
    return CRoute2(pts, startMile, 0.0);
}

}  // namespace

CRoute2 SampleRoute() {
    const double A = 250.0, R = 500.0;
    ORVMATH::CRouteElementArray e;
    for (const auto& el : {Straight(800.0), SpiralIn(A, R), Arc(R, 700.0), SpiralOut(A, R), Straight(1200.0)})
        e.Add(el);
    return LaidOut(20.0 * ORVMATH::kPi / 180.0, e, 1000.0);
}

CRoute2 GeneratedRoute(int elements) {
    const double A = 150.0;
    ORVMATH::CRouteElementArray e;
    for (int i = 0; i < elements / 4; ++i) {
        const double R = i % 2 == 0 ? 300.0 : -300.0;  // left and right in turn
        for (const auto& el : {Straight(200.0), SpiralIn(A, R), Arc(R, 100.0), SpiralOut(A, R)}) e.Add(el);
    }
    return LaidOut(0.0, e, 0.0);
}

}  // namespace orvroute
