#pragma once

#include "ObjectModel/CorePropertiesObject.h"
#include "ObjectModel/DocumentSequenceObject.h"
#include "ObjectModel/RelatedPart.h"

#include <xpsobjectmodel_1.h>

#include <filesystem>
#include <memory>
#include <string>

namespace OvPlatform {

template <>
struct ExtendedInterface<IXpsOMPackage1> {
    using Type = IXpsOMPackage;
};

/// A package as objects. What is not asked for stays in the file that it was read from, and goes from there
/// into what is written.
class PackageObject final : public OwnObject<PackageObject, IXpsOMPackage1> {
public:
    static constexpr IID identifier = {
        0xb04c6bf0, 0x3f0b, 0x4b53, {0x9a, 0x6d, 0x0b, 0x8f, 0x2f, 0x2a, 0x5e, 0x16}};

    static HRESULT Create(IXpsOMPackage1** package);
    static HRESULT Read(LPCWSTR file, IXpsOMPackage1** package);
    /// From where the stream stands to its end; the bytes go into a temporary file.
    static HRESULT Read(IStream* stream, IXpsOMPackage1** package);

    HRESULT STDMETHODCALLTYPE GetDocumentSequence(IXpsOMDocumentSequence** sequence) override;
    HRESULT STDMETHODCALLTYPE SetDocumentSequence(IXpsOMDocumentSequence* sequence) override;
    HRESULT STDMETHODCALLTYPE GetCoreProperties(IXpsOMCoreProperties** properties) override;
    HRESULT STDMETHODCALLTYPE SetCoreProperties(IXpsOMCoreProperties* properties) override;
    HRESULT STDMETHODCALLTYPE GetDiscardControlPartName(IOpcPartUri** uri) override;
    HRESULT STDMETHODCALLTYPE SetDiscardControlPartName(IOpcPartUri* uri) override;
    HRESULT STDMETHODCALLTYPE GetThumbnailResource(IXpsOMImageResource** image) override;
    /// XPS_E_INVALID_THUMBNAIL_IMAGE_TYPE for what is neither JPEG nor PNG.
    HRESULT STDMETHODCALLTYPE SetThumbnailResource(IXpsOMImageResource* image) override;
    /// In the format of the package. What stood under the name stands there until all is written, and stays
    /// on failure: it may be the file that was read.
    HRESULT STDMETHODCALLTYPE WriteToFile(LPCWSTR file, SECURITY_ATTRIBUTES* security, DWORD flags,
                                          BOOL optimizeMarkupSize) override;
    HRESULT STDMETHODCALLTYPE WriteToStream(ISequentialStream* stream, BOOL optimizeMarkupSize) override;
    HRESULT STDMETHODCALLTYPE GetDocumentType(XPS_DOCUMENT_TYPE* type) override;
    /// A package that was read is written in its own format only: E_NOTIMPL for the other.
    HRESULT STDMETHODCALLTYPE WriteToFile1(LPCWSTR file, SECURITY_ATTRIBUTES* security, DWORD flags,
                                           BOOL optimizeMarkupSize, XPS_DOCUMENT_TYPE type) override;
    HRESULT STDMETHODCALLTYPE WriteToStream1(ISequentialStream* stream, BOOL optimizeMarkupSize,
                                             XPS_DOCUMENT_TYPE type) override;

    /// Null for one that was made here.
    const std::shared_ptr<SourcePackage>& Source() const { return m_place.package; }
    DocumentSequenceObject* Sequence() const { return m_sequence; }
    const RelatedThumbnail& Thumbnail() const { return m_thumbnail; }
    /// Null for none, and where nobody has asked for them; whether they are others than were read.
    CorePropertiesObject* CoreProperties() const { return m_properties; }
    bool AreCorePropertiesReplaced() const { return m_arePropertiesReplaced; }
    /// Whether it names another part now, and which one; empty for none.
    bool IsDiscardControlChanged() const { return m_isDiscardControlChanged; }
    const std::string& DiscardControl() const { return m_discardControl; }

private:
    PackageObject() = default;
    ~PackageObject() override;

    void Read(const std::filesystem::path& file);
    void Write(const std::filesystem::path& file, XpsFlavour flavour);
    bool FindFlavour(XPS_DOCUMENT_TYPE type, XpsFlavour& flavour) const;

    SourcePlace m_place;
    CComPtr<DocumentSequenceObject> m_sequence;
    RelatedThumbnail m_thumbnail{Relation::Thumbnail, XPS_E_MULTIPLE_THUMBNAILS_ON_PACKAGE};
    CComPtr<CorePropertiesObject> m_properties;
    bool m_arePropertiesKnown = false;
    bool m_arePropertiesReplaced = false;
    bool m_isDiscardControlChanged = false;
    std::string m_discardControl;
};

} // namespace OvPlatform
