// The binary archive: a buffered stream of values over a CFile.
//
// Every multi-byte value is little-endian on every host (a big-endian host
// swaps bytes); float and double are IEEE 754 binary32 and binary64; bool is
// one byte, 0 or 1 (any non-zero byte loads as true); char is one byte, short
// two, int, unsigned and LONG four, LONGLONG and ULONGLONG eight.
//
// Counts use the layout of the original platform's archives, so files written
// there load here:
//   count < 0xFFFF                 WORD count
//   count < 0xFFFFFFFF             WORD 0xFFFF, DWORD count
//   otherwise                      WORD 0xFFFF, DWORD 0xFFFFFFFF, 64-bit count
//
// Errors throw CArchiveException: readOnly for storing into a loading archive,
// writeOnly for loading from a storing archive, endOfFile when the stream ends
// inside a value or a block that is needed in full, generic after Close() or
// Abort(). Errors of the file itself throw CFileException.
#pragma once

#include <orvmath/export.h>
#include <orvmath/host/exceptions.h>
#include <orvmath/host/file.h>
#include <orvmath/host/types.h>

#include <cstddef>
#include <cstring>
#include <type_traits>

#if defined(__BYTE_ORDER__) && defined(__ORDER_BIG_ENDIAN__) && __BYTE_ORDER__ == __ORDER_BIG_ENDIAN__
#define ORVHOST_BIG_ENDIAN 1
#else
#define ORVHOST_BIG_ENDIAN 0
#endif

namespace orvhost_detail {

// The arithmetic types the archive inserts and extracts directly.
template <class T>
constexpr bool kArchivable = std::is_arithmetic_v<T> && !std::is_same_v<T, long double> &&
                             (sizeof(T) == 1 || sizeof(T) == 2 || sizeof(T) == 4 || sizeof(T) == 8);

template <std::size_t N> struct UIntOfSize;
template <> struct UIntOfSize<1> { using type = std::uint8_t; };
template <> struct UIntOfSize<2> { using type = std::uint16_t; };
template <> struct UIntOfSize<4> { using type = std::uint32_t; };
template <> struct UIntOfSize<8> { using type = std::uint64_t; };

// Copies one value between host order in memory and little-endian bytes.
template <class T>
inline void CopyLittleEndian(void* dst, const void* src) noexcept {
#if ORVHOST_BIG_ENDIAN
    typename UIntOfSize<sizeof(T)>::type u;
    std::memcpy(&u, src, sizeof(T));
    if constexpr (sizeof(T) == 2) u = __builtin_bswap16(u);
    if constexpr (sizeof(T) == 4) u = __builtin_bswap32(u);
    if constexpr (sizeof(T) == 8) u = __builtin_bswap64(u);
    std::memcpy(dst, &u, sizeof(T));
#else
    std::memcpy(dst, src, sizeof(T));
#endif
}

// Converts n values in place between host and little-endian order (no-op on
// little-endian hosts). Used for raw blocks of arithmetic elements.
template <class T>
inline void SwapToLittleEndian(T* p, std::size_t n) noexcept {
#if ORVHOST_BIG_ENDIAN
    if constexpr (sizeof(T) > 1)
        for (std::size_t i = 0; i < n; ++i) CopyLittleEndian<T>(p + i, p + i);
#else
    (void)p;
    (void)n;
#endif
}

}  // namespace orvhost_detail

class ORVMATH_API CArchive {
public:
    enum Mode { store = 0, load = 1, bNoFlushOnDelete = 2 };

    // An archive over an open file, storing (store) or loading (load), with a
    // buffer of nBufSize bytes (at least 16 are used). lpBuf, when given, is
    // used as the buffer and must hold nBufSize bytes for the archive's life.
    // The archive does not own the file.
    CArchive(CFile* pFile, UINT nMode, int nBufSize = 4096, void* lpBuf = nullptr);
    // Flushes a storing archive unless it was created with bNoFlushOnDelete
    // or already closed. Errors are swallowed here: call Close() to see them.
    ~CArchive();
    CArchive(const CArchive&) = delete;
    CArchive& operator=(const CArchive&) = delete;

    BOOL IsLoading() const noexcept { return (m_nMode & load) != 0; }
    BOOL IsStoring() const noexcept { return (m_nMode & load) == 0; }
    CFile* GetFile() const noexcept { return m_pFile; }

    // Storing: writes the buffer to the file and flushes the file. Loading:
    // drops the read-ahead and moves the file back to the archive's position.
    void Flush();
    // Flushes, then detaches the file; the archive cannot be used afterwards.
    void Close();
    // Detaches the file without flushing; buffered stored bytes are lost.
    void Abort() noexcept;

