#include "Com/ClassTable.h"
#include "ObjectModel/Collections.h"
#include "ObjectModel/DocumentSequenceObject.h"
#include "ObjectModel/ModelCall.h"
#include "ObjectModel/PackageObject.h"
#include "ObjectModel/PageObjects.h"
#include "ObjectModel/Resources.h"
#include "Package/OpcUri.h"
#include "System/FileError.h"
#include "System/InputFile.h"
#include "Xml/TextConversion.h"

#include <streambase.h>

#include <cerrno>
#include <cstdio>
#include <memory>

namespace OvPlatform {

template <>
struct ExtendedInterface<IXpsOMObjectFactory1> {
    using Type = IXpsOMObjectFactory;
};

namespace {

// The bytes of a file, which is kept open.
class FileReading final : public PackagePartStream {
public:
    explicit FileReading(const std::filesystem::path& path) : m_path(path), m_file(OpenInputFile(path)) {
        if (!m_file || fseeko(m_file.get(), 0, SEEK_END) != 0) throw FileError(errno, m_path);
        m_size = static_cast<std::uint64_t>(ftello(m_file.get()));
        Seek(0);
    }

    std::size_t Read(void* buffer, std::size_t size) override {
        const std::size_t got = std::fread(buffer, 1, size, m_file.get());
        if (got == 0 && std::ferror(m_file.get()) != 0) throw FileError(errno, m_path);
        m_position += got;
        return got;
    }
    void Seek(std::uint64_t position) override {
        if (fseeko(m_file.get(), static_cast<off_t>(position), SEEK_SET) != 0) throw FileError(errno, m_path);
        m_position = position;
    }
    std::uint64_t Position() const override { return m_position; }
    std::uint64_t Size() const override { return m_size; }

private:
    struct Close {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };

    std::filesystem::path m_path;
    std::unique_ptr<std::FILE, Close> m_file;
    std::uint64_t m_size = 0;
    std::uint64_t m_position = 0;
};

class FileContent final : public PartContent {
public:
    explicit FileContent(std::filesystem::path path) : m_path(std::move(path)) {}
    std::unique_ptr<PackagePartStream> Open() const override { return std::make_unique<FileReading>(m_path); }

private:
    std::filesystem::path m_path;
};

HRESULT OpenFileStream(LPCWSTR name, IStream** stream) {
    return ModelCall(stream, [&] {
        if (name == nullptr) return E_POINTER;
        std::string path;
        if (!AppendUtf8(path, name)) return HRESULT_FROM_WIN32(ERROR_INVALID_NAME);
        return OpenContentStream(std::make_shared<FileContent>(path), stream);
    });
}

// What the second release makes serves the first.
template <class Older, class Newer, class Make>
HRESULT AsOlder(Older** place, Make&& make) {
    return ModelCall(place, [&] {
        CComPtr<Newer> made;
        const HRESULT result = make(&made);
        if (SUCCEEDED(result)) *place = made.Detach();
        return result;
    });
}

HRESULT TypeOf(IXpsOMPackage1* package, HRESULT result, XPS_DOCUMENT_TYPE* type) {
    return FAILED(result) ? result : package->GetDocumentType(type);
}

// Of packages that are written part by part, thumbnails that are drawn, and the brushes that nobody makes
// here, nothing is built: such calls answer E_NOTIMPL.
class ObjectFactory final : public CountedObject<IXpsOMObjectFactory1> {
public:
    static HRESULT Create(REFIID riid, void** object) {
        if (object == nullptr) return E_POINTER;
        *object = nullptr;
        auto* factory = new (std::nothrow) ObjectFactory;
        if (factory == nullptr) return E_OUTOFMEMORY;
        const HRESULT result = factory->QueryInterface(riid, object);
        factory->Release();
        return result;
    }

