#include "PrintSchema/PrintSchemaXmlDocument.h"

#include "ComSupport/MsSafeVariant.h"
#include "ComSupport/ThrowHresult.h"
#include "PrintSchema/Bstr.h"
#include "PrintSchema/DocumentQuery.h"
#include "PrintSchema/PrivateKeywordNames.h"
#include "PrintSchema/TreeChange.h"
#include "PrintSchema/WrongDocumentException.h"

#include <LowLevelFacilities/Failures/CPComException.h>
#include <LowLevelFacilities/Formatter/CPFormat.h>

#include <filterpipeline.h>

#include <algorithm>
#include <cwchar>
#include <iterator>
#include <source_location>
#include <string_view>
#include <utility>

using namespace PrintSchemaText;
using PrintSchema::MsPrintTicketNamespacesEnum;

namespace {

constexpr std::wstring_view declarationPrefix = L"xmlns:";

/// The name of the attribute that declares a prefix, which is given with its colon.
CComBSTR DeclarationName(std::wstring_view prefix) {
    return Join({declarationPrefix, prefix.substr(0, prefix.size() - 1)});
}

/// Why and where a document did not parse.
std::string ParseErrorText(IXMLDOMDocument2* document) {
    CComPtr<IXMLDOMParseError> error;
    CComBSTR reason;
    LONG line = 0;
    LONG position = 0;
    if (FAILED(document->get_parseError(&error)) || !error || FAILED(error->get_reason(&reason)) ||
        FAILED(error->get_line(&line)) || FAILED(error->get_linepos(&position)))
        return "The document does not parse.";
    CXString text(reason.m_str);
    text.TrimRight();
    return FormatStdString("The document does not parse: %s (line %d, position %d)", text, line, position);
}

/// The text of a variant that a node gave; null if there is none.
CComBSTR TakeText(MsSafeVariant& variant) {
    CComBSTR text;
    if (variant.vt == VT_NULL || variant.vt == VT_EMPTY) return text;
    if (variant.vt != VT_BSTR) ThrowIfFailed(::VariantChangeType(&variant, &variant, 0, VT_BSTR));
    text.Attach(variant.bstrVal);
    variant.vt = VT_EMPTY;
    return text;
}

[[noreturn]] void ThrowWrongDocument(HRESULT hr, std::string_view detail = {},
                                     const std::source_location& location = std::source_location::current()) {
    try {
        ThrowComException(hr, detail, location);
    } catch (const CPComException& failure) {
        throw WrongDocumentException(failure);
    }
}

/// What the root element declares, read once for several questions.
class Declarations {
public:
    HRESULT Read(IXMLDOMNode* root) {
        CComPtr<IXMLDOMNamedNodeMap> attributes;
        HRESULT hr = root->get_attributes(&attributes);
        if (FAILED(hr) || !attributes) return hr;
        hr = attributes->reset();
        while (SUCCEEDED(hr)) {
            Attribute attribute;
            hr = attributes->nextNode(&attribute.node);
            if (FAILED(hr) || !attribute.node) break;
            MsSafeVariant value;
            hr = attribute.node->get_nodeValue(&value);
            if (FAILED(hr) || value.vt != VT_BSTR) continue;
            attribute.isPlain = IsPlain(value.bstrVal);
            attribute.value.Attach(value.bstrVal);
            value.vt = VT_EMPTY;
            m_attributes.push_back(std::move(attribute));
        }
        return hr;
    }

    /// S_FALSE for a namespace that is not declared, E_FAIL for the default one. A failure of the platform is
    /// raised, so that it is not taken for either.
    HRESULT FindPrefix(const wchar_t* uri, wchar_t** out) const {
        const CComBSTR wanted = Make(uri);
        const bool isPlain = IsPlain(wanted);
        for (const Attribute& attribute : m_attributes) {
            const bool isMeant = isPlain && attribute.isPlain ? View(attribute.value) == View(wanted)
                                                              : AreEqual(attribute.value, wanted);
            if (!isMeant) continue;
            CComBSTR name;
            ThrowIfFailed(attribute.node->get_nodeName(&name));
            // Deliberate: a default declaration is an error, not a miss.
            if (!View(name).starts_with(declarationPrefix)) return E_FAIL;
            *out = Join({View(name).substr(declarationPrefix.size()), L":"}).Detach();
            return S_OK;
        }
        return S_FALSE;
    }

private:
    struct Attribute {
        CComPtr<IXMLDOMNode> node = {};
        CComBSTR value = {};
        bool isPlain = false;
    };

    std::vector<Attribute> m_attributes;
};

CComPtr<IXMLDOMNode> SelectChild(IXMLDOMNode* node, const CComBSTR& frameworkPrefix,
                                 const wchar_t* elementName) {
    CComPtr<IXMLDOMNode> child;
    const CComBSTR step = Join({View(frameworkPrefix), elementName});
    ThrowIfFailed(node->selectSingleNode(step, &child));
    return child;
}

} // namespace

