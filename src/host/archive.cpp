// CArchive: buffering, raw blocks, counts and the checks that turn a short or
// damaged stream into CArchiveException.
#include <orvmath/host/archive.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <new>

namespace {

// Room for the largest value (8 bytes) with slack; smaller requests are raised.
constexpr int kMinBufSize = 16;
// Largest single transfer of WriteBlock/ReadBlock: below INT_MAX, so that no
// byte count of one Read or Write can overflow a signed 32-bit integer.
constexpr std::size_t kBlockChunk = std::size_t{1} << 30;

}  // namespace

CArchive::CArchive(CFile* pFile, UINT nMode, int nBufSize, void* lpBuf)
    : m_nMode(nMode),
      m_pFile(pFile),
      m_nBufSize(static_cast<std::size_t>(std::max(nBufSize, kMinBufSize))),
      m_bUserBuf(lpBuf != nullptr),
      m_lpBufStart(nullptr) {
    if (pFile == nullptr || (lpBuf != nullptr && nBufSize < kMinBufSize)) AfxThrowInvalidArgException();
    if (m_bUserBuf) {
        m_lpBufStart = static_cast<BYTE*>(lpBuf);
    } else {
        m_lpBufStart = new (std::nothrow) BYTE[m_nBufSize];
        if (m_lpBufStart == nullptr) AfxThrowMemoryException();
    }
    m_lpBufCur = m_lpBufStart;
    m_lpBufMax = IsLoading() ? m_lpBufStart : m_lpBufStart + m_nBufSize;
}

CArchive::~CArchive() {
    if (m_pFile != nullptr && IsStoring() && (m_nMode & bNoFlushOnDelete) == 0) {
        try {
            Flush();
        } catch (...) {
            // A destructor must not throw; Close() reports the error instead.
        }
    }
    if (!m_bUserBuf) delete[] m_lpBufStart;
}

void CArchive::CheckStoring() {
    if (IsLoading()) AfxThrowArchiveException(CArchiveException::readOnly);
}

void CArchive::CheckLoading() {
    if (!IsLoading()) AfxThrowArchiveException(CArchiveException::writeOnly);
}

void CArchive::Flush() {
    if (m_pFile == nullptr) AfxThrowArchiveException(CArchiveException::generic);
    if (IsStoring()) {
        FlushBuffer();
        m_pFile->Flush();
    } else {
        const std::size_t nUnread = Buffered();
        if (nUnread > 0) m_pFile->Seek(-static_cast<LONGLONG>(nUnread), CFile::current);
        m_lpBufCur = m_lpBufMax = m_lpBufStart;
    }
}

void CArchive::Close() {
    Flush();
    Abort();
}

void CArchive::Abort() noexcept {
    m_pFile = nullptr;
    // An empty window sends every later insertion or extraction to
    // FlushBuffer or FillBuffer, which report the closed archive.
    m_lpBufCur = m_lpBufMax = m_lpBufStart;
}

void CArchive::FlushBuffer() {
    if (m_pFile == nullptr) AfxThrowArchiveException(CArchiveException::generic);
    const std::size_t n = static_cast<std::size_t>(m_lpBufCur - m_lpBufStart);
    m_lpBufCur = m_lpBufStart;
    if (n > 0) m_pFile->Write(m_lpBufStart, static_cast<UINT>(n));
}

std::size_t CArchive::ReadAhead() {
    if (m_pFile == nullptr) AfxThrowArchiveException(CArchiveException::generic);
    const std::size_t nAvail = Buffered();
    if (nAvail > 0 && m_lpBufCur != m_lpBufStart) std::memmove(m_lpBufStart, m_lpBufCur, nAvail);
    m_lpBufCur = m_lpBufStart;
    m_lpBufMax = m_lpBufStart + nAvail;
    const UINT nRead = m_pFile->Read(m_lpBufMax, static_cast<UINT>(m_nBufSize - nAvail));
    m_lpBufMax += nRead;
    return nAvail + nRead;
}

void CArchive::FillBuffer(std::size_t nNeeded) {
    if (ReadAhead() < nNeeded) AfxThrowArchiveException(CArchiveException::endOfFile);
}

