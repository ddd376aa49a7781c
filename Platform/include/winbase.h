#pragma once

// The system's functions: last error, memory, modules, files, locks, time, threads' tokens, facts of the
// machine.

#include <winerror.h>

// --- Last error, of the calling thread ---
EXTERN_C WINBASEAPI DWORD WINAPI GetLastError();
EXTERN_C WINBASEAPI void WINAPI SetLastError(DWORD dwErrCode);

// --- Memory ---
#define GMEM_FIXED 0x0
#define GMEM_MOVEABLE 0x2
#define GMEM_ZEROINIT 0x40
#define GMEM_MODIFY 0x80
#define GMEM_LOCKCOUNT 0xff
#define GMEM_INVALID_HANDLE 0x8000
#define GHND (GMEM_MOVEABLE | GMEM_ZEROINIT)
#define GPTR (GMEM_FIXED | GMEM_ZEROINIT)
#define LMEM_FIXED 0x0
#define LMEM_ZEROINIT 0x40
#define LPTR (LMEM_FIXED | LMEM_ZEROINIT)

/// Fixed memory is its own address; movable memory is reached by GlobalLock. Null if memory is out.
EXTERN_C WINBASEAPI HGLOBAL WINAPI GlobalAlloc(UINT uFlags, SIZE_T dwBytes);
/// On failure the old block stands. Movable memory keeps its handle.
EXTERN_C WINBASEAPI HGLOBAL WINAPI GlobalReAlloc(HGLOBAL hMem, SIZE_T dwBytes, UINT uFlags);
/// Null when freed; `hMem` when it is no block.
EXTERN_C WINBASEAPI HGLOBAL WINAPI GlobalFree(HGLOBAL hMem);
EXTERN_C WINBASEAPI LPVOID WINAPI GlobalLock(HGLOBAL hMem);
/// TRUE as long as the block stays locked. FALSE with NO_ERROR when the last lock went, with ERROR_NOT_LOCKED
/// when there was none.
EXTERN_C WINBASEAPI BOOL WINAPI GlobalUnlock(HGLOBAL hMem);
EXTERN_C WINBASEAPI SIZE_T WINAPI GlobalSize(HGLOBAL hMem);
EXTERN_C WINBASEAPI UINT WINAPI GlobalFlags(HGLOBAL hMem);
EXTERN_C WINBASEAPI HLOCAL WINAPI LocalAlloc(UINT uFlags, SIZE_T uBytes);
EXTERN_C WINBASEAPI HLOCAL WINAPI LocalFree(HLOCAL hMem);

#define CopyMemory(to, from, length) memcpy((to), (from), (length))
#define MoveMemory(to, from, length) memmove((to), (from), (length))
#define FillMemory(to, length, fill) memset((to), (fill), (length))
#define ZeroMemory(to, length) memset((to), 0, (length))
#define RtlZeroMemory(to, length) memset((to), 0, (length))

/// Clears memory in a way that the optimiser keeps.
inline PVOID SecureZeroMemory(PVOID memory, SIZE_T count) {
    volatile BYTE* byte = static_cast<volatile BYTE*>(memory);
    while (count-- > 0)
        *byte++ = 0;
    return memory;
}

// --- Modules ---
#define DLL_PROCESS_DETACH 0
#define DLL_PROCESS_ATTACH 1
#define DLL_THREAD_ATTACH 2
#define DLL_THREAD_DETACH 3

/// Loads a shared object by path or by name; null with ERROR_MOD_NOT_FOUND or ERROR_BAD_EXE_FORMAT.
EXTERN_C WINBASEAPI HMODULE WINAPI LoadLibraryW(LPCWSTR lpLibFileName);
EXTERN_C WINBASEAPI BOOL WINAPI FreeLibrary(HMODULE hLibModule);
EXTERN_C WINBASEAPI FARPROC WINAPI GetProcAddress(HMODULE hModule, LPCSTR lpProcName);
/// The handle of a loaded module, not counted; null names the program.
EXTERN_C WINBASEAPI HMODULE WINAPI GetModuleHandleW(LPCWSTR lpModuleName);
/// The number of units written without the terminator; `nSize` with ERROR_INSUFFICIENT_BUFFER if cut short.
EXTERN_C WINBASEAPI DWORD WINAPI GetModuleFileNameW(HMODULE hModule, LPWSTR lpFilename, DWORD nSize);
EXTERN_C WINBASEAPI BOOL WINAPI DisableThreadLibraryCalls(HMODULE hLibModule);
#define LoadLibrary LoadLibraryW
#define GetModuleFileName GetModuleFileNameW

