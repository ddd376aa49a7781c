#include "JobContext/XpsFilterPrintTicket.h"

#include "ComSupport/ThrowHresult.h"
#include "DataModel/FeatureIds.h"
#include "PrintSchema/Bstr.h"
#include "PrintSchema/DocumentQuery.h"
#include "PrintSchema/PrintCapabilitiesXmlDocument.h"
#include "Ticket/PrintTicketManager.h"

#include <AttributeStore/AttributeBytesIndexedList.h>
#include <LowLevelFacilities/Failures/CPComException.h>

#include <filterpipeline.h>

using namespace DataModelIds;
using namespace PrintSchema;
using namespace PrintSchemaText;

namespace {

using This = XpsFilterPrintTicket;
using OutputPaperSize::OutputPaperSizeData;

constexpr const wchar_t* sidesSetting = L"sides";
constexpr const wchar_t* fitToNewSizeSetting = L"fit-to-new-size-print-ticket-keyword-api";
constexpr const wchar_t* bookletSetting = L"booklet-api";
constexpr const wchar_t* outlinesSetting = L"outlines-api";

// Attributes that only questions of this class know.
constexpr LONG fitToNewSizeAttribute = 847;
constexpr LONG newSizeAttribute = 844; // a collection of two lengths
constexpr LONG bookletEdgeAttribute = 44;
constexpr LONG bookletGutterAttribute = 257; // points
constexpr LONG bookletCreepAttribute = 258;  // tenths of points
constexpr LONG mediaSizeAttribute = 153;     // in the media collection
constexpr LONG widthAttribute = 155;
constexpr LONG heightAttribute = 156;

constexpr LONG otherBookletEdge = 5461;
constexpr auto scaleToFitOn = static_cast<tagValueEnum>(7260);
constexpr std::int32_t booklet = 2;
constexpr std::int32_t bookletAtOtherEdge = 3;
constexpr std::int32_t gutterWithoutAttribute = 32;

Number XpsUnits(int length, Dimension::UnitsEnum unit) {
    return Dimension(length, unit).GetValue(Dimension::XpsUnit);
}

int Microns(const AttributeBytesIndexedList& list, LONG feature) {
    return list.GetDimensionValue(AttributeBytesFeatureId(feature), nullptr)
        .GetValue(Dimension::Micron)
        .GetIntValue(Number::toNearest);
}

bool HasDimensions(const AttributeBytesIndexedList& list) {
    bool hasWidth = false;
    bool hasHeight = false;
    static_cast<void>(list.GetDimensionValue(AttributeBytesFeatureId(widthAttribute), &hasWidth));
    static_cast<void>(list.GetDimensionValue(AttributeBytesFeatureId(heightAttribute), &hasHeight));
    return hasWidth && hasHeight;
}

void SetSheet(OutputPaperSizeData& data, int width, int height) {
    data = {width, height, width != 0 && height != 0};
}

// The option of the sheets that a keyword names; null if there is none.
CComPtr<IXMLDOMNode> FindSheet(const PrintCapabilitiesXmlDocument& capabilities, const CXString& keyword) {
    const std::wstring_view text = keyword.View();
    // A quote is part of no name, and would end that of the query.
    if (text.find(L'"') != std::wstring_view::npos) return nullptr;
    const std::size_t local = text.find(L':') + 1;
    const CXString prefix(text.data(), static_cast<int>(local));
    const CComBSTR publicPrefix = capabilities.GetKeywordsNsPrefix();
    const bool isPublic = local == 0 || prefix.CompareNoCase(CXString(publicPrefix.m_str)) == 0;
    DocumentQuery query(capabilities);
    query.AddFeature(publicPrefix, PageMediaSize::FEATURE);
    query.AddChildOptionName(isPublic ? publicPrefix : capabilities.GetUserKeywordsNsPrefix(),
                             text.data() + local);
    return query.FindFirst();
}

} // namespace

This::XpsFilterPrintTicket(PrintTicketManager* manager, const IAttributeBytesDebugDisplayHelper& helper)
    : XpsFilterPrintTicketBase(manager, helper) {}

