// CRoute2: the critical points, the per-element length tables and the lookup
// from a mile to an element.
#include <orvmath/route2.h>

#include <orvmath/pointline.h>
#include <orvmath/tolerance.h>

#include "route_detail.h"

#include <algorithm>
#include <cmath>

namespace ORVMATH {

using namespace route_detail;

bool operator==(const CCriticalPoint& a, const CCriticalPoint& b) {
    if (a.type != b.type) return false;
    if (a.type < SEGMENT_LINE || a.type > SEGMENT_TRANSITION) return true;
    if (a.type == SEGMENT_TRANSITION &&
        !(IsDoubleEqual(a.spiralA, b.spiralA) && IsDoubleEqual(a.endRadius, b.endRadius)))
        return false;
    if (!IsDoubleEqual(a.angle, b.angle) || !IsDoubleEqual(a.radius, b.radius)) return false;
    CEpsilonReserveDblPoint loose(kRoutePointMatchTol);
    return a.pt == b.pt;
}

CRoute2::CRoute2() : m_dOffset(0.0), m_dStartMile(0.0), m_dEndMile(-1.0) {}

CRoute2::CRoute2(const CCriticalPointArray& points, double startMile, double offset) : CRoute2() {
    Set(points, startMile, offset);
}

void CRoute2::Set(const CCriticalPointArray& points, double startMile, double offset) {
    m_dStartMile = startMile;
    m_dOffset = offset;
    m_CriticalPoints.Copy(points);
    for (CCriticalPoint& p : m_CriticalPoints) p.angle = NormalizeAng_Rad(p.angle);
    InitLens();
}

void CRoute2::SetNull() {
    m_CriticalPoints.RemoveAll();
    m_dEndMile = -1.0;
    m_dStartMile = 0.0;
    m_dOffset = 0.0;
    m_SegMiles.RemoveAll();
    m_SegLens.RemoveAll();
    m_SegEnds.RemoveAll();
    m_Geometry.clear();
    m_MileBuckets.clear();
}

double CRoute2::GetLength() const {
    double sum = 0.0;
    for (double len : m_SegLens) sum += len;
    return sum;
}

void CRoute2::GetSegLength(const CCriticalPoint& p1, const CCriticalPoint& p2, double offset, double& segMile,
                           double& segLength) {
    switch (p1.type) {
        case SEGMENT_LINE:
            segMile = segLength = Distance(p1.pt, p2.pt);
            return;
        case SEGMENT_ARC: {
            const double a1 = p1.angle < 0.0 ? p1.angle + k2Pi : p1.angle;
            const double a2 = p2.angle < 0.0 ? p2.angle + k2Pi : p2.angle;
            const int side = CLine2(p1.pt, p1.angle, 1.0).WhichSide(p2.pt, kRouteArcSideTol);
            if (side != 1 && side != -1) {
                segMile = segLength = Distance(p1.pt, p2.pt);
                return;
            }
            double sweep = side == 1 ? a2 - a1 : a1 - a2;
            if (!(sweep > 0.0)) sweep += k2Pi;  // equal angles: a full turn
            segMile = p1.radius * sweep;
            segLength = (p1.radius - side * offset) * sweep;
            return;
        }
        case SEGMENT_TRANSITION: {
            if (!IsAhead(p1, p2)) {
                segMile = segLength = 0.0;
                return;
            }
            const double A = p1.spiralA;
            const double r2 = FarRadius(p1, p2);
            segMile = segLength = std::fabs(ClothoidLength(A, r2) - ClothoidLength(A, p1.radius));
            if (offset != 0.0) {
                bool fromCurve = false, turnsRight = false;
                GetBool(p1, p2, fromCurve, turnsRight);
                const bool outer = ((offset < 0.0) != fromCurve) != turnsRight;
                segLength = GetOffsetLength(segMile, offset, ClothoidAngle(A, p1.radius) - ClothoidAngle(A, r2), outer);
            }
            return;
        }
        default:
            return;  // unknown kinds: the outputs keep what the caller put there
    }
}

void CRoute2::GetBool(const CCriticalPoint& p1, const CCriticalPoint& p2, bool& fromCurve, bool& turnsRight) {
    const double r1 = p1.radius, r2 = FarRadius(p1, p2);
    fromCurve = r1 == kInfiniteRadius ? false : (r2 == kInfiniteRadius ? true : r1 < r2);
    // The reference line starts at the element's end of larger radius and points into it.
    const CLine2 ref = fromCurve ? CLine2(p2.pt, p2.angle + kPi, 1.0) : CLine2(p1.pt, p1.angle, 1.0);
    turnsRight = ref.WhichSide(fromCurve ? p1.pt : p2.pt, 0.0) == -1;
}

void CRoute2::InitLens() {
    const INT_PTR elements = std::max<INT_PTR>(0, m_CriticalPoints.GetSize() - 1);
    m_SegMiles.SetSize(elements);
    m_SegLens.SetSize(elements);
    double sum = 0.0;
    for (INT_PTR i = 0; i < elements; ++i) {
        double segMile = 0.0, segLength = 0.0;  // what an element of unknown kind spans
        GetSegLength(m_CriticalPoints[i], m_CriticalPoints[i + 1], m_dOffset, segMile, segLength);
        m_SegMiles[i] = segMile;
        m_SegLens[i] = segLength;
        sum += segMile;
    }
    m_dEndMile = m_dStartMile + sum;
    RebuildMileIndex();
}

int CRoute2::WalkMiles(double d, double below, double& rest) const {
    const double* m = m_SegMiles.GetData();
    const INT_PTR n = m_SegMiles.GetSize();
    for (INT_PTR i = 0; i < n; ++i) {
        d -= m[i];
        if (d < below) {
            rest = d;
            return static_cast<int>(i);
        }
    }
    return -1;
}

// The walk compares r_i = (((d - m0) - m1) - ... - mi) with `below`; with
// non-negative miles r_i falls as i grows, so the first i where it drops
// below is found by bisection over the running sums e_i, using d - e_i for
// r_i. The two differ only by rounding, at most `slack`; whenever a decision
// is closer than that, the caller walks instead, so both give one answer.
bool CRoute2::FindMile(double d, double below, double above, int& index, bool& overAbove, double& fromStart) const {
    const INT_PTR n = m_SegEnds.GetSize();
    if (n == 0 || n != m_SegMiles.GetSize() || !std::isfinite(d)) return false;
    const double* e = m_SegEnds.GetData();
    const double slack = route_detail::SureSlack(e, n, d);
    const double* hit = std::partition_point(e, e + n, [d, below](double ei) { return !(d - ei < below); });
    const INT_PTR k = hit - e;
    const bool prevSure = k == 0 || d - e[k - 1] >= below + slack;
    if (k == n) {
        index = -1;
        return prevSure;
    }
    const double rest = d - e[k];
    if (!prevSure || !(rest < below - slack)) return false;
    if (rest > above + slack)
        overAbove = true;
    else if (rest <= above - slack)
        overAbove = false;
    else
        return false;
    index = static_cast<int>(k);
    fromStart = k == 0 ? d : d - e[k - 1];
    return true;
}

int CRoute2::GetSegmentIndex(double mile, bool upper) const {
    const double d = mile - m_dStartMile;
    const INT_PTR n = m_SegMiles.GetSize();
    if (IsNull() || d < -kRouteMileBoundaryTol || n == 0) return -1;
    // A remainder within the tolerance of 0 puts the mile on the element's end.
    int i = -1;
    bool onEnd = false;
    double unused = 0.0;
    if (!FindMile(d, kRouteMileBoundaryTol, -kRouteMileBoundaryTol, i, onEnd, unused)) {
        double rest = 0.0;
        i = WalkMiles(d, kRouteMileBoundaryTol, rest);
        onEnd = rest > -kRouteMileBoundaryTol;
    }
    if (i >= 0 && onEnd && upper && i + 1 < n) return i + 1;
    return i;
}

bool operator==(const CRoute2& a, const CRoute2& b) {
    if (!(std::fabs(a.GetStartMile() - b.GetStartMile()) < kRouteStartMileTol)) return false;
    if (!IsDoubleEqual(a.GetOffset(), b.GetOffset())) return false;
    const CCriticalPointArray& pa = a.GetCriticalPoints();
    const CCriticalPointArray& pb = b.GetCriticalPoints();
    if (pa.GetSize() != pb.GetSize()) return false;
    for (INT_PTR i = 0; i < pa.GetSize(); ++i)
        if (!(pa[i] == pb[i])) return false;
    return true;
}

}  // namespace ORVMATH
