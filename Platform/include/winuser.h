#pragma once

#include <winbase.h>

#define MB_OK 0x0
#define MB_OKCANCEL 0x1
#define MB_ABORTRETRYIGNORE 0x2
#define MB_YESNOCANCEL 0x3
#define MB_YESNO 0x4
#define MB_RETRYCANCEL 0x5
#define MB_ICONHAND 0x10
#define MB_ICONERROR MB_ICONHAND
#define MB_ICONQUESTION 0x20
#define MB_ICONEXCLAMATION 0x30
#define MB_ICONWARNING MB_ICONEXCLAMATION
#define MB_ICONASTERISK 0x40
#define MB_ICONINFORMATION MB_ICONASTERISK
#define MB_TASKMODAL 0x2000
#define MB_SETFOREGROUND 0x10000
#define MB_TOPMOST 0x40000
#define MB_SERVICE_NOTIFICATION 0x200000
#define MB_TYPEMASK 0xf
#define IDOK 1
#define IDCANCEL 2
#define IDABORT 3
#define IDRETRY 4
#define IDIGNORE 5
#define IDYES 6
#define IDNO 7

/// Reports caption and text on the standard error stream and answers at once: IDOK, or the button of the
/// style that stops least (IDIGNORE, IDCANCEL, IDNO).
EXTERN_C WINUSERAPI int WINAPI MessageBoxW(HWND hWnd, LPCWSTR lpText, LPCWSTR lpCaption, UINT uType);
EXTERN_C WINUSERAPI int WINAPI MessageBoxA(HWND hWnd, LPCSTR lpText, LPCSTR lpCaption, UINT uType);
#define MessageBox MessageBoxW

/// Case by the characters' simple mapping, in place. A value with nothing in its upper half is one character.
EXTERN_C WINUSERAPI LPWSTR WINAPI CharLowerW(LPWSTR lpsz);
EXTERN_C WINUSERAPI LPWSTR WINAPI CharUpperW(LPWSTR lpsz);
EXTERN_C WINUSERAPI DWORD WINAPI CharLowerBuffW(LPWSTR lpsz, DWORD cchLength);
EXTERN_C WINUSERAPI DWORD WINAPI CharUpperBuffW(LPWSTR lpsz, DWORD cchLength);
