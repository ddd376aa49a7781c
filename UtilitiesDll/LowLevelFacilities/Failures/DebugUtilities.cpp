#include "LowLevelFacilities/Failures/DebugUtilities.h"

#include "LowLevelFacilities/Failures/LastErrorKeeper.h"

#include <windows.h>

#include <atomic>

namespace {

std::atomic<DebugUtilities::ReportSink> reportSink{nullptr};
thread_local ReportContext* innermostContext = nullptr;
thread_local bool isDescribingContexts = false;

void send(const char* text, const char* caption) noexcept {
    if (const DebugUtilities::ReportSink sink = reportSink.load()) {
        sink(text, caption);
        return;
    }
    OutputDebugStringA(caption);
    OutputDebugStringA(": ");
    OutputDebugStringA(text);
    OutputDebugStringA("\n");
}

} // namespace

void DebugUtilities::reportErrorForLowLevelUtilities(const char* text, const char* caption) noexcept {
    const LastErrorKeeper keeper;
    if (text == nullptr) text = "";
    if (caption == nullptr) caption = "";
    // A context that itself has something to report while it is described goes without contexts.
    if (innermostContext == nullptr || isDescribingContexts) return send(text, caption);
    isDescribingContexts = true;
    try {
        std::string report(text);
        for (const ReportContext* context = innermostContext; context != nullptr;
             context = context->m_outer) {
            report += '\n';
            context->describe(report);
        }
        send(report.c_str(), caption);
    } catch (...) {
        send(text, caption);
    }
    isDescribingContexts = false;
}

void DebugUtilities::reportErrorForLowLevelUtilities(const std::string& text,
                                                     const std::string& caption) noexcept {
    reportErrorForLowLevelUtilities(text.c_str(), caption.c_str());
}

DebugUtilities::ReportSink DebugUtilities::setReportSink(ReportSink sink) noexcept {
    return reportSink.exchange(sink);
}

void DebugUtilities::pushReportContext(ReportContext& context) noexcept {
    context.m_outer = innermostContext;
    innermostContext = &context;
}

void DebugUtilities::popReportContext(const ReportContext& context) noexcept {
    // As a rule it is the innermost; one that ends before those within it is taken out of the chain.
    if (innermostContext == &context) {
        innermostContext = context.m_outer;
        return;
    }
    for (ReportContext* inner = innermostContext; inner != nullptr; inner = inner->m_outer) {
        if (inner->m_outer == &context) inner->m_outer = context.m_outer;
    }
}
