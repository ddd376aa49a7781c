#pragma once

// The names of the calling thread's user, as the SDK header of this name publishes them: the part that is
// used.

#include <Com/PlatformExport.h>

#include <windows.h>

enum EXTENDED_NAME_FORMAT {
    NameUnknown = 0,
    NameSamCompatible = 2,
};

extern "C" {

// NameSamCompatible only, "MACHINE\user"; another format gives ERROR_NONE_MAPPED. *nSize is the room in units
// on entry; afterwards the length without the terminator, or, with ERROR_MORE_DATA, the room needed.
OV_PLATFORM_API BOOLEAN WINAPI GetUserNameExW(EXTENDED_NAME_FORMAT NameFormat, LPWSTR lpNameBuffer,
                                              DWORD* nSize);
}
