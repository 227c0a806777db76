#include <orvmath/intersect.h>

#include <orvmath/angle.h>
#include <orvmath/complex.h>
#include <orvmath/line2.h>
#include <orvmath/pointline.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace ORVMATH {

namespace {

// After scaling a line equation to a unit normal, a^2 + b^2 below this means
// the scaling failed (coefficients overflowed), and the line is refused.
constexpr double kUnitNormalFloor = 0.9;

CDblPoint Rel(const CDblPoint& p, const CDblPoint& origin) { return CDblPoint(p.x - origin.x, p.y - origin.y); }

void Translate(CDblPointArray& pts, double dx, double dy) {
    for (INT_PTR k = 0; k < pts.GetSize(); ++k) pts[k].Offset(dx, dy);
}

// The line ab with a unit normal; false when a and b coincide within
// CDblPointEpsilon.
bool UnitLine(const CDblPoint& a, const CDblPoint& b, double& A, double& B, double& C) {
    if (!CalLineABC(a, b, A, B, C)) return false;
    const double n = std::sqrt(A * A + B * B);
    A /= n;
    B /= n;
    C /= n;
    return true;
}

// Is x on the segment ab, allowing `slack` beyond either end? A segment whose
// ends coincide accepts only its own point.
bool IsOnBoundedSegment(const CDblPoint& x, const CDblPoint& a, const CDblPoint& b, double slack) {
    if (a == b) return x == a || x == b;
    const double dx = b.x - a.x, dy = b.y - a.y;
    const double t = ((x.x - a.x) * dx + (x.y - a.y) * dy) / (dx * dx + dy * dy);
    if (t < 0.0) return Distance(x, a) <= slack;
    if (t > 1.0) return Distance(x, b) <= slack;
    return true;
}

// Do the bounding boxes of segments p and q, each grown by `margin`, miss
// each other? NaN coordinates never count as apart.
bool BoxesApart(const CDblPoint& p1, const CDblPoint& p2, const CDblPoint& q1, const CDblPoint& q2, double margin) {
    return std::max(p1.x, p2.x) + margin < std::min(q1.x, q2.x) - margin ||
           std::max(q1.x, q2.x) + margin < std::min(p1.x, p2.x) - margin ||
           std::max(p1.y, p2.y) + margin < std::min(q1.y, q2.y) - margin ||
           std::max(q1.y, q2.y) + margin < std::min(p1.y, p2.y) - margin;
}

// Do a and b both lie on one side of the line through p1 and p2, each
// farther from it than margin? The cross products are compared with margin
// times |dx| + |dy| (not below the segment's length), and margin dwarfs
// their rounding. NaN never counts as one side.
bool EndsOnOneSide(const CDblPoint& p1, const CDblPoint& p2, const CDblPoint& a, const CDblPoint& b, double margin) {
    const double dx = p2.x - p1.x, dy = p2.y - p1.y;
    const double ca = dx * (a.y - p1.y) - dy * (a.x - p1.x);
    const double cb = dx * (b.y - p1.y) - dy * (b.x - p1.x);
    const double need = margin * (std::fabs(dx) + std::fabs(dy));
    return (ca > need && cb > need) || (ca < -need && cb < -need);
}

// The unbounded-extension rules of the segment form: shared ends, then a
// segment shrunk to a point. True when one of these cases applies (whether
// or not it produced a point).
bool SettleSharedOrDegenerate(const CDblPoint& p1, const CDblPoint& p2, const CDblPoint& q1, const CDblPoint& q2,
                              CDblPointArray& out) {
    if (p1 == q1 || p1 == q2) {
        out.Add(p1);
        return true;
    }
    if (p2 == q1 || p2 == q2) {
        out.Add(p2);
        return true;
    }
    const auto reportIfOnLine = [&out](const CDblPoint& a, const CDblPoint& b, const CLine2& line) {
        const CDblPoint mid((a.x + b.x) / 2.0, (a.y + b.y) / 2.0);
        if (line.WhichSide(mid, kDegenerateSideTolerance) == 0) out.Add(mid);
    };
    if (p1 == p2 && q1 != q2) {
        reportIfOnLine(p1, p2, CLine2(q1, q2));
        return true;
    }
    if (q1 == q2 && p1 != p2) {
        reportIfOnLine(q1, q2, CLine2(p1, p2));
        return true;
    }
    return false;
}

// Removes, scanning from the last point to the first, every point whose
// angle about (cx, cy) lies outside the sector start..start+sweep (degrees).
void KeepOnArc(CDblPointArray& pts, double cx, double cy, double start, double sweep) {
    for (INT_PTR k = pts.GetSize() - 1; k >= 0; --k)
        if (!IsAngleInSector(detail::PolarAngleDeg(pts[k].x - cx, pts[k].y - cy), start, sweep)) pts.RemoveAt(k);
}

}  // namespace

