#pragma once

#include <cstddef>
#include <string>

namespace OvPipeline {

/// The help of a command, or of the program for an empty name. width: of a line, in characters.
std::string HelpText(const std::string& command, std::size_t width);

/// Paragraphs broken into lines of that width, each behind the indent; a line that begins with a blank stays
/// as it is.
std::string WrappedText(const std::string& text, std::size_t width, const std::string& indent = {});

} // namespace OvPipeline
