#include "XpsFilterBase.h"

#include "FilterConnections.h"

#include <ComSupport/MsSafeCoinit.h>
#include <ComSupport/ThrowHresult.h>
#include <LowLevelFacilities/CPFormat.h>
#include <Tracing/ExecutionContextEntry.h>
#include <Tracing/ExecutionContextLifetime.h>

#include <memory>
#include <source_location>
#include <typeinfo>
#include <utility>

namespace {

constexpr auto loopFunction = "XpsFilterBase::StartOperation_throws";
constexpr int loopTracingCode = 31676;

} // namespace

XpsFilterBase::XpsFilterBase()
    : m_fixedDocumentCount(0), m_fixedPageCount(0), m_isWaitingForFirstPage(true) {}

XpsFilterBase::~XpsFilterBase() = default;

HRESULT XpsFilterBase::OnInitializeFilter() { return S_OK; }

void XpsFilterBase::InitializeIO_throws(const CComPtr<IInterFilterCommunicator>& communicator) {
    ConnectReaderAndWriter(*communicator, m_reader, m_writer, "XpsFilterBase::InitializeIO_throws");
}

void XpsFilterBase::CloseWriter() {
    if (!m_writer) return;
    m_writer->CloseSender();
    m_writer.Release();
}

void XpsFilterBase::StartOperation_throws() {
    const auto location = std::source_location::current();
    const ExecutionContextLifetime tracing(std::make_unique<ExecutionContextEntry>(
        loopTracingCode, 256, location.file_name(), loopFunction, static_cast<int>(location.line()), false,
        FormatCPString("%s", typeid(*this).name())));
    const MsSafeCoInit apartment;
    ThrowIfFailed(InitializePrintTicketManager(), loopFunction);

    CComPtr<IUnknown> part;
    ThrowIfFailed(m_reader->GetXpsPart(&part), loopFunction);
    while (IsAlive() && part) {
        ProcessPart_throws(part);
        part.Release();
        ThrowIfFailed(m_reader->GetXpsPart(&part), loopFunction);
    }
    OnFinalize();
    UnInitializePrintTicketManager();
}

void XpsFilterBase::ProcessPart_throws(IUnknown* part) {
    if (const CComQIPtr<IXpsDocument> document(part); document) {
        if (m_isWaitingForFirstPage) {
            m_deferredXpsDocument = document.p;
        } else {
            ThrowIfFailed(OnXpsDocument(document), loopFunction);
        }
    } else if (const CComQIPtr<IFixedDocumentSequence> sequence(part); sequence) {
        if (m_isWaitingForFirstPage) {
            m_deferredFixedDocumentSequence = sequence.p;
        } else {
            ThrowIfFailed(OnFixedDocumentSequence(sequence), loopFunction);
        }
    } else if (const CComQIPtr<IFixedDocument> fixedDocument(part); fixedDocument) {
        ++m_fixedDocumentCount;
        if (m_isWaitingForFirstPage) {
            m_deferredFixedDocument = fixedDocument.p;
        } else {
            ThrowIfFailed(OnFixedDocument(fixedDocument), loopFunction);
        }
    } else if (const CComQIPtr<IFixedPage> page(part); page) {
        if (m_isWaitingForFirstPage) FlushDeferredParts_throws();
        if (!IsAlive()) return;
        ++m_fixedPageCount;
        ThrowIfFailed(OnFixedPage(page), loopFunction);
    } else if (m_writer) {
        m_writer->SendXpsUnknown(part); // the job does not depend on what nobody knows
    }
}

void XpsFilterBase::FlushDeferredParts_throws() {
    // A cancellation between two steps leaves the rest deferred, for the destructor.
    ThrowIfFailed(OnXpsDocument(m_deferredXpsDocument), loopFunction);
    m_deferredXpsDocument.Release();
    if (IsAlive()) {
        ThrowIfFailed(OnFixedDocumentSequence(m_deferredFixedDocumentSequence), loopFunction);
        m_deferredFixedDocumentSequence.Release();
    }
    if (IsAlive()) {
        ThrowIfFailed(OnFixedDocument(m_deferredFixedDocument), loopFunction);
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
