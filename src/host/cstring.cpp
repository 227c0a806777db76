// CString: formatting, trimming, case, search, substrings and the archive record.
#include <orvmath/host/cstring.h>

#include <orvmath/host/archive.h>
#include <orvmath/host/exceptions.h>

#include <algorithm>
#include <cstdarg>
#include <cstdio>

namespace {

bool IsSpace(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\v' || c == '\f' || c == '\r'; }

// Clamps a position or count into 0..limit.
std::size_t Clamp(int n, std::size_t limit) {
    return n <= 0 ? 0 : std::min(static_cast<std::size_t>(n), limit);
}

}  // namespace

char CString::GetAt(int nIndex) const {
    if (nIndex < 0 || nIndex >= GetLength()) AfxThrowInvalidArgException();
    return m_str[static_cast<std::size_t>(nIndex)];
}

void CString::Format(const char* pszFormat, ...) {
    if (pszFormat == nullptr) AfxThrowInvalidArgException();
    va_list args;
    va_start(args, pszFormat);
    va_list again;
    va_copy(again, args);
    const int n = std::vsnprintf(nullptr, 0, pszFormat, args);
    va_end(args);
    if (n < 0) {
        va_end(again);
        AfxThrowInvalidArgException();
    }
    std::string result(static_cast<std::size_t>(n) + 1, '\0');
    std::vsnprintf(&result[0], result.size(), pszFormat, again);
    va_end(again);
    result.resize(static_cast<std::size_t>(n));
    m_str.swap(result);
}

CString& CString::TrimLeft() {
    const auto first = std::find_if_not(m_str.begin(), m_str.end(), IsSpace);
    m_str.erase(m_str.begin(), first);
    return *this;
}

CString& CString::TrimRight() {
    const auto last = std::find_if_not(m_str.rbegin(), m_str.rend(), IsSpace);
    m_str.erase(last.base(), m_str.end());
    return *this;
}

CString& CString::Trim() { return TrimRight().TrimLeft(); }

CString& CString::MakeUpper() {
    for (char& c : m_str)
        if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
    return *this;
}

CString& CString::MakeLower() {
    for (char& c : m_str)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    return *this;
}

int CString::Find(char ch, int nStart) const {
    if (nStart < 0 || nStart > GetLength()) return -1;
    const std::size_t pos = m_str.find(ch, static_cast<std::size_t>(nStart));
    return pos == std::string::npos ? -1 : static_cast<int>(pos);
}

int CString::Find(const char* pszSub, int nStart) const {
    if (pszSub == nullptr || nStart < 0 || nStart > GetLength()) return -1;
    const std::size_t pos = m_str.find(pszSub, static_cast<std::size_t>(nStart));
    return pos == std::string::npos ? -1 : static_cast<int>(pos);
}

CString CString::Mid(int nFirst) const { return Mid(nFirst, GetLength()); }

CString CString::Mid(int nFirst, int nCount) const {
    const std::size_t first = Clamp(nFirst, m_str.size());
    return CString(m_str.substr(first, Clamp(nCount, m_str.size() - first)));
}

CString CString::Left(int nCount) const { return CString(m_str.substr(0, Clamp(nCount, m_str.size()))); }

CString CString::Right(int nCount) const {
    const std::size_t n = Clamp(nCount, m_str.size());
    return CString(m_str.substr(m_str.size() - n));
}

CArchive& operator<<(CArchive& ar, const CString& s) {
    ar.WriteCount(s.str().size());
    ar.WriteBlock(s.GetString(), s.str().size());
    return ar;
}

CArchive& operator>>(CArchive& ar, CString& s) {
    const DWORD_PTR n = ar.ReadCount();
    ar.CheckCanRead(n);
    std::string text(n, '\0');
    ar.ReadBlock(&text[0], n);
    s = CString(text);
    return ar;
}
