// XPS in, XPS out: what the administrator of the queue enforces becomes what the job itself asks for. Where
// enforced settings of a part differ from what its own ticket says, or from what it inherits, the part gets a
// changed ticket; parts that share a ticket share the changed one.
#include "FilterModule.h"

#include <Configuration/NativeXmlConfigurationFilterUtilities.h>
#include <Filter/XpsFilterBase.h>
#include <PrintSchema/PrintTicketXmlDocument.h>
#include <Ticket/EnforcedValue.h>
#include <Ticket/PrintTicketEditor.h>
#include <Ticket/PrintTicketManager.h>

#include <algorithm>
#include <memory>
#include <set>
#include <vector>

namespace {

using Values = std::vector<CXString>; // of the features that the configuration enforces

class Policy final : public XpsFilterBase {
protected:
    HRESULT OnFixedDocumentSequence(IFixedDocumentSequence* sequence) override {
        if (sequence == nullptr) return E_POINTER;
        ReadConfiguration();
        const Values ofPrinter = ValuesIn(GetPTManagerPtr()->GetPtrToDefaultPrintTicketForReading());
        PrintTicketEditor editor(m_writer, sequence, GetPTManagerPtr());
        const HRESULT hr = Enforce(sequence, kPTJobScope, editor, ofPrinter, m_ofJob);
        return FAILED(hr) ? hr : m_writer->SendFixedDocumentSequence(sequence);
    }

    HRESULT OnFixedDocument(IFixedDocument* document) override {
        if (document == nullptr) return E_POINTER;
        // A page ticket means something else in each document.
        GetPTManagerPtr()->ClearPerJobInMemoryDomDocumentCaches();
        m_settledTickets.clear();
        PrintTicketEditor editor(m_writer, document, m_fixedDocumentCount, GetPTManagerPtr());
        const HRESULT hr = Enforce(document, kPTDocumentScope, editor, m_ofJob, m_ofDocument);
        return FAILED(hr) ? hr : m_writer->SendFixedDocument(document);
    }

    HRESULT OnFixedPage(IFixedPage* page) override {
        if (page == nullptr) return E_POINTER;
        PrintTicketEditor editor(m_writer, page, m_fixedPageCount, GetPTManagerPtr());
        Values ofPage;
        HRESULT hr = S_OK;
        // What is true of one page is true of all with its ticket.
        if (editor.HasPrintTicketAlreadyBeenUpdatedForThisUri())
            hr = editor.TryToSynchAndCommitThisPrintTicketWithMatchFromMap();
        else if (m_settledTickets.insert(TicketNameOf(page)).second)
            hr = Enforce(page, kPTPageScope, editor, m_ofDocument, ofPage);
        return FAILED(hr) ? hr : m_writer->SendFixedPage(page);
    }

private:
    // Once for the job.
    void ReadConfiguration() {
        m_configuration = std::make_unique<NativeXmlConfigurationFeatureSet>(
            NativeXmlConfigurationFilterUtilities::
                CreateNativeXmlConfigurationFeatureSetFromPipelineProperties(
                    *GetIPrintPipelinePropertyBagPtr(), m_printerName));
        m_enforced = FindEnforcedFeatures(*m_configuration);
    }

    // Merges the part's level. `inherited` is what holds where the part says nothing; `held` becomes what
    // holds from now on.
    template <typename Part>
    HRESULT Enforce(Part* part, EPrintTicketScope level, PrintTicketEditor& editor, const Values& inherited,
                    Values& held) {
        PrintTicketManager& manager = *GetPTManagerPtr();
        NativeXmlConfigurationFeatureSet* configuration = m_configuration.get();
        const HRESULT hr =
            manager.MergeAndValidatePartPrintTicketAndSanitizeFromXmlConfig(part, configuration, true);
        if (FAILED(hr)) return hr;
        IXMLDOMDocument2* const merged = manager.GetPtrToPrintTicketForReading(level);
        if (merged == nullptr) return E_FAIL; // what was wrong with it has been reported
        held = ValuesIn(merged);
        if (editor.HasPrintTicketAlreadyBeenUpdatedForThisUri())
            return editor.TryToSynchAndCommitThisPrintTicketWithMatchFromMap();
        const auto isSaid = [](const CXString& value) { return !value.IsEmpty(); };
        if (std::ranges::none_of(held, isSaid)) return S_OK; // what is enforced concerns the levels above

        const auto own = manager.GetCopyOfCurrentPrintTicketFromPart(part);
        const Values asked = own ? ValuesIn(*own) : Values(m_enforced.size());
        Values changed(m_enforced.size());
        for (std::size_t i = 0; i < m_enforced.size(); ++i)
            if (held[i] != (asked[i].IsEmpty() ? inherited[i] : asked[i])) changed[i] = held[i];
        return std::ranges::any_of(changed, isSaid) ? Write(editor, changed) : S_OK;
    }

    HRESULT Write(PrintTicketEditor& editor, const Values& changed) const {
        PrintTicketXmlDocument* ticket = nullptr;
        const HRESULT hr = editor.DoesPartHaveExistingPrintTicket()
                               ? editor.TryToGetPrintTicketXmlDocumentToEdit(&ticket)
                               : editor.GetPointerToNewEmptyPrintTicketXmlDocument(&ticket);
        if (hr != S_OK) return FAILED(hr) ? hr : E_FAIL;
        for (std::size_t i = 0; i < m_enforced.size(); ++i)
            if (!changed[i].IsEmpty()) WriteEnforcedValue(*ticket, *m_enforced[i].feature, changed[i]);
        return editor.CommitPrintTicketChangesToDocumentPart();
    }

    Values ValuesIn(IXMLDOMDocument2* ticket) const { return ValuesIn(PrintTicketXmlDocument(ticket)); }
    Values ValuesIn(const PrintTicketXmlDocument& ticket) const {
        Values values;
        for (const EnforcedFeature& enforced : m_enforced)
            values.push_back(ReadEnforcedValue(ticket, *enforced.feature));
        return values;
    }

    // Empty for a page without a ticket.
    static CXString TicketNameOf(IFixedPage* page) {
        CComPtr<IPartPrintTicket> ticket;
        CComBSTR name;
        if (page->GetPrintTicket(&ticket) == S_OK) ticket->GetUri(&name);
        return CXString(name);
    }

    std::unique_ptr<NativeXmlConfigurationFeatureSet> m_configuration;
    std::vector<EnforcedFeature> m_enforced; // of the configuration
    Values m_ofJob;
    Values m_ofDocument;
    std::set<CXString> m_settledTickets; // of pages of this document, by name
};

} // namespace

FILTER_MODULE(Policy, {0x8e27c4d5, 0x31ab, 0x4f68, {0xa7, 0x0d, 0x95, 0x1c, 0x3e, 0x82, 0x6b, 0xf4}})
