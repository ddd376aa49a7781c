#pragma once

#include "ComSupport/FilterUtilitiesExport.h"
#include "PrintSchema/DomDocumentCache.h"
#include "PrintSchema/PrintTicketXmlDocument.h"
#include "Ticket/MsSafeHPTProvider.h"

#include <LowLevelFacilities/WideStrings/CXString.h>

#include <atlcomcli.h>
#include <filterpipeline.h>
#include <msxml6.h>

#include <map>
#include <memory>

class NativeXmlConfigurationFeatureSet;
class XpsFilterPrintTicket;

/// The chain of merged tickets of one job: the printer's default, under the job's, under the document's,
/// under the page's. Between calls it holds the complete ticket of the current job, document and page. A
/// level is merged after the one above it. Belongs to one filter and its thread. Initialize, the merges, the
/// copies of tickets and the capabilities let no exception out: they hand it to the reporter, and give the
/// HRESULT it carries, E_OUTOFMEMORY for std::bad_alloc, E_FAIL for other known kinds and E_UNEXPECTED for
/// the rest. The other operations let std::bad_alloc through.
class OV_FILTER_UTILITIES_API PrintTicketManager {
public:
    PrintTicketManager();
    virtual ~PrintTicketManager();

    /// A copy shares the tickets and takes the provider away from its source.
    PrintTicketManager(PrintTicketManager& other);
    PrintTicketManager& operator=(PrintTicketManager& other);

    /// Opens the provider of the printer, in place of an earlier one and its caches, and reads its default
    /// ticket. The token is not owned; null leaves the thread as it is. E_POINTER for a null ticket,
    /// E_INVALIDARG for an empty name (nothing is changed then), E_FAIL for a ticket that does not parse, or
    /// what opening the printer says; there is no default ticket if reading it fails.
    HRESULT Initialize(IPrintReadStream* defaultTicket, wchar_t* printerName, void* userToken);

    // Make the ticket of the part's level, and forget those of the levels below with all changed flags of
    // these levels. A part without ticket gets a copy of the ticket above; of a page's ticket part there is
    // one merge, found again by its URI until the caches are cleared. A part that cannot give its ticket
    // counts as one with an empty ticket. S_OK also if the provider resolved conflicts; E_POINTER for null,
    // or if the level above is not merged; otherwise the provider's failure or that of reading its result.
    // After a failure the level has no ticket, nor has a page, with S_OK, whose stored ticket cannot be
    // copied.
    HRESULT MergeAndValidatePartPrintTicket(IFixedDocumentSequence* part);
    HRESULT MergeAndValidatePartPrintTicket(IFixedDocument* part);
    HRESULT MergeAndValidatePartPrintTicket(IFixedPage* part);

    // The same, and then the administrator's configuration is enforced in the level's ticket, and in what the
    // levels below are merged on (Configuration/TicketEnforcement.h says which features and values). The set
    // stays the caller's; null counts as an empty one. Nothing is enforced with an empty set, or with
    // sanitize false. The result is that of enforcing alone: a failed merge, which was reported, shows in a
    // ticket that is not there, and is E_POINTER only where there is something to enforce. Throws
    // CPExceptionOSApiError if the printer cannot be opened, and CPComException for a document that is no
    // ticket.
    HRESULT MergeAndValidatePartPrintTicketAndSanitizeFromXmlConfig(
        IFixedDocumentSequence* part, NativeXmlConfigurationFeatureSet*& features, bool sanitize);
    HRESULT MergeAndValidatePartPrintTicketAndSanitizeFromXmlConfig(
        IFixedDocument* part, NativeXmlConfigurationFeatureSet*& features, bool sanitize);
    HRESULT MergeAndValidatePartPrintTicketAndSanitizeFromXmlConfig(
        IFixedPage* part, NativeXmlConfigurationFeatureSet*& features, bool sanitize);

    /// What the printer offers with the choices of a ticket, null for its own defaults. The answer is the
    /// caller's, an independent document; the provider is asked once for tickets of the same text. E_POINTER
    /// for a null out or before Initialize; out is null on failure.
    HRESULT GetCapabilities(IXMLDOMDocument2* ticket, IXMLDOMDocument2** out);
    /// The same for the default choices on a paper of this size, in microns, once for each size.
    HRESULT GetCapabilitiesUsingSpecifiedMediaSize(int width, int height, IXMLDOMDocument2** out);
    /// A ticket that says nothing: the root element of the default ticket with its declarations.
    HRESULT CreateNewEmptyTempPrintTicket(IXMLDOMDocument2** out);

    // Without a reference; null until the level is merged.
    IXMLDOMDocument2* GetPtrToDefaultPrintTicketForReading();
    IXMLDOMDocument2* GetPtrToJobPrintTicketForReading();
    IXMLDOMDocument2* GetPtrToDocPrintTicketForReading();
    IXMLDOMDocument2* GetPtrToPagePrintTicketForReading();
    IXMLDOMDocument2* GetPtrToPrintTicketForReading(EPrintTicketScope level);

