// Route alignment: the centre line of a road or track as a chain of straights,
// circular arcs and clothoid transitions, addressed by mile (chainage) and
// lateral offset.
//
// A route is given by critical points, one where each element begins plus one
// at the end of the last element. Its chainage starts at a start mile and runs
// along the base alignment; a route may be shifted sideways as a whole by a
// constant offset (positive to the left of the direction of travel), and its
// lengths are then measured on the shifted line. Angles are radians,
// counter-clockwise from the x axis; an infinite radius is written -1.0.
#pragma once

#include <orvmath/arc2.h>
#include <orvmath/containers.h>
#include <orvmath/export.h>
#include <orvmath/host/array.h>
#include <orvmath/point2.h>
#include <orvmath/selfcopy.h>

#include <cstdint>
#include <vector>

namespace ORVMATH {

// Fixed tolerances of the route code (absolute, in metres unless said otherwise).
constexpr double kRouteMileBoundaryTol = 1e-6;  // a mile this close to an element's end lies on the boundary
constexpr double kRouteArcSideTol = 0.001;      // the next point within this of an arc's tangent: measure the chord
constexpr double kRouteAheadTol = 0.01;         // a transition's next point must be ahead of its start by more than this
constexpr double kRouteMileSnapTol = 0.01;      // a mile this close to the start or end mile snaps to that end
constexpr double kRouteStartMileTol = 0.01;     // route equality: the start miles may differ by less than this
constexpr double kRouteArcFitTol = 0.001;       // an arc element's end may lie this far off the circle of its radius
constexpr double kRoutePointMatchTol = 1.0;     // critical point equality: positions may differ this much per axis

// How a route evaluates its clothoid transitions.
enum ClothoidMode : std::int32_t {
    // Three terms of the clothoid's series (GetStandardPoint): how stored
    // routes have always evaluated, and the default.
    CLOTHOID_SERIES = 0,
    // The clothoid itself (the Fresnel integrals, GetStandardPointExact).
    CLOTHOID_EXACT = 1,
};

// Kind of the element that begins at a critical point.
enum SegmentType : std::int32_t {
    SEGMENT_NONE = -1,       // returned where no element applies
    SEGMENT_LINE = 0,        // straight line to the next point
    SEGMENT_ARC = 1,         // circular arc of constant radius to the next point
    SEGMENT_TRANSITION = 2,  // clothoid between two radii
};

// A vertex of a route: the start of an element (or the end of the last one).
// The layout is fixed (stored as a raw 56-byte block): type, 4 bytes of fill,
// then the six doubles.
struct CCriticalPoint {
    SegmentType type;  // kind of the element that begins here
    CDblPoint pt;      // world position
    double angle;      // tangent direction, radians
    double radius;     // radius of curvature here; -1.0 = infinite
    double spiralA;    // clothoid parameter A of a transition (A^2 = radius * length)
    double endRadius;  // radius at a transition's far end; 0.0 = the next point's radius; -1.0 = infinite

    // pt becomes (0, 0) and endRadius 0.0; type, angle, radius and spiralA are
    // deliberately left unset (callers fill them; kept so that large arrays are
    // cheap to size).
    CCriticalPoint() noexcept : endRadius(0.0) {}
    CCriticalPoint(SegmentType type_, const CDblPoint& pt_, double angle_, double radius_, double spiralA_ = 0.0,
                   double endRadius_ = 0.0) noexcept
        : type(type_), pt(pt_), angle(angle_), radius(radius_), spiralA(spiralA_), endRadius(endRadius_) {}
};

// Equal when the types match and: a negative type or one above 2 compares
// nothing else; a transition needs spiralA and endRadius equal (IsDoubleEqual);
// then angle and radius equal (IsDoubleEqual) and the positions equal within
// kRoutePointMatchTol per axis.
ORVMATH_API bool operator==(const CCriticalPoint& a, const CCriticalPoint& b);
inline bool operator!=(const CCriticalPoint& a, const CCriticalPoint& b) { return !(a == b); }

// Archive block of a critical point: type as a 32-bit integer, 4 fill bytes
// (zeros when stored, ignored when loaded), then pt.x, pt.y, angle, radius,
// spiralA and endRadius as doubles. The earlier layout stops before endRadius.
constexpr unsigned kCriticalPointBlockBytes = 56;
constexpr unsigned kCriticalPointEarlierBlockBytes = 48;

}  // namespace ORVMATH

