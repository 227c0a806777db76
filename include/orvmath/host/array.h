// CArray: the growable array of the host framework layer.
//
// Every indexed access is checked in every build and throws
// CInvalidArgException when the index is out of range. Elements that the
// array creates (SetSize, SetAtGrow, InsertAt past the last element, loading)
// are zero-filled and then default-constructed, so a double comes out 0.0 and
// a class whose constructor leaves members unset has them zero. Element types
// may be non-trivial (strings, nested arrays): they are copied with their
// copy constructors and assignment and moved when the block is reallocated.
#pragma once

#include <orvmath/host/archive.h>
#include <orvmath/host/exceptions.h>
#include <orvmath/host/object.h>
#include <orvmath/host/types.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <functional>
#include <limits>
#include <memory>
#include <new>
#include <type_traits>
#include <utility>

namespace orvhost_detail {

template <class T, class = void>
struct HasArchiveOperators : std::false_type {};
template <class T>
struct HasArchiveOperators<T, std::void_t<decltype(std::declval<CArchive&>() << std::declval<const T&>()),
                                          decltype(std::declval<CArchive&>() >> std::declval<T&>())>>
    : std::true_type {};

// Elements that go to the archive as one raw byte block: arithmetic types
// other than bool (a stored byte other than 0 or 1 must not become a bool),
// and, on a big-endian host, only the single-byte ones (the others need
// swapping). Structures never do: their memory image depends on the host's
// layout and byte order, so they go through their own record.
template <class T>
constexpr bool kRawBlockElement = std::is_arithmetic_v<T> && !std::is_same_v<T, bool> &&
                                  (sizeof(T) == 1 || !ORVHOST_BIG_ENDIAN);

// A CFile that only counts the bytes written to it.
class CByteCounter : public CFile {
public:
    void Write(const void*, UINT nCount) override { m_nBytes += nCount; }
    void Flush() override {}
    ULONGLONG m_nBytes = 0;
};

}  // namespace orvhost_detail

// Stores (ar.IsStoring()) or loads nCount elements at pElements; the elements
// exist already. The customisation point of CArray::Serialize: specialise it
// for an element type that needs its own record:
//   template <> void SerializeElements<CMyType>(CArchive& ar, CMyType* p, INT_PTR n) { ... }
// The specialisation must be declared before the array type is used.
// Default: arithmetic elements as one block of little-endian values (bool one
// byte per element), CObject-derived elements through their Serialize, other
// types (structures included) through the archive's operator<< and
// operator>>, so that every record is the same on every host. An element
// type with none of these throws CArchiveException(generic) when an array of
// it is stored or loaded. A non-zero nCount with a null pElements, or a
// negative nCount, throws CInvalidArgException.
template <class TYPE>
void SerializeElements(CArchive& ar, TYPE* pElements, INT_PTR nCount) {
    if (nCount < 0 || (nCount > 0 && pElements == nullptr)) AfxThrowInvalidArgException();
    if constexpr (orvhost_detail::kRawBlockElement<TYPE>) {
        const std::size_t nBytes = static_cast<std::size_t>(nCount) * sizeof(TYPE);
        if (ar.IsStoring()) {
            ar.WriteBlock(pElements, nBytes);
        } else {
            ar.ReadBlock(pElements, nBytes);
        }
    } else if constexpr (std::is_base_of_v<CObject, TYPE>) {
        for (INT_PTR i = 0; i < nCount; ++i) pElements[i].Serialize(ar);
    } else if constexpr (orvhost_detail::HasArchiveOperators<TYPE>::value) {
        if (ar.IsStoring()) {
            for (INT_PTR i = 0; i < nCount; ++i) ar << pElements[i];
        } else {
            for (INT_PTR i = 0; i < nCount; ++i) ar >> pElements[i];
        }
    } else {
        AfxThrowArchiveException(CArchiveException::generic);
    }
}

