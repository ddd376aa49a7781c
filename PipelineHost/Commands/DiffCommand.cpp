#include "Commands/Commands.h"
#include "Common/HostError.h"
#include "Comparison/FileComparison.h"
#include "Report/HresultText.h"

#include <exception>
#include <new>

namespace OvPipeline {

namespace {

// The exit code of what fails is never that of two files that differ.
int Refuse(ShownOutput& errors, const std::string& subject, const std::string& problem) {
    const bool isNamed = subject.empty() || problem.starts_with(subject + ":");
    errors.Line("ov-pipeline: " + (isNamed ? problem : subject + ": " + problem));
    return ExitInputRefused;
}

DifferenceReport Compare(const CommandOptions& options) {
    const std::string& second = options.operands[1];
    const ComparedKind kind = KindOfFile(options.job.path);
    const ComparedKind other = KindOfFile(second);
    if (kind != other)
        throw UsageError(options.job.name + " is a " + NameOf(kind) + ", " + second + " a " + NameOf(other) +
                         ": only two of one kind can be compared");
    return CompareFiles(kind, options.job.path, second, options.ignoreTimes);
}

int Show(const DifferenceReport& report, const CommandOptions& options, ShownOutput& out) {
    if (options.json)
        out.Json(report.AsJson(options.job.name, options.operands[1]));
    else
        out.Text(report.AsText(options.job.name, options.operands[1]));
    return report.IsEmpty() ? ExitOk : ExitJobFailed;
}

} // namespace

int DiffCommand(const CommandOptions& options, ShownOutput& out, ShownOutput& errors) {
    try {
        return Show(Compare(options), options, out);
    } catch (const UsageError&) {
        throw;
    } catch (const HostError& error) {
        const bool isFirst = error.Subject() == options.job.path.string();
        return Refuse(errors, isFirst ? options.job.name : error.Subject(),
                      std::string(error.what()) + ": " + HresultText(error.Result()));
    } catch (const std::bad_alloc&) {
        return Refuse(errors, {}, HresultText(E_OUTOFMEMORY));
    } catch (const std::exception& error) {
        return Refuse(errors, {}, error.what());
    }
}

} // namespace OvPipeline
