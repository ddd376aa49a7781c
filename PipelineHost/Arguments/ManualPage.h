#pragma once

#include <string>

namespace OvPipeline {

/// The manual page of a command, or of the program for an empty name, as man(7) has it: the words are those
/// of the help.
std::string ManualPage(const std::string& command);

} // namespace OvPipeline
