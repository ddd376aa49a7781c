#pragma once

#include <filesystem>

/// The limit: every entry inflated and deflated again at the default level, by libzip alone, into a new
/// archive.
void CopyArchive(const std::filesystem::path& from, const std::filesystem::path& to);
