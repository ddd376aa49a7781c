#include "Chain/FilterModule.h"
#include "Commands/Commands.h"
#include "Commands/FamilyChoice.h"
#include "Commands/JobRun.h"
#include "Commands/JobWatch.h"
#include "Commands/KeptInputs.h"
#include "Commands/QueueConfiguration.h"
#include "Commands/StandardOutput.h"
#include "HtmlReport/DeviceSection.h"
#include "HtmlReport/JobReading.h"
#include "HtmlReport/PagePictures.h"
#include "HtmlReport/ReportPage.h"
#include "HtmlReport/SettingsTables.h"
#include "HtmlReport/TimesSection.h"

#include <DeviceControl/CreatorName.h>
#include <System/OutputFile.h>
#include <System/StreamOutput.h>

#include <algorithm>
#include <set>

namespace OvPipeline {

namespace {

// Where the report is going to stand. It is opened before the work, which would be for nothing otherwise.
class ReportOutput {
public:
    explicit ReportOutput(const CommandOptions& options) {
        if (options.output == standardStream) {
            m_stream.emplace();
            m_output = std::make_unique<OvPlatform::StreamOutput>(m_stream->Descriptor(), "the output stream",
                                                                  [] { return false; });
            return;
        }
        std::filesystem::path file = options.output;
        if (file.empty()) {
            if (options.job.path != options.job.name)
                throw UsageError("what comes by the input stream has no name: -o names the output");
            file = options.job.path.stem().string() + "-report.html";
        }
        KeepInputs(options, "the report", file);
        m_output = std::make_unique<OvPlatform::OutputFile>(file);
    }

    bool IsStream() const { return m_stream.has_value(); }
    void Write(const std::string& text) {
        m_output->Write(text.data(), text.size());
        m_output->Finish();
        m_output->Commit();
    }
    std::string Name() const { return m_output->Name().string(); }

private:
    std::optional<StandardOutput> m_stream;
    std::unique_ptr<OvPlatform::ByteOutput> m_output;
};

std::vector<std::uint64_t> PagesOf(const JobOutline& job) {
    std::vector<std::uint64_t> pages;
    for (const OutlineLevel& level : job.levels)
        if (level.kind == OutlineLevel::Kind::Page) pages.push_back(level.number);
    return pages;
}

bool HasModule(const std::string& name) {
    try {
        FilterModule::Load(ParseFilterArgument(name));
        return true;
    } catch (const HostError&) {
        return false;
    }
}

// The job through the chosen chain, or one that suits: what a device of PostScript gets, where it is to be
// drawn, else the filter that lets all parts pass.
RunSummary RunChain(const CommandOptions& options,
                    const std::shared_ptr<const OvPlatform::QueueFolder>& queue, bool isDrawn,
                    const std::filesystem::path& output, ShownOutput& errors) {
    CommandOptions chain = options;
    chain.output = output.string();
    if (chain.filters.empty() && chain.config.empty()) {
        const char* const printing = "DeviceStream";
        const char* const passing = "PassThrough";
        if (isDrawn && HasModule(printing))
            chain.filters = {printing};
        else if (HasModule(passing))
            chain.filters = {passing};
    }
    return JobRun(chain, queue, JobRun::Progress::Hidden).Run(errors);
}

// One that cannot be read is a fault of the queue's, with which the job is printed all the same.
HtmlText PolicyOf(const OvPlatform::QueueFolder& queue) {
    try {
        return PolicyTable(PolicyReport(XmlConfigurationReading(ReadConfigurationText(queue))));
    } catch (const std::runtime_error& error) {
        HtmlText html;
        html.Element("p", error.what(), {{"class", "trouble"}});
        return html;
    }
}

} // namespace

int ReportCommand(const CommandOptions& options, ShownOutput& out, ShownOutput& errors) {
    if (!options.family.empty()) NamedFamily(options.family);
    const auto queue = LoadQueue(options);
    ReportOutput output(options);
    const PagePictures pictures;
    std::set<std::string> warned;
    const Warner warn = [&, tell = WarnOf(options, errors)](const std::string& what) {
        if (warned.insert(what).second) tell(what);
    };
    JobReading job(options, queue, warn);
    JobAtDevice& device = job.Device();

    ReportContents contents;
    contents.queue = Utf8(queue->PrinterName());
    contents.outline = &job.Outline();
    contents.settings = &job.Settings();
    contents.annotations = &job.Annotations();
    contents.features = FeaturesTable(FeatureReport(device.Settings()));
    contents.policy = PolicyOf(*queue);
    CreatorName::FillIn(device.Settings().Features());
    const DeviceFamily* const ofQueue = FamilyOfQueue(*queue);
    const DeviceFamily* const family = options.family.empty() ? ofQueue : &NamedFamily(options.family);
    if (family != nullptr) {
        FamilyHeader header(device, *family,
                            [&](const std::string& what) { warn(CommandSafeFeatureAccess::Warning(what)); });
        header.FindCauses(device);
        contents.device = DeviceSection(header);
    } else {
        contents.device.Element("p", "The queue does not say its device's family: --family names one of " +
                                         FamilyNames() + ".");
    }

    const bool isDrawn = !options.noPictures && ofQueue != nullptr &&
                         ofQueue->language == DeviceFamily::PageLanguage::PostScript &&
                         PagePictures::CanDrawStreams();
    const std::filesystem::path printed = pictures.Folder() / "output";
    JobWatch::StayForTheProgram(false); // the report is still to be written then
    const RunSummary run = RunChain(options, queue, isDrawn, printed, errors);
    if (run.exitCode == ExitCancelled) {
        errors.Line("ov-pipeline: " + run.trouble);
        return run.exitCode;
    }
    if (run.exitCode != ExitOk) warn("it does not get through the filters: " + run.trouble);
    contents.times = TimesSection(run);

    if (options.noPictures) {
        contents.input.remark = contents.output.remark = "none were asked for";
    } else {
        const std::vector<std::uint64_t> pages = PagesOf(job.Outline());
        contents.input = pictures.OfPackage(options.job.path, pages);
        std::vector<std::uint64_t> written(run.pagesWritten);
        for (std::size_t page = 0; page < written.size(); ++page)
            written[page] = page + 1;
        if (run.exitCode != ExitOk)
            contents.output.remark = "none: the job did not come to its end";
        else if (!run.isPackage)
            contents.output = pictures.OfStream(printed);
        else if (!written.empty())
            contents.output = pictures.OfPackage(printed, written);
    }

    output.Write(ReportPage(contents));
    if (!options.quiet && !output.IsStream())
        out.Line(output.Name() + ": " + Counted(job.Outline().pages, "page") + " of " + options.job.name);
    return ExitOk;
}

} // namespace OvPipeline
