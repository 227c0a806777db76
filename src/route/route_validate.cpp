// CRoute2::Validate: the inconsistencies the route model accepts silently
// (it was built to take stored data as it stands), found and measured.
#include <orvmath/route2.h>

#include <orvmath/angle.h>

#include "route_detail.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace ORVMATH {

using namespace route_detail;

namespace {

bool IsFinitePoint(const CCriticalPoint& p) {
    return std::isfinite(p.pt.x) && std::isfinite(p.pt.y) && std::isfinite(p.angle) && std::isfinite(p.radius) &&
           std::isfinite(p.spiralA) && std::isfinite(p.endRadius);
}

bool IsRadius(double r) { return r == kInfiniteRadius || r > 0.0; }

// Angle between two directions, in [0, pi].
double AngleBetween(double a, double b) { return std::fabs(NormalizeAng_Rad(a - b)); }

// Signed distance of q ahead of p along p's tangent.
double Ahead(const CCriticalPoint& p, const CDblPoint& q) {
    return (q.x - p.pt.x) * std::cos(p.angle) + (q.y - p.pt.y) * std::sin(p.angle);
}

// Signed distance of q to the left of p's tangent.
double LeftOf(const CCriticalPoint& p, const CDblPoint& q) {
    return (q.y - p.pt.y) * std::cos(p.angle) - (q.x - p.pt.x) * std::sin(p.angle);
}

}  // namespace

const char* CRoute2::ProblemName(ProblemKind kind) {
    switch (kind) {
        case PROBLEM_NO_CHAINAGE: return "route spans no chainage";
        case PROBLEM_NOT_FINITE: return "number that is not finite";
        case PROBLEM_UNKNOWN_TYPE: return "unknown element type";
        case PROBLEM_BAD_RADIUS: return "impossible radius";
        case PROBLEM_BAD_SPIRAL: return "transition that cannot change curvature";
        case PROBLEM_ZERO_LENGTH: return "element of zero length";
        case PROBLEM_BEHIND: return "transition whose next point is behind it";
        case PROBLEM_HEADING: return "straight whose heading does not point at its next point";
        case PROBLEM_OFF_CIRCLE: return "arc end off its circle";
        case PROBLEM_GAP: return "element end misses the next point";
        case PROBLEM_KINK: return "tangent at the element end differs from the next point's angle";
        case PROBLEM_OFFSET_LOOP: return "offset larger than a curve radius (the offset line loops)";
        case PROBLEM_STALE_TABLE: return "stored mile table differs from the points";
    }
    return "unknown problem";
}