// --- Objects behind a handle, and files ---
struct SECURITY_ATTRIBUTES {
    DWORD nLength;
    LPVOID lpSecurityDescriptor;
    BOOL bInheritHandle;
};
using PSECURITY_ATTRIBUTES = SECURITY_ATTRIBUTES*;
using LPSECURITY_ATTRIBUTES = SECURITY_ATTRIBUTES*;
using PSECURITY_DESCRIPTOR = PVOID;
struct OVERLAPPED;
using LPOVERLAPPED = OVERLAPPED*;

#define GENERIC_READ 0x80000000U
#define GENERIC_WRITE 0x40000000U
#define GENERIC_EXECUTE 0x20000000U
#define GENERIC_ALL 0x10000000U
#define FILE_SHARE_READ 0x1
#define FILE_SHARE_WRITE 0x2
#define FILE_SHARE_DELETE 0x4
#define CREATE_NEW 1
#define CREATE_ALWAYS 2
#define OPEN_EXISTING 3
#define OPEN_ALWAYS 4
#define TRUNCATE_EXISTING 5
#define FILE_ATTRIBUTE_READONLY 0x1
#define FILE_ATTRIBUTE_DIRECTORY 0x10
#define FILE_ATTRIBUTE_NORMAL 0x80
#define FILE_ATTRIBUTE_TEMPORARY 0x100
#define INVALID_FILE_ATTRIBUTES (static_cast<DWORD>(-1))
#define FILE_BEGIN 0
#define FILE_CURRENT 1
#define FILE_END 2

/// INVALID_HANDLE_VALUE with last error on failure. Paths are the system's own, in UTF-16.
EXTERN_C WINBASEAPI HANDLE WINAPI CreateFileW(LPCWSTR lpFileName, DWORD dwDesiredAccess, DWORD dwShareMode,
                                              LPSECURITY_ATTRIBUTES lpSecurityAttributes,
                                              DWORD dwCreationDisposition, DWORD dwFlagsAndAttributes,
                                              HANDLE hTemplateFile);
EXTERN_C WINBASEAPI BOOL WINAPI ReadFile(HANDLE hFile, LPVOID lpBuffer, DWORD nNumberOfBytesToRead,
                                         LPDWORD lpNumberOfBytesRead, LPOVERLAPPED lpOverlapped);
EXTERN_C WINBASEAPI BOOL WINAPI WriteFile(HANDLE hFile, LPCVOID lpBuffer, DWORD nNumberOfBytesToWrite,
                                          LPDWORD lpNumberOfBytesWritten, LPOVERLAPPED lpOverlapped);
EXTERN_C WINBASEAPI BOOL WINAPI GetFileSizeEx(HANDLE hFile, PLARGE_INTEGER lpFileSize);
EXTERN_C WINBASEAPI BOOL WINAPI SetFilePointerEx(HANDLE hFile, LARGE_INTEGER liDistanceToMove,
                                                 PLARGE_INTEGER lpNewFilePointer, DWORD dwMoveMethod);
EXTERN_C WINBASEAPI BOOL WINAPI CloseHandle(HANDLE hObject);
EXTERN_C WINBASEAPI BOOL WINAPI DeleteFileW(LPCWSTR lpFileName);
EXTERN_C WINBASEAPI DWORD WINAPI GetFileAttributesW(LPCWSTR lpFileName);
/// The length without the terminator, with a separator at the end; the length needed, with it, if the buffer
/// is too small; 0 on failure.
EXTERN_C WINBASEAPI DWORD WINAPI GetTempPathW(DWORD nBufferLength, LPWSTR lpBuffer);
#define CreateFile CreateFileW
#define DeleteFile DeleteFileW
#define GetFileAttributes GetFileAttributesW
#define GetTempPath GetTempPathW

