#include "Commands/Commands.h"

#include "Common/HostError.h"
#include "Report/HresultText.h"

#include "Package/PackageError.h"
#include "Spooler/QueueFolderError.h"

#include <ostream>

namespace OvPipeline {

namespace {

constexpr const char* SampleQueue = "ColorOffice";

int Complain(std::ostream& errors, const std::string& line, int code) {
    errors << "ov-pipeline: ";
    for (const char c : line)
        errors << (c == '\n' || c == '\r' ? ' ' : c);
    errors << "\n";
    return code;
}

int RunChosen(const CommandOptions& options, std::ostream& out, std::ostream& errors) {
    if (options.wantsVersion) {
        out << "ov-pipeline " << OV_VERSION << "\n";
        return ExitOk;
    }
    if (options.wantsHelp) {
        out << HelpText(options.command);
        return ExitOk;
    }
    if (options.command == "run") return RunCommand(options, out, errors);
    return options.command == "ticket" ? TicketCommand(options, out) : PartsCommand(options, out);
}

} // namespace

int RunProgram(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& errors) {
    CommandOptions options;
    try {
        options = ParseCommandLine(arguments);
        return RunChosen(options, out, errors);
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
    } catch (const std::bad_alloc&) {
        return Complain(errors, HresultText(E_OUTOFMEMORY), ExitJobFailed);
    } catch (const std::exception& error) {
        return Complain(errors, error.what(), ExitJobFailed);
    }
}

std::string AboutJob(const CommandOptions& options, const std::string& line) {
    return line.starts_with(options.job + ":") ? line : options.job + ": " + line;
}

std::shared_ptr<const OvPlatform::QueueFolder> LoadQueue(const CommandOptions& options) {
    if (!options.queue.empty()) return OvPlatform::QueueFolder::Load(options.queue);
    std::error_code error;
    const auto program = std::filesystem::read_symlink("/proc/self/exe", error).parent_path();
    for (const auto& folder : {program.parent_path() / "share" / "ov-pipeline" / "Queues" / SampleQueue,
                               std::filesystem::path(OV_SAMPLE_QUEUES) / SampleQueue})
        if (std::filesystem::exists(folder, error)) return OvPlatform::QueueFolder::Load(folder);
    throw UsageError(std::string("no queue: name one with --queue DIR; the sample queue ") + SampleQueue +
                     " is not installed");
}

} // namespace OvPipeline
