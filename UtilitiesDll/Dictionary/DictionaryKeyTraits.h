#pragma once

#include "LowLevelFacilities/CPFormat.h"
#include "LowLevelFacilities/CPString.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <type_traits>

/// The name of an entry or of a key, as it stands in the place of a failure. Each type that a dictionary uses
/// has its specialisation, with a C string `value`.
template <typename Type>
struct DictionaryTypeName;

template <>
struct DictionaryTypeName<CPString> {
    static constexpr const char* value = "class CPString";
};

/// How an index holds and finds keys of one type; View is what a caller asks with. This is an enumeration,
/// whose number is its own hash: the room in the table, eight slots for a key, keeps neighbours apart.
template <typename Key>
struct DictionaryKeyTraits {
    static_assert(std::is_enum_v<Key> && sizeof(Key) == sizeof(std::int32_t));
    using View = Key;
    static constexpr std::size_t slotsPerKey = 8;

    static std::uint32_t Hash(Key key) noexcept { return static_cast<std::uint32_t>(key); }
    /// Asked of keys with the same hash only.
    static bool AreEqual(Key, Key) noexcept { return true; }
    static Key MakeKey(Key asked) noexcept { return asked; }
    static CPString GetText(Key key) { return FormatCPString("%ld", static_cast<std::int32_t>(key)); }
};

/// Text is compared byte for byte, and asked for without a string of its own.
template <>
struct DictionaryKeyTraits<CPString> {
    using View = std::string_view;
    static constexpr std::size_t slotsPerKey = 2;

    static std::uint32_t Hash(std::string_view text) noexcept {
        return static_cast<std::uint32_t>(std::hash<std::string_view>{}(text));
    }
    static std::uint32_t Hash(const CPString& key) noexcept { return Hash(key.view()); }
    static bool AreEqual(const CPString& stored, std::string_view asked) noexcept {
        return stored.view() == asked;
    }
    static bool AreEqual(const CPString& stored, const CPString& asked) noexcept { return stored == asked; }
    static CPString MakeKey(std::string_view asked) { return CPString(std::string(asked)); }
    static CPString GetText(const CPString& key) { return key; }
};