// Critical points go to the archive as 56-byte blocks encoded field by field,
// so the stream is the same whatever the host's struct layout or byte order.
template <>
ORVMATH_API void SerializeElements<ORVMATH::CCriticalPoint>(CArchive& ar, ORVMATH::CCriticalPoint* p, INT_PTR n);

namespace ORVMATH {

using CCriticalPointArray = CArray<CCriticalPoint, const CCriticalPoint&>;

// A foot of the perpendicular from a point on a route (CRoute2::Locate).
struct CRouteFoot {
    double mile = 0.0;    // where the foot lies
    double offset = 0.0;  // signed distance of the point from the foot, left positive
    int element = -1;     // the element holding the foot
};

// An element given by its design parameters (BuildRouteFromElements,
// GetRouteElements). Radii here carry the side of the turn in their sign,
// positive turning left, so infinity is written 0.0 (not -1.0 as in
// critical points).
struct CRouteElement {
    SegmentType type = SEGMENT_LINE;
    double length = 0.0;       // along the element; a transition may give spiralA instead (length 0.0)
    double radius = 0.0;       // SEGMENT_ARC: its radius; SEGMENT_TRANSITION: the radius at its end
    double startRadius = 0.0;  // SEGMENT_TRANSITION: the radius at its start
    double spiralA = 0.0;      // SEGMENT_TRANSITION: A (A^2 = length / |1/radius - 1/startRadius|)
};
using CRouteElementArray = CArray<CRouteElement, const CRouteElement&>;

// A vertex of the tangent polygon (BuildRouteFromPI,
// CRoute2::GetStandardIntersection): the point where two straights meet, with
// the curve that joins them there: an arc of `radius` (positive; the side
// follows from the polygon) entered and left by clothoids of parameter A1
// and A2 (0.0: none). The first and last vertices are the route's ends;
// their curve fields are not used.
struct CRoutePI {
    CDblPoint pt;
    double radius = 0.0;
    double A1 = 0.0, A2 = 0.0;
};
using CRoutePIArray = CArray<CRoutePI, const CRoutePI&>;

namespace detail {

// What evaluating an element needs that does not depend on the mile, so
// a query costs the lookup plus the element's own formula. Built for
// every element whenever the points change (CRoute2::RebuildMileIndex).
// Internal to the route: not part of the interface.
struct RouteElementGeometry {
    enum Kind : std::int32_t { Other, Line, Arc, ArcThrough, Chord, Transition, TransitionAtEnd } kind = Other;
    CLine2 chord;          // Line, Chord: the segment p1 -> p2
    CDblSize tangent;      // Line, Chord: the unit vector of the element's direction
    double length = 0.0;   // Line, Chord: its length; Arc, ArcThrough: the arc's
    CArc2 arc;             // Arc, ArcThrough
    double angle0 = 0.0;   // Arc: start angle brought into (-pi, pi]; ArcThrough: p1's angle
    double turn = 0.0;     // Arc: +-pi/2 from radial to tangent; ArcThrough: the turn p1 -> p2
    CDblPoint origin;      // Transition: the clothoid's standard frame in the world
    double frameAngle = 0.0, frameCos = 1.0, frameSin = 0.0;
    bool keepSide = true, fromCurve = false, turnsRight = false;
    double A = 0.0, l1 = 0.0;  // Transition: the parameter and the arc length at p1
    double series[6] = {};     // Transition: the denominators of the clothoid series for A
    bool exact = false;        // Transition: the clothoid itself rather than its series
};

}  // namespace detail

class ORVMATH_API CRoute2 {
public:
    // ---- model -------------------------------------------------------------

    // The null route: no points, offset 0.0, start mile 0.0, end mile -1.0.
    CRoute2();
    // As Set.
    CRoute2(const CCriticalPointArray& points, double startMile, double offset);
    // Copies keep the tables as they are (no recomputation).
    CRoute2(const CRoute2&) = default;
    CRoute2& operator=(const CRoute2&) = default;

    // Stores the start mile and offset, copies the points, brings every angle
    // into (-pi, pi] and rebuilds the length tables. An empty array gives a
    // null route whose end mile equals its start mile.
    void Set(const CCriticalPointArray& points, double startMile, double offset);
    // Back to the state of the default constructor.
    void SetNull();
    bool IsNull() const { return m_CriticalPoints.GetSize() == 0; }

