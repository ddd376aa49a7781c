#include "XpsParts/MsOMConvertor.h"

#include "ComSupport/MsSafeHGlobal.h"
#include "ComSupport/ThrowHresult.h"

#include <LowLevelFacilities/WideStrings/CXString.h>

#include <algorithm>
#include <cstddef>
#include <limits>
#include <vector>

namespace {

// Fills the block as far as the reader gives bytes, and says how far that is. The size is what the reader
// said of itself: it may have more, or less, or tell of more than it was asked for.
std::size_t FillBlock(IPrintReadStream& reader, MsSafeHGlobal& block, std::size_t size) {
    const auto lock = block.Lock();
    auto* const bytes = static_cast<std::byte*>(lock->GetAddress());
    std::size_t offset = 0;
    BOOL endOfFile = FALSE;
    do {
        const auto request =
            static_cast<ULONG>((std::min)(size - offset, std::size_t{(std::numeric_limits<ULONG>::max)()}));
        ULONG count = 0;
        ThrowIfFailed(reader.ReadBytes(bytes + offset, request, &count, &endOfFile));
        if (count > request) ThrowComException(E_UNEXPECTED);
        if (count == 0) break;
        offset += count;
    } while (!endOfFile && offset < size);
    return offset;
}

CComPtr<IPrintReadStream> ReaderOf(IPartBase* part) {
    if (!part) ThrowComException(E_INVALIDARG);
    CComPtr<IPrintReadStream> reader;
    ThrowIfFailed(part->GetStream(&reader));
    return reader;
}

CComPtr<IStream> CopyInMemory(const CComPtr<IPrintReadStream>& reader, ULONGLONG largest) {
    if (!reader) ThrowComException(E_INVALIDARG);
    ULONGLONG size = 0;
    ThrowIfFailed(reader->Seek(0, STREAM_SEEK_END, &size));
    if (size > largest) ThrowComException(E_OUTOFMEMORY);
    ULONGLONG start = 0;
    ThrowIfFailed(reader->Seek(0, STREAM_SEEK_SET, &start));

    MsSafeHGlobal block(GMEM_FIXED, static_cast<std::size_t>(size));
    ULARGE_INTEGER filled;
    filled.QuadPart = FillBlock(*reader, block, static_cast<std::size_t>(size));
    CComPtr<IStream> stream = block.ConvertToIStream();
    // What was never read is no content.
    if (filled.QuadPart < size) ThrowIfFailed(stream->SetSize(filled));
    ThrowIfFailed(stream->Seek(LARGE_INTEGER{}, STREAM_SEEK_SET, nullptr));
    return stream;
}

template <class Part>
void RequireArguments(const Part& part, const CComPtr<IXpsOMObjectFactory>& objectFactory,
                      const CComPtr<IOpcFactory>& opcFactory) {
    if (!part || !objectFactory || !opcFactory) ThrowComException(E_INVALIDARG);
}

// What an object is made of, whatever kind of part it is.
struct PartCopy {
    CComPtr<IStream> stream;
    CComPtr<IOpcPartUri> uri;

