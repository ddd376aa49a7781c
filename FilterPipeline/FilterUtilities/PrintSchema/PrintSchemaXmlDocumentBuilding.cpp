// How PrintSchemaXmlDocument makes elements and edits the document as a whole.

#include "ComSupport/ThrowHresult.h"
#include "PrintSchema/Bstr.h"
#include "PrintSchema/PrintSchemaXmlDocument.h"
#include "PrintSchema/PrivateKeywordNames.h"

#include <LowLevelFacilities/Failures/CPComException.h>

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

void RequireTexts(std::initializer_list<const wchar_t*> texts) {
    for (const wchar_t* text : texts)
        if (IsEmpty(text)) ThrowComException(E_INVALIDARG);
}

void RequireOut(const void* out) {
    if (out == nullptr) ThrowComException(E_POINTER);
}

void RequireParent(const IXMLDOMNode* parent) {
    if (parent == nullptr) ThrowComException(E_INVALIDARG);
}

} // namespace

// ---- Nodes of any kind

HRESULT PrintSchemaXmlDocument::CreateXMLElement(const wchar_t* name, const wchar_t* namespaceUri,
                                                 IXMLDOMElement** out) {
    const OperationScope operation("PrintSchemaXmlDocument::CreateXMLElement");
    if (out != nullptr) *out = nullptr;
    if (name == nullptr || namespaceUri == nullptr) ThrowComException(E_INVALIDARG);
    RequireDocument();
    CComPtr<IXMLDOMNode> node;
    ThrowIfFailed(m_document->createNode(NodeType(NODE_ELEMENT), Make(name), Make(namespaceUri), &node));
    if (out != nullptr) ThrowIfFailed(node.QueryInterface(out));
    return S_OK;
}

HRESULT PrintSchemaXmlDocument::AppendXMLAttribute(IXMLDOMElement* element, const wchar_t* name,
                                                   const wchar_t* namespaceUri, const wchar_t* value) {
    const OperationScope operation("PrintSchemaXmlDocument::AppendXMLAttribute");
    if (element == nullptr || name == nullptr || value == nullptr) ThrowComException(E_INVALIDARG);
    RequireDocument();
    CComPtr<IXMLDOMNode> node;
    ThrowIfFailed(
        m_document->createNode(NodeType(NODE_ATTRIBUTE), Make(name), Make(View(namespaceUri)), &node));
    CComPtr<IXMLDOMAttribute> attribute;
    ThrowIfFailed(node.QueryInterface(&attribute));
    ThrowIfFailed(attribute->put_value(Borrowed(Make(value))));
    CComPtr<IXMLDOMAttribute> replaced;
    ThrowIfFailed(element->setAttributeNode(attribute, &replaced));
    return S_OK;
}

HRESULT PrintSchemaXmlDocument::CreateCDATASectionXMLElement(const wchar_t* text, IXMLDOMNode** out) {
    const OperationScope operation("PrintSchemaXmlDocument::CreateCDATASectionXMLElement");
    RequireOut(out);
    *out = nullptr;
    if (text == nullptr) ThrowComException(E_INVALIDARG);
    RequireDocument();
    CComPtr<IXMLDOMCDATASection> section;
    ThrowIfFailed(m_document->createCDATASection(Make(text), &section));
    ThrowIfFailed(section.QueryInterface(out));
    return S_OK;
}

HRESULT PrintSchemaXmlDocument::AppendChild(IXMLDOMNode* parent, IXMLDOMNode* child) {
    const OperationScope operation("PrintSchemaXmlDocument::AppendChild");
    RequireParent(parent);
    if (child == nullptr) ThrowComException(E_POINTER);
    PrivateKeywordNames(*this).RequireSameMeaning(parent, child);
    CComPtr<IXMLDOMNode> appended;
    ThrowIfFailed(parent->appendChild(child, &appended));
    return S_OK;
}

HRESULT PrintSchemaXmlDocument::AppendChildToRootNode(IXMLDOMElement* child) {
    const OperationScope operation("PrintSchemaXmlDocument::AppendChildToRootNode");
    RequireDocument();
    return AppendChild(m_rootNode, child);
}

