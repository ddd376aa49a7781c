// Definitions that the client keeps under a name.

#include "Annotation/AnnotationPrintTicketSettings.h"
#include "Annotation/AttributeCollections.h"
#include "ComSupport/FailureBarrier.h"
#include "EmbeddedSettings/PrintTicketOrvelPublicDocSettingsReaderWriter.h"

#include <AnnotationStore/AnnotationStore.h>
#include <ClientJobData/ClientJobData2ReaderWriter.h>
#include <LowLevelFacilities/WideStrings/ByteBuffer.h>

using namespace DataModelIds;

using This = AnnotationPrintTicketSettings;

namespace {

constexpr LONG storeOfJob = 203;

constexpr wchar_t definitionName[] = L"annotation-name-api";
constexpr wchar_t definition[] = L"annotation-col-api";
// So that a separator which is a blank, or ends in one, is kept.
constexpr wchar_t text[] = L"text";

} // namespace

CXString This::GetAnnotationDefinitionNameFromPrintTicket(
    PrintTicketOrvelPublicDocSettingsReaderWriter& publicSettings, AttributeBytesIndexedList& attributes) {
    bool isSpecified = false;
    CXString name;
    publicSettings.GetCurrentValueAsStringForJobLevelOrvelPublicDocSettingsFeature(definitionName,
                                                                                   isSpecified, name);
    return isSpecified ? name : AttributeCollections::Text(attributes, FEAT_ANNOTATION_NAME);
}

HRESULT This::ExpandNameOnlyAnnotationDefinitionInPrintTicket(
    const CXString& name, AnnotationStore* store,
    PrintTicketOrvelPublicDocSettingsReaderWriter& publicSettings) {
    const OperationScope operation(
        "AnnotationPrintTicketSettings::ExpandNameOnlyAnnotationDefinitionInPrintTicket");
    if (name.IsBlank() || store == nullptr) return E_FAIL;
    HRESULT hr = S_OK;
    try {
        const XmlDomNode::Pointer stored = store->GetAnnotationDefinitionByNameAsXmlDomNode(name);
        if (!stored) return S_OK;
        hr = publicSettings.ChangeAndCommit([&](const PublicDocSettingsDocument& document) -> LONG {
            document.Delete(definitionName);
            document.Replace(definition, *stored);
            // The job is to read as on this machine, wherever it prints.
            document.SetString(L"date-separator-api", text, true, GetDateSeparatorByReverseEngineering());
            document.SetString(L"time-separator-api", text, true, GetTimeSeparatorByReverseEngineering());
            return S_OK;
        });
        if (hr == S_OK) m_wasNameOnlyDefinitionExpanded = true;
    }
    CATCH_VARIOUS(hr)
    return hr;
}

HRESULT This::ExpandNameOnlyAnnotationDefinitionInPrintTicketUsingCjd2(
    const CXString& name, ClientJobData2ReaderWriter* clientData,
    PrintTicketOrvelPublicDocSettingsReaderWriter& publicSettings) {
    const OperationScope operation(
        "AnnotationPrintTicketSettings::ExpandNameOnlyAnnotationDefinitionInPrintTicketUsingCjd2");
    HRESULT hr = S_OK;
    try {
        ByteBuffer xml;
        if (clientData == nullptr || !clientData->GetByteBufferFromParameterList(storeOfJob, xml))
            return E_FAIL;
        constexpr bool throwIfInvalid = true;
        AnnotationStore store(xml.getAsCPStringFromUtf8Buffer(), throwIfInvalid);
        hr = ExpandNameOnlyAnnotationDefinitionInPrintTicket(name, &store, publicSettings);
    }
    CATCH_VARIOUS(hr)
    return hr;
}

HRESULT This::SetAnnotationDefinitionInClientJobData2(const CXString& name, AnnotationStore* store,
                                                      ClientJobData2ReaderWriter* clientData) {
    const OperationScope operation("AnnotationPrintTicketSettings::SetAnnotationDefinitionInClientJobData2");
    if (name.IsBlank() || store == nullptr || clientData == nullptr) return E_FAIL;
    HRESULT hr = S_OK;
    try {
        const CPString stored = store->GetAnnotationDefinitionByName(name);
        if (stored.isEmptyOrOnlyWhitespace()) return E_FAIL;
        AnnotationStore ofJob;
        ofJob.AddOrReplaceAnnotationDefinition(name, stored);
        clientData->AddOrReplaceInParameterList(storeOfJob, CXString(ofJob.GetAnnotationStoreXml()));
    }
    CATCH_VARIOUS(hr)
    return hr;
}

bool This::WasNameOnlyDefinitionExpandedInPrintTicket() { return m_wasNameOnlyDefinitionExpanded; }
