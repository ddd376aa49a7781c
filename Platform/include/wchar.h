// The wide functions of the C library that its standard does not name. No guard: the system's own header may
// be asked for pieces of itself.
#include_next <wchar.h>

#ifndef OV_WCHAR_H
#define OV_WCHAR_H
#ifdef __cplusplus
#include <stdarg.h>
#include <stddef.h>
#define OV_CRTIMP extern "C" __attribute__((visibility("default")))
/// Letters by simple lower-casing of all characters, not of ASCII alone.
OV_CRTIMP int _wcsicmp(const wchar_t* string1, const wchar_t* string2);
OV_CRTIMP int _wcsnicmp(const wchar_t* string1, const wchar_t* string2, size_t count);
/// Decimal, after white space and a sign; stops at the first other character; saturates.
OV_CRTIMP int _wtoi(const wchar_t* string);
OV_CRTIMP long long _wtoi64(const wchar_t* string);
OV_CRTIMP double _wtof(const wchar_t* string);
/// Formats at most count - 1 characters, always terminated. In the format, "%s" and "%c" are wide and "%S"
/// and
/// "%C" narrow. The length, or -1 if the text was cut off or cannot be formatted.
OV_CRTIMP int _vsnwprintf(wchar_t* text, size_t count, const wchar_t* format, va_list arguments);
/// A copy made with malloc.
OV_CRTIMP wchar_t* _wcsdup(const wchar_t* string);
#endif
#endif
