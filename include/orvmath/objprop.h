// Property bags: named, typed properties of an object, each held as text.
//
// A property has a name, a type and a value text. The text of each type is
// written in one canonical form, and read back by the grammar of textnum.h:
//
//     type              canonical text             read from text
//     PROP_TYPE_INT     "-42"                      [sign] digits, within a 32-bit int
//     PROP_TYPE_DOUBLE  shortest text that reads   a number of textnum.h, finite
//                       back to the same double:
//                       "0.1", "-2.5", "1e+20"
//     PROP_TYPE_BOOL    "1" or "0"                 "1", "0", "true", "false" (ASCII
//                                                  case ignored)
//     PROP_TYPE_TEXT    the text itself            anything, NUL bytes included
//     PROP_TYPE_POINT   "x,y", x and y as doubles  as StrToXY reads a pair
//     PROP_TYPE_DBLLIST "1.5,-2,0.25"              numbers separated by ','; blank
//                                                  text is the empty list
//     PROP_TYPE_INTLIST "3,-1,7"                   ints separated by ','; blank text
//                                                  is the empty list
//
// White space (as in textnum.h) may stand around every number and bool, and
// around the separators of lists and points. Doubles, points and lists of
// doubles are stored with std::to_chars, so every finite double, -0.0 and
// subnormals included, reads back bit for bit; infinities and NaN have no
// text and are refused.
//
// Reading a property as a type (GetInt, GetDouble, ...) reads its text by
// that type's grammar, and is allowed for:
//
//     read as      property types it accepts
//     int          INT, TEXT
//     double       INT, DOUBLE, TEXT
//     bool         BOOL, TEXT
//     point        POINT, TEXT
//     double list  INTLIST, DBLLIST, TEXT
//     int list     INTLIST, TEXT
//     text         every type (the value text as held)
//
// Any other pairing is a mismatch, whatever the text: a double property 2.0
// read as int is a mismatch (its type, not its value, decides), as is a bool
// read as int. A text property is read by the grammar, so "2.5" reads as a
// double and "abc" is a mismatch. A failed read leaves its output untouched.
//
// Names are compared byte for byte: "Width" and "width" are two properties.
// Any name is allowed, the empty one included.
#pragma once

#include <orvmath/containers.h>
#include <orvmath/export.h>
#include <orvmath/host/cstring.h>
#include <orvmath/host/object.h>
#include <orvmath/point2.h>

#include <string>
#include <unordered_map>
#include <vector>

namespace ORVMATH {

// The type of a property. The values are the type codes of the archive
// record; 0 is no type, so a zero-filled record does not load.
enum PropType : int {
    PROP_TYPE_INT = 1,
    PROP_TYPE_DOUBLE = 2,
    PROP_TYPE_BOOL = 3,
    PROP_TYPE_TEXT = 4,
    PROP_TYPE_POINT = 5,
    PROP_TYPE_DBLLIST = 6,
    PROP_TYPE_INTLIST = 7
};

// The outcome of reading a property of a bag by name.
enum PropStatus : int {
    // The value was read into the output.
    PROP_OK = 0,
    // No property of that name; the output is untouched.
    PROP_MISSING,
    // The property exists, but its type is not read as the type asked for
    // (see the table above) or its text does not read as it; the output is
    // untouched.
    PROP_MISMATCH
};

// One property: a name, a type and the value text.
class ORVMATH_API CORVObjPropItem : public CObject {
    DECLARE_SERIAL(CORVObjPropItem)
public:
    // An empty-named text property with empty text.
    CORVObjPropItem() = default;
    // A text property.
    CORVObjPropItem(const CString& name, const CString& text) : m_Name(name), m_Text(text) {}
    CORVObjPropItem(const CORVObjPropItem&) = default;
    CORVObjPropItem& operator=(const CORVObjPropItem&) = default;
    ~CORVObjPropItem() override = default;

    const CString& GetName() const noexcept { return m_Name; }
    void SetName(const CString& name) { m_Name = name; }
    PropType GetType() const noexcept { return m_Type; }
    const CString& GetText() const noexcept { return m_Text; }

    // Sets the type and the value text as given, when the text reads as that
    // type (see the table above; it is kept as given, not made canonical).
    // Returns false and changes nothing for a text the type does not read or
    // a type outside PropType.
    bool Set(PropType type, const CString& text);

    // Each sets the type and the canonical text of the value. The double
    // forms return false and change nothing when a value is not finite.
    void SetInt(int value);
    bool SetDouble(double value);
    void SetBool(bool value);
    void SetText(const CString& text);
    bool SetPoint(const CDblPoint& pt);
    bool SetDblList(const CDblArray& values);
    void SetIntList(const CIntArray& values);

    // Each reads the value as its type, by the table above; false on a
    // mismatch, leaving the output untouched. The list forms replace the
    // contents of `values` (emptying it first) only when they succeed.
    bool GetInt(int& value) const;
    bool GetDouble(double& value) const;
    bool GetBool(bool& value) const;
    bool GetPoint(CDblPoint& pt) const;
    bool GetDblList(CDblArray& values) const;
    bool GetIntList(CIntArray& values) const;

