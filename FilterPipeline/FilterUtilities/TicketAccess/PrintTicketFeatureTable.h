#pragma once

#include "PrintTicketFeatureInformation.h"

// The features that a ticket is asked for. No other name is known.

namespace PrintTicketFeatureTable {

struct Row {
    const wchar_t* name;
    PrintTicketFeatureInformation::Element element;
    IPrintTicketAccess::PrintTicketNamespace ns;
    PrintTicketFeatureInformation::Check check;
};

using Access = IPrintTicketAccess;
using Information = PrintTicketFeatureInformation;

// clang-format off
inline constexpr Row rows[] = {
    {L"JobSimpleSecurePrint",             Information::Parameter, Access::UserKeywordsNamespace, Information::SecurePrintDefinition},
    {L"JobDuplexAllDocumentsContiguously", Information::Feature,  Access::KeywordsNamespace,     Information::Node},
    {L"DocumentCollate",                  Information::Feature,   Access::KeywordsNamespace,     Information::Node},
    {L"PageOutputColor",                  Information::Feature,   Access::KeywordsNamespace,     Information::Node},
    {L"PageMediaSize",                    Information::Feature,   Access::KeywordsNamespace,     Information::Node},
    {L"PageMediaType",                    Information::Feature,   Access::KeywordsNamespace,     Information::Node},
    {L"PageMediaColor",                   Information::Feature,   Access::KeywordsNamespace,     Information::Node},
    {L"JobStapleAllDocuments",            Information::Feature,   Access::KeywordsNamespace,     Information::Node},
    {L"PageInputBin",                     Information::Feature,   Access::KeywordsNamespace,     Information::Node},
    {L"JobInputBin",                      Information::Feature,   Access::KeywordsNamespace,     Information::Node},
    {L"PageResolution",                   Information::Feature,   Access::KeywordsNamespace,     Information::Node},
    {L"JobCopiesAllDocuments",            Information::Parameter, Access::KeywordsNamespace,     Information::Range},
    {L"PageOrientation",                  Information::Feature,   Access::KeywordsNamespace,     Information::Node},
    {L"JobIdentification",                Information::Feature,   Access::UserKeywordsNamespace, Information::Node},
    {L"JobHolePunch",                     Information::Feature,   Access::KeywordsNamespace,     Information::Node},
    {L"PageBorderless",                   Information::Feature,   Access::UserKeywordsNamespace, Information::Node},
    {L"JobNUpAllDocumentsContiguously",   Information::Feature,   Access::KeywordsNamespace,     Information::Node},
    {L"DocumentNUp",                      Information::Feature,   Access::KeywordsNamespace,     Information::Node},
    {L"JobPasscode",                      Information::Feature,   Access::KeywordsV11Namespace,  Information::Node},
    {L"JobPasscodeString",                Information::Parameter, Access::KeywordsV11Namespace,  Information::Node},
    {L"JobOrvelCompleteDocSettings",      Information::Parameter, Access::UserKeywordsNamespace, Information::Node},
    {L"JobOrvelPublicDocSettings",        Information::Parameter, Access::UserKeywordsNamespace, Information::Node},
    {L"JobBindAllDocuments",              Information::Feature,   Access::KeywordsNamespace,     Information::Node},
};
// clang-format on

} // namespace PrintTicketFeatureTable
