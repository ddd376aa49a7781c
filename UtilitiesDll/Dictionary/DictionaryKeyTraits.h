#pragma once

#include "Dictionary/DictionaryNumberTable.h"
#include "Dictionary/DictionaryNumberedText.h"
#include "Dictionary/DictionaryTextTable.h"
#include "Dictionary/DictionaryTypeName.h"
#include "LowLevelFacilities/Formatter/CPFormat.h"
#include "LowLevelFacilities/Strings/CPString.h"

#include <cstdint>
#include <string>
#include <string_view>

/// How an index holds and shows a key of one type, and what a caller asks with. This is an enumeration.
template <typename Key>
struct DictionaryKeyTraits {
    using View = Key;
    template <typename Entry>
    using Table = DictionaryNumberTable<Key, Entry>;

    static Key MakeKey(Key asked) noexcept { return asked; }
    static CPString GetText(Key key) { return FormatCPString("%ld", static_cast<std::int32_t>(key)); }
};

template <>
struct DictionaryKeyTraits<CPString> {
    using View = std::string_view;
    template <typename Entry>
    using Table = DictionaryTextTable<Entry>;

    static CPString MakeKey(std::string_view asked) { return CPString(std::string(asked)); }
    static CPString MakeKey(const DictionaryNumberedText& asked) { return CPString(asked.MakeString()); }
    static CPString GetText(const CPString& key) { return key; }
};

template <>
struct DictionaryTypeName<CPString> {
    static constexpr const char* value = "class CPString";
};
