#pragma once

// The one barrier that keeps exceptions from crossing a COM boundary.

#include "FilterUtilitiesExport.h"

#include <windows.h>

#include <source_location>

// To be called from within a catch block only. Reports the exception in flight, under the qualified name of
// the operation that caught it, and gives the HRESULT that stands for it:
//   std::bad_alloc E_OUTOFMEMORY, CPComException its own, CPException and std::exception E_FAIL,
//   anything else E_UNEXPECTED.
// Throws nothing.
OV_FILTER_UTILITIES_API HRESULT ReportCaughtException(
    const char* function, const std::source_location& location = std::source_location::current()) noexcept;

// For a failing result that ends nothing: reports it as if it had been thrown and caught, and gives it back.
OV_FILTER_UTILITIES_API HRESULT ReportIfFailed(HRESULT hr, const char* function) noexcept;

// Stands behind a try block: hands every exception to the reporter and stores its HRESULT in hr.
//     HRESULT hr = S_OK;
//     try {
//         ...
//     }
//     CATCH_VARIOUS(hr, "Class::Operation")
//     return hr;
#define CATCH_VARIOUS(hr, function)                                                                          \
    catch (...) {                                                                                            \
        (hr) = ReportCaughtException(function);                                                              \
    }