    template <class Part>
    PartCopy(const CComPtr<Part>& part, const CComPtr<IXpsOMObjectFactory>& objectFactory,
             const CComPtr<IOpcFactory>& opcFactory) {
        RequireArguments(part, objectFactory, opcFactory);
        const CComPtr<IPartBase> base(part.p);
        stream = GetIStreamFromPart(base);
        uri = CreateOpcPartUriFromPart(base, opcFactory);
    }
};

struct ImageTypeRow {
    const wchar_t* contentType;
    XPS_IMAGE_TYPE type;
};
constexpr ImageTypeRow imageTypes[] = {
    {L"image/jpeg", XPS_IMAGE_TYPE_JPEG},
    {L"image/png", XPS_IMAGE_TYPE_PNG},
    {L"image/tiff", XPS_IMAGE_TYPE_TIFF},
    {L"image/vnd.ms-photo", XPS_IMAGE_TYPE_WDP},
};

XPS_IMAGE_TYPE ImageTypeOf(IPartImage& part) {
    CComBSTR contentType;
    ThrowIfFailed(part.GetImageProperties(&contentType));
    const CXString wanted(contentType.m_str);
    for (const ImageTypeRow& row : imageTypes)
        if (wanted.CompareNoCase(row.contentType) == 0) return row.type;
    ThrowComException(E_INVALIDARG);
}

XPS_FONT_EMBEDDING EmbeddingOf(IPartFont& part) {
    EXpsFontRestriction restriction{};
    if (const CComQIPtr<IPartFont2> restricted(&part); restricted)
        ThrowIfFailed(restricted->GetFontRestriction(&restriction));
    CComBSTR contentType; // says nothing that the options do not
    EXpsFontOptions options{};
    ThrowIfFailed(part.GetFontProperties(&contentType, &options));
    if (options == Font_Normal) return XPS_FONT_EMBEDDING_NORMAL;
    const bool mayNotBeTaken =
        (restriction & (Xps_Restricted_Font_NoEmbedding | Xps_Restricted_Font_PreviewPrint)) != 0;
    return options == Font_Obfusticate && mayNotBeTaken ? XPS_FONT_EMBEDDING_RESTRICTED
                                                        : XPS_FONT_EMBEDDING_OBFUSCATED;
}

// The collections of a page's resources, filled part by part.
class ResourceCollector {
public:
    ResourceCollector(const CComPtr<IXpsOMObjectFactory>& objectFactory,
                      const CComPtr<IOpcFactory>& opcFactory)
        : m_objectFactory(objectFactory), m_opcFactory(opcFactory) {
        ThrowIfFailed(objectFactory->CreatePartResources(&m_resources));
        ThrowIfFailed(m_resources->GetFontResources(&m_fonts));
        ThrowIfFailed(m_resources->GetImageResources(&m_images));
        ThrowIfFailed(m_resources->GetColorProfileResources(&m_profiles));
        ThrowIfFailed(m_resources->GetRemoteDictionaryResources(&m_dictionaries));
    }

    void Take(IUnknown* part) {
        if (const CComQIPtr<IPartFont> font(part); font)
            ThrowIfFailed(m_fonts->Append(CreateFontFromIPartFont(font, m_objectFactory, m_opcFactory)));
        else if (const CComQIPtr<IPartImage> image(part); image)
            ThrowIfFailed(m_images->Append(CreateImageFromIPartImage(image, m_objectFactory, m_opcFactory)));
        else if (const CComQIPtr<IPartColorProfile> profile(part); profile)
            ThrowIfFailed(m_profiles->Append(
                CreateProfileFromIPartColorProfile(profile, m_objectFactory, m_opcFactory)));
        else if (const CComQIPtr<IPartResourceDictionary> dictionary(part); dictionary)
            m_waiting.push_back(dictionary);
    }

    // Dictionaries refer to the other parts, so they come when those are there.
    CComPtr<IXpsOMPartResources> Finish() {
        for (const auto& dictionary : m_waiting)
            ThrowIfFailed(m_dictionaries->Append(CreateDictionaryFromIPartResourceDictionary(
                dictionary, m_objectFactory, m_opcFactory, m_resources)));
        return m_resources;
    }

private:
    CComPtr<IXpsOMObjectFactory> m_objectFactory;
    CComPtr<IOpcFactory> m_opcFactory;
    CComPtr<IXpsOMPartResources> m_resources;
    CComPtr<IXpsOMFontResourceCollection> m_fonts;
    CComPtr<IXpsOMImageResourceCollection> m_images;
    CComPtr<IXpsOMColorProfileResourceCollection> m_profiles;
    CComPtr<IXpsOMRemoteDictionaryResourceCollection> m_dictionaries;
    std::vector<CComPtr<IPartResourceDictionary>> m_waiting;
};

} // namespace

CComPtr<IStream> GetIStreamFromPart(const CComPtr<IPartBase>& part) {
    const OperationScope operation("GetIStreamFromPart");
    return CreateIStreamFromIPrintReadStream(ReaderOf(part));
}

CComPtr<IStream> CreateIStreamFromIPrintReadStream(const CComPtr<IPrintReadStream>& reader) {
    const OperationScope operation("CreateIStreamFromIPrintReadStream");
    return CopyInMemory(reader, (std::numeric_limits<ULONGLONG>::max)());
}

CComPtr<IStream> GetIStreamFromTicket(const CComPtr<IPartPrintTicket>& ticket) {
    const OperationScope operation("GetIStreamFromTicket");
    return CreateIStreamFromTicketStream(ReaderOf(ticket));
}

CComPtr<IStream> CreateIStreamFromTicketStream(const CComPtr<IPrintReadStream>& reader) {
    const OperationScope operation("CreateIStreamFromTicketStream");
    return CopyInMemory(reader, mostTicketBytes);
}

