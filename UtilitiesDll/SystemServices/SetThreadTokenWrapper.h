#pragma once

#include "LowLevelFacilities/UtilitiesExport.h"

#include <windows.h>

/// Lets the calling thread act with a user's token for the object's life. To be destroyed on the same thread.
class OV_UTILITIES_API SetThreadTokenWrapper {
public:
    /// The caller keeps and closes the token. Throws CPComException if the thread cannot take it.
    explicit SetThreadTokenWrapper(HANDLE token);
    /// Takes the token off; the thread acts as its process again.
    ~SetThreadTokenWrapper();
    SetThreadTokenWrapper(const SetThreadTokenWrapper&) = delete;
    SetThreadTokenWrapper& operator=(const SetThreadTokenWrapper&) = delete;
};
