// Any bytes as the markup of a page that gets stamps: it is refused, or comes out as a document that has each
// stamp once, in its place, and is the page for the rest.

#include <Stamp/PageRewriter.h>
#include <XpsParts/PrintStreamSource.h>

#include <atlcomcli.h>
#include <msxml6.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>

namespace {

void Check(bool holds) {
    if (!holds) std::abort();
}

constexpr std::string_view behind = "<q:behind xmlns:q=\"urn:stamp:4c1f\"/>";
constexpr std::string_view over = "<q:over xmlns:q=\"urn:stamp:4c1f\"/>";

/// A stream over text of the caller's.
template <typename Interface>
class TextStream : public Interface {
public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void**) override { return E_NOINTERFACE; }
    ULONG STDMETHODCALLTYPE AddRef() override { return 1; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    virtual ~TextStream() = default;
};

class Source final : public TextStream<IPrintReadStream> {
public:
    explicit Source(std::string_view text) : m_rest(text) {}
    HRESULT STDMETHODCALLTYPE Seek(LONGLONG, DWORD, ULONGLONG*) override { return E_NOTIMPL; }
    // In pieces whose ends fall anywhere.
    HRESULT STDMETHODCALLTYPE ReadBytes(void* buffer, ULONG count, ULONG* read, BOOL* isAtEnd) override {
        const std::size_t size = std::min({m_rest.size(), std::size_t{count}, std::size_t{61}});
        std::memcpy(buffer, m_rest.data(), size);
        m_rest.remove_prefix(size);
        *read = static_cast<ULONG>(size);
        *isAtEnd = m_rest.empty();
        return S_OK;
    }

private:
    std::string_view m_rest;
};

class Target final : public TextStream<IPrintWriteStream> {
public:
    std::string text;
    HRESULT STDMETHODCALLTYPE WriteBytes(const void* bytes, ULONG count, ULONG* written) override {
        text.append(static_cast<const char*>(bytes), count);
        *written = count;
        return S_OK;
    }
    void STDMETHODCALLTYPE Close() override {}
};

/// False for what is no page.
bool Rewrite(std::string_view page, const StampMarkup& stamps, std::string& rewritten) {
    Source bytes(page);
    Target output;
    CComPtr<PageRewriter> rewriter;
    rewriter.Attach(new PageRewriter(output, [&](const PageRoot&) { return stamps; }));
    CComPtr<ISAXXMLReader> reader;
    Check(SUCCEEDED(reader.CoCreateInstance(__uuidof(SAXXMLReader60))));
    Check(SUCCEEDED(reader->putContentHandler(rewriter)));
    PrintStreamSource source(&bytes);
    if (FAILED(reader->parse(CComVariant(static_cast<IUnknown*>(&source))))) return false;
    rewritten = output.text;
    return true;
}

/// Takes the one place of a stamp out.
void TakeOut(std::string& text, std::string_view stamp) {
    const std::size_t place = text.find(stamp);
    Check(place != std::string::npos);
    text.erase(place, stamp.size());
    Check(text.find(stamp) == std::string::npos);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view page(reinterpret_cast<const char*>(data), size);
    std::string plain;
    if (!Rewrite(page, {}, plain) || plain.find("urn:stamp:4c1f") != std::string::npos) return 0;
    std::string stamped;
    Check(Rewrite(page, {std::wstring(behind.begin(), behind.end()), std::wstring(over.begin(), over.end())},
                  stamped));
    std::string again;
    Check(Rewrite(stamped, {}, again));
    Check(stamped.find(behind) < stamped.find(over));
    TakeOut(stamped, behind);
    TakeOut(stamped, over);
    // An empty root has an end tag of its own now; written again, both are spelled alike.
    std::string wanted;
    Check(Rewrite(stamped, {}, again) && Rewrite(plain, {}, wanted));
    Check(again == wanted);
    return 0;
}
