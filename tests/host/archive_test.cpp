#include "record_bytes.h"

#include <orvmath/host/archive.h>
#include <orvmath/host/array.h>
#include <orvmath/host/cstring.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <functional>
#include <limits>
#include <memory>
#include <vector>

namespace {
using record_bytes::Bytes;
using record_bytes::CauseOf;
using record_bytes::Load;  // through a 16-byte buffer, so that values straddle refills; every byte consumed
using Io = std::function<void(CArchive&)>;
using CDoubles = CArray<double, double>;

// Stores through a buffer of the given size.
Bytes Store(const Io& write, int nBufSize = 4096) {
    CMemFile file;
    CArchive ar(&file, CArchive::store, nBufSize);
    write(ar);
    ar.Close();
    const auto n = static_cast<std::size_t>(file.GetLength());
    std::unique_ptr<BYTE, void (*)(void*)> p(file.Detach(), std::free);
    return Bytes(p.get(), p.get() + n);
}

std::vector<double> Values(const CDoubles& a) { return std::vector<double>(a.begin(), a.end()); }
}  // namespace

TEST(ArchiveCount, EncodesWordDwordQwordAtTheirBoundaries) {
    const struct { ULONGLONG count; Bytes bytes; } rows[] = {
        {0, {0x00, 0x00}},
        {0xFFFE, {0xFE, 0xFF}},                              // largest one-WORD count
        {0xFFFF, {0xFF, 0xFF, 0xFF, 0xFF, 0x00, 0x00}},      // escape, then DWORD 0x0000FFFF
        {0x12345, {0xFF, 0xFF, 0x45, 0x23, 0x01, 0x00}},
        {0xFFFFFFFE, {0xFF, 0xFF, 0xFE, 0xFF, 0xFF, 0xFF}},  // largest DWORD count
        {0xFFFFFFFF, {0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0, 0, 0, 0}},
        {0x100000000, {0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0, 0, 0, 0, 0x01, 0, 0, 0}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.count);
        if (row.count > std::numeric_limits<DWORD_PTR>::max()) {
            // A 32-bit host cannot hold such a count: reading one is badIndex.
            EXPECT_EQ(CauseOf([&] { Load(row.bytes, [](CArchive& ar) { ar.ReadCount(); }); }),
                      CArchiveException::badIndex);
            continue;
        }
        const Bytes bytes = Store([&](CArchive& ar) { ar.WriteCount(static_cast<DWORD_PTR>(row.count)); });
        EXPECT_EQ(bytes, row.bytes);
        Load(bytes, [&](CArchive& ar) { EXPECT_EQ(ar.ReadCount(), row.count); });
    }
}

// One value of every width; golden bytes worked out by hand (little-endian, 1.0 = 0x3FF0000000000000, 1.0f =
// 0x3F800000, -2 in two's complement).
const auto kMixed = [](CArchive& ar) {
    ar << BYTE(0x12) << WORD(0x3456) << DWORD(0x789ABCDEu) << LONG(-2) << 1.0 << 1.0f << true << short(-1)
       << LONGLONG(-2) << 'A';
};
const Bytes kMixedBytes = {0x12, 0x56, 0x34, 0xDE, 0xBC, 0x9A, 0x78, 0xFE, 0xFF, 0xFF, 0xFF, 0, 0, 0, 0,
                           0,    0,    0xF0, 0x3F, 0,    0,    0x80, 0x3F, 0x01, 0xFF, 0xFF, 0xFE, 0xFF,
                           0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 'A'};
const auto kReadMixed = [](CArchive& ar) {
    BYTE b; WORD w; DWORD dw; LONG l; double d; float f; bool flag; short s; LONGLONG ll; char c;
    ar >> b >> w >> dw >> l >> d >> f >> flag >> s >> ll >> c;
    EXPECT_EQ(b, 0x12); EXPECT_EQ(w, 0x3456); EXPECT_EQ(dw, 0x789ABCDEu); EXPECT_EQ(l, -2);
    EXPECT_EQ(d, 1.0); EXPECT_EQ(f, 1.0f); EXPECT_TRUE(flag); EXPECT_EQ(s, -1); EXPECT_EQ(ll, -2); EXPECT_EQ(c, 'A');
};

TEST(ArchiveValues, GoldenBytesRoundTripAndEveryTruncationThrowsEndOfFile) {
    EXPECT_EQ(Store(kMixed, 16), kMixedBytes);  // 16-byte buffer: flushes between values
    Load(kMixedBytes, kReadMixed);
    record_bytes::ExpectEveryTruncationFails(kMixedBytes, kReadMixed);
}

TEST(ArchiveMode, WrongDirectionAndClosedArchivesThrow) {
    BYTE buf[8] = {};
    CMemFile in(buf, sizeof buf), out;
    CArchive loading(&in, CArchive::load), storing(&out, CArchive::store);
    double d;
    EXPECT_EQ(CauseOf([&] { loading << 1.0; }), CArchiveException::readOnly);
    EXPECT_EQ(CauseOf([&] { storing >> d; }), CArchiveException::writeOnly);
    storing.Close();
    EXPECT_EQ(CauseOf([&] { storing << 1.0; }), CArchiveException::generic);
}

