// Property items and bags: canonical texts, reading across types, the bag's
// order and statuses, and the records against bytes written out by hand.
#include "record_bytes.h"

#include <orvmath/objprop.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <optional>
#include <string>
#include <vector>

using namespace ORVMATH;
using namespace record_bytes;

namespace {

using Values = std::vector<double>;

// The item read as `as`, flattened to doubles (a point is x, y; a bool 0 or
// 1), or nullopt on a mismatch, after checking that the output was untouched.
std::optional<Values> ReadAs(const CORVObjPropItem& item, PropType as) {
    int i = 99;
    double d = 99;
    bool b = true;
    CDblPoint pt(99, 99);
    CDblArray ds;
    CIntArray is;
    ds.Add(99);
    is.Add(99);
    bool ok = false;
    Values out;
    switch (as) {
    case PROP_TYPE_INT: ok = item.GetInt(i), out = {double(i)}; break;
    case PROP_TYPE_DOUBLE: ok = item.GetDouble(d), out = {d}; break;
    case PROP_TYPE_BOOL: ok = item.GetBool(b), out = {double(b)}; break;
    case PROP_TYPE_POINT: ok = item.GetPoint(pt), out = {pt.x, pt.y}; break;
    case PROP_TYPE_DBLLIST: ok = item.GetDblList(ds), out.assign(ds.begin(), ds.end()); break;
    default: ok = item.GetIntList(is), out.assign(is.begin(), is.end()); break;
    }
    if (ok) return out;
    EXPECT_TRUE(i == 99 && d == 99 && b && pt.x == 99 && pt.y == 99 && ds.GetSize() == 1 && ds[0] == 99 &&
                is.GetSize() == 1 && is[0] == 99);
    return std::nullopt;
}

}  // namespace

TEST(ObjPropItem, SettersWriteCanonicalTextThatReadsBackExactly) {
    // Shortest round-trip texts as Python's repr gives them for these values.
    const double doubles[] = {0.1, 0.1 + 0.2, 1e20, 1e-5, 5e-324, -2.5, -0.0, 123456.0};
    const char* const texts[] = {"0.1", "0.30000000000000004", "1e+20", "1e-05", "5e-324", "-2.5", "-0", "123456"};
    for (int k = 0; k < 8; ++k) {
        CORVObjPropItem item;
        ASSERT_TRUE(item.SetDouble(doubles[k]));
        EXPECT_EQ(item.GetText(), texts[k]);
        double back = 0;
        ASSERT_TRUE(item.GetDouble(back));
        EXPECT_EQ(std::memcmp(&back, &doubles[k], sizeof back), 0) << texts[k];  // -0 keeps its sign
    }
    CORVObjPropItem item;
    item.SetInt(std::numeric_limits<int>::min());
    EXPECT_EQ(item.GetText(), "-2147483648");
    item.SetBool(true);
    EXPECT_TRUE(item.GetType() == PROP_TYPE_BOOL && item.GetText() == "1");
    ASSERT_TRUE(item.SetPoint(CDblPoint(0.5, -3)));
    EXPECT_TRUE(item.GetType() == PROP_TYPE_POINT && item.GetText() == "0.5,-3");
    CDblArray ds;
    for (double v : {1.5, -2.0, 0.25}) ds.Add(v);
    ASSERT_TRUE(item.SetDblList(ds));
    EXPECT_TRUE(item.GetType() == PROP_TYPE_DBLLIST && item.GetText() == "1.5,-2,0.25");
    item.SetIntList(CIntArray());
    EXPECT_TRUE(item.GetType() == PROP_TYPE_INTLIST && item.GetText() == "");
    // No text for infinities and NaN: refused, the item unchanged.
    ds.Add(INFINITY);
    EXPECT_FALSE(item.SetDouble(NAN) || item.SetPoint(CDblPoint(0, -INFINITY)) || item.SetDblList(ds));
    EXPECT_TRUE(item.GetType() == PROP_TYPE_INTLIST && item.GetText() == "");
    EXPECT_FALSE(item.Set(PROP_TYPE_INT, "abc") || item.Set(PropType(0), "") || item.Set(PropType(8), ""));
}

