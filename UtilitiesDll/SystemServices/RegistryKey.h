#pragma once

#include "LowLevelFacilities/Ownership/OvlUniquePtr.h"
#include "LowLevelFacilities/UtilitiesExport.h"
#include "LowLevelFacilities/WideStrings/CXString.h"

#include <windows.h>

/// An open key of the registry.
class OV_UTILITIES_API RegistryKey {
public:
    /// With isOwned the key is closed with this object.
    RegistryKey(HKEY key, bool isOwned) noexcept : m_key(key), m_isOwned(isOwned) {}
    ~RegistryKey();
    RegistryKey(const RegistryKey&) = delete;
    RegistryKey& operator=(const RegistryKey&) = delete;

    /// Opens the key at a path below the parent, with access rights such as KEY_READ. With createIfMissing a
    /// key that is not there is made. On failure the result is empty and `error` says why, in the
    /// words of the system and with its code; otherwise `error`
    /// is empty.
    [[nodiscard]] static OvlUniquePtr<RegistryKey> CreateRegistryKey(HKEY parent, const CXString& path,
                                                                     REGSAM access, CXString& error,
                                                                     bool createIfMissing);

    /// True for a number other than 0, and for a text that is such a number or "true" in any case. A value
    /// that is missing, or is neither number nor text, gives the default.
    [[nodiscard]] bool GetBooleanValue(const CXString& name, bool defaultValue) const;

private:
    HKEY m_key;
    bool m_isOwned;
};