template <class TYPE, class ARG_TYPE = const TYPE&>
class CArray : public CObject {
public:
    using value_type = TYPE;
    using iterator = TYPE*;
    using const_iterator = const TYPE*;

    CArray() noexcept = default;
    CArray(const CArray& src);
    CArray(CArray&& src) noexcept;
    CArray& operator=(const CArray& src);
    CArray& operator=(CArray&& src) noexcept;
    ~CArray() override { FreeAll(); }

    INT_PTR GetSize() const noexcept { return m_nSize; }
    INT_PTR GetCount() const noexcept { return m_nSize; }
    INT_PTR GetUpperBound() const noexcept { return m_nSize - 1; }  // -1 when empty
    BOOL IsEmpty() const noexcept { return m_nSize == 0; }

    // Resizes to nNewSize elements: new ones are zero-filled and
    // default-constructed, surplus ones destroyed. nGrowBy >= 0 sets how many
    // elements a later reallocation adds at least (-1 keeps the current
    // setting; by default the block grows by half its size). SetSize(0) frees
    // the block. A negative size throws CInvalidArgException; a size whose
    // byte count cannot be allocated throws CMemoryException.
    void SetSize(INT_PTR nNewSize, INT_PTR nGrowBy = -1);
    void RemoveAll() noexcept { FreeAll(); }
    // Shrinks the block to the current size.
    void FreeExtra();

    const TYPE& GetAt(INT_PTR nIndex) const { CheckIndex(nIndex); return m_pData[nIndex]; }
    TYPE& GetAt(INT_PTR nIndex) { CheckIndex(nIndex); return m_pData[nIndex]; }
    void SetAt(INT_PTR nIndex, ARG_TYPE newElement) { CheckIndex(nIndex); m_pData[nIndex] = newElement; }
    TYPE& ElementAt(INT_PTR nIndex) { CheckIndex(nIndex); return m_pData[nIndex]; }
    const TYPE& operator[](INT_PTR nIndex) const { CheckIndex(nIndex); return m_pData[nIndex]; }
    TYPE& operator[](INT_PTR nIndex) { CheckIndex(nIndex); return m_pData[nIndex]; }

    // The elements, contiguous; nullptr when the array has no block.
    const TYPE* GetData() const noexcept { return m_pData; }
    TYPE* GetData() noexcept { return m_pData; }

    // Sets element nIndex, first growing the array to nIndex + 1 elements when
    // it is shorter. A negative index throws CInvalidArgException.
    void SetAtGrow(INT_PTR nIndex, ARG_TYPE newElement);
    // Appends one element; returns its index.
    INT_PTR Add(ARG_TYPE newElement);
    // Appends copies of src's elements (src may be this array); returns the
    // index of the first one.
    INT_PTR Append(const CArray& src);
    // Makes this array a copy of src.
    void Copy(const CArray& src);
    // Inserts nCount copies of newElement before element nIndex; nIndex ==
    // GetSize() appends. An index outside 0..GetSize() or a negative count
    // throws CInvalidArgException.
    void InsertAt(INT_PTR nIndex, ARG_TYPE newElement, INT_PTR nCount = 1);
    // Removes nCount elements from nIndex on; the range must lie inside the
    // array, else CInvalidArgException.
    void RemoveAt(INT_PTR nIndex, INT_PTR nCount = 1);

    // Storing: the count (CArchive::WriteCount), then the elements through
    // SerializeElements. Loading: the count, checked against the bytes the
    // stream still holds before anything is allocated (CArchiveException
    // endOfFile when count x the record of a default element cannot fit),
    // then the elements into a new block that replaces the array's contents
    // only once all of them have loaded: a load that fails leaves the array
    // as it was.
    void Serialize(CArchive& ar) override;