// ------------------------------------------------------------------- lines

bool XLineLine(double a1, double b1, double c1, double a2, double b2, double c2, CDblPoint& x) {
    if ((a1 == 0.0 && b1 == 0.0) || (a2 == 0.0 && b2 == 0.0)) return false;
    const double det = a1 * b2 - b1 * a2, dot = a1 * a2 + b1 * b2;
    if (dot != 0.0 && std::fabs(det / dot) < kParallelTangent) return false;
    x = CDblPoint((b1 * c2 - c1 * b2) / det, (c1 * a2 - a1 * c2) / det);
    return true;
}

bool XLineLine(const CDblPoint& p1, const CDblPoint& p2, const CDblPoint& q1, const CDblPoint& q2, CDblPoint& x) {
    double a1 = 0.0, b1 = 0.0, c1 = 0.0, a2 = 0.0, b2 = 0.0, c2 = 0.0;
    if (!UnitLine(CDblPoint(), Rel(p2, p1), a1, b1, c1) || !UnitLine(Rel(q1, p1), Rel(q2, p1), a2, b2, c2))
        return false;
    CDblPoint rel;
    if (!XLineLine(a1, b1, c1, a2, b2, c2, rel)) return false;
    x = rel + p1;
    return true;
}

namespace {

// Bounded segments p and q, neither shrunk to a point (those are tested
// against the other's whole line): can they be shown not to meet?
// A point is accepted only within the distance (or point) epsilon of both
// segments, and shared ends are equal within the point epsilon, so segments
// whose boxes stay apart by more than that, and by more than rounding can
// move the point, cannot meet: most pairs of a drawing end here, before any
// line is solved.
bool CannotMeet(const CDblPoint& p1, const CDblPoint& p2, const CDblPoint& q1, const CDblPoint& q2, double slack) {
    const double ex = CDblPointEpsilon::x(), ey = CDblPointEpsilon::y();
    double scale = 0.0;
    for (const CDblPoint* p : {&p1, &p2, &q1, &q2}) scale = std::max(scale, std::max(std::fabs(p->x), std::fabs(p->y)));
    const double margin = std::max(std::max(slack, 0.0), std::max(ex, ey)) + 1e-9 * (1.0 + scale);
    if (BoxesApart(p1, p2, q1, q2, margin)) return true;
    // The same across the lines: the solved point lies on both lines up to
    // rounding, so when both ends of one segment stay on one side of the
    // other's line by more than the slack (or by more than a shared end may
    // be off, the point epsilon along both axes), no point can be accepted.
    // Most crossing boxes end here.
    const double sideMargin = std::max(margin, ex + ey + 1e-9 * (1.0 + scale));
    return EndsOnOneSide(p1, p2, q1, q2, sideMargin) || EndsOnOneSide(q1, q2, p1, p2, sideMargin);
}

// XLineLine past the rejection: shared ends and point segments, then the
// lines' intersection checked against each bounded segment. Kept out of line
// (where the compiler allows saying so) so that its register saves stay off
// the rejection's path.
#if defined(__GNUC__)
[[gnu::noinline]]
#endif
void SolveSegments(const CDblPoint& p1, const CDblPoint& p2, const CDblPoint& q1, const CDblPoint& q2,
                   CDblPointArray& out, ExtendType how, double slack) {
    out.RemoveAll();
    if (how == ExtendNone && SettleSharedOrDegenerate(p1, p2, q1, q2, out)) return;
    CDblPoint x;
    if (!XLineLine(p1, p2, q1, q2, x)) return;
    if (!(how & ExtendFirst) && !IsOnBoundedSegment(x, p1, p2, slack)) return;
    if (!(how & ExtendSecond) && !IsOnBoundedSegment(x, q1, q2, slack)) return;
    out.Add(x);
}

}  // namespace