// ---- Elements of Print Schema

CComPtr<IXMLDOMElement> PrintSchemaXmlDocument::CreateFrameworkElement(const wchar_t* elementName,
                                                                       const wchar_t* prefix,
                                                                       const wchar_t* name) {
    const OperationScope operation("PrintSchemaXmlDocument::CreateFrameworkElement");
    RequireDocument();
    CComPtr<IXMLDOMElement> element;
    CreateXMLElement(Join({View(m_frameworkPrefix), elementName}), PrintSchema::FRAMEWORK_URI, &element);
    if (!IsEmpty(prefix) || !IsEmpty(name)) GiveName(element, prefix, name);
    return element;
}

void PrintSchemaXmlDocument::GiveName(IXMLDOMElement* element, const wchar_t* prefix, const wchar_t* name) {
    const OperationScope operation("PrintSchemaXmlDocument::GiveName");
    using Spelling = PrivateKeywordNames::Spelling;
    const PrivateKeywordNames privateNames(*this);
    Spelling spelling{View(prefix), Spelling::None};
    if (privateNames.AreMeantBy(spelling.prefix)) spelling = privateNames.SpellAt(element, spelling.prefix);
    if (spelling.declaration == Spelling::AtRoot) {
        CComPtr<IXMLDOMElement> root;
        ThrowIfFailed(m_rootNode.QueryInterface(&root));
        DeclarePrivate(root, privateNames.MissingAtRoot(spelling.prefix));
    }
    if (spelling.declaration == Spelling::WithName) DeclarePrivate(element, {spelling.prefix});
    AppendXMLAttribute(element, PrintSchema::NAME_ATTRIBUTE_NAME, L"", Join({spelling.prefix, View(name)}));
}

void PrintSchemaXmlDocument::DeclarePrivate(IXMLDOMElement* element,
                                            const std::vector<std::wstring_view>& prefixes) {
    const OperationScope operation("PrintSchemaXmlDocument::DeclarePrivate");
    for (const std::wstring_view prefix : prefixes)
        AppendXMLAttribute(element, Join({L"xmlns:", prefix.substr(0, prefix.size() - 1)}), L"",
                           PrintSchema::USER_KEYWORDS_URI);
}

CComBSTR PrintSchemaXmlDocument::SchemaPrefix(const CComBSTR& declared, std::wstring_view usual,
                                              const wchar_t* uri) const {
    if (declared.m_str != nullptr) return Copy(declared);
    const CComBSTR usualDeclaration = Join({L"xmlns:", usual});
    CComBSTR bound;
    if (!ReadAttribute(m_rootNode, usualDeclaration, bound) || View(bound) == uri) return Join({usual, L":"});

    std::set<std::wstring> taken;
    CComPtr<IXMLDOMNamedNodeMap> attributes;
    ThrowIfFailed(m_rootNode->get_attributes(&attributes));
    for (;;) {
        CComPtr<IXMLDOMNode> attribute;
        ThrowIfFailed(attributes->nextNode(&attribute));
        if (!attribute) break;
        CComBSTR name;
        ThrowIfFailed(attribute->get_nodeName(&name));
        if (View(name).starts_with(View(usualDeclaration)))
            taken.emplace(View(name).substr(usualDeclaration.Length()));
    }
    unsigned number = 1;
    while (taken.count(std::to_wstring(number)) != 0)
        ++number;
    return Join({usual, std::to_wstring(number), L":"});
}

CComBSTR PrintSchemaXmlDocument::TypesPrefix() const {
    return SchemaPrefix(m_xsdPrefix, L"xsd", PrintSchema::SCHEMA_DEF_URI);
}

