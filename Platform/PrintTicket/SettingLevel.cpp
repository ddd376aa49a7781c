#include "PrintTicket/SettingLevel.h"

namespace OvPlatform {

SettingLevel LevelOf(std::string_view local) {
    if (local.starts_with("Page")) return SettingLevel::Page;
    if (local.starts_with("Document")) return SettingLevel::Document;
    return SettingLevel::Job;
}

} // namespace OvPlatform
