#include "Ticket/PrintTicketManager.h"

#include "ComSupport/FailureBarrier.h"
#include "ComSupport/ThrowHresult.h"
#include "Ticket/TicketDom.h"
#include "XpsParts/MsOMConvertor.h"

#include <LowLevelFacilities/Failures/CPComException.h>
#include <LowLevelFacilities/WideStrings/ByteBuffer.h>
#include <SystemServices/PrintJob.h>
#include <SystemServices/SetThreadTokenWrapper.h>
#include <SystemServices/User.h>

#include <winspool.h>

#include <utility>

namespace {

// The page cache's key for pages without a ticket part.
constexpr auto noPageTicketKey = L"(No Page PrintTicket for Page)";

using TicketDom::AsStream;
using TicketDom::Clone;
using TicketDom::Document;
using TicketDom::Load;

// Sets the document of a level for reading, and a clone of it as the base of the next level. Both or neither:
// what fails half way leaves no ticket that looks like a merged one.
void SetBoth(Document& ticket, Document& baseTicket, const Document& made) {
    baseTicket = Clone(made);
    ticket = made;
}

// Whether the job's own ticket leaves the passcode feature out.
bool LacksPasscode(const CComPtr<IPartPrintTicket>& partTicket) {
    PrintTicketXmlDocument ticket(GetIStreamFromTicket(partTicket));
    CComBSTR option;
    CComBSTR optionPrefix;
    try {
        return FAILED(ticket.GetFeatureOption(ticket.GetKeywordsV11NsPrefix(),
                                              PrintSchema::JobPasscode::FEATURE, &option, &optionPrefix));
    } catch (const CPComException& failure) {
        // Not a valid name. What could not be read may be there, and must not go.
        if (failure.GetHresult() != E_FAIL) throw;
        return true;
    }
}

// The ticket part of a part. One that cannot be had is reported, and the merge goes on without: it says for
// itself what it lacks.
template <typename Part>
HRESULT FetchTicket(Part& part, CComPtr<IPartPrintTicket>& ticket) {
    const HRESULT hr = part.GetPrintTicket(&ticket);
    return hr == E_ELEMENT_NOT_FOUND ? hr : ReportIfFailed(hr);
}

void StripPasscode(const Document& document) {
    PrintTicketXmlDocument ticket(document);
    ThrowIfFailed(
        ticket.DeleteFeatureNodeIfExists(ticket.GetKeywordsV11NsPrefix(), PrintSchema::JobPasscode::FEATURE));
}

template <typename Part>
std::unique_ptr<PrintTicketXmlDocument> CopyTicketOf(Part* part) {
    const OperationScope operation("PrintTicketManager::GetCopyOfCurrentPrintTicketFromPart");
    std::unique_ptr<PrintTicketXmlDocument> copy;
    HRESULT hr = S_OK;
    try {
        if (!part) ThrowComException(E_POINTER);
        CComPtr<IPartPrintTicket> ticket;
        hr = part->GetPrintTicket(&ticket);
        if (hr == E_ELEMENT_NOT_FOUND) return copy;
        ThrowIfFailed(hr);
        copy = std::make_unique<PrintTicketXmlDocument>(GetIStreamFromTicket(ticket));
    }
    CATCH_VARIOUS(hr)
    return copy;
}

} // namespace

PrintTicketManager::PrintTicketManager()
    : m_userToken(nullptr), m_jobTicketChanged(false), m_documentTicketChanged(false),
      m_pageTicketChanged(false) {}

PrintTicketManager::~PrintTicketManager() = default;

PrintTicketManager::PrintTicketManager(PrintTicketManager& other) { CopyFrom(other); }

PrintTicketManager& PrintTicketManager::operator=(PrintTicketManager& other) {
    if (this != &other) CopyFrom(other);
    return *this;
}

