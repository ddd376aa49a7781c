#include "Sink/PackageSink.h"

#include "Parts/FontPart.h"

#include <ObjectModel/StructureMarkup.h>

#include <msopc.h>
#include <xpsobjectmodel.h>

#include <algorithm>
#include <utility>

namespace OvPipeline {

namespace {

constexpr const char* defaultSequenceName = "/FixedDocumentSequence.fdseq";

void Require(HRESULT hr, const std::string& name, const char* what) {
    if (FAILED(hr)) throw HostError(hr, name, name + ": " + what);
}

// What the package writer throws is the output's fault, not the input's.
template <class Step>
auto Writing(Step&& step) {
    try {
        return step();
    } catch (const OvPlatform::PackageError& error) {
        throw HostError(error.Result(), error.Subject(), error.what());
    }
}

template <class Part>
std::string UriOf(Part* part) {
    CComBSTR uri;
    Require(part->GetUri(&uri), {}, "the part does not tell its name");
    return Utf8Argument(uri);
}

void Append(SpooledBytes& markup, const std::string& text) { markup.Append(text.data(), text.size()); }

// Null where the part has none.
template <class Part>
CComPtr<IPartPrintTicket> TicketOf(Part* part, const std::string& name) {
    if (const CComQIPtr<IHostTicketed> host(part); host) return host->Ticket().Take(PartKind::PrintTicket);
    CComPtr<IPartPrintTicket> ticket;
    const HRESULT hr = part->GetPrintTicket(&ticket);
    if (hr != E_ELEMENT_NOT_FOUND) Require(hr, name, "its print ticket cannot be had");
    return ticket;
}

} // namespace

PackageSink::PackageSink(std::unique_ptr<OvPlatform::ByteOutput> output, std::shared_ptr<JobState> job,
                         XpsFlavour flavour, Interleaving interleaving)
    : m_job(std::move(job)), m_flavour(flavour), m_interleaving(interleaving),
      m_writer(Writing([&] { return OvPlatform::PackageWriter::Create(std::move(output)); })) {}

void PackageSink::Take(IUnknown* part) {
    if (const CComQIPtr<IHostPage> page(part); page) {
        TakePage(page->Page());
    } else if (const CComQIPtr<IFixedDocument> document(part); document) {
        TakeDocument(document);
    } else if (const CComQIPtr<IFixedDocumentSequence> sequence(part); sequence) {
        m_sequenceName = UriOf(sequence.p);
        WriteTicket(m_sequenceName, TicketOf(sequence.p, m_sequenceName));
    } else if (const CComQIPtr<IXpsDocument> package(part); package) {
        CComPtr<IPartThumbnail> thumbnail;
        const HRESULT hr = package->GetThumbnail(&thumbnail);
        if (hr != E_ELEMENT_NOT_FOUND) Require(hr, "/", "the thumbnail cannot be had");
        if (thumbnail) Relate("/", Relation::Thumbnail, WriteObject(thumbnail));
    } else if (const CComQIPtr<IHostPart> host(part); host) {
        const std::string name = WriteObject(part);
        if (const auto& anchor = host->Core().anchor) m_links.push_back({anchor->source, anchor->type, name});
    } else {
        Say("leaves out a part of an unknown kind", {});
    }
    m_job->Counters().bytesWritten = m_writer->BytesWritten();
}

void PackageSink::TakeDocument(IFixedDocument* document) {
    CloseDocument();
    m_document = document;
    m_documentName = UriOf(document);
    m_restrictedFonts.clear();
    if (const CComQIPtr<IHostDocument> host(document); host) m_restrictedFonts = host->RestrictedFonts();
}

// What hangs on a document is written with its first page, since a document without pages is none.
void PackageSink::OpenDocument() {
    if (m_documentMarkup) return;
    if (!m_document)
        throw HostError(HRESULT_FROM_WIN32(ERROR_INVALID_STATE), {}, "a page was sent before any document");
    m_documentMarkup = std::make_shared<SpooledBytes>();
    Append(*m_documentMarkup, OvPlatform::OpenRoot("FixedDocument", m_flavour));
    WriteTicket(m_documentName, TicketOf(m_document.p, m_documentName));
}

void PackageSink::CloseDocument() {
    if (!m_documentMarkup) {
        if (m_document) Say("leaves out the document without pages", m_documentName);
        return;
    }
    Append(*m_documentMarkup, "</FixedDocument>\n");
    m_documentMarkup->Complete();
    WriteBytes(m_documentName, documentContentType, Compression_Normal,
               *ReadWhileWritten(std::exchange(m_documentMarkup, {}), m_job));
    if (m_sequenceMarkup.empty()) {
        m_sequenceMarkup = OvPlatform::OpenRoot("FixedDocumentSequence", m_flavour);
        if (m_sequenceName.empty()) m_sequenceName = defaultSequenceName;
    }
    m_sequenceMarkup += OvPlatform::DocumentReferenceElement(m_sequenceName, m_documentName);
}

void PackageSink::TakePage(FixedPagePart& page) {
    OpenDocument();
    if (m_interleaving == Interleaving::MarkupFirst) WriteMarkup(page);
    WriteResources(page);
    if (m_interleaving == Interleaving::ResourcesFirst) WriteMarkup(page);
    CompleteRelationships(page);
    Append(*m_documentMarkup,
           OvPlatform::PageContentElement(m_documentName, page.Core().name, page.Reference()));
    ++m_pages;
    ++m_job->Counters().pagesWritten;
}

// As they came, where they are the same.
void PackageSink::CompleteRelationships(FixedPagePart& page) {
    const PartCore& core = page.Core();
    ThreadPart() = core.name;
    const bool areSame = core.stored != nullptr && m_writer->HasJust(core.name, page.Relationships());
    const auto packed = areSame ? core.context->package->OpenPackedRelationships(core.stored->name) : nullptr;
    if (!packed) return Writing([&] { m_writer->CompleteRelationships(core.name); });
    std::vector<std::uint8_t> bytes(static_cast<std::size_t>(packed->Form().storedSize));
    std::size_t size = 0;
    while (const std::size_t count = packed->Read(bytes.data() + size, bytes.size() - size))
        size += count;
    bytes.resize(size);
    Writing([&] { m_writer->CompleteRelationships(core.name, packed->Form(), std::move(bytes)); });
}

void PackageSink::WriteMarkup(FixedPagePart& page) {
    const PartCore& core = page.Core();
    if (page.IsMarkupUnchanged())
        WriteContent(core, core.contentType);
    else
        WriteBytes(core.name, core.contentType, core.compression, *page.OpenMarkup());
}

void PackageSink::WriteResources(FixedPagePart& page) {
    const std::string& name = page.Core().name;
    WriteTicket(name, page.Ticket().Take(PartKind::PrintTicket));
    for (const PageResource& resource : page.Resources()) {
        if (resource.isDeleted) continue;
        if (resource.object)
            WriteObject(resource.object);
        else
            WriteCore(PartCore::Of(page.Core().context, *resource.stored, PartKind::Unknown));
        if (!resource.viaDictionary) Relate(name, resource.relationshipType, resource.name);
        if (!m_restrictedFonts.empty() && m_restrictedFonts.contains(LowerAscii(resource.name)))
            Relate(m_documentName, Relation::RestrictedFont, resource.name);
    }
}

std::string PackageSink::WriteObject(IUnknown* object) {
    const CComQIPtr<IHostPart> host(object);
    if (!host) throw HostError(E_NOINTERFACE, {}, "a part was sent that the pipeline did not make");
    const PartCore& core = host->Core();
    const CComQIPtr<IPartFont> font(object);
    if (!font) {
        WriteCore(core);
    } else if (Claim(core)) {
        const PackagedFont packed = PackFont(font, core.name);
        if (packed.bytes)
            WriteBytes(core.name, packed.contentType, core.compression, *packed.bytes);
        else
            WriteContent(core, packed.contentType);
    }
    return core.name;
}

void PackageSink::WriteCore(const PartCore& core) {
    if (!Claim(core)) return;
    WriteContent(core, core.contentType);
    if (!core.stored || KindOf(core.contentType, core.name) != PartKind::ResourceDictionary) return;
    for (const auto& relationship : core.context->package->Relationships(core.name))
        if (!relationship.external)
            m_links.push_back({core.name, relationship.type, relationship.targetPart});
}

void PackageSink::WriteTicket(const std::string& owner, IPartPrintTicket* ticket) {
    if (!ticket) return;
    const CComQIPtr<IHostPart> host(ticket);
    const bool isDisplaced = host && IsDisplaced(host->Core());
    Relate(owner, Relation::PrintTicket, isDisplaced ? WriteDisplaced(host->Core()) : WriteObject(ticket));
}

// Whether a filter has put a ticket in the place of the job's own one under its name, which other parts of
// the job still use, or the other way round.
bool PackageSink::IsDisplaced(const PartCore& core) const {
    const auto taken = m_written.find(LowerAscii(core.name));
    return taken != m_written.end() && taken->second.identity != core.content->Identity() &&
           (core.stored != nullptr || taken->second.isStored);
}

// Under a name of its own, the same for all parts that use it.
std::string PackageSink::WriteDisplaced(PartCore core) {
    std::string& name = m_displaced[core.content->Identity()];
    if (name.empty()) {
        const std::size_t dot = std::min(core.name.rfind('.'), core.name.size());
        for (unsigned number = 2; name.empty(); ++number) {
            std::string free =
                core.name.substr(0, dot) + "_" + std::to_string(number) + core.name.substr(dot);
            if (!m_written.contains(LowerAscii(free)) &&
                (!core.context->package || core.context->package->Find(free) == nullptr))
                name = std::move(free);
        }
    }
    core.name = name;
    WriteCore(core);
    return name;
}

// Whether the part is still to be written. The same part comes again with each page that uses it.
bool PackageSink::Claim(const PartCore& core) {
    const Written written{core.content->Identity(), core.stored != nullptr};
    const auto [place, isNew] = m_written.emplace(LowerAscii(core.name), written);
    if (!isNew && place->second.identity != written.identity)
        throw HostError(OPC_E_DUPLICATE_PART, core.name,
                        "two different parts were sent under the name " + core.name);
    return isNew;
}

void PackageSink::WriteContent(const PartCore& core, const std::string& contentType) {
    if (!TakeOver(core, contentType))
        WriteBytes(core.name, contentType, core.compression, *core.content->Open());
}

// What lies in the job's package as it is to lie in the output goes over as it is. False for all else.
bool PackageSink::TakeOver(const PartCore& core, const std::string& contentType) {
    const bool isToLieSo =
        core.stored != nullptr &&
        core.stored->compression == static_cast<OvPlatform::PackageCompression>(core.compression);
    if (!isToLieSo) return false;
    ThreadPart() = core.name;
    const auto packed = core.content->OpenPacked();
    if (!packed) return false;
    Begin(core.name);
    const auto sink =
        Writing([&] { return m_writer->AddPackedPart(core.name, contentType, packed->Form()); });
    while (const std::size_t count = packed->Read(m_chunk.data(), m_chunk.size()))
        Pass(*sink, m_chunk.data(), count);
    Writing([&] { sink->Close(); });
    ++m_job->Counters().partsWritten;
    return true;
}

void PackageSink::Begin(const std::string& name) const {
    Say("writes", name);
    ThreadPart() = name;
}

// A part may be large, and a job that stops does not wait for its end.
void PackageSink::Pass(OvPlatform::PackagePartSink& sink, const void* bytes, std::size_t size) const {
    if (m_job->IsStopping()) throw HostError(m_job->StopResult(), {}, "the job stops");
    Writing([&] { sink.Write(bytes, size); });
}

void PackageSink::WriteBytes(const std::string& name, const std::string& contentType,
                             EXpsCompressionOptions compression, ByteReader& bytes) {
    Begin(name);
    const auto packing = static_cast<OvPlatform::PackageCompression>(compression);
    const auto sink = Writing([&] { return m_writer->AddPart(name, contentType, packing); });
    Drain(bytes, [&](const void* chunk, std::size_t size) { Pass(*sink, chunk, size); });
    Writing([&] { sink->Close(); });
    ++m_job->Counters().partsWritten;
}

void PackageSink::WriteText(const std::string& name, const char* contentType, const std::string& text) {
    WriteBytes(name, contentType, Compression_Normal, *MemoryContent(text).Open());
}

void PackageSink::Relate(const std::string& source, Relation relation, const std::string& target) {
    Relate(source, RelationType(relation, m_flavour), target);
}

void PackageSink::Relate(const std::string& source, const std::string& type, const std::string& target) {
    Writing([&] { m_writer->AddRelationship(source, type, target); });
}

void PackageSink::Complete() {
    CloseDocument();
    m_document.Release();
    if (m_pages == 0)
        throw HostError(XPS_E_MISSING_PAGE_IN_DOCUMENT, {},
                        "the last filter sent no page: there is nothing to write");
    WriteText(m_sequenceName, sequenceContentType, m_sequenceMarkup + "</FixedDocumentSequence>\n");
    Relate("/", Relation::FixedRepresentation, m_sequenceName);
    for (const Link& link : m_links)
        if ((link.source == "/" || m_writer->HasPart(link.source)) && m_writer->HasPart(link.target))
            Relate(link.source, link.type, link.target);
    m_job->Counters().bytesWritten = m_writer->BytesWritten();
}

void PackageSink::Finish() {
    Writing([&] { m_writer->Finish([this] { return m_job->IsStopping(); }); });
}

void PackageSink::Commit() {
    Writing([&] { m_writer->Commit(); });
}

void PackageSink::Say(std::string_view step, const std::string& name) const {
    if (m_job->Log().IsOn()) m_job->Log().Step(step, name);
}

} // namespace OvPipeline
