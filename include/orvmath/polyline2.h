// Polylines with straight and circular edges (and what polygons share with
// them: see polygon2.h for CPolygon2).
//
// A path is a list of vertices, each with a bulge for the edge that leaves
// it: 0 for a straight edge, otherwise tan(sweep / 4) of the circular arc to
// the next vertex, positive counter-clockwise (the bulge of CAD polylines:
// 1 is a half circle turning left, -1 one turning right). Arcs stay arcs
// through every edit, so offsets and fillets keep true curves.
// CPolyline2 is open (n vertices, n - 1 edges; the last bulge is kept but
// not used); CPolygon2 is closed (n edges, the last back to the first
// vertex, which is not repeated).
//
// Distances are decided under CDistanceEpsilon and coincident points under
// CDblPointEpsilon, as elsewhere in the library.
#pragma once

#include <orvmath/arc2.h>
#include <orvmath/containers.h>
#include <orvmath/export.h>
#include <orvmath/host/array.h>
#include <orvmath/line2.h>
#include <orvmath/rect.h>
#include <orvmath/selfcopy.h>

namespace ORVMATH {

// What the two path classes share: the vertices and bulges, the edges and
// the queries that do not depend on the path being closed beyond its edge
// count. Not used on its own.
class ORVMATH_API CPolyPath {
public:
    int GetSize() const { return static_cast<int>(m_Vertices.GetSize()); }
    bool IsEmpty() const { return GetSize() == 0; }
    bool IsClosed() const { return m_bClosed; }
    // Vertex and bulge i (the arrays check i).
    const CDblPoint& GetVertex(int i) const { return m_Vertices[i]; }
    double GetBulge(int i) const { return m_Bulges[i]; }
    const CDblPointArray& GetVertices() const { return m_Vertices; }
    void SetVertex(int i, const CDblPoint& p) { m_Vertices[i] = p; }
    void SetBulge(int i, double bulge) { m_Bulges[i] = bulge; }
    // Appends a vertex whose edge to the next vertex has `bulge`.
    void AddVertex(const CDblPoint& p, double bulge = 0.0);
    void RemoveVertex(int i);
    void RemoveAll();

    // Edges: n - 1 when open, n when closed (0 below two vertices).
    int GetEdgeCount() const;
    // Edge i as a segment (bulge 0, or a chord too short to hold an arc) or
    // an arc: true for an arc, which goes to `arc` (`line` gets the chord).
    bool GetEdge(int i, CLine2& line, CArc2& arc) const;

    // Sum of the edge lengths (arcs along the arc).
    double Length() const;
    // The smallest rectangle holding every edge: an arc counts its ends and
    // the points where it crosses an axis direction through its centre.
    // left <= right, top <= bottom as y grows. An empty path gives the empty rectangle.
    CDblRect GetBoundRect() const;
    // The point of the path nearest to p, and the edge it lies on (the first
    // such edge on a tie; -1 and p itself for an empty path, the vertex for
    // a single one).
    CDblPoint NearestPoint(const CDblPoint& p, int* edge = nullptr) const;
    double Distance(const CDblPoint& p) const { return ORVMATH::Distance(NearestPoint(p), p); }

    // Clean-ups; each returns the number of vertices removed.
    // A vertex equal to the one before it (CDblPointEpsilon), and when
    // closed the last one equal to the first: the zero-length edge goes and
    // the kept vertex takes the bulge of the edge that leaves the removed one.
    int RemoveDuplicateVertices();
    // A vertex between two straight edges that lies within CDistanceEpsilon
    // of the line through its neighbours, between them (not a spike).
    int RemoveCollinearVertices();
    // Douglas-Peucker on each run of straight edges: keeps the vertices that
    // lie farther than `tolerance` from the simplified run, every vertex
    // where an arc begins or ends, the ends of an open path, and at least
    // three vertices of a closed one.
    int Simplify(double tolerance);

    // Archive record: the closed flag as a 32-bit integer (0 or 1), the
    // vertices (a CDblPointArray record) and the bulges (a CDblArray record).
    // Loading a record of the other kind, or with as many bulges as
    // vertices not, throws CArchiveException (badIndex) and leaves the path
    // as it was.
    void SerializePath(CArchive& ar);

protected:
    explicit CPolyPath(bool closed) : m_bClosed(closed) {}
    void MovePath(double dx, double dy);
    void RotatePath(const CDblPoint& centre, double angle);
    void MirrorPath(const CDblPoint& p1, const CDblPoint& p2);  // bulges change sign
    void ScalePath(const CDblPoint& centre, double factor);     // a negative factor turns by half a turn
    void ReversePath();                                         // same edges, travelled backwards

    CDblPointArray m_Vertices;
    CDblArray m_Bulges;  // one per vertex
    bool m_bClosed;
};

namespace detail {
// The Self... edits of a path class, returning the class itself.
template <class Path>
class PolyPathEdits : public CPolyPath {
public:
    Path& SelfMove(double dx, double dy) { return MovePath(dx, dy), Self(); }
    Path& SelfRotate(const CDblPoint& centre, double angle) { return RotatePath(centre, angle), Self(); }
    Path& SelfMirror(const CDblPoint& p1, const CDblPoint& p2) { return MirrorPath(p1, p2), Self(); }
    Path& SelfScale(const CDblPoint& centre, double factor) { return ScalePath(centre, factor), Self(); }
    Path& SelfReverse() { return ReversePath(), Self(); }

protected:
    explicit PolyPathEdits(bool closed) : CPolyPath(closed) {}

private:
    Path& Self() { return static_cast<Path&>(*this); }
};
}  // namespace detail

// An open path.
class ORVMATH_API CPolyline2 : public detail::PolyPathEdits<CPolyline2> {
public:
    CPolyline2() : PolyPathEdits(false) {}
    // Straight edges through the points.
    explicit CPolyline2(const CDblPointArray& points);

    // Copying forms: Move, Rotate, Mirror, Scale, Reverse.
    ORVMATH_COPYING_FORM(CPolyline2, Move)
    ORVMATH_COPYING_FORM(CPolyline2, Rotate)
    ORVMATH_COPYING_FORM(CPolyline2, Mirror)
    ORVMATH_COPYING_FORM(CPolyline2, Scale)
    ORVMATH_COPYING_FORM(CPolyline2, Reverse)

    void Serialize(CArchive& ar) { SerializePath(ar); }
};

}  // namespace ORVMATH
