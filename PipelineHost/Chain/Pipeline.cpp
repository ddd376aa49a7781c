#include "Chain/Pipeline.h"

#include "Chain/Connections.h"
#include "Chain/ExitGuard.h"
#include "Chain/FilterCall.h"
#include "Chain/JobProperties.h"
#include "Chain/Links.h"
#include "Chain/TicketDiagnosis.h"
#include "Source/PackageSource.h"
#include "Streams/PrintWriteStream.h"

#include <System/StreamOutput.h>
#include <System/Thread.h>

#include <objbase.h>
#include <time.h>

#include <chrono>
#include <functional>

namespace OvPipeline {

namespace {

// A filter's place in the chain.
struct Node {
    enum class State { Waiting, Initialised, Refused, Done };

    FilterSpec spec;
    std::shared_ptr<FilterModule> module;
    CComPtr<IUnknown> reader;
    CComPtr<IUnknown> writer;
    std::function<void()> endInput;
    std::function<void()> endOutput;
    std::function<bool()> isOutputClosed;
    std::shared_ptr<StreamMaker> maker; // of the streams that the filter writes
    OvPlatform::Thread thread;

    // Under the job's lock:
    State state = State::Waiting;
    CComPtr<IPrintPipelineFilter> filter;
    FilterOutcome outcome;
};

// Of the calling thread, on a processor.
double ThreadSeconds() {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
}

} // namespace

class Pipeline::Implementation {
public:
    Implementation(JobDescription job, std::shared_ptr<JobState> state)
        : m_job(std::move(job)), m_state(std::move(state)) {}

    JobOutcome Run() {
        Trace::NameThread("job");
        const FilterWords words;
        JobOutcome outcome;
        {
            const ExitGuard guard(*m_state);
            RunInto(outcome);
            LetGo();
        }
        if (outcome.isWritten) outcome.gotOver = words.Heard();
        return outcome;
    }

private:
    void RunInto(JobOutcome& outcome) {
        if (Attempt([&] { Prepare(); }, "the job") && Attempt([&] { OpenOutput(); }, "the output")) {
            Connect();
            outcome.outputKind = OutputKind();
            outcome.output = m_job.output;
            RunFilters();
            outcome.isWritten = !m_state->IsStopping() && Attempt([&] { Commit(); }, "the output");
            if (outcome.isWritten) {
                outcome.leftOut = LeftOut();
                outcome.outputSize = m_packageSink ? m_packageSink->Size() : m_fileSink->Size();
            }
        }
        // A cancellation that comes after the output changes nothing.
        outcome.isCancelled = !outcome.isWritten && m_state->IsCancelled();
        outcome.failure = m_state->Failure();
        for (Node& node : m_nodes)
            outcome.filters.push_back(std::move(node.outcome));
    }

    // Runs a step of the host's own; what it throws fails the job.
    template <class Step>
    bool Attempt(Step&& step, const char* stage) {
        ThreadNote() = {};
        ThreadPart().clear();
        FilterWords::Forget();
        try {
            step();
            return true;
        } catch (...) {
            const HRESULT hr = NoteException();
            m_state->Fail(FailureOf(hr, stage));
            return false;
        }
    }

    EndKind InputKind() const {
        return m_nodes.empty() ? EndKind::XpsParts : m_nodes.front().spec.ends->input;
    }
    EndKind OutputKind() const {
        return m_nodes.empty() ? EndKind::XpsParts : m_nodes.back().spec.ends->output;
    }

    void Prepare() {
        m_printer = std::make_unique<JobPrinter>(m_job);
        m_bag = PropertyBag::Make();
        std::vector<std::shared_ptr<FilterModule>> modules;
        for (const FilterSpec& spec : m_job.pipeline.filters)
            modules.push_back(Load(spec));
        // Before the package is opened, so that a wrong chain is told whatever the job is.
        AddJobProperties(m_bag, *m_printer, m_job, XpsFlavour::Xps, m_state);
        AddServices();
        ExitGuard::Listen();
        FitChain(m_job.pipeline, modules, m_bag, m_state);
        FilterWords::ForgetAll();
        for (std::size_t i = 0; i < modules.size(); ++i) {
            m_nodes.emplace_back();
            m_nodes.back().spec = m_job.pipeline.filters[i];
            m_nodes.back().module = std::move(modules[i]);
            m_nodes.back().outcome.name = m_nodes.back().spec.name;
            m_nodes.back().maker = std::make_shared<StreamMaker>(m_nodes.back().spec.name);
        }
        OpenJob();
    }

    std::shared_ptr<FilterModule> Load(const FilterSpec& spec) {
        const FilterCall call(*m_state, "module " + spec.name);
        return FilterModule::Load(spec);
    }

