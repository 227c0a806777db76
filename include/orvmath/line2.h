// The directed planar line segment CLine2 and the array CLine2Array.
//
// A segment runs from `start` to `end`. Angles are radians, counter-clockwise
// from the positive x axis, y up. "Left" of the segment is the side of
// positive cross product (E - S) x (P - S). The all-zero segment is the null
// segment that failing constructions return or leave behind.
//
// Edits come in pairs: SelfName(...) changes the segment and returns it,
// Name(...) const returns an edited copy (derived with ORVMATH_COPYING_FORM).
#pragma once

#include <orvmath/angle.h>
#include <orvmath/containers.h>
#include <orvmath/export.h>
#include <orvmath/host/array.h>
#include <orvmath/host/object.h>
#include <orvmath/intersect.h>
#include <orvmath/point2.h>
#include <orvmath/selfcopy.h>

#include <cmath>

namespace ORVMATH {

class CArc2;
class CCircle2;
class CLine2Array;

class ORVMATH_API CLine2 {
public:
    CDblPoint start;
    CDblPoint end;

    // Fixed tolerances of the segment family.
    static constexpr double kNormalizeSlack = 1e-6;       // |dx| up to this counts as a vertical segment in Normalize
    static constexpr double kPerpendicularSide = 0.01;    // side test of Perpendicular: closer counts as on the line
    static constexpr double kParallelAngle = 1e-4;        // IsOverlapped: angle (rad) below which segments are parallel
    static constexpr double kOverlapDistance = 0.01;      // IsOverlapped: max distance between the two lines
    static constexpr double kChamferMinSine = 0.001;      // chamfers refuse corners with |sin| below this

    // ---- construction; each constructor but (start, end) has a Set twin ----
    CLine2() noexcept = default;  // the null segment (0,0)-(0,0)
    CLine2(double x1, double y1, double x2, double y2) noexcept : start(x1, y1), end(x2, y2) {}
    CLine2(const CDblPoint& s, const CDblPoint& e) noexcept : start(s), end(e) {}
    // end = s + length * (cos angle, sin angle)
    CLine2(const CDblPoint& s, double angle, double length) noexcept { Set(s, angle, length); }
    // start = e - length * (cos angle, sin angle)
    CLine2(double angle, const CDblPoint& e, double length) noexcept { Set(angle, e, length); }
    // centred on middle: middle -+ (length / 2) * (cos angle, sin angle)
    CLine2(double angle, double length, const CDblPoint& middle) noexcept { Set(angle, length, middle); }
    // end = s + size
    CLine2(const CDblPoint& s, const CDblSize& size) noexcept { Set(s, size); }
    // end = e, start = e + size: the size runs from the end back to the start.
    // Not symmetric with (start, size); kept, callers depend on it.
    CLine2(const CDblSize& size, const CDblPoint& e) noexcept { Set(size, e); }

    CLine2& Set() noexcept { return *this = CLine2(); }
    CLine2& Set(const CLine2& other) noexcept { return *this = other; }
    CLine2& Set(double x1, double y1, double x2, double y2) noexcept;
    CLine2& Set(const CDblPoint& s, double angle, double length) noexcept;
    CLine2& Set(double angle, const CDblPoint& e, double length) noexcept;
    CLine2& Set(double angle, double length, const CDblPoint& middle) noexcept;
    CLine2& Set(const CDblPoint& s, const CDblSize& size) noexcept;
    CLine2& Set(const CDblSize& size, const CDblPoint& e) noexcept;

