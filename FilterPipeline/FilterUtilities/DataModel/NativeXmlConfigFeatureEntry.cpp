#include "DataModel/NativeXmlConfigFeatureEntry.h"

using DataModelIds::tagFeatureEnum;

NativeXmlConfigFeatureEntry::NativeXmlConfigFeatureEntry(tagFeatureEnum featureId, const char* featureEnum,
                                                         ModeEnum featureMode, SyntaxEnum featureSyntax,
                                                         const char* cpssName, const char* xmlConfigName,
                                                         std::int32_t kind, const wchar_t* printTicketName)
    : feature(featureId), featureEnumString(featureEnum), mode(featureMode), syntax(featureSyntax),
      cpssFeatureName(cpssName), wideCpssFeatureName(cpssName), xmlConfigFeatureName(xmlConfigName),
      ticketKind(kind), printTicketFeatureName(printTicketName),
      narrowPrintTicketFeatureName(printTicketName) {}

NativeXmlConfigFeatureEntry::NativeXmlConfigFeatureEntry(tagFeatureEnum featureId, const char* featureEnum,
                                                         ModeEnum featureMode, SyntaxEnum featureSyntax,
                                                         const char* cpssName, const char* xmlConfigName,
                                                         std::int32_t kind, const wchar_t* printTicketName,
                                                         tagFeatureEnum parentFeature)
    : NativeXmlConfigFeatureEntry(featureId, featureEnum, featureMode, featureSyntax, cpssName, xmlConfigName,
                                  kind, printTicketName) {
    parentFeatures.push_back(parentFeature);
}
