#include "Source/PackageSource.h"

#include "Parts/DescribePart.h"
#include "Parts/PartFactory.h"
#include "Source/OverlaidTicket.h"

#include <xpsobjectmodel.h>

#include <algorithm>
#include <utility>

namespace OvPipeline {

using OvPlatform::ReferenceList;

namespace {

std::unique_ptr<ReferenceList> ReferencesOf(ReferenceList::Of kind, const SharedContext& context,
                                            const OvPlatform::PackagePart& part) {
    const std::shared_ptr<ByteReader> bytes = PartCore::Of(context, part, {}).content->Open();
    return std::make_unique<ReferenceList>(
        kind, part.name, [bytes](void* buffer, std::size_t size) { return bytes->Read(buffer, size); });
}

} // namespace

SharedContext OpenJobPackage(const JobFile& file, std::shared_ptr<JobState> job) {
    auto context = std::make_shared<PartContext>();
    context->job = std::move(job);
    context->package = OvPlatform::PackageReader::Open(
        file.path, {}, [&context] { return context->job->IsStopping(); }, file.name);
    for (const auto& relationship : context->package->Relationships("/"))
        if (RelationOf(relationship.type) == Relation::FixedRepresentation &&
            IsOpenXpsType(relationship.type))
            context->flavour = XpsFlavour::OpenXps;
    return context;
}

PackageSource::PackageSource(SharedContext context, std::shared_ptr<const StreamMaker> taker,
                             JobWishes wishes)
    : m_context(std::move(context)), m_taker(std::move(taker)), m_wishes(std::move(wishes)),
      m_reached(m_context->package->Parts().size()) {
    FindSequence();
    m_context->job->Counters().pageParts =
        static_cast<std::uint64_t>(std::ranges::count_if(m_context->package->Parts(), [](const Part& part) {
            return KindOf(part.contentType, {}) == PartKind::Page;
        }));
}

void PackageSource::FindSequence() {
    const std::string file = m_context->package->File().string();
    for (const auto& relationship : m_context->package->Relationships("/")) {
        if (RelationOf(relationship.type) != Relation::FixedRepresentation) continue;
        const Part& part = Follow("/", relationship);
        if (m_sequence != nullptr && m_sequence != &part)
            throw InputError(XPS_E_MULTIPLE_DOCUMENTSEQUENCE_RELATIONSHIPS, file,
                             "the package names two document sequences, " + m_sequence->name + " and " +
                                 part.name);
        m_sequence = &part;
    }
    if (m_sequence == nullptr)
        throw InputError(XPS_E_MISSING_DOCUMENTSEQUENCE_RELATIONSHIP, file,
                         "the package names no document sequence: it is no XPS document");
    if (KindOf(m_sequence->contentType, {}) != PartKind::Sequence)
        throw InputError(XPS_E_UNEXPECTED_CONTENT_TYPE, m_sequence->name,
                         m_sequence->name + " is of type " + m_sequence->contentType +
                             ", which is no fixed document sequence");
    MarkReached(*m_sequence);
}

HRESULT PackageSource::GetXpsPart(IUnknown** part) {
    if (!part) return E_POINTER;
    *part = nullptr;
    return Guarded([&] {
        if (m_context->job->IsStopping()) return m_context->job->StopResult();
        CComPtr<IUnknown> next = Next();
        if (next) {
            ++m_context->job->Counters().parts;
            const CComQIPtr<IFixedPage> page(next);
            if (page) ++m_context->job->Counters().pages;
        }
        NoteReceived(next, m_context->job->Log(), m_taker);
        *part = next.Detach();
        return S_OK;
    });
}

CComPtr<IUnknown> PackageSource::Next() {
    while (m_ready.empty() && m_stage != Stage::End) {
        switch (m_stage) {
        case Stage::Package:
            QueuePackage();
            m_stage = Stage::Sequence;
            break;
        case Stage::Sequence:
            QueueSequence();
            m_stage = Stage::Documents;
            break;
        case Stage::Documents:
            m_stage = QueueDocument() ? Stage::Pages : Stage::Rest;
            break;
        case Stage::Pages:
            if (!QueuePage()) m_stage = Stage::Documents;
            break;
        case Stage::Rest:
            if (!QueueRest()) m_stage = Stage::End;
            break;
        case Stage::End:
            break;
        }
    }
    if (m_ready.empty()) return {};
    CComPtr<IUnknown> part = std::move(m_ready.front());
    m_ready.pop_front();
    return part;
}

void PackageSource::QueuePackage() {
    const auto relationships = m_context->package->Relationships("/");
    const Part* thumbnail = nullptr;
    for (const Relationship& relationship : relationships)
        if (RelationOf(relationship.type) == Relation::Thumbnail && thumbnail == nullptr) {
            thumbnail = &Follow("/", relationship);
            MarkReached(*thumbnail);
        }
    CComPtr<IUnknown> document;
    document.Attach(new XpsDocumentPart(ThumbnailSlot(m_context, thumbnail)));
    m_ready.push_back(std::move(document));
    for (const Relationship& relationship : relationships) {
        const Relation relation = RelationOf(relationship.type);
        if (relation == Relation::SignatureOrigin)
            Skip("/", relationship); // what is rewritten is not what was signed
        else if (relation != Relation::FixedRepresentation && relation != Relation::Thumbnail)
            QueueUnknown("/", relationship);
    }
}

void PackageSource::QueueSequence() {
    const auto relationships = m_context->package->Relationships(m_sequence->name);
    CComPtr<IUnknown> sequence;
    sequence.Attach(static_cast<IFixedDocumentSequence*>(new FixedDocumentSequencePart(
        m_context, m_sequence->name,
        TicketOf(m_sequence->name, relationships, XPS_E_MULTIPLE_PRINTTICKETS_ON_DOCUMENTSEQUENCE))));
    m_ready.push_back(std::move(sequence));
    for (const Relationship& relationship : relationships)
        if (RelationOf(relationship.type) != Relation::PrintTicket)
            QueueUnknown(m_sequence->name, relationship);
    m_documents = ReferencesOf(ReferenceList::Of::Sequence, m_context, *m_sequence);
}

bool PackageSource::QueueDocument() {
    const auto reference = m_documents->Next();
    if (!reference) {
        if (m_documentCount == 0)
            throw InputError(XPS_E_MISSING_DOCUMENT, m_sequence->name,
                             m_sequence->name + " has no documents");
        RequirePages();
        return false;
    }
    m_document = &Refer(m_sequence->name, *reference, PartKind::Document, XPS_E_MISSING_REFERRED_DOCUMENT);
    ++m_documentCount;

    const auto relationships = m_context->package->Relationships(m_document->name);
    std::unordered_set<std::string> restrictedFonts;
    for (const Relationship& relationship : relationships)
        if (RelationOf(relationship.type) == Relation::RestrictedFont)
            restrictedFonts.insert(LowerAscii(Follow(m_document->name, relationship).name));
    CComPtr<IUnknown> document;
    document.Attach(static_cast<IFixedDocument*>(new FixedDocumentPart(
        m_context, m_document->name,
        TicketOf(m_document->name, relationships, XPS_E_MULTIPLE_PRINTTICKETS_ON_DOCUMENT),
        std::move(restrictedFonts))));
    m_ready.push_back(std::move(document));
    for (const Relationship& relationship : relationships) {
        const Relation relation = RelationOf(relationship.type);
        if (relation == Relation::SignatureDefinitions)
            Skip(m_document->name, relationship);
        else if (relation != Relation::PrintTicket && relation != Relation::RestrictedFont)
            QueueUnknown(m_document->name, relationship);
    }
    m_pages = ReferencesOf(ReferenceList::Of::Document, m_context, *m_document);
    m_untilPage.clear();
    if (!m_wishes.pages.AreAll()) m_untilPage.swap(m_ready);
    return true;
}

void PackageSource::RequirePages() const {
    if (m_hasPages) return;
    throw InputError(XPS_E_MISSING_PAGE_IN_DOCUMENT, m_sequence->name,
                     m_pageCount == 0 ? "the job has no pages: there is nothing to print"
                                      : "the job has " + Counted(m_pageCount, "page") +
                                            ", and none of them is among " + m_wishes.pages.Text());
}

bool PackageSource::QueuePage() {
    auto reference = m_pages->Next();
    if (!reference) return false;
    const Part& page = Refer(m_document->name, *reference, PartKind::Page, XPS_E_MISSING_REFERRED_PAGE);
    ++m_pageCount;
    auto relationships = m_context->package->Relationships(page.name);
    const TicketSlot ticket = TicketOf(page.name, relationships, XPS_E_MULTIPLE_PRINTTICKETS_ON_PAGE);
    auto resources = ResourcesOf(page, relationships);
    if (!m_wishes.pages.Contain(m_pageCount)) return true;
    m_hasPages = true;
    m_ready.swap(m_untilPage);
    CComPtr<IUnknown> object;
    object.Attach(static_cast<IFixedPage*>(
        new FixedPagePart(PartCore::Of(m_context, page, PartKind::Page), ticket, std::move(*reference),
                          std::move(resources), std::move(relationships))));
    m_ready.push_back(std::move(object));
    return true;
}

bool PackageSource::QueueRest() {
    const auto& parts = m_context->package->Parts();
    for (; m_nextRest < parts.size(); ++m_nextRest) {
        const Part& part = parts[m_nextRest];
        if (m_reached[m_nextRest] || !IsResource(KindOf(part.contentType, {}))) continue;
        MarkReached(part);
        m_ready.push_back(MakeStoredPart(m_context, part));
        return true;
    }
    return false;
}

const PackageSource::Part& PackageSource::Follow(const std::string& source,
                                                 const Relationship& relationship) const {
    return OvPlatform::RequireTarget(*m_context->package, source, relationship);
}

const PackageSource::Part& PackageSource::Refer(const std::string& source, const PageReference& reference,
                                                PartKind kind, HRESULT missing) {
    const Part* part = FindReferred(*m_context->package, source, reference.source);
    const std::string word = KindName(kind);
    if (!part)
        throw InputError(missing, source,
                         source + " names the " + word + " " + reference.source +
                             ", which the package does not hold");
    if (KindOf(part->contentType, {}) != kind)
        throw InputError(XPS_E_UNEXPECTED_CONTENT_TYPE, part->name,
                         part->name + " is of type " + part->contentType + ", which is no fixed " + word);
    if (!MarkReached(*part))
        throw InputError(XPS_E_MULTIPLE_REFERENCES_TO_PART, part->name,
                         "the " + word + " " + part->name + " is referred to twice");
    return *part;
}

TicketSlot PackageSource::TicketOf(const std::string& source, const std::vector<Relationship>& relationships,
                                   HRESULT twice) const {
    const Part* ticket = nullptr;
    for (const Relationship& relationship : relationships) {
        if (RelationOf(relationship.type) != Relation::PrintTicket) continue;
        const Part& target = Follow(source, relationship);
        if (ticket != nullptr)
            throw InputError(twice, source,
                             source + " has two print tickets, " + ticket->name + " and " + target.name);
        ticket = &target;
    }
    TicketSlot slot(m_context, ticket);
    const bool isOfJob = source == m_sequence->name;
    if (!m_wishes.ticket || (ticket == nullptr && !isOfJob)) return slot;
    PartCore core =
        ticket != nullptr ? PartCore::Of(m_context, *ticket, PartKind::PrintTicket) : NewJobTicket();
    core.content = std::make_shared<OverlaidTicket>(
        core, m_wishes.ticket, isOfJob ? OverlaidTicket::Place::Over : OverlaidTicket::Place::Below);
    CComPtr<IPartPrintTicket> overlaid;
    overlaid.Attach(new PrintTicketPart(std::move(core)));
    slot.Set(overlaid);
    return slot;
}

// Of a job that has none, without content.
PartCore PackageSource::NewJobTicket() const {
    PartCore core;
    core.context = m_context;
    core.kind = PartKind::PrintTicket;
    core.contentType = ticketContentType;
    core.name = "/Metadata/Job_PT.xml";
    for (unsigned number = 2; m_context->package->Find(core.name) != nullptr; ++number)
        core.name = "/Metadata/Job_PT_" + std::to_string(number) + ".xml";
    return core;
}

void PackageSource::QueueUnknown(const std::string& source, const Relationship& relationship) {
    std::vector<std::pair<std::string, Relationship>> open{{source, relationship}};
    while (!open.empty()) {
        const auto [from, link] = std::move(open.back());
        open.pop_back();
        const Part* part = link.external ? nullptr : m_context->package->Find(link.targetPart);
        if (!part) {
            Skip(from, link);
            continue;
        }
        PartCore core = PartCore::Of(m_context, *part, PartKind::Unknown);
        core.anchor = Anchor{from, link.type};
        CComPtr<IUnknown> object;
        object.Attach(static_cast<IPartBase*>(new UnknownPart(std::move(core))));
        m_ready.push_back(std::move(object));
        if (!MarkReached(*part)) continue;
        for (Relationship& further : m_context->package->Relationships(part->name))
            open.emplace_back(part->name, std::move(further));
    }
}

std::vector<PageResource> PackageSource::ResourcesOf(const Part& page,
                                                     const std::vector<Relationship>& relationships) {
    std::vector<PageResource> resources;
    std::unordered_set<const Part*> seen{&page};
    const auto take = [&](const Part& part, const std::string& type, bool viaDictionary) {
        MarkReached(part);
        if (seen.insert(&part).second) resources.push_back({part.name, type, &part, {}, viaDictionary});
    };
    for (const Relationship& relationship : relationships) {
        const Relation relation = RelationOf(relationship.type);
        if (relation == Relation::PrintTicket) continue;
        const bool isRequired = relation == Relation::RequiredResource || relation == Relation::Thumbnail;
        // Story fragments do not survive the pipeline.
        const Part* part = relation == Relation::StoryFragments ? nullptr
                           : isRequired                         ? &Follow(page.name, relationship)
                                        : m_context->package->Find(relationship.targetPart);
        if (part)
            take(*part, relationship.type, false);
        else
            Skip(page.name, relationship);
    }
    // What a dictionary uses, its page uses; dictionaries may lead to dictionaries.
    // NOLINTNEXTLINE(modernize-loop-convert): there are more of them with each that is taken
    for (std::size_t i = 0; i < resources.size(); ++i) {
        const Part& part = *resources[i].stored;
        if (KindOf(part.contentType, part.name) != PartKind::ResourceDictionary) continue;
        for (const Relationship& relationship : m_context->package->Relationships(part.name))
            if (RelationOf(relationship.type) == Relation::RequiredResource)
                take(Follow(part.name, relationship), relationship.type, true);
    }
    return resources;
}

bool PackageSource::MarkReached(const Part& part) {
    const auto index = static_cast<std::size_t>(&part - m_context->package->Parts().data());
    if (m_reached[index]) return false;
    m_reached[index] = true;
    return true;
}

void PackageSource::Skip(const std::string& source, const Relationship& relationship) const {
    Trace& log = m_context->job->Log();
    if (log.IsOn()) log.Step("leaves out", relationship.target + " of " + source);
}

} // namespace OvPipeline
