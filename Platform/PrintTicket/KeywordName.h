#pragma once

#include "PrintTicket/NamespaceUri.h"

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>

namespace OvPlatform {

/// A Print Schema name: what counts is the namespace, never the prefix that stands for it in a document.
struct KeywordName {
    NamespaceUri space;
    std::string local; // empty: no name

    bool Empty() const { return local.empty(); }
    bool operator==(const KeywordName&) const = default;
    bool Is(std::string_view otherSpace, std::string_view otherLocal) const {
        return local == otherLocal && space.Text() == otherSpace;
    }
};

struct KeywordNameHash {
    std::size_t operator()(const KeywordName& name) const {
        return std::hash<std::string_view>()(name.local) * 31 + name.space.Hash();
    }
};

template <typename T>
using KeywordMap = std::unordered_map<KeywordName, T, KeywordNameHash>;

// The namespaces of the published schema.
namespace SchemaSpace {
inline constexpr const char* Framework =
    "http://schemas.microsoft.com/windows/2003/08/printing/printschemaframework";
inline constexpr const char* Keywords =
    "http://schemas.microsoft.com/windows/2003/08/printing/printschemakeywords";
inline constexpr const char* KeywordsV11 =
    "http://schemas.microsoft.com/windows/2013/05/printing/printschemakeywordsv11";
inline constexpr const char* Instance = "http://www.w3.org/2001/XMLSchema-instance";
inline constexpr const char* Types = "http://www.w3.org/2001/XMLSchema";

/// The usual prefix of the keywords.
inline constexpr const char* KeywordsPrefix = "psk";
} // namespace SchemaSpace

} // namespace OvPlatform
