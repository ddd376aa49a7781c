// Definitions that the client keeps under a name.

#include "Annotation/AnnotationPrintTicketSettings.h"
#include "Annotation/AttributeCollections.h"
#include "EmbeddedSettings/PrintTicketOrvelPublicDocSettingsReaderWriter.h"

using namespace DataModelIds;

using This = AnnotationPrintTicketSettings;

CXString This::GetAnnotationDefinitionNameFromPrintTicket(
    PrintTicketOrvelPublicDocSettingsReaderWriter& publicSettings, AttributeBytesIndexedList& attributes) {
    bool isSpecified = false;
    CXString name;
    publicSettings.GetCurrentValueAsStringForJobLevelOrvelPublicDocSettingsFeature(L"annotation-name-api",
                                                                                   isSpecified, name);
    return isSpecified ? name : AttributeCollections::Text(attributes, FEAT_ANNOTATION_NAME);
}

HRESULT
This::ExpandNameOnlyAnnotationDefinitionInPrintTicket(const CXString&, AnnotationStore*,
                                                      PrintTicketOrvelPublicDocSettingsReaderWriter&) {
    return E_NOTIMPL;
}

HRESULT This::ExpandNameOnlyAnnotationDefinitionInPrintTicketUsingCjd2(
    const CXString&, ClientJobData2ReaderWriter*, PrintTicketOrvelPublicDocSettingsReaderWriter&) {
    return E_NOTIMPL;
}

HRESULT This::SetAnnotationDefinitionInClientJobData2(const CXString&, AnnotationStore*,
                                                      ClientJobData2ReaderWriter*) {
    return E_NOTIMPL;
}

bool This::WasNameOnlyDefinitionExpandedInPrintTicket() { return m_wasNameOnlyDefinitionExpanded; }
