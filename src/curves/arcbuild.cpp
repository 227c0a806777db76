// Arc constructions from engineering inputs.
#include <orvmath/arcbuild.h>

#include <orvmath/angle.h>
#include <orvmath/pointline.h>
#include <orvmath/tolerance.h>

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

}  // namespace ORVMATH
