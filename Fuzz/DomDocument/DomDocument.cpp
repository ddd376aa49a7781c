// Any bytes as a document. The first line is a query, which the prefix p may stand in, the second a
// list of edits, one letter each, with a P in front where blanks count; the rest is the text. After each edit
// the query has the answer that the evaluator gives. What loads can be queried, edited and written. What was
// written says what the tree says, to a parser of another make, and when it is loaded again it has one form.

#include "Documents.h"
#include "Editor.h"
#include "Infoset.h"

#include <Xml/SaxContentListener.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

namespace {

CComBSTR Wide(std::string_view bytes) {
    CComBSTR text(static_cast<int>(bytes.size()));
    std::transform(bytes.begin(), bytes.end(), text.m_str,
                   [](char byte) { return static_cast<OLECHAR>(static_cast<unsigned char>(byte)); });
    return text;
}

std::string_view TakeLine(std::string_view& rest) {
    const std::size_t end = std::min(rest.find('\n'), rest.size());
    const std::string_view line = rest.substr(0, end);
    rest.remove_prefix(std::min(end + 1, rest.size()));
    return line;
}

CComBSTR TextOf(IXMLDOMNode* node) {
    CComBSTR text;
    if (FAILED(node->get_xml(&text))) std::abort();
    return text;
}

CComPtr<IXMLDOMDocument3> Again(const CComBSTR& text) {
    auto document = NewDocument();
    VARIANT_BOOL isLoaded = VARIANT_FALSE;
    if (document->loadXML(text, &isLoaded) != S_OK) std::abort();
    return document;
}

/// Sees elements close in the order in which they opened, and finds every attribute by its name.
class NestingCheck final : public SaxContentListener {
public:
    bool IsClosed() const { return m_open.empty(); }

