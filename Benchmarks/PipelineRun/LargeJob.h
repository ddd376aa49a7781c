#pragma once

#include <cstddef>
#include <filesystem>
#include <string>

/// What all pages of a job share. Where one is empty, bytes of its usual size stand for it, which no program
/// can draw.
struct LargeJobResources {
    std::string textFont;
    std::string boldFont;
    std::string picture; // PNG
};

/// Writes an XPS job of the given number of pages: 40 lines of text on each, two fonts and a picture that all
/// pages share, a job ticket, and on every third page one of two page tickets.
void WriteLargeJob(const std::filesystem::path& file, std::size_t pages,
                   const LargeJobResources& resources = {});
