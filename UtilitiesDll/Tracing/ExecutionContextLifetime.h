#pragma once

#include "LowLevelFacilities/UtilitiesExport.h"
#include "Tracing/ExecutionContextEntry.h"

#include <memory>

/// Keeps an entry in force on the calling thread for a scope: reports made by that thread meanwhile carry it,
/// the innermost first.
class OV_UTILITIES_API ExecutionContextLifetime {
public:
    /// A null entry does nothing.
    explicit ExecutionContextLifetime(std::unique_ptr<ExecutionContextEntry>&& entry) noexcept;
    ~ExecutionContextLifetime();
    ExecutionContextLifetime(const ExecutionContextLifetime&) = delete;
    ExecutionContextLifetime& operator=(const ExecutionContextLifetime&) = delete;

private:
    std::unique_ptr<ExecutionContextEntry> m_entry;
};
