#include "Commands/AnnotationsOfJob.h"
#include "Commands/AnnotationsReport.h"
#include "Commands/Commands.h"
#include "Commands/DisplayNames.h"
#include "Commands/JobAtDevice.h"
#include "Common/HostError.h"
#include "Report/FilterWords.h"

#include <ComSupport/MsSafeCoinit.h>
#include <XpsParts/PageRoot.h>

#include <algorithm>

namespace OvPipeline {

int AnnotationsCommand(const CommandOptions& options, ShownOutput& out, ShownOutput& errors) {
    CommandOptions level = options;
    if (!level.page) level.page = 1;
    const LevelParts parts = OpenLevel(level);
    JobDescription job;
    job.file = options.job;
    job.queue = LoadQueue(options);
    const JobPrinter printer(job);
    const MsSafeCoInit apartment;
    PrintTicketManager manager;
    const Warner warn = WarnOf(options, errors);
    MergeLevel(manager, printer.SharedQueue(), parts, warn);
    const FilterWords words;
    XpsFilterPrintTicket ticket(&manager, DisplayNames());
    if (const HRESULT hr = manager.GetSnapshotOfCurrentMergedPartPrintTicket(kPTPageScope, ticket);
        FAILED(hr))
        throw HostError(hr, {}, "the merged tickets cannot be read");
    CheckAttributeBytes(ticket, options.job.name);
    const auto annotations = AnnotationsOfJob(ticket, printer, options.job.name);
    const Gdiplus::SizeF size = PageRoot::Read(*parts.page).size;
    const AnnotationsReport report(annotations->OfPage(size), size, static_cast<unsigned>(*level.page) - 1);
    std::ranges::for_each(words.Heard(), warn);
    if (options.json)
        out.Json(report.AsJson());
    else
        out.Text(report.AsText(out.Width()));
    return ExitOk;
}

} // namespace OvPipeline
