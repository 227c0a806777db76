// Building route alignments element by element, and the built-in sample road.
#pragma once

#include <orvmath/route2.h>

#include <string>
#include <vector>

namespace orvroute {

// Lays out critical points by walking along the alignment: each call adds
// the point where its element begins and moves to the element's end.
class AlignmentBuilder {
public:
    AlignmentBuilder(const ORVMATH::CDblPoint& start, double angle) : pos_(start), angle_(angle) {}

    void Straight(double length);
    // A circular arc of the given radius and length, turning left or right.
    void Arc(double radius, double length, bool left);
    // A clothoid of parameter A from a straight into a curve of `radius`.
    void SpiralIn(double A, double radius, bool left);
    // A clothoid of parameter A from a curve of `radius` out to a straight.
    void SpiralOut(double A, double radius, bool left);

    // The points laid out so far plus the end point.
    ORVMATH::CCriticalPointArray Points() const;
    ORVMATH::CDblPoint Position() const { return pos_; }
    double Angle() const { return angle_; }

private:
    void Add(ORVMATH::SegmentType type, double radius, double spiralA = 0.0, double endRadius = 0.0);

    ORVMATH::CCriticalPointArray points_;
    ORVMATH::CDblPoint pos_;
    double angle_;
    double radius_ = -1.0;  // radius of curvature at pos_
};

// The built-in sample: a road from mile 1000 of a straight of 800 m, a
// clothoid (A = 250) into a 500 m left-hand curve of 700 m, a clothoid out
// and a straight of 1200 m: 2950 m in all.
ORVMATH::CRoute2 SampleRoute();

// An alignment of `elements` elements (a multiple of 4): straights of 200 m
// and curves of radius 300 m and 100 m with clothoids of A = 150, turning
// left and right in turn. Starts at mile 0.
ORVMATH::CRoute2 GeneratedRoute(int elements);

}  // namespace orvroute
