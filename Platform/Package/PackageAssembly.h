#pragma once

#include "Package/PartCompressor.h"

#include <deque>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>

struct zip;

namespace OvPlatform {

// Writes spooled parts as a zip archive under a name of the moment, and renames it to the target. The same
// items give the same bytes. Spool and parts must outlive the assembly. Throws PackageError; the target is as
// before then, and nothing is left of what was written.
class PackageAssembly {
public:
    PackageAssembly(const std::filesystem::path& target, const SpoolFile& spool);
    PackageAssembly(const PackageAssembly&) = delete;
    PackageAssembly& operator=(const PackageAssembly&) = delete;
    ~PackageAssembly();

    // The next item.
    void Add(const std::string& zipName, const SpooledPart& part);
    // Writes the archive. The question is asked now and then; true gives the archive up with E_ABORT.
    void Finish(const std::function<bool()>& isStopped);
    // Puts the archive under its name.
    void Publish();

private:
    class Source;
    class Cursor;
    struct Discard {
        void operator()(zip* archive) const;
    };

    std::filesystem::path m_target;
    std::filesystem::path m_temporary; // where the archive is written; empty once it is renamed
    std::unique_ptr<Cursor> m_cursor;
    std::deque<Source> m_sources; // outlive the archive, which calls them
    std::unique_ptr<zip, Discard> m_archive;
};

} // namespace OvPlatform