    const CCriticalPointArray& GetCriticalPoints() const { return m_CriticalPoints; }
    double GetStartMile() const { return m_dStartMile; }
    double GetEndMile() const { return m_dEndMile; }
    // The chainage spanned: end mile minus start mile.
    double GetMile() const { return m_dEndMile - m_dStartMile; }
    double GetOffset() const { return m_dOffset; }
    // Length along the offset route: the sum of the length table (0.0 when empty).
    double GetLength() const;
    // Entry i of the mile table (chainage of element i) and of the length table
    // (its length on the offset route). The array checks i.
    double GetSegMile(int i) const { return m_SegMiles[i]; }
    double GetSegLength(int i) const { return m_SegLens[i]; }

    // Lengths of the element p1 -> p2: segMile along the base line, segLength
    // along the line offset by `offset`. A straight has its chord length both
    // ways; an arc measures radius x sweep from the two tangent angles (a sweep
    // of 0 counts as a full turn; a next point within kRouteArcSideTol of the
    // tangent gives the chord); a transition measures |L2 - L1| between the
    // radii at its ends, 0 when the next point is not ahead of p1. A positive
    // offset shortens an element that turns left. Other types leave both
    // outputs untouched.
    static void GetSegLength(const CCriticalPoint& p1, const CCriticalPoint& p2, double offset, double& segMile,
                             double& segLength);

    // ---- evaluation --------------------------------------------------------

    // The critical point at `mile` on the base alignment: position, tangent
    // direction, radius of curvature (transitions) and element type. A mile
    // within kRouteMileSnapTol of the start or end mile returns the first or
    // last stored point exactly. Returns the element index, or -1 (null route,
    // mile outside the chainage; cp is then untouched).
    int GetCriticalPoint(double mile, CCriticalPoint& cp) const;
    // Point at `mile`, shifted sideways by the route's offset plus `offset`
    // (positive to the left); (0, 0) when the mile is not on the route.
    CDblPoint GetPoint(double mile, double offset) const;
    // GetPoint for many miles at once, with the same answers as calling it
    // one mile at a time: points[k] = GetPoint(miles[k], offsets[k]) and
    // angles[k] the tangent direction there (GetCriticalPoint's angle), or
    // (0, 0) and NaN for a mile off the route. Increasing miles are walked
    // along the elements (O(count + elements)); any order works, a jump costs
    // one search. `offsets` may be null (0 for every mile) and so may
    // `angles` (not wanted); the output blocks hold `count` values each.
    void GetPoints(const double* miles, const double* offsets, INT_PTR count, CDblPoint* points,
                   double* angles) const;
    // The same on arrays: `points` and `angles` are emptied, then get one
    // value per mile. With `offsets` shorter than `miles` (the arrays' rule
    // for mismatched sizes) both outputs stay empty.
    void GetPoints(const CDblArray& miles, const CDblArray& offsets, CDblPointArray& points, CDblArray& angles) const;
    void GetPoints(const CDblArray& miles, double offset, CDblPointArray& points, CDblArray& angles) const;
    // Point at `mile` on the base alignment (the route's offset ignored).
    CDblPoint GetPointOnBase(double mile) const;
    // Base point at the fraction t in [0, 1] of the chainage; (0, 0) outside.
    CDblPoint GetProportionalPoint(double t) const;
    // GetPoint at the start and end mile with no extra offset: unlike
    // GetProportionalPoint(0) and GetPointOnBase, these include the route's
    // offset (kept: callers depend on the difference).
    CDblPoint GetStartPoint() const { return GetPoint(m_dStartMile, 0.0); }
    CDblPoint GetEndPoint() const { return GetPoint(m_dEndMile, 0.0); }

    // Type of the element at `mile`; at a boundary B gives the element that
    // ends there and E the one that begins there; SEGMENT_NONE off the route.
    SegmentType GetSegmentTypeB(double mile) const;
    SegmentType GetSegmentTypeE(double mile) const;
    void GetSegmentType(double mile, SegmentType& b, SegmentType& e) const;

    // ---- inverse lookup ----------------------------------------------------