int CRoute2::Validate(CArray<Problem>& problems, double gapTol, double angleTol) const {
    problems.RemoveAll();
    const CCriticalPointArray& pts = m_CriticalPoints;
    const INT_PTR n = pts.GetSize();
    const auto report = [&](ProblemKind kind, INT_PTR element, double size) {
        problems.Add(Problem{kind, static_cast<int>(element), size});
    };

    // Route-wide: some chainage at all, and a mile table that belongs to the points.
    double chainage = 0.0, spread = 0.0;
    std::vector<double> miles(static_cast<std::size_t>(std::max<INT_PTR>(n - 1, 0)), 0.0);
    for (INT_PTR i = 0; i + 1 < n; ++i) {
        double len = 0.0;
        GetSegLength(pts[i], pts[i + 1], m_dOffset, miles[static_cast<std::size_t>(i)], len);
        if (std::isfinite(miles[static_cast<std::size_t>(i)])) chainage += miles[static_cast<std::size_t>(i)];
    }
    for (const CCriticalPoint& p : pts)
        if (std::isfinite(p.pt.x) && std::isfinite(p.pt.y)) spread = std::max(spread, Distance(p.pt, pts[0].pt));
    if (n < 2 || !(chainage > gapTol)) report(PROBLEM_NO_CHAINAGE, -1, spread);
    if (m_SegMiles.GetSize() != std::max<INT_PTR>(n - 1, 0)) {
        report(PROBLEM_STALE_TABLE, -1, 0.0);
    } else {
        for (INT_PTR i = 0; i + 1 < n; ++i) {
            const double diff = std::fabs(m_SegMiles[i] - miles[static_cast<std::size_t>(i)]);
            if (diff > gapTol || (std::isnan(diff) && std::isfinite(miles[static_cast<std::size_t>(i)])))
                report(PROBLEM_STALE_TABLE, i, diff);
        }
    }

    for (INT_PTR i = 0; i < n; ++i)
        if (!IsFinitePoint(pts[i])) report(PROBLEM_NOT_FINITE, i, 0.0);

    for (INT_PTR i = 0; i + 1 < n; ++i) {
        const CCriticalPoint& p1 = pts[i];
        const CCriticalPoint& p2 = pts[i + 1];
        const double mile = miles[static_cast<std::size_t>(i)];
        if (!IsFinitePoint(p1) || !IsFinitePoint(p2)) continue;  // already reported
        if (p1.type < SEGMENT_LINE || p1.type > SEGMENT_TRANSITION) {
            report(PROBLEM_UNKNOWN_TYPE, i, static_cast<double>(p1.type));
            continue;
        }
        // The side of a curve's centre: +1 left, -1 right; 0 for a straight.
        int inside = 0;
        double smallestRadius = kInfiniteRadius;
        if (p1.type == SEGMENT_LINE) {
            const double len = Distance(p1.pt, p2.pt);
            if (len <= gapTol) {
                report(PROBLEM_ZERO_LENGTH, i, len);
                continue;
            }
            const double off = AngleBetween(std::atan2(p2.pt.y - p1.pt.y, p2.pt.x - p1.pt.x), p1.angle);
            if (off > angleTol) report(PROBLEM_HEADING, i, off);
        } else if (p1.type == SEGMENT_ARC) {
            if (!(p1.radius > 0.0)) {
                report(PROBLEM_BAD_RADIUS, i, p1.radius);
                continue;
            }
            inside = LeftOf(p1, p2.pt) >= 0.0 ? 1 : -1;
            const double cx = p1.pt.x - inside * p1.radius * std::sin(p1.angle);
            const double cy = p1.pt.y + inside * p1.radius * std::cos(p1.angle);
            const double off = std::fabs(Distance(p2.pt, CDblPoint(cx, cy)) - p1.radius);
            if (off > gapTol) {
                report(PROBLEM_OFF_CIRCLE, i, off);
                continue;
            }
            smallestRadius = p1.radius;
        } else {
            const double r2 = FarRadius(p1, p2);
            if (!IsRadius(p1.radius) || !IsRadius(r2)) {
                report(PROBLEM_BAD_RADIUS, i, IsRadius(p1.radius) ? r2 : p1.radius);
                continue;
            }
            if (!(p1.spiralA > 0.0) || p1.radius == r2) {
                report(PROBLEM_BAD_SPIRAL, i, p1.spiralA > 0.0 ? 0.0 : p1.spiralA);
                continue;
            }
            if (!IsAhead(p1, p2)) {
                report(PROBLEM_BEHIND, i, -Ahead(p1, p2.pt));
                continue;
            }
            bool fromCurve = false, turnsRight = false;
            GetBool(p1, p2, fromCurve, turnsRight);
            // turnsRight is seen from the straight end: running out of a curve, the turn is the other way.
            inside = turnsRight == fromCurve ? 1 : -1;
            smallestRadius = p1.radius == kInfiniteRadius ? r2
                             : r2 == kInfiniteRadius      ? p1.radius
                                                          : std::min(p1.radius, r2);
        }
        if (mile <= gapTol) report(PROBLEM_ZERO_LENGTH, i, mile);
        if (inside != 0 && m_dOffset * inside >= smallestRadius)
            report(PROBLEM_OFFSET_LOOP, i, m_dOffset * inside - smallestRadius);

        // The join, with the element evaluated as the route evaluates it.
        CCriticalPoint end;
        CDblSize tangent;
        EvaluateElement(static_cast<int>(i), mile, end, tangent);
        const double gap = Distance(end.pt, p2.pt);
        if (!(gap <= gapTol)) report(PROBLEM_GAP, i, gap);
        const double kink = AngleBetween(end.angle, p2.angle);
        if (!(kink <= angleTol)) report(PROBLEM_KINK, i, kink);
    }
    return static_cast<int>(problems.GetSize());
}

}  // namespace ORVMATH
