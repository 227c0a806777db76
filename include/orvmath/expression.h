// Arithmetic expressions given as text, evaluated to a double.
//
// Grammar, loosest binding first (white space -- space, tab, CR, LF, VT, FF --
// may stand between any two tokens and is otherwise ignored):
//
//     expression := term (('+' | '-') term)*          left-associative
//     term       := signed (('*' | '/') signed)*      left-associative
//     signed     := ('+' | '-') signed | power
//     power      := primary ['^' signed]              right-associative
//     primary    := number | name | name '(' arguments ')' | '(' expression ')'
//     arguments  := expression (',' expression)*
//
// So a sign binds more loosely than '^', as in mathematics: -2^2 = -(2^2) = -4,
// 2^-2 = 0.25, 2^3^2 = 2^9 = 512, and 2*-3 = -6. There is no implicit
// multiplication: "2pi" and "2(3)" are errors.
//
// A number is digits with an optional decimal point (".5" and "5." count) and
// an optional exponent (e or E, an optional sign, digits); the decimal point
// is always '.', whatever the C locale. A number too large for a double is an
// overflow; one too small becomes 0.
//
// A name is a letter or '_' followed by letters, digits and '_'; names are
// compared ignoring ASCII case. A name followed by '(' is a function:
//
//     sin cos tan asin acos atan    one argument, angles in radians
//     atan2(y, x)                   the direction of (x, y) in (-pi, pi]
//     sqrt abs exp                  one argument
//     ln                            natural logarithm
//     log                           base-10 logarithm
//     min max                       two or more arguments
//
// Any other name is looked up among the caller's variables (the first entry
// of that name), then the constants pi and e; a variable hides a constant.
//
// Faults are reported in the result, never thrown, whatever the text. The
// first fault of form (every status but the value faults below) met reading
// left to right stops the evaluation and is reported; only text that is well
// formed throughout reports a value fault (division by zero, domain,
// overflow, and the first one met in evaluation order). Operands are
// evaluated left to right, and a fault's position is the 0-based byte
// offset of the token it concerns.
#pragma once

#include <orvmath/export.h>
#include <orvmath/host/array.h>
#include <orvmath/host/cstring.h>

namespace ORVMATH {

// How deep parentheses, function calls, signs and '^' exponents may nest:
// each of them opens one level, so "((1))", "--1", "-(1)" and "2^2^2" are 2
// levels deep and "1+1+1" none. Deeper text is refused with EXPR_TOO_DEEP
// instead of exhausting the stack.
constexpr int kExprMaxDepth = 100;

// The outcome of an evaluation, with where the fault lies (the position
// named for each status).
enum ExprStatus : int {
    // The value is in CExprResult::value.
    EXPR_OK = 0,
    // Nothing but white space; position 0.
    EXPR_EMPTY,
    // A character that starts no token, or a token where an operand, an
    // operator, ',' or ')' was needed; the position of that character or
    // token (the text's length when the text ended too soon).
    EXPR_SYNTAX,
    // A '(' never closed (its position) or a ')' never opened (its position).
    EXPR_UNBALANCED,
    // A name that is no function (when followed by '('), variable or
    // constant; its position.
    EXPR_UNKNOWN_NAME,
    // A function given the wrong number of arguments, or named without '(';
    // the name's position.
    EXPR_ARG_COUNT,
    // A complete expression followed by more text; the position of the first
    // extra token.
    EXPR_TRAILING,
    // Nesting deeper than kExprMaxDepth; the position of the token that went
    // too deep.
    EXPR_TOO_DEEP,
    // x / 0, or 0 ^ y with y < 0; the operator's position.
    EXPR_DIV_ZERO,
    // Outside a function's domain: sqrt(x < 0), ln and log (x <= 0), asin
    // and acos (|x| > 1), atan2(0, 0), x ^ y with x < 0 and y not whole, a
    // variable that is not finite; the function's, operator's or variable's
    // position.
    EXPR_DOMAIN,
    // A number, an operation or a function whose result is too large for a
    // double; the number's, operator's or function's position.
    EXPR_OVERFLOW,
};

// The result of evaluate: on success status EXPR_OK, the value, position -1
// and an empty message; on a fault, its status and position, a short English
// message (for example "division by zero") and a NaN value.
struct CExprResult {
    ExprStatus status = EXPR_OK;  // EXPR_OK or the fault
    double value = 0.0;           // the value, NaN after a fault
    int position = -1;            // 0-based byte offset of the fault in the text, -1 on success
    CString message;              // what went wrong, empty on success

    // True when status is EXPR_OK.
    bool Ok() const noexcept { return status == EXPR_OK; }
};

// A named value that an expression may use.
struct CExprVariable {
    CString name;        // matched ignoring ASCII case; a name outside the name grammar is never matched
    double value = 0.0;  // a value that is not finite is a domain fault where it is used
};

// The variables given to evaluate.
using CExprVariableArray = CArray<CExprVariable, const CExprVariable&>;

// Evaluates `text` by the grammar above, with the constants pi and e and no
// variables. For example "2 * (3 + 4)" gives 14 and "max(1, 7, 3) - 2^-1" 6.5.
ORVMATH_API CExprResult evaluate(const CString& text);

// The same, with the caller's variables: a name that is not followed by '('
// takes the value of the first entry of `variables` with that name.
ORVMATH_API CExprResult evaluate(const CString& text, const CExprVariableArray& variables);

}  // namespace ORVMATH
