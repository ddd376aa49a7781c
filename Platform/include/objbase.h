#pragma once

#include <combaseapi.h>
#include <objidl.h>

enum COINIT {
    COINIT_APARTMENTTHREADED = 0x2,
    COINIT_MULTITHREADED = COINITBASE_MULTITHREADED,
    COINIT_DISABLE_OLE1DDE = 0x4,
    COINIT_SPEED_OVER_MEMORY = 0x8
};

/// Enters a single-threaded apartment.
WINOLEAPI CoInitialize(LPVOID pvReserved);
