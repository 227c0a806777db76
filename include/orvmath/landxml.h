// LandXML 1.2 horizontal alignments: reading CRoute2s from an `<Alignments>`
// block and writing them as one.
//
// An `<Alignment>` becomes a route: its staStart is the start mile, each
// element of its `<CoordGeom>` (Line, Curve, Spiral with spiType="clothoid")
// becomes the critical point where it begins, and the end of the last one
// the last point. Positions are read from the elements' coordinates (LandXML
// writes "northing easting"; a route's x is the easting), directions from
// their geometry (a Line's Start to End, a Curve's Center, a Spiral's PI),
// so the file's direction conventions do not matter. A Spiral keeps its two
// radii (endRadius is set, -1.0 for INF) and gets A = sqrt(length /
// |1/radiusStart - 1/radiusEnd|). Clothoids in LandXML are exact, so the
// routes read are set to CLOTHOID_EXACT.
//
// Nothing is dropped silently: every element or block that is not turned
// into route geometry (other spiral types, a vertical `<Profile>`, cant,
// superelevation, station equations) gets a message in `unsupported`; an
// unsupported horizontal element is replaced by a straight from its Start
// to its End, so that the route stays connected and its chainage runs on;
// an element whose Start is more than 1e-6 m from the End of the one before
// is reported too (the route keeps the Start).
//
// The library may be built without LandXML support (CMake option
// ORVMATH_WITH_LANDXML, on when pugixml is found); the functions then fail
// with a message saying so, and LandXmlSupported() is false.
#pragma once

#include <orvmath/export.h>
#include <orvmath/route2.h>

#include <string>
#include <vector>

namespace ORVMATH {

struct CLandXmlAlignment {
    std::string name;
    CRoute2 route;
};

// What reading a LandXML document gave.
struct CLandXmlRead {
    std::vector<CLandXmlAlignment> alignments;  // in document order
    std::vector<std::string> unsupported;       // one message per item read but not represented
    std::string error;                          // why nothing was read; empty on success
};

ORVMATH_API bool LandXmlSupported();

// Reads every `<Alignment>` of the document `text`. False (with `error` set
// and no alignments) when the text is not XML, has no `<Alignments>`, an
// element lacks coordinates it needs, or the linear unit is not metres.
ORVMATH_API bool ReadLandXml(const std::string& text, CLandXmlRead& result);

// A LandXML 1.2 document with one `<Alignment>` per entry: staStart, length,
// and a `<CoordGeom>` of Line, Curve and Spiral (clothoid) elements whose
// coordinates are the critical points written with 17 significant digits,
// so that reading it back gives the same points. Written from the base
// alignment: a route's own offset has no place in LandXML and is not
// written. Elements of unknown type are written as Lines. Empty text when
// LandXML support is not built in.
ORVMATH_API std::string WriteLandXml(const std::vector<CLandXmlAlignment>& alignments);

}  // namespace ORVMATH