void XLineLine(const CDblPoint& p1, const CDblPoint& p2, const CDblPoint& q1, const CDblPoint& q2, CDblPointArray& out,
               ExtendType how) {
    const double slack = CDistanceEpsilon::get();
    // The rejection first and the rest in its own function, so that the
    // common case returns without setting up for the solve.
    if (how == ExtendNone && !(p1 == p2) && !(q1 == q2) && CannotMeet(p1, p2, q1, q2, slack)) {
        out.RemoveAll();
        return;
    }
    SolveSegments(p1, p2, q1, q2, out, how, slack);
}

// ----------------------------------------------------------------- circles

void XLineCircle(double a, double b, double c, double cx, double cy, double r, CDblPointArray& out) {
    out.RemoveAll();
    if (a == 0.0 && b == 0.0) return;
    const double n = std::sqrt(a * a + b * b);
    a /= n;
    b /= n;
    c /= n;
    if (a * a + b * b < kUnitNormalFloor) return;

    if (b == 0.0) {  // vertical line x = -c/a
        const double x = -c / a;
        const double disc = r * r - (x - cx) * (x - cx);
        if (!(disc / r > -kRadialSlack)) return;
        const double s = std::sqrt(std::max(disc, 0.0));
        out.Add(x, cy + s);
        if (s != 0.0) out.Add(x, cy - s);
        return;
    }

    // Eliminate the coordinate with the larger coefficient and solve the
    // quadratic in the other one.
    const bool solveX = b * b > a * a;
    const double k = cx * cx + cy * cy - r * r;
    CArray<dcomplex, dcomplex> roots;
    if (solveX)
        GetEquation2Root(a * a + b * b, 2.0 * (a * b * cy + a * c - b * b * cx), k * b * b + 2.0 * b * c * cy + c * c,
                         roots);
    else
        GetEquation2Root(a * a + b * b, 2.0 * (a * b * cx + b * c - a * a * cy), k * a * a + 2.0 * a * c * cx + c * c,
                         roots);

    const CDblPoint centre(cx, cy);
    for (INT_PTR j = 0; j < roots.GetSize(); ++j) {
        const dcomplex z = roots[j];
        // Relative to the real part only when that is at least 1 (a signed
        // division, not by |re|). Kept: callers depend on which near-tangents
        // count as touching.
        const double relImag = z.r >= 1.0 ? std::fabs(z.i) / z.r : std::fabs(z.i);
        if (relImag < kRootImagSlack) {
            const CDblPoint p = solveX ? CDblPoint(z.r, (-c - a * z.r) / b) : CDblPoint((-c - b * z.r) / a, z.r);
            if ((Distance(p, centre) - r) / r < kRadialSlack) out.Add(p);
        }
        if (z.i != 0.0) break;  // a conjugate pair gives at most its tangent point
    }
}

void XLineCircle(const CDblPoint& p1, const CDblPoint& p2, double cx, double cy, double r, CDblPointArray& out,
                 ExtendType how) {
    out.RemoveAll();
    const CDblPoint centre(cx, cy);
    const CDblPoint a = Rel(p1, centre), b = Rel(p2, centre);
    double A = 0.0, B = 0.0, C = 0.0;
    if (!UnitLine(a, b, A, B, C)) return;
    XLineCircle(A, B, C, 0.0, 0.0, r, out);
    if (!(how & ExtendFirst)) {
        for (INT_PTR k = out.GetSize() - 1; k >= 0; --k) {
            const CDblPoint x = out[k];
            if ((x.x - a.x) * (x.x - b.x) + (x.y - a.y) * (x.y - b.y) > kBetweenEndsSlack) out.RemoveAt(k);
        }
    }
    Translate(out, cx, cy);
}

void XLineCircle(const CDblPoint& p1, const CDblPoint& p2, const CDblPoint& centre, double r, CDblPointArray& out,
                 double tolerance) {
    const double dx = p2.x - p1.x, dy = p2.y - p1.y;
    const double len = std::sqrt(dx * dx + dy * dy);
    // A zero-length line has no direction; with a tolerance of 0 or less it
    // would otherwise yield NaN points.
    if (len < tolerance || len == 0.0) return;
    const double ux = dx / len, uy = dy / len;
    const double wx = p1.x - centre.x, wy = p1.y - centre.y;
    const double h = wx * uy - wy * ux;  // signed distance of the centre from the line
    const double disc = r * r - h * h;
    if (disc < -tolerance * tolerance) return;
    const double s = std::sqrt(std::fabs(disc)), m = wx * ux + wy * uy;
    const double t1 = s - m, t2 = -m - s;
    const auto at = [&](double t) { return CDblPoint(p1.x + t * ux, p1.y + t * uy); };
    if (std::fabs(t1 - t2) < tolerance) {
        out.Add(at((t1 + t2) / 2.0));
    } else {
        out.Add(at(t1));
        out.Add(at(t2));
    }
}

