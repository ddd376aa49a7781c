#pragma once

// Runs jobs through the pipeline with filters made in the test.

#include "Support/SampleJob.h"

#include <Chain/Pipeline.h>
#include <Common/ComObject.h>
#include <Common/Text.h>
#include <Source/PackageSource.h>
#include <Spooler/QueueFolder.h>

#include <atlcomcli.h>

#include <atomic>
#include <functional>

/// What a test filter works with.
struct FilterEnv {
    IInterFilterCommunicator* communicator = nullptr;
    IPrintPipelinePropertyBag* bag = nullptr;
    IPrintPipelineManagerControl* control = nullptr;
    const std::atomic<bool>& isShutDown;

    CComPtr<IXpsDocumentProvider> Provider() const { return Ask<IXpsDocumentProvider>(true); }
    CComPtr<IXpsDocumentConsumer> Consumer() const { return Ask<IXpsDocumentConsumer>(false); }
    CComPtr<IPrintReadStream> Reader() const { return Ask<IPrintReadStream>(true); }
    CComPtr<IPrintWriteStream> Writer() const { return Ask<IPrintWriteStream>(false); }

private:
    template <class Interface>
    CComPtr<Interface> Ask(bool reads) const {
        void* end = nullptr;
        const HRESULT hr = reads ? communicator->RequestReader(&end) : communicator->RequestWriter(&end);
        CComPtr<Interface> result;
        if (SUCCEEDED(hr)) result.Attach(static_cast<Interface*>(end));
        return result;
    }
};

/// A filter whose StartOperation is the test's. It counts the calls that it gets.
class TestFilter final : public OvPipeline::ComObject<IPrintPipelineFilter> {
public:
    using Body = std::function<HRESULT(const FilterEnv&)>;
    struct Calls {
        std::atomic<int> started{0};
        std::atomic<int> shutDown{0};
        HRESULT initialiseResult = S_OK;
        std::function<void(const FilterEnv&)> atInitialisation;
        std::function<void()> atShutdown;
    };

    TestFilter(Body body, std::shared_ptr<Calls> calls)
        : m_body(std::move(body)), m_calls(std::move(calls)) {}

