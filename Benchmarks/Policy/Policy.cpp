// What an administrator's configuration costs. Enforcing one of 40 features in a merged ticket, beside the
// merge of that ticket (at most 0.5 of it); and a job of 4,000 pages with 8 page tickets through the filter
// Policy, beside the same job through PassThrough, each in a process of its own (at most 1.3 of it).
#include "Limits.h"
#include "MeasuredCommand.h"
#include "PipelineRun/LargeJob.h"
#include "Support/ConfiguredQueue.h"
#include "Support/FakeParts.h"
#include "Support/TicketText.h"

#include <ComSupport/MsSafeCoinit.h>
#include <DataModel/NativeXmlConfigFeatureDictionary.h>
#include <Spooler/QueueFolder.h>
#include <Spooler/QueueRegistry.h>
#include <Ticket/PrintTicketManager.h>

#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

namespace fs = std::filesystem;

namespace {

constexpr auto sampleQueue = OV_SOURCE_DIR "/Samples/Queues/ColorOffice";
constexpr int rounds = 5;

// The three features that are enforced in tickets, each with a value that the job does not ask for, and more
// that only stand there.
std::string ConfigurationOf(std::size_t features) {
    std::string children = ConfiguredFeature("2-SidedPrinting", "TwoSidedAny", "EnforcedDefault") +
                           ConfiguredFeature("ImagesPerPage", "4") +
                           ConfiguredFeature("JobIdentification", "PrintIdOnABannerSheet");
    std::vector<const NativeXmlConfigFeatureEntry*> entries;
    NativeXmlConfigFeatureDictionary::Instance()->GetAllEntries(entries);
    std::size_t count = 3;
    for (const auto* entry : entries) {
        const std::string name(entry->xmlConfigFeatureName.view());
        if (count == features) break;
        if (children.find('"' + name + '"') != std::string::npos) continue;
        children += ConfiguredFeature(name, "Enabled");
        ++count;
    }
    return children;
}

class MergedPage {
public:
    MergedPage() {
        const auto queue = OvPlatform::QueueFolder::Load(sampleQueue);
        OvPlatform::QueueRegistry::Add(queue);
        std::wstring name = queue->PrinterName();
        m_job->ticket = CComPtr<IPartPrintTicket>(
            new FakePrintTicketPart(L"/j", TicketText(Choice("psk:PageOrientation", "psk:Landscape"))));
        if (FAILED(m_manager.Initialize(MakeFake<MemoryReadStream>(queue->DefaultTicket()), name.data(),
                                        nullptr)))
            throw std::runtime_error("the queue has no default ticket");
    }

    // Seconds of a job's merge, which enforces the configuration in two tickets if it does.
    double Merge(bool sanitize) {
        const auto start = std::chrono::steady_clock::now();
        NativeXmlConfigurationFeatureSet* features = &m_features;
        const HRESULT hr =
            sanitize
                ? m_manager.MergeAndValidatePartPrintTicketAndSanitizeFromXmlConfig(m_job.p, features, true)
                : m_manager.MergeAndValidatePartPrintTicket(m_job.p);
        if (FAILED(hr)) throw std::runtime_error("the ticket cannot be merged");
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    }
    std::uint64_t Features() const { return m_features.NumberOfFeatures(); }

private:
    NativeXmlConfigurationFeatureSet m_features = ConfiguredFeatures(ConfigurationOf(40));
    PrintTicketManager m_manager;
    CComPtr<FakeFixedDocumentSequence> m_job = MakeFake<FakeFixedDocumentSequence>();
};

void CompareTickets() {
    const MsSafeCoInit apartment;
    MergedPage page;
    std::vector<double> merged;
    std::vector<double> sanitized;
    for (int i = 0; i < 400; ++i) {
        merged.push_back(page.Merge(false));
        sanitized.push_back(page.Merge(true));
    }
    const double merge = MeasuredCommand::Median(merged);
    const double enforcing = (MeasuredCommand::Median(sanitized) - merge) / 2;
    std::printf("%zu features: a merge takes %.1f us, enforcing in one ticket %.1f us\n",
                static_cast<std::size_t>(page.Features()), merge * 1e6, enforcing * 1e6);
    Limits::Report("enforcing in one ticket, in merges", enforcing / merge, 0.5);
}

void CompareJobs() {
    const fs::path scratch = fs::temp_directory_path() / ("ov-bench-" + std::to_string(getpid()));
    fs::create_directories(scratch);
    WriteLargeJob(scratch / "job.xps", 4000, {}, {8, 1});
    MeasuredCommand passThrough;
    MeasuredCommand policy;
    const std::string binaries = OV_BINARY_DIR;
    const auto run = [&](MeasuredCommand& command, const char* filter) {
        command.Run({binaries + "/bin/ov-pipeline", "run", "--queue", sampleQueue, "--filter",
                     binaries + "/lib/lib" + filter + ".so", "-o", scratch / "run.xps", scratch / "job.xps"});
    };
    for (int round = 0; round < rounds; ++round) {
        run(passThrough, "PassThrough");
        run(policy, "Policy");
    }
    fs::remove_all(scratch);
    const double seconds = MeasuredCommand::Median(policy.seconds);
    std::printf(
        "4,000 pages, 8 page tickets: PassThrough %.2f s, Policy %.2f s (by CPU time %.2f), peak %.1f MB "
        "against %.1f MB\n",
        MeasuredCommand::Median(passThrough.seconds), seconds,
        MeasuredCommand::Median(policy.processorSeconds) /
            MeasuredCommand::Median(passThrough.processorSeconds),
        policy.peakMegabytes, passThrough.peakMegabytes);
    Limits::Report("4,000 pages with 8 page tickets, beside PassThrough",
                   seconds / MeasuredCommand::Median(passThrough.seconds), 1.3);
}

} // namespace

int main() {
    try {
        CompareTickets();
        CompareJobs();
        return Limits::Conclude();
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "bench.Policy: %s\n", failure.what());
        return 1;
    }
}
