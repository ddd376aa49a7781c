#include "FeatureAccess/MediaKeywordTables.h"

#include "Media/MediaSizeTable.h"

namespace {

std::wstring_view WithoutPrefix(std::wstring_view keyword) noexcept {
    return keyword.substr(keyword.find(L':') + 1);
}

} // namespace

DataModelIds::tagValueEnum MediaKeywordTables::FindSize(std::wstring_view keyword) noexcept {
    for (const MediaSizeRecord& record : MediaSizeTable::GetRecords())
        if (WithoutPrefix(record.keyword) == keyword) return record.value;
    const Row* const row = FeatureKeywordTables::FindKeyword(otherSizes, keyword);
    return row != nullptr ? row->value : VAL_UNSPECIFIED;
}
