// CRoute2: points and tangent directions at a mile, the clothoid's standard
// frame, and the arcs of arc elements.
#include <orvmath/route2.h>

#include <orvmath/arcbuild.h>
#include <orvmath/pointline.h>
#include <orvmath/tolerance.h>

#include "route_detail.h"

#include <algorithm>
#include <cmath>
#include <limits>

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

}  // namespace

// ---------------------------------------------------------------- standard frame

namespace {

// The denominators of the clothoid series for a parameter A, worked out once
// per element: 40 A^4, 3456 A^8, 6 A^2, 336 A^6, 42240 A^10 and 2 A^2.
void SeriesDenominators(double A, double (&d)[6]) {
    d[0] = 40.0 * IntPow(A, 4);
    d[1] = 3456.0 * IntPow(A, 8);
    d[2] = 6.0 * IntPow(A, 2);
    d[3] = 336.0 * IntPow(A, 6);
    d[4] = 42240.0 * IntPow(A, 10);
    d[5] = 2.0 * A * A;
}

// The clothoid at arc length l in its standard frame: three terms of the
// series in each coordinate. Every clothoid point of the route comes from here.
// The powers are IntPow's products, shared: l^3 = l l^2, l^5 = l l^4,
// l^7 = l^3 l^4, l^9 = l l^8 and l^11 = l^3 l^8.
CDblPoint SeriesPoint(const double (&d)[6], double l) {
    const double l2 = l * l, l4 = l2 * l2, l8 = l4 * l4, l3 = l * l2;
    const double x = l - l * l4 / d[0] + l * l8 / d[1];
    const double y = l3 / d[2] - l3 * l4 / d[3] + l3 * l8 / d[4];
    return CDblPoint(x, y);
}

}  // namespace

namespace {
// The clothoid itself at arc length l: x = l sum (-1)^n t^(2n) / ((2n)! (4n + 1)),
// y = l sum (-1)^n t^(2n+1) / ((2n+1)! (4n + 3)) with t = l^2 / (2 A^2), summed
// until the terms no longer change the sums.
CDblPoint ExactPoint(double A, double l) {
    const double t = l * l / (2.0 * A * A);
    if (!(t <= 8.0)) return CDblPoint(std::nan(""), std::nan(""));
    double x = 0.0, y = 0.0, term = 1.0;  // term = (-1)^n t^k / k!, k = 2n or 2n + 1
    for (int k = 0; k < 80; ++k) {
        const double add = term / (2.0 * k + 1.0);
        if (k % 2 == 0)
            x += add;
        else
            y += add;
        if (k > 4 && std::fabs(add) < 1e-17 * (std::fabs(x) + std::fabs(y))) break;
        term *= t / (k + 1.0);
        if (k % 2 == 1) term = -term;
    }
    return CDblPoint(l * x, l * y);
}
}  // namespace

double CRoute2::GetStandardTangetAngle(double A, double l) { return l * l / (2.0 * A * A); }

CDblPoint CRoute2::GetStandardPointExact(double A, double l, double offset) {
    const CDblPoint p = ExactPoint(A, l);
    if (offset == 0.0) return p;
    return CLine2(p, GetStandardTangetAngle(A, l), 1.0).SelfOffset(offset).start;
}

CDblPoint CRoute2::GetStandardPoint(double A, double l, double offset) {
    double d[6];
    SeriesDenominators(A, d);
    const CDblPoint p = SeriesPoint(d, l);
    if (offset == 0.0) return p;
    return CLine2(p, GetStandardTangetAngle(A, l), 1.0).SelfOffset(offset).start;
}

namespace {
CDblPoint ToWorld(const CDblPoint& origin, double c, double s, bool keepSide, const CDblPoint& p) {
    const double y = keepSide ? p.y : -p.y;
    return CDblPoint(origin.x + p.x * c - y * s, origin.y + p.x * s + y * c);
}
}  // namespace

