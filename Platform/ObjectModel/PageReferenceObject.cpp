#include "ObjectModel/PageReferenceObject.h"

#include "ObjectModel/PageObjects.h"

#include <array>
#include <charconv>
#include <utility>

namespace OvPlatform {

namespace {

constexpr float unsaid = -1;

float Number(const std::string& text) {
    float number = unsaid;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size() ? number : unsaid;
}

std::string Text(float number) {
    if (number == unsaid) return {};
    std::array<char, 64> text;
    const auto [end, error] = std::to_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() ? std::string(text.data(), end) : std::string();
}

// Also for a number that is none.
bool IsSize(float number) { return number == unsaid || (number >= 1 && number <= 1e12F); }
bool IsSize(const XPS_SIZE& size) { return IsSize(size.width) && IsSize(size.height); }

} // namespace

HRESULT PageReferenceObject::Create(const XPS_SIZE* size, IXpsOMPageReference** reference) {
    return ModelCall(reference, [&] {
        if (size == nullptr) return E_POINTER;
        if (!IsSize(*size)) return XPS_E_INVALID_PAGE_SIZE;
        *reference = new PageReferenceObject(*size);
        return S_OK;
    });
}

PageReferenceObject::PageReferenceObject(const XPS_SIZE& size) { SetSize(size); }

PageReferenceObject::PageReferenceObject(std::shared_ptr<SourcePackage> package, SourcePage page)
    : m_place{std::move(package), page.part->name}, m_part(page.part), m_reference(std::move(page.reference)),
      m_origin(std::move(page.origin)) {}

PageReferenceObject::~PageReferenceObject() {
    SetResourceOwner(m_fragments.Changed(), nullptr);
    LetGoOfPage();
}

void PageReferenceObject::LetGoOfPage() {
    if (m_page) SetPageOwner(m_page, nullptr);
    m_page.Release();
}

void PageReferenceObject::SetSize(const XPS_SIZE& size) {
    m_reference.width = Text(size.width);
    m_reference.height = Text(size.height);
    m_isReferenceChanged = true;
}

HRESULT PageReferenceObject::GetOwner(IXpsOMDocument** document) {
    return ModelCall(document, [&] {
        *document = CComPtr<IXpsOMDocument>(m_owner).Detach();
        return S_OK;
    });
}

CComPtr<IXpsOMPage> PageReferenceObject::LoadedPage() {
    if (m_page) return m_page;
    if (m_part == nullptr || m_isReplaced)
        throw PackageError(XPS_E_MISSING_PAGE_IN_PAGEREFERENCE, "a page reference", "it has no page");
    // A fault in what hangs on the page is one of the page.
    static_cast<void>(m_ticket.Get(m_place));
    CComPtr<IStream> markup;
    Require(OpenContentStream(StoredContent(m_place.package->SharedReader(), m_part->name), &markup),
            m_part->name, "it cannot be read");
    CComPtr<IOpcPartUri> uri;
    Require(GivePartUri(m_part->name, &uri), m_part->name, "it cannot be read");
    const auto resources = m_place.package->ResourcesOf(m_part->name);
    CComPtr<IXpsOMPage1> page;
    Require(ReadPage(markup, uri, resources, FALSE, &page), m_part->name, "the page cannot be read");
    Require(SetPageOwner(page, this), m_part->name, "the page cannot be read");
    m_page = page.p;
    return m_page;
}

HRESULT PageReferenceObject::GetPage(IXpsOMPage** page) {
    return ModelCall(page, [&] {
        *page = LoadedPage().Detach();
        return S_OK;
    });
}

HRESULT PageReferenceObject::SetPage(IXpsOMPage* page) {
    if (page == nullptr) return E_POINTER;
    return ModelCall([&] {
        if (m_page == page) return S_OK;
        if (const HRESULT result = SetPageOwner(page, this); FAILED(result)) return result;
        LetGoOfPage();
        m_page = page;
        m_isReplaced = true;
        CountRename();
        return S_OK;
    });
}

HRESULT PageReferenceObject::DiscardPage() {
    return ModelCall([&] {
        LetGoOfPage();
        m_isReplaced = false;
        CountRename();
        return S_OK;
    });
}

HRESULT PageReferenceObject::IsPageLoaded(BOOL* isLoaded) {
    if (isLoaded == nullptr) return E_POINTER;
    *isLoaded = m_page ? TRUE : FALSE;
    return S_OK;
}

HRESULT PageReferenceObject::GetAdvisoryPageDimensions(XPS_SIZE* size) {
    if (size == nullptr) return E_POINTER;
    size->width = Number(m_reference.width);
    size->height = Number(m_reference.height);
    return S_OK;
}

HRESULT PageReferenceObject::SetAdvisoryPageDimensions(const XPS_SIZE* size) {
    if (size == nullptr) return E_POINTER;
    return ModelCall([&] {
        if (!IsSize(*size)) return XPS_E_INVALID_PAGE_SIZE;
        SetSize(*size);
        return S_OK;
    });
}

HRESULT PageReferenceObject::GetStoryFragmentsResource(IXpsOMStoryFragmentsResource** fragments) {
    const HRESULT result = m_fragments.Give(m_place, fragments);
    if (SUCCEEDED(result)) SetResourceOwner(*fragments, this);
    return result;
}
HRESULT PageReferenceObject::SetStoryFragmentsResource(IXpsOMStoryFragmentsResource* fragments) {
    const HRESULT result = m_fragments.Take(fragments);
    if (SUCCEEDED(result)) SetResourceOwner(fragments, this);
    return result;
}
HRESULT PageReferenceObject::GetPrintTicketResource(IXpsOMPrintTicketResource** ticket) {
    return m_ticket.Give(m_place, ticket);
}
HRESULT PageReferenceObject::SetPrintTicketResource(IXpsOMPrintTicketResource* ticket) {
    return m_ticket.Take(ticket);
}
HRESULT PageReferenceObject::GetThumbnailResource(IXpsOMImageResource** image) {
    return m_thumbnail.Give(m_place, image);
}
HRESULT PageReferenceObject::SetThumbnailResource(IXpsOMImageResource* image) {
    return m_thumbnail.Take(image);
}

HRESULT PageReferenceObject::CollectLinkTargets(IXpsOMNameCollection** targets) {
    return CreateNameCollection(m_reference.linkTargets, targets);
}

CComPtr<PartResources> PageReferenceObject::CollectResources() {
    CComPtr<PartResources> resources;
    resources.Attach(new PartResources);
    if (m_page) {
        std::vector<UsedPart> used;
        Require(ListUsedParts(m_page, used), Name(), "what it uses cannot be listed");
        for (const UsedPart& part : used)
            if (part.resource) resources->Fill(part.resource);
    } else if (m_place) {
        for (const PackagePart* part : m_place.package->AllRelated(m_part->name, Relation::RequiredResource))
            if (const auto resource = m_place.package->PageResource(*part); resource)
                resources->Fill(resource);
    }
    return resources;
}

HRESULT PageReferenceObject::CollectPartResources(IXpsOMPartResources** resources) {
    return ModelCall(resources, [&] {
        *resources = CollectResources().Detach();
        return S_OK;
    });
}

HRESULT PageReferenceObject::HasRestrictedFonts(BOOL* has) {
    if (has == nullptr) return E_POINTER;
    *has = FALSE;
    return ModelCall([&] {
        const auto resources = CollectResources();
        for (const auto& font : resources->Fonts().Items())
            if (ModelResource(font)->Core().embedding >= XPS_FONT_EMBEDDING_RESTRICTED) *has = TRUE;
        return S_OK;
    });
}

HRESULT PageReferenceObject::Clone(IXpsOMPageReference**) { return E_NOTIMPL; }

std::string PageReferenceObject::Name() const {
    if (m_page) return PartNameOf(m_page);
    if (m_part == nullptr || m_isReplaced)
        throw PackageError(XPS_E_MISSING_PAGE_IN_PAGEREFERENCE, "a page reference", "it has no page");
    return m_part->name;
}

IXpsOMPage* PageReferenceObject::ChangedPage() const {
    return m_page && (m_isReplaced || m_part == nullptr || IsPageChanged(m_page) ||
                      RefersToRenamedParts(m_page) || ComparePartNames(PartNameOf(m_page), m_part->name) != 0)
               ? m_page.p
               : nullptr;
}

} // namespace OvPlatform
