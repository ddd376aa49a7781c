#include "Spooler/QueueFolderReader.h"

#include "Locale/Utf16.h"
#include "Spooler/QueueFolder.h"
#include "Spooler/QueueSchema.h"
#include "Xml/StrictXml.h"
#include "Xml/XmlString.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <fstream>
#include <optional>
#include <set>

namespace OvPlatform {

namespace {

using namespace QueueSchema;

std::string Quoted(std::string_view text) { return "'" + std::string(text) + "'"; }

std::string ReadFile(const std::filesystem::path& file, std::uintmax_t largest) {
    std::error_code failure;
    const auto status = std::filesystem::status(file, failure);
    if (!std::filesystem::exists(status)) throw QueueFolderError(file, "the file is missing");
    if (!std::filesystem::is_regular_file(status)) throw QueueFolderError(file, "this is not a file");
    const auto size = std::filesystem::file_size(file, failure);
    if (failure) throw QueueFolderError(file, "the file cannot be read: " + failure.message());
    if (size > largest)
        throw QueueFolderError(file, "the file has more than " + std::to_string(largest) + " bytes");
    std::ifstream stream(file, std::ios::binary);
    std::string bytes(static_cast<std::size_t>(size), '\0');
    if (!stream.read(bytes.data(), static_cast<std::streamsize>(size)) && size != 0)
        throw QueueFolderError(file, "the file cannot be read");
    return bytes;
}

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

template <class Number>
std::optional<Number> ParseNumber(std::string_view text) {
    Number number{};
    const bool hexadecimal = text.starts_with("0x");
    if (hexadecimal) text.remove_prefix(2);
    const auto [end, error] =
        std::from_chars(text.data(), text.data() + text.size(), number, hexadecimal ? 16 : 10);
    if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    return number;
}

// "2026-01-31T09:30:00Z", with or without milliseconds.
std::optional<std::chrono::sys_time<std::chrono::milliseconds>> ParseTime(const std::string& text) {
    int year = 0, hour = 0, minute = 0, second = 0, millisecond = 0, length = 0;
    unsigned month = 0, day = 0;
    const int fields = std::sscanf(text.c_str(), "%4d-%2u-%2uT%2d:%2d:%2d%n.%3d%n", &year, &month, &day,
                                   &hour, &minute, &second, &length, &millisecond, &length);
    if (fields < 6 || text.substr(static_cast<std::size_t>(length)) != "Z") return std::nullopt;
    const std::chrono::year_month_day date{std::chrono::year(year), std::chrono::month(month),
                                           std::chrono::day(day)};
    if (!date.ok() || year < 1601 || hour > 23 || minute > 59 || second > 59) return std::nullopt;
    if (hour < 0 || minute < 0 || second < 0 || millisecond < 0) return std::nullopt;
    return std::chrono::sys_days(date) + std::chrono::hours(hour) + std::chrono::minutes(minute) +
           std::chrono::seconds(second) + std::chrono::milliseconds(millisecond);
}

class Reader {
public:
    explicit Reader(const std::filesystem::path& folder)
        : m_folder(folder), m_file(folder / QueueFolder::descriptionFile) {}

    QueueDescription Read() {
        const std::string text = ReadFile(m_file, maxDescriptionSize);
        XmlDocument document;
        try {
            document = ParseStrictXml(text);
        } catch (const StrictXmlError& error) {
            throw QueueFolderError(m_file, error.Line(), error.what());
        }
        ReadQueue(xmlDocGetRootElement(document.get()));
        return std::move(m_queue);
    }

private:
    [[noreturn]] void Refuse(const xmlNode* node, const std::string& problem) const {
        throw QueueFolderError(m_file, xmlGetLineNo(node), problem);
    }

    static std::string Name(const xmlNode* element) { return "<" + std::string(LocalName(element)) + ">"; }

    // Calls handle for each child element; anything else but white space and comments is refused.
    template <class Handler>
    void ForChildren(const xmlNode* element, Handler handle) const {
        for (const xmlNode* child = element->children; child; child = child->next) {
            if (child->type == XML_COMMENT_NODE || child->type == XML_PI_NODE) continue;
            if (child->type == XML_TEXT_NODE && xmlIsBlankNode(child)) continue;
            if (child->type != XML_ELEMENT_NODE) Refuse(child, "unexpected text in " + Name(element));
            if (!NamespaceOf(child).empty())
                Refuse(child, "unknown element " + Name(child) + " of another namespace");
            handle(child);
        }
    }

