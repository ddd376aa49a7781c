#pragma once

#include <prntvpt.h>

#include <string_view>

namespace OvPlatform {

/// What part of a job a setting is about; a ticket of a scope holds the settings of its level and those
/// below.
enum class SettingLevel { Page = kPTPageScope, Document = kPTDocumentScope, Job = kPTJobScope };

/// By the prefix of the keyword's local name, in every namespace. A name that begins with none of Job,
/// Document and Page is a matter of the whole job.
SettingLevel LevelOf(std::string_view local);

inline bool InScope(SettingLevel level, EPrintTicketScope scope) {
    return static_cast<int>(level) <= static_cast<int>(scope);
}

} // namespace OvPlatform
