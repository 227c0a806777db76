#include "route_csv.h"

#include <orvmath/angle.h>
#include <orvmath/routedesign.h>

#include <cctype>
#include <cerrno>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iomanip>
#include <iostream>
#include <ostream>
#include <sstream>

namespace orvroute {

using ORVMATH::CCriticalPoint;
using ORVMATH::SegmentType;

namespace {

constexpr double kDegToRad = ORVMATH::kPi / 180.0;

const std::vector<std::string> kHeaderHead = {"start_mile", "offset"};
const std::vector<std::string> kHeaderPoints = {"type", "x", "y", "angle_deg", "radius", "spiralA", "endRadius"};
enum PointColumn { kType, kX, kY, kAngle, kRadius, kSpiralA, kEndRadius };
const std::vector<std::string> kHeaderStart = {"x", "y", "angle_deg"};
const std::vector<std::string> kHeaderElements = {"element", "length", "radius", "start_radius", "spiralA"};
enum ElementColumn { kElement, kLength, kElementRadius, kStartRadius, kElementA };

std::string Trim(const std::string& s) {
    const char* ws = " \t\r\n";
    const std::size_t b = s.find_first_not_of(ws);
    if (b == std::string::npos) return std::string();
    return s.substr(b, s.find_last_not_of(ws) - b + 1);
}

std::string Lower(std::string s) {
    for (char& c : s) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return s;
}

std::vector<std::string> SplitFields(const std::string& line) {
    std::vector<std::string> fields;
    std::string field;
    std::istringstream in(line);
    while (std::getline(in, field, ',')) fields.push_back(Trim(field));
    if (!line.empty() && line.back() == ',') fields.emplace_back();  // a trailing empty cell
    return fields;
}

std::string Join(const std::vector<std::string>& names) {
    std::string s;
    for (const std::string& n : names) s += (s.empty() ? "" : ",") + n;
    return s;
}

// The rows of one section of the file, with their source line numbers.
class Reader {
public:
    Reader(std::istream& in, const std::string& source) : in_(in), source_(source) {}

    // The next line that is not blank or a comment; false at the end.
    bool Next(std::vector<std::string>& fields) {
        std::string text;
        while (std::getline(in_, text)) {
            ++line_;
            if (line_ == 1) SkipByteOrderMark(text);
            const std::string t = Trim(text);
            if (t.empty() || t[0] == '#') continue;
            fields = SplitFields(t);
            return true;
        }
        if (in_.bad()) Fail("read error");
        ++line_;  // errors at the end point past the last line
        return false;
    }

    [[noreturn]] void Fail(const std::string& message) const { throw RouteCsvError(source_, line_, 0, message); }
    // A fault in field `col` (0-based) of a row laid out as `names`.
    [[noreturn]] void Fail(const std::vector<std::string>& names, std::size_t col, const std::string& problem) const {
        const std::string name = col < names.size() ? " (" + names[col] + ")" : "";
        throw RouteCsvError(source_, line_, static_cast<int>(col) + 1,
                            "column " + std::to_string(col + 1) + name + ": " + problem);
    }

    void ExpectHeader(const std::vector<std::string>& names) {
        std::vector<std::string> fields;
        if (!Next(fields)) Fail("missing the header '" + Join(names) + "'");
        if (!IsHeader(fields, names)) Fail("expected the header '" + Join(names) + "'");
    }
    static bool IsHeader(const std::vector<std::string>& fields, const std::vector<std::string>& names) {
        bool same = fields.size() == names.size();
        for (std::size_t i = 0; same && i < names.size(); ++i) same = Lower(fields[i]) == Lower(names[i]);
        return same;
    }

    // Checks the field count of a data row against the header.
    void CheckColumns(const std::vector<std::string>& fields, const std::vector<std::string>& names) const {
        if (fields.size() < names.size()) Fail(names, fields.size(), "missing");
        if (fields.size() > names.size())
            Fail(names, names.size(), "unexpected extra column (the header has " + std::to_string(names.size()) + ")");
    }

    // Field `col` (0-based) as a finite number; an empty field gives `fallback`
    // when one is allowed.
    double Number(const std::vector<std::string>& fields, const std::vector<std::string>& names, int col,
                  const double* fallback = nullptr) const {
        const std::string& text = fields[col];
        if (text.empty()) {
            if (fallback) return *fallback;
            Fail(names, col, "missing value");
        }
        errno = 0;
        char* end = nullptr;
        const double v = std::strtod(text.c_str(), &end);
        if (end != text.c_str() + text.size()) Fail(names, col, "'" + text + "' is not a number");
        if (!std::isfinite(v) || errno == ERANGE) Fail(names, col, "'" + text + "' is not a finite number");
        return v;
    }

