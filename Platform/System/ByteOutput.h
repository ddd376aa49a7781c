#pragma once

#include "Com/PlatformExport.h"

#include <cstddef>
#include <filesystem>

namespace OvPlatform {

/// Where the bytes of an output go, each once and in their order. Everything throws FileError. One thread at
/// a time.
class OV_PLATFORM_API ByteOutput {
public:
    virtual ~ByteOutput() = default;

    /// What it is called where there is trouble.
    virtual const std::filesystem::path& Name() const = 0;
    /// A folder for the temporary files of whoever writes it.
    virtual std::filesystem::path Folder() const = 0;

    virtual void Write(const void* bytes, std::size_t size) = 0;
    virtual void Flush() = 0;
    /// All is written: does everything that takes time.
    virtual void Finish() = 0;
    /// Behind Finish: makes the output what it is to be, and does nothing else.
    virtual void Commit() = 0;
};

} // namespace OvPlatform
