// CFile over an operating-system file descriptor, CMemFile over a block of memory.
#include <orvmath/host/file.h>

#include <orvmath/host/exceptions.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>

#include <fcntl.h>
#include <sys/stat.h>
#if defined(_WIN32)
#include <io.h>
#define ORVHOST_OPEN ::_open
#define ORVHOST_READ ::_read
#define ORVHOST_WRITE ::_write
#define ORVHOST_LSEEK ::_lseeki64
#define ORVHOST_CLOSE ::_close
#define ORVHOST_FSTAT ::_fstati64
#define ORVHOST_STAT_T struct _stati64
#define ORVHOST_BINARY _O_BINARY
#else
#include <unistd.h>
#define ORVHOST_OPEN ::open
#define ORVHOST_READ ::read
#define ORVHOST_WRITE ::write
#define ORVHOST_LSEEK ::lseek
#define ORVHOST_CLOSE ::close
#define ORVHOST_FSTAT ::fstat
#define ORVHOST_STAT_T struct stat
#define ORVHOST_BINARY 0
#endif

namespace {

int CauseOfErrno(int err) {
    switch (err) {
    case ENOENT: return CFileException::fileNotFound;
    case ENOTDIR:
    case ENAMETOOLONG: return CFileException::badPath;
    case EACCES:
    case EPERM:
    case EROFS: return CFileException::accessDenied;
    case EBADF: return CFileException::invalidFile;
    case ENOSPC: return CFileException::diskFull;
    case EIO: return CFileException::hardIO;
    case EINVAL: return CFileException::badSeek;
    default: return CFileException::genericException;
    }
}

[[noreturn]] void ThrowErrno() {
    const int err = errno;
    AfxThrowFileException(CauseOfErrno(err), err);
}

int OsFlags(UINT nOpenFlags) {
    int flags = ORVHOST_BINARY;
    switch (nOpenFlags & 3u) {
    case CFile::modeWrite: flags |= O_WRONLY; break;
    case CFile::modeReadWrite: flags |= O_RDWR; break;
    default: flags |= O_RDONLY; break;
    }
    if ((nOpenFlags & CFile::modeCreate) != 0) flags |= O_CREAT | O_TRUNC;
    return flags;
}

}  // namespace

// ---------------------------------------------------------------------------
// CFile

CFile::CFile(const char* lpszFileName, UINT nOpenFlags) {
    if (!Open(lpszFileName, nOpenFlags)) ThrowErrno();
}

CFile::~CFile() {
    if (m_hFile >= 0) ORVHOST_CLOSE(m_hFile);
}

BOOL CFile::Open(const char* lpszFileName, UINT nOpenFlags) {
    Close();
    if (lpszFileName == nullptr) {
        errno = ENOENT;
        return FALSE;
    }
    do {
        m_hFile = ORVHOST_OPEN(lpszFileName, OsFlags(nOpenFlags), 0666);
    } while (m_hFile < 0 && errno == EINTR);
    return m_hFile >= 0 ? TRUE : FALSE;
}

UINT CFile::Read(void* lpBuf, UINT nCount) {
    if (m_hFile < 0) AfxThrowFileException(CFileException::invalidFile);
    if (nCount > 0 && lpBuf == nullptr) AfxThrowInvalidArgException();
    UINT nDone = 0;
    while (nDone < nCount) {
        const auto n = ORVHOST_READ(m_hFile, static_cast<char*>(lpBuf) + nDone, nCount - nDone);
        if (n < 0) {
            if (errno == EINTR) continue;
            ThrowErrno();
        }
        if (n == 0) break;  // end of file
        nDone += static_cast<UINT>(n);
    }
    return nDone;
}

void CFile::Write(const void* lpBuf, UINT nCount) {
    if (m_hFile < 0) AfxThrowFileException(CFileException::invalidFile);
    if (nCount > 0 && lpBuf == nullptr) AfxThrowInvalidArgException();
    UINT nDone = 0;
    while (nDone < nCount) {
        const auto n = ORVHOST_WRITE(m_hFile, static_cast<const char*>(lpBuf) + nDone, nCount - nDone);
        if (n < 0) {
            if (errno == EINTR) continue;
            ThrowErrno();
        }
        if (n == 0) AfxThrowFileException(CFileException::diskFull);
        nDone += static_cast<UINT>(n);
    }
}

ULONGLONG CFile::Seek(LONGLONG lOff, UINT nFrom) {
    if (m_hFile < 0) AfxThrowFileException(CFileException::invalidFile);
    const int whence = nFrom == current ? SEEK_CUR : nFrom == end ? SEEK_END : SEEK_SET;
    const auto pos = ORVHOST_LSEEK(m_hFile, lOff, whence);
    if (pos < 0) AfxThrowFileException(CFileException::badSeek, errno);
    return static_cast<ULONGLONG>(pos);
}

ULONGLONG CFile::GetLength() const {
    if (m_hFile < 0) AfxThrowFileException(CFileException::invalidFile);
    ORVHOST_STAT_T st;
    if (ORVHOST_FSTAT(m_hFile, &st) != 0) ThrowErrno();
    return static_cast<ULONGLONG>(st.st_size);
}

