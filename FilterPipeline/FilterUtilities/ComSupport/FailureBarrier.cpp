#include "ComSupport/FailureBarrier.h"

#include "ComSupport/ThrowHresult.h"

#include <LowLevelFacilities/Failures/CPComException.h>

#include <exception>
#include <new>

HRESULT ReportCaughtException(const std::source_location& location) noexcept {
    const auto report = [&](const std::exception& caught, const char* message) {
        CPException::reportAndProcessCaughtException(caught, OperationScope::PlaceOf(location), message);
    };
    // The derived types stand before their bases.
    try {
        throw;
    } catch (const std::bad_alloc& caught) {
        report(caught, "std::bad_alloc exception caught by CATCH_VARIOUS() macro.");
        return E_OUTOFMEMORY;
    } catch (const CPComException& caught) {
        report(caught, "CPComException exception caught by CATCH_VARIOUS() macro.");
        return caught.GetHresult();
    } catch (const CPException& caught) {
        report(caught, "CPException exception caught by CATCH_VARIOUS() macro.");
        return E_FAIL;
    } catch (const std::exception& caught) {
        report(caught, "std::exception exception caught by CATCH_VARIOUS() macro.");
        return E_FAIL;
    } catch (...) {
        CPException::reportAndProcessUnknownCaughtException(
            OperationScope::PlaceOf(location),
            "Unknown exception caught by CATCH_VARIOUS() macro's catch(...).");
        return E_UNEXPECTED;
    }
}

HRESULT ReportIfFailed(HRESULT hr, const std::source_location& location) noexcept {
    try {
        ThrowIfFailed(hr, std::string_view(), location);
    } catch (...) {
        ReportCaughtException(location);
    }
    return hr;
}

HRESULT ReportCaughtException(const char* function, const std::source_location& location) noexcept {
    const OperationScope operation(function);
    return ReportCaughtException(location);
}

HRESULT ReportIfFailed(HRESULT hr, const char* function) noexcept {
    const OperationScope operation(function);
    return ReportIfFailed(hr);
}
