// Writes one well-formed record of each kind the load fuzzer reads into the
// directory given, as a starting corpus.
#include "load_fuzz.h"

#include <orvmath/orvmath.h>
#include <orvroute/alignment.h>

#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string>

using namespace ORVMATH;

namespace {

void Seed(const std::string& dir, FuzzRecord kind, const std::function<void(CArchive&)>& write) {
    CMemFile mem;
    {
        CArchive ar(&mem, CArchive::store);
        ar << static_cast<BYTE>(kind);
        write(ar);
    }
    const auto n = static_cast<std::size_t>(mem.GetLength());
    BYTE* p = mem.Detach();
    const std::string path = dir + "/seed" + std::to_string(static_cast<int>(kind));
    if (std::FILE* f = std::fopen(path.c_str(), "wb")) {
        std::fwrite(p, 1, n, f);
        std::fclose(f);
    }
    std::free(p);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: orvmath_fuzz_seeds DIR\n");
        return 2;
    }
    const std::string dir = argv[1];
    CRoute2 route = orvroute::SampleRoute();
    Seed(dir, kFuzzRoute, [&](CArchive& ar) { ar << route; });
    // The earlier layout: the same record with 48-byte blocks.
    Seed(dir, kFuzzRouteEarlier, [&](CArchive& ar) {
        ar << route.GetStartMile() << route.GetEndMile() << route.GetOffset();
        const CCriticalPointArray& pts = route.GetCriticalPoints();
        ar.WriteCount(static_cast<DWORD_PTR>(pts.GetSize()));
        for (INT_PTR i = 0; i < pts.GetSize(); ++i)
            ar << static_cast<int>(pts[i].type) << 0 << pts[i].pt.x << pts[i].pt.y << pts[i].angle << pts[i].radius
               << pts[i].spiralA;
        CDblArray miles, lengths;
        for (int i = 0; i + 1 < pts.GetSize(); ++i) {
            miles.Add(route.GetSegMile(i));
            lengths.Add(route.GetSegLength(i));
        }
        ar << miles << lengths;
    });
    CDblArray d;
    d.Add(1.5);
    d.Add(-2.0);
    Seed(dir, kFuzzDblArray, [&](CArchive& ar) { ar << d; });
    CIntArray n;
    n.Add(7);
    Seed(dir, kFuzzIntArray, [&](CArchive& ar) { ar << n; });
    CDblPointArray pa;
    pa.Add(1, 2);
    Seed(dir, kFuzzPointArray, [&](CArchive& ar) { pa.Serialize(ar); });
    CLine2Array la;
    la.Add(CLine2(0, 0, 3, 4));
    Seed(dir, kFuzzLineArray, [&](CArchive& ar) { la.Serialize(ar); });
    Seed(dir, kFuzzPointVector, [](CArchive& ar) { ar << CDblPointVector{{1, 2}, {3, 4}}; });
    CMatrix4 m;
    Seed(dir, kFuzzMatrix, [&](CArchive& ar) { m.Serialize(ar); });
    CORVObjProp bag;
    bag.SetDouble("width", 2.5);
    bag.SetPoint("origin", CDblPoint(1, 2));
    bag.SetText("label", "kerb");
    Seed(dir, kFuzzProps, [&](CArchive& ar) { bag.Serialize(ar); });
    return 0;
}
