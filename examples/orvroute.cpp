// orvroute: stationing tables and drawings of a road or rail alignment.
//
//   orvroute table [ROUTE.csv] [--step S] [--offset D]
//   orvroute svg   [ROUTE.csv] -o FILE.svg [--offset D]...
//   orvroute sample                      (prints the built-in sample as a route file)
//
// Without a route file the built-in sample alignment is used. The route file
// format is described in orvroute/route_csv.h.
#include "orvroute/alignment.h"
#include "orvroute/report.h"
#include "orvroute/route_csv.h"

#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iostream>
#include <string>
#include <vector>

namespace {

constexpr double kJoinGap = 0.01;       // metres: elements that miss the next point by more get a warning
constexpr double kJoinAngle = 1e-4;     // radians, the same for the tangent direction
constexpr double kMaxStations = 1e6;    // a table longer than this is a mistake in --step or in the route

const char* const kUsage =
    "usage: orvroute table [ROUTE.csv] [--step S] [--offset D]\n"
    "       orvroute svg [ROUTE.csv] -o FILE.svg [--offset D]...\n"
    "       orvroute sample\n";

struct Options {
    std::string command, routeFile, svgFile;
    double step = 20.0;
    std::vector<double> offsets;
};

struct UsageError {
    std::string message;
};

std::string Num(double v) {
    char text[32];
    std::snprintf(text, sizeof text, "%g", v);
    return text;
}

double ParseNumber(const std::string& option, const char* text) {
    errno = 0;
    char* end = nullptr;
    const double v = std::strtod(text, &end);
    if (*text == '\0' || *end != '\0' || !std::isfinite(v) || errno == ERANGE)
        throw UsageError{option + " needs a number, not '" + text + "'"};
    return v;
}

Options ParseArgs(int argc, char** argv) {
    if (argc < 2) throw UsageError{"no command given"};
    Options o;
    o.command = argv[1];
    if (o.command != "table" && o.command != "svg" && o.command != "sample")
        throw UsageError{"unknown command '" + o.command + "'"};
    for (int i = 2; i < argc; ++i) {
        const std::string a = argv[i];
        auto value = [&]() -> const char* {
            if (i + 1 >= argc) throw UsageError{a + " needs a value"};
            return argv[++i];
        };
        if (a == "--step" && o.command == "table") {
            o.step = ParseNumber(a, value());
            if (!(o.step > 0.0)) throw UsageError{"--step must be positive"};
        } else if (a == "--offset" && o.command != "sample") {
            o.offsets.push_back(ParseNumber(a, value()));
        } else if (a == "-o" && o.command == "svg") {
            o.svgFile = value();
        } else if (!a.empty() && a[0] == '-') {
            throw UsageError{"unknown option '" + a + "' for " + o.command};
        } else if (o.routeFile.empty() && o.command != "sample") {
            o.routeFile = a;
        } else {
            throw UsageError{"unexpected argument '" + a + "'"};
        }
    }
    if (o.command == "svg" && o.svgFile.empty()) throw UsageError{"svg needs -o FILE.svg"};
    if (o.command == "table" && o.offsets.size() > 1) throw UsageError{"table takes one --offset"};
    return o;
}

ORVMATH::CRoute2 LoadRoute(const Options& o, std::string& title) {
    if (o.routeFile.empty()) {
        title = "sample alignment";
        return orvroute::SampleRoute();
    }
    const orvroute::RouteFile file = orvroute::ReadRouteCsv(o.routeFile);
    ORVMATH::CRoute2 route(file.points, file.startMile, file.offset);
    for (const std::string& w : orvroute::JoinProblems(route, file.pointLines, kJoinGap, kJoinAngle))
        std::cerr << "orvroute: warning: " << o.routeFile << ": " << w << '\n';
    title = o.routeFile;
    return route;
}

}  // namespace

int main(int argc, char** argv) {
    try {
        const Options o = ParseArgs(argc, argv);
        std::string title;
        const ORVMATH::CRoute2 route = LoadRoute(o, title);
        if (o.command == "sample") {
            orvroute::WriteRouteCsv(std::cout, route);
        } else if (o.command == "table") {
            if (route.GetMile() / o.step > kMaxStations)
                throw UsageError{"--step " + Num(o.step) + " gives more than a million stations over " +
                                 Num(route.GetMile()) + " m of chainage; use a larger step"};
            orvroute::WriteTable(std::cout, route, o.step, o.offsets.empty() ? 0.0 : o.offsets[0], title);
        } else {
            std::ofstream out(o.svgFile);
            if (out) orvroute::WriteSvg(out, route, o.offsets, title);
            if (!out) {
                std::cerr << "orvroute: cannot write " << o.svgFile << ": " << std::strerror(errno) << '\n';
                return 1;
            }
        }
        return std::cout.flush() ? 0 : 1;
    } catch (const UsageError& e) {
        std::cerr << "orvroute: " << e.message << '\n' << kUsage;
        return 2;
    } catch (const orvroute::RouteCsvError& e) {
        std::cerr << "orvroute: " << e.what() << '\n';
        return 1;
    } catch (const std::exception& e) {  // out of memory, or a route the library refuses
        std::cerr << "orvroute: " << e.what() << '\n';
        return 1;
    }
}