    TYPE* begin() noexcept { return m_pData; }
    TYPE* end() noexcept { return m_pData + m_nSize; }
    const TYPE* begin() const noexcept { return m_pData; }
    const TYPE* end() const noexcept { return m_pData + m_nSize; }

private:
    // Functions rather than constants, so that naming CArray<T> does not yet
    // need T complete.
    static constexpr bool Trivial() noexcept { return std::is_trivially_copyable_v<TYPE>; }
    // Bytes of the record of a default element: the least any element's
    // record takes (exact for the fixed-size records of the value types).
    static ULONGLONG MinRecordBytes();
    // Largest element count whose byte size a pointer difference can hold.
    static constexpr INT_PTR MaxSize() noexcept {
        return static_cast<INT_PTR>(static_cast<std::size_t>(std::numeric_limits<std::ptrdiff_t>::max()) /
                                    sizeof(TYPE));
    }

    void CheckIndex(INT_PTR nIndex) const {
        // One unsigned compare rejects negative indices too.
        if (static_cast<UINT_PTR>(nIndex) >= static_cast<UINT_PTR>(m_nSize)) AfxThrowInvalidArgException();
    }
    // True when newElement refers to one of this array's own elements, which
    // a reallocation or a shift would move away under it.
    bool Aliases(const ARG_TYPE& newElement) const noexcept;

    static TYPE* Allocate(INT_PTR nCount);
    static void Deallocate(TYPE* p) noexcept;
    static void ConstructNew(TYPE* p, INT_PTR nCount);
    static void Destroy(TYPE* p, INT_PTR nCount) noexcept;
    void FreeAll() noexcept;
    // Moves the elements to a new block of nNewMax elements.
    void Reallocate(INT_PTR nNewMax);
    // Makes room for nNeeded elements, growing by the grow-by setting.
    void Reserve(INT_PTR nNeeded);
    void InsertCopies(INT_PTR nIndex, const TYPE& newElement, INT_PTR nCount);

    TYPE* m_pData = nullptr;
    INT_PTR m_nSize = 0;
    INT_PTR m_nMaxSize = 0;
    INT_PTR m_nGrowBy = -1;
};

// ---------------------------------------------------------------------------

template <class TYPE, class ARG_TYPE>
CArray<TYPE, ARG_TYPE>::CArray(const CArray& src) : CObject() {
    try {
        Copy(src);
    } catch (...) {
        FreeAll();
        throw;
    }
}

template <class TYPE, class ARG_TYPE>
CArray<TYPE, ARG_TYPE>::CArray(CArray&& src) noexcept
    : CObject(), m_pData(src.m_pData), m_nSize(src.m_nSize), m_nMaxSize(src.m_nMaxSize),
      m_nGrowBy(src.m_nGrowBy) {
    src.m_pData = nullptr;
    src.m_nSize = src.m_nMaxSize = 0;
}

template <class TYPE, class ARG_TYPE>
CArray<TYPE, ARG_TYPE>& CArray<TYPE, ARG_TYPE>::operator=(const CArray& src) {
    Copy(src);
    return *this;
}

template <class TYPE, class ARG_TYPE>
CArray<TYPE, ARG_TYPE>& CArray<TYPE, ARG_TYPE>::operator=(CArray&& src) noexcept {
    if (this != &src) {
        FreeAll();
        std::swap(m_pData, src.m_pData);
        std::swap(m_nSize, src.m_nSize);
        std::swap(m_nMaxSize, src.m_nMaxSize);
        m_nGrowBy = src.m_nGrowBy;
    }
    return *this;
}

template <class TYPE, class ARG_TYPE>
bool CArray<TYPE, ARG_TYPE>::Aliases(const ARG_TYPE& newElement) const noexcept {
    if constexpr (std::is_reference_v<ARG_TYPE> && std::is_same_v<std::decay_t<ARG_TYPE>, TYPE>) {
        const TYPE* p = std::addressof(newElement);
        const std::less<const TYPE*> less;
        return m_nSize > 0 && !less(p, m_pData) && less(p, m_pData + m_nSize);
    } else {
        (void)newElement;
        return false;
    }
}

