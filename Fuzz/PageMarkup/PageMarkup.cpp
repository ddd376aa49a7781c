// Any bytes as the markup of a page that a filter rewrites as it streams through: it is read to its end or
// refused, what comes out can be read again, and is then written as it stands.

#include <XpsParts/CSaxHandler.h>

#include <atlcomcli.h>
#include <msxml6.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

namespace {

void Check(bool holds) {
    if (!holds) std::abort();
}

// Writes down what it is told, so that the output says the same as the input.
class Rewriter final : public CSaxHandler {
public:
    explicit Rewriter(IStream* output) : m_output(output) {}

    HRESULT STDMETHODCALLTYPE startElement(const wchar_t*, int, const wchar_t*, int, const wchar_t* name,
                                           int nameLength, ISAXAttributes* attributes) override {
        CXString tag(L"<");
        tag += CComBSTR(nameLength, name);
        int count = 0;
        Check(SUCCEEDED(attributes->getLength(&count)));
        for (int index = 0; index < count; ++index) {
            const wchar_t* text = nullptr;
            int length = 0;
            Check(SUCCEEDED(attributes->getQName(index, &text, &length)));
            tag += L" ";
            tag += CComBSTR(length, text);
            Check(SUCCEEDED(attributes->getValue(index, &text, &length)));
            tag += L"=\"";
            tag += Escaped(text, length);
            tag += L"\"";
        }
        tag += L">";
        return WriteToPrintStream(&tag, m_output);
    }
    HRESULT STDMETHODCALLTYPE endElement(const wchar_t*, int, const wchar_t*, int, const wchar_t* name,
                                         int nameLength) override {
        CXString tag(L"</");
        tag += CComBSTR(nameLength, name);
        tag += L">";
        return WriteToPrintStream(&tag, m_output);
    }
    HRESULT STDMETHODCALLTYPE characters(const wchar_t* text, int length) override {
        CXString escaped = Escaped(text, length);
        return escaped.IsEmpty() ? S_OK : WriteToPrintStream(&escaped, m_output);
    }
    HRESULT STDMETHODCALLTYPE processingInstruction(const wchar_t* target, int targetLength,
                                                    const wchar_t* data, int dataLength) override {
        CXString instruction(L"<?");
        instruction += CComBSTR(targetLength, target);
        instruction += L" ";
        instruction += CComBSTR(dataLength, data);
        instruction += L"?>";
        return WriteToPrintStream(&instruction, m_output);
    }

private:
    CXString Escaped(const wchar_t* text, int length) {
        CComBSTR escaped(length, text);
        Check(SUCCEEDED(EscapeEntity(&escaped)));
        return CXString(escaped);
    }

    IStream* m_output;
};

CComPtr<IStream> StreamOf(const void* bytes, std::size_t size) {
    CComPtr<IStream> stream;
    ULONG written = 0;
    Check(SUCCEEDED(CreateStreamOnHGlobal(nullptr, TRUE, &stream)));
    Check(SUCCEEDED(stream->Write(bytes, static_cast<ULONG>(size), &written)) && written == size);
    Check(SUCCEEDED(stream->Seek(LARGE_INTEGER{}, STREAM_SEEK_SET, nullptr)));
    return stream;
}

std::string BytesOf(IStream* stream) {
    std::string bytes;
    Check(SUCCEEDED(stream->Seek(LARGE_INTEGER{}, STREAM_SEEK_SET, nullptr)));
    std::array<char, 4096> chunk;
    for (ULONG count = 1; count > 0; bytes.append(chunk.data(), count))
        Check(SUCCEEDED(stream->Read(chunk.data(), static_cast<ULONG>(chunk.size()), &count)));
    return bytes;
}

bool Rewrite(const void* bytes, std::size_t size, std::string& rewritten) {
    CComPtr<IStream> output;
    Check(SUCCEEDED(CreateStreamOnHGlobal(nullptr, TRUE, &output)));
    CComPtr<CSaxHandler> handler;
    handler.Attach(new Rewriter(output));
    CComPtr<ISAXXMLReader> reader;
    Check(SUCCEEDED(reader.CoCreateInstance(__uuidof(SAXXMLReader60))));
    Check(SUCCEEDED(reader->putContentHandler(handler)));
    if (FAILED(reader->parse(CComVariant(static_cast<IUnknown*>(StreamOf(bytes, size)))))) return false;
    rewritten = BytesOf(output);
    return true;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string first;
    if (!Rewrite(data, size, first)) return 0;
    // White space that was written as a reference is plain from now on, so the second output stays.
    std::string second;
    std::string third;
    Check(Rewrite(first.data(), first.size(), second));
    Check(Rewrite(second.data(), second.size(), third));
    Check(second == third);
    return 0;
}