This::~XpsFilterPrintTicket() = default;

// ---- Options of the ticket. The enumerations count the words of the keywords' lists.

template <typename Option, std::size_t count>
HRESULT This::ReadChoice(const wchar_t* feature, bool isPublic, const wchar_t* const (&words)[count],
                         Option& option) const {
    try {
        CComBSTR name;
        const HRESULT hr = ReadOption(feature, isPublic, name);
        if (FAILED(hr)) return hr;
        for (std::size_t at = 0; at < count; ++at)
            if (AreEqual(name, Make(words[at]))) option = static_cast<Option>(at);
        return S_OK;
    } catch (const CPComException& failure) {
        return failure.GetHresult();
    }
}

HRESULT This::GetOrientationSetting(PageOrientation::EOrientationOption& option) {
    option = PageOrientation::EOrientationOption::Portrait;
    return ReadChoice(PageOrientation::FEATURE, true, PageOrientation::OPTIONS, option);
}

HRESULT This::GetDuplexSetting(JobDuplexAllDocumentsContiguously::EDuplexOption& option) {
    namespace Duplex = JobDuplexAllDocumentsContiguously;
    option = Duplex::EDuplexOption::OneSided;
    const HRESULT hr = ReadChoice(Duplex::FEATURE, true, Duplex::DUPLEX_OPTIONS, option);
    return hr == E_ELEMENT_NOT_FOUND ? S_FALSE : hr;
}

HRESULT This::GetJobIdSetting(JobIdentification::EJobIdentificationOption& option) {
    option = JobIdentification::EJobIdentificationOption::JobIdOff;
    const HRESULT hr =
        ReadChoice(JobIdentification::FEATURE, false, JobIdentification::JOB_ID_OPTIONS, option);
    return hr == E_ELEMENT_NOT_FOUND ? S_FALSE : hr;
}

HRESULT This::GetPageMediaSizeSettings(PageMediaSize::PageMediaSizeData& data) const {
    using namespace PageMediaSize;
    data = {};
    const HRESULT hr = ReadScoredProperty(FEATURE, true, MEDIASIZEWIDTH_PROP, &data.width);
    return FAILED(hr) ? hr : ReadScoredProperty(FEATURE, true, MEDIASIZEHEIGHT_PROP, &data.height);
}

// ---- Settings that travel in the job's ticket, as public settings or else in the attribute bytes

bool This::IsSidesImagedSpecified() { return !ReadPublicSetting(sidesSetting).value.IsEmpty(); }

LONG This::ReadOptionAttribute(LONG feature) const {
    return GetOptionValueFromAttributeBytes(AttributeBytesFeatureId(feature), nullptr);
}

HRESULT This::GetPageScalingSettings(PageScaling::PageScalingData& data) const {
    data = {};
    const PublicSetting setting = ReadPublicSetting(fitToNewSizeSetting);
    const bool isSet = setting.isReadable ? !setting.value.IsEmpty()
                                          : ReadOptionAttribute(fitToNewSizeAttribute) != VAL_UNSPECIFIED;
    if (!isSet) return S_OK;
    data.scalingType = PageScaling::EScalingType::FitApplicationMediaSizeToPageMediaSize;
    data.isFitToSize = true;
    data.scaleToFit = scaleToFitOn;
    return S_OK;
}

HRESULT This::GetBookletSettings(Binding::BindingData& data) const {
    data = {};
    const PublicSetting setting = ReadPublicSetting(bookletSetting);
    const bool isBooklet = setting.isReadable ? setting.value == L"booklet-on"
                                              : ReadOptionAttribute(FEAT_BOOKLET) == VAL_BOOKLET_ON;
    if (!isBooklet) return S_OK;
    data.bookletType =
        ReadOptionAttribute(bookletEdgeAttribute) == otherBookletEdge ? bookletAtOtherEdge : booklet;
    bool hasGutter = false;
    const int gutter =
        GetIntegerValueFromAttributeBytes(AttributeBytesFeatureId(bookletGutterAttribute), &hasGutter);
    data.gutter = hasGutter ? XpsUnits(gutter, Dimension::Point).GetIntValue(Number::toNearest)
                            : gutterWithoutAttribute;
    data.creep =
        XpsUnits(GetIntegerValueFromAttributeBytes(AttributeBytesFeatureId(bookletCreepAttribute), nullptr),
                 Dimension::TenthOfPoint);
    return S_OK;
}