template <class TYPE, class ARG_TYPE>
TYPE* CArray<TYPE, ARG_TYPE>::Allocate(INT_PTR nCount) {
    if (nCount < 0 || nCount > MaxSize()) AfxThrowMemoryException();
    const std::size_t nBytes = static_cast<std::size_t>(nCount) * sizeof(TYPE);
    void* p;
    if constexpr (alignof(TYPE) > __STDCPP_DEFAULT_NEW_ALIGNMENT__) {
        p = ::operator new(nBytes, std::align_val_t(alignof(TYPE)), std::nothrow);
    } else {
        p = ::operator new(nBytes, std::nothrow);
    }
    if (p == nullptr) AfxThrowMemoryException();
    return static_cast<TYPE*>(p);
}

template <class TYPE, class ARG_TYPE>
void CArray<TYPE, ARG_TYPE>::Deallocate(TYPE* p) noexcept {
    if constexpr (alignof(TYPE) > __STDCPP_DEFAULT_NEW_ALIGNMENT__) {
        ::operator delete(p, std::align_val_t(alignof(TYPE)));
    } else {
        ::operator delete(p);
    }
}

template <class TYPE, class ARG_TYPE>
void CArray<TYPE, ARG_TYPE>::ConstructNew(TYPE* p, INT_PTR nCount) {
    if (nCount <= 0) return;
    std::memset(static_cast<void*>(p), 0, static_cast<std::size_t>(nCount) * sizeof(TYPE));
    if constexpr (!std::is_trivially_default_constructible_v<TYPE>) {
        INT_PTR i = 0;
        try {
            for (; i < nCount; ++i) ::new (static_cast<void*>(p + i)) TYPE;
        } catch (...) {
            Destroy(p, i);
            throw;
        }
    }
}

template <class TYPE, class ARG_TYPE>
void CArray<TYPE, ARG_TYPE>::Destroy(TYPE* p, INT_PTR nCount) noexcept {
    if constexpr (!std::is_trivially_destructible_v<TYPE>) {
        for (INT_PTR i = 0; i < nCount; ++i) p[i].~TYPE();
    } else {
        (void)p;
        (void)nCount;
    }
}

template <class TYPE, class ARG_TYPE>
void CArray<TYPE, ARG_TYPE>::FreeAll() noexcept {
    if (m_pData != nullptr) {
        Destroy(m_pData, m_nSize);
        Deallocate(m_pData);
    }
    m_pData = nullptr;
    m_nSize = m_nMaxSize = 0;
}

template <class TYPE, class ARG_TYPE>
void CArray<TYPE, ARG_TYPE>::Reallocate(INT_PTR nNewMax) {
    if (nNewMax == 0) {
        FreeAll();
        return;
    }
    TYPE* pNew = Allocate(nNewMax);
    if constexpr (Trivial()) {
        if (m_nSize > 0) std::memcpy(pNew, m_pData, static_cast<std::size_t>(m_nSize) * sizeof(TYPE));
    } else {
        INT_PTR i = 0;
        try {
            for (; i < m_nSize; ++i) ::new (static_cast<void*>(pNew + i)) TYPE(std::move_if_noexcept(m_pData[i]));
        } catch (...) {
            Destroy(pNew, i);
            Deallocate(pNew);
            throw;
        }
        Destroy(m_pData, m_nSize);
    }
    if (m_pData != nullptr) Deallocate(m_pData);
    m_pData = pNew;
    m_nMaxSize = nNewMax;
}

template <class TYPE, class ARG_TYPE>
void CArray<TYPE, ARG_TYPE>::Reserve(INT_PTR nNeeded) {
    if (nNeeded <= m_nMaxSize) return;
    if (nNeeded > MaxSize()) AfxThrowMemoryException();
    INT_PTR nGrowBy = m_nGrowBy >= 0 ? m_nGrowBy : std::max<INT_PTR>(4, m_nSize / 2);
    nGrowBy = std::min(nGrowBy, MaxSize() - m_nMaxSize);
    Reallocate(std::max(nNeeded, m_nMaxSize + nGrowBy));
}

