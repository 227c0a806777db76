#include "alignment.h"

#include <orvmath/angle.h>

#include <cmath>
#include <cstdio>

namespace orvroute {

using ORVMATH::CCriticalPoint;
using ORVMATH::CDblPoint;
using ORVMATH::CRoute2;

void AlignmentBuilder::Add(ORVMATH::SegmentType type, double radius, double spiralA, double endRadius) {
    points_.Add(CCriticalPoint(type, pos_, angle_, radius, spiralA, endRadius));
}

void AlignmentBuilder::Straight(double length) {
    Add(ORVMATH::SEGMENT_LINE, -1.0);
    pos_ = CDblPoint(pos_.x + length * std::cos(angle_), pos_.y + length * std::sin(angle_));
    radius_ = -1.0;
}

void AlignmentBuilder::Arc(double radius, double length, bool left) {
    Add(ORVMATH::SEGMENT_ARC, radius);
    const double side = left ? 1.0 : -1.0;
    const CDblPoint centre(pos_.x - side * radius * std::sin(angle_), pos_.y + side * radius * std::cos(angle_));
    const double turn = side * length / radius;
    const double radial = std::atan2(pos_.y - centre.y, pos_.x - centre.x) + turn;
    pos_ = CDblPoint(centre.x + radius * std::cos(radial), centre.y + radius * std::sin(radial));
    angle_ += turn;
    radius_ = radius;
}

void AlignmentBuilder::SpiralIn(double A, double radius, bool left) {
    Add(ORVMATH::SEGMENT_TRANSITION, -1.0, A, radius);
    const double l = A * A / radius;
    // The standard frame sits here: x along the tangent, y to the side of the turn.
    pos_ = CRoute2::Standard2World(pos_, angle_, left, CRoute2::GetStandardPoint(A, l, 0.0));
    angle_ += (left ? 1.0 : -1.0) * CRoute2::GetStandardTangetAngle(A, l);
    radius_ = radius;
}

void AlignmentBuilder::SpiralOut(double A, double radius, bool left) {
    Add(ORVMATH::SEGMENT_TRANSITION, radius, A, -1.0);
    const double l = A * A / radius;
    angle_ += (left ? 1.0 : -1.0) * CRoute2::GetStandardTangetAngle(A, l);
    // The standard frame sits at the far end, its x axis pointing back into
    // the curve; seen from there the curve bends the other way.
    const CDblPoint q = CRoute2::Standard2World(CDblPoint(), angle_ + ORVMATH::kPi, !left,
                                                CRoute2::GetStandardPoint(A, l, 0.0));
    pos_ = CDblPoint(pos_.x - q.x, pos_.y - q.y);
    radius_ = -1.0;
}

ORVMATH::CCriticalPointArray AlignmentBuilder::Points() const {
    ORVMATH::CCriticalPointArray all(points_);
    all.Add(CCriticalPoint(ORVMATH::SEGMENT_LINE, pos_, angle_, radius_));
    return all;
}

CRoute2 SampleRoute() {
    const double A = 250.0, R = 500.0;
    AlignmentBuilder b(CDblPoint(0.0, 0.0), 20.0 * ORVMATH::kPi / 180.0);
    b.Straight(800.0);
    b.SpiralIn(A, R, true);
    b.Arc(R, 700.0, true);
    b.SpiralOut(A, R, true);
    b.Straight(1200.0);
    return CRoute2(b.Points(), 1000.0, 0.0);
}

CRoute2 GeneratedRoute(int elements) {
    const double A = 150.0;
    AlignmentBuilder b(CDblPoint(0.0, 0.0), 0.0);
    for (int i = 0; i < elements / 4; ++i) {
        const bool left = i % 2 == 0;
        b.Straight(200.0);
        b.SpiralIn(A, 300.0, left);
        b.Arc(300.0, 100.0, left);
        b.SpiralOut(A, 300.0, left);
    }
    return CRoute2(b.Points(), 0.0, 0.0);
}

}  // namespace orvroute
