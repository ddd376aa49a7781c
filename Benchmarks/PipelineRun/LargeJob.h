#pragma once

#include <cstddef>
#include <filesystem>

/// Writes an XPS job of the given number of pages: 40 lines of text on each, two fonts and a picture that all
/// pages share, a job ticket, and on every third page one of two page tickets.
void WriteLargeJob(const std::filesystem::path& file, std::size_t pages);
