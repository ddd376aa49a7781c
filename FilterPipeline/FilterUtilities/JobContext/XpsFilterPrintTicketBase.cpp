#include "JobContext/XpsFilterPrintTicketBase.h"

#include "ComSupport/FailureBarrier.h"
#include "ComSupport/ThrowHresult.h"
#include "PrintSchema/Bstr.h"
#include "PrintSchema/WrongDocumentException.h"

#include <AttributeStore/PersistentAttributes.h>
#include <LowLevelFacilities/Failures/CPComException.h>

#include <filterpipeline.h>

#include <limits>
#include <utility>

using namespace PrintSchemaText;

namespace {

using Base = PrintTicketAttributeBytesReaderWriter;
using This = XpsFilterPrintTicketBase;
using PublicSettings = PrintTicketOrvelPublicDocSettingsReaderWriter;

using PublicSettingsPointer = std::unique_ptr<PublicSettings>;

// What a filter asks must leave the ticket as it is, which the next level or filter gets.
PublicSettingsPointer PublicSettingsOf(PrintTicketXmlDocument* ticket) {
    return std::make_unique<PublicSettings>(ticket, PublicSettings::EmptyDocument::WithCommit);
}

// Null if it is none.
std::unique_ptr<PrintTicketXmlDocument> TicketOver(IXMLDOMDocument2* document) {
    if (document == nullptr) return nullptr;
    const CComQIPtr<IXMLDOMDocument2> shared(document);
    if (!shared) return nullptr;
    try {
        return std::make_unique<PrintTicketXmlDocument>(shared,
                                                        PrintTicketXmlDocument::PrivateNames::LeftAsTheyAre);
    } catch (const WrongDocumentException&) {
        return nullptr;
    }
}

CComBSTR PrefixOf(const PrintTicketXmlDocument& ticket, bool isPublic) {
    return isPublic ? ticket.GetKeywordsNsPrefix() : ticket.GetUserKeywordsNsPrefix();
}

} // namespace

// ---- The change counter

int This::PtChangeCounter::Get() const { return m_value; }
void This::PtChangeCounter::Set(int value) { m_value = value; }
void This::PtChangeCounter::Reset() { m_value = -1; }

void This::PtChangeCounter::Increment() {
    m_value = m_value == (std::numeric_limits<int>::max)() ? 0 : m_value + 1;
}

bool This::PtChangeCounter::IsInitialized() const { return m_value != -1; }
bool This::PtChangeCounter::operator==(const PtChangeCounter& other) const {
    return m_value == other.m_value;
}
bool This::PtChangeCounter::operator!=(const PtChangeCounter& other) const { return !(*this == other); }

// ---- Snapshots

This::XpsFilterPrintTicketBase(PrintTicketManager* manager, const IAttributeBytesDebugDisplayHelper& helper)
    : Base(helper), m_scope(kPTJobScope), m_filterScope(JobFilterPtScope), m_userToken(nullptr),
      m_publicSettings(PublicSettingsOf(nullptr)), m_manager(manager) {}

This::~XpsFilterPrintTicketBase() = default;

void This::Initialize(EPrintTicketScope scope, IXMLDOMDocument2* defaultTicket, IXMLDOMDocument2* jobTicket,
                      IXMLDOMDocument2* documentTicket, IXMLDOMDocument2* pageTicket, CXString& printerName,
                      void* userToken) {
    const OperationScope operation("XpsFilterPrintTicketBase::Initialize");
    m_changeCounter.Increment();
    SetScope(scope);
    m_printerName = printerName;
    m_userToken = userToken;
    m_publicSettings = PublicSettingsOf(nullptr);
    m_tickets = {};
    IXMLDOMDocument2* const documents[] = {defaultTicket, jobTicket, documentTicket, pageTicket};
    Tickets tickets;
    for (std::size_t slot = 0; slot < tickets.size(); ++slot)
        tickets[slot] = TicketOver(documents[slot]);
    m_publicSettings = PublicSettingsOf(tickets[JobFilterPtScope].get());
    m_tickets = std::move(tickets);
}

