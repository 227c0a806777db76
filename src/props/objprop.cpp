// Property items and bags: the value texts of each type, and the records.
#include <orvmath/objprop.h>

#include <orvmath/host/archive.h>
#include <orvmath/textnum.h>

#include "../text/numscan.h"

#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>
#include <system_error>

namespace ORVMATH {

namespace {

using text_detail::SkipSpace;

// The smallest item record: an empty name (a one-WORD count), the type code
// and an empty text. Bounds a loaded count by the bytes left in the stream.
constexpr ULONGLONG kItemMinBytes = 2 + 4 + 2;

// Each reader takes one value at p, white space around it included, and
// moves p past it; false when none is there.
bool ReadDouble(const char*& p, const char* last, double& value) {
    p = SkipSpace(p, last);
    if (!text_detail::ReadNumber(p, last, value)) return false;
    p = SkipSpace(p, last);
    return true;
}

bool ReadInt(const char*& p, const char* last, int& value) {
    p = SkipSpace(p, last);
    const char* first = p != last && *p == '+' ? p + 1 : p;  // from_chars takes '-' only
    if (first != p && first != last && *first == '-') return false;  // "+-5"
    const std::from_chars_result r = std::from_chars(first, last, value);
    if (r.ec != std::errc()) return false;  // no digits, or beyond the range of int
    p = SkipSpace(r.ptr, last);  // a '.' or 'e' left here fails in the caller
    return true;
}

// The whole text is one value.
template <class T>
bool ReadWhole(const CString& text, T& value, bool (*read)(const char*&, const char*, T&)) {
    const char* p = text.GetString();
    const char* const last = p + text.GetLength();
    T v{};
    if (!read(p, last, v) || p != last) return false;
    value = v;
    return true;
}

// Values separated by ','; blank text is the empty list.
template <class Array, class T>
bool ReadList(const CString& text, Array& values, bool (*read)(const char*&, const char*, T&)) {
    const char* p = text.GetString();
    const char* const last = p + text.GetLength();
    Array list;
    if (SkipSpace(p, last) != last) {
        for (;;) {
            T v{};
            if (!read(p, last, v)) return false;  // also after a trailing ','
            list.Add(v);
            if (p == last) break;
            if (*p++ != ',') return false;
        }
    }
    values.Copy(list);
    return true;
}

bool ReadBool(const CString& text, bool& value) {
    CString word = text;
    word.Trim().MakeLower();
    if (word != "1" && word != "0" && word != "true" && word != "false") return false;
    value = word == "1" || word == "true";
    return true;
}

bool IsPropType(std::int32_t code) noexcept { return code >= PROP_TYPE_INT && code <= PROP_TYPE_INTLIST; }

// Whether a property of type `have` may be read as `want`: its own type,
// text, and the widening of integers to doubles.
bool Accepts(PropType want, PropType have) noexcept {
    return have == want || have == PROP_TYPE_TEXT || (want == PROP_TYPE_DOUBLE && have == PROP_TYPE_INT) ||
           (want == PROP_TYPE_DBLLIST && have == PROP_TYPE_INTLIST);
}

// Whether `text` reads as a value of `type`.
bool Reads(PropType type, const CString& text) {
    int i = 0;
    double d = 0.0;
    bool b = false;
    CDblPoint pt;
    CDblArray ds;
    CIntArray is;
    switch (type) {
    case PROP_TYPE_INT: return ReadWhole(text, i, ReadInt);
    case PROP_TYPE_DOUBLE: return ReadWhole(text, d, ReadDouble);
    case PROP_TYPE_BOOL: return ReadBool(text, b);
    case PROP_TYPE_TEXT: return true;
    case PROP_TYPE_POINT: return StrToXY(text, pt);
    case PROP_TYPE_DBLLIST: return ReadList(text, ds, ReadDouble);
    case PROP_TYPE_INTLIST: return ReadList(text, is, ReadInt);
    }
    return false;
}

// Appends the shortest text that reads back as the same number.
template <class T>
void Append(std::string& out, T value) {
    char buf[32];  // the longest double, "-2.2250738585072014e-308", has 24
    const std::to_chars_result r = std::to_chars(buf, buf + sizeof buf, value);
    out.append(buf, r.ptr);
}

template <class Array>
std::string JoinList(const Array& values) {
    std::string out;
    for (INT_PTR i = 0; i < values.GetSize(); ++i) {
        if (i > 0) out += ',';
        Append(out, values[i]);
    }
    return out;
}

// Stores in `bag` an item named `name` that `set` fills, unless `set` refuses.
template <class Set>
bool AddWith(CORVObjProp& bag, const CString& name, Set set) {
    CORVObjPropItem item;
    item.SetName(name);
    if (!set(item)) return false;
    bag.Add(item);
    return true;
}

}  // namespace

IMPLEMENT_SERIAL(CORVObjPropItem, CObject, 1)

bool CORVObjPropItem::Set(PropType type, const CString& text) {
    if (!IsPropType(type) || !Reads(type, text)) return false;
    m_Type = type;
    m_Text = text;
    return true;
}

void CORVObjPropItem::SetInt(int value) {
    std::string text;
    Append(text, value);
    m_Type = PROP_TYPE_INT;
    m_Text = text;
}

bool CORVObjPropItem::SetDouble(double value) {
    if (!std::isfinite(value)) return false;
    std::string text;
    Append(text, value);
    m_Type = PROP_TYPE_DOUBLE;
    m_Text = text;
    return true;
}

void CORVObjPropItem::SetBool(bool value) {
    m_Type = PROP_TYPE_BOOL;
    m_Text = value ? "1" : "0";
}

void CORVObjPropItem::SetText(const CString& text) {
    m_Type = PROP_TYPE_TEXT;
    m_Text = text;
}

bool CORVObjPropItem::SetPoint(const CDblPoint& pt) {
    if (!IsFinite(pt)) return false;
    std::string text;
    Append(text, pt.x);
    text += ',';
    Append(text, pt.y);
    m_Type = PROP_TYPE_POINT;
    m_Text = text;
    return true;
}

bool CORVObjPropItem::SetDblList(const CDblArray& values) {
    for (const double v : values)
        if (!std::isfinite(v)) return false;
    m_Text = JoinList(values);
    m_Type = PROP_TYPE_DBLLIST;
    return true;
}

void CORVObjPropItem::SetIntList(const CIntArray& values) {
    m_Text = JoinList(values);
    m_Type = PROP_TYPE_INTLIST;
}

bool CORVObjPropItem::GetInt(int& value) const {
    return Accepts(PROP_TYPE_INT, m_Type) && ReadWhole(m_Text, value, ReadInt);
}

bool CORVObjPropItem::GetDouble(double& value) const {
    return Accepts(PROP_TYPE_DOUBLE, m_Type) && ReadWhole(m_Text, value, ReadDouble);
}

bool CORVObjPropItem::GetBool(bool& value) const {
    return Accepts(PROP_TYPE_BOOL, m_Type) && ReadBool(m_Text, value);
}

bool CORVObjPropItem::GetPoint(CDblPoint& pt) const {
    return Accepts(PROP_TYPE_POINT, m_Type) && StrToXY(m_Text, pt);
}

bool CORVObjPropItem::GetDblList(CDblArray& values) const {
    return Accepts(PROP_TYPE_DBLLIST, m_Type) && ReadList(m_Text, values, ReadDouble);
}

bool CORVObjPropItem::GetIntList(CIntArray& values) const {
    return Accepts(PROP_TYPE_INTLIST, m_Type) && ReadList(m_Text, values, ReadInt);
}

void CORVObjPropItem::Serialize(CArchive& ar) {
    CObject::Serialize(ar);
    if (ar.IsStoring()) {
        ar << m_Name << static_cast<std::int32_t>(m_Type) << m_Text;
        return;
    }
    CString name, text;
    std::int32_t code = 0;
    ar >> name >> code >> text;
    if (!Set(static_cast<PropType>(code), text)) AfxThrowArchiveException(CArchiveException::badSchema);
    m_Name = name;
}

IMPLEMENT_SERIAL(CORVObjProp, CObject, 1)

const CORVObjPropItem& CORVObjProp::GetAt(int index) const {
    if (index < 0 || index >= GetCount()) AfxThrowInvalidArgException();
    return m_Items[static_cast<std::size_t>(index)];
}

int CORVObjProp::Find(const CString& name) const {
    const auto it = m_Index.find(name.str());
    return it == m_Index.end() ? -1 : it->second;
}

const CORVObjPropItem* CORVObjProp::Lookup(const CString& name) const {
    const int i = Find(name);
    return i < 0 ? nullptr : &m_Items[static_cast<std::size_t>(i)];
}

void CORVObjProp::Add(const CORVObjPropItem& item) {
    const auto [it, added] = m_Index.try_emplace(item.GetName().str(), GetCount());
    if (!added) {
        m_Items[static_cast<std::size_t>(it->second)] = item;
        return;
    }
    try {
        m_Items.push_back(item);
    } catch (...) {
        m_Index.erase(it);  // the index and the items must agree
        throw;
    }
}

bool CORVObjProp::Set(const CString& name, PropType type, const CString& text) {
    return AddWith(*this, name, [&](CORVObjPropItem& item) { return item.Set(type, text); });
}

void CORVObjProp::SetInt(const CString& name, int value) {
    AddWith(*this, name, [&](CORVObjPropItem& item) { item.SetInt(value); return true; });
}

bool CORVObjProp::SetDouble(const CString& name, double value) {
    return AddWith(*this, name, [&](CORVObjPropItem& item) { return item.SetDouble(value); });
}

void CORVObjProp::SetBool(const CString& name, bool value) {
    AddWith(*this, name, [&](CORVObjPropItem& item) { item.SetBool(value); return true; });
}

void CORVObjProp::SetText(const CString& name, const CString& text) {
    AddWith(*this, name, [&](CORVObjPropItem& item) { item.SetText(text); return true; });
}

bool CORVObjProp::SetPoint(const CString& name, const CDblPoint& pt) {
    return AddWith(*this, name, [&](CORVObjPropItem& item) { return item.SetPoint(pt); });
}

bool CORVObjProp::SetDblList(const CString& name, const CDblArray& values) {
    return AddWith(*this, name, [&](CORVObjPropItem& item) { return item.SetDblList(values); });
}

void CORVObjProp::SetIntList(const CString& name, const CIntArray& values) {
    AddWith(*this, name, [&](CORVObjPropItem& item) { item.SetIntList(values); return true; });
}

template <class T>
PropStatus CORVObjProp::Read(const CString& name, T& out, bool (CORVObjPropItem::*get)(T&) const) const {
    const CORVObjPropItem* item = Lookup(name);
    if (item == nullptr) return PROP_MISSING;
    return (item->*get)(out) ? PROP_OK : PROP_MISMATCH;
}

PropStatus CORVObjProp::GetInt(const CString& name, int& value) const {
    return Read(name, value, &CORVObjPropItem::GetInt);
}

PropStatus CORVObjProp::GetDouble(const CString& name, double& value) const {
    return Read(name, value, &CORVObjPropItem::GetDouble);
}

PropStatus CORVObjProp::GetBool(const CString& name, bool& value) const {
    return Read(name, value, &CORVObjPropItem::GetBool);
}

PropStatus CORVObjProp::GetText(const CString& name, CString& text) const {
    const CORVObjPropItem* item = Lookup(name);
    if (item == nullptr) return PROP_MISSING;
    text = item->GetText();
    return PROP_OK;
}

PropStatus CORVObjProp::GetPoint(const CString& name, CDblPoint& pt) const {
    return Read(name, pt, &CORVObjPropItem::GetPoint);
}

PropStatus CORVObjProp::GetDblList(const CString& name, CDblArray& values) const {
    return Read(name, values, &CORVObjPropItem::GetDblList);
}

PropStatus CORVObjProp::GetIntList(const CString& name, CIntArray& values) const {
    return Read(name, values, &CORVObjPropItem::GetIntList);
}

bool CORVObjProp::Remove(const CString& name) {
    const auto it = m_Index.find(name.str());
    if (it == m_Index.end()) return false;
    const int removed = it->second;
    m_Index.erase(it);
    for (auto& entry : m_Index)
        if (entry.second > removed) --entry.second;
    m_Items.erase(m_Items.begin() + removed);
    return true;
}

void CORVObjProp::RemoveAll() noexcept {
    m_Items.clear();
    m_Index.clear();
}

void CORVObjProp::Serialize(CArchive& ar) {
    CObject::Serialize(ar);
    if (ar.IsStoring()) {
        ar.WriteCount(static_cast<DWORD_PTR>(m_Items.size()));
        for (CORVObjPropItem& item : m_Items) item.Serialize(ar);
        return;
    }
    const ULONGLONG n = ar.ReadElementCount(kItemMinBytes);
    if (n > static_cast<ULONGLONG>(std::numeric_limits<int>::max())) AfxThrowMemoryException();
    CORVObjProp loaded;
    for (ULONGLONG k = 0; k < n; ++k) {
        CORVObjPropItem item;
        item.Serialize(ar);
        loaded.Add(item);
        if (static_cast<ULONGLONG>(loaded.GetCount()) != k + 1) AfxThrowArchiveException(CArchiveException::badSchema);
    }
    m_Items.swap(loaded.m_Items);
    m_Index.swap(loaded.m_Index);
}

}  // namespace ORVMATH
