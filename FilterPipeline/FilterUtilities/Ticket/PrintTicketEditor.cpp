#include "Ticket/PrintTicketEditor.h"

#include "ComSupport/FailureBarrier.h"
#include "ComSupport/ThrowHresult.h"
#include "Ticket/PrintTicketManager.h"
#include "Ticket/TicketDom.h"
#include "XpsParts/MsOMConvertor.h"

#include <LowLevelFacilities/Formatter/CPFormat.h>

#include <algorithm>
#include <string_view>

namespace {

using TicketDom::Document;

// What a call gives or throws, as a result. A document of another kind is thrown with a code that succeeds.
template <typename Call>
HRESULT ResultOf(const Call& call) {
    HRESULT hr = S_OK;
    try {
        return call();
    }
    CATCH_VARIOUS(hr)
    return FAILED(hr) ? hr : E_FAIL;
}

void WriteAll_throws(IPrintWriteStream& target, IStream& source) {
    BYTE chunk[4096];
    for (;;) {
        ULONG count = 0;
        ThrowIfFailed(source.Read(chunk, sizeof chunk, &count));
        if (count == 0) return;
        for (ULONG done = 0; done < count;) {
            ULONG written = 0;
            ThrowIfFailed(target.WriteBytes(chunk + done, count - done, &written));
            if (written == 0 || written > count - done) ThrowComException(STG_E_WRITEFAULT);
            done += written;
        }
    }
}

} // namespace

PrintTicketEditor::PrintTicketEditor(IXpsDocumentConsumer* consumer, EPrintTicketScope scope,
                                     PrintTicketManager* manager)
    : m_scope(scope), m_manager(manager), m_consumer(consumer) {}

PrintTicketEditor::PrintTicketEditor(IXpsDocumentConsumer* consumer, IFixedDocumentSequence* sequence,
                                     PrintTicketManager* manager)
    : PrintTicketEditor(consumer, kPTJobScope, manager) {
    m_sequence = sequence;
    TakeNameFromExistingTicket();
}

PrintTicketEditor::PrintTicketEditor(IXpsDocumentConsumer* consumer, IFixedDocument* document,
                                     ULONG documentNumber, PrintTicketManager* manager)
    : PrintTicketEditor(consumer, kPTDocumentScope, manager) {
    m_document = document;
    m_documentNumber = documentNumber;
    TakeNameFromExistingTicket();
}

PrintTicketEditor::PrintTicketEditor(IXpsDocumentConsumer* consumer, IFixedPage* page, ULONG pageNumber,
                                     PrintTicketManager* manager)
    : PrintTicketEditor(consumer, kPTPageScope, manager) {
    m_page = page;
    m_pageNumber = pageNumber;
    TakeNameFromExistingTicket();
}

PrintTicketEditor::PrintTicketEditor(IXpsDocumentConsumer* consumer, IFixedPage* page, ULONG pageNumber,
                                     PrintTicketManager* manager, const CXString& uri, bool flag)
    : PrintTicketEditor(consumer, kPTPageScope, manager) {
    m_page = page;
    m_pageNumber = pageNumber;
    m_uri = uri;
    m_callerFlag = flag;
    FindExistingTicket();
}

PrintTicketEditor::~PrintTicketEditor() = default;

template <typename Call>
HRESULT PrintTicketEditor::WithPart(const Call& call) const {
    if (m_sequence) return call(*m_sequence);
    if (m_document) return call(*m_document);
    if (m_page) return call(*m_page);
    return E_INVALIDARG;
}

HRESULT PrintTicketEditor::FindExistingTicket() {
    m_existingTicket.Release();
    const HRESULT hr = WithPart([&](auto& part) { return part.GetPrintTicket(&m_existingTicket); });
    m_hasExistingTicket = hr == S_OK && m_existingTicket;
    return hr;
}

void PrintTicketEditor::TakeNameFromExistingTicket() {
    FindExistingTicket();
    if (m_hasExistingTicket) GetUriWithScopeSuffixAdded(m_existingTicket, m_uri, false);
}

