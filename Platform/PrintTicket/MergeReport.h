#pragma once

#include "Com/PlatformExport.h"

#include <string>
#include <string_view>
#include <vector>

namespace OvPlatform {

/// Which input of a merge a setting was taken from.
enum class SettingOrigin {
    Base,
    Delta,
    Queue // neither has it: the queue's default
};

/// One setting of a merge. Names and values are text in UTF-8, with the prefixes of the result.
struct SettingReport {
    std::string name; // "psk:PageMediaSize"; of a nested feature "psk:DocumentNUp/psk:PresentationDirection"
    bool isParameter = false;
    std::string
        value; // in the result: "psk:ISOA4", "(psk:PagesPerSheet=4)", a parameter's text; empty: not there
    SettingOrigin origin = SettingOrigin::Queue;
    std::string requested; // what the input asked for, where validation changed that
    std::string reason;    // why validation changed it; empty: it did not
};

/// What a merge did, setting by setting: those of the result in its order, then those that went.
struct OV_PLATFORM_API MergeReport {
    std::vector<SettingReport> settings;
    bool conflictResolved = false;

    /// By the name as above; null where the merge had none of that name.
    const SettingReport* Find(std::string_view name) const;
};

} // namespace OvPlatform
