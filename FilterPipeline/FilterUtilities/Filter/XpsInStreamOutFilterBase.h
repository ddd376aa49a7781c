#pragma once

#include "Filter/XpsFilterBase.h"

/// Base of a filter that reads XPS parts and writes bytes. It runs the loop of XpsFilterBase; no step writes
/// anything or merges a ticket unless the concrete filter does, and parts of an unknown kind are dropped.
class OV_FILTER_UTILITIES_API XpsInStreamOutFilterBase : public XpsFilterBase {
public:
    XpsInStreamOutFilterBase();
    ~XpsInStreamOutFilterBase() override;

protected:
    /// Throws CPComException if the pipeline connected anything but an XPS provider and a stream.
    void InitializeIO_throws(const CComPtr<IInterFilterCommunicator>& communicator) override;
    void CloseWriter() override;

    // All S_OK, also for null.
    HRESULT OnXpsDocument(IXpsDocument* document) override;
    HRESULT OnFixedDocumentSequence(IFixedDocumentSequence* sequence) override;
    HRESULT OnFixedDocument(IFixedDocument* document) override;
    HRESULT OnFixedPage(IFixedPage* page) override;
    HRESULT OnFinalize() override;

    CComPtr<IPrintWriteStream> m_streamWriter; // the inherited XPS writer stays null
};
