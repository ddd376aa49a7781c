#pragma once

#include <algorithm>
#include <array>

/// An enumerator and its name.
template <typename Id>
struct EnumeratorName {
    Id id;
    const char* name;
};

/// The enumerators by ascending number. Whoever makes a table of them checks that no two have one number.
template <typename Id, std::size_t count>
constexpr std::array<EnumeratorName<Id>, count> SortedByNumber(std::array<EnumeratorName<Id>, count> names) {
    std::ranges::sort(names, {}, &EnumeratorName<Id>::id);
    return names;
}

/// Null for a number that has no name.
template <typename Id, std::size_t count>
constexpr const char* FindName(const std::array<EnumeratorName<Id>, count>& sorted, Id id) noexcept {
    const auto place = std::ranges::lower_bound(sorted, id, {}, &EnumeratorName<Id>::id);
    return place == sorted.end() || place->id != id ? nullptr : place->name;
}
