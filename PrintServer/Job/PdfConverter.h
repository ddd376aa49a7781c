#pragma once

#include "Job/CancelWatch.h"

#include <filesystem>
#include <stdexcept>

namespace OvPrintServer {

/// A document that cannot be made an XPS document. what() is one line.
class ConversionError : public std::runtime_error {
public:
    ConversionError(const std::string& problem, bool isMissing = false)
        : std::runtime_error(problem), m_isMissing(isMissing) {}

    /// There is nothing that converts: an administrator can help.
    bool IsMissing() const { return m_isMissing; }

private:
    bool m_isMissing;
};

/// Makes an XPS document of a PDF document with what the system has for it: Ghostscript. It works in the
/// folder alone, and gets none of this program's open files. A cancelled job's conversion ends, with an
/// output that is not whole. Throws ConversionError.
void ConvertPdf(const std::filesystem::path& pdf, const std::filesystem::path& xps,
                const std::filesystem::path& folder, CancelWatch& watch);

} // namespace OvPrintServer