void XCircleCircle(double x1, double y1, double r1, double x2, double y2, double r2, CDblPointArray& out) {
    out.RemoveAll();
    const double dx = x2 - x1, dy = y2 - y1;
    const double d = std::sqrt(dx * dx + dy * dy), sum = r1 + r2;
    if (d - sum > kCircleContactSlack * sum) return;
    if (d - sum >= 0.0) {
        // Reached with sum == 0 only for two point circles at one place.
        const double k = sum == 0.0 ? 0.0 : r1 / sum;
        out.Add(x1 + k * dx, y1 + k * dy);
        return;
    }
    // The radical line, relative to the first centre.
    XLineCircle(2.0 * dx, 2.0 * dy, r2 * r2 - r1 * r1 - d * d, 0.0, 0.0, r1, out);
    Translate(out, x1, y1);
}

// -------------------------------------------------------------------- arcs

void XLineArc(const CDblPoint& p1, const CDblPoint& p2, double cx, double cy, double r, double start, double sweep,
              CDblPointArray& out, ExtendType how) {
    XLineCircle(p1, p2, cx, cy, r, out, how);
    if (!(how & ExtendSecond)) KeepOnArc(out, cx, cy, NormalizeAng(start), sweep);
}

void XLineArc(double a, double b, double c, double cx, double cy, double r, double start, double sweep,
              CDblPointArray& out) {
    XLineCircle(a, b, c, cx, cy, r, out);
    KeepOnArc(out, cx, cy, start, sweep);
}

void XCircleArc(double x1, double y1, double r1, double x2, double y2, double r2, double start, double sweep,
                CDblPointArray& out) {
    XCircleCircle(x1, y1, r1, x2, y2, r2, out);
    KeepOnArc(out, x2, y2, start, sweep);
}

void XArcArc(double x1, double y1, double r1, double start1, double sweep1, double x2, double y2, double r2,
             double start2, double sweep2, CDblPointArray& out) {
    XCircleCircle(x1, y1, r1, x2, y2, r2, out);
    for (INT_PTR k = out.GetSize() - 1; k >= 0; --k) {
        const CDblPoint p = out[k];
        if (!IsAngleInSector(detail::PolarAngleDeg(p.x - x1, p.y - y1), start1, sweep1) ||
            !IsAngleInSector(detail::PolarAngleDeg(p.x - x2, p.y - y2), start2, sweep2))
            out.RemoveAt(k);
    }
}

// ---------------------------------------------------------------- ellipses

// The line is carried into the frame u = (x - cx)/ea, v = (y - cy)/eb, where
// the ellipse is the unit circle; there the chord is found from the foot of
// the perpendicular and the half-chord sqrt((1 - h)(1 + h)), with no
// cancellation, and carried back.
void XLineEllipse(double a, double b, double c, double cx, double cy, double ea, double eb, CDblPointArray& out) {
    out.RemoveAll();
    ea = std::fabs(ea);
    eb = std::fabs(eb);
    if (ea == 0.0 || eb == 0.0 || (a == 0.0 && b == 0.0)) return;
    double A = a * ea, B = b * eb, C = c + a * cx + b * cy;
    const double n = std::hypot(A, B);
    A /= n;
    B /= n;
    C /= n;
    const double gap = 1.0 - std::fabs(C);  // how far the line passes inside the unit circle
    if (gap < -kEllipseTangentSlack) return;
    const auto world = [&](double u, double v) { return CDblPoint(cx + ea * u, cy + eb * v); };
    if (gap <= kEllipseTangentSlack) {  // touching: the point of the circle nearest the line
        const double sgn = C > 0.0 ? -1.0 : 1.0;
        out.Add(world(sgn * A, sgn * B));
        return;
    }
    const double fu = -C * A, fv = -C * B, s = std::sqrt(gap * (2.0 - gap));
    // (-B, A) runs along the line; in world coordinates it is a positive
    // multiple of (-b, a).
    out.Add(world(fu - s * B, fv + s * A));
    out.Add(world(fu + s * B, fv - s * A));
}