CComPtr<IXMLDOMElement> PrintSchemaXmlDocument::CreateValue(const wchar_t* type, const wchar_t* text) {
    CComPtr<IXMLDOMElement> value = CreateFrameworkElement(PrintSchema::VALUE_ELEMENT_NAME);
    if (type != nullptr) {
        // A document that never had a typed value need not declare the two namespaces of the type. The DOM
        // declares that of the attribute where it is used; that of its text is declared here.
        const CComBSTR xsi = SchemaPrefix(m_xsiPrefix, L"xsi", PrintSchema::SCHEMA_INST_URI);
        const CComBSTR xsd = TypesPrefix();
        if (m_xsdPrefix.m_str == nullptr)
            AppendXMLAttribute(value, Join({L"xmlns:", View(xsd).substr(0, xsd.Length() - 1)}), L"",
                               PrintSchema::SCHEMA_DEF_URI);
        AppendXMLAttribute(value, Join({View(xsi), PrintSchema::SCHEMA_TYPE}), PrintSchema::SCHEMA_INST_URI,
                           Join({View(xsd), type}));
    }
    ThrowIfFailed(value->put_text(Make(View(text))));
    return value;
}

HRESULT PrintSchemaXmlDocument::CreateScoredProperty(const wchar_t* name, IXMLDOMElement** out) {
    const OperationScope operation("PrintSchemaXmlDocument::CreateScoredProperty");
    RequireOut(out);
    *out = nullptr;
    RequireTexts({name});
    // Deliberate: always a public name.
    *out = CreateFrameworkElement(PrintSchema::SCORED_PROP_ELEMENT_NAME, m_keywordsPrefix, name).Detach();
    return S_OK;
}

HRESULT PrintSchemaXmlDocument::CreateScoredProperty(const wchar_t* name, const wchar_t* type,
                                                     const wchar_t* value, IXMLDOMElement** out) {
    const OperationScope operation("PrintSchemaXmlDocument::CreateScoredProperty");
    RequireOut(out);
    *out = nullptr;
    RequireTexts({name, type, value});
    CComPtr<IXMLDOMElement> property;
    CreateScoredProperty(name, &property);
    AppendChild(property, CreateValue(type, value));
    *out = property.Detach();
    return S_OK;
}

HRESULT PrintSchemaXmlDocument::CreateScoredProperty(const wchar_t* name, IXMLDOMNode* child,
                                                     IXMLDOMElement** out) {
    const OperationScope operation("PrintSchemaXmlDocument::CreateScoredProperty");
    RequireOut(out);
    *out = nullptr;
    if (child == nullptr) ThrowComException(E_POINTER);
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
    const OperationScope operation("PrintSchemaXmlDocument::CreateProperty");
    RequireOut(out);
    *out = nullptr;
    RequireTexts({name});
    *out = CreateFrameworkElement(PrintSchema::PROPERTY_ELEMENT_NAME, GetNsPrefix(ns), name).Detach();
    return S_OK;
}

HRESULT PrintSchemaXmlDocument::CreateProperty(MsPrintTicketNamespacesEnum ns, const wchar_t* name,
                                               const wchar_t* type, const wchar_t* value,
                                               IXMLDOMElement** out) {
    const OperationScope operation("PrintSchemaXmlDocument::CreateProperty");
    RequireOut(out);
    *out = nullptr;
    RequireTexts({name, type, value});
    CComPtr<IXMLDOMElement> property;
    CreateProperty(ns, name, &property);
    AppendChild(property, CreateValue(type, value));
    *out = property.Detach();
    return S_OK;
}

HRESULT PrintSchemaXmlDocument::CreateParameterRef(const wchar_t* prefix, const wchar_t* name,
                                                   IXMLDOMElement** out) {
    const OperationScope operation("PrintSchemaXmlDocument::CreateParameterRef");
    RequireOut(out);
    *out = nullptr;
    RequireTexts({prefix, name});
    *out = CreateFrameworkElement(PrintSchema::PARAM_REF_ELEMENT_NAME, prefix, name).Detach();
    return S_OK;
}