// ---- Construction

PrintSchemaXmlDocument::PrintSchemaXmlDocument(const wchar_t* rootName, IXMLDOMDocument2* document)
    : PrintSchemaXmlDocument(rootName, document, PrivateNames::Normalised) {}

PrintSchemaXmlDocument::PrintSchemaXmlDocument(const wchar_t* rootName, IXMLDOMDocument2* document,
                                               PrivateNames privateNames)
    : m_document(document) {
    const OperationScope operation("PrintSchemaXmlDocument::PrintSchemaXmlDocument");
    m_rootName = Make(View(rootName));
    if (m_document) InitInstance(privateNames);
}

PrintSchemaXmlDocument::PrintSchemaXmlDocument(const wchar_t* rootName, IStream* stream) {
    const OperationScope operation("PrintSchemaXmlDocument::PrintSchemaXmlDocument");
    m_rootName = Make(View(rootName));
    if (stream == nullptr) ThrowComException(E_POINTER);
    CreateDocument();
    ThrowIfFailed(stream->Seek({}, STREAM_SEEK_SET, nullptr));
    VARIANT source;
    ::VariantInit(&source);
    source.vt = VT_UNKNOWN;
    source.punkVal = stream;
    VARIANT_BOOL isLoaded = VARIANT_FALSE;
    const HRESULT hr = m_document->load(source, &isLoaded);
    FinishLoading(hr, isLoaded);
}

PrintSchemaXmlDocument::PrintSchemaXmlDocument(const wchar_t* rootName, const CXString& xml) {
    const OperationScope operation("PrintSchemaXmlDocument::PrintSchemaXmlDocument");
    m_rootName = Make(View(rootName));
    CreateDocument();
    // A byte-order mark or other junk may stand before the document.
    std::wstring_view text = View(static_cast<const wchar_t*>(xml));
    if (const std::size_t start = text.find(L'<'); start != std::wstring_view::npos)
        text.remove_prefix(start);
    VARIANT_BOOL isLoaded = VARIANT_FALSE;
    const HRESULT hr = m_document->loadXML(Make(text), &isLoaded);
    FinishLoading(hr, isLoaded);
}

PrintSchemaXmlDocument::PrintSchemaXmlDocument(const PrintSchemaXmlDocument& other) { *this = other; }

PrintSchemaXmlDocument& PrintSchemaXmlDocument::operator=(const PrintSchemaXmlDocument& other) {
    const OperationScope operation("PrintSchemaXmlDocument::operator=");
    if (this == &other) return *this;
    m_rootName = Copy(other.m_rootName);
    m_xsdPrefix = Copy(other.m_xsdPrefix);
    m_xsiPrefix = Copy(other.m_xsiPrefix);
    m_frameworkPrefix = Copy(other.m_frameworkPrefix);
    m_keywordsPrefix = Copy(other.m_keywordsPrefix);
    m_keywordsV11Prefix = Copy(other.m_keywordsV11Prefix);
    m_userKeywordsPrefix = Copy(other.m_userKeywordsPrefix);
    m_document = other.m_document;
    m_rootNode = other.m_rootNode;
    return *this;
}

PrintSchemaXmlDocument::~PrintSchemaXmlDocument() = default;

void PrintSchemaXmlDocument::CreateDocument() {
    ThrowIfFailed(m_document.CoCreateInstance(__uuidof(DOMDocument60), nullptr, CLSCTX_INPROC_SERVER));
    ThrowIfFailed(m_document->put_async(VARIANT_FALSE));
}

void PrintSchemaXmlDocument::FinishLoading(HRESULT hr, VARIANT_BOOL isLoaded) {
    ThrowIfFailed(hr);
    if (isLoaded != VARIANT_TRUE) ThrowComException(E_FAIL, ParseErrorText(m_document));
    InitInstance();
}

void PrintSchemaXmlDocument::InitInstance() { InitInstance(PrivateNames::Normalised); }

