#include <orvmath/host/archive.h>
#include <orvmath/vector3d.h>

namespace ORVMATH {

IMPLEMENT_SERIAL(Vector3d, CObject, 1)

void Vector3d::Serialize(CArchive& ar) {
    CObject::Serialize(ar);
    if (ar.IsStoring())
        ar << x << y << z;
    else
        ar >> x >> y >> z;
}

}  // namespace ORVMATH
