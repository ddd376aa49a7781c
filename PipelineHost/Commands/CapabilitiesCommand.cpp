#include "Commands/CapabilitiesJson.h"
#include "Commands/CapabilitiesText.h"
#include "Commands/Commands.h"
#include "Commands/QueueConfiguration.h"

#include <ComSupport/MsSafeCoinit.h>

#include <stdexcept>

namespace OvPipeline {

namespace {

// What keeps the administrator's configuration from being read keeps no feature from being shown.
CPString ConfigurationOf(const OvPlatform::QueueFolder& queue, std::string& trouble) {
    try {
        return ReadConfigurationText(queue);
    } catch (const std::runtime_error& error) {
        trouble = error.what();
        return {};
    }
}

} // namespace

int CapabilitiesCommand(const CommandOptions& options, ShownOutput& out, ShownOutput& errors) {
    const auto queue = LoadQueue(options);
    const auto tickets = OvPlatform::QueueTickets::Of(queue);
    const MsSafeCoInit apartment;
    std::string trouble;
    const PolicyReport policy{XmlConfigurationReading(ConfigurationOf(*queue, trouble))};
    OfferedSettings offered = OfferedSettings::Read(*tickets, policy);
    if (!options.feature.empty() && !offered.KeepOnly(options.feature))
        throw std::runtime_error("the queue has no feature and no parameter \"" + options.feature + "\"");
    if (options.json)
        out.Json(CapabilitiesJson(offered));
    else
        out.Text(CapabilitiesText(offered, out.Width()));
    if (trouble.empty()) trouble = policy.FaultLine();
    if (trouble.empty()) return ExitOk;
    errors.Line("ov-pipeline: the queue's configuration: " + trouble);
    return ExitJobFailed;
}

} // namespace OvPipeline
