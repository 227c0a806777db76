// The stationing table and the SVG drawing of a route.
#pragma once

#include <orvmath/route2.h>

#include <ostream>
#include <string>
#include <vector>

namespace orvroute {

struct Station {
    double mile;
    bool boundary;  // an element begins or ends here
};

// Every multiple of `step` within the chainage plus every element boundary
// (the start and end mile included), in order.
std::vector<Station> Stationing(const ORVMATH::CRoute2& route, double step);

// `v` with `decimals` decimals, in exponent form from 1e12 up (no 300-digit
// lines), "inf", "-inf" or "nan" when not finite, and never "-0.000": a
// negative number that rounds to zero is written as zero.
std::string FormatNumber(double v, int decimals);
// `v` for a CSV cell: 15 significant digits (what a double holds reliably),
// "inf", "-inf" or "nan", and "0" for -0.
std::string FormatCsvNumber(double v);
// A radius as text: "inf" for -1.0 and for radii so large that the curve
// cannot be told from a straight (a transition evaluated at its straight end).
std::string FormatRadius(double radius, bool csv);
const char* TypeName(int type);

// One row per station: mile, x, y (on the route shifted by `offset`),
// tangent direction in degrees, element type and radius of the base line;
// a fixed-width table under a comment line, or with `csv` a CSV with the
// header mile,x,y,dir_deg,element,radius,boundary.
void WriteTable(std::ostream& out, const ORVMATH::CRoute2& route, double step, double offset,
                const std::string& title, bool csv);

// A drawing to scale: the centre line coloured by element type, the offset
// lines asked for, element boundaries, mile ticks, a legend and a scale bar.
void WriteSvg(std::ostream& out, const ORVMATH::CRoute2& route, const std::vector<double>& offsets,
              const std::string& title);

}  // namespace orvroute
