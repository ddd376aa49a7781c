#pragma once

#include "LowLevelFacilities/UtilitiesExport.h"
#include "LowLevelFacilities/WideStrings/CXString.h"

/// The user on whose behalf the calling thread runs: that of its token, if it has one.
class OV_UTILITIES_API User {
public:
    User() = delete;

    /// False, with an empty name and the last error set, if the user cannot be told.
    static bool GetCurrentUserName(CXString& name);
    /// The domain, or the machine's name for a local user.
    static bool GetCurrentUsersDomain(CXString& domain);
};
