#pragma once

#include <string_view>

namespace OvPipeline {

/// What stands in place of a value that nobody is to see.
inline constexpr const char* hiddenValue = "(hidden)";

/// Whether nobody is to see the value of a ticket's setting: its name there, with or without a prefix.
bool IsSecretSetting(std::string_view name);
/// The same of a device's command, by its name: "XJOBPASSWORD".
bool IsSecretCommand(std::string_view name);

} // namespace OvPipeline
