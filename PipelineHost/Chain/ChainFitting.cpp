#include "Chain/Connections.h"
#include "Chain/FilterCall.h"
#include "Chain/Links.h"
#include "Chain/Pipeline.h"
#include "Streams/PrintWriteStream.h"

namespace OvPipeline {

namespace {

// The order matters where a filter does not look at its ends: parts before bytes.
constexpr FilterEnds combinations[] = {
    {EndKind::XpsParts, EndKind::XpsParts},
    {EndKind::XpsParts, EndKind::Bytes},
    {EndKind::Bytes, EndKind::Bytes},
    {EndKind::Bytes, EndKind::XpsParts},
};

CComPtr<IUnknown> TrialReader(EndKind kind, const std::shared_ptr<JobState>& job) {
    CComPtr<IUnknown> reader;
    if (kind == EndKind::Bytes) {
        reader.Attach(new PrintReadStream(MemoryContent({}).Open()));
        return reader;
    }
    const auto queue = std::make_shared<PartQueue>(job);
    queue->EndSending();
    reader.Attach(new QueueProvider(queue, job, nullptr));
    return reader;
}

CComPtr<IUnknown> TrialWriter(EndKind kind, const std::shared_ptr<JobState>& job) {
    CComPtr<IUnknown> writer;
    if (kind == EndKind::Bytes) {
        writer.Attach(new PrintWriteStream(std::make_shared<SpooledBytes>()));
        return writer;
    }
    auto context = std::make_shared<PartContext>();
    context->job = job;
    writer.Attach(new QueueConsumer(std::make_shared<PartQueue>(job), context, nullptr));
    return writer;
}

// Initialises a filter on trial, on a job of its own, and lets it go.
HRESULT TryEnds(const FilterModule& module, const FilterSpec& spec, FilterEnds ends, PropertyBag* bag,
                JobState& jobOfAll) {
    const auto job = std::make_shared<JobState>();
    CComPtr<IPrintPipelineFilter> filter = module.MakeFilter(spec.clsid);
    const CComPtr<PropertyBag> trialBag = bag->Clone();
    CComPtr<IInterFilterCommunicator> connections;
    connections.Attach(new FilterConnections(TrialReader(ends.input, job), TrialWriter(ends.output, job)));
    CComPtr<IPrintPipelineManagerControl> control;
    control.Attach(new ManagerControl(job, spec.name));
    return CallFilter(jobOfAll, "filter " + spec.name + " (InitializeFilter)", [&] {
        const HRESULT hr = filter->InitializeFilter(connections, trialBag, control);
        filter->ShutdownOperation();
        filter.Release();
        return hr;
    });
}

FilterEnds FindEnds(const FilterModule& module, const FilterSpec& spec, PropertyBag* bag, JobState& job) {
    HRESULT refused = E_NOINTERFACE;
    for (const FilterEnds& ends : combinations) {
        const HRESULT hr = TryEnds(module, spec, ends, bag, job);
        if (SUCCEEDED(hr)) return ends;
        // What the filter says beside "not these ends" is what the user must know.
        if (hr != E_NOINTERFACE) refused = hr;
    }
    const JobFailure failure = FailureOf(refused, {});
    throw HostError(refused, module.Path(),
                    "filter " + spec.name + " can be initialised with no kind of reader and writer" +
                        (failure.problem.empty() ? "" : ": " + failure.problem));
}

} // namespace

void FitChain(PipelineSpec& pipeline, const std::vector<std::shared_ptr<FilterModule>>& modules,
              PropertyBag* bag, const std::shared_ptr<JobState>& job) {
    for (std::size_t i = 0; i < pipeline.filters.size(); ++i) {
        FilterSpec& spec = pipeline.filters[i];
        if (!spec.ends) spec.ends = FindEnds(*modules[i], spec, bag, *job);
        if (job->Log().IsOn())
            job->Log().Step("connects", spec.name + ": reads " + InputName(spec.ends->input) + ", writes " +
                                            OutputName(spec.ends->output));
        if (i == 0) continue;
        const FilterSpec& before = pipeline.filters[i - 1];
        if (before.ends->output != spec.ends->input)
            throw HostError(E_NOINTERFACE, {},
                            "the chain does not fit: filter " + std::to_string(i) + " (" + before.name +
                                ") writes " + OutputName(before.ends->output) + ", but filter " +
                                std::to_string(i + 1) + " (" + spec.name + ") reads " +
                                InputName(spec.ends->input));
    }
}

} // namespace OvPipeline
