// An operation of PrintTicketManager that fills an object of this room; the manager's own room knows it by
// name only.

#include "ComSupport/FailureBarrier.h"
#include "JobContext/XpsFilterPrintTicket.h"
#include "Ticket/PrintTicketManager.h"

HRESULT PrintTicketManager::GetSnapshotOfCurrentMergedPartPrintTicket(EPrintTicketScope scope,
                                                                      XpsFilterPrintTicket& target) {
    const OperationScope operation("PrintTicketManager::GetSnapshotOfCurrentMergedPartPrintTicket");
    if (scope != kPTPageScope && scope != kPTDocumentScope && scope != kPTJobScope) return E_INVALIDARG;
    if (GetPtrToPrintTicketForReading(scope) == nullptr) return E_PENDING;
    HRESULT hr = S_OK;
    try {
        target.Initialize(scope, m_defaultTicket, m_jobTicket, m_documentTicket, m_pageTicket, m_printerName,
                          m_userToken);
    }
    CATCH_VARIOUS(hr)
    return hr;
}
