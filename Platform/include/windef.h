#pragma once

// The platform's basic types. The widths are those of the published binary interface on every system: LONG,
// ULONG, DWORD, BOOL and HRESULT have 32 bits also where the compiler's `long` has 64.

#include <guiddef.h>

#include <cstddef>
#include <cstdint>

#define WINAPI
#define APIENTRY WINAPI
#define CALLBACK
#define APIPRIVATE
#define PASCAL
#define FAR
#define NEAR
#define CONST const
#define __stdcall
#define __cdecl
#define __fastcall
#define __forceinline inline __attribute__((always_inline))
#define FORCEINLINE __forceinline
#define DECLSPEC_NORETURN __attribute__((noreturn))
#define DECLSPEC_NOVTABLE
#define DECLSPEC_ALIGN(x) __attribute__((aligned(x)))
#define DECLSPEC_IMPORT __attribute__((visibility("default")))
#define WINBASEAPI DECLSPEC_IMPORT
#define WINADVAPI DECLSPEC_IMPORT
#define WINUSERAPI DECLSPEC_IMPORT
#define WINGDIAPI DECLSPEC_IMPORT
#define UNREFERENCED_PARAMETER(x) ((void)(x))
#define IN
#define OUT
#define OPTIONAL
#define _In_
#define _In_opt_
#define _Out_
#define _Out_opt_
#define _Inout_
#define _Inout_opt_
#define _Outptr_

#ifndef NULL
#define NULL 0
#endif
#ifndef TRUE
#define TRUE 1
#endif
#ifndef FALSE
#define FALSE 0
#endif

using VOID = void;
using CHAR = char;
using SHORT = std::int16_t;
using INT = int;
using LONG = std::int32_t;
using UCHAR = unsigned char;
using USHORT = std::uint16_t;
using UINT = unsigned int;
using ULONG = std::uint32_t;
using BYTE = unsigned char;
using WORD = std::uint16_t;
using DWORD = std::uint32_t;
using BOOL = int;
using BOOLEAN = BYTE;
using FLOAT = float;
using DOUBLE = double;
using INT8 = std::int8_t;
using INT16 = std::int16_t;
using INT32 = std::int32_t;
using UINT8 = std::uint8_t;
using UINT16 = std::uint16_t;
using UINT32 = std::uint32_t;
using LONG32 = std::int32_t;
using ULONG32 = std::uint32_t;
using DWORD32 = std::uint32_t;
using LONGLONG = long long;
using ULONGLONG = unsigned long long;
using DWORDLONG = ULONGLONG;
using INT64 = LONGLONG;
using UINT64 = ULONGLONG;
using LONG64 = LONGLONG;
using ULONG64 = ULONGLONG;
using DWORD64 = ULONGLONG;
using __int64 = LONGLONG;
using INT_PTR = std::intptr_t;
using UINT_PTR = std::uintptr_t;
using LONG_PTR = std::intptr_t;
using ULONG_PTR = std::uintptr_t;
using DWORD_PTR = ULONG_PTR;
using SIZE_T = std::size_t;
using SSIZE_T = std::ptrdiff_t;

/// One UTF-16 code unit, also where wchar_t is wider: a character outside the BMP takes two.
using WCHAR = wchar_t;

using PVOID = void*;
using LPVOID = void*;
using LPCVOID = const void*;
using PBYTE = BYTE*;
using LPBYTE = BYTE*;
using PWORD = WORD*;
using LPWORD = WORD*;
using PDWORD = DWORD*;
using LPDWORD = DWORD*;
using PLONG = LONG*;
using LPLONG = LONG*;
using PULONG = ULONG*;
using PUSHORT = USHORT*;
using PINT = int*;
using LPINT = int*;
using PUINT = UINT*;
using PBOOL = BOOL*;
using LPBOOL = BOOL*;
using PSIZE_T = SIZE_T*;
using PULONGLONG = ULONGLONG*;
using PCHAR = CHAR*;
using PWCHAR = WCHAR*;
using LPSTR = CHAR*;
using PSTR = CHAR*;
using LPCSTR = const CHAR*;
using PCSTR = const CHAR*;
using LPWSTR = WCHAR*;
using PWSTR = WCHAR*;
using LPCWSTR = const WCHAR*;
using PCWSTR = const WCHAR*;
using LPCWCH = const WCHAR*;
using LPCCH = const CHAR*;
using LPWCH = WCHAR*;
using LPCH = CHAR*;
using TCHAR = WCHAR;
using LPTSTR = LPWSTR;
using LPCTSTR = LPCWSTR;
#define TEXT(quote) L##quote