void PrintSchemaXmlDocument::InitInstance(PrivateNames privateNames) {
    const OperationScope operation("PrintSchemaXmlDocument::InitInstance");
    RequireDocument();
    const HRESULT languageResult =
        m_document->setProperty(Make(L"SelectionLanguage"), Borrowed(Make(L"XPath")));
    ThrowIfFailed(languageResult, "Failed to set SelectionLanguage.");

    // The root element is looked up by namespace: this prefix is ours, whatever the document uses.
    constexpr std::wstring_view own = L"psf";
    SetSelectionNamespaces(own);
    HRESULT hr = GetNode(Join({L"//psf:", View(m_rootName)}), &m_rootNode);
    if (hr != S_OK) {
        // Deliberate: the exception carries the success code S_FALSE.
        ThrowWrongDocument(hr, "Failed to get root node in PrintSchemaXmlDocument constructor!");
    }

    Declarations declarations;
    ThrowIfFailed(declarations.Read(m_rootNode));
    hr = declarations.FindPrefix(PrintSchema::USER_KEYWORDS_URI, &m_userKeywordsPrefix);
    if (FAILED(hr)) ThrowWrongDocument(hr);
    if (hr != S_OK) {
        m_userKeywordsPrefix = Make(PrintSchema::BASE_DRIVER_DEFAULT_USER_KEYWORDS_NS_PREFIX);
    } else if (privateNames == PrivateNames::Normalised) {
        const CComBSTR oldPrefix = Copy(m_userKeywordsPrefix);
        hr = FixPrivateNameSpacePrefix();
        if (FAILED(hr)) {
            ThrowComException(hr, FormatStdString("Failed updating private namespace prefix from %s to %s",
                                                  oldPrefix.m_str, PrintSchema::USER_KEYWORDS_NS_PREFIX));
        }
    }

    const std::pair<const wchar_t*, wchar_t**> namespaces[] = {
        {PrintSchema::FRAMEWORK_URI, &m_frameworkPrefix},
        {PrintSchema::KEYWORDS_URI, &m_keywordsPrefix},
        {PrintSchema::SCHEMA_INST_URI, &m_xsiPrefix},
        {PrintSchema::SCHEMA_DEF_URI, &m_xsdPrefix},
    };
    for (const auto& [uri, prefix] : namespaces) {
        hr = declarations.FindPrefix(uri, prefix);
        if (FAILED(hr)) {
            ThrowWrongDocument(hr, FormatStdString("The root element declares %s without a prefix.", uri));
        }
    }
    // Deliberate: a default declaration of this namespace (E_FAIL) counts as none.
    declarations.FindPrefix(PrintSchema::KEYWORDSV11_URI, &m_keywordsV11Prefix);
    // A prefix that means something else here cannot mean private keywords, too.
    if (IsPrefixOfOthers(View(m_userKeywordsPrefix)))
        m_userKeywordsPrefix = Make(PrintSchema::USER_KEYWORDS_NS_PREFIX);
    if (IsPrefixOfOthers(View(m_userKeywordsPrefix))) {
        const std::wstring_view usual = View(PrintSchema::BASE_DRIVER_DEFAULT_USER_KEYWORDS_NS_PREFIX);
        m_userKeywordsPrefix =
            SchemaPrefix({}, usual.substr(0, usual.size() - 1), PrintSchema::USER_KEYWORDS_URI);
    }

    if (m_frameworkPrefix.Length() < 2) {
        ThrowWrongDocument(E_FAIL, "The root element does not declare the framework namespace.");
    }
    const std::wstring_view used = View(m_frameworkPrefix).substr(0, m_frameworkPrefix.Length() - 1);
    if (used != own) SetSelectionNamespaces(used);
}

void PrintSchemaXmlDocument::SetSelectionNamespaces(std::wstring_view prefix) {
    const CComBSTR value = Join({L"xmlns:", prefix, L"='", PrintSchema::FRAMEWORK_URI, L"'"});
    ThrowIfFailed(m_document->setProperty(Make(L"SelectionNamespaces"), Borrowed(value)));
}

// ---- Prefixes

HRESULT PrintSchemaXmlDocument::GetPrefixFromURI(const wchar_t* uri, wchar_t** out) const {
    const OperationScope operation("PrintSchemaXmlDocument::GetPrefixFromURI");
    const HRESULT hr = TryGetPrefixFromURI(uri, out);
    ThrowIfFailed(hr);
    return hr;
}

HRESULT PrintSchemaXmlDocument::TryGetPrefixFromURI(const wchar_t* uri, wchar_t** out) const {
    if (out == nullptr) return E_POINTER;
    if (IsEmpty(uri)) return E_INVALIDARG;
    if (!m_rootNode) return E_PENDING;
    Declarations declarations;
    ThrowIfFailed(declarations.Read(m_rootNode));
    return declarations.FindPrefix(uri, out);
}