    // Every foot of the perpendicular from `p` on the base alignment: the
    // miles where p - (point at the mile) is square to the tangent there, each
    // with the offset that takes GetPoint back to p (GetPoint(foot.mile,
    // foot.offset) == p within 1e-9 m; the route's own offset is not part of
    // it). `feet` is emptied, then filled nearest first (by |offset|, then by
    // mile); the count is returned. Straights and arcs are solved in closed
    // form (an arc gives its near and its far foot), transitions by a
    // bracketed search to 1e-12 of the element's length. A foot on an element
    // boundary is reported once. A point whose perpendiculars all miss the
    // route (beyond an end) has no foot: 0. The centre of an arc, which every
    // point of the arc faces, gives no foot on that arc.
    int Locate(const CDblPoint& p, CArray<CRouteFoot>& feet) const;
    // The nearest foot of each point, for many points: miles[k] and offsets[k]
    // (NaN and NaN when the point has none). The output blocks hold `count` values.
    void LocateNearest(const CDblPoint* points, INT_PTR count, double* miles, double* offsets) const;

    // The clothoid's standard frame: origin at its point of zero curvature, x
    // along the tangent there into the curve, y toward the side it turns to.
    // Point at arc length l (three terms of the series), moved `offset` to the
    // left of the tangent when offset is not 0.
    static CDblPoint GetStandardPoint(double A, double l, double offset);
    // Tangent angle at arc length l: l^2 / (2 A^2).
    static double GetStandardTangetAngle(double A, double l);
    // Standard frame to world: y negated unless keepSide, then turned by
    // `angle` and moved to `origin`. World2Standard undoes it.
    static CDblPoint Standard2World(const CDblPoint& origin, double angle, bool keepSide, const CDblPoint& p);
    static CDblPoint World2Standard(const CDblPoint& origin, double angle, bool keepSide, const CDblPoint& p);
    // The same with keepSide = (sidePoint lies strictly left of the x axis).
    static CDblPoint Standard2World(const CDblPoint& origin, double angle, const CDblPoint& sidePoint,
                                    const CDblPoint& p);
    static CDblPoint World2Standard(const CDblPoint& origin, double angle, const CDblPoint& sidePoint,
                                    const CDblPoint& p);
    // The same point of the clothoid itself, from the Fresnel integrals
    // x = int_0^l cos(u^2 / (2 A^2)) du and y = int_0^l sin(...) du by their
    // power series: within 1e-9 m for deflections l^2 / (2 A^2) up to pi/2
    // at any ordinary scale (the series above is 0.57 mm off at 0.1 rad on
    // A = 250 and 7 cm at 1 rad). A deflection beyond 8 rad gives NaN.
    static CDblPoint GetStandardPointExact(double A, double l, double offset);
    // Standard-frame origin of the transition p1 -> p2 (origin.pt and
    // origin.angle give the frame; origin.spiralA is A), whether it runs out
    // of a curve toward the larger radius (fromCurve), and which way the
    // frame's y axis is mirrored (turnsRight, seen from the larger radius).
    static void GetTransitionStartPoint(const CCriticalPoint& p1, const CCriticalPoint& p2, CCriticalPoint& origin,
                                        bool& fromCurve, bool& turnsRight, ClothoidMode mode = CLOTHOID_SERIES);

    // How this route evaluates its transitions (CLOTHOID_SERIES unless set).
    // The mode changes the positions on transitions and their frames, and
    // nothing else: not the length tables, the miles, the angles or radii
    // along a transition, nor the archive record (which does not hold the
    // mode: a loaded route keeps the mode of the object it was loaded into).
    // Copies take the mode along.
    void SetClothoidMode(ClothoidMode mode);
    ClothoidMode GetClothoidMode() const { return m_ClothoidMode; }

    // The arc of element p1 -> p2. First construction: from p1's position,
    // tangent direction and radius, turning to the side of p2, ending where
    // the circle meets p2; null when p1's radius is not positive, p2 lies on
    // the tangent, or p2 is off that circle by more than kRouteArcFitTol.
    static CArc2 ArcFromTangentRadius(const CCriticalPoint& p1, const CCriticalPoint& p2);
    // Fall-back: the arc that leaves p1 along its tangent and passes through
    // p2 (its radius follows from the chord); null when p2 lies on the tangent.
    static CArc2 ArcFromTangentThrough(const CCriticalPoint& p1, const CCriticalPoint& p2);

