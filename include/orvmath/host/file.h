// Files: CFile over an operating-system file, CMemFile over a growable block
// of memory. Errors throw CFileException (CMemoryException when a memory file
// cannot grow).
#pragma once

#include <orvmath/export.h>
#include <orvmath/host/types.h>

#include <cstddef>

class ORVMATH_API CFile {
public:
    // modeRead, modeWrite and modeReadWrite are exclusive; modeCreate creates
    // the file or truncates an existing one. Without modeCreate the file must
    // exist and writing starts at its beginning.
    enum OpenFlags { modeRead = 0, modeWrite = 1, modeReadWrite = 2, modeCreate = 0x1000 };
    enum SeekPosition { begin = 0, current = 1, end = 2 };

    CFile() noexcept = default;
    // Opens the file; throws CFileException when it cannot.
    CFile(const char* lpszFileName, UINT nOpenFlags);
    virtual ~CFile();  // closes the file, ignoring errors
    CFile(const CFile&) = delete;
    CFile& operator=(const CFile&) = delete;

    // Opens the file (closing any open one first); FALSE when it cannot.
    virtual BOOL Open(const char* lpszFileName, UINT nOpenFlags);
    // Reads up to nCount bytes; returns the number read, which is less than
    // nCount only at the end of the file (0 there).
    virtual UINT Read(void* lpBuf, UINT nCount);
    // Writes all nCount bytes or throws.
    virtual void Write(const void* lpBuf, UINT nCount);
    // Moves the position by lOff from begin, current or end; returns the new
    // position. A negative result throws CFileException(badSeek).
    virtual ULONGLONG Seek(LONGLONG lOff, UINT nFrom);
    virtual ULONGLONG GetLength() const;    // bytes in the file
    virtual ULONGLONG GetPosition() const;  // bytes from the beginning
    void SeekToBegin() { Seek(0, begin); }
    ULONGLONG SeekToEnd() { return Seek(0, end); }
    virtual void Flush();  // nothing is buffered here: the archive buffers
    virtual void Close();  // closes the file; does nothing when none is open

private:
    int m_hFile = -1;  // operating-system handle, -1 when closed
};

// A file in a block of memory. A block the file allocates itself is freed by
// the file unless it is taken with Detach().
class ORVMATH_API CMemFile : public CFile {
public:
    // An empty, growable file; the block grows in steps of at least nGrowBytes.
    explicit CMemFile(UINT nGrowBytes = 1024);
    // Same as Attach(lpBuffer, nBufferSize, nGrowBytes).
    CMemFile(BYTE* lpBuffer, UINT nBufferSize, UINT nGrowBytes = 0);
    ~CMemFile() override;

    // Uses an existing block. With nGrowBytes == 0 the file holds the block's
    // nBufferSize bytes for reading and may be overwritten but not grow past
    // the block (that throws CMemoryException); the caller keeps ownership.
    // With nGrowBytes > 0 the file starts empty and may grow; the block must
    // then come from malloc(), because growing reallocates it, after which the
    // file owns the block (take it back with Detach()).
    void Attach(BYTE* lpBuffer, UINT nBufferSize, UINT nGrowBytes = 0);
    // Hands the block to the caller (free it with free()) and leaves the file
    // empty; read GetLength() first to know how many bytes it holds.
    BYTE* Detach();

    BOOL Open(const char* lpszFileName, UINT nOpenFlags) override;  // always FALSE
    UINT Read(void* lpBuf, UINT nCount) override;
    void Write(const void* lpBuf, UINT nCount) override;
    // Seeking past the end is allowed; a later write fills the gap with zeros.
    ULONGLONG Seek(LONGLONG lOff, UINT nFrom) override;
    ULONGLONG GetLength() const override;
    ULONGLONG GetPosition() const override;
    void Flush() override;
    void Close() override;  // frees an owned block and leaves the file empty

private:
    void Grow(std::size_t nNewCapacity);
    void Reset() noexcept;

    BYTE* m_lpBuffer = nullptr;
    std::size_t m_nBufferSize = 0;  // capacity of the block
    std::size_t m_nFileSize = 0;    // bytes that belong to the file
    std::size_t m_nPosition = 0;
    std::size_t m_nGrowBytes = 0;
    bool m_bAutoDelete = true;      // the block is the file's own
};