namespace {

// Samples per turn when bracketing the roots on an ellipse. The residual is a
// trigonometric polynomial of degree 2 (at most four roots), so this is
// ample; pairs of roots closer than a sample are caught by the extremum step.
constexpr int kEllipseSamples = 256;
constexpr int kSolveIterations = 100;

struct Ellipse {
    double cx, cy, a, b;
};

bool EllipseInBox(const CDblRect& box, Ellipse& e) {
    CDblRect r = box;
    r.NormalizeRect();
    const CDblPoint c = r.CenterPoint();
    e = Ellipse{c.x, c.y, r.Width() / 2.0, r.Height() / 2.0};
    return e.a > 0.0 && e.b > 0.0;
}

// f(t) = ((x - q.cx)/q.a)^2 + ((y - q.cy)/q.b)^2 - 1 at the point (x, y) of
// ellipse p with parametric angle t, with its first two derivatives.
struct Residual {
    Ellipse p, q;

    CDblPoint At(double t) const { return CDblPoint(p.cx + p.a * std::cos(t), p.cy + p.b * std::sin(t)); }
    void Eval(double t, double& f, double& f1, double& f2) const {
        const double c = std::cos(t), s = std::sin(t);
        const double u = (p.cx + p.a * c - q.cx) / q.a, v = (p.cy + p.b * s - q.cy) / q.b;
        const double u1 = -p.a * s / q.a, v1 = p.b * c / q.b;
        f = u * u + v * v - 1.0;
        f1 = 2.0 * (u * u1 + v * v1);
        f2 = 2.0 * (u1 * u1 - u * (p.a * c / q.a) + v1 * v1 - v * (p.b * s / q.b));
    }
    double F(double t) const {
        double f, f1, f2;
        Eval(t, f, f1, f2);
        return f;
    }
};

// Root of g in [lo, hi], g(lo) and g(hi) of opposite signs (or one zero):
// Newton steps kept inside the shrinking bracket, bisection when a step would
// leave it. G is void(double t, double& value, double& slope).
template <class G>
double SolveBracketed(const G& g, double lo, double hi) {
    double glo, ghi, slope;
    g(lo, glo, slope);
    g(hi, ghi, slope);
    if (glo == 0.0) return lo;
    if (ghi == 0.0) return hi;
    if (glo > 0.0) std::swap(lo, hi);  // from here g(lo) < 0 < g(hi)
    double t = 0.5 * (lo + hi);
    for (int it = 0; it < kSolveIterations; ++it) {
        double v;
        g(t, v, slope);
        if (v == 0.0) return t;
        (v < 0.0 ? lo : hi) = t;
        double next = slope != 0.0 ? t - v / slope : lo;
        if (!(next > std::min(lo, hi) && next < std::max(lo, hi))) next = 0.5 * (lo + hi);
        if (next == t || std::fabs(next - t) <= 1e-15 * (1.0 + std::fabs(t))) return next;
        t = next;
    }
    return t;
}

// The parametric angles in [0, 2*pi) on res.p where res.q is met, ascending;
// a touching pair is one angle.
std::vector<double> ParamRoots(const Residual& res) {
    const double h = k2Pi / kEllipseSamples;
    const auto value = [&res](double t, double& f, double& f1) {
        double f2;
        res.Eval(t, f, f1, f2);
    };
    const auto slope = [&res](double t, double& f1, double& f2) {
        double f;
        res.Eval(t, f, f1, f2);
    };
    std::array<double, kEllipseSamples> f;
    for (int k = 0; k < kEllipseSamples; ++k) f[k] = res.F(k * h);

    std::vector<double> roots;
    for (int k = 0; k < kEllipseSamples; ++k) {
        const double t0 = k * h, f0 = f[k];
        const double fPrev = f[(k + kEllipseSamples - 1) % kEllipseSamples], fNext = f[(k + 1) % kEllipseSamples];
        if (f0 == 0.0) {
            roots.push_back(t0);
        } else if ((f0 < 0.0) != (fNext < 0.0) && fNext != 0.0) {
            roots.push_back(SolveBracketed(value, t0, t0 + h));
        }
        // A sampled minimum above zero (maximum below): the curve may dip to
        // zero, or through it twice, between the neighbouring samples.
        const bool dip = f0 > 0.0 ? (fPrev > f0 && fNext >= f0) : (f0 < 0.0 && fPrev < f0 && fNext <= f0);
        if (!dip) continue;
        double lo1, hi1, s;
        slope(t0 - h, lo1, s);
        slope(t0 + h, hi1, s);
        const double tm = (lo1 < 0.0) != (hi1 < 0.0) ? SolveBracketed(slope, t0 - h, t0 + h) : t0;
        const double fm = res.F(tm);
        if (std::fabs(fm) <= kEllipseTangentSlack) {
            roots.push_back(tm);
        } else if ((fm < 0.0) != (f0 < 0.0)) {
            roots.push_back(SolveBracketed(value, t0 - h, tm));
            roots.push_back(SolveBracketed(value, tm, t0 + h));
        }
    }
    for (double& t : roots) t -= k2Pi * std::floor(t / k2Pi);
    std::sort(roots.begin(), roots.end());

    // Rounding can split a touching point into two roots a hair apart:
    // merge neighbours whose midpoint still lies on both curves.
    std::vector<double> merged;
    const auto touching = [&](double a, double b) {
        return b - a < h && std::fabs(res.F(0.5 * (a + b))) <= kEllipseTangentSlack;
    };
    for (double t : roots) {
        if (!merged.empty() && touching(merged.back(), t))
            merged.back() = 0.5 * (merged.back() + t);
        else
            merged.push_back(t);
    }
    if (merged.size() > 1 && touching(merged.back(), merged.front() + k2Pi)) {
        const double mid = 0.5 * (merged.back() + merged.front() + k2Pi);
        merged.front() = mid >= k2Pi ? mid - k2Pi : mid;
        merged.pop_back();
        std::sort(merged.begin(), merged.end());
    }
    return merged;
}

bool Coincident(const Ellipse& e1, const Ellipse& e2) {
    const double tol = kEllipseTangentSlack * std::max(std::max(e1.a, e1.b), std::max(e2.a, e2.b));
    return std::fabs(e1.cx - e2.cx) <= tol && std::fabs(e1.cy - e2.cy) <= tol && std::fabs(e1.a - e2.a) <= tol &&
           std::fabs(e1.b - e2.b) <= tol;
}

// Parametric angle of p on e, in [0, 2*pi).
double ParamAngle(const Ellipse& e, const CDblPoint& p) {
    const double t = std::atan2((p.y - e.cy) / e.b, (p.x - e.cx) / e.a);
    return t < 0.0 ? t + k2Pi : t;
}

}  // namespace

