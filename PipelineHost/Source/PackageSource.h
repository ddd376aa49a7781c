#pragma once

#include "Common/PageRanges.h"
#include "Parts/FixedPagePart.h"
#include "Source/JobFile.h"

#include <ObjectModel/ReferenceList.h>
#include <PrintTicket/TicketOverlay.h>

#include <deque>
#include <filesystem>
#include <vector>

namespace OvPipeline {

/// Opens a job's package and finds out which vocabulary it speaks. Throws OvPlatform::PackageError or
/// InputError.
SharedContext OpenJobPackage(const JobFile& file, std::shared_ptr<JobState> job);

/// What the user wants of a job beside what is in it.
struct JobWishes {
    /// Laid over the ticket of the job; those of documents and pages give way. Null: none.
    std::shared_ptr<const OvPlatform::TicketOverlay> ticket;
    /// Only these pages are there, counted through the job, and only the documents that they stand in.
    PageRanges pages;
};

/// The job's package as the pipeline's parts, in the order of the pipeline: the document, what hangs on the
/// package, the sequence, and each document with its pages; at the end, the resources that no page relates
/// to. Parts are made when they are asked for, so memory does not grow with the job. Belongs to one thread.
class PackageSource final : public ComObject<IXpsDocumentProvider> {
public:
    /// taker: the filter that takes the parts; null for the host. Throws InputError where the package names
    /// no sequence, or two.
    explicit PackageSource(SharedContext context, std::shared_ptr<const StreamMaker> taker = {},
                           JobWishes wishes = {});

    /// The next part, null at the end. A part's relationships and references are checked before it is handed
    /// out; a fault in them is the failing result, and the thread's note says more. A job without pages is a
    /// fault, and so is one without any that is wanted.
    HRESULT STDMETHODCALLTYPE GetXpsPart(IUnknown** part) override;

    /// The same for the host: throws.
    CComPtr<IUnknown> Next();

    // Of the document and the page that were handed out last, counted through the job from 1, also over those
    // that are not wanted.
    std::uint64_t DocumentNumber() const { return m_documentCount; }
    std::uint64_t PageNumber() const { return m_pageCount; }

private:
    ~PackageSource() override = default;

    using Part = OvPlatform::PackagePart;
    using Relationship = OvPlatform::PackageRelationship;
    enum class Stage { Package, Sequence, Documents, Pages, Rest, End };

    void FindSequence();
    void QueuePackage();
    void QueueSequence();
    bool QueueDocument();
    bool QueuePage();
    bool QueueRest();

    const Part& Follow(const std::string& source, const Relationship& relationship) const;
    const Part& Refer(const std::string& source, const PageReference& reference, PartKind kind,
                      HRESULT missing);
    TicketSlot TicketOf(const std::string& source, const std::vector<Relationship>& relationships,
                        HRESULT twice) const;
    PartCore NewJobTicket() const;
    void RequirePages() const;
    void QueueUnknown(const std::string& source, const Relationship& relationship);
    std::vector<PageResource> ResourcesOf(const Part& page, const std::vector<Relationship>& relationships);
    bool MarkReached(const Part& part);
    void Skip(const std::string& source, const Relationship& relationship) const;

    SharedContext m_context;
    std::shared_ptr<const StreamMaker> m_taker;
    JobWishes m_wishes;
    Stage m_stage = Stage::Package;
    const Part* m_sequence = nullptr;
    const Part* m_document = nullptr;
    std::unique_ptr<OvPlatform::ReferenceList> m_documents;
    std::unique_ptr<OvPlatform::ReferenceList> m_pages;
    std::deque<CComPtr<IUnknown>> m_ready;
    std::deque<CComPtr<IUnknown>> m_untilPage; // a document, until a page of it is wanted
    std::vector<bool> m_reached;               // by index of the package's parts
    std::size_t m_nextRest = 0;
    std::uint64_t m_documentCount = 0;
    std::uint64_t m_pageCount = 0;
    bool m_hasPages = false; // wanted ones
};

} // namespace OvPipeline