HRESULT PrintSchemaXmlDocument::FixPrivateNameSpacePrefix() {
    const OperationScope operation("PrintSchemaXmlDocument::FixPrivateNameSpacePrefix");
    RefuseForeignUserPrefix();
    // The document may be another's, who is not to find it half renamed.
    TreeChange change(m_rootNode);
    CComBSTR newPrefix = Make(PrintSchema::USER_KEYWORDS_NS_PREFIX);
    // Deliberate: only names are renamed. QNames in the text of values keep the old prefix.
    PrivateKeywordNames(*this).Normalise(change);
    if (View(m_userKeywordsPrefix) == PrintSchema::USER_KEYWORDS_NS_PREFIX) {
        change.Keep();
        return S_OK;
    }

    const CComBSTR oldDeclaration = DeclarationName(View(m_userKeywordsPrefix));
    const CComBSTR newDeclaration = DeclarationName(PrintSchema::USER_KEYWORDS_NS_PREFIX);
    if (CComBSTR uri; ReadAttribute(m_rootNode, oldDeclaration, uri)) {
        try {
            CComPtr<IXMLDOMElement> root;
            ThrowIfFailed(m_rootNode.QueryInterface(&root));
            AppendXMLAttribute(root, newDeclaration, L"", uri);
        } catch (const CPComException& failure) {
            return failure.GetHresult();
        }
        CComPtr<IXMLDOMNamedNodeMap> attributes;
        ThrowIfFailed(m_rootNode->get_attributes(&attributes));
        CComPtr<IXMLDOMNode> removed;
        ThrowIfFailed(attributes->removeNamedItem(oldDeclaration, &removed));
    }
    m_userKeywordsPrefix = std::move(newPrefix);
    change.Keep();
    return S_OK;
}

bool PrintSchemaXmlDocument::IsPrefixOfOthers(std::wstring_view prefix) const {
    const CComBSTR* const others[] = {&m_xsdPrefix, &m_xsiPrefix, &m_frameworkPrefix, &m_keywordsPrefix,
                                      &m_keywordsV11Prefix};
    return std::any_of(std::begin(others), std::end(others), [prefix](const CComBSTR* other) {
        return other->Length() > 0 && View(*other) == prefix;
    });
}

void PrintSchemaXmlDocument::RefuseForeignUserPrefix() {
    CComBSTR bound;
    const CComBSTR declaration = DeclarationName(PrintSchema::USER_KEYWORDS_NS_PREFIX);
    if (!ReadAttribute(m_rootNode, declaration, bound)) return;
    if (View(bound) == PrintSchema::USER_KEYWORDS_URI) return;
    ThrowComException(E_FAIL,
                      FormatStdString("Failed updating private namespace prefix from %s to %s (which the "
                                      "document binds to another namespace, %s)",
                                      m_userKeywordsPrefix.m_str, PrintSchema::USER_KEYWORDS_NS_PREFIX,
                                      bound.m_str));
}

CComBSTR PrintSchemaXmlDocument::GetFrameworkNsPrefix() const {
    const OperationScope operation("PrintSchemaXmlDocument::GetFrameworkNsPrefix");
    return Copy(m_frameworkPrefix);
}

CComBSTR PrintSchemaXmlDocument::GetKeywordsNsPrefix() const {
    const OperationScope operation("PrintSchemaXmlDocument::GetKeywordsNsPrefix");
    return Copy(m_keywordsPrefix);
}

CComBSTR PrintSchemaXmlDocument::GetKeywordsV11NsPrefix() const {
    const OperationScope operation("PrintSchemaXmlDocument::GetKeywordsV11NsPrefix");
    return Copy(m_keywordsV11Prefix);
}

CComBSTR PrintSchemaXmlDocument::GetUserKeywordsNsPrefix() const {
    const OperationScope operation("PrintSchemaXmlDocument::GetUserKeywordsNsPrefix");
    return Copy(m_userKeywordsPrefix);
}

bool PrintSchemaXmlDocument::IsKeywordsV11NsPrefixDefined() const { return m_keywordsV11Prefix.Length() > 0; }

CComBSTR PrintSchemaXmlDocument::GetNsPrefix(MsPrintTicketNamespacesEnum ns) const {
    const OperationScope operation("PrintSchemaXmlDocument::GetNsPrefix");
    switch (ns) {
    case PrintSchema::FrameworkNs:
        return GetFrameworkNsPrefix();
    case PrintSchema::KeywordsNs:
        return GetKeywordsNsPrefix();
    case PrintSchema::UserKeywordsNs:
        return GetUserKeywordsNsPrefix();
    }
    ThrowComException(E_INVALIDARG,
                      FormatStdString("PrintSchemaXmlDocument::GetNsPrefix() does not have a case in the "
                                      "namspace switch statment for %u.",
                                      static_cast<unsigned int>(ns)));
}

