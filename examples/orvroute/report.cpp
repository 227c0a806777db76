#include "report.h"

#include <orvmath/angle.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <string>

namespace orvroute {

using ORVMATH::CCriticalPoint;
using ORVMATH::CDblPoint;
using ORVMATH::CRoute2;

namespace {

constexpr double kSameMile = 1e-6;       // stations closer than this are one row
constexpr double kExponentFrom = 1e12;   // numbers this large are written with an exponent
// A radius above this bends less than 0.05 mm from its tangent over 1 km: a straight.
constexpr double kRadiusShownInfinite = 1e10;

// Removes the sign of a number written as zero ("-0.000" becomes "0.000").
std::string Unsigned0(std::string s) {
    if (!s.empty() && s[0] == '-' && s.find_first_not_of("0.", 1) == std::string::npos) s.erase(0, 1);
    return s;
}

std::vector<double> BoundaryMiles(const CRoute2& route) {
    std::vector<double> miles{route.GetStartMile()};
    const int elements = static_cast<int>(route.GetCriticalPoints().GetSize()) - 1;
    for (int i = 0; i < elements; ++i) miles.push_back(miles.back() + route.GetSegMile(i));
    return miles;
}

// Road engineers' names of the point where one element kind meets another.
std::string BoundaryCode(int from, int to) {
    using namespace ORVMATH;
    if (from == SEGMENT_LINE && to == SEGMENT_TRANSITION) return "TS";
    if (from == SEGMENT_TRANSITION && to == SEGMENT_ARC) return "SC";
    if (from == SEGMENT_ARC && to == SEGMENT_TRANSITION) return "CS";
    if (from == SEGMENT_TRANSITION && to == SEGMENT_LINE) return "ST";
    if (from == SEGMENT_LINE && to == SEGMENT_ARC) return "TC";
    if (from == SEGMENT_ARC && to == SEGMENT_LINE) return "CT";
    return "B";
}

}  // namespace

const char* TypeName(int type) {
    switch (type) {
        case ORVMATH::SEGMENT_LINE: return "line";
        case ORVMATH::SEGMENT_ARC: return "arc";
        case ORVMATH::SEGMENT_TRANSITION: return "transition";
        default: return "?";
    }
}

std::string FormatNumber(double v, int decimals) {
    if (std::isnan(v)) return "nan";
    if (std::isinf(v)) return v > 0.0 ? "inf" : "-inf";
    char buf[64];
    if (std::fabs(v) >= kExponentFrom)
        std::snprintf(buf, sizeof buf, "%.6e", v);
    else
        std::snprintf(buf, sizeof buf, "%.*f", decimals, v);
    return Unsigned0(buf);
}

std::string FormatCsvNumber(double v) {
    if (std::isnan(v)) return "nan";
    if (std::isinf(v)) return v > 0.0 ? "inf" : "-inf";
    char buf[64];
    std::snprintf(buf, sizeof buf, "%.15g", v);
    return Unsigned0(buf);
}

std::string FormatRadius(double radius, bool csv) {
    if (radius == -1.0 || radius >= kRadiusShownInfinite) return "inf";
    return csv ? FormatCsvNumber(radius) : FormatNumber(radius, 3);
}

std::vector<Station> Stationing(const CRoute2& route, double step) {
    std::vector<Station> stations;
    if (route.IsNull()) return stations;
    for (double m : BoundaryMiles(route)) stations.push_back({m, true});
    const double start = route.GetStartMile(), end = route.GetEndMile();
    for (double k = std::ceil(start / step - kSameMile); k * step <= end + kSameMile; k += 1.0)
        stations.push_back({k * step, false});
    std::sort(stations.begin(), stations.end(), [](const Station& a, const Station& b) { return a.mile < b.mile; });
    std::vector<Station> merged;
    for (const Station& s : stations) {
        if (!merged.empty() && s.mile - merged.back().mile < kSameMile)
            merged.back().boundary = merged.back().boundary || s.boundary;
        else
            merged.push_back(s);
    }
    return merged;
}

void WriteTable(std::ostream& out, const CRoute2& route, double step, double offset, const std::string& title,
                bool csv) {
    char line[400];
    if (csv) {
        out << "mile,x,y,dir_deg,element,radius,boundary\n";
    } else {
        out << "# " << title << ": miles " << FormatNumber(route.GetStartMile(), 3) << " to "
            << FormatNumber(route.GetEndMile(), 3) << " (" << FormatNumber(route.GetMile(), 3)
            << " m of chainage), offset " << FormatNumber(route.GetOffset() + offset, 3) << '\n';
        std::snprintf(line, sizeof line, "%12s %14s %14s %10s  %-10s %10s\n", "mile", "x", "y", "dir_deg", "element",
                      "radius");
        out << line;
    }
    for (const Station& s : Stationing(route, step)) {
        CCriticalPoint cp;
        if (route.GetCriticalPoint(s.mile, cp) < 0) continue;
        const CDblPoint p = route.GetPoint(s.mile, offset);
        const bool atEnd = std::fabs(s.mile - route.GetEndMile()) < kSameMile;
        const double dir = ORVMATH::NormalizeAng_Rad(cp.angle) * ORVMATH::kRadToDeg;
        const char* element = atEnd ? "end" : TypeName(cp.type);
        if (csv) {
            out << FormatCsvNumber(s.mile) << ',' << FormatCsvNumber(p.x) << ',' << FormatCsvNumber(p.y) << ','
                << FormatCsvNumber(dir) << ',' << element << ',' << FormatRadius(cp.radius, true) << ','
                << (s.boundary ? 1 : 0) << '\n';
            continue;
        }
        std::snprintf(line, sizeof line, "%12s %14s %14s %10s  %-10s %10s%s\n", FormatNumber(s.mile, 3).c_str(),
                      FormatNumber(p.x, 3).c_str(), FormatNumber(p.y, 3).c_str(), FormatNumber(dir, 4).c_str(),
                      element, FormatRadius(cp.radius, false).c_str(),
                      s.boundary && !atEnd ? "  <- element begins" : "");
        out << line;
    }
}

// ---------------------------------------------------------------- SVG

namespace {

// World (y up) to picture (y down) at one scale.
struct View {
    double minX, maxY, scale, margin, top;
    double X(const CDblPoint& p) const { return margin + (p.x - minX) * scale; }
    double Y(const CDblPoint& p) const { return top + margin + (maxY - p.y) * scale; }
    double WorldX(double px) const { return minX + (px - margin) / scale; }
    double WorldY(double py) const { return maxY - (py - top - margin) / scale; }
};

double NiceStep(double rough) {
    const double p = std::pow(10.0, std::floor(std::log10(rough)));
    for (double f : {1.0, 2.0, 5.0, 10.0})
        if (f * p >= rough) return f * p;
    return 10.0 * p;
}

const char* TypeColour(int type) {
    switch (type) {
        case ORVMATH::SEGMENT_ARC: return "#1f6fd1";
        case ORVMATH::SEGMENT_TRANSITION: return "#e07b00";
        default: return "#222222";
    }
}

// Offsets to the left and to the right of the route must not look alike.
const char* const kLeftOffsetStyle = "stroke=\"#2a9d8f\" stroke-width=\"1.2\" stroke-dasharray=\"8 4\"";
const char* const kRightOffsetStyle = "stroke=\"#b5179e\" stroke-width=\"1.2\" stroke-dasharray=\"2 3\"";

// A number for a label: up to 3 decimals, trailing zeros dropped.
std::string Short(double v) {
    std::string s = FormatNumber(v, 3);
    if (s.find('.') != std::string::npos && s.find('e') == std::string::npos) {
        s.erase(s.find_last_not_of('0') + 1);
        if (s.back() == '.') s.pop_back();
    }
    return s;
}

std::string Escape(const std::string& text) {
    std::string out;
    for (char c : text) {
        if (c == '<') out += "&lt;";
        else if (c == '>') out += "&gt;";
        else if (c == '&') out += "&amp;";
        else if (c == '"') out += "&quot;";
        else out += c;
    }
    return out;
}

std::string Polyline(const View& v, const std::vector<CDblPoint>& pts, const std::string& style) {
    std::string s = "<polyline fill=\"none\" " + style + " points=\"";
    char buf[64];
    for (const CDblPoint& p : pts) {
        std::snprintf(buf, sizeof buf, "%.2f,%.2f ", v.X(p), v.Y(p));
        s += buf;
    }
    return s + "\"/>\n";
}

std::string Line(double x1, double y1, double x2, double y2, const std::string& style) {
    char buf[300];
    std::snprintf(buf, sizeof buf, "<line x1=\"%.2f\" y1=\"%.2f\" x2=\"%.2f\" y2=\"%.2f\" %s/>\n", x1, y1, x2, y2,
                  style.c_str());
    return buf;
}

std::string Text(double x, double y, const std::string& text, const std::string& style = "") {
    char buf[100];
    std::snprintf(buf, sizeof buf, "<text x=\"%.2f\" y=\"%.2f\" %s>", x, y, style.c_str());
    return buf + Escape(text) + "</text>\n";
}

// Labels set off the route, each moved further out until it clears the
// ones already placed, so that short elements do not write over each other.
class Labels {
public:
    Labels(const View& v, const CRoute2& route) : v_(v), route_(route) {}

