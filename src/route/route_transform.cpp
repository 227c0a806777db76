// CRoute2: moving, turning, mirroring, scaling and shifting a whole route.
// Apart from the offset, each keeps the length tables valid without
// rebuilding them.
#include <orvmath/route2.h>

#include <orvmath/angle.h>
#include <orvmath/pointline.h>

#include <cmath>

namespace ORVMATH {

void CRoute2::SelfOffset(double d) {
    m_dOffset += d;
    InitLens();  // the offset changes the lengths of arcs and transitions
}

void CRoute2::SelfTranslate(double dx, double dy) {
    for (CCriticalPoint& p : m_CriticalPoints) p.pt.Offset(dx, dy);
    RebuildMileIndex();  // the tables stay; the elements' evaluation data moves
}

void CRoute2::SelfRotate(const CDblPoint& center, double angle) {
    for (CCriticalPoint& p : m_CriticalPoints) {
        RotatePoint(center.x, center.y, angle, p.pt);
        p.angle = NormalizeAng_Rad(p.angle + angle);
    }
    RebuildMileIndex();
}

void CRoute2::SelfMirror(const CDblPoint& p1, const CDblPoint& p2) {
    // Every turn is reversed and the offset changes side, so each element's
    // offset length is unchanged.
    m_dOffset = -m_dOffset;
    const double axis = std::atan2(p2.y - p1.y, p2.x - p1.x);
    for (CCriticalPoint& p : m_CriticalPoints) {
        // The degree normalisation on a radian angle is kept: stored routes
        // were mirrored this way (for these magnitudes it changes nothing).
        p.angle = NormalizeAng(2.0 * axis - p.angle);
        MirrorPoint(p1, p2, p.pt, p.pt);
    }
    RebuildMileIndex();
}

void CRoute2::SelfScale(const CDblPoint& center, double factor) {
    for (CCriticalPoint& p : m_CriticalPoints) {
        p.spiralA *= factor;
        if (p.radius != -1.0) p.radius *= factor;  // an infinite radius stays infinite
        ScalePoint(center, p.pt, p.pt, factor);
        // endRadius is not scaled (kept: stored routes depend on it).
    }
    m_dOffset *= factor;
    m_dEndMile = m_dStartMile + GetMile() * factor;
    for (double& m : m_SegMiles) m *= factor;
    for (double& len : m_SegLens) len *= factor;
    RebuildMileIndex();
}

}  // namespace ORVMATH
