// Reading a route alignment from a plain CSV file.
//
//   # lines starting with '#' and blank lines are ignored
//   start_mile,offset
//   1000,0
//   type,x,y,angle_deg,radius,spiralA,endRadius
//   line,0,0,20,-1,,
//   transition,751.75,273.62,20,-1,250,
//   ...
//
// One row per critical point, in order. type is 0/1/2 or line/arc/transition;
// angle_deg is the tangent direction in degrees, counter-clockwise from +x;
// radius -1 means infinite (a straight). spiralA is required (> 0) for a
// transition and may be empty otherwise; endRadius may be empty (0: the next
// point's radius applies).
//
// The second form gives the design instead of the points: the start point
// and direction, then one row per element, laid out with exact clothoids
// (the route then evaluates in that mode):
//
//   start_mile,offset
//   1000,0
//   x,y,angle_deg
//   0,0,20
//   element,length,radius,start_radius,spiralA
//   line,800,,,
//   transition,,500,,250
//   arc,700,500,,
//   transition,,,500,250
//   line,1200,,,
//
// Radii are signed, positive turning left; empty or 0 means infinite. A
// transition runs from start_radius to radius and takes spiralA, or its
// length when spiralA is empty.
#pragma once

#include <orvmath/route2.h>

#include <istream>
#include <stdexcept>
#include <string>
#include <vector>

namespace orvroute {

// A malformed route file: what() reads "FILE:LINE: column C (NAME): problem",
// or "FILE:LINE: problem" when no single column is at fault, or "FILE: problem"
// when the file cannot be read at all (line 0).
class RouteCsvError : public std::runtime_error {
public:
    // `message` is the text after "FILE:LINE: ".
    RouteCsvError(const std::string& source, int line, int column, const std::string& message);
    int line() const { return line_; }
    int column() const { return column_; }  // 1-based; 0 when no single column is at fault

private:
    int line_;
    int column_;
};

struct RouteFile {
    double startMile = 0.0;
    double offset = 0.0;
    ORVMATH::CCriticalPointArray points;
    std::vector<int> pointLines;  // source line of each critical point
    ORVMATH::ClothoidMode mode = ORVMATH::CLOTHOID_SERIES;  // CLOTHOID_EXACT for the element form
    // The route the file describes.
    ORVMATH::CRoute2 Route() const;
};

// Parses the text of a route file; `source` names it in messages. A UTF-8
// byte-order mark is skipped. Throws RouteCsvError.
RouteFile ParseRouteCsv(std::istream& in, const std::string& source);
// Reads and parses a file, or standard input for "-". A file that cannot be
// read is a RouteCsvError at line 0 that says why (no such file, permission
// denied, is a directory).
RouteFile ReadRouteCsv(const std::string& path);
// The whole text of a file, or of standard input for "-"; the errors as above.
std::string ReadInput(const std::string& path);
// Writes a route in the same format (angles in degrees).
void WriteRouteCsv(std::ostream& out, const ORVMATH::CRoute2& route);

}  // namespace orvroute
