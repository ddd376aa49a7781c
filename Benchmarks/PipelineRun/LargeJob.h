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

/// The page tickets of a job: how many there are, and on how manieth page stands one.
struct LargeJobTickets {
    std::size_t count = 2;
    std::size_t every = 3;
};

/// Writes an XPS job of the given number of pages: 40 lines of text on each, two fonts and a picture that all
/// pages share, a job ticket, and page tickets that the pages share.
void WriteLargeJob(const std::filesystem::path& file, std::size_t pages,
                   const LargeJobResources& resources = {}, const LargeJobTickets& tickets = {});