    int line() const { return line_; }
    const std::string& Source() const { return source_; }

private:
    // Spreadsheet programs often start a UTF-8 file with a byte-order mark;
    // UTF-16 cannot be read at all, so it is named rather than misparsed.
    void SkipByteOrderMark(std::string& text) const {
        if (text.compare(0, 3, "\xEF\xBB\xBF") == 0) text.erase(0, 3);
        if (text.compare(0, 2, "\xFF\xFE") == 0 || text.compare(0, 2, "\xFE\xFF") == 0)
            Fail("the file is UTF-16; save it as UTF-8 (or plain ASCII) text");
    }

    std::istream& in_;
    std::string source_;
    int line_ = 0;
};

SegmentType ParseType(const Reader& r, const std::string& text) {
    const std::string t = Lower(text);
    if (t == "0" || t == "line") return ORVMATH::SEGMENT_LINE;
    if (t == "1" || t == "arc") return ORVMATH::SEGMENT_ARC;
    if (t == "2" || t == "transition") return ORVMATH::SEGMENT_TRANSITION;
    r.Fail(kHeaderPoints, kType, "unknown element type '" + text + "' (use line, arc, transition or 0, 1, 2)");
}

bool IsRadius(double r) { return r == -1.0 || r > 0.0; }

CCriticalPoint ParsePoint(const Reader& r, const std::vector<std::string>& f) {
    const std::vector<std::string>& names = kHeaderPoints;
    r.CheckColumns(f, names);
    const double none = 0.0;
    CCriticalPoint p(ParseType(r, f[kType]), ORVMATH::CDblPoint(r.Number(f, names, kX), r.Number(f, names, kY)),
                     r.Number(f, names, kAngle) * kDegToRad, r.Number(f, names, kRadius),
                     r.Number(f, names, kSpiralA, &none), r.Number(f, names, kEndRadius, &none));
    if (!IsRadius(p.radius)) r.Fail(names, kRadius, "must be -1 (infinite) or positive");
    if (p.type == ORVMATH::SEGMENT_ARC && p.radius <= 0.0) r.Fail(names, kRadius, "an arc needs a positive radius");
    if (p.endRadius != 0.0 && !IsRadius(p.endRadius))
        r.Fail(names, kEndRadius, "must be empty or 0 (the next point's radius), -1 or positive");
    if (p.type == ORVMATH::SEGMENT_TRANSITION) {
        if (f[kSpiralA].empty()) r.Fail(names, kSpiralA, "a transition needs its parameter A");
        if (!(p.spiralA > 0.0)) r.Fail(names, kSpiralA, "must be positive");
    }
    return p;
}

// The element form: the start, then one row per element, laid out at once.
void ParseElements(Reader& r, RouteFile& file) {
    std::vector<std::string> f;
    if (!r.Next(f)) r.Fail("missing the line of x, y and angle_deg");
    r.CheckColumns(f, kHeaderStart);
    const ORVMATH::CDblPoint start(r.Number(f, kHeaderStart, 0), r.Number(f, kHeaderStart, 1));
    const double angle = r.Number(f, kHeaderStart, 2) * kDegToRad;
    r.ExpectHeader(kHeaderElements);
    ORVMATH::CRouteElementArray elements;
    std::vector<int> lines;
    const double none = 0.0;
    const std::vector<std::string>& names = kHeaderElements;
    while (r.Next(f)) {
        r.CheckColumns(f, names);
        ORVMATH::CRouteElement e;
        const std::string t = Lower(f[kElement]);
        e.type = t == "line" || t == "0"         ? ORVMATH::SEGMENT_LINE
                 : t == "arc" || t == "1"        ? ORVMATH::SEGMENT_ARC
                 : t == "transition" || t == "2" ? ORVMATH::SEGMENT_TRANSITION
                                                 : ORVMATH::SEGMENT_NONE;
        if (e.type == ORVMATH::SEGMENT_NONE)
            r.Fail(names, kElement, "unknown element type '" + f[kElement] + "' (use line, arc, transition)");
        e.length = r.Number(f, names, kLength, &none);
        e.radius = r.Number(f, names, kElementRadius, &none);
        e.startRadius = r.Number(f, names, kStartRadius, &none);
        e.spiralA = r.Number(f, names, kElementA, &none);
        elements.Add(e);
        lines.push_back(r.line());
    }
    if (elements.GetSize() == 0) r.Fail("a route needs at least one element");
    const int bad = ORVMATH::BuildRouteFromElements(start, angle, elements, file.points, ORVMATH::CLOTHOID_EXACT);
    if (bad >= 0)
        throw RouteCsvError(r.Source(), lines[static_cast<std::size_t>(bad)], 0,
                            "this element cannot be laid out (a length or radius missing or not positive, an arc "
                            "of a full turn or more, a transition with equal radii or turning more than 90 "
                            "degrees from a straight)");
    // Each point comes from its element's row (a transition split where the curvature passes zero gives two).
    INT_PTR k = 0;
    for (INT_PTR i = 0; i < elements.GetSize(); ++i) {
        const ORVMATH::CRouteElement& e = elements[i];
        const bool split = e.type == ORVMATH::SEGMENT_TRANSITION && e.radius * e.startRadius < 0.0;
        for (int n = split ? 2 : 1; n > 0 && k < file.points.GetSize(); --n, ++k)
            file.pointLines.push_back(lines[static_cast<std::size_t>(i)]);
    }
    file.pointLines.push_back(lines.back());  // the end point
    file.mode = ORVMATH::CLOTHOID_EXACT;
}

}  // namespace

ORVMATH::CRoute2 RouteFile::Route() const {
    ORVMATH::CRoute2 route(points, startMile, offset);
    route.SetClothoidMode(mode);
    return route;
}

RouteCsvError::RouteCsvError(const std::string& source, int line, int column, const std::string& message)
    : std::runtime_error(source + (line > 0 ? ":" + std::to_string(line) : std::string()) + ": " + message),
      line_(line),
      column_(column) {}

RouteFile ParseRouteCsv(std::istream& in, const std::string& source) {
    Reader r(in, source);
    RouteFile file;
    std::vector<std::string> f;

    r.ExpectHeader(kHeaderHead);
    if (!r.Next(f)) r.Fail("missing the line of start_mile and offset");
    r.CheckColumns(f, kHeaderHead);
    file.startMile = r.Number(f, kHeaderHead, 0);
    file.offset = r.Number(f, kHeaderHead, 1);

    if (!r.Next(f)) r.Fail("missing the header '" + Join(kHeaderPoints) + "' (or '" + Join(kHeaderStart) + "')");
    if (Reader::IsHeader(f, kHeaderStart)) {
        ParseElements(r, file);
        return file;
    }
    if (!Reader::IsHeader(f, kHeaderPoints))
        r.Fail("expected the header '" + Join(kHeaderPoints) + "' (or '" + Join(kHeaderStart) + "')");
    while (r.Next(f)) {
        file.points.Add(ParsePoint(r, f));
        file.pointLines.push_back(r.line());
    }
    const INT_PTR n = file.points.GetSize();
    if (n < 2) r.Fail("a route needs at least two critical points, found " + std::to_string(n));

    // A transition must change the radius, or it would span no chainage.
    for (INT_PTR i = 0; i + 1 < n; ++i) {
        const CCriticalPoint& p = file.points[i];
        if (p.type != ORVMATH::SEGMENT_TRANSITION) continue;
        const double far = p.endRadius != 0.0 ? p.endRadius : file.points[i + 1].radius;
        if (far == p.radius)
            throw RouteCsvError(source, file.pointLines[i], kRadius + 1,
                                "column 5 (radius): a transition needs different radii at its ends (the far one "
                                "is its endRadius, or the next point's radius)");
    }
    return file;
}

std::string ReadInput(const std::string& path) {
    std::ostringstream text;
    if (path == "-") {
        text << std::cin.rdbuf();
        return text.str();
    }
    std::error_code ec;
    if (std::filesystem::is_directory(path, ec)) throw RouteCsvError(path, 0, 0, "cannot read: is a directory");
    errno = 0;
    std::ifstream in(path, std::ios::binary);
    if (!in) {
        const int err = errno;
        std::string why = err == ENOENT ? "no such file" : err == EACCES ? "permission denied" : std::strerror(err);
        if (err == 0) why = "cannot open the file";
        throw RouteCsvError(path, 0, 0, "cannot read: " + why);
    }
    text << in.rdbuf();
    if (in.bad()) throw RouteCsvError(path, 0, 0, "cannot read: read error");
    return text.str();
}

RouteFile ReadRouteCsv(const std::string& path) {
    std::istringstream in(ReadInput(path));
    return ParseRouteCsv(in, path == "-" ? "<stdin>" : path);
}

void WriteRouteCsv(std::ostream& out, const ORVMATH::CRoute2& route) {
    static const char* const kTypeNames[] = {"line", "arc", "transition"};
    out << std::setprecision(15);
    out << Join(kHeaderHead) << '\n' << route.GetStartMile() << ',' << route.GetOffset() << '\n';
    out << Join(kHeaderPoints) << '\n';
    for (const CCriticalPoint& p : route.GetCriticalPoints()) {
        const bool known = p.type >= ORVMATH::SEGMENT_LINE && p.type <= ORVMATH::SEGMENT_TRANSITION;
        if (known)
            out << kTypeNames[p.type];
        else
            out << static_cast<int>(p.type);
        out << ',' << p.pt.x << ',' << p.pt.y << ',' << p.angle / kDegToRad << ',' << p.radius << ',';
        if (p.type == ORVMATH::SEGMENT_TRANSITION) out << p.spiralA;
        out << ',';
        if (p.endRadius != 0.0) out << p.endRadius;
        out << '\n';
    }
}

}  // namespace orvroute
