// Fixed-size integer, boolean and result-code types of the host framework
// layer, with the names desktop code written for the original platform uses.
#pragma once

#include <cstdint>

typedef std::uint8_t BYTE;         // 8-bit unsigned
typedef std::uint16_t WORD;        // 16-bit unsigned
typedef std::uint32_t DWORD;       // 32-bit unsigned
typedef unsigned int UINT;         // at least 32-bit unsigned (exactly 32 on every supported host)
typedef std::uint16_t USHORT;      // 16-bit unsigned
typedef std::int32_t LONG;         // 32-bit signed, also on LP64 hosts
typedef std::uint32_t ULONG;       // 32-bit unsigned
typedef std::int64_t LONGLONG;     // 64-bit signed
typedef std::uint64_t ULONGLONG;   // 64-bit unsigned
typedef int BOOL;                  // TRUE or FALSE; any non-zero value counts as true
typedef std::intptr_t INT_PTR;     // signed, pointer-sized: array sizes and indices
typedef std::uintptr_t UINT_PTR;   // unsigned, pointer-sized
typedef std::uintptr_t DWORD_PTR;  // unsigned, pointer-sized: archive counts
typedef std::int32_t HRESULT;      // result code: negative means failure
typedef unsigned short VARTYPE;    // type tag of a VARIANT (VT_* values)

#ifndef TRUE
#define TRUE 1
#endif
#ifndef FALSE
#define FALSE 0
#endif

// Result codes. The failure codes have the top bit set, so they are negative
// as HRESULT.
constexpr HRESULT S_OK = 0;
constexpr HRESULT E_INVALIDARG = static_cast<HRESULT>(0x80070057u);     // an argument is invalid (null array)
constexpr HRESULT DISP_E_BADINDEX = static_cast<HRESULT>(0x8002000Bu);  // an index is outside its bounds
constexpr HRESULT E_OUTOFMEMORY = static_cast<HRESULT>(0x8007000Eu);    // an allocation failed

#define SUCCEEDED(hr) (static_cast<HRESULT>(hr) >= 0)
#define FAILED(hr) (static_cast<HRESULT>(hr) < 0)

static_assert(sizeof(UINT) == 4 && sizeof(int) == 4, "the archive format assumes 32-bit int");
