#include "Commands/Commands.h"
#include "Commands/DisplayNames.h"
#include "Commands/JobAtDevice.h"
#include "Commands/LevelReports.h"
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
    const MsSafeCoInit apartment;
    const Warner warn = WarnOf(options, errors);
    LevelReports(options, out).Write([&](const LevelParts& parts, std::uint64_t) {
        PrintTicketManager manager;
        const EPrintTicketScope level = MergeLevel(manager, queue, parts, warn);
        const FilterWords words; // a question that cannot be answered may give what holds by default
        XpsFilterPrintTicket ticket(&manager, DisplayNames());
        if (const HRESULT hr = manager.GetSnapshotOfCurrentMergedPartPrintTicket(level, ticket); FAILED(hr))
            throw HostError(hr, {}, "the merged tickets cannot be read");
        CheckAttributeBytes(ticket, options.job.name);
        SettingsReport report(ticket);
        std::ranges::for_each(words.Heard(), warn);
        return report;
    });
    return ExitOk;
}

} // namespace OvPipeline
