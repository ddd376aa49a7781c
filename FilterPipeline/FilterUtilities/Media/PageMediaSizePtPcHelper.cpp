#include "PageMediaSizePtPcHelper.h"

#include "MediaSizeTable.h"

#include <ComSupport/FailureBarrier.h>
#include <ComSupport/ThrowHresult.h>
#include <LowLevelFacilities/CPComException.h>
#include <PrintSchema/Bstr.h>
#include <PrintSchema/PrintCapabilitiesXmlDocument.h>
#include <PrintSchema/PrintTicketXmlDocument.h>

#include <algorithm>
#include <cwchar>

using namespace PrintSchema::PageMediaSize;
using PrintSchema::MsPrintTicketNamespacesEnum;

namespace {

// Deliberate: the numbers that this room gives out, crosswise to the enumerators of these names.
constexpr MsPrintTicketNamespacesEnum publicName = PrintSchema::UserKeywordsNs;
constexpr MsPrintTicketNamespacesEnum privateName = PrintSchema::KeywordsNs;

/// The local name, and whose it is: private unless it has the document's public prefix, in whatever case.
void SplitName(const PrintCapabilitiesXmlDocument& capabilities, const CComBSTR& name, PcFormInfo& form) {
    const wchar_t* const text = name.m_str != nullptr ? name.m_str : L"";
    const wchar_t* const colon = std::wcschr(text, L':');
    form.optionName = colon == nullptr ? text : colon + 1;
    form.nameSpace = privateName;
    if (colon == nullptr) return;
    const CXString prefix(text, static_cast<int>(colon - text) + 1);
    const CComBSTR keywords = capabilities.GetKeywordsNsPrefix();
    if (keywords.m_str != nullptr && ::_wcsicmp(prefix, keywords) == 0) form.nameSpace = publicName;
}

/// Whether an option has a length, and which. A text that is no length is none.
bool ReadLength(const PrintCapabilitiesXmlDocument& capabilities, IXMLDOMNode* option,
                const wchar_t* property, int& length) {
    CXString text;
    if (capabilities.GetChildScoredPropertyValueIfExists(option, property, text) != S_OK) return false;
    length = ::_wtoi(text);
    return length > 0;
}

struct Option {
    CComPtr<IXMLDOMElement> feature;
    CComPtr<IXMLDOMElement> option;
};

/// The feature with an option of that name, not yet part of the ticket.
Option CreateOption(PrintTicketXmlDocument& ticket, const CXString& name, bool isPublic) {
    // A name that would not be the driver's own for those who read the ticket next is not written.
    if (!isPublic)
        ThrowIfFailed(ticket.DeclareUserKeywordsNsPrefix(),
                      "PageMediaSizePtPcHelper::AddOrReplacePageMediaSize");
    Option created;
    ticket.CreateFeatureOptionPair(FEATURE, true, name, isPublic, &created.feature, &created.option);
    return created;
}

} // namespace

PageMediaSizePtPcHelper::PageMediaSizePtPcHelper() = default;
PageMediaSizePtPcHelper::~PageMediaSizePtPcHelper() = default;

std::vector<PcFormInfo>
PageMediaSizePtPcHelper::GetSupportedPageMediaSizes(PrintCapabilitiesXmlDocument& capabilities) {
    UpdateSizes(capabilities);
    return m_sizes;
}

void PageMediaSizePtPcHelper::UpdateSizes(const PrintCapabilitiesXmlDocument& capabilities) {
    if (!m_sizes.empty()) return;
    [[maybe_unused]] HRESULT hr = S_OK;
    try {
        ReadOptions(capabilities);
    }
    // Deliberate: what has been gathered stays, and counts as the list.
    CATCH_VARIOUS(hr, "PageMediaSizePtPcHelper::GetSupportedPageMediaSizes")
}

