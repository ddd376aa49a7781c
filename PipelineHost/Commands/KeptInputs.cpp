#include "Commands/KeptInputs.h"

#include <tuple>

namespace OvPipeline {

void KeepInputs(const CommandOptions& options, const std::string& what, const std::filesystem::path& output) {
    const std::tuple<const char*, std::filesystem::path, std::string> inputs[] = {
        {"job", options.job.path, options.job.name},
        {"ticket", options.ticket, options.ticket},
        {"configuration", options.config, options.config},
    };
    std::error_code error;
    for (const auto& [kind, file, name] : inputs)
        if (std::filesystem::equivalent(file, output, error))
            throw UsageError(what + " would take the place of the " + kind + " " + name);
}

} // namespace OvPipeline