    // An attribute is known if one of the tables or the further names holds it.
    template <class... Known>
    void RefuseOtherAttributes(const xmlNode* element, const Known&... known) const {
        for (const xmlAttr* attribute = element->properties; attribute; attribute = attribute->next) {
            const std::string_view name(reinterpret_cast<const char*>(attribute->name));
            const bool found = NamespaceOf(attribute).empty() && (... || HasName(known, name));
            if (!found) Refuse(element, "unknown attribute " + Quoted(name) + " of " + Name(element));
        }
    }
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

    std::string RequiredAttribute(const xmlNode* element, const char* name) const {
        std::string value;
        if (!GetAttribute(element, name, value) || value.empty())
            Refuse(element, Name(element) + " needs the attribute " + Quoted(name));
        return value;
    }

    std::wstring Widen(const xmlNode* element, std::string_view text) const {
        std::wstring wide = FromUtf8(text);
        if (wide.size() > maxTextLength) Refuse(element, "a text in " + Name(element) + " is too long");
        return wide;
    }

    template <class Record, std::size_t Texts, std::size_t Numbers>
    void ReadFields(const xmlNode* element, Record& record, const TextAttribute<Record> (&texts)[Texts],
                    const NumberAttribute<Record> (&numbers)[Numbers]) const {
        for (const auto& row : texts) {
            std::string value;
            if (row.required) value = RequiredAttribute(element, row.name);
            if (row.required || GetAttribute(element, row.name, value))
                record.*row.field = Widen(element, value);
        }
        for (const auto& row : numbers) {
            std::string value;
            if (!GetAttribute(element, row.name, value)) continue;
            const auto number = ParseNumber<std::uint32_t>(value);
            if (!number || *number < row.smallest || *number > row.largest)
                Refuse(element, Quoted(value) + " is no value for the attribute " + Quoted(row.name) +
                                    " of " + Name(element));
            record.*row.field = *number;
        }
    }

    // A file that the description names: below the folder, and nowhere else.
    std::string ReadNamedFile(const xmlNode* element, const std::string& name) const {
        const std::filesystem::path path(name);
        const bool leaves = path.is_absolute() || std::find(path.begin(), path.end(), "..") != path.end();
        if (leaves)
            Refuse(element, "the file " + Quoted(name) + " of " + Name(element) + " is not in the folder");
        return ReadFile(m_folder / path, maxDocumentSize);
    }

    std::string ReadDocument(const xmlNode* element) const {
        RefuseOtherAttributes(element, "file");
        ForChildren(element, [&](const xmlNode* child) { Refuse(child, "unknown element " + Name(child)); });
        const std::string name = RequiredAttribute(element, "file");
        std::string bytes = ReadNamedFile(element, name);
        if (bytes.empty()) throw QueueFolderError(m_folder / name, "the file is empty");
        return bytes;
    }

    void ReadQueue(const xmlNode* root) {
        if (LocalName(root) != "Queue" || !NamespaceOf(root).empty())
            Refuse(root, "the root element is " + Name(root) + ", not <Queue>");
        RefuseOtherAttributes(root, "version");
        const std::string version = RequiredAttribute(root, "version");
        if (version != schemaVersion)
            Refuse(root, "version " + Quoted(version) + " is not known, only " + Quoted(schemaVersion));

        std::set<std::string_view> seen;
        ForChildren(root, [&](const xmlNode* child) {
            const std::string_view name = LocalName(child);
            if (!seen.insert(name).second) Refuse(child, Name(child) + " stands twice");
            if (name == "Printer")
                ReadPrinter(child);
            else if (name == "DefaultTicket")
                m_queue.defaultTicket = ReadDocument(child);
            else if (name == "Capabilities")
                m_queue.capabilities = ReadDocument(child);
            else if (name == "Devmode")
                m_queue.devmode = ToBytes(ReadDocument(child));
            else if (name == "DriverProperties")
                ReadProperties(child, m_queue.driverProperties);
            else if (name == "QueueProperties")
                ReadProperties(child, m_queue.queueProperties);
            else if (name == "Jobs")
                ReadJobs(child);
            else
                Refuse(child, "unknown element " + Name(child));
        });
        for (const char* required : {"Printer", "DefaultTicket", "Capabilities"})
            if (!seen.contains(required))
                Refuse(root, std::string("the element <") + required + "> is missing");
    }

    void ReadPrinter(const xmlNode* element) {
        RefuseOtherAttributes(element, printerTexts, printerNumbers);
        ReadFields(element, m_queue, printerTexts, printerNumbers);
        ForChildren(element, [&](const xmlNode* child) { Refuse(child, "unknown element " + Name(child)); });
    }

