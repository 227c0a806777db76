// Scanning and converting numbers of the text grammar (see textnum.h); shared
// by the number checks, the coordinate pairs and the expression reader.
#pragma once

namespace ORVMATH {
namespace text_detail {

// White space of the "C" locale: space, tab, CR, LF, VT, FF.
inline bool IsSpace(char c) noexcept {
    return c == ' ' || c == '\t' || c == '\n' || c == '\v' || c == '\f' || c == '\r';
}

inline bool IsDigit(char c) noexcept { return c >= '0' && c <= '9'; }

inline const char* SkipSpace(const char* p, const char* last) noexcept {
    while (p != last && IsSpace(*p)) ++p;
    return p;
}

// The end of the longest unsigned number (mantissa [exponent]) that starts at
// `first` and ends at or before `last`, or `first` when none starts there. An
// 'e' without a complete exponent after it is not part of the number: "2e+"
// scans as "2".
const char* ScanUnsigned(const char* first, const char* last) noexcept;

// The same with an optional leading sign.
const char* ScanSigned(const char* first, const char* last) noexcept;

// The value of [first, last), a whole number as ScanSigned finds it, correctly
// rounded to the nearest double. A value below the smallest double becomes
// 0 (with its sign); one beyond the largest gives false and leaves `value`
// untouched.
bool ConvertNumber(const char* first, const char* last, double& value) noexcept;

// Reads a signed number at p into `value` and moves p past it; false, with
// neither changed, when none starts there or it is out of range.
bool ReadNumber(const char*& p, const char* last, double& value) noexcept;

}  // namespace text_detail
}  // namespace ORVMATH
