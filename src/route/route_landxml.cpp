// LandXML 1.2 alignments to and from CRoute2 (pugixml, when built with it).
#include <orvmath/landxml.h>

#include "route_detail.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <sstream>

#if ORVMATH_WITH_LANDXML
#include <pugixml.hpp>
#endif

namespace ORVMATH {

#if ORVMATH_WITH_LANDXML

using namespace route_detail;

namespace {

constexpr double kLandXmlGapTol = 1e-6;  // metres: an element's Start this close to the last End joins it

struct ReadError {
    std::string message;
};

// One horizontal element as LandXML describes it.
struct Piece {
    SegmentType type = SEGMENT_LINE;
    CDblPoint start, end;
    double angleStart = 0.0, angleEnd = 0.0;  // tangent directions at the ends
    double radiusStart = kInfiniteRadius, radiusEnd = kInfiniteRadius;
    double A = 0.0;
};

// "northing easting" (an optional elevation after them is ignored).
CDblPoint ReadPoint(const pugi::xml_node& element, const char* child, const std::string& where) {
    const pugi::xml_node n = element.child(child);
    std::istringstream in(n.child_value());
    double north = 0.0, east = 0.0;
    if (!n || !(in >> north >> east) || !std::isfinite(north) || !std::isfinite(east))
        throw ReadError{where + ": <" + element.name() + "> needs <" + child + "> as \"northing easting\""};
    return CDblPoint(east, north);
}

// A radius attribute: a positive number, or INF for a straight.
double ReadRadius(const pugi::xml_node& element, const char* name, const std::string& where) {
    const std::string text = element.attribute(name).as_string();
    if (text == "INF" || text == "inf" || text == "Infinity") return kInfiniteRadius;
    char* end = nullptr;
    const double r = std::strtod(text.c_str(), &end);
    if (text.empty() || *end != '\0' || !(r > 0.0) || !std::isfinite(r))
        throw ReadError{where + ": <" + element.name() + "> " + name + " must be a positive number or INF, not '" +
                        text + "'"};
    return r;
}

double Direction(const CDblPoint& from, const CDblPoint& to) { return std::atan2(to.y - from.y, to.x - from.x); }

Piece ReadCurve(const pugi::xml_node& e, const std::string& where) {
    Piece p;
    p.type = SEGMENT_ARC;
    p.start = ReadPoint(e, "Start", where);
    p.end = ReadPoint(e, "End", where);
    const CDblPoint centre = ReadPoint(e, "Center", where);
    const std::string rot = e.attribute("rot").as_string();
    if (rot != "cw" && rot != "ccw") throw ReadError{where + ": <Curve> needs rot=\"cw\" or rot=\"ccw\""};
    const double turn = rot == "ccw" ? kHalfPi : -kHalfPi;  // from the radius to the tangent
    p.angleStart = Direction(centre, p.start) + turn;
    p.angleEnd = Direction(centre, p.end) + turn;
    p.radiusStart = p.radiusEnd = e.attribute("radius") ? ReadRadius(e, "radius", where) : Distance(centre, p.start);
    return p;
}

Piece ReadSpiral(const pugi::xml_node& e, const std::string& where) {
    Piece p;
    p.type = SEGMENT_TRANSITION;
    p.start = ReadPoint(e, "Start", where);
    p.end = ReadPoint(e, "End", where);
    const CDblPoint pi = ReadPoint(e, "PI", where);  // where the end tangents meet
    p.angleStart = Direction(p.start, pi);
    p.angleEnd = Direction(pi, p.end);
    p.radiusStart = ReadRadius(e, "radiusStart", where);
    p.radiusEnd = ReadRadius(e, "radiusEnd", where);
    const double length = e.attribute("length").as_double(-1.0);
    const auto curvature = [](double r) { return r == kInfiniteRadius ? 0.0 : 1.0 / r; };
    const double change = std::fabs(curvature(p.radiusStart) - curvature(p.radiusEnd));
    if (!(length > 0.0) || !(change > 0.0))
        throw ReadError{where + ": <Spiral> needs a positive length and two different radii"};
    p.A = std::sqrt(length / change);  // the clothoid's curvature changes by l / A^2 over a length l
    return p;
}

// Every <CoordGeom> element of one alignment, in order.
std::vector<Piece> ReadPieces(const pugi::xml_node& geom, const std::string& where,
                              std::vector<std::string>& unsupported) {
    std::vector<Piece> pieces;
    int k = 0;
    for (pugi::xml_node e = geom.first_child(); e; e = e.next_sibling(), ++k) {
        if (e.type() != pugi::node_element) continue;
        const std::string name = e.name();
        const std::string at = where + ", element " + std::to_string(k) + " <" + name + ">";
        const std::string spiType = e.attribute("spiType").as_string("clothoid");
        if (name == "Line") {
            Piece p;
            p.start = ReadPoint(e, "Start", where);
            p.end = ReadPoint(e, "End", where);
            p.angleStart = p.angleEnd = Direction(p.start, p.end);
            pieces.push_back(p);
        } else if (name == "Curve") {
            pieces.push_back(ReadCurve(e, where));
        } else if (name == "Spiral" && spiType == "clothoid") {
            pieces.push_back(ReadSpiral(e, where));
        } else {
            Piece p;  // a straight keeps the chain connected
            p.start = ReadPoint(e, "Start", at);
            p.end = ReadPoint(e, "End", at);
            p.angleStart = p.angleEnd = Direction(p.start, p.end);
            pieces.push_back(p);
            unsupported.push_back(at + (name == "Spiral" ? " of spiType '" + spiType + "'" : std::string()) +
                                  " is not supported: read as a straight from its Start to its End");
        }
    }
    return pieces;
}

CRoute2 RouteFromPieces(const std::vector<Piece>& pieces, double staStart) {
    CCriticalPointArray pts;
    for (const Piece& p : pieces)
        pts.Add(CCriticalPoint(p.type, p.start, p.angleStart, p.radiusStart, p.A,
                               p.type == SEGMENT_TRANSITION ? p.radiusEnd : 0.0));
    if (!pieces.empty()) {
        const Piece& last = pieces.back();
        pts.Add(CCriticalPoint(SEGMENT_LINE, last.end, last.angleEnd, last.radiusEnd));
    }
    CRoute2 route(pts, staStart, 0.0);
    route.SetClothoidMode(CLOTHOID_EXACT);
    return route;
}

void CheckUnits(const pugi::xml_node& root) {
    const pugi::xml_node units = root.child("Units");
    if (units.child("Imperial")) throw ReadError{"<Units> are imperial; only metric (metre) files are read"};
    const std::string linear = units.child("Metric").attribute("linearUnit").as_string("meter");
    if (linear != "meter" && linear != "metre")
        throw ReadError{"<Units> give the linear unit '" + linear + "'; only meter is read"};
}

void ReadDocument(const std::string& text, CLandXmlRead& result) {
    pugi::xml_document doc;
    const pugi::xml_parse_result parsed = doc.load_buffer(text.data(), text.size());
    if (!parsed)
        throw ReadError{std::string("not XML: ") + parsed.description() + " at byte " +
                        std::to_string(parsed.offset)};
    const pugi::xml_node root = doc.child("LandXML");
    if (!root) throw ReadError{"no <LandXML> root element"};
    CheckUnits(root);
    bool any = false;
    for (pugi::xml_node block = root.child("Alignments"); block; block = block.next_sibling("Alignments")) {
        any = true;
        for (pugi::xml_node a = block.child("Alignment"); a; a = a.next_sibling("Alignment")) {
            const std::string name = a.attribute("name").as_string();
            const std::string where = "alignment '" + name + "'";
            std::vector<Piece> pieces;
            for (pugi::xml_node c = a.first_child(); c; c = c.next_sibling()) {
                if (c.type() != pugi::node_element) continue;
                if (std::string(c.name()) == "CoordGeom") {
                    const std::vector<Piece> more = ReadPieces(c, where, result.unsupported);
                    pieces.insert(pieces.end(), more.begin(), more.end());
                } else {
                    result.unsupported.push_back(where + ": <" + std::string(c.name()) +
                                                 "> is not read (only the horizontal <CoordGeom> is)");
                }
            }
            if (pieces.empty()) throw ReadError{where + " has no <CoordGeom> elements"};
            // A route point is where an element starts: the End of the one before is not kept.
            for (std::size_t k = 1; k < pieces.size(); ++k) {
                const double gap = Distance(pieces[k - 1].end, pieces[k].start);
                if (gap > kLandXmlGapTol)
                    result.unsupported.push_back(where + ", element " + std::to_string(k) + " starts " +
                                                 std::to_string(gap) + " m from the End of the one before; the " +
                                                 "route runs from that element's Start");
            }
            result.alignments.push_back({name, RouteFromPieces(pieces, a.attribute("staStart").as_double(0.0))});
        }
    }
    if (!any) throw ReadError{"no <Alignments> in the document"};
}

std::string Num(double v) {
    char buf[40];
    std::snprintf(buf, sizeof buf, "%.17g", v);
    return buf;
}

std::string RadiusText(double r) { return r == kInfiniteRadius ? "INF" : Num(r); }

void AddPoint(pugi::xml_node parent, const char* name, const CDblPoint& p) {
    parent.append_child(name).text().set((Num(p.y) + " " + Num(p.x)).c_str());
}

// Signed distance of q to the left of p's tangent.
double LeftOf(const CCriticalPoint& p, const CDblPoint& q) {
    return (q.y - p.pt.y) * std::cos(p.angle) - (q.x - p.pt.x) * std::sin(p.angle);
}

// Where the tangents at p1 and p2 meet (p1's position when they are parallel).
CDblPoint TangentsMeet(const CCriticalPoint& p1, const CCriticalPoint& p2) {
    const double c1 = std::cos(p1.angle), s1 = std::sin(p1.angle), c2 = std::cos(p2.angle), s2 = std::sin(p2.angle);
    const double det = c1 * s2 - s1 * c2;
    if (det == 0.0) return p1.pt;
    const double t = ((p2.pt.x - p1.pt.x) * s2 - (p2.pt.y - p1.pt.y) * c2) / det;
    return CDblPoint(p1.pt.x + t * c1, p1.pt.y + t * s1);
}

void WriteElement(pugi::xml_node geom, const CRoute2& route, int i) {
    const CCriticalPoint& p1 = route.GetCriticalPoints()[i];
    const CCriticalPoint& p2 = route.GetCriticalPoints()[i + 1];
    const std::string rot = LeftOf(p1, p2.pt) >= 0.0 ? "ccw" : "cw";
    pugi::xml_node e;
    if (p1.type == SEGMENT_ARC) {
        e = geom.append_child("Curve");
        e.append_attribute("rot") = rot.c_str();
        e.append_attribute("radius") = Num(p1.radius).c_str();
    } else if (p1.type == SEGMENT_TRANSITION) {
        e = geom.append_child("Spiral");
        e.append_attribute("spiType") = "clothoid";
        e.append_attribute("rot") = rot.c_str();
        e.append_attribute("radiusStart") = RadiusText(p1.radius).c_str();
        e.append_attribute("radiusEnd") = RadiusText(FarRadius(p1, p2)).c_str();
    } else {
        e = geom.append_child("Line");
    }
    e.append_attribute("length") = Num(route.GetSegMile(i)).c_str();
    AddPoint(e, "Start", p1.pt);
    if (p1.type == SEGMENT_ARC) {
        const double side = rot == "ccw" ? 1.0 : -1.0;
        AddPoint(e, "Center",
                 CDblPoint(p1.pt.x - side * p1.radius * std::sin(p1.angle),
                           p1.pt.y + side * p1.radius * std::cos(p1.angle)));
    }
    if (p1.type == SEGMENT_TRANSITION) AddPoint(e, "PI", TangentsMeet(p1, p2));
    AddPoint(e, "End", p2.pt);
}

}  // namespace

bool LandXmlSupported() { return true; }

bool ReadLandXml(const std::string& text, CLandXmlRead& result) {
    result = CLandXmlRead();
    try {
        ReadDocument(text, result);
        return true;
    } catch (const ReadError& e) {
        result = CLandXmlRead();
        result.error = e.message;
        return false;
    }
}

std::string WriteLandXml(const std::vector<CLandXmlAlignment>& alignments) {
    pugi::xml_document doc;
    pugi::xml_node decl = doc.append_child(pugi::node_declaration);
    decl.append_attribute("version") = "1.0";
    decl.append_attribute("encoding") = "UTF-8";
    pugi::xml_node root = doc.append_child("LandXML");
    root.append_attribute("xmlns") = "http://www.landxml.org/schema/LandXML-1.2";
    root.append_attribute("version") = "1.2";
    // The schema asks for a date and time; a fixed one keeps the output reproducible.
    root.append_attribute("date") = "2000-01-01";
    root.append_attribute("time") = "00:00:00";
    pugi::xml_node metric = root.append_child("Units").append_child("Metric");
    metric.append_attribute("linearUnit") = "meter";
    metric.append_attribute("areaUnit") = "squareMeter";
    metric.append_attribute("volumeUnit") = "cubicMeter";
    metric.append_attribute("angularUnit") = "radians";
    metric.append_attribute("directionUnit") = "radians";
    pugi::xml_node block = root.append_child("Alignments");
    for (const CLandXmlAlignment& a : alignments) {
        pugi::xml_node al = block.append_child("Alignment");
        al.append_attribute("name") = a.name.c_str();
        al.append_attribute("length") = Num(a.route.GetMile() > 0.0 ? a.route.GetMile() : 0.0).c_str();
        al.append_attribute("staStart") = Num(a.route.GetStartMile()).c_str();
        pugi::xml_node geom = al.append_child("CoordGeom");
        const int elements = static_cast<int>(a.route.GetCriticalPoints().GetSize()) - 1;
        for (int i = 0; i < elements; ++i) WriteElement(geom, a.route, i);
    }
    std::ostringstream out;
    doc.save(out, "  ");
    return out.str();
}

#else  // built without pugixml

bool LandXmlSupported() { return false; }

bool ReadLandXml(const std::string&, CLandXmlRead& result) {
    result = CLandXmlRead();
    result.error = "this build of ORV_MathTool has no LandXML support (configure with pugixml installed)";
    return false;
}

std::string WriteLandXml(const std::vector<CLandXmlAlignment>&) { return std::string(); }

#endif

}  // namespace ORVMATH
