// CRoute2: points and tangent directions at a mile, the clothoid's standard
// frame, and the arcs of arc elements.
#include <orvmath/route2.h>

#include <orvmath/pointline.h>
#include <orvmath/tolerance.h>

#include "route_detail.h"

#include <cmath>

namespace ORVMATH {

using namespace route_detail;

namespace {

// x^n by repeated squaring; a negative n gives the reciprocal.
inline double IntPow(double x, int n) {
    if (n < 0) return 1.0 / IntPow(x, -n);
    double result = 1.0;
    for (; n > 0; n >>= 1, x *= x)
        if (n & 1) result *= x;
    return result;
}

// The arc about `centre` from p1 to p2, turning counter-clockwise when ccw,
// with a sweep in (0, 2*pi] (negated for clockwise).
CArc2 ArcBetween(const CDblPoint& centre, double radius, const CDblPoint& p1, const CDblPoint& p2, bool ccw) {
    const double start = std::atan2(p1.y - centre.y, p1.x - centre.x);
    double sweep = std::atan2(p2.y - centre.y, p2.x - centre.x) - start;
    if (ccw) {
        if (sweep <= 0.0) sweep += k2Pi;
    } else if (sweep >= 0.0) {
        sweep -= k2Pi;
    }
    return CArc2(centre, radius, start, sweep);
}

}  // namespace

// ---------------------------------------------------------------- standard frame

double CRoute2::GetStandardTangetAngle(double A, double l) { return l * l / (2.0 * A * A); }

CDblPoint CRoute2::GetStandardPoint(double A, double l, double offset) {
    const double x = l - IntPow(l, 5) / (40.0 * IntPow(A, 4)) + IntPow(l, 9) / (3456.0 * IntPow(A, 8));
    const double y = IntPow(l, 3) / (6.0 * IntPow(A, 2)) - IntPow(l, 7) / (336.0 * IntPow(A, 6)) +
                     IntPow(l, 11) / (42240.0 * IntPow(A, 10));
    if (offset == 0.0) return CDblPoint(x, y);
    return CLine2(CDblPoint(x, y), GetStandardTangetAngle(A, l), 1.0).SelfOffset(offset).start;
}

CDblPoint CRoute2::Standard2World(const CDblPoint& origin, double angle, bool keepSide, const CDblPoint& p) {
    const double y = keepSide ? p.y : -p.y;
    const double c = std::cos(angle), s = std::sin(angle);
    return CDblPoint(origin.x + p.x * c - y * s, origin.y + p.x * s + y * c);
}

CDblPoint CRoute2::World2Standard(const CDblPoint& origin, double angle, bool keepSide, const CDblPoint& p) {
    const double dx = p.x - origin.x, dy = p.y - origin.y;
    const double c = std::cos(angle), s = std::sin(angle);
    const double y = dy * c - dx * s;
    return CDblPoint(dx * c + dy * s, keepSide ? y : -y);
}

namespace {
bool IsLeftOfAxis(const CDblPoint& origin, double angle, const CDblPoint& sidePoint) {
    return CLine2(origin, angle, 1.0).WhichSide(sidePoint, 0.0) == 1;
}
}  // namespace

CDblPoint CRoute2::Standard2World(const CDblPoint& origin, double angle, const CDblPoint& sidePoint,
                                  const CDblPoint& p) {
    return Standard2World(origin, angle, IsLeftOfAxis(origin, angle, sidePoint), p);
}

CDblPoint CRoute2::World2Standard(const CDblPoint& origin, double angle, const CDblPoint& sidePoint,
                                  const CDblPoint& p) {
    return World2Standard(origin, angle, IsLeftOfAxis(origin, angle, sidePoint), p);
}

void CRoute2::GetTransitionStartPoint(const CCriticalPoint& p1, const CCriticalPoint& p2, CCriticalPoint& origin,
                                      bool& fromCurve, bool& turnsRight) {
    GetBool(p1, p2, fromCurve, turnsRight);
    const double r1 = p1.radius, r2 = FarRadius(p1, p2);
    if (r1 == kInfiniteRadius) {
        origin = p1;
        return;
    }
    if (r2 == kInfiniteRadius) {
        origin = p2;
        origin.spiralA = p1.spiralA;
        origin.angle = p2.angle + kPi;  // pointing back into the curve
        return;
    }
    // A piece between two finite radii: fit the standard chord q1 -> q2 onto p1 -> p2.
    const double A = p1.spiralA;
    CDblPoint q1 = GetStandardPoint(A, A * A / r1, 0.0);
    CDblPoint q2 = GetStandardPoint(A, A * A / r2, 0.0);
    if (turnsRight) {
        q1.y = -q1.y;
        q2.y = -q2.y;
    }
    origin.type = p1.type;
    origin.spiralA = A;
    origin.angle = CLine2(q1, q2).Angle(CLine2(p1.pt, p2.pt));
    origin.pt = CDblPoint(p1.pt.x - q1.x, p1.pt.y - q1.y);
    RotatePoint(p1.pt.x, p1.pt.y, origin.angle, origin.pt);
    origin.radius = kInfiniteRadius;
}

// ---------------------------------------------------------------- arcs of arc elements

CArc2 CRoute2::ArcFromTangentRadius(const CCriticalPoint& p1, const CCriticalPoint& p2) {
    const double r = p1.radius;
    if (!(r > 0.0)) return CArc2();
    const double tx = std::cos(p1.angle), ty = std::sin(p1.angle);
    const double dx = p2.pt.x - p1.pt.x, dy = p2.pt.y - p1.pt.y;
    const double cross = tx * dy - ty * dx;
    if (!(cross != 0.0)) return CArc2();  // p2 on the tangent (or NaN input)
    const bool ccw = cross > 0.0;
    const double side = ccw ? r : -r;
    const CDblPoint centre(p1.pt.x - side * ty, p1.pt.y + side * tx);
    if (!(std::fabs(Distance(centre, p2.pt) - r) <= kRouteArcFitTol)) return CArc2();
    return ArcBetween(centre, r, p1.pt, p2.pt, ccw);
}

CArc2 CRoute2::ArcFromTangentThrough(const CCriticalPoint& p1, const CCriticalPoint& p2) {
    // The centre lies on p1's normal at signed distance r (left positive) with
    // |centre - p2| = |r|, which gives r = |d|^2 / (2 d.n), d = p2 - p1.
    const double nx = -std::sin(p1.angle), ny = std::cos(p1.angle);
    const double dx = p2.pt.x - p1.pt.x, dy = p2.pt.y - p1.pt.y;
    const double dn = dx * nx + dy * ny;
    if (!(dn != 0.0)) return CArc2();
    const double r = (dx * dx + dy * dy) / (2.0 * dn);
    const CDblPoint centre(p1.pt.x + r * nx, p1.pt.y + r * ny);
    return ArcBetween(centre, std::fabs(r), p1.pt, p2.pt, r > 0.0);
}

// ---------------------------------------------------------------- evaluation

namespace {

void EvaluateLine(const CCriticalPoint& p1, const CCriticalPoint& p2, double s, CCriticalPoint& cp) {
    const CLine2 chord(p1.pt, p2.pt);
    cp.pt = chord.Point(s / chord.Length());
}

// Returns false when the element was taken as its chord (angle not to be normalised).
bool EvaluateArc(const CCriticalPoint& p1, const CCriticalPoint& p2, double s, CCriticalPoint& cp) {
    CArc2 arc = CRoute2::ArcFromTangentRadius(p1, p2);
    if (!arc.IsNull()) {
        const double t = s / arc.Length();
        cp.pt = arc.Point(t);
        // The tangent is the radial direction turned a quarter toward the travel.
        cp.angle = NormalizeAng_Rad(arc.startAngle) + arc.sweepAngle * t +
                   (arc.sweepAngle > 0.0 ? kHalfPi : -kHalfPi);
        return true;
    }
    arc = CRoute2::ArcFromTangentThrough(p1, p2);
    if (!arc.IsNull()) {
        const double t = s / arc.Length();
        cp.pt = arc.Point(t);
        double turn = p2.angle - p1.angle;
        // Angles of a loaded route are taken as stored: an exact remainder
        // first, so that a huge or infinite difference cannot loop for ever.
        if (!(std::fabs(turn) <= 8.0 * kPi)) turn = std::fmod(turn, k2Pi);
        while (turn > kPi) turn -= k2Pi;
        while (turn < -kPi) turn += k2Pi;
        cp.angle = p1.angle + turn * t;
        return true;
    }
    cp.type = SEGMENT_LINE;
    EvaluateLine(p1, p2, s, cp);
    cp.angle = (p1.angle + p2.angle) * 0.5;
    return false;
}

// A transition whose next point is not ahead has no length: its point is p2.
void EvaluateTransition(const CCriticalPoint& p1, const CCriticalPoint& p2, double s, CCriticalPoint& cp) {
    if (!IsAhead(p1, p2)) {
        cp = p2;
        return;
    }
    CCriticalPoint origin;
    bool fromCurve = false, turnsRight = false;
    CRoute2::GetTransitionStartPoint(p1, p2, origin, fromCurve, turnsRight);
    const double A = p1.spiralA;
    const double l1 = ClothoidLength(A, p1.radius);
    const double l = fromCurve ? l1 - s : l1 + s;
    cp.radius = IsDoubleEqual(l, 0.0) ? kInfiniteRadius : A * A / l;
    const CDblPoint q = CRoute2::GetStandardPoint(A, l, 0.0);
    cp.angle = CRoute2::GetStandardTangetAngle(A, l);
    if (turnsRight) cp.angle = -cp.angle;
    if (fromCurve) {
        cp.pt = CRoute2::Standard2World(origin.pt, origin.angle, p1.pt, q);
        cp.angle += kPi;  // the frame runs against the direction of travel
    } else {
        cp.pt = CRoute2::Standard2World(origin.pt, origin.angle, p2.pt, q);
    }
    cp.angle = NormalizeAng_Rad(cp.angle + origin.angle);
}

}  // namespace

int CRoute2::GetCriticalPoint(double mile, CCriticalPoint& cp) const {
    if (IsNull()) return -1;
    const INT_PTR n = m_CriticalPoints.GetSize();
    if (std::fabs(mile - m_dStartMile) < kRouteMileSnapTol) {
        cp = m_CriticalPoints[0];
        return 0;
    }
    if (std::fabs(mile - m_dEndMile) < kRouteMileSnapTol) {
        cp = m_CriticalPoints[n - 1];
        return static_cast<int>(n - 2);
    }
    const double d = mile - m_dStartMile;
    if (d < 0.0 || d > GetMile()) return -1;

    // The element where the remaining distance turns negative, and the distance s into it.
    int i = -1;
    double s = 0.0;
    bool unused = false;
    if (!FindMile(d, 0.0, 0.0, i, unused, s)) {
        double rest = 0.0;
        i = WalkMiles(d, 0.0, rest);
        if (i >= 0) s = m_SegMiles[i] + rest;
    }
    if (i < 0) return -1;

    const CCriticalPoint& p1 = m_CriticalPoints[i];
    const CCriticalPoint& p2 = m_CriticalPoints[i + 1];
    cp = p1;
    switch (p1.type) {
        case SEGMENT_LINE:
            EvaluateLine(p1, p2, s, cp);
            break;
        case SEGMENT_ARC:
            if (EvaluateArc(p1, p2, s, cp)) cp.angle = NormalizeAng_Rad(cp.angle);
            break;
        case SEGMENT_TRANSITION:
            EvaluateTransition(p1, p2, s, cp);
            break;
        default:
            break;  // unknown kinds: the element's first point
    }
    return i;
}

CDblPoint CRoute2::GetPoint(double mile, double offset) const {
    CCriticalPoint cp;
    if (GetCriticalPoint(mile, cp) < 0) return CDblPoint();
    const double shift = m_dOffset + offset;
    if (shift == 0.0) return cp.pt;
    return CLine2(cp.pt, cp.angle, 1.0).SelfOffset(shift).start;
}

CDblPoint CRoute2::GetPointOnBase(double mile) const {
    CCriticalPoint cp;
    return GetCriticalPoint(mile, cp) < 0 ? CDblPoint() : cp.pt;
}

CDblPoint CRoute2::GetProportionalPoint(double t) const {
    if (IsNull() || t < 0.0 || t > 1.0) return CDblPoint();
    return GetPointOnBase(m_dStartMile + t * GetMile());
}

SegmentType CRoute2::TypeAt(int index) const { return index < 0 ? SEGMENT_NONE : m_CriticalPoints[index].type; }

SegmentType CRoute2::GetSegmentTypeB(double mile) const { return TypeAt(GetMinSegmentIndex(mile)); }

SegmentType CRoute2::GetSegmentTypeE(double mile) const { return TypeAt(GetMaxSegmentIndex(mile)); }

void CRoute2::GetSegmentType(double mile, SegmentType& b, SegmentType& e) const {
    b = GetSegmentTypeB(mile);
    e = GetSegmentTypeE(mile);
}

}  // namespace ORVMATH