void PrintTicketManager::CopyFrom(PrintTicketManager& other) {
    m_userToken = other.m_userToken;
    m_printerName = other.m_printerName;
    m_updatedTickets = other.m_updatedTickets;
    m_provider = std::move(other.m_provider);
    m_defaultTicket = other.m_defaultTicket;
    m_jobTicket = other.m_jobTicket;
    m_documentTicket = other.m_documentTicket;
    m_pageTicket = other.m_pageTicket;
    m_jobBaseTicket = other.m_jobBaseTicket;
    m_documentBaseTicket = other.m_documentBaseTicket;
    m_jobTicketChanged = other.m_jobTicketChanged;
    m_documentTicketChanged = other.m_documentTicketChanged;
    m_pageTicketChanged = other.m_pageTicketChanged;
    m_pageTicketCache = other.m_pageTicketCache;
    m_capabilitiesCache = other.m_capabilitiesCache;
}

HRESULT PrintTicketManager::Initialize(IPrintReadStream* defaultTicket, wchar_t* printerName,
                                       void* userToken) {
    const OperationScope operation("PrintTicketManager::Initialize");
    HRESULT hr = S_OK;
    try {
        if (defaultTicket == nullptr) return E_POINTER;
        if (printerName == nullptr || !*printerName) return E_INVALIDARG;
        m_printerName = printerName;
        m_userToken = userToken;
        // Also if this printer cannot be opened, nothing is merged for the one before; and what that one made
        // of tickets, or offers, is not this one's.
        m_provider.reset();
        ClearPerJobInMemoryDomDocumentCaches();
        m_provider = std::make_unique<MsSafeHPTProvider>(printerName, userToken);
        const CComPtr<IStream> stream =
            CreateIStreamFromTicketStream(CComPtr<IPrintReadStream>(defaultTicket));
        if (!stream) ThrowComException(E_POINTER);
        m_defaultTicket.Release();
        m_defaultTicket = Load(stream);
    }
    CATCH_VARIOUS(hr)
    return hr;
}

HRESULT PrintTicketManager::MergeAndValidatePartPrintTicket(IFixedDocumentSequence* part) {
    const OperationScope operation("PrintTicketManager::MergeAndValidatePartPrintTicket");
    m_jobTicket.Release();
    m_documentTicket.Release();
    m_pageTicket.Release();
    m_jobBaseTicket.Release();
    m_documentBaseTicket.Release();
    m_jobTicketChanged = m_documentTicketChanged = m_pageTicketChanged = false;
    HRESULT hr = S_OK;
    try {
        if (part == nullptr) ThrowComException(E_POINTER);
        MergeJobLevel_throws(*part);
    }
    CATCH_VARIOUS(hr)
    return hr;
}

HRESULT PrintTicketManager::MergeAndValidatePartPrintTicket(IFixedDocument* part) {
    const OperationScope operation("PrintTicketManager::MergeAndValidatePartPrintTicket");
    m_documentTicket.Release();
    m_pageTicket.Release();
    m_documentBaseTicket.Release();
    m_documentTicketChanged = m_pageTicketChanged = false;
    HRESULT hr = S_OK;
    try {
        if (part == nullptr) ThrowComException(E_POINTER);
        MergeDocumentLevel_throws(*part);
    }
    CATCH_VARIOUS(hr)
    return hr;
}

HRESULT PrintTicketManager::MergeAndValidatePartPrintTicket(IFixedPage* part) {
    const OperationScope operation("PrintTicketManager::MergeAndValidatePartPrintTicket");
    m_pageTicket.Release();
    m_pageTicketChanged = false;
    HRESULT hr = S_OK;
    try {
        if (part == nullptr) ThrowComException(E_POINTER);
        MergePageLevel_throws(*part);
    }
    CATCH_VARIOUS(hr)
    return hr;
}