HRESULT This::GetNUpSettings(NUp::NUpData& data) const {
    data = {};
    HRESULT hr = E_ELEMENT_NOT_FOUND;
    for (std::int32_t at = 0; at < 2 && hr == E_ELEMENT_NOT_FOUND; ++at) {
        hr = ReadScoredProperty(NUp::NUP_FEATURES[at], true, NUp::NUP_PROP, &data.pagesPerSheet);
        if (SUCCEEDED(hr)) data.featureFound = at;
    }
    const PublicSetting setting = ReadPublicSetting(outlinesSetting);
    const bool hasOutlines = setting.isReadable ? setting.value == L"outlines-on"
                                                : ReadOptionAttribute(FEAT_OUTLINES) == VAL_OUTLINES_ON;
    if (hasOutlines) data.outlines = VAL_OUTLINES_ON;
    return hr == E_ELEMENT_NOT_FOUND ? S_FALSE : hr;
}

// ---- The sheet that comes out

HRESULT This::GetOutputPaperSizeSettings(OutputPaperSizeData& data) const {
    const OperationScope operation("XpsFilterPrintTicket::GetOutputPaperSizeSettings");
    data = {};
    try {
        ReadChosenSheet(data);
    } catch (const CPException&) {
        // The sheet of the page is usable, whatever is wrong with the chosen one.
        data = {};
    }
    if (data.isSpecified) return S_OK;
    PageMediaSize::PageMediaSizeData page;
    GetPageMediaSizeSettings(page);
    data = {page.width, page.height, false};
    return S_OK;
}

void This::ReadChosenSheet(OutputPaperSizeData& data) const {
    const PublicSetting setting = ReadPublicSetting(fitToNewSizeSetting);
    if (!setting.isReadable)
        ReadSheetFromAttributeBytes(data);
    else if (!setting.value.IsEmpty())
        ReadSheetFromCapabilities(setting.value, data);
}

void This::ReadSheetFromAttributeBytes(OutputPaperSizeData& data) const {
    if (ReadOptionAttribute(fitToNewSizeAttribute) == VAL_UNSPECIFIED) return;
    AttributeBytesIndexedList size;
    GetCollectionFromAttributeBytes(AttributeBytesFeatureId(FEAT_MEDIA_COL), size);
    size.GetCollection(AttributeBytesFeatureId(mediaSizeAttribute), size);
    if (!HasDimensions(size))
        GetCollectionFromAttributeBytes(AttributeBytesFeatureId(newSizeAttribute), size);
    SetSheet(data, Microns(size, widthAttribute), Microns(size, heightAttribute));
}

void This::ReadSheetFromCapabilities(const CXString& keyword, OutputPaperSizeData& data) const {
    if (GetManager() == nullptr) return;
    const CXString printer = GetManager()->GetPrinterName();
    if (m_knownSheet.keyword == keyword && m_knownSheet.printer == printer) {
        data = m_knownSheet.size;
        return;
    }
    CComPtr<IXMLDOMDocument2> document;
    ThrowIfFailed(GetManager()->GetCapabilities(nullptr, &document));
    const PrintCapabilitiesXmlDocument capabilities(document);
    if (const CComPtr<IXMLDOMNode> option = FindSheet(capabilities, keyword)) {
        int width = 0;
        int height = 0;
        capabilities.GetWidthAndLengthPropertyValues(GetTicketInForce(), option, width, height);
        SetSheet(data, width, height);
    }
    // The size of a custom sheet is that of the ticket at hand.
    if (keyword.View().find(L"Custom") == std::wstring_view::npos) m_knownSheet = {printer, keyword, data};
}
