#include <orvmath/coordsys.h>

#include <cstring>
#include <utility>

#include "affine_inverse.h"

namespace ORVMATH {

namespace {

// Two axes of a UCS must be at least this far from parallel: cos(10 degrees).
constexpr double kMinAxisAngleCos = 0.984807753012208;  // cos(0.17453292519943295 rad)

const double kIdentity[16] = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};

// Completes a right-handed frame (a, b, c) from the given a and b: c = a x b,
// then either b = c x a (keepA) or a = b x c. False when a and b are within
// 10 degrees of parallel or anti-parallel, or c comes out zero.
bool CompleteFrame(Vector& a, Vector& b, Vector& c, bool keepA) noexcept {
    a.Normalize();
    b.Normalize();
    if (std::fabs(a.DotProduct(b)) > kMinAxisAngleCos) return false;
    c.CrossProduct(a, b);
    if (c.IsNull()) return false;
    c.Normalize();
    if (keepA)
        b.CrossProduct(c, a);
    else
        a.CrossProduct(b, c);
    return true;
}

}  // namespace

void BoundingBall::Union(const BoundingBall& a, const BoundingBall& b) noexcept {
    if (a.radius == 0.0) {
        *this = b;
        return;
    }
    if (b.radius == 0.0) {
        *this = a;
        return;
    }
    const BoundingBall large = a.radius > b.radius ? a : b;
    const BoundingBall small = a.radius > b.radius ? b : a;
    const double d = large.centre.Distance(small.centre);
    if (d == 0.0 || large.radius > small.radius + d) {
        *this = large;
        return;
    }
    radius = (large.radius + small.radius + d) / 2.0;
    const double f = (radius - large.radius) / d;
    centre = large.centre;
    centre += Vector((small.centre.x - large.centre.x) * f, (small.centre.y - large.centre.y) * f,
                     (small.centre.z - large.centre.z) * f);
}

void Transformer::LoadIdentity() noexcept {
    std::memcpy(m_m, kIdentity, sizeof m_m);
    m_mirrored = false;
}

void Transformer::Translate(double tx, double ty, double tz) noexcept { ScaleTranslate(1.0, tx, ty, tz); }

void Transformer::Scale(double s) noexcept { ScaleTranslate(s, 0.0, 0.0, 0.0); }

void Transformer::ScaleTranslate(double s, double tx, double ty, double tz) noexcept {
    LoadIdentity();
    At(0, 0) = At(1, 1) = At(2, 2) = s;
    At(3, 0) = tx;
    At(3, 1) = ty;
    At(3, 2) = tz;
}

void Transformer::Rotate(int axis, double angle) noexcept {
    LoadIdentity();
    const int i = (axis + 1) % 3, j = (axis + 2) % 3;
    const double c = std::cos(angle), s = std::sin(angle);
    At(i, i) = c;
    At(i, j) = s;
    At(j, i) = -s;
    At(j, j) = c;
}

void Transformer::Rotate(const Vector& axis, double angle) noexcept {
    const bool mirrored = m_mirrored;
    Vector u = axis;
    u.Normalize();
    LoadIdentity();
    detail::WriteAxisRotation(m_m, u.x, u.y, u.z, angle);
    m_mirrored = mirrored;
}

void Transformer::Mirror(int axis) noexcept {
    LoadIdentity();
    At(axis, axis) = -1.0;
    m_mirrored = true;
}

void Transformer::Mirror(const CDblPoint& p1, const CDblPoint& p2) noexcept {
    const double theta = std::atan2(p2.y - p1.y, p2.x - p1.x);
    Transformer step;
    Translate(-p1.x, -p1.y, 0.0);
    step.Rotate(2, -theta);
    Multiply(*this, step);
    step.Mirror(1);
    Multiply(*this, step);
    step.Rotate(2, theta);
    Multiply(*this, step);
    step.Translate(p1.x, p1.y, 0.0);
    Multiply(*this, step);
    m_mirrored = true;
}

void Transformer::NegateZ() noexcept {
    for (int c = 0; c < 3; ++c) At(2, c) = -At(2, c);
    m_mirrored = !m_mirrored;
}