template <class TYPE, class ARG_TYPE>
void CArray<TYPE, ARG_TYPE>::SetSize(INT_PTR nNewSize, INT_PTR nGrowBy) {
    if (nNewSize < 0) AfxThrowInvalidArgException();
    if (nGrowBy >= 0) m_nGrowBy = nGrowBy;
    if (nNewSize == 0) {
        FreeAll();
    } else if (nNewSize <= m_nSize) {
        Destroy(m_pData + nNewSize, m_nSize - nNewSize);
        m_nSize = nNewSize;
    } else {
        // A first allocation takes the requested size, or the grow-by step
        // when that is larger.
        if (m_pData == nullptr) Reallocate(std::max(nNewSize, std::min(m_nGrowBy, MaxSize())));
        Reserve(nNewSize);
        ConstructNew(m_pData + m_nSize, nNewSize - m_nSize);
        m_nSize = nNewSize;
    }
}

template <class TYPE, class ARG_TYPE>
void CArray<TYPE, ARG_TYPE>::FreeExtra() {
    if (m_nSize != m_nMaxSize) Reallocate(m_nSize);
}

template <class TYPE, class ARG_TYPE>
void CArray<TYPE, ARG_TYPE>::SetAtGrow(INT_PTR nIndex, ARG_TYPE newElement) {
    if (nIndex < 0) AfxThrowInvalidArgException();
    if (nIndex >= m_nSize) {
        if (nIndex >= MaxSize()) AfxThrowMemoryException();
        if (nIndex >= m_nMaxSize && Aliases(newElement)) {
            TYPE copy(newElement);
            SetSize(nIndex + 1);
            m_pData[nIndex] = std::move(copy);
            return;
        }
        SetSize(nIndex + 1);
    }
    m_pData[nIndex] = newElement;
}

template <class TYPE, class ARG_TYPE>
INT_PTR CArray<TYPE, ARG_TYPE>::Add(ARG_TYPE newElement) {
    const INT_PTR nIndex = m_nSize;
    SetAtGrow(nIndex, newElement);
    return nIndex;
}

template <class TYPE, class ARG_TYPE>
INT_PTR CArray<TYPE, ARG_TYPE>::Append(const CArray& src) {
    const INT_PTR nOld = m_nSize;
    const INT_PTR nCount = src.m_nSize;  // read before growing: src may be *this
    if (nCount == 0) return nOld;
    if (nCount > MaxSize() - nOld) AfxThrowMemoryException();
    Reserve(nOld + nCount);
    if constexpr (Trivial()) {
        std::memcpy(m_pData + nOld, src.m_pData, static_cast<std::size_t>(nCount) * sizeof(TYPE));
        m_nSize += nCount;
    } else {
        for (INT_PTR i = 0; i < nCount; ++i) {
            ::new (static_cast<void*>(m_pData + nOld + i)) TYPE(src.m_pData[i]);
            ++m_nSize;
        }
    }
    return nOld;
}

template <class TYPE, class ARG_TYPE>
void CArray<TYPE, ARG_TYPE>::Copy(const CArray& src) {
    if (this == &src) return;
    const INT_PTR nCount = src.m_nSize;
    if (nCount > m_nMaxSize) {
        FreeAll();
        m_pData = Allocate(nCount);
        m_nMaxSize = nCount;
    }
    if constexpr (Trivial()) {
        if (nCount > 0) std::memcpy(m_pData, src.m_pData, static_cast<std::size_t>(nCount) * sizeof(TYPE));
        m_nSize = nCount;
    } else {
        const INT_PTR nCommon = std::min(m_nSize, nCount);
        std::copy(src.m_pData, src.m_pData + nCommon, m_pData);
        Destroy(m_pData + nCount, m_nSize - nCount);  // no-op when growing
        m_nSize = nCommon;
        for (INT_PTR i = nCommon; i < nCount; ++i) {
            ::new (static_cast<void*>(m_pData + i)) TYPE(src.m_pData[i]);
            ++m_nSize;
        }
    }
}

