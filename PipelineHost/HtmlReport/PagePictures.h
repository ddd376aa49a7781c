#pragma once

#include "Common/ScratchFolder.h"

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace OvPipeline {

/// What an outside program has drawn.
struct DrawnPages {
    std::string program;
    std::vector<std::string> pictures; // PNG, page by page; empty for one that was not drawn
    std::string remark;                // who drew, and what went wrong; or why nobody did
};

/// Lets the programs that are installed draw pages, small ones, in a folder of its own.
class PagePictures {
public:
    /// Of a package: pages by number through the job, ascending. By MuPDF's mutool, or else libgxps'
    /// xpstopng. Throws as PackageSource does.
    DrawnPages OfPackage(const std::filesystem::path& package, const std::vector<std::uint64_t>& pages) const;
    /// Of a stream of PostScript, with PJL around it or without: all its pages, by Ghostscript.
    DrawnPages OfStream(const std::filesystem::path& stream) const;

    const std::filesystem::path& Folder() const { return m_folder.Path(); }
    static bool CanDrawStreams();

private:
    // By a program that draws one document at a time, whose pages it counts from 1, and names with as many
    // digits as its last page has. The first trouble, or empty.
    std::string DrawByDocument(const std::filesystem::path& program, const std::string& job,
                               const std::vector<std::uint64_t>& lastPages,
                               const std::vector<std::uint64_t>& pages,
                               std::vector<std::string>& pictures) const;
    std::string Take(const std::string& name) const;

    ScratchFolder m_folder{"ov-report"};
};

} // namespace OvPipeline