    // ---- measures and queries ----
    double Length() const noexcept { return std::hypot(end.x - start.x, end.y - start.y); }
    // Direction start->end, atan2 in (-pi, pi]: the -pi that atan2 gives for a
    // difference of (-x, -0.0) is returned as pi.
    double Angle() const noexcept {
        const double a = std::atan2(end.y - start.y, end.x - start.x);
        return a == -kPi ? kPi : a;
    }
    // other.Angle() - Angle() in (-pi, pi]: two opposite segments give pi, never -pi.
    double Angle(const CLine2& other) const noexcept;
    // Direction of the left normal, Angle() + pi/2 in (-pi, pi].
    double NormalAngle() const noexcept;
    // Distance of p from the infinite line (from start when the segment is degenerate).
    double Distance(const CDblPoint& p) const noexcept;
    // start + t * (end - start): 0 at start, 1 at end, extrapolates outside [0, 1].
    CDblPoint Point(double t) const noexcept {
        return CDblPoint(start.x + t * (end.x - start.x), start.y + t * (end.y - start.y));
    }
    CDblPoint MidPoint() const noexcept { return Point(0.5); }
    // Foot of the perpendicular from p on the infinite line.
    CDblPoint FootPoint(const CDblPoint& p) const noexcept;
    // x of the infinite line at height y; start.x when the segment is exactly horizontal.
    double X(double y) const noexcept;
    // y of the infinite line at abscissa x; start.y when the segment is exactly vertical.
    double Y(double x) const noexcept;
    // Both points exactly (0, 0).
    bool IsNull() const noexcept { return start.IsNull() && end.IsNull(); }
    CDblPointVector ToVector() const { return CDblPointVector{start, end}; }

    // Point-tolerant equality that ignores direction: a segment equals its reverse.
    bool operator==(const CLine2& o) const noexcept {
        return (start == o.start && end == o.end) || (start == o.end && end == o.start);
    }
    bool operator!=(const CLine2& o) const noexcept { return !(*this == o); }

    // 1 when p lies left of start->end, -1 right, 0 within `tolerance` of the
    // infinite line, -2 when the segment has exactly zero length.
    int WhichSide(const CDblPoint& p, double tolerance) const noexcept;
    // Is p within `tolerance` of the segment (a stadium around it)?
    bool IsPointOnSegment(const CDblPoint& p, double tolerance) const noexcept;
    // Are the two segments parallel (within kParallelAngle, either direction),
    // on the same line (within kOverlapDistance) and overlapping in more than a
    // point? When true, `common` is the shared part, running in this segment's
    // direction; when false it is untouched.
    bool IsOverlapped(CLine2 other, CLine2& common) const noexcept;
    // Appends the n - 1 inner points that divide the segment into n equal
    // parts, from the start; nothing for n of 0 or 1. `out` is not cleared.
    void EqualDistPoints(unsigned int n, CDblPointArray& out) const;
    // Volume swept when the closed outline (polygon vertices in order, either
    // orientation, the closing edge implied) turns by `angle` radians about
    // the infinite line of this segment. Each side of the axis turns in its
    // own half-space: for |angle| <= pi the volume is |angle| times the sum of
    // the first moments about the axis of the outline's parts on the two sides
    // (Pappus: |area| x centroid distance x |angle| for an outline wholly on
    // one side). Beyond pi the part on one side sweeps through space that the
    // other part, folded across the axis, has swept already (over 2 (|angle| -
    // pi) of the turn); that space counts once. A full turn or more is a full
    // turn, the solid of revolution; the sign of `angle` does not matter. A
    // self-intersecting outline covers the points it winds round (non-zero
    // rule). 0 for an outline of no area; -1 for fewer than 3 vertices, an
    // axis whose ends coincide (CDblPointEpsilon), a coordinate or an angle
    // that is not finite, or a volume that overflows.
    double GetRotateVolume(const CDblPointArray& outline, double angle) const;

