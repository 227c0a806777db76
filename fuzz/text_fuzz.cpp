// Feeds arbitrary bytes to the expression reader, the number check and the
// coordinate pair reader. None may crash, hang or overflow the stack; beyond
// that the results must agree with each other where their grammars overlap.
#include <orvmath/orvmath.h>

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>

using namespace ORVMATH;

namespace {

void Check(bool condition) {
    if (!condition) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const CString text(reinterpret_cast<const char*>(data), static_cast<int>(size));

    CExprVariableArray vars;
    vars.Add({"x", 2.5});
    vars.Add({"y", -1e300});
    const CExprResult r = evaluate(text, vars);
    if (r.Ok()) {
        Check(std::isfinite(r.value) && r.position == -1 && r.message.IsEmpty());
    } else {
        Check(std::isnan(r.value) && r.position >= 0 && r.position <= text.GetLength() && !r.message.IsEmpty());
    }

    CDblPoint pt(7, 7);
    if (StrToXY(text, pt))
        Check(std::isfinite(pt.x) && std::isfinite(pt.y));
    else
        Check(pt.x == 7 && pt.y == 7);

    // A legal number is also an expression of the same value (its sign is a
    // sign operator there, which gives the same double), and the x of a pair.
    if (!IsNotLegalNum(text)) {
        const CExprResult plain = evaluate(text);
        CDblPoint first;
        Check(plain.Ok() && StrToXY(text + " 0", first) && first.x == plain.value && first.y == 0.0);
    }
    return 0;
}
