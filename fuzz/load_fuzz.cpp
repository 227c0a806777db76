// Loads arbitrary bytes as a route, an array, a matrix or a property bag. Damaged input must
// end in a host framework exception, never a crash, a hang or a huge
// allocation; a route that failed to load must still copy, evaluate and load.
#include "load_fuzz.h"

#include <orvmath/orvmath.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <vector>

using namespace ORVMATH;

namespace {

template <class Read>
bool LoadFrom(const std::uint8_t* data, std::size_t size, Read read) {
    std::vector<BYTE> bytes(data, data + size);  // CMemFile wants a writable block
    CMemFile file(bytes.data(), static_cast<UINT>(bytes.size()));
    CArchive ar(&file, CArchive::load, 64);
    try {
        read(ar);
        return true;
    } catch (const CException&) {
        return false;
    }
}

void Exercise(const CRoute2& route) {
    CRoute2 copy = route;
    try {
        const double from = copy.GetStartMile(), to = copy.GetEndMile();
        for (int k = 0; k <= 4; ++k) (void)copy.GetPoint(from + (to - from) * k / 4, 1.0);
        (void)copy.GetSegmentTypeE(to);
    } catch (const CException&) {
        // Tables taken as stored need not match the points; a checked
        // access may refuse them, but must not crash.
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const auto kind = static_cast<FuzzRecord>(data[0] % kFuzzRecordKinds);
    ++data;
    --size;
    switch (kind) {
    case kFuzzRoute:
    case kFuzzRouteEarlier: {
        CRoute2 route;
        const auto read = [&](CArchive& ar) {
            if (kind == kFuzzRoute)
                ar >> route;
            else
                route.LoadDataWithoutEndRadius(ar);
        };
        if (!LoadFrom(data, size, read)) LoadFrom(data, size, read);  // loading again after a failure
        Exercise(route);
        break;
    }
    case kFuzzDblArray:
        LoadFrom(data, size, [](CArchive& ar) { CDblArray a; ar >> a; });
        break;
    case kFuzzIntArray:
        LoadFrom(data, size, [](CArchive& ar) { CIntArray a; ar >> a; });
        break;
    case kFuzzPointArray:
        LoadFrom(data, size, [](CArchive& ar) { CDblPointArray a; a.Serialize(ar); });
        break;
    case kFuzzLineArray:
        LoadFrom(data, size, [](CArchive& ar) { CLine2Array a; a.Serialize(ar); });
        break;
    case kFuzzPointVector:
        LoadFrom(data, size, [](CArchive& ar) { CDblPointVector v; ar >> v; });
        break;
    case kFuzzProps: {
        // A bag that fails to load keeps what it held; one that loads finds
        // each property by name at its own position.
        CORVObjProp bag;
        bag.SetInt("n", 1);
        int n = 0, k = 0;
        if (!LoadFrom(data, size, [&](CArchive& ar) { bag.Serialize(ar); }) &&
            (bag.GetCount() != 1 || bag.GetInt("n", n) != PROP_OK || n != 1))
            std::abort();
        for (const CORVObjPropItem& item : bag)
            if (bag.Find(item.GetName()) != k++) std::abort();
        break;
    }
    default:
        LoadFrom(data, size, [](CArchive& ar) { CMatrix4 m; m.Serialize(ar); });
        break;
    }
    return 0;
}
