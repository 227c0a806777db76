// Exceptions of the host framework layer. They are thrown by value and caught
// by reference (catch (CArchiveException& e)); all derive from CException,
// which derives from std::exception, so what() always gives a readable text.
#pragma once

#include <orvmath/export.h>
#include <orvmath/host/types.h>

#include <exception>

// Base of every exception of this layer.
class ORVMATH_API CException : public std::exception {
public:
    CException() noexcept = default;
    ~CException() override;
    const char* what() const noexcept override;  // "host framework exception"
};

// An array index out of range, a null element pointer with a non-zero count,
// or another invalid argument.
class ORVMATH_API CInvalidArgException : public CException {
public:
    ~CInvalidArgException() override;
    const char* what() const noexcept override;
};

// An allocation cannot be satisfied, including an absurd element count whose
// byte size cannot even be represented.
class ORVMATH_API CMemoryException : public CException {
public:
    ~CMemoryException() override;
    const char* what() const noexcept override;
};

// Misuse of an archive or a damaged or short stream. m_cause tells which.
class ORVMATH_API CArchiveException : public CException {
public:
    enum {
        none,
        generic,    // unspecified error, e.g. use of a closed archive or an unsupported element type
        readOnly,   // storing into an archive that is loading
        endOfFile,  // the stream ended inside a value, or a count exceeds what the stream still holds
        writeOnly,  // loading from an archive that is storing
        badIndex,   // a count that does not fit this host's address space
        badClass,
        badSchema
    };
    explicit CArchiveException(int cause = none) noexcept : m_cause(cause) {}
    ~CArchiveException() override;
    const char* what() const noexcept override;  // text naming the cause
    int m_cause;
};

// A file cannot be opened, read, written or positioned. m_cause tells why,
// m_lOsError holds the operating system's error number (errno) or 0.
class ORVMATH_API CFileException : public CException {
public:
    enum {
        none,
        genericException,
        fileNotFound,
        badPath,
        accessDenied,
        invalidFile,  // the file is not open
        badSeek,      // a seek to a negative or unreachable position
        hardIO,
        diskFull,
        endOfFile
    };
    explicit CFileException(int cause = none, LONG lOsError = 0) noexcept
        : m_cause(cause), m_lOsError(lOsError) {}
    ~CFileException() override;
    const char* what() const noexcept override;  // text naming the cause
    int m_cause;
    LONG m_lOsError;
};

// Throwing helpers, kept out of line so that the inline checks that call them
// stay small.
[[noreturn]] ORVMATH_API void AfxThrowInvalidArgException();
[[noreturn]] ORVMATH_API void AfxThrowMemoryException();
[[noreturn]] ORVMATH_API void AfxThrowArchiveException(int cause);
[[noreturn]] ORVMATH_API void AfxThrowFileException(int cause, LONG lOsError = 0);
