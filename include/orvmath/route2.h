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
    // Element and distance into it for a mile d from the start mile, trying
    // element `hint` and the next one before a search (the answer is
    // FindMile's or WalkMiles'); -1 when none.
    int FindElement(double d, int hint, double& fromStart) const;
    // The critical point and unit tangent at distance s into element i
    // (0 <= i < number of points - 1).
    void EvaluateElement(int i, double s, CCriticalPoint& cp, CDblSize& tangent) const;
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
