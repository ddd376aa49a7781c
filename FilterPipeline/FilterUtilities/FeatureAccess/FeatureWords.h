#pragma once

#include "FeatureAccess/FeatureKeywordTables.h"

#include <LowLevelFacilities/WideStrings/CXString.h>

/// What the texts of a feature mean, where its options have no rows in the dictionaries: rows, and for one
/// that has more texts than rows a function that knows all.
class FeatureWords {
public:
    using tagValueEnum = DataModelIds::tagValueEnum;
    using Row = FeatureKeywordTables::Row;
    /// VAL_UNSPECIFIED for a text that says nothing.
    using FindText = tagValueEnum (*)(std::wstring_view text) noexcept;

    /// Those of the dictionaries.
    constexpr FeatureWords() = default;
    template <std::size_t count>
    constexpr FeatureWords(const Row (&rows)[count]) : m_rows(rows) {}
    template <std::size_t count>
    constexpr FeatureWords(const Row (&rows)[count], FindText findText)
        : m_rows(rows), m_findText(findText) {}

    [[nodiscard]] constexpr bool AreOfDictionary() const { return m_rows.empty(); }
    [[nodiscard]] tagValueEnum Find(std::wstring_view text) const noexcept {
        if (m_findText != nullptr) return m_findText(text);
        const Row* const row = FeatureKeywordTables::FindKeyword(m_rows, text);
        return row != nullptr ? row->value : DataModelIds::VAL_UNSPECIFIED;
    }
    /// Of a value that may be written; null if there is none.
    [[nodiscard]] const Row* FindWritten(tagValueEnum value) const noexcept {
        return FeatureKeywordTables::FindValue(m_rows, value);
    }
    [[nodiscard]] constexpr FeatureKeywordTables::Rows Rows() const { return m_rows; }

private:
    FeatureKeywordTables::Rows m_rows;
    FindText m_findText = nullptr;
};

[[nodiscard]] inline CXString TextOf(const FeatureKeywordTables::Row& row) {
    return CXString(row.keyword.data(), static_cast<int>(row.keyword.size()));
}
