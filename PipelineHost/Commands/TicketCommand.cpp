#include "Commands/Commands.h"
#include "Commands/DevmodeTicket.h"
#include "Commands/JobLevel.h"
#include "Commands/TicketText.h"
#include "Source/PackageSource.h"

#include <ComSupport/MsSafeCoinit.h>
#include <Spooler/QueueRegistry.h>

namespace OvPipeline {

namespace {

std::string MergedTicket(const std::shared_ptr<const OvPlatform::QueueFolder>& queue,
                         const LevelParts& parts) {
    const MsSafeCoInit apartment;
    PrintTicketManager manager;
    const EPrintTicketScope level = MergeLevel(manager, queue, parts);
    return IndentedTicket(manager.GetPtrToPrintTicketForReading(level));
}

} // namespace

int TicketCommand(const CommandOptions& options, ShownOutput& out) {
    const auto queue = LoadQueue(options);
    OvPlatform::QueueRegistry::Add(queue);
    if (!options.devmode.empty()) {
        out.Xml(DevmodeTicket(options.devmode, *queue));
        return ExitOk;
    }
    const SharedContext context = OpenJobPackage(options.job, std::make_shared<JobState>());
    const LevelParts parts = FindLevel(options, context);
    if (options.explain)
        out.Text(FormatExplanation(ExplainLevel(queue, parts).Rows()));
    else
        out.Xml(MergedTicket(queue, parts));
    return ExitOk;
}

} // namespace OvPipeline
