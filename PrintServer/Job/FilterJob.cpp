#include "Job/FilterJob.h"

#include "Job/DeviceCheck.h"
#include "Job/InputKind.h"
#include "Job/PdfConverter.h"
#include "Job/TicketCheck.h"
#include "Options/JobTicket.h"
#include "Ppd/QueuePpd.h"

#include <Chain/Pipeline.h>
#include <ComSupport/MsSafeCoinit.h>
#include <Commands/StandardInput.h>
#include <Commands/TicketExplanation.h>
#include <Common/HostError.h>
#include <Common/ScratchFolder.h>
#include <PrintTicket/PrintTicketError.h>
#include <Report/HresultText.h>
#include <Spooler/QueueFolderError.h>

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <fstream>
#include <optional>

namespace OvPrintServer {

namespace {

constexpr int exitDone = 0;
constexpr int exitFailed = 1;
constexpr std::size_t mostLinesOfOptions = 12;
constexpr std::size_t mostNames = 8;
constexpr const char* renderFilter = "DeviceStream";
// The server's own word for a queue that lacks a program.
constexpr const char* missingConverter = "cups-missing-filter-warning";

std::string Environment(const char* name) {
    const char* const value = std::getenv(name);
    return value != nullptr ? value : "";
}

// Whoever tries a queue by hand names its folder.
QueuePpd FindQueue() {
    if (const std::string folder = Environment("OV_QUEUE"); !folder.empty())
        return {folder, Environment("OV_PIPELINE")};
    const std::string ppd = Environment("PPD");
    if (ppd.empty()) throw PpdError("there is no queue: the server names no PPD, and OV_QUEUE no folder");
    return QueuePpd::Read(ppd);
}

OvPipeline::PipelineSpec PipelineOf(const QueuePpd& queue) {
    if (!queue.pipeline.empty()) return OvPipeline::ReadPipelineConfiguration(queue.pipeline);
    OvPipeline::PipelineSpec pipeline;
    pipeline.filters.push_back(OvPipeline::ParseFilterArgument(renderFilter));
    return pipeline;
}

// Other filters may find commands of their own.
bool WritesDeviceStream(const OvPipeline::PipelineSpec& pipeline) {
    return std::ranges::any_of(pipeline.filters, [](const OvPipeline::FilterSpec& filter) {
        return std::filesystem::path(filter.module).stem().string().ends_with(renderFilter);
    });
}

// What the ticket cannot say, and what becomes of it otherwise than it says: each option once.
std::vector<LeftOption> FindLeft(const QueueOffer& offer, const OvPipeline::PipelineSpec& pipeline,
                                 const JobTicket& ticket) {
    std::vector<LeftOption> left = ticket.left;
    if (ticket.asked.empty()) return left;
    OvPipeline::TicketExplanation merged(offer.SharedQueue());
    merged.Add("job", kPTJobScope, &ticket.xml);
    std::ranges::move(FindOverruled(merged, ticket), std::back_inserter(left));
    if (!WritesDeviceStream(pipeline)) return left;
    for (LeftOption& untold : FindUntold(offer, ticket, merged.Ticket()))
        if (std::ranges::find(left, untold.option, &LeftOption::option) == left.end())
            left.push_back(std::move(untold));
    return left;
}

InputKind KindOfFile(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    if (!stream) throw std::runtime_error("the job " + file.string() + " cannot be read");
    std::string bytes(tellingBytes, '\0');
    stream.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    bytes.resize(static_cast<std::size_t>(stream.gcount()));
    return KindOfInput(bytes);
}

// One line for each of a few, and one for the rest.
void TellOfLeft(const std::vector<LeftOption>& left, ServerLines& lines) {
    for (std::size_t i = 0; i < left.size() && i < mostLinesOfOptions; ++i)
        lines.Warning(left[i].option + ": " + left[i].reason);
    if (left.size() > mostLinesOfOptions)
        lines.Warning(std::to_string(left.size() - mostLinesOfOptions) + " more options cannot be had");
}

void TellOfUnknown(const std::vector<std::string>& unknown, ServerLines& lines) {
    if (unknown.empty()) return;
    std::string names;
    for (std::size_t i = 0; i < unknown.size() && i < mostNames; ++i)
        names += (names.empty() ? "" : ", ") + unknown[i];
    lines.Info(std::to_string(unknown.size()) + (unknown.size() == 1 ? " option means" : " options mean") +
               " nothing to this printer: " + names + (unknown.size() > mostNames ? ", ..." : ""));
}

void RequireObeyed(const JobTicket& ticket, const std::vector<LeftOption>& left) {
    for (const LeftOption& option : left)
        if (ticket.MustObey(option.name))
            throw RefusedOption(option.option + ": " + option.reason +
                                "; the job asks not to be printed without");
    for (const std::string& name : ticket.unknown)
        if (ticket.MustObey(name))
            throw RefusedOption(name + ": nothing is known of this option; the job asks not to be printed "
                                       "without");
}

} // namespace

FilterArguments ReadFilterArguments(const std::vector<std::string>& arguments) {
    if (arguments.size() < 5 || arguments.size() > 6)
        throw std::invalid_argument("called as: ovtoprinter JOB USER TITLE COPIES OPTIONS [FILE]");
    const auto number = [](const std::string& text, const char* what) {
        unsigned value = 0;
        const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
        if (error != std::errc() || end != text.data() + text.size())
            throw std::invalid_argument("\"" + text + "\" is no number of " + what);
        return value;
    };
    FilterArguments read;
    read.id = number(arguments[0], "a job");
    read.user = arguments[1];
    read.title = arguments[2];
    read.copies = number(arguments[3], "copies");
    read.options = arguments[4];
    if (arguments.size() == 6) read.file = arguments[5];
    return read;
}

int FilterJob::Run() {
    try {
        CancelWatch watch;
        const int code = RunWatched(watch);
        if (!watch.IsCancelled()) return code;
        m_lines.Info("the job is cancelled");
        return exitDone;
    } catch (const ConversionError& error) {
        if (error.IsMissing()) m_lines.State(true, missingConverter);
        m_lines.Error(error.what());
    } catch (const OvPipeline::HostError& error) {
        m_lines.Error(std::string(error.what()) + ": " + OvPipeline::HresultText(error.Result()));
    } catch (const OvPlatform::PrintTicketError& error) {
        m_lines.Error(std::string("the queue cannot be used: ") + error.what() + ": " +
                      OvPipeline::HresultText(error.Result()));
    } catch (const std::bad_alloc&) {
        m_lines.Error("there is not enough memory for the job");
    } catch (const std::exception& error) {
        m_lines.Error(error.what());
    }
    return exitFailed;
}

int FilterJob::RunWatched(CancelWatch& watch) {
    std::optional<CancelWatch::AtOnce> atOnce(std::in_place);
    OvPipeline::JobDescription job = Describe(); // a queue that is wrong needs no document
    std::optional<OvPipeline::StandardInput> input;
    if (m_arguments.file.empty()) m_arguments.file = input.emplace().File().path;
    const InputKind kind = KindOfFile(m_arguments.file);
    atOnce.reset();
    if (kind == InputKind::Unknown) throw std::runtime_error("the job is no XPS, OpenXPS or PDF document");
    job.file = OvPipeline::JobFile(m_arguments.file, m_arguments.title);
    if (kind == InputKind::Package) return RunPipeline(watch, std::move(job));

    const OvPipeline::ScratchFolder folder("ovtoprinter"); // the server may kill its filters
    job.file.path = folder.Path() / "converted.xps";
    ConvertPdf(m_arguments.file, job.file.path, folder.Path(), watch);
    if (watch.IsCancelled()) return exitDone;
    m_lines.State(false, missingConverter);
    return RunPipeline(watch, std::move(job));
}

OvPipeline::JobDescription FilterJob::Describe() {
    const QueuePpd ppd = FindQueue();
    OvPipeline::JobDescription job;
    job.queue = OvPlatform::QueueFolder::Load(ppd.queue);
    job.pipeline = PipelineOf(ppd);
    job.title = m_arguments.title;
    job.user = m_arguments.user;
    job.id = m_arguments.id;
    job.outputStream = m_output;
    job.output = "the output stream";

    const QueueOffer offer(job.queue);
    const MsSafeCoInit apartment;
    const GivenOptions options(m_arguments.options.c_str());
    const JobTicket ticket = MakeJobTicket(offer, options, m_arguments.copies);
    const std::vector<LeftOption> left = FindLeft(offer, job.pipeline, ticket);
    RequireObeyed(ticket, left);
    if (std::ranges::any_of(ticket.left, [](const LeftOption& option) { return option.name == "copies"; }))
        m_arguments.copies = 1;
    TellOfLeft(left, m_lines);
    TellOfUnknown(ticket.unknown, m_lines);
    if (!ticket.xml.empty()) job.wishes.ticket = std::make_shared<OvPlatform::TicketOverlay>(ticket.xml);
    if (!ticket.pages.empty()) job.wishes.pages = OvPipeline::PageRanges(ticket.pages);
    return job;
}

int FilterJob::RunPipeline(CancelWatch& watch, OvPipeline::JobDescription job) {
    const auto state = std::make_shared<OvPipeline::JobState>();
    CancelWatch::Pipeline progress(state, m_lines, std::max(1U, m_arguments.copies));
    const OvPipeline::JobOutcome outcome = OvPipeline::Pipeline(std::move(job), state).Run();
    if (outcome.isCancelled || watch.IsCancelled()) return exitDone;
    if (outcome.failure) {
        m_lines.Error(outcome.failure->Line());
        return exitFailed;
    }
    progress.TellAllPages();
    for (const std::string& warning : outcome.gotOver)
        m_lines.Warning(warning);
    return exitDone;
}

} // namespace OvPrintServer