CComBSTR PrintSchemaXmlDocument::GetNsPrefixOf(const wchar_t* prefix,
                                               const PrintSchemaXmlDocument& other) const {
    const OperationScope operation("PrintSchemaXmlDocument::GetNsPrefixOf");
    if (View(prefix).size() < 2 || this == &other) return Make(View(prefix));
    other.RequireDocument();
    if (PrivateKeywordNames(other).AreMeantBy(View(prefix))) return Copy(m_userKeywordsPrefix);
    CComBSTR uri;
    if (!ReadAttribute(other.m_rootNode, DeclarationName(View(prefix)), uri)) return {};
    if (View(uri) == PrintSchema::USER_KEYWORDS_URI) return Copy(m_userKeywordsPrefix);
    CComBSTR own;
    const HRESULT hr = TryGetPrefixFromURI(uri, &own);
    // A default declaration (E_FAIL) gives names no prefix.
    if (hr != E_FAIL) ThrowIfFailed(hr);
    return own;
}

HRESULT PrintSchemaXmlDocument::GetKeywordAndPrefixFromName(const wchar_t* name, CXString& keyword,
                                                            MsPrintTicketNamespacesEnum& ns) const {
    const OperationScope operation("PrintSchemaXmlDocument::GetKeywordAndPrefixFromName");
    keyword.Empty();
    ns = PrintSchema::KeywordsNs;
    if (name == nullptr) return E_INVALIDARG;
    const wchar_t* colon = std::wcschr(name, L':');
    keyword = colon == nullptr ? name : colon + 1;
    if (colon == nullptr) return S_OK;

    const CXString prefix(name, static_cast<int>(colon - name) + 1);
    const std::vector<CXString> privatePrefixes = PrivatePrefixes();
    if (std::any_of(privatePrefixes.begin(), privatePrefixes.end(),
                    [&](const CXString& each) { return prefix.CompareNoCase(each) == 0; })) {
        ns = PrintSchema::UserKeywordsNs;
        return S_OK;
    }
    return m_keywordsPrefix.m_str != nullptr && prefix.CompareNoCase(m_keywordsPrefix) == 0 ? S_OK : E_FAIL;
}

std::vector<CXString> PrintSchemaXmlDocument::PrivatePrefixes() const {
    std::vector<CXString> prefixes;
    const PrivateKeywordNames names(*this);
    for (const std::wstring_view each : names.Prefixes())
        prefixes.emplace_back(each.data(), static_cast<int>(each.size()));
    return prefixes;
}

// ---- The document

bool PrintSchemaXmlDocument::HasDomDocument() const { return m_document.p != nullptr; }
IXMLDOMDocument2* PrintSchemaXmlDocument::GetDomDocPtr() const { return m_document; }
IXMLDOMNode* PrintSchemaXmlDocument::GetRootNode() const { return m_rootNode; }

void PrintSchemaXmlDocument::RequireDocument() const {
    if (!m_document) ThrowComException(E_PENDING);
}

void PrintSchemaXmlDocument::RequireQuestion(const wchar_t* name, IXMLDOMNode** out) const {
    if (out == nullptr) ThrowComException(E_POINTER);
    RequireDocument();
    *out = nullptr;
    if (IsEmpty(name)) ThrowComException(E_INVALIDARG);
}

HRESULT PrintSchemaXmlDocument::get_xml(wchar_t** out) const {
    if (out == nullptr) return E_POINTER;
    *out = nullptr;
    if (!m_document) return E_FAIL;
    return m_document->get_xml(out);
}

// ---- Looking up

HRESULT PrintSchemaXmlDocument::GetNode(const wchar_t* xpath, IXMLDOMNode** out) const {
    const OperationScope operation("PrintSchemaXmlDocument::GetNode");
    if (out == nullptr) ThrowComException(E_POINTER);
    RequireDocument();
    *out = nullptr;
    if (IsEmpty(xpath)) ThrowComException(E_INVALIDARG);
    *out = SelectFirst(Make(xpath)).Detach();
    return *out != nullptr ? S_OK : S_FALSE;
}

CComPtr<IXMLDOMNode> PrintSchemaXmlDocument::SelectFirst(BSTR xpath) const {
    RequireDocument();
    CComPtr<IXMLDOMNode> node;
    ThrowIfFailed(m_document->selectSingleNode(xpath, &node));
    return node;
}

CComPtr<IXMLDOMNodeList> PrintSchemaXmlDocument::SelectNodes(BSTR xpath) const {
    RequireDocument();
    CComPtr<IXMLDOMNodeList> nodes;
    ThrowIfFailed(m_document->selectNodes(xpath, &nodes));
    if (!nodes) ThrowComException(E_FAIL);
    return nodes;
}

HRESULT PrintSchemaXmlDocument::GetNodes(const wchar_t* elementName, IXMLDOMNodeList** out) const {
    const OperationScope operation("PrintSchemaXmlDocument::GetNodes");
    if (out == nullptr) ThrowComException(E_POINTER);
    *out = nullptr;
    if (IsEmpty(elementName)) ThrowComException(E_INVALIDARG);
    *out = SelectNodes(Join({L"//", View(m_frameworkPrefix), elementName})).Detach();
    return S_OK;
}

