#pragma once

// The registry. Here it is one readable file; docs/formats/registry.md describes it.

#include <winbase.h>

using REGSAM = DWORD;
using LSTATUS = LONG;

#define HKEY_CLASSES_ROOT (reinterpret_cast<HKEY>(static_cast<ULONG_PTR>(0xffffffff80000000ULL)))
#define HKEY_CURRENT_USER (reinterpret_cast<HKEY>(static_cast<ULONG_PTR>(0xffffffff80000001ULL)))
#define HKEY_LOCAL_MACHINE (reinterpret_cast<HKEY>(static_cast<ULONG_PTR>(0xffffffff80000002ULL)))
#define HKEY_USERS (reinterpret_cast<HKEY>(static_cast<ULONG_PTR>(0xffffffff80000003ULL)))

#define KEY_QUERY_VALUE 0x1
#define KEY_SET_VALUE 0x2
#define KEY_CREATE_SUB_KEY 0x4
#define KEY_ENUMERATE_SUB_KEYS 0x8
#define KEY_NOTIFY 0x10
#define KEY_WOW64_64KEY 0x100
#define KEY_WOW64_32KEY 0x200
#define KEY_READ 0x20019
#define KEY_WRITE 0x20006
#define KEY_ALL_ACCESS 0xf003f

#define REG_NONE 0
#define REG_SZ 1
#define REG_EXPAND_SZ 2
#define REG_BINARY 3
#define REG_DWORD 4
#define REG_MULTI_SZ 7
#define REG_QWORD 11
#define REG_OPTION_NON_VOLATILE 0x0
#define REG_CREATED_NEW_KEY 1
#define REG_OPENED_EXISTING_KEY 2

/// The result is a Win32 error, not the last error. Names are found without regard to case.
EXTERN_C WINADVAPI LSTATUS WINAPI RegOpenKeyExW(HKEY hKey, LPCWSTR lpSubKey, DWORD ulOptions,
                                                REGSAM samDesired, PHKEY phkResult);
EXTERN_C WINADVAPI LSTATUS WINAPI RegCreateKeyExW(HKEY hKey, LPCWSTR lpSubKey, DWORD Reserved, LPWSTR lpClass,
                                                  DWORD dwOptions, REGSAM samDesired,
                                                  LPSECURITY_ATTRIBUTES lpSecurityAttributes, PHKEY phkResult,
                                                  LPDWORD lpdwDisposition);
/// `*lpcbData` counts bytes of memory: text has sizeof(WCHAR) for a unit, terminator included.
/// ERROR_MORE_DATA and the size needed if the buffer is too small, ERROR_FILE_NOT_FOUND if there is no such
/// value.
EXTERN_C WINADVAPI LSTATUS WINAPI RegQueryValueExW(HKEY hKey, LPCWSTR lpValueName, LPDWORD lpReserved,
                                                   LPDWORD lpType, LPBYTE lpData, LPDWORD lpcbData);
EXTERN_C WINADVAPI LSTATUS WINAPI RegSetValueExW(HKEY hKey, LPCWSTR lpValueName, DWORD Reserved, DWORD dwType,
                                                 const BYTE* lpData, DWORD cbData);
EXTERN_C WINADVAPI LSTATUS WINAPI RegDeleteValueW(HKEY hKey, LPCWSTR lpValueName);
EXTERN_C WINADVAPI LSTATUS WINAPI RegCloseKey(HKEY hKey);
#define RegOpenKeyEx RegOpenKeyExW
#define RegCreateKeyEx RegCreateKeyExW
#define RegQueryValueEx RegQueryValueExW
#define RegSetValueEx RegSetValueExW
