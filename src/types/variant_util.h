// Internal helpers shared by the point and point-array variant conversions.
#pragma once

#include <orvmath/host/variant.h>

namespace ORVMATH::detail {

// The one-dimensional double array held by v, or null when v is anything
// else (another type tag, a by-reference variant, several dimensions).
SAFEARRAY* DoubleVectorOf(const VARIANT& v);

// Element count of a one-dimensional safe array.
ULONG ElementCount(SAFEARRAY* psa);

// Fills out[0..n) from elements 0..n-1 of a one-dimensional VT_ARRAY|VT_R8
// variant holding at least n elements. The indices are literal, whatever
// the array's lower bound; an element the array does not have reads as left
// in out. Returns false, touching nothing, for any other variant.
bool ReadVariantDoubles(const VARIANT& v, ULONG n, double* out);

// A new VT_ARRAY|VT_R8 variant of n doubles, lower bound 0.
VARIANT MakeDoubleArrayVariant(const double* values, ULONG n);

}  // namespace ORVMATH::detail
