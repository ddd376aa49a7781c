#include "Media/PageMediaSizePtPcHelper.h"

#include "ComSupport/FailureBarrier.h"
#include "ComSupport/ThrowHresult.h"
#include "Media/MediaSizeTable.h"
#include "PrintSchema/Bstr.h"
#include "PrintSchema/DocumentQuery.h"
#include "PrintSchema/PrintCapabilitiesXmlDocument.h"
#include "PrintSchema/PrintTicketXmlDocument.h"
#include "PrintSchema/TreeChange.h"

#include <LowLevelFacilities/Failures/CPComException.h>

#include <algorithm>
#include <cwchar>
#include <map>
#include <string>
#include <utility>

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
    Option created;
    ticket.CreateFeatureOptionPair(FEATURE, true, name, isPublic, &created.feature, &created.option);
    return created;
}

using Inits = std::map<std::wstring, CComPtr<IXMLDOMElement>>;

/// Puts a size in the place of the ticket's, or nothing, with the initialisers of its parameters. A broken
/// ticket may hold the old one more than once: what stayed would hide what is added. False if there was no
/// size.
bool ReplaceSize(const PrintTicketXmlDocument& ticket, TreeChange& change, IXMLDOMElement* feature,
                 Inits inits) {
    const CComBSTR keywords = ticket.GetKeywordsNsPrefix();
    bool wasThere = change.Replace(ticket.FeatureQuery(keywords, FEATURE), feature);
    inits.try_emplace(MEDIASIZEWIDTH_PARAM);
    inits.try_emplace(MEDIASIZEHEIGHT_PARAM);
    for (const auto& [parameter, init] : inits)
        wasThere |= change.Replace(ticket.ParameterInitQuery(keywords, parameter.c_str()), init);
    return wasThere;
}

} // namespace

PageMediaSizePtPcHelper::PageMediaSizePtPcHelper() = default;
PageMediaSizePtPcHelper::~PageMediaSizePtPcHelper() = default;

std::vector<PcFormInfo>
PageMediaSizePtPcHelper::GetSupportedPageMediaSizes(PrintCapabilitiesXmlDocument& capabilities) {
    const OperationScope operation("PageMediaSizePtPcHelper::GetSupportedPageMediaSizes");
    if (!m_sizes.empty()) return m_sizes;
    std::vector<PcFormInfo> sizes;
    try {
        ReadOptions(capabilities, sizes);
        m_sizes = sizes;
    } catch (...) {
        // Deliberate: what has been gathered counts as the answer, but is not kept.
        ReportCaughtException();
    }
    return sizes;
}

void PageMediaSizePtPcHelper::UpdateSizes(const PrintCapabilitiesXmlDocument& capabilities) {
    if (!m_sizes.empty()) return;
    std::vector<PcFormInfo> sizes;
    ReadOptions(capabilities, sizes);
    m_sizes = std::move(sizes);
}

void PageMediaSizePtPcHelper::ReadOptions(const PrintCapabilitiesXmlDocument& capabilities,
                                          std::vector<PcFormInfo>& sizes) {
    CComPtr<IXMLDOMNode> feature;
    const CComBSTR keywords = capabilities.GetKeywordsNsPrefix();
    if (capabilities.GetFeatureNodeIfExists(keywords, FEATURE, &feature) != S_OK) return;
    CComPtr<IXMLDOMNodeList> options;
    capabilities.GetChildOptionNodes(feature, &options);
    for (;;) {
        CComPtr<IXMLDOMNode> option;
        ThrowIfFailed(options->nextNode(&option));
        if (!option) return;
        CComBSTR name;
        if (capabilities.GetAttributeValue(option, PrintSchema::NAME_ATTRIBUTE_NAME, &name) != S_OK) continue;
        PcFormInfo form;
        SplitName(capabilities, name, form);
        if (form.optionName.View() == CustomMediaSize) continue;
        if (ReadLength(capabilities, option, MEDIASIZEWIDTH_PROP, form.width) &&
            ReadLength(capabilities, option, MEDIASIZEHEIGHT_PROP, form.height))
            sizes.push_back(form);
    }
}

HRESULT PageMediaSizePtPcHelper::GetPageMediaSizeOptionKeyword(PrintCapabilitiesXmlDocument& capabilities,
                                                               int width, int height, CXString& keyword,
                                                               MsPrintTicketNamespacesEnum& nameSpace) {
    const OperationScope operation("PageMediaSizePtPcHelper::GetPageMediaSizeOptionKeyword");
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
    PcFormInfo form{width, height, {}, publicName};
    if (GetPageMediaSizeOptionKeyword(capabilities, width, height, form.optionName, form.nameSpace) != S_OK)
        form.optionName = CustomMediaSize;
    return AddOrReplacePageMediaSize(ticket, form);
}

HRESULT PageMediaSizePtPcHelper::AddOrReplacePageMediaSize(PrintTicketXmlDocument& ticket,
                                                           const PcFormInfo& form) {
    const OperationScope operation("PageMediaSizePtPcHelper::AddOrReplacePageMediaSize");
    if (form.optionName.View() == CustomMediaSize) {
        return AddOrReplaceCustomSize(ticket, form.optionName, true,
                                      {{MEDIASIZEWIDTH_PROP, MEDIASIZEWIDTH_PARAM, form.width},
                                       {MEDIASIZEHEIGHT_PROP, MEDIASIZEHEIGHT_PARAM, form.height}});
    }
    TreeChange change(ticket.GetRootNode());
    const Option created = CreateOption(ticket, form.optionName, form.nameSpace == publicName);
    ticket.AppendChildIntegerScoredProperty(created.option, MEDIASIZEWIDTH_PROP, form.width);
    ticket.AppendChildIntegerScoredProperty(created.option, MEDIASIZEHEIGHT_PROP, form.height);
    ReplaceSize(ticket, change, created.feature, {});
    change.Keep();
    return S_OK;
}

HRESULT PageMediaSizePtPcHelper::AddOrReplaceCustomSize(PrintTicketXmlDocument& ticket,
                                                        const CXString& option, bool isPublic,
                                                        const std::vector<CustomNumber>& numbers) {
    const OperationScope operation("PageMediaSizePtPcHelper::AddOrReplaceCustomSize");
    TreeChange change(ticket.GetRootNode());
    const CComBSTR keywords = ticket.GetKeywordsNsPrefix();
    const Option created = CreateOption(ticket, option, isPublic);
    Inits inits;
    for (const CustomNumber& number : numbers) {
        ticket.AppendChildParameterRefScoredProperty(created.option, keywords, number.property, keywords,
                                                     number.parameter);
        CComPtr<IXMLDOMElement> init;
        ticket.CreateIntegerParameterInit(keywords, number.parameter, number.value, &init);
        inits[std::wstring(number.parameter.View())] = init;
    }
    ReplaceSize(ticket, change, created.feature, std::move(inits));
    change.Keep();
    return S_OK;
}

HRESULT
PageMediaSizePtPcHelper::DeletePageMediaSizeAndItsParameterInitsIfExist(PrintTicketXmlDocument& ticket) {
    const OperationScope operation("PageMediaSizePtPcHelper::DeletePageMediaSizeAndItsParameterInitsIfExist");
    TreeChange change(ticket.GetRootNode());
    const bool wasThere = ReplaceSize(ticket, change, nullptr, {});
    change.Keep();
    return wasThere ? S_OK : S_FALSE;
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