    // Reads up to nMax raw bytes; fewer only at the end of the stream.
    UINT Read(void* lpBuf, UINT nMax);
    // Writes nMax raw bytes.
    void Write(const void* lpBuf, UINT nMax);

    // Writes or reads a count in the layout above. On a 32-bit host a count
    // that does not fit DWORD_PTR throws CArchiveException(badIndex).
    void WriteCount(DWORD_PTR dwCount);
    DWORD_PTR ReadCount();

    // Writes nBytes raw bytes, passing them on in chunks so that no single
    // Write or file transfer exceeds INT_MAX bytes; the stream holds exactly
    // the bytes, as one Write of the whole block would. lpBuf may be null only
    // when nBytes is 0 (else CInvalidArgException).
    void WriteBlock(const void* lpBuf, std::size_t nBytes);
    // Reads exactly nBytes raw bytes in the same chunks; throws
    // CArchiveException(endOfFile) when the stream ends first. lpBuf may be
    // null only when nBytes is 0 (else CInvalidArgException).
    void ReadBlock(void* lpBuf, std::size_t nBytes);
    // Throws CArchiveException(endOfFile) unless the stream still holds at
    // least nBytes unread bytes (those in the buffer plus file length minus
    // file position); writeOnly on a storing archive. Call it before
    // allocating room for a loaded count, so that a damaged count fails
    // cleanly instead of attempting a huge allocation. The file must be
    // seekable (a CFile on a regular file, or a CMemFile).
    void CheckCanRead(ULONGLONG nBytes);
    // Reads a count for a block of elements of at least nElementBytes bytes
    // each and checks it with CheckCanRead before the caller allocates
    // anything for it. The count is read at its full 64 bits, so a count too
    // large for the stream fails with endOfFile on every host, 32-bit ones
    // included.
    ULONGLONG ReadElementCount(ULONGLONG nElementBytes);

    // Insertion and extraction of arithmetic values (BYTE, WORD, DWORD, LONG,
    // int, unsigned, short, char, bool, float, double, LONGLONG, ULONGLONG).
    template <class T, std::enable_if_t<orvhost_detail::kArchivable<T>, int> = 0>
    CArchive& operator<<(T value) {
        if (IsLoading()) AfxThrowArchiveException(CArchiveException::readOnly);
        if (static_cast<std::size_t>(m_lpBufMax - m_lpBufCur) < sizeof(T)) FlushBuffer();
        if constexpr (std::is_same_v<T, bool>) {
            *m_lpBufCur = static_cast<BYTE>(value ? 1 : 0);
        } else {
            orvhost_detail::CopyLittleEndian<T>(m_lpBufCur, &value);
        }
        m_lpBufCur += sizeof(T);
        return *this;
    }
    template <class T, std::enable_if_t<orvhost_detail::kArchivable<T>, int> = 0>
    CArchive& operator>>(T& value) {
        if (!IsLoading()) AfxThrowArchiveException(CArchiveException::writeOnly);
        if (static_cast<std::size_t>(m_lpBufMax - m_lpBufCur) < sizeof(T)) FillBuffer(sizeof(T));
        if constexpr (std::is_same_v<T, bool>) {
            value = *m_lpBufCur != 0;
        } else {
            orvhost_detail::CopyLittleEndian<T>(&value, m_lpBufCur);
        }
        m_lpBufCur += sizeof(T);
        return *this;
    }

private:
    ULONGLONG ReadCount64();

    void CheckStoring();
    void CheckLoading();
    // Storing: writes the buffered bytes to the file and empties the buffer.
    void FlushBuffer();
    // Loading: makes at least nNeeded bytes (<= buffer size) available in the
    // buffer, or throws endOfFile.
    void FillBuffer(std::size_t nNeeded);
    // Loading: moves the unread bytes to the front and reads as many more as
    // the buffer holds; returns the bytes now available.
    std::size_t ReadAhead();
    std::size_t Buffered() const noexcept { return static_cast<std::size_t>(m_lpBufMax - m_lpBufCur); }

    UINT m_nMode;
    CFile* m_pFile;
    std::size_t m_nBufSize;
    bool m_bUserBuf;
    BYTE* m_lpBufStart;
    BYTE* m_lpBufCur;  // next byte to store or load
    BYTE* m_lpBufMax;  // storing: end of the buffer; loading: end of the bytes read ahead
};

// The Serialize of a value that has its own operator<< and operator>> with
// CArchive: stores or loads it, as the archive's direction says.
template <class T>
void SerializeByOperators(CArchive& ar, T& value) {
    if (ar.IsLoading())
        ar >> value;
    else
        ar << value;
}
