#include "Chain/Connections.h"

#include "Common/HostError.h"
#include "Report/FilterWords.h"

namespace OvPipeline {

HRESULT FilterConnections::Hand(IUnknown* end, void** object) {
    if (object == nullptr) return E_POINTER;
    *object = nullptr;
    return Guarded([&] {
        end->AddRef();
        *object = end;
        return S_OK;
    });
}

HRESULT ManagerControl::RequestShutdown(HRESULT reason, IImgErrorInfo*) {
    return Guarded([&] {
        Trace& log = m_job->Log();
        if (log.IsOn()) log.Step("asks for the end of the job");
        if (SUCCEEDED(reason)) {
            m_job->Cancel();
        } else {
            JobFailure failure = FailureOf(reason, "filter " + m_filter);
            if (failure.problem.empty()) failure.problem = "the filter asks for the end of the job";
            m_job->Fail(std::move(failure));
        }
        return S_OK;
    });
}

HRESULT ProgressReport::ReportProgress(EXpsJobConsumption update) {
    return Guarded([&] {
        if (update < XpsJob_DocumentSequenceAdded || update > XpsJob_FixedPageAdded) return E_INVALIDARG;
        Trace& log = m_job->Log();
        if (log.IsOn())
            log.Step("reports", update == XpsJob_FixedPageAdded       ? "a page done"
                                : update == XpsJob_FixedDocumentAdded ? "a document done"
                                                                      : "the document sequence done");
        return S_OK;
    });
}

JobFailure FailureOf(HRESULT result, std::string stage) {
    JobFailure failure{result, std::move(stage), ThreadPart(), {}, false};
    const FailureNote& note = ThreadNote();
    if (note.result == result) {
        if (!note.subject.empty()) failure.part = note.subject;
        failure.problem = note.problem;
        failure.fromInput = note.fromInput;
    }
    if (failure.problem.empty()) failure.problem = FilterWords::First();
    return failure;
}

} // namespace OvPipeline