void PrintTicketManager::MergeJobLevel_throws(IFixedDocumentSequence& part) {
    CComPtr<IPartPrintTicket> partTicket;
    HRESULT ticketResult = S_OK;
    bool stripPasscode = false;
    // What goes wrong here is reported and no more: the merge goes on with the ticket as far as it was
    // obtained, and says for itself what is wrong with it.
    try {
        ticketResult = FetchTicket(part, partTicket);
        if (SUCCEEDED(ticketResult)) stripPasscode = LacksPasscode(partTicket);
    } catch (...) {
        ReportCaughtException();
    }
    if (ticketResult == E_ELEMENT_NOT_FOUND) {
        SetBoth(m_jobTicket, m_jobBaseTicket, Clone(m_defaultTicket));
        return;
    }
    const CComPtr<IStream> merged =
        MergeAndValidatePrintTicket_Cached_throws(AsStream(m_defaultTicket), partTicket, kPTJobScope);
    const Document ticket = Load(merged);
    // The passcode of the printer's default must not lock a job that did not ask for one.
    if (stripPasscode) StripPasscode(ticket);
    SetBoth(m_jobTicket, m_jobBaseTicket, ticket);
}

void PrintTicketManager::MergeDocumentLevel_throws(IFixedDocument& part) {
    CComPtr<IPartPrintTicket> partTicket;
    if (FetchTicket(part, partTicket) == E_ELEMENT_NOT_FOUND) {
        SetBoth(m_documentTicket, m_documentBaseTicket, Clone(m_jobBaseTicket));
        return;
    }
    const CComPtr<IStream> merged =
        MergeAndValidatePrintTicket_Cached_throws(AsStream(m_jobBaseTicket), partTicket, kPTDocumentScope);
    SetBoth(m_documentTicket, m_documentBaseTicket, Load(merged));
}

void PrintTicketManager::MergePageLevel_throws(IFixedPage& part) {
    CComPtr<IPartPrintTicket> partTicket;
    const HRESULT ticketResult = FetchTicket(part, partTicket);
    if (ticketResult == E_ELEMENT_NOT_FOUND) {
        m_pageTicket = Clone(m_documentBaseTicket);
        return;
    }
    // The key stays empty if the URI cannot be had for another reason than that there is none: two such pages
    // need not have the same ticket, and nothing is kept of them.
    CXString key;
    if (ticketResult == S_OK && partTicket) {
        CComBSTR uri;
        const HRESULT uriResult = partTicket->GetUri(&uri);
        if (SUCCEEDED(uriResult)) key = static_cast<const wchar_t*>(uri);
        if (uriResult == E_ELEMENT_NOT_FOUND) key = noPageTicketKey;
    }
    // A copy that failed is a hit without a document.
    if (!key.IsEmpty() && SUCCEEDED(m_pageTicketCache.TryGetPrintSchemaDomFromCache(key, &m_pageTicket)) &&
        m_pageTicket)
        return;

    const CComPtr<IStream> merged =
        MergeAndValidatePrintTicket_Cached_throws(AsStream(m_documentBaseTicket), partTicket, kPTPageScope);
    const Document ticket = Load(merged);
    if (!key.IsEmpty()) ThrowIfFailed(m_pageTicketCache.AddPrintSchemaDomToCache(key, ticket));
    m_pageTicket = ticket;
}

// Does no caching, whatever its name says: the callers do.
CComPtr<IStream> PrintTicketManager::MergeAndValidatePrintTicket_Cached_throws(
    const CComPtr<IStream>& base, const CComPtr<IPartPrintTicket>& partTicket, EPrintTicketScope scope) {
    const OperationScope operation("PrintTicketManager::MergeAndValidatePrintTicket_Cached_throws");
    CComPtr<IStream> delta;
    if (partTicket) delta = GetIStreamFromTicket(partTicket);
    TicketDom::SeekToStart(*base);
    CComPtr<IStream> result;
    ThrowIfFailed(CreateStreamOnHGlobal(nullptr, TRUE, &result));
    if (!m_provider) ThrowComException(E_POINTER);
    m_provider->PTMergeAndValidatePrintTicket_throws(base, delta, scope, result);
    return result;
}

IXMLDOMDocument2* PrintTicketManager::GetPtrToDefaultPrintTicketForReading() { return m_defaultTicket; }