CDblPoint CRoute2::Standard2World(const CDblPoint& origin, double angle, bool keepSide, const CDblPoint& p) {
    return ToWorld(origin, std::cos(angle), std::sin(angle), keepSide, p);
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
                                      bool& fromCurve, bool& turnsRight, ClothoidMode mode) {
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
    const auto standard = mode == CLOTHOID_EXACT ? GetStandardPointExact : GetStandardPoint;
    CDblPoint q1 = standard(A, A * A / r1, 0.0);
    CDblPoint q2 = standard(A, A * A / r2, 0.0);
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
    return CalArcFromCenter(centre, r, p1.pt, p2.pt, ccw);
}

CArc2 CRoute2::ArcFromTangentThrough(const CCriticalPoint& p1, const CCriticalPoint& p2) {
    return CalArcFromSTE(p1.pt, p1.angle, p2.pt);
}

// ---------------------------------------------------------------- evaluation

namespace {

using Geometry = detail::RouteElementGeometry;

// The unit vector in the direction `angle`.
CDblSize Direction(double angle) { return CDblSize(std::cos(angle), std::sin(angle)); }

// Everything about the element p1 -> p2 that does not depend on the mile.
Geometry Prepare(const CCriticalPoint& p1, const CCriticalPoint& p2, ClothoidMode mode) {
    Geometry g;
    switch (p1.type) {
        case SEGMENT_LINE:
            g.kind = Geometry::Line;
            g.chord = CLine2(p1.pt, p2.pt);
            g.length = g.chord.Length();
            g.tangent = Direction(p1.angle);  // a straight keeps its stored direction
            return g;
        case SEGMENT_ARC:
            g.arc = CRoute2::ArcFromTangentRadius(p1, p2);
            if (!g.arc.IsNull()) {
                g.kind = Geometry::Arc;
                g.length = g.arc.Length();
                g.angle0 = NormalizeAng_Rad(g.arc.startAngle);
                // The tangent is the radial direction turned a quarter toward the travel.
                g.turn = g.arc.sweepAngle > 0.0 ? kHalfPi : -kHalfPi;
                return g;
            }
            g.arc = CRoute2::ArcFromTangentThrough(p1, p2);
            if (!g.arc.IsNull()) {
                g.kind = Geometry::ArcThrough;
                g.length = g.arc.Length();
                g.angle0 = p1.angle;
                double turn = p2.angle - p1.angle;
                // Angles of a loaded route are taken as stored: an exact remainder
                // first, so that a huge or infinite difference cannot loop for ever.
                if (!(std::fabs(turn) <= 8.0 * kPi)) turn = std::fmod(turn, k2Pi);
                while (turn > kPi) turn -= k2Pi;
                while (turn < -kPi) turn += k2Pi;
                g.turn = turn;
                return g;
            }
            g.kind = Geometry::Chord;  // neither arc exists: the chord
            g.chord = CLine2(p1.pt, p2.pt);
            g.length = g.chord.Length();
            g.tangent = Direction((p1.angle + p2.angle) * 0.5);
            return g;
        case SEGMENT_TRANSITION: {
            // A transition whose next point is not ahead has no length: its point is p2.
            if (!IsAhead(p1, p2)) {
                g.kind = Geometry::TransitionAtEnd;
                return g;
            }
            g.kind = Geometry::Transition;
            CCriticalPoint origin;
            CRoute2::GetTransitionStartPoint(p1, p2, origin, g.fromCurve, g.turnsRight, mode);
            g.exact = mode == CLOTHOID_EXACT;
            g.origin = origin.pt;
            g.frameAngle = origin.angle;
            g.frameCos = std::cos(origin.angle);
            g.frameSin = std::sin(origin.angle);
            // The frame's y axis points to the side of the element's far end from the origin.
            const CDblPoint& side = g.fromCurve ? p1.pt : p2.pt;
            g.keepSide = CLine2(origin.pt, origin.angle, 1.0).WhichSide(side, 0.0) == 1;
            g.A = p1.spiralA;
            g.l1 = ClothoidLength(g.A, p1.radius);
            SeriesDenominators(g.A, g.series);
            return g;
        }
        default:
            return g;  // unknown kinds: the element's first point
    }
}

// Where the element p1 -> p2 is at distance s from its start: the point, the
// tangent direction (what the critical point there holds as pt and angle)
// and, when WithTangent, the unit vector of that direction, taken from what
// the evaluation has already worked out where it can.
struct Station {
    CDblPoint pt;
    double angle = 0.0;
    CDblSize tangent;
};

template <bool WithTangent>
inline void StationAt(const Geometry& g, const CCriticalPoint& p1, const CCriticalPoint& p2, double s, Station& at) {
    switch (g.kind) {
        case Geometry::Line:
            at.pt = g.chord.Point(s / g.length);
            at.angle = p1.angle;
            if (WithTangent) at.tangent = g.tangent;
            return;
        case Geometry::Arc: {
            const double t = s / g.length, theta = g.arc.startAngle + t * g.arc.sweepAngle;
            const double c = std::cos(theta), sn = std::sin(theta);
            at.pt = CDblPoint(g.arc.centre.x + g.arc.radius * c, g.arc.centre.y + g.arc.radius * sn);
            at.angle = NormalizeAng_Rad(g.angle0 + g.arc.sweepAngle * t + g.turn);
            // The tangent is the radius turned a quarter toward the travel.
            if (WithTangent) at.tangent = g.turn > 0.0 ? CDblSize(-sn, c) : CDblSize(sn, -c);
            return;
        }
        case Geometry::ArcThrough: {
            const double t = s / g.length;
            at.pt = g.arc.Point(t);
            at.angle = NormalizeAng_Rad(g.angle0 + g.turn * t);
            break;
        }
        case Geometry::Chord:
            at.pt = g.chord.Point(s / g.length);
            at.angle = (p1.angle + p2.angle) * 0.5;
            if (WithTangent) at.tangent = g.tangent;
            return;
        case Geometry::TransitionAtEnd:
            at.pt = p2.pt;
            at.angle = p2.angle;
            break;
        case Geometry::Transition: {
            const double l = g.fromCurve ? g.l1 - s : g.l1 + s;
            const CDblPoint q = g.exact ? ExactPoint(g.A, l) : SeriesPoint(g.series, l);
            double angle = l * l / g.series[5];  // the standard tangent angle
            if (g.turnsRight) angle = -angle;
            if (g.fromCurve) angle += kPi;  // the frame runs against the direction of travel
            at.pt = ToWorld(g.origin, g.frameCos, g.frameSin, g.keepSide, q);
            at.angle = NormalizeAng_Rad(angle + g.frameAngle);
            break;
        }
        case Geometry::Other:
            at.pt = p1.pt;
            at.angle = p1.angle;
            break;
    }
    if (WithTangent) at.tangent = Direction(at.angle);
}

// The critical point at distance s from the start of the element p1 -> p2,
// and the unit tangent there (the direction of cp.angle) when `tangent` is
// given.
void Evaluate(const Geometry& g, const CCriticalPoint& p1, const CCriticalPoint& p2, double s, CCriticalPoint& cp,
              CDblSize* tangent = nullptr) {
    Station at;
    if (tangent)
        StationAt<true>(g, p1, p2, s, at);
    else
        StationAt<false>(g, p1, p2, s, at);
    cp = g.kind == Geometry::TransitionAtEnd ? p2 : p1;
    cp.pt = at.pt;
    cp.angle = at.angle;
    if (g.kind == Geometry::Chord) cp.type = SEGMENT_LINE;
    if (g.kind == Geometry::Transition) {
        const double l = g.fromCurve ? g.l1 - s : g.l1 + s;
        cp.radius = IsDoubleEqual(l, 0.0) ? kInfiniteRadius : g.A * g.A / l;
    }
    if (tangent) *tangent = at.tangent;
}

}  // namespace

