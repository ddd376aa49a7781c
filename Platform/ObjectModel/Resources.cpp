#include "ObjectModel/Resources.h"

#include "ObjectModel/PageObjects.h"
#include "Package/PartName.h"

#include <algorithm>
#include <utility>

namespace OvPlatform {

template <>
struct ExtendedInterface<IXpsOMFontResource> {
    using Type = IXpsOMResource;
};
template <>
struct ExtendedInterface<IXpsOMImageResource> {
    using Type = IXpsOMResource;
};
template <>
struct ExtendedInterface<IXpsOMColorProfileResource> {
    using Type = IXpsOMResource;
};
template <>
struct ExtendedInterface<IXpsOMPrintTicketResource> {
    using Type = IXpsOMResource;
};
template <>
struct ExtendedInterface<IXpsOMDocumentStructureResource> {
    using Type = IXpsOMResource;
};
template <>
struct ExtendedInterface<IXpsOMStoryFragmentsResource> {
    using Type = IXpsOMResource;
};
template <>
struct ExtendedInterface<IXpsOMSignatureBlockResource> {
    using Type = IXpsOMResource;
};
template <>
struct ExtendedInterface<IXpsOMRemoteDictionaryResource> {
    using Type = IXpsOMResource;
};
template <>
struct ExtendedInterface<IXpsOMRemoteDictionaryResource1> {
    using Type = IXpsOMRemoteDictionaryResource;
};

namespace {

struct ImageTypeName {
    XPS_IMAGE_TYPE type;
    const char* contentType;
};
constexpr ImageTypeName imageTypes[] = {
    {XPS_IMAGE_TYPE_JPEG, "image/jpeg"}, {XPS_IMAGE_TYPE_PNG, "image/png"},
    {XPS_IMAGE_TYPE_TIFF, "image/tiff"}, {XPS_IMAGE_TYPE_WDP, "image/vnd.ms-photo"},
    {XPS_IMAGE_TYPE_JXR, "image/jxr"},
};

bool IsObfuscated(XPS_FONT_EMBEDDING embedding) {
    return embedding == XPS_FONT_EMBEDDING_OBFUSCATED || embedding == XPS_FONT_EMBEDDING_RESTRICTED;
}

template <class Interface>
class ResourceObject : public CountedObject<Interface, IModelResource> {
public:
    explicit ResourceObject(ResourceCore core) : m_core(std::move(core)) {}

    HRESULT STDMETHODCALLTYPE GetPartName(IOpcPartUri** uri) override {
        return GivePartUri(m_core.name, uri);
    }
    HRESULT STDMETHODCALLTYPE SetPartName(IOpcPartUri* uri) override {
        const HRESULT result = TakePartName(uri, m_core.name);
        if (SUCCEEDED(result)) m_core.stored = nullptr;
        return result;
    }
    ResourceCore& STDMETHODCALLTYPE Core() override { return m_core; }

protected:
    /// Other bytes, or the same under another name.
    void Replace(ResourceCore core) {
        m_core = std::move(core);
        CountRename();
    }

    ResourceCore m_core;
};

ResourceCore GivenCore(IStream* stream, IOpcPartUri* uri) {
    ResourceCore core;
    core.name = PartNameOf(uri);
    core.content = CallerContent(stream);
    return core;
}

ResourceCore CoreOf(const StoredResource& stored) {
    ResourceCore core;
    core.name = stored.part->name;
    core.content = StoredContent(stored.package, stored.part->name);
    core.stored = stored.part;
    core.package = stored.package;
    return core;
}

ObfuscationKey RequireKey(const std::string& name) {
    const auto key = ObfuscationKeyOf(name);
    if (!key)
        throw PackageError(XPS_E_INVALID_OBFUSCATED_FONT_URI, name,
                           "a font that is obfuscated needs a GUID as its name");
    return *key;
}

class FontResource final : public ResourceObject<IXpsOMFontResource> {
public:
    using ResourceObject::ResourceObject;

    static ResourceCore Given(IStream* stream, XPS_FONT_EMBEDDING embedding, IOpcPartUri* uri,
                              bool isObfuscated) {
        ResourceCore core = GivenCore(stream, uri);
        core.embedding = embedding;
        if (IsObfuscated(embedding)) RequireKey(core.name);
        if (isObfuscated) core.content = MaskedContent(core.content, RequireKey(core.name));
        return core;
    }
    static bool IsKnown(XPS_FONT_EMBEDDING embedding) {
        return embedding >= XPS_FONT_EMBEDDING_NORMAL &&
               embedding <= XPS_FONT_EMBEDDING_RESTRICTED_UNOBFUSCATED;
    }

