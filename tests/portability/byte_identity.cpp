// Stores a fixed set of archive records and evaluates a fixed set of route
// points, writing both as text: the records as hex, the doubles with %a (every
// bit shown). The text must equal the golden file on every platform we build
// for, so a stored file loads bit for bit anywhere and a call gives the same
// double anywhere.
//
//   orvmath_byte_identity GOLDEN     compare with GOLDEN; exit 1 at the first difference
//   orvmath_byte_identity --print    write the text to standard output
//
// Regenerate the golden file (on x86-64, after a deliberate change of a record
// or of an evaluation) with scripts/golden.sh.
#include <orvmath/orvmath.h>

#include <orvroute/alignment.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

using namespace ORVMATH;

namespace {

std::string Hex(const std::vector<BYTE>& bytes) {
    static const char digits[] = "0123456789abcdef";
    std::string out;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        if (i > 0 && i % 32 == 0) out += "\n  ";
        out += digits[bytes[i] >> 4];
        out += digits[bytes[i] & 15];
    }
    return out;
}

template <class Write>
std::string Record(const char* name, Write write) {
    CMemFile file;
    {
        CArchive ar(&file, CArchive::store);
        write(ar);
    }
    const auto n = static_cast<std::size_t>(file.GetLength());
    BYTE* p = file.Detach();
    std::vector<BYTE> bytes(p, p + n);
    std::free(p);
    return std::string("record ") + name + " " + std::to_string(n) + "\n  " + Hex(bytes) + "\n";
}

std::string A(double v) {
    char buf[64];
    std::snprintf(buf, sizeof buf, "%a", v);
    return buf;
}

// A route with every element kind, a transition between two finite radii (as
// a compound curve has), turns both ways and an offset that changes the
// length table.
CRoute2 EveryKindRoute() {
    const SegmentType L = SEGMENT_LINE, C = SEGMENT_ARC, T = SEGMENT_TRANSITION;
    const CRouteElement rows[] = {{L, 120, 0, 0, 0},     {T, 0, 300, 0, 150},   {C, 200, 300, 0, 0},
                                  {T, 0, 600, 300, 150}, {C, 60, 600, 0, 0},    {T, 0, 0, 600, 150},
                                  {L, 80, 0, 0, 0},      {T, 0, -120, 0, 90},   {C, 90, -120, 0, 0},
                                  {T, 0, 0, -120, 90},   {L, 50, 0, 0, 0}};
    CRouteElementArray elements;
    for (const CRouteElement& e : rows) elements.Add(e);
    CCriticalPointArray pts;
    BuildRouteFromElements(CDblPoint(1000.25, -2000.5), 0.3, elements, pts, CLOTHOID_SERIES);
    return CRoute2(pts, 12.5, 1.75);
}

std::string Text() {
    std::string out;
    CRoute2 route = EveryKindRoute();
    out += Record("CRoute2", [&](CArchive& ar) { ar << route; });
    CMatrix4 m;
    m.RotateZ(0.7);
    m.Move(1.5, -2.25, 3.0);
    CMatrix4 r;
    r.Rotate(Vector3d(0.6, 0.0, 0.8), 1.1);
    m *= r;
    out += Record("CMatrix4", [&](CArchive& ar) { m.Serialize(ar); });
    CDblArray d;
    CIntArray n;
    CDblPointArray pts;
    CLine2Array lines;
    CArray<CDblPoint3> pts3;
    CArray<CDblRect> rects;
    CArray<dcomplex, dcomplex> roots;
    for (int i = 0; i < 5; ++i) {
        const double x = 0.1 * i - 1.0 / 3.0;
        d.Add(x);
        n.Add(i * 100000 - 7);
        pts.Add(CDblPoint(x, -x * x));
        lines.Add(CLine2(x, 1.0, -x, 2.5));
        pts3.Add(CDblPoint3(x, 2 * x, 1e-300 * x));
        rects.Add(CDblRect(x, -x, 1 / (x + 2), 3.0));
    }
    GetEquation2Root(1.0, 0.5, 3.0, roots);
    out += Record("arrays", [&](CArchive& ar) {
        ar << d << n;
        pts.Serialize(ar);
        lines.Serialize(ar);
        pts3.Serialize(ar);
        rects.Serialize(ar);
        roots.Serialize(ar);
    });
    const CArc2 arc(CDblPoint(3, 4), 5.5, 2.0, -4.0);
    out += Record("curves", [&](CArchive& ar) { ar << arc << CLine2(0.1, 0.2, 0.3, 0.4) << CCircle2(CDblPoint(-1, 1), 1e-3); });

    // Evaluations: miles across every element, offsets either side.
    const CRoute2 routes[] = {route, orvroute::SampleRoute(), orvroute::GeneratedRoute(40)};
    for (const CRoute2& rt : routes) {
        const double first = rt.GetStartMile(), span = rt.GetMile();
        for (int i = 0; i <= 200; ++i) {
            const double mile = first + span * i / 200.0 + (i % 7) * 1e-3;
            const double offset = (i % 5 - 2) * 3.7;
            CCriticalPoint cp;
            const int element = rt.GetCriticalPoint(mile, cp);
            const CDblPoint p = rt.GetPoint(mile, offset);
            out += "point " + A(mile) + " " + A(offset) + " -> " + std::to_string(element) + " " + A(p.x) + " " +
                   A(p.y) + " " + A(cp.angle) + " " + A(cp.radius) + "\n";
        }
    }
    return out;
}

}  // namespace

int main(int argc, char** argv) {
    const std::string text = Text();
    if (argc == 2 && std::string(argv[1]) == "--print") {
        std::fwrite(text.data(), 1, text.size(), stdout);
        return 0;
    }
    if (argc != 2) {
        std::fprintf(stderr, "usage: %s GOLDEN | --print\n", argv[0]);
        return 2;
    }
    std::ifstream in(argv[1], std::ios::binary);
    if (!in) {
        std::fprintf(stderr, "cannot read %s\n", argv[1]);
        return 2;
    }
    std::stringstream golden;
    golden << in.rdbuf();
    std::istringstream want(golden.str()), got(text);
    std::string w, g;
    for (int line = 1;; ++line) {
        const bool hasW = static_cast<bool>(std::getline(want, w)), hasG = static_cast<bool>(std::getline(got, g));
        if (!hasW && !hasG) break;
        if (hasW && !w.empty() && w.back() == '\r') w.pop_back();  // a checkout with CRLF endings
        if (!hasW || !hasG || w != g) {
            std::fprintf(stderr, "line %d differs\n  golden: %s\n  here:   %s\n", line, hasW ? w.c_str() : "(end)",
                         hasG ? g.c_str() : "(end)");
            return 1;
        }
    }
    std::printf("byte identity: %zu bytes of records and evaluations match\n", text.size());
    return 0;
}
