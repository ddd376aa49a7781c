#pragma once

#include <libxml/tree.h>

#include <optional>
#include <string>
#include <string_view>

namespace OvPlatform {

/// What an XML declaration says. Empty where it says nothing.
struct XmlDeclaration {
    std::string version;
    std::string encoding;
    std::string standalone;

    /// As the data of the declaration's node, `version="1.0" encoding="UTF-8"`.
    std::string Data() const;

    /// Reads such data, with either quote. Nothing if it is not well formed.
    static std::optional<XmlDeclaration> FromData(std::string_view data);

    /// Reads the declaration that `text` begins with. Nothing if there is none.
    static std::optional<XmlDeclaration> FromDocument(std::string_view text);

    /// Whether an instruction's target is reserved: "xml" in any case but its own, in which it is a
    /// declaration.
    static bool IsReserved(std::string_view target) noexcept;

    /// Whether a node stands for one.
    static bool Is(const xmlNode* node) noexcept;
};

/// How a document's text becomes bytes.
enum class TextEncoding { Utf8, Utf16, Other };

/// Of an encoding's name; an empty name is UTF-8.
TextEncoding ClassifyEncoding(std::string_view name) noexcept;

} // namespace OvPlatform
