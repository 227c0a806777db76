// CString: a small narrow-character string of the host framework layer.
// Positions and lengths count bytes (char), starting at 0.
#pragma once

#include <orvmath/export.h>
#include <orvmath/host/types.h>

#include <cstring>
#include <string>

class CArchive;

class ORVMATH_API CString {
public:
    CString() = default;
    CString(const char* psz) : m_str(psz != nullptr ? psz : "") {}  // nullptr gives ""
    CString(const std::string& str) : m_str(str) {}
    CString(const char* pch, int nLength) : m_str(pch, pch != nullptr && nLength > 0 ? nLength : 0) {}

    int GetLength() const noexcept { return static_cast<int>(m_str.size()); }
    bool IsEmpty() const noexcept { return m_str.empty(); }
    void Empty() noexcept { m_str.clear(); }
    const char* GetString() const noexcept { return m_str.c_str(); }
    operator const char*() const noexcept { return m_str.c_str(); }
    const std::string& str() const noexcept { return m_str; }

    // The byte at nIndex; an index outside 0..GetLength()-1 throws
    // CInvalidArgException.
    char GetAt(int nIndex) const;

    CString& operator+=(const CString& s) { m_str += s.m_str; return *this; }
    CString& operator+=(const char* psz) { if (psz != nullptr) m_str += psz; return *this; }
    CString& operator+=(char ch) { m_str += ch; return *this; }

    // Replaces the contents with printf-style formatted text.
    void Format(const char* pszFormat, ...)
#if defined(__GNUC__)
        __attribute__((format(printf, 2, 3)))
#endif
        ;

    // Remove white space (isspace in the "C" locale) at both ends, the start
    // or the end; each returns the string.
    CString& Trim();
    CString& TrimLeft();
    CString& TrimRight();
    // ASCII case conversion; other bytes are left as they are.
    CString& MakeUpper();
    CString& MakeLower();

    // Position of the first occurrence at or after nStart, or -1.
    int Find(char ch, int nStart = 0) const;
    int Find(const char* pszSub, int nStart = 0) const;
    // Substrings; counts and positions are clamped to the string, so they
    // never throw (Mid(1) is everything from position 1 on).
    CString Mid(int nFirst) const;
    CString Mid(int nFirst, int nCount) const;
    CString Left(int nCount) const;
    CString Right(int nCount) const;

    friend bool operator==(const CString& a, const CString& b) noexcept { return a.m_str == b.m_str; }
    friend bool operator==(const CString& a, const char* b) noexcept { return a.m_str == (b != nullptr ? b : ""); }
    friend bool operator==(const char* a, const CString& b) noexcept { return b == a; }
    friend bool operator!=(const CString& a, const CString& b) noexcept { return !(a == b); }
    friend bool operator!=(const CString& a, const char* b) noexcept { return !(a == b); }
    friend bool operator!=(const char* a, const CString& b) noexcept { return !(b == a); }
    friend bool operator<(const CString& a, const CString& b) noexcept { return a.m_str < b.m_str; }
    friend CString operator+(CString a, const CString& b) { a += b; return a; }
    friend CString operator+(CString a, const char* b) { a += b; return a; }
    friend CString operator+(const char* a, const CString& b) { CString s(a); s += b; return s; }

private:
    std::string m_str;
};

// Archive record of a string: its length with CArchive::WriteCount, then the
// bytes (no terminator). Loading checks the length against the bytes the
// stream still holds before allocating.
ORVMATH_API CArchive& operator<<(CArchive& ar, const CString& s);
ORVMATH_API CArchive& operator>>(CArchive& ar, CString& s);
