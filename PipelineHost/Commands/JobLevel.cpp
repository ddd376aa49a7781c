#include "Commands/JobLevel.h"

#include "Commands/InputBytes.h"
#include "Commands/JobWishesOf.h"
#include "Commands/LevelMerge.h"
#include "Common/HostError.h"
#include "Common/Text.h"
#include "Report/FilterWords.h"
#include "Source/OverlaidTicket.h"
#include "Source/PackageSource.h"

#include <PrintTicket/PrintTicketError.h>

#include <algorithm>
#include <fstream>
#include <string_view>

using namespace std::string_view_literals;

namespace OvPipeline {

namespace {

constexpr const char* noPagesInATicket = "a print ticket by itself has neither documents nor pages";

// The ticket slot of a part; null for a part that is null.
template <class Part>
TicketSlot* SlotOf(Part* part) {
    const CComQIPtr<IHostTicketed> ticketed(part);
    return ticketed ? &ticketed->Ticket() : nullptr;
}
TicketSlot* SlotOf(IFixedPage* part) {
    const CComQIPtr<IHostPage> page(part);
    return page ? &page->Page().Ticket() : nullptr;
}

} // namespace

void AddToExplanation(TicketExplanation& explanation, const char* level, EPrintTicketScope scope,
                      TicketSlot* slot) {
    if (slot == nullptr) return; // the level that is asked for lies above
    if (slot->IsEmpty()) return explanation.Add(level, scope, nullptr);
    const std::string name = slot->Name();
    const CComPtr<IPartPrintTicket> part = slot->Take(PartKind::PrintTicket);
    const CComQIPtr<IHostPart> host(part);
    const std::string text = ReadTicket(host->Core());
    try {
        explanation.Add(level, scope, &text);
    } catch (const OvPlatform::PrintTicketError& error) {
        throw InputError(error.Result(), name, name + ": " + error.what());
    }
}

namespace {

// A ticket is markup, which no package begins like.
bool IsTicketFile(const std::filesystem::path& file) {
    std::error_code error;
    if (!std::filesystem::is_regular_file(file, error)) return false; // one must not be waited for
    std::ifstream stream(file, std::ios::binary);
    char first[4] = {};
    stream.read(first, sizeof first);
    const std::string_view bytes(first, static_cast<std::size_t>(stream.gcount()));
    const std::size_t at = bytes.find_first_not_of("\xEF\xBB\xBF\xFF\xFE \t\r\n\0"sv);
    return at != std::string_view::npos && bytes[at] == '<';
}

// A job of nothing but its ticket.
LevelParts LevelOfTicket(const CommandOptions& options) {
    if (options.document || options.page) throw UsageError(noPagesInATicket);
    const JobWishes wishes = WishesOf(options);
    auto context = std::make_shared<PartContext>();
    context->job = std::make_shared<JobState>();
    PartCore core;
    core.context = context;
    core.kind = PartKind::PrintTicket;
    core.name = options.job.name;
    core.contentType = ticketContentType;
    core.content = std::make_shared<MemoryContent>(ReadInputBytes(options.job));
    if (wishes.ticket)
        core.content = std::make_shared<OverlaidTicket>(core, wishes.ticket, OverlaidTicket::Place::Over);
    CComPtr<IPartPrintTicket> ticket;
    ticket.Attach(new PrintTicketPart(std::move(core)));
    TicketSlot slot;
    slot.Set(ticket);
    LevelParts parts;
    parts.sequence.Attach(new FixedDocumentSequencePart(context, options.job.name, std::move(slot)));
    return parts;
}

// All pages, whichever are asked for.
CComPtr<PackageSource> OpenSource(const CommandOptions& options) {
    JobWishes wishes = WishesOf(options);
    wishes.pages = {};
    CComPtr<PackageSource> source;
    source.Attach(
        new PackageSource(OpenJobPackage(options.job, std::make_shared<JobState>()), {}, std::move(wishes)));
    return source;
}

LevelParts LevelOfPackage(const CommandOptions& options) {
    const CComPtr<PackageSource> source = OpenSource(options);
    LevelParts parts;
    unsigned long documents = 0;
    unsigned long pages = 0; // of the job, or of the document that is asked for
    while (const CComPtr<IUnknown> part = source->Next()) {
        if (const CComQIPtr<IFixedDocumentSequence> sequence(part); sequence) {
            parts.sequence = sequence.p;
            if (!options.document && !options.page) return parts;
        } else if (const CComQIPtr<IFixedDocument> document(part); document) {
            parts.document = document.p;
            if (++documents == options.document && !options.page) return parts;
            if (options.document && documents > *options.document) break;
        } else if (const CComQIPtr<IFixedPage> page(part); page) {
            if (options.document && documents != *options.document) continue;
            if (++pages == options.page) {
                parts.page = page.p;
                return parts;
            }
        }
    }
    if (options.document && documents < *options.document)
        throw UsageError("the job has " + Counted(documents, "document") + "; there is no document " +
                         std::to_string(*options.document));
    throw UsageError(std::string(options.document ? "the document has " : "the job has ") +
                     Counted(pages, "page") + "; there is no page " + std::to_string(*options.page));
}

} // namespace

LevelParts OpenLevel(const CommandOptions& options) {
    return IsTicketFile(options.job.path) ? LevelOfTicket(options) : LevelOfPackage(options);
}

void ForEachPage(const CommandOptions& options,
                 const std::function<void(std::uint64_t page, const LevelParts& parts)>& take) {
    if (IsTicketFile(options.job.path)) throw UsageError(noPagesInATicket);
    const CComPtr<PackageSource> source = OpenSource(options);
    LevelParts parts;
    std::uint64_t pages = 0;
    bool hasTaken = false;
    while (const CComPtr<IUnknown> part = source->Next()) {
        if (const CComQIPtr<IFixedDocumentSequence> sequence(part); sequence) {
            parts.sequence = sequence.p;
        } else if (const CComQIPtr<IFixedDocument> document(part); document) {
            parts.document = document.p;
        } else if (const CComQIPtr<IFixedPage> page(part); page && options.pages.Contain(++pages)) {
            parts.page = page.p;
            take(pages, parts);
            hasTaken = true;
        }
    }
    if (!hasTaken)
        throw UsageError("the job has " + Counted(pages, "page") + ", and none of them is among " +
                         options.pages.Text());
}

TicketExplanation ExplainLevel(const std::shared_ptr<const OvPlatform::QueueFolder>& queue,
                               const LevelParts& parts) {
    TicketExplanation explanation(queue);
    AddToExplanation(explanation, "job", kPTJobScope, SlotOf(parts.sequence.p));
    AddToExplanation(explanation, "document", kPTDocumentScope, SlotOf(parts.document.p));
    AddToExplanation(explanation, "page", kPTPageScope, SlotOf(parts.page.p));
    return explanation;
}

EPrintTicketScope MergeLevel(PrintTicketManager& manager,
                             const std::shared_ptr<const OvPlatform::QueueFolder>& queue,
                             const LevelParts& parts, const Warner& warn) {
    const FilterWords words;
    const EPrintTicketScope level = LevelMerge(manager, queue).Merge(parts);
    std::ranges::for_each(words.Heard(), warn);
    return level;
}

} // namespace OvPipeline
