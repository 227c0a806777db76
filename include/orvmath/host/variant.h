// Automation VARIANT and SAFEARRAY, with the platform's names and signatures,
// for exchanging numbers and arrays with automation callers.
//
// A SAFEARRAY holds cDims dimensions. SafeArrayCreate takes the bounds with
// the first (leftmost) dimension first; the array stores them the way the
// platform does, in reverse order (rgsabound[0] is the last dimension), and
// is allocated with room for all cDims of them. Dimension numbers for
// SafeArrayGetLBound/GetUBound run from 1 (leftmost) to cDims. Index vectors
// (rgIndices) list the first dimension first, and the first dimension varies
// fastest in memory (column-major, as the platform lays arrays out).
#pragma once

#include <orvmath/export.h>
#include <orvmath/host/types.h>

enum VARENUM : VARTYPE {
    VT_EMPTY = 0,
    VT_NULL = 1,
    VT_I2 = 2,         // short
    VT_I4 = 3,         // LONG
    VT_R4 = 4,         // float
    VT_R8 = 5,         // double
    VT_BOOL = 11,      // VARIANT_BOOL
    VT_VARIANT = 12,   // VARIANT (array elements only)
    VT_UI1 = 17,       // BYTE
    VT_ARRAY = 0x2000, // flag: the variant holds a SAFEARRAY of the base type
    VT_BYREF = 0x4000  // flag: the variant points at a value it does not own
};

typedef short VARIANT_BOOL;
constexpr VARIANT_BOOL VARIANT_TRUE = -1;
constexpr VARIANT_BOOL VARIANT_FALSE = 0;

struct SAFEARRAYBOUND {
    ULONG cElements;  // number of elements in the dimension
    LONG lLbound;     // lowest index
};

struct SAFEARRAY {
    USHORT cDims;       // number of dimensions
    USHORT fFeatures;   // FADF_* flags
    ULONG cbElements;   // size of one element in bytes
    ULONG cLocks;
    void* pvData;       // the elements
    SAFEARRAYBOUND rgsabound[1];  // cDims bounds, last dimension first
};

// fFeatures flag: the elements are VARIANTs, cleared when the array is destroyed.
constexpr USHORT FADF_VARIANT = 0x0800;

struct VARIANT {
    VARTYPE vt;
    WORD wReserved1, wReserved2, wReserved3;
    union {
        BYTE bVal;
        short iVal;
        LONG lVal;
        float fltVal;
        double dblVal;
        VARIANT_BOOL boolVal;
        SAFEARRAY* parray;
        SAFEARRAY** pparray;
        VARIANT* pvarVal;
        double* pdblVal;
        LONG* plVal;
        void* byref;
    };
};

// Sets v to VT_EMPTY. Owns nothing afterwards; does not free what v held.
ORVMATH_API void VariantInit(VARIANT* pvarg);
// Frees what v owns (an array when vt has VT_ARRAY without VT_BYREF) and sets
// it to VT_EMPTY. E_INVALIDARG for a null pointer.
ORVMATH_API HRESULT VariantClear(VARIANT* pvarg);

// A new array of element type vt (VT_UI1, VT_I2, VT_I4, VT_R4, VT_R8, VT_BOOL
// or VT_VARIANT) with cDims dimensions, elements zero (VARIANTs VT_EMPTY).
// nullptr for another type, cDims == 0, a null rgsabound, or a total size
// that cannot be allocated. Destroy it with SafeArrayDestroy (or VariantClear
// of the variant that holds it).
ORVMATH_API SAFEARRAY* SafeArrayCreate(VARTYPE vt, UINT cDims, SAFEARRAYBOUND* rgsabound);
// A one-dimensional array of cElements elements from index lLbound on.
ORVMATH_API SAFEARRAY* SafeArrayCreateVector(VARTYPE vt, LONG lLbound, ULONG cElements);
// Frees the array (clearing VARIANT elements first). S_OK, also for nullptr.
ORVMATH_API HRESULT SafeArrayDestroy(SAFEARRAY* psa);
// Number of dimensions; 0 for nullptr.
ORVMATH_API UINT SafeArrayGetDim(SAFEARRAY* psa);
// Lowest and highest index of dimension nDim (1-based). The highest is
// lLbound + cElements - 1 (below the lowest for an empty dimension).
// E_INVALIDARG for a null pointer, DISP_E_BADINDEX for a bad nDim.
ORVMATH_API HRESULT SafeArrayGetLBound(SAFEARRAY* psa, UINT nDim, LONG* plLbound);
ORVMATH_API HRESULT SafeArrayGetUBound(SAFEARRAY* psa, UINT nDim, LONG* plUbound);
// Copies the element at rgIndices (one index per dimension, first dimension
// first) to pv, which must point at a value of the element type. A VARIANT
// element is copied deeply (an array inside it is duplicated); pv must then
// point at an initialised VARIANT, which is cleared first.
// E_INVALIDARG for a null argument, DISP_E_BADINDEX when any index lies
// outside its dimension; nothing is read or written then.
ORVMATH_API HRESULT SafeArrayGetElement(SAFEARRAY* psa, LONG* rgIndices, void* pv);
// Copies *pv into the element at rgIndices; a VARIANT is copied deeply and
// the element's previous contents are cleared. Same errors as above.
ORVMATH_API HRESULT SafeArrayPutElement(SAFEARRAY* psa, LONG* rgIndices, void* pv);
