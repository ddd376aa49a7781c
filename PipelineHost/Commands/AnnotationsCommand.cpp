#include "Chain/JobProperties.h"
#include "Commands/AnnotationsReport.h"
#include "Commands/Commands.h"
#include "Commands/DisplayNames.h"
#include "Commands/JobAtDevice.h"
#include "Commands/LevelReports.h"
#include "Commands/QueueConfiguration.h"
#include "Common/HostError.h"
#include "Report/FilterWords.h"

#include <ComSupport/MsSafeCoinit.h>
#include <LowLevelFacilities/Failures/CPExceptionInvalidArgument.h>
#include <Spooler/QueueFolderError.h>
#include <XpsParts/PageRoot.h>

#include <algorithm>

namespace OvPipeline {

namespace {

/// The job as a filter finds it with the spooler.
JobAnnotations::Job JobAt(const JobPrinter& printer) {
    JobAnnotations::Job job{printer.Handle(), printer.JobId()};
    for (const OvPlatform::QueueJob& queued : printer.Queue().Jobs()) {
        if (queued.id != printer.JobId()) continue;
        job.userName = CXString(queued.user.c_str());
        job.documentName = CXString(queued.document.c_str());
    }
    return job;
}

std::unique_ptr<AnnotationStore> StoreOf(const OvPlatform::QueueFolder& queue) {
    try {
        return JobAnnotations::ReadStore(QueueSettings(queue).Properties());
    } catch (const CPExceptionInvalidArgument& failure) {
        throw OvPlatform::QueueFolderError(queue.Folder(), "the queue property AnnotationStore: " +
                                                               std::string(failure.what()));
    }
}

std::unique_ptr<JobAnnotations> ReadAnnotations(XpsFilterPrintTicket& ticket, const JobPrinter& printer,
                                                const std::string& job) {
    auto store = StoreOf(printer.Queue());
    try {
        return std::make_unique<JobAnnotations>(ticket, std::move(store), JobAt(printer));
    } catch (const CPExceptionInvalidArgument& failure) {
        throw InputError(E_INVALIDARG, job, job + ": " + failure.what());
    }
}

} // namespace

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
        const auto annotations = ReadAnnotations(ticket, printer, options.job.name);
        const Gdiplus::SizeF size = PageRoot::Read(*parts.page).size;
        const std::uint64_t page = number != 0 ? number : *chosen.page;
        AnnotationsReport report(annotations->OfPage(size), size, static_cast<unsigned>(page) - 1);
        std::ranges::for_each(words.Heard(), warn);
        return report;
    });
    return ExitOk;
}

} // namespace OvPipeline