CComPtr<IOpcPartUri> CreateOpcPartUriFromPart(const CComPtr<IPartBase>& part,
                                              const CComPtr<IOpcFactory>& factory) {
    const OperationScope operation("CreateOpcPartUriFromPart");
    if (!part || !factory) ThrowComException(E_INVALIDARG);
    CComBSTR name;
    ThrowIfFailed(part->GetUri(&name));
    CComPtr<IOpcPartUri> uri;
    ThrowIfFailed(factory->CreatePartUri(name, &uri));
    return uri;
}

CComPtr<IXpsOMPage> CreateXpsOMPageFromIFixedPage(const CComPtr<IFixedPage>& page,
                                                  const CComPtr<IXpsOMObjectFactory>& objectFactory,
                                                  const CComPtr<IOpcFactory>& opcFactory) {
    const OperationScope operation("CreateXpsOMPageFromIFixedPage");
    const PartCopy copy(page, objectFactory, opcFactory);
    const CComPtr<IXpsOMPartResources> resources = CollectPageResources(page, objectFactory, opcFactory);
    CComPtr<IXpsOMPage> made;
    ThrowIfFailed(objectFactory->CreatePageFromStream(copy.stream, copy.uri, resources, FALSE, &made));
    return made;
}

CComPtr<IXpsOMPartResources> CollectPageResources(const CComPtr<IFixedPage>& page,
                                                  const CComPtr<IXpsOMObjectFactory>& objectFactory,
                                                  const CComPtr<IOpcFactory>& opcFactory) {
    const OperationScope operation("CollectPageResources");
    RequireArguments(page, objectFactory, opcFactory);
    ResourceCollector collector(objectFactory, opcFactory);
    CComPtr<IXpsPartIterator> parts;
    ThrowIfFailed(page->GetXpsPartIterator(&parts));
    for (; !parts->IsDone(); parts->Next()) {
        CComBSTR uri;
        CComPtr<IUnknown> part;
        ThrowIfFailed(parts->Current(&uri, &part));
        collector.Take(part);
    }
    return collector.Finish();
}

CComPtr<IXpsOMImageResource> CreateImageFromIPartImage(const CComPtr<IPartImage>& part,
                                                       const CComPtr<IXpsOMObjectFactory>& objectFactory,
                                                       const CComPtr<IOpcFactory>& opcFactory) {
    const OperationScope operation("CreateImageFromIPartImage");
    const PartCopy copy(part, objectFactory, opcFactory);
    CComPtr<IXpsOMImageResource> image;
    ThrowIfFailed(objectFactory->CreateImageResource(copy.stream, ImageTypeOf(*part), copy.uri, &image));
    return image;
}

CComPtr<IXpsOMColorProfileResource>
CreateProfileFromIPartColorProfile(const CComPtr<IPartColorProfile>& part,
                                   const CComPtr<IXpsOMObjectFactory>& objectFactory,
                                   const CComPtr<IOpcFactory>& opcFactory) {
    const OperationScope operation("CreateProfileFromIPartColorProfile");
    const PartCopy copy(part, objectFactory, opcFactory);
    CComPtr<IXpsOMColorProfileResource> profile;
    ThrowIfFailed(objectFactory->CreateColorProfileResource(copy.stream, copy.uri, &profile));
    return profile;
}

CComPtr<IXpsOMRemoteDictionaryResource> CreateDictionaryFromIPartResourceDictionary(
    const CComPtr<IPartResourceDictionary>& part, const CComPtr<IXpsOMObjectFactory>& objectFactory,
    const CComPtr<IOpcFactory>& opcFactory, const CComPtr<IXpsOMPartResources>& resources) {
    const OperationScope operation("CreateDictionaryFromIPartResourceDictionary");
    if (!resources) ThrowComException(E_INVALIDARG);
    const PartCopy copy(part, objectFactory, opcFactory);
    CComPtr<IXpsOMRemoteDictionaryResource> dictionary;
    ThrowIfFailed(objectFactory->CreateRemoteDictionaryResourceFromStream(copy.stream, copy.uri, resources,
                                                                          &dictionary));
    return dictionary;
}

CComPtr<IXpsOMFontResource> CreateFontFromIPartFont(const CComPtr<IPartFont>& part,
                                                    const CComPtr<IXpsOMObjectFactory>& objectFactory,
                                                    const CComPtr<IOpcFactory>& opcFactory) {
    const OperationScope operation("CreateFontFromIPartFont");
    const PartCopy copy(part, objectFactory, opcFactory);
    CComPtr<IXpsOMFontResource> font;
    ThrowIfFailed(objectFactory->CreateFontResource(copy.stream, EmbeddingOf(*part), copy.uri, FALSE, &font));
    return font;
}
