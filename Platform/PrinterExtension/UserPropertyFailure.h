#pragma once

#include "Com/FaultInjection.h"
#include "Spooler/QueueFolderError.h"
#include "System/FileError.h"

#include <new>
#include <stdexcept>

namespace OvPlatform {

/// Runs what reads or changes a user's properties; its failures as results, a damaged file also in words for
/// whoever debugs.
template <class Work>
HRESULT WithUserProperties(Work work) noexcept {
    if (const HRESULT fault = FaultPoint(); FAILED(fault)) return fault;
    try {
        return work();
    } catch (const FileError& error) {
        return error.Result();
    } catch (const QueueFolderError& error) {
        OutputDebugStringA(error.what());
        OutputDebugStringA("\n");
        return HRESULT_FROM_WIN32(ERROR_FILE_CORRUPT);
    } catch (const std::invalid_argument&) {
        return E_INVALIDARG;
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    } catch (const std::exception&) {
        return E_FAIL;
    }
}

} // namespace OvPlatform