    // ---- placement: Self forms change the segment, plain forms copy ----
    CLine2& SelfMove(double dx, double dy) noexcept;
    CLine2& SelfMove(const CDblSize& d) noexcept { return SelfMove(d.cx, d.cy); }
    CLine2& SelfMove(const CDblPoint& from, const CDblPoint& to) noexcept { return SelfMove(to.x - from.x, to.y - from.y); }
    CLine2& SelfMoveStart(double dx, double dy) noexcept;
    CLine2& SelfMoveEnd(double dx, double dy) noexcept;
    // Reflection in the vertical line x = a, or the horizontal line y = b.
    CLine2& SelfMirrorX(double a) noexcept;
    CLine2& SelfMirrorY(double b) noexcept;
    // Reflection in the infinite line p1p2 (in the point p1 when p1p2 is exactly degenerate).
    CLine2& SelfMirror(const CDblPoint& p1, const CDblPoint& p2) noexcept;
    CLine2& SelfMirror(const CLine2& axis) noexcept { return SelfMirror(axis.start, axis.end); }
    // Rotation about centre by angle radians, counter-clockwise positive.
    CLine2& SelfRotate(const CDblPoint& centre, double angle) noexcept;
    CLine2& SelfReverse() noexcept;
    // Parallel shift by d to the left (negative d: right). A segment of exactly
    // zero length becomes the null segment.
    CLine2& SelfOffset(double d) noexcept;

    ORVMATH_COPYING_FORM(CLine2, Move)
    ORVMATH_COPYING_FORM(CLine2, MirrorX)
    ORVMATH_COPYING_FORM(CLine2, MirrorY)
    ORVMATH_COPYING_FORM(CLine2, Mirror)
    ORVMATH_COPYING_FORM(CLine2, Rotate)
    ORVMATH_COPYING_FORM(CLine2, Reverse)
    ORVMATH_COPYING_FORM(CLine2, Offset)

    // p reflected in the infinite line of the segment.
    CDblPoint Mirror(const CDblPoint& p) const noexcept;
    // Appends Offset(k * d) for k = 1 ... count (nothing when count < 1); `out` is not cleared.
    void Offset(double d, int count, CLine2Array& out) const;

    // ---- length editing; all leave a segment of exactly zero length untouched ----
    CLine2& LengthenEnd(double d) noexcept;     // end moves d further along start->end (negative shortens)
    CLine2& LengthenStart(double d) noexcept;   // start moves d further along end->start
    CLine2& StartFitTo(double len) noexcept;    // keeps start, length becomes len
    CLine2& EndFitTo(double len) noexcept;      // keeps end, length becomes len
    CLine2& MiddleFitTo(double len) noexcept;   // keeps the midpoint, length becomes len
    // Orients the segment so that start is the left-most point, or the lower
    // one when the x coordinates differ by at most kNormalizeSlack.
    CLine2& Normalize() noexcept;

    // ---- trimming and extension; the object is unchanged when nothing is found ----
    // end (start) := intersection of the two infinite lines.
    CLine2& ExTrimEnd(const CLine2& other) noexcept;
    CLine2& ExTrimStart(const CLine2& other) noexcept;
    // end (start) := an intersection of the infinite line with the arc or circle.
    // Of two points, ExTrimEnd prefers one within the segment and, of those,
    // the one nearer the end; when both lie outside, the farther one from the
    // start along the line. ExTrimStart prefers one within the segment nearer
    // the start; when both lie outside, the nearer one to the start.
    CLine2& ExTrimEnd(const CArc2& arc);
    CLine2& ExTrimEnd(const CCircle2& circle);
    CLine2& ExTrimStart(const CArc2& arc);
    CLine2& ExTrimStart(const CCircle2& circle);
    // Moves one end along the infinite line to abscissa x or height y.
    CLine2& ExTrimEndX(double x) noexcept;
    CLine2& ExTrimEndY(double y) noexcept;
    CLine2& ExTrimStartX(double x) noexcept;
    CLine2& ExTrimStartY(double y) noexcept;

    // Segment from p of the given length, perpendicular to this one. It points
    // back toward the line when p lies left of it (farther than
    // kPerpendicularSide), otherwise along the left normal. Null segment when
    // this segment has exactly zero length.
    CLine2 Perpendicular(const CDblPoint& p, double length) const noexcept;