bool PrintTicketEditor::DoesPartHaveExistingPrintTicket() const { return m_hasExistingTicket; }

bool PrintTicketEditor::IsInMap() const {
    CXString uri = m_uri;
    IPartPrintTicket* known = nullptr;
    return m_manager != nullptr && m_manager->GetUpdatedPrintTicketFromMap(uri, &known) == S_OK;
}

bool PrintTicketEditor::HasPrintTicketAlreadyBeenUpdatedForThisUri() {
    return m_hasExistingTicket && IsInMap();
}

HRESULT PrintTicketEditor::TryToSynchAndCommitThisPrintTicketWithMatchFromMap() {
    if (m_manager == nullptr) return E_POINTER;
    IPartPrintTicket* known = nullptr;
    if (const HRESULT hr = m_manager->GetUpdatedPrintTicketFromMap(m_uri, &known); hr != S_OK) return hr;
    if (m_document) return m_document->SetPrintTicket(known);
    return m_page ? m_page->SetPrintTicket(known) : E_INVALIDARG;
}

HRESULT PrintTicketEditor::TryToGetPrintTicketXmlDocumentToEdit(PrintTicketXmlDocument** out) {
    const OperationScope operation("PrintTicketEditor::TryToGetPrintTicketXmlDocumentToEdit");
    if (out == nullptr) return E_POINTER;
    if (!m_hasExistingTicket || IsInMap()) return S_FALSE;
    if (!m_consumer) return E_POINTER;
    return ResultOf([&] {
        if (!m_workingDocument) BeginEditing_throws(TicketDom::Load(GetIStreamFromTicket(m_existingTicket)));
        *out = m_workingDocument.get();
        return S_OK;
    });
}

HRESULT PrintTicketEditor::GetPointerToNewEmptyPrintTicketXmlDocument(PrintTicketXmlDocument** out) {
    const OperationScope operation("PrintTicketEditor::GetPointerToNewEmptyPrintTicketXmlDocument");
    if (out == nullptr) return E_POINTER;
    if (m_hasExistingTicket) return E_FAIL;
    if (!m_consumer || m_manager == nullptr) return E_POINTER;
    return ResultOf([&] {
        if (!m_workingDocument) {
            // A ticket that the part has, but does not give, must not be lost to a new one.
            const HRESULT found = FindExistingTicket();
            if (m_hasExistingTicket) return E_FAIL;
            if (FAILED(found) && found != E_ELEMENT_NOT_FOUND) return found;
            m_uri = NameForNewTicket();
            Document ticket;
            ThrowIfFailed(m_manager->CreateNewEmptyTempPrintTicket(&ticket));
            BeginEditing_throws(ticket);
        }
        *out = m_workingDocument.get();
        return S_OK;
    });
}

CXString PrintTicketEditor::NameForNewTicket() const {
    const DWORD now = GetTickCount();
    switch (m_scope) {
    case kPTPageScope:
        return FormatStdString("/METADATA/Page_%u_PT_%u.xml", m_pageNumber, now).c_str();
    case kPTDocumentScope:
        return FormatStdString("/METADATA/Doc_%u_PT_%u.xml", m_documentNumber, now).c_str();
    case kPTJobScope:
        break;
    }
    return FormatStdString("/METADATA/Job_PT_%u.xml", now).c_str();
}

// All or nothing: what fails leaves the editor as it was.
void PrintTicketEditor::BeginEditing_throws(const CComPtr<IXMLDOMDocument2>& ticket) {
    auto document = std::make_unique<PrintTicketXmlDocument>(ticket);
    // Made anew for a ticket that did not declare the private keywords, to know their prefix.
    const HRESULT declared = document->AddUserKeywordsNamespaceDefinitionIfMissing();
    ThrowIfFailed(declared);
    if (declared == S_FALSE) document = std::make_unique<PrintTicketXmlDocument>(ticket);
    CComPtr<IPartPrintTicket> part;
    CComPtr<IPrintWriteStream> stream;
    ThrowIfFailed(m_consumer->GetNewEmptyPart(m_uri, __uuidof(IPartPrintTicket),
                                              reinterpret_cast<void**>(&part), &stream));
    m_newTicket = part;
    m_writeStream = stream;
    m_workingDom = ticket;
    m_workingDocument = std::move(document);
}

