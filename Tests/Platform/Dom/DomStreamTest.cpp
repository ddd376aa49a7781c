#include "Platform/Dom/DomTestSupport.h"
#include "Support/ComFake.h"

#include <Com/FaultInjection.h>

#include <algorithm>

namespace {

CComPtr<IStream> StreamInto(IXMLDOMDocument* document) {
    CComPtr<IStream> stream;
    EXPECT_EQ(S_OK, document->QueryInterface(&stream));
    return stream;
}

void Write(IStream* stream, std::string_view bytes) {
    ULONG written = 0;
    EXPECT_EQ(S_OK, stream->Write(bytes.data(), static_cast<ULONG>(bytes.size()), &written));
    EXPECT_EQ(bytes.size(), written);
}

HRESULT SeekTo(IStream* stream, LONGLONG place, DWORD origin = STREAM_SEEK_SET) {
    LARGE_INTEGER move = {};
    move.QuadPart = place;
    return stream->Seek(move, origin, nullptr);
}

std::uint64_t PlaceOf(IStream* stream) {
    ULARGE_INTEGER place = {};
    EXPECT_EQ(S_OK, stream->Seek({}, STREAM_SEEK_CUR, &place));
    return place.QuadPart;
}

TEST(DomStream, ReadsTheTextInItsDeclaredEncoding) {
    auto document = Parsed("<?xml version='1.0' encoding='UTF-8'?><a>\xC3\xBC</a>");
    auto stream = StreamInto(document);
    const std::string text = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\r\n<a>\xC3\xBC</a>\r\n";
    STATSTG stat = {};
    EXPECT_EQ(S_OK, stream->Stat(&stat, STATFLAG_NONAME));
    EXPECT_EQ(text.size(), stat.cbSize.QuadPart);
    EXPECT_EQ(text, Rest(stream));
    EXPECT_EQ(text.size(), PlaceOf(stream));
    EXPECT_EQ(S_OK, SeekTo(stream, -7, STREAM_SEEK_END));
    EXPECT_EQ("\xBC</a>\r\n", Rest(stream));
    EXPECT_EQ(STG_E_INVALIDFUNCTION, SeekTo(stream, -1));
    EXPECT_EQ(S_OK, SeekTo(stream, 1000));
    EXPECT_EQ("", Rest(stream));

    auto copy = StreamOf("");
    EXPECT_EQ(S_OK, SeekTo(stream, 0));
    ULARGE_INTEGER all = {}, read = {}, written = {};
    all.QuadPart = ~0ULL;
    EXPECT_EQ(S_OK, stream->CopyTo(copy, all, &read, &written));
    EXPECT_EQ(text.size(), written.QuadPart);
    EXPECT_EQ(S_OK, SeekTo(copy, 0));
    EXPECT_EQ(text, Rest(copy));

    auto wide = StreamInto(Parsed("<?xml version='1.0' encoding='UTF-16'?><a/>"));
    EXPECT_EQ("\xFF\xFE<", Rest(wide).substr(0, 3));
}

TEST(DomStream, IsAnInterfaceOfTheDocumentAndShowsItAsItIsAtTheStart) {
    auto document = Parsed("<a x='1'/>");
    auto stream = StreamInto(document);
    EXPECT_TRUE(document.IsEqualObject(stream));
    EXPECT_EQ(stream.p, StreamInto(document).p) << "one place in the text";
    EXPECT_EQ("<a x=\"1\"/>\r\n", Rest(stream));
    EXPECT_EQ(S_OK, RootOf(document)->setAttribute(CComBSTR(L"x"), Value("22")));
    EXPECT_EQ("", Rest(stream)) << "a reader at the end stays there";
    EXPECT_EQ(S_OK, SeekTo(stream, 0));
    EXPECT_EQ("<a x=\"22\"/>\r\n", Rest(stream));
    EXPECT_EQ(VARIANT_TRUE, Got(document, &IXMLDOMDocument::loadXML, Wide("<b/>")));
    document.Release();
    EXPECT_EQ(S_OK, SeekTo(stream, 0));
    EXPECT_EQ("<b/>\r\n", Rest(stream)) << "the stream keeps the document";
}

TEST(DomStream, EachNewOneShowsTheDocumentAsItIsThen) {
    const auto source = Parsed("<a x='1'/>");
    const auto other = Parsed("<c/>");
    const auto set = [](const auto& document, const char* value) {
        EXPECT_EQ(S_OK, RootOf(document)->setAttribute(CComBSTR(L"x"), Value(value)));
    };
    const auto text = [&] { return Rest(StreamInto(source)); };
    EXPECT_EQ("<a x=\"1\"/>\r\n", text());
    EXPECT_EQ("<a x=\"1\"/>\r\n", text());
    set(source, "2");
    EXPECT_EQ("<a x=\"2\"/>\r\n", text());
    {
        const auto stream = StreamInto(source);
        EXPECT_EQ("<a x=\"2\"/>\r\n", Rest(stream));
        set(source, "3");
    }
    EXPECT_EQ("<a x=\"3\"/>\r\n", text());
    EXPECT_EQ(S_OK, Load(source, CComVariant(other.p)));
    EXPECT_EQ("<c/>\r\n", text());
    EXPECT_EQ("<c/>\r\n", text());
    set(other, "1");
    EXPECT_EQ(S_OK, Load(source, CComVariant(other.p)));
    EXPECT_EQ("<c x=\"1\"/>\r\n", text());
    Write(StreamInto(source), "<d/>");
    EXPECT_EQ("<d/>\r\n", text());
    EXPECT_EQ(S_FALSE, Load(source, Bytes("<")));
    EXPECT_EQ("", text());
}

/// Tells its size, and remembers for how many bytes it is asked.
class AskedStream final : public ComFake<IStream, ISequentialStream> {
public:
    explicit AskedStream(std::string text) : m_text(std::move(text)) {}
    std::vector<ULONG> rooms;

