#pragma once

#include "Common/ComObject.h"
#include "Report/JobState.h"

#include <atlcomcli.h>
#include <filterpipeline.h>

namespace OvPipeline {

/// A filter's two ends, each by its published interface.
class FilterConnections final : public ComObject<IInterFilterCommunicator> {
public:
    /// reader: an IXpsDocumentProvider or IPrintReadStream; writer: an IXpsDocumentConsumer or
    /// IPrintWriteStream. What RequestReader and RequestWriter hand out are these pointers themselves.
    FilterConnections(CComPtr<IUnknown> reader, CComPtr<IUnknown> writer)
        : m_reader(std::move(reader)), m_writer(std::move(writer)) {}

    HRESULT STDMETHODCALLTYPE RequestReader(void** reader) override { return Hand(m_reader, reader); }
    HRESULT STDMETHODCALLTYPE RequestWriter(void** writer) override { return Hand(m_writer, writer); }

private:
    ~FilterConnections() override = default;

    static HRESULT Hand(IUnknown* end, void** object);

    CComPtr<IUnknown> m_reader;
    CComPtr<IUnknown> m_writer;
};

/// What one filter may ask of the pipeline.
class ManagerControl final : public ComObject<IPrintPipelineManagerControl> {
public:
    ManagerControl(std::shared_ptr<JobState> job, std::string filter)
        : m_job(std::move(job)), m_filter(std::move(filter)) {}

    /// A failing reason fails the job in the filter's name; any other cancels it.
    HRESULT STDMETHODCALLTYPE RequestShutdown(HRESULT reason, IImgErrorInfo* unused) override;
    HRESULT STDMETHODCALLTYPE FilterFinished() override { return S_OK; }

private:
    ~ManagerControl() override = default;

    std::shared_ptr<JobState> m_job;
    std::string m_filter;
};

/// Takes a rendering filter's progress into the trace.
class ProgressReport final : public ComObject<IPrintPipelineProgressReport> {
public:
    explicit ProgressReport(std::shared_ptr<JobState> job) : m_job(std::move(job)) {}
    HRESULT STDMETHODCALLTYPE ReportProgress(EXpsJobConsumption update) override;

private:
    ~ProgressReport() override = default;

    std::shared_ptr<JobState> m_job;
};

/// The failure of a filter's call, with what the calling thread noted of it, or else with what the filter's
/// library reported.
JobFailure FailureOf(HRESULT result, std::string stage);

} // namespace OvPipeline
