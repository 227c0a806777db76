// Route design by parameters: critical points laid out from element lists
// and tangent polygons, and routes read back into both forms.
#include <orvmath/routedesign.h>

#include <orvmath/angle.h>
#include <orvmath/line2.h>

#include "route_detail.h"

#include <cmath>
#include <vector>

namespace ORVMATH {

using namespace route_detail;

namespace {

constexpr double kDesignSliverTol = 1e-9;   // a straight shorter than this between two curves is left out
constexpr double kDesignStraightOn = 1e-12;  // a vertex deflecting less than this (radians) has no curve

double Curvature(double signedRadius) { return signedRadius == 0.0 ? 0.0 : 1.0 / signedRadius; }
double RouteRadius(double curvature) { return curvature == 0.0 ? kInfiniteRadius : 1.0 / std::fabs(curvature); }
bool IsPositive(double v) { return v > 0.0 && std::isfinite(v); }

// Walks along the alignment adding the critical point where each element
// begins, the way the route evaluates the element from it.
class Walker {
public:
    Walker(const CDblPoint& start, double angle, ClothoidMode mode, CCriticalPointArray& out)
        : pos_(start), angle_(angle), mode_(mode), out_(out) {}

    bool Line(double length) {
        if (!IsPositive(length)) return false;
        out_.Add(CCriticalPoint(SEGMENT_LINE, pos_, angle_, kInfiniteRadius));
        Move(length, angle_);
        curvature_ = 0.0;
        return true;
    }

    bool Arc(double radius, double length) {
        if (!IsPositive(length) || !IsPositive(std::fabs(radius))) return false;
        const double turn = length / radius;
        if (!(std::fabs(turn) < k2Pi)) return false;
        out_.Add(CCriticalPoint(SEGMENT_ARC, pos_, angle_, std::fabs(radius)));
        // Along the chord: no centre far away whose coordinates lose the digits.
        Move(2.0 * radius * std::sin(turn * 0.5), angle_ + turn * 0.5);
        angle_ += turn;
        curvature_ = 1.0 / radius;
        return true;
    }

    // A clothoid from curvature k1 to k2, split where it passes zero.
    bool Transition(double k1, double k2, double A) {
        if (!IsPositive(A) || !(k1 != k2) || !std::isfinite(k1) || !std::isfinite(k2)) return false;
        if ((k1 < 0.0 && k2 > 0.0) || (k1 > 0.0 && k2 < 0.0)) return OneSide(k1, 0.0, A) && OneSide(0.0, k2, A);
        return OneSide(k1, k2, A);
    }

    void End() { out_.Add(CCriticalPoint(SEGMENT_LINE, pos_, angle_, RouteRadius(curvature_))); }

private:
    void Move(double distance, double direction) {
        pos_ = CDblPoint(pos_.x + distance * std::cos(direction), pos_.y + distance * std::sin(direction));
    }

    // The clothoid's standard frame (see CRoute2::GetTransitionStartPoint):
    // origin at zero curvature, x along the tangent there toward the curve, y
    // to the side it turns to. A piece that loosens runs against that x axis.
    bool OneSide(double k1, double k2, double A) {
        const double side = k1 + k2 > 0.0 ? 1.0 : -1.0;
        const double l1 = A * A * std::fabs(k1), l2 = A * A * std::fabs(k2);
        const double t1 = CRoute2::GetStandardTangetAngle(A, l1), t2 = CRoute2::GetStandardTangetAngle(A, l2);
        if (!(t1 <= kRouteDesignMaxClothoidTurn && t2 <= kRouteDesignMaxClothoidTurn)) return false;
        const auto standard = mode_ == CLOTHOID_EXACT ? CRoute2::GetStandardPointExact : CRoute2::GetStandardPoint;
        const CDblPoint q1 = standard(A, l1, 0.0), q2 = standard(A, l2, 0.0);
        out_.Add(CCriticalPoint(SEGMENT_TRANSITION, pos_, angle_, RouteRadius(k1), A, RouteRadius(k2)));
        const bool tightens = l2 > l1;
        const double ySide = tightens ? side : -side;
        const double frame = tightens ? angle_ - side * t1 : angle_ - kPi + side * t1;
        const double dx = q2.x - q1.x, dy = ySide * (q2.y - q1.y);
        const double c = std::cos(frame), s = std::sin(frame);
        pos_ = CDblPoint(pos_.x + dx * c - dy * s, pos_.y + dx * s + dy * c);
        angle_ = tightens ? frame + side * t2 : frame + kPi - side * t2;
        curvature_ = k2;
        return true;
    }

