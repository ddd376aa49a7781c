#include "Tracing/ExecutionContextLifetime.h"

ExecutionContextLifetime::ExecutionContextLifetime(std::unique_ptr<ExecutionContextEntry>&& entry) noexcept
    : m_entry(std::move(entry)) {
    if (m_entry == nullptr) return;
    DebugUtilities::pushReportContext(*m_entry);
    if (m_entry->reportOnEntry())
        DebugUtilities::reportErrorForLowLevelUtilities("Entered.", "Execution context");
}

ExecutionContextLifetime::~ExecutionContextLifetime() {
    if (m_entry != nullptr) DebugUtilities::popReportContext(*m_entry);
}
