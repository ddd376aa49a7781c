#include "Commands/Commands.h"

#include "Arguments/CommandLine.h"
#include "Arguments/HelpText.h"
#include "Commands/StandardInput.h"
#include "Commands/Trouble.h"
#include "Common/Installation.h"
#include "Report/HresultText.h"

#include <PrintTicket/PrintTicketMerge.h>
#include <Spooler/QueueFolderError.h>

#include <algorithm>
#include <optional>
#include <utility>

namespace OvPipeline {

namespace {

constexpr const char* sampleQueue = "ColorOffice";

int Complain(ShownOutput& errors, const Trouble& trouble) {
    errors.Line("ov-pipeline: " + trouble.line);
    return trouble.code;
}

using Work = int (*)(const CommandOptions& options, ShownOutput& out, ShownOutput& errors);

constexpr std::pair<std::string_view, Work> works[] = {{"run", RunCommand},
                                                       {"ticket", TicketCommand},
                                                       {"features", FeaturesCommand},
                                                       {"settings", SettingsCommand},
                                                       {"annotations", AnnotationsCommand},
                                                       {"header", HeaderCommand},
                                                       {"parts", PartsCommand},
                                                       {"policy", PolicyCommand},
                                                       {"queue", QueueCommand},
                                                       {"capabilities", CapabilitiesCommand},
                                                       {"diff", DiffCommand},
                                                       {"report", ReportCommand},
                                                       {"stamp", StampCommand},
                                                       {"translate", TranslateCommand}};

constexpr std::size_t helpWidth = 100; // where no terminal has another

int RunChosen(CommandOptions& options, ShownOutput& out, ShownOutput& errors) {
    if (options.wantsVersion) {
        out.Line("ov-pipeline " OV_VERSION);
        return ExitOk;
    }
    if (options.wantsHelp) {
        out.Text(HelpText(options.command, out.Width() > 0 ? out.Width() : helpWidth));
        return ExitOk;
    }
    std::optional<StandardInput> input;
    if (options.job.name == standardStream) {
        input.emplace();
        options.job = input->File();
    }
    const auto* const work = std::ranges::find(works, std::string_view(options.command),
                                               &std::pair<std::string_view, Work>::first);
    return work->second(options, out, errors);
}

// Without this check a filter that needs the queue's documents would fail, and have no words for why.
std::shared_ptr<const OvPlatform::QueueFolder> LoadChecked(const std::filesystem::path& folder) {
    auto queue = OvPlatform::QueueFolder::Load(folder);
    try {
        const OvPlatform::PrintTicketMerge readsBoth(queue);
    } catch (const OvPlatform::PrintTicketError& error) {
        throw OvPlatform::QueueFolderError(folder,
                                           std::string(error.what()) + ": " + HresultText(error.Result()));
    }
    return queue;
}

} // namespace

int RunProgram(const std::vector<std::string>& arguments, ShownOutput& out, ShownOutput& errors) {
    CommandOptions options;
    try {
        options = ParseCommandLine(arguments);
        const int code = RunChosen(options, out, errors);
        if (code == ExitOk && !out.Flush())
            return Complain(errors, {ExitJobFailed, "what was to be printed cannot be written"});
        return code;
    } catch (...) {
        return Complain(errors, Trouble::Caught(options));
    }
}

Warner WarnOf(const CommandOptions& options, ShownOutput& errors) {
    return [&](const std::string& what) {
        if (!options.quiet) errors.Line("ov-pipeline: " + options.job.name + ": warning: " + what);
    };
}

std::shared_ptr<const OvPlatform::QueueFolder> LoadQueue(const CommandOptions& options) {
    const std::string& named = options.queue;
    std::error_code error;
    const bool isFolder = named.find('/') != std::string::npos || std::filesystem::exists(named, error);
    if (!named.empty() && isFolder) return LoadChecked(named);
    if (const auto folder = Installation::SampleQueue(named.empty() ? sampleQueue : named.c_str()))
        return LoadChecked(*folder);
    if (!named.empty()) return LoadChecked(named); // which says what is wrong with it
    throw UsageError(std::string("no queue: name one with --queue DIR; the sample queue ") + sampleQueue +
                     " is not installed");
}

} // namespace OvPipeline