void This::SetScope(EPrintTicketScope scope) {
    m_scope = scope;
    m_filterScope = MsEPrintTicketScopeToEFilterPtScope(scope);
}

EFilterPtScope This::MsEPrintTicketScopeToEFilterPtScope(EPrintTicketScope scope) {
    switch (scope) {
    case kPTPageScope:
        return PageFilterPtScope;
    case kPTDocumentScope:
        return DocumentFilterPtScope;
    case kPTJobScope:
        return JobFilterPtScope;
    }
    return DefaultFilterPtScope;
}

EFilterPtScope This::GetFeatureScopeFromName(const wchar_t* name) {
    if (View(name).starts_with(L"Page")) return PageFilterPtScope;
    return View(name).starts_with(L"Document") ? DocumentFilterPtScope : JobFilterPtScope;
}

PrintTicketXmlDocument* This::GetCopyOfPtrToPrintTicketXmlDocumentForReading(EFilterPtScope scope) {
    const auto slot = static_cast<std::size_t>(scope);
    return slot < m_tickets.size() ? m_tickets[slot].get() : nullptr;
}

PrintTicketXmlDocument* This::GetTicketInForce() const {
    for (std::size_t slot = m_filterScope + std::size_t{1}; slot-- > 0;)
        if (m_tickets[slot]) return m_tickets[slot].get();
    return nullptr;
}

// ---- The settings that travel in the job's ticket

AttributeBytesIndexedList& This::GetAttributeBytesIndexedListRef() {
    return Base::GetAttributeBytesIndexedListRef();
}

const AttributeBytesIndexedList&
This::GetAttributeBytesIndexedListRef(AttributeBytesNameSpacesId nameSpace) const {
    LoadAttributeBytes();
    return Base::GetAttributeBytesIndexedListRef(nameSpace);
}

AttributeBytesIndexedList& This::GetAttributeBytesIndexedListRef(AttributeBytesNameSpacesId nameSpace) {
    LoadAttributeBytes();
    return Base::GetAttributeBytesIndexedListRef(nameSpace);
}

void This::LoadAttributeBytes() const {
    if (m_jobChangeCounter == m_changeCounter) return;
    const OperationScope operation("XpsFilterPrintTicketBase::LoadAttributeBytes");
    ByteBuffer bytes;
    for (const EFilterPtScope slot : {JobFilterPtScope, DefaultFilterPtScope})
        if (bytes.empty() && m_tickets[slot]) bytes = ReadBytes(*m_tickets[slot]);
    ReplaceBytes(std::move(bytes));
    m_jobChangeCounter = m_changeCounter;
}

PrintTicketOrvelPublicDocSettingsReaderWriter& This::GetOrvelPublicDocSettingsReaderWriterRef() {
    return *m_publicSettings;
}

This::PublicSetting This::ReadPublicSetting(const wchar_t* cpssName) const {
    PublicSetting setting;
    bool isSpecified = false;
    CXString text;
    const LONG hr = m_publicSettings->GetCurrentValueAsStringForOrvelPublicDocSettingsFeature(
        cpssName, isSpecified, text);
    setting.isReadable = hr == S_OK;
    if (setting.isReadable && isSpecified && !text.IsBlank()) setting.value = text;
    return setting;
}

// ---- Questions to the tickets

template <typename Question>
HRESULT This::AskFrom(EFilterPtScope scope, const Question& question) const {
    HRESULT hr = E_ELEMENT_NOT_FOUND;
    for (std::size_t slot = scope + std::size_t{1}; slot-- > 0;) {
        if (!m_tickets[slot]) continue;
        try {
            hr = question(*m_tickets[slot]);
        } catch (const CPComException&) {
            // The next ticket may answer; that this one did not is told all the same.
            hr = ReportCaughtException();
        }
        if (SUCCEEDED(hr)) break;
    }
    return hr;
}