CComPtr<IXMLDOMNode> PrintSchemaXmlDocument::FindAttribute(IXMLDOMNode* node, const wchar_t* name) {
    CComPtr<IXMLDOMNamedNodeMap> attributes;
    ThrowIfFailed(node->get_attributes(&attributes));
    CComPtr<IXMLDOMNode> attribute;
    if (attributes) ThrowIfFailed(attributes->getNamedItem(Make(name), &attribute));
    return attribute;
}

bool PrintSchemaXmlDocument::ReadAttribute(IXMLDOMNode* node, const wchar_t* name, CComBSTR& text) {
    CComPtr<IXMLDOMElement> element;
    const HRESULT asked = node->QueryInterface(&element);
    if (asked == E_NOINTERFACE) return false;
    ThrowIfFailed(asked);
    MsSafeVariant value;
    const HRESULT found = element->getAttribute(Make(name), &value);
    if (found == E_FAIL) {
        // The name may be one that no attribute can have, which the map does not mind.
        const CComPtr<IXMLDOMNode> attribute = FindAttribute(node, name);
        if (!attribute) return false;
        ThrowIfFailed(attribute->get_nodeValue(&value));
    } else {
        ThrowIfFailed(found);
        if (found != S_OK) return false;
    }
    text = TakeText(value);
    return true;
}

HRESULT PrintSchemaXmlDocument::GetAttributeValue(IXMLDOMNode const* node, const wchar_t* attribute,
                                                  wchar_t** out) const {
    const OperationScope operation("PrintSchemaXmlDocument::GetAttributeValue");
    if (node == nullptr || out == nullptr) ThrowComException(E_POINTER);
    *out = nullptr;
    if (IsEmpty(attribute)) ThrowComException(E_INVALIDARG);
    CComBSTR text;
    // The interfaces of the DOM know no const.
    if (!ReadAttribute(const_cast<IXMLDOMNode*>(node), attribute, text)) return S_FALSE;
    *out = text.Detach();
    return S_OK;
}

HRESULT PrintSchemaXmlDocument::QueryNode(const wchar_t* xpath) const {
    CComPtr<IXMLDOMNode> node;
    return GetNode(xpath, &node) == S_OK ? S_OK : E_ELEMENT_NOT_FOUND;
}

HRESULT PrintSchemaXmlDocument::QueryNodeValue(const wchar_t* xpath, wchar_t** out) const {
    return GetNodeValue(xpath, out) == S_OK ? S_OK : E_ELEMENT_NOT_FOUND;
}

HRESULT PrintSchemaXmlDocument::QueryNodeValue(const wchar_t* xpath, int* out) const {
    const OperationScope operation("PrintSchemaXmlDocument::QueryNodeValue");
    if (out == nullptr) ThrowComException(E_POINTER);
    CComBSTR text;
    const HRESULT hr = QueryNodeValue(xpath, &text);
    if (hr == S_OK) *out = IntegerOf(text);
    return hr;
}

HRESULT PrintSchemaXmlDocument::QueryNodeValue(const wchar_t* xpath, float* out) const {
    const OperationScope operation("PrintSchemaXmlDocument::QueryNodeValue");
    if (out == nullptr) ThrowComException(E_POINTER);
    CComBSTR text;
    const HRESULT hr = QueryNodeValue(xpath, &text);
    if (hr == S_OK) *out = RealOf(text);
    return hr;
}

HRESULT PrintSchemaXmlDocument::QueryNodeValue(const DocumentQuery& query, wchar_t** out) const {
    return GetNodeValue(query, out) == S_OK ? S_OK : E_ELEMENT_NOT_FOUND;
}

HRESULT PrintSchemaXmlDocument::QueryNodeValue(const DocumentQuery& query, int* out) const {
    const OperationScope operation("PrintSchemaXmlDocument::QueryNodeValue");
    if (out == nullptr) ThrowComException(E_POINTER);
    CComBSTR text;
    const HRESULT hr = QueryNodeValue(query, &text);
    if (hr == S_OK) *out = IntegerOf(text);
    return hr;
}

CComPtr<IXMLDOMNode> PrintSchemaXmlDocument::FindNode(const wchar_t* xpath) const {
    CComPtr<IXMLDOMNode> node;
    GetNode(xpath, &node);
    return node;
}

