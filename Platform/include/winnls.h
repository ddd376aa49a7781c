#pragma once

// Text: conversion between UTF-16 and bytes, comparison, case, locale facts.

#include <winbase.h>

#define CP_ACP 0
#define CP_OEMCP 1
#define CP_UTF8 65001
#define MB_PRECOMPOSED 0x1
#define MB_COMPOSITE 0x2
#define MB_ERR_INVALID_CHARS 0x8
#define WC_NO_BEST_FIT_CHARS 0x400
#define WC_ERR_INVALID_CHARS 0x80

/// UTF-16 to bytes. CP_UTF8 and CP_ACP both mean UTF-8 here. `cchWideChar` -1: up to and including the
/// terminator. With `cbMultiByte` 0, the bytes needed. 0 with last error on failure:
/// ERROR_INSUFFICIENT_BUFFER, ERROR_INVALID_PARAMETER, ERROR_INVALID_FLAGS, or with WC_ERR_INVALID_CHARS
/// ERROR_NO_UNICODE_TRANSLATION. Without that flag a lone surrogate becomes U+FFFD.
EXTERN_C WINBASEAPI int WINAPI WideCharToMultiByte(UINT CodePage, DWORD dwFlags, LPCWCH lpWideCharStr,
                                                   int cchWideChar, LPSTR lpMultiByteStr, int cbMultiByte,
                                                   LPCCH lpDefaultChar, LPBOOL lpUsedDefaultChar);
/// Bytes to UTF-16, with the same rules; each maximal ill-formed part becomes one U+FFFD.
EXTERN_C WINBASEAPI int WINAPI MultiByteToWideChar(UINT CodePage, DWORD dwFlags, LPCCH lpMultiByteStr,
                                                   int cbMultiByte, LPWSTR lpWideCharStr, int cchWideChar);

#define CSTR_LESS_THAN 1
#define CSTR_EQUAL 2
#define CSTR_GREATER_THAN 3
/// Unit by unit; with `bIgnoreCase` after simple upper-casing. Counts of -1: up to the terminator. 0 on
/// failure.
EXTERN_C WINBASEAPI int WINAPI CompareStringOrdinal(LPCWCH lpString1, int cchCount1, LPCWCH lpString2,
                                                    int cchCount2, BOOL bIgnoreCase);
#define NORM_IGNORECASE 0x1
#define NORM_IGNORENONSPACE 0x2
#define NORM_IGNORESYMBOLS 0x4
#define LINGUISTIC_IGNORECASE 0x10
#define SORT_STRINGSORT 0x1000

#define LANG_NEUTRAL 0x00
#define LANG_INVARIANT 0x7f
#define LANG_CHINESE 0x04
#define LANG_ENGLISH 0x09
#define LANG_JAPANESE 0x11
#define LANG_KOREAN 0x12
#define SUBLANG_NEUTRAL 0x00
#define SUBLANG_DEFAULT 0x01
#define SUBLANG_SYS_DEFAULT 0x02
#define SUBLANG_ENGLISH_US 0x01
#define SORT_DEFAULT 0x0
#define MAKELANGID(primary, sub)                                                                             \
    (static_cast<LANGID>((static_cast<WORD>(sub) << 10) | static_cast<WORD>(primary)))
#define PRIMARYLANGID(language) (static_cast<WORD>((language)&0x3ff))
#define SUBLANGID(language) (static_cast<WORD>((language) >> 10))
#define MAKELCID(language, sort)                                                                             \
    (static_cast<DWORD>((static_cast<DWORD>(static_cast<WORD>(sort)) << 16) | static_cast<WORD>(language)))
#define LANG_SYSTEM_DEFAULT (MAKELANGID(LANG_NEUTRAL, SUBLANG_SYS_DEFAULT))
#define LANG_USER_DEFAULT (MAKELANGID(LANG_NEUTRAL, SUBLANG_DEFAULT))
#define LOCALE_SYSTEM_DEFAULT (MAKELCID(LANG_SYSTEM_DEFAULT, SORT_DEFAULT))
#define LOCALE_USER_DEFAULT (MAKELCID(LANG_USER_DEFAULT, SORT_DEFAULT))
#define LOCALE_NEUTRAL (MAKELCID(MAKELANGID(LANG_NEUTRAL, SUBLANG_NEUTRAL), SORT_DEFAULT))
#define LOCALE_INVARIANT (MAKELCID(MAKELANGID(LANG_INVARIANT, SUBLANG_NEUTRAL), SORT_DEFAULT))
#define LOCALE_NAME_USER_DEFAULT nullptr
#define LOCALE_NAME_INVARIANT L""
#define LOCALE_NAME_SYSTEM_DEFAULT L"!x-sys-default-locale"
#define LOCALE_NAME_MAX_LENGTH 85

using LCTYPE = DWORD;
#define LOCALE_NOUSEROVERRIDE 0x80000000U
#define LOCALE_RETURN_NUMBER 0x20000000U
#define LOCALE_IMEASURE 0x0000000D
#define LOCALE_SSHORTDATE 0x0000001F
#define LOCALE_SNAME 0x0000005c
#define LOCALE_STIMEFORMAT 0x00001003
#define LOCALE_IPAPERSIZE 0x0000100A

/// A fact of a locale as text, or with LOCALE_RETURN_NUMBER as a DWORD in the buffer. The units written,
/// terminator included; with `cchData` 0 the units needed; 0 with last error on failure.
EXTERN_C WINBASEAPI int WINAPI GetLocaleInfoEx(LPCWSTR lpLocaleName, LCTYPE LCType, LPWSTR lpLCData,
                                               int cchData);
EXTERN_C WINBASEAPI int WINAPI GetUserDefaultLocaleName(LPWSTR lpLocaleName, int cchLocaleName);
/// The language of the user's messages, as a number ("ja-JP" is 0x0411); English of the United States where
/// the system names none that has a number.
EXTERN_C WINBASEAPI LANGID WINAPI GetUserDefaultUILanguage();

#define DATE_SHORTDATE 0x1
#define DATE_LONGDATE 0x2
#define TIME_NOMINUTESORSECONDS 0x1
#define TIME_NOSECONDS 0x2
#define TIME_NOTIMEMARKER 0x4
#define TIME_FORCE24HOURFORMAT 0x8

/// A date by a picture (d, dd, ddd, dddd, M, MM, MMM, MMMM, y, yy, yyyy, g, gg; what stands between single
/// quotes is copied), with the locale's names. Without a picture the one that the flags say. A null time is
/// now. The units written, terminator included; with `cchDate` 0 the units needed; 0 with last error on
/// failure.
EXTERN_C WINBASEAPI int WINAPI GetDateFormatEx(LPCWSTR lpLocaleName, DWORD dwFlags, const SYSTEMTIME* lpDate,
                                               LPCWSTR lpFormat, LPWSTR lpDateStr, int cchDate,
                                               LPCWSTR lpCalendar);
/// The same for a time (h, hh, H, HH, m, mm, s, ss, t, tt).
EXTERN_C WINBASEAPI int WINAPI GetTimeFormatEx(LPCWSTR lpLocaleName, DWORD dwFlags, const SYSTEMTIME* lpTime,
                                               LPCWSTR lpFormat, LPWSTR lpTimeStr, int cchTime);
