#pragma once

#include <string>
#include <string_view>

namespace OvPlatform {

// Printer names are equal without regard to case.
std::wstring FoldQueueName(std::wstring_view name);

} // namespace OvPlatform