HRESULT PrintSchemaXmlDocument::CreateParameterRefScoredProperty(const wchar_t* scoredPrefix,
                                                                 const wchar_t* scoredName,
                                                                 const wchar_t* refPrefix,
                                                                 const wchar_t* refName,
                                                                 IXMLDOMElement** out) {
    const OperationScope operation("PrintSchemaXmlDocument::CreateParameterRefScoredProperty");
    RequireOut(out);
    *out = nullptr;
    RequireTexts({scoredName});
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
    const OperationScope operation("PrintSchemaXmlDocument::AppendChildIntegerProperty");
    RequireParent(parent);
    CXString text;
    text.Format(L"%i", value);
    CComPtr<IXMLDOMElement> property;
    CreateProperty(ns, name, PrintSchema::SCHEMA_INTEGER, text, &property);
    return AppendChild(parent, property);
}

HRESULT PrintSchemaXmlDocument::AppendChildStringProperty(IXMLDOMNode* parent, MsPrintTicketNamespacesEnum ns,
                                                          const wchar_t* name, const wchar_t* value) {
    const OperationScope operation("PrintSchemaXmlDocument::AppendChildStringProperty");
    RequireParent(parent);
    CComPtr<IXMLDOMElement> property;
    CreateProperty(ns, name, PrintSchema::SCHEMA_STRING, value, &property);
    return AppendChild(parent, property);
}

HRESULT PrintSchemaXmlDocument::AppendChildIntegerScoredProperty(IXMLDOMNode* parent, const wchar_t* name,
                                                                 int value) {
    const OperationScope operation("PrintSchemaXmlDocument::AppendChildIntegerScoredProperty");
    RequireParent(parent);
    CComPtr<IXMLDOMElement> property;
    CreateIntegerScoredProperty(name, value, &property);
    return AppendChild(parent, property);
}

HRESULT PrintSchemaXmlDocument::AppendChildQNameScoredProperty(IXMLDOMNode* parent, const wchar_t* name,
                                                               const wchar_t* value) {
    const OperationScope operation("PrintSchemaXmlDocument::AppendChildQNameScoredProperty");
    RequireParent(parent);
    RequireTexts({value});
    CComPtr<IXMLDOMElement> property;
    CreateScoredProperty(name, PrintSchema::SCHEMA_QNAME, Join({View(m_keywordsPrefix), value}), &property);
    return AppendChild(parent, property);
}

HRESULT PrintSchemaXmlDocument::AppendChildParameterRefScoredProperty(IXMLDOMNode* parent,
                                                                      const wchar_t* scoredPrefix,
                                                                      const wchar_t* scoredName,
                                                                      const wchar_t* refPrefix,
                                                                      const wchar_t* refName) {
    const OperationScope operation("PrintSchemaXmlDocument::AppendChildParameterRefScoredProperty");
    RequireParent(parent);
    CComPtr<IXMLDOMElement> property;
    CreateParameterRefScoredProperty(scoredPrefix, scoredName, refPrefix, refName, &property);
    return AppendChild(parent, property);
}

// ---- The document as a whole

HRESULT PrintSchemaXmlDocument::SetProcessingInstructionsEncodingUtf8() {
    const OperationScope operation("PrintSchemaXmlDocument::SetProcessingInstructionsEncodingUtf8");
    if (!m_document) return S_FALSE;
    CComPtr<IXMLDOMProcessingInstruction> declaration;
    HRESULT hr = m_document->createProcessingInstruction(
        Make(L"xml"), Make(L" version='1.0' encoding='UTF-8'"), &declaration);
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
    const OperationScope operation("PrintSchemaXmlDocument::AddUserKeywordsNamespaceDefinitionIfMissing");
    try {
        CComBSTR prefix;
        if (GetPrefixFromURI(PrintSchema::USER_KEYWORDS_URI, &prefix) == S_OK) return S_OK;
        CComPtr<IXMLDOMElement> root;
        const HRESULT hr = m_rootNode.QueryInterface(&root);
        if (FAILED(hr)) return hr;
        // To bind the prefix anew would make private names of those that have it.
        if (!PrivateKeywordNames(*this).CanHaveUsualPrefix()) return E_FAIL;
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
