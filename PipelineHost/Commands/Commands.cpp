#include "Commands/Commands.h"

#include "Common/HostError.h"
#include "Report/HresultText.h"

#include <LowLevelFacilities/Failures/CPComException.h>
#include <Package/PackageError.h>
#include <PrintTicket/PrintTicketMerge.h>
#include <Spooler/QueueFolderError.h>

#include <windows.h>
#include <atlcomcli.h>

namespace OvPipeline {

namespace {

constexpr const char* sampleQueue = "ColorOffice";

int Complain(ShownOutput& errors, const std::string& line, int code) {
    errors.Line("ov-pipeline: " + line);
    return code;
}

int RunChosen(const CommandOptions& options, ShownOutput& out, ShownOutput& errors) {
    if (options.wantsVersion) {
        out.Line("ov-pipeline " OV_VERSION);
        return ExitOk;
    }
    if (options.wantsHelp) {
        out.Text(HelpText(options.command));
        return ExitOk;
    }
    if (options.command == "run") return RunCommand(options, out, errors);
    if (options.command == "ticket") return TicketCommand(options, out, errors);
    if (options.command == "features") return FeaturesCommand(options, out, errors);
    if (options.command == "settings") return SettingsCommand(options, out, errors);
    if (options.command == "annotations") return AnnotationsCommand(options, out, errors);
    if (options.command == "header") return HeaderCommand(options, out, errors);
    if (options.command == "queue") return QueueCommand(options, out, errors);
    if (options.command == "policy") return PolicyCommand(options, out, errors);
    if (options.command == "stamp") return StampCommand(options, out, errors);
    return options.command == "translate" ? TranslateCommand(options, out) : PartsCommand(options, out);
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

int RunProgram(const std::vector<std::string>& arguments, std::ostream& outStream,
               std::ostream& errorStream) {
    ShownOutput out(outStream);
    ShownOutput errors(errorStream);
    CommandOptions options;
    try {
        options = ParseCommandLine(arguments);
        const int code = RunChosen(options, out, errors);
        if (code == ExitOk && !out.Flush())
            return Complain(errors, "what was to be printed cannot be written", ExitJobFailed);
        return code;
    } catch (const UsageError& error) {
        return Complain(errors, std::string(error.what()) + " (see ov-pipeline --help)", ExitUsage);
    } catch (const HostError& error) {
        const std::string line = std::string(error.what()) + ": " + HresultText(error.Result());
        return Complain(errors, error.FromInput() ? AboutJob(options, line) : line,
                        error.FromInput() ? ExitInputRefused : ExitJobFailed);
    } catch (const OvPlatform::PackageError& error) {
        return Complain(errors,
                        AboutJob(options, std::string(error.what()) + ": " + HresultText(error.Result())),
                        ExitInputRefused);
    } catch (const OvPlatform::QueueFolderError& error) {
        return Complain(errors, error.what(), ExitInputRefused);
    } catch (const CPComException& error) {
        const std::string line = std::string(error.what()) + ": " + HresultText(error.GetHresult());
        return Complain(errors, AboutJob(options, line), ExitJobFailed);
    } catch (const CAtlException& error) {
        return Complain(errors, AboutJob(options, HresultText(error)), ExitJobFailed);
    } catch (const std::bad_alloc&) {
        return Complain(errors, HresultText(E_OUTOFMEMORY), ExitJobFailed);
    } catch (const std::exception& error) {
        return Complain(errors, error.what(), ExitJobFailed);
    }
}

Warner WarnOf(const CommandOptions& options, ShownOutput& errors) {
    return
        [&](const std::string& what) { errors.Line("ov-pipeline: " + options.job + ": warning: " + what); };
}

std::string AboutJob(const CommandOptions& options, const std::string& line) {
    const std::string& input = options.devmode.empty() ? options.job : options.devmode;
    return line.starts_with(input + ":") ? line : input + ": " + line;
}

std::shared_ptr<const OvPlatform::QueueFolder> LoadQueue(const CommandOptions& options) {
    if (!options.queue.empty()) return LoadChecked(options.queue);
    std::error_code error;
    const auto program = std::filesystem::read_symlink("/proc/self/exe", error).parent_path();
    for (const auto& folder : {program.parent_path() / "share" / "ov-pipeline" / "Queues" / sampleQueue,
                               std::filesystem::path(OV_SAMPLE_QUEUES) / sampleQueue})
        if (std::filesystem::exists(folder, error)) return LoadChecked(folder);
    throw UsageError(std::string("no queue: name one with --queue DIR; the sample queue ") + sampleQueue +
                     " is not installed");
}

} // namespace OvPipeline
