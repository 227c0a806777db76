// A point array written as a list, for the polygon tests.
#pragma once

#include <orvmath/containers.h>

#include <initializer_list>

// The points in order, or in reverse order when `reversed`.
inline ORVMATH::CDblPointArray Poly(std::initializer_list<ORVMATH::CDblPoint> pts, bool reversed = false) {
    ORVMATH::CDblPointArray a;
    for (const ORVMATH::CDblPoint& p : pts) reversed ? a.InsertAt(0, p) : static_cast<void>(a.Add(p));
    return a;
}
