#include "ComSupport/MsSafeHGlobal.h"

#include "ComSupport/ThrowHresult.h"

MsSafeHGlobal::MsSafeHGlobal(unsigned flags, std::size_t bytes) : m_hglobal(GlobalAlloc(flags, bytes)) {
    const OperationScope operation("MsSafeHGlobal::MsSafeHGlobal");
    if (m_hglobal == nullptr) ThrowComException(E_OUTOFMEMORY);
}

MsSafeHGlobal::~MsSafeHGlobal() {
    if (m_hglobal != nullptr) GlobalFree(m_hglobal);
}

MsSafeHGlobal::operator void*() const { return m_hglobal; }

std::unique_ptr<MsHGlobalLock> MsSafeHGlobal::Lock() { return std::make_unique<MsHGlobalLock>(m_hglobal); }

CComPtr<IStream> MsSafeHGlobal::ConvertToIStream() {
    const OperationScope operation("MsSafeHGlobal::ConvertToIStream");
    CComPtr<IStream> stream;
    ThrowIfFailed(CreateStreamOnHGlobal(m_hglobal, TRUE, &stream));
    m_hglobal = nullptr;
    return stream;
}
