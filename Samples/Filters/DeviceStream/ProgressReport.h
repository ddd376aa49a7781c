#pragma once

#include <atlcomcli.h>
#include <filterpipeline.h>

/// Tells the pipeline how far a job is. Only one filter of a chain does, the one that consumes the pages: it
/// takes the pipeline's property, so that no other finds it.
class ProgressReport {
public:
    /// That nobody hears.
    ProgressReport() = default;
    explicit ProgressReport(IPrintPipelinePropertyBag& bag);

    void Report(EXpsJobConsumption step) const;

private:
    CComPtr<IPrintPipelineProgressReport> m_report;
};