    // ---- design form -------------------------------------------------------

    // The route in tangent-polygon form, the inverse of BuildRouteFromPI:
    // the route's start, one vertex per curve where the tangents of the
    // straights on either side meet (with the curve's radius and its
    // clothoid parameters), and the route's end. `pis` is emptied first. True
    // when the route is in that form: curves between points of zero
    // curvature (straights, which may be missing, as between reverse or
    // compound curves), each an arc, a clothoid from zero curvature into an
    // arc or back, or both, with one radius; otherwise (a clothoid between
    // two radii, or one whose radius is not its arc's, a null route) false
    // and `pis` empty.
    bool GetStandardIntersection(CRoutePIArray& pis) const;

    // ---- transforms --------------------------------------------------------

    // Adds d to the route's offset and rebuilds the tables.
    void SelfOffset(double d);
    void Offset(double d, CRoute2& out) const { out = Offset(d); }
    // Moves every point; the tables stay valid.
    void SelfTranslate(double dx, double dy);
    // Turns every point about center and every tangent by angle; the tables stay valid.
    void SelfRotate(const CDblPoint& center, double angle);
    void Rotate(const CDblPoint& center, double angle, CRoute2& out) const { out = Rotate(center, angle); }
    // Mirrors in the line through p1 and p2 and negates the offset; the tables
    // stay valid (every turn is reversed, and so is the side of the offset).
    void SelfMirror(const CDblPoint& p1, const CDblPoint& p2);
    // Scales about center: positions, radii (not -1.0), spiral parameters, the
    // offset, the chainage and both tables. The start mile is kept, and so is
    // every endRadius (kept: stored routes depend on it).
    void SelfScale(const CDblPoint& center, double factor);

    // Copying forms: Offset(d), Translate(dx, dy), Rotate(c, a), Mirror(p1, p2), Scale(c, f).
    ORVMATH_COPYING_FORM(CRoute2, Offset)
    ORVMATH_COPYING_FORM(CRoute2, Translate)
    ORVMATH_COPYING_FORM(CRoute2, Rotate)
    ORVMATH_COPYING_FORM(CRoute2, Mirror)
    ORVMATH_COPYING_FORM(CRoute2, Scale)

    // ---- archive -----------------------------------------------------------

    // Stores or loads the route record (see operator<<).
    void Serialize(CArchive& ar);
    // Loads a route record of the earlier layout, whose critical point blocks
    // are 48 bytes long (no endRadius). Each point's endRadius keeps the
    // value it held: 0.0 for the points the load adds. There is no way to
    // store that layout.
    void LoadDataWithoutEndRadius(CArchive& ar);
    // Archive record: start mile, end mile and offset as doubles; the critical
    // points (a count, then one 56-byte block each); the mile table and the
    // length table (each a count, then the doubles). Loading takes the tables
    // as stored, without recomputing them. A load that fails part way leaves
    // a route that may be partly loaded but can be used, copied and loaded
    // again.
    friend ORVMATH_API CArchive& operator<<(CArchive& ar, CRoute2& route);
    friend ORVMATH_API CArchive& operator>>(CArchive& ar, CRoute2& route);

    // ---- editing -----------------------------------------------------------

