// User coordinate systems and the transforms between them: Point, Vector,
// BoundingBall, Transformer and UCS. Plain structures (no host base class, no
// archiving).
//
// Row vectors as in CMatrix4: p' = [x y z 1] * M, translation in row 3, rows 0,
// 1, 2 of a rigid transform are the images of the X, Y and Z axes, and
// Multiply(a, b) applies a first. Angles are radians. Comparisons are exact.
#pragma once

#include <orvmath/detail/affine4.h>
#include <orvmath/export.h>
#include <orvmath/point2.h>

#include <cmath>
#include <type_traits>

namespace ORVMATH {

struct Vector;

// A spatial point. Default construction leaves the coordinates unset.
struct ORVMATH_API Point {
    double x, y, z;

    Point() noexcept {}
    Point(double x_, double y_, double z_) noexcept : x(x_), y(y_), z(z_) {}

    void Set(double x_, double y_, double z_) noexcept { x = x_; y = y_; z = z_; }
    // Exact comparison, no tolerance.
    bool operator==(const Point& p) const noexcept { return x == p.x && y == p.y && z == p.z; }
    bool operator!=(const Point& p) const noexcept { return !(*this == p); }
    bool IsNull() const noexcept { return x == 0.0 && y == 0.0 && z == 0.0; }
    double Distance(const Point& p) const noexcept {
        const double dx = x - p.x, dy = y - p.y, dz = z - p.z;
        return std::sqrt(dx * dx + dy * dy + dz * dz);
    }
    inline void Move(const Vector& v) noexcept;
    inline Point& operator+=(const Vector& v) noexcept;
};

// A spatial direction. Default construction leaves the components unset.
struct ORVMATH_API Vector {
    double x, y, z;

    Vector() noexcept {}
    Vector(double x_, double y_, double z_) noexcept : x(x_), y(y_), z(z_) {}

    Vector operator-() const noexcept { return Vector(-x, -y, -z); }
    Vector& operator*=(double k) noexcept {
        x *= k; y *= k; z *= k;
        return *this;
    }
    double Length() const noexcept { return std::sqrt(x * x + y * y + z * z); }
    double DotProduct(const Vector& v) const noexcept { return x * v.x + y * v.y + z * v.z; }
    // Sets this vector to a x b (right-handed); a or b may be this vector.
    void CrossProduct(const Vector& a, const Vector& b) noexcept {
        *this = Vector(a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x);
    }
    bool IsNull() const noexcept { return x == 0.0 && y == 0.0 && z == 0.0; }
    // In place; a squared length of exactly 0.0 or exactly 1.0 leaves the
    // vector untouched, otherwise each component is multiplied by 1/length.
    void Normalize() noexcept {
        const double q = x * x + y * y + z * z;
        if (q != 0.0 && q != 1.0) *this *= 1.0 / std::sqrt(q);
    }
};

inline void Point::Move(const Vector& v) noexcept { Set(x + v.x, y + v.y, z + v.z); }
inline Point& Point::operator+=(const Vector& v) noexcept {
    Move(v);
    return *this;
}

// A ball; radius exactly 0.0 marks it empty. Default construction leaves
// both fields unset (use SetNull).
struct ORVMATH_API BoundingBall {
    Point centre;
    double radius;

    BoundingBall() noexcept {}
    BoundingBall(const Point& c, double r) noexcept : centre(c), radius(r) {}

    void SetNull() noexcept { centre.Set(0.0, 0.0, 0.0); radius = 0.0; }
    bool IsNull() const noexcept { return centre.IsNull() && radius == 0.0; }
    // Sets this ball to the smallest ball holding a and b (an empty one is
    // ignored). A ball inside the other, or a concentric pair, gives the larger
    // (the second when the radii are equal). a or b may be this ball.
    void Union(const BoundingBall& a, const BoundingBall& b) noexcept;
};

// A 4x4 transform (row-major doubles) with a flag telling that it reverses
// orientation. The flag is kept by hand: the setters below say what they do to it.
class ORVMATH_API Transformer {
public:
    // Sets only the flag (false); the matrix is unset.
    Transformer() noexcept : m_mirrored(false) {}

    void LoadIdentity() noexcept;                          // flag false
    void Translate(double tx, double ty, double tz) noexcept;  // identity, row 3 = (tx, ty, tz, 1); flag false
    void Scale(double s) noexcept;                         // s on the first three diagonal elements; flag false
    void ScaleTranslate(double s, double tx, double ty, double tz) noexcept;  // Scale, then row 3; flag false
    // Rotation about axis 0, 1 or 2 (X, Y, Z), counter-clockwise looking down
    // the axis; everything else is the identity. Flag false.
    void Rotate(int axis, double angle) noexcept;
    // Rotation about a unit copy of axis; row 3 and column 3 are those of the
    // identity. The flag is left as it was.
    void Rotate(const Vector& axis, double angle) noexcept;
    // Identity with -1 at (axis, axis), axis 0..2. Flag true.
    void Mirror(int axis) noexcept;
    // Reflection in the vertical plane through the planar line p1 -> p2. Flag true.
    void Mirror(const CDblPoint& p1, const CDblPoint& p2) noexcept;
    // Negates the Z axis row (2,0..2) and toggles the flag.
    void NegateZ() noexcept;
    // this = a * b (a applied first); flag = a's XOR b's. a or b may be this.
    void Multiply(const Transformer& a, const Transformer& b) noexcept;
    void Transpose() noexcept;  // flag unchanged
    // Normalises rows 0 and 1 (as Vector::Normalize) and sets row 2 to row 0 x row 1.
    void Normalize() noexcept;
    // In-place inverse with the same elimination as CMatrix4::InvMatrix, eps
    // used as given. False when a pivot has |p| <= eps; the matrix is then
    // partly processed. The flag is not changed.
    bool Invert(double eps) noexcept;
    // Copies m[r][c]. Without detectMirror the flag becomes false. With it, d =
    // (row0 x row1) . row2 of the unit rows decides: d <= -0.5 sets the flag,
    // d >= 0.5 clears it, anything between (a degenerate frame) leaves it.
    void SetMatrix(double (*const m)[4], bool detectMirror) noexcept;
    // The 16 elements, row-major: (r, c) at 4r + c.
    const double* GetMatrix() const noexcept { return m_m; }