void CRoute2::RebuildMileIndex() {
    const INT_PTR n = m_SegMiles.GetSize();
    m_SegEnds.SetSize(n);
    double sum = 0.0;
    for (INT_PTR i = 0; i < n; ++i) {
        const double m = m_SegMiles[i];
        // The search relies on the running remainders falling monotonically.
        if (!(m >= 0.0) || !std::isfinite(m)) {
            m_SegEnds.RemoveAll();
            break;
        }
        sum += m;
        m_SegEnds[i] = sum;
    }
    // Buckets of equal chainage, about two per element, each naming the
    // element where it begins: a mile's element is then found in a step or two.
    m_MileBuckets.clear();
    if (m_SegEnds.GetSize() > 0 && m_SegEnds[n - 1] > 0.0) {
        const INT_PTR buckets = 2 * n;
        m_BucketMiles = m_SegEnds[n - 1] / static_cast<double>(buckets);
        const double* e = m_SegEnds.GetData();
        for (INT_PTR b = 0, k = 0; b < buckets; ++b) {
            while (k + 1 < n && e[k] <= static_cast<double>(b) * m_BucketMiles) ++k;
            m_MileBuckets.push_back(static_cast<int>(k));
        }
    }
    const INT_PTR elements = m_CriticalPoints.GetSize() - 1;
    m_Geometry.clear();
    for (INT_PTR i = 0; i < elements; ++i) m_Geometry.push_back(Prepare(m_CriticalPoints[i], m_CriticalPoints[i + 1], m_ClothoidMode));
}

