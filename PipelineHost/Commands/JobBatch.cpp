#include "Commands/JobBatch.h"

#include "Commands/JobRun.h"
#include "Common/Text.h"
#include "Report/TextTable.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <map>
#include <ostream>
#include <streambuf>

namespace OvPipeline {

namespace {

constexpr int pollMilliseconds = 100;
// What a process tells: lines for the error stream, each behind its mark, then its account to the end.
constexpr char lineMark = 'e';
constexpr char accountMark = 'a';
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

    // In the process of a job: who sits at the terminal cancels all jobs at once, by the process that started
    // them.
    static void LeaveToTheBatch() {
        signal(SIGINT, SIG_IGN);
        signal(SIGTERM, SIG_DFL);
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

void WriteAll(int descriptor, const std::string& text) {
    for (std::size_t done = 0; done < text.size();) {
        const ssize_t count = write(descriptor, text.data() + done, text.size() - done);
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) return; // nobody hears any more
        done += static_cast<std::size_t>(count);
    }
}

// The error stream of a job's process.
class LineSender final : public std::streambuf {
public:
    explicit LineSender(int descriptor) : m_descriptor(descriptor) {}

private:
    int_type overflow(int_type character) override {
        m_line.push_back(traits_type::to_char_type(character));
        if (m_line.back() == '\n') {
            WriteAll(m_descriptor, m_line);
            m_line = lineMark;
        }
        return character;
    }

    int m_descriptor;
    std::string m_line{lineMark};
};

} // namespace

JobBatch::JobBatch(const CommandOptions& options, std::shared_ptr<const OvPlatform::QueueFolder> queue)
    : m_options(options), m_queue(std::move(queue)),
      m_showsProgress(!options.quiet && !options.trace && isatty(STDERR_FILENO)) {}

int JobBatch::Run(ShownOutput& out, ShownOutput& errors) {
    MakeJobs();
    const CancelSignals signals;
    int forwarded = 0;
    std::size_t ended = 0;
    while (ended < m_jobs.size()) {
        const auto running =
            static_cast<std::size_t>(std::ranges::count(m_jobs, State::Running, &Job::state));
        if (cancellations == 0 && running < m_options.parallel.value_or(1)) {
            const auto next = std::ranges::find(m_jobs, State::Waiting, &Job::state);
            if (next != m_jobs.end()) {
                Start(*next, errors);
                continue;
            }
        }
        if (running == 0) break;
        Hear(errors);
        for (; forwarded < cancellations; ++forwarded)
            for (const Job& job : m_jobs)
                if (job.state == State::Running) kill(job.process, SIGTERM);
        ended = static_cast<std::size_t>(std::ranges::count(m_jobs, State::Ended, &Job::state));
        ShowProgress(ended);
    }
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
        const std::filesystem::path file(name);
        if (const auto [other, isNew] = stems.emplace(file.stem().string(), name); !isNew)
            throw UsageError(name + " and " + other->second + " would have one output");
        Job job;
        job.options = m_options;
        job.options.operands = {name};
        job.options.job = file;
        job.options.output.clear();
        m_jobs.push_back(std::move(job));
    }
}

void JobBatch::Start(Job& job, ShownOutput& errors) {
    int ends[2] = {-1, -1};
    errors.Flush();
    if (pipe2(ends, O_CLOEXEC) == 0) job.process = fork();
    if (job.process == 0) {
        close(ends[0]);
        RunInChild(job, ends[1]);
    }
    const int problem = errno;
    if (ends[1] >= 0) close(ends[1]);
    if (job.process > 0) {
        job.account = ends[0];
        job.state = State::Running;
        return;
    }
    if (ends[0] >= 0) close(ends[0]);
    job.state = State::Ended;
    job.exitCode = ExitJobFailed;
    job.trouble = job.options.job.name + ": no process can be started: " + std::strerror(problem);
    errors.Line("ov-pipeline: " + job.trouble);
}