    HRESULT STDMETHODCALLTYPE InitializeFilter(IInterFilterCommunicator* communicator,
                                               IPrintPipelinePropertyBag* bag,
                                               IPrintPipelineManagerControl* control) override {
        m_communicator = communicator;
        m_bag = bag;
        m_control = control;
        if (m_calls->atInitialisation)
            m_calls->atInitialisation({m_communicator, m_bag, m_control, m_isShutDown});
        return m_calls->initialiseResult;
    }
    HRESULT STDMETHODCALLTYPE ShutdownOperation() override {
        m_isShutDown = true;
        ++m_calls->shutDown;
        if (m_calls->atShutdown) m_calls->atShutdown();
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE StartOperation() override {
        ++m_calls->started;
        return m_body({m_communicator, m_bag, m_control, m_isShutDown});
    }

private:
    ~TestFilter() override = default;

    Body m_body;
    std::shared_ptr<Calls> m_calls;
    CComPtr<IInterFilterCommunicator> m_communicator;
    CComPtr<IPrintPipelinePropertyBag> m_bag;
    CComPtr<IPrintPipelineManagerControl> m_control;
    std::atomic<bool> m_isShutDown{false};
};

inline OvPipeline::FilterSpec
Filter(const std::string& name, TestFilter::Body body,
       OvPipeline::FilterEnds ends = {OvPipeline::EndKind::XpsParts, OvPipeline::EndKind::XpsParts},
       const std::shared_ptr<TestFilter::Calls>& calls = std::make_shared<TestFilter::Calls>()) {
    OvPipeline::FilterSpec spec;
    spec.name = name;
    spec.ends = ends;
    spec.maker = [body = std::move(body), calls] { return new TestFilter(body, calls); };
    return spec;
}

/// Sends a part on by its kind.
inline HRESULT SendPart(IXpsDocumentConsumer* to, IUnknown* part) {
    if (CComQIPtr<IXpsDocument> document(part); document) return to->SendXpsDocument(document);
    if (CComQIPtr<IFixedDocumentSequence> sequence(part); sequence)
        return to->SendFixedDocumentSequence(sequence);
    if (CComQIPtr<IFixedDocument> document(part); document) return to->SendFixedDocument(document);
    if (CComQIPtr<IFixedPage> page(part); page) return to->SendFixedPage(page);
    return to->SendXpsUnknown(part);
}

/// A filter that sends everything on, and shows each page to the test first.
inline TestFilter::Body
PassOn(std::function<HRESULT(const FilterEnv&, IXpsDocumentConsumer*, IFixedPage*)> onPage = {}) {
    return [onPage = std::move(onPage)](const FilterEnv& env) -> HRESULT {
        const CComPtr<IXpsDocumentProvider> from = env.Provider();
        const CComPtr<IXpsDocumentConsumer> to = env.Consumer();
        if (!from || !to) return E_NOINTERFACE;
        HRESULT hr = S_OK;
        while (SUCCEEDED(hr) && !env.isShutDown) {
            CComPtr<IUnknown> part;
            hr = from->GetXpsPart(&part);
            if (FAILED(hr) || !part) break;
            const CComQIPtr<IFixedPage> page(part);
            if (page && onPage) hr = onPage(env, to, page);
            if (SUCCEEDED(hr)) hr = SendPart(to, part);
        }
        to->CloseSender();
        return hr;
    };
}

inline std::shared_ptr<const OvPlatform::QueueFolder> TestQueue() {
    OvPlatform::QueueDescription queue;
    queue.printerName = L"Test Printer";
    queue.portName = L"LPT1";
    queue.driverName = L"Test Driver";
    queue.defaultTicket = SampleTicket("PageOrientation", "Portrait");
    queue.capabilities = "<PrintCapabilities/>";
    queue.driverProperties[L"Model"] = std::wstring(L"T-1000");
    return std::make_shared<OvPlatform::QueueFolder>(std::move(queue));
}

inline OvPipeline::JobDescription MakeJob(const std::filesystem::path& file,
                                          const std::filesystem::path& output,
                                          std::vector<OvPipeline::FilterSpec> filters) {
    OvPipeline::JobDescription job;
    job.file = file;
    job.queue = TestQueue();
    job.pipeline.filters = std::move(filters);
    job.output = output;
    return job;
}

inline OvPipeline::JobOutcome RunJob(OvPipeline::JobDescription job) {
    return OvPipeline::Pipeline(std::move(job), std::make_shared<OvPipeline::JobState>()).Run();
}

inline std::string FailureLine(const OvPipeline::JobOutcome& outcome) {
    return outcome.failure ? outcome.failure->Line() : std::string("(no failure)");
}

inline std::string UriOf(auto* part) {
    CComBSTR uri;
    return SUCCEEDED(part->GetUri(&uri)) ? OvPipeline::Utf8Argument(uri) : std::string("(no name)");
}

// The next page that a source of parts gives; null behind the last.
inline CComPtr<IFixedPage> NextPage(OvPipeline::PackageSource& source) {
    while (const CComPtr<IUnknown> part = source.Next())
        if (const CComQIPtr<IFixedPage> page(part); page) return page;
    return {};
}

inline std::string ReadAll(IPrintReadStream* stream) {
    std::string bytes;
    BOOL atEnd = FALSE;
    while (!atEnd) {
        char chunk[100];
        ULONG read = 0;
        if (FAILED(stream->ReadBytes(chunk, sizeof chunk, &read, &atEnd))) return "(cannot be read)";
        bytes.append(chunk, read);
    }
    return bytes;
}

inline std::string BytesOf(IPartBase* part) {
    CComPtr<IPrintReadStream> stream;
    if (FAILED(part->GetStream(&stream))) return "(no stream)";
    return ReadAll(stream);
}

inline HRESULT WriteAll(IPrintWriteStream* stream, const std::string& bytes) {
    ULONG written = 0;
    const HRESULT hr = stream->WriteBytes(bytes.data(), static_cast<ULONG>(bytes.size()), &written);
    stream->Close();
    return hr;
}
