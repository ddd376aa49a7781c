#pragma once

#include "ComSupport/FilterUtilitiesExport.h"
#include "ComSupport/MsHGlobalLock.h"

#include <windows.h>
#include <atlcomcli.h>

#include <cstddef>
#include <memory>

/// Owns a global memory block, until it hands it over to a stream.
class OV_FILTER_UTILITIES_API MsSafeHGlobal {
public:
    /// GlobalAlloc's flags and size in bytes. Throws CPComException with E_OUTOFMEMORY.
    MsSafeHGlobal(unsigned flags, std::size_t bytes);
    virtual ~MsSafeHGlobal();
    MsSafeHGlobal(const MsSafeHGlobal&) = delete;
    MsSafeHGlobal& operator=(const MsSafeHGlobal&) = delete;

    operator void*() const; // the handle; null once it was handed over
    std::unique_ptr<MsHGlobalLock> Lock();

    /// A stream over the block, which owns it from then on; called again, it gives a stream over a fresh
    /// block. Throws CPComException, and then the block stays here.
    CComPtr<IStream> ConvertToIStream();

private:
    HGLOBAL m_hglobal;
};