    HRESULT STDMETHODCALLTYPE GetStream(IStream** stream) override {
        return OpenContentStream(m_core.content, stream);
    }
    HRESULT STDMETHODCALLTYPE SetContent(IStream* stream, XPS_FONT_EMBEDDING embedding,
                                         IOpcPartUri* uri) override {
        if (stream == nullptr || uri == nullptr) return E_POINTER;
        return ModelCall([&] {
            if (!IsKnown(embedding)) return E_INVALIDARG;
            Replace(Given(stream, embedding, uri, false));
            return S_OK;
        });
    }
    HRESULT STDMETHODCALLTYPE GetEmbeddingOption(XPS_FONT_EMBEDDING* embedding) override {
        if (embedding == nullptr) return E_POINTER;
        *embedding = m_core.embedding;
        return S_OK;
    }
    const char* STDMETHODCALLTYPE ContentType(XpsFlavour) override {
        return IsObfuscated(m_core.embedding) ? obfuscatedFontContentType : fontContentType;
    }
};

class ImageResource final : public ResourceObject<IXpsOMImageResource> {
public:
    using ResourceObject::ResourceObject;

    static const ImageTypeName* Find(XPS_IMAGE_TYPE type) {
        const auto* const row = std::find_if(std::begin(imageTypes), std::end(imageTypes),
                                             [&](const ImageTypeName& each) { return each.type == type; });
        return row == std::end(imageTypes) ? nullptr : row;
    }

    HRESULT STDMETHODCALLTYPE GetStream(IStream** stream) override {
        return OpenContentStream(m_core.content, stream);
    }
    HRESULT STDMETHODCALLTYPE SetContent(IStream* stream, XPS_IMAGE_TYPE type, IOpcPartUri* uri) override {
        if (stream == nullptr || uri == nullptr) return E_POINTER;
        return ModelCall([&] {
            if (Find(type) == nullptr) return E_INVALIDARG;
            ResourceCore core = GivenCore(stream, uri);
            core.imageType = type;
            Replace(std::move(core));
            return S_OK;
        });
    }
    HRESULT STDMETHODCALLTYPE GetImageType(XPS_IMAGE_TYPE* type) override {
        if (type == nullptr) return E_POINTER;
        *type = m_core.imageType;
        return S_OK;
    }
    const char* STDMETHODCALLTYPE ContentType(XpsFlavour) override {
        return Find(m_core.imageType)->contentType;
    }
};

// The content type of a kind that has but one, which the two formats may call otherwise.
struct PlainType {
    const char* ofXps;
    const char* ofOpenXps = ofXps;
    bool isOfFormat = false;
};

// Bytes of such a kind.
template <class Interface>
class PlainResource : public ResourceObject<Interface> {
public:
    PlainResource(ResourceCore core, const PlainType& type)
        : ResourceObject<Interface>(std::move(core)), m_type(type) {}

    HRESULT STDMETHODCALLTYPE GetStream(IStream** stream) override {
        return OpenContentStream(this->m_core.content, stream);
    }
    HRESULT STDMETHODCALLTYPE SetContent(IStream* stream, IOpcPartUri* uri) override {
        if (stream == nullptr || uri == nullptr) return E_POINTER;
        return ModelCall([&] {
            this->Replace(GivenCore(stream, uri));
            return S_OK;
        });
    }
    const char* STDMETHODCALLTYPE ContentType(XpsFlavour flavour) override {
        return flavour == XpsFlavour::OpenXps ? m_type.ofOpenXps : m_type.ofXps;
    }
    bool STDMETHODCALLTYPE IsOfFormat() override { return m_type.isOfFormat; }

private:
    const PlainType& m_type;
};

/// By which an owner reaches the resource's note of it.
/// clang-format off
MIDL_INTERFACE("b04c6bf0-3f0b-4b53-9a6d-0b8f2f2a5e12")
IOwned : public IUnknown {
public:
    virtual void STDMETHODCALLTYPE SetOwner(IUnknown * owner) = 0;

protected:
    ~IOwned() = default;
};
// clang-format on

constexpr IID ownedIdentifier = {
    0xb04c6bf0, 0x3f0b, 0x4b53, {0x9a, 0x6d, 0x0b, 0x8f, 0x2f, 0x2a, 0x5e, 0x12}};

template <class Interface, class Owner>
class OwnedResource final : public PlainResource<Interface>, public IOwned {
public:
    using PlainResource<Interface>::PlainResource;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** object) override {
        if (object == nullptr || riid != ownedIdentifier)
            return PlainResource<Interface>::QueryInterface(riid, object);
        *object = static_cast<IOwned*>(this);
        this->AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return PlainResource<Interface>::AddRef(); }
    ULONG STDMETHODCALLTYPE Release() override { return PlainResource<Interface>::Release(); }