    HRESULT STDMETHODCALLTYPE CreatePackage(IXpsOMPackage** package) override {
        return AsOlder<IXpsOMPackage, IXpsOMPackage1>(
            package, [](IXpsOMPackage1** made) { return PackageObject::Create(made); });
    }
    HRESULT STDMETHODCALLTYPE CreatePackageFromFile(LPCWSTR file, BOOL, IXpsOMPackage** package) override {
        return AsOlder<IXpsOMPackage, IXpsOMPackage1>(
            package, [&](IXpsOMPackage1** made) { return PackageObject::Read(file, made); });
    }
    HRESULT STDMETHODCALLTYPE CreatePackageFromStream(IStream* stream, BOOL,
                                                      IXpsOMPackage** package) override {
        return AsOlder<IXpsOMPackage, IXpsOMPackage1>(
            package, [&](IXpsOMPackage1** made) { return PackageObject::Read(stream, made); });
    }
    HRESULT STDMETHODCALLTYPE CreateStoryFragmentsResource(
        IStream* stream, IOpcPartUri* uri, IXpsOMStoryFragmentsResource** fragments) override {
        return CreateStoryFragments(stream, uri, fragments);
    }
    HRESULT STDMETHODCALLTYPE CreateDocumentStructureResource(
        IStream* stream, IOpcPartUri* uri, IXpsOMDocumentStructureResource** structure) override {
        return CreateDocumentStructure(stream, uri, structure);
    }
    HRESULT STDMETHODCALLTYPE CreateSignatureBlockResource(IStream* stream, IOpcPartUri* uri,
                                                           IXpsOMSignatureBlockResource** block) override {
        return CreateSignatureBlock(stream, uri, block);
    }
    HRESULT STDMETHODCALLTYPE CreateRemoteDictionaryResource(
        IXpsOMDictionary* content, IOpcPartUri* uri, IXpsOMRemoteDictionaryResource** dictionary) override {
        return CreateRemoteDictionary(content, uri, dictionary);
    }
    HRESULT STDMETHODCALLTYPE CreateRemoteDictionaryResourceFromStream(
        IStream* markup, IOpcPartUri* uri, IXpsOMPartResources* resources,
        IXpsOMRemoteDictionaryResource** dictionary) override {
        return CreateRemoteDictionary(markup, uri, resources, dictionary);
    }
    HRESULT STDMETHODCALLTYPE CreatePartResources(IXpsOMPartResources** resources) override {
        return ModelCall(resources, [&] {
            *resources = new PartResources;
            return S_OK;
        });
    }
    HRESULT STDMETHODCALLTYPE CreateDocumentSequence(IOpcPartUri* uri,
                                                     IXpsOMDocumentSequence** sequence) override {
        return DocumentSequenceObject::Create(uri, sequence);
    }
    HRESULT STDMETHODCALLTYPE CreateDocument(IOpcPartUri* uri, IXpsOMDocument** document) override {
        return DocumentObject::Create(uri, document);
    }
    HRESULT STDMETHODCALLTYPE CreatePageReference(const XPS_SIZE* size,
                                                  IXpsOMPageReference** reference) override {
        return PageReferenceObject::Create(size, reference);
    }
    HRESULT STDMETHODCALLTYPE CreatePage(const XPS_SIZE* size, LPCWSTR language, IOpcPartUri* uri,
                                         IXpsOMPage** page) override {
        return AsOlder<IXpsOMPage, IXpsOMPage1>(
            page, [&](IXpsOMPage1** made) { return CreatePage1(size, language, uri, made); });
    }
    HRESULT STDMETHODCALLTYPE CreatePageFromStream(IStream* markup, IOpcPartUri* uri,
                                                   IXpsOMPartResources* resources, BOOL reuseObjects,
                                                   IXpsOMPage** page) override {
        return AsOlder<IXpsOMPage, IXpsOMPage1>(page, [&](IXpsOMPage1** made) {
            return CreatePageFromStream1(markup, uri, resources, reuseObjects, made);
        });
    }
    HRESULT STDMETHODCALLTYPE CreateCanvas(IXpsOMCanvas** canvas) override {
        return CreateCanvasObject(canvas);
    }
    HRESULT STDMETHODCALLTYPE CreateGlyphs(IXpsOMFontResource* font, IXpsOMGlyphs** glyphs) override {
        return CreateGlyphsObject(font, glyphs);
    }
    HRESULT STDMETHODCALLTYPE CreatePath(IXpsOMPath** path) override { return CreatePathObject(path); }
    HRESULT STDMETHODCALLTYPE CreateGeometry(IXpsOMGeometry** geometry) override {
        return CreateGeometryObject(geometry);
    }
    HRESULT STDMETHODCALLTYPE CreateGeometryFigure(const XPS_POINT* start,
                                                   IXpsOMGeometryFigure** figure) override {
        return CreateGeometryFigureObject(start, figure);
    }
    HRESULT STDMETHODCALLTYPE CreateMatrixTransform(const XPS_MATRIX* matrix,
                                                    IXpsOMMatrixTransform** transform) override {
        return CreateMatrixTransformObject(matrix, transform);
    }
    HRESULT STDMETHODCALLTYPE CreateSolidColorBrush(const XPS_COLOR* color,
                                                    IXpsOMColorProfileResource* profile,
                                                    IXpsOMSolidColorBrush** brush) override {
        return CreateSolidColorBrushObject(color, profile, brush);
    }
    HRESULT STDMETHODCALLTYPE CreateColorProfileResource(IStream* stream, IOpcPartUri* uri,
                                                         IXpsOMColorProfileResource** profile) override {
        return CreateColorProfile(stream, uri, profile);
    }
    HRESULT STDMETHODCALLTYPE CreateImageBrush(IXpsOMImageResource* image, const XPS_RECT* viewbox,
                                               const XPS_RECT* viewport, IXpsOMImageBrush** brush) override {
        return CreateImageBrushObject(image, viewbox, viewport, brush);
    }
    HRESULT STDMETHODCALLTYPE CreateVisualBrush(const XPS_RECT*, const XPS_RECT*,
                                                IXpsOMVisualBrush**) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE CreateImageResource(IStream* stream, XPS_IMAGE_TYPE type, IOpcPartUri* uri,
                                                  IXpsOMImageResource** image) override {
        return CreateImage(stream, type, uri, image);
    }
    HRESULT STDMETHODCALLTYPE CreatePrintTicketResource(IStream* stream, IOpcPartUri* uri,
                                                        IXpsOMPrintTicketResource** ticket) override {
        return CreatePrintTicket(stream, uri, ticket);
    }
    HRESULT STDMETHODCALLTYPE CreateFontResource(IStream* stream, XPS_FONT_EMBEDDING embedding,
                                                 IOpcPartUri* uri, BOOL isObfuscated,
                                                 IXpsOMFontResource** font) override {
        return CreateEmbeddedFont(stream, embedding, uri, isObfuscated, font);
    }
    HRESULT STDMETHODCALLTYPE CreateGradientStop(const XPS_COLOR*, IXpsOMColorProfileResource*, FLOAT,
                                                 IXpsOMGradientStop**) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE CreateLinearGradientBrush(IXpsOMGradientStop*, IXpsOMGradientStop*,
                                                        const XPS_POINT*, const XPS_POINT*,
                                                        IXpsOMLinearGradientBrush**) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE CreateRadialGradientBrush(IXpsOMGradientStop*, IXpsOMGradientStop*,
                                                        const XPS_POINT*, const XPS_POINT*, const XPS_SIZE*,
                                                        IXpsOMRadialGradientBrush**) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE CreateCoreProperties(IOpcPartUri* uri,
                                                   IXpsOMCoreProperties** properties) override {
        return CorePropertiesObject::Create(uri, properties);
    }
    HRESULT STDMETHODCALLTYPE CreateDictionary(IXpsOMDictionary** dictionary) override {
        return CreateDictionaryObject(dictionary);
    }
    HRESULT STDMETHODCALLTYPE CreatePartUriCollection(IXpsOMPartUriCollection** uris) override {
        return OvPlatform::CreatePartUriCollection(uris);
    }
    HRESULT STDMETHODCALLTYPE CreatePackageWriterOnFile(LPCWSTR, SECURITY_ATTRIBUTES*, DWORD, BOOL,
                                                        XPS_INTERLEAVING, IOpcPartUri*, IXpsOMCoreProperties*,
                                                        IXpsOMImageResource*, IXpsOMPrintTicketResource*,
                                                        IOpcPartUri*, IXpsOMPackageWriter**) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE CreatePackageWriterOnStream(ISequentialStream*, BOOL, XPS_INTERLEAVING,
                                                          IOpcPartUri*, IXpsOMCoreProperties*,
                                                          IXpsOMImageResource*, IXpsOMPrintTicketResource*,
                                                          IOpcPartUri*, IXpsOMPackageWriter**) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE CreatePartUri(LPCWSTR name, IOpcPartUri** uri) override {
        return ModelCall(uri, [&] {
            return name == nullptr ? E_POINTER : ResolveOpcPartUri(std::string(packageRoot), name, uri);
        });
    }
    HRESULT STDMETHODCALLTYPE CreateReadOnlyStreamOnFile(LPCWSTR file, IStream** stream) override {
        return OpenFileStream(file, stream);
    }

