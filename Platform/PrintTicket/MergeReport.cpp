#include "PrintTicket/MergeReport.h"

#include <algorithm>

namespace OvPlatform {

const SettingReport* MergeReport::Find(std::string_view name) const {
    const auto found = std::find_if(settings.begin(), settings.end(),
                                    [&](const SettingReport& setting) { return setting.name == name; });
    return found == settings.end() ? nullptr : &*found;
}

} // namespace OvPlatform
