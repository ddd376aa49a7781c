#include "Commands/Commands.h"
#include "Commands/PartsTree.h"
#include "Source/PackageSource.h"

namespace OvPipeline {

int PartsCommand(const CommandOptions& options, ShownOutput& out, ShownOutput&) {
    const SharedContext context = OpenJobPackage(options.job, std::make_shared<JobState>());
    CComPtr<PackageSource> source;
    source.Attach(new PackageSource(context));
    std::error_code error;
    PartsTree tree(context, out, options.json ? PartsTree::Form::Json : PartsTree::Form::Text);
    tree.Begin(options.job.name, std::filesystem::file_size(options.job.path, error));
    while (const CComPtr<IUnknown> part = source->Next())
        tree.Show(part);
    tree.End();
    return ExitOk;
}

} // namespace OvPipeline