TEST(ArchiveRecords, CStringIsCountThenBytesAndADamagedLengthKeepsTheOldValue) {
    const Bytes bytes = Store([](CArchive& ar) { ar << CString("hi") << CString(); });
    EXPECT_EQ(bytes, (Bytes{2, 0, 'h', 'i', 0, 0}));
    Load(bytes, [](CArchive& ar) {
        CString a("old"), b("old");
        ar >> a >> b;
        EXPECT_EQ(a, "hi");
        EXPECT_TRUE(b.IsEmpty());
        EXPECT_EQ(CauseOf([&] { ar >> a; }), CArchiveException::endOfFile);
    });
    CString s("kept");  // length 0x7FFFFFFF, one byte present: fails without allocating
    EXPECT_THROW(Load({0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0x7F, 'a'}, [&](CArchive& ar) { ar >> s; }), CArchiveException);
    EXPECT_EQ(s, "kept");
}

TEST(ArchiveRecords, CArrayOfDoublesIsOneRawBlockAndOtherElementsRoundTrip) {
    CDoubles a, back;
    a.Add(1.0);
    a.Add(-2.0);
    back.Add(5);
    // count WORD 2, then 1.0 = 0x3FF0000000000000 and -2.0 = 0xC000000000000000
    const Bytes golden = {2, 0, 0, 0, 0, 0, 0, 0, 0xF0, 0x3F, 0, 0, 0, 0, 0, 0, 0, 0xC0};
    EXPECT_EQ(Store([&](CArchive& ar) { a.Serialize(ar); }), golden);
    Load(golden, [&](CArchive& ar) { back.Serialize(ar); });
    EXPECT_EQ(Values(back), (std::vector<double>{1.0, -2.0}));
    EXPECT_EQ(CauseOf([&] { Load(golden, [](CArchive& ar) { BYTE b[19]; ar.ReadBlock(b, 19); }); }),
              CArchiveException::endOfFile);
    CDoubles big, bigBack;  // 1600 bytes: the raw block passes the 64-byte buffer, and the 16-byte one
    for (int i = 0; i < 200; ++i) big.Add(i * 0.5);
    Load(Store([&](CArchive& ar) { big.Serialize(ar); }, 64), [&](CArchive& ar) { bigBack.Serialize(ar); });
    EXPECT_EQ(Values(bigBack), Values(big));

    CArray<CDoubles> nested, nestedBack;
    nested.Add(a);
    nested.Add(CDoubles());
    CArray<CString> strings, stringsBack;
    strings.Add("ab");
    strings.Add("");
    Load(Store([&](CArchive& ar) { nested.Serialize(ar); strings.Serialize(ar); }),
         [&](CArchive& ar) { nestedBack.Serialize(ar); stringsBack.Serialize(ar); });
    ASSERT_EQ(nestedBack.GetSize(), 2);
    EXPECT_EQ(Values(nestedBack[0]), (std::vector<double>{1.0, -2.0}));
    EXPECT_TRUE(nestedBack[1].IsEmpty());
    ASSERT_EQ(stringsBack.GetSize(), 2);
    EXPECT_TRUE(stringsBack[0] == "ab" && stringsBack[1] == "");
}

TEST(ArchiveRecords, ArrayCountBeyondTheStreamThrowsBeforeAllocating) {
    const struct { const char* name; Bytes bytes; } rows[] = {
        {"3 doubles promised, 2 present", {3, 0, 0, 0, 0, 0, 0, 0, 0xF0, 0x3F, 0, 0, 0, 0, 0, 0, 0, 0xC0}},
        {"count 0xFFFFFFFE", {0xFF, 0xFF, 0xFE, 0xFF, 0xFF, 0xFF, 1, 2, 3}},
        // 2^61 doubles = 2^64 bytes: the byte count itself overflows
        {"count 2^61", {0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0, 0, 0, 0, 0, 0, 0, 0x20}},
        {"count 2^64-1", {0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF}},
        {"truncated count", {0xFF, 0xFF, 0x01}},
    };
    for (const auto& row : rows) {
        CDoubles a;
        a.Add(4);
        EXPECT_EQ(CauseOf([&] { Load(row.bytes, [&](CArchive& ar) { a.Serialize(ar); }); }),
                  CArchiveException::endOfFile) << row.name;
        EXPECT_EQ(Values(a), (std::vector<double>{4})) << row.name;  // untouched
        if (&row == &rows[0]) continue;  // 16 bytes can hold 3 nested records (3 empty counts)
        CArray<CDoubles> nested;  // non-raw elements count as one byte each
        EXPECT_THROW(Load(row.bytes, [&](CArchive& ar) { nested.Serialize(ar); }), CArchiveException) << row.name;
        EXPECT_TRUE(nested.IsEmpty()) << row.name;
    }
}
