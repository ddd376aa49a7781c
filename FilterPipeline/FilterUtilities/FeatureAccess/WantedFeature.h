#pragma once

#include "DataModel/NativeXmlConfigFeatureEntry.h"
#include "FeatureAccess/FeatureQuestion.h"
#include "FeatureAccess/FeatureWords.h"

#include <array>

/// What a place is asked for: where the feature stands, by what names, and what its texts mean.
struct WantedFeature {
    FeaturePath path;
    const NativeXmlConfigFeatureEntry* names = nullptr; // null if the dictionary does not have the feature
    const CXString* ticketName = nullptr;               // that of the names, or another that the ticket has
    FeatureWords words = {};
    /// The CPSS names of the path's collections, from the outermost on, then null. Without them, document
    /// settings are asked for the first element of the feature's name, wherever it stands.
    std::array<const CXString*, 2> collectionNames = {};

    [[nodiscard]] DataModelIds::tagFeatureEnum Feature() const { return path.Feature(); }
    /// Empty for a feature without names.
    [[nodiscard]] const CXString& TicketName() const { return ticketName != nullptr ? *ticketName : None(); }
    [[nodiscard]] const CXString& DocumentName() const {
        return names != nullptr ? names->wideCpssFeatureName : None();
    }
    [[nodiscard]] const CPString& DeviceName() const {
        static const CPString none;
        return names != nullptr ? names->cpssFeatureName : none;
    }

private:
    static const CXString& None() {
        static const CXString none;
        return none;
    }
};