HRESULT This::XpsFilterGetFeatureOption(const wchar_t* nsPrefix, const wchar_t* feature, wchar_t** option,
                                        wchar_t** optionNs) {
    const OperationScope operation("XpsFilterPrintTicketBase::XpsFilterGetFeatureOption");
    if (option == nullptr) return E_POINTER;
    *option = nullptr;
    if (optionNs != nullptr) *optionNs = nullptr;
    const PrintTicketXmlDocument* const naming = GetNamingTicket();
    return AskFrom(GetFeatureScopeFromName(feature), [&](const PrintTicketXmlDocument& ticket) {
        const PrintTicketXmlDocument& names = naming != nullptr ? *naming : ticket;
        const CComBSTR prefix = ticket.GetNsPrefixOf(nsPrefix, names);
        if (prefix.m_str == nullptr) return E_ELEMENT_NOT_FOUND;
        CComBSTR name;
        CComBSTR found;
        const HRESULT hr = ticket.GetFeatureOption(prefix, feature, &name, &found);
        if (hr != S_OK) return hr;
        if (optionNs != nullptr) {
            CComBSTR named = names.GetNsPrefixOf(found, ticket);
            *optionNs = (named.m_str != nullptr ? named : found).Detach();
        }
        *option = name.Detach();
        return S_OK;
    });
}

HRESULT This::XpsFilterGetScoredPropertyValue(const wchar_t* feature, bool isPublic, const wchar_t* property,
                                              int* value) {
    return ReadScoredProperty(feature, isPublic, property, value);
}

HRESULT This::ReadOption(const wchar_t* feature, bool isPublic, CComBSTR& option) const {
    const OperationScope operation("XpsFilterPrintTicketBase::ReadOption");
    return AskFrom(GetFeatureScopeFromName(feature), [&](const PrintTicketXmlDocument& ticket) {
        option.Empty();
        return ticket.GetFeatureOption(PrefixOf(ticket, isPublic), feature, &option, nullptr);
    });
}

HRESULT This::ReadScoredProperty(const wchar_t* feature, bool isPublic, const wchar_t* property,
                                 int* value) const {
    const OperationScope operation("XpsFilterPrintTicketBase::XpsFilterGetScoredPropertyValue");
    if (value == nullptr) return E_POINTER;
    return AskFrom(GetFeatureScopeFromName(feature), [&](const PrintTicketXmlDocument& ticket) {
        return ticket.GetScoredPropertyValue(feature, isPublic, property, value);
    });
}

// ---- Prefixes

const PrintTicketXmlDocument* This::GetNamingTicket() const {
    return (m_tickets[JobFilterPtScope] ? m_tickets[JobFilterPtScope] : m_tickets[DefaultFilterPtScope])
        .get();
}

CComBSTR This::GetFrameworkNsPrefix() const {
    const PrintTicketXmlDocument* const ticket = GetNamingTicket();
    return ticket != nullptr ? ticket->GetFrameworkNsPrefix() : CComBSTR();
}

CComBSTR This::GetKeywordsNsPrefix() const {
    const PrintTicketXmlDocument* const ticket = GetNamingTicket();
    return ticket != nullptr ? ticket->GetKeywordsNsPrefix() : CComBSTR();
}

CComBSTR This::GetKeywordsV11NsPrefix() const {
    const PrintTicketXmlDocument* const ticket = GetNamingTicket();
    return ticket != nullptr ? ticket->GetKeywordsV11NsPrefix() : CComBSTR();
}

CComBSTR This::GetUserKeywordsNsPrefix() const {
    const PrintTicketXmlDocument* const ticket = GetNamingTicket();
    return ticket != nullptr ? ticket->GetUserKeywordsNsPrefix() : CComBSTR();
}

// ---- Diagnostics

HRESULT This::DebugDumpToBstr(wchar_t**) { return S_OK; }
void This::Dump(DumpArgs) const {}
