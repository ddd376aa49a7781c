#include "Commands/Commands.h"
#include "Commands/DevmodeTicket.h"
#include "Commands/JobLevel.h"
#include "Commands/TicketText.h"
#include "Report/FilterWords.h"

#include <ComSupport/MsSafeCoinit.h>
#include <Spooler/QueueRegistry.h>

#include <algorithm>

namespace OvPipeline {

namespace {

std::string MergedTicket(const std::shared_ptr<const OvPlatform::QueueFolder>& queue, const LevelParts& parts,
                         const Warner& warn) {
    PrintTicketManager manager;
    const EPrintTicketScope level = MergeLevel(manager, queue, parts, warn);
    return IndentedTicket(manager.GetPtrToPrintTicketForReading(level));
}

} // namespace

int TicketCommand(const CommandOptions& options, ShownOutput& out, ShownOutput& errors) {
    const auto queue = LoadQueue(options);
    OvPlatform::QueueRegistry::Add(queue);
    if (!options.devmode.empty()) {
        out.Xml(DevmodeTicket(options.devmode, *queue));
        return ExitOk;
    }
    const LevelParts parts = OpenLevel(options);
    const MsSafeCoInit apartment;
    const Warner warn = WarnOf(options, errors);
    if (options.explain || options.json) {
        const FilterWords words;
        const auto rows = ExplainLevel(queue, parts).Rows();
        std::ranges::for_each(words.Heard(), warn);
        if (options.json)
            out.Json(ExplanationAsJson(rows));
        else
            out.Text(FormatExplanation(rows, out.Width()));
    } else {
        out.Xml(MergedTicket(queue, parts, warn));
    }
    return ExitOk;
}

} // namespace OvPipeline
