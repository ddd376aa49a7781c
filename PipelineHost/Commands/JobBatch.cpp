#include "Commands/JobBatch.h"

#include "Commands/Commands.h"
#include "Commands/JobRun.h"
#include "Commands/JobWatch.h"
#include "Common/Text.h"
#include "Report/TextTable.h"

#include <poll.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <cstdio>
#include <cstring>
#include <map>
#include <system_error>

namespace OvPipeline {

namespace {

constexpr int pollMilliseconds = 100;
constexpr char fieldEnd = '\0';

std::atomic<int> cancellations{0};

extern "C" void OnCancel(int) { ++cancellations; }

// While it lives, signals that cancel are counted.
class CancelSignals {
public:
    CancelSignals() {
        cancellations = 0;
        struct sigaction action {};
        action.sa_handler = &OnCancel;
        for (std::size_t i = 0; i < std::size(numbers); ++i) {
            sigaction(numbers[i], nullptr, &m_before[i]);
            if (m_before[i].sa_handler != SIG_IGN) sigaction(numbers[i], &action, nullptr);
        }
    }
    CancelSignals(const CancelSignals&) = delete;
    CancelSignals& operator=(const CancelSignals&) = delete;
    ~CancelSignals() {
        for (std::size_t i = 0; i < std::size(numbers); ++i)
            sigaction(numbers[i], &m_before[i], nullptr);
    }

private:
    static constexpr int numbers[] = {SIGINT, SIGTERM};
    struct sigaction m_before[2];
};

// What a job's process tells of it, besides its exit code: pages, seconds, output, and the whole as JSON.
struct Account {
    std::string pages;
    std::string seconds;
    std::string output;
    std::string json;