    HRESULT STDMETHODCALLTYPE Read(void* bytes, ULONG room, ULONG* read) override {
        rooms.push_back(room);
        *read = static_cast<ULONG>(m_text.copy(static_cast<char*>(bytes), room));
        m_text.erase(0, *read);
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Stat(STATSTG* facts, DWORD) override {
        *facts = {};
        facts->cbSize.QuadPart = m_text.size();
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Write(const void*, ULONG, ULONG*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Seek(LARGE_INTEGER, DWORD, ULARGE_INTEGER*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SetSize(ULARGE_INTEGER) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE CopyTo(IStream*, ULARGE_INTEGER, ULARGE_INTEGER*, ULARGE_INTEGER*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE Commit(DWORD) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Revert() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE LockRegion(ULARGE_INTEGER, ULARGE_INTEGER, DWORD) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE UnlockRegion(ULARGE_INTEGER, ULARGE_INTEGER, DWORD) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE Clone(IStream**) override { return E_NOTIMPL; }

private:
    std::string m_text;
};

TEST(DomStream, IsReadWithoutRoomToSpareWhereItTellsItsSize) {
    const auto stream = MakeFake<AskedStream>("<a/>");
    CComPtr<IXMLDOMDocument2> document;
    ASSERT_EQ(S_OK, document.CoCreateInstance(__uuidof(DOMDocument60)));
    VARIANT_BOOL isLoaded = VARIANT_FALSE;
    EXPECT_EQ(S_OK, document->load(CComVariant(static_cast<IUnknown*>(stream.p)), &isLoaded));
    EXPECT_TRUE(isLoaded);
    EXPECT_EQ(stream->rooms, (std::vector<ULONG>{5, 1})); // one byte more than there are tells the end
}

TEST(DomStream, TakesOverWhatWasWritten) {
    const std::string_view text = "<?xml version='1.0'?><a x='1' xmlns:p='u' y='2'/>";
    const struct {
        const char* name;
        void (*finish)(IXMLDOMDocument2* document, CComPtr<IStream>& stream);
    } cases[] = {
        {"seek", [](IXMLDOMDocument2*, CComPtr<IStream>& stream) { EXPECT_EQ(S_OK, SeekTo(stream, 0)); }},
        {"release", [](IXMLDOMDocument2*, CComPtr<IStream>& stream) { stream.Release(); }},
        {"commit", [](IXMLDOMDocument2*, CComPtr<IStream>& stream) { EXPECT_EQ(S_OK, stream->Commit(0)); }},
        {"use", [](IXMLDOMDocument2*, CComPtr<IStream>&) {}},
    };
    for (const auto& each : cases) {
        auto document = Parsed("<before/>");
        auto stream = StreamInto(document);
        for (std::size_t at = 0; at < text.size(); at += 7) {
            Write(stream, text.substr(at, 7));
            EXPECT_TRUE(CComQIPtr<IXMLDOMNode>(stream.p)) << "asking for interfaces is no end of writing";
            EXPECT_EQ(std::min(at + 7, text.size()), PlaceOf(stream)) << "nor is asking for the place";
        }
        each.finish(document, stream);
        EXPECT_EQ("<a x=\"1\" xmlns:p=\"u\" y=\"2\"/>", XmlOf(RootOf(document))) << each.name;
        if (stream) {
            EXPECT_EQ(S_OK, SeekTo(stream, 0));
            EXPECT_EQ("<?xml version=\"1.0\"?>\r\n<a x=\"1\" xmlns:p=\"u\" y=\"2\"/>\r\n", Rest(stream));
        }
    }
}

TEST(DomStream, ATextThatIsNoDocumentLeavesNone) {
    auto document = Parsed("<before/>");
    auto node = RootOf(document);
    auto stream = StreamInto(document);
    Write(stream, "<a><b></a>");
    EXPECT_EQ(E_FAIL, SeekTo(stream, 0));
    EXPECT_EQ(static_cast<HRESULT>(0xC00CE56D), FailureOf(document).code);
    EXPECT_EQ("", XmlOf(document));
    EXPECT_EQ("before", NameOf(node)) << "nodes of the old tree live on";

    Write(stream, "<c/>");
    EXPECT_EQ(S_OK, stream->Revert());
    EXPECT_EQ("", XmlOf(document));
    Write(stream, "<c/>");
    EXPECT_EQ("<c/>\r\n", XmlOf(document));
    EXPECT_EQ(S_OK, FailureOf(document).code);
}

TEST(DomStream, IsASaveTarget) {
    auto source = Parsed("<?xml version='1.0' encoding='ISO-8859-1'?><a>\xC3\xBC</a>");
    auto target = NewDocument();
    EXPECT_EQ(S_OK, source->save(CComVariant(static_cast<IUnknown*>(target.p))));
    EXPECT_EQ(XmlOf(source), XmlOf(target));
    EXPECT_EQ(S_OK, source->save(CComVariant(StreamInto(source).p))) << "into itself";
    EXPECT_EQ(XmlOf(target), XmlOf(source));
    EXPECT_EQ(E_INVALIDARG, source->save(CComVariant(3)));
}

TEST(DomStream, AFailureAtAnyCallIsReported) {
    const CComVariant file(static_cast<const wchar_t*>(Wide(::testing::TempDir() + "dom-fault.xml")));
    const CComBSTR query(L"//a");
    const auto work = [&](IXMLDOMDocument2* document) {
        VARIANT_BOOL loaded = VARIANT_FALSE;
        CComPtr<IXMLDOMNodeList> list;
        HRESULT result = document->save(file);
        if (result == S_OK) result = document->load(file, &loaded);
        return result == S_OK ? document->selectNodes(query, &list) : result;
    };
    auto counted = Parsed("<a/>");
    OvPlatform::FaultInjection::CountCalls();
    EXPECT_EQ(S_OK, work(counted));
    const LONG calls = OvPlatform::FaultInjection::CallCount();
    EXPECT_GE(calls, 3);
    for (LONG call = 1; call <= calls; ++call) {
        auto document = Parsed("<a/>");
        const OvPlatform::FaultInjectionScope fault(call);
        EXPECT_EQ(E_OUTOFMEMORY, work(document)) << call;
    }
}

} // namespace
