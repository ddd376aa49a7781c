#include "PrinterExtension/UserProperties.h"

#include "Locale/CharacterCase.h"
#include "Locale/Utf16.h"
#include "Spooler/DescriptionReader.h"
#include "Spooler/PropertiesWriter.h"
#include "Spooler/QueueSchema.h"
#include "System/FileError.h"
#include "System/FolderLock.h"
#include "System/OutputFile.h"
#include "System/UserFolder.h"
#include "Xml/TextConversion.h"

#include <cerrno>
#include <cstdint>
#include <stdexcept>
#include <string_view>

namespace OvPlatform {

namespace {

constexpr const char* rootElement = "UserProperties";

constexpr std::size_t mostNameBytes = 200; // file systems take 255
constexpr char digits[] = "0123456789ABCDEF";

// What stands for the end of a name that no file can have.
std::string Fingerprint(std::string_view text) {
    std::uint64_t hash = 0xCBF29CE484222325;
    for (const char unit : text)
        hash = (hash ^ static_cast<unsigned char>(unit)) * 0x100000001B3;
    std::string fingerprint;
    for (int shift = 60; shift >= 0; shift -= 4)
        fingerprint += digits[hash >> shift & 15];
    return fingerprint;
}

// The printer's name, without regard to case, as that of a file: a slash would lead elsewhere, and a dot in
// front hide it.
std::string FileName(const std::wstring& printerName) {
    std::string name;
    for (const char unit : ToUtf8(FoldCase(printerName))) {
        const auto byte = static_cast<unsigned char>(unit);
        const bool isPlain = byte >= 0x20 && byte != 0x7F && byte != '/' && byte != '%';
        if (isPlain && !(byte == '.' && name.empty()))
            name += unit;
        else
            name += {'%', digits[byte >> 4], digits[byte & 15]};
    }
    if (name.size() > mostNameBytes) {
        std::size_t kept = mostNameBytes;
        while ((static_cast<unsigned char>(name[kept]) & 0xC0) == 0x80) // within a character
            --kept;
        name = name.substr(0, kept) + "%-" + Fingerprint(name); // no name has a % before a hyphen
    }
    return name + ".xml";
}

class Reader : public DescriptionReader {
public:
    explicit Reader(const std::filesystem::path& file) : DescriptionReader(file, {}) {}

    QueueValues Read() const {
        const XmlDocument document = Parse(ReadDescriptionFile(File(), QueueSchema::maxDescriptionSize));
        const xmlNode* const root = xmlDocGetRootElement(document.get());
        CheckRoot(root, rootElement);
        QueueValues values;
        ReadProperties(root, values);
        return values;
    }
};

void RequireXmlText(std::wstring_view text) {
    std::string ignored;
    if (!AppendXmlUtf8(ignored, text)) throw std::invalid_argument("no XML can hold this text");
}

void RequireStorable(const std::wstring& name, const QueueValue& value) {
    if (name.size() > QueueSchema::maxTextLength) throw std::invalid_argument("the name is too long");
    RequireXmlText(name);
    if (const auto* text = std::get_if<std::wstring>(&value)) RequireXmlText(*text);
}

std::string Format(const QueueValues& values) {
    XmlOutput xml(true);
    xml.Start(rootElement);
    xml.Attribute("version", QueueSchema::schemaVersion);
    WriteValues(xml, values);
    return xml.Finish();
}

} // namespace

UserProperties::UserProperties(const std::wstring& printerName) {
    const auto folder = PlaceOfUser(folderVariable, "printers");
    if (!folder.empty()) m_file = folder / FileName(printerName);
}

QueueValues UserProperties::Load() const {
    std::error_code failure;
    if (m_file.empty() || !std::filesystem::exists(m_file, failure)) return {};
    return Reader(m_file).Read();
}

void UserProperties::Store(const std::wstring& name, const QueueValue& value) const {
    RequireStorable(name, value);
    if (m_file.empty()) throw FileError(ENOENT, m_file, "there is no place for files of the user");
    std::error_code ignored; // what could not be made is told when the file is opened
    std::filesystem::create_directories(m_file.parent_path(), ignored);
    const FolderLock lock(m_file.parent_path());
    QueueValues values = Load();
    values.insert_or_assign(name, value);
    const std::string text = Format(values);
    if (values.size() > QueueSchema::maxProperties || text.size() > QueueSchema::maxDescriptionSize)
        throw FileError(ENOSPC, m_file, "there would be more than a bag holds");
    OutputFile output(m_file);
    output.Write(text.data(), text.size());
    output.Finish();
    output.Commit();
}

} // namespace OvPlatform