    void ReadProperties(const xmlNode* element, QueueValues& values) const {
        RefuseOtherAttributes(element);
        ForChildren(element, [&](const xmlNode* child) {
            const std::wstring name = Widen(child, RequiredAttribute(child, "name"));
            if (values.size() == maxProperties) Refuse(child, Name(element) + " holds too many properties");
            if (!values.emplace(name, ReadValue(child)).second)
                Refuse(child, "the property " + Quoted(ToUtf8(name)) + " stands twice");
        });
    }

    static std::string Content(const xmlNode* element) {
        const XmlPointer<xmlChar> text(xmlNodeGetContent(element));
        return std::string(View(text.get()));
    }

    QueueValue ReadValue(const xmlNode* element) const {
        const std::string_view type = LocalName(element);
        for (const xmlNode* child = element->children; child != nullptr; child = child->next)
            if (child->type == XML_ELEMENT_NODE) Refuse(child, "unknown element " + Name(child));

        const bool block = type == "Bytes" || type == "Stream";
        if (block || type == "String")
            RefuseOtherAttributes(element, "name", "file");
        else
            RefuseOtherAttributes(element, "name");

        const std::string text = Content(element);
        const std::string_view trimmed = Trimmed(text);
        if (type == "String") return ReadString(element, text);
        if (type == "Bool") {
            if (trimmed == "true" || trimmed == "1") return true;
            if (trimmed == "false" || trimmed == "0") return false;
            Refuse(element, Quoted(trimmed) + " is neither true nor false");
        }
        if (type == "Int32") {
            const auto number = ParseNumber<std::int32_t>(trimmed);
            if (!number) Refuse(element, Quoted(trimmed) + " is no 32-bit integer");
            return *number;
        }
        if (!block) Refuse(element, "unknown element " + Name(element));
        std::vector<std::uint8_t> bytes = ReadBlock(element, trimmed);
        if (type == "Bytes") return QueueBytes{std::move(bytes)};
        std::string file;
        return QueueStream{std::move(bytes), GetAttribute(element, "file", file) ? m_folder / file : m_file};
    }

    std::wstring ReadString(const xmlNode* element, std::string_view text) const {
        std::string file;
        if (!GetAttribute(element, "file", file)) return FromUtf8(text);
        if (!text.empty()) Refuse(element, Name(element) + " names a file and has content too");
        const std::string content = ReadNamedFile(element, file);
        constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
        const bool marked = content.starts_with(byteOrderMark);
        return FromUtf8(std::string_view(content).substr(marked ? byteOrderMark.size() : 0));
    }

    std::vector<std::uint8_t> ReadBlock(const xmlNode* element, std::string_view text) const {
        std::string file;
        if (GetAttribute(element, "file", file)) {
            if (!text.empty()) Refuse(element, Name(element) + " names a file and has content too");
            return ToBytes(ReadNamedFile(element, file));
        }
        auto bytes = DecodeBase64(text);
        if (!bytes) Refuse(element, "the content of " + Name(element) + " is not base64");
        return std::move(*bytes);
    }

    void ReadJobs(const xmlNode* element) {
        RefuseOtherAttributes(element);
        std::set<std::uint32_t> ids;
        ForChildren(element, [&](const xmlNode* child) {
            if (LocalName(child) != "Job") Refuse(child, "unknown element " + Name(child));
            if (m_queue.jobs.size() == maxJobs) Refuse(child, "too many jobs");
            m_queue.jobs.push_back(ReadJob(child));
            const std::uint32_t id = m_queue.jobs.back().id;
            if (!ids.insert(id).second) Refuse(child, "two jobs have the id " + std::to_string(id));
        });
    }

    QueueJob ReadJob(const xmlNode* element) const {
        RefuseOtherAttributes(element, jobTexts, jobNumbers, "submitted", "devmode");
        ForChildren(element, [&](const xmlNode* child) { Refuse(child, "unknown element " + Name(child)); });
        QueueJob job;
        ReadFields(element, job, jobTexts, jobNumbers);
        RequiredAttribute(element, "id");
        std::string value;
        if (GetAttribute(element, "submitted", value)) {
            const auto time = ParseTime(value);
            if (!time) Refuse(element, Quoted(value) + " is no time of the form 2026-01-31T09:30:00Z");
            job.submitted = *time;
        }
        if (GetAttribute(element, "devmode", value)) job.devmode = ToBytes(ReadNamedFile(element, value));
        return job;
    }

    std::filesystem::path m_folder;
    std::filesystem::path m_file;
    QueueDescription m_queue;
};

} // namespace

QueueDescription ReadQueueFolder(const std::filesystem::path& folder) { return Reader(folder).Read(); }

} // namespace OvPlatform