    // Trims keep the part of the route between two miles. The kept part
    // keeps the start mile of its first point (miles do not shift), the
    // route's offset (the cut is made on the base alignment, so the kept
    // part stays shifted by the same offset and its lengths are measured on
    // that offset line again) and the clothoid mode. A mile within
    // kRouteMileBoundaryTol of an element's end cuts at that end, so no
    // sliver element appears. A cut inside an element inserts the critical
    // point the route evaluates there (GetCriticalPoint: position, tangent,
    // the radius there for a transition, the element's type, spiralA and
    // endRadius), in the route's current clothoid mode. Every mile of the
    // kept part then gives the original's point within 1e-9 m, except:
    //  - within kRouteMileSnapTol of a new end, where every route answers
    //    with its end point;
    //  - a piece of a transition between two finite radii has its frame
    //    fitted to its two end positions (GetTransitionStartPoint), so it is
    //    exact when both ends lie on the clothoid as the route evaluates it.
    //    That always holds for the cut point and for the end that carries
    //    the original's frame (its straight end, or its first point when both
    //    radii are finite). The other stored end (the arc end of a spiral
    //    out of a straight, say) counts only when it was stored on the
    //    clothoid of the route's mode; a piece kept against a stored end off
    //    it by e is off by about e. Nothing in the model can carry the
    //    original frame across instead: a finite-radius piece has no other;
    //  - a transition piece too short for the model (its end not ahead of its
    //    start by more than kRouteAheadTol) is kept as a straight, which lies
    //    inside the end snap and keeps the chainage to 1e-6 / (24 R^2) m;
    //  - an arc piece whose end lies within kRouteArcSideTol of its start
    //    tangent (shorter than about sqrt(0.002 R)) is measured by its chord
    //    (GetSegLength), so the chainage after it shifts by up to 4e-6/sqrt(R)
    //    m; the positions along that piece are kept;
    //  - elements whose stored fields disagree with their geometry (an arc
    //    whose radius does not fit, evaluated through the fall-back arc or
    //    as a chord) are cut at the point evaluated, without the guarantee.
    // Each trim returns false and leaves the route unchanged when nothing
    // would remain (a null route, a mile off the route, an empty span).
    //
    // Drops what lies before `mile`.
    bool TrimStart(double mile);
    // Drops what lies after `mile`.
    bool TrimEnd(double mile);
    // Keeps what lies between the two miles (in either order).
    bool Trim2Side(double mile1, double mile2);
    // Removes what lies between the two miles (in either order): `before`
    // gets the part from the start mile to the smaller, `after` the part from
    // the larger to the end mile, each cut as by Trim2Side; a part that
    // would be empty is null. This route is unchanged (it may be one of the
    // outputs).
    void TrimMiddle(double mile1, double mile2, CRoute2& before, CRoute2& after) const;
    // Lengthens the route by lengthStart (chainage) before its start and
    // lengthEnd after its end; a negative length counts as 0. An end element
    // that is a straight or an arc continues itself: the end point moves
    // along the straight's chord, or along the arc's circle while the arc
    // stays below three quarters of a turn (nearer a full turn the model
    // would measure it by its chord). Any other end (a transition, an arc
    // that would pass that, an arc stored with a radius that does not fit)
    // gets a new straight along the end tangent, with an infinite radius at
    // the new point and at the old end (a transition ending there then keeps
    // its far radius in endRadius). The start mile decreases by lengthStart, so
    // miles on the old part do not shift, and their points are unchanged.
    // False (unchanged) on a null route or one without elements.
    bool Extend2Ends(double lengthStart, double lengthEnd);

    // A place where the route crosses a line.
    struct Crossing {
        double mile = 0.0;  // where it lies on the route
        CDblPoint pt;       // the point of the route there
        int element = -1;   // the element holding it
    };
    // Every crossing of the route, shifted by its offset plus `offset`, with
    // `line`: the segment itself, or its infinite line when `infinite`.
    // `crossings` is emptied, then filled in the order of the route; the
    // count is returned. Straights and arcs are solved in closed form,
    // transitions and fall-back arcs by bracketing the sign changes of the
    // distance to the line between the points where the tangent is parallel
    // to it, then bisection; each point lies within 1e-9 m of the line. A
    // touch (tangency) counts once, as does a crossing on an element boundary.
    // A straight lying along the line gives no crossing. A segment's end
    // counts within 1e-9 m. The point is the element's own, also within
    // kRouteMileSnapTol of the route's ends (where GetPoint snaps). Beyond a
    // transition's radius of curvature its offset turns back on itself, the
    // distance is no longer monotone between those points, and two crossings
    // close together there can be missed.
    int IntersectionWithLine(const CLine2& line, bool infinite, CArray<Crossing>& crossings, double offset = 0.0) const;

