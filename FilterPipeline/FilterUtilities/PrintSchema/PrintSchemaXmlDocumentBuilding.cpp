// How PrintSchemaXmlDocument makes elements and edits the document as a whole.

#include "Bstr.h"
#include "PrintSchemaXmlDocument.h"
#include "PrivateKeywordNames.h"

#include <ComSupport/ThrowHresult.h>
#include <LowLevelFacilities/CPComException.h>

#include <set>
#include <string>

using namespace PrintSchemaText;
using PrintSchema::MsPrintTicketNamespacesEnum;

namespace {

VARIANT NodeType(DOMNodeType type) {
    VARIANT variant;
    ::VariantInit(&variant);
    variant.vt = VT_I4;
    variant.lVal = type;
    return variant;
}

void RequireTexts(std::initializer_list<const wchar_t*> texts, const char* function) {
    for (const wchar_t* text : texts)
        if (IsEmpty(text)) ThrowComException(E_INVALIDARG, function);
}

void RequireOut(const void* out, const char* function) {
    if (out == nullptr) ThrowComException(E_POINTER, function);
}

void RequireParent(const IXMLDOMNode* parent, const char* function) {
    if (parent == nullptr) ThrowComException(E_INVALIDARG, function);
}

} // namespace

// ---- Nodes of any kind

HRESULT PrintSchemaXmlDocument::CreateXMLElement(const wchar_t* name, const wchar_t* namespaceUri,
                                                 IXMLDOMElement** out) {
    constexpr char function[] = "PrintSchemaXmlDocument::CreateXMLElement";
    if (out != nullptr) *out = nullptr;
    if (name == nullptr || namespaceUri == nullptr) ThrowComException(E_INVALIDARG, function);
    RequireDocument(function);
    CComPtr<IXMLDOMNode> node;
    ThrowIfFailed(m_document->createNode(NodeType(NODE_ELEMENT), Make(name, function),
                                         Make(namespaceUri, function), &node),
                  function);
    if (out != nullptr) ThrowIfFailed(node.QueryInterface(out), function);
    return S_OK;
}

HRESULT PrintSchemaXmlDocument::AppendXMLAttribute(IXMLDOMElement* element, const wchar_t* name,
                                                   const wchar_t* namespaceUri, const wchar_t* value) {
    constexpr char function[] = "PrintSchemaXmlDocument::AppendXMLAttribute";
    if (element == nullptr || name == nullptr || value == nullptr) ThrowComException(E_INVALIDARG, function);
    RequireDocument(function);
    CComPtr<IXMLDOMNode> node;
    ThrowIfFailed(m_document->createNode(NodeType(NODE_ATTRIBUTE), Make(name, function),
                                         Make(View(namespaceUri), function), &node),
                  function);
    CComPtr<IXMLDOMAttribute> attribute;
    ThrowIfFailed(node.QueryInterface(&attribute), function);
    ThrowIfFailed(attribute->put_value(Borrowed(Make(value, function))), function);
    CComPtr<IXMLDOMAttribute> replaced;
    ThrowIfFailed(element->setAttributeNode(attribute, &replaced), function);
    return S_OK;
}

HRESULT PrintSchemaXmlDocument::CreateCDATASectionXMLElement(const wchar_t* text, IXMLDOMNode** out) {
    constexpr char function[] = "PrintSchemaXmlDocument::CreateCDATASectionXMLElement";
    RequireOut(out, function);
    *out = nullptr;
    if (text == nullptr) ThrowComException(E_INVALIDARG, function);
    RequireDocument(function);
    CComPtr<IXMLDOMCDATASection> section;
    ThrowIfFailed(m_document->createCDATASection(Make(text, function), &section), function);
    ThrowIfFailed(section.QueryInterface(out), function);
    return S_OK;
}

