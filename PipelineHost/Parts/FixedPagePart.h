#pragma once

#include "Parts/StructureParts.h"
#include "Streams/SpooledBytes.h"

#include <ObjectModel/ReferenceList.h>

#include <unordered_map>
#include <vector>

namespace OvPipeline {

using OvPlatform::PageReference;

/// A part that a page uses. The object is made when it is first asked for.
struct PageResource {
    std::string name;
    std::string relationshipType;                    // in full, as the page's relationships have it
    const OvPlatform::PackagePart* stored = nullptr; // where no filter has put another part in its place
    CComPtr<IUnknown> object;
    bool viaDictionary = false; // not the page itself but a dictionary of its relates to it
    bool isDeleted = false;     // it keeps its place, so that the others keep theirs
};

class FixedPagePart;

/// By which the host knows its own pages again.
/// clang-format off
MIDL_INTERFACE("7c0d5b0a-52b8-4d0e-9d4b-6f1a0c6e2f03")
IHostPage : public IUnknown {
public:
    virtual FixedPagePart& STDMETHODCALLTYPE Page() = 0;

protected:
    ~IHostPage() = default;
};
// clang-format on

} // namespace OvPipeline

__CRT_UUID_DECL(OvPipeline::IHostPage, 0x7c0d5b0a, 0x52b8, 0x4d0e, 0x9d, 0x4b, 0x6f, 0x1a, 0x0c, 0x6e, 0x2f,
                0x03)

namespace OvPipeline {

/// A page: its markup, its ticket, and the parts that it uses. Belongs to one filter's thread at a time.
class FixedPagePart final : public ComObject<IFixedPage, IHostPart, IHostPage> {
public:
    FixedPagePart(PartCore core, TicketSlot ticket, PageReference reference,
                  std::vector<PageResource> resources,
                  std::vector<OvPlatform::PackageRelationship> relationships);

    HRESULT STDMETHODCALLTYPE GetUri(BSTR* uri) override;
    HRESULT STDMETHODCALLTYPE GetStream(IPrintReadStream** stream) override;
    HRESULT STDMETHODCALLTYPE GetPartCompression(EXpsCompressionOptions* compression) override;
    HRESULT STDMETHODCALLTYPE SetPartCompression(EXpsCompressionOptions compression) override;

    HRESULT STDMETHODCALLTYPE GetPrintTicket(IPartPrintTicket** ticket) override;
    /// A part of the page's own; or a resource of the job's package, since pages exist that use what they do
    /// not relate to. The name may be relative to the page's.
    HRESULT STDMETHODCALLTYPE GetPagePart(PCWSTR uri, IUnknown** part) override;
    /// Until that stream is closed, GetStream gives the markup as it was.
    HRESULT STDMETHODCALLTYPE GetWriteStream(IPrintWriteStream** stream) override;
    HRESULT STDMETHODCALLTYPE SetPrintTicket(IPartPrintTicket* ticket) override;
    /// Takes the place of a part of the same name. A ticket becomes the page's ticket.
    HRESULT STDMETHODCALLTYPE SetPagePart(IUnknown* part) override;
    HRESULT STDMETHODCALLTYPE DeleteResource(PCWSTR uri) override;
    /// Over the parts as they are at each step: what is deleted is passed over, what is new comes last. The
    /// ticket is not among them.
    HRESULT STDMETHODCALLTYPE GetXpsPartIterator(IXpsPartIterator** iterator) override;

    PartCore& STDMETHODCALLTYPE Core() override { return m_core; }
    FixedPagePart& STDMETHODCALLTYPE Page() override { return *this; }

    const PageReference& Reference() const { return m_reference; }
    /// That the page came with, whatever became of them.
    const std::vector<OvPlatform::PackageRelationship>& Relationships() const { return m_relationships; }
    /// With those that are deleted.
    const std::vector<PageResource>& Resources() const { return m_resources; }
    TicketSlot& Ticket() { return m_ticket; }
    /// What is to be written is the markup that the page came with.
    bool IsMarkupUnchanged() const { return !m_newMarkup; }
    /// What is to be written. Waits for a filter that has not closed its stream yet.
    std::unique_ptr<ByteReader> OpenMarkup() const;

    /// The object of a resource. index counts Resources().
    CComPtr<IUnknown> ObjectOf(std::size_t index);

private:
    ~FixedPagePart() override = default;

    std::string ResolvedKey(PCWSTR uri) const;
    std::size_t IndexOf(const std::string& key);

    PartCore m_core;
    TicketSlot m_ticket;
    PageReference m_reference;
    std::vector<PageResource> m_resources;
    std::vector<OvPlatform::PackageRelationship> m_relationships;
    std::unordered_map<std::string, std::size_t> m_index; // by name in lower case, without deleted ones
    bool m_isIndexed = false;                             // when first needed
    std::shared_ptr<const SpooledContent> m_newMarkup;
    std::shared_ptr<const StreamMaker> m_markupMaker; // of the new markup
    TicketCount m_ticketCount;
};

} // namespace OvPipeline