    CDblPoint pos_;
    double angle_;
    double curvature_ = 0.0;
    ClothoidMode mode_;
    CCriticalPointArray& out_;
};

bool LayOut(Walker& walk, const CRouteElement& e) {
    switch (e.type) {
        case SEGMENT_LINE:
            return walk.Line(e.length);
        case SEGMENT_ARC:
            return walk.Arc(e.radius, e.length);
        case SEGMENT_TRANSITION: {
            const double k1 = Curvature(e.startRadius), k2 = Curvature(e.radius);
            double A = e.spiralA;
            if (!IsPositive(A) && IsPositive(e.length)) A = std::sqrt(e.length / std::fabs(k2 - k1));
            return walk.Transition(k1, k2, A);
        }
        default:
            return false;
    }
}

// The side element p1 -> p2 turns to: +1 left, -1 right, 0 when it does not tell.
double TurnSide(const CCriticalPoint& p1, const CCriticalPoint& p2) {
    if (p1.type == SEGMENT_TRANSITION) {
        const double r1 = p1.radius, r2 = FarRadius(p1, p2);
        const bool loosens = r1 != kInfiniteRadius && (r2 == kInfiniteRadius || r1 < r2);
        // A loosening clothoid, seen backwards from its far end, turns the other way.
        if (loosens) return -CLine2(p2.pt, p2.angle + kPi, 1.0).WhichSide(p1.pt, 0.0);
    }
    return CLine2(p1.pt, p1.angle, 1.0).WhichSide(p2.pt, 0.0);
}

double SignedRadius(double routeRadius, double side) {
    return routeRadius == kInfiniteRadius || !(routeRadius > 0.0) ? 0.0 : side * routeRadius;
}

CDblPoint Cross(const CDblPoint& p1, double a1, const CDblPoint& p2, double a2, bool& ok) {
    const double c1 = std::cos(a1), s1 = std::sin(a1), c2 = std::cos(a2), s2 = std::sin(a2);
    const double det = c1 * s2 - s1 * c2;
    ok = std::fabs(det) > 1e-12;
    if (!ok) return CDblPoint();
    const double t = ((p2.x - p1.x) * s2 - (p2.y - p1.y) * c2) / det;
    return CDblPoint(p1.x + t * c1, p1.y + t * s1);
}

}  // namespace

int BuildRouteFromElements(const CDblPoint& start, double startAngle, const CRouteElementArray& elements,
                           CCriticalPointArray& points, ClothoidMode mode) {
    points.RemoveAll();
    Walker walk(start, startAngle, mode, points);
    for (INT_PTR i = 0; i < elements.GetSize(); ++i) {
        if (!LayOut(walk, elements[i])) {
            points.RemoveAll();
            return static_cast<int>(i);
        }
    }
    walk.End();
    return -1;
}

int GetRouteElements(const CRoute2& route, CRouteElementArray& elements) {
    elements.RemoveAll();
    const CCriticalPointArray& pts = route.GetCriticalPoints();
    for (INT_PTR i = 0; i + 1 < pts.GetSize(); ++i) {
        const CCriticalPoint &p1 = pts[i], &p2 = pts[i + 1];
        CRouteElement e;
        e.type = p1.type;
        e.length = route.GetSegMile(static_cast<int>(i));
        const double side = TurnSide(p1, p2);
        if (p1.type == SEGMENT_ARC) {
            e.radius = SignedRadius(p1.radius, side);
        } else if (p1.type == SEGMENT_TRANSITION) {
            e.startRadius = SignedRadius(p1.radius, side);
            e.radius = SignedRadius(FarRadius(p1, p2), side);
            e.spiralA = p1.spiralA;
        }
        elements.Add(e);
    }
    return static_cast<int>(elements.GetSize());
}

int BuildRouteFromPI(const CRoutePIArray& pis, CCriticalPointArray& points, ClothoidMode mode) {
    points.RemoveAll();
    const INT_PTR n = pis.GetSize();
    if (n < 2) return 0;
    std::vector<double> legLength(n - 1), legAngle(n - 1);
    for (INT_PTR i = 0; i + 1 < n; ++i) {
        const double dx = pis[i + 1].pt.x - pis[i].pt.x, dy = pis[i + 1].pt.y - pis[i].pt.y;
        legLength[i] = std::hypot(dx, dy);
        if (!IsPositive(legLength[i])) return static_cast<int>(i + 1);
        legAngle[i] = std::atan2(dy, dx);
    }
    CRouteElementArray elements;
    double straight = 0.0;  // of the straight being laid out, not yet given to a curve
    for (INT_PTR i = 1; i < n; ++i) {
        straight += legLength[i - 1];
        if (i == n - 1) break;
        const CRoutePI& v = pis[i];
        const double deflection = NormalizeAng_Rad(legAngle[i] - legAngle[i - 1]);
        if (std::fabs(deflection) < kDesignStraightOn) continue;
        const int bad = static_cast<int>(i);
        if (!(std::fabs(deflection) < kPi - 1e-9) || !IsPositive(v.radius)) return bad;
        if (!(v.A1 >= 0.0 && v.A2 >= 0.0 && std::isfinite(v.A1) && std::isfinite(v.A2))) return bad;
        const double side = deflection > 0.0 ? 1.0 : -1.0, R = side * v.radius;
        const double turnIn = v.A1 * v.A1 / (2.0 * v.radius * v.radius);
        const double turnOut = v.A2 * v.A2 / (2.0 * v.radius * v.radius);
        const double arcTurn = std::fabs(deflection) - turnIn - turnOut;
        if (arcTurn < -kDesignStraightOn) return bad;
        CRouteElementArray curve;
        if (v.A1 > 0.0) curve.Add(CRouteElement{SEGMENT_TRANSITION, 0.0, R, 0.0, v.A1});
        if (arcTurn > kDesignStraightOn) curve.Add(CRouteElement{SEGMENT_ARC, v.radius * arcTurn, R, 0.0, 0.0});
        if (v.A2 > 0.0) curve.Add(CRouteElement{SEGMENT_TRANSITION, 0.0, 0.0, R, v.A2});
        // Where the curve ends relative to where it starts does not depend on
        // where it starts: solve T1 u_in + T2 u_out = that chord for the tangent lengths.
        CCriticalPointArray laid;
        if (BuildRouteFromElements(CDblPoint(), legAngle[i - 1], curve, laid, mode) >= 0) return bad;
        const CDblPoint chord = laid[laid.GetSize() - 1].pt;
        const double ci = std::cos(legAngle[i - 1]), si = std::sin(legAngle[i - 1]);
        const double co = std::cos(legAngle[i]), so = std::sin(legAngle[i]);
        const double det = ci * so - si * co;
        const double T1 = (chord.x * so - chord.y * co) / det, T2 = (ci * chord.y - si * chord.x) / det;
        straight -= T1;
        if (!(T1 >= 0.0 && T2 >= 0.0) || straight < -kDesignSliverTol) return bad;
        if (straight > kDesignSliverTol) elements.Add(CRouteElement{SEGMENT_LINE, straight, 0.0, 0.0, 0.0});
        for (const CRouteElement& e : curve) elements.Add(e);
        straight = -T2;
    }
    if (straight < -kDesignSliverTol) return static_cast<int>(n - 1);
    if (straight > kDesignSliverTol || elements.GetSize() == 0)
        elements.Add(CRouteElement{SEGMENT_LINE, straight, 0.0, 0.0, 0.0});
    if (BuildRouteFromElements(pis[0].pt, legAngle[0], elements, points, mode) >= 0) return static_cast<int>(n - 1);
    return -1;
}

bool CRoute2::GetStandardIntersection(CRoutePIArray& pis) const {
    pis.RemoveAll();
    CRouteElementArray e;
    const int count = GetRouteElements(*this, e);
    if (count == 0) return false;
    const CCriticalPointArray& pts = m_CriticalPoints;
    auto fail = [&pis] {
        pis.RemoveAll();
        return false;
    };
    pis.Add(CRoutePI{pts[0].pt, 0.0, 0.0, 0.0});
    int i = 0;
    while (i < count) {
        if (e[i].type == SEGMENT_LINE) {
            ++i;
            continue;
        }
        const int first = i;
        CRoutePI v;
        double R = 0.0;  // signed, once known
        auto sameRadius = [&R](double r) {
            if (R == 0.0) R = r;
            return std::fabs(r - R) <= 1e-9 * std::fabs(R);
        };
        if (e[i].type == SEGMENT_TRANSITION && e[i].startRadius == 0.0 && e[i].radius != 0.0) {
            R = e[i].radius;
            v.A1 = e[i++].spiralA;
        }
        if (i < count && e[i].type == SEGMENT_ARC && e[i].radius != 0.0) {
            if (!sameRadius(e[i].radius)) return fail();
            ++i;
        }
        if (i < count && e[i].type == SEGMENT_TRANSITION && e[i].radius == 0.0 && e[i].startRadius != 0.0) {
            if (!sameRadius(e[i].startRadius)) return fail();
            v.A2 = e[i++].spiralA;
        }
        if (i == first) return fail();  // a clothoid between two radii, or an unknown kind
        v.radius = std::fabs(R);
        bool ok = false;
        v.pt = Cross(pts[first].pt, pts[first].angle, pts[i].pt, pts[i].angle, ok);
        if (!ok) return fail();
        pis.Add(v);
    }
    pis.Add(CRoutePI{pts[count].pt, 0.0, 0.0, 0.0});
    return true;
}

}  // namespace ORVMATH