HRESULT PrintSchemaXmlDocument::AppendChild(IXMLDOMNode* parent, IXMLDOMNode* child) {
    constexpr char function[] = "PrintSchemaXmlDocument::AppendChild";
    RequireParent(parent, function);
    if (child == nullptr) ThrowComException(E_POINTER, function);
    PrivateKeywordNames(*this, function).RequireSameMeaning(parent, child);
    CComPtr<IXMLDOMNode> appended;
    ThrowIfFailed(parent->appendChild(child, &appended), function);
    return S_OK;
}

HRESULT PrintSchemaXmlDocument::AppendChildToRootNode(IXMLDOMElement* child) {
    RequireDocument("PrintSchemaXmlDocument::AppendChildToRootNode");
    return AppendChild(m_rootNode, child);
}

// ---- Elements of Print Schema

CComPtr<IXMLDOMElement> PrintSchemaXmlDocument::CreateFrameworkElement(const wchar_t* elementName,
                                                                       const wchar_t* prefix,
                                                                       const wchar_t* name) {
    constexpr char function[] = "PrintSchemaXmlDocument::CreateXMLElement";
    RequireDocument(function);
    CComPtr<IXMLDOMElement> element;
    CreateXMLElement(Join({View(m_frameworkPrefix), elementName}, function), PrintSchema::FRAMEWORK_URI,
                     &element);
    if (!IsEmpty(prefix) || !IsEmpty(name)) GiveName(element, prefix, name);
    return element;
}

void PrintSchemaXmlDocument::GiveName(IXMLDOMElement* element, const wchar_t* prefix, const wchar_t* name) {
    constexpr char function[] = "PrintSchemaXmlDocument::GiveName";
    using Spelling = PrivateKeywordNames::Spelling;
    const PrivateKeywordNames privateNames(*this, function);
    Spelling spelling{View(prefix), Spelling::None};
    if (privateNames.AreMeantBy(spelling.prefix)) spelling = privateNames.SpellAt(element, spelling.prefix);
    if (spelling.declaration == Spelling::AtRoot) {
        CComPtr<IXMLDOMElement> root;
        ThrowIfFailed(m_rootNode.QueryInterface(&root), function);
        DeclarePrivate(root, privateNames.MissingAtRoot(spelling.prefix));
    }
    if (spelling.declaration == Spelling::WithName) DeclarePrivate(element, {spelling.prefix});
    AppendXMLAttribute(element, PrintSchema::NAME_ATTRIBUTE_NAME, L"",
                       Join({spelling.prefix, View(name)}, function));
}

void PrintSchemaXmlDocument::DeclarePrivate(IXMLDOMElement* element,
                                            const std::vector<std::wstring_view>& prefixes) {
    constexpr char function[] = "PrintSchemaXmlDocument::DeclarePrivate";
    for (const std::wstring_view prefix : prefixes)
        AppendXMLAttribute(element, Join({L"xmlns:", prefix.substr(0, prefix.size() - 1)}, function), L"",
                           PrintSchema::USER_KEYWORDS_URI);
}

CComBSTR PrintSchemaXmlDocument::SchemaPrefix(const CComBSTR& declared, std::wstring_view usual,
                                              const wchar_t* uri) const {
    constexpr char function[] = "PrintSchemaXmlDocument::CreateXMLElement";
    if (declared.m_str != nullptr) return Copy(declared, function);
    const CComBSTR usualDeclaration = Join({L"xmlns:", usual}, function);
    CComBSTR bound;
    if (!ReadAttribute(m_rootNode, usualDeclaration, bound, function) || View(bound) == uri)
        return Join({usual, L":"}, function);

    std::set<std::wstring> taken;
    CComPtr<IXMLDOMNamedNodeMap> attributes;
    ThrowIfFailed(m_rootNode->get_attributes(&attributes), function);
    for (;;) {
        CComPtr<IXMLDOMNode> attribute;
        ThrowIfFailed(attributes->nextNode(&attribute), function);
        if (!attribute) break;
        CComBSTR name;
        ThrowIfFailed(attribute->get_nodeName(&name), function);
        if (View(name).starts_with(View(usualDeclaration)))
            taken.emplace(View(name).substr(usualDeclaration.Length()));
    }
    unsigned number = 1;
    while (taken.count(std::to_wstring(number)) != 0)
        ++number;
    return Join({usual, std::to_wstring(number), L":"}, function);
}

