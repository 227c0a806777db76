#include <orvmath/pointline.h>

#include <orvmath/angle.h>
#include <orvmath/intersect.h>

#include <cmath>

namespace ORVMATH {

double DPointLine(const CDblPoint& p, const CDblPoint& a, const CDblPoint& b) {
    if (detail::IsDegenerateLine(a, b)) return Distance(p, a);
    const double dx = b.x - a.x, dy = b.y - a.y;
    return std::fabs(dx * (p.y - a.y) - dy * (p.x - a.x)) / std::sqrt(dx * dx + dy * dy);
}

double GetLineLenSinCos(const CDblPoint& a, const CDblPoint& b, double& sine, double& cosine) {
    const double len = Distance(a, b);
    if (len == 0.0) {
        sine = cosine = 0.0;
    } else {
        sine = (b.y - a.y) / len;
        cosine = (b.x - a.x) / len;
    }
    return len;
}

bool CalLineABC(const CDblPoint& a, const CDblPoint& b, double& A, double& B, double& C) {
    A = a.y - b.y;
    B = b.x - a.x;
    if (detail::IsDegenerateLine(a, b)) return false;
    C = a.x * b.y - b.x * a.y;
    return true;
}

double ProjectOnLine(const CDblPoint& p, const CDblPoint& a, const CDblPoint& b) {
    if (a == b) return 0.0;
    const double dx = b.x - a.x, dy = b.y - a.y;
    return ((p.x - a.x) * dx + (p.y - a.y) * dy) / (dx * dx + dy * dy);
}

bool ProjectOnLine(const CDblPoint& p, const CDblPoint& a, const CDblPoint& b, CDblPoint& foot) {
    if (a == b) return false;
    const double dx = b.x - a.x, dy = b.y - a.y;
    if ((p.y - a.y) * dx == (p.x - a.x) * dy) return false;
    const double t = ProjectOnLine(p, a, b);
    if (t > 1.0 || t < 0.0) return false;
    foot = CDblPoint(a.x + t * dx, a.y + t * dy);
    return true;
}

namespace {

// radius * (p - centre)/|p - centre|, for p != centre.
CDblPoint RadialVector(const CDblPoint& p, const CDblPoint& centre, double radius) {
    const double k = radius / Distance(p, centre);
    return CDblPoint(k * (p.x - centre.x), k * (p.y - centre.y));
}

}  // namespace

void ProjectOnCircle(const CDblPoint& p, const CDblPoint& centre, double radius, CDblPointArray& out) {
    out.RemoveAll();
    if (p == centre) return;
    const CDblPoint u = RadialVector(p, centre, radius);
    out.Add(centre + u);
    out.Add(centre.x - u.x, centre.y - u.y);
}

void NearestProjectOnCircle(const CDblPoint& p, const CDblPoint& centre, double radius, CDblPoint& out) {
    if (p != centre) out = centre + RadialVector(p, centre, radius);
}

bool NearestProjectOnArc(const CDblPoint& p, const CDblPoint& centre, double radius, double startDeg,
                         double sweepDeg, CDblPoint& out) {
    const double vx = p.x - centre.x, vy = p.y - centre.y;
    if (vx == 0.0 && vy == 0.0) return false;
    if (!IsAngleInSector(detail::PolarAngleDeg(vx, vy), NormalizeAng(startDeg), sweepDeg)) return false;
    out = centre + RadialVector(p, centre, radius);
    return true;
}

void MirrorPoint(const CDblPoint& a, const CDblPoint& b, const CDblPoint& p, CDblPoint& out) {
    const double t = ProjectOnLine(p, a, b);
    const double fx = a.x + t * (b.x - a.x), fy = a.y + t * (b.y - a.y);
    out = CDblPoint(2.0 * fx - p.x, 2.0 * fy - p.y);
}

void RotatePoints(double cx, double cy, double angle, CDblPoint* points, int count) {
    if (count <= 0) return;
    const double c = std::cos(angle), s = std::sin(angle);
    for (int k = 0; k < count; ++k) {
        CDblPoint& p = points[k];
        const double dx = p.x - cx, dy = p.y - cy;
        p.x = c * dx - s * dy + cx;
        p.y = c * dy + s * dx + cy;
    }
}

bool OffsetLine(CDblPoint& a, CDblPoint& b, double d) {
    const double dx = b.x - a.x, dy = b.y - a.y;
    if (dx == 0.0 && dy == 0.0) return false;
    const double k = d / std::sqrt(dx * dx + dy * dy);
    const CDblPoint shift(-dy * k, dx * k);
    a += shift;
    b += shift;
    return true;
}

int OffsetLine(CDblPoint& a, CDblPoint& b, double d, const CDblPoint& side) {
    const double c = (side.y - a.y) * (b.x - a.x) - (side.x - a.x) * (b.y - a.y);
    if (c == 0.0) return 0;
    const int s = c > 0.0 ? 1 : -1;
    OffsetLine(a, b, s * d);  // moves nothing when a->b is degenerate
    return s;
}

void MakeRectangle(const CDblPoint& centre, double angle, double width, double height, CDblPoint* const corners) {
    const double hw = width / 2.0, hh = height / 2.0;
    corners[0] = CDblPoint(centre.x - hw, centre.y - hh);
    corners[1] = CDblPoint(centre.x + hw, centre.y - hh);
    corners[2] = CDblPoint(centre.x + hw, centre.y + hh);
    corners[3] = CDblPoint(centre.x - hw, centre.y + hh);
    RotatePoints(centre.x, centre.y, angle, corners, 4);
}

bool IsPointNearLineSeg(const CDblPoint& p, const CDblPoint& a, const CDblPoint& b, double tolerance) {
    CDblPoint nearest = a;
    if (a != b) {
        const double dx = b.x - a.x, dy = b.y - a.y;
        const double s = (p.x - a.x) * dx + (p.y - a.y) * dy, len2 = dx * dx + dy * dy;
        if (s >= len2)
            nearest = b;
        else if (s > 0.0)
            nearest = CDblPoint(a.x + (s / len2) * dx, a.y + (s / len2) * dy);
    }
    return IsPointNearPoint(p, nearest, tolerance);
}

bool IsPointOnLine(const CDblPoint& p, const CDblPoint& a, const CDblPoint& b) {
    if (a == b) return true;
    const double t = ProjectOnLine(p, a, b);
    return -kOnLineParamSlack < t && t < 1.0 + kOnLineParamSlack;
}

int IsOnDifferentSides(const CDblPoint& a, const CDblPoint& b, const CDblPoint& p, const CDblPoint& q) {
    if (detail::IsDegenerateLine(a, b)) return -1;
    const double len = Distance(a, b);
    const double A = (a.y - b.y) / len, B = (b.x - a.x) / len, C = (a.x * b.y - b.x * a.y) / len;
    const double sp = A * p.x + B * p.y + C, sq = A * q.x + B * q.y + C;
    if (sp == 0.0) return 2;
    if (sq > 0.0) return sp < 0.0 ? 1 : 0;
    if (sq < 0.0) return sp > 0.0 ? 1 : 0;
    return 2;
}

void TCircle(const CDblPoint& p, const CDblPoint& centre, double radius, CDblPointArray& out) {
    const double cx = centre.x, cy = centre.y;
    const double A = p.x - cx, B = p.y - cy;
    const double C = cx * cx + cy * cy - radius * radius - p.x * cx - p.y * cy;
    XLineCircle(A, B, C, cx, cy, radius, out);
}

void TEllipse(CDblPoint p, const CDblRect& box, CDblPointArray& out) {
    CDblRect r = box;
    r.NormalizeRect();
    const CDblPoint c = r.CenterPoint();
    const double a = r.Width() / 2.0, b = r.Height() / 2.0;
    if (a == 0.0 || b == 0.0) {
        out.RemoveAll();
        return;
    }
    // The polar line (p.x-cx)(x-cx)/a^2 + (p.y-cy)(y-cy)/b^2 = 1, times a^2.
    const double A = p.x - c.x, B = (a * a) / (b * b) * (p.y - c.y);
    const double C = -A * c.x - B * c.y - a * a;
    XLineEllipse(A, B, C, c.x, c.y, a, b, out);
}

}  // namespace ORVMATH
