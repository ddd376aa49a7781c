#include "ProgressReport.h"

#include <ComSupport/MsSafeVariant.h>

ProgressReport::ProgressReport(IPrintPipelinePropertyBag& bag) {
    MsSafeVariant value;
    if (FAILED(bag.GetProperty(XPS_FP_PROGRESS_REPORT, &value)) || value.vt != VT_UNKNOWN) return;
    if (value.punkVal)
        value.punkVal->QueryInterface(__uuidof(IPrintPipelineProgressReport),
                                      reinterpret_cast<void**>(&m_report));
    bag.DeleteProperty(XPS_FP_PROGRESS_REPORT);
}

void ProgressReport::Report(EXpsJobConsumption step) const {
    if (m_report) m_report->ReportProgress(step); // a pipeline that does not listen stops no job
}
