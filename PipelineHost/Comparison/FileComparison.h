#pragma once

#include "Comparison/DifferenceReport.h"

#include <filesystem>

namespace OvPipeline {

enum class ComparedKind { Ticket, Package, Stream };

/// "print ticket", "package", "device stream".
const char* NameOf(ComparedKind kind);

/// What a file is, by its first bytes. Throws InputError about the file: it is none of these, or cannot be
/// read.
ComparedKind KindOfFile(const std::filesystem::path& file);

/// Compares two files of that kind. Throws InputError about the one that is damaged.
DifferenceReport CompareFiles(ComparedKind kind, const std::filesystem::path& a,
                              const std::filesystem::path& b, bool ignoresTimes);

} // namespace OvPipeline
