#include "Commands/KeptInputs.h"

namespace OvPipeline {

void KeepInputs(const CommandOptions& options, const std::string& what, const std::filesystem::path& output) {
    const auto keep = [&](const char* kind, const std::filesystem::path& file, const std::string& name) {
        std::error_code error;
        if (std::filesystem::equivalent(file, output, error))
            throw UsageError(what + " would take the place of the " + kind + " " + name);
    };
    keep("job", options.job.path, options.job.name);
    keep("ticket", options.ticket, options.ticket);
    keep("configuration", options.config, options.config);
}

} // namespace OvPipeline
