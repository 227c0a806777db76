// Arc constructions from engineering inputs.
#include <orvmath/arcbuild.h>

#include <orvmath/angle.h>
#include <orvmath/intersect.h>
#include <orvmath/pointline.h>
#include <orvmath/tolerance.h>

#include "curve_detail.h"

#include <cmath>

namespace ORVMATH {

CArc2 CalArcFromCenter(const CDblPoint& centre, double radius, const CDblPoint& start, const CDblPoint& end, bool ccw) {
    const auto atCentre = [&centre](const CDblPoint& p) { return p.x == centre.x && p.y == centre.y; };
    if (!(radius > 0.0) || atCentre(start) || atCentre(end)) return CArc2();
    const double a1 = std::atan2(start.y - centre.y, start.x - centre.x);
    double sweep = std::atan2(end.y - centre.y, end.x - centre.x) - a1;
    if (ccw) {
        if (sweep <= 0.0) sweep += k2Pi;
    } else if (sweep >= 0.0) {
        sweep -= k2Pi;
    }
    return CArc2(centre, radius, a1, sweep);
}

CArc2 CalArcFromCSE(const CDblPoint& centre, const CDblPoint& start, const CDblPoint& end, bool ccw) {
    return CalArcFromCenter(centre, Distance(centre, start), start, end, ccw);
}

CArc2 CalArcFromSER(const CDblPoint& start, const CDblPoint& end, double R, CArcChoice choice) {
    if (start == end || !(R > 0.0)) return CArc2();
    const double c = Distance(start, end), half = c / 2.0;
    if (R < half - CDistanceEpsilon::get()) return CArc2();
    const double h = R > half ? std::sqrt(R * R - half * half) : 0.0;
    // Left unit normal of start -> end; the centre's side follows the choice.
    const double nx = -(end.y - start.y) / c, ny = (end.x - start.x) / c;
    const double side = choice.ccw != choice.major ? h : -h;
    const CDblPoint centre((start.x + end.x) / 2.0 + side * nx, (start.y + end.y) / 2.0 + side * ny);
    return CalArcFromCenter(centre, R, start, end, choice.ccw);
}

CArc2 CalArcFromTTR(const CLine2& line1, const CLine2& line2, double R, CDblPoint* t1, CDblPoint* t2) {
    if (!(R > 0.0) || line1.start == line1.end || line2.start == line2.end) return CArc2();
    CDblPoint x;
    if (!line1.Intersection(line2, x, ExtendType(3))) return CArc2();
    // Unit rays from X into the corner: toward each segment's middle.
    const auto ray = [&x](const CLine2& l) {
        CDblPoint m = l.MidPoint();
        CDblSize d = m == x ? l.end - l.start : m - x;
        const double len = std::hypot(d.cx, d.cy);
        return CDblSize(d.cx / len, d.cy / len);
    };
    const CDblSize u1 = ray(line1), u2 = ray(line2);
    const double cosine = u1.cx * u2.cx + u1.cy * u2.cy;
    const double halfAngle = std::acos(std::max(-1.0, std::min(1.0, cosine))) / 2.0;
    if (!(std::sin(halfAngle) > 0.0) || !(std::tan(halfAngle) < 1e300)) return CArc2();
    const double toCentre = R / std::sin(halfAngle), toTangent = R / std::tan(halfAngle);
    const double bx = u1.cx + u2.cx, by = u1.cy + u2.cy, blen = std::hypot(bx, by);
    const CDblPoint centre(x.x + toCentre * bx / blen, x.y + toCentre * by / blen);
    const CDblPoint p1(x.x + toTangent * u1.cx, x.y + toTangent * u1.cy);
    const CDblPoint p2(x.x + toTangent * u2.cx, x.y + toTangent * u2.cy);
    // The shorter way round from p1 to p2: counter-clockwise when p2 lies left of centre -> p1.
    const bool ccw = (p1.x - centre.x) * (p2.y - centre.y) - (p1.y - centre.y) * (p2.x - centre.x) > 0.0;
    if (t1) *t1 = p1;
    if (t2) *t2 = p2;
    return CalArcFromCenter(centre, R, p1, p2, ccw);
}

CArc2 CalArcFrom3Points(const CDblPoint& p1, const CDblPoint& p2, const CDblPoint& p3) {
    const CCircle2 circle = CalCircleFrom3Points(p1, p2, p3);
    if (circle.IsNull()) return CArc2();
    // p1 -> p2 -> p3 turning left means a counter-clockwise arc.
    const double turn = (p2.x - p1.x) * (p3.y - p1.y) - (p2.y - p1.y) * (p3.x - p1.x);
    return CalArcFromCenter(circle.centre, circle.radius, p1, p3, turn > 0.0);
}

CArc2 CalArcFromSTE(const CDblPoint& start, double tangent, const CDblPoint& end) {
    // The centre lies on the start's normal at signed distance r (left
    // positive) with |centre - end| = |r|, which gives r = |d|^2 / (2 d.n),
    // d = end - start.
    const double nx = -std::sin(tangent), ny = std::cos(tangent);
    const double dx = end.x - start.x, dy = end.y - start.y;
    const double dn = dx * nx + dy * ny;
    if (!(dn != 0.0)) return CArc2();
    const double r = (dx * dx + dy * dy) / (2.0 * dn);
    const CDblPoint centre(start.x + r * nx, start.y + r * ny);
    return CalArcFromCenter(centre, std::fabs(r), start, end, r > 0.0);
}

CArc2 CalArcFromSTRL(const CDblPoint& start, double tangent, double R, double length) {
    if (!(R != 0.0) || !std::isfinite(R) || !(length > 0.0)) return CArc2();
    // The centre lies R to the left of the tangent (right for negative R).
    const CDblPoint centre(start.x - R * std::sin(tangent), start.y + R * std::cos(tangent));
    const double r = std::fabs(R);
    return CArc2(centre, r, std::atan2(start.y - centre.y, start.x - centre.x), R > 0.0 ? length / r : -length / r);
}

// ---------------------------------------------------------------- fillets
//
// One mechanism for every pair of curve kinds: each curve is seen as its
// carrier (a line or a full circle); candidate centres are where the carriers
// offset by +-R meet; one chooser settles the candidate by the pick points and
// one trimming step edits the curves.

namespace {

struct Carrier {
    bool isLine = true;
    CDblPoint a, b;  // a line through a and b
    CDblPoint u;     // its unit direction a -> b
    CDblPoint c;     // a circle's centre ...
    double r = 0.0;  // ... and radius
};

// The curve behind a carrier, for the trimming step; all null for a circle.
struct FilletCurve {
    Carrier carrier;
    CLine2* line = nullptr;
    CArc2* arc = nullptr;
    bool ok = false;
};

FilletCurve Curve(CLine2& l) {
    FilletCurve f;
    f.line = &l;
    const double len = Distance(l.start, l.end);
    f.ok = IsFinite(l.start) && IsFinite(l.end) && !(l.start == l.end) && len > 0.0;
    if (!f.ok) return f;
    f.carrier.a = l.start;
    f.carrier.b = l.end;
    f.carrier.u = CDblPoint((l.end.x - l.start.x) / len, (l.end.y - l.start.y) / len);
    return f;
}

FilletCurve CircleCurve(const CDblPoint& c, double r) {
    FilletCurve f;
    f.carrier.isLine = false;
    f.carrier.c = c;
    f.carrier.r = r;
    f.ok = IsFinite(c) && std::isfinite(r) && r > 0.0;
    return f;
}

FilletCurve Curve(CArc2& a) {
    FilletCurve f = CircleCurve(a.centre, a.radius);
    f.arc = &a;
    f.ok = f.ok && std::isfinite(a.startAngle) && std::isfinite(a.sweepAngle) && a.sweepAngle != 0.0;
    return f;
}

FilletCurve Curve(CCircle2& c) { return CircleCurve(c.centre, c.radius); }

// The carrier moved R to the left of a line (right for negative R), or the
// circle's radius grown by R; false when a circle would shrink to nothing.
bool OffsetCarrier(const Carrier& k, double R, Carrier& out) {
    out = k;
    if (k.isLine) {
        const CDblSize n(-k.u.y * R, k.u.x * R);
        out.a = k.a + n;
        out.b = k.b + n;
        return true;
    }
    out.r = std::fabs(k.r + R);
    return out.r > 0.0;
}

// Points where two carriers meet; `out` is emptied first.
void Meet(const Carrier& p, const Carrier& q, CDblPointArray& out) {
    out.RemoveAll();
    if (p.isLine && q.isLine) {
        CDblPoint x;
        if (XLineLine(p.a, p.b, q.a, q.b, x)) out.Add(x);
    } else if (p.isLine) {
        XLineCircle(p.a, p.b, q.c.x, q.c.y, q.r, out, ExtendFirst);
    } else if (q.isLine) {
        XLineCircle(q.a, q.b, p.c.x, p.c.y, p.r, out, ExtendFirst);
    } else {
        XCircleCircle(p.c.x, p.c.y, p.r, q.c.x, q.c.y, q.r, out);
    }
}

// The point of the carrier nearest p (the foot on a line, the radial point on
// a circle); false when p is exactly a circle's centre.
bool Project(const Carrier& k, const CDblPoint& p, CDblPoint& out) {
    if (k.isLine) {
        const double t = (p.x - k.a.x) * k.u.x + (p.y - k.a.y) * k.u.y;
        out = CDblPoint(k.a.x + t * k.u.x, k.a.y + t * k.u.y);
        return true;
    }
    const double d = Distance(p, k.c);
    if (!(d > 0.0)) return false;
    out = CDblPoint(k.c.x + k.r * (p.x - k.c.x) / d, k.c.y + k.r * (p.y - k.c.y) / d);
    return true;
}

// Position of a carrier point used to order it among the cuts: the distance
// along a line, the direction from a circle's centre.
double Position(const Carrier& k, const CDblPoint& p) {
    if (k.isLine) return (p.x - k.a.x) * k.u.x + (p.y - k.a.y) * k.u.y;
    return std::atan2(p.y - k.c.y, p.x - k.c.x);
}

// Index of the piece of the carrier, cut at `cuts`, that holds its point p;
// -1 when p lies within CDistanceEpsilon of a cut. The arcs of a circle
// before the first and after the last cut are one piece.
int Piece(const Carrier& k, const CDblPointArray& cuts, const CDblPoint& p) {
    const double at = Position(k, p);
    int below = 0;
    for (INT_PTR i = 0; i < cuts.GetSize(); ++i) {
        if (Distance(cuts[i], p) <= CDistanceEpsilon::get()) return -1;
        if (Position(k, cuts[i]) < at) ++below;
    }
    const int n = static_cast<int>(cuts.GetSize());
    return k.isLine || n == 0 ? below : below % n;
}

// Does the tangent point t lie on the piece under the pick?
bool OnPickedPiece(const Carrier& k, const CDblPointArray& cuts, const CDblPoint& pick, const CDblPoint& t) {
    CDblPoint onCarrier;
    if (!Project(k, pick, onCarrier)) return true;
    const int picked = Piece(k, cuts, onCarrier), touched = Piece(k, cuts, t);
    return picked < 0 || touched < 0 || picked == touched;
}

struct Candidate {
    CDblPoint centre, t1, t2;
    double score = 0.0;
};

// Unit direction of travel at p on the circle about `centre`, counter-clockwise or clockwise.
CDblPoint Heading(const CDblPoint& centre, const CDblPoint& p, bool ccw) {
    const double d = Distance(p, centre), s = ccw ? 1.0 : -1.0;
    return CDblPoint(-s * (p.y - centre.y) / d, s * (p.x - centre.x) / d);
}

double Dot(const CDblPoint& a, const CDblPoint& b) noexcept { return a.x * b.x + a.y * b.y; }

// The curve with its tangent point t made one of its ends; `away` points from
// t into the part that the fillet removes. False when nothing would be left.
bool TrimTo(const FilletCurve& f, const CDblPoint& t, const CDblPoint& away, CLine2& line, CArc2& arc) {
    if (f.line) {
        line = *f.line;
        const bool moveEnd = Dot(f.carrier.u, away) > 0.0;
        (moveEnd ? line.end : line.start) = t;
        return !(line.start == line.end);
    }
    if (f.arc) {
        arc = *f.arc;
        const bool ccw = arc.IsCounterClockwise();
        const bool moveEnd = Dot(Heading(arc.centre, t, ccw), away) > 0.0;
        if (t == (moveEnd ? arc.StartPoint() : arc.EndPoint())) return false;
        const double at = std::atan2(t.y - arc.centre.y, t.x - arc.centre.x);
        const double from = moveEnd ? arc.startAngle : at, to = moveEnd ? at : arc.startAngle + arc.sweepAngle;
        const double turn = ccw ? detail::CcwTurn(from, to) : -detail::CcwTurn(to, from);
        arc = CArc2(arc.centre, arc.radius, from, turn);
    }
    return true;
}

CArc2 Fillet(const FilletCurve& f1, const CDblPoint& pick1, const FilletCurve& f2, const CDblPoint& pick2, double R,
             bool trim, CDblPoint* t1, CDblPoint* t2) {
    if (!f1.ok || !f2.ok || !(R > 0.0) || !std::isfinite(R) || !IsFinite(pick1) || !IsFinite(pick2)) return CArc2();
    const Carrier &k1 = f1.carrier, &k2 = f2.carrier;
    // The points where the carriers meet cut both of them.
    CDblPointArray cuts, centres;
    Meet(k1, k2, cuts);
    bool found = false;
    Candidate best;
    for (double s1 : {R, -R}) {
        for (double s2 : {R, -R}) {
            Carrier o1, o2;
            if (!OffsetCarrier(k1, s1, o1) || !OffsetCarrier(k2, s2, o2)) continue;
            Meet(o1, o2, centres);
            for (INT_PTR i = 0; i < centres.GetSize(); ++i) {
                Candidate c;
                c.centre = centres[i];
                if (!Project(k1, c.centre, c.t1) || !Project(k2, c.centre, c.t2) || c.t1 == c.t2) continue;
                if (!OnPickedPiece(k1, cuts, pick1, c.t1) || !OnPickedPiece(k2, cuts, pick2, c.t2)) continue;
                c.score = Distance(c.t1, pick1) + Distance(c.t2, pick2);
                if (!found || c.score < best.score) best = c;
                found = true;
            }
        }
    }
    if (!found) return CArc2();
    const CDblPoint& o = best.centre;
    const double ax = best.t1.x - o.x, ay = best.t1.y - o.y, bx = best.t2.x - o.x, by = best.t2.y - o.y;
    const double cross = ax * by - ay * bx, dot = ax * bx + ay * by;
    bool ccw = cross > 0.0;
    if (std::fabs(cross) <= kFilletHalfTurnSine * std::hypot(ax, ay) * std::hypot(bx, by) && dot < 0.0)
        ccw = Dot(Heading(o, best.t1, true), CDblPoint(best.t1.x - pick1.x, best.t1.y - pick1.y)) >= 0.0;
    const CArc2 fillet = CalArcFromCenter(o, R, best.t1, best.t2, ccw);
    if (trim) {
        // The fillet heads into the part of the first curve it removes and
        // comes out of the part of the second.
        const CDblPoint away1 = Heading(o, best.t1, ccw), h2 = Heading(o, best.t2, ccw);
        CLine2 line1, line2;
        CArc2 arc1, arc2;
        if (!TrimTo(f1, best.t1, away1, line1, arc1) || !TrimTo(f2, best.t2, CDblPoint(-h2.x, -h2.y), line2, arc2))
            return CArc2();
        if (f1.line) *f1.line = line1;
        if (f1.arc) *f1.arc = arc1;
        if (f2.line) *f2.line = line2;
        if (f2.arc) *f2.arc = arc2;
    }
    if (t1) *t1 = best.t1;
    if (t2) *t2 = best.t2;
    return fillet;
}

}  // namespace

#define ORVMATH_FILLET_FORM(Curve1, Curve2)                                                                   \
    CArc2 CalFillet(Curve1& curve1, const CDblPoint& pick1, Curve2& curve2, const CDblPoint& pick2, double R, \
                    bool trim, CDblPoint* t1, CDblPoint* t2) {                                                \
        return Fillet(Curve(curve1), pick1, Curve(curve2), pick2, R, trim, t1, t2);                           \
    }
ORVMATH_FILLET_FORM(CLine2, CLine2)
ORVMATH_FILLET_FORM(CLine2, CArc2)
ORVMATH_FILLET_FORM(CLine2, CCircle2)
ORVMATH_FILLET_FORM(CArc2, CLine2)
ORVMATH_FILLET_FORM(CArc2, CArc2)
ORVMATH_FILLET_FORM(CArc2, CCircle2)
ORVMATH_FILLET_FORM(CCircle2, CLine2)
ORVMATH_FILLET_FORM(CCircle2, CArc2)
ORVMATH_FILLET_FORM(CCircle2, CCircle2)
#undef ORVMATH_FILLET_FORM

}  // namespace ORVMATH
