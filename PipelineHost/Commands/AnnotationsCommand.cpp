#include "Commands/AnnotationsOfJob.h"
#include "Commands/AnnotationsReport.h"
#include "Commands/Commands.h"
#include "Commands/DisplayNames.h"
#include "Commands/JobAtDevice.h"
#include "Commands/LevelReports.h"
#include "Common/HostError.h"
#include "Report/FilterWords.h"

#include <ComSupport/MsSafeCoinit.h>
#include <XpsParts/PageRoot.h>

#include <algorithm>

namespace OvPipeline {

int AnnotationsCommand(const CommandOptions& options, ShownOutput& out, ShownOutput& errors) {
    CommandOptions chosen = options;
    if (!chosen.page && chosen.pages.AreAll()) chosen.page = 1;
    JobDescription job;
    job.file = options.job;
    job.queue = LoadQueue(options);
    const JobPrinter printer(job);
    const MsSafeCoInit apartment;
    const Warner warn = WarnOf(options, errors);
    LevelReports(chosen, out).Write([&](const LevelParts& parts, std::uint64_t number) {
        PrintTicketManager manager;
        MergeLevel(manager, printer.SharedQueue(), parts, warn);
        const FilterWords words;
        XpsFilterPrintTicket ticket(&manager, DisplayNames());
        if (const HRESULT hr = manager.GetSnapshotOfCurrentMergedPartPrintTicket(kPTPageScope, ticket);
            FAILED(hr))
            throw HostError(hr, {}, "the merged tickets cannot be read");
        CheckAttributeBytes(ticket, options.job.name);
        const auto annotations = AnnotationsOfJob(ticket, printer, options.job.name);
        const Gdiplus::SizeF size = PageRoot::Read(*parts.page).size;
        const std::uint64_t page = number != 0 ? number : *chosen.page;
        AnnotationsReport report(annotations->OfPage(size), size, static_cast<unsigned>(page) - 1);
        std::ranges::for_each(words.Heard(), warn);
        return report;
    });
    return ExitOk;
}

} // namespace OvPipeline
