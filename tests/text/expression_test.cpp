// Expression evaluation against values worked out by hand (arithmetic in the comments) and faults placed by
// counting characters (0-based).
#include <orvmath/expression.h>

#include <gtest/gtest.h>

#include <cmath>
#include <iterator>
#include <string>

using namespace ORVMATH;

namespace {
constexpr double kPiValue = 3.141592653589793;
constexpr double kEValue = 2.718281828459045;

struct ValueCase {
    const char* text;
    double expected;
};

struct FaultCase {
    std::string text;
    ExprStatus status;
    int position;
};

void ExpectValues(const ValueCase* rows, std::size_t n, const CExprVariableArray* vars = nullptr) {
    for (std::size_t i = 0; i < n; ++i) {
        const CExprResult r = vars != nullptr ? evaluate(rows[i].text, *vars) : evaluate(rows[i].text);
        ASSERT_TRUE(r.Ok()) << rows[i].text << ": " << r.message.GetString() << " at " << r.position;
        EXPECT_NEAR(r.value, rows[i].expected, 1e-15) << rows[i].text;
        EXPECT_EQ(r.position, -1);
        EXPECT_TRUE(r.message.IsEmpty());
    }
}

void ExpectFaults(const FaultCase* rows, std::size_t n) {
    for (const FaultCase* row = rows; row != rows + n; ++row) {
        const CExprResult r = evaluate(CString(row->text));
        EXPECT_EQ(r.status, row->status) << row->text.substr(0, 40) << ": " << r.message.GetString();
        EXPECT_EQ(r.position, row->position) << row->text.substr(0, 40);
        EXPECT_TRUE(std::isnan(r.value) && !r.message.IsEmpty()) << row->text.substr(0, 40);
    }
}
}  // namespace

// Left-associative: 10-4-3 = (10-4)-3 = 3, 64/4/2 = 8. Right-associative ^: 2^3^2 = 2^9 = 512. The sign binds
// looser than ^: -2^2 = -(2^2) = -4, -2^-2 = -(2^(-2)) = -0.25, 1 - -2^2 = 1-(-4) = 5; tighter than * and +:
// 2*-3 = -6, 2--3 = 5. 1e-400 is below the smallest double: 0. A negative base takes a whole power: (-2)^3 = -8.
TEST(Evaluate, PrecedenceAssociativityAndSigns) {
    // clang-format off
    const ValueCase rows[] = {
        {"1+2*3", 7}, {"10-4-3", 3}, {"64/4/2", 8}, {"2^3^2", 512}, {"-2^2", -4}, {"2^-2", 0.25}, {"-2^-2", -0.25},
        {"2*-3", -6}, {"2--3", 5}, {"+-+1", -1}, {"2*3^2", 18}, {"1 - -2^2", 5}, {" 7\t\n", 7}, {".5+5.", 5.5},
        {"1.5e3 + 2E-1", 1500.2}, {"(-2)^3", -8}, {"1e-400", 0}};
    // clang-format on
    ExpectValues(rows, std::size(rows));
}

// sin(pi/6) = cos(pi/3) = 1/2, tan(pi/4) = 1, atan2(1, -1) lies in the second quadrant: 3pi/4; log is base 10;
// names ignore case.
TEST(Evaluate, FunctionsAndConstants) {
    // clang-format off
    const ValueCase rows[] = {
        {"sin(pi/6)", 0.5}, {"cos(pi/3)", 0.5}, {"tan(pi/4)", 1}, {"asin(1)", kPiValue / 2}, {"acos(-1)", kPiValue},
        {"atan(1)", kPiValue / 4}, {"atan2(1, -1)", 3 * kPiValue / 4}, {"sqrt(3^2 + 4^2)", 5}, {"abs(-2.5)", 2.5},
        {"exp(1)", kEValue}, {"ln(e^2)", 2}, {"log(1000)", 3}, {"min(3, -1, 2)", -1}, {"max(3, -1, 2, 7)", 7},
        {"max(1, min(5, 3)) * 2", 6}, {"PI", kPiValue}, {"SQRT(4) + Abs(-1)", 3}};
    // clang-format on
    ExpectValues(rows, std::size(rows));
}

TEST(Evaluate, VariablesFirstEntryWinsAndHidesConstants) {
    CExprVariableArray vars;
    vars.Add({"x", 3});
    vars.Add({"Len", 2.5});
    vars.Add({"pi", 3});
    vars.Add({"X", 99});  // a later entry of the same name is never used
    vars.Add({"sin", 10});
    const ValueCase rows[] = {{"x*len", 7.5}, {"LEN + X", 5.5}, {"pi", 3}, {"e", kEValue}, {"sin + sin(0)", 10}};
    ExpectValues(rows, std::size(rows), &vars);

    vars.Add({"bad", std::nan("")});
    const CExprResult r = evaluate("1 + bad", vars);
    EXPECT_EQ(r.status, EXPR_DOMAIN);
    EXPECT_EQ(r.position, 4);
    EXPECT_EQ(evaluate("x(2)", vars).status, EXPR_UNKNOWN_NAME);  // no implicit product
    EXPECT_EQ(evaluate("x").status, EXPR_UNKNOWN_NAME);           // the form without variables
}

