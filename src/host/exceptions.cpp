// Exceptions of the host framework layer.
#include <orvmath/host/exceptions.h>

CException::~CException() = default;
const char* CException::what() const noexcept { return "host framework exception"; }

CInvalidArgException::~CInvalidArgException() = default;
const char* CInvalidArgException::what() const noexcept { return "invalid argument or index out of range"; }

CMemoryException::~CMemoryException() = default;
const char* CMemoryException::what() const noexcept { return "out of memory"; }

CArchiveException::~CArchiveException() = default;
const char* CArchiveException::what() const noexcept {
    switch (m_cause) {
    case none: return "archive error";
    case generic: return "archive error: unusable archive or unsupported element";
    case readOnly: return "archive error: storing into a loading archive";
    case endOfFile: return "archive error: unexpected end of the stream";
    case writeOnly: return "archive error: loading from a storing archive";
    case badIndex: return "archive error: count too large for this host";
    case badClass: return "archive error: bad class";
    case badSchema: return "archive error: bad schema";
    default: return "archive error: unknown cause";
    }
}

CFileException::~CFileException() = default;
const char* CFileException::what() const noexcept {
    switch (m_cause) {
    case none: return "file error";
    case genericException: return "file error";
    case fileNotFound: return "file error: file not found";
    case badPath: return "file error: bad path";
    case accessDenied: return "file error: access denied";
    case invalidFile: return "file error: file not open";
    case badSeek: return "file error: bad seek";
    case hardIO: return "file error: input/output error";
    case diskFull: return "file error: disk full";
    case endOfFile: return "file error: end of file";
    default: return "file error: unknown cause";
    }
}

void AfxThrowInvalidArgException() { throw CInvalidArgException(); }
void AfxThrowMemoryException() { throw CMemoryException(); }
void AfxThrowArchiveException(int cause) { throw CArchiveException(cause); }
void AfxThrowFileException(int cause, LONG lOsError) { throw CFileException(cause, lOsError); }
