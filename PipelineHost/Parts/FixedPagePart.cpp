#include "Parts/FixedPagePart.h"

#include "Parts/PartFactory.h"
#include "Streams/PrintWriteStream.h"

#include <utility>

namespace OvPipeline {

namespace {

constexpr std::size_t notThere = static_cast<std::size_t>(-1);

// Walks the parts of a page, which may change meanwhile.
class PagePartIterator final : public ComObject<IXpsPartIterator> {
public:
    explicit PagePartIterator(FixedPagePart* page) : m_page(page), m_owner(page) { Reset(); }

    void STDMETHODCALLTYPE Reset() override {
        m_next = 0;
        IsDone();
    }
    HRESULT STDMETHODCALLTYPE Current(BSTR* uri, IUnknown** part) override {
        if (uri != nullptr) *uri = nullptr;
        if (part != nullptr) *part = nullptr;
        return Guarded([&] {
            if (IsDone()) return E_ELEMENT_NOT_FOUND;
            CComPtr<IUnknown> object; // IsDone has passed over what is deleted
            if (part != nullptr) object = m_page->ObjectOf(m_next);
            if (uri != nullptr) *uri = NewBstr(m_page->Resources()[m_next].name);
            if (part != nullptr) *part = object.Detach();
            return S_OK;
        });
    }
    BOOL STDMETHODCALLTYPE IsDone() override {
        const auto& resources = m_page->Resources();
        while (m_next < resources.size() && resources[m_next].isDeleted)
            ++m_next;
        return m_next >= resources.size();
    }
    void STDMETHODCALLTYPE Next() override { ++m_next; }

private:
    ~PagePartIterator() override = default;