    // A piece of a route drawn as a straight or an arc.
    struct Piece {
        bool isArc = false;
        CLine2 line;                            // when !isArc
        CArc2 arc;                              // when isArc
        double startMile = 0.0, endMile = 0.0;  // the chainage it stands for
    };
    // The route, shifted by its offset plus `offset`, as straights and arcs in
    // order of travel (each running in the direction of travel): a straight
    // element gives one line, an arc element one arc, and a transition (or a
    // fall-back arc) arcs through three of its points, halved until each lies
    // within `tolerance` of the curve (checked at eight points inside; a
    // line where the arc would be flatter than the tolerance). Consecutive
    // pieces meet at the curve's own points, so they join wherever the route
    // is continuous. An arc (or a piece of a transition) whose offset passes
    // its centre runs backwards and gives no piece (GetOffsetCurve deals
    // with it). `pieces` is emptied; the count is returned. A tolerance that
    // is not positive is taken as 1e-3.
    int GetSegments(double tolerance, CArray<Piece>& pieces, double offset = 0.0) const;
    // The curve at offset d (added to the route's own) as GetSegments gives
    // it, with the loops cut out: where d exceeds a radius on the inside of a
    // curve the offset turns back on itself; the pieces that run backwards
    // are dropped and the pieces on either side are cut where they cross
    // (the crossing pair nearest the dropped run, up to 64 pieces each way),
    // so the result stays one chain; when no pair crosses, the gap stays.
    // `loops` (when given) is emptied and receives, per loop, the range of
    // miles (first, second) whose offset points were cut out, the miles of
    // the cuts interpolated along their pieces (exact on straights and
    // arcs). The count of pieces is returned.
    int GetOffsetCurve(double d, double tolerance, CArray<Piece>& pieces, CArray<CDblPair>* loops = nullptr) const;

    friend class RouteEditor;  // the editing code (route_edit.cpp)

    // ---- validation --------------------------------------------------------

    static constexpr double kValidateGapTol = 1e-3;    // metres: positions that differ by more do not meet
    static constexpr double kValidateAngleTol = 1e-5;  // radians: directions that differ by more do not match
    // What Validate can find. `size` says how large the problem is, in the unit given.
    enum ProblemKind : std::int32_t {
        PROBLEM_NO_CHAINAGE = 0,      // the route spans no chainage: fewer than two points, or every element is
                                      // 0 long (all points coincide); element -1, size = the largest distance
                                      // of a point from the first, metres
        PROBLEM_NOT_FINITE = 1,       // a field of the point is NaN or infinite; element = the point, size 0
        PROBLEM_UNKNOWN_TYPE = 2,     // the element's type is not line, arc or transition; size = the type value
        PROBLEM_BAD_RADIUS = 3,       // an arc's radius is not positive, or a radius is neither -1 nor positive;
                                      // size = the radius
        PROBLEM_BAD_SPIRAL = 4,       // a transition's A is not positive (size = A), or both its ends have the
                                      // same radius (size 0): it spans no chainage
        PROBLEM_ZERO_LENGTH = 5,      // the element spans no more than gapTol of chainage; size = it
        PROBLEM_BEHIND = 6,           // a transition's next point is not ahead of it by kRouteAheadTol (it is
                                      // made 0 long); size = how far the next point lies behind, along the
                                      // tangent, metres (negative when it lies less than that ahead)
        PROBLEM_HEADING = 7,          // a straight's heading differs from the direction to its next point;
                                      // size = the difference, radians
        PROBLEM_OFF_CIRCLE = 8,       // an arc's next point is off the circle of its radius; size = the
                                      // distance from that circle, metres
        PROBLEM_GAP = 9,              // the element's evaluated end misses the next point; size = metres
        PROBLEM_KINK = 10,            // the tangent where the element ends differs from the next point's
                                      // angle; size = radians
        PROBLEM_OFFSET_LOOP = 11,     // the route's offset lies inside a curve and is larger than its smallest
                                      // radius, so the offset line loops; size = |offset| - radius, metres
        PROBLEM_STALE_TABLE = 12,     // the stored mile table (as loaded) differs from the points' lengths;
                                      // size = the difference, metres; element -1 and size 0 when the
                                      // table has the wrong number of entries
    };
    // One problem: its kind, the element (the index of the critical point
    // where it begins; the point itself for PROBLEM_NOT_FINITE) and its size.
    struct Problem {
        ProblemKind kind;
        int element;
        double size;
    };
    // Checks the route without changing it: `problems` is emptied, then gets
    // one entry per problem found (the chainage and the table first, then
    // points that are not finite, then element by element); returns the count (0: nothing wrong). Positions are compared within
    // gapTol metres, directions within angleTol radians. Joins are checked
    // by evaluating each element's end as the route evaluates it (its
    // clothoid mode included); an element already reported for a problem
    // that makes its end meaningless (off its circle, behind, bad numbers) is
    // not checked for gaps as well.
    int Validate(CArray<Problem>& problems, double gapTol = kValidateGapTol,
                 double angleTol = kValidateAngleTol) const;
    // A short English description of a kind ("arc end off its circle", ...).
    static const char* ProblemName(ProblemKind kind);

private:
    // Loads the record with critical point blocks of `blockBytes` bytes.
    void Load(CArchive& ar, unsigned blockBytes);