CComBSTR PrintSchemaXmlDocument::TypesPrefix() const {
    return SchemaPrefix(m_xsdPrefix, L"xsd", PrintSchema::SCHEMA_DEF_URI);
}

CComPtr<IXMLDOMElement> PrintSchemaXmlDocument::CreateValue(const wchar_t* type, const wchar_t* text) {
    constexpr char function[] = "PrintSchemaXmlDocument::CreateXMLElement";
    CComPtr<IXMLDOMElement> value = CreateFrameworkElement(PrintSchema::VALUE_ELEMENT_NAME);
    if (type != nullptr) {
        // A document that never had a typed value need not declare the two namespaces of the type. The DOM
        // declares that of the attribute where it is used; that of its text is declared here.
        const CComBSTR xsi = SchemaPrefix(m_xsiPrefix, L"xsi", PrintSchema::SCHEMA_INST_URI);
        const CComBSTR xsd = TypesPrefix();
        if (m_xsdPrefix.m_str == nullptr)
            AppendXMLAttribute(value, Join({L"xmlns:", View(xsd).substr(0, xsd.Length() - 1)}, function), L"",
                               PrintSchema::SCHEMA_DEF_URI);
        AppendXMLAttribute(value, Join({View(xsi), PrintSchema::SCHEMA_TYPE}, function),
                           PrintSchema::SCHEMA_INST_URI, Join({View(xsd), type}, function));
    }
    ThrowIfFailed(value->put_text(Make(View(text), function)), function);
    return value;
}

HRESULT PrintSchemaXmlDocument::CreateScoredProperty(const wchar_t* name, IXMLDOMElement** out) {
    constexpr char function[] = "PrintSchemaXmlDocument::CreateScoredProperty";
    RequireOut(out, function);
    *out = nullptr;
    RequireTexts({name}, function);
    // Deliberate: always a public name.
    *out = CreateFrameworkElement(PrintSchema::SCORED_PROP_ELEMENT_NAME, m_keywordsPrefix, name).Detach();
    return S_OK;
}

HRESULT PrintSchemaXmlDocument::CreateScoredProperty(const wchar_t* name, const wchar_t* type,
                                                     const wchar_t* value, IXMLDOMElement** out) {
    constexpr char function[] = "PrintSchemaXmlDocument::CreateScoredProperty";
    RequireOut(out, function);
    *out = nullptr;
    RequireTexts({name, type, value}, function);
    CComPtr<IXMLDOMElement> property;
    CreateScoredProperty(name, &property);
    AppendChild(property, CreateValue(type, value));
    *out = property.Detach();
    return S_OK;
}

HRESULT PrintSchemaXmlDocument::CreateScoredProperty(const wchar_t* name, IXMLDOMNode* child,
                                                     IXMLDOMElement** out) {
    constexpr char function[] = "PrintSchemaXmlDocument::CreateScoredProperty";
    RequireOut(out, function);
    *out = nullptr;
    if (child == nullptr) ThrowComException(E_POINTER, function);
    CComPtr<IXMLDOMElement> property;
    CreateScoredProperty(name, &property);
    AppendChild(property, child);
    *out = property.Detach();
    return S_OK;
}

HRESULT PrintSchemaXmlDocument::CreateStringScoredProperty(const wchar_t* name, const wchar_t* value,
                                                           IXMLDOMElement** out) {
    return CreateScoredProperty(name, PrintSchema::SCHEMA_STRING, value, out);
}

HRESULT PrintSchemaXmlDocument::CreateIntegerScoredProperty(const wchar_t* name, int value,
                                                            IXMLDOMElement** out) {
    CXString text;
    text.Format(L"%i", value);
    return CreateScoredProperty(name, PrintSchema::SCHEMA_INTEGER, text, out);
}