    /// The part's own ticket, unmerged and independent of the part; empty if it has none or it cannot be
    /// read.
    std::unique_ptr<PrintTicketXmlDocument> GetCopyOfCurrentPrintTicketFromPart(IFixedDocumentSequence* part);
    std::unique_ptr<PrintTicketXmlDocument> GetCopyOfCurrentPrintTicketFromPart(IFixedDocument* part);
    std::unique_ptr<PrintTicketXmlDocument> GetCopyOfCurrentPrintTicketFromPart(IFixedPage* part);

    /// Gives the object the current tickets of all levels, for questions about the part of that scope; the
    /// documents are shared. E_PENDING for a level that is not merged, E_INVALIDARG for what is no scope.
    /// Defined in the room JobContext: includes run downward only.
    HRESULT GetSnapshotOfCurrentMergedPartPrintTicket(EPrintTicketScope scope, XpsFilterPrintTicket& target);

    /// Whether the level's ticket was edited since it was merged.
    bool GetJobPtChangedFlag() const;
    bool GetDocPtChangedFlag() const;
    bool GetPagePtChangedFlag() const;
    void SetJobPtChangedFlag(bool changed);
    void SetDocPtChangedFlag(bool changed);
    void SetPagePtChangedFlag(bool changed);

    /// Remembers an edited ticket part by its URI, with a reference, for the life of the manager. The first
    /// of a URI stays. E_POINTER for null, or the part's own answer to the question for its URI.
    HRESULT AddUpdatedPrintTicketToMap(IPartPrintTicket* ticket);

    /// S_FALSE and null for a URI that is not known, E_POINTER for a null out. No reference is added.
    HRESULT GetUpdatedPrintTicketFromMap(CXString& uri, IPartPrintTicket** ticket);

    /// Forgets the merged page tickets and the capabilities; for the change from job to job. Always S_OK.
    HRESULT ClearPerJobInMemoryDomDocumentCaches();

    /// Asks the spooler for the names of a job, under the user's token. Empty where one is not known. S_OK if
    /// the spooler knows both a document name and a user name, else E_FAIL. Throws CPComException if the
    /// thread cannot take the user's token.
    HRESULT GetJobNameUserNameAndDomainName(ULONG jobId, void* printerHandle, CXString& jobName,
                                            CXString& userName, CXString& domain);

    void* GetUserToken() const;
    CXString GetPrinterName() const;

private:
    // Replaces the ticket of a level.
    friend class PrintTicketEditor;

    // NOLINTNEXTLINE(readability-identifier-naming): published so
    enum WHICH_TICKET {
        DefaultTicket = 0,
        JobTicket = 1,
        DocTicket = 2,
        PageTicket = 3,
        JobBaseTicket = 4,
        DocBaseTicket = 5,
    };

    struct ByText {
        bool operator()(const CXString& left, const CXString& right) const { return left.Compare(right) < 0; }
    };

    CComPtr<IStream> MergeAndValidatePrintTicket_Cached_throws(const CComPtr<IStream>& base,
                                                               const CComPtr<IPartPrintTicket>& partTicket,
                                                               EPrintTicketScope scope);
    HRESULT SanitizePrintTicketForXmlConfig(WHICH_TICKET which, NativeXmlConfigurationFeatureSet*& features,
                                            bool sanitize);
    /// Null for what is not merged.
    IXMLDOMDocument2* GetPtrToPrintTicket(WHICH_TICKET which);
    /// The key of the capabilities that belong to a ticket, which may be null.
    static CXString GenerateCacheKeyFromPrintTicket(IXMLDOMDocument2* ticket);
    CComPtr<IXMLDOMDocument2> GetCapabilities_throws(IXMLDOMDocument2* ticket);
    CComPtr<IXMLDOMDocument2> GetCapabilitiesForSize_throws(int width, int height);
    CComPtr<IXMLDOMDocument2> CreateEmptyTicket_throws();
    void CopyFrom(PrintTicketManager& other);
    void MergeJobLevel_throws(IFixedDocumentSequence& part);
    void MergeDocumentLevel_throws(IFixedDocument& part);
    void MergePageLevel_throws(IFixedPage& part);

    void* m_userToken;
    CXString m_printerName;
    std::map<CXString, CComPtr<IPartPrintTicket>, ByText> m_updatedTickets;
    std::unique_ptr<MsSafeHPTProvider> m_provider;
    CComPtr<IXMLDOMDocument2> m_defaultTicket;
    CComPtr<IXMLDOMDocument2> m_jobTicket;
    CComPtr<IXMLDOMDocument2> m_documentTicket;
    CComPtr<IXMLDOMDocument2> m_pageTicket;
    /// What the next level is merged on: never handed out, so that an edit of the tickets above does not
    /// reach it.
    CComPtr<IXMLDOMDocument2> m_jobBaseTicket;
    CComPtr<IXMLDOMDocument2> m_documentBaseTicket;
    bool m_jobTicketChanged;
    bool m_documentTicketChanged;
    bool m_pageTicketChanged;
    DomDocumentCache m_pageTicketCache;
    DomDocumentCache m_capabilitiesCache;
};