    FixedPagePart* m_page;
    CComPtr<IFixedPage> m_owner;
    std::size_t m_next = 0;
};

} // namespace

FixedPagePart::FixedPagePart(PartCore core, TicketSlot ticket, PageReference reference,
                             std::vector<PageResource> resources,
                             std::vector<OvPlatform::PackageRelationship> relationships)
    : m_core(std::move(core)), m_ticket(std::move(ticket)), m_reference(std::move(reference)),
      m_resources(std::move(resources)), m_relationships(std::move(relationships)) {}

HRESULT FixedPagePart::GetUri(BSTR* uri) {
    if (uri == nullptr) return E_POINTER;
    *uri = nullptr;
    return Guarded([&] {
        *uri = NewBstr(m_core.name);
        return S_OK;
    });
}

HRESULT FixedPagePart::GetStream(IPrintReadStream** stream) {
    if (stream == nullptr) return E_POINTER;
    *stream = nullptr;
    return Guarded([&] {
        ThreadPart() = m_core.name;
        if (m_core.context->job->Log().IsOn()) m_core.context->job->Log().Step("reads", m_core.name);
        // Who writes the new markup reads the old one meanwhile; the filters behind it wait for the new.
        const bool isReplaced =
            m_newMarkup && (m_newMarkup->Bytes()->IsComplete() || m_markupMaker != m_core.holder);
        *stream = new PrintReadStream(isReplaced ? m_newMarkup->Open() : m_core.content->Open());
        return S_OK;
    });
}

HRESULT FixedPagePart::GetPartCompression(EXpsCompressionOptions* compression) {
    if (compression == nullptr) return E_POINTER;
    return Guarded([&] {
        *compression = m_core.compression;
        return S_OK;
    });
}

HRESULT FixedPagePart::SetPartCompression(EXpsCompressionOptions compression) {
    return Guarded([&] {
        if (compression < Compression_NotCompressed || compression > Compression_Fast) return E_INVALIDARG;
        m_core.compression = compression;
        return S_OK;
    });
}

HRESULT FixedPagePart::GetPrintTicket(IPartPrintTicket** ticket) {
    ThreadPart() = m_core.name;
    const HRESULT hr = m_ticket.Get(ticket, PartKind::PrintTicket);
    if (SUCCEEDED(hr)) m_ticketCount.Asked(*m_core.context);
    return hr;
}

HRESULT FixedPagePart::GetPagePart(PCWSTR uri, IUnknown** part) {
    if (uri == nullptr || part == nullptr) return E_POINTER;
    *part = nullptr;
    return Guarded([&] {
        const std::string key = ResolvedKey(uri);
        if (const std::size_t index = IndexOf(key); index != notThere) {
            *part = ObjectOf(index).Detach();
            return S_OK;
        }
        const auto& package = m_core.context->package;
        const OvPlatform::PackagePart* stored = package ? package->Find(key) : nullptr;
        if (stored == nullptr || !IsResource(KindOf(stored->contentType, stored->name)))
            return E_ELEMENT_NOT_FOUND;
        *part = MakeStoredPart(m_core.context, *stored).Detach();
        return S_OK;
    });
}

HRESULT FixedPagePart::GetWriteStream(IPrintWriteStream** stream) {
    if (stream == nullptr) return E_POINTER;
    *stream = nullptr;
    return Guarded([&] {
        auto content = std::make_shared<SpooledContent>(m_core.name, m_core.context->job, m_core.holder);
        *stream = new PrintWriteStream(content->Bytes());
        m_newMarkup = std::move(content);
        m_markupMaker = m_core.holder;
        return S_OK;
    });
}

HRESULT FixedPagePart::SetPrintTicket(IPartPrintTicket* ticket) { return m_ticket.Set(ticket); }

HRESULT FixedPagePart::SetPagePart(IUnknown* part) {
    if (part == nullptr) return E_POINTER;
    return Guarded([&] {
        ThreadPart() = m_core.name; // in hand again, where the part was made for it
        if (CComQIPtr<IPartPrintTicket> ticket(part); ticket) {
            m_ticket.Set(ticket);
            return S_OK;
        }
        const CComQIPtr<IHostPart> host(part);
        const CComQIPtr<IFixedPage> page(part);
        if (!host || page) return E_INVALIDARG;

        const CComQIPtr<IPartThumbnail> thumbnail(part);
        const std::string& name = host->Core().name;
        const std::size_t index = IndexOf(LowerAscii(name));
        if (index != notThere) {
            PageResource& resource = m_resources[index];
            resource.object = part;
            resource.stored = nullptr;
            resource.viaDictionary = false;
            return S_OK;
        }
        PageResource resource;
        resource.name = name;
        resource.relationshipType = RelationType(thumbnail ? Relation::Thumbnail : Relation::RequiredResource,
                                                 m_core.context->flavour);
        resource.object = part;
        m_resources.push_back(std::move(resource));
        m_index.emplace(LowerAscii(name), m_resources.size() - 1);
        return S_OK;
    });
}

HRESULT FixedPagePart::DeleteResource(PCWSTR uri) {
    if (uri == nullptr) return E_POINTER;
    return Guarded([&] {
        const std::string key = ResolvedKey(uri);
        const std::size_t index = IndexOf(key);
        if (index == notThere) return E_ELEMENT_NOT_FOUND;
        m_resources[index].isDeleted = true;
        m_resources[index].object.Release();
        m_index.erase(key);
        return S_OK;
    });
}

HRESULT FixedPagePart::GetXpsPartIterator(IXpsPartIterator** iterator) {
    if (iterator == nullptr) return E_POINTER;
    *iterator = nullptr;
    return Guarded([&] {
        *iterator = new PagePartIterator(this);
        return S_OK;
    });
}

std::unique_ptr<ByteReader> FixedPagePart::OpenMarkup() const {
    return m_newMarkup ? m_newMarkup->Open() : m_core.content->Open();
}

CComPtr<IUnknown> FixedPagePart::ObjectOf(std::size_t index) {
    PageResource& resource = m_resources[index];
    if (!resource.object)
        resource.object = MakeStoredPart(m_core.context, *resource.stored,
                                         RelationOf(resource.relationshipType) == Relation::Thumbnail);
    return resource.object;
}

std::string FixedPagePart::ResolvedKey(PCWSTR uri) const {
    return LowerAscii(ResolveReference(m_core.name, Utf8(uri)));
}

std::size_t FixedPagePart::IndexOf(const std::string& key) {
    if (!std::exchange(m_isIndexed, true))
        for (std::size_t i = 0; i < m_resources.size(); ++i)
            m_index.emplace(LowerAscii(m_resources[i].name), i);
    const auto found = m_index.find(key);
    return found == m_index.end() ? notThere : found->second;
}

} // namespace OvPipeline
