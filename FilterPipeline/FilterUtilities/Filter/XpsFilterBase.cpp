#include "Filter/XpsFilterBase.h"

#include "ComSupport/MsSafeCoinit.h"
#include "ComSupport/ThrowHresult.h"
#include "Filter/FilterConnections.h"

#include <LowLevelFacilities/Formatter/CPFormat.h>
#include <Tracing/ExecutionContextEntry.h>
#include <Tracing/ExecutionContextLifetime.h>

#include <memory>
#include <source_location>
#include <typeinfo>
#include <utility>

namespace {

constexpr int loopTracingCode = 31676;

} // namespace

XpsFilterBase::XpsFilterBase()
    : m_fixedDocumentCount(0), m_fixedPageCount(0), m_isWaitingForFirstPage(true) {}

XpsFilterBase::~XpsFilterBase() = default;

HRESULT XpsFilterBase::OnInitializeFilter() { return S_OK; }

void XpsFilterBase::InitializeIO_throws(const CComPtr<IInterFilterCommunicator>& communicator) {
    const OperationScope operation("XpsFilterBase::InitializeIO_throws");
    ConnectReaderAndWriter(*communicator, m_reader, m_writer);
}

void XpsFilterBase::CloseWriter() {
    if (!m_writer) return;
    m_writer->CloseSender();
    m_writer.Release();
}

void XpsFilterBase::StartOperation_throws() {
    const OperationScope operation("XpsFilterBase::StartOperation_throws");
    const DebugContextReference place = OperationScope::PlaceOf(std::source_location::current());
    const ExecutionContextLifetime tracing(std::make_unique<ExecutionContextEntry>(
        loopTracingCode, place.size(), place.file(), place.function(), place.line(), false,
        FormatCPString("%s", typeid(*this).name())));
    const MsSafeCoInit apartment;
    ThrowIfFailed(InitializePrintTicketManager());

    CComPtr<IUnknown> part;
    ThrowIfFailed(m_reader->GetXpsPart(&part));
    while (IsAlive() && part) {
        ProcessPart_throws(part);
        part.Release();
        ThrowIfFailed(m_reader->GetXpsPart(&part));
    }
    OnFinalize();
    UnInitializePrintTicketManager();
}

void XpsFilterBase::ProcessPart_throws(IUnknown* part) {
    if (const CComQIPtr<IXpsDocument> document(part); document) {
        if (m_isWaitingForFirstPage) {
            m_deferredXpsDocument = document.p;
        } else {
            ThrowIfFailed(OnXpsDocument(document));
        }
    } else if (const CComQIPtr<IFixedDocumentSequence> sequence(part); sequence) {
        if (m_isWaitingForFirstPage) {
            m_deferredFixedDocumentSequence = sequence.p;
        } else {
            ThrowIfFailed(OnFixedDocumentSequence(sequence));
        }
    } else if (const CComQIPtr<IFixedDocument> fixedDocument(part); fixedDocument) {
        ++m_fixedDocumentCount;
        if (m_isWaitingForFirstPage) {
            m_deferredFixedDocument = fixedDocument.p;
        } else {
            ThrowIfFailed(OnFixedDocument(fixedDocument));
        }
    } else if (const CComQIPtr<IFixedPage> page(part); page) {
        if (m_isWaitingForFirstPage) FlushDeferredParts_throws();
        if (!IsAlive()) return;
        ++m_fixedPageCount;
        ThrowIfFailed(OnFixedPage(page));
    } else if (m_writer) {
        m_writer->SendXpsUnknown(part); // the job does not depend on what nobody knows
    }
}

void XpsFilterBase::FlushDeferredParts_throws() {
    // A cancellation between two steps leaves the rest deferred, for the destructor.
    ThrowIfFailed(OnXpsDocument(m_deferredXpsDocument));
    m_deferredXpsDocument.Release();
    if (IsAlive()) {
        ThrowIfFailed(OnFixedDocumentSequence(m_deferredFixedDocumentSequence));
        m_deferredFixedDocumentSequence.Release();
    }
    if (IsAlive()) {
        ThrowIfFailed(OnFixedDocument(m_deferredFixedDocument));
        m_deferredFixedDocument.Release();
    }
    m_isWaitingForFirstPage = false;
}

HRESULT XpsFilterBase::OnXpsDocument(IXpsDocument* document) {
    if (!document) return E_POINTER;
    return m_writer->SendXpsDocument(document);
}

HRESULT XpsFilterBase::OnFixedDocumentSequence(IFixedDocumentSequence* sequence) {
    if (!sequence) return E_POINTER;
    const HRESULT hr = m_ticketManager->MergeAndValidatePartPrintTicket(sequence);
    return FAILED(hr) ? hr : m_writer->SendFixedDocumentSequence(sequence);
}

HRESULT XpsFilterBase::OnFixedDocument(IFixedDocument* document) {
    if (!document) return E_POINTER;
    const HRESULT hr = m_ticketManager->MergeAndValidatePartPrintTicket(document);
    return FAILED(hr) ? hr : m_writer->SendFixedDocument(document);
}

HRESULT XpsFilterBase::OnFixedPage(IFixedPage* page) {
    if (!page) return E_POINTER;
    return m_writer->SendFixedPage(page);
}

HRESULT XpsFilterBase::OnFinalize() { return S_OK; }