    static Account Of(const RunSummary& summary) {
        char seconds[32];
        std::snprintf(seconds, sizeof seconds, "%.2f s", summary.seconds);
        return {summary.exitCode == ExitOk ? std::to_string(summary.pagesRead) : std::string(), seconds,
                summary.output, summary.AsJson().Result()};
    }
    static Account Read(const std::string& told) {
        Account account;
        std::size_t start = 0;
        for (std::string* field : {&account.pages, &account.seconds, &account.output}) {
            const std::size_t end = std::min(told.find(fieldEnd, start), told.size());
            *field = told.substr(start, end - start);
            start = std::min(end + 1, told.size());
        }
        account.json = told.substr(start);
        return account;
    }
    std::string Text() const {
        std::string text;
        for (const std::string* field : {&pages, &seconds, &output})
            text.append(*field).append(1, fieldEnd);
        return text + json;
    }
};

} // namespace

JobBatch::JobBatch(const CommandOptions& options, std::shared_ptr<const OvPlatform::QueueFolder> queue)
    : m_options(options), m_atATime(options.parallel.value_or(1)), m_queue(std::move(queue)),
      m_showsProgress(!options.quiet && !options.trace && isatty(STDERR_FILENO)) {}

int JobBatch::Run(ShownOutput& out, ShownOutput& errors) {
    MakeJobs();
    const auto tickets = ReadQueue();
    const CancelSignals signals;
    int forwarded = 0;
    while (m_ended < m_jobs.size()) {
        if (DoNext(errors)) continue;
        if (m_running.empty()) break;
        Hear(errors);
        for (; forwarded < cancellations; ++forwarded)
            for (const Worker& worker : m_running)
                worker.process->Cancel();
    }
    m_next.reset();
    if (m_showsProgress) std::fputs("\r\x1b[K", stderr);
    Tell(out, errors);
    return Code();
}

// Their outputs are named as those of single jobs are, in one folder.
void JobBatch::MakeJobs() {
    if (m_options.output == standardStream) throw UsageError("-o - goes with one job alone");
    std::error_code error;
    if (!m_options.output.empty() && !std::filesystem::is_directory(m_options.output, error))
        throw UsageError("of several jobs, -o names the folder for their outputs, and " + m_options.output +
                         " is none");
    std::map<std::string, std::string> stems;
    for (const std::string& name : m_options.operands) {
        if (name == standardStream) throw UsageError("- goes without other jobs");
        if (const auto [other, isNew] = stems.emplace(std::filesystem::path(name).stem().string(), name);
            !isNew)
            throw UsageError(name + " and " + other->second + " would have one output");
        m_jobs.push_back({.name = name});
    }
}

// What every job asks of the queue, read once for all of them. What is wrong with it, each job says for
// itself.
std::shared_ptr<const OvPlatform::QueueTickets> JobBatch::ReadQueue() const {
    try {
        return OvPlatform::QueueTickets::Of(m_queue);
    } catch (const std::exception&) {
        return nullptr;
    }
}

// The most urgent of what can be done without waiting for a job. False: there is nothing.
bool JobBatch::DoNext(ShownOutput& errors) {
    const bool hasRoom = m_running.size() < m_atATime;
    if (m_next && hasRoom && cancellations == 0) {
        Begin(std::move(*m_next));
        m_next.reset();
        return true;
    }
    if (!m_told.empty()) {
        Worker worker = std::move(m_told.back());
        m_told.pop_back();
        Conclude(std::move(worker), errors);
        return true;
    }
    if (m_next || m_prepared == m_jobs.size() || cancellations > 0 || (!hasRoom && m_atATime == 1))
        return false;
    Prepare(errors);
    return true;
}

// With a job for each processor, each stays on its own.
void JobBatch::Begin(Worker worker) {
    if (m_atATime > 1 && m_processors.Count() > 1 && m_processors.Count() <= m_atATime)
        worker.processor = m_processors.Take(worker.process->Process());
    worker.process->Begin();
    worker.job->hasBegun = true;
    m_running.push_back(std::move(worker));
}

void JobBatch::Prepare(ShownOutput& errors) {
    Job& job = m_jobs[m_prepared++];
    try {
        m_next = Worker{&job, std::make_unique<JobProcess>(
                                  [&](ShownOutput& lines) { return Print(job.name, lines); }, errors)};
    } catch (const std::system_error& failure) {
        job.hasBegun = true;
        job.exitCode = ExitJobFailed;
        job.trouble = job.name + ": no process can be started: " + std::strerror(failure.code().value());
        errors.Line("ov-pipeline: " + job.trouble);
        ++m_ended;
    }
}

// In the job's process.
JobProcess::Result JobBatch::Print(const std::string& name, ShownOutput& errors) const {
    JobWatch::StayForTheProgram(false); // the job is still to be told of then
    CommandOptions options = m_options;
    options.operands = {name};
    options.job = std::filesystem::path(name);
    options.output.clear();
    const RunSummary summary =
        JobRun(options, m_queue, JobRun::Progress::Hidden, m_options.output).Run(errors);
    if (summary.exitCode != ExitOk) errors.Line("ov-pipeline: " + summary.trouble);
    for (const std::string& warning : summary.warnings)
        WarnOf(options, errors)(warning);
    return {Account::Of(summary).Text(), summary.exitCode};
}

// Waits until a job tells something, and takes it.
void JobBatch::Hear(ShownOutput& errors) {
    std::vector<pollfd> ready;
    for (const Worker& worker : m_running)
        ready.push_back({worker.process->Descriptor(), POLLIN, 0});
    if (poll(ready.data(), ready.size(), pollMilliseconds) <= 0) return;
    for (std::size_t i = ready.size(); i-- > 0;) {
        if (ready[i].revents == 0 || m_running[i].process->Hear(errors)) continue;
        Leave(i);
    }
}

// One that runs has told all. Where no other takes its place, the rest may spread.
void JobBatch::Leave(std::size_t running) {
    std::swap(m_running[running], m_running.back());
    m_told.push_back(std::move(m_running.back()));
    m_running.pop_back();
    if (m_told.back().processor) m_processors.GiveBack(*m_told.back().processor);
    if (m_next || m_prepared < m_jobs.size()) return;
    for (Worker& worker : m_running)
        if (worker.processor) m_processors.Free(worker.process->Process());
}

void JobBatch::Conclude(Worker worker, ShownOutput& errors) {
    Job& job = *worker.job;
    const int status = worker.process->Await();
    job.account = worker.process->Account();
    job.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : ExitJobFailed;
    if (WIFSIGNALED(status))
        job.trouble = job.name + ": its process was ended by signal " + std::to_string(WTERMSIG(status)) +
                      " (" + strsignal(WTERMSIG(status)) + "); nothing was written";
    else if (!job.account && job.exitCode == ExitCancelled)
        job.trouble = job.name + ": cancelled";
    else if (!job.account)
        job.trouble = job.name + ": its process has ended before the job did";
    if (!job.trouble.empty()) {
        if (job.exitCode == ExitOk) job.exitCode = ExitJobFailed;
        errors.Line("ov-pipeline: " + job.trouble);
    }
    ++m_ended;
    ShowProgress();
}

void JobBatch::ShowProgress() const {
    if (!m_showsProgress) return;
    std::fprintf(stderr, "\r\x1b[K%zu of %s done", m_ended, Counted(m_jobs.size(), "job").c_str());
    std::fflush(stderr);
}

void JobBatch::Tell(ShownOutput& out, ShownOutput& errors) const {
    std::vector<std::vector<std::string>> table{{"job", "state", "pages", "time", "output"}};
    JsonText json;
    json.BeginObject().Key("jobs").BeginArray();
    std::size_t done = 0;
    for (const Job& job : m_jobs) {
        Account account = Account::Read(job.account.value_or(std::string()));
        RunSummary untold; // of a job whose process did not come so far
        untold.job = job.name;
        untold.exitCode = job.exitCode;
        untold.trouble = job.trouble.empty() ? untold.job + ": not started" : job.trouble;
        if (account.json.empty()) account.json = untold.AsJson().Result();
        json.Whole(account.json);
        const std::string state = !job.hasBegun ? "not started" : untold.State();
        table.push_back({untold.job, state, account.pages, account.seconds, account.output});
        if (job.exitCode == ExitOk) ++done;
    }
    json.EndArray().EndObject();
    if (m_options.json) return out.Json(json);
    if (m_options.quiet) return;
    out.Text(AlignedTable(std::move(table), out.Width()));
    out.Line(std::to_string(done) + " of " + Counted(m_jobs.size(), "job") + " done");
    if (cancellations > 0 && done < m_jobs.size()) errors.Line("ov-pipeline: cancelled");
}

int JobBatch::Code() const {
    int code = ExitOk;
    for (const Job& job : m_jobs) {
        if (job.exitCode == ExitOk) continue;
        if (code != ExitOk && code != job.exitCode) return cancellations > 0 ? ExitCancelled : ExitJobFailed;
        code = job.exitCode;
    }
    return code;
}

} // namespace OvPipeline
