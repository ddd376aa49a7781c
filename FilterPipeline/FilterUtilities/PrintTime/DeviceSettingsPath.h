#pragma once

#include <LowLevelFacilities/Strings/CPString.h>
#include <LowLevelFacilities/WideStrings/CXString.h>

#include <vector>

/// A place in a queue's device settings: names of elements from the root on, such as "/settings/tray".
class DeviceSettingsPath {
public:
    explicit DeviceSettingsPath(const CXString& path);

    /// The text of the first element at that place, without blanks at its ends. Names are compared without
    /// their prefixes: settings may stand in any namespace. Empty where there is none, and for settings that
    /// are no XML, which is reported.
    [[nodiscard]] CXString ValueIn(const CPString& settings) const;

private:
    [[nodiscard]] CXString Find(const CPString& settings) const;

    std::vector<CXString> m_steps;
};