void PageMediaSizePtPcHelper::ReadOptions(const PrintCapabilitiesXmlDocument& capabilities) {
    constexpr char function[] = "PageMediaSizePtPcHelper::GetSupportedPageMediaSizes";
    CComPtr<IXMLDOMNode> feature;
    const CComBSTR keywords = capabilities.GetKeywordsNsPrefix();
    if (capabilities.GetFeatureNodeIfExists(keywords, FEATURE, &feature) != S_OK) return;
    CComPtr<IXMLDOMNodeList> options;
    capabilities.GetChildOptionNodes(feature, &options);
    for (;;) {
        CComPtr<IXMLDOMNode> option;
        ThrowIfFailed(options->nextNode(&option), function);
        if (!option) return;
        CComBSTR name;
        if (capabilities.GetAttributeValue(option, PrintSchema::NAME_ATTRIBUTE_NAME, &name) != S_OK) continue;
        PcFormInfo form;
        SplitName(capabilities, name, form);
        if (form.optionName.View() == CustomMediaSize) continue;
        if (ReadLength(capabilities, option, MEDIASIZEWIDTH_PROP, form.width) &&
            ReadLength(capabilities, option, MEDIASIZEHEIGHT_PROP, form.height))
            m_sizes.push_back(form);
    }
}

HRESULT PageMediaSizePtPcHelper::GetPageMediaSizeOptionKeyword(PrintCapabilitiesXmlDocument& capabilities,
                                                               int width, int height, CXString& keyword,
                                                               MsPrintTicketNamespacesEnum& nameSpace) {
    keyword.Empty();
    UpdateSizes(capabilities);
    const auto found = std::find_if(m_sizes.begin(), m_sizes.end(), [&](const PcFormInfo& form) {
        return form.width == width && form.height == height;
    });
    if (found == m_sizes.end()) return S_FALSE;
    keyword = found->optionName;
    nameSpace = found->nameSpace;
    return S_OK;
}

HRESULT PageMediaSizePtPcHelper::AddOrReplacePageMediaSize(PrintCapabilitiesXmlDocument& capabilities,
                                                           PrintTicketXmlDocument& ticket, int width,
                                                           int height) {
    CXString name;
    MsPrintTicketNamespacesEnum nameSpace = privateName;
    const bool isCustom = GetPageMediaSizeOptionKeyword(capabilities, width, height, name, nameSpace) != S_OK;
    if (isCustom) name = CustomMediaSize;

    const CComBSTR keywords = ticket.GetKeywordsNsPrefix();
    const Option created = CreateOption(ticket, name, isCustom || nameSpace == publicName);
    DeletePageMediaSizeAndItsParameterInitsIfExist(ticket);
    if (isCustom) {
        ticket.AppendChildParameterRefScoredProperty(created.option, keywords, MEDIASIZEWIDTH_PROP, keywords,
                                                     MEDIASIZEWIDTH_PARAM);
        ticket.AppendChildParameterRefScoredProperty(created.option, keywords, MEDIASIZEHEIGHT_PROP, keywords,
                                                     MEDIASIZEHEIGHT_PARAM);
    } else {
        ticket.AppendChildIntegerScoredProperty(created.option, MEDIASIZEWIDTH_PROP, width);
        ticket.AppendChildIntegerScoredProperty(created.option, MEDIASIZEHEIGHT_PROP, height);
    }
    ticket.AppendChildToRootNode(created.feature);
    if (isCustom) {
        ticket.AppendIntegerParameterInit(keywords, MEDIASIZEWIDTH_PARAM, width);
        ticket.AppendIntegerParameterInit(keywords, MEDIASIZEHEIGHT_PARAM, height);
    }
    return S_OK;
}

HRESULT
PageMediaSizePtPcHelper::DeletePageMediaSizeAndItsParameterInitsIfExist(PrintTicketXmlDocument& ticket) {
    const CComBSTR keywords = ticket.GetKeywordsNsPrefix();
    HRESULT result = S_FALSE;
    // A broken ticket may hold them more than once; what stayed would hide what is added later.
    while (ticket.DeleteFeatureNodeIfExists(keywords, FEATURE) == S_OK)
        result = S_OK;
    for (const wchar_t* const parameter : {MEDIASIZEWIDTH_PARAM, MEDIASIZEHEIGHT_PARAM})
        while (ticket.DeleteParameterInitNodeIfExists(keywords, parameter) == S_OK)
            result = S_OK;
    return result;
}

bool PageMediaSizePtPcHelper::IsEnvelopeSize(int width, int height) {
    return MediaSizeTable::FindBySize(width, height, MediaSizeClass::Envelope) != nullptr;
}

bool PageMediaSizePtPcHelper::GetValueEnumForPageSizeBasedOnDims(int width, int height,
                                                                 DataModelIds::tagValueEnum& value) {
    const MediaSizeRecord* const record = MediaSizeTable::FindBySize(width, height);
    if (record == nullptr) return false;
    value = record->value;
    return true;
}