CComPtr<IXMLDOMNode> PrintSchemaXmlDocument::FindValueNode(IXMLDOMNode* node) const {
    if (node == nullptr) return nullptr;
    if (CComPtr<IXMLDOMNode> value = SelectChild(node, m_frameworkPrefix, PrintSchema::VALUE_ELEMENT_NAME))
        return value;

    const CComPtr<IXMLDOMNode> reference =
        SelectChild(node, m_frameworkPrefix, PrintSchema::PARAM_REF_ELEMENT_NAME);
    CComBSTR wanted;
    if (!reference || !ReadAttribute(reference, PrintSchema::NAME_ATTRIBUTE_NAME, wanted)) return nullptr;
    const PrivateKeywordNames names(*this);
    CComPtr<IXMLDOMNodeList> inits;
    GetNodes(PrintSchema::PARAM_INIT_ELEMENT_NAME, &inits);
    for (;;) {
        CComPtr<IXMLDOMNode> init;
        ThrowIfFailed(inits->nextNode(&init));
        if (!init) return nullptr;
        CComBSTR name;
        if (ReadAttribute(init, PrintSchema::NAME_ATTRIBUTE_NAME, name) && AreEqual(name, wanted) &&
            names.StandsAt(init, View(name)) == names.StandsAt(reference, View(wanted)))
            return init;
    }
}

HRESULT PrintSchemaXmlDocument::GetNodeValue(const wchar_t* xpath, wchar_t** out) const {
    const OperationScope operation("PrintSchemaXmlDocument::GetNodeValue");
    if (out == nullptr) ThrowComException(E_POINTER);
    *out = nullptr;
    return GetValueOf(FindNode(xpath), out);
}

HRESULT PrintSchemaXmlDocument::GetNodeValue(const DocumentQuery& query, wchar_t** out) const {
    const OperationScope operation("PrintSchemaXmlDocument::GetNodeValue");
    if (out == nullptr) ThrowComException(E_POINTER);
    *out = nullptr;
    return GetValueOf(query.FindFirst(), out);
}

HRESULT PrintSchemaXmlDocument::GetValueOf(IXMLDOMNode* node, wchar_t** out) const {
    const CComPtr<IXMLDOMNode> valueNode = FindValueNode(node);
    if (!valueNode) return S_FALSE;
    MsSafeVariant value;
    ThrowIfFailed(valueNode->get_nodeTypedValue(&value));
    CComBSTR text = TakeText(value);
    if (text.Length() > 0) *out = text.Detach();
    return S_OK;
}

HRESULT PrintSchemaXmlDocument::SetNodeValue(const wchar_t* xpath, const wchar_t* value) {
    const OperationScope operation("PrintSchemaXmlDocument::SetNodeValue");
    if (IsEmpty(value)) ThrowComException(E_INVALIDARG);
    return SetValueOf(FindNode(xpath), value);
}

HRESULT PrintSchemaXmlDocument::SetNodeValue(const DocumentQuery& query, const wchar_t* value) {
    const OperationScope operation("PrintSchemaXmlDocument::SetNodeValue");
    if (IsEmpty(value)) ThrowComException(E_INVALIDARG);
    return SetValueOf(query.FindFirst(), value);
}

HRESULT PrintSchemaXmlDocument::SetValueOf(IXMLDOMNode* node, const wchar_t* value) {
    const CComPtr<IXMLDOMNode> valueNode = FindValueNode(node);
    if (!valueNode) return S_FALSE;
    // Deliberate: for a ParameterRef this is the initialiser itself and not its Value, which the text
    // replaces.
    ThrowIfFailed(valueNode->put_nodeTypedValue(Borrowed(Make(value))));
    return S_OK;
}

HRESULT PrintSchemaXmlDocument::SetOptionNodeAttributeValue(const wchar_t* xpath, const wchar_t* value,
                                                            const wchar_t* attribute) {
    const OperationScope operation("PrintSchemaXmlDocument::SetOptionNodeAttributeValue");
    if (IsEmpty(value) || IsEmpty(attribute)) ThrowComException(E_INVALIDARG);
    return SetOptionAttribute(FindNode(xpath), value, attribute);
}

HRESULT PrintSchemaXmlDocument::SetOptionNodeAttributeValue(const DocumentQuery& query, const wchar_t* value,
                                                            const wchar_t* attribute) {
    const OperationScope operation("PrintSchemaXmlDocument::SetOptionNodeAttributeValue");
    if (IsEmpty(value) || IsEmpty(attribute)) ThrowComException(E_INVALIDARG);
    return SetOptionAttribute(query.FindFirst(), value, attribute);
}

