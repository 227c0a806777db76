#include <orvmath/host/archive.h>

#include <gtest/gtest.h>

#include <functional>
#include <vector>

namespace {

using Bytes = std::vector<BYTE>;

Bytes Store(const std::function<void(CArchive&)>& write, int nBufSize = 4096) {
    CMemFile file;
    {
        CArchive ar(&file, CArchive::store, nBufSize);
        write(ar);
    }
    const auto n = static_cast<std::size_t>(file.GetLength());
    BYTE* p = file.Detach();
    Bytes bytes(p, p + n);
    std::free(p);
    return bytes;
}

// Loads from a copy of the bytes through a small buffer, so that values
// straddle buffer refills.
void Load(Bytes bytes, const std::function<void(CArchive&)>& read, int nBufSize = 16) {
    CMemFile file(bytes.data(), static_cast<UINT>(bytes.size()));
    CArchive ar(&file, CArchive::load, nBufSize);
    read(ar);
}

int CauseOf(const std::function<void()>& f) {
    try {
        f();
    } catch (const CArchiveException& e) {
        return e.m_cause;
    }
    return CArchiveException::none;
}

}  // namespace

TEST(ArchiveCount, EncodesWordDwordQwordAtTheirBoundaries) {
    struct Row {
        ULONGLONG count;
        Bytes bytes;
    };
    const Row rows[] = {
        {0, {0x00, 0x00}},
        {0xFFFE, {0xFE, 0xFF}},                              // largest one-WORD count
        {0xFFFF, {0xFF, 0xFF, 0xFF, 0xFF, 0x00, 0x00}},      // escape, then DWORD 0x0000FFFF
        {0x12345, {0xFF, 0xFF, 0x45, 0x23, 0x01, 0x00}},
        {0xFFFFFFFE, {0xFF, 0xFF, 0xFE, 0xFF, 0xFF, 0xFF}},  // largest DWORD count
        {0xFFFFFFFF, {0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0, 0, 0, 0}},
        {0x100000000, {0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0, 0, 0, 0, 0x01, 0, 0, 0}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.count);
        const Bytes bytes = Store([&](CArchive& ar) { ar.WriteCount(static_cast<DWORD_PTR>(row.count)); });
        EXPECT_EQ(bytes, row.bytes);
        Load(bytes, [&](CArchive& ar) { EXPECT_EQ(ar.ReadCount(), row.count); });
    }
}

// One value of every width; golden bytes worked out by hand (little-endian,
// 1.0 = 0x3FF0000000000000, 1.0f = 0x3F800000, -2 in two's complement).
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

TEST(ArchiveValues, StoreLittleEndianGoldenBytesAndLoadBack) {
    EXPECT_EQ(Store(kMixed, 16), kMixedBytes);  // 16-byte buffer: flushes between values
    Load(kMixedBytes, kReadMixed);
}

TEST(ArchiveValues, EveryTruncationThrowsEndOfFile) {
    for (std::size_t n = 0; n < kMixedBytes.size(); ++n) {
        SCOPED_TRACE(n);
        const Bytes cut(kMixedBytes.begin(), kMixedBytes.begin() + static_cast<std::ptrdiff_t>(n));
        EXPECT_EQ(CauseOf([&] { Load(cut, kReadMixed); }), CArchiveException::endOfFile);
    }
}

TEST(ArchiveMode, StoringIntoLoadingAndLoadingFromStoringThrow) {
    BYTE buf[8] = {};
    CMemFile file(buf, sizeof buf);
    CArchive loading(&file, CArchive::load);
    EXPECT_EQ(CauseOf([&] { loading << 1.0; }), CArchiveException::readOnly);
    EXPECT_EQ(CauseOf([&] { loading.Write(buf, 1); }), CArchiveException::readOnly);
    EXPECT_EQ(CauseOf([&] { loading.WriteCount(1); }), CArchiveException::readOnly);
    CMemFile out;
    CArchive storing(&out, CArchive::store);
    double d;
    EXPECT_EQ(CauseOf([&] { storing >> d; }), CArchiveException::writeOnly);
    EXPECT_EQ(CauseOf([&] { storing.Read(buf, 1); }), CArchiveException::writeOnly);
    EXPECT_EQ(CauseOf([&] { storing.CheckCanRead(0); }), CArchiveException::writeOnly);
    storing.Close();
    EXPECT_EQ(CauseOf([&] { storing << 1.0; }), CArchiveException::generic);
}

TEST(ArchiveBlock, LargeBlocksPassBufferAndShortReadsThrow) {
    Bytes block(1000);
    for (std::size_t i = 0; i < block.size(); ++i) block[i] = static_cast<BYTE>(i * 7);
    const Bytes bytes = Store([&](CArchive& ar) { ar << BYTE(9); ar.WriteBlock(block.data(), block.size()); }, 64);
    ASSERT_EQ(bytes.size(), 1001u);
    EXPECT_TRUE(std::equal(block.begin(), block.end(), bytes.begin() + 1));
    Load(bytes, [&](CArchive& ar) {
        BYTE first;
        Bytes back(1000);
        ar >> first;
        ar.ReadBlock(back.data(), back.size());
        EXPECT_EQ(back, block);
        EXPECT_EQ(ar.Read(back.data(), 1), 0u);  // raw Read reports the end instead of throwing
    });
    EXPECT_EQ(CauseOf([&] { Load(bytes, [](CArchive& ar) { Bytes b(1002); ar.ReadBlock(b.data(), b.size()); }); }),
              CArchiveException::endOfFile);
}

TEST(ArchiveCheckCanRead, CountsBufferedAndFileBytes) {
    Load(Bytes(40), [](CArchive& ar) {
        BYTE b;
        ar >> b;                      // 16-byte buffer now holds 15 unread bytes, the file 24 more
        EXPECT_NO_THROW(ar.CheckCanRead(39));
        EXPECT_EQ(CauseOf([&] { ar.CheckCanRead(40); }), CArchiveException::endOfFile);
        EXPECT_EQ(CauseOf([&] { ar.CheckCanRead(~0ull); }), CArchiveException::endOfFile);
    });
}
