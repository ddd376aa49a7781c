#include "ComSupport/FailureBarrier.h"
#include "ComSupport/ThrowHresult.h"
#include "Media/PageMediaSizePtPcHelper.h"
#include "PrintSchema/PrintCapabilitiesXmlDocument.h"
#include "PrintSchema/PrintTicketXmlDocument.h"
#include "Ticket/PrintTicketManager.h"
#include "Ticket/TicketDom.h"

#include <BinaryForms/Hash32.h>
#include <LowLevelFacilities/Formatter/CPFormat.h>

namespace {

using TicketDom::AsStream;
using TicketDom::Clone;
using TicketDom::Document;

// The key of the capabilities for no ticket at all.
constexpr auto noTicketKey = L"(No PrintTicket)";

// Gives what `make` makes; null if it fails.
template <typename Make>
HRESULT GiveDocument(IXMLDOMDocument2** out, const Make& make) {
    if (out == nullptr) return E_POINTER;
    *out = nullptr;
    HRESULT hr = S_OK;
    try {
        *out = make().Detach();
    }
    CATCH_VARIOUS(hr)
    return hr;
}

// Null for what is not known. A copy that failed is a hit without a document.
Document FindIn(DomDocumentCache& cache, const CXString& key) {
    Document known;
    return SUCCEEDED(cache.TryGetPrintSchemaDomFromCache(key, &known)) ? known : nullptr;
}

void RemoveContent(IXMLDOMDocument2& document) {
    CComPtr<IXMLDOMElement> root;
    ThrowIfFailed(document.get_documentElement(&root));
    for (;;) {
        CComPtr<IXMLDOMNode> last;
        ThrowIfFailed(root->get_lastChild(&last));
        if (!last) return;
        ThrowIfFailed(root->removeChild(last, nullptr));
    }
}

} // namespace

HRESULT PrintTicketManager::GetCapabilities(IXMLDOMDocument2* ticket, IXMLDOMDocument2** out) {
    const OperationScope operation("PrintTicketManager::GetCapabilities");
    if (out != nullptr) *out = nullptr;
    if (!m_provider) return E_POINTER;
    return GiveDocument(out, [&] { return GetCapabilities_throws(ticket); });
}

HRESULT PrintTicketManager::GetCapabilitiesUsingSpecifiedMediaSize(int width, int height,
                                                                   IXMLDOMDocument2** out) {
    const OperationScope operation("PrintTicketManager::GetCapabilitiesUsingSpecifiedMediaSize");
    return GiveDocument(out, [&] { return GetCapabilitiesForSize_throws(width, height); });
}

HRESULT PrintTicketManager::CreateNewEmptyTempPrintTicket(IXMLDOMDocument2** out) {
    const OperationScope operation("PrintTicketManager::CreateNewEmptyTempPrintTicket");
    return GiveDocument(out, [&] { return CreateEmptyTicket_throws(); });
}

CXString PrintTicketManager::GenerateCacheKeyFromPrintTicket(IXMLDOMDocument2* ticket) {
    if (ticket == nullptr) return noTicketKey;
    CComBSTR text;
    ThrowIfFailed(ticket->get_xml(&text));
    // With the length, so that tickets that differ hardly ever have one key.
    return FormatStdString("PrintTicket_Hash_%08x_%u", Hash32::GetHash32(CXString(text)), text.Length())
        .c_str();
}

CComPtr<IXMLDOMDocument2> PrintTicketManager::GetCapabilities_throws(IXMLDOMDocument2* ticket) {
    if (!m_provider) ThrowComException(E_POINTER);
    const CXString key = GenerateCacheKeyFromPrintTicket(ticket);
    if (Document known = FindIn(m_capabilitiesCache, key)) return known;

    Document capabilities;
    ThrowIfFailed(capabilities.CoCreateInstance(__uuidof(DOMDocument60), nullptr, CLSCTX_ALL));
    CComPtr<IStream> target = AsStream(capabilities);
    const CComPtr<IStream> source = ticket != nullptr ? AsStream(ticket) : nullptr;
    m_provider->PTGetPrintCapabilities_throws(source, target, nullptr);
    TicketDom::SeekToStart(*target);
    ThrowIfFailed(m_capabilitiesCache.AddPrintSchemaDomToCache(key, capabilities));
    return capabilities;
}

CComPtr<IXMLDOMDocument2> PrintTicketManager::GetCapabilitiesForSize_throws(int width, int height) {
    const CXString key = FormatStdString("Default_PrintCapabilities_for_Paper_Size_%u_x_%u",
                                         static_cast<unsigned int>(width), static_cast<unsigned int>(height))
                             .c_str();
    if (Document known = FindIn(m_capabilitiesCache, key)) return known;

    const Document ticket = CreateEmptyTicket_throws();
    PrintCapabilitiesXmlDocument offered(GetCapabilities_throws(ticket));
    PrintTicketXmlDocument sized(ticket); // over the same tree
    PageMediaSizePtPcHelper().AddOrReplacePageMediaSize(offered, sized, width, height);
    Document capabilities = GetCapabilities_throws(ticket);
    ThrowIfFailed(m_capabilitiesCache.AddPrintSchemaDomToCache(key, capabilities));
    return capabilities;
}

CComPtr<IXMLDOMDocument2> PrintTicketManager::CreateEmptyTicket_throws() {
    Document ticket = Clone(m_defaultTicket);
    RemoveContent(*ticket);
    return ticket;
}
