#include <orvmath/circle2.h>

#include <orvmath/host/archive.h>

#include <orvmath/arc2.h>
#include <orvmath/intersect.h>
#include <orvmath/pointline.h>
#include <orvmath/tolerance.h>

#include "curve_detail.h"

#include <algorithm>
#include <cmath>

namespace ORVMATH {

namespace {

// The tangent lines that touch the circle (c1, r1) at c1 + r1*m and the
// circle about c2 at c2 + r2*m, for the unit normals m with
// m.(c2 - c1) = r1 - r2: with r2 > 0 both circles lie on the same side
// (outer), with r2 < 0 on opposite sides (inner, radius |r2|), with r2 = 0
// c2 is a point. Appends the one with m left of c1 -> c2 first. Tangent
// points within CDistanceEpsilon of each other merge into the one line with
// m along c1 -> c2 (or against it); a gap of more than CDistanceEpsilon
// between the circles' reach and d gives nothing.
void AppendTangentPair(const CDblPoint& c1, double r1, const CDblPoint& c2, double r2, CLine2Array& out) {
    const double dx = c2.x - c1.x, dy = c2.y - c1.y, d = std::hypot(dx, dy);
    const double k = r1 - r2, eps = CDistanceEpsilon::get();
    if (!(d > 0.0) || !(d - std::fabs(k) >= -eps)) return;
    const double ux = dx / d, uy = dy / d;
    const double c = std::clamp(k / d, -1.0, 1.0), s = std::sqrt(1.0 - c * c);
    const auto add = [&](double mx, double my) {
        out.Add(CLine2(CDblPoint(c1.x + r1 * mx, c1.y + r1 * my), CDblPoint(c2.x + r2 * mx, c2.y + r2 * my)));
    };
    if (2.0 * std::max(r1, std::fabs(r2)) * s <= eps) {
        const double sense = c < 0.0 ? -1.0 : 1.0;
        add(sense * ux, sense * uy);
        return;
    }
    add(c * ux - s * uy, c * uy + s * ux);  // m turned left of u
    add(c * ux + s * uy, c * uy - s * ux);
}

}  // namespace

double CCircle2::NearestAngle(const CDblPoint& p) const noexcept {
    if (p.x == centre.x && p.y == centre.y) return 0.0;
    return NormalizeAng_Rad(std::atan2(p.y - centre.y, p.x - centre.x));
}

CDblPoint CCircle2::NearestPoint(const CDblPoint& p) const noexcept {
    const double dx = p.x - centre.x, dy = p.y - centre.y, d = std::hypot(dx, dy);
    if (!(d > 0.0)) return Point(0.0);
    return CDblPoint(centre.x + radius * dx / d, centre.y + radius * dy / d);
}

bool CCircle2::operator==(const CCircle2& o) const noexcept {
    return centre == o.centre && std::fabs(radius - o.radius) <= detail::PointEpsilonLength();
}

int CCircle2::TangentLines(const CDblPoint& p, CLine2Array& out) const {
    out.RemoveAll();
    if (!(radius > 0.0)) return 0;
    AppendTangentPair(centre, radius, p, 0.0, out);
    for (INT_PTR k = 0; k < out.GetSize(); ++k) out[k].SelfReverse();
    return static_cast<int>(out.GetSize());
}

int CCircle2::CommonTangents(const CCircle2& other, CLine2Array& out) const {
    out.RemoveAll();
    if (!(radius > 0.0) || !(other.radius > 0.0) || *this == other) return 0;
    AppendTangentPair(centre, radius, other.centre, other.radius, out);
    AppendTangentPair(centre, radius, other.centre, -other.radius, out);
    return static_cast<int>(out.GetSize());
}

CCircle2& CCircle2::SelfRotate(const CDblPoint& c, double angle) noexcept {
    RotatePoint(c.x, c.y, angle, centre);
    return *this;
}

CCircle2& CCircle2::SelfMirror(const CDblPoint& p1, const CDblPoint& p2) noexcept {
    CDblPoint c;
    MirrorPoint(p1, p2, centre, c);
    centre = c;
    return *this;
}

CCircle2& CCircle2::SelfOffset(double d) noexcept {
    if (IsNull()) return *this;
    const double r = radius + d;
    if (r <= 0.0)
        *this = CCircle2();
    else
        radius = r;
    return *this;
}

void CCircle2::Intersection(const CLine2& line, CDblPointArray& out, bool extend) const {
    XLineCircle(line.start, line.end, centre.x, centre.y, radius, out, extend ? ExtendFirst : ExtendNone);
    detail::OrderPoints(out, [&line](const CDblPoint& p) { return ProjectOnLine(p, line.start, line.end); });
}

void CCircle2::Intersection(const CCircle2& other, CDblPointArray& out) const {
    XCircleCircle(centre.x, centre.y, radius, other.centre.x, other.centre.y, other.radius, out);
    // Left of centre -> other.centre first: the larger cross product first.
    const double dx = other.centre.x - centre.x, dy = other.centre.y - centre.y;
    detail::OrderPoints(out, [&](const CDblPoint& p) { return dy * (p.x - centre.x) - dx * (p.y - centre.y); });
}

CCircle2 CalCircleFrom3Points(const CDblPoint& p1, const CDblPoint& p2, const CDblPoint& p3) {
    if (p1 == p2 || p2 == p3 || p1 == p3) return CCircle2();
    // Circumcentre relative to p1.
    const double bx = p2.x - p1.x, by = p2.y - p1.y, cx = p3.x - p1.x, cy = p3.y - p1.y;
    const double d = 2.0 * (bx * cy - by * cx);
    if (d == 0.0) return CCircle2();
    const double b2 = bx * bx + by * by, c2 = cx * cx + cy * cy;
    const CDblPoint centre(p1.x + (cy * b2 - by * c2) / d, p1.y + (bx * c2 - cx * b2) / d);
    if (!std::isfinite(centre.x) || !std::isfinite(centre.y)) return CCircle2();
    return CCircle2(centre, ORVMATH::Distance(centre, p1));
}

void CCircle2::Intersection(const CArc2& arc, CDblPointArray& out) const { arc.Intersection(*this, out); }

// ---------------------------------------------------------------- archive

CArchive& operator<<(CArchive& ar, const CCircle2& c) { return ar << c.centre << c.radius; }
CArchive& operator>>(CArchive& ar, CCircle2& c) { return ar >> c.centre >> c.radius; }
void CCircle2::Serialize(CArchive& ar) { SerializeByOperators(ar, *this); }

}  // namespace ORVMATH