template <class TYPE, class ARG_TYPE>
void CArray<TYPE, ARG_TYPE>::InsertAt(INT_PTR nIndex, ARG_TYPE newElement, INT_PTR nCount) {
    if (nIndex < 0 || nIndex > m_nSize || nCount < 0) AfxThrowInvalidArgException();
    if (nCount == 0) return;
    if (Aliases(newElement)) {
        const TYPE copy(newElement);
        InsertCopies(nIndex, copy, nCount);
    } else if constexpr (std::is_same_v<std::decay_t<ARG_TYPE>, TYPE>) {
        InsertCopies(nIndex, newElement, nCount);
    } else {
        const TYPE converted(newElement);
        InsertCopies(nIndex, converted, nCount);
    }
}

template <class TYPE, class ARG_TYPE>
void CArray<TYPE, ARG_TYPE>::InsertCopies(INT_PTR nIndex, const TYPE& newElement, INT_PTR nCount) {
    const INT_PTR nOld = m_nSize;
    if (nCount > MaxSize() - nOld) AfxThrowMemoryException();
    SetSize(nOld + nCount);
    if constexpr (Trivial()) {
        std::memmove(m_pData + nIndex + nCount, m_pData + nIndex,
                     static_cast<std::size_t>(nOld - nIndex) * sizeof(TYPE));
    } else {
        std::move_backward(m_pData + nIndex, m_pData + nOld, m_pData + nOld + nCount);
    }
    std::fill(m_pData + nIndex, m_pData + nIndex + nCount, newElement);
}

template <class TYPE, class ARG_TYPE>
void CArray<TYPE, ARG_TYPE>::RemoveAt(INT_PTR nIndex, INT_PTR nCount) {
    if (nIndex < 0 || nCount < 0 || nIndex > m_nSize || nCount > m_nSize - nIndex) AfxThrowInvalidArgException();
    if (nCount == 0) return;
    if constexpr (Trivial()) {
        std::memmove(m_pData + nIndex, m_pData + nIndex + nCount,
                     static_cast<std::size_t>(m_nSize - nIndex - nCount) * sizeof(TYPE));
    } else {
        std::move(m_pData + nIndex + nCount, m_pData + m_nSize, m_pData + nIndex);
    }
    Destroy(m_pData + m_nSize - nCount, nCount);
    m_nSize -= nCount;
}

template <class TYPE, class ARG_TYPE>
ULONGLONG CArray<TYPE, ARG_TYPE>::MinRecordBytes() {
    if constexpr (orvhost_detail::kRawBlockElement<TYPE> || std::is_arithmetic_v<TYPE>) {
        return sizeof(TYPE);
    } else {
        static const ULONGLONG nBytes = [] {
            CArray probe;
            probe.SetSize(1);
            orvhost_detail::CByteCounter counter;
            CArchive ar(&counter, CArchive::store);
            SerializeElements<TYPE>(ar, probe.m_pData, 1);
            ar.Close();
            return counter.m_nBytes;
        }();
        return nBytes;
    }
}

template <class TYPE, class ARG_TYPE>
void CArray<TYPE, ARG_TYPE>::Serialize(CArchive& ar) {
    CObject::Serialize(ar);
    if (ar.IsStoring()) {
        ar.WriteCount(static_cast<DWORD_PTR>(m_nSize));
        SerializeElements<TYPE>(ar, m_pData, m_nSize);
        return;
    }
    const ULONGLONG nCount = ar.ReadElementCount(MinRecordBytes());
    if (nCount > static_cast<ULONGLONG>(MaxSize())) AfxThrowMemoryException();
    CArray loaded;
    loaded.SetSize(static_cast<INT_PTR>(nCount));
    SerializeElements<TYPE>(ar, loaded.m_pData, loaded.m_nSize);
    loaded.m_nGrowBy = m_nGrowBy;
    *this = std::move(loaded);
}