    void AddService(const FilterSpec& spec) {
        m_services.push_back(Load(spec));
        PopulateWithLast(spec);
    }

    void PopulateWithLast(const FilterSpec& spec) {
        const FilterCall call(*m_state, "service " + spec.name);
        m_services.back()->PopulateServices(m_bag);
    }

    void AddServices() {
        for (const FilterSpec& spec : m_job.pipeline.services)
            AddService(spec);
        for (const FilterSpec& spec : m_job.pipeline.optionalServices) {
            try {
                m_services.push_back(Load(spec));
            } catch (const HostError& error) {
                if (m_state->Log().IsOn()) m_state->Log().Step("goes without", error.what());
                continue;
            }
            PopulateWithLast(spec);
        }
    }

    void OpenJob() {
        if (InputKind() == EndKind::Bytes) {
            auto context = std::make_shared<PartContext>();
            context->job = m_state;
            m_context = std::move(context);
            if (m_job.wishes.ticket || !m_job.wishes.pages.AreAll())
                throw HostError(
                    E_INVALIDARG, {},
                    "the first filter reads bytes: it has neither pages to choose from nor tickets");
            m_source.Attach(new PrintReadStream(FileContent(m_job.file.path).Open()));
            return;
        }
        m_context = OpenJobPackage(m_job.file, m_state);
        m_source.Attach(
            new PackageSource(m_context, m_nodes.empty() ? nullptr : m_nodes.front().maker, m_job.wishes));
        AddJobProperties(m_bag, *m_printer, m_job, m_context->flavour, m_state);
    }

    void OpenOutput() {
        if (OutputKind() == EndKind::Bytes && !m_job.byteOutput.empty()) m_job.output = m_job.byteOutput;
        auto output = m_job.outputStream >= 0 ? OpenStream() : OpenOutputFile(m_job.output);
        if (OutputKind() == EndKind::Bytes)
            m_fileSink = std::make_shared<FileSink>(std::move(output));
        else
            m_packageSink = std::make_unique<PackageSink>(std::move(output), m_state, m_context->flavour,
                                                          m_job.pipeline.interleaving);
    }

    std::unique_ptr<OvPlatform::ByteOutput> OpenStream() const {
        return std::make_unique<OvPlatform::StreamOutput>(m_job.outputStream, m_job.output,
                                                          [state = m_state] { return state->IsStopping(); });
    }

    // Joins each filter's output to the next one's input, and the last one's to the output.
    void Connect() {
        CComPtr<IUnknown> reader = std::move(m_source);
        std::function<void()> endInput = [] {};
        for (std::size_t i = 0; i < m_nodes.size(); ++i) {
            Node& node = m_nodes[i];
            const bool isLast = i + 1 == m_nodes.size();
            node.reader.Attach(reader.Detach());
            node.endInput = std::move(endInput);
            endInput = [] {};
            if (node.spec.ends->output == EndKind::XpsParts) {
                const auto queue = std::make_shared<PartQueue>(m_state);
                m_queues.push_back(queue);
                CComPtr<QueueConsumer> consumer;
                consumer.Attach(new QueueConsumer(queue, m_context, node.maker));
                node.writer = consumer.p;
                node.endOutput = [queue] { queue->EndSending(); };
                node.isOutputClosed = [consumer] { return consumer->IsClosed(); };
                endInput = [queue] { queue->EndReceiving(); };
                reader.Attach(new QueueProvider(queue, m_state, isLast ? nullptr : m_nodes[i + 1].maker));
                if (isLast) m_lastQueue = queue;
            } else if (isLast) {
                CComPtr<FileWriteStream> stream;
                stream.Attach(new FileWriteStream(m_fileSink, m_state));
                node.writer = static_cast<IPrintWriteStream*>(stream.p);
                node.endOutput = [] {};
                node.isOutputClosed = [stream] { return stream->IsClosed(); };
            } else {
                const auto bytes = std::make_shared<SpooledBytes>();
                const auto closed = std::make_shared<std::atomic<bool>>(false);
                node.writer.Attach(new PrintWriteStream(bytes, [closed] { *closed = true; }));
                node.endOutput = [this, bytes] {
                    m_state->IsStopping() ? bytes->Abandon() : bytes->Complete();
                };
                node.isOutputClosed = [closed] { return closed->load(); };
                reader.Attach(new PrintReadStream(ReadWhileWritten(bytes, m_state)));
            }
        }
        if (m_nodes.empty()) m_source = std::move(reader); // straight to the output
    }

