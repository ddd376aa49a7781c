#include "Commands/SettingsReport.h"

#include "Commands/ShownAnswer.h"
#include "Common/HostError.h"
#include "Common/Text.h"
#include "Report/HresultText.h"
#include "Report/TextTable.h"

#include <PrintSchema/PrintSchemaKeywords.h>

#include <filterpipeline.h>

#include <cstdio>
#include <span>

using namespace PrintSchema;

namespace OvPipeline {

namespace {

constexpr const char* fromTicket = "ticket";
constexpr const char* fromSettings = "settings in the ticket";
constexpr const char* fromNobody = "default";
constexpr const char* microns = "micron";
constexpr const char* xpsUnits = "1/96 inch";

std::string Decimal(double value) {
    char text[32];
    std::snprintf(text, sizeof text, "%.2f", value);
    return text;
}

// Where a value comes from, by the result of the question for it. HostError where that says nothing of the
// ticket.
std::string Origin(HRESULT hr, const char* source) {
    if (hr == S_OK) return source;
    if (hr == E_OUTOFMEMORY || hr == E_ABORT)
        throw HostError(hr, {}, "the ticket could not be asked: " + HresultText(hr));
    if (SUCCEEDED(hr) || hr == E_ELEMENT_NOT_FOUND) return fromNobody;
    return std::string(fromNobody) + ", since the ticket's is wrong: " + HresultText(hr);
}

template <typename Option>
std::string Word(std::span<const wchar_t* const> words, Option option) {
    return Utf8(words[static_cast<std::size_t>(option)]);
}

} // namespace

SettingsReport::SettingsReport(XpsFilterPrintTicket& ticket) {
    AddOptions(ticket);
    AddSizes(ticket);
    AddScaling(ticket);
    AddPagesPerSheet(ticket);
    AddBooklet(ticket);
}

void SettingsReport::AddWord(const char* name, std::string value, std::string origin) {
    m_settings.push_back({name, std::move(value), "", false, std::move(origin)});
}

void SettingsReport::AddNumber(const char* name, std::string value, const char* unit, std::string origin) {
    m_settings.push_back({name, std::move(value), unit, true, std::move(origin)});
}

void SettingsReport::AddOptions(XpsFilterPrintTicket& ticket) {
    PageOrientation::EOrientationOption orientation;
    HRESULT hr = ticket.GetOrientationSetting(orientation);
    AddWord("orientation", Word(PageOrientation::OPTIONS, orientation), Origin(hr, fromTicket));
    JobDuplexAllDocumentsContiguously::EDuplexOption duplex;
    hr = ticket.GetDuplexSetting(duplex);
    AddWord("duplex", Word(JobDuplexAllDocumentsContiguously::DUPLEX_OPTIONS, duplex),
            Origin(hr, fromTicket));
    JobIdentification::EJobIdentificationOption identification;
    hr = ticket.GetJobIdSetting(identification);
    AddWord("job identification", Word(JobIdentification::JOB_ID_OPTIONS, identification),
            Origin(hr, fromTicket));
    const bool hasSides = ticket.IsSidesImagedSpecified();
    AddWord("sides are specified", YesOrNo(hasSides), hasSides ? fromSettings : fromNobody);
}

void SettingsReport::AddSizes(const XpsFilterPrintTicket& ticket) {
    PageMediaSize::PageMediaSizeData page;
    const std::string ofPage = Origin(ticket.GetPageMediaSizeSettings(page), fromTicket);
    const Gdiplus::SizeF size = page.GetPageSizeInXpsUnits();
    AddNumber("page width", std::to_string(page.width), microns, ofPage);
    AddNumber("page height", std::to_string(page.height), microns, ofPage);
    AddNumber("page width", Decimal(size.Width), xpsUnits, ofPage);
    AddNumber("page height", Decimal(size.Height), xpsUnits, ofPage);
    OutputPaperSize::OutputPaperSizeData sheet;
    ticket.GetOutputPaperSizeSettings(sheet);
    const char* const ofSheet = sheet.isSpecified ? fromSettings : "the page";
    AddNumber("output paper width", std::to_string(sheet.width), microns, ofSheet);
    AddNumber("output paper height", std::to_string(sheet.height), microns, ofSheet);
}

void SettingsReport::AddScaling(const XpsFilterPrintTicket& ticket) {
    PageScaling::PageScalingData scaling;
    ticket.GetPageScalingSettings(scaling);
    const char* const origin = scaling.isFitToSize ? fromSettings : fromNobody;
    AddWord("scaling", Word(PageScaling::SCALE_OPTIONS, scaling.scalingType), origin);
    AddWord("fit to another size", YesOrNo(scaling.isFitToSize), origin);
    AddNumber("scale width", std::to_string(scaling.scaleWidth), "percent", fromNobody);
    AddNumber("scale height", std::to_string(scaling.scaleHeight), "percent", fromNobody);
}

void SettingsReport::AddPagesPerSheet(const XpsFilterPrintTicket& ticket) {
    NUp::NUpData nUp;
    const HRESULT hr = ticket.GetNUpSettings(nUp);
    const std::string feature = Utf8(NUp::NUP_FEATURES[nUp.featureFound]);
    AddNumber("pages per sheet", std::to_string(nUp.pagesPerSheet), "page",
              hr == S_OK ? std::string(fromTicket) + ", " + feature : Origin(hr, fromTicket));
    const bool hasOutlines = nUp.outlines == DataModelIds::VAL_OUTLINES_ON;
    AddWord("outlines", YesOrNo(hasOutlines), hasOutlines ? fromSettings : fromNobody);
}

void SettingsReport::AddBooklet(const XpsFilterPrintTicket& ticket) {
    Binding::BindingData binding;
    ticket.GetBookletSettings(binding);
    const bool isBooklet = binding.bookletType != 0;
    const char* const origin = isBooklet ? fromSettings : fromNobody;
    AddWord("booklet", YesOrNo(isBooklet), origin);
    AddNumber("booklet type", std::to_string(binding.bookletType), "", origin);
    AddNumber("gutter", std::to_string(binding.gutter), xpsUnits, origin);
    AddNumber("creep", Decimal(binding.creep.GetDoubleValue()), xpsUnits, origin);
}

std::string SettingsReport::AsTable(std::size_t width) const {
    std::vector<std::vector<std::string>> lines{{"setting", "value", "unit", "from"}};
    for (const Setting& setting : m_settings)
        lines.push_back({setting.name, setting.value, setting.unit, setting.origin});
    return AlignedTable(std::move(lines), width);
}

JsonText SettingsReport::AsJson() const {
    JsonText json;
    json.BeginObject().Key("settings").BeginArray();
    for (const Setting& setting : m_settings) {
        json.BeginObject().Key("name").Text(setting.name).Key("value");
        setting.isNumber ? json.Decimal(setting.value) : json.Text(setting.value);
        json.Key("unit");
        *setting.unit == '\0' ? json.Null() : json.Text(setting.unit);
        json.Key("from").Text(setting.origin).EndObject();
    }
    json.EndArray().EndObject();
    return json;
}

} // namespace OvPipeline