void Transformer::Multiply(const Transformer& a, const Transformer& b) noexcept {
    const bool mirrored = a.m_mirrored != b.m_mirrored;
    detail::MultiplyRowMajor4(a.m_m, b.m_m, m_m);
    m_mirrored = mirrored;
}

void Transformer::Transpose() noexcept {
    for (int r = 0; r < 4; ++r)
        for (int c = r + 1; c < 4; ++c) std::swap(At(r, c), At(c, r));
}

void Transformer::Normalize() noexcept {
    Vector x = GetXDirecton(), y = GetYDirecton(), z;
    x.Normalize();
    y.Normalize();
    z.CrossProduct(x, y);
    const Vector* rows[3] = {&x, &y, &z};
    for (int r = 0; r < 3; ++r) {
        At(r, 0) = rows[r]->x;
        At(r, 1) = rows[r]->y;
        At(r, 2) = rows[r]->z;
    }
}

bool Transformer::Invert(double eps) noexcept { return detail::InvertAffineRowMajor(m_m, eps); }

void Transformer::SetMatrix(double (*const m)[4], bool detectMirror) noexcept {
    for (int r = 0; r < 4; ++r)
        for (int c = 0; c < 4; ++c) At(r, c) = m[r][c];
    if (!detectMirror) {
        m_mirrored = false;
        return;
    }
    Vector x = GetXDirecton(), y = GetYDirecton(), z = GetZDirecton(), xy;
    x.Normalize();
    y.Normalize();
    z.Normalize();
    xy.CrossProduct(x, y);
    const double d = xy.DotProduct(z);
    if (d <= -0.5)
        m_mirrored = true;
    else if (d >= 0.5)
        m_mirrored = false;
}

bool Transformer::operator==(const Transformer& t) const noexcept {
    return std::memcmp(m_m, t.m_m, sizeof m_m) == 0 && m_mirrored == t.m_mirrored;
}

UCS::UCS(const Point& o, const Vector& x, const Vector& y) {
    if (!Set(o, x, y)) throw "Invalid UCS";
}

bool UCS::Set(const Point& o, const Vector& x, const Vector& y) noexcept {
    m_origin = o;
    m_x = x;
    m_y = y;
    return CompleteFrame(m_x, m_y, m_z, true);
}

bool UCS::SetOXZ(const Point& o, const Vector& x, const Vector& z) noexcept {
    m_origin = o;
    m_x = x;
    m_z = z;
    return CompleteFrame(m_z, m_x, m_y, false);  // Y = Z x X, then Z = X x Y
}

bool UCS::SetOYZ(const Point& o, const Vector& y, const Vector& z) noexcept {
    m_origin = o;
    m_y = y;
    m_z = z;
    return CompleteFrame(m_y, m_z, m_x, false);  // X = Y x Z, then Y = Z x X
}

void UCS::Set(const Transformer& t) noexcept {
    m_x = t.GetXDirecton();
    m_y = t.GetYDirecton();
    m_z = t.GetZDirecton();
    m_origin = t.GetOrigin();
}

void UCS::GetTransformerToWCS(Transformer& t) const noexcept {
    double m[4][4] = {{m_x.x, m_x.y, m_x.z, 0.0},
                      {m_y.x, m_y.y, m_y.z, 0.0},
                      {m_z.x, m_z.y, m_z.z, 0.0},
                      {m_origin.x, m_origin.y, m_origin.z, 1.0}};
    t.SetMatrix(m, false);
}

void UCS::ChangeView(ViewSide side) noexcept {
    const Vector x = m_x, y = m_y, z = m_z;
    const auto axes = [this](const Vector& nx, const Vector& ny, const Vector& nz) {
        m_x = nx;
        m_y = ny;
        m_z = nz;
    };
    switch (side) {
        case ViewSideTop: break;
        case ViewSideBottom: axes(-x, y, -z); break;
        case ViewSideLeft: axes(-y, z, -x); break;
        case ViewSideRight: axes(y, z, x); break;
        case ViewSideFront: axes(x, z, -y); break;
        case ViewSideBack: axes(-x, z, y); break;
    }
}

}  // namespace ORVMATH
