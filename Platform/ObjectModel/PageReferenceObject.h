#pragma once

#include "ObjectModel/OwnObject.h"
#include "ObjectModel/RelatedPart.h"

#include <xpsobjectmodel.h>

#include <memory>
#include <string>
#include <vector>

namespace OvPlatform {

/// A document's reference to a page. The page is read when it is first asked for; until then it is copied as
/// it lies in the package.
class PageReferenceObject final : public OwnObject<PageReferenceObject, IXpsOMPageReference> {
public:
    static constexpr IID identifier = {
        0xb04c6bf0, 0x3f0b, 0x4b53, {0x9a, 0x6d, 0x0b, 0x8f, 0x2f, 0x2a, 0x5e, 0x13}};

    /// To a page that is still to be set. XPS_E_INVALID_PAGE_SIZE for a size below 1, which is no size unless
    /// it is -1.
    static HRESULT Create(const XPS_SIZE* size, IXpsOMPageReference** reference);
    PageReferenceObject(std::shared_ptr<SourcePackage> package, SourcePage page);

    HRESULT STDMETHODCALLTYPE GetOwner(IXpsOMDocument** document) override;
    /// XPS_E_MISSING_PAGE_IN_PAGEREFERENCE before a page is set.
    HRESULT STDMETHODCALLTYPE GetPage(IXpsOMPage** page) override;
    HRESULT STDMETHODCALLTYPE SetPage(IXpsOMPage* page) override;
    /// What has been changed in the page is lost, and so is one that was set; the next GetPage reads the page
    /// of the package anew.
    HRESULT STDMETHODCALLTYPE DiscardPage() override;
    HRESULT STDMETHODCALLTYPE IsPageLoaded(BOOL* isLoaded) override;
    /// -1 for what the document does not say.
    HRESULT STDMETHODCALLTYPE GetAdvisoryPageDimensions(XPS_SIZE* size) override;
    HRESULT STDMETHODCALLTYPE SetAdvisoryPageDimensions(const XPS_SIZE* size) override;
    HRESULT STDMETHODCALLTYPE GetStoryFragmentsResource(IXpsOMStoryFragmentsResource** fragments) override;
    HRESULT STDMETHODCALLTYPE SetStoryFragmentsResource(IXpsOMStoryFragmentsResource* fragments) override;
    HRESULT STDMETHODCALLTYPE GetPrintTicketResource(IXpsOMPrintTicketResource** ticket) override;
    HRESULT STDMETHODCALLTYPE SetPrintTicketResource(IXpsOMPrintTicketResource* ticket) override;
    HRESULT STDMETHODCALLTYPE GetThumbnailResource(IXpsOMImageResource** image) override;
    /// XPS_E_INVALID_THUMBNAIL_IMAGE_TYPE for what is neither JPEG nor PNG.
    HRESULT STDMETHODCALLTYPE SetThumbnailResource(IXpsOMImageResource* image) override;
    /// Those that the document lists.
    HRESULT STDMETHODCALLTYPE CollectLinkTargets(IXpsOMNameCollection** targets) override;
    HRESULT STDMETHODCALLTYPE CollectPartResources(IXpsOMPartResources** resources) override;
    HRESULT STDMETHODCALLTYPE HasRestrictedFonts(BOOL* has) override;
    HRESULT STDMETHODCALLTYPE Clone(IXpsOMPageReference** reference) override;

    /// Not counted: the owner calls again with null before it ends.
    void SetOwner(IXpsOMDocument* owner) { m_owner = owner; }
    bool HasOwner() const { return m_owner != nullptr; }

    /// The page's name as it is now. Throws PackageError.
    std::string Name() const;
    /// Null for a page that is as it was read, or never was.
    IXpsOMPage* ChangedPage() const;
    const SourcePlace& Place() const { return m_place; }
    const PackagePart* StoredPart() const { return m_part; }
    /// Whether another page has come in the place of the one that was read.
    bool IsReplaced() const { return m_isReplaced; }
    /// As the document is to say it, but for the name.
    const PageReference& Reference() const { return m_reference; }
    bool IsReferenceChanged() const { return m_isReferenceChanged; }
    const SourceOrigin& Origin() const { return m_origin; }
    const RelatedTicket& Ticket() const { return m_ticket; }
    const RelatedPart<IXpsOMStoryFragmentsResource>& Fragments() const { return m_fragments; }
    const RelatedThumbnail& Thumbnail() const { return m_thumbnail; }

private:
    explicit PageReferenceObject(const XPS_SIZE& size);
    ~PageReferenceObject() override;

    CComPtr<IXpsOMPage> LoadedPage();
    void LetGoOfPage();
    void SetSize(const XPS_SIZE& size);
    CComPtr<PartResources> CollectResources();

    IXpsOMDocument* m_owner = nullptr;
    SourcePlace m_place; // of the page
    const PackagePart* m_part = nullptr;
    PageReference m_reference;
    SourceOrigin m_origin;
    bool m_isReferenceChanged = false;
    bool m_isReplaced = false;
    CComPtr<IXpsOMPage> m_page;
    RelatedTicket m_ticket{Relation::PrintTicket, XPS_E_MULTIPLE_PRINTTICKETS_ON_PAGE};
    RelatedPart<IXpsOMStoryFragmentsResource> m_fragments{Relation::StoryFragments,
                                                          XPS_E_MULTIPLE_REFERENCES_TO_PART};
    RelatedThumbnail m_thumbnail{Relation::Thumbnail, XPS_E_MULTIPLE_THUMBNAILS_ON_PAGE};
};

} // namespace OvPlatform
