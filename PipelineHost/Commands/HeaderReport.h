#pragma once

#include "Commands/FamilyHeader.h"
#include "Report/JsonText.h"

#include <string>
#include <vector>

namespace OvPipeline {

/// Headers of a job for people and for programs.
class HeaderReport {
public:
    /// withCauses: they have been looked for. The headers must outlive this object.
    HeaderReport(const std::vector<FamilyHeader>& headers, bool withCauses)
        : m_headers(headers), m_withCauses(withCauses) {}

    /// One below the other, as they are written.
    std::vector<std::string> AsLines() const;
    /// Side by side: each piece once, with a mark in the column of each family that writes it.
    std::vector<std::string> AsComparison() const;
    /// An array of families, each with its three texts whole, and where causes were looked for with its
    /// pieces and theirs.
    JsonText AsJson() const;

private:
    const std::vector<FamilyHeader>& m_headers;
    bool m_withCauses;
};

} // namespace OvPipeline
