// Numbers and coordinate pairs typed as text.
//
// The number grammar, shared by both functions (and by the numbers inside
// expressions, there without the sign):
//
//     number   := [sign] mantissa [exponent]
//     sign     := '+' | '-'
//     mantissa := digits ['.' [digits]] | '.' digits
//     exponent := ('e' | 'E') [sign] digits
//     digits   := one or more of 0-9
//
// So "5", "-5", "+5", "5.", ".5", "-.5", "1e5", "1.5E-3" and "007" are
// numbers; "", "+", "-", ".", "+.", "e5", "1e", "1e+", "1.2.3", "--5", "0x1A",
// "inf", "nan", "1,5", "1,000", "1 000", "1_000" and "5 m" are not. The
// decimal point is always '.', whatever the C locale, and the comma is never
// one. A number too large for a double ("1e400") is not accepted; one too
// small for it ("1e-400") is, and reads as 0.
//
// White space is space, tab, CR, LF, VT and FF; any byte outside the grammar
// (a NUL included) makes the text fail.
#pragma once

#include <orvmath/export.h>
#include <orvmath/host/cstring.h>
#include <orvmath/point2.h>

namespace ORVMATH {

// True when `text` is NOT a legal number: legal is one number by the grammar
// above, alone but for white space before and after it, whose value is
// finite. Empty or blank text is not legal (true).
ORVMATH_API bool IsNotLegalNum(const CString& text);

// Reads a coordinate pair "x y" into `pt` (x, then y). The two numbers follow
// the grammar above and are separated by one comma or one semicolon with
// optional white space around it, or by white space alone: "12.5, -3",
// "12.5 -3", "12.5;-3", the same with a tab for the space, and " 12.5 ; -3 "
// all give (12.5, -3).
// White space may stand before and after the pair; nothing else may.
// Returns false, leaving `pt` untouched, for anything else: one number or
// three, two separators ("1,,2"), a trailing separator, a sign apart from its
// digits ("1 - 3"), a number that is not legal. Since the comma separates,
// "1,5" gives (1, 5), and "1,5 2,5" fails (after x = 1 and y = 5 it holds
// more text).
ORVMATH_API bool StrToXY(const CString& text, CDblPoint& pt);

}  // namespace ORVMATH