    void RunFilters() {
        if (!Attempt([&] { StartThreads(); }, "the job")) GoWithoutTheMissing();
        const auto allPast = [&](Node::State state) {
            for (const Node& node : m_nodes)
                if (node.state < state) return false;
            return true;
        };
        m_state->WaitUntil([&] { return allPast(Node::State::Initialised); });
        m_state->Announce([&] {
            m_state->SetStarted();
            m_isGo = true;
        });
        m_state->WaitUntil(
            [&] { return (allPast(Node::State::Done) && IsSinkDone()) || m_state->IsStopping(); });
        if (m_state->IsStopping())
            for (const auto& queue : m_queues)
                queue->Wake();
        // Also at the end of a job that went well: it is the last that a filter hears.
        for (Node& node : m_nodes)
            if (node.filter) CallLast(node, "ShutdownOperation", [&] { node.filter->ShutdownOperation(); });
        m_state->WaitUntil([&] { return allPast(Node::State::Done) && IsSinkDone(); });
        m_state->Announce([&] { m_isRelease = true; });
        for (Node& node : m_nodes)
            node.thread.Join();
        m_sinkThread.Join();
    }

    void StartThreads() {
        for (std::size_t i = 0; i < m_nodes.size(); ++i)
            m_nodes[i].thread =
                OvPlatform::Thread("for filter " + m_nodes[i].spec.name, [this, i] { RunNode(i); });
        if (m_packageSink) m_sinkThread = OvPlatform::Thread("for the output", [this] { RunSink(); });
    }

    // What has no thread has nothing to do, and nobody waits for it. The others come to their end by
    // themselves, since the job stops.
    void GoWithoutTheMissing() {
        m_state->Announce([&] {
            for (Node& node : m_nodes)
                if (!node.thread.IsRunning()) node.state = Node::State::Done;
            m_isSinkDone = m_isSinkDone || !m_sinkThread.IsRunning();
        });
    }

    bool IsSinkDone() const { return !m_packageSink || m_isSinkDone; }

    // A filter's whole life is on one thread, since what it holds may be bound to it.
    void RunNode(std::size_t index) {
        Node& node = m_nodes[index];
        Trace::NameThread(node.spec.name);
        const bool isInApartment = SUCCEEDED(CoInitializeEx(nullptr, COINIT_MULTITHREADED));
        m_state->WaitUntil([&] { return m_turn == index; });
        Initialise(node);
        m_state->Announce([&] { ++m_turn; });
        m_state->WaitUntil([&] { return m_isGo; });
        if (node.state == Node::State::Initialised && !m_state->IsStopping()) Start(node);
        node.maker->SetDone();
        node.outcome.closedOutput = node.isOutputClosed();
        if (node.outcome.wasStarted && !node.outcome.closedOutput) Say("has not closed its output");
        node.endInput();
        node.endOutput();
        node.reader.Release();
        node.writer.Release();
        m_state->Announce([&] { node.state = Node::State::Done; });
        m_state->WaitUntil([&] { return m_isRelease; });
        CallLast(node, "Release", [&] { node.filter.Release(); });
        if (isInApartment) CoUninitialize();
    }

    void Initialise(Node& node) {
        HRESULT hr = S_OK;
        if (!m_state->IsStopping()) {
            Say("is initialised");
            hr = CallFilter(*m_state, NameOf(node, "InitializeFilter"), [&] {
                CComPtr<IPrintPipelineFilter> filter = node.module->MakeFilter(node.spec.clsid);
                CComPtr<IInterFilterCommunicator> connections;
                connections.Attach(new FilterConnections(node.reader, node.writer));
                CComPtr<IPrintPipelineManagerControl> control;
                control.Attach(new ManagerControl(m_state, node.spec.name));
                node.filter = filter;
                return filter->InitializeFilter(connections, m_bag, control);
            });
            node.outcome.result = hr;
            if (FAILED(hr)) {
                JobFailure failure = FailureOf(hr, NameOf(node, "InitializeFilter"));
                if (hr == E_NOINTERFACE && ThreadNote().problem.empty())
                    failure.problem = std::string("it does not read ") + InputName(node.spec.ends->input) +
                                      " and write " + OutputName(node.spec.ends->output);
                m_state->Fail(std::move(failure));
            }
        }
        const bool isReady = node.filter && SUCCEEDED(hr);
        m_state->Announce([&] { node.state = isReady ? Node::State::Initialised : Node::State::Refused; });
    }

