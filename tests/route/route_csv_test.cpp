#include "orvroute/alignment.h"
#include "orvroute/report.h"
#include "orvroute/route_csv.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <limits>
#include <sstream>
#include <string>

using orvroute::ParseRouteCsv;
using orvroute::RouteCsvError;

namespace {
const std::string kHead = "start_mile,offset\n1000,0\ntype,x,y,angle_deg,radius,spiralA,endRadius\n";
}  // namespace

TEST(RouteCsv, ReadsPointsSkippingCommentsAndTheWriterRoundTrips) {
    std::istringstream in("# a road\n\nstart_mile,offset\n 250.5 , -1.5\nTYPE,x,y,angle_deg,radius,spiralA,endRadius\n"
                          "line,0,0,90,-1,,\n# in and out\n2,0,100,90,-1,250,\ntransition,5,200,95,500,250,-1\nline,9,300,100,-1,,\n");
    const orvroute::RouteFile f = ParseRouteCsv(in, "r.csv");
    EXPECT_TRUE(f.startMile == 250.5 && f.offset == -1.5);
    ASSERT_EQ(f.points.GetSize(), 4);
    EXPECT_EQ(f.points[1].type, ORVMATH::SEGMENT_TRANSITION);
    EXPECT_TRUE(f.points[1].spiralA == 250.0 && f.points[1].endRadius == 0.0);  // empty: the next point's radius
    EXPECT_EQ(f.points[2].endRadius, -1.0);
    EXPECT_NEAR(f.points[0].angle, ORVMATH::kPi / 2, 1e-15);
    EXPECT_EQ(f.pointLines, (std::vector<int>{6, 8, 9, 10}));
    // What the writer makes of it reads back as the same route.
    const ORVMATH::CRoute2 route(f.points, f.startMile, f.offset);
    std::stringstream text;
    orvroute::WriteRouteCsv(text, route);
    const orvroute::RouteFile g = ParseRouteCsv(text, "again");
    EXPECT_TRUE(route == ORVMATH::CRoute2(g.points, g.startMile, g.offset));
}

// The design form of the sample road (20 degrees, 800 m, A = 250 into R = 500 left, 700 m, out, 1200 m): the first
// transition starts 800 m along 20 degrees, (751.754096, 273.616114); chainage 800 + 125 + 700 + 125 + 1200. A
// reverse transition (+500 to -500) is split in two, both from its row; a bad row is named by its line.
TEST(RouteCsv, ReadsTheElementForm) {
    std::istringstream in("start_mile,offset\n1000,0\nx,y,angle_deg\n0,0,20\nelement,length,radius,start_radius,spiralA\n"
                          "line,800,,,\ntransition,,500,,250\narc,700,500,,\ntransition,,,500,250\nline,1200,,,\n"
                          "transition,100,-500,500,\nline,10,,,\n");
    const orvroute::RouteFile f = ParseRouteCsv(in, "d.csv");
    ASSERT_EQ(f.points.GetSize(), 9);
    EXPECT_NEAR(f.points[1].pt.x, 751.754096, 1e-6);
    EXPECT_NEAR(f.points[1].pt.y, 273.616114, 1e-6);
    EXPECT_EQ(f.pointLines, (std::vector<int>{6, 7, 8, 9, 10, 11, 11, 12, 12}));
    const ORVMATH::CRoute2 route = f.Route();
    EXPECT_EQ(route.GetClothoidMode(), ORVMATH::CLOTHOID_EXACT);
    EXPECT_NEAR(route.GetEndMile(), 1000 + 2950 + 100 + 10, 1e-9);
    std::istringstream bad("start_mile,offset\n0,0\nx,y,angle_deg\n0,0,0\nelement,length,radius,start_radius,spiralA\n"
                           "line,10,,,\narc,10,,,\n");
    try {
        ParseRouteCsv(bad, "b.csv");
        ADD_FAILURE() << "an arc without a radius was accepted";
    } catch (const RouteCsvError& e) {
        EXPECT_EQ(e.line(), 7);
    }
}

TEST(RouteCsv, BadInputNamesTheLineAndColumn) {
    const struct { std::string text; int line, column; const char* says; } rows[] = {
        {"start_mile\n", 1, 0, "expected the header 'start_mile,offset'"},
        {"start_mile,offset\n1000\n", 2, 2, "column 2 (offset): missing"},
        {"start_mile,offset\n1000,x\n", 2, 2, "'x' is not a number"},
        {kHead + "line,0,0,0\nline,1,0,0,-1,,\n", 4, 5, "column 5 (radius): missing"},
        {kHead + "line,0,0,0,-1,,,7\nline,1,0,0,-1,,\n", 4, 8, "unexpected extra column"},
        {kHead + "line,0,1e999,0,-1,,\nline,1,0,0,-1,,\n", 4, 3, "not a finite number"},
        {kHead + "line,0,0,0,-1,,\ncurve,1,0,0,-1,,\n", 5, 1, "unknown element type 'curve'"},
        {kHead + "transition,0,0,0,-1,,\narc,1,0,0,200,,\n", 4, 6, "needs its parameter A"},
        {kHead + "transition,0,0,0,-1,-5,\narc,1,0,0,200,,\n", 4, 6, "must be positive"},
        {kHead + "transition,0,0,0,-1,100,\nline,1,0,0,-1,,\n", 4, 5, "different radii"},
        {kHead + "arc,0,0,0,-1,,\nline,1,0,0,-1,,\n", 4, 5, "an arc needs a positive radius"},
        {kHead + "line,0,0,0,-1,,\n", 5, 0, "at least two critical points, found 1"},
        {"start_mile,offset\n1000,0\n", 3, 0, "missing the header"},
    };
    for (const auto& r : rows) {
        std::istringstream in(r.text);
        try {
            ParseRouteCsv(in, "r.csv");
            ADD_FAILURE() << "accepted: " << r.text;
        } catch (const RouteCsvError& e) {
            const std::string what = e.what();
            EXPECT_EQ(e.line(), r.line) << what;
            EXPECT_EQ(e.column(), r.column) << what;
            EXPECT_NE(what.find(r.says), std::string::npos) << what;
            EXPECT_EQ(what.rfind("r.csv:" + std::to_string(r.line) + ": ", 0), 0u) << what;
        }
    }
}

