// Helpers for the archive record tests: store into memory, load from bytes,
// and golden bytes written as hex.
#pragma once

#include <orvmath/host/archive.h>
#include <orvmath/host/file.h>

#include <gtest/gtest.h>

#include <cctype>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <string>
#include <vector>

namespace record_bytes {

using Bytes = std::vector<BYTE>;

// "00 00 f0 3f" or "0000f03f": whitespace is ignored.
inline Bytes Hex(const std::string& text) {
    std::string digits;
    for (char c : text)
        if (!std::isspace(static_cast<unsigned char>(c))) digits += c;
    Bytes out;
    for (std::size_t i = 0; i + 1 < digits.size(); i += 2)
        out.push_back(static_cast<BYTE>(std::stoi(digits.substr(i, 2), nullptr, 16)));
    return out;
}

inline Bytes Store(const std::function<void(CArchive&)>& write) {
    CMemFile file;
    {
        CArchive ar(&file, CArchive::store);
        write(ar);
    }
    const auto n = static_cast<std::size_t>(file.GetLength());
    BYTE* p = file.Detach();
    Bytes bytes(p, p + n);
    std::free(p);
    return bytes;
}

// Loads through a 16-byte buffer, so that records straddle refills, and
// checks that the load consumed every byte.
inline void Load(Bytes bytes, const std::function<void(CArchive&)>& read) {
    CMemFile file(bytes.data(), static_cast<UINT>(bytes.size()));
    CArchive ar(&file, CArchive::load, 16);
    read(ar);
    BYTE extra;
    EXPECT_EQ(ar.Read(&extra, 1), 0u) << "bytes left after the record";
}

// A double from, or into, 8 little-endian bytes of a stream, on any host.
inline double LittleEndianDouble(const BYTE* p) {
    std::uint64_t u = 0;
    for (int k = 7; k >= 0; --k) u = (u << 8) | p[k];
    double d;
    std::memcpy(&d, &u, 8);
    return d;
}
inline void PutLittleEndianDouble(BYTE* p, double d) {
    std::uint64_t u;
    std::memcpy(&u, &d, 8);
    for (int k = 0; k < 8; ++k, u >>= 8) p[k] = static_cast<BYTE>(u & 0xFF);
}

// The archive exception cause that f throws, or none.
inline int CauseOf(const std::function<void()>& f) {
    try {
        f();
    } catch (const CArchiveException& e) {
        return e.m_cause;
    }
    return CArchiveException::none;
}

// Every proper prefix of a record must fail with endOfFile, and never crash.
inline void ExpectEveryTruncationFails(const Bytes& bytes, const std::function<void(CArchive&)>& read) {
    for (std::size_t n = 0; n < bytes.size(); ++n) {
        const Bytes cut(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(n));
        EXPECT_EQ(CauseOf([&] {
                      CMemFile file(const_cast<BYTE*>(cut.data()), static_cast<UINT>(cut.size()));
                      CArchive ar(&file, CArchive::load, 16);
                      read(ar);
                  }),
                  CArchiveException::endOfFile)
            << "cut after " << n << " of " << bytes.size() << " bytes";
    }
}

}  // namespace record_bytes