    HRESULT STDMETHODCALLTYPE startElement(const wchar_t*, int, const wchar_t*, int, const wchar_t* name,
                                           int length, ISAXAttributes* attributes) override {
        m_open.emplace_back(name, static_cast<std::size_t>(length));
        int count = 0;
        attributes->getLength(&count);
        for (int index = 0; index < count; ++index) {
            const wchar_t* attribute = nullptr;
            int attributeLength = 0;
            int found = -1;
            attributes->getQName(index, &attribute, &attributeLength);
            attributes->getIndexFromQName(attribute, attributeLength, &found);
            if (found != index) std::abort();
        }
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE endElement(const wchar_t*, int, const wchar_t*, int, const wchar_t* name,
                                         int length) override {
        if (m_open.empty() || m_open.back() != std::wstring_view(name, static_cast<std::size_t>(length)))
            std::abort();
        m_open.pop_back();
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE characters(const wchar_t*, int) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE ignorableWhitespace(const wchar_t*, int) override { return S_OK; }

private:
    std::vector<std::wstring> m_open;
};

/// The reader must take what the document takes, and nothing else.
void Read(std::string_view bytes, bool isDocument) {
    NestingCheck check;
    CComPtr<ISAXXMLReader> reader;
    if (FAILED(reader.CoCreateInstance(__uuidof(SAXXMLReader60))) ||
        FAILED(reader->putProperty(L"max-element-depth", CComVariant(100000))) ||
        FAILED(reader->putContentHandler(&check)))
        std::abort();
    const HRESULT result = reader->parse(CComVariant(StreamOf(bytes).p));
    if ((result == S_OK) != isDocument || (isDocument && !check.IsClosed())) std::abort();
}

void Require(const std::string& fault) {
    if (fault.empty()) return;
    std::fprintf(stderr, "%s\n", fault.c_str());
    std::abort();
}

std::string Bytes(IStream* stream) {
    std::string bytes;
    char block[4096];
    ULONG read = 0;
    if (FAILED(stream->Seek({}, STREAM_SEEK_SET, nullptr))) std::abort();
    while (SUCCEEDED(stream->Read(block, sizeof block, &read)) && read != 0)
        bytes.append(block, read);
    return bytes;
}

std::string Utf8(const CComBSTR& text) {
    std::string bytes(std::size_t{3} * text.Length(), '\0');
    bytes.resize(static_cast<std::size_t>(
        ::WideCharToMultiByte(CP_UTF8, 0, text, static_cast<int>(text.Length()), bytes.data(),
                              static_cast<int>(bytes.size()), nullptr, nullptr)));
    return bytes;
}

/// Whether the other parser takes a text. It goes by an older edition, with fewer letters in names, and knows
/// fewer encodings; no edit brings either in.
bool IsForBoth(std::string_view text) {
    std::string reason;
    return Infoset::Of(text, nullptr, false, reason).has_value();
}

/// Text and bytes say what the tree says.
void CheckInfoset(IXMLDOMDocument3* document, bool keepsBlanks) {
    const Infoset expected = Infoset::Of(document, keepsBlanks);
    std::string reason;
    const std::string text = Utf8(TextOf(document));
    const auto ofText = Infoset::Of(text, "UTF-8", keepsBlanks, reason);
    Require(ofText ? Difference(expected, *ofText) : reason + " in\n" + text);

    const auto stream = StreamOf("");
    if (FAILED(document->save(CComVariant(stream.p)))) return;
    const std::string bytes = Bytes(stream);
    const auto ofBytes = Infoset::Of(bytes, nullptr, keepsBlanks, reason);
    Require(ofBytes ? Difference(expected, *ofBytes) : reason + " in\n" + bytes);
}

/// The nodes that a query selects, in their order.
struct Selection {
    Selection(IXMLDOMNode* node, const CComBSTR& query) {
        CComPtr<IXMLDOMNodeList> list;
        isSuccess = SUCCEEDED(node->selectNodes(query, &list));
        if (!isSuccess) return;
        for (CComPtr<IXMLDOMNode> next; list->nextNode(&next) == S_OK; next.Release())
            nodes.push_back(next);
    }
    bool IsSame(const Selection& other) const {
        return isSuccess == other.isSuccess &&
               std::ranges::equal(nodes, other.nodes, {}, &CComPtr<IXMLDOMNode>::p, &CComPtr<IXMLDOMNode>::p);
    }

    bool isSuccess;
    std::vector<CComPtr<IXMLDOMNode>> nodes;
};

/// A path of elements is answered out of tables that are kept through edits; in brackets it is not, and says
/// the same.
void CheckAnswer(IXMLDOMNode* node, const CComBSTR& query) {
    const std::wstring_view text(query.m_str, query.Length());
    // Brackets may not pair, and a name that begins with another letter the evaluator knows in short paths
    // only.
    const auto isInDoubt = [](wchar_t unit) { return unit == L'(' || unit == L')' || unit > L'~'; };
    if (std::ranges::any_of(text, isInDoubt)) return;
    CComBSTR bracketed(L"(");
    bracketed += query;
    bracketed += L")";
    const Selection answer(node, query);
    if (!answer.IsSame(Selection(node, bracketed))) std::abort();
    CComPtr<IXMLDOMNode> first;
    if (SUCCEEDED(node->selectSingleNode(query, &first)) != answer.isSuccess) std::abort();
    if (first.p != (answer.nodes.empty() ? nullptr : answer.nodes.front().p)) std::abort();
}

void CheckAnswers(IXMLDOMDocument3* document, const CComBSTR& query) {
    CheckAnswer(document, query);
    CheckAnswer(document, CComBSTR(L"//p:e[@name=\"n\"]"));
    CComPtr<IXMLDOMElement> root;
    if (document->get_documentElement(&root) == S_OK) CheckAnswer(root, query);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr std::size_t mostEdits = 64;
    std::string_view rest(reinterpret_cast<const char*>(data), size);
    const CComBSTR query = Wide(TakeLine(rest));
    const std::string_view edits = TakeLine(rest).substr(0, mostEdits);

    auto document = NewDocument();
    const bool keepsBlanks = edits.starts_with('P');
    document->put_preserveWhiteSpace(keepsBlanks ? VARIANT_TRUE : VARIANT_FALSE);
    const bool isLoaded = Load(document, StreamOf(rest));
    Read(rest, isLoaded);
    if (!isLoaded) return 0;
    {
        Editor editor(document, query);
        CheckAnswers(document, query);
        for (char edit : edits) {
            editor.Apply(edit);
            if (edit != Editor::write) CheckAnswers(document, query); // which would end the writing
        }
    }
    CComPtr<IXMLDOMElement> root;
    if (document->get_documentElement(&root) != S_OK) return 0;
    if (IsForBoth(rest)) CheckInfoset(document, keepsBlanks);
    // What an edit put in may look different to a reader, blanks for example; from then on nothing changes.
    const CComBSTR text = TextOf(Again(TextOf(document)));
    const auto again = Again(text);
    if (TextOf(again) != text) std::abort();
    // As bytes the same, unless a declared encoding lacks characters.
    auto copy = NewDocument();
    const bool isCopied = Load(copy, again);
    CComPtr<IXMLDOMNode> first;
    if (again->get_firstChild(&first) != S_OK) std::abort();
    if (const CComQIPtr<IXMLDOMProcessingInstruction> declaration(first.p); declaration) return 0;
    if (!isCopied || TextOf(copy) != text) std::abort();
    return 0;
}
