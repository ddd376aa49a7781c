#pragma once

#include "Arguments/CommandOptions.h"
#include "Commands/JobLevel.h"
#include "Report/ShownOutput.h"

#include <Spooler/QueueFolder.h>

#include <iosfwd>
#include <memory>

namespace OvPipeline {

/// The whole program: reads the arguments, runs the command, and gives the exit code. Errors are one line on
/// the error stream.
int RunProgram(const std::vector<std::string>& arguments, ShownOutput& out, ShownOutput& errors);

// The commands. They throw HostError, OvPlatform::PackageError, OvPlatform::QueueFolderError and UsageError
// for what keeps them from their work.
int RunCommand(const CommandOptions& options, ShownOutput& out, ShownOutput& errors);
int TicketCommand(const CommandOptions& options, ShownOutput& out, ShownOutput& errors);
int FeaturesCommand(const CommandOptions& options, ShownOutput& out, ShownOutput& errors);
int SettingsCommand(const CommandOptions& options, ShownOutput& out, ShownOutput& errors);
int AnnotationsCommand(const CommandOptions& options, ShownOutput& out, ShownOutput& errors);
int HeaderCommand(const CommandOptions& options, ShownOutput& out, ShownOutput& errors);
int PartsCommand(const CommandOptions& options, ShownOutput& out, ShownOutput& errors);
int PolicyCommand(const CommandOptions& options, ShownOutput& out, ShownOutput& errors);
int QueueCommand(const CommandOptions& options, ShownOutput& out, ShownOutput& errors);
int CapabilitiesCommand(const CommandOptions& options, ShownOutput& out, ShownOutput& errors);
/// 0 for no difference, 1 for differences; never 1 for what cannot be compared.
int DiffCommand(const CommandOptions& options, ShownOutput& out, ShownOutput& errors);
/// Lies in the room HtmlReport, which stands on the others' reports.
int ReportCommand(const CommandOptions& options, ShownOutput& out, ShownOutput& errors);
int StampCommand(const CommandOptions& options, ShownOutput& out, ShownOutput& errors);
/// std::runtime_error where nothing is found.
int TranslateCommand(const CommandOptions& options, ShownOutput& out, ShownOutput& errors);

/// Writes warnings, a line each, that name the job; none where the user wants quiet.
Warner WarnOf(const CommandOptions& options, ShownOutput& errors);

/// The queue that the options name, or the sample queue.
std::shared_ptr<const OvPlatform::QueueFolder> LoadQueue(const CommandOptions& options);

} // namespace OvPipeline