TEST(ObjPropItem, ReadsByTypeThenByGrammar) {
    struct Row {
        PropType type;
        const char* text;
        PropType as;
        std::optional<Values> want;  // nullopt: a mismatch
    };
    const PropType I = PROP_TYPE_INT, D = PROP_TYPE_DOUBLE, B = PROP_TYPE_BOOL, T = PROP_TYPE_TEXT,
                   P = PROP_TYPE_POINT, DL = PROP_TYPE_DBLLIST, IL = PROP_TYPE_INTLIST;
    const auto no = std::nullopt;
    const Row rows[] = {
        // int: sign and digits only, within 32 bits; a double is no int whatever its value
        {I, "-42", I, Values{-42}}, {T, " +7 ", I, Values{7}}, {T, "2147483647", I, Values{2147483647.0}},
        {T, "2147483648", I, no}, {T, "1.0", I, no}, {T, "1e3", I, no}, {T, "+-5", I, no}, {D, "2", I, no},
        {B, "1", I, no},
        // double: ints widen; text by the number grammar
        {I, "7", D, Values{7}}, {T, " -1.5e3 ", D, Values{-1500}}, {T, "abc", D, no}, {T, "1e400", D, no},
        {T, "1,5", D, no}, {B, "1", D, no}, {DL, "3", D, no},
        // bool
        {B, "0", B, Values{0}}, {T, " TRUE ", B, Values{1}}, {T, "False", B, Values{0}}, {T, "yes", B, no},
        {T, "2", B, no}, {I, "1", B, no},
        // point, by StrToXY
        {P, "0.5,-3", P, Values{0.5, -3}}, {T, "1 ; 2", P, Values{1, 2}}, {T, "1", P, no}, {DL, "1,2", P, no},
        // lists: blank is empty; every value needs its comma and every comma a value
        {IL, "3,-1", DL, Values{3, -1}}, {T, " 1.5 , 2 ", DL, Values{1.5, 2}}, {T, " ", DL, Values{}},
        {T, "1,", DL, no}, {T, ",1", DL, no}, {T, "1,,2", DL, no}, {T, "1 2", DL, no}, {DL, "1.5", IL, no},
        {T, "1,2.5", IL, no}, {T, "4, 5", IL, Values{4, 5}}, {D, "1", DL, no}};
    for (const Row& row : rows) {
        CORVObjPropItem item;
        ASSERT_TRUE(item.Set(row.type, row.text)) << row.text;
        EXPECT_EQ(ReadAs(item, row.as), row.want) << row.text;
    }
}

TEST(ObjProp, ReplacesInPlaceRemovesInOrderAndNamesAreCaseSensitive) {
    CORVObjProp bag;
    bag.SetInt("a", 1);
    bag.SetText("b", "x");
    bag.SetBool("c", true);
    bag.SetDouble("b", 2.5);  // replaces b, keeps its place
    bag.SetInt("B", 3);
    std::string order;
    for (const CORVObjPropItem& item : bag) order += item.GetName().str() + "=" + item.GetText().str() + " ";
    EXPECT_EQ(order, "a=1 b=2.5 c=1 B=3 ");
    EXPECT_TRUE(bag.Remove("a") && !bag.Remove("a"));
    EXPECT_EQ(bag.Find("c"), 1);  // the index follows the move
    EXPECT_EQ(bag.GetAt(2).GetName(), "B");
    EXPECT_THROW(bag.GetAt(3), CInvalidArgException);
    EXPECT_THROW(bag.GetAt(-1), CInvalidArgException);
    bag.RemoveAll();
    EXPECT_TRUE(bag.IsEmpty() && bag.Find("b") == -1 && bag.Lookup("b") == nullptr);
}

