#include <orvmath/containers.h>

#include "variant_util.h"

#include <vector>

namespace ORVMATH {

IMPLEMENT_SERIAL(CDblArray, CObject, 1)
IMPLEMENT_SERIAL(CIntArray, CObject, 1)
IMPLEMENT_SERIAL(CDblPointArray, CObject, 1)
IMPLEMENT_SERIAL(CDblArray2D, CObject, 1)
IMPLEMENT_SERIAL(CIntArray2D, CObject, 1)

namespace {

template <class Array, class Op>
Array Combine(const Array& a, const Array& b, Op op) {
    Array r;
    if (b.GetSize() < a.GetSize()) return r;
    r.SetSize(a.GetSize());
    for (INT_PTR i = 0; i < a.GetSize(); ++i) r.GetData()[i] = op(a.GetData()[i], b.GetData()[i]);
    return r;
}

template <class Array, class T, class Op>
Array CombineScalar(const Array& a, T s, Op op) {
    Array r;
    r.SetSize(a.GetSize());
    for (INT_PTR i = 0; i < a.GetSize(); ++i) r.GetData()[i] = op(a.GetData()[i], s);
    return r;
}

template <class T>
T AddOp(T a, T b) { return detail::Add(a, b); }
template <class T>
T SubOp(T a, T b) { return detail::Sub(a, b); }

// Points from groups of `stride` doubles (x, y and, for 3, a dropped z).
void FromArrayVariant(CDblPointArray& points, const VARIANT& v, ULONG stride) {
    SAFEARRAY* psa = detail::DoubleVectorOf(v);
    if (psa == nullptr) return;
    const ULONG n = detail::ElementCount(psa);
    if (n % stride != 0) return;
    points.RemoveAll();
    for (ULONG k = 0; k < n; k += stride) {
        double c[2] = {0.0, 0.0};
        LONG ix = static_cast<LONG>(k), iy = static_cast<LONG>(k + 1);
        SafeArrayGetElement(psa, &ix, &c[0]);
        SafeArrayGetElement(psa, &iy, &c[1]);
        points.Add(c[0], c[1]);
    }
}

VARIANT ToArrayVariant(const CDblPointArray& points, ULONG stride) {
    std::vector<double> values;
    values.reserve(static_cast<std::size_t>(points.GetSize()) * stride);
    for (INT_PTR i = 0; i < points.GetSize(); ++i) {
        values.push_back(points.GetData()[i].x);
        values.push_back(points.GetData()[i].y);
        if (stride == 3) values.push_back(0.0);
    }
    return detail::MakeDoubleArrayVariant(values.data(), static_cast<ULONG>(values.size()));
}

}  // namespace

CDblArray operator+(const CDblArray& a, const CDblArray& b) { return Combine(a, b, AddOp<double>); }
CDblArray operator-(const CDblArray& a, const CDblArray& b) { return Combine(a, b, SubOp<double>); }
CDblArray operator+(const CDblArray& a, double s) { return CombineScalar(a, s, AddOp<double>); }
CDblArray operator-(const CDblArray& a, double s) { return CombineScalar(a, s, SubOp<double>); }
CIntArray operator+(const CIntArray& a, const CIntArray& b) { return Combine(a, b, AddOp<int>); }
CIntArray operator-(const CIntArray& a, const CIntArray& b) { return Combine(a, b, SubOp<int>); }
CIntArray operator+(const CIntArray& a, int s) { return CombineScalar(a, s, AddOp<int>); }
CIntArray operator-(const CIntArray& a, int s) { return CombineScalar(a, s, SubOp<int>); }

void CDblArray::from(const CDblVector& v) {
    if (v.empty()) return;
    SetSize(static_cast<INT_PTR>(v.size()));
    for (std::size_t i = 0; i < v.size(); ++i) GetData()[i] = v[i];
}

void CDblPointArray::from(const CDblPointVector& v) {
    if (v.empty()) return;
    SetSize(static_cast<INT_PTR>(v.size()));
    for (std::size_t i = 0; i < v.size(); ++i) GetData()[i] = v[i];
}

void CDblPointArray::From2DArrayVariant(const VARIANT& v) { FromArrayVariant(*this, v, 2); }
void CDblPointArray::From3DArrayVariant(const VARIANT& v) { FromArrayVariant(*this, v, 3); }
VARIANT CDblPointArray::To2DArrayVariant() const { return ToArrayVariant(*this, 2); }
VARIANT CDblPointArray::To3DArrayVariant() const { return ToArrayVariant(*this, 3); }

int CDblVector::compare(const CDblVector& o) const noexcept {
    if (size() != o.size()) return size() < o.size() ? -1 : 1;
    for (std::size_t i = 0; i < size(); ++i) {
        if (!IsDoubleEqual((*this)[i], o[i])) return (*this)[i] < o[i] ? -1 : 1;
    }
    return 0;
}

void CDblVector::from(const CDblArray& a) { assign(a.GetData(), a.GetData() + a.GetSize()); }

void CDblPointVector::from(const CDblPointArray& a) { assign(a.GetData(), a.GetData() + a.GetSize()); }

}  // namespace ORVMATH