// The smaller ellipse (by its larger semi-axis) is parametrised by its
// angle and the residual of the other one's equation is solved along it:
// sign changes on a fixed sampling are bracketed, sampled extrema are refined
// (to catch touching points and close pairs), and each root is polished by
// Newton steps kept inside its bracket. Parametrising the smaller one keeps
// its roots well apart in angle.
void XEllipseEllipse(const CDblRect& box1, const CDblRect& box2, double start1, double sweep1, double start2,
                     double sweep2, CDblPointArray& out) {
    out.RemoveAll();
    Ellipse e1{}, e2{};
    if (!EllipseInBox(box1, e1) || !EllipseInBox(box2, e2) || Coincident(e1, e2)) return;
    const bool firstIsSmaller = std::max(e1.a, e1.b) <= std::max(e2.a, e2.b);
    const Residual res{firstIsSmaller ? e1 : e2, firstIsSmaller ? e2 : e1};

    std::vector<CDblPoint> pts;
    for (double t : ParamRoots(res)) pts.push_back(res.At(t));
    std::sort(pts.begin(), pts.end(),
              [&e1](const CDblPoint& a, const CDblPoint& b) { return ParamAngle(e1, a) < ParamAngle(e1, b); });
    const double s1 = NormalizeAng(start1), s2 = NormalizeAng(start2);
    for (const CDblPoint& p : pts) {
        if (IsAngleInSector(detail::PolarAngleDeg(p.x - e1.cx, p.y - e1.cy), s1, sweep1) &&
            IsAngleInSector(detail::PolarAngleDeg(p.x - e2.cx, p.y - e2.cy), s2, sweep2))
            out.Add(p);
    }
}

}  // namespace ORVMATH
