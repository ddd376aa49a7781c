// XPS in, bytes out: writes one line of text for each page, with the paper and the orientation that its
// ticket asks for. This base merges no tickets by itself, so each step does that first.
#include "FilterModule.h"
#include "WriteAll.h"

#include <Filter/XpsInStreamOutFilterBase.h>
#include <LowLevelFacilities/Strings/CPString.h>
#include <LowLevelFacilities/Strings/CPStringUtils.h>
#include <PrintSchema/PrintTicketXmlDocument.h>
#include <Ticket/PrintTicketManager.h>

#include <string>

namespace {

class PageList final : public XpsInStreamOutFilterBase {
protected:
    HRESULT OnFixedDocumentSequence(IFixedDocumentSequence* sequence) override {
        return GetPTManagerPtr()->MergeAndValidatePartPrintTicket(sequence);
    }
    HRESULT OnFixedDocument(IFixedDocument* document) override {
        // Merged page tickets are kept by their part: a page of this document that shares one with a page of
        // another would get the other document's settings.
        GetPTManagerPtr()->ClearPerJobInMemoryDomDocumentCaches();
        return GetPTManagerPtr()->MergeAndValidatePartPrintTicket(document);
    }
    HRESULT OnFixedPage(IFixedPage* page) override {
        const HRESULT merged = GetPTManagerPtr()->MergeAndValidatePartPrintTicket(page);
        if (FAILED(merged)) return merged;

        PrintTicketXmlDocument ticket(GetPTManagerPtr()->GetPtrToPagePrintTicketForReading());
        const std::string line = "page " + std::to_string(m_fixedPageCount) + ": " +
                                 Option(ticket, L"PageMediaSize") + ", " +
                                 Option(ticket, L"PageOrientation") + "\n";
        return WriteAll(*m_streamWriter, line.data(), static_cast<ULONG>(line.size()));
    }

private:
    static std::string Option(PrintTicketXmlDocument& ticket, const wchar_t* feature) {
        CComBSTR option;
        CComBSTR prefix = ticket.GetKeywordsNsPrefix();
        if (FAILED(ticket.GetFeatureOption(prefix, feature, &option, nullptr))) return "(not set)";
        return CPStringUtils::narrowToStdString(option);
    }
};

} // namespace

FILTER_MODULE(PageList, {0x6a1f0f3e, 0x0d0c, 0x4c7e, {0x9b, 0x52, 0x1e, 0x5a, 0x77, 0x30, 0xc1, 0x02}})
