#include "Filter/StreamFilterBase.h"

#include "Filter/FilterConnections.h"

StreamFilterBase::StreamFilterBase() = default;

StreamFilterBase::~StreamFilterBase() = default;

HRESULT StreamFilterBase::OnInitializeFilter() { return S_OK; }

void StreamFilterBase::InitializeIO_throws(const CComPtr<IInterFilterCommunicator>& communicator) {
    const OperationScope operation("StreamFilterBase::InitializeIO_throws");
    ConnectReaderAndWriter(*communicator, m_reader, m_writer);
}

void StreamFilterBase::StartOperation_throws() {
    const OperationScope operation("StreamFilterBase::StartOperation_throws");
    ThrowComException(E_NOTIMPL);
}

void StreamFilterBase::CloseWriter() {
    if (!m_writer) return;
    m_writer->Close();
    m_writer.Release();
}