    // Text at the point `offset` to the side of the route at `mile`, set off
    // outward (away from the route) so that it does not cover the lines.
    std::string Add(double mile, double offset, const std::string& text, const char* colour) {
        const double width = 6.2 * static_cast<double>(text.size()), height = 12.0;
        const double out = offset < 0.0 ? -1.0 : 1.0;
        double x = 0.0, y = 0.0;
        const char* anchor = "middle";
        for (int attempt = 0; attempt < 8; ++attempt, offset += out * 13.0 / v_.scale) {
            const CDblPoint p = route_.GetPoint(mile, offset);
            const CDblPoint q = route_.GetPoint(mile, offset + out);  // one metre further out
            const double dx = v_.X(q) - v_.X(p), dy = v_.Y(q) - v_.Y(p), len = std::max(std::hypot(dx, dy), 1e-12);
            const double ux = dx / len, uy = dy / len;
            anchor = ux > 0.3 ? "start" : ux < -0.3 ? "end" : "middle";
            x = v_.X(p) + 6.0 * ux;
            y = v_.Y(p) + 6.0 * uy + (uy > 0.3 ? 9.0 : uy < -0.3 ? 0.0 : 4.0);
            const double left = ux > 0.3 ? x : ux < -0.3 ? x - width : x - width / 2;
            const Box box{left, y - height + 2.0, left + width, y + 2.0};
            if (Clear(box) || attempt == 7) {
                boxes_.push_back(box);
                break;
            }
        }
        return Text(x, y, text, std::string("fill=\"") + colour + "\" text-anchor=\"" + anchor + "\"");
    }

private:
    struct Box {
        double x0, y0, x1, y1;
    };
    bool Clear(const Box& b) const {
        for (const Box& o : boxes_)
            if (b.x0 < o.x1 && o.x0 < b.x1 && b.y0 < o.y1 && o.y0 < b.y1) return false;
        return true;
    }

