// Expression evaluation: a recursive-descent reader that computes as it reads.
//
// Faults of form stop the reader at once. A fault of value (division by zero,
// domain, overflow) is only noted, the value becomes NaN and reading goes on,
// so that a later fault of form still takes precedence over it.
#include <orvmath/angle.h>
#include <orvmath/expression.h>

#include "numscan.h"

#include <cmath>
#include <cstring>
#include <limits>

namespace ORVMATH {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kE = 2.718281828459045;

enum Function : int { kSin, kCos, kTan, kAsin, kAcos, kAtan, kAtan2, kSqrt, kAbs, kExp, kLn, kLog, kMin, kMax, kNone };

struct FunctionInfo {
    const char* name;
    int minArgs;
    int maxArgs;  // -1: no limit
    const char* countMessage;
};

const FunctionInfo kFunctions[] = {
    {"sin", 1, 1, "sin takes 1 argument"},
    {"cos", 1, 1, "cos takes 1 argument"},
    {"tan", 1, 1, "tan takes 1 argument"},
    {"asin", 1, 1, "asin takes 1 argument"},
    {"acos", 1, 1, "acos takes 1 argument"},
    {"atan", 1, 1, "atan takes 1 argument"},
    {"atan2", 2, 2, "atan2 takes 2 arguments"},
    {"sqrt", 1, 1, "sqrt takes 1 argument"},
    {"abs", 1, 1, "abs takes 1 argument"},
    {"exp", 1, 1, "exp takes 1 argument"},
    {"ln", 1, 1, "ln takes 1 argument"},
    {"log", 1, 1, "log takes 1 argument"},
    {"min", 2, -1, "min takes 2 or more arguments"},
    {"max", 2, -1, "max takes 2 or more arguments"},
};
static_assert(sizeof(kFunctions) / sizeof(kFunctions[0]) == kNone, "one entry per function");

bool IsNameStart(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_'; }
bool IsNameChar(char c) { return IsNameStart(c) || text_detail::IsDigit(c); }
char Lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

// Whether [p, p + n) spells `name` ignoring ASCII case.
bool SameName(const char* p, int n, const char* name, std::size_t nameLength) {
    if (static_cast<std::size_t>(n) != nameLength) return false;
    for (int i = 0; i < n; ++i)
        if (Lower(p[i]) != Lower(name[i])) return false;
    return true;
}

Function FindFunction(const char* p, int n) {
    for (int f = 0; f < kNone; ++f)
        if (SameName(p, n, kFunctions[f].name, std::strlen(kFunctions[f].name))) return static_cast<Function>(f);
    return kNone;
}

enum TokenKind { kEnd, kNumber, kName, kPlus, kMinus, kStar, kSlash, kCaret, kOpen, kClose, kComma, kBad };

struct Token {
    TokenKind kind = kEnd;
    int pos = 0;
    int length = 0;
    double number = 0.0;
    bool tooLarge = false;  // a number beyond the range of a double
};

// The arguments of a call, kept as the functions need them: the first two and
// the running extremes (min and max take any number).
struct Arguments {
    int count = 0;
    double first = 0.0, second = 0.0, lo = 0.0, hi = 0.0;

    void Add(double v) {
        if (count == 0) first = lo = hi = v;
        if (count == 1) second = v;
        lo = std::fmin(lo, v);
        hi = std::fmax(hi, v);
        ++count;
    }
};

class Reader {
public:
    Reader(const CString& text, const CExprVariableArray* variables)
        : m_begin(text.GetString()), m_end(m_begin + text.GetLength()), m_variables(variables) {}

    CExprResult Run();

private:
    void Next();
    double Expression();
    double Term();
    double Signed();
    double Power();
    double Primary();
    double Group();
    double Call(const Token& name, Function f);
    double Name(const Token& name);
    double Apply(Function f, const Arguments& a, int pos);

    // A fault of form: the first one is kept and reading stops.
    void FailForm(ExprStatus status, int pos, const char* message);
    // A fault of value: the first one is kept; reading goes on with NaN.
    double FailValue(ExprStatus status, int pos, const char* message);
    // v itself, or a fault of value at pos when it is not finite.
    double Checked(double v, int pos);
    // Opens one nesting level at pos; false (with the fault) when too deep.
    bool Enter(int pos);
    // The fault for a token found where a ')' (after the '(' at open) or,
    // in an argument list, a ',' was expected.
    void FailClose(int open, bool inCall);

    const char* const m_begin;
    const char* const m_end;
    const CExprVariableArray* const m_variables;
    Token m_token;
    int m_depth = 0;
    bool m_stopped = false;
    CExprResult m_form;   // the fault of form, if any
    CExprResult m_value;  // the first fault of value, if any
};

void Reader::FailForm(ExprStatus status, int pos, const char* message) {
    if (m_stopped) return;
    m_stopped = true;
    m_form.status = status;
    m_form.position = pos;
    m_form.message = message;
}

double Reader::FailValue(ExprStatus status, int pos, const char* message) {
    if (m_value.status == EXPR_OK) {
        m_value.status = status;
        m_value.position = pos;
        m_value.message = message;
    }
    return kNaN;
}

double Reader::Checked(double v, int pos) {
    if (std::isfinite(v)) return v;
    if (std::isnan(v)) return FailValue(EXPR_DOMAIN, pos, "result is not a number");
    return FailValue(EXPR_OVERFLOW, pos, "result too large");
}

bool Reader::Enter(int pos) {
    if (++m_depth <= kExprMaxDepth) return true;
    FailForm(EXPR_TOO_DEEP, pos, "expression nested too deeply");
    return false;
}

void Reader::Next() {
    const char* p = text_detail::SkipSpace(m_begin + m_token.pos + m_token.length, m_end);
    Token t;
    t.pos = static_cast<int>(p - m_begin);
    t.length = 1;
    if (p == m_end) {
        t.kind = kEnd;
        t.length = 0;
    } else if (text_detail::IsDigit(*p) || *p == '.') {
        const char* end = text_detail::ScanUnsigned(p, m_end);
        if (end == p) {
            t.kind = kBad;  // a '.' with no digit on either side
        } else {
            t.kind = kNumber;
            t.length = static_cast<int>(end - p);
            t.tooLarge = !text_detail::ConvertNumber(p, end, t.number);
        }
    } else if (IsNameStart(*p)) {
        const char* end = p + 1;
        while (end != m_end && IsNameChar(*end)) ++end;
        t.kind = kName;
        t.length = static_cast<int>(end - p);
    } else {
        switch (*p) {
            case '+':
                t.kind = kPlus;
                break;
            case '-':
                t.kind = kMinus;
                break;
            case '*':
                t.kind = kStar;
                break;
            case '/':
                t.kind = kSlash;
                break;
            case '^':
                t.kind = kCaret;
                break;
            case '(':
                t.kind = kOpen;
                break;
            case ')':
                t.kind = kClose;
                break;
            case ',':
                t.kind = kComma;
                break;
            default:
                t.kind = kBad;
                break;
        }
    }
    m_token = t;
}

CExprResult Reader::Run() {
    Next();
    if (m_token.kind == kEnd) {
        FailForm(EXPR_EMPTY, 0, "empty expression");
    } else {
        const double v = Expression();
        if (m_token.kind == kClose)
            FailForm(EXPR_UNBALANCED, m_token.pos, "')' without '('");
        else if (m_token.kind == kBad)
            FailForm(EXPR_SYNTAX, m_token.pos, "unexpected character");
        else if (m_token.kind != kEnd)
            FailForm(EXPR_TRAILING, m_token.pos, "unexpected text after the expression");
        if (!m_stopped && m_value.status == EXPR_OK) {
            CExprResult ok;
            ok.value = v;
            return ok;
        }
    }
    CExprResult fault = m_stopped ? m_form : m_value;
    fault.value = kNaN;
    return fault;
}

double Reader::Expression() {
    double v = Term();
    while (!m_stopped && (m_token.kind == kPlus || m_token.kind == kMinus)) {
        const Token op = m_token;
        Next();
        const double rhs = Term();
        v = Checked(op.kind == kPlus ? v + rhs : v - rhs, op.pos);
    }
    return v;
}

double Reader::Term() {
    double v = Signed();
    while (!m_stopped && (m_token.kind == kStar || m_token.kind == kSlash)) {
        const Token op = m_token;
        Next();
        const double rhs = Signed();
        if (op.kind == kStar)
            v = Checked(v * rhs, op.pos);
        else if (rhs == 0.0)
            v = FailValue(EXPR_DIV_ZERO, op.pos, "division by zero");
        else
            v = Checked(v / rhs, op.pos);
    }
    return v;
}

double Reader::Signed() {
    if (m_token.kind != kPlus && m_token.kind != kMinus) return Power();
    const Token sign = m_token;
    if (!Enter(sign.pos)) return kNaN;
    Next();
    const double v = Signed();
    --m_depth;
    return sign.kind == kMinus ? -v : v;
}

double Reader::Power() {
    const double base = Primary();
    if (m_stopped || m_token.kind != kCaret) return base;
    const Token op = m_token;
    if (!Enter(op.pos)) return kNaN;
    Next();
    const double exponent = Signed();  // right-associative: 2^3^2 = 2^(3^2)
    --m_depth;
    if (base == 0.0 && exponent < 0.0) return FailValue(EXPR_DIV_ZERO, op.pos, "zero to a negative power");
    if (base < 0.0 && exponent != std::floor(exponent))
        return FailValue(EXPR_DOMAIN, op.pos, "negative number to a fractional power");
    return Checked(std::pow(base, exponent), op.pos);
}

double Reader::Primary() {
    const Token t = m_token;
    switch (t.kind) {
        case kNumber:
            Next();
            return t.tooLarge ? FailValue(EXPR_OVERFLOW, t.pos, "number too large") : t.number;
        case kName:
            Next();
            if (m_token.kind == kOpen) {
                const Function f = FindFunction(m_begin + t.pos, t.length);
                if (f != kNone) return Call(t, f);
                FailForm(EXPR_UNKNOWN_NAME, t.pos, "unknown function");
                return kNaN;
            }
            return Name(t);
        case kOpen:
            return Group();
        case kBad:
            FailForm(EXPR_SYNTAX, t.pos, "unexpected character");
            return kNaN;
        default:
            FailForm(EXPR_SYNTAX, t.pos, "operand expected");
            return kNaN;
    }
}

void Reader::FailClose(int open, bool inCall) {
    if (m_token.kind == kEnd)
        FailForm(EXPR_UNBALANCED, open, "'(' without ')'");
    else if (m_token.kind == kBad)
        FailForm(EXPR_SYNTAX, m_token.pos, "unexpected character");
    else
        FailForm(EXPR_SYNTAX, m_token.pos, inCall ? "',' or ')' expected" : "')' expected");
}

double Reader::Group() {
    const int open = m_token.pos;
    if (!Enter(open)) return kNaN;
    Next();
    const double v = Expression();
    --m_depth;
    if (m_stopped) return kNaN;
    if (m_token.kind != kClose) {
        FailClose(open, false);
        return kNaN;
    }
    Next();
    return v;
}

double Reader::Call(const Token& name, Function f) {
    const int open = m_token.pos;
    if (!Enter(open)) return kNaN;
    Next();
    Arguments args;
    if (m_token.kind != kClose) {
        for (;;) {
            args.Add(Expression());
            if (m_stopped) return kNaN;
            if (m_token.kind == kClose) break;
            if (m_token.kind != kComma) {
                FailClose(open, true);
                return kNaN;
            }
            Next();
        }
    }
    --m_depth;
    Next();  // past ')'
    const FunctionInfo& info = kFunctions[f];
    if (args.count < info.minArgs || (info.maxArgs >= 0 && args.count > info.maxArgs)) {
        FailForm(EXPR_ARG_COUNT, name.pos, info.countMessage);
        return kNaN;
    }
    return Apply(f, args, name.pos);
}

double Reader::Apply(Function f, const Arguments& a, int pos) {
    const double x = a.first;
    switch (f) {
        case kSin:
            return Checked(std::sin(x), pos);
        case kCos:
            return Checked(std::cos(x), pos);
        case kTan:
            return Checked(std::tan(x), pos);
        case kAsin:
        case kAcos:
            if (x < -1.0 || x > 1.0) return FailValue(EXPR_DOMAIN, pos, "argument outside [-1, 1]");
            return Checked(f == kAsin ? std::asin(x) : std::acos(x), pos);
        case kAtan:
            return Checked(std::atan(x), pos);
        case kAtan2:
            if (x == 0.0 && a.second == 0.0) return FailValue(EXPR_DOMAIN, pos, "atan2 of (0, 0)");
            return Checked(std::atan2(x, a.second), pos);
        case kSqrt:
            if (x < 0.0) return FailValue(EXPR_DOMAIN, pos, "square root of a negative number");
            return Checked(std::sqrt(x), pos);
        case kAbs:
            return Checked(std::fabs(x), pos);
        case kExp:
            return Checked(std::exp(x), pos);
        case kLn:
        case kLog:
            if (x <= 0.0) return FailValue(EXPR_DOMAIN, pos, "logarithm of a number not positive");
            return Checked(f == kLn ? std::log(x) : std::log10(x), pos);
        case kMin:
            return Checked(a.lo, pos);
        case kMax:
            return Checked(a.hi, pos);
        default:
            return kNaN;
    }
}

double Reader::Name(const Token& name) {
    const char* p = m_begin + name.pos;
    if (m_variables != nullptr) {
        for (INT_PTR i = 0; i < m_variables->GetSize(); ++i) {
            const CExprVariable& var = m_variables->GetAt(i);
            if (!SameName(p, name.length, var.name.GetString(), var.name.str().size())) continue;
            if (!std::isfinite(var.value)) return FailValue(EXPR_DOMAIN, name.pos, "variable is not finite");
            return var.value;
        }
    }
    if (SameName(p, name.length, "pi", 2)) return kPi;
    if (SameName(p, name.length, "e", 1)) return kE;
    if (FindFunction(p, name.length) != kNone)
        FailForm(EXPR_ARG_COUNT, name.pos, "function without its argument list");
    else
        FailForm(EXPR_UNKNOWN_NAME, name.pos, "unknown name");
    return kNaN;
}

}  // namespace

CExprResult evaluate(const CString& text) { return Reader(text, nullptr).Run(); }

CExprResult evaluate(const CString& text, const CExprVariableArray& variables) {
    return Reader(text, &variables).Run();
}

}  // namespace ORVMATH
