// The route's evaluation as it was first written, element geometry rebuilt on
// every call, kept as the reference that the precomputed evaluation must
// reproduce (tests) and outrun (benchmarks). Only the public interface is used.
#pragma once

#include <orvmath/angle.h>
#include <orvmath/route2.h>
#include <orvmath/tolerance.h>

#include <algorithm>
#include <cmath>
#include <vector>

namespace route_reference {
using namespace ORVMATH;

inline bool IsAhead(const CCriticalPoint& p1, const CCriticalPoint& p2) {
    return CLine2(p1.pt, p1.angle + kPi / 2, 1.0).WhichSide(p2.pt, kRouteAheadTol) == -1;
}

inline void Evaluate(const CCriticalPoint& p1, const CCriticalPoint& p2, double s, CCriticalPoint& cp) {
    cp = p1;
    if (p1.type == SEGMENT_LINE) {
        const CLine2 chord(p1.pt, p2.pt);
        cp.pt = chord.Point(s / chord.Length());
    } else if (p1.type == SEGMENT_ARC) {
        CArc2 arc = CRoute2::ArcFromTangentRadius(p1, p2);
        if (!arc.IsNull()) {
            const double t = s / arc.Length();
            cp.pt = arc.Point(t);
            cp.angle = NormalizeAng_Rad(NormalizeAng_Rad(arc.startAngle) + arc.sweepAngle * t +
                                        (arc.sweepAngle > 0.0 ? kPi / 2 : -kPi / 2));
        } else if (!(arc = CRoute2::ArcFromTangentThrough(p1, p2)).IsNull()) {
            const double t = s / arc.Length();
            cp.pt = arc.Point(t);
            double turn = p2.angle - p1.angle;
            if (!(std::fabs(turn) <= 8.0 * kPi)) turn = std::fmod(turn, k2Pi);
            while (turn > kPi) turn -= k2Pi;
            while (turn < -kPi) turn += k2Pi;
            cp.angle = NormalizeAng_Rad(p1.angle + turn * t);
        } else {
            const CLine2 chord(p1.pt, p2.pt);
            cp.type = SEGMENT_LINE;
            cp.pt = chord.Point(s / chord.Length());
            cp.angle = (p1.angle + p2.angle) * 0.5;
        }
    } else if (p1.type == SEGMENT_TRANSITION) {
        if (!IsAhead(p1, p2)) {
            cp = p2;
            return;
        }
        CCriticalPoint origin;
        bool fromCurve = false, turnsRight = false;
        CRoute2::GetTransitionStartPoint(p1, p2, origin, fromCurve, turnsRight);
        const double A = p1.spiralA, l1 = p1.radius == -1.0 ? 0.0 : A * A / p1.radius;
        const double l = fromCurve ? l1 - s : l1 + s;
        cp.radius = IsDoubleEqual(l, 0.0) ? -1.0 : A * A / l;
        const CDblPoint q = CRoute2::GetStandardPoint(A, l, 0.0);
        cp.angle = CRoute2::GetStandardTangetAngle(A, l) * (turnsRight ? -1 : 1);
        cp.pt = CRoute2::Standard2World(origin.pt, origin.angle, fromCurve ? p1.pt : p2.pt, q);
        cp.angle = NormalizeAng_Rad(cp.angle + (fromCurve ? kPi : 0.0) + origin.angle);
    }
}

// The running sums of the mile table, which the first implementation also
// kept to find a mile's element by bisection.
inline std::vector<double> MileEnds(const CRoute2& route) {
    std::vector<double> ends;
    double sum = 0.0;
    for (int i = 0; i + 1 < route.GetCriticalPoints().GetSize(); ++i) ends.push_back(sum += route.GetSegMile(i));
    return ends;
}

// GetCriticalPoint: the end snaps, then the element by a walk down the mile
// table, or by bisection over `ends` (MileEnds) when given.
inline int CriticalPoint(const CRoute2& route, double mile, CCriticalPoint& cp,
                         const std::vector<double>* ends = nullptr) {
    const CCriticalPointArray& pts = route.GetCriticalPoints();
    if (route.IsNull()) return -1;
    if (std::fabs(mile - route.GetStartMile()) < kRouteMileSnapTol) {
        cp = pts[0];
        return 0;
    }
    if (std::fabs(mile - route.GetEndMile()) < kRouteMileSnapTol) {
        cp = pts[pts.GetSize() - 1];
        return static_cast<int>(pts.GetSize() - 2);
    }
    double d = mile - route.GetStartMile();
    if (d < 0.0 || d > route.GetMile()) return -1;
    if (ends) {
        const auto hit = std::partition_point(ends->begin(), ends->end(), [d](double e) { return !(d - e < 0.0); });
        if (hit == ends->end()) return -1;
        const int i = static_cast<int>(hit - ends->begin());
        Evaluate(pts[i], pts[i + 1], i == 0 ? d : d - (*ends)[i - 1], cp);
        return i;
    }
    for (int i = 0; i + 1 < pts.GetSize(); ++i) {
        d -= route.GetSegMile(i);
        if (d < 0.0) {
            Evaluate(pts[i], pts[i + 1], route.GetSegMile(i) + d, cp);
            return i;
        }
    }
    return -1;
}

// GetPoint: the offset applied by a unit segment along the tangent.
inline CDblPoint Point(const CRoute2& route, double mile, double offset, const std::vector<double>* ends = nullptr) {
    CCriticalPoint cp;
    if (CriticalPoint(route, mile, cp, ends) < 0) return CDblPoint();
    const double shift = route.GetOffset() + offset;
    if (shift == 0.0) return cp.pt;
    return CLine2(cp.pt, cp.angle, 1.0).SelfOffset(shift).start;
}

}  // namespace route_reference
