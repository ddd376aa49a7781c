#pragma once

#include <span>

namespace OvPipeline {

/// What there is to say of the program as a whole: for its help and its manual page.
inline constexpr const char* programSummary = "plays the print filter pipeline outside a spooler";

inline constexpr const char* programDescription =
    R"(ov-pipeline sends XPS and OpenXPS jobs through the filters of a printer driver, and tells what its library decides about them: tickets, features, annotations, device control. A queue folder stands for the printer.)";

/// How arguments are read.
inline constexpr const char* argumentRules =
    R"(A job is an XPS or OpenXPS file; - stands for one that is read from the input stream. A value stands behind its option or behind a =, as in --page=2; -- ends the options.)";

struct ExplainedName {
    const char* name;
    const char* meaning;
};

std::span<const ExplainedName> ExitCodes();
std::span<const ExplainedName> EnvironmentVariables();

} // namespace OvPipeline