    // Same name, type and text, byte for byte.
    bool operator==(const CORVObjPropItem& other) const noexcept {
        return m_Name == other.m_Name && m_Type == other.m_Type && m_Text == other.m_Text;
    }
    bool operator!=(const CORVObjPropItem& other) const noexcept { return !(*this == other); }

    // Record, with no version number or tag, like the other records:
    //   name   CString record: the byte length as a count (CArchive::WriteCount:
    //          one WORD below 0xFFFF), then the bytes, no terminator
    //   type   the PropType code, a 32-bit little-endian signed integer
    //   text   CString record, as the name
    // The double 0.5 named "w" is the 12 bytes
    //   01 00 'w'  02 00 00 00  03 00 '0' '.' '5'
    // Loading throws CArchiveException(endOfFile) when the stream ends inside
    // the record and CArchiveException(badSchema) for a type code outside
    // PropType or a text its type does not read; the item is then unchanged.
    void Serialize(CArchive& ar) override;

private:
    CString m_Name;
    PropType m_Type = PROP_TYPE_TEXT;
    CString m_Text;
};

// A bag of properties with unique names, kept in the order they were first
// added. Lookup by name goes through a hash index of the names: Find and the
// getters take constant time on average, adding a new name amortised
// constant time; Remove takes time linear in the count (the later properties
// move up one place).
class ORVMATH_API CORVObjProp : public CObject {
    DECLARE_SERIAL(CORVObjProp)
public:
    CORVObjProp() = default;
    CORVObjProp(const CORVObjProp&) = default;
    CORVObjProp& operator=(const CORVObjProp&) = default;
    ~CORVObjProp() override = default;

    int GetCount() const noexcept { return static_cast<int>(m_Items.size()); }
    bool IsEmpty() const noexcept { return m_Items.empty(); }
    // The property at `index`, 0 being the first added; throws
    // CInvalidArgException outside 0..GetCount()-1, as the arrays do.
    const CORVObjPropItem& GetAt(int index) const;
    // Insertion order, for range-for.
    std::vector<CORVObjPropItem>::const_iterator begin() const noexcept { return m_Items.begin(); }
    std::vector<CORVObjPropItem>::const_iterator end() const noexcept { return m_Items.end(); }

    // The index of the property named `name`, or -1.
    int Find(const CString& name) const;
    // The property named `name`, or nullptr. The pointer is valid until the
    // bag next changes.
    const CORVObjPropItem* Lookup(const CString& name) const;

    // Adding a property under a name the bag holds replaces that property's
    // type and value in place: it keeps its position. A new name goes last.
    // Add stores the item as it is; the others store the value as the
    // item's setter of the same name does, and return false and change
    // nothing when that setter refuses the value.
    void Add(const CORVObjPropItem& item);
    bool Set(const CString& name, PropType type, const CString& text);
    void SetInt(const CString& name, int value);
    bool SetDouble(const CString& name, double value);
    void SetBool(const CString& name, bool value);
    void SetText(const CString& name, const CString& text);
    bool SetPoint(const CString& name, const CDblPoint& pt);
    bool SetDblList(const CString& name, const CDblArray& values);
    void SetIntList(const CString& name, const CIntArray& values);

    // Read the property named `name` as the item's getter of the same name
    // does; the output changes only with PROP_OK.
    PropStatus GetInt(const CString& name, int& value) const;
    PropStatus GetDouble(const CString& name, double& value) const;
    PropStatus GetBool(const CString& name, bool& value) const;
    PropStatus GetText(const CString& name, CString& text) const;
    PropStatus GetPoint(const CString& name, CDblPoint& pt) const;
    PropStatus GetDblList(const CString& name, CDblArray& values) const;
    PropStatus GetIntList(const CString& name, CIntArray& values) const;

    // Removes the property named `name`; the others keep their order. False
    // when there is none.
    bool Remove(const CString& name);
    void RemoveAll() noexcept;

    // The same properties in the same order.
    bool operator==(const CORVObjProp& other) const noexcept { return m_Items == other.m_Items; }
    bool operator!=(const CORVObjProp& other) const noexcept { return !(*this == other); }

    // Record, with no version number or tag, like the other records: the
    // property count (CArchive::WriteCount), then each property's record in
    // order (CORVObjPropItem::Serialize). Two properties, the int 7 named "n"
    // and the bool true named "ok", are the 23 bytes
    //   02 00
    //   01 00 'n'       01 00 00 00  01 00 '7'
    //   02 00 'o' 'k'   03 00 00 00  01 00 '1'
    // Loading reads the whole record before it changes the bag, so a failure
    // leaves the bag as it was. It throws CArchiveException(endOfFile) when
    // the stream ends inside the record or the count exceeds what the rest
    // of the stream could hold (before anything is allocated for it), and
    // CArchiveException(badSchema) for an item that does not load (see
    // CORVObjPropItem::Serialize) or a name that occurs twice.
    void Serialize(CArchive& ar) override;

private:
    template <class T>
    PropStatus Read(const CString& name, T& out, bool (CORVObjPropItem::*get)(T&) const) const;

    std::vector<CORVObjPropItem> m_Items;
    std::unordered_map<std::string, int> m_Index;  // name -> position in m_Items
};

}  // namespace ORVMATH
