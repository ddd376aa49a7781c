#include "ObjectModel/PackageObject.h"

#include "ObjectModel/PackageSerializer.h"
#include "Package/PackageWriter.h"
#include "System/FileError.h"
#include "System/InputFile.h"
#include "System/NamelessFile.h"
#include "System/OutputFile.h"
#include "Xml/TextConversion.h"

#include <streamcopy.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <utility>

namespace OvPlatform {

namespace {

std::filesystem::path PathOf(LPCWSTR name) {
    std::string text;
    if (!AppendUtf8(text, name))
        throw PackageError(HRESULT_FROM_WIN32(ERROR_INVALID_NAME), "a file", "its name is no text");
    return text;
}

// A file of a random name that goes with this object.
class TemporaryFile {
public:
    TemporaryFile() : m_path(RandomName(std::filesystem::temp_directory_path())) {}
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    ~TemporaryFile() {
        std::error_code ignored;
        std::filesystem::remove(m_path, ignored);
    }
    const std::filesystem::path& Path() const { return m_path; }

private:
    std::filesystem::path m_path;
};

using Chunk = std::array<char, std::size_t{64} * 1024>;

void CopyToFile(IStream* stream, const std::filesystem::path& path) {
    OutputFile file(path);
    Chunk chunk;
    for (;;) {
        ULONG got = 0;
        Require(stream->Read(chunk.data(), static_cast<ULONG>(chunk.size()), &got), "the package",
                "its stream cannot be read");
        if (got == 0) break;
        if (got > chunk.size())
            throw PackageError(E_UNEXPECTED, "the package", "its stream gives more than it is asked for");
        file.Write(chunk.data(), got);
    }
    file.Finish();
    file.Commit();
}

void CopyToStream(const std::filesystem::path& path, ISequentialStream* stream) {
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(OpenInputFile(path), &std::fclose);
    if (!file) throw FileError(errno, path);
    Chunk chunk;
    while (const std::size_t got = std::fread(chunk.data(), 1, chunk.size(), file.get())) {
        ULONGLONG written = 0;
        Require(WriteWhole(stream, chunk.data(), got, &written), "the package",
                "its stream cannot be written");
    }
    if (std::ferror(file.get()) != 0) throw FileError(errno, path);
}

} // namespace

PackageObject::~PackageObject() {
    if (m_sequence) m_sequence->SetOwner(nullptr);
    if (m_properties) m_properties->SetOwner(nullptr);
}

HRESULT PackageObject::Create(IXpsOMPackage1** package) {
    return ModelCall(package, [&] {
        *package = new PackageObject;
        return S_OK;
    });
}

HRESULT PackageObject::Read(LPCWSTR file, IXpsOMPackage1** package) {
    return ModelCall(package, [&] {
        if (file == nullptr) return E_POINTER;
        CComPtr<PackageObject> made;
        made.Attach(new PackageObject);
        made->Read(PathOf(file));
        *package = made.Detach();
        return S_OK;
    });
}

HRESULT PackageObject::Read(IStream* stream, IXpsOMPackage1** package) {
    return ModelCall(package, [&] {
        if (stream == nullptr) return E_POINTER;
        const TemporaryFile file; // as long as the archive is open, its bytes live without the name
        CopyToFile(stream, file.Path());
        CComPtr<PackageObject> made;
        made.Attach(new PackageObject);
        made->Read(file.Path());
        *package = made.Detach();
        return S_OK;
    });
}

void PackageObject::Read(const std::filesystem::path& file) {
    m_place = {SourcePackage::Open(file), std::string(packageRoot)};
    m_sequence.Attach(new DocumentSequenceObject(m_place.package));
    m_sequence->SetOwner(this);
}

HRESULT PackageObject::GetDocumentSequence(IXpsOMDocumentSequence** sequence) {
    return ModelCall(sequence, [&] {
        *sequence = CComPtr<DocumentSequenceObject>(m_sequence).Detach();
        return S_OK;
    });
}

HRESULT PackageObject::SetDocumentSequence(IXpsOMDocumentSequence* sequence) {
    return ModelCall([&] {
        const auto own = Behind<DocumentSequenceObject>(sequence);
        if (sequence != nullptr && !own) return XPS_E_NO_CUSTOM_OBJECTS;
        if (own == m_sequence.p) return S_OK;
        if (own && own->HasOwner()) return XPS_E_ALREADY_OWNED;
        if (m_sequence) m_sequence->SetOwner(nullptr);
        m_sequence = own;
        if (m_sequence) m_sequence->SetOwner(this);
        return S_OK;
    });
}

HRESULT PackageObject::GetCoreProperties(IXpsOMCoreProperties** properties) {
    return ModelCall(properties, [&] {
        if (!m_arePropertiesKnown && m_place)
            if (const PackagePart* part = m_place.package->Related(m_place.name, Relation::CoreProperties,
                                                                   XPS_E_MULTIPLE_REFERENCES_TO_PART)) {
                m_properties.Attach(new CorePropertiesObject(
                    part->name, StoredContent(m_place.package->SharedReader(), part->name)));
                m_properties->SetOwner(this);
            }
        m_arePropertiesKnown = true;
        *properties = CComPtr<CorePropertiesObject>(m_properties).Detach();
        return S_OK;
    });
}

HRESULT PackageObject::SetCoreProperties(IXpsOMCoreProperties* properties) {
    return ModelCall([&] {
        const auto own = Behind<CorePropertiesObject>(properties);
        if (properties != nullptr && !own) return XPS_E_NO_CUSTOM_OBJECTS;
        if (m_arePropertiesKnown && own == m_properties.p) return S_OK;
        if (own && own->HasOwner()) return XPS_E_ALREADY_OWNED;
        if (m_properties) m_properties->SetOwner(nullptr);
        m_properties = own;
        if (m_properties) m_properties->SetOwner(this);
        m_arePropertiesKnown = true;
        m_arePropertiesReplaced = true;
        return S_OK;
    });
}

HRESULT PackageObject::GetDiscardControlPartName(IOpcPartUri** uri) {
    return ModelCall(uri, [&] {
        std::string name = m_discardControl;
        if (!m_isDiscardControlChanged && m_place)
            if (const PackagePart* part = m_place.package->Related(m_place.name, Relation::DiscardControl,
                                                                   XPS_E_MULTIPLE_REFERENCES_TO_PART))
                name = part->name;
        return name.empty() ? S_OK : GivePartUri(name, uri);
    });
}

HRESULT PackageObject::SetDiscardControlPartName(IOpcPartUri* uri) {
    return ModelCall([&] {
        m_discardControl = uri == nullptr ? std::string() : PartNameOf(uri);
        m_isDiscardControlChanged = true;
        return S_OK;
    });
}

HRESULT PackageObject::GetThumbnailResource(IXpsOMImageResource** image) {
    return m_thumbnail.Give(m_place, image);
}

HRESULT PackageObject::SetThumbnailResource(IXpsOMImageResource* image) { return m_thumbnail.Take(image); }

HRESULT PackageObject::GetDocumentType(XPS_DOCUMENT_TYPE* type) {
    if (type == nullptr) return E_POINTER;
    *type = !m_place                                            ? XPS_DOCUMENT_TYPE_UNSPECIFIED
            : m_place.package->Flavour() == XpsFlavour::OpenXps ? XPS_DOCUMENT_TYPE_OPENXPS
                                                                : XPS_DOCUMENT_TYPE_XPS;
    return S_OK;
}

bool PackageObject::FindFlavour(XPS_DOCUMENT_TYPE type, XpsFlavour& flavour) const {
    flavour = m_place ? m_place.package->Flavour() : XpsFlavour::Xps;
    if (type == XPS_DOCUMENT_TYPE_UNSPECIFIED) return true;
    const XpsFlavour wanted = type == XPS_DOCUMENT_TYPE_OPENXPS ? XpsFlavour::OpenXps : XpsFlavour::Xps;
    if (m_place && wanted != flavour) return false;
    flavour = wanted;
    return true;
}

void PackageObject::Write(const std::filesystem::path& file, XpsFlavour flavour) {
    const auto writer = PackageWriter::Create(file);
    PackageSerializer(*writer, *this, flavour).Write();
    writer->Finish();
    writer->Commit();
}

HRESULT PackageObject::WriteToFile1(LPCWSTR file, SECURITY_ATTRIBUTES*, DWORD, BOOL, XPS_DOCUMENT_TYPE type) {
    if (file == nullptr) return E_POINTER;
    return ModelCall([&] {
        if (type < XPS_DOCUMENT_TYPE_UNSPECIFIED || type > XPS_DOCUMENT_TYPE_OPENXPS) return E_INVALIDARG;
        XpsFlavour flavour{};
        if (!FindFlavour(type, flavour)) return E_NOTIMPL;
        Write(PathOf(file), flavour);
        return S_OK;
    });
}

HRESULT PackageObject::WriteToStream1(ISequentialStream* stream, BOOL, XPS_DOCUMENT_TYPE type) {
    if (stream == nullptr) return E_POINTER;
    return ModelCall([&] {
        if (type < XPS_DOCUMENT_TYPE_UNSPECIFIED || type > XPS_DOCUMENT_TYPE_OPENXPS) return E_INVALIDARG;
        XpsFlavour flavour{};
        if (!FindFlavour(type, flavour)) return E_NOTIMPL;
        const TemporaryFile file;
        Write(file.Path(), flavour);
        CopyToStream(file.Path(), stream);
        return S_OK;
    });
}

HRESULT PackageObject::WriteToFile(LPCWSTR file, SECURITY_ATTRIBUTES* security, DWORD flags,
                                   BOOL optimizeMarkupSize) {
    return WriteToFile1(file, security, flags, optimizeMarkupSize, XPS_DOCUMENT_TYPE_UNSPECIFIED);
}

HRESULT PackageObject::WriteToStream(ISequentialStream* stream, BOOL optimizeMarkupSize) {
    return WriteToStream1(stream, optimizeMarkupSize, XPS_DOCUMENT_TYPE_UNSPECIFIED);
}

} // namespace OvPlatform