    void Start(Node& node) {
        Say("is started");
        node.outcome.wasStarted = true;
        const auto start = std::chrono::steady_clock::now();
        const double processorStart = ThreadSeconds();
        const HRESULT hr = CallFilter(*m_state, NameOf(node, "StartOperation"),
                                      [&] { return node.filter->StartOperation(); });
        node.outcome.processorSeconds = ThreadSeconds() - processorStart;
        node.outcome.seconds =
            std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
        node.outcome.result = hr;
        if (SUCCEEDED(hr)) return Say("is done");
        JobFailure failure = FailureOf(hr, "filter " + node.spec.name);
        DiagnoseTicket(failure, m_job.queue, *m_context, TakenPart());
        m_state->Fail(std::move(failure));
    }

    // What a filter answers at its end is no news; what it throws is a failure, also of a job that went well
    // so far.
    template <class Call>
    void CallLast(Node& node, const char* name, Call&& call) {
        const HRESULT hr = CallFilter(*m_state, NameOf(node, name), [&] {
            call();
            return S_OK;
        });
        if (FAILED(hr)) m_state->Fail(FailureOf(hr, NameOf(node, name)));
    }

    static std::string NameOf(const Node& node, const char* call) {
        return "filter " + node.spec.name + " (" + call + ")";
    }

    void RunSink() {
        Trace::NameThread("output");
        const auto next = [&] {
            CComPtr<IUnknown> part;
            if (!m_lastQueue) {
                auto* source = static_cast<PackageSource*>(m_source.p);
                if (const HRESULT hr = source->GetXpsPart(&part); FAILED(hr)) Rethrow(hr);
            } else if (const HRESULT hr = m_lastQueue->Receive(&part); FAILED(hr)) {
                Rethrow(hr);
            }
            return part;
        };
        Attempt(
            [&] {
                m_state->WaitUntil([&] { return m_isGo; });
                while (const CComPtr<IUnknown> part = next())
                    m_packageSink->Take(part);
                m_packageSink->Complete();
            },
            "the output");
        if (m_lastQueue) m_lastQueue->EndReceiving();
        m_state->Announce([&] { m_isSinkDone = true; });
    }

    [[noreturn]] static void Rethrow(HRESULT hr) {
        const JobFailure failure = FailureOf(hr, {});
        throw HostError(hr, failure.part, failure.problem, failure.fromInput);
    }

    // The sequence is made anew; of all else it is told if it does not stand in the output.
    LeftOutParts LeftOut() const {
        LeftOutParts leftOut;
        if (!m_packageSink || !m_context->package) return leftOut;
        for (const OvPlatform::PackagePart& part : m_context->package->Parts())
            if (!m_packageSink->HasPart(part.name) && KindOf(part.contentType, {}) != PartKind::Sequence)
                leftOut.Add(DescribeType(part.contentType, part.name), part.name);
        return leftOut;
    }

    // The name comes last, and only where nobody has asked for the end of the job until then.
    void Commit() {
        m_packageSink ? m_packageSink->Finish() : m_fileSink->Finish();
        if (!m_state->Publish([&] { m_packageSink ? m_packageSink->Commit() : m_fileSink->Commit(); }))
            throw HostError(m_state->StopResult(), {}, "the job stops");
    }

    // The order matters: what filters made goes before their modules.
    void LetGo() {
        m_packageSink.reset();
        m_fileSink.reset();
        m_source.Release();
        m_queues.clear();
        m_lastQueue.reset();
        const FilterCall call(*m_state, "a module that is unloaded");
        m_bag.Release();
        m_nodes.clear();
        m_services.clear();
        m_printer.reset();
    }

    void Say(const char* step) const {
        if (m_state->Log().IsOn()) m_state->Log().Step(step);
    }

    JobDescription m_job;
    std::shared_ptr<JobState> m_state;
    std::unique_ptr<JobPrinter> m_printer;
    std::vector<std::shared_ptr<FilterModule>> m_services;
    std::deque<Node> m_nodes;
    CComPtr<PropertyBag> m_bag;
    SharedContext m_context;
    CComPtr<IUnknown> m_source;
    std::vector<std::shared_ptr<PartQueue>> m_queues;
    std::shared_ptr<PartQueue> m_lastQueue;
    std::unique_ptr<PackageSink> m_packageSink;
    std::shared_ptr<FileSink> m_fileSink;
    OvPlatform::Thread m_sinkThread;

    // Under the job's lock:
    std::size_t m_turn = 0; // whose turn it is to be initialised
    bool m_isGo = false;
    bool m_isRelease = false;
    bool m_isSinkDone = false;
};

Pipeline::Pipeline(JobDescription job, std::shared_ptr<JobState> state)
    : m_state(std::move(state)), m_implementation(std::make_unique<Implementation>(std::move(job), m_state)) {
}

Pipeline::~Pipeline() = default;

JobOutcome Pipeline::Run() { return m_implementation->Run(); }

} // namespace OvPipeline
