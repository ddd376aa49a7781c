#pragma once

#include "Spooler/QueueDescription.h"
#include "Spooler/QueueFolderError.h"
#include "Xml/StrictXml.h"

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>

namespace OvPlatform {

/// A name or word of a document as messages show it.
std::string QuotedWord(std::string_view text);

/// The bytes of a file that a description consists of or names. Throws QueueFolderError.
std::string ReadDescriptionFile(const std::filesystem::path& file, std::uintmax_t largest);

/// What the readers of documents that describe a queue or a user's settings have in common: they refuse
/// whatever they do not know, by file and line, and read bags. Everything throws QueueFolderError.
class DescriptionReader {
protected:
    /// folder: below which the files lie that bags may name; empty where they may name none.
    DescriptionReader(std::filesystem::path file, std::filesystem::path folder)
        : m_file(std::move(file)), m_folder(std::move(folder)) {}
    ~DescriptionReader() = default;

    XmlDocument Parse(std::string_view text) const;
    /// Of that name, without a namespace, and of the one version that is known.
    void CheckRoot(const xmlNode* root, std::string_view name) const;

    [[noreturn]] void Refuse(const xmlNode* node, const std::string& problem) const;
    /// As messages show it.
    static std::string Name(const xmlNode* element);

    /// Calls handle for each child element; anything else but white space and comments is refused.
    template <class Handler>
    void ForChildren(const xmlNode* element, Handler handle) const {
        for (const xmlNode* child = element->children; child; child = child->next)
            if (IsElementToRead(element, child)) handle(child);
    }

    /// An attribute is known if one of the tables or the further names holds it.
    template <class... Known>
    void RefuseOtherAttributes(const xmlNode* element, const Known&... known) const {
        for (const xmlAttr* attribute = element->properties; attribute; attribute = attribute->next) {
            const std::string_view name(reinterpret_cast<const char*>(attribute->name));
            const bool found = NamespaceOf(attribute).empty() && (... || HasName(known, name));
            if (!found) Refuse(element, "unknown attribute " + QuotedWord(name) + " of " + Name(element));
        }
    }

    /// Decimal, or hexadecimal behind "0x".
    template <class Number>
    static std::optional<Number> ParseNumber(std::string_view text) {
        Number number{};
        const bool hexadecimal = text.starts_with("0x");
        if (hexadecimal) text.remove_prefix(2);
        const auto [end, error] =
            std::from_chars(text.data(), text.data() + text.size(), number, hexadecimal ? 16 : 10);
        if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
        return number;
    }

    std::string RequiredAttribute(const xmlNode* element, const char* name) const;
    std::wstring Widen(const xmlNode* element, std::string_view text) const;
    /// A file that the description names: below the folder, and nowhere else.
    std::string ReadNamedFile(const xmlNode* element, const std::string& name) const;
    /// The children of the element; its attributes are the caller's affair.
    void ReadProperties(const xmlNode* element, QueueValues& values) const;

    const std::filesystem::path& File() const { return m_file; }
    const std::filesystem::path& Folder() const { return m_folder; }

private:
    template <class Table>
    static bool HasName(const Table& table, std::string_view name) {
        return std::any_of(std::begin(table), std::end(table),
                           [&](const auto& row) { return name == row.name; });
    }
    static bool HasName(const char* known, std::string_view name) { return name == known; }
    template <std::size_t N>
    static bool HasName(const char (&known)[N], std::string_view name) {
        return name == known;
    }

    bool IsElementToRead(const xmlNode* element, const xmlNode* child) const;
    QueueValue ReadValue(const xmlNode* element) const;
    std::wstring ReadString(const xmlNode* element, std::string_view text) const;
    std::vector<std::uint8_t> ReadBlock(const xmlNode* element, std::string_view text) const;

    std::filesystem::path m_file;
    std::filesystem::path m_folder;
};

} // namespace OvPlatform
