#pragma once

#include "DataModel/ValueIds.h"
#include "FeatureAccess/FeatureKeywordTables.h"

#include <LowLevelFacilities/WideStrings/CXString.h>

/// What the words of annotations mean in the public document settings.
namespace AnnotationWords {

using FeatureKeywordTables::Row;

/// The words of one choice, and what any other text stands for.
struct Choice {
    FeatureKeywordTables::Rows rows;
    DataModelIds::tagValueEnum other = DataModelIds::VAL_UNSPECIFIED;

    [[nodiscard]] DataModelIds::tagValueEnum FromText(const CXString& text) const noexcept {
        const Row* const row = FeatureKeywordTables::FindKeyword(rows, text.View());
        return row != nullptr ? row->value : other;
    }
    /// False, with the value as it was, for any other text.
    [[nodiscard]] bool TryFromText(const CXString& text, DataModelIds::tagValueEnum& value) const noexcept {
        const Row* const row = FeatureKeywordTables::FindKeyword(rows, text.View());
        if (row != nullptr) value = row->value;
        return row != nullptr;
    }
    /// A number that stands for none of the words is as good as another text.
    [[nodiscard]] DataModelIds::tagValueEnum FromNumber(LONG number) const noexcept {
        const auto value = static_cast<DataModelIds::tagValueEnum>(number);
        return FeatureKeywordTables::FindValue(rows, value) != nullptr ? value : other;
    }
};

inline constexpr Row types[] = {
    {L"type-text", DataModelIds::VAL_ANNOTATION_TYPE_TEXT},
    {L"type-timestamp", DataModelIds::VAL_ANNOTATION_TYPE_TIME_STAMP},
    {L"type-picture", DataModelIds::VAL_ANNOTATION_TYPE_PICTURE},
    {L"type-bates-stamp", DataModelIds::VAL_ANNOTATION_TYPE_BATES_STAMP},
    {L"type-page-numbers", DataModelIds::VAL_ANNOTATION_TYPE_PAGE_NUMBERS},
};
inline constexpr Row pages[] = {
    {L"pages-first-only", DataModelIds::VAL_ANNOTATION_PAGES_FIRST_ONLY},
    {L"pages-all", DataModelIds::VAL_ANNOTATION_PAGES_ALL},
};
inline constexpr Row drawModes[] = {
    {L"print-in-background", DataModelIds::VAL_ANNOTATION_IN_BACKGROUND},
    {L"print-in-foreground", DataModelIds::VAL_ANNOTATION_IN_FOREGROUND},
};
inline constexpr Row renderOrders[] = {
    {L"pre-imposition", DataModelIds::VAL_ANNOTATION_PRE_IMPOSITION},
    {L"post-imposition", DataModelIds::VAL_ANNOTATION_POST_IMPOSITION},
};
inline constexpr Row formats[] = {
    {L"date-time", DataModelIds::VAL_TIME_STAMP_DATE_TIME},
    {L"date", DataModelIds::VAL_TIME_STAMP_DATE},
    {L"time", DataModelIds::VAL_TIME_STAMP_TIME},
    {L"day-date-time", DataModelIds::VAL_TIME_STAMP_DAY_DATE_TIME},
    {L"day-date", DataModelIds::VAL_TIME_STAMP_DAY_DATE},
    {L"day-date-time-zone", DataModelIds::VAL_TIME_STAMP_DAY_DATE_TIME_ZONE},
    {L"date-time-zone", DataModelIds::VAL_TIME_STAMP_DATE_TIME_ZONE},
    {L"time-zone", DataModelIds::VAL_TIME_STAMP_TIME_ZONE},
};
inline constexpr Row dateOrders[] = {
    {L"mdy", DataModelIds::VAL_TIME_STAMP_MONTH_DAY_YEAR},
    {L"dmy", DataModelIds::VAL_TIME_STAMP_DAY_MONTH_YEAR},
    {L"ymd", DataModelIds::VAL_TIME_STAMP_YEAR_MONTH_DAY},
};
inline constexpr Row timeParts[] = {
    {L"hm", DataModelIds::VAL_TIME_STAMP_HOUR_MINUTE},
    {L"hm-zone", DataModelIds::VAL_TIME_STAMP_HOUR_MINUTE_ZONE},
};
inline constexpr Row hourForms[] = {
    {L"hour-12", DataModelIds::VAL_TIME_STAMP_HOUR_12},
    {L"hour-24", DataModelIds::VAL_TIME_STAMP_HOUR_24},
};

inline constexpr Choice type{types};
inline constexpr Choice firstPage{pages};
inline constexpr Choice drawMode{drawModes};
inline constexpr Choice renderOrder{renderOrders, DataModelIds::VAL_ANNOTATION_PRE_IMPOSITION};
// Of a time stamp, nothing chosen is no number at all.
inline constexpr Choice format{formats, {}};
inline constexpr Choice dateOrder{dateOrders, {}};
inline constexpr Choice timePart{timeParts, {}};
inline constexpr Choice hourForm{hourForms, {}};

/// Whether elements of the type print a text. A filter makes that of Bates and page numbers.
[[nodiscard]] constexpr bool IsTextBased(DataModelIds::tagValueEnum type) noexcept {
    return type == DataModelIds::VAL_ANNOTATION_TYPE_TEXT ||
           type == DataModelIds::VAL_ANNOTATION_TYPE_TIME_STAMP ||
           type == DataModelIds::VAL_ANNOTATION_TYPE_BATES_STAMP ||
           type == DataModelIds::VAL_ANNOTATION_TYPE_PAGE_NUMBERS;
}

} // namespace AnnotationWords
