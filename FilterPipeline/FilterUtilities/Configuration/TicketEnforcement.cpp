#include "Configuration/TicketEnforcement.h"

#include "DataModel/PrintSchemaKeywordLiterals.h"

#include <algorithm>
#include <iterator>

namespace TicketEnforcement {

namespace {

using namespace DataModelIds;
using namespace PrintSchema::Keywords;

constexpr auto optionName = L"name";

constexpr Value pagesPerSheet[] = {
    {VAL_PAGE_LAYOUT_NUP_1, L"1", 1}, {VAL_PAGE_LAYOUT_NUP_2, L"2", 2}, {VAL_PAGE_LAYOUT_NUP_4, L"4", 4},
    {VAL_PAGE_LAYOUT_NUP_6, L"6", 6}, {VAL_PAGE_LAYOUT_NUP_9, L"9", 9}, {VAL_PAGE_LAYOUT_NUP_16, L"16", 16},
};

// A private keyword always stands under this prefix.
constexpr Value identification[] = {
    {VAL_PRINT_ID_ON_BANNER_SHEET, L"ok:JobIdBannerOn"},
    {VAL_PRINT_ID_ON_FIRST_PAGE, L"ok:JobIdPrintFirstPage"},
    {VAL_PRINT_ID_ON_ALL_PAGES, L"ok:JobIdPrintAllPages"},
    {VAL_PRINT_ID_CUSTOM_BANNER_SHEET, L"ok:JobIdCustomBanner"},
    {VAL_PRINT_ID_OFF, L"ok:JobIdOff"},
};

constexpr Value sides[] = {
    {VAL_SIDES_ONE_SIDED, JobDuplexAllDocumentsContiguously::OneSided},
    {VAL_SIDES_TWO_SIDED_FLIP_LONG_EDGE, JobDuplexAllDocumentsContiguously::TwoSidedLongEdge},
    {VAL_SIDES_TWO_SIDED_FLIP_SHORT_EDGE, JobDuplexAllDocumentsContiguously::TwoSidedShortEdge},
    // Either kind of two-sided printing will do.
    {VAL_SIDES_TWO_SIDED_ANY, JobDuplexAllDocumentsContiguously::TwoSidedLongEdge, 0,
     NativeXmlConfigurationFeature::EnforcedDefault, JobDuplexAllDocumentsContiguously::OneSided},
};

constexpr Feature features[] = {
    {"ImagesPerPage", NUp::JobNUpAllDocumentsContiguously, true, Setter::ScoredProperty, NUp::NUP_PROP,
     pagesPerSheet},
    {"JobIdentification", JobIdentification::FEATURE, false, Setter::Option, optionName, identification},
    {"2-SidedPrinting", JobDuplexAllDocumentsContiguously::FEATURE, true, Setter::PublicOption, optionName,
     sides},
};

} // namespace

std::span<const Feature> GetFeatures() noexcept { return features; }

const Feature* Find(std::string_view configurationName) noexcept {
    const auto* const found = std::ranges::find(features, configurationName, &Feature::configurationName);
    return found == std::end(features) ? nullptr : found;
}

const Value* FindValue(const Feature& feature, const NativeXmlConfigurationFeature& configured) {
    const auto value = configured.TryGetValueEnum();
    if (!value) return nullptr;
    const auto found = std::ranges::find(feature.values, *value, &Value::value);
    const bool writes = found != feature.values.end() && configured.GetBehaviorEnum() >= found->leastBehavior;
    return writes ? &*found : nullptr;
}

bool Replaces(const Value& value, std::wstring_view current) noexcept {
    return value.onlyOver != nullptr ? current == value.onlyOver : current != value.text;
}

} // namespace TicketEnforcement
