#pragma once

#include "ObjectModel/PartContent.h"
#include "ObjectModel/PartObject.h"
#include "ObjectModel/XpsVocabulary.h"

#include <atlcomcli.h>
#include <xpsobjectmodel.h>
#include <xpsobjectmodel_1.h>

#include <memory>
#include <string>

namespace OvPlatform {

/// What all resources have behind their interfaces.
struct ResourceCore {
    std::string name;
    /// Plain: of a font that is obfuscated, what comes out. Null where markup is written from objects.
    SharedContent content;
    /// Where the resource is a part of a package and nothing in it has been changed.
    const PackagePart* stored = nullptr;
    std::shared_ptr<const PackageReader> package; // of stored, which must live
    XPS_FONT_EMBEDDING embedding = XPS_FONT_EMBEDDING_NORMAL;
    XPS_IMAGE_TYPE imageType = XPS_IMAGE_TYPE_PNG;
};

/// By which the model knows its own resources again.
/// clang-format off
MIDL_INTERFACE("b04c6bf0-3f0b-4b53-9a6d-0b8f2f2a5e11")
IModelResource : public IUnknown {
public:
    virtual ResourceCore& STDMETHODCALLTYPE Core() = 0;
    /// As it is to be written in a package of that format.
    virtual const char* STDMETHODCALLTYPE ContentType(XpsFlavour flavour) = 0;
    /// Whether its bytes are markup in the namespaces of a format.
    virtual bool STDMETHODCALLTYPE IsOfFormat() { return false; }

protected:
    ~IModelResource() = default;
};
// clang-format on

} // namespace OvPlatform

__CRT_UUID_DECL(OvPlatform::IModelResource, 0xb04c6bf0, 0x3f0b, 0x4b53, 0x9a, 0x6d, 0x0b, 0x8f, 0x2f, 0x2a,
                0x5e, 0x11)

namespace OvPlatform {

/// Throws PackageError (XPS_E_NO_CUSTOM_OBJECTS) for an object that the model did not make.
CComPtr<IModelResource> ModelResource(IUnknown* resource);

/// A resource that lies in a package. The part's type says which kind of font or picture it is.
struct StoredResource {
    std::shared_ptr<const PackageReader> package;
    const PackagePart* part;
    bool isRestricted = false; // a font that a document says so of
};

// One for each kind. From streams: null for any argument is E_POINTER; the stream is kept, and read from its
// start. A font or picture of no published kind is E_INVALIDARG; an obfuscated font must be called by a GUID
// (XPS_E_INVALID_OBFUSCATED_FONT_URI).
HRESULT CreateEmbeddedFont(IStream* stream, XPS_FONT_EMBEDDING embedding, IOpcPartUri* uri, BOOL isObfuscated,
                           IXpsOMFontResource** font);
HRESULT CreateImage(IStream* stream, XPS_IMAGE_TYPE type, IOpcPartUri* uri, IXpsOMImageResource** image);
HRESULT CreateColorProfile(IStream* stream, IOpcPartUri* uri, IXpsOMColorProfileResource** profile);
HRESULT CreatePrintTicket(IStream* stream, IOpcPartUri* uri, IXpsOMPrintTicketResource** ticket);
HRESULT CreateDocumentStructure(IStream* stream, IOpcPartUri* uri,
                                IXpsOMDocumentStructureResource** structure);
HRESULT CreateStoryFragments(IStream* stream, IOpcPartUri* uri, IXpsOMStoryFragmentsResource** fragments);
HRESULT CreateSignatureBlock(IStream* stream, IOpcPartUri* uri, IXpsOMSignatureBlockResource** block);
/// The markup is read at once.
HRESULT CreateRemoteDictionary(IStream* markup, IOpcPartUri* uri, IXpsOMPartResources* resources,
                               IXpsOMRemoteDictionaryResource** dictionary);
HRESULT CreateRemoteDictionary(IXpsOMDictionary* content, IOpcPartUri* uri,
                               IXpsOMRemoteDictionaryResource** dictionary);

// The same for what lies in a package; nothing of it is read.
void MakeStored(const StoredResource& stored, IXpsOMFontResource** font);
void MakeStored(const StoredResource& stored, IXpsOMImageResource** image);
void MakeStored(const StoredResource& stored, IXpsOMColorProfileResource** profile);
void MakeStored(const StoredResource& stored, IXpsOMPrintTicketResource** ticket);
void MakeStored(const StoredResource& stored, IXpsOMDocumentStructureResource** structure);
void MakeStored(const StoredResource& stored, IXpsOMStoryFragmentsResource** fragments);
void MakeStored(const StoredResource& stored, IXpsOMSignatureBlockResource** block);
/// resources: what the dictionary may refer to, when it is read.
void MakeStoredDictionary(const StoredResource& stored, IXpsOMPartResources* resources,
                          IXpsOMRemoteDictionaryResource** dictionary);

/// The owner that a resource tells, not counted: the owner calls again with null before it ends.
void SetResourceOwner(IXpsOMDocumentStructureResource* resource, IXpsOMDocument* owner);
void SetResourceOwner(IXpsOMSignatureBlockResource* resource, IXpsOMDocument* owner);
void SetResourceOwner(IXpsOMStoryFragmentsResource* resource, IXpsOMPageReference* owner);

} // namespace OvPlatform
