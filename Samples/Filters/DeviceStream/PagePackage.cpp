#include "PagePackage.h"

#include <ComSupport/ThrowHresult.h>
#include <LowLevelFacilities/Failures/ThrowFailure.h>
#include <LowLevelFacilities/Strings/CPStringUtils.h>

#include <atlcomcli.h>
#include <zip.h>

#include <array>

namespace {

constexpr std::size_t mostKept = std::size_t{32} << 20;

constexpr std::string_view contentTypes =
    R"(<Types xmlns="http://schemas.openxmlformats.org/package/2006/content-types">)"
    R"(<Default Extension="rels" ContentType="application/vnd.openxmlformats-package.relationships+xml"/>)"
    R"(<Default Extension="fdseq" ContentType="application/vnd.ms-package.xps-fixeddocumentsequence+xml"/>)"
    R"(<Default Extension="fdoc" ContentType="application/vnd.ms-package.xps-fixeddocument+xml"/>)"
    R"(<Default Extension="fpage" ContentType="application/vnd.ms-package.xps-fixedpage+xml"/>)"
    R"(<Default Extension="dict" ContentType="application/vnd.ms-package.xps-resourcedictionary+xml"/>)"
    R"(<Default Extension="ttf" ContentType="application/vnd.ms-opentype"/>)"
    R"(<Default Extension="odttf" ContentType="application/vnd.ms-package.obfuscated-opentype"/>)"
    R"(<Default Extension="png" ContentType="image/png"/>)"
    R"(<Default Extension="jpg" ContentType="image/jpeg"/>)"
    R"(<Default Extension="jpeg" ContentType="image/jpeg"/>)"
    R"(<Default Extension="tif" ContentType="image/tiff"/>)"
    R"(<Default Extension="wdp" ContentType="image/vnd.ms-photo"/></Types>)";

constexpr std::string_view packageRelationships =
    R"(<Relationships xmlns="http://schemas.openxmlformats.org/package/2006/relationships">)"
    R"(<Relationship Id="R1" Type="http://schemas.microsoft.com/xps/2005/06/fixedrepresentation" )"
    R"(Target="/page-package.fdseq"/></Relationships>)";

constexpr std::string_view sequence =
    R"(<FixedDocumentSequence xmlns="http://schemas.microsoft.com/xps/2005/06">)"
    R"(<DocumentReference Source="/page-package.fdoc"/></FixedDocumentSequence>)";

std::string NameOf(IPartBase& part) {
    CComBSTR uri;
    ThrowIfFailed(part.GetUri(&uri));
    return CPStringUtils::narrowToStdString(uri);
}

std::shared_ptr<const std::string> Read(IPartBase& part) {
    CComPtr<IPrintReadStream> stream;
    ThrowIfFailed(part.GetStream(&stream));
    auto bytes = std::make_shared<std::string>();
    std::array<char, 0x10000> buffer;
    BOOL atEnd = FALSE;
    while (!atEnd) {
        ULONG read = 0;
        ThrowIfFailed(stream->ReadBytes(buffer.data(), static_cast<ULONG>(buffer.size()), &read, &atEnd));
        if (read == 0) break;
        bytes->append(buffer.data(), read);
    }
    return bytes;
}

std::string AttributeText(std::string_view text) {
    std::string escaped;
    for (const char unit : text) {
        if (unit == '&')
            escaped += "&amp;";
        else if (unit == '<')
            escaped += "&lt;";
        else if (unit == '"')
            escaped += "&quot;";
        else
            escaped += unit;
    }
    return escaped;
}

[[noreturn]] void Refuse(const char* step) {
    ThrowFailure<CPException>([&] { return std::string("the package of a page cannot be made: ") + step; });
}

// An archive that is written into memory, and comes out whole or not at all.
class MemoryArchive {
public:
    MemoryArchive() : m_target(zip_source_buffer_create(nullptr, 0, 0, nullptr)) {
        if (m_target == nullptr) Refuse("no memory");
        m_archive = zip_open_from_source(m_target, ZIP_TRUNCATE, nullptr);
        if (m_archive == nullptr) {
            zip_source_free(m_target);
            Refuse("it cannot be opened");
        }
        zip_source_keep(m_target); // beyond the archive, to be read
    }
    MemoryArchive(const MemoryArchive&) = delete;
    MemoryArchive& operator=(const MemoryArchive&) = delete;
    ~MemoryArchive() {
        if (m_archive != nullptr) zip_discard(m_archive);
        zip_source_free(m_target);
    }