    // Orientation of the transition p1 -> p2 (see GetTransitionStartPoint).
    static void GetBool(const CCriticalPoint& p1, const CCriticalPoint& p2, bool& fromCurve, bool& turnsRight);
    // Rebuilds both tables and the end mile from the points.
    void InitLens();
    // Rebuilds m_SegEnds and the mile buckets from m_SegMiles and the
    // evaluation data of every element from the points. Whatever writes the points or m_SegMiles
    // directly (InitLens, the transforms, a loader) must call it.
    void RebuildMileIndex();
    // Element at `mile`, -1 if none. At a boundary (within
    // kRouteMileBoundaryTol) the element that ends there, or with `upper` the
    // one that begins there (the last element for the end mile).
    int GetSegmentIndex(double mile, bool upper) const;
    int GetMinSegmentIndex(double mile) const { return GetSegmentIndex(mile, false); }
    int GetMaxSegmentIndex(double mile) const { return GetSegmentIndex(mile, true); }
    // First element i at which d - m[0] - ... - m[i] (subtracted in that order)
    // falls below `below`; -1 if none. `rest` receives that remainder.
    int WalkMiles(double d, double below, double& rest) const;
    // The same answer from m_SegEnds by binary search, when rounding cannot
    // change it (also for the test rest > above); false when it might.
    bool FindMile(double d, double below, double above, int& index, bool& overAbove, double& fromStart) const;
    SegmentType TypeAt(int index) const;
    // Element and distance into it for a mile d from the start mile, from
    // the mile index's buckets or else a search (the answer is FindMile's or
    // WalkMiles'); -1 when none. ElementNear tries its hint first.
    int SearchElement(double d, double& fromStart) const;
    // The critical point and unit tangent at distance s into element i
    // (0 <= i < number of points - 1).
    void EvaluateElement(int i, double s, CCriticalPoint& cp, CDblSize& tangent) const;
    // Where the mile lies, with a starting guess for the element: a mile
    // within kRouteMileSnapTol of the start (end) mile is the first (last)
    // critical point, given in `snapped`, and returns element 0 (the last);
    // otherwise `snapped` is -1 and s the distance into the returned element,
    // trying element `hint` and the next one before a search (the answer is
    // FindMile's or WalkMiles'). -1 for a null route or a mile off the route.
    int ElementNear(double mile, int hint, double& s, INT_PTR& snapped) const;
    // GetCriticalPoint with a starting guess for the element; also the unit
    // tangent (the direction of cp.angle) when `tangent` is given.
    int CriticalPointNear(double mile, int hint, CCriticalPoint& cp, CDblSize* tangent) const;


    CCriticalPointArray m_CriticalPoints;  // n points, n - 1 elements
    double m_dOffset;                      // lateral offset of the whole route
    double m_dStartMile;                   // mile at the first point
    double m_dEndMile;                     // start mile + sum of m_SegMiles; -1.0 when null
    CArray<double, double> m_SegMiles;     // per element: chainage on the base line
    CArray<double, double> m_SegLens;      // per element: length on the offset line
    CArray<double, double> m_SegEnds;      // running sums of m_SegMiles; empty when unusable for search
    std::vector<detail::RouteElementGeometry> m_Geometry;  // per element, from the points
    ClothoidMode m_ClothoidMode = CLOTHOID_SERIES;
    std::vector<int> m_MileBuckets;  // per bucket of m_BucketMiles chainage: the element where it begins
    double m_BucketMiles = 0.0;
};

// Equal when the start miles differ by less than kRouteStartMileTol, the
// offsets are equal (IsDoubleEqual) and the points are equal pairwise. The
// end mile and the tables are not compared.
ORVMATH_API bool operator==(const CRoute2& a, const CRoute2& b);
inline bool operator!=(const CRoute2& a, const CRoute2& b) { return !(a == b); }

}  // namespace ORVMATH
