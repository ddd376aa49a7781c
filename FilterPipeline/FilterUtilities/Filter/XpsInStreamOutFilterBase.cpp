#include "Filter/XpsInStreamOutFilterBase.h"

#include "Filter/FilterConnections.h"

XpsInStreamOutFilterBase::XpsInStreamOutFilterBase() = default;

XpsInStreamOutFilterBase::~XpsInStreamOutFilterBase() = default;

void XpsInStreamOutFilterBase::InitializeIO_throws(const CComPtr<IInterFilterCommunicator>& communicator) {
    const OperationScope operation("XpsInStreamOutFilterBase::InitializeIO_throws");
    ConnectReaderAndWriter(*communicator, m_reader, m_streamWriter);
}

void XpsInStreamOutFilterBase::CloseWriter() {
    if (!m_streamWriter) return;
    m_streamWriter->Close();
    m_streamWriter.Release();
}

HRESULT XpsInStreamOutFilterBase::OnXpsDocument(IXpsDocument*) { return S_OK; }

HRESULT XpsInStreamOutFilterBase::OnFixedDocumentSequence(IFixedDocumentSequence*) { return S_OK; }

HRESULT XpsInStreamOutFilterBase::OnFixedDocument(IFixedDocument*) { return S_OK; }

HRESULT XpsInStreamOutFilterBase::OnFixedPage(IFixedPage*) { return S_OK; }

HRESULT XpsInStreamOutFilterBase::OnFinalize() { return S_OK; }
