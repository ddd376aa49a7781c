#pragma once

#include "ComSupport/FilterUtilitiesExport.h"

#include <windows.h>

/// Keeps a global memory block locked. Does not own the block.
class OV_FILTER_UTILITIES_API MsHGlobalLock {
public:
    /// Throws CPComException with the last error if the block cannot be locked. A lock that fails without a
    /// last error stands, with a null address.
    explicit MsHGlobalLock(void* hglobal);
    ~MsHGlobalLock();
    MsHGlobalLock(const MsHGlobalLock&) = delete;
    MsHGlobalLock& operator=(const MsHGlobalLock&) = delete;

    void* GetAddress() const;

private:
    HGLOBAL m_hglobal;
    void* m_address;
};