    const View& v_;
    const CRoute2& route_;
    std::vector<Box> boxes_;
};

// Points every `step` or less from mile a to b at the given offset.
std::vector<CDblPoint> Sample(const CRoute2& route, double a, double b, double offset, double step) {
    const int n = std::max(1, static_cast<int>(std::ceil((b - a) / step)));
    std::vector<CDblPoint> pts;
    for (int k = 0; k <= n; ++k) pts.push_back(route.GetPoint(a + (b - a) * k / n, offset));
    return pts;
}

// What an element is, the way road engineers write it on a plan.
std::string ElementLabel(const CCriticalPoint& p, double length) {
    switch (p.type) {
        case ORVMATH::SEGMENT_ARC: return "R " + Short(p.radius) + "  L " + Short(length);
        case ORVMATH::SEGMENT_TRANSITION: return "A " + Short(p.spiralA) + "  L " + Short(length);
        default: return "L " + Short(length);
    }
}

// Grid lines every nice step over the drawing area, labelled on its edges.
void WriteGrid(std::ostream& out, const View& v, double x0, double y0, double x1, double y1) {
    const double step = NiceStep(std::max(v.WorldX(x1) - v.WorldX(x0), v.WorldY(y0) - v.WorldY(y1)) / 8.0);
    const std::string style = "stroke=\"#d8d8d8\" stroke-width=\"0.8\"";
    const std::string text = "fill=\"#777\" font-size=\"9\"";
    for (double k = std::ceil(v.WorldX(x0) / step); k * step <= v.WorldX(x1); k += 1.0) {
        const double px = v.X(CDblPoint(k * step, 0.0));
        out << Line(px, y0, px, y1, style) << Text(px, y1 + 11.0, "E " + Short(k * step), text + " text-anchor=\"middle\"");
    }
    for (double k = std::ceil(v.WorldY(y1) / step); k * step <= v.WorldY(y0); k += 1.0) {
        const double py = v.Y(CDblPoint(0.0, k * step));
        out << Line(x0, py, x1, py, style) << Text(x0 - 3.0, py + 3.0, "N " + Short(k * step), text + " text-anchor=\"end\"");
    }
}

void WriteNorthArrow(std::ostream& out, double x, double y) {
    char buf[300];
    std::snprintf(buf, sizeof buf, "<path d=\"M %.1f %.1f L %.1f %.1f L %.1f %.1f L %.1f %.1f Z\" fill=\"#222\"/>\n",
                  x, y, x - 8.0, y + 26.0, x, y + 19.0, x + 8.0, y + 26.0);
    out << buf << Text(x, y - 4.0, "N", "font-weight=\"bold\" font-size=\"13\" text-anchor=\"middle\"");
}

}  // namespace

void WriteSvg(std::ostream& out, const CRoute2& route, const std::vector<double>& offsets, const std::string& title) {
    const std::vector<double> bounds = BoundaryMiles(route);
    const double chainage = route.GetMile();
    const double sampleStep = std::max(0.5, chainage / 2000.0);

    // Extent of every line drawn (a looping offset included).
    double maxLeft = 0.0, maxRight = 0.0;
    for (double d : offsets) (d > 0.0 ? maxLeft : maxRight) = std::max(d > 0.0 ? maxLeft : maxRight, std::fabs(d));
    std::vector<CDblPoint> all = Sample(route, route.GetStartMile(), route.GetEndMile(), 0.0, sampleStep);
    for (double d : offsets) {
        const std::vector<CDblPoint> side = Sample(route, route.GetStartMile(), route.GetEndMile(), d, sampleStep);
        all.insert(all.end(), side.begin(), side.end());
    }
    double minX = all[0].x, maxX = minX, minY = all[0].y, maxY = minY;
    for (const CDblPoint& p : all) {
        if (!std::isfinite(p.x) || !std::isfinite(p.y)) continue;
        minX = std::min(minX, p.x), maxX = std::max(maxX, p.x);
        minY = std::min(minY, p.y), maxY = std::max(maxY, p.y);
    }
    // The margin holds the labels set off the lines and the grid's numbers.
    const double margin = 150.0, top = 50.0, maxW = 1000.0, maxH = 1000.0, panel = 270.0;
    const double w = std::max(maxX - minX, 1.0), h = std::max(maxY - minY, 1.0);
    const double scale = std::min((maxW - 2 * margin) / w, (maxH - 2 * margin) / h);
    const View v{minX, maxY, scale, margin, top};
    const double drawW = w * scale + 2 * margin;
    const double width = drawW + panel, height = std::max(h * scale + 2 * margin + top, 480.0);

    char buf[400];
    std::snprintf(buf, sizeof buf,
                  "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"%.0f\" height=\"%.0f\" viewBox=\"0 0 %.0f %.0f\" "
                  "font-family=\"sans-serif\" font-size=\"11\">\n",
                  width, height, width, height);
    out << buf << "<rect width=\"100%\" height=\"100%\" fill=\"white\"/>\n";
    out << "<title>" << Escape(title) << "</title>\n";
    // Whatever the route does, the drawing stays in its own area, clear of the legend.
    const double gx0 = 60.0, gy0 = top + 10.0, gx1 = drawW - 10.0, gy1 = height - 25.0;
    std::snprintf(buf, sizeof buf,
                  "<clipPath id=\"plan\"><rect x=\"%.1f\" y=\"%.1f\" width=\"%.1f\" height=\"%.1f\"/></clipPath>\n",
                  gx0, gy0, gx1 - gx0, gy1 - gy0);
    out << buf;
    WriteGrid(out, v, gx0, gy0, gx1, gy1);
    out << "<g clip-path=\"url(#plan)\">\n";

    // Offset lines, then the centre line coloured per element.
    for (double d : offsets)
        out << Polyline(v, Sample(route, route.GetStartMile(), route.GetEndMile(), d, sampleStep),
                        d > 0.0 ? kLeftOffsetStyle : kRightOffsetStyle);
    const ORVMATH::CCriticalPointArray& pts = route.GetCriticalPoints();
    for (std::size_t i = 0; i + 1 < bounds.size(); ++i)
        out << Polyline(v, Sample(route, bounds[i], bounds[i + 1], 0.0, sampleStep),
                        std::string("stroke=\"") + TypeColour(pts[static_cast<INT_PTR>(i)].type) +
                            "\" stroke-width=\"2.5\"");

    // Mile ticks on the right of the centre line, labelled every fifth.
    Labels labels(v, route);
    const double tickStep = NiceStep(chainage / 30.0);
    const double tickLen = 6.0 / scale;
    for (double k = std::ceil(route.GetStartMile() / tickStep - 1e-9); k * tickStep <= route.GetEndMile() + 1e-9;
         k += 1.0) {
        const double m = k * tickStep;
        const bool major = std::llround(k) % 5 == 0;
        const CDblPoint a = route.GetPoint(m, -maxRight), b = route.GetPoint(m, -maxRight - (major ? 2.0 : 1.0) * tickLen);
        out << Line(v.X(a), v.Y(a), v.X(b), v.Y(b), "stroke=\"#444\" stroke-width=\"1\"");
        if (major) out << labels.Add(m, -(maxRight + 2.5 * tickLen), FormatNumber(m, 0), "#444");
    }

    // Element boundaries: a red bar across all lines, with its code and mile;
    // the element's R, A and L on the left halfway along it.
    const double leftOut = maxLeft + 12.0 / scale, rightOut = maxRight + 12.0 / scale;
    for (std::size_t i = 0; i < bounds.size(); ++i) {
        const CDblPoint a = route.GetPoint(bounds[i], leftOut), b = route.GetPoint(bounds[i], -rightOut);
        out << Line(v.X(a), v.Y(a), v.X(b), v.Y(b), "stroke=\"#c0143c\" stroke-width=\"1.5\"");
        std::string code = i == 0 ? "start" : i + 1 == bounds.size() ? "end" : "";
        if (code.empty()) code = BoundaryCode(pts[static_cast<INT_PTR>(i - 1)].type, pts[static_cast<INT_PTR>(i)].type);
        out << labels.Add(bounds[i], leftOut, code + " " + FormatNumber(bounds[i], 3), "#c0143c");
        if (i + 1 < bounds.size())
            out << labels.Add(0.5 * (bounds[i] + bounds[i + 1]), leftOut,
                         ElementLabel(pts[static_cast<INT_PTR>(i)], route.GetSegMile(static_cast<int>(i))),
                         TypeColour(pts[static_cast<INT_PTR>(i)].type));
    }
    out << "</g>\n";

    // Title, then the north arrow, the legend and a scale bar in the panel on the right.
    out << Text(20, 24, title, "font-size=\"15\" font-weight=\"bold\"");
    out << Text(20, 40,
                "chainage " + FormatNumber(chainage, 3) + " m from mile " + FormatNumber(route.GetStartMile(), 3) +
                    " to " + FormatNumber(route.GetEndMile(), 3) + "; grid: eastings E and northings N in metres",
                "fill=\"#444\"");
    const double lx = drawW + 10.0;
    WriteNorthArrow(out, lx + 14.0, top + 20.0);
    double ly = top + 80.0;
    out << Text(lx, ly, "Legend", "font-weight=\"bold\"");
    auto key = [&](const std::string& style, const std::string& label) {
        ly += 20.0;
        out << Line(lx, ly - 4, lx + 28, ly - 4, style) << Text(lx + 36, ly, label);
    };
    key("stroke=\"#222222\" stroke-width=\"2.5\"", "straight (L length)");
    key("stroke=\"#e07b00\" stroke-width=\"2.5\"", "transition (A parameter)");
    key("stroke=\"#1f6fd1\" stroke-width=\"2.5\"", "circular arc (R radius)");
    std::string left, right;
    for (double d : offsets) {
        std::string& list = d > 0.0 ? left : right;
        list += (list.empty() ? "" : ", ") + Short(d);
    }
    if (!left.empty()) key(kLeftOffsetStyle, "offset left: " + left + " m");
    if (!right.empty()) key(kRightOffsetStyle, "offset right: " + right + " m");
    key("stroke=\"#c0143c\" stroke-width=\"1.5\"", "element boundary, mile");
    key("stroke=\"#444\"", "mile tick every " + Short(tickStep) + " m");
    ly += 14.0;
    out << Text(lx, ly + 4, "TS SC CS ST: tangent-spiral,", "fill=\"#444\"");
    out << Text(lx, ly + 18, "spiral-curve, curve-spiral, spiral-tangent", "fill=\"#444\"");
    const double bar = NiceStep(150.0 / scale);
    ly += 50.0;
    out << Line(lx, ly, lx + bar * scale, ly, "stroke=\"black\" stroke-width=\"3\"");
    out << Text(lx, ly - 6, "0") << Text(lx + bar * scale, ly - 6, Short(bar) + " m", "text-anchor=\"end\"");
    out << "</svg>\n";
}

}  // namespace orvroute
