#include "StreamFilterBase.h"

#include "FilterConnections.h"

StreamFilterBase::StreamFilterBase() = default;

StreamFilterBase::~StreamFilterBase() = default;

HRESULT StreamFilterBase::OnInitializeFilter() { return S_OK; }

void StreamFilterBase::InitializeIO_throws(const CComPtr<IInterFilterCommunicator>& communicator) {
    ConnectReaderAndWriter(*communicator, m_reader, m_writer, "StreamFilterBase::InitializeIO_throws");
}

void StreamFilterBase::StartOperation_throws() {
    ThrowComException(E_NOTIMPL, "StreamFilterBase::StartOperation_throws");
}

void StreamFilterBase::CloseWriter() {
    if (!m_writer) return;
    m_writer->Close();
    m_writer.Release();
}
