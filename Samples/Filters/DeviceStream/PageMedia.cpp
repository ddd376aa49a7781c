#include "PageMedia.h"

#include <FeatureAccess/JobSettings.h>
#include <PrintSchema/PrintSchemaKeywords.h>

#include <cmath>
#include <string>
#include <utility>

using namespace DataModelIds;

namespace {

constexpr double micronsPerPoint = 25400.0 / 72.0;

struct SidesText {
    tagValueEnum value;
    const wchar_t* text;
};
constexpr SidesText sidesTexts[] = {
    {VAL_SIDES_ONE_SIDED, L"one-sided"},
    {VAL_SIDES_TWO_SIDED_FLIP_LONG_EDGE, L"two-sided-long-edge"},
    {VAL_SIDES_TWO_SIDED_FLIP_SHORT_EDGE, L"two-sided-short-edge"},
};

CXString SidesOf(const IFilterFeatureAccess& features) {
    const tagValueEnum sides = features.GetOptionValue(FEAT_SIDES_IMAGED).GetValuePlusSpecifiedState();
    for (const SidesText& row : sidesTexts)
        if (row.value == sides) return row.text;
    return {};
}

CXString OptionOf(const IPrintTicketAccess& ticket, const CXString& feature) {
    CXString option;
    ticket.GetCurrentValueOptionFeature(feature, option);
    return option;
}

// The narrowest level that names a tray decides; leaving it to the device is not to name one.
CXString TrayOf(const IPrintTicketAccess& ticket, const IPrintTicketAccess& job) {
    const CXString trays[] = {OptionOf(ticket, L"PageInputBin"), OptionOf(ticket, L"DocumentInputBin"),
                              OptionOf(job, L"JobInputBin")};
    CXString unnamed;
    for (const CXString& tray : trays) {
        if (!tray.IsEmpty() && tray != CXString(L"AutoSelect")) return tray;
        if (unnamed.IsEmpty()) unnamed = tray;
    }
    return unnamed;
}

int Microns(const Dimension& length) { return length.GetValue(Dimension::Micron).GetNearestIntValue(); }

CXString SizeText(const SheetSize& size) {
    return CXString((std::to_wstring(size.width) + L"," + std::to_wstring(size.height)).c_str());
}

bool IsNear(double points, int microns) { return std::abs(points - microns / micronsPerPoint) < 2; }

bool IsUpright(double width, double height) { return width <= height; }

} // namespace

PageMedia PageMedia::Of(JobSettings& settings, JobSettings& job) {
    const IPrintTicketAccess& ticket = settings.TicketAccess();
    PageMedia media;
    CXString sizeName;
    Dimension width;
    Dimension height;
    ticket.GetCurrentValueMediaSizeFeature(PrintSchema::PageMediaSize::FEATURE, sizeName, width, height);
    media.size = {Microns(width), Microns(height)};
    media.type = OptionOf(ticket, L"PageMediaType");
    media.color = OptionOf(ticket, L"PageMediaColor");
    media.sides = SidesOf(job.Features());
    media.tray = TrayOf(ticket, job.TicketAccess());
    return media;
}

std::vector<CXString> PageMedia::Changes(const PageMedia& from, const PageMedia& to) {
    std::vector<CXString> changes;
    const auto add = [&](const wchar_t* name, const CXString& before, const CXString& now,
                         const wchar_t* unsaid) {
        if (before == now) return;
        const CXString value = now.IsEmpty() ? CXString(unsaid) : now;
        if (!value.IsEmpty()) changes.push_back(CXString(name) + L"=" + value);
    };
    if (from.size != to.size) changes.push_back(L"media-size=" + SizeText(to.size));
    add(L"effective-media-type", from.type, to.type, L"media-type-api-unspecified");
    add(L"media-color", from.color, to.color, L"media-color-unspecified");
    add(L"sides-imaged", from.sides, to.sides, L"one-sided");
    add(L"input-tray", from.tray, to.tray, L"AutoSelect");
    return changes;
}

bool Fits(const SheetSize& sheet, const PageSize& page) {
    return (IsNear(page.width, sheet.width) && IsNear(page.height, sheet.height)) ||
           (IsNear(page.width, sheet.height) && IsNear(page.height, sheet.width));
}

SheetSize Turned(const SheetSize& sheet, const PageSize& page) {
    if (IsUpright(page.width, page.height) == IsUpright(sheet.width, sheet.height)) return sheet;
    return {sheet.height, sheet.width};
}

SheetSize SheetOf(const PageSize& page) {
    return {static_cast<int>(std::lround(page.width * micronsPerPoint)),
            static_cast<int>(std::lround(page.height * micronsPerPoint))};
}