    HRESULT STDMETHODCALLTYPE GetOwner(Owner** owner) override {
        return ModelCall(owner, [&] {
            *owner = m_owner;
            if (m_owner != nullptr) m_owner->AddRef();
            return S_OK;
        });
    }
    void STDMETHODCALLTYPE SetOwner(IUnknown* owner) override { m_owner = static_cast<Owner*>(owner); }

private:
    Owner* m_owner = nullptr;
};

using DocumentStructure = OwnedResource<IXpsOMDocumentStructureResource, IXpsOMDocument>;
using StoryFragments = OwnedResource<IXpsOMStoryFragmentsResource, IXpsOMPageReference>;
using SignatureBlock = OwnedResource<IXpsOMSignatureBlockResource, IXpsOMDocument>;

constexpr PlainType ticketType{ticketContentType};
constexpr PlainType profileType{"application/vnd.ms-color.iccprofile"};
constexpr const char* structureName = "application/vnd.ms-package.xps-documentstructure+xml";
constexpr const char* fragmentsName = "application/vnd.ms-package.xps-storyfragments+xml";
constexpr PlainType structureType{structureName, structureName, true};
constexpr PlainType fragmentsType{fragmentsName, fragmentsName, true};
constexpr PlainType signatureBlockType{"application/xml",
                                       "application/vnd.ms-package.xps-signaturedefinitions+xml", true};

// Its markup stays as it is stored until the objects in it are asked for.
class RemoteDictionary final : public ResourceObject<IXpsOMRemoteDictionaryResource1> {
public:
    RemoteDictionary(ResourceCore core, IXpsOMPartResources* resources, IXpsOMDictionary* dictionary)
        : ResourceObject(std::move(core)), m_readAs(m_core.name), m_resources(resources),
          m_dictionary(dictionary) {
        if (m_dictionary)
            Require(SetDictionaryOwner(m_dictionary, Identity()), m_core.name, "the dictionary is another's");
    }
    ~RemoteDictionary() override {
        if (m_dictionary) SetDictionaryOwner(m_dictionary, nullptr);
    }