    // Rows 0, 1, 2 (columns 0..2) as vectors and row 3 as a point; the names
    // are spelled this way.
    const Vector& GetXDirecton() const noexcept { return Row<Vector>(0); }
    const Vector& GetYDirecton() const noexcept { return Row<Vector>(1); }
    const Vector& GetZDirecton() const noexcept { return Row<Vector>(2); }
    const Point& GetOrigin() const noexcept { return Row<Point>(3); }
    bool IsMirrored() const noexcept { return m_mirrored; }

    Point Transform(const Point& p) const noexcept {
        double r[3];
        detail::TransformRow(m_m, p.x, p.y, p.z, 1.0, r);
        return Point(r[0], r[1], r[2]);
    }
    Vector Transform(const Vector& v) const noexcept {
        double r[3];
        detail::TransformRow(m_m, v.x, v.y, v.z, 0.0, r);
        return Vector(r[0], r[1], r[2]);
    }
    // A length scaled by the X axis scale: d * |row 0|.
    double Transform(double d) const noexcept { return d * GetXDirecton().Length(); }
    BoundingBall Transform(const BoundingBall& b) const noexcept {
        return BoundingBall(Transform(b.centre), Transform(b.radius));
    }

    // Bitwise: -0.0 differs from 0.0, and NaN equals an identical NaN.
    bool operator==(const Transformer& t) const noexcept;
    bool operator!=(const Transformer& t) const noexcept { return !(*this == t); }

private:
    // A row viewed in place as a Vector or Point (three leading doubles).
    template <class T>
    const T& Row(int r) const noexcept {
        static_assert(std::is_standard_layout<T>::value && sizeof(T) == 3 * sizeof(double), "row view");
        return *reinterpret_cast<const T*>(m_m + 4 * r);
    }
    double& At(int r, int c) noexcept { return m_m[4 * r + c]; }

    double m_m[16];
    bool m_mirrored;
};

// The six views of ChangeView, named for where the viewer stands (looking along -Z').
enum ViewSide {
    ViewSideTop = 0,     // no change
    ViewSideBottom = 1,  // X' = -X, Y' = Y, Z' = -Z
    ViewSideLeft = 2,    // from -X: X' = -Y, Y' = Z, Z' = -X
    ViewSideRight = 3,   // from +X: X' = Y, Y' = Z, Z' = X
    ViewSideFront = 4,   // from -Y: X' = X, Y' = Z, Z' = -Y
    ViewSideBack = 5     // from +Y: X' = -X, Y' = Z, Z' = Y
};

// A user coordinate system: origin and three unit axes forming a right-handed
// frame. Default construction leaves everything unset.
class ORVMATH_API UCS {
public:
    UCS() noexcept {}
    // Set(o, x, y); throws the C string "Invalid UCS" (a const char*) when it fails.
    UCS(const Point& o, const Vector& x, const Vector& y);

    // Origin o, X along x, Y in the plane of x and y. The two directions must
    // be more than 10 degrees from parallel and anti-parallel; otherwise
    // returns false, with the origin and the given axes already overwritten.
    bool Set(const Point& o, const Vector& x, const Vector& y) noexcept;
    bool SetOXY(const Point& o, const Vector& x, const Vector& y) noexcept { return Set(o, x, y); }
    // From X and Z (X kept, Z rebuilt), and from Y and Z (Z kept, Y rebuilt).
    bool SetOXZ(const Point& o, const Vector& x, const Vector& z) noexcept;
    bool SetOYZ(const Point& o, const Vector& y, const Vector& z) noexcept;
    // Axes from rows 0, 1, 2 and origin from row 3 of t, as they are.
    void Set(const Transformer& t) noexcept;
    void SetOrigin(const Point& o) noexcept { m_origin = o; }

    const Point& GetOrigin() const noexcept { return m_origin; }
    const Vector& GetXDirecton() const noexcept { return m_x; }
    const Vector& GetYDirecton() const noexcept { return m_y; }
    const Vector& GetZDirecton() const noexcept { return m_z; }

    // t <- rows X, Y, Z, origin (column 3 = 0, 0, 0, 1), flag false: the
    // transform from this system's coordinates to world coordinates.
    void GetTransformerToWCS(Transformer& t) const noexcept;
    // Permutes and flips the axes for the view (see ViewSide); the origin
    // stays. side must be 0..5; any other value leaves the axes unchanged.
    void ChangeView(ViewSide side) noexcept;

private:
    Vector m_x, m_y, m_z;
    Point m_origin;
};

}  // namespace ORVMATH
