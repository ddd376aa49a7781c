#include "Commands/Commands.h"
#include "Commands/DisplayNames.h"
#include "Commands/JobAtDevice.h"
#include "Commands/SettingsReport.h"
#include "Common/HostError.h"
#include "Report/FilterWords.h"

#include <ComSupport/MsSafeCoinit.h>
#include <Spooler/QueueRegistry.h>

#include <algorithm>

namespace OvPipeline {

int SettingsCommand(const CommandOptions& options, ShownOutput& out, ShownOutput& errors) {
    const auto queue = LoadQueue(options);
    OvPlatform::QueueRegistry::Add(queue);
    const LevelParts parts = OpenLevel(options);
    const MsSafeCoInit apartment;
    PrintTicketManager manager;
    const Warner warn = WarnOf(options, errors);
    const EPrintTicketScope level = MergeLevel(manager, queue, parts, warn);
    const FilterWords words; // a question that cannot be answered may give what holds by default
    XpsFilterPrintTicket ticket(&manager, DisplayNames());
    if (const HRESULT hr = manager.GetSnapshotOfCurrentMergedPartPrintTicket(level, ticket); FAILED(hr))
        throw HostError(hr, {}, "the merged tickets cannot be read");
    CheckAttributeBytes(ticket, options.job.name);
    const SettingsReport report(ticket);
    std::ranges::for_each(words.Heard(), warn);
    if (options.json)
        out.Json(report.AsJson());
    else
        out.Text(report.AsTable(out.Width()));
    return ExitOk;
}

} // namespace OvPipeline