using HRESULT = LONG;
using ATOM = WORD;
using LCID = DWORD;
using LANGID = WORD;
using PLCID = LCID*;
using COLORREF = DWORD;
using WPARAM = UINT_PTR;
using LPARAM = LONG_PTR;
using LRESULT = LONG_PTR;

using HANDLE = void*;
using PHANDLE = HANDLE*;
using LPHANDLE = HANDLE*;
using HGLOBAL = HANDLE;
using HLOCAL = HANDLE;
#define DECLARE_HANDLE(name)                                                                                 \
    struct name##__ {                                                                                        \
        int unused;                                                                                          \
    };                                                                                                       \
    using name = name##__*
DECLARE_HANDLE(HINSTANCE);
DECLARE_HANDLE(HKEY);
DECLARE_HANDLE(HWND);
DECLARE_HANDLE(HDC);
DECLARE_HANDLE(HBITMAP);
DECLARE_HANDLE(HFONT);
DECLARE_HANDLE(HRGN);
using HMODULE = HINSTANCE;
using HGDIOBJ = void*;
using PHKEY = HKEY*;
#define INVALID_HANDLE_VALUE (reinterpret_cast<HANDLE>(static_cast<LONG_PTR>(-1)))

using FARPROC = INT_PTR (*)();
using PROC = INT_PTR (*)();

struct FILETIME {
    DWORD dwLowDateTime;
    DWORD dwHighDateTime;
};
using PFILETIME = FILETIME*;
using LPFILETIME = FILETIME*;

union LARGE_INTEGER {
    struct {
        DWORD LowPart;
        LONG HighPart;
    };
    struct {
        DWORD LowPart;
        LONG HighPart;
    } u;
    LONGLONG QuadPart;
};
union ULARGE_INTEGER {
    struct {
        DWORD LowPart;
        DWORD HighPart;
    };
    struct {
        DWORD LowPart;
        DWORD HighPart;
    } u;
    ULONGLONG QuadPart;
};
using PLARGE_INTEGER = LARGE_INTEGER*;
using PULARGE_INTEGER = ULARGE_INTEGER*;

struct POINT {
    LONG x;
    LONG y;
};
struct POINTL {
    LONG x;
    LONG y;
};
struct SIZE {
    LONG cx;
    LONG cy;
};
using SIZEL = SIZE;
using LPSIZE = SIZE*;
struct RECT {
    LONG left;
    LONG top;
    LONG right;
    LONG bottom;
};
struct RECTL {
    LONG left;
    LONG top;
    LONG right;
    LONG bottom;
};
using LPPOINT = POINT*;
using LPRECT = RECT*;

#define MAX_PATH 260
#define MAXBYTE 0xff
#define MAXWORD 0xffff
#define MAXDWORD 0xffffffff
#define MAXLONG 0x7fffffff

#define MAKEWORD(low, high) (static_cast<WORD>(((low)&0xff) | (((high)&0xff) << 8)))
#define MAKELONG(low, high)                                                                                  \
    (static_cast<LONG>((static_cast<DWORD>(low) & 0xffffU) | ((static_cast<DWORD>(high) & 0xffffU) << 16)))
#define LOWORD(value) (static_cast<WORD>(static_cast<DWORD_PTR>(value) & 0xffff))
#define HIWORD(value) (static_cast<WORD>((static_cast<DWORD_PTR>(value) >> 16) & 0xffff))
#define LOBYTE(value) (static_cast<BYTE>(static_cast<DWORD_PTR>(value) & 0xff))
#define HIBYTE(value) (static_cast<BYTE>((static_cast<DWORD_PTR>(value) >> 8) & 0xff))
#define ARRAYSIZE(array) (sizeof(array) / sizeof((array)[0]))
