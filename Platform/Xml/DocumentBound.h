#pragma once

#include <cstddef>

namespace OvPlatform {

/// No XML document is larger than this, whoever hands it over: a reader stops just beyond it, and what is so
/// long is refused before it is parsed. It holds for the bytes as they come and for the text in UTF-8.
inline constexpr std::size_t mostDocumentBytes = std::size_t{64} << 20;

} // namespace OvPlatform