HRESULT PrintSchemaXmlDocument::CreateRealScoredProperty(const wchar_t* name, double value,
                                                         IXMLDOMElement** out) {
    CXString text;
    text.Format(L"%.2f", value);
    return CreateScoredProperty(name, PrintSchema::SCHEMA_DECIMAL, text, out);
}

HRESULT PrintSchemaXmlDocument::CreateProperty(MsPrintTicketNamespacesEnum ns, const wchar_t* name,
                                               IXMLDOMElement** out) {
    constexpr char function[] = "PrintSchemaXmlDocument::CreateProperty";
    RequireOut(out, function);
    *out = nullptr;
    RequireTexts({name}, function);
    *out = CreateFrameworkElement(PrintSchema::PROPERTY_ELEMENT_NAME, GetNsPrefix(ns), name).Detach();
    return S_OK;
}

HRESULT PrintSchemaXmlDocument::CreateProperty(MsPrintTicketNamespacesEnum ns, const wchar_t* name,
                                               const wchar_t* type, const wchar_t* value,
                                               IXMLDOMElement** out) {
    constexpr char function[] = "PrintSchemaXmlDocument::CreateProperty";
    RequireOut(out, function);
    *out = nullptr;
    RequireTexts({name, type, value}, function);
    CComPtr<IXMLDOMElement> property;
    CreateProperty(ns, name, &property);
    AppendChild(property, CreateValue(type, value));
    *out = property.Detach();
    return S_OK;
}

HRESULT PrintSchemaXmlDocument::CreateParameterRef(const wchar_t* prefix, const wchar_t* name,
                                                   IXMLDOMElement** out) {
    constexpr char function[] = "PrintSchemaXmlDocument::CreateParameterRef";
    RequireOut(out, function);
    *out = nullptr;
    RequireTexts({prefix, name}, function);
    *out = CreateFrameworkElement(PrintSchema::PARAM_REF_ELEMENT_NAME, prefix, name).Detach();
    return S_OK;
}

HRESULT PrintSchemaXmlDocument::CreateParameterRefScoredProperty(const wchar_t* scoredPrefix,
                                                                 const wchar_t* scoredName,
                                                                 const wchar_t* refPrefix,
                                                                 const wchar_t* refName,
                                                                 IXMLDOMElement** out) {
    constexpr char function[] = "PrintSchemaXmlDocument::CreateParameterRefScoredProperty";
    RequireOut(out, function);
    *out = nullptr;
    RequireTexts({scoredName}, function);
    CComPtr<IXMLDOMElement> property =
        CreateFrameworkElement(PrintSchema::SCORED_PROP_ELEMENT_NAME, scoredPrefix, scoredName);
    CComPtr<IXMLDOMElement> reference;
    CreateParameterRef(refPrefix, refName, &reference);
    AppendChild(property, reference);
    *out = property.Detach();
    return S_OK;
}

HRESULT PrintSchemaXmlDocument::AppendChildIntegerProperty(IXMLDOMNode* parent,
                                                           MsPrintTicketNamespacesEnum ns,
                                                           const wchar_t* name, int value) {
    RequireParent(parent, "PrintSchemaXmlDocument::AppendChildIntegerProperty");
    CXString text;
    text.Format(L"%i", value);
    CComPtr<IXMLDOMElement> property;
    CreateProperty(ns, name, PrintSchema::SCHEMA_INTEGER, text, &property);
    return AppendChild(parent, property);
}

HRESULT PrintSchemaXmlDocument::AppendChildStringProperty(IXMLDOMNode* parent, MsPrintTicketNamespacesEnum ns,
                                                          const wchar_t* name, const wchar_t* value) {
    RequireParent(parent, "PrintSchemaXmlDocument::AppendChildStringProperty");
    CComPtr<IXMLDOMElement> property;
    CreateProperty(ns, name, PrintSchema::SCHEMA_STRING, value, &property);
    return AppendChild(parent, property);
}

