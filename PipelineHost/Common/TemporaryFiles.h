#pragma once

#include <filesystem>

namespace OvPipeline {

/// The folder for temporary files, which TMPDIR names. Throws HostError where that is none.
std::filesystem::path FolderForTemporaryFiles();

/// Throws HostError: a temporary file or folder cannot be made there, for what errno says.
[[noreturn]] void ThrowNoTemporary(const std::filesystem::path& folder);

} // namespace OvPipeline
