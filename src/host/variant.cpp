// VARIANT and SAFEARRAY: creation, bounds, checked element access and clearing.
#include <orvmath/host/variant.h>

#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <new>

namespace {

// Size of one element of type vt, or 0 when the type is not supported.
ULONG ElementSize(VARTYPE vt) {
    switch (vt) {
    case VT_UI1: return 1;
    case VT_I2:
    case VT_BOOL: return 2;
    case VT_I4:
    case VT_R4: return 4;
    case VT_R8: return 8;
    case VT_VARIANT: return sizeof(VARIANT);
    default: return 0;
    }
}

// The stored bounds, last dimension first. Reached through a pointer because
// the array is allocated with room for cDims of them, past the declared one.
SAFEARRAYBOUND* Bounds(SAFEARRAY* psa) { return psa->rgsabound; }

// Number of elements of an array with these bounds, or false when the byte
// size of the elements would not fit in memory.
bool CountElements(const SAFEARRAYBOUND* rgsabound, UINT cDims, ULONG cbElements, std::size_t* pnCount) {
    const std::size_t nMax = static_cast<std::size_t>(std::numeric_limits<std::ptrdiff_t>::max()) / cbElements;
    std::size_t n = 1;
    for (UINT d = 0; d < cDims; ++d) {
        const std::size_t c = rgsabound[d].cElements;
        if (c != 0 && n > nMax / c) return false;
        n *= c;
    }
    *pnCount = n;
    return true;
}

std::size_t ElementCount(SAFEARRAY* psa) {
    std::size_t n = 1;
    for (UINT d = 0; d < psa->cDims; ++d) n *= Bounds(psa)[d].cElements;
    return n;
}

// Address of the element at rgIndices (first dimension first and fastest), or
// nullptr when an index lies outside its dimension.
BYTE* ElementAddress(SAFEARRAY* psa, const LONG* rgIndices) {
    const SAFEARRAYBOUND* bounds = Bounds(psa);
    std::size_t cell = 0;
    std::size_t stride = 1;
    for (UINT d = 0; d < psa->cDims; ++d) {
        const SAFEARRAYBOUND& b = bounds[psa->cDims - 1 - d];
        const LONGLONG rel = static_cast<LONGLONG>(rgIndices[d]) - b.lLbound;
        if (rel < 0 || rel >= static_cast<LONGLONG>(b.cElements)) return nullptr;
        cell += static_cast<std::size_t>(rel) * stride;
        stride *= b.cElements;
    }
    return static_cast<BYTE*>(psa->pvData) + cell * psa->cbElements;
}

SAFEARRAY* AllocateArray(UINT cDims, ULONG cbElements, USHORT fFeatures, std::size_t nCount) {
    const std::size_t nHeader =
        offsetof(SAFEARRAY, rgsabound) + static_cast<std::size_t>(cDims) * sizeof(SAFEARRAYBOUND);
    void* mem = std::calloc(1, nHeader > sizeof(SAFEARRAY) ? nHeader : sizeof(SAFEARRAY));
    if (mem == nullptr) return nullptr;
    void* data = nullptr;
    if (nCount > 0) {
        data = std::calloc(nCount, cbElements);  // zero: VARIANT elements start VT_EMPTY
        if (data == nullptr) {
            std::free(mem);
            return nullptr;
        }
    }
    SAFEARRAY* psa = ::new (mem) SAFEARRAY{};
    psa->cDims = static_cast<USHORT>(cDims);
    psa->fFeatures = fFeatures;
    psa->cbElements = cbElements;
    psa->pvData = data;
    return psa;
}

HRESULT CopyVariant(VARIANT* pDst, const VARIANT* pSrc);

// A deep copy of psa, or nullptr when out of memory.
SAFEARRAY* DuplicateArray(SAFEARRAY* psa) {
    const std::size_t nCount = ElementCount(psa);
    SAFEARRAY* pCopy = AllocateArray(psa->cDims, psa->cbElements, psa->fFeatures, nCount);
    if (pCopy == nullptr) return nullptr;
    std::memcpy(Bounds(pCopy), Bounds(psa), psa->cDims * sizeof(SAFEARRAYBOUND));
    if ((psa->fFeatures & FADF_VARIANT) == 0) {
        if (nCount > 0) std::memcpy(pCopy->pvData, psa->pvData, nCount * psa->cbElements);
        return pCopy;
    }
    const VARIANT* src = static_cast<const VARIANT*>(psa->pvData);
    VARIANT* dst = static_cast<VARIANT*>(pCopy->pvData);
    for (std::size_t i = 0; i < nCount; ++i) {
        if (FAILED(CopyVariant(dst + i, src + i))) {
            SafeArrayDestroy(pCopy);
            return nullptr;
        }
    }
    return pCopy;
}

// Clears *pDst, then copies *pSrc into it; an owned array is duplicated.
HRESULT CopyVariant(VARIANT* pDst, const VARIANT* pSrc) {
    if (pDst == pSrc) return S_OK;
    VARIANT tmp = *pSrc;
    if ((pSrc->vt & VT_ARRAY) != 0 && (pSrc->vt & VT_BYREF) == 0 && pSrc->parray != nullptr) {
        tmp.parray = DuplicateArray(pSrc->parray);
        if (tmp.parray == nullptr) return E_OUTOFMEMORY;
    }
    VariantClear(pDst);
    *pDst = tmp;
    return S_OK;
}

}  // namespace

