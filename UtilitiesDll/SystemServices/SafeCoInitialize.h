#pragma once

#include "LowLevelFacilities/UtilitiesExport.h"

#include <windows.h>

/// Keeps a thread in a COM apartment for the object's life. To be destroyed on the thread that initialised.
class OV_UTILITIES_API SafeCoInitialize {
public:
    /// Enters no apartment yet.
    SafeCoInitialize() noexcept = default;
    ~SafeCoInitialize();
    SafeCoInitialize(const SafeCoInitialize&) = delete;
    SafeCoInitialize& operator=(const SafeCoInitialize&) = delete;

    /// Enters an apartment of that mode (COINIT_APARTMENTTHREADED is 2, COINIT_MULTITHREADED 0). A thread
    /// that is in an apartment of the other mode stays there: true, or, if only this mode will do, false.
    /// False also for any other failure. A second call on a success is true and does nothing.
    bool TryInitializeCom(DWORD mode, bool onlyThisMode);

private:
    bool m_isDone = false;
    bool m_owesUninitialize = false;
};
