#include <orvmath/circle2.h>

#include <orvmath/host/archive.h>

#include <orvmath/arc2.h>
#include <orvmath/intersect.h>
#include <orvmath/pointline.h>

namespace ORVMATH {

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
}

void CCircle2::Intersection(const CCircle2& other, CDblPointArray& out) const {
    XCircleCircle(centre.x, centre.y, radius, other.centre.x, other.centre.y, other.radius, out);
}

void CCircle2::Intersection(const CArc2& arc, CDblPointArray& out) const { arc.Intersection(*this, out); }

// ---------------------------------------------------------------- archive

CArchive& operator<<(CArchive& ar, const CCircle2& c) { return ar << c.centre << c.radius; }
CArchive& operator>>(CArchive& ar, CCircle2& c) { return ar >> c.centre >> c.radius; }
void CCircle2::Serialize(CArchive& ar) { SerializeByOperators(ar, *this); }

}  // namespace ORVMATH
