#pragma once

#include "Xml/XmlPointer.h"

#include <libxml/encoding.h>

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

namespace OvPlatform {

/// An encoding other than UTF-8 and UTF-16 that a document is written in. Belongs to one thread.
class TargetEncoding {
public:
    /// None of that name that the system can write and read: null.
    static std::unique_ptr<TargetEncoding> Find(const std::string& name);

    /// Writes the characters that it lacks, from `begin` on, as references, each between the two texts.
    void Refer(std::string& utf8, std::size_t begin, std::string_view before, std::string_view after);

    /// Whether it lacks none of the characters.
    bool HasAll(std::string_view utf8);

    /// The bytes of a text. None where that fails.
    std::optional<std::string> Encode(std::string_view utf8) const;

private:
    explicit TargetEncoding(xmlCharEncodingHandler* handler) noexcept : m_handler(handler) {}

    bool Has(char32_t character);

    XmlPointer<xmlCharEncodingHandler> m_handler;
    std::unordered_map<char32_t, bool> m_known;
};

} // namespace OvPlatform