UINT CArchive::Read(void* lpBuf, UINT nMax) {
    CheckLoading();
    if (nMax == 0) return 0;
    if (lpBuf == nullptr) AfxThrowInvalidArgException();
    BYTE* pDst = static_cast<BYTE*>(lpBuf);
    std::size_t nDone = std::min<std::size_t>(nMax, Buffered());
    std::memcpy(pDst, m_lpBufCur, nDone);
    m_lpBufCur += nDone;
    const std::size_t nLeft = nMax - nDone;
    if (nLeft == 0) return nMax;
    if (m_pFile == nullptr) AfxThrowArchiveException(CArchiveException::generic);
    if (nLeft >= m_nBufSize) {
        // Large reads go straight to the caller's memory.
        nDone += m_pFile->Read(pDst + nDone, static_cast<UINT>(nLeft));
    } else {
        const std::size_t n = std::min(nLeft, ReadAhead());
        std::memcpy(pDst + nDone, m_lpBufCur, n);
        m_lpBufCur += n;
        nDone += n;
    }
    return static_cast<UINT>(nDone);
}

void CArchive::Write(const void* lpBuf, UINT nMax) {
    CheckStoring();
    if (nMax == 0) return;
    if (lpBuf == nullptr) AfxThrowInvalidArgException();
    if (nMax > static_cast<std::size_t>(m_lpBufMax - m_lpBufCur)) {
        FlushBuffer();
        if (nMax >= m_nBufSize) {
            m_pFile->Write(lpBuf, nMax);  // large writes bypass the buffer
            return;
        }
    }
    std::memcpy(m_lpBufCur, lpBuf, nMax);
    m_lpBufCur += nMax;
}

void CArchive::WriteBlock(const void* lpBuf, std::size_t nBytes) {
    CheckStoring();
    if (nBytes > 0 && lpBuf == nullptr) AfxThrowInvalidArgException();
    const BYTE* p = static_cast<const BYTE*>(lpBuf);
    while (nBytes > 0) {
        const std::size_t n = std::min(nBytes, kBlockChunk);
        Write(p, static_cast<UINT>(n));
        p += n;
        nBytes -= n;
    }
}

void CArchive::ReadBlock(void* lpBuf, std::size_t nBytes) {
    CheckLoading();
    if (nBytes > 0 && lpBuf == nullptr) AfxThrowInvalidArgException();
    BYTE* p = static_cast<BYTE*>(lpBuf);
    while (nBytes > 0) {
        const std::size_t n = std::min(nBytes, kBlockChunk);
        if (Read(p, static_cast<UINT>(n)) != n) AfxThrowArchiveException(CArchiveException::endOfFile);
        p += n;
        nBytes -= n;
    }
}

void CArchive::CheckCanRead(ULONGLONG nBytes) {
    CheckLoading();
    const std::size_t nBuffered = Buffered();
    if (nBytes <= nBuffered) return;
    if (m_pFile == nullptr) AfxThrowArchiveException(CArchiveException::generic);
    const ULONGLONG nLength = m_pFile->GetLength();
    const ULONGLONG nPosition = m_pFile->GetPosition();
    const ULONGLONG nInFile = nLength > nPosition ? nLength - nPosition : 0;
    if (nBytes - nBuffered > nInFile) AfxThrowArchiveException(CArchiveException::endOfFile);
}

ULONGLONG CArchive::ReadElementCount(ULONGLONG nElementBytes) {
    const ULONGLONG n = ReadCount64();
    if (nElementBytes != 0 && n > std::numeric_limits<ULONGLONG>::max() / nElementBytes)
        AfxThrowArchiveException(CArchiveException::endOfFile);
    CheckCanRead(n * nElementBytes);
    return n;
}

void CArchive::WriteCount(DWORD_PTR dwCount) {
    const ULONGLONG n = dwCount;
    if (n < 0xFFFFu) {
        *this << static_cast<WORD>(n);
        return;
    }
    *this << static_cast<WORD>(0xFFFFu);
    if (n < 0xFFFFFFFFu) {
        *this << static_cast<DWORD>(n);
        return;
    }
    *this << static_cast<DWORD>(0xFFFFFFFFu) << n;
}

ULONGLONG CArchive::ReadCount64() {
    WORD w;
    *this >> w;
    if (w != 0xFFFFu) return w;
    DWORD dw;
    *this >> dw;
    if (dw != 0xFFFFFFFFu) return dw;
    ULONGLONG n;
    *this >> n;
    return n;
}

DWORD_PTR CArchive::ReadCount() {
    const ULONGLONG n = ReadCount64();
    if (n > std::numeric_limits<DWORD_PTR>::max()) AfxThrowArchiveException(CArchiveException::badIndex);
    return static_cast<DWORD_PTR>(n);
}
