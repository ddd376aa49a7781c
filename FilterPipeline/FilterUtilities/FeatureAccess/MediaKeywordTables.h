#pragma once

#include "FeatureKeywordTables.h"

#include <ComSupport/FilterUtilitiesExport.h>
#include <DataModel/FeatureIds.h>
#include <DataModel/ValueIds.h>

#include <string_view>

/// What the ticket's words for the media of a job mean: published words, and the driver's own. Their options
/// have no rows in the dictionaries, and words of one meaning differ there and here on purpose. Compared unit
/// by unit, without a prefix; VAL_UNSPECIFIED for a word that says nothing.
namespace MediaKeywordTables {

[[nodiscard]] DataModelIds::tagValueEnum FindColor(std::wstring_view keyword) noexcept;
[[nodiscard]] DataModelIds::tagValueEnum FindType(std::wstring_view keyword) noexcept;
[[nodiscard]] DataModelIds::tagValueEnum FindInputTray(std::wstring_view keyword) noexcept;
[[nodiscard]] DataModelIds::tagValueEnum FindSize(std::wstring_view keyword) noexcept;

/// The words of the feature that the ticket is asked for; a size of media may have its words in the table of
/// media sizes instead. Empty for a feature that is not of the media.
[[nodiscard]] OV_FILTER_UTILITIES_API FeatureKeywordTables::Rows
GetRows(DataModelIds::tagFeatureEnum feature) noexcept;

} // namespace MediaKeywordTables