TEST(Evaluate, EachFaultWithItsPosition) {
    // Counted by hand: "1+(2*(3)" leaves the '(' at 2 open; "1 +" misses an operand at its end, 3; "1 + .e5" has a
    // '.' that starts no number at 4. Form beats value ("1/0 + (2"); among faults of value the first evaluated.
    // clang-format off
    const FaultCase rows[] = {
        {"", EXPR_EMPTY, 0}, {"   ", EXPR_EMPTY, 0}, {"(1+2", EXPR_UNBALANCED, 0}, {"1+(2*(3)", EXPR_UNBALANCED, 2},
        {"1+2)", EXPR_UNBALANCED, 3}, {"max(1, 2", EXPR_UNBALANCED, 3}, {"foo + 1", EXPR_UNKNOWN_NAME, 0},
        {"2 * bar(1)", EXPR_UNKNOWN_NAME, 4}, {"atan2(1)", EXPR_ARG_COUNT, 0}, {"sin(1, 2)", EXPR_ARG_COUNT, 0},
        {"1 + max(1)", EXPR_ARG_COUNT, 4}, {"sqrt()", EXPR_ARG_COUNT, 0}, {"sin + 1", EXPR_ARG_COUNT, 0},
        {"2pi", EXPR_TRAILING, 1}, {"1e", EXPR_TRAILING, 1}, {"(1)(2)", EXPR_TRAILING, 3}, {"1 +", EXPR_SYNTAX, 3},
        {"1 + * 2", EXPR_SYNTAX, 4}, {"()", EXPR_SYNTAX, 1}, {"(1 2)", EXPR_SYNTAX, 3}, {"max(1 2)", EXPR_SYNTAX, 6},
        {"max(1,)", EXPR_SYNTAX, 6}, {"1 # 2", EXPR_SYNTAX, 2}, {"1 + .e5", EXPR_SYNTAX, 4},
        {std::string("1\0" "2", 3), EXPR_SYNTAX, 1}, {"1/0", EXPR_DIV_ZERO, 1}, {"0^-1", EXPR_DIV_ZERO, 1},
        {"sqrt(-1)", EXPR_DOMAIN, 0}, {"1 + ln(0)", EXPR_DOMAIN, 4}, {"log(-2)", EXPR_DOMAIN, 0},
        {"asin(1.5)", EXPR_DOMAIN, 0}, {"acos(-2)", EXPR_DOMAIN, 0}, {"atan2(0, 0)", EXPR_DOMAIN, 0},
        {"(-8)^(1/3)", EXPR_DOMAIN, 4}, {"1e400", EXPR_OVERFLOW, 0}, {"1e308 * 10", EXPR_OVERFLOW, 6},
        {"10^400", EXPR_OVERFLOW, 2}, {"exp(1000)", EXPR_OVERFLOW, 0}, {"-1e308 - 1e308", EXPR_OVERFLOW, 7},
        {"1/0 + (2", EXPR_UNBALANCED, 6}, {"sqrt(-1) + 1/0", EXPR_DOMAIN, 0}, {"1/0 + sqrt(-1)", EXPR_DIV_ZERO, 1}};
    // clang-format on
    ExpectFaults(rows, std::size(rows));
}

// kExprMaxDepth levels pass; one more is refused at the token that opens it: the 101st '(' or sign at position
// 100, the 101st '^' of "2^2^...^2" at 2 * 100 + 1 = 201. Far deeper text must end the same way, not the stack.
TEST(Evaluate, NestingLimitRefusesDeepText) {
    const int n = kExprMaxDepth;
    EXPECT_EQ(evaluate(CString(std::string(n, '(') + "1" + std::string(n, ')'))).value, 1);
    EXPECT_EQ(evaluate(CString(std::string(n, '-') + "1")).value, 1);  // an even count of signs
    const FaultCase rows[] = {{std::string(n + 1, '(') + "1" + std::string(n + 1, ')'), EXPR_TOO_DEEP, n},
                              {std::string(n + 1, '-') + "1", EXPR_TOO_DEEP, n},
                              {std::string(1000000, '('), EXPR_TOO_DEEP, n}};
    ExpectFaults(rows, std::size(rows));
    std::string powers = "2";
    for (int i = 0; i <= n; ++i) powers += "^2";
    EXPECT_EQ(evaluate(CString(powers)).position, 2 * n + 1);
    std::string calls;
    for (int i = 0; i <= n; ++i) calls += "sin(";
    EXPECT_EQ(evaluate(CString(calls)).status, EXPR_TOO_DEEP);
}
