#pragma once

#include "Filter/MsRenderFilterBase.h"
#include "XpsParts/CFileResourceCache.h"

/// Base of a filter that reads XPS parts and writes XPS parts. It drives the concrete filter part by part: a
/// step is called for each part, and passes it on downstream unless it is overridden. An override calls the
/// base to pass a part on. A step's failure ends the job with that result.
///
/// The document, sequence and fixed document that lead the job are held back until its first page is there;
/// of several of a kind the last counts. From then on every part goes straight through.
class OV_FILTER_UTILITIES_API XpsFilterBase : public MsRenderFilterBase {
public:
    XpsFilterBase();
    ~XpsFilterBase() override;

protected:
    HRESULT OnInitializeFilter() override;
    /// Throws CPComException if the pipeline connected anything but an XPS provider and an XPS consumer.
    void InitializeIO_throws(const CComPtr<IInterFilterCommunicator>& communicator) override;
    void CloseWriter() override;

    /// The loop over the job's parts. It keeps a ticket manager from before the first step until after
    /// OnFinalize, and ends early, with success, when the filter is shut down.
    void StartOperation_throws() override;

    // Sequence and document first merge their level's ticket; a failing merge keeps the part back. Page
    // tickets are merged by the concrete filter when it wants them. E_POINTER for null.
    virtual HRESULT OnXpsDocument(IXpsDocument* document);
    virtual HRESULT OnFixedDocumentSequence(IFixedDocumentSequence* sequence);
    virtual HRESULT OnFixedDocument(IFixedDocument* document);
    virtual HRESULT OnFixedPage(IFixedPage* page);
    /// At the end of the job and after a cancellation (IsAlive tells), but not after a failure. The result
    /// does not count.
    virtual HRESULT OnFinalize();

private:
    void ProcessPart_throws(IUnknown* part);
    void FlushDeferredParts_throws();

protected:
    CComPtr<IXpsDocumentProvider> m_reader;
    CComPtr<IXpsDocumentConsumer> m_writer;
    // For the concrete filter; not used by the loop.
    CFileResourceCache m_resourceCache;
    ULONG m_fixedDocumentCount; // also those that no step has seen
    ULONG m_fixedPageCount;

private:
    bool m_isWaitingForFirstPage;
    CComPtr<IXpsDocument> m_deferredXpsDocument;
    CComPtr<IFixedDocumentSequence> m_deferredFixedDocumentSequence;
    CComPtr<IFixedDocument> m_deferredFixedDocument;
};
