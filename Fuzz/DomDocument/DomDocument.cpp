// Any bytes as a document. The first line is a query, the second a list of edits, one letter each; the rest
// is the text. What loads can be queried, edited and written, and what was written loads again and has then
// one form.

#include <atlcomcli.h>
#include <msxml6.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <map>
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

CComPtr<IXMLDOMDocument3> NewDocument() {
    CComPtr<IXMLDOMDocument3> document;
    if (FAILED(document.CoCreateInstance(__uuidof(DOMDocument60)))) std::abort();
    document->setProperty(CComBSTR(L"SelectionNamespaces"), CComVariant(L"xmlns:p='urn:p'"));
    // Edits may nest more deeply than a text may.
    document->setProperty(CComBSTR(L"MaxElementDepth"), CComVariant(100000));
    return document;
}

CComPtr<IStream> StreamOf(std::string_view bytes) {
    CComPtr<IStream> stream;
    if (FAILED(CreateStreamOnHGlobal(nullptr, TRUE, &stream)) ||
        FAILED(stream->Write(bytes.data(), static_cast<ULONG>(bytes.size()), nullptr)) ||
        FAILED(stream->Seek({}, STREAM_SEEK_SET, nullptr)))
        std::abort();
    return stream;
}

bool Load(IXMLDOMDocument* document, IUnknown* source) {
    VARIANT_BOOL isLoaded = VARIANT_FALSE;
    return document->load(CComVariant(source), &isLoaded) == S_OK && isLoaded == VARIANT_TRUE;
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

class Editor {
public:
    Editor(IXMLDOMDocument3* document, const CComBSTR& query)
        : m_document(document), m_other(NewDocument()), m_query(query) {
        m_other->loadXML(CComBSTR(L"<o xmlns:p='urn:o' p:x='1'><p:i/></o>"), nullptr);
        Select();
    }

    void Apply(char edit) {
        const auto known = Edits.find(edit);
        if (known != Edits.end() && m_first && m_second) (this->*known->second)();
    }

private:
    using Edit = void (Editor::*)();
    static const std::map<char, Edit> Edits;

    void Select() {
        m_list.Release();
        m_document->selectNodes(m_query, &m_list);
        Next();
    }
    void Next() {
        m_first = m_second;
        m_second.Release();
        if (m_list && m_list->nextNode(&m_second) != S_OK) m_list->reset();
    }
    void Reload() {
        CComPtr<IStream> stream;
        if (SUCCEEDED(m_document->QueryInterface(&stream))) Load(m_document, stream);
    }
    void WriteInto() {
        CComPtr<IStream> stream;
        const std::string_view text = "<p:w xmlns:p='urn:p'><p:x p:y='1'>t</p:x></p:w>";
        if (FAILED(m_document->QueryInterface(&stream))) std::abort();
        stream->Write(text.data(), static_cast<ULONG>(text.size()), nullptr);
    }
    void Append() { m_first->appendChild(m_second, nullptr); }
    void Insert() {
        CComPtr<IXMLDOMNode> parent;
        if (m_first->get_parentNode(&parent) == S_OK)
            parent->insertBefore(m_second, CComVariant(static_cast<IUnknown*>(m_first.p)), nullptr);
    }
    void Replace() {
        CComPtr<IXMLDOMNode> parent;
        if (m_first->get_parentNode(&parent) == S_OK) parent->replaceChild(m_second, m_first, nullptr);
    }
    void Remove() {
        CComPtr<IXMLDOMNode> parent;
        if (m_first->get_parentNode(&parent) == S_OK) parent->removeChild(m_first, nullptr);
    }
    void Clone() {
        CComPtr<IXMLDOMNode> copy;
        if (m_first->cloneNode(VARIANT_TRUE, &copy) == S_OK) m_second->appendChild(copy, nullptr);
    }
    void Import() {
        CComPtr<IXMLDOMNode> copy;
        if (m_other->importNode(m_first, VARIANT_TRUE, &copy) == S_OK) m_second->appendChild(copy, nullptr);
    }
    void MoveAway() {
        CComPtr<IXMLDOMElement> root;
        if (m_other->get_documentElement(&root) == S_OK) root->appendChild(m_first, nullptr);
    }
    void MoveHere() {
        CComPtr<IXMLDOMElement> root;
        if (m_other->get_documentElement(&root) != S_OK) return;
        CComPtr<IXMLDOMNode> last;
        if (root->get_lastChild(&last) == S_OK) m_first->appendChild(last, nullptr);
    }
    void SetText() { m_first->put_text(CComBSTR(L" <t>\r\n]]>&\x00E4 ")); }
    void SetAttribute(const wchar_t* name, const wchar_t* value) {
        if (const CComQIPtr<IXMLDOMElement> element(m_first.p); element)
            element->setAttribute(CComBSTR(name), CComVariant(value));
    }
    void SetPlain() { SetAttribute(L"x", L"\n\"<&>"); }
    void SetPrefixed() { SetAttribute(L"p:x", L"1"); }
    void SetOtherPrefixed() { SetAttribute(L"q:x", L"2"); }
    void Declare() { SetAttribute(L"xmlns:p", L"urn:p"); }
    void DeclareAnew() { SetAttribute(L"xmlns:q", L"urn:p"); }
    void DeclareDefault() { SetAttribute(L"xmlns", L"urn:d"); }
    void SetType() { m_first->put_dataType(CComBSTR(L"int")); }
    void RemoveFirstAttribute() {
        CComPtr<IXMLDOMNamedNodeMap> map;
        CComPtr<IXMLDOMNode> attribute;
        if (m_first->get_attributes(&map) != S_OK || map->get_item(0, &attribute) != S_OK) return;
        CComBSTR name;
        attribute->get_nodeName(&name);
        map->removeNamedItem(name, nullptr);
        CComPtr<IXMLDOMNamedNodeMap> target;
        if (m_second->get_attributes(&target) == S_OK) target->setNamedItem(attribute, nullptr);
    }
    void Normalize() {
        if (const CComQIPtr<IXMLDOMElement> element(m_first.p); element) element->normalize();
    }
    void Split() {
        CComPtr<IXMLDOMText> right;
        if (const CComQIPtr<IXMLDOMText> text(m_first.p); text) text->splitText(1, &right);
    }
    void AppendFragment() {
        CComPtr<IXMLDOMDocumentFragment> fragment;
        if (FAILED(m_document->createDocumentFragment(&fragment))) std::abort();
        fragment->appendChild(m_first, nullptr);
        m_second->appendChild(fragment, nullptr);
    }
    void Create(int type) {
        CComPtr<IXMLDOMNode> node;
        m_document->createNode(CComVariant(type), CComBSTR(L"p:n"), CComBSTR(L"urn:n"), &node);
        if (!node) return;
        node->put_text(CComBSTR(L"c]]>d"));
        m_first->appendChild(node, nullptr);
        if (const CComQIPtr<IXMLDOMElement> element(m_first.p); element)
            if (const CComQIPtr<IXMLDOMAttribute> attribute(node.p); attribute)
                element->setAttributeNode(attribute, nullptr);
    }
    void CreateElement() { Create(NODE_ELEMENT); }
    void CreateAttribute() { Create(NODE_ATTRIBUTE); }
    void CreateSection() { Create(NODE_CDATA_SECTION); }
    void CreateComment() { Create(NODE_COMMENT); }
    void Keep() { m_kept.push_back(m_first); }
    void Drop() { m_kept.clear(); }

    CComPtr<IXMLDOMDocument3> m_document;
    CComPtr<IXMLDOMDocument3> m_other;
    CComBSTR m_query;
    CComPtr<IXMLDOMNodeList> m_list;
    CComPtr<IXMLDOMNode> m_first;
    CComPtr<IXMLDOMNode> m_second;
    std::vector<CComPtr<IXMLDOMNode>> m_kept;
};

const std::map<char, Editor::Edit> Editor::Edits = {
    {'>', &Editor::Next},
    {'?', &Editor::Select},
    {'L', &Editor::Reload},
    {'W', &Editor::WriteInto},
    {'a', &Editor::Append},
    {'i', &Editor::Insert},
    {'r', &Editor::Replace},
    {'d', &Editor::Remove},
    {'c', &Editor::Clone},
    {'I', &Editor::Import},
    {'m', &Editor::MoveAway},
    {'M', &Editor::MoveHere},
    {'t', &Editor::SetText},
    {'x', &Editor::SetPlain},
    {'p', &Editor::SetPrefixed},
    {'q', &Editor::SetOtherPrefixed},
    {'N', &Editor::Declare},
    {'Q', &Editor::DeclareAnew},
    {'D', &Editor::DeclareDefault},
    {'T', &Editor::SetType},
    {'A', &Editor::RemoveFirstAttribute},
    {'n', &Editor::Normalize},
    {'s', &Editor::Split},
    {'f', &Editor::AppendFragment},
    {'1', &Editor::CreateElement},
    {'2', &Editor::CreateAttribute},
    {'4', &Editor::CreateSection},
    {'8', &Editor::CreateComment},
    {'k', &Editor::Keep},
    {'K', &Editor::Drop},
};

/// Sees elements close in the order in which they opened, and finds every attribute by its name.
class NestingCheck final : public ISAXContentHandler {
public:
    bool IsClosed() const { return m_open.empty(); }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void**) override { return E_NOINTERFACE; }
    ULONG STDMETHODCALLTYPE AddRef() override { return 1; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    HRESULT STDMETHODCALLTYPE putDocumentLocator(ISAXLocator*) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE startDocument() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE endDocument() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE startPrefixMapping(const wchar_t*, int, const wchar_t*, int) override {
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE endPrefixMapping(const wchar_t*, int) override { return S_OK; }
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
    HRESULT STDMETHODCALLTYPE processingInstruction(const wchar_t*, int, const wchar_t*, int) override {
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE skippedEntity(const wchar_t*, int) override { return S_OK; }

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

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr std::size_t MostEdits = 64;
    std::string_view rest(reinterpret_cast<const char*>(data), size);
    const CComBSTR query = Wide(TakeLine(rest));
    const std::string_view edits = TakeLine(rest).substr(0, MostEdits);

    auto document = NewDocument();
    const bool isLoaded = Load(document, StreamOf(rest));
    Read(rest, isLoaded);
    if (!isLoaded) return 0;
    {
        Editor editor(document, query);
        for (char edit : edits)
            editor.Apply(edit);
    }
    CComPtr<IXMLDOMElement> root;
    if (document->get_documentElement(&root) != S_OK) return 0;
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
