#include "ComSupport/MsHGlobalLock.h"

#include "ComSupport/HresultHelpers.h"
#include "ComSupport/ThrowHresult.h"

MsHGlobalLock::MsHGlobalLock(void* hglobal) : m_hglobal(hglobal), m_address(GlobalLock(hglobal)) {
    const OperationScope operation("MsHGlobalLock::MsHGlobalLock");
    if (m_address == nullptr) ThrowIfFailed(GetLastErrorAsHResult());
}

MsHGlobalLock::~MsHGlobalLock() { GlobalUnlock(m_hglobal); }

void* MsHGlobalLock::GetAddress() const { return m_address; }
