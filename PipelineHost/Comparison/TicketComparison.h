#pragma once

#include "Comparison/DifferenceReport.h"

#include <PrintTicket/NamespacePrefixes.h>
#include <PrintTicket/SchemaModel.h>

#include <string_view>

namespace OvPipeline {

/// A print ticket by what it says: settings by their qualified names, whatever the prefixes, order, white
/// space and foreign elements. Of settings of one name the first counts, as it does when tickets are merged.
struct ComparedTicket {
    OvPlatform::SchemaDocument settings;
    OvPlatform::NamespacePrefixes::Declarations declarations;

    /// Throws OvPlatform::SchemaFormatError.
    static ComparedTicket Read(std::string_view bytes);
};

/// Adds what is different, by the prefixes of the public schema, of A and of B.
void CompareTickets(const ComparedTicket& a, const ComparedTicket& b, DifferenceReport& report);

} // namespace OvPipeline
