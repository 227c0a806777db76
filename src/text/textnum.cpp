// The number grammar: scanning, conversion, IsNotLegalNum and StrToXY.
#include <orvmath/textnum.h>

#include "numscan.h"

#include <charconv>
#include <system_error>

namespace ORVMATH {
namespace text_detail {

namespace {

const char* SkipDigits(const char* p, const char* last) noexcept {
    while (p != last && IsDigit(*p)) ++p;
    return p;
}

const char* SkipSign(const char* p, const char* last) noexcept {
    return p != last && (*p == '+' || *p == '-') ? p + 1 : p;
}

// Whether an unsigned number that is out of a double's range lies above it
// (rather than below): the power of ten of its leading significant digit
// decides, since the range spans about 10^-324 to 10^308.
bool AboveRange(const char* p, const char* last) noexcept {
    long long order = 0;  // 10^(order - 1) is the place of the first nonzero digit
    bool significant = false;
    for (; p != last && IsDigit(*p); ++p) {
        significant = significant || *p != '0';
        if (significant) ++order;
    }
    if (p != last && *p == '.') {
        for (++p; p != last && IsDigit(*p); ++p) {
            if (significant) continue;
            if (*p != '0')
                significant = true;
            else
                --order;
        }
    }
    long long exponent = 0;
    if (p != last) {  // 'e' or 'E'
        ++p;
        const bool negative = *p == '-';
        for (p = SkipSign(p, last); p != last; ++p)
            if (exponent < 1000000000) exponent = exponent * 10 + (*p - '0');  // saturates far beyond any double
        if (negative) exponent = -exponent;
    }
    return order + exponent > 0;
}

}  // namespace

const char* ScanUnsigned(const char* first, const char* last) noexcept {
    const char* p = SkipDigits(first, last);
    bool mantissa = p != first;
    if (p != last && *p == '.') {
        const char* fraction = SkipDigits(p + 1, last);
        mantissa = mantissa || fraction != p + 1;
        p = fraction;
    }
    if (!mantissa) return first;
    if (p != last && (*p == 'e' || *p == 'E')) {
        const char* digits = SkipSign(p + 1, last);
        const char* end = SkipDigits(digits, last);
        if (end != digits) p = end;
    }
    return p;
}

const char* ScanSigned(const char* first, const char* last) noexcept {
    const char* digits = SkipSign(first, last);
    const char* end = ScanUnsigned(digits, last);
    return end == digits ? first : end;
}

bool ConvertNumber(const char* first, const char* last, double& value) noexcept {
    const bool negative = first != last && *first == '-';
    first = SkipSign(first, last);
    double magnitude = 0.0;
    // from_chars reads the '.' whatever the locale; the grammar was checked by
    // the scanner, so the only failure left is the range.
    const std::from_chars_result r = std::from_chars(first, last, magnitude, std::chars_format::general);
    if (r.ec == std::errc::result_out_of_range) {
        if (AboveRange(first, last)) return false;
        magnitude = 0.0;
    } else if (r.ec != std::errc() || r.ptr != last) {
        return false;  // not reached for scanned input; kept so that no other text passes
    }
    value = negative ? -magnitude : magnitude;
    return true;
}

bool ReadNumber(const char*& p, const char* last, double& value) noexcept {
    const char* end = ScanSigned(p, last);
    if (end == p || !ConvertNumber(p, end, value)) return false;
    p = end;
    return true;
}

}  // namespace text_detail

using text_detail::ReadNumber;
using text_detail::SkipSpace;

bool IsNotLegalNum(const CString& text) {
    const char* p = text.GetString();
    const char* const last = p + text.GetLength();
    p = SkipSpace(p, last);
    double value = 0.0;
    if (!ReadNumber(p, last, value)) return true;
    return SkipSpace(p, last) != last;
}

bool StrToXY(const CString& text, CDblPoint& pt) {
    const char* p = text.GetString();
    const char* const last = p + text.GetLength();
    double x = 0.0, y = 0.0;
    p = SkipSpace(p, last);
    if (!ReadNumber(p, last, x)) return false;
    const char* const afterX = p;
    p = SkipSpace(p, last);
    if (p != last && (*p == ',' || *p == ';'))
        p = SkipSpace(p + 1, last);
    else if (p == afterX)
        return false;  // the numbers touch: no separator at all
    if (!ReadNumber(p, last, y) || SkipSpace(p, last) != last) return false;
    pt.SetPoint(x, y);
    return true;
}

}  // namespace ORVMATH
