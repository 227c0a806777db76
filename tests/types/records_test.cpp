// Golden archive records of the value types, curves and spatial transforms:
// every expected byte is written out here by hand (little-endian IEEE
// doubles, the archive's WORD counts), never taken from the code's output.
#include "record_bytes.h"

#include <orvmath/orvmath.h>

#include <gtest/gtest.h>

#include <cstring>
#include <initializer_list>
#include <string>

using namespace ORVMATH;
using namespace record_bytes;

namespace {

// Doubles as they appear in the stream.
const std::string k0 = "0000000000000000 ", k1 = "000000000000f03f ", k2 = "0000000000000040 ",
                  k3 = "0000000000000840 ", k4 = "0000000000001040 ", kM1 = "000000000000f0bf ",
                  kM2 = "00000000000000c0 ", kHalf = "000000000000e03f ";

struct Golden {
    const char* name;
    std::function<void(CArchive&)> store;
    std::string hex;
    std::function<void(CArchive&)> loadAndCheck;  // loads into a fresh value and compares
};

// A plain value type: stored with <<, loaded with >> into a default value and
// compared bit for bit (these types are doubles with no padding).
template <class T>
Golden Value(const char* name, T value, const std::string& hex) {
    return {name, [value](CArchive& ar) { ar << value; }, hex, [value](CArchive& ar) {
                T loaded;
                ar >> loaded;
                EXPECT_EQ(std::memcmp(&loaded, &value, sizeof(T)), 0);
            }};
}

// An array of the given elements, stored with Serialize (or << when ByOperators) and loaded the same way into a
// fresh array, then compared element by element bit for bit.
template <class A, class T, bool ByOperators = false>
Golden ArrayOf(const char* name, std::initializer_list<T> items, const std::string& hex) {
    A a;
    for (const T& t : items) a.Add(t);
    const auto io = [](CArchive& ar, A& x) {
        if constexpr (ByOperators) ar.IsStoring() ? void(ar << x) : void(ar >> x);
        else x.Serialize(ar);
    };
    return {name, [a, io](CArchive& ar) { A copy(a); io(ar, copy); }, hex, [a, io](CArchive& ar) {
                A loaded;
                io(ar, loaded);
                ASSERT_EQ(loaded.GetSize(), a.GetSize());
                for (INT_PTR i = 0; i < a.GetSize(); ++i) EXPECT_EQ(std::memcmp(&loaded[i], &a[i], sizeof(T)), 0) << i;
            }};
}

std::vector<Golden> Goldens() {
    return {
        Value("CDblPoint", CDblPoint(1, -2), k1 + kM2),
        Value("CDblSize", CDblSize(0.5, 3), kHalf + k3),
        Value("CDblRect", CDblRect(1, 2, 3, 4), k1 + k2 + k3 + k4),
        Value("CDblPoint3", CDblPoint3(4, -1, 0.5), k4 + kM1 + kHalf),
        Value("CLine2", CLine2(1, 2, 3, 4), k1 + k2 + k3 + k4),
        Value("CCircle2", CCircle2(CDblPoint(-1, 2), 0.5), kM1 + k2 + kHalf),
        Value("CArc2", CArc2(CDblPoint(1, 2), 3, 0.5, -2), k1 + k2 + k3 + kHalf + kM2),  // radians as held; 40 bytes
        // Arrays of structures: a count, then each element's record (never the
        // host's memory image, so big-endian hosts store the same bytes).
        ArrayOf<CArray<CDblPoint3>, CDblPoint3>("CArray<CDblPoint3>", {CDblPoint3(1, 2, 3)}, "0100 " + k1 + k2 + k3),
        ArrayOf<CArray<dcomplex, dcomplex>, dcomplex>("CArray<dcomplex>", {dcomplex(0.5, -1)}, "0100 " + kHalf + kM1),
        ArrayOf<CDblArray, double, true>("CDblArray", {1, -2}, "0200 " + k1 + kM2),
        ArrayOf<CIntArray, int, true>("CIntArray", {1, -2, 0x01020304}, "0300 01000000 feffffff 04030201"),
        {"CDblPointVector", [](CArchive& ar) { ar << CDblPointVector{{1, 2}, {3, 4}}; }, "0200 " + k1 + k2 + k3 + k4,
         [](CArchive& ar) {
             CDblPointVector v{{9, 9}, {9, 9}, {9, 9}};  // loading replaces, not appends
             v.Serialize(ar);
             ASSERT_EQ(v.size(), 2u);
             EXPECT_TRUE(v[0].x == 1 && v[0].y == 2 && v[1].x == 3 && v[1].y == 4);
         }},
        ArrayOf<CDblPointArray, CDblPoint>("CDblPointArray", {CDblPoint(1, 2)}, "0100 " + k1 + k2),
        ArrayOf<CLine2Array, CLine2>("CLine2Array", {CLine2(1, 2, 3, 4)}, "0100 " + k1 + k2 + k3 + k4),
        {"Vector3d", [](CArchive& ar) { Vector3d(1, -2, 0.5).Serialize(ar); }, k1 + kM2 + kHalf,
         [](CArchive& ar) {
             Vector3d v;
             v.Serialize(ar);
             EXPECT_TRUE(v.x == 1 && v.y == -2 && v.z == 0.5);
         }},
        // Row by row: the identity with the translation (2, 3, 4) in row 3; 128 bytes.
        {"CMatrix4",
         [](CArchive& ar) {
             CMatrix4 m;
             m(3, 0) = 2;
             m(3, 1) = 3;
             m(3, 2) = 4;
             m.Serialize(ar);
         },
         k1 + k0 + k0 + k0 + k0 + k1 + k0 + k0 + k0 + k0 + k1 + k0 + k2 + k3 + k4 + k1,
         [](CArchive& ar) {
             CMatrix4 m;
             m(0, 1) = 7;  // overwritten by the load
             m.Serialize(ar);
             for (int r = 0; r < 4; ++r)
                 for (int c = 0; c < 4; ++c) EXPECT_EQ(m(r, c), r == c ? 1.0 : r == 3 ? 2.0 + c : 0.0);
         }},
    };
}

}  // namespace

