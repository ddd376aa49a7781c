#pragma once

#include <string_view>

namespace OvPrintServer {

/// What a job's document is, by its first bytes: whatever it is called, and whoever says otherwise.
enum class InputKind { Package, Pdf, Unknown };

/// So many bytes tell.
inline constexpr std::size_t tellingBytes = 1024;

InputKind KindOfInput(std::string_view firstBytes);

} // namespace OvPrintServer