HRESULT PrintSchemaXmlDocument::AppendChildIntegerScoredProperty(IXMLDOMNode* parent, const wchar_t* name,
                                                                 int value) {
    RequireParent(parent, "PrintSchemaXmlDocument::AppendChildIntegerScoredProperty");
    CComPtr<IXMLDOMElement> property;
    CreateIntegerScoredProperty(name, value, &property);
    return AppendChild(parent, property);
}

HRESULT PrintSchemaXmlDocument::AppendChildQNameScoredProperty(IXMLDOMNode* parent, const wchar_t* name,
                                                               const wchar_t* value) {
    constexpr char function[] = "PrintSchemaXmlDocument::AppendChildQNameScoredProperty";
    RequireParent(parent, function);
    RequireTexts({value}, function);
    CComPtr<IXMLDOMElement> property;
    CreateScoredProperty(name, PrintSchema::SCHEMA_QNAME, Join({View(m_keywordsPrefix), value}, function),
                         &property);
    return AppendChild(parent, property);
}

HRESULT PrintSchemaXmlDocument::AppendChildParameterRefScoredProperty(IXMLDOMNode* parent,
                                                                      const wchar_t* scoredPrefix,
                                                                      const wchar_t* scoredName,
                                                                      const wchar_t* refPrefix,
                                                                      const wchar_t* refName) {
    RequireParent(parent, "PrintSchemaXmlDocument::AppendChildParameterRefScoredProperty");
    CComPtr<IXMLDOMElement> property;
    CreateParameterRefScoredProperty(scoredPrefix, scoredName, refPrefix, refName, &property);
    return AppendChild(parent, property);
}

// ---- The document as a whole

HRESULT PrintSchemaXmlDocument::SetProcessingInstructionsEncodingUtf8() {
    constexpr char function[] = "PrintSchemaXmlDocument::SetProcessingInstructionsEncodingUtf8";
    if (!m_document) return S_FALSE;
    CComPtr<IXMLDOMProcessingInstruction> declaration;
    HRESULT hr = m_document->createProcessingInstruction(
        Make(L"xml", function), Make(L" version='1.0' encoding='UTF-8'", function), &declaration);
    if (FAILED(hr)) return hr;
    CComPtr<IXMLDOMNode> first;
    hr = m_document->get_firstChild(&first);
    if (FAILED(hr)) return hr;
    if (!first) return E_FAIL;
    CComBSTR text;
    hr = first->get_xml(&text);
    if (FAILED(hr)) return hr;
    if (View(text).find(L"<?xml ") == std::wstring_view::npos) return E_FAIL;
    CComPtr<IXMLDOMNode> replaced;
    hr = m_document->replaceChild(declaration, first, &replaced);
    return FAILED(hr) ? hr : S_OK;
}

HRESULT PrintSchemaXmlDocument::AddUserKeywordsNamespaceDefinitionIfMissing() {
    constexpr char function[] = "PrintSchemaXmlDocument::AddUserKeywordsNamespaceDefinitionIfMissing";
    try {
        CComBSTR prefix;
        if (GetPrefixFromURI(PrintSchema::USER_KEYWORDS_URI, &prefix) == S_OK) return S_OK;
        CComPtr<IXMLDOMElement> root;
        const HRESULT hr = m_rootNode.QueryInterface(&root);
        if (FAILED(hr)) return hr;
        // To bind the prefix anew would make private names of those that have it.
        if (!PrivateKeywordNames(*this, function).CanHaveUsualPrefix()) return E_FAIL;
        DeclarePrivate(root, {View(PrintSchema::USER_KEYWORDS_NS_PREFIX)});
        // Deliberate: the prefix that GetUserKeywordsNsPrefix gives stays "ns0000:".
        return S_FALSE;
    } catch (const CPComException& failure) {
        return failure.GetHresult();
    }
}

HRESULT PrintSchemaXmlDocument::DebugDumpXmlToFileInTempDirectory(const CXString&, const CXString&) const {
    return S_OK;
}