HRESULT PrintSchemaXmlDocument::SetOptionAttribute(IXMLDOMNode* node, const wchar_t* value,
                                                   const wchar_t* attribute) {
    if (node == nullptr) return S_FALSE;
    const CComPtr<IXMLDOMNode> option =
        SelectChild(node, m_frameworkPrefix, PrintSchema::OPTION_ELEMENT_NAME);
    if (!option) return S_FALSE;
    const CComPtr<IXMLDOMNode> found = FindAttribute(option, attribute);
    if (!found) return S_FALSE;
    if (View(attribute) != PrintSchema::NAME_ATTRIBUTE_NAME) {
        ThrowIfFailed(found->put_nodeValue(Borrowed(Make(value))));
        return S_OK;
    }
    CComPtr<IXMLDOMElement> element;
    ThrowIfFailed(option.QueryInterface(&element));
    const std::size_t local = View(value).find(L':') + 1;
    GiveName(element, Make(View(value).substr(0, local)), value + local);
    return S_OK;
}

DocumentQuery PrintSchemaXmlDocument::FeatureQuery(const wchar_t* prefix, const wchar_t* name) const {
    DocumentQuery query(*this);
    query.AddFeature(prefix, name);
    return query;
}

HRESULT PrintSchemaXmlDocument::GetFeatureNodeIfExists(const wchar_t* prefix, const wchar_t* name,
                                                       IXMLDOMNode** out) const {
    const OperationScope operation("PrintSchemaXmlDocument::GetFeatureNodeIfExists");
    RequireQuestion(name, out);
    *out = FeatureQuery(prefix, name).FindFirst().Detach();
    return *out != nullptr ? S_OK : S_FALSE;
}

HRESULT PrintSchemaXmlDocument::GetFeatureNode(const wchar_t* prefix, const wchar_t* name,
                                               IXMLDOMNode** out) const {
    const OperationScope operation("PrintSchemaXmlDocument::GetFeatureNode");
    if (GetFeatureNodeIfExists(prefix, name, out) != S_OK) ThrowComException(E_FAIL);
    return S_OK;
}

// ---- Deleting

HRESULT PrintSchemaXmlDocument::DeleteFeatureNodeIfExists(const wchar_t* prefix, const wchar_t* name) {
    CComPtr<IXMLDOMNode> node;
    if (GetFeatureNodeIfExists(prefix, name, &node) != S_OK) return S_FALSE;
    return DeleteNode(node);
}

HRESULT PrintSchemaXmlDocument::DeleteFeatureNodeIfADuplicateExists(const wchar_t* prefix,
                                                                    const wchar_t* name) {
    const OperationScope operation("PrintSchemaXmlDocument::DeleteFeatureNodeIfADuplicateExists");
    if (IsEmpty(name)) ThrowComException(E_INVALIDARG);
    RequireDocument();
    const std::vector<CComPtr<IXMLDOMNode>> features = FeatureQuery(prefix, name).FindAll();
    // Deliberate: one goes, however many there are.
    return features.size() < 2 ? S_FALSE : DeleteNode(features.front());
}

HRESULT PrintSchemaXmlDocument::DeletePropertyNodesIfExist(const wchar_t* prefix, const wchar_t* name) {
    const OperationScope operation("PrintSchemaXmlDocument::DeletePropertyNodesIfExist");
    // Deliberate: not E_INVALIDARG.
    if (IsEmpty(name)) ThrowComException(E_FAIL);
    RequireDocument();
    DocumentQuery query(*this);
    query.AddProperty(prefix, name);
    TreeChange change(m_rootNode);
    const bool wasThere = change.Replace(query, nullptr);
    change.Keep();
    return wasThere ? S_OK : S_FALSE;
}

HRESULT PrintSchemaXmlDocument::DeletePrivateFeatures(const wchar_t* namespaceUri) {
    const OperationScope operation("PrintSchemaXmlDocument::DeletePrivateFeatures");
    if (IsEmpty(namespaceUri)) ThrowComException(E_INVALIDARG);
    CComBSTR prefix;
    const HRESULT declared = GetPrefixFromURI(namespaceUri, &prefix);
    CComPtr<IXMLDOMNodeList> features;
    GetNodes(PrintSchema::FEATURE_ELEMENT_NAME, &features);
    const std::vector<CComPtr<IXMLDOMNode>> named =
        PrivateKeywordNames(*this, namespaceUri).NamedAmong(features);
    TreeChange change(m_rootNode);
    for (const CComPtr<IXMLDOMNode>& feature : named)
        change.Remove(feature);
    change.Keep();
    return declared == S_OK || !named.empty() ? S_OK : S_FALSE;
}

HRESULT PrintSchemaXmlDocument::DeleteNode(IXMLDOMNode* node) {
    const OperationScope operation("PrintSchemaXmlDocument::DeleteNode");
    if (node == nullptr) ThrowComException(E_POINTER);
    CComPtr<IXMLDOMNode> parent;
    ThrowIfFailed(node->get_parentNode(&parent));
    if (!parent) return S_FALSE;
    CComPtr<IXMLDOMNode> removed;
    ThrowIfFailed(parent->removeChild(node, &removed));
    if (!removed) ThrowComException(E_FAIL);
    return S_OK;
}
