// The Python module orvmath: routes and point-in-polygon over numpy arrays.
// Batch calls take and return arrays, loop in C++ and release the GIL.
#include <orvmath/orvmath.h>

#include "orvroute/route_csv.h"

#include <pybind11/numpy.h>
#include <pybind11/pybind11.h>
#include <pybind11/stl.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <sstream>
#include <string>

namespace py = pybind11;
using namespace ORVMATH;

namespace {

using Doubles = py::array_t<double, py::array::c_style | py::array::forcecast>;

// The columns of a critical point row, in order.
constexpr const char* kPointColumns = "type, x, y, angle, radius, spiral_a, end_radius";

// An n x 2 array of coordinates; ValueError otherwise (and for NaN when `finite`).
const double* Xy(const Doubles& a, const char* what) {
    if (a.ndim() != 2 || a.shape(1) != 2)
        throw py::value_error(std::string(what) + " must be an array of shape (n, 2)");
    return a.data();
}

CRoute2 RouteFromPoints(const Doubles& rows, double startMile, double offset) {
    if (rows.ndim() != 2 || rows.shape(1) != 7)
        throw py::value_error(std::string("critical points must be an array of shape (n, 7): ") + kPointColumns);
    CCriticalPointArray pts;
    for (py::ssize_t k = 0; k < rows.shape(0); ++k) {
        const double* r = rows.data(k, 0);
        if (!(r[0] == 0.0 || r[0] == 1.0 || r[0] == 2.0))
            throw py::value_error("critical point " + std::to_string(k) +
                                  ": type must be 0 (line), 1 (arc) or 2 (transition)");
        for (int c = 1; c < 7; ++c)
            if (!std::isfinite(r[c])) throw py::value_error("critical point " + std::to_string(k) + " is not finite");
        pts.Add(CCriticalPoint(static_cast<SegmentType>(static_cast<int>(r[0])), CDblPoint(r[1], r[2]), r[3], r[4],
                               r[5], r[6]));
    }
    if (!std::isfinite(startMile) || !std::isfinite(offset))
        throw py::value_error("start_mile and offset must be finite");
    return CRoute2(pts, startMile, offset);
}

py::bytes RouteToBytes(CRoute2 route) {
    CMemFile file;
    {
        CArchive ar(&file, CArchive::store);
        ar << route;
    }
    const auto n = static_cast<std::size_t>(file.GetLength());
    BYTE* p = file.Detach();
    py::bytes out(reinterpret_cast<const char*>(p), n);
    std::free(p);
    return out;
}

CRoute2 RouteFromBytes(const py::bytes& data) {
    std::string bytes = data;
    CMemFile file(reinterpret_cast<BYTE*>(bytes.data()), static_cast<UINT>(bytes.size()));
    CRoute2 route;
    try {
        CArchive ar(&file, CArchive::load);
        ar >> route;
        BYTE extra;
        if (ar.Read(&extra, 1) != 0) throw py::value_error("not a route record: bytes left after it");
    } catch (const CException& e) {
        throw py::value_error(std::string("not a route record: ") + e.what());
    }
    return route;
}

py::tuple Points(const CRoute2& route, const Doubles& miles, py::object offsets) {
    if (miles.ndim() != 1) throw py::value_error("miles must be a one-dimensional array");
    const py::ssize_t n = miles.shape(0);
    Doubles off;
    if (!offsets.is_none()) {
        off = Doubles::ensure(offsets);
        if (!off || off.ndim() > 1 || (off.ndim() == 1 && off.shape(0) != n))
            throw py::value_error("offsets must be a number or an array as long as miles");
    }
    py::array_t<double> xy({n, py::ssize_t(2)}), angles(n);
    const double* m = miles.data();
    const double* o = off ? off.data() : nullptr;
    const bool scalar = off && off.ndim() == 0;
    double* pxy = xy.mutable_data();
    double* pa = angles.mutable_data();
    {
        py::gil_scoped_release release;
        // In blocks that stay in cache: no temporaries as large as the input
        // (fresh memory costs more per point than the evaluation).
        constexpr py::ssize_t kBlock = 1024;
        double each[kBlock];
        CDblPoint pts[kBlock];
        if (scalar) std::fill(each, each + kBlock, *o);
        const double nan = std::numeric_limits<double>::quiet_NaN();
        for (py::ssize_t b = 0; b < n; b += kBlock) {
            const py::ssize_t count = std::min(kBlock, n - b);
            route.GetPoints(m + b, scalar ? each : (o ? o + b : nullptr), count, pts, pa + b);
            for (py::ssize_t k = 0; k < count; ++k) {
                const bool off_route = std::isnan(pa[b + k]);
                pxy[2 * (b + k)] = off_route ? nan : pts[k].x;
                pxy[2 * (b + k) + 1] = off_route ? nan : pts[k].y;
            }
        }
    }
    return py::make_tuple(xy, angles);
}

py::array_t<double> CriticalPoints(const CRoute2& route) {
    const CCriticalPointArray& pts = route.GetCriticalPoints();
    py::array_t<double> out({static_cast<py::ssize_t>(pts.GetSize()), py::ssize_t(7)});
    double* p = out.mutable_data();
    for (const CCriticalPoint& c : pts) {
        const double row[7] = {static_cast<double>(c.type), c.pt.x, c.pt.y, c.angle, c.radius, c.spiralA, c.endRadius};
        for (double v : row) *p++ = v;
    }
    return out;
}

// Design forms: rows of (type, length, radius, start_radius, spiral_a) and of (x, y, radius, a1, a2).
const double* Rows(const Doubles& a, py::ssize_t columns, const char* what) {
    if (a.ndim() != 2 || a.shape(1) != columns)
        throw py::value_error(std::string(what) + " must be an array of shape (n, " + std::to_string(columns) + ")");
    return a.data();
}

CRoute2 DesignedRoute(int bad, const char* what, const CCriticalPointArray& pts, double startMile) {
    if (bad >= 0) throw py::value_error(std::string(what) + " " + std::to_string(bad) + " cannot be laid out");
    CRoute2 route(pts, startMile, 0.0);
    route.SetClothoidMode(CLOTHOID_EXACT);
    return route;
}

CRoute2 RouteFromElements(double x, double y, double angle, const Doubles& rows, double startMile) {
    const double* r = Rows(rows, 5, "elements");
    CRouteElementArray elements;
    for (py::ssize_t k = 0; k < rows.shape(0); ++k, r += 5)
        elements.Add(CRouteElement{static_cast<SegmentType>(static_cast<int>(r[0])), r[1], r[2], r[3], r[4]});
    CCriticalPointArray pts;
    return DesignedRoute(BuildRouteFromElements(CDblPoint(x, y), angle, elements, pts), "element", pts, startMile);
}

CRoute2 RouteFromPI(const Doubles& rows, double startMile) {
    const double* r = Rows(rows, 5, "vertices");
    CRoutePIArray pis;
    for (py::ssize_t k = 0; k < rows.shape(0); ++k, r += 5) pis.Add(CRoutePI{CDblPoint(r[0], r[1]), r[2], r[3], r[4]});
    CCriticalPointArray pts;
    return DesignedRoute(BuildRouteFromPI(pis, pts), "vertex", pts, startMile);
}

py::array_t<double> ElementRows(const CRoute2& route) {
    CRouteElementArray e;
    GetRouteElements(route, e);
    py::array_t<double> out({static_cast<py::ssize_t>(e.GetSize()), py::ssize_t(5)});
    double* p = out.mutable_data();
    for (const CRouteElement& el : e) {
        const double row[5] = {static_cast<double>(el.type), el.length, el.radius, el.startRadius, el.spiralA};
        for (double v : row) *p++ = v;
    }
    return out;
}

py::object PIRows(const CRoute2& route) {
    CRoutePIArray pis;
    if (!route.GetStandardIntersection(pis)) return py::none();
    py::array_t<double> out({static_cast<py::ssize_t>(pis.GetSize()), py::ssize_t(5)});
    double* p = out.mutable_data();
    for (const CRoutePI& v : pis) {
        const double row[5] = {v.pt.x, v.pt.y, v.radius, v.A1, v.A2};
        for (double x : row) *p++ = x;
    }
    return std::move(out);
}

CDblPointArray Polygon(const Doubles& poly) {
    const double* v = Xy(poly, "polygon");
    if (poly.shape(0) < 3) throw py::value_error("polygon needs at least 3 vertices");
    CDblPointArray a;
    for (py::ssize_t k = 0; k < poly.shape(0); ++k) {
        if (!std::isfinite(v[2 * k]) || !std::isfinite(v[2 * k + 1]))
            throw py::value_error("polygon vertices must be finite");
        a.Add(v[2 * k], v[2 * k + 1]);
    }
    return a;
}

py::array_t<int> Locate(const CPreparedPolygon& prepared, const Doubles& xy) {
    const double* p = Xy(xy, "points");
    const py::ssize_t n = xy.shape(0);
    py::array_t<int> out(n);
    int* o = out.mutable_data();
    {
        py::gil_scoped_release release;
        for (py::ssize_t k = 0; k < n; ++k) o[k] = prepared.Locate(CDblPoint(p[2 * k], p[2 * k + 1]));
    }
    return out;
}

// Paths as (n, 2) arrays of vertices or (n, 3) with each vertex's bulge (tan(sweep / 4) of the arc to the next).
template <class Path>
Path PathFromRows(const Doubles& rows, const char* what) {
    if (rows.ndim() != 2 || (rows.shape(1) != 2 && rows.shape(1) != 3))
        throw py::value_error(std::string(what) + " must be an array of shape (n, 2) or (n, 3): x, y[, bulge]");
    Path path;
    const py::ssize_t columns = rows.shape(1);
    for (py::ssize_t k = 0; k < rows.shape(0); ++k) {
        const double* r = rows.data(k, 0);
        const double bulge = columns == 3 ? r[2] : 0.0;
        if (!std::isfinite(r[0]) || !std::isfinite(r[1]) || !std::isfinite(bulge))
            throw py::value_error(std::string(what) + " vertices must be finite");
        path.AddVertex(CDblPoint(r[0], r[1]), bulge);
    }
    return path;
}

py::list PolygonRows(const CPolygon2Array& polygons) {
    py::list out;
    for (const CPolygon2& p : polygons) {
        py::array_t<double> rows({static_cast<py::ssize_t>(p.GetSize()), py::ssize_t(3)});
        double* r = rows.mutable_data();
        for (int i = 0; i < p.GetSize(); ++i, r += 3) {
            r[0] = p.GetVertex(i).x;
            r[1] = p.GetVertex(i).y;
            r[2] = p.GetBulge(i);
        }
        out.append(rows);
    }
    return out;
}

OffsetJoin JoinByName(const std::string& name) {
    if (name == "round") return OFFSET_JOIN_ROUND;
    if (name == "miter" || name == "mitre") return OFFSET_JOIN_MITER;
    if (name == "square") return OFFSET_JOIN_SQUARE;
    throw py::value_error("join must be 'round', 'miter' or 'square'");
}

OffsetCap CapByName(const std::string& name) {
    if (name == "round") return OFFSET_CAP_ROUND;
    if (name == "butt") return OFFSET_CAP_BUTT;
    if (name == "square") return OFFSET_CAP_SQUARE;
    throw py::value_error("cap must be 'round', 'butt' or 'square'");
}

}  // namespace

