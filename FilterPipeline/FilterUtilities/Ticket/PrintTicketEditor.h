#pragma once

#include "ComSupport/FilterUtilitiesExport.h"
#include "PrintSchema/PrintTicketXmlDocument.h"

#include <LowLevelFacilities/WideStrings/CXString.h>

#include <atlcomcli.h>
#include <filterpipeline.h>
#include <msxml6.h>
#include <prntvpt.h>

#include <memory>

class PrintTicketManager;

/// Changes the ticket of one part of a job. A ticket cannot be changed in its place: the changed one becomes
/// a new part of the output, and the part is pointed at it.
///
///     PrintTicketEditor editor(consumer, page, pageNumber, manager);
///     if (editor.HasPrintTicketAlreadyBeenUpdatedForThisUri())
///         return editor.TryToSynchAndCommitThisPrintTicketWithMatchFromMap();
///     PrintTicketXmlDocument* ticket = nullptr;
///     HRESULT hr = editor.DoesPartHaveExistingPrintTicket()
///                      ? editor.TryToGetPrintTicketXmlDocumentToEdit(&ticket)
///                      : editor.GetPointerToNewEmptyPrintTicketXmlDocument(&ticket);
///     if (hr == S_OK) ... edit the ticket ...
///         hr = editor.CommitPrintTicketChangesToDocumentPart();
///
/// The part must not have been sent on yet. Until the commit has succeeded the part keeps the ticket that it
/// has, and nothing else changes; a failed commit is not to be tried again with the same editor. Failures are
/// results: of the pipeline, or of a document that is no ticket. Belongs to the filter and its one thread;
/// the manager is borrowed, and outlives the editor.
class OV_FILTER_UTILITIES_API PrintTicketEditor {
public:
    // For the job, for a document, for a page. The consumer may be null, and nothing can be edited then. The
    // number becomes part of the name of a ticket for a part that has none: it must be unique in the job, for
    // pages too. A changed ticket is named after the one that the part has (GetUriWithScopeSuffixAdded).
    PrintTicketEditor(IXpsDocumentConsumer* consumer, IFixedDocumentSequence* sequence,
                      PrintTicketManager* manager);
    PrintTicketEditor(IXpsDocumentConsumer* consumer, IFixedDocument* document, ULONG documentNumber,
                      PrintTicketManager* manager);
    PrintTicketEditor(IXpsDocumentConsumer* consumer, IFixedPage* page, ULONG pageNumber,
                      PrintTicketManager* manager);
    /// For a page, with the name that the changed ticket is to have. The flag is the filter's own; it has no
    /// meaning here.
    PrintTicketEditor(IXpsDocumentConsumer* consumer, IFixedPage* page, ULONG pageNumber,
                      PrintTicketManager* manager, const CXString& uri, bool flag);
    PrintTicketEditor(const PrintTicketEditor&) = delete;
    PrintTicketEditor& operator=(const PrintTicketEditor&) = delete;
    virtual ~PrintTicketEditor();

    bool DoesPartHaveExistingPrintTicket() const;

    /// Whether another part with the same ticket was committed before, in this job.
    bool HasPrintTicketAlreadyBeenUpdatedForThisUri();
    /// Gives the part the ticket that was committed for the other one. S_FALSE if there is none, E_INVALIDARG
    /// for the job, which shares its ticket with nobody.
    HRESULT TryToSynchAndCommitThisPrintTicketWithMatchFromMap();

    /// The part's own ticket, to be edited, with the private keywords declared. It is the editor's, and lives
    /// as long; the same one each time. S_FALSE, and out untouched, for a part without a ticket or with one
    /// that was committed before; E_POINTER without a consumer; E_FAIL for a document that is no ticket.
    HRESULT TryToGetPrintTicketXmlDocumentToEdit(PrintTicketXmlDocument** out);
    /// The same for a part without ticket: one that says nothing, with the declarations of the default
    /// ticket. E_FAIL for a part that has one, E_POINTER without a consumer or a manager; one that cannot be
    /// had is the failure of the part.
    HRESULT GetPointerToNewEmptyPrintTicketXmlDocument(PrintTicketXmlDocument** out);

    /// Writes the edited ticket into the new part and gives it to the part. From then on the manager's ticket
    /// of this level is the edited one as it stands, not merged anew, and its changed flag is set; what the
    /// levels below are merged on stays as it was. E_FAIL if there is nothing to commit.
    HRESULT CommitPrintTicketChangesToDocumentPart();

    /// The name for the changed form of a ticket part: its own with "_p" for a page or "_d" for a document
    /// before the extension, unless it ends so already; for the job "_j" if it ends in one of the others.
    /// addUnique adds numbers that no other name has. The result is that of asking the part for its name.
    HRESULT GetUriWithScopeSuffixAdded(IPartPrintTicket* ticket, CXString& out, bool addUnique);

private:
    PrintTicketEditor(IXpsDocumentConsumer* consumer, EPrintTicketScope scope, PrintTicketManager* manager);

    /// Calls with whichever part there is; E_INVALIDARG for none.
    template <typename Call>
    HRESULT WithPart(const Call& call) const;
    HRESULT FindExistingTicket();
    void TakeNameFromExistingTicket();
    bool IsInMap() const;
    CXString NameForNewTicket() const;
    const wchar_t* SuffixFor(const CXString& uri) const;
    void BeginEditing_throws(const CComPtr<IXMLDOMDocument2>& ticket);
    CComPtr<IXMLDOMDocument2> WriteNewTicket_throws();
    void SetTicketOfManager(const CComPtr<IXMLDOMDocument2>& ticket) const;

    EPrintTicketScope m_scope;
    CComPtr<IFixedDocumentSequence> m_sequence;
    CComPtr<IFixedDocument> m_document;
    CComPtr<IFixedPage> m_page;
    bool m_hasExistingTicket = false;
    PrintTicketManager* m_manager;
    ULONG m_documentNumber = 0;
    ULONG m_pageNumber = 0;
    CComPtr<IXpsDocumentConsumer> m_consumer;
    CXString m_uri;
    CComPtr<IPartPrintTicket> m_existingTicket;
    CComPtr<IPartPrintTicket> m_newTicket;
    CComPtr<IPrintWriteStream> m_writeStream;
    CComPtr<IXMLDOMDocument2> m_workingDom;
    std::unique_ptr<PrintTicketXmlDocument> m_workingDocument;
    bool m_callerFlag = false;
};
