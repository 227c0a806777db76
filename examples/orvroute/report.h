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

// One row per station: mile, x, y (on the route shifted by `offset`),
// tangent direction in degrees, element type and radius of the base line.
void WriteTable(std::ostream& out, const ORVMATH::CRoute2& route, double step, double offset,
                const std::string& title);

// A drawing to scale: the centre line coloured by element type, the offset
// lines asked for, element boundaries, mile ticks, a legend and a scale bar.
void WriteSvg(std::ostream& out, const ORVMATH::CRoute2& route, const std::vector<double>& offsets,
              const std::string& title);

}  // namespace orvroute
