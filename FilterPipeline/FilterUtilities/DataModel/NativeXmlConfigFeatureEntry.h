#pragma once

#include "DataModel/FeatureIds.h"

#include <Dictionary/DictionaryTypeName.h>
#include <LowLevelFacilities/Strings/CPString.h>
#include <LowLevelFacilities/WideStrings/CXString.h>

#include <cstdint>
#include <vector>

/// What a feature is called in the ticket, in the administrator's configuration and in the device's own
/// vocabulary (CPSS), and what kind of thing it is.
struct NativeXmlConfigFeatureEntry {
    enum ModeEnum : std::int32_t { DEVICE = 1, DOCUMENT = 2 };
    /// A PARENT is a collection of other features and has no value of its own.
    enum SyntaxEnum : std::int32_t { BOOLEAN = 1, OPTION = 2, STRING = 3, INTEGER = 4, PARENT = 5 };
    /// Who knows whether the feature is supported: the ticket's side, for published features, or the device
    /// capabilities. Says nothing of the namespace of the feature in a ticket.
    enum TicketKindEnum : std::int32_t { TICKET_KIND = 1, DEVICE_KIND = 2 };

    NativeXmlConfigFeatureEntry(DataModelIds::tagFeatureEnum featureId, const char* featureEnum,
                                ModeEnum featureMode, SyntaxEnum featureSyntax, const char* cpssName,
                                const char* xmlConfigName, std::int32_t kind, const wchar_t* printTicketName);
    NativeXmlConfigFeatureEntry(DataModelIds::tagFeatureEnum featureId, const char* featureEnum,
                                ModeEnum featureMode, SyntaxEnum featureSyntax, const char* cpssName,
                                const char* xmlConfigName, std::int32_t kind, const wchar_t* printTicketName,
                                DataModelIds::tagFeatureEnum parentFeature);

    DataModelIds::tagFeatureEnum feature;
    CPString featureEnumString; // the qualified name of the enumerator
    ModeEnum mode;
    SyntaxEnum syntax;
    CPString cpssFeatureName;
    CXString wideCpssFeatureName;
    CPString xmlConfigFeatureName;
    std::int32_t ticketKind;         // TicketKindEnum
    CXString printTicketFeatureName; // without a prefix
    CPString narrowPrintTicketFeatureName;
    std::vector<DataModelIds::tagFeatureEnum> parentFeatures; // the collection that holds it, if any
};

template <>
struct DictionaryTypeName<NativeXmlConfigFeatureEntry> {
    static constexpr const char* value = "class NativeXmlConfigFeatureEntry";
};