// --- Threads and locks ---
/// A lock that its owner can enter again. The contents are the platform's.
struct CRITICAL_SECTION {
    alignas(8) BYTE state[64];
};
using PCRITICAL_SECTION = CRITICAL_SECTION*;
using LPCRITICAL_SECTION = CRITICAL_SECTION*;
EXTERN_C WINBASEAPI void WINAPI InitializeCriticalSection(LPCRITICAL_SECTION lpCriticalSection);
EXTERN_C WINBASEAPI BOOL WINAPI InitializeCriticalSectionAndSpinCount(LPCRITICAL_SECTION lpCriticalSection,
                                                                      DWORD dwSpinCount);
EXTERN_C WINBASEAPI void WINAPI EnterCriticalSection(LPCRITICAL_SECTION lpCriticalSection);
EXTERN_C WINBASEAPI BOOL WINAPI TryEnterCriticalSection(LPCRITICAL_SECTION lpCriticalSection);
EXTERN_C WINBASEAPI void WINAPI LeaveCriticalSection(LPCRITICAL_SECTION lpCriticalSection);
EXTERN_C WINBASEAPI void WINAPI DeleteCriticalSection(LPCRITICAL_SECTION lpCriticalSection);

EXTERN_C WINBASEAPI DWORD WINAPI GetCurrentThreadId();
EXTERN_C WINBASEAPI DWORD WINAPI GetCurrentProcessId();
EXTERN_C WINBASEAPI HANDLE WINAPI GetCurrentThread();
EXTERN_C WINBASEAPI HANDLE WINAPI GetCurrentProcess();
EXTERN_C WINBASEAPI void WINAPI Sleep(DWORD dwMilliseconds);
#define INFINITE 0xffffffffU

// --- Events and waits ---
#define WAIT_OBJECT_0 0U
#define WAIT_FAILED 0xffffffffU
#define MAXIMUM_WAIT_OBJECTS 64
/// An event that stays set (`bManualReset`), or ends one wait each time that it is set. Null with last error
/// on failure; one with a name is not supported. For CloseHandle.
EXTERN_C WINBASEAPI HANDLE WINAPI CreateEventW(LPSECURITY_ATTRIBUTES lpEventAttributes, BOOL bManualReset,
                                               BOOL bInitialState, LPCWSTR lpName);
EXTERN_C WINBASEAPI BOOL WINAPI SetEvent(HANDLE hEvent);
#define CreateEvent CreateEventW

inline LONG InterlockedIncrement(LONG volatile* value) {
    return __atomic_add_fetch(value, 1, __ATOMIC_SEQ_CST);
}
inline LONG InterlockedDecrement(LONG volatile* value) {
    return __atomic_sub_fetch(value, 1, __ATOMIC_SEQ_CST);
}
inline LONG InterlockedExchange(LONG volatile* target, LONG value) {
    return __atomic_exchange_n(target, value, __ATOMIC_SEQ_CST);
}
inline LONG InterlockedExchangeAdd(LONG volatile* target, LONG value) {
    return __atomic_fetch_add(target, value, __ATOMIC_SEQ_CST);
}
inline LONG InterlockedCompareExchange(LONG volatile* target, LONG value, LONG comparand) {
    __atomic_compare_exchange_n(target, &comparand, value, false, __ATOMIC_SEQ_CST, __ATOMIC_SEQ_CST);
    return comparand;
}
inline PVOID InterlockedExchangePointer(PVOID volatile* target, PVOID value) {
    return __atomic_exchange_n(target, value, __ATOMIC_SEQ_CST);
}
inline PVOID InterlockedCompareExchangePointer(PVOID volatile* target, PVOID value, PVOID comparand) {
    __atomic_compare_exchange_n(target, &comparand, value, false, __ATOMIC_SEQ_CST, __ATOMIC_SEQ_CST);
    return comparand;
}

// --- Tokens ---
#define TOKEN_ASSIGN_PRIMARY 0x1
#define TOKEN_DUPLICATE 0x2
#define TOKEN_IMPERSONATE 0x4
#define TOKEN_QUERY 0x8
#define TOKEN_ALL_ACCESS 0xf01ff

/// Puts `Token` on a thread (null for the calling one, the only one that this platform serves); null takes it
/// off.
EXTERN_C WINADVAPI BOOL WINAPI SetThreadToken(PHANDLE Thread, HANDLE Token);
/// FALSE with ERROR_NO_TOKEN when the thread has none.
EXTERN_C WINADVAPI BOOL WINAPI OpenThreadToken(HANDLE ThreadHandle, DWORD DesiredAccess, BOOL OpenAsSelf,
                                               PHANDLE TokenHandle);
