// Exported operations that take the name of their caller's operation, as they did before OperationScope said
// it. Nothing here calls them; they stay for what was linked with them.

#include "PrintSchema/PrintCapabilitiesXmlDocument.h"
#include "PrintSchema/PrintTicketQueryBuilder.h"
#include "PrintSchema/PrintTicketXmlDocument.h"

#include <LowLevelFacilities/Failures/OperationScope.h>

void PrintSchemaXmlDocument::RequireDocument(const char* function) const {
    const OperationScope operation(function);
    RequireDocument();
}

void PrintSchemaXmlDocument::RequireQuestion(const wchar_t* name, IXMLDOMNode** out,
                                             const char* function) const {
    const OperationScope operation(function);
    RequireQuestion(name, out);
}

CComPtr<IXMLDOMNodeList> PrintSchemaXmlDocument::SelectNodes(BSTR xpath, const char* function) const {
    const OperationScope operation(function);
    return SelectNodes(xpath);
}

CComPtr<IXMLDOMNode> PrintSchemaXmlDocument::FindAttribute(IXMLDOMNode* node, const wchar_t* name,
                                                           const char* function) {
    const OperationScope operation(function);
    return FindAttribute(node, name);
}

bool PrintSchemaXmlDocument::ReadAttribute(IXMLDOMNode* node, const wchar_t* name, CComBSTR& text,
                                           const char* function) {
    const OperationScope operation(function);
    return ReadAttribute(node, name, text);
}

void PrintSchemaXmlDocument::CreateDocument(const char* function) {
    const OperationScope operation(function);
    CreateDocument();
}

void PrintSchemaXmlDocument::FinishLoading(HRESULT hr, VARIANT_BOOL isLoaded, const char* function) {
    const OperationScope operation(function);
    FinishLoading(hr, isLoaded);
}

HRESULT PrintSchemaXmlDocument::TryGetPrefixFromURI(const wchar_t* uri, wchar_t** out,
                                                    const char* function) const {
    const OperationScope operation(function);
    return TryGetPrefixFromURI(uri, out);
}

CComPtr<IXMLDOMNode> PrintSchemaXmlDocument::FindValueNode(IXMLDOMNode* node, const char* function) const {
    const OperationScope operation(function);
    return FindValueNode(node);
}

CComPtr<IXMLDOMElement> PrintTicketXmlDocument::CreateParameterInit(const wchar_t* prefix,
                                                                    const wchar_t* name, const wchar_t* type,
                                                                    const wchar_t* value,
                                                                    const char* function) {
    const OperationScope operation(function);
    return CreateParameterInit(prefix, name, type, value);
}

CComPtr<IXMLDOMElement> PrintCapabilitiesXmlDocument::CreateNamedElement(const wchar_t* element,
                                                                         const wchar_t* prefix,
                                                                         const wchar_t* name,
                                                                         const wchar_t* displayName,
                                                                         const char* function) {
    const OperationScope operation(function);
    return CreateNamedElement(element, prefix, name, displayName);
}

CComPtr<IXMLDOMElement> PrintCapabilitiesXmlDocument::CreateParameterDef(const ParameterTexts& texts,
                                                                         const wchar_t* type,
                                                                         const char* function) {
    const OperationScope operation(function);
    return CreateParameterDef(texts, type);
}

HRESULT PrintCapabilitiesXmlDocument::CreateNumberParameterDef(const ParameterTexts& texts,
                                                               const wchar_t* type, const Limits& limits,
                                                               IXMLDOMElement** out, const char* function) {
    const OperationScope operation(function);
    return CreateNumberParameterDef(texts, type, limits, out);
}

void PrintCapabilitiesXmlDocument::AppendMandatoryAndUnit(IXMLDOMElement* parameter,
                                                          const ParameterTexts& texts, const char* function) {
    const OperationScope operation(function);
    AppendMandatoryAndUnit(parameter, texts);
}

HRESULT PrintCapabilitiesXmlDocument::ReadPropertyValue(IXMLDOMNode* node, BSTR query, CXString& out,
                                                        const char* function) const {
    const OperationScope operation(function);
    return ReadPropertyValue(node, query, out);
}

void PrintTicketQueryBuilder::AddNamed(const wchar_t* element, std::span<const CComBSTR> names,
                                       const char* function) {
    const OperationScope operation(function);
    AddNamed(element, names);
}

void PrintTicketQueryBuilder::AddNamed(const wchar_t* axis, const wchar_t* element, const wchar_t* prefix,
                                       const wchar_t* name, const char* function) {
    const OperationScope operation(function);
    AddNamed(axis, element, prefix, name);
}

void PrintTicketQueryBuilder::AddChild(const wchar_t* element, const char* function) {
    const OperationScope operation(function);
    AddChild(element);
}

void PrintTicketQueryBuilder::RequireFrameworkPrefix(const char* function) const {
    const OperationScope operation(function);
    RequireFrameworkPrefix();
}
