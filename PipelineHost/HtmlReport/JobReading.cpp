#include "HtmlReport/JobReading.h"

#include "Commands/AnnotationsReport.h"
#include "Commands/DisplayNames.h"
#include "Commands/JobWishesOf.h"
#include "Common/HostError.h"
#include "HtmlReport/AnnotationTable.h"
#include "HtmlReport/SettingsTables.h"
#include "Source/OverlaidTicket.h"

#include <Annotation/AnnotationNumbering.h>
#include <LowLevelFacilities/Failures/CPException.h>
#include <XpsParts/PageRoot.h>

#include <algorithm>

namespace OvPipeline {

namespace {

TicketSlot* SlotOf(IUnknown* part) {
    const CComQIPtr<IHostTicketed> ticketed(part);
    return ticketed ? &ticketed->Ticket() : nullptr;
}

std::string TextOf(TicketSlot& slot) {
    const CComPtr<IPartPrintTicket> part = slot.Take(PartKind::PrintTicket);
    const CComQIPtr<IHostPart> host(part);
    return ReadTicket(host->Core());
}

template <class Part>
std::string UriOf(const CComPtr<Part>& part) {
    CComBSTR uri;
    part->GetUri(&uri);
    return Utf8Argument(uri);
}

} // namespace

JobReading::JobReading(const CommandOptions& options,
                       const std::shared_ptr<const OvPlatform::QueueFolder>& queue, Warner warn)
    : m_options(options), m_warn(std::move(warn)) {
    m_job.file = options.job;
    m_job.queue = queue;
    m_printer.emplace(m_job);
    m_context = OpenJobPackage(options.job, std::make_shared<JobState>());
    std::error_code error;
    m_outline.file = options.job.name;
    m_outline.format = m_context->flavour == XpsFlavour::OpenXps ? "OpenXPS" : "XPS";
    m_outline.parts = m_context->package->Parts().size();
    m_outline.bytes = std::filesystem::file_size(options.job.path, error);
    AddLevel(OutlineLevel::Kind::Job, {});
    m_source.Attach(new PackageSource(m_context, {}, WishesOf(options)));
    while (const CComPtr<IUnknown> part = m_source->Next())
        Take(part);
    std::ranges::for_each(m_device->Troubles(), m_warn);
}

void JobReading::Take(IUnknown* part) {
    if (const CComQIPtr<IFixedPage> page(part); page)
        TakePage(page.p);
    else if (const CComQIPtr<IFixedDocument> document(part); document)
        TakeDocument(document.p);
    else if (const CComQIPtr<IFixedDocumentSequence> sequence(part); sequence)
        TakeJob(sequence.p);
    else if (const CComQIPtr<IHostPart> other(part); other)
        TakeOther(other->Core());
}

void JobReading::TakeJob(const CComPtr<IFixedDocumentSequence>& sequence) {
    m_device.emplace(m_options.job.name, m_printer->SharedQueue(), LevelParts{sequence, {}, {}}, m_warn);
    m_outline.levels[0].name = UriOf(sequence);
    TicketSlot* const slot = SlotOf(sequence);
    AddTicket(m_outline.levels[0], slot);
    m_tickets = {NumberOf(slot), 0, 0};
    m_ofJob.emplace(m_printer->SharedQueue());
    AddToExplanation(*m_ofJob, "job", kPTJobScope, slot);
    UseSettings(0, m_settings.Add("Settings of", SettingsTables(m_ofJob->Rows(), Heard(kPTJobScope))));
    // Those of the job, as the filter has them that draws them.
    XpsFilterPrintTicket ticket(&m_device->Merge().Manager(), DisplayNames());
    Snapshot(kPTJobScope, ticket);
    m_ofPages = AnnotationsOfJob(ticket, *m_printer, m_options.job.name);
}

void JobReading::TakeDocument(const CComPtr<IFixedDocument>& document) {
    m_device->Merge().Merge(document);
    OutlineLevel& level = AddLevel(OutlineLevel::Kind::Document, UriOf(document));
    const Place place = m_outline.levels.size() - 1;
    level.number = m_source->DocumentNumber();
    ++m_outline.documents;
    TicketSlot* const slot = SlotOf(document);
    AddTicket(level, slot);
    m_tickets = {m_tickets[0], NumberOf(slot), 0};
    m_heard.clear();
    m_written.clear();
    m_ofDocument = m_ofJob;
    AddToExplanation(*m_ofDocument, "document", kPTDocumentScope, slot);
    const auto [known, isNew] = m_tables.try_emplace(m_tickets, 0);
    if (isNew)
        known->second =
            m_settings.Add("Settings of", SettingsTables(m_ofDocument->Rows(), Heard(kPTDocumentScope)));
    UseSettings(place, known->second);
}

void JobReading::TakePage(const CComPtr<IFixedPage>& page) {
    const CComQIPtr<IHostPage> host(page);
    FixedPagePart& part = host->Page();
    OutlineLevel& level = AddLevel(OutlineLevel::Kind::Page, part.Core().name);
    const Place place = m_outline.levels.size() - 1;
    level.number = m_source->PageNumber();
    ++m_outline.pages;
    const PageReference& reference = part.Reference();
    if (!reference.width.empty()) level.size = reference.width + " x " + reference.height;
    AddTicket(level, &part.Ticket());
    ListParts(level, part);

    PageKind kind{{}, m_outline.pages == 1};
    try {
        const Gdiplus::SizeF size = PageRoot::Read(*page).size;
        kind.first = {size.Width, size.Height};
    } catch (const CPException& error) {
        level.problem = error.what();
    }
    Tickets tickets = m_tickets;
    tickets[2] = NumberOf(&part.Ticket());
    const auto [known, isNew] = m_pageTables.try_emplace(tickets, 0);
    if (isNew) {
        TicketExplanation explanation = *m_ofDocument;
        AddToExplanation(explanation, "page", kPTPageScope, &part.Ticket());
        const auto [heard, isUnheard] = m_heard.try_emplace(explanation.Ticket());
        if (isUnheard) {
            m_device->Merge().Merge(page);
            heard->second = Heard(kPTPageScope);
        }
        known->second = TableOf(explanation.Rows(), heard->second);
    }
    UseSettings(place, known->second);
    if (level.problem.empty()) UseAnnotations(place, kind);
}

void JobReading::TakeOther(const PartCore& core) {
    AddPart(m_outline.levels[0], core.anchor ? "part" : KindName(core.kind), core.name, false);
}

OutlineLevel& JobReading::AddLevel(OutlineLevel::Kind kind, const std::string& name) {
    OutlineLevel level;
    level.kind = kind;
    level.name = name;
    if (const OvPlatform::PackagePart* const part = m_context->package->Find(name)) level.bytes = part->size;
    m_outline.levels.push_back(std::move(level));
    return m_outline.levels.back();
}

void JobReading::AddPart(OutlineLevel& level, const std::string& kind, const std::string& name,
                         bool viaDictionary) {
    const OvPlatform::PackagePart* const part = m_context->package->Find(name);
    const bool isNew = m_shownParts.insert(LowerAscii(name)).second;
    level.parts.push_back({kind, name, part != nullptr ? part->size : 0, !isNew, viaDictionary});
}

void JobReading::AddTicket(OutlineLevel& level, TicketSlot* slot) {
    if (slot == nullptr || slot->IsEmpty()) return;
    level.ticket = slot->Name();
    AddPart(level, "print ticket", *level.ticket, false);
}

void JobReading::ListParts(OutlineLevel& level, const FixedPagePart& page) {
    for (const PageResource& resource : page.Resources()) {
        const bool isThumbnail = RelationOf(resource.relationshipType) == Relation::Thumbnail;
        AddPart(level,
                isThumbnail ? "thumbnail" : KindName(KindOf(resource.stored->contentType, resource.name)),
                resource.name, resource.viaDictionary);
    }
}

int JobReading::NumberOf(TicketSlot* slot) {
    if (slot == nullptr || slot->IsEmpty()) return 0;
    const auto [name, isNew] = m_ticketNames.try_emplace(slot->Name(), 0);
    if (isNew)
        name->second = m_ticketTexts.try_emplace(TextOf(*slot), static_cast<int>(m_ticketTexts.size()) + 1)
                           .first->second;
    return name->second;
}

void JobReading::Snapshot(EPrintTicketScope scope, XpsFilterPrintTicket& ticket) {
    if (const HRESULT hr =
            m_device->Merge().Manager().GetSnapshotOfCurrentMergedPartPrintTicket(scope, ticket);
        FAILED(hr))
        throw HostError(hr, {}, "the merged tickets cannot be read");
    CheckAttributeBytes(ticket, m_options.job.name);
}

std::vector<SettingsReport::Setting> JobReading::Heard(EPrintTicketScope scope) {
    XpsFilterPrintTicket ticket(&m_device->Merge().Manager(), DisplayNames());
    Snapshot(scope, ticket);
    return SettingsReport(ticket).Settings();
}

// Pages whose tickets say the same in other words would have their table written for nothing.
std::size_t JobReading::TableOf(const std::vector<TicketExplanation::Row>& rows,
                                const std::vector<SettingsReport::Setting>& heard) {
    constexpr char end = '\0'; // which no text of a ticket holds
    std::string key = std::to_string(reinterpret_cast<std::uintptr_t>(&heard)) + end;
    for (const TicketExplanation::Row& row : rows)
        for (const std::string* text : {&row.setting, &row.value, &row.origin, &row.remark})
            key.append(*text).append(1, end);
    const auto [known, isNew] = m_written.try_emplace(std::move(key), 0);
    if (isNew) known->second = m_settings.Add("Settings of", SettingsTables(rows, heard));
    return known->second;
}

void JobReading::UseSettings(Place place, std::size_t table) {
    m_outline.levels[place].settings = table;
    m_settings.Use(table, place);
}

void JobReading::UseAnnotations(Place place, const PageKind& kind) {
    const auto known = m_ofKinds.find(kind);
    std::vector<std::size_t> tables = known != m_ofKinds.end() ? known->second : TablesOf(kind);
    for (const std::size_t table : tables)
        m_annotations.Use(table, place);
    m_outline.levels[place].annotations = std::move(tables);
}

std::vector<std::size_t> JobReading::TablesOf(const PageKind& kind) {
    const Gdiplus::SizeF size{kind.first.first, kind.first.second};
    const auto [ofSize, isNew] = m_ofSizes.try_emplace(kind.first);
    if (isNew) ofSize->second = m_ofPages->OfPage(size);
    std::vector<PageAnnotation> annotations = ofSize->second;
    if (!kind.second)
        std::erase_if(annotations,
                      [](const PageAnnotation& annotation) { return annotation.element.isFirstPageOnly; });
    const AnnotationsReport report(annotations, size, static_cast<unsigned>(m_outline.pages - 1));
    std::vector<std::size_t> tables;
    for (const AnnotationsReport::Facts& facts : report.Annotations())
        tables.push_back(m_annotations.Add(AnnotationTitle(facts), AnnotationTable(facts)));
    const bool isNumbered = std::ranges::any_of(annotations, [](const PageAnnotation& annotation) {
        return IsNumberedAnnotation(annotation.element);
    });
    if (!isNumbered) m_ofKinds[kind] = tables;
    return tables;
}

} // namespace OvPipeline
