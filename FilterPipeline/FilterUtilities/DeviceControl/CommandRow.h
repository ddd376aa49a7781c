#pragma once

#include "DataModel/ValueIds.h"

#include <algorithm>
#include <span>
#include <string_view>

/// A value of a feature, with the snippet that asks the device for it.
struct CommandRow {
    DataModelIds::tagValueEnum value;
    std::wstring_view option;
    std::wstring_view command;
};

/// A value of a feature, with what it is called in an instruction.
struct ValueText {
    DataModelIds::tagValueEnum value;
    std::wstring_view text;
};

/// The row of a value; null where the table has none.
template <typename Row>
[[nodiscard]] constexpr const Row* FindRow(std::span<const Row> rows, DataModelIds::tagValueEnum value) {
    const auto found = std::ranges::find(rows, value, &Row::value);
    return found == rows.end() ? nullptr : &*found;
}

template <typename Row, std::size_t count>
[[nodiscard]] constexpr const Row* FindRow(const Row (&rows)[count], DataModelIds::tagValueEnum value) {
    return FindRow(std::span<const Row>(rows), value);
}

/// The text of a value; `otherwise` where the table has none.
template <std::size_t count>
[[nodiscard]] constexpr std::wstring_view
TextOf(const ValueText (&rows)[count], DataModelIds::tagValueEnum value, std::wstring_view otherwise = L"") {
    const ValueText* const row = FindRow(rows, value);
    return row == nullptr ? otherwise : row->text;
}
