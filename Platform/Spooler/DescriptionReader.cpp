#include "Spooler/DescriptionReader.h"

#include "Locale/Utf16.h"
#include "Spooler/QueueSchema.h"
#include "Xml/XmlString.h"

#include <cerrno>
#include <cstring>
#include <fstream>

namespace OvPlatform {

namespace {

using namespace QueueSchema;

std::vector<std::uint8_t> ToBytes(const std::string& text) { return {text.begin(), text.end()}; }

// -1 for a character that is not of the alphabet.
int Base64Digit(char c) {
    if (c >= 'A' && c <= 'Z') return c - 'A';
    if (c >= 'a' && c <= 'z') return c - 'a' + 26;
    if (c >= '0' && c <= '9') return c - '0' + 52;
    if (c == '+') return 62;
    if (c == '/') return 63;
    return -1;
}

bool IsSpace(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }

std::optional<std::vector<std::uint8_t>> DecodeBase64(std::string_view text) {
    std::vector<std::uint8_t> bytes;
    std::uint32_t group = 0;
    int digits = 0, padding = 0;
    for (const char c : text) {
        if (IsSpace(c)) continue;
        const int digit = c == '=' ? 0 : Base64Digit(c);
        if (digit < 0 || (padding != 0 && c != '=')) return std::nullopt;
        padding += c == '=';
        group = group << 6 | static_cast<std::uint32_t>(digit);
        if (++digits < 4) continue;
        if (padding > 2) return std::nullopt;
        for (int i = 0; i < 3 - padding; ++i)
            bytes.push_back(static_cast<std::uint8_t>(group >> (16 - 8 * i)));
        if (padding != 0) padding = 3; // nothing may follow
        digits = 0;
    }
    if (digits != 0) return std::nullopt;
    return bytes;
}

std::string Content(const xmlNode* element) {
    const XmlPointer<xmlChar> text(xmlNodeGetContent(element));
    return std::string(View(text.get()));
}

} // namespace

std::string QuotedWord(std::string_view text) { return "'" + std::string(text) + "'"; }

std::string ReadDescriptionFile(const std::filesystem::path& file, std::uintmax_t largest) {
    std::error_code failure;
    const auto status = std::filesystem::status(file, failure);
    if (status.type() == std::filesystem::file_type::not_found)
        throw QueueFolderError(file, "the file is missing");
    if (failure) throw QueueFolderError(file, "the file cannot be read: " + failure.message());
    if (!std::filesystem::is_regular_file(status)) throw QueueFolderError(file, "this is not a file");
    const auto size = std::filesystem::file_size(file, failure);
    if (failure) throw QueueFolderError(file, "the file cannot be read: " + failure.message());
    if (size > largest)
        throw QueueFolderError(file, "the file has more than " + std::to_string(largest) + " bytes");
    errno = 0;
    std::ifstream stream(file, std::ios::binary);
    std::string bytes(static_cast<std::size_t>(size), '\0');
    if (!stream.read(bytes.data(), static_cast<std::streamsize>(size)) && size != 0)
        throw QueueFolderError(file, "the file cannot be read" +
                                         (errno == 0 ? "" : std::string(": ") + std::strerror(errno)));
    return bytes;
}

XmlDocument DescriptionReader::Parse(std::string_view text) const {
    try {
        return ParseStrictXml(text);
    } catch (const StrictXmlError& error) {
        throw QueueFolderError(m_file, error.Line(), error.what());
    }
}

void DescriptionReader::CheckRoot(const xmlNode* root, std::string_view name) const {
    if (LocalName(root) != name || !NamespaceOf(root).empty())
        Refuse(root, "the root element is " + Name(root) + ", not <" + std::string(name) + ">");
    RefuseOtherAttributes(root, "version");
    const std::string version = RequiredAttribute(root, "version");
    if (version != schemaVersion)
        Refuse(root, "version " + QuotedWord(version) + " is not known, only " + QuotedWord(schemaVersion));
}

void DescriptionReader::Refuse(const xmlNode* node, const std::string& problem) const {
    throw QueueFolderError(m_file, xmlGetLineNo(node), problem);
}

std::string DescriptionReader::Name(const xmlNode* element) {
    return "<" + std::string(LocalName(element)) + ">";
}

bool DescriptionReader::IsElementToRead(const xmlNode* element, const xmlNode* child) const {
    if (child->type == XML_COMMENT_NODE || child->type == XML_PI_NODE) return false;
    if (child->type == XML_TEXT_NODE && xmlIsBlankNode(child)) return false;
    if (child->type != XML_ELEMENT_NODE) Refuse(child, "unexpected text in " + Name(element));
    if (!NamespaceOf(child).empty())
        Refuse(child, "unknown element " + Name(child) + " of another namespace");
    return true;
}

std::string DescriptionReader::RequiredAttribute(const xmlNode* element, const char* name) const {
    std::string value;
    if (!GetAttribute(element, name, value) || value.empty())
        Refuse(element, Name(element) + " needs the attribute " + QuotedWord(name));
    return value;
}

std::wstring DescriptionReader::Widen(const xmlNode* element, std::string_view text) const {
    std::wstring wide = FromUtf8(text);
    if (wide.size() > maxTextLength) Refuse(element, "a text in " + Name(element) + " is too long");
    return wide;
}

std::string DescriptionReader::ReadNamedFile(const xmlNode* element, const std::string& name) const {
    const std::filesystem::path path(name);
    const bool leaves = path.is_absolute() || std::find(path.begin(), path.end(), "..") != path.end();
    if (leaves)
        Refuse(element, "the file " + QuotedWord(name) + " of " + Name(element) + " is not in the folder");
    return ReadDescriptionFile(m_folder / path, maxDocumentSize);
}

void DescriptionReader::ReadProperties(const xmlNode* element, QueueValues& values) const {
    ForChildren(element, [&](const xmlNode* child) {
        const std::wstring name = Widen(child, RequiredAttribute(child, "name"));
        if (values.size() == maxProperties) Refuse(child, Name(element) + " holds too many properties");
        if (!values.emplace(name, ReadValue(child)).second)
            Refuse(child, "the property " + QuotedWord(ToUtf8(name)) + " stands twice");
    });
}

QueueValue DescriptionReader::ReadValue(const xmlNode* element) const {
    const std::string_view type = LocalName(element);
    for (const xmlNode* child = element->children; child != nullptr; child = child->next)
        if (child->type == XML_ELEMENT_NODE) Refuse(child, "unknown element " + Name(child));

    const bool block = type == "Bytes" || type == "Stream";
    if (!m_folder.empty() && (block || type == "String"))
        RefuseOtherAttributes(element, "name", "file");
    else
        RefuseOtherAttributes(element, "name");

    const std::string text = Content(element);
    const std::string_view trimmed = Trimmed(text);
    if (type == "String") return ReadString(element, text);
    if (type == "Bool") {
        if (trimmed == "true" || trimmed == "1") return true;
        if (trimmed == "false" || trimmed == "0") return false;
        Refuse(element, QuotedWord(trimmed) + " is neither true nor false");
    }
    if (type == "Int32") {
        const auto number = ParseNumber<std::int32_t>(trimmed);
        if (!number) Refuse(element, QuotedWord(trimmed) + " is no 32-bit integer");
        return *number;
    }
    if (!block) Refuse(element, "unknown element " + Name(element));
    std::vector<std::uint8_t> bytes = ReadBlock(element, trimmed);
    if (type == "Bytes") return QueueBytes{std::move(bytes)};
    std::string file;
    return QueueStream{std::move(bytes), GetAttribute(element, "file", file) ? m_folder / file : m_file};
}

std::wstring DescriptionReader::ReadString(const xmlNode* element, std::string_view text) const {
    std::string file;
    if (!GetAttribute(element, "file", file)) return FromUtf8(text);
    if (!text.empty()) Refuse(element, Name(element) + " names a file and has content too");
    const std::string content = ReadNamedFile(element, file);
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    const bool marked = content.starts_with(byteOrderMark);
    return FromUtf8(std::string_view(content).substr(marked ? byteOrderMark.size() : 0));
}

std::vector<std::uint8_t> DescriptionReader::ReadBlock(const xmlNode* element, std::string_view text) const {
    std::string file;
    if (GetAttribute(element, "file", file)) {
        if (!text.empty()) Refuse(element, Name(element) + " names a file and has content too");
        return ToBytes(ReadNamedFile(element, file));
    }
    auto bytes = DecodeBase64(text);
    if (!bytes) Refuse(element, "the content of " + Name(element) + " is not base64");
    return std::move(*bytes);
}

} // namespace OvPlatform