void CRoute2::SetClothoidMode(ClothoidMode mode) {
    m_ClothoidMode = mode == CLOTHOID_EXACT ? CLOTHOID_EXACT : CLOTHOID_SERIES;
    RebuildMileIndex();
}

namespace {

// Does d lie in element k by the margin SureSlack gives? Then fromStart is the distance into it.
inline bool SurelyIn(const double* e, INT_PTR n, double slack, double d, INT_PTR k, double& fromStart) {
    if (k < 0 || k >= n || !(k == 0 || d - e[k - 1] >= slack) || !(d - e[k] < -slack)) return false;
    fromStart = k == 0 ? d : d - e[k - 1];
    return true;
}

}  // namespace

int CRoute2::SearchElement(double d, double& fromStart) const {
    // The element where d's bucket of the mile index begins, or the next
    // one, when the mile lies there beyond rounding doubt; else the full search.
    const INT_PTR n = m_SegEnds.GetSize();
    if (n == m_SegMiles.GetSize() && n > 0 && std::isfinite(d) && !m_MileBuckets.empty()) {
        const double* e = m_SegEnds.GetData();
        const double slack = SureSlack(e, n, d);
        const double b = std::floor(d / m_BucketMiles);
        const INT_PTR last = static_cast<INT_PTR>(m_MileBuckets.size()) - 1;
        const INT_PTR k = m_MileBuckets[static_cast<std::size_t>(b > 0.0 ? std::min<double>(b, last) : 0.0)];
        if (SurelyIn(e, n, slack, d, k, fromStart)) return static_cast<int>(k);
        if (SurelyIn(e, n, slack, d, k + 1, fromStart)) return static_cast<int>(k + 1);
    }
    int i = -1;
    bool unused = false;
    if (!FindMile(d, 0.0, 0.0, i, unused, fromStart)) {
        double rest = 0.0;
        i = WalkMiles(d, 0.0, rest);
        if (i >= 0) fromStart = m_SegMiles[i] + rest;
    }
    return i;
}

int CRoute2::ElementNear(double mile, int hint, double& s, INT_PTR& snapped) const {
    snapped = -1;
    if (IsNull()) return -1;
    const INT_PTR n = m_CriticalPoints.GetSize();
    if (std::fabs(mile - m_dStartMile) < kRouteMileSnapTol) {
        snapped = 0;
        return 0;
    }
    if (std::fabs(mile - m_dEndMile) < kRouteMileSnapTol) {
        snapped = n - 1;
        return static_cast<int>(n - 2);
    }
    const double d = mile - m_dStartMile;
    if (d < 0.0 || d > GetMile()) return -1;
    // The element the hint names, or the next one, when the mile lies there
    // beyond rounding doubt: the common case of a batch, here so that it
    // costs no call.
    const INT_PTR segs = m_SegEnds.GetSize();
    if (segs == m_SegMiles.GetSize() && segs > 0 && std::isfinite(d)) {
        const double* e = m_SegEnds.GetData();
        const double slack = SureSlack(e, segs, d);
        if (SurelyIn(e, segs, slack, d, hint, s)) return hint;
        if (SurelyIn(e, segs, slack, d, hint + 1, s)) return hint + 1;
    }
    return SearchElement(d, s);
}