ULONGLONG CFile::GetPosition() const {
    if (m_hFile < 0) AfxThrowFileException(CFileException::invalidFile);
    const auto pos = ORVHOST_LSEEK(m_hFile, 0, SEEK_CUR);
    if (pos < 0) ThrowErrno();
    return static_cast<ULONGLONG>(pos);
}

void CFile::Flush() {
    if (m_hFile < 0) AfxThrowFileException(CFileException::invalidFile);
}

void CFile::Close() {
    if (m_hFile < 0) return;
    const int h = m_hFile;
    m_hFile = -1;
    if (ORVHOST_CLOSE(h) != 0 && errno != EINTR) ThrowErrno();
}

// ---------------------------------------------------------------------------
// CMemFile

CMemFile::CMemFile(UINT nGrowBytes) : m_nGrowBytes(nGrowBytes) {}

CMemFile::CMemFile(BYTE* lpBuffer, UINT nBufferSize, UINT nGrowBytes) {
    Attach(lpBuffer, nBufferSize, nGrowBytes);
}

CMemFile::~CMemFile() { Reset(); }

void CMemFile::Reset() noexcept {
    if (m_bAutoDelete) std::free(m_lpBuffer);
    m_lpBuffer = nullptr;
    m_nBufferSize = m_nFileSize = m_nPosition = 0;
    m_bAutoDelete = true;
}

void CMemFile::Attach(BYTE* lpBuffer, UINT nBufferSize, UINT nGrowBytes) {
    if (lpBuffer == nullptr && nBufferSize > 0) AfxThrowInvalidArgException();
    Reset();
    m_lpBuffer = lpBuffer;
    m_nBufferSize = nBufferSize;
    m_nFileSize = nGrowBytes == 0 ? nBufferSize : 0;
    m_nGrowBytes = nGrowBytes;
    m_bAutoDelete = false;
}

BYTE* CMemFile::Detach() {
    BYTE* p = m_lpBuffer;
    m_lpBuffer = nullptr;  // so that Reset does not free it
    Reset();
    return p;
}

BOOL CMemFile::Open(const char*, UINT) { return FALSE; }

UINT CMemFile::Read(void* lpBuf, UINT nCount) {
    if (nCount > 0 && lpBuf == nullptr) AfxThrowInvalidArgException();
    if (m_nPosition >= m_nFileSize || nCount == 0) return 0;
    const std::size_t n = std::min<std::size_t>(nCount, m_nFileSize - m_nPosition);
    std::memcpy(lpBuf, m_lpBuffer + m_nPosition, n);
    m_nPosition += n;
    return static_cast<UINT>(n);
}

void CMemFile::Write(const void* lpBuf, UINT nCount) {
    if (nCount == 0) return;
    if (lpBuf == nullptr) AfxThrowInvalidArgException();
    if (nCount > std::numeric_limits<std::size_t>::max() - m_nPosition) AfxThrowMemoryException();
    const std::size_t nEnd = m_nPosition + nCount;
    if (nEnd > m_nBufferSize) Grow(nEnd);
    if (m_nPosition > m_nFileSize) std::memset(m_lpBuffer + m_nFileSize, 0, m_nPosition - m_nFileSize);
    std::memcpy(m_lpBuffer + m_nPosition, lpBuf, nCount);
    m_nPosition = nEnd;
    if (nEnd > m_nFileSize) m_nFileSize = nEnd;
}

void CMemFile::Grow(std::size_t nNeeded) {
    if (m_nGrowBytes == 0) AfxThrowMemoryException();  // a fixed block cannot grow
    // Double the block (at least by the grow step) so that a long run of small
    // writes costs linear time, then round up to the grow step.
    std::size_t nNew = std::max(nNeeded, m_nBufferSize + std::max(m_nBufferSize, m_nGrowBytes));
    if (nNew < nNeeded) nNew = nNeeded;  // the doubling overflowed
    const std::size_t nRounded = (nNew + m_nGrowBytes - 1) / m_nGrowBytes * m_nGrowBytes;
    if (nRounded >= nNew) nNew = nRounded;
    void* p = std::realloc(m_lpBuffer, nNew);
    if (p == nullptr) AfxThrowMemoryException();
    m_lpBuffer = static_cast<BYTE*>(p);
    m_nBufferSize = nNew;
    m_bAutoDelete = true;  // realloc took over the caller's block, if it was one
}

ULONGLONG CMemFile::Seek(LONGLONG lOff, UINT nFrom) {
    const LONGLONG base = nFrom == current ? static_cast<LONGLONG>(m_nPosition)
                          : nFrom == end   ? static_cast<LONGLONG>(m_nFileSize)
                                           : 0;
    if ((lOff < 0 && base + lOff < 0) ||
        (lOff > 0 && static_cast<ULONGLONG>(lOff) >
                         std::min<ULONGLONG>(std::numeric_limits<std::size_t>::max(),
                                             std::numeric_limits<LONGLONG>::max()) - static_cast<ULONGLONG>(base)))
        AfxThrowFileException(CFileException::badSeek);
    m_nPosition = static_cast<std::size_t>(base + lOff);
    return m_nPosition;
}

ULONGLONG CMemFile::GetLength() const { return m_nFileSize; }
ULONGLONG CMemFile::GetPosition() const { return m_nPosition; }
void CMemFile::Flush() {}
void CMemFile::Close() { Reset(); }
