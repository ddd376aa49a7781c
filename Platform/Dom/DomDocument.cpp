#include "Dom/DomDocument.h"

#include "Com/ClassTable.h"
#include "Dom/DomDataType.h"
#include "Dom/DomErrorInfo.h"
#include "Dom/DomImplementation.h"
#include "Dom/DomLoader.h"
#include "Dom/DomNodeFactory.h"
#include "Dom/DomParseError.h"
#include "Dom/DomProperties.h"
#include "Dom/DomSerializer.h"
#include "Dom/DomStream.h"
#include "Dom/RecentTexts.h"
#include "Xml/DocumentBytes.h"
#include "Xml/TextConversion.h"

#include <atlcomcli.h>

#include <utility>

namespace OvPlatform {

namespace {

constexpr LONG readyStateComplete = 4;
constexpr HRESULT noSchema = XmlCode(0xE225);

// The free-threaded class is not offered: a document belongs to one thread at a time.
const ClassRegistration registration(CLSID_DOMDocument60, &DomDocument::Create);

struct NamedType {
    std::wstring_view name;
    DOMNodeType type;
};
constexpr NamedType namedTypes[] = {
    {L"element", NODE_ELEMENT},   {L"attribute", NODE_ATTRIBUTE},
    {L"text", NODE_TEXT},         {L"cdatasection", NODE_CDATA_SECTION},
    {L"comment", NODE_COMMENT},   {L"processinginstruction", NODE_PROCESSING_INSTRUCTION},
    {L"document", NODE_DOCUMENT}, {L"documentfragment", NODE_DOCUMENT_FRAGMENT},
};

/// A DOMNodeType, or some other number.
HRESULT TypeOf(const VARIANT& value, LONG& type) {
    if (value.vt == VT_BSTR) {
        for (const NamedType& row : namedTypes) {
            if (row.name != ViewOf(value.bstrVal)) continue;
            type = row.type;
            return S_OK;
        }
    }
    CComVariant number;
    const HRESULT result = DomDataType::Convert(value, VT_I4, &number);
    if (SUCCEEDED(result)) type = number.lVal;
    return result;
}

VARIANT_BOOL Flag(bool value) noexcept { return value ? VARIANT_TRUE : VARIANT_FALSE; }

} // namespace

HRESULT DomDocument::Create(REFIID riid, void** object) noexcept {
    if (object == nullptr) return E_POINTER;
    *object = nullptr;
    try {
        const DomTree::Pointer tree = DomTree::Create(nullptr, {});
        auto* document = new (std::nothrow) DomDocument(*tree);
        if (document == nullptr) return E_OUTOFMEMORY;
        const HRESULT result = document->QueryInterface(riid, object);
        document->Release();
        return result;
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    }
}

bool DomDocument::Answers(REFIID riid) const noexcept {
    return riid == __uuidof(IXMLDOMDocument2) || riid == __uuidof(IXMLDOMDocument) ||
           riid == __uuidof(IXMLDOMDocument3);
}

HRESULT DomDocument::OtherInterface(REFIID riid, void** object) {
    if (riid != __uuidof(IStream) && riid != __uuidof(ISequentialStream)) return E_NOINTERFACE;
    if (const HRESULT fault = FaultPoint(); FAILED(fault)) return fault;
    // To ask for the interface is no use of the document: a writer goes on writing.
    if (m_stream != nullptr)
        m_stream->AddRef();
    else if (m_stream = new (std::nothrow) DomStream(*this); m_stream == nullptr)
        return E_OUTOFMEMORY;
    *object = static_cast<IStream*>(m_stream);
    return S_OK;
}

template <class Work>
HRESULT DomDocument::GuardedUnread(Work&& work) const noexcept {
    return OvPlatform::Guarded([&]() -> HRESULT {
        const_cast<DomDocument*>(this)->TakeWritten();
        return work();
    });
}

void DomDocument::TakeWritten() {
    if (m_stream != nullptr) m_stream->TakeWritten();
}

void DomDocument::BeforeUse() {
    TakeWritten();
    if (!m_shared) return;
    const DomTree::Pointer tree = m_shared.Take(Tree().Settings());
    MoveTo(*tree, tree->DocumentNode());
}

// ---- Loading and saving ----

void DomDocument::Replace(XmlDocument document, const ReadBack* form) {
    const DomTree::Pointer fresh = DomTree::Create(std::move(document), Tree().Settings());
    if (form != nullptr) fresh->SetForm(*form);
    MoveTo(*fresh, fresh->DocumentNode());
    m_shared = {};
    m_lastText.clear();
    if (m_stream != nullptr) m_stream->Forget();
}

HRESULT DomDocument::LoadFailed(XmlFailure failure) {
    Replace(nullptr);
    m_failure = std::move(failure);
    Failed(m_failure.code, m_failure.reason);
    return m_failure.code == E_OUTOFMEMORY ? E_OUTOFMEMORY : S_FALSE;
}

HRESULT DomDocument::Load(std::string_view text, Source source) {
    RecentTexts& recent = RecentTexts::OfProcess();
    const auto mark = source == Source::Bytes ? RecentTexts::MarkOf(text) : RecentTexts::none;
    if (TreeShare known = recent.Find(mark, text, Tree().Settings())) {
        Share(std::move(known));
        return S_OK;
    }
    DomLoader loader(Tree().Settings());
    XmlDocument document = source == Source::Bytes ? loader.FromBytes(text) : loader.FromText(text);
    if (document == nullptr) {
        XmlFailure failure = loader.Failure();
        failure.url = m_url;
        return LoadFailed(std::move(failure));
    }
    const ReadBack form = loader.Form(document.get());
    Replace(std::move(document), &form);
    recent.Made(mark, text, Tree());
    m_failure = {};
    return S_OK;
}

void DomDocument::KeepLastText(std::string&& text, std::uint64_t version) noexcept {
    constexpr std::size_t longest = std::size_t{1} << 16;
    if (text.size() > longest) return;
    m_lastText = std::move(text);
    m_lastVersion = version;
}

bool DomDocument::TakeLastText(std::string& text, std::uint64_t& version) noexcept {
    text = std::exchange(m_lastText, {});
    version = m_lastVersion;
    return !text.empty() && version == Version();
}

void DomDocument::Share(TreeShare tree) {
    if (!Tree().IsUnused()) Replace(nullptr);
    m_lastText.clear();
    if (m_stream != nullptr) m_stream->Forget();
    m_shared = std::move(tree);
    m_failure = {};
}

TreeShare DomDocument::ShareFor(const DomSettings& settings) {
    if (m_shared) return m_shared.Form().IsCopyFor(settings) ? m_shared : TreeShare();
    return Tree().Form().IsCopyFor(settings) ? Tree().Share() : TreeShare();
}

bool DomDocument::Share(ISequentialStream* stream) {
    DomNodeObject* const object = Behind(stream);
    if (object == nullptr || object == this || object->Node()->type != XML_DOCUMENT_NODE) return false;
    auto& source = static_cast<DomDocument&>(*object);
    // A caller may have a stream of his own that only calls itself this document's.
    if (source.m_stream == nullptr || static_cast<ISequentialStream*>(source.m_stream) != stream ||
        !source.m_stream->IsAtStart())
        return false;
    const TreeShare share = source.ShareFor(Tree().Settings());
    if (!share) return false;
    Share(share);
    source.m_stream->PassOver(share);
    m_url.clear();
    return true;
}

bool DomDocument::Write(std::string& bytes) {
    return m_shared ? m_shared.Write(bytes) : DomSerializer::ToBytes(Tree(), bytes);
}

HRESULT DomDocument::LoadWritten(std::string_view bytes) {
    m_url.clear();
    return Load(bytes, Source::Bytes);
}

HRESULT STDMETHODCALLTYPE DomDocument::load(VARIANT source, VARIANT_BOOL* isSuccessful) {
    if (isSuccessful != nullptr) *isSuccessful = VARIANT_FALSE;
    return GuardedUnread([&]() -> HRESULT {
        const VARIANT& value = DocumentBytes::Value(source);
        std::string bytes;
        HRESULT result = S_OK;
        if (value.vt == VT_BSTR || value.vt == (VT_BSTR | VT_BYREF)) {
            const BSTR path = value.vt == VT_BSTR ? value.bstrVal : *value.pbstrVal;
            if (::SysStringLen(path) == 0) return E_INVALIDARG;
            m_url.clear();
            AppendUtf8(m_url, ViewOf(path));
            XmlFailure failure;
            failure.code = DocumentBytes::ReadFile(path, bytes, failure.reason);
            failure.url = m_url;
            if (FAILED(failure.code)) return LoadFailed(std::move(failure));
        } else {
            CComPtr<ISequentialStream> stream;
            if (result = DocumentBytes::FindStream(value, stream); FAILED(result)) return result;
            if (stream && Share(stream)) {
                if (isSuccessful != nullptr) *isSuccessful = VARIANT_TRUE;
                return S_OK;
            }
            result = stream ? DocumentBytes::ReadStream(stream, bytes) : DocumentBytes::Read(value, bytes);
            if (FAILED(result)) return result;
            m_url.clear();
        }
        result = Load(bytes, Source::Bytes);
        if (isSuccessful != nullptr) *isSuccessful = Flag(result == S_OK);
        return result;
    });
}

HRESULT STDMETHODCALLTYPE DomDocument::loadXML(BSTR xml, VARIANT_BOOL* isSuccessful) {
    if (isSuccessful != nullptr) *isSuccessful = VARIANT_FALSE;
    return GuardedUnread([&]() -> HRESULT {
        m_url.clear();
        std::string text;
        if (!AppendUtf8(text, ViewOf(xml))) {
            XmlFailure failure;
            failure.code = XML_E_INVALID_UNICODE;
            failure.reason = "The text holds half of a surrogate pair";
            return LoadFailed(std::move(failure));
        }
        const HRESULT result = Load(text, Source::Text);
        if (isSuccessful != nullptr) *isSuccessful = Flag(result == S_OK);
        return result;
    });
}

HRESULT STDMETHODCALLTYPE DomDocument::save(VARIANT destination) {
    return GuardedUnread([&]() -> HRESULT {
        std::string bytes;
        if (!Write(bytes))
            return Failed(E_FAIL, "The encoding that the document declares is not supported, or lacks "
                                  "characters that cannot be written by number");
        const VARIANT& value = DocumentBytes::Value(destination);
        switch (value.vt) {
        case VT_BSTR:
            return DocumentBytes::WriteFile(value.bstrVal, bytes);
        case VT_BSTR | VT_BYREF:
            return DocumentBytes::WriteFile(*value.pbstrVal, bytes);
        case VT_UNKNOWN:
        case VT_DISPATCH:
            return DocumentBytes::WriteStream(value.punkVal, bytes);
        default:
            return E_INVALIDARG;
        }
    });
}

HRESULT DomDocument::GiveParseError(const XmlFailure& failure, IXMLDOMParseError** error) {
    if (error == nullptr) return E_INVALIDARG;
    *error = new DomParseError(failure);
    return S_OK;
}

HRESULT STDMETHODCALLTYPE DomDocument::get_parseError(IXMLDOMParseError** error) {
    return GuardedUnread([&] { return GiveParseError(m_failure, error); });
}

HRESULT STDMETHODCALLTYPE DomDocument::validate(IXMLDOMParseError** error) {
    return Guarded([&] {
        XmlFailure failure;
        failure.code = noSchema;
        failure.reason = "The document has neither a schema nor a document type declaration to be checked by";
        const HRESULT result = GiveParseError(failure, error);
        return FAILED(result) ? result : S_FALSE;
    });
}

HRESULT STDMETHODCALLTYPE DomDocument::validateNode(IXMLDOMNode* node, IXMLDOMParseError** error) {
    return node == nullptr ? E_INVALIDARG : validate(error);
}

HRESULT STDMETHODCALLTYPE DomDocument::get_readyState(LONG* value) {
    return GuardedUnread([&]() -> HRESULT {
        if (value == nullptr) return E_INVALIDARG;
        *value = readyStateComplete;
        return S_OK;
    });
}

HRESULT STDMETHODCALLTYPE DomDocument::get_url(BSTR* url) {
    return GuardedUnread([&]() -> HRESULT {
        if (m_url.empty()) return GiveNothing(url);
        return GiveText(url, m_url);
    });
}

// ---- Nodes ----

HRESULT STDMETHODCALLTYPE DomDocument::cloneNode(VARIANT_BOOL deep, IXMLDOMNode** clone) {
    return Guarded([&]() -> HRESULT {
        if (clone == nullptr) return E_INVALIDARG;
        *clone = nullptr;
        const DomTree::Pointer tree = DomTree::Create(nullptr, Tree().Settings());
        for (xmlNode* child = Node()->children; deep != VARIANT_FALSE && child != nullptr;
             child = child->next)
            tree->Link(tree->DocumentNode(), tree->Copy(Tree(), child, true), nullptr);
        return DomNodeObject::Give(*tree, tree->DocumentNode(), clone);
    });
}

HRESULT STDMETHODCALLTYPE DomDocument::importNode(IXMLDOMNode* node, VARIANT_BOOL deep, IXMLDOMNode** clone) {
    return Guarded([&]() -> HRESULT {
        if (clone == nullptr) return E_INVALIDARG;
        *clone = nullptr;
        const DomNodeObject* object = Behind(node);
        if (object == nullptr || object->Node()->type == XML_DOCUMENT_NODE) return E_INVALIDARG;
        return GiveNew(Tree(), Tree().Copy(object->Tree(), object->Node(), deep != VARIANT_FALSE), clone);
    });
}

HRESULT STDMETHODCALLTYPE DomDocument::get_doctype(IXMLDOMDocumentType** documentType) {
    return Guarded([&]() -> HRESULT { return GiveNothing(documentType); });
}

HRESULT STDMETHODCALLTYPE DomDocument::get_implementation(IXMLDOMImplementation** implementation) {
    return Guarded([&]() -> HRESULT {
        if (implementation == nullptr) return E_INVALIDARG;
        *implementation = new DomImplementation;
        return S_OK;
    });
}

HRESULT STDMETHODCALLTYPE DomDocument::get_documentElement(IXMLDOMElement** element) {
    return Guarded([&] { return GiveAs(Tree(), xmlDocGetRootElement(Tree().Document()), element); });
}

HRESULT STDMETHODCALLTYPE DomDocument::putref_documentElement(IXMLDOMElement* element) {
    return Guarded([&]() -> HRESULT {
        CComPtr<IXMLDOMNode> old;
        const HRESULT result = Give(Tree(), xmlDocGetRootElement(Tree().Document()), &old);
        if (FAILED(result)) return result;
        if (old.p == static_cast<IXMLDOMNode*>(element)) return S_OK;
        return old ? ReplaceChild(element, old, nullptr) : AppendChild(element, nullptr);
    });
}

/// Null with a failing result where there is no such node: E_FAIL for a name that is not valid, or whose
/// prefix has no namespace, E_INVALIDARG for a namespace that contradicts the name.
xmlNode* DomDocument::NewNode(LONG type, BSTR name, BSTR namespaceUri, HRESULT& result) {
    DomTree& tree = Tree();
    std::string qualified, uri;
    result = E_INVALIDARG;
    if (!AppendXmlUtf8(uri, ViewOf(namespaceUri))) return nullptr;
    result = E_FAIL;
    if (!AppendXmlUtf8(qualified, ViewOf(name))) return nullptr;
    const std::size_t colon = qualified.find(':');
    const std::string prefix = colon == std::string::npos ? "" : qualified.substr(0, colon);
    const std::string local = colon == std::string::npos ? qualified : qualified.substr(colon + 1);
    const bool hasName = xmlValidateQName(AsXml(qualified.c_str()), 0) == 0;
    const bool isDeclaration = type == NODE_ATTRIBUTE && (prefix == "xmlns" || qualified == "xmlns");
    switch (type) {
    case NODE_ELEMENT:
    case NODE_ATTRIBUTE:
        if (!hasName) return nullptr;
        if (isDeclaration && (uri.empty() || uri == xmlnsUri))
            return reinterpret_cast<xmlNode*>(tree.NewAttribute(local, tree.Namespace(prefix, xmlnsUri), ""));
        if (prefix == "xml" && uri.empty()) uri = reinterpret_cast<const char*>(XML_XML_NAMESPACE);
        if (isDeclaration || prefix == "xmlns" || (prefix == "xml") != (uri == View(XML_XML_NAMESPACE)) ||
            uri == xmlnsUri)
            break;
        if (!prefix.empty() && uri.empty()) {
            Failed(result, "Reference to undeclared namespace prefix: " + prefix);
            return nullptr;
        }
        if (type == NODE_ELEMENT) return tree.NewElement(local, tree.Namespace(prefix, uri));
        return reinterpret_cast<xmlNode*>(tree.NewAttribute(local, tree.Namespace(prefix, uri), ""));
    case NODE_TEXT:
        return tree.NewText("");
    case NODE_CDATA_SECTION:
        return tree.NewCharacterData(XML_CDATA_SECTION_NODE, "");
    case NODE_COMMENT:
        return tree.NewCharacterData(XML_COMMENT_NODE, "");
    case NODE_PROCESSING_INSTRUCTION:
        if (xmlValidateNCName(AsXml(qualified.c_str()), 0) != 0 || XmlDeclaration::IsReserved(qualified))
            return nullptr;
        return tree.NewProcessingInstruction(qualified, qualified == "xml" ? "version=\"1.0\"" : "");
    case NODE_DOCUMENT_FRAGMENT:
        return tree.NewFragment();
    default:
        break;
    }
    result = E_INVALIDARG;
    return nullptr;
}

HRESULT STDMETHODCALLTYPE DomDocument::createNode(VARIANT type, BSTR name, BSTR namespaceUri,
                                                  IXMLDOMNode** node) {
    return Guarded([&]() -> HRESULT {
        if (node == nullptr) return E_INVALIDARG;
        *node = nullptr;
        LONG wanted = NODE_INVALID;
        HRESULT result = TypeOf(DocumentBytes::Value(type), wanted);
        if (FAILED(result)) return result;
        xmlNode* made = NewNode(wanted, name, namespaceUri, result);
        return made != nullptr ? GiveNew(Tree(), made, node) : result;
    });
}

template <class Wanted>
HRESULT DomDocument::CreateNamed(DOMNodeType type, BSTR name, Wanted** node) {
    if (node == nullptr) return E_INVALIDARG;
    *node = nullptr;
    if (name == nullptr && (type == NODE_ELEMENT || type == NODE_ATTRIBUTE)) return E_INVALIDARG;
    HRESULT result = S_OK;
    xmlNode* made = NewNode(type, name, nullptr, result);
    if (made == nullptr) return result;
    CComPtr<IXMLDOMNode> object;
    result = GiveNew(Tree(), made, &object);
    return FAILED(result) ? result : object->QueryInterface(node);
}

template <class Wanted>
HRESULT DomDocument::CreateData(xmlElementType type, BSTR data, Wanted** node) {
    if (node == nullptr) return E_INVALIDARG;
    *node = nullptr;
    std::string content;
    if (!AppendXmlUtf8(content, ViewOf(data))) return E_INVALIDARG;
    const auto held = DomNodeFactory::Held(type, {}, content);
    if (!held) return E_INVALIDARG;
    CComPtr<IXMLDOMNode> object;
    const HRESULT result = GiveNew(Tree(), Tree().NewCharacterData(type, *held), &object);
    return FAILED(result) ? result : object->QueryInterface(node);
}

HRESULT STDMETHODCALLTYPE DomDocument::createElement(BSTR tagName, IXMLDOMElement** element) {
    return Guarded([&] { return CreateNamed(NODE_ELEMENT, tagName, element); });
}

HRESULT STDMETHODCALLTYPE DomDocument::createDocumentFragment(IXMLDOMDocumentFragment** fragment) {
    return Guarded([&] { return CreateNamed(NODE_DOCUMENT_FRAGMENT, nullptr, fragment); });
}

HRESULT STDMETHODCALLTYPE DomDocument::createAttribute(BSTR name, IXMLDOMAttribute** attribute) {
    return Guarded([&] { return CreateNamed(NODE_ATTRIBUTE, name, attribute); });
}

HRESULT STDMETHODCALLTYPE DomDocument::createTextNode(BSTR data, IXMLDOMText** text) {
    return Guarded([&] { return CreateData(XML_TEXT_NODE, data, text); });
}

HRESULT STDMETHODCALLTYPE DomDocument::createComment(BSTR data, IXMLDOMComment** comment) {
    return Guarded([&] { return CreateData(XML_COMMENT_NODE, data, comment); });
}

HRESULT STDMETHODCALLTYPE DomDocument::createCDATASection(BSTR data, IXMLDOMCDATASection** section) {
    return Guarded([&] { return CreateData(XML_CDATA_SECTION_NODE, data, section); });
}

HRESULT STDMETHODCALLTYPE
DomDocument::createProcessingInstruction(BSTR target, BSTR data, IXMLDOMProcessingInstruction** instruction) {
    return Guarded([&]() -> HRESULT {
        const HRESULT result = CreateNamed(NODE_PROCESSING_INSTRUCTION, target, instruction);
        if (FAILED(result)) return result;
        std::string content;
        HRESULT set = E_INVALIDARG;
        if (AppendXmlUtf8(content, ViewOf(data))) set = Behind(*instruction)->SetValue(content);
        if (FAILED(set)) {
            (*instruction)->Release();
            *instruction = nullptr;
        }
        return set;
    });
}

HRESULT STDMETHODCALLTYPE DomDocument::getElementsByTagName(BSTR tagName, IXMLDOMNodeList** list) {
    return Guarded([&] { return ElementsByTagName(tagName, list); });
}

HRESULT STDMETHODCALLTYPE DomDocument::nodeFromID(BSTR id, IXMLDOMNode** node) {
    return Guarded([&]() -> HRESULT { return id == nullptr ? E_INVALIDARG : GiveNothing(node); });
}

// ---- Settings ----

HRESULT STDMETHODCALLTYPE DomDocument::get_async(VARIANT_BOOL* isAsync) {
    return GuardedUnread([&] { return GiveFlag(isAsync, Flag(Tree().Settings().async)); });
}
HRESULT STDMETHODCALLTYPE DomDocument::put_async(VARIANT_BOOL isAsync) {
    return GuardedUnread([&]() -> HRESULT {
        Tree().Settings().async = isAsync != VARIANT_FALSE;
        return S_OK;
    });
}
HRESULT STDMETHODCALLTYPE DomDocument::get_validateOnParse(VARIANT_BOOL* isValidating) {
    return GuardedUnread([&] { return GiveFlag(isValidating, Flag(Tree().Settings().validateOnParse)); });
}
HRESULT STDMETHODCALLTYPE DomDocument::put_validateOnParse(VARIANT_BOOL isValidating) {
    return GuardedUnread([&]() -> HRESULT {
        Tree().Settings().validateOnParse = isValidating != VARIANT_FALSE;
        return S_OK;
    });
}
HRESULT STDMETHODCALLTYPE DomDocument::get_resolveExternals(VARIANT_BOOL* isResolving) {
    return GuardedUnread([&] { return GiveFlag(isResolving, Flag(Tree().Settings().resolveExternals)); });
}
HRESULT STDMETHODCALLTYPE DomDocument::put_resolveExternals(VARIANT_BOOL isResolving) {
    return GuardedUnread([&]() -> HRESULT {
        Tree().Settings().resolveExternals = isResolving != VARIANT_FALSE;
        return S_OK;
    });
}
HRESULT STDMETHODCALLTYPE DomDocument::get_preserveWhiteSpace(VARIANT_BOOL* isPreserving) {
    return GuardedUnread([&] { return GiveFlag(isPreserving, Flag(Tree().Settings().preserveWhiteSpace)); });
}
HRESULT STDMETHODCALLTYPE DomDocument::put_preserveWhiteSpace(VARIANT_BOOL isPreserving) {
    return GuardedUnread([&]() -> HRESULT {
        Tree().Settings().preserveWhiteSpace = isPreserving != VARIANT_FALSE;
        return S_OK;
    });
}

HRESULT STDMETHODCALLTYPE DomDocument::setProperty(BSTR name, VARIANT value) {
    return GuardedUnread(
        [&] { return DomProperties::Set(Tree().Settings(), ViewOf(name), DocumentBytes::Value(value)); });
}

HRESULT STDMETHODCALLTYPE DomDocument::getProperty(BSTR name, VARIANT* value) {
    return GuardedUnread([&] { return DomProperties::Get(Tree().Settings(), ViewOf(name), value); });
}

} // namespace OvPlatform