PYBIND11_MODULE(_orvmath, m) {
    m.doc() = "Routes (chainage and offset), point-in-polygon and polygon offsets of the ORV_MathTool geometry library.";

    py::class_<CRoute2>(m, "Route", "A road or rail alignment of straights, arcs and clothoid transitions.")
        .def(py::init(&RouteFromPoints), py::arg("points"), py::arg("start_mile") = 0.0, py::arg("offset") = 0.0,
             "Route from an (n, 7) array of critical points, columns type (0 line, 1 arc, 2 transition), x, y, "
             "angle (radians), radius (-1 infinite), spiral_a, end_radius. ValueError for a bad shape, type or "
             "non-finite value.")
        .def_static(
            "from_csv",
            [](const std::string& path) {
                try {
                    const orvroute::RouteFile f = orvroute::ReadRouteCsv(path);
                    return f.Route();
                } catch (const orvroute::RouteCsvError& e) {
                    throw py::value_error(e.what());
                }
            },
            py::arg("path"), "Route from an orvroute CSV file; ValueError naming the line at fault.")
        .def_static("from_elements", &RouteFromElements, py::arg("x"), py::arg("y"), py::arg("angle"),
                    py::arg("elements"), py::arg("start_mile") = 0.0,
                    "Route laid out from a start point and direction (radians) through an (n, 5) array of elements: "
                    "type (0 line, 1 arc, 2 transition), length, radius, start_radius, spiral_a, radii signed "
                    "(positive turning left, 0 infinite); a transition runs from start_radius to radius and takes "
                    "spiral_a when positive, else its length. Exact clothoids (exact_clothoids is True). ValueError "
                    "naming the first element that cannot be laid out.")
        .def_static("from_pi", &RouteFromPI, py::arg("vertices"), py::arg("start_mile") = 0.0,
                    "Route of a tangent polygon: an (n, 5) array of vertices x, y, radius, a1, a2 (the curve at each "
                    "interior vertex: its radius and the clothoid parameters in and out, 0 for none; unused at the "
                    "ends). Exact clothoids. ValueError naming the first vertex whose curve cannot be placed.")
        .def("elements", &ElementRows, "The route's elements as the (n, 5) array from_elements takes.")
        .def("pi", &PIRows,
             "The route's tangent polygon as the (n, 5) array from_pi takes, or None when the route is not in that "
             "form (a clothoid between two radii, say).")
        .def_static("from_bytes", &RouteFromBytes, py::arg("data"),
                    "Route from its archive record (bytes); ValueError when the bytes are not exactly one record.")
        .def("to_bytes", &RouteToBytes, "The route's archive record, the same bytes on every platform.")
        .def_property_readonly("start_mile", &CRoute2::GetStartMile)
        .def_property_readonly("end_mile", &CRoute2::GetEndMile)
        .def_property_readonly("offset", &CRoute2::GetOffset)
        .def_property_readonly("length", &CRoute2::GetLength, "Length along the (offset) route.")
        .def_property_readonly("critical_points", &CriticalPoints, "The (n, 7) array of critical points.")
        .def_property(
            "exact_clothoids", [](const CRoute2& r) { return r.GetClothoidMode() == CLOTHOID_EXACT; },
            [](CRoute2& r, bool exact) { r.SetClothoidMode(exact ? CLOTHOID_EXACT : CLOTHOID_SERIES); },
            "False (the default): transitions by the three-term series, as stored routes always evaluated; True: by "
            "the clothoid itself (Fresnel integrals). Changes positions on transitions only.")
        .def("point", &Points, py::arg("miles"), py::arg("offsets") = py::none(),
             "Points and tangent directions at many miles: returns (xy of shape (n, 2), angles of shape (n,)). "
             "offsets is a number or an array as long as miles (left positive). A mile off the route gives NaN "
             "coordinates and a NaN angle.")
        .def(
            "locate",
            [](const CRoute2& route, const Doubles& xy) {
                const double* p = Xy(xy, "xy");
                const py::ssize_t n = xy.shape(0);
                py::array_t<double> miles(n), offsets(n);
                double* m = miles.mutable_data();
                double* o = offsets.mutable_data();
                {
                    py::gil_scoped_release release;
                    std::vector<CDblPoint> pts(static_cast<std::size_t>(n));
                    for (py::ssize_t k = 0; k < n; ++k)
                        pts[static_cast<std::size_t>(k)] = CDblPoint(p[2 * k], p[2 * k + 1]);
                    route.LocateNearest(pts.data(), n, m, o);
                }
                return py::make_tuple(miles, offsets);
            },
            py::arg("xy"),
            "The nearest foot of each of an (n, 2) array of points: (miles, offsets), each of shape (n,), such that "
            "point(miles, offsets) gives the points back; NaN where a point has no foot (beyond the ends).")
        .def(
            "feet",
            [](const CRoute2& route, double x, double y) {
                CArray<CRouteFoot> feet;
                route.Locate(CDblPoint(x, y), feet);
                py::list out;
                for (const CRouteFoot& f : feet) out.append(py::make_tuple(f.mile, f.offset));
                return out;
            },
            py::arg("x"), py::arg("y"), "Every foot of the point (x, y): a list of (mile, offset), nearest first.")
        .def("__repr__", [](const CRoute2& r) {
            std::ostringstream s;
            s << "Route(" << r.GetCriticalPoints().GetSize() << " points, miles " << r.GetStartMile() << " to "
              << r.GetEndMile() << ", offset " << r.GetOffset() << ")";
            return s.str();
        });

    py::class_<CPreparedPolygon>(m, "PreparedPolygon", "A polygon indexed once for many point queries.")
        .def(py::init([](const Doubles& poly, double tolerance) { return CPreparedPolygon(Polygon(poly), tolerance); }),
             py::arg("polygon"), py::arg("tolerance") = 0.0,
             "From an (n, 2) array of vertices (closing edge implied); tolerance: the distance that counts as on the "
             "boundary.")
        .def("locate", &Locate, py::arg("xy"),
             "For an (n, 2) array of points: 0 outside, 1 inside (nonzero winding), 2 on the boundary.");
    m.def(
        "polygon_offset",
        [](const Doubles& polygon, double distance, const std::string& join, double miterLimit) {
            if (!std::isfinite(distance)) throw py::value_error("distance must be finite");
            CPolygon2Array out;
            PolygonOffset(PathFromRows<CPolygon2>(polygon, "polygon"), distance, out, JoinByName(join), miterLimit);
            return PolygonRows(out);
        },
        py::arg("polygon"), py::arg("distance"), py::arg("join") = "round", py::arg("miter_limit") = 2.0,
        "The polygon (an (n, 2) array, or (n, 3) with bulges) grown by distance (negative: shrunk), arcs kept as "
        "arcs: a list of (m, 3) arrays x, y, bulge, outer boundaries counter-clockwise and holes clockwise; empty "
        "when it vanishes. join is 'round', 'miter' (cut at miter_limit * |distance|) or 'square'.");
    m.def(
        "polyline_buffer",
        [](const Doubles& line, double distance, const std::string& join, double miterLimit, const std::string& cap) {
            if (!std::isfinite(distance)) throw py::value_error("distance must be finite");
            CPolygon2Array out;
            PolygonOffset(PathFromRows<CPolyline2>(line, "polyline"), distance, out, JoinByName(join), miterLimit,
                          CapByName(cap));
            return PolygonRows(out);
        },
        py::arg("line"), py::arg("distance"), py::arg("join") = "round", py::arg("miter_limit") = 2.0,
        py::arg("cap") = "round",
        "Every point within |distance| of the polyline, as polygon_offset returns it; cap is 'round', 'butt' or "
        "'square'.");
    m.def(
        "polygon_contains",
        [](const Doubles& poly, const Doubles& xy) {
            const CPreparedPolygon prepared(Polygon(poly));
            py::array_t<int> where = Locate(prepared, xy);
            py::array_t<bool> out(where.shape(0));
            for (py::ssize_t k = 0; k < where.shape(0); ++k) out.mutable_at(k) = where.at(k) == POLYGON_INSIDE;
            return out;
        },
        py::arg("polygon"), py::arg("xy"),
        "True for each point strictly inside the polygon (nonzero winding); points on the boundary are not contained.");
}