EXTERN_C WINADVAPI BOOL WINAPI ImpersonateLoggedOnUser(HANDLE hToken);
EXTERN_C WINADVAPI BOOL WINAPI RevertToSelf();

// --- The machine and its user ---
enum COMPUTER_NAME_FORMAT {
    ComputerNameNetBIOS,
    ComputerNameDnsHostname,
    ComputerNameDnsDomain,
    ComputerNameDnsFullyQualified,
    ComputerNamePhysicalNetBIOS,
    ComputerNamePhysicalDnsHostname,
    ComputerNamePhysicalDnsDomain,
    ComputerNamePhysicalDnsFullyQualified,
    ComputerNameMax
};
/// FALSE with ERROR_MORE_DATA and the units needed, terminator included, if the buffer is too small.
EXTERN_C WINBASEAPI BOOL WINAPI GetComputerNameExW(COMPUTER_NAME_FORMAT NameType, LPWSTR lpBuffer,
                                                   LPDWORD nSize);
/// `*pcbBuffer` counts the terminator, in and out; FALSE with ERROR_INSUFFICIENT_BUFFER if it is too small.
EXTERN_C WINADVAPI BOOL WINAPI GetUserNameW(LPWSTR lpBuffer, LPDWORD pcbBuffer);
#define GetComputerNameEx GetComputerNameExW
#define GetUserName GetUserNameW
/// The length without the terminator; the length needed, with it, if the buffer is too small; 0 with
/// ERROR_ENVVAR_NOT_FOUND if there is no such variable.
EXTERN_C WINBASEAPI DWORD WINAPI GetEnvironmentVariableW(LPCWSTR lpName, LPWSTR lpBuffer, DWORD nSize);
#define ERROR_ENVVAR_NOT_FOUND 203

struct OSVERSIONINFOEXW {
    DWORD dwOSVersionInfoSize;
    DWORD dwMajorVersion;
    DWORD dwMinorVersion;
    DWORD dwBuildNumber;
    DWORD dwPlatformId;
    WCHAR szCSDVersion[128];
    WORD wServicePackMajor;
    WORD wServicePackMinor;
    WORD wSuiteMask;
    BYTE wProductType;
    BYTE wReserved;
};
using LPOSVERSIONINFOEXW = OSVERSIONINFOEXW*;
#define VER_EQUAL 1
#define VER_GREATER 2
#define VER_GREATER_EQUAL 3
#define VER_LESS 4
#define VER_LESS_EQUAL 5
#define VER_MINORVERSION 0x1
#define VER_MAJORVERSION 0x2
#define VER_BUILDNUMBER 0x4
#define VER_SERVICEPACKMINOR 0x10
#define VER_SERVICEPACKMAJOR 0x20
EXTERN_C WINBASEAPI ULONGLONG WINAPI VerSetConditionMask(ULONGLONG ConditionMask, DWORD TypeMask,
                                                         BYTE Condition);
/// FALSE with ERROR_OLD_WIN_VERSION if the interfaces' version, 10.0, does not meet the conditions.
EXTERN_C WINBASEAPI BOOL WINAPI VerifyVersionInfoW(LPOSVERSIONINFOEXW lpVersionInformation, DWORD dwTypeMask,
                                                   ULONGLONG dwlConditionMask);

// --- Time ---
struct SYSTEMTIME {
    WORD wYear;
    WORD wMonth;
    WORD wDayOfWeek;
    WORD wDay;
    WORD wHour;
    WORD wMinute;
    WORD wSecond;
    WORD wMilliseconds;
};
using PSYSTEMTIME = SYSTEMTIME*;
using LPSYSTEMTIME = SYSTEMTIME*;

