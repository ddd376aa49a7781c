#pragma once

#include "Filter/MsRenderFilterBase.h"

/// Base of a filter that reads bytes and writes bytes. It has no loop: the concrete filter writes
/// StartOperation_throws, asks IsAlive for itself, and makes the ticket manager if it wants tickets.
class OV_FILTER_UTILITIES_API StreamFilterBase : public MsRenderFilterBase {
public:
    StreamFilterBase();
    ~StreamFilterBase() override;

protected:
    HRESULT OnInitializeFilter() override;
    /// Throws CPComException if the pipeline connected anything but two streams.
    void InitializeIO_throws(const CComPtr<IInterFilterCommunicator>& communicator) override;
    void StartOperation_throws() override; // E_NOTIMPL
    void CloseWriter() override;

    CComPtr<IPrintReadStream> m_reader;
    CComPtr<IPrintWriteStream> m_writer;
    // For the concrete filter; only released here.
    CComPtr<IUnknown> m_first;
    CComPtr<IUnknown> m_second;
    CComPtr<IUnknown> m_third;
};
