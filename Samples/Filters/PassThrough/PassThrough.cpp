// The smallest XPS filter: every part goes on as it came. The base merges the tickets of the job and of each
// document on the way; this filter asks for those of the pages as well, as a filter would that changes pages
// by their settings.
#include "FilterModule.h"

#include <Filter/XpsFilterBase.h>
#include <Ticket/PrintTicketManager.h>

namespace {

class PassThrough final : public XpsFilterBase {
protected:
    HRESULT OnFixedDocument(IFixedDocument* document) override {
        // Merged page tickets are kept by their part: a page of this document that shares one with a page of
        // another would get the other document's settings.
        GetPTManagerPtr()->ClearPerJobInMemoryDomDocumentCaches();
        return XpsFilterBase::OnFixedDocument(document);
    }
    HRESULT OnFixedPage(IFixedPage* page) override {
        const HRESULT merged = GetPTManagerPtr()->MergeAndValidatePartPrintTicket(page);
        return FAILED(merged) ? merged : XpsFilterBase::OnFixedPage(page);
    }
};

} // namespace

FILTER_MODULE(PassThrough, {0x6a1f0f3e, 0x0d0c, 0x4c7e, {0x9b, 0x52, 0x1e, 0x5a, 0x77, 0x30, 0xc1, 0x01}})
