#include "ComSupport/FailureBarrier.h"
#include "Configuration/NativeXmlConfigurationFeatureSet.h"
#include "PrintSchema/PrintTicketXmlDocument.h"
#include "Ticket/EnforcedValue.h"
#include "Ticket/PrintTicketManager.h"

#include <SystemServices/Printer.h>

// The results of the merges do not count: they are reported, and leave no ticket to enforce anything in.

HRESULT PrintTicketManager::MergeAndValidatePartPrintTicketAndSanitizeFromXmlConfig(
    IFixedDocumentSequence* part, NativeXmlConfigurationFeatureSet*& features, bool sanitize) {
    MergeAndValidatePartPrintTicket(part);
    SanitizePrintTicketForXmlConfig(JobTicket, features, sanitize);
    return SanitizePrintTicketForXmlConfig(JobBaseTicket, features, sanitize);
}

HRESULT PrintTicketManager::MergeAndValidatePartPrintTicketAndSanitizeFromXmlConfig(
    IFixedDocument* part, NativeXmlConfigurationFeatureSet*& features, bool sanitize) {
    MergeAndValidatePartPrintTicket(part);
    SanitizePrintTicketForXmlConfig(DocTicket, features, sanitize);
    return SanitizePrintTicketForXmlConfig(DocBaseTicket, features, sanitize);
}

HRESULT PrintTicketManager::MergeAndValidatePartPrintTicketAndSanitizeFromXmlConfig(
    IFixedPage* part, NativeXmlConfigurationFeatureSet*& features, bool sanitize) {
    MergeAndValidatePartPrintTicket(part);
    return SanitizePrintTicketForXmlConfig(PageTicket, features, sanitize);
}

HRESULT PrintTicketManager::SanitizePrintTicketForXmlConfig(WHICH_TICKET which,
                                                            NativeXmlConfigurationFeatureSet*& features,
                                                            bool sanitize) {
    const OperationScope operation("PrintTicketManager::SanitizePrintTicketForXmlConfig");
    Printer printer; // stays open meanwhile
    printer.CreateHandle(m_printerName);
    if (!sanitize || features == nullptr || features->NumberOfFeatures() == 0) return S_OK;
    if (which < DefaultTicket || which > DocBaseTicket) return S_OK;
    IXMLDOMDocument2* const document = GetPtrToPrintTicket(which);
    if (document == nullptr) return E_POINTER;
    PrintTicketXmlDocument ticket(document); // over the manager's own tree
    EnforceConfiguration(ticket, *features);
    return S_OK;
}

IXMLDOMDocument2* PrintTicketManager::GetPtrToPrintTicket(WHICH_TICKET which) {
    switch (which) {
    case DefaultTicket:
        return m_defaultTicket;
    case JobTicket:
        return m_jobTicket;
    case DocTicket:
        return m_documentTicket;
    case PageTicket:
        return m_pageTicket;
    case JobBaseTicket:
        return m_jobBaseTicket;
    case DocBaseTicket:
        return m_documentBaseTicket;
    }
    return nullptr;
}
