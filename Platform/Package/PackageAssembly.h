#pragma once

#include "Package/PartCompressor.h"
#include "System/OutputFile.h"

#include <deque>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>

struct zip;
struct zip_error;

namespace OvPlatform {

/// Writes spooled parts as a zip archive. The same items give the same bytes. File, spool and parts must
/// outlive the assembly. Throws PackageError or FileError.
class PackageAssembly {
public:
    /// file: new, and nothing written to it. target: what it is called where there is trouble.
    PackageAssembly(OutputFile& file, std::filesystem::path target, const SpoolFile& spool);
    PackageAssembly(const PackageAssembly&) = delete;
    PackageAssembly& operator=(const PackageAssembly&) = delete;
    ~PackageAssembly();

    /// The next item.
    void Add(const std::string& zipName, const SpooledPart& part);
    /// Writes the archive and finishes the file. The question is asked now and then; true gives it up with
    /// E_ABORT.
    void Finish(const std::function<bool()>& isStopped);

private:
    class Source;
    class Cursor;
    class Archive;
    struct Discard {
        void operator()(zip* archive) const;
    };

    [[noreturn]] void Throw(zip_error* error) const;

    std::filesystem::path m_target;
    std::unique_ptr<Cursor> m_cursor;
    std::unique_ptr<Archive> m_output;
    std::deque<Source> m_sources; // outlive the archive, which calls them
    std::unique_ptr<zip, Discard> m_archive;
};

} // namespace OvPlatform