void JobBatch::RunInChild(const Job& job, int account) {
    LineSender sender(account);
    std::ostream stream(&sender);
    ShownOutput errors(stream);
    prctl(PR_SET_PDEATHSIG, SIGTERM);
    CancelSignals::LeaveToTheBatch();
    const RunSummary summary =
        JobRun(job.options, m_queue, JobRun::Progress::Hidden, m_options.output).Run(errors);
    const std::string name = "ov-pipeline: ";
    if (summary.exitCode != ExitOk) errors.Line(name + summary.trouble);
    if (!job.options.quiet)
        for (const std::string& warning : summary.warnings)
            errors.Line(name + job.options.job.name + ": warning: " + warning);
    WriteAll(account, accountMark + Account::Of(summary).Text());
    _exit(summary.exitCode); // what else is to be done at a program's end is the first process's
}

// Takes what is told until something is; a process that says no more has ended.
void JobBatch::Hear(ShownOutput& errors) {
    std::vector<pollfd> ready;
    std::vector<Job*> heard;
    for (Job& job : m_jobs)
        if (job.state == State::Running) {
            ready.push_back({job.account, POLLIN, 0});
            heard.push_back(&job);
        }
    if (poll(ready.data(), ready.size(), pollMilliseconds) <= 0) return;
    for (std::size_t i = 0; i < ready.size(); ++i) {
        if (ready[i].revents == 0) continue;
        char chunk[4096];
        const ssize_t count = read(heard[i]->account, chunk, sizeof chunk);
        if (count > 0)
            Take(*heard[i], {chunk, static_cast<std::size_t>(count)}, errors);
        else if (count == 0 || errno != EINTR)
            End(*heard[i], errors);
    }
}

void JobBatch::Take(Job& job, std::string_view told, ShownOutput& errors) {
    job.told += told;
    std::size_t start = 0;
    for (std::size_t end = 0; start < job.told.size() && job.told[start] == lineMark; start = end + 1) {
        end = job.told.find('\n', start);
        if (end == std::string::npos) break;
        errors.Line(std::string_view(job.told).substr(start + 1, end - start - 1));
    }
    job.told.erase(0, start);
}

void JobBatch::End(Job& job, ShownOutput& errors) {
    close(job.account);
    int status = 0;
    while (waitpid(job.process, &status, 0) < 0 && errno == EINTR) {
    }
    job.state = State::Ended;
    job.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : ExitJobFailed;
    if (WIFSIGNALED(status))
        job.trouble = job.options.job.name + ": its process was ended by signal " +
                      std::to_string(WTERMSIG(status)) + " (" + strsignal(WTERMSIG(status)) +
                      "); nothing was written";
    else if (!job.told.starts_with(accountMark))
        job.trouble = job.options.job.name + ": its process has ended before the job did";
    if (job.trouble.empty()) return;
    if (job.exitCode == ExitOk) job.exitCode = ExitJobFailed;
    errors.Line("ov-pipeline: " + job.trouble);
}

void JobBatch::ShowProgress(std::size_t ended) const {
    if (!m_showsProgress) return;
    std::fprintf(stderr, "\r\x1b[K%zu of %s done", ended, Counted(m_jobs.size(), "job").c_str());
    std::fflush(stderr);
}

void JobBatch::Tell(ShownOutput& out, ShownOutput& errors) const {
    std::vector<std::vector<std::string>> table{{"job", "state", "pages", "time", "output"}};
    JsonText json;
    json.BeginObject().Key("jobs").BeginArray();
    std::size_t done = 0;
    for (const Job& job : m_jobs) {
        Account account =
            Account::Read(job.told.starts_with(accountMark) ? job.told.substr(1) : std::string());
        RunSummary untold; // of a job whose process did not come so far
        untold.job = job.options.job.name;
        untold.exitCode = job.exitCode;
        untold.trouble = job.trouble.empty() ? untold.job + ": not started" : job.trouble;
        if (account.json.empty()) account.json = untold.AsJson().Result();
        json.Whole(account.json);
        const std::string state = job.state == State::Waiting ? "not started" : untold.State();
        table.push_back({untold.job, state, account.pages, account.seconds, account.output});
        if (job.exitCode == ExitOk) ++done;
    }
    json.EndArray().EndObject();
    if (m_options.json) return out.Json(json);
    if (m_options.quiet) return;
    out.Text(AlignedTable(std::move(table), out.Width()));
    out.Line(std::to_string(done) + " of " + Counted(m_jobs.size(), "job") + " done");
    if (cancellations > 0) errors.Line("ov-pipeline: cancelled");
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
