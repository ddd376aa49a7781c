#pragma once

// The one barrier that keeps exceptions from crossing a COM boundary.

#include "ComSupport/FilterUtilitiesExport.h"

#include <LowLevelFacilities/Failures/OperationScope.h>

#include <windows.h>

#include <source_location>

/// To be called from within a catch block only. Reports the exception in flight, under the name of the
/// operation that caught it: that of the innermost OperationScope around the try block. Gives the HRESULT
/// that stands for it:
///   std::bad_alloc E_OUTOFMEMORY, CPComException its own, CPException and std::exception E_FAIL,
///   anything else E_UNEXPECTED.
/// Throws nothing.
OV_FILTER_UTILITIES_API HRESULT
ReportCaughtException(const std::source_location& location = std::source_location::current()) noexcept;

/// For a failing result that ends nothing: reports it as if it had been thrown and caught, and gives it back.
OV_FILTER_UTILITIES_API HRESULT
ReportIfFailed(HRESULT hr, const std::source_location& location = std::source_location::current()) noexcept;

/// The same for callers that have no scope, as an operation of that name.
OV_FILTER_UTILITIES_API HRESULT ReportCaughtException(
    const char* function, const std::source_location& location = std::source_location::current()) noexcept;
OV_FILTER_UTILITIES_API HRESULT ReportIfFailed(HRESULT hr, const char* function) noexcept;

// Stands behind a try block: hands every exception to the reporter and stores its HRESULT in hr.
//     const OperationScope operation("Class::Operation");
//     HRESULT hr = S_OK;
//     try {
//         ...
//     }
//     CATCH_VARIOUS(hr)
//     return hr;
// Code without a scope names its operation as a second argument.
#define CATCH_VARIOUS(hr, ...)                                                                               \
    catch (...) {                                                                                            \
        (hr) = ReportCaughtException(__VA_ARGS__);                                                           \
    }
