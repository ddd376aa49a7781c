#include "ComSupport/HresultHelpers.h"

#include <array>
#include <cstddef>

HRESULT GetLastErrorAsHResult() {
    const DWORD error = GetLastError();
    return HRESULT_FROM_WIN32(error);
}

HRESULT GetGDIStatusErrorAsHResult(Gdiplus::Status status) {
    static constexpr auto results = std::to_array<HRESULT>({
        S_OK,
        E_FAIL,                                   // GenericError
        E_INVALIDARG,                             // InvalidParameter
        E_OUTOFMEMORY,                            // OutOfMemory
        E_PENDING,                                // ObjectBusy
        E_OUTOFMEMORY,                            // InsufficientBuffer
        E_NOTIMPL,                                // NotImplemented
        S_OK,                                     // Win32Error: the last error decides
        E_FAIL,                                   // WrongState
        E_FAIL,                                   // Aborted
        HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND), // FileNotFound
        E_FAIL,                                   // ValueOverflow
        E_ACCESSDENIED,                           // AccessDenied
    });
    if (status == Gdiplus::Win32Error) return GetLastErrorAsHResult();
    const auto index = static_cast<std::size_t>(status);
    return index < results.size() ? results[index] : E_FAIL;
}
