#include <orvmath/orvmath.h>
#include <cstdio>
using namespace ORVMATH;

int main() {
    CCriticalPointArray pts;  // a straight of 100 m east, then a left-hand arc of radius 100 for a quarter turn
    pts.Add(CCriticalPoint(SEGMENT_LINE, CDblPoint(0, 0), 0.0, -1.0));
    pts.Add(CCriticalPoint(SEGMENT_ARC, CDblPoint(100, 0), 0.0, 100.0));
    pts.Add(CCriticalPoint(SEGMENT_LINE, CDblPoint(200, 100), kPi / 2, -1.0));
    const CRoute2 road(pts, 1000.0, 0.0);  // chainage starts at mile 1000
    const CDblPoint p = road.GetPoint(1050.0, 3.5);  // 3.5 m left of mile 1050: (50, 3.5)
    CDblPointArray square;
    for (const CDblPoint& v : {CDblPoint(0, 0), CDblPoint(60, 0), CDblPoint(60, 60), CDblPoint(0, 60)}) square.Add(v);
    std::printf("(%.3f, %.3f) inside: %d\n", p.x, p.y, PtInPolygonEx(square, p));
}