int CRoute2::CriticalPointNear(double mile, int hint, CCriticalPoint& cp, CDblSize* tangent) const {
    double s = 0.0;
    INT_PTR snapped = -1;
    const int i = ElementNear(mile, hint, s, snapped);
    if (i < 0) return -1;
    if (snapped >= 0) {
        cp = m_CriticalPoints[snapped];
        if (tangent) *tangent = Direction(cp.angle);
        return i;
    }
    const CCriticalPoint& p1 = m_CriticalPoints[i];
    const CCriticalPoint& p2 = m_CriticalPoints[i + 1];
    if (static_cast<std::size_t>(i) < m_Geometry.size())
        Evaluate(m_Geometry[static_cast<std::size_t>(i)], p1, p2, s, cp, tangent);
    else
        Evaluate(Prepare(p1, p2, m_ClothoidMode), p1, p2, s, cp, tangent);
    return i;
}

void CRoute2::EvaluateElement(int i, double s, CCriticalPoint& cp, CDblSize& tangent) const {
    const CCriticalPoint& p1 = m_CriticalPoints[i];
    const CCriticalPoint& p2 = m_CriticalPoints[i + 1];
    if (static_cast<std::size_t>(i) < m_Geometry.size())
        Evaluate(m_Geometry[static_cast<std::size_t>(i)], p1, p2, s, cp, &tangent);
    else
        Evaluate(Prepare(p1, p2, m_ClothoidMode), p1, p2, s, cp, &tangent);
}

int CRoute2::GetCriticalPoint(double mile, CCriticalPoint& cp) const {
    return CriticalPointNear(mile, -1, cp, nullptr);
}

namespace {
// The point `shift` to the left of p along the unit tangent t.
CDblPoint Shifted(const CDblPoint& p, const CDblSize& t, double shift) {
    if (shift == 0.0) return p;
    return CDblPoint(p.x - shift * t.cy, p.y + shift * t.cx);
}
}  // namespace

CDblPoint CRoute2::GetPoint(double mile, double offset) const {
    CDblPoint p;
    GetPoints(&mile, &offset, 1, &p, nullptr);
    return p;
}

void CRoute2::GetPoints(const double* miles, const double* offsets, INT_PTR count, CDblPoint* points,
                        double* angles) const {
    // GetPoint's answer at each mile, without building a critical point per
    // mile: only the point, direction and tangent are worked out.
    const CCriticalPoint* cps = m_CriticalPoints.GetData();
    int hint = -1;
    for (INT_PTR k = 0; k < count; ++k) {
        double s = 0.0;
        INT_PTR snapped = -1;
        const int i = ElementNear(miles[k], hint, s, snapped);
        if (i < 0) {
            points[k] = CDblPoint();
            if (angles) angles[k] = std::numeric_limits<double>::quiet_NaN();
            continue;
        }
        hint = i;
        Station at;
        if (snapped >= 0) {
            at.pt = cps[snapped].pt;
            at.angle = cps[snapped].angle;
            at.tangent = Direction(at.angle);
        } else if (static_cast<std::size_t>(i) < m_Geometry.size()) {
            StationAt<true>(m_Geometry[static_cast<std::size_t>(i)], cps[i], cps[i + 1], s, at);
        } else {
            StationAt<true>(Prepare(cps[i], cps[i + 1], m_ClothoidMode), cps[i], cps[i + 1], s, at);
        }
        points[k] = Shifted(at.pt, at.tangent, m_dOffset + (offsets ? offsets[k] : 0.0));
        if (angles) angles[k] = at.angle;
    }
}

void CRoute2::GetPoints(const CDblArray& miles, const CDblArray& offsets, CDblPointArray& points,
                        CDblArray& angles) const {
    points.RemoveAll();
    angles.RemoveAll();
    if (offsets.GetSize() < miles.GetSize()) return;
    points.SetSize(miles.GetSize());
    angles.SetSize(miles.GetSize());
    GetPoints(miles.GetData(), offsets.GetData(), miles.GetSize(), points.GetData(), angles.GetData());
}

void CRoute2::GetPoints(const CDblArray& miles, double offset, CDblPointArray& points, CDblArray& angles) const {
    CDblArray offsets;
    offsets.SetSize(miles.GetSize());
    offsets = offset;
    GetPoints(miles, offsets, points, angles);
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
