#pragma once

#include "Commands/AnnotationsOfJob.h"
#include "Commands/JobAtDevice.h"
#include "Commands/SettingsReport.h"
#include "Commands/TicketExplanation.h"
#include "HtmlReport/JobOutline.h"
#include "HtmlReport/SharedTables.h"
#include "Source/PackageSource.h"

#include <ComSupport/MsSafeCoinit.h>

#include <array>
#include <map>
#include <optional>
#include <tuple>
#include <unordered_set>

namespace OvPipeline {

/// One pass over a job, as a filter makes it: its outline, what holds at each level, and what is put onto its
/// pages. Levels under the same tickets are asked once. Belongs to one thread.
class JobReading {
public:
    /// Throws what the commands throw that read a job's levels.
    JobReading(const CommandOptions& options, const std::shared_ptr<const OvPlatform::QueueFolder>& queue,
               Warner warn);
    JobReading(const JobReading&) = delete;
    JobReading& operator=(const JobReading&) = delete;

    const JobOutline& Outline() const { return m_outline; }
    const SharedTables& Settings() const { return m_settings; }
    const SharedTables& Annotations() const { return m_annotations; }
    /// The job's own level.
    JobAtDevice& Device() { return *m_device; }

private:
    using Place = std::size_t;          // in the outline
    using Tickets = std::array<int, 3>; // of job, document and page, by number; 0: none
    using PageSize = std::pair<float, float>;
    using PageKind = std::pair<PageSize, bool>; // whether it is the first

    void Take(IUnknown* part);
    void TakeJob(const CComPtr<IFixedDocumentSequence>& sequence);
    void TakeDocument(const CComPtr<IFixedDocument>& document);
    void TakePage(const CComPtr<IFixedPage>& page);
    void TakeOther(const PartCore& core);

    OutlineLevel& AddLevel(OutlineLevel::Kind kind, const std::string& name);
    void AddPart(OutlineLevel& level, const std::string& kind, const std::string& name, bool viaDictionary);
    void AddTicket(OutlineLevel& level, TicketSlot* slot);
    void ListParts(OutlineLevel& level, const FixedPagePart& page);
    /// The number of a ticket's text; 0 for an empty slot.
    int NumberOf(TicketSlot* slot);
    /// What a filter hears at the level that was merged last.
    std::vector<SettingsReport::Setting> Heard(EPrintTicketScope scope);
    std::size_t TableOf(const std::vector<TicketExplanation::Row>& rows,
                        const std::vector<SettingsReport::Setting>& heard);
    void UseSettings(Place place, std::size_t table);
    void UseAnnotations(Place place, const PageKind& kind);
    std::vector<std::size_t> TablesOf(const PageKind& kind);
    void Snapshot(EPrintTicketScope scope, XpsFilterPrintTicket& ticket);

    const CommandOptions& m_options;
    Warner m_warn;
    const MsSafeCoInit m_apartment;
    SharedContext m_context;
    CComPtr<PackageSource> m_source;
    JobDescription m_job;
    std::optional<JobPrinter> m_printer;
    std::optional<JobAtDevice> m_device;

    JobOutline m_outline;
    SharedTables m_settings;
    SharedTables m_annotations;

    Tickets m_tickets{};
    std::map<std::string, int> m_ticketNames; // of parts that were read
    std::map<std::string, int, std::less<>> m_ticketTexts;
    // Tables of settings, where those of the levels above are on the way to a page's.
    std::map<Tickets, std::size_t> m_tables;
    std::map<Tickets, std::size_t> m_pageTables;
    std::map<std::string, std::vector<SettingsReport::Setting>, std::less<>>
        m_heard;                                  // on pages of this document
    std::map<std::string, std::size_t> m_written; // tables of settings, by what they say
    std::unique_ptr<JobAnnotations> m_ofPages;
    std::map<PageSize, std::vector<PageAnnotation>> m_ofSizes;
    std::map<PageKind, std::vector<std::size_t>> m_ofKinds; // that are the same on all such pages
    std::optional<TicketExplanation> m_ofJob;
    std::optional<TicketExplanation> m_ofDocument;
    std::unordered_set<std::string> m_shownParts;
};

} // namespace OvPipeline