HRESULT PrintTicketEditor::CommitPrintTicketChangesToDocumentPart() {
    const OperationScope operation("PrintTicketEditor::CommitPrintTicketChangesToDocumentPart");
    if (!m_workingDom || !m_newTicket) return E_FAIL;
    if (m_manager == nullptr) return E_POINTER;
    return ResultOf([&] {
        const Document committed = WriteNewTicket_throws();
        ThrowIfFailed(WithPart([&](auto& part) { return part.SetPrintTicket(m_newTicket); }));
        SetTicketOfManager(committed);
        return m_manager->AddUpdatedPrintTicketToMap(m_newTicket);
    });
}

// Gives the ticket as it was written. A part that is written half way is nobody's ticket.
CComPtr<IXMLDOMDocument2> PrintTicketEditor::WriteNewTicket_throws() {
    const CComPtr<IPartPrintTicket> part = m_newTicket;
    m_newTicket.Release();
    const CComPtr<IStream> text = TicketDom::AsStream(m_workingDom);
    TicketDom::SeekToStart(*text);
    const CComPtr<IPrintWriteStream> target = m_writeStream;
    m_writeStream.Release();
    if (target) {
        WriteAll_throws(*target, *text);
        target->Close();
    }
    Document written = TicketDom::Load(text);
    m_newTicket = part;
    return written;
}

void PrintTicketEditor::SetTicketOfManager(const CComPtr<IXMLDOMDocument2>& ticket) const {
    switch (m_scope) {
    case kPTJobScope:
        m_manager->m_jobTicket = ticket;
        m_manager->SetJobPtChangedFlag(true);
        break;
    case kPTDocumentScope:
        m_manager->m_documentTicket = ticket;
        m_manager->SetDocPtChangedFlag(true);
        break;
    case kPTPageScope:
        m_manager->m_pageTicket = ticket;
        m_manager->SetPagePtChangedFlag(true);
        break;
    }
}

const wchar_t* PrintTicketEditor::SuffixFor(const CXString& uri) const {
    switch (m_scope) {
    case kPTPageScope:
        return L"_p";
    case kPTDocumentScope:
        return L"_d";
    case kPTJobScope:
        break;
    }
    const bool isOfLowerLevel = uri.View().find(L"_d.") != std::wstring_view::npos ||
                                uri.View().find(L"_p.") != std::wstring_view::npos;
    return isOfLowerLevel ? L"_j" : L"";
}

HRESULT PrintTicketEditor::GetUriWithScopeSuffixAdded(IPartPrintTicket* ticket, CXString& out,
                                                      bool addUnique) {
    out.Empty();
    if (ticket == nullptr) return E_POINTER;
    CComBSTR name;
    if (const HRESULT hr = ticket->GetUri(&name); FAILED(hr)) return hr;
    const CXString uri(name);
    const std::wstring_view whole = uri.View();
    const std::size_t dot = std::min(whole.rfind(L'.'), whole.size());
    std::wstring changed(whole.substr(0, dot));
    if (const std::wstring_view suffix = SuffixFor(uri); !changed.ends_with(suffix)) changed += suffix;
    if (addUnique) {
        const DWORD now = GetTickCount();
        const std::string numbers =
            m_scope == kPTJobScope
                ? FormatStdString("_%u", now)
                : FormatStdString("_%u_%x", m_scope == kPTPageScope ? m_pageNumber : m_documentNumber, now);
        changed.append(numbers.begin(), numbers.end());
    }
    out = (changed + std::wstring(whole.substr(dot))).c_str();
    return S_OK;
}
