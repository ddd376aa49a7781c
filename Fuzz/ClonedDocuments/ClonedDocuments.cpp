// Copies of documents, which share what they were made from, beside documents that were parsed from the text
// of that moment. The first line is a query, the second a list of steps, one letter each; the rest is the
// text of the first document. A step makes copies, goes on to another document, releases one, or edits one as
// the target DomDocument does; the same is done on both sides. At all times both sides say the same, node by
// node.

#include "../DomDocument/Documents.h"
#include "../DomDocument/Editor.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace {

using Document = CComPtr<IXMLDOMDocument3>;

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

void Require(bool holds, const char* what) {
    if (holds) return;
    std::fprintf(stderr, "%s\n", what);
    std::abort();
}

// ---- What is said of a document

std::wstring Text(HRESULT (IXMLDOMNode::*question)(BSTR*), IXMLDOMNode* node) {
    CComBSTR text;
    Require(SUCCEEDED((node->*question)(&text)), "A question of a node fails");
    return text ? std::wstring(text.m_str, text.Length()) : std::wstring();
}

std::wstring Facts(IXMLDOMNode* node) {
    DOMNodeType type = NODE_INVALID;
    CComVariant value;
    Require(node->get_nodeType(&type) == S_OK && SUCCEEDED(node->get_nodeValue(&value)), "No node");
    std::wstring facts = std::to_wstring(type);
    for (const auto question : {&IXMLDOMNode::get_nodeName, &IXMLDOMNode::get_baseName,
                                &IXMLDOMNode::get_prefix, &IXMLDOMNode::get_namespaceURI})
        facts.append(1, L'|').append(Text(question, node));
    if (value.vt == VT_BSTR)
        facts.append(1, L'=').append(value.bstrVal, value.bstrVal ? ::SysStringLen(value.bstrVal) : 0);
    return facts.append(1, L'\n');
}

void AddAttributes(IXMLDOMNode* node, std::wstring& account) {
    CComPtr<IXMLDOMNamedNodeMap> attributes;
    if (node->get_attributes(&attributes) != S_OK) return;
    for (CComPtr<IXMLDOMNode> attribute; attributes->nextNode(&attribute) == S_OK; attribute.Release()) {
        account.append(1, L'@').append(Facts(attribute));
        CComPtr<IXMLDOMNode> text;
        for (attribute->get_firstChild(&text); text;) {
            account.append(1, L'"').append(Facts(text));
            CComPtr<IXMLDOMNode> next;
            text->get_nextSibling(&next);
            text = next;
        }
    }
}

std::wstring Account(IXMLDOMDocument3* document) {
    std::wstring account = Text(&IXMLDOMNode::get_xml, document);
    CComPtr<IXMLDOMNode> node = document;
    while (node) {
        account += Facts(node);
        AddAttributes(node, account);
        CComPtr<IXMLDOMNode> next;
        node->get_firstChild(&next);
        while (!next && node && !node.IsEqualObject(document)) {
            account += L"/\n";
            if (node->get_nextSibling(&next) == S_OK) break;
            CComPtr<IXMLDOMNode> parent;
            node->get_parentNode(&parent);
            node = parent;
        }
        node = next;
    }
    return account;
}

LONG ParseError(IXMLDOMDocument3* document) {
    CComPtr<IXMLDOMParseError> error;
    LONG code = 0;
    Require(document->get_parseError(&error) == S_OK && SUCCEEDED(error->get_errorCode(&code)),
            "No parseError");
    return code;
}

// ---- Both sides

HRESULT LoadFrom(IXMLDOMDocument3* document, IUnknown* source) {
    VARIANT_BOOL isLoaded = VARIANT_FALSE;
    const HRESULT result = document->load(CComVariant(source), &isLoaded);
    Require((result == S_OK) == (isLoaded == VARIANT_TRUE), "load contradicts itself");
    return result;
}

/// A document that may share, and one that never does.
class Pair {
public:
    explicit Pair(const CComBSTR& query) : m_query(query) {}

    Document own = NewDocument();
    Document parsed = NewDocument();

    void Edit(char letter) {
        if (!m_editOwn) {
            m_editOwn.emplace(own, m_query);
            m_editParsed.emplace(parsed, m_query);
        }
        m_editOwn->Apply(letter);
        m_editParsed->Apply(letter);
    }

    void Compare() const {
        const std::wstring account = Account(own);
        if (const std::wstring expected = Account(parsed); account != expected) {
            std::fprintf(stderr, "%ls\n---- but parsed:\n%ls\n", account.c_str(), expected.c_str());
            std::abort();
        }
    }