TEST(ObjProp, ReportsMissingAndMismatchAndLeavesOutputs) {
    CORVObjProp bag;
    bag.SetText("t", "abc");
    ASSERT_TRUE(bag.SetDouble("d", 2.0));
    EXPECT_FALSE(bag.SetDouble("d", NAN) || bag.SetDouble("n", NAN));  // refused: d kept, n not added
    double d = -1;
    CString text;
    EXPECT_EQ(bag.GetDouble("n", d), PROP_MISSING);
    EXPECT_EQ(bag.GetDouble("t", d), PROP_MISMATCH);
    EXPECT_TRUE(d == -1 && bag.GetCount() == 2);
    EXPECT_TRUE(bag.GetDouble("d", d) == PROP_OK && d == 2.0);
    EXPECT_TRUE(bag.GetText("d", text) == PROP_OK && text == "2");
}

// Bytes by hand from the layout in objprop.h: counts below 0xFFFF are one
// little-endian WORD, type codes four bytes; '0' is 30, '.' 2e, '5' 35,
// 'w' 77, 'n' 6e, '7' 37, 'o' 6f, 'k' 6b, '1' 31.
const Bytes kItemW = Hex("0100 77  02000000  0300 302e35");
const Bytes kBag = Hex("0200  0100 6e 01000000 0100 37  0200 6f6b 03000000 0100 31");

TEST(ObjPropRecord, GoldenBytesAndEveryTruncationFailsUnchanged) {
    CORVObjPropItem w;
    w.SetName("w");
    ASSERT_TRUE(w.SetDouble(0.5));
    EXPECT_EQ(Store([&](CArchive& ar) { w.Serialize(ar); }), kItemW);
    CORVObjProp bag;
    bag.SetInt("n", 7);
    bag.SetBool("ok", true);
    EXPECT_EQ(Store([&](CArchive& ar) { bag.Serialize(ar); }), kBag);
    CORVObjProp before;
    before.SetText("keep", "me");
    Load(kBag, [&](CArchive& ar) {
        CORVObjProp loaded = before;
        loaded.Serialize(ar);
        EXPECT_EQ(loaded, bag);
    });
    ExpectEveryTruncationFails(kBag, [&](CArchive& ar) {
        CORVObjProp loaded = before;
        try {
            loaded.Serialize(ar);
        } catch (const CArchiveException&) {
            EXPECT_EQ(loaded, before);
            throw;
        }
    });
}

TEST(ObjPropRecord, RoundTripsEveryTypeAndRefusesDamagedRecords) {
    CORVObjProp bag;
    bag.SetText("", std::string("a\0b", 3));
    ASSERT_TRUE(bag.SetPoint("p", CDblPoint(-0.0, 5e-324)) && bag.Set("s", PROP_TYPE_DOUBLE, " 2.50 "));
    CIntArray is;
    is.Add(-7);
    bag.SetIntList("l", is);
    const Bytes bytes = Store([&](CArchive& ar) { bag.Serialize(ar); });
    Load(bytes, [&](CArchive& ar) {
        CORVObjProp loaded;
        loaded.Serialize(ar);
        EXPECT_EQ(loaded, bag);  // texts byte for byte, " 2.50 " as given
    });
    struct Row {
        const char* hex;
        int cause;
    };
    const Row rows[] = {{"0100 0100 6e 00000000 0000", CArchiveException::badSchema},  // type 0
                        {"0100 0100 6e 08000000 0000", CArchiveException::badSchema},  // type 8
                        {"0100 0100 6e 01000000 0100 78", CArchiveException::badSchema},  // int "x"
                        {"0200 0100 6e 04000000 0000 0100 6e 04000000 0000", CArchiveException::badSchema},
                        {"ffff ffffffff ffffffffffffff0f", CArchiveException::endOfFile}};  // 2^60 items
    for (const Row& row : rows) {
        CORVObjProp loaded = bag;
        EXPECT_EQ(CauseOf([&] { Load(Hex(row.hex), [&](CArchive& ar) { loaded.Serialize(ar); }); }), row.cause)
            << row.hex;
        EXPECT_EQ(loaded, bag);
    }
}