    // ---- intersection ----
    // The first point of XLineLine(start, end, other.start, other.end, how);
    // false (x untouched) when there is none.
    bool Intersection(const CLine2& other, CDblPoint& x, ExtendType how) const;
    // Points with the arc or circle; `extend` takes this segment as its
    // infinite line (the arc stays bounded). `out` is emptied first, then
    // receives the points in order along this segment from its start, a
    // touching point once (the arc's and circle's own Intersection).
    void Intersection(const CArc2& arc, CDblPointArray& out, bool extend) const;
    void Intersection(const CCircle2& circle, CDblPointArray& out, bool extend) const;
    // Appends the crossings with each piece of the polyline (both bounded); a
    // crossing at a shared vertex is reported by both pieces. `out` is not cleared.
    void Intersection(const CDblPointArray& polyline, CDblPointArray& out) const;
    // The pieces of the segment inside and outside the simple polygon (convex
    // or not), each array emptied first, then filled in order from the start,
    // every piece in this segment's direction. A point within
    // CDistanceEpsilon of an edge counts as inside, so a piece along an edge
    // is inside and a mere touch makes no piece; crossings end one piece and
    // start the next, and no piece is shorter than CDistanceEpsilon unless
    // the segment is. A polygon of fewer than three vertices or of zero area
    // encloses nothing; a non-finite coordinate gives no pieces. The clipping
    // family of clip.h.
    void ClipByPolygon(const CDblPointArray& polygon, CLine2Array& inside, CLine2Array& outside) const;

    // ---- chamfers: the result is the chamfer segment, of vector (dx, dy) ----
    // The corner X of the two infinite lines must lie ahead of both starts
    // (parameters >= 0). The chamfer C1->C2 runs from this segment to the other
    // with C2 - C1 = (dx, dy); on success this segment's end := C1 and the
    // other's end := C2. On failure (no corner, corner behind a start, nearly
    // parallel lines, a chamfer point off its segment) the null segment is
    // returned and neither segment changes. The other three forms reverse the
    // named segments around the same construction, so "Start" names the end
    // of the segment that is moved.
    CLine2 ChamferStartStart(CLine2& other, double dx, double dy);
    CLine2 ChamferEndEnd(CLine2& other, double dx, double dy);
    CLine2 ChamferEndStart(CLine2& other, double dx, double dy);
    CLine2 ChamferStartEnd(CLine2& other, double dx, double dy);

    // Stores or loads the archive record (see operator<<).
    void Serialize(CArchive& ar);
};

// Archive record: the start point record, then the end point record.
ORVMATH_API CArchive& operator<<(CArchive& ar, const CLine2& l);
ORVMATH_API CArchive& operator>>(CArchive& ar, CLine2& l);

// Do the two segments run in the same direction? Works on the differences
// start - end with IsDoubleEqual as the zero test. Kept as it stands for
// callers: a horizontal segment against a sloped one compares dx1 with dx2 / 2.
ORVMATH_API bool IsSameDirectLine(const CLine2& a, const CLine2& b);

// Segments on the framework's serialisable array; equal when the sizes match
// and each pair of segments is equal (direction ignored). Archive record: the
// count, then the segment records.
class ORVMATH_API CLine2Array : public CArray<CLine2, const CLine2&> {
    DECLARE_SERIAL(CLine2Array)
public:
    CLine2Array() = default;
    CLine2Array(const CLine2Array&) = default;
    CLine2Array& operator=(const CLine2Array&) = default;

    bool operator==(const CLine2Array& o) const {
        return detail::SequenceEqual(GetData(), detail::Count(*this), o.GetData(), detail::Count(o),
                                     detail::TolerantEqual());
    }
    bool operator!=(const CLine2Array& o) const { return !(*this == o); }
};

}  // namespace ORVMATH