IXMLDOMDocument2* PrintTicketManager::GetPtrToJobPrintTicketForReading() { return m_jobTicket; }

IXMLDOMDocument2* PrintTicketManager::GetPtrToDocPrintTicketForReading() { return m_documentTicket; }

IXMLDOMDocument2* PrintTicketManager::GetPtrToPagePrintTicketForReading() { return m_pageTicket; }

IXMLDOMDocument2* PrintTicketManager::GetPtrToPrintTicketForReading(EPrintTicketScope level) {
    switch (level) {
    case kPTJobScope:
        return m_jobTicket;
    case kPTDocumentScope:
        return m_documentTicket;
    case kPTPageScope:
        return m_pageTicket;
    }
    return nullptr;
}

std::unique_ptr<PrintTicketXmlDocument>
PrintTicketManager::GetCopyOfCurrentPrintTicketFromPart(IFixedDocumentSequence* part) {
    return CopyTicketOf(part);
}

std::unique_ptr<PrintTicketXmlDocument>
PrintTicketManager::GetCopyOfCurrentPrintTicketFromPart(IFixedDocument* part) {
    return CopyTicketOf(part);
}

std::unique_ptr<PrintTicketXmlDocument>
PrintTicketManager::GetCopyOfCurrentPrintTicketFromPart(IFixedPage* part) {
    return CopyTicketOf(part);
}

bool PrintTicketManager::GetJobPtChangedFlag() const { return m_jobTicketChanged; }

bool PrintTicketManager::GetDocPtChangedFlag() const { return m_documentTicketChanged; }

bool PrintTicketManager::GetPagePtChangedFlag() const { return m_pageTicketChanged; }

void PrintTicketManager::SetJobPtChangedFlag(bool changed) { m_jobTicketChanged = changed; }

void PrintTicketManager::SetDocPtChangedFlag(bool changed) { m_documentTicketChanged = changed; }

void PrintTicketManager::SetPagePtChangedFlag(bool changed) { m_pageTicketChanged = changed; }

HRESULT PrintTicketManager::AddUpdatedPrintTicketToMap(IPartPrintTicket* ticket) {
    if (!ticket) return E_POINTER;
    CComBSTR uri;
    const HRESULT hr = ticket->GetUri(&uri);
    if (SUCCEEDED(hr)) m_updatedTickets.emplace(static_cast<const wchar_t*>(uri), ticket);
    return hr;
}

HRESULT PrintTicketManager::GetUpdatedPrintTicketFromMap(CXString& uri, IPartPrintTicket** ticket) {
    if (!ticket) return E_POINTER;
    const auto found = m_updatedTickets.find(uri);
    *ticket = found != m_updatedTickets.end() ? found->second.p : nullptr;
    return found != m_updatedTickets.end() ? S_OK : S_FALSE;
}

HRESULT PrintTicketManager::ClearPerJobInMemoryDomDocumentCaches() {
    m_pageTicketCache.ClearCache();
    m_capabilitiesCache.ClearCache();
    return S_OK;
}

HRESULT PrintTicketManager::GetJobNameUserNameAndDomainName(ULONG jobId, void* printerHandle,
                                                            CXString& jobName, CXString& userName,
                                                            CXString& domain) {
    jobName.Empty();
    userName.Empty();
    domain.Empty();
    const SetThreadTokenWrapper impersonation(m_userToken);
    User::GetCurrentUsersDomain(domain);
    const ByteBuffer info = PrintJob::GetJobInfo(printerHandle, jobId, 1, false);
    if (info.size() >= sizeof(JOB_INFO_1W)) {
        const auto& job = *reinterpret_cast<const JOB_INFO_1W*>(info.getLpbyte());
        jobName = job.pDocument;
        userName = job.pUserName;
    }
    return jobName.IsEmpty() || userName.IsEmpty() ? E_FAIL : S_OK;
}

void* PrintTicketManager::GetUserToken() const { return m_userToken; }

CXString PrintTicketManager::GetPrinterName() const { return m_printerName; }
