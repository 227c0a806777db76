// Exchange of planar and spatial points with automation variants.
#include <orvmath/point2.h>
#include <orvmath/point3.h>

#include "variant_util.h"

namespace ORVMATH {

void CDblPoint::FromVariant(const VARIANT& v) {
    double c[2] = {x, y};  // an element the read cannot reach keeps its coordinate
    if (detail::ReadVariantDoubles(v, 2, c)) SetPoint(c[0], c[1]);
}

VARIANT CDblPoint::To2DVariant() const {
    const double c[2] = {x, y};
    return detail::MakeDoubleArrayVariant(c, 2);
}

VARIANT CDblPoint::To3DVariant() const { return CDblPoint3(*this).ToVariant(); }

void CDblPoint3::FromVariant(const VARIANT& v) {
    double c[3] = {x, y, z};
    if (detail::ReadVariantDoubles(v, 3, c)) Set(c);
}

VARIANT CDblPoint3::ToVariant() const {
    const double c[3] = {x, y, z};
    return detail::MakeDoubleArrayVariant(c, 3);
}

}  // namespace ORVMATH