    /// Loads both from `source`, the one by the document itself or by its stream, the other by its bytes.
    void LoadFrom(Pair& source, bool byStream) {
        CComPtr<IUnknown> from = source.own.p;
        CComPtr<IStream> stream;
        if (byStream) {
            Require(source.own->QueryInterface(&stream) == S_OK &&
                        stream->Seek({}, STREAM_SEEK_SET, nullptr) == S_OK,
                    "No stream");
            from = stream.p;
        }
        const HRESULT result = ::LoadFrom(own, from);
        const auto bytes = StreamOf("");
        const HRESULT saved = source.parsed->save(CComVariant(bytes.p));
        if (FAILED(saved)) {
            Require(result == saved, "A text that cannot be written was copied");
            return;
        }
        Require(bytes->Seek({}, STREAM_SEEK_SET, nullptr) == S_OK && ::LoadFrom(parsed, bytes) == result &&
                    ParseError(own) == ParseError(parsed),
                "A copy comes out differently");
        if (byStream && &source != this) RequireAtEnd(stream, bytes);
    }

private:
    static void RequireAtEnd(IStream* stream, IStream* bytes) {
        char byte = 0;
        ULONG read = 0;
        STATSTG facts{};
        ULARGE_INTEGER place{};
        Require(SUCCEEDED(stream->Read(&byte, 1, &read)) && read == 0, "The stream is not at its end");
        Require(bytes->Stat(&facts, STATFLAG_NONAME) == S_OK &&
                    stream->Seek({}, STREAM_SEEK_CUR, &place) == S_OK &&
                    place.QuadPart == facts.cbSize.QuadPart,
                "The stream stands elsewhere");
    }

    CComBSTR m_query;
    // Made with the first edit: who edits has looked.
    std::optional<Editor> m_editOwn;
    std::optional<Editor> m_editParsed;
};

/// The documents, of which one is at hand.
class Documents {
public:
    Documents(const CComBSTR& query, std::string_view text) : m_query(query) {
        auto& first = m_pairs.emplace_back(std::make_unique<Pair>(query));
        m_isLoaded = Load(first->own, StreamOf(text)) && Load(first->parsed, StreamOf(text));
    }

    bool IsLoaded() const { return m_isLoaded; }

    void Step(char letter) {
        switch (letter) {
        case '+':
            Clone({}, true);
            break;
        case '*':
            Clone({}, false);
            break;
        case '&': // one that keeps blanks
            Clone([](IXMLDOMDocument3* document) { document->put_preserveWhiteSpace(VARIANT_TRUE); }, true);
            break;
        case '$': // one that takes little
            Clone(
                [](IXMLDOMDocument3* document) {
                    document->setProperty(CComBSTR(L"MaxElementDepth"), CComVariant(3));
                },
                true);
            break;
        case '^': // into one that is there
            m_pairs[(m_atHand + 1) % m_pairs.size()]->LoadFrom(*m_pairs[m_atHand], true);
            break;
        case '!':
            m_atHand = (m_atHand + 1) % m_pairs.size();
            break;
        case '-':
            if (m_pairs.size() == 1) break;
            m_pairs.erase(m_pairs.begin() + static_cast<std::ptrdiff_t>(m_atHand));
            m_atHand %= m_pairs.size();
            break;
        case '=':
            m_pairs[m_atHand]->Compare();
            break;
        default:
            m_pairs[m_atHand]->Edit(letter);
        }
    }

    void Compare() const {
        for (const auto& pair : m_pairs)
            pair->Compare();
    }

private:
    static constexpr std::size_t most = 6;

    void Clone(void (*set)(IXMLDOMDocument3*), bool byStream) {
        if (m_pairs.size() == most) return;
        auto fresh = std::make_unique<Pair>(m_query);
        if (set != nullptr) {
            set(fresh->own);
            set(fresh->parsed);
        }
        fresh->LoadFrom(*m_pairs[m_atHand], byStream);
        m_pairs.push_back(std::move(fresh));
    }

    CComBSTR m_query;
    std::vector<std::unique_ptr<Pair>> m_pairs;
    std::size_t m_atHand = 0;
    bool m_isLoaded = false;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr std::size_t mostSteps = 96;
    std::string_view rest(reinterpret_cast<const char*>(data), size);
    const CComBSTR query = Wide(TakeLine(rest));
    const std::string_view steps = TakeLine(rest).substr(0, mostSteps);
    Documents documents(query, rest);
    if (!documents.IsLoaded()) return 0;
    for (char step : steps)
        documents.Step(step);
    documents.Compare();
    return 0;
}