    HRESULT STDMETHODCALLTYPE GetDictionary(IXpsOMDictionary** dictionary) override {
        return ModelCall(dictionary, [&] {
            if (!m_dictionary) Read();
            *dictionary = CComPtr<IXpsOMDictionary>(m_dictionary).Detach();
            return S_OK;
        });
    }
    HRESULT STDMETHODCALLTYPE SetDictionary(IXpsOMDictionary* dictionary) override {
        if (dictionary == nullptr) return E_POINTER;
        return ModelCall([&] {
            const HRESULT result = SetDictionaryOwner(dictionary, Identity());
            if (FAILED(result)) return result;
            if (m_dictionary && m_dictionary != dictionary) SetDictionaryOwner(m_dictionary, nullptr);
            m_dictionary = dictionary;
            m_core.content.reset();
            m_core.stored = nullptr;
            return S_OK;
        });
    }
    HRESULT STDMETHODCALLTYPE GetDocumentType(XPS_DOCUMENT_TYPE* type) override {
        if (type == nullptr) return E_POINTER;
        *type = XPS_DOCUMENT_TYPE_UNSPECIFIED;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Write1(ISequentialStream* stream, XPS_DOCUMENT_TYPE type) override {
        if (stream == nullptr) return E_POINTER;
        return ModelCall([&] {
            CComPtr<IOpcPartUri> uri;
            if (const HRESULT result = GetPartName(&uri); FAILED(result)) return result;
            if (!m_dictionary) Read();
            return WriteDictionary(m_dictionary, uri, stream, type);
        });
    }
    const char* STDMETHODCALLTYPE ContentType(XpsFlavour) override { return dictionaryContentType; }

private:
    IUnknown* Identity() { return static_cast<IXpsOMRemoteDictionaryResource1*>(this); }

    void Read() {
        CComPtr<IStream> markup;
        Require(OpenContentStream(m_core.content, &markup), m_core.name, "it cannot be read");
        // It may have got another name since; its references are relative to the first.
        CComPtr<IOpcPartUri> uri;
        Require(GivePartUri(m_readAs, &uri), m_core.name, "it cannot be read");
        CComPtr<IXpsOMDictionary> dictionary;
        Require(ReadDictionary(markup, uri, m_resources, &dictionary), m_core.name,
                "the resource dictionary cannot be read");
        Require(SetDictionaryOwner(dictionary, Identity()), m_core.name, "it cannot be read");
        m_dictionary = dictionary;
        // From now on the objects may change.
        m_core.content.reset();
        m_core.stored = nullptr;
    }

    const std::string m_readAs;
    CComPtr<IXpsOMPartResources> m_resources;
    CComPtr<IXpsOMDictionary> m_dictionary;
};

template <class Object, class Interface, class... Arguments>
void Make(Interface** resource, Arguments&&... arguments) {
    *resource = new Object(std::forward<Arguments>(arguments)...);
}

template <class Object, class Interface>
HRESULT CreatePlain(IStream* stream, IOpcPartUri* uri, const PlainType& type, Interface** resource) {
    return ModelCall(resource, [&] {
        if (stream == nullptr || uri == nullptr) return E_POINTER;
        Make<Object>(resource, GivenCore(stream, uri), type);
        return S_OK;
    });
}

void SetOwner(IUnknown* resource, IUnknown* owner) {
    CComPtr<IOwned> owned;
    if (resource != nullptr) resource->QueryInterface(ownedIdentifier, reinterpret_cast<void**>(&owned.p));
    if (owned) owned->SetOwner(owner);
}

} // namespace

CComPtr<IModelResource> ModelResource(IUnknown* resource) {
    CComPtr<IModelResource> own;
    if (resource != nullptr) resource->QueryInterface(&own);
    if (!own) throw PackageError(XPS_E_NO_CUSTOM_OBJECTS, "a resource", "the object model did not make it");
    return own;
}

HRESULT CreateEmbeddedFont(IStream* stream, XPS_FONT_EMBEDDING embedding, IOpcPartUri* uri, BOOL isObfuscated,
                           IXpsOMFontResource** font) {
    return ModelCall(font, [&] {
        if (stream == nullptr || uri == nullptr) return E_POINTER;
        if (!FontResource::IsKnown(embedding)) return E_INVALIDARG;
        Make<FontResource>(font, FontResource::Given(stream, embedding, uri, isObfuscated != FALSE));
        return S_OK;
    });
}

HRESULT CreateImage(IStream* stream, XPS_IMAGE_TYPE type, IOpcPartUri* uri, IXpsOMImageResource** image) {
    return ModelCall(image, [&] {
        if (stream == nullptr || uri == nullptr) return E_POINTER;
        if (ImageResource::Find(type) == nullptr) return E_INVALIDARG;
        ResourceCore core = GivenCore(stream, uri);
        core.imageType = type;
        Make<ImageResource>(image, std::move(core));
        return S_OK;
    });
}

HRESULT CreateColorProfile(IStream* stream, IOpcPartUri* uri, IXpsOMColorProfileResource** profile) {
    return CreatePlain<PlainResource<IXpsOMColorProfileResource>>(stream, uri, profileType, profile);
}
HRESULT CreatePrintTicket(IStream* stream, IOpcPartUri* uri, IXpsOMPrintTicketResource** ticket) {
    return CreatePlain<PlainResource<IXpsOMPrintTicketResource>>(stream, uri, ticketType, ticket);
}
HRESULT CreateDocumentStructure(IStream* stream, IOpcPartUri* uri,
                                IXpsOMDocumentStructureResource** structure) {
    return CreatePlain<DocumentStructure>(stream, uri, structureType, structure);
}
HRESULT CreateStoryFragments(IStream* stream, IOpcPartUri* uri, IXpsOMStoryFragmentsResource** fragments) {
    return CreatePlain<StoryFragments>(stream, uri, fragmentsType, fragments);
}
HRESULT CreateSignatureBlock(IStream* stream, IOpcPartUri* uri, IXpsOMSignatureBlockResource** block) {
    return CreatePlain<SignatureBlock>(stream, uri, signatureBlockType, block);
}

HRESULT CreateRemoteDictionary(IStream* markup, IOpcPartUri* uri, IXpsOMPartResources* resources,
                               IXpsOMRemoteDictionaryResource** dictionary) {
    return ModelCall(dictionary, [&] {
        if (markup == nullptr || uri == nullptr || resources == nullptr) return E_POINTER;
        ResourceCore core;
        core.name = PartNameOf(uri);
        CComPtr<IXpsOMDictionary> content;
        if (const HRESULT result = ReadDictionary(markup, uri, resources, &content); FAILED(result))
            return result;
        Make<RemoteDictionary>(dictionary, std::move(core), nullptr, content.p);
        return S_OK;
    });
}

HRESULT CreateRemoteDictionary(IXpsOMDictionary* content, IOpcPartUri* uri,
                               IXpsOMRemoteDictionaryResource** dictionary) {
    return ModelCall(dictionary, [&] {
        if (content == nullptr || uri == nullptr) return E_POINTER;
        ResourceCore core;
        core.name = PartNameOf(uri);
        Make<RemoteDictionary>(dictionary, std::move(core), nullptr, content);
        return S_OK;
    });
}

void MakeStored(const StoredResource& stored, IXpsOMFontResource** font) {
    ResourceCore core = CoreOf(stored);
    const bool isObfuscated = IsObfuscatedFontType(stored.part->contentType);
    core.embedding = stored.isRestricted ? isObfuscated ? XPS_FONT_EMBEDDING_RESTRICTED
                                                        : XPS_FONT_EMBEDDING_RESTRICTED_UNOBFUSCATED
                     : isObfuscated      ? XPS_FONT_EMBEDDING_OBFUSCATED
                                         : XPS_FONT_EMBEDDING_NORMAL;
    // One whose name is no key lies there plain.
    if (const auto key = ObfuscationKeyOf(core.name); key && isObfuscated)
        core.content = MaskedContent(core.content, *key);
    Make<FontResource>(font, std::move(core));
}

void MakeStored(const StoredResource& stored, IXpsOMImageResource** image) {
    ResourceCore core = CoreOf(stored);
    for (const ImageTypeName& row : imageTypes)
        if (ComparePartNames(row.contentType, stored.part->contentType) == 0) core.imageType = row.type;
    Make<ImageResource>(image, std::move(core));
}

void MakeStored(const StoredResource& stored, IXpsOMColorProfileResource** profile) {
    Make<PlainResource<IXpsOMColorProfileResource>>(profile, CoreOf(stored), profileType);
}
void MakeStored(const StoredResource& stored, IXpsOMPrintTicketResource** ticket) {
    Make<PlainResource<IXpsOMPrintTicketResource>>(ticket, CoreOf(stored), ticketType);
}
void MakeStored(const StoredResource& stored, IXpsOMDocumentStructureResource** structure) {
    Make<DocumentStructure>(structure, CoreOf(stored), structureType);
}
void MakeStored(const StoredResource& stored, IXpsOMStoryFragmentsResource** fragments) {
    Make<StoryFragments>(fragments, CoreOf(stored), fragmentsType);
}
void MakeStored(const StoredResource& stored, IXpsOMSignatureBlockResource** block) {
    Make<SignatureBlock>(block, CoreOf(stored), signatureBlockType);
}

void MakeStoredDictionary(const StoredResource& stored, IXpsOMPartResources* resources,
                          IXpsOMRemoteDictionaryResource** dictionary) {
    Make<RemoteDictionary>(dictionary, CoreOf(stored), resources, nullptr);
}

void SetResourceOwner(IXpsOMDocumentStructureResource* resource, IXpsOMDocument* owner) {
    SetOwner(resource, owner);
}
void SetResourceOwner(IXpsOMSignatureBlockResource* resource, IXpsOMDocument* owner) {
    SetOwner(resource, owner);
}
void SetResourceOwner(IXpsOMStoryFragmentsResource* resource, IXpsOMPageReference* owner) {
    SetOwner(resource, owner);
}

} // namespace OvPlatform