/// Minutes, with UTC = local time + bias. The dates say when each begins: in the year wYear, or for wYear 0
/// on the wDay-th (5: last) wDayOfWeek of wMonth each year.
struct TIME_ZONE_INFORMATION {
    LONG Bias;
    WCHAR StandardName[32];
    SYSTEMTIME StandardDate;
    LONG StandardBias;
    WCHAR DaylightName[32];
    SYSTEMTIME DaylightDate;
    LONG DaylightBias;
};
using PTIME_ZONE_INFORMATION = TIME_ZONE_INFORMATION*;
using LPTIME_ZONE_INFORMATION = TIME_ZONE_INFORMATION*;
#define TIME_ZONE_ID_UNKNOWN 0
#define TIME_ZONE_ID_STANDARD 1
#define TIME_ZONE_ID_DAYLIGHT 2
#define TIME_ZONE_ID_INVALID 0xFFFFFFFFU
/// The system's own zone, its rules those of this year, and which of its times holds now. A zone without
/// daylight time is TIME_ZONE_ID_UNKNOWN; on failure TIME_ZONE_ID_INVALID.
EXTERN_C WINBASEAPI DWORD WINAPI GetTimeZoneInformation(LPTIME_ZONE_INFORMATION lpTimeZoneInformation);

EXTERN_C WINBASEAPI void WINAPI GetSystemTime(LPSYSTEMTIME lpSystemTime);
EXTERN_C WINBASEAPI void WINAPI GetLocalTime(LPSYSTEMTIME lpSystemTime);
/// 100-nanosecond steps since 1 January 1601, UTC.
EXTERN_C WINBASEAPI void WINAPI GetSystemTimeAsFileTime(LPFILETIME lpSystemTimeAsFileTime);
EXTERN_C WINBASEAPI BOOL WINAPI SystemTimeToFileTime(const SYSTEMTIME* lpSystemTime, LPFILETIME lpFileTime);
EXTERN_C WINBASEAPI BOOL WINAPI FileTimeToSystemTime(const FILETIME* lpFileTime, LPSYSTEMTIME lpSystemTime);
/// With a null zone, the rules of the system's own zone for that moment.
EXTERN_C WINBASEAPI BOOL WINAPI
SystemTimeToTzSpecificLocalTime(const TIME_ZONE_INFORMATION* lpTimeZoneInformation,
                                const SYSTEMTIME* lpUniversalTime, LPSYSTEMTIME lpLocalTime);
EXTERN_C WINBASEAPI BOOL WINAPI
TzSpecificLocalTimeToSystemTime(const TIME_ZONE_INFORMATION* lpTimeZoneInformation,
                                const SYSTEMTIME* lpLocalTime, LPSYSTEMTIME lpUniversalTime);
EXTERN_C WINBASEAPI LONG WINAPI CompareFileTime(const FILETIME* lpFileTime1, const FILETIME* lpFileTime2);
/// Milliseconds since an unnamed start; wraps after 49.7 days.
EXTERN_C WINBASEAPI DWORD WINAPI GetTickCount();
EXTERN_C WINBASEAPI ULONGLONG WINAPI GetTickCount64();
EXTERN_C WINBASEAPI BOOL WINAPI QueryPerformanceCounter(PLARGE_INTEGER lpPerformanceCount);
EXTERN_C WINBASEAPI BOOL WINAPI QueryPerformanceFrequency(PLARGE_INTEGER lpFrequency);

// --- Debugging ---
/// Writes to the standard error stream if the environment has OV_DEBUG_OUTPUT; otherwise does nothing.
EXTERN_C WINBASEAPI void WINAPI OutputDebugStringA(LPCSTR lpOutputString);
EXTERN_C WINBASEAPI void WINAPI OutputDebugStringW(LPCWSTR lpOutputString);
// Only the system's own text for a code, into a buffer of the caller's; 0 with ERROR_MR_MID_NOT_FOUND for a
// code without one. The text ends with a line break, which counts, and a terminator, which does not.
#define FORMAT_MESSAGE_IGNORE_INSERTS 0x00000200
#define FORMAT_MESSAGE_FROM_SYSTEM 0x00001000
EXTERN_C WINBASEAPI DWORD WINAPI FormatMessageW(DWORD dwFlags, LPCVOID lpSource, DWORD dwMessageId,
                                                DWORD dwLanguageId, LPWSTR lpBuffer, DWORD nSize,
                                                va_list* Arguments);
#define OutputDebugString OutputDebugStringW
EXTERN_C WINBASEAPI BOOL WINAPI IsDebuggerPresent();
EXTERN_C WINBASEAPI void WINAPI DebugBreak();

// --- Text ---
/// 0 for null.
EXTERN_C WINBASEAPI int WINAPI lstrlenW(LPCWSTR lpString);
EXTERN_C WINBASEAPI int WINAPI lstrlenA(LPCSTR lpString);
#define lstrlen lstrlenW