    HRESULT STDMETHODCALLTYPE GetDocumentTypeFromFile(LPCWSTR file, XPS_DOCUMENT_TYPE* type) override {
        if (type == nullptr) return E_POINTER;
        CComPtr<IXpsOMPackage1> package;
        return TypeOf(package, PackageObject::Read(file, &package), type);
    }
    HRESULT STDMETHODCALLTYPE GetDocumentTypeFromStream(IStream* stream, XPS_DOCUMENT_TYPE* type) override {
        if (type == nullptr) return E_POINTER;
        CComPtr<IXpsOMPackage1> package;
        return TypeOf(package, PackageObject::Read(stream, &package), type);
    }
    HRESULT STDMETHODCALLTYPE ConvertHDPhotoToJpegXR(IXpsOMImageResource*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE ConvertJpegXRToHDPhoto(IXpsOMImageResource*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE CreatePackageWriterOnFile1(LPCWSTR, SECURITY_ATTRIBUTES*, DWORD, BOOL,
                                                         XPS_INTERLEAVING, IOpcPartUri*,
                                                         IXpsOMCoreProperties*, IXpsOMImageResource*,
                                                         IXpsOMPrintTicketResource*, IOpcPartUri*,
                                                         XPS_DOCUMENT_TYPE, IXpsOMPackageWriter**) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE CreatePackageWriterOnStream1(ISequentialStream*, BOOL, XPS_INTERLEAVING,
                                                           IOpcPartUri*, IXpsOMCoreProperties*,
                                                           IXpsOMImageResource*, IXpsOMPrintTicketResource*,
                                                           IOpcPartUri*, XPS_DOCUMENT_TYPE,
                                                           IXpsOMPackageWriter**) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE CreatePackage1(IXpsOMPackage1** package) override {
        return PackageObject::Create(package);
    }
    HRESULT STDMETHODCALLTYPE CreatePackageFromStream1(IStream* stream, BOOL,
                                                       IXpsOMPackage1** package) override {
        return PackageObject::Read(stream, package);
    }
    HRESULT STDMETHODCALLTYPE CreatePackageFromFile1(LPCWSTR file, BOOL, IXpsOMPackage1** package) override {
        return PackageObject::Read(file, package);
    }
    HRESULT STDMETHODCALLTYPE CreatePage1(const XPS_SIZE* size, LPCWSTR language, IOpcPartUri* uri,
                                          IXpsOMPage1** page) override {
        return CreatePageObject(size, language, uri, page);
    }
    HRESULT STDMETHODCALLTYPE CreatePageFromStream1(IStream* markup, IOpcPartUri* uri,
                                                    IXpsOMPartResources* resources, BOOL reuseObjects,
                                                    IXpsOMPage1** page) override {
        return ReadPage(markup, uri, resources, reuseObjects, page);
    }
    HRESULT STDMETHODCALLTYPE CreateRemoteDictionaryResourceFromStream1(
        IStream* markup, IOpcPartUri* uri, IXpsOMPartResources* resources,
        IXpsOMRemoteDictionaryResource** dictionary) override {
        return CreateRemoteDictionary(markup, uri, resources, dictionary);
    }
};

const ClassRegistration registration(__uuidof(XpsOMObjectFactory), ObjectFactory::Create);

} // namespace

} // namespace OvPlatform
