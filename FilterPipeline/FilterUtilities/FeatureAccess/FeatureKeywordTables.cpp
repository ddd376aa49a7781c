#include "FeatureAccess/FeatureKeywordTables.h"

#include <algorithm>

namespace FeatureKeywordTables {

namespace {

template <typename Match>
const Row* Find(Rows rows, Match match) noexcept {
    const auto found = std::find_if(rows.begin(), rows.end(), match);
    return found == rows.end() ? nullptr : &*found;
}

} // namespace

const Row* FindKeyword(Rows rows, std::wstring_view keyword) noexcept {
    return Find(rows, [&](const Row& row) { return row.use != Use::WriteOnly && row.keyword == keyword; });
}

const Row* FindValue(Rows rows, DataModelIds::tagValueEnum value) noexcept {
    return Find(rows, [&](const Row& row) { return row.use != Use::ReadOnly && row.value == value; });
}

} // namespace FeatureKeywordTables