TEST(ArchiveRecords, StoreGoldenBytesLoadBackAndFailOnEveryTruncation) {
    for (const Golden& g : Goldens()) {
        SCOPED_TRACE(g.name);
        const Bytes want = Hex(g.hex);
        EXPECT_EQ(Store(g.store), want);
        Load(want, g.loadAndCheck);
        ExpectEveryTruncationFails(want, g.loadAndCheck);
    }
}

TEST(ArchiveRecords, DirectionAndDamagedCountsAreRejected) {
    // Storing into a loading archive, and the array operators never turn a
    // store into a load.
    const Bytes arrayRecord = Hex("0100" + k1);
    Load(arrayRecord, [](CArchive& ar) {
        CDblArray a;
        EXPECT_EQ(CauseOf([&] { ar << a; }), CArchiveException::readOnly);
        EXPECT_EQ(CauseOf([&] { ar << CDblPoint(1, 2); }), CArchiveException::readOnly);
        ar >> a;
        EXPECT_EQ(a.GetSize(), 1);
    });
    Store([](CArchive& ar) {
        CIntArray a;
        EXPECT_EQ(CauseOf([&] { ar >> a; }), CArchiveException::writeOnly);
    });
    // Counts far beyond the stream fail before anything is allocated.
    for (const char* count : {"ffff ffffff7f", "ffff ffffffff ffffffffffffffff", "0300"}) {
        SCOPED_TRACE(count);
        const Bytes bytes = Hex(std::string(count) + k1 + k2);
        EXPECT_EQ(CauseOf([&] { Load(bytes, [](CArchive& ar) { CDblPointVector v; ar >> v; }); }),
                  CArchiveException::endOfFile);
        EXPECT_EQ(CauseOf([&] { Load(bytes, [](CArchive& ar) { CDblArray a; ar >> a; }); }),
                  CArchiveException::endOfFile);
        EXPECT_EQ(CauseOf([&] { Load(bytes, [](CArchive& ar) { CLine2Array a; a.Serialize(ar); }); }),
                  CArchiveException::endOfFile);
        // 3 x 32-byte rectangles cannot fit in 16 bytes: refused before resizing,
        // and the array keeps what it held.
        CArray<CDblRect> rects;
        rects.Add(CDblRect(1, 2, 3, 4));
        EXPECT_EQ(CauseOf([&] { Load(bytes, [&](CArchive& ar) { rects.Serialize(ar); }); }),
                  CArchiveException::endOfFile);
        EXPECT_TRUE(rects.GetSize() == 1 && rects[0] == CDblRect(1, 2, 3, 4));
    }
    // A record that fails inside its second element leaves the array as it was.
    CArray<CDblArray> nested;
    nested.SetSize(1);
    const Bytes cut = Hex("0200 0100" + k1 + "0200" + k2);
    EXPECT_EQ(CauseOf([&] { Load(cut, [&](CArchive& ar) { nested.Serialize(ar); }); }), CArchiveException::endOfFile);
    EXPECT_TRUE(nested.GetSize() == 1 && nested[0].IsEmpty());
}
