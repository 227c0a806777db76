// orvroute: stationing tables, point queries and drawings of a road or rail
// alignment. `orvroute --help` and `orvroute COMMAND --help` describe it all;
// the route file format is in orvroute/route_csv.h and in the help.
#include "orvroute/alignment.h"
#include "orvroute/report.h"
#include "orvroute/route_csv.h"

#include <orvmath/angle.h>
#include <orvmath/landxml.h>

#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iostream>
#include <sstream>
#include <string>
#include <vector>

namespace {

constexpr double kJoinGap = 0.01;     // metres: route files hold hand-typed coordinates, so joins are this loose
constexpr double kJoinAngle = 1e-4;   // radians, the same for tangent directions
constexpr double kMaxStations = 1e6;  // a table longer than this is a mistake in --step or in the route

const char* const kUsage =
    "usage: orvroute table  [ROUTE] [--step S] [--offset D] [--format text|csv] [--strict]\n"
    "       orvroute point  [ROUTE] MILE [OFFSET] [--format text|csv] [--strict]\n"
    "       orvroute locate [ROUTE] X Y [--format text|csv] [--strict]\n"
    "       orvroute svg    [ROUTE] -o FILE.svg [--offset D]... [--strict]\n"
    "       orvroute landxml [ROUTE] [--strict]\n"
    "       orvroute sample\n"
    "       orvroute COMMAND --help\n";

const char* const kRouteHelp =
    "ROUTE is a CSV file or a LandXML 1.2 file (its first Alignment: Line, Curve\n"
    "and clothoid Spiral elements), or - for standard input; without it the\n"
    "built-in sample road is used. A CSV route file (UTF-8 or ASCII; '#' lines\n"
    "and blank lines are skipped):\n"
    "\n"
    "  start_mile,offset\n"
    "  1000,0\n"
    "  type,x,y,angle_deg,radius,spiralA,endRadius\n"
    "  line,0,0,20,-1,,\n"
    "  transition,751.754,273.616,20,-1,250,500\n"
    "  arc,...\n"
    "\n"
    "one row per critical point (where an element begins, plus the end point):\n"
    "  type       line, arc or transition (or 0, 1, 2): the element that begins here\n"
    "  x, y       position in metres\n"
    "  angle_deg  tangent direction in degrees, counter-clockwise from +x\n"
    "  radius     radius of curvature here in metres; -1 for a straight (infinite)\n"
    "  spiralA    clothoid parameter A of a transition (A^2 = radius x length)\n"
    "  endRadius  radius at a transition's far end; empty: the next point's radius\n"
    "Or the design: the start and one row per element, laid out with exact clothoids:\n"
    "\n"
    "  start_mile,offset\n"
    "  1000,0\n"
    "  x,y,angle_deg\n"
    "  0,0,20\n"
    "  element,length,radius,start_radius,spiralA\n"
    "  line,800,,,\n"
    "  transition,,500,,250\n"
    "  arc,700,500,,\n"
    "  transition,,,500,250\n"
    "  line,1200,,,\n"
    "\n"
    "radii signed (positive turning left, empty for infinite); a transition runs from\n"
    "start_radius to radius and takes spiralA, or its length when spiralA is empty.\n"
    "`orvroute sample` prints a complete file. The route is checked when it is read:\n"
    "inconsistencies (a transition whose next point lies behind it, a straight not\n"
    "heading for its next point, an arc end off its circle, an offset larger than\n"
    "a curve's radius, elements that do not meet) are warnings on standard error;\n"
    "--strict makes them errors. A route file named like a number is written ./NAME.\n";

struct CommandHelp {
    const char* name;
    const char* text;
};

const CommandHelp kCommands[] = {
    {"table",
     "orvroute table [ROUTE] [--step S] [--offset D] [--format text|csv] [--strict]\n"
     "The stationing table: a row every S metres of chainage (default 20) and at\n"
     "every element boundary, with the point D metres to the left (negative:\n"
     "right) of the route, the tangent direction, the element and its radius.\n"
     "--format csv writes mile,x,y,dir_deg,element,radius,boundary for other tools.\n"
     "Example: orvroute table road.csv --step 100 --format csv > stations.csv\n"},
    {"point",
     "orvroute point [ROUTE] MILE [OFFSET] [--format text|csv] [--strict]\n"
     "The point at MILE, OFFSET metres to the left (negative: right; default 0),\n"
     "with the tangent direction, the element and its radius there.\n"
     "Example: orvroute point road.csv 1500 -3.5\n"},
    {"locate",
     "orvroute locate [ROUTE] X Y [--format text|csv] [--strict]\n"
     "The mile and offset (left positive) of the point (X, Y): every foot of a\n"
     "perpendicular from it on the route, nearest first. A point beyond the ends,\n"
     "whose perpendiculars all miss the route, has none (exit status 1).\n"
     "Example: orvroute locate road.csv 850.2 310.7\n"},
    {"svg",
     "orvroute svg [ROUTE] -o FILE.svg [--offset D]... [--strict]\n"
     "A drawing to scale: the centre line coloured by element with R, A and L\n"
     "labels, the offset lines asked for (left and right drawn differently),\n"
     "element boundaries, mile ticks, a coordinate grid, a north arrow, a legend\n"
     "and a scale bar.\n"
     "Example: orvroute svg road.csv -o road.svg --offset 7.5 --offset -7.5\n"},
    {"landxml",
     "orvroute landxml [ROUTE] [--strict]\n"
     "Writes the route as a LandXML 1.2 document (one Alignment of Line, Curve\n"
     "and clothoid Spiral elements) for other road design programs. The route's\n"
     "own offset has no place in LandXML and is left out.\n"
     "Example: orvroute landxml road.csv > road.xml\n"},
    {"sample",
     "orvroute sample\n"
     "Prints the built-in sample road as a route file, a start for your own.\n"
     "Example: orvroute sample > road.csv\n"},
};

struct Options {
    std::string command, routeFile, svgFile;
    double step = 20.0;
    std::vector<double> offsets, numbers;
    bool csv = false, strict = false, help = false;
};

struct UsageError {
    std::string message;
};

const CommandHelp* FindCommand(const std::string& name) {
    for (const CommandHelp& c : kCommands)
        if (name == c.name) return &c;
    return nullptr;
}

void PrintHelp(const std::string& command) {
    const CommandHelp* c = FindCommand(command);
    if (c) {
        std::cout << "usage: " << c->text;
        if (command != "sample") std::cout << '\n' << kRouteHelp;
        return;
    }
    std::cout << "orvroute: stationing tables, point queries and drawings of a road or rail alignment.\n\n"
              << kUsage << "\ncommands:\n"
              << "  table   the stationing table\n"
              << "  point   the point at a mile and offset\n"
              << "  locate  the mile and offset of a point\n"
              << "  svg     a drawing of the route\n"
              << "  landxml the route as LandXML\n"
              << "  sample  the built-in sample road as a route file\n\n"
              << kRouteHelp;
}

// Whether the whole of `text` reads as a number (negative numbers look like options).
bool IsNumber(const char* text) {
    char* end = nullptr;
    std::strtod(text, &end);
    return *text != '\0' && *end == '\0';
}

double ParseNumber(const std::string& what, const char* text) {
    errno = 0;
    char* end = nullptr;
    const double v = std::strtod(text, &end);
    if (*text == '\0' || *end != '\0' || !std::isfinite(v) || errno == ERANGE)
        throw UsageError{what + " needs a finite number, not '" + text + "'"};
    return v;
}

void CheckNumbers(const Options& o) {
    const std::size_t n = o.numbers.size();
    if (o.command == "locate" && n != 2) throw UsageError{"locate needs the point's X and Y"};
    if (o.command == "point" && (n < 1 || n > 2)) throw UsageError{"point needs MILE and may take an OFFSET"};
    if (o.command != "locate" && o.command != "point" && n > 0)
        throw UsageError{o.command + " takes no numbers (a route file named like a number is written ./NAME)"};
}

Options ParseArgs(int argc, char** argv) {
    if (argc < 2) throw UsageError{"no command given"};
    Options o;
    o.command = argv[1];
    if (o.command == "--help" || o.command == "-h" || o.command == "help") {
        o.help = true;
        o.command = argc > 2 ? argv[2] : "";
        return o;
    }
    if (!FindCommand(o.command)) throw UsageError{"unknown command '" + o.command + "'"};
    const bool query = o.command == "point" || o.command == "locate";
    for (int i = 2; i < argc; ++i) {
        const std::string a = argv[i];
        auto value = [&]() -> const char* {
            if (i + 1 >= argc) throw UsageError{a + " needs a value"};
            return argv[++i];
        };
        if (a == "--help" || a == "-h") {
            o.help = true;
        } else if (a == "--step" && o.command == "table") {
            o.step = ParseNumber(a, value());
            if (!(o.step > 0.0)) throw UsageError{"--step must be positive"};
        } else if (a == "--offset" && (o.command == "table" || o.command == "svg")) {
            o.offsets.push_back(ParseNumber(a, value()));
        } else if (a == "-o" && o.command == "svg") {
            o.svgFile = value();
        } else if (a == "--format" && (o.command == "table" || query)) {
            const std::string f = value();
            if (f != "text" && f != "csv") throw UsageError{"--format is text or csv, not '" + f + "'"};
            o.csv = f == "csv";
        } else if (a == "--strict" && o.command != "sample") {
            o.strict = true;
        } else if (IsNumber(a.c_str()) && query) {
            o.numbers.push_back(ParseNumber(o.command, a.c_str()));
        } else if (a.size() > 1 && a[0] == '-') {
            throw UsageError{"unknown option '" + a + "' for " + o.command};
        } else if (o.routeFile.empty() && o.numbers.empty() && o.command != "sample") {
            o.routeFile = a;
        } else {
            throw UsageError{"unexpected argument '" + a + "'" +
                             (o.numbers.empty() ? "" : " (the route file comes before the numbers)")};
        }
    }
    if (o.help) return o;
    CheckNumbers(o);
    if (o.command == "svg" && o.svgFile.empty()) throw UsageError{"svg needs -o FILE.svg"};
    if (o.command == "table" && o.offsets.size() > 1) throw UsageError{"table takes one --offset"};
    return o;
}

std::string ProblemText(const ORVMATH::CRoute2::Problem& p) {
    using R = ORVMATH::CRoute2;
    std::string size;
    switch (p.kind) {
        case R::PROBLEM_HEADING:
        case R::PROBLEM_KINK:
            size = orvroute::FormatNumber(p.size * ORVMATH::kRadToDeg, 5) + " degrees";
            break;
        case R::PROBLEM_NOT_FINITE:
        case R::PROBLEM_UNKNOWN_TYPE:
        case R::PROBLEM_BAD_SPIRAL:
            break;
        case R::PROBLEM_BAD_RADIUS:
            size = orvroute::FormatNumber(p.size, 3);
            break;
        case R::PROBLEM_NO_CHAINAGE:
            size = "every point lies within " + orvroute::FormatNumber(p.size, 4) + " m of the first";
            break;
        default:
            size = orvroute::FormatNumber(p.size, 4) + " m";
    }
    return std::string(R::ProblemName(p.kind)) + (size.empty() ? "" : ": " + size);
}

// Validate's findings as warnings (or, with --strict, errors); false when strict and there are any.
bool CheckRoute(const ORVMATH::CRoute2& route, const std::vector<int>& pointLines, const Options& o,
                const std::string& source) {
    CArray<ORVMATH::CRoute2::Problem> problems;
    route.Validate(problems, kJoinGap, kJoinAngle);
    const ORVMATH::CCriticalPointArray& pts = route.GetCriticalPoints();
    for (const ORVMATH::CRoute2::Problem& p : problems) {
        std::string where = source;
        if (p.element >= 0 && static_cast<std::size_t>(p.element) < pointLines.size())
            where += ":" + std::to_string(pointLines[static_cast<std::size_t>(p.element)]);
        if (p.element >= 0)
            where += ": element " + std::to_string(p.element) + " (" + orvroute::TypeName(pts[p.element].type) + ")";
        std::cerr << "orvroute: " << (o.strict ? "error: " : "warning: ") << where << ": " << ProblemText(p) << '\n';
    }
    return !(o.strict && problems.GetSize() > 0);
}

// An offset line inside a curve tighter than the offset loops; it is still
// shown, with a warning (an error with --strict). False when strict and any loop.
bool CheckOffsets(const ORVMATH::CRoute2& route, const Options& o) {
    bool ok = true;
    CArray<ORVMATH::CRoute2::Problem> problems;
    for (double d : o.offsets) {
        route.Offset(d).Validate(problems, kJoinGap, kJoinAngle);
        for (const ORVMATH::CRoute2::Problem& p : problems) {
            if (p.kind != ORVMATH::CRoute2::PROBLEM_OFFSET_LOOP) continue;
            std::cerr << "orvroute: " << (o.strict ? "error: " : "warning: ") << "--offset "
                      << orvroute::FormatCsvNumber(d) << " lies inside the curve of element " << p.element << " ("
                      << orvroute::TypeName(route.GetCriticalPoints()[p.element].type) << ") and exceeds its radius by "
                      << orvroute::FormatNumber(p.size, 3) << " m: the offset line loops there\n";
            ok = !o.strict;
        }
    }
    return ok;
}

// The first alignment of a LandXML text; what it does not read is a warning.
ORVMATH::CRoute2 LoadLandXml(const std::string& text, const Options& o, const std::string& source, bool& ok) {
    ORVMATH::CLandXmlRead read;
    if (!ORVMATH::ReadLandXml(text, read)) throw orvroute::RouteCsvError(source, 0, 0, "LandXML: " + read.error);
    if (read.alignments.size() > 1)
        std::cerr << "orvroute: warning: " << source << ": " << read.alignments.size()
                  << " alignments; using the first, '" << read.alignments[0].name << "'\n";
    for (const std::string& u : read.unsupported)
        std::cerr << "orvroute: " << (o.strict ? "error: " : "warning: ") << source << ": " << u << '\n';
    ok = !(o.strict && !read.unsupported.empty());
    return read.alignments[0].route;
}

ORVMATH::CRoute2 LoadRoute(const Options& o, std::string& title, bool& ok) {
    ok = true;
    if (o.routeFile.empty()) {
        title = "sample alignment";
        return orvroute::SampleRoute();
    }
    title = o.routeFile == "-" ? "<stdin>" : o.routeFile;
    const std::string text = orvroute::ReadInput(o.routeFile);
    // A LandXML document starts with '<' (after any byte-order mark and blanks).
    const std::size_t first = text.find_first_not_of(" \t\r\n", text.compare(0, 3, "\xEF\xBB\xBF") == 0 ? 3 : 0);
    if (first != std::string::npos && text[first] == '<') {
        ORVMATH::CRoute2 route = LoadLandXml(text, o, title, ok);
        ok = CheckRoute(route, {}, o, title) && ok;
        return route;
    }
    std::istringstream in(text);
    const orvroute::RouteFile file = orvroute::ParseRouteCsv(in, title);
    ORVMATH::CRoute2 route = file.Route();
    ok = CheckRoute(route, file.pointLines, o, title);
    return route;
}

int RunPoint(const ORVMATH::CRoute2& route, const Options& o) {
    using orvroute::FormatNumber;
    const double mile = o.numbers[0], offset = o.numbers.size() > 1 ? o.numbers[1] : 0.0;
    ORVMATH::CCriticalPoint cp;
    if (route.GetCriticalPoint(mile, cp) < 0) {
        std::cerr << "orvroute: mile " << FormatNumber(mile, 3) << " is not on the route (miles "
                  << FormatNumber(route.GetStartMile(), 3) << " to " << FormatNumber(route.GetEndMile(), 3) << ")\n";
        return 1;
    }
    const ORVMATH::CDblPoint p = route.GetPoint(mile, offset);
    const double dir = ORVMATH::NormalizeAng_Rad(cp.angle) * ORVMATH::kRadToDeg;
    if (o.csv) {
        using orvroute::FormatCsvNumber;
        std::cout << "mile,offset,x,y,dir_deg,element,radius\n"
                  << FormatCsvNumber(mile) << ',' << FormatCsvNumber(offset) << ',' << FormatCsvNumber(p.x) << ','
                  << FormatCsvNumber(p.y) << ',' << FormatCsvNumber(dir) << ',' << orvroute::TypeName(cp.type) << ','
                  << orvroute::FormatRadius(cp.radius, true) << '\n';
    } else {
        std::cout << "mile " << FormatNumber(mile, 3) << ", offset " << FormatNumber(offset, 3) << ": x "
                  << FormatNumber(p.x, 3) << ", y " << FormatNumber(p.y, 3) << ", direction "
                  << FormatNumber(dir, 4) << " degrees, " << orvroute::TypeName(cp.type) << ", radius "
                  << orvroute::FormatRadius(cp.radius, false) << '\n';
    }
    return 0;
}

int RunLocate(const ORVMATH::CRoute2& route, const Options& o) {
    using orvroute::FormatNumber;
    const ORVMATH::CDblPoint p(o.numbers[0], o.numbers[1]);
    CArray<ORVMATH::CRouteFoot> feet;
    if (route.Locate(p, feet) == 0) {
        std::cerr << "orvroute: the point (" << FormatNumber(p.x, 3) << ", " << FormatNumber(p.y, 3)
                  << ") has no foot on the route: every perpendicular from it misses (it lies beyond an end)\n";
        return 1;
    }
    const ORVMATH::CCriticalPointArray& pts = route.GetCriticalPoints();
    char line[200];
    if (o.csv)
        std::cout << "mile,offset,element\n";
    else
        std::cout << "# feet of (" << FormatNumber(p.x, 3) << ", " << FormatNumber(p.y, 3)
                  << "), nearest first; offset positive to the left\n"
                  << "        mile         offset  element\n";
    for (const ORVMATH::CRouteFoot& f : feet) {
        const char* type = orvroute::TypeName(pts[f.element].type);
        if (o.csv) {
            std::cout << orvroute::FormatCsvNumber(f.mile) << ',' << orvroute::FormatCsvNumber(f.offset) << ','
                      << type << '\n';
            continue;
        }
        std::snprintf(line, sizeof line, "%12s %14s  %d (%s)\n", FormatNumber(f.mile, 4).c_str(),
                      FormatNumber(f.offset, 4).c_str(), f.element, type);
        std::cout << line;
    }
    return 0;
}

int RunSvg(const ORVMATH::CRoute2& route, const Options& o, const std::string& title) {
    errno = 0;
    std::ofstream out(o.svgFile);
    if (out) orvroute::WriteSvg(out, route, o.offsets, title);
    if (!out) {
        std::cerr << "orvroute: cannot write " << o.svgFile << ": "
                  << (errno ? std::strerror(errno) : "write failed") << '\n';
        return 1;
    }
    return 0;
}

int Run(const Options& o) {
    if (o.help) {
        if (!o.command.empty() && !FindCommand(o.command)) throw UsageError{"unknown command '" + o.command + "'"};
        PrintHelp(o.command);
        return 0;
    }
    std::string title;
    bool ok = true;
    const ORVMATH::CRoute2 route = LoadRoute(o, title, ok);
    if (!ok) {
        std::cerr << "orvroute: " << title << ": the route has problems (see above; without --strict they are "
                  << "warnings)\n";
        return 1;
    }
    if (o.command == "sample") {
        orvroute::WriteRouteCsv(std::cout, route);
        return 0;
    }
    if (route.GetMile() <= 0.0) {
        std::cerr << "orvroute: " << title << ": the route spans no chainage; there is nothing to show\n";
        return 1;
    }
    if (!CheckOffsets(route, o)) return 1;
    if (o.command == "point") return RunPoint(route, o);
    if (o.command == "locate") return RunLocate(route, o);
    if (o.command == "svg") return RunSvg(route, o, title);
    if (o.command == "landxml") {
        if (!ORVMATH::LandXmlSupported()) {
            std::cerr << "orvroute: this build has no LandXML support (the library was built without pugixml)\n";
            return 1;
        }
        std::cout << ORVMATH::WriteLandXml({{title, route}});
        return 0;
    }
    if (route.GetMile() / o.step > kMaxStations)
        throw UsageError{"--step " + orvroute::FormatCsvNumber(o.step) + " gives more than a million stations over " +
                         orvroute::FormatCsvNumber(route.GetMile()) + " m of chainage; use a larger step"};
    orvroute::WriteTable(std::cout, route, o.step, o.offsets.empty() ? 0.0 : o.offsets[0], title, o.csv);
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    try {
        const int status = Run(ParseArgs(argc, argv));
        return std::cout.flush() ? status : 1;
    } catch (const UsageError& e) {
        // The usage of the command given, or of them all.
        const CommandHelp* c = argc > 1 ? FindCommand(argv[1]) : nullptr;
        std::cerr << "orvroute: " << e.message << '\n';
        if (c)
            std::cerr << "usage: " << std::string(c->text, std::strchr(c->text, '\n') + 1) << "(orvroute " << c->name
                      << " --help tells more)\n";
        else
            std::cerr << kUsage;
        return 2;
    } catch (const orvroute::RouteCsvError& e) {
        std::cerr << "orvroute: " << e.what() << '\n';
        return 1;
    } catch (const std::exception& e) {  // out of memory, or a route the library refuses
        std::cerr << "orvroute: " << e.what() << '\n';
        return 1;
    }
}
