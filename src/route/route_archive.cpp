// Archive records of routes and their critical points.
#include <orvmath/route2.h>

#include <orvmath/host/archive.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <limits>

namespace ORVMATH {

namespace {

// Critical points go through a small staging buffer: the archive sees whole
// blocks of bytes, and no transfer comes near the 2^31-byte limit of a single
// write, so the chunking never shows in the stream.
constexpr INT_PTR kPointsPerChunk = 512;
constexpr unsigned kDoubleFields = 6;  // pt.x, pt.y, angle, radius, spiralA, endRadius

void PutLE(unsigned char* out, std::uint64_t bits, unsigned bytes) {
    for (unsigned k = 0; k < bytes; ++k) out[k] = static_cast<unsigned char>(bits >> (8 * k));
}

std::uint64_t GetLE(const unsigned char* in, unsigned bytes) {
    std::uint64_t bits = 0;
    for (unsigned k = 0; k < bytes; ++k) bits |= static_cast<std::uint64_t>(in[k]) << (8 * k);
    return bits;
}

void PutDouble(unsigned char* out, double v) {
    std::uint64_t bits;
    std::memcpy(&bits, &v, sizeof bits);
    PutLE(out, bits, 8);
}

double GetDouble(const unsigned char* in) {
    const std::uint64_t bits = GetLE(in, 8);
    double v;
    std::memcpy(&v, &bits, sizeof v);
    return v;
}

void EncodeBlock(const CCriticalPoint& cp, unsigned char* out) {
    PutLE(out, static_cast<std::uint32_t>(static_cast<std::int32_t>(cp.type)), 4);
    PutLE(out + 4, 0, 4);  // the fill: always zeros, never whatever memory held
    const double fields[kDoubleFields] = {cp.pt.x, cp.pt.y, cp.angle, cp.radius, cp.spiralA, cp.endRadius};
    for (unsigned k = 0; k < kDoubleFields; ++k) PutDouble(out + 8 + 8 * k, fields[k]);
}

// Decodes the first `blockBytes` bytes of a block over the point: 56 bytes
// set every field, 48 stop before endRadius and leave it as it was.
void DecodeBlock(const unsigned char* in, unsigned blockBytes, CCriticalPoint& cp) {
    cp.type = static_cast<SegmentType>(static_cast<std::int32_t>(static_cast<std::uint32_t>(GetLE(in, 4))));
    double* fields[kDoubleFields] = {&cp.pt.x, &cp.pt.y, &cp.angle, &cp.radius, &cp.spiralA, &cp.endRadius};
    for (unsigned k = 0; 8 + 8 * k < blockBytes; ++k) *fields[k] = GetDouble(in + 8 + 8 * k);
}

void StorePoints(CArchive& ar, const CCriticalPoint* p, INT_PTR n) {
    unsigned char buf[kPointsPerChunk * kCriticalPointBlockBytes];
    for (INT_PTR done = 0; done < n;) {
        const INT_PTR count = std::min(kPointsPerChunk, n - done);
        for (INT_PTR k = 0; k < count; ++k) EncodeBlock(p[done + k], buf + k * kCriticalPointBlockBytes);
        ar.WriteBlock(buf, static_cast<std::size_t>(count) * kCriticalPointBlockBytes);
        done += count;
    }
}

// Reads n blocks of `blockBytes` over p[0..n). A stream that ends part way
// throws endOfFile; the points decoded before that chunk keep their values.
void LoadPoints(CArchive& ar, CCriticalPoint* p, INT_PTR n, unsigned blockBytes) {
    unsigned char buf[kPointsPerChunk * kCriticalPointBlockBytes];
    for (INT_PTR done = 0; done < n;) {
        const INT_PTR count = std::min(kPointsPerChunk, n - done);
        ar.ReadBlock(buf, static_cast<std::size_t>(count) * blockBytes);
        for (INT_PTR k = 0; k < count; ++k) DecodeBlock(buf + k * blockBytes, blockBytes, p[done + k]);
        done += count;
    }
}

}  // namespace

// Loads: start, end mile and offset; the points; then both tables. The mile
// index is dropped first and rebuilt at the end, even after a failure, so a
// partly loaded route never searches with an index of other tables.
void CRoute2::Load(CArchive& ar, unsigned blockBytes) {
    if (ar.IsStoring()) AfxThrowArchiveException(CArchiveException::writeOnly);
    m_SegEnds.RemoveAll();
    try {
        ar >> m_dStartMile >> m_dEndMile >> m_dOffset;
        if (blockBytes == kCriticalPointBlockBytes) {
            m_CriticalPoints.Serialize(ar);
        } else {
            const ULONGLONG n = ar.ReadElementCount(blockBytes);
            if (n > static_cast<ULONGLONG>(std::numeric_limits<INT_PTR>::max())) AfxThrowMemoryException();
            m_CriticalPoints.SetSize(static_cast<INT_PTR>(n));
            LoadPoints(ar, m_CriticalPoints.GetData(), m_CriticalPoints.GetSize(), blockBytes);
        }
        m_SegMiles.Serialize(ar);
        m_SegLens.Serialize(ar);
    } catch (...) {
        RebuildMileIndex();
        throw;
    }
    RebuildMileIndex();
}

CArchive& operator<<(CArchive& ar, CRoute2& route) {
    if (ar.IsLoading()) AfxThrowArchiveException(CArchiveException::readOnly);
    ar << route.m_dStartMile << route.m_dEndMile << route.m_dOffset;
    route.m_CriticalPoints.Serialize(ar);
    route.m_SegMiles.Serialize(ar);
    route.m_SegLens.Serialize(ar);
    return ar;
}

CArchive& operator>>(CArchive& ar, CRoute2& route) {
    route.Load(ar, kCriticalPointBlockBytes);
    return ar;
}

void CRoute2::Serialize(CArchive& ar) { SerializeByOperators(ar, *this); }

void CRoute2::LoadDataWithoutEndRadius(CArchive& ar) { Load(ar, kCriticalPointEarlierBlockBytes); }

}  // namespace ORVMATH

template <>
void SerializeElements<ORVMATH::CCriticalPoint>(CArchive& ar, ORVMATH::CCriticalPoint* p, INT_PTR n) {
    if (n < 0 || (n > 0 && p == nullptr)) AfxThrowInvalidArgException();
    if (ar.IsStoring())
        ORVMATH::StorePoints(ar, p, n);
    else
        ORVMATH::LoadPoints(ar, p, n, ORVMATH::kCriticalPointBlockBytes);
}