void VariantInit(VARIANT* pvarg) {
    if (pvarg == nullptr) return;
    pvarg->vt = VT_EMPTY;
    pvarg->wReserved1 = pvarg->wReserved2 = pvarg->wReserved3 = 0;
    pvarg->dblVal = 0.0;
}

HRESULT VariantClear(VARIANT* pvarg) {
    if (pvarg == nullptr) return E_INVALIDARG;
    if ((pvarg->vt & VT_ARRAY) != 0 && (pvarg->vt & VT_BYREF) == 0) SafeArrayDestroy(pvarg->parray);
    VariantInit(pvarg);
    return S_OK;
}

SAFEARRAY* SafeArrayCreate(VARTYPE vt, UINT cDims, SAFEARRAYBOUND* rgsabound) {
    const ULONG cb = ElementSize(vt);
    std::size_t nCount = 0;
    if (cb == 0 || cDims == 0 || cDims > 0xFFFFu || rgsabound == nullptr ||
        !CountElements(rgsabound, cDims, cb, &nCount))
        return nullptr;
    SAFEARRAY* psa = AllocateArray(cDims, cb, vt == VT_VARIANT ? FADF_VARIANT : 0, nCount);
    if (psa == nullptr) return nullptr;
    for (UINT d = 0; d < cDims; ++d) Bounds(psa)[d] = rgsabound[cDims - 1 - d];  // kept: the platform stores them reversed
    return psa;
}

SAFEARRAY* SafeArrayCreateVector(VARTYPE vt, LONG lLbound, ULONG cElements) {
    SAFEARRAYBOUND bound = {cElements, lLbound};
    return SafeArrayCreate(vt, 1, &bound);
}

HRESULT SafeArrayDestroy(SAFEARRAY* psa) {
    if (psa == nullptr) return S_OK;
    if ((psa->fFeatures & FADF_VARIANT) != 0 && psa->pvData != nullptr) {
        VARIANT* elements = static_cast<VARIANT*>(psa->pvData);
        const std::size_t nCount = ElementCount(psa);
        for (std::size_t i = 0; i < nCount; ++i) VariantClear(elements + i);
    }
    std::free(psa->pvData);
    std::free(psa);
    return S_OK;
}

UINT SafeArrayGetDim(SAFEARRAY* psa) { return psa != nullptr ? psa->cDims : 0; }

HRESULT SafeArrayGetLBound(SAFEARRAY* psa, UINT nDim, LONG* plLbound) {
    if (psa == nullptr || plLbound == nullptr) return E_INVALIDARG;
    if (nDim == 0 || nDim > psa->cDims) return DISP_E_BADINDEX;
    *plLbound = Bounds(psa)[psa->cDims - nDim].lLbound;
    return S_OK;
}

HRESULT SafeArrayGetUBound(SAFEARRAY* psa, UINT nDim, LONG* plUbound) {
    if (psa == nullptr || plUbound == nullptr) return E_INVALIDARG;
    if (nDim == 0 || nDim > psa->cDims) return DISP_E_BADINDEX;
    const SAFEARRAYBOUND& b = Bounds(psa)[psa->cDims - nDim];
    *plUbound = static_cast<LONG>(static_cast<LONGLONG>(b.lLbound) + b.cElements - 1);
    return S_OK;
}

HRESULT SafeArrayGetElement(SAFEARRAY* psa, LONG* rgIndices, void* pv) {
    if (psa == nullptr || rgIndices == nullptr || pv == nullptr) return E_INVALIDARG;
    const BYTE* p = ElementAddress(psa, rgIndices);
    if (p == nullptr) return DISP_E_BADINDEX;
    if ((psa->fFeatures & FADF_VARIANT) != 0)
        return CopyVariant(static_cast<VARIANT*>(pv), reinterpret_cast<const VARIANT*>(p));
    std::memcpy(pv, p, psa->cbElements);
    return S_OK;
}

HRESULT SafeArrayPutElement(SAFEARRAY* psa, LONG* rgIndices, void* pv) {
    if (psa == nullptr || rgIndices == nullptr || pv == nullptr) return E_INVALIDARG;
    BYTE* p = ElementAddress(psa, rgIndices);
    if (p == nullptr) return DISP_E_BADINDEX;
    if ((psa->fFeatures & FADF_VARIANT) != 0)
        return CopyVariant(reinterpret_cast<VARIANT*>(p), static_cast<const VARIANT*>(pv));
    std::memcpy(p, pv, psa->cbElements);
    return S_OK;
}
