#pragma once

#include "FeatureKeywordTables.h"

#include <ComSupport/FilterUtilitiesExport.h>
#include <DataModel/FeatureIds.h>

/// How the option of a feature is found.
struct FeatureOptionRule {
    enum class Kind {
        // One place. A text is looked up in the keywords, or in the dictionary where the rule has none.
        Ticket,
        Document,
        AttributeBytes,
        // Several places, one after the other.
        DocumentThenAttributeBytes,
        TicketThenAttributeBytes,
        // Rules of their own.
        CoverOptions,
        Fold,
        HolePunch,
        JobType,
        PageLayout,
        Sides,
        Staple,
    };

    DataModelIds::tagFeatureEnum feature;
    Kind kind;
    FeatureKeywordTables::Rows keywords = {};
};

/// Null for a feature that has no option, or none that anyone here can know.
[[nodiscard]] OV_FILTER_UTILITIES_API const FeatureOptionRule*
FindFeatureOptionRule(DataModelIds::tagFeatureEnum feature) noexcept;