TEST(RouteCsv, ByteOrderMarkSkippedUtf16NamedFileErrorsSayWhy) {
    std::istringstream bom("\xEF\xBB\xBF" + kHead + "line,0,0,0,-1,,\nline,1,0,0,-1,,\n");
    EXPECT_EQ(ParseRouteCsv(bom, "r.csv").points.GetSize(), 2);
    std::istringstream utf16(std::string("\xFF\xFEs\0t", 5));
    EXPECT_THROW(ParseRouteCsv(utf16, "r.csv"), RouteCsvError);
    const struct { std::string path; const char* says; } rows[] = {
        {"/nonexistent/route.csv", "/nonexistent/route.csv: cannot read: no such file"},
        {"/", "/: cannot read: is a directory"},
    };
    for (const auto& r : rows) {
        try {
            orvroute::ReadRouteCsv(r.path);
            ADD_FAILURE() << r.path;
        } catch (const RouteCsvError& e) {
            EXPECT_STREQ(e.what(), r.says);
        }
    }
}

TEST(OrvrouteFormat, NumbersAreReadableAtAnyMagnitude) {
    const double inf = std::numeric_limits<double>::infinity();
    const struct { double v; int decimals; const char* text; } fixed[] = {
        {1234.5678, 3, "1234.568"}, {-1.25, 1, "-1.2"},  // %.1f rounds half to even on the binary value
        {-0.0004, 3, "0.000"},      {-0.0, 3, "0.000"},  {1e300, 3, "1.000000e+300"},
        {-2.5e12, 3, "-2.500000e+12"}, {inf, 3, "inf"}, {-inf, 3, "-inf"}, {std::nan(""), 3, "nan"},
    };
    for (const auto& r : fixed) EXPECT_EQ(orvroute::FormatNumber(r.v, r.decimals), r.text) << r.v;
    const struct { double v; const char* text; } csv[] = {
        {-0.0, "0"}, {0.1, "0.1"}, {751.754096628727, "751.754096628727"}, {1e300, "1e+300"}, {-inf, "-inf"},
    };
    for (const auto& r : csv) EXPECT_EQ(orvroute::FormatCsvNumber(r.v), r.text) << r.v;
    // A transition evaluated a hair from its straight end has a huge radius: a straight to the eye.
    EXPECT_EQ(orvroute::FormatRadius(-1.0, false), "inf");
    EXPECT_EQ(orvroute::FormatRadius(23534076820.204, false), "inf");
    EXPECT_EQ(orvroute::FormatRadius(500.0, false), "500.000");
    EXPECT_EQ(orvroute::FormatRadius(500.25, true), "500.25");
}

// The sample road (a straight of 800 m, A = 250 into R = 500 for 700 m, out, 1200 m) drawn with an offset that loops
// inside its curve: every element is labelled, both sides have their own style, and every text starts inside the
// canvas and outside the legend panel (the last 270 px).
TEST(OrvrouteSvg, LabelsElementsAndKeepsTextInsideTheCanvas) {
    std::ostringstream svg;
    orvroute::WriteSvg(svg, orvroute::SampleRoute(), {600.0, -7.5}, "sample");
    const std::string s = svg.str();
    for (const char* want : {"L 800<", "A 250  L 125<", "R 500  L 700<", "L 1200<", "offset left: 600 m",
                             "offset right: -7.5 m", ">N<", "stroke-dasharray=\"8 4\"", "stroke-dasharray=\"2 3\""})
        EXPECT_NE(s.find(want), std::string::npos) << want;
    double width = 0, height = 0;
    ASSERT_EQ(std::sscanf(s.c_str(), "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"%lf\" height=\"%lf\"", &width,
                          &height), 2);
    int texts = 0;
    for (std::size_t at = s.find("<text x=\""); at != std::string::npos; at = s.find("<text x=\"", at + 1), ++texts) {
        double x = 0, y = 0;
        ASSERT_EQ(std::sscanf(s.c_str() + at, "<text x=\"%lf\" y=\"%lf\"", &x, &y), 2);
        EXPECT_TRUE(x >= 0 && x <= width && y >= 0 && y <= height) << s.substr(at, 80);
        const bool onThePlan = at > s.find("<g clip-path") && at < s.find("</g>");
        if (onThePlan) {
            EXPECT_LT(x, width - 270) << s.substr(at, 80);
        }
    }
    EXPECT_GT(texts, 20);
}
