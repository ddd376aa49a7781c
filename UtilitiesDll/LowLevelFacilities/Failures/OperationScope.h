#pragma once

#include "LowLevelFacilities/Failures/DebugContext.h"
#include "LowLevelFacilities/UtilitiesExport.h"

#include <source_location>

/// The operation that the calling thread is in, said once at its top:
///     const OperationScope operation("Class::Operation");
/// What is thrown while it lives (ThrowComException.h, ThrowFailure.h) carries that name, and so does what a
/// barrier reports. Scopes nest: the innermost counts, and the one around it again behind its end. A helper
/// without a scope speaks for its caller; an exception keeps the name of the place where it was thrown, and a
/// catch clause is outside of all scopes of its try block. Costs a call and two stores, allocates nothing.
class OperationScope {
public:
    /// The name must outlive the scope: a literal.
    [[nodiscard]] explicit OperationScope(const char* name) noexcept
        : m_current(current()), m_outer(m_current) {
        m_current = name;
    }
    OperationScope(const OperationScope&) = delete;
    OperationScope& operator=(const OperationScope&) = delete;
    ~OperationScope() { m_current = m_outer; }

    /// A place in the source under the name of the innermost operation of this thread; outside of all, under
    /// that of the place's function.
    [[nodiscard]] OV_UTILITIES_API static DebugContextReference
    PlaceOf(const std::source_location& location) noexcept;

private:
    /// Of this thread; null outside of all scopes. A function, since a library for Windows cannot export the
    /// variable.
    [[nodiscard]] OV_UTILITIES_API static const char*& current() noexcept;

    const char*& m_current;
    const char* m_outer;
};
