#pragma once

#include "ComSupport/FilterUtilitiesExport.h"
#include "EmbeddedSettings/PrintTicketAttributeBytesReaderWriter.h"
#include "EmbeddedSettings/PrintTicketOrvelPublicDocSettingsReaderWriter.h"
#include "PrintSchema/PrintTicketXmlDocument.h"

#include <LowLevelFacilities/WideStrings/CXString.h>

#include <windows.h>
#include <atlcomcli.h>
#include <msxml6.h>
#include <prntvpt.h>

#include <array>
#include <memory>
#include <string_view>

class PrintTicketManager;

/// The tickets of a snapshot, in the order in which a question falls back: from a page down to the default.
enum EFilterPtScope : int {
    DefaultFilterPtScope = 0,
    JobFilterPtScope = 1,
    DocumentFilterPtScope = 2,
    PageFilterPtScope = 3,
};

/// The tickets that hold for the part that a filter is at, to be asked by name. The documents are shared with
/// whoever gave them; asking changes none of them.
///
/// A question begins at the ticket that its feature's name begins with, and falls back ticket by ticket until
/// one answers; a slot without ticket is passed over. The settings that travel in a ticket are the job's: the
/// public ones come from its ticket, the attribute bytes from there or else from the default ticket. Damaged
/// attribute bytes throw at every question to them, as their reader says.
///
/// Belongs to one filter's thread.
class OV_FILTER_UTILITIES_API XpsFilterPrintTicketBase : public PrintTicketAttributeBytesReaderWriter {
public:
    /// Tells one snapshot from the next. A counter that is not set is -1.
    class OV_FILTER_UTILITIES_API PtChangeCounter {
    public:
        PtChangeCounter() = default;

        [[nodiscard]] int Get() const;
        void Set(int value);
        void Reset();
        /// From -1 to 0, and behind the largest number to 0.
        void Increment();
        [[nodiscard]] bool IsInitialized() const;
        bool operator==(const PtChangeCounter& other) const;
        bool operator!=(const PtChangeCounter& other) const;

    private:
        int m_value = -1;
    };

    /// The manager is not owned, may be null, and must outlive this object. A clone of the helper is kept.
    XpsFilterPrintTicketBase(PrintTicketManager* manager, const IAttributeBytesDebugDisplayHelper& helper);
    XpsFilterPrintTicketBase(const XpsFilterPrintTicketBase&) = delete;
    XpsFilterPrintTicketBase& operator=(const XpsFilterPrintTicketBase&) = delete;
    ~XpsFilterPrintTicketBase() override;

    /// Takes a new snapshot in place of the one before. A document keeps a reference; one that is null, or no
    /// ticket, leaves its slot empty. Throws CPComException for other failures, with all slots empty.
    void Initialize(EPrintTicketScope scope, IXMLDOMDocument2* defaultTicket, IXMLDOMDocument2* jobTicket,
                    IXMLDOMDocument2* documentTicket, IXMLDOMDocument2* pageTicket, CXString& printerName,
                    void* userToken);
    void SetScope(EPrintTicketScope scope);

    /// This object's own; null for an empty slot. For reading: private names stand as the ticket has them.
    PrintTicketXmlDocument* GetCopyOfPtrToPrintTicketXmlDocumentForReading(EFilterPtScope scope);

    /// Parsed at the first question to a snapshot, and valid until the next.
    [[nodiscard]] AttributeBytesIndexedList& GetAttributeBytesIndexedListRef() override;
    [[nodiscard]] const AttributeBytesIndexedList&
    GetAttributeBytesIndexedListRef(AttributeBytesNameSpacesId nameSpace) const override;
    [[nodiscard]] AttributeBytesIndexedList&
    GetAttributeBytesIndexedListRef(AttributeBytesNameSpacesId nameSpace) override;
    using PrintTicketAttributeBytesReaderWriter::GetAttributeBytesIndexedListRef;

    /// Of the job's ticket, valid until the next snapshot; without one there are no settings. What is
    /// committed reaches the shared document.
    PrintTicketOrvelPublicDocSettingsReaderWriter& GetOrvelPublicDocSettingsReaderWriterRef();

    // Both give the last failure where no ticket answers, E_ELEMENT_NOT_FOUND where there is none.

    /// The option of a feature: its local name, and its prefix with the colon, for which optionNs may be
    /// null; the caller's to free. Prefixes, also the one that is handed in, name a namespace as the job's
    /// ticket declares it, or without one the default ticket.
    HRESULT XpsFilterGetFeatureOption(const wchar_t* nsPrefix, const wchar_t* feature, wchar_t** option,
                                      wchar_t** optionNs);
    /// A scored property with a public name; isPublic is said of the feature. Untouched on a failure.
    HRESULT XpsFilterGetScoredPropertyValue(const wchar_t* feature, bool isPublic, const wchar_t* property,
                                            int* value);

    /// By the word that the name begins with, without prefix; of the job for any other.
    static EFilterPtScope GetFeatureScopeFromName(const wchar_t* name);
    static EFilterPtScope MsEPrintTicketScopeToEFilterPtScope(EPrintTicketScope scope);

    // With their colon, of the job's ticket, or without one of the default ticket; null without both.
    CComBSTR GetFrameworkNsPrefix() const;
    CComBSTR GetKeywordsNsPrefix() const;
    CComBSTR GetKeywordsV11NsPrefix() const;
    CComBSTR GetUserKeywordsNsPrefix() const;

    /// Raised with each snapshot.
    [[nodiscard]] const PtChangeCounter& GetChangeCounter() const { return m_changeCounter; }

    /// For diagnostic builds; without effect in this one. Always S_OK.
    HRESULT DebugDumpToBstr(wchar_t** out);
    void Dump(DumpArgs arguments) const override;

protected:
    /// A public setting. One that cannot be read is looked for elsewhere; one that can, and has no value, is
    /// not.
    struct PublicSetting {
        bool isReadable = false;
        CXString value = {}; // empty if not specified
    };
    [[nodiscard]] PublicSetting ReadPublicSetting(const wchar_t* cpssName) const;

    /// The option of a feature, under each ticket's own prefix.
    HRESULT ReadOption(const wchar_t* feature, bool isPublic, CComBSTR& option) const;
    HRESULT ReadScoredProperty(const wchar_t* feature, bool isPublic, const wchar_t* property,
                               int* value) const;
    /// Of the snapshot's scope, or the next below that there is; null without any.
    [[nodiscard]] PrintTicketXmlDocument* GetTicketInForce() const;
    [[nodiscard]] PrintTicketManager* GetManager() const { return m_manager; }

private:
    using Tickets = std::array<std::unique_ptr<PrintTicketXmlDocument>, 4>;

    template <typename Question>
    HRESULT AskFrom(EFilterPtScope scope, const Question& question) const;
    [[nodiscard]] const PrintTicketXmlDocument* GetNamingTicket() const;
    void LoadAttributeBytes() const;

    EPrintTicketScope m_scope;
    EFilterPtScope m_filterScope;
    Tickets m_tickets;
    PtChangeCounter m_changeCounter;
    mutable PtChangeCounter m_jobChangeCounter; // of the snapshot that the attribute bytes are of
    CXString m_printerName;
    void* m_userToken;
    std::unique_ptr<PrintTicketOrvelPublicDocSettingsReaderWriter> m_publicSettings; // never null
    PrintTicketManager* m_manager;
};
