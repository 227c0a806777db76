// Archive records of the value types and containers.
#include <orvmath/containers.h>
#include <orvmath/point2.h>
#include <orvmath/point3.h>
#include <orvmath/rect.h>

#include <orvmath/host/archive.h>


namespace ORVMATH {

namespace {

void RequireStoring(const CArchive& ar) {
    if (ar.IsLoading()) AfxThrowArchiveException(CArchiveException::readOnly);
}

void RequireLoading(const CArchive& ar) {
    if (ar.IsStoring()) AfxThrowArchiveException(CArchiveException::writeOnly);
}

}  // namespace

CArchive& operator<<(CArchive& ar, const CDblPoint& p) { return ar << p.x << p.y; }
CArchive& operator>>(CArchive& ar, CDblPoint& p) { return ar >> p.x >> p.y; }
CArchive& operator<<(CArchive& ar, const CDblSize& s) { return ar << s.cx << s.cy; }
CArchive& operator>>(CArchive& ar, CDblSize& s) { return ar >> s.cx >> s.cy; }
CArchive& operator<<(CArchive& ar, const CDblRect& r) { return ar << r.left << r.top << r.right << r.bottom; }
CArchive& operator>>(CArchive& ar, CDblRect& r) { return ar >> r.left >> r.top >> r.right >> r.bottom; }
CArchive& operator<<(CArchive& ar, const CDblPoint3& p) { return ar << p.x << p.y << p.z; }
CArchive& operator>>(CArchive& ar, CDblPoint3& p) { return ar >> p.x >> p.y >> p.z; }

void CDblPoint::Serialize(CArchive& ar) { SerializeByOperators(ar, *this); }
void CDblSize::Serialize(CArchive& ar) { SerializeByOperators(ar, *this); }
void CDblPoint3::Serialize(CArchive& ar) { SerializeByOperators(ar, *this); }
void CDblPointVector::Serialize(CArchive& ar) { SerializeByOperators(ar, *this); }

// The arrays' Serialize follows the archive's direction, so the operators
// check it first: ar << a must never load into a.
template <class Array>
CArchive& SerializeArray(CArchive& ar, Array& a, bool storing) {
    storing ? RequireStoring(ar) : RequireLoading(ar);
    a.Serialize(ar);
    return ar;
}

CArchive& operator<<(CArchive& ar, CDblArray& a) { return SerializeArray(ar, a, true); }
CArchive& operator>>(CArchive& ar, CDblArray& a) { return SerializeArray(ar, a, false); }
CArchive& operator<<(CArchive& ar, CIntArray& a) { return SerializeArray(ar, a, true); }
CArchive& operator>>(CArchive& ar, CIntArray& a) { return SerializeArray(ar, a, false); }

CArchive& operator<<(CArchive& ar, const CDblPointVector& v) {
    RequireStoring(ar);
    ar.WriteCount(static_cast<DWORD_PTR>(v.size()));
    for (const CDblPoint& p : v) ar << p;
    return ar;
}

CArchive& operator>>(CArchive& ar, CDblPointVector& v) {
    RequireLoading(ar);
    // Checked against the stream before the vector grows, so that a damaged
    // count cannot ask for an enormous allocation.
    const ULONGLONG n = ar.ReadElementCount(2 * sizeof(double));
    if (n > v.max_size()) AfxThrowMemoryException();
    v.resize(static_cast<std::size_t>(n));
    for (CDblPoint& p : v) ar >> p;
    return ar;
}

}  // namespace ORVMATH
