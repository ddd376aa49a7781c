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

// --- Messages of the calling thread ---
struct MSG {
    HWND hwnd;
    UINT message;
    WPARAM wParam;
    LPARAM lParam;
    DWORD time;
    POINT pt;
};
using PMSG = MSG*;
using LPMSG = MSG*;
#define WM_APP 0x8000
#define PM_NOREMOVE 0x0
#define PM_REMOVE 0x1
#define PM_NOYIELD 0x2
#define QS_KEY 0x1
#define QS_MOUSEMOVE 0x2
#define QS_MOUSEBUTTON 0x4
#define QS_POSTMESSAGE 0x8
#define QS_TIMER 0x10
#define QS_PAINT 0x20
#define QS_SENDMESSAGE 0x40
#define QS_HOTKEY 0x80
#define QS_ALLPOSTMESSAGE 0x100
#define QS_RAWINPUT 0x400
#define QS_TOUCH 0x800
#define QS_POINTER 0x1000
#define QS_MOUSE (QS_MOUSEMOVE | QS_MOUSEBUTTON)
#define QS_INPUT (QS_MOUSE | QS_KEY | QS_RAWINPUT | QS_TOUCH | QS_POINTER)
#define QS_ALLINPUT (QS_INPUT | QS_POSTMESSAGE | QS_TIMER | QS_PAINT | QS_HOTKEY | QS_SENDMESSAGE)

/// Waits for one of up to 63 events, or for all and a message. WAIT_OBJECT_0 with the index of the first that
/// is set, or with `nCount` for a message that has come since the thread last looked with PeekMessage;
/// WAIT_TIMEOUT; WAIT_FAILED with last error. All messages here are posted ones.
EXTERN_C WINUSERAPI DWORD WINAPI MsgWaitForMultipleObjects(DWORD nCount, const HANDLE* pHandles,
                                                           BOOL fWaitAll, DWORD dwMilliseconds,
                                                           DWORD dwWakeMask);
/// FALSE if no message is there.
EXTERN_C WINUSERAPI BOOL WINAPI PeekMessageW(LPMSG lpMsg, HWND hWnd, UINT wMsgFilterMin, UINT wMsgFilterMax,
                                             UINT wRemoveMsg);
/// Of keys, which there are none here.
EXTERN_C WINUSERAPI BOOL WINAPI TranslateMessage(const MSG* lpMsg);
/// Delivers what the message stands for.
EXTERN_C WINUSERAPI LRESULT WINAPI DispatchMessageW(const MSG* lpMsg);
#define PeekMessage PeekMessageW
#define DispatchMessage DispatchMessageW

/// Case by the characters' simple mapping, in place. A value with nothing in its upper half is one character.
EXTERN_C WINUSERAPI LPWSTR WINAPI CharLowerW(LPWSTR lpsz);
EXTERN_C WINUSERAPI LPWSTR WINAPI CharUpperW(LPWSTR lpsz);
EXTERN_C WINUSERAPI DWORD WINAPI CharLowerBuffW(LPWSTR lpsz, DWORD cchLength);
EXTERN_C WINUSERAPI DWORD WINAPI CharUpperBuffW(LPWSTR lpsz, DWORD cchLength);
