#pragma once

#include "DataModel/PrintSchemaKeywordLiterals.h"
#include "TicketAccess/PrintTicketFeatureInformation.h"

// The features that a ticket is asked for. No other name is known.

namespace PrintTicketFeatureTable {

struct Row {
    const wchar_t* name;
    PrintTicketFeatureInformation::Element element;
    IPrintTicketAccess::PrintTicketNamespace ns;
    PrintTicketFeatureInformation::Check check;
};

namespace Keywords = PrintSchema::Keywords;
using Access = IPrintTicketAccess;
using Information = PrintTicketFeatureInformation;

inline constexpr Row rows[] = {
    {Keywords::JobSimpleSecurePrint::PARAMETERNAME, Information::Parameter, Access::UserKeywordsNamespace,
     Information::SecurePrintDefinition},
    {Keywords::JobDuplexAllDocumentsContiguously::FEATURE, Information::Feature, Access::KeywordsNamespace,
     Information::Node},
    {Keywords::DocumentCollate::FEATURE, Information::Feature, Access::KeywordsNamespace, Information::Node},
    {Keywords::PageOutputColor::FEATURE, Information::Feature, Access::KeywordsNamespace, Information::Node},
    {Keywords::PageMediaSize::FEATURE, Information::Feature, Access::KeywordsNamespace, Information::Node},
    {Keywords::PageMediaType::FEATURE, Information::Feature, Access::KeywordsNamespace, Information::Node},
    {Keywords::PageMediaColor::FEATURE, Information::Feature, Access::KeywordsNamespace, Information::Node},
    {Keywords::JobStapleAllDocuments::FEATURE, Information::Feature, Access::KeywordsNamespace,
     Information::Node},
    {Keywords::PageInputBin::FEATURE, Information::Feature, Access::KeywordsNamespace, Information::Node},
    {Keywords::JobInputBin::FEATURE, Information::Feature, Access::KeywordsNamespace, Information::Node},
    {Keywords::PageResolution::FEATURE, Information::Feature, Access::KeywordsNamespace, Information::Node},
    {Keywords::JobCopiesAllDocuments::PARAMETERNAME, Information::Parameter, Access::KeywordsNamespace,
     Information::Range},
    {Keywords::PageOrientation::FEATURE, Information::Feature, Access::KeywordsNamespace, Information::Node},
    {Keywords::JobIdentification::FEATURE, Information::Feature, Access::UserKeywordsNamespace,
     Information::Node},
    {Keywords::JobHolePunch::FEATURE, Information::Feature, Access::KeywordsNamespace, Information::Node},
    {Keywords::PageBorderless::FEATURE, Information::Feature, Access::UserKeywordsNamespace,
     Information::Node},
    {Keywords::NUp::JobNUpAllDocumentsContiguously, Information::Feature, Access::KeywordsNamespace,
     Information::Node},
    {Keywords::NUp::DocumentNUp, Information::Feature, Access::KeywordsNamespace, Information::Node},
    {Keywords::JobPasscode::FEATURE, Information::Feature, Access::KeywordsV11Namespace, Information::Node},
    {Keywords::JobPasscodeString::PARAMETERNAME, Information::Parameter, Access::KeywordsV11Namespace,
     Information::Node},
    {Keywords::JobOrvelCompleteDocSettings::PARAMETERNAME, Information::Parameter,
     Access::UserKeywordsNamespace, Information::Node},
    {Keywords::JobOrvelPublicDocSettings::PARAMETERNAME, Information::Parameter,
     Access::UserKeywordsNamespace, Information::Node},
    {Keywords::Binding::JobBindAllDocuments, Information::Feature, Access::KeywordsNamespace,
     Information::Node},
};

} // namespace PrintTicketFeatureTable