    // The bytes must live until Finish. They are stored as they are: the archive is read at once, and gone.
    void Add(const std::string& name, std::string_view bytes) {
        zip_source_t* const source = zip_source_buffer(m_archive, bytes.data(), bytes.size(), 0);
        if (source == nullptr) Refuse("no memory");
        const zip_int64_t index = zip_file_add(m_archive, name.c_str(), source, ZIP_FL_ENC_UTF_8);
        if (index < 0) {
            zip_source_free(source);
            Refuse(name.c_str());
        }
        const auto entry = static_cast<zip_uint64_t>(index);
        if (zip_set_file_compression(m_archive, entry, ZIP_CM_STORE, 0) != 0) Refuse(name.c_str());
    }

    std::string Finish() {
        if (zip_close(m_archive) != 0) Refuse("it cannot be written");
        m_archive = nullptr;
        zip_stat_t what;
        if (zip_source_stat(m_target, &what) != 0 || zip_source_open(m_target) != 0)
            Refuse("it cannot be read");
        std::string bytes(what.size, '\0');
        const zip_int64_t read = zip_source_read(m_target, bytes.data(), bytes.size());
        zip_source_close(m_target);
        if (read != static_cast<zip_int64_t>(bytes.size())) Refuse("it cannot be read");
        return bytes;
    }

private:
    zip_source_t* m_target;
    zip_t* m_archive = nullptr;
};

} // namespace

std::shared_ptr<const std::string> ResourceBytes::Of(const std::string& name, IPartBase& part) {
    if (const auto known = m_kept.find(name); known != m_kept.end()) return known->second;
    auto bytes = Read(part);
    if (m_size + bytes->size() > mostKept) {
        m_kept.clear();
        m_size = 0;
    }
    if (bytes->size() <= mostKept) {
        m_size += bytes->size();
        m_kept.emplace(name, bytes);
    }
    return bytes;
}

PagePackage::PagePackage(IFixedPage& page, ResourceBytes& resources) {
    const std::string pageName = NameOf(page);
    AddStructure(pageName);
    m_parts.emplace_back(pageName.substr(1), Read(page));
    CComPtr<IXpsPartIterator> parts;
    ThrowIfFailed(page.GetXpsPartIterator(&parts));
    for (parts->Reset(); !parts->IsDone(); parts->Next()) {
        CComBSTR uri;
        CComPtr<IUnknown> part;
        ThrowIfFailed(parts->Current(&uri, &part));
        const CComQIPtr<IPartBase> resource(part);
        if (!resource || CComQIPtr<IPartPrintTicket>(part)) continue;
        const std::string name = CPStringUtils::narrowToStdString(uri);
        m_parts.emplace_back(name.substr(1), resources.Of(name, *resource));
    }
}

void PagePackage::AddStructure(const std::string& pageName) {
    const auto add = [&](const char* name, std::string_view text) {
        m_parts.emplace_back(name, std::make_shared<std::string>(text));
    };
    add("[Content_Types].xml", contentTypes);
    add("_rels/.rels", packageRelationships);
    add("page-package.fdseq", sequence);
    add("page-package.fdoc",
        R"(<FixedDocument xmlns="http://schemas.microsoft.com/xps/2005/06"><PageContent Source=")" +
            AttributeText(pageName) + R"("/></FixedDocument>)");
}

std::string PagePackage::Archive() const {
    MemoryArchive archive;
    for (const auto& [name, bytes] : m_parts)
        archive.Add(name, *bytes);
    return archive.Finish();
}
