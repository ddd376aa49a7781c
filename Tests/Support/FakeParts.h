#pragma once

// Parts of an XPS job as the pipeline hands them out: a name, bytes, a ticket where the test gives one.

#include "Support/MemoryStreams.h"

#include <filterpipeline.h>

#include <string>
#include <vector>

/// What all parts with bytes have in common, for any of their interfaces.
template <typename Interface, typename... Bases>
class FakePartOf : public ComFake<Interface, Bases...> {
public:
    explicit FakePartOf(std::wstring uri, std::string bytes = {})
        : uri(std::move(uri)), bytes(std::move(bytes)) {}

    std::wstring uri;
    std::string bytes;
    HRESULT uriResult = S_OK;
    HRESULT streamResult = S_OK;
    int streamsGiven = 0;

    HRESULT STDMETHODCALLTYPE GetUri(BSTR* out) override {
        if (FAILED(uriResult)) return uriResult;
        *out = SysAllocString(uri.c_str());
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetStream(IPrintReadStream** stream) override {
        if (FAILED(streamResult)) return streamResult;
        ++streamsGiven;
        CComPtr<IPrintReadStream> made(new MemoryReadStream(bytes));
        return made.CopyTo(stream);
    }
    HRESULT STDMETHODCALLTYPE GetPartCompression(EXpsCompressionOptions* compression) override {
        *compression = Compression_Normal;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE SetPartCompression(EXpsCompressionOptions) override { return S_OK; }
};

using FakePrintTicketPart = FakePartOf<IPartPrintTicket, IPartBase>;

class FakeImagePart : public FakePartOf<IPartImage, IPartBase> {
public:
    using FakePartOf::FakePartOf;
    HRESULT STDMETHODCALLTYPE GetImageProperties(BSTR* contentType) override {
        *contentType = SysAllocString(L"image/png");
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE SetImageContent(PCWSTR) override { return S_OK; }
};

/// A part that no filter knows.
class FakeUnknownPart : public ComFake<IPartDiscardControl> {
public:
    HRESULT STDMETHODCALLTYPE GetDiscardProperties(BSTR*, BSTR*) override { return E_NOTIMPL; }
};

class FakeXpsDocument : public ComFake<IXpsDocument> {
public:
    HRESULT STDMETHODCALLTYPE GetThumbnail(IPartThumbnail**) override { return E_ELEMENT_NOT_FOUND; }
    HRESULT STDMETHODCALLTYPE SetThumbnail(IPartThumbnail*) override { return S_OK; }
};

/// The ticket of a sequence, document or page.
class FakeTicketHolder {
public:
    CComPtr<IPartPrintTicket> ticket;
    HRESULT ticketResult = E_ELEMENT_NOT_FOUND; // what is said where there is no ticket
    HRESULT setTicketResult = S_OK;

    HRESULT GiveTicket(IPartPrintTicket** out) const { return ticket ? ticket.CopyTo(out) : ticketResult; }
    HRESULT TakeTicket(IPartPrintTicket* part) {
        if (SUCCEEDED(setTicketResult)) ticket = part;
        return setTicketResult;
    }
};

template <typename Interface>
class FakeLevel : public ComFake<Interface>, public FakeTicketHolder {
public:
    HRESULT STDMETHODCALLTYPE GetUri(BSTR* uri) override {
        *uri = SysAllocString(L"/level");
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetPrintTicket(IPartPrintTicket** out) override { return GiveTicket(out); }
    HRESULT STDMETHODCALLTYPE SetPrintTicket(IPartPrintTicket* part) override { return TakeTicket(part); }
};

using FakeFixedDocumentSequence = FakeLevel<IFixedDocumentSequence>;
using FakeFixedDocument = FakeLevel<IFixedDocument>;

class FakePartIterator : public ComFake<IXpsPartIterator> {
public:
    explicit FakePartIterator(std::vector<std::pair<std::wstring, CComPtr<IUnknown>>> parts)
        : m_parts(std::move(parts)) {}

    void STDMETHODCALLTYPE Reset() override { m_current = 0; }
    HRESULT STDMETHODCALLTYPE Current(BSTR* uri, IUnknown** part) override {
        if (IsDone()) return E_FAIL;
        if (uri) *uri = SysAllocString(m_parts[m_current].first.c_str());
        return part ? m_parts[m_current].second.CopyTo(part) : S_OK;
    }
    BOOL STDMETHODCALLTYPE IsDone() override { return m_current >= m_parts.size(); }
    void STDMETHODCALLTYPE Next() override { ++m_current; }

private:
    std::vector<std::pair<std::wstring, CComPtr<IUnknown>>> m_parts;
    std::size_t m_current = 0;
};

class FakeFixedPage : public FakePartOf<IFixedPage, IPartBase>, public FakeTicketHolder {
public:
    explicit FakeFixedPage(std::wstring pageUri = L"/Documents/1/Pages/1.fpage")
        : FakePartOf(std::move(pageUri), "<FixedPage/>") {}

    std::vector<std::pair<std::wstring, CComPtr<IUnknown>>> parts; // by URI
    std::vector<CComPtr<IUnknown>> boundParts;
    HRESULT setPagePartResult = S_OK;

    HRESULT STDMETHODCALLTYPE GetPrintTicket(IPartPrintTicket** out) override { return GiveTicket(out); }
    HRESULT STDMETHODCALLTYPE GetPagePart(PCWSTR, IUnknown**) override { return E_ELEMENT_NOT_FOUND; }
    HRESULT STDMETHODCALLTYPE GetWriteStream(IPrintWriteStream**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SetPrintTicket(IPartPrintTicket* part) override { return TakeTicket(part); }
    HRESULT STDMETHODCALLTYPE SetPagePart(IUnknown* part) override {
        if (FAILED(setPagePartResult)) return setPagePartResult;
        boundParts.emplace_back(part);
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE DeleteResource(PCWSTR) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetXpsPartIterator(IXpsPartIterator** iterator) override {
        CComPtr<IXpsPartIterator> made(new FakePartIterator(parts));
        return made.CopyTo(iterator);
    }
};
