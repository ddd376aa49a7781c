#include "PrintSchema/PrintCapabilitiesXmlDocument.h"

#include "ComSupport/MsSafeVariant.h"
#include "ComSupport/ThrowHresult.h"
#include "PrintSchema/Bstr.h"
#include "PrintSchema/DocumentQuery.h"
#include "PrintSchema/PrintTicketQueryBuilder.h"
#include "PrintSchema/PrintTicketXmlDocument.h"
#include "PrintSchema/TreeChange.h"

#include <SystemServices/OperatingSystem.h>
#include <SystemServices/SetThreadTokenWrapper.h>

#include <filterpipeline.h>
#include <objbase.h>
#include <prntvpt.h>

#include <initializer_list>

using namespace PrintSchemaText;
using PrintSchema::FrameworkNs;
using PrintSchema::KeywordsNs;

namespace {

/// In microns.
struct Size {
    int width;
    int length;
};
constexpr Size letter = {215900, 279400};
constexpr Size a4 = {210000, 297000};

/// A query from a node downward: what the builder adds is relative to that node.
class QueryFromNode : public PrintTicketQueryBuilder {
public:
    explicit QueryFromNode(const wchar_t* frameworkPrefix) : PrintTicketQueryBuilder(frameworkPrefix, L".") {}

    CComBSTR Text() const {
        CComBSTR text;
        GetQuery(&text);
        return text;
    }
};

class OpenProvider {
public:
    explicit OpenProvider(HPTPROVIDER provider) : m_provider(provider) {}
    ~OpenProvider() { ::PTCloseProvider(m_provider); }
    OpenProvider(const OpenProvider&) = delete;
    OpenProvider& operator=(const OpenProvider&) = delete;

private:
    HPTPROVIDER m_provider;
};

void RequireTexts(std::initializer_list<const wchar_t*> texts) {
    for (const wchar_t* text : texts)
        if (IsEmpty(text)) ThrowComException(E_INVALIDARG);
}

template <class Interface>
void RequireOut(Interface** out) {
    if (out == nullptr) ThrowComException(E_POINTER);
    *out = nullptr;
}

void RequireNode(const IXMLDOMNode* node) {
    if (node == nullptr) ThrowComException(E_POINTER);
}

CXString IntegerText(int value) {
    CXString text;
    text.Format(L"%i", value);
    return text;
}

CXString RealText(float value) {
    CXString text;
    text.Format(L"%.2f", static_cast<double>(value));
    return text;
}

} // namespace

PrintCapabilitiesXmlDocument::PrintCapabilitiesXmlDocument(IXMLDOMDocument2* document)
    : PrintSchemaXmlDocument(PrintSchema::PRINTCAPABILITIES_NAME, document) {}

PrintCapabilitiesXmlDocument::PrintCapabilitiesXmlDocument(IStream* stream)
    : PrintSchemaXmlDocument(PrintSchema::PRINTCAPABILITIES_NAME, stream) {}

PrintCapabilitiesXmlDocument::PrintCapabilitiesXmlDocument(const CXString& xml)
    : PrintSchemaXmlDocument(PrintSchema::PRINTCAPABILITIES_NAME, xml) {}

std::unique_ptr<PrintCapabilitiesXmlDocument>
PrintCapabilitiesXmlDocument::CreatePrintCapabilitiesXmlDocument(const wchar_t* printerName,
                                                                 void* userToken) {
    const OperationScope operation("PrintCapabilitiesXmlDocument::CreatePrintCapabilitiesXmlDocument");
    const SetThreadTokenWrapper impersonation(userToken);
    HPTPROVIDER provider = nullptr;
    if (FAILED(::PTOpenProvider(printerName, 1, &provider))) return nullptr;
    const OpenProvider guard(provider);
    CComPtr<IStream> stream;
    ThrowIfFailed(::CreateStreamOnHGlobal(nullptr, TRUE, &stream));
    CComBSTR errorText;
    ThrowIfFailed(::PTGetPrintCapabilities(provider, nullptr, stream, &errorText));
    ThrowIfFailed(stream->Seek({}, STREAM_SEEK_SET, nullptr));
    return std::make_unique<PrintCapabilitiesXmlDocument>(static_cast<IStream*>(stream));
}

// ---- Building

CComPtr<IXMLDOMElement> PrintCapabilitiesXmlDocument::CreateNamedElement(const wchar_t* element,
                                                                         const wchar_t* prefix,
                                                                         const wchar_t* name,
                                                                         const wchar_t* displayName) {
    RequireTexts({name, displayName});
    TreeChange change(GetRootNode());
    CComPtr<IXMLDOMElement> created = CreateFrameworkElement(element, prefix, name);
    AppendChildStringProperty(created, KeywordsNs, PrintSchema::DISPLAYNAME_VALUE_NAME, displayName);
    change.Keep();
    return created;
}

void PrintCapabilitiesXmlDocument::AppendProperty(IXMLDOMElement* parent,
                                                  PrintSchema::MsPrintTicketNamespacesEnum ns,
                                                  const wchar_t* name, const wchar_t* type,
                                                  const wchar_t* value) {
    CComPtr<IXMLDOMElement> property;
    CreateProperty(ns, name, type, value, &property);
    AppendChild(parent, property);
}

HRESULT PrintCapabilitiesXmlDocument::CreateFeature(const wchar_t* prefix, const wchar_t* name,
                                                    const wchar_t* displayName, IXMLDOMElement** out) {
    const OperationScope operation("PrintCapabilitiesXmlDocument::CreateFeature");
    RequireOut(out);
    *out = CreateNamedElement(PrintSchema::FEATURE_ELEMENT_NAME, prefix, name, displayName).Detach();
    return S_OK;
}

HRESULT PrintCapabilitiesXmlDocument::CreatePickOneFeature(const wchar_t* prefix, const wchar_t* name,
                                                           const wchar_t* displayName, IXMLDOMElement** out) {
    const OperationScope operation("PrintCapabilitiesXmlDocument::CreatePickOneFeature");
    RequireOut(out);
    TreeChange change(GetRootNode());
    CComPtr<IXMLDOMElement> feature =
        CreateNamedElement(PrintSchema::FEATURE_ELEMENT_NAME, prefix, name, displayName);
    AppendProperty(feature, FrameworkNs, PrintSchema::SELECTIONTYPE_VALUE_NAME, PrintSchema::SCHEMA_QNAME,
                   Join({View(KeywordsPrefix()), PrintSchema::PICKONE_VALUE_NAME}));
    change.Keep();
    *out = feature.Detach();
    return S_OK;
}

HRESULT PrintCapabilitiesXmlDocument::CreateOption(const wchar_t* prefix, const wchar_t* name,
                                                   const wchar_t* displayName, IXMLDOMElement** out) {
    const OperationScope operation("PrintCapabilitiesXmlDocument::CreateOption");
    RequireOut(out);
    *out = CreateNamedElement(PrintSchema::OPTION_ELEMENT_NAME, prefix, name, displayName).Detach();
    return S_OK;
}

HRESULT PrintCapabilitiesXmlDocument::CreateAndAppendOption(const wchar_t* prefix, const wchar_t* name,
                                                            const wchar_t* displayName, IXMLDOMNode* parent) {
    const OperationScope operation("PrintCapabilitiesXmlDocument::CreateAndAppendOption");
    if (parent == nullptr) ThrowComException(E_INVALIDARG);
    TreeChange change(GetRootNode());
    CComPtr<IXMLDOMElement> option;
    CreateOption(prefix, name, displayName, &option);
    AppendChild(parent, option);
    change.Keep();
    return S_OK;
}

HRESULT PrintCapabilitiesXmlDocument::CreateIntegerParameterDef(const wchar_t* prefix, const wchar_t* name,
                                                                const wchar_t* mandatoryKeyword,
                                                                const wchar_t* displayName, int defaultValue,
                                                                int minValue, int maxValue, int multiple,
                                                                const wchar_t* unitType,
                                                                IXMLDOMElement** out) {
    const OperationScope operation("PrintCapabilitiesXmlDocument::CreateIntegerParameterDef");
    return CreateNumberParameterDef({prefix, name, mandatoryKeyword, displayName, unitType},
                                    PrintSchema::SCHEMA_INTEGER,
                                    {IntegerText(defaultValue), IntegerText(minValue), IntegerText(maxValue),
                                     multiple > 0 ? IntegerText(multiple) : CXString()},
                                    out);
}

HRESULT PrintCapabilitiesXmlDocument::CreateRealParameterDef(const wchar_t* prefix, const wchar_t* name,
                                                             const wchar_t* mandatoryKeyword,
                                                             const wchar_t* displayName, float defaultValue,
                                                             float minValue, float maxValue, float multiple,
                                                             const wchar_t* unitType, IXMLDOMElement** out) {
    const OperationScope operation("PrintCapabilitiesXmlDocument::CreateRealParameterDef");
    return CreateNumberParameterDef({prefix, name, mandatoryKeyword, displayName, unitType},
                                    PrintSchema::SCHEMA_DECIMAL,
                                    {RealText(defaultValue), RealText(minValue), RealText(maxValue),
                                     multiple > 0 ? RealText(multiple) : CXString()},
                                    out);
}

HRESULT PrintCapabilitiesXmlDocument::CreateNumberParameterDef(const ParameterTexts& texts,
                                                               const wchar_t* type, const Limits& limits,
                                                               IXMLDOMElement** out) {
    RequireOut(out);
    TreeChange change(GetRootNode());
    CComPtr<IXMLDOMElement> parameter = CreateParameterDef(texts, type);
    AppendProperty(parameter, FrameworkNs, PrintSchema::DEFAULTVAL_VALUE_NAME, type, limits.defaultValue);
    AppendProperty(parameter, FrameworkNs, PrintSchema::MAX_VALUE_NAME, type, limits.maxValue);
    AppendProperty(parameter, FrameworkNs, PrintSchema::MIN_VALUE_NAME, type, limits.minValue);
    AppendMandatoryAndUnit(parameter, texts);
    if (!limits.multiple.IsEmpty())
        AppendProperty(parameter, FrameworkNs, PrintSchema::MULTIPLE_VALUE_NAME, type, limits.multiple);
    AppendChildStringProperty(parameter, KeywordsNs, PrintSchema::DISPLAYNAME_VALUE_NAME, texts.displayName);
    change.Keep();
    *out = parameter.Detach();
    return S_OK;
}

HRESULT PrintCapabilitiesXmlDocument::CreateStringParameterDef(const wchar_t* prefix, const wchar_t* name,
                                                               const wchar_t* mandatoryKeyword,
                                                               const wchar_t* displayName,
                                                               const wchar_t* defaultValue, int minLength,
                                                               int maxLength, const wchar_t* unitType,
                                                               IXMLDOMElement** out) {
    const OperationScope operation("PrintCapabilitiesXmlDocument::CreateStringParameterDef");
    RequireOut(out);
    RequireTexts({defaultValue});
    const ParameterTexts texts = {prefix, name, mandatoryKeyword, displayName, unitType};
    TreeChange change(GetRootNode());
    CComPtr<IXMLDOMElement> parameter = CreateParameterDef(texts, PrintSchema::SCHEMA_STRING);
    AppendChildIntegerProperty(parameter, FrameworkNs, PrintSchema::MAX_LENGTH_NAME, maxLength);
    AppendChildIntegerProperty(parameter, FrameworkNs, PrintSchema::MIN_LENGTH_NAME, minLength);
    AppendMandatoryAndUnit(parameter, texts);
    AppendChildStringProperty(parameter, KeywordsNs, PrintSchema::DISPLAYNAME_VALUE_NAME, displayName);
    AppendChildStringProperty(parameter, FrameworkNs, PrintSchema::DEFAULTVAL_VALUE_NAME, defaultValue);
    change.Keep();
    *out = parameter.Detach();
    return S_OK;
}

CComPtr<IXMLDOMElement> PrintCapabilitiesXmlDocument::CreateParameterDef(const ParameterTexts& texts,
                                                                         const wchar_t* type) {
    RequireTexts({texts.name, texts.mandatoryKeyword, texts.displayName, texts.unitType});
    CComPtr<IXMLDOMElement> parameter =
        CreateFrameworkElement(PrintSchema::PARAM_DEF_ELEMENT_NAME, texts.prefix, texts.name);
    AppendProperty(parameter, FrameworkNs, PrintSchema::DATATYPE_VALUE_NAME, PrintSchema::SCHEMA_QNAME,
                   Join({View(TypesPrefix()), type}));
    return parameter;
}

void PrintCapabilitiesXmlDocument::AppendMandatoryAndUnit(IXMLDOMElement* parameter,
                                                          const ParameterTexts& texts) {
    AppendProperty(parameter, FrameworkNs, PrintSchema::MANDATORY_VALUE_NAME, PrintSchema::SCHEMA_QNAME,
                   Join({View(KeywordsPrefix()), texts.mandatoryKeyword}));
    AppendChildStringProperty(parameter, FrameworkNs, PrintSchema::UNITTYPE_VALUE_NAME, texts.unitType);
}

// ---- Editing

HRESULT PrintCapabilitiesXmlDocument::ReplaceDisplayNamePropertyValue(IXMLDOMNode* node,
                                                                      const wchar_t* displayName) {
    const OperationScope operation("PrintCapabilitiesXmlDocument::ReplaceDisplayNamePropertyValue");
    if (node == nullptr || IsEmpty(displayName)) ThrowComException(E_INVALIDARG);
    RequireDocument();
    QueryFromNode query(FrameworkPrefix());
    query.AddChildPropertyValue(KeywordsPrefix(), PrintSchema::DISPLAYNAME_VALUE_NAME);
    CComPtr<IXMLDOMNode> value;
    ThrowIfFailed(node->selectSingleNode(query.Text(), &value));
    if (!value) return E_ELEMENT_NOT_FOUND;
    ThrowIfFailed(value->put_text(Make(displayName)));
    return S_OK;
}

HRESULT PrintCapabilitiesXmlDocument::ReplaceOptionDisplayNamePropertyValue(IXMLDOMNode* feature,
                                                                            const wchar_t* prefix,
                                                                            const wchar_t* option,
                                                                            const wchar_t* displayName) {
    CComPtr<IXMLDOMNode> found;
    if (GetChildOptionNodeIfExists(feature, prefix, option, &found) != S_OK) return E_ELEMENT_NOT_FOUND;
    return ReplaceDisplayNamePropertyValue(found, displayName);
}

HRESULT PrintCapabilitiesXmlDocument::DeleteParameterDefNodeIfExists(const wchar_t* prefix,
                                                                     const wchar_t* name) {
    CComPtr<IXMLDOMNode> node;
    if (GetParameterDefNodeIfExists(prefix, name, &node) != S_OK) return S_FALSE;
    return DeleteNode(node);
}

// ---- Reading

HRESULT PrintCapabilitiesXmlDocument::GetChildOptionNodes(IXMLDOMNode* feature, IXMLDOMNodeList** out) const {
    const OperationScope operation("PrintCapabilitiesXmlDocument::GetChildOptionNodes");
    RequireOut(out);
    RequireNode(feature);
    RequireDocument();
    QueryFromNode query(FrameworkPrefix());
    query.AddOption();
    ThrowIfFailed(feature->selectNodes(query.Text(), out));
    return S_OK;
}

HRESULT PrintCapabilitiesXmlDocument::GetChildOptionNodeIfExists(IXMLDOMNode* feature, const wchar_t* prefix,
                                                                 const wchar_t* name,
                                                                 IXMLDOMNode** out) const {
    const OperationScope operation("PrintCapabilitiesXmlDocument::GetChildOptionNodeIfExists");
    RequireQuestion(name, out);
    RequireNode(feature);
    QueryFromNode query(FrameworkPrefix());
    query.AddChildOptionName(prefix, name);
    ThrowIfFailed(feature->selectSingleNode(query.Text(), out));
    return *out != nullptr ? S_OK : S_FALSE;
}

HRESULT PrintCapabilitiesXmlDocument::GetParameterDefNodeIfExists(const wchar_t* prefix, const wchar_t* name,
                                                                  IXMLDOMNode** out) const {
    const OperationScope operation("PrintCapabilitiesXmlDocument::GetParameterDefNodeIfExists");
    RequireQuestion(name, out);
    DocumentQuery query(*this);
    query.AddParameterDef(prefix, name);
    *out = query.FindFirst().Detach();
    return *out != nullptr ? S_OK : S_FALSE;
}

HRESULT PrintCapabilitiesXmlDocument::ReadPropertyValue(IXMLDOMNode* node, BSTR query, CXString& out) const {
    out.Empty();
    CComPtr<IXMLDOMNode> property;
    ThrowIfFailed(node->selectSingleNode(query, &property));
    if (!property) return S_FALSE;
    QueryFromNode valueQuery(FrameworkPrefix());
    valueQuery.AddValue();
    CComPtr<IXMLDOMNode> valueNode;
    ThrowIfFailed(property->selectSingleNode(valueQuery.Text(), &valueNode));
    if (!valueNode) return S_FALSE;
    MsSafeVariant value;
    ThrowIfFailed(valueNode->get_nodeTypedValue(&value));
    if (value.vt != VT_BSTR) return S_FALSE;
    out = value.bstrVal; // null is the empty text
    return S_OK;
}

HRESULT PrintCapabilitiesXmlDocument::GetChildScoredPropertyValueIfExists(IXMLDOMNode* node,
                                                                          const wchar_t* name,
                                                                          CXString& out) const {
    const OperationScope operation("PrintCapabilitiesXmlDocument::GetChildScoredPropertyValueIfExists");
    RequireNode(node);
    RequireTexts({name});
    RequireDocument();
    QueryFromNode query(FrameworkPrefix());
    query.AddScoredProperty(KeywordsPrefix(), name);
    return ReadPropertyValue(node, query.Text(), out);
}

CXString PrintCapabilitiesXmlDocument::GetChildScoredPropertyValueAsString(IXMLDOMNode* node,
                                                                           const wchar_t* name) const {
    const OperationScope operation("PrintCapabilitiesXmlDocument::GetChildScoredPropertyValueAsString");
    CXString text;
    if (GetChildScoredPropertyValueIfExists(node, name, text) != S_OK) ThrowComException(E_FAIL);
    return text;
}

int PrintCapabilitiesXmlDocument::GetChildScoredPropertyValueAsInteger(IXMLDOMNode* node,
                                                                       const wchar_t* name) const {
    const OperationScope operation("PrintCapabilitiesXmlDocument::GetChildScoredPropertyValueAsInteger");
    return IntegerOf(Make(GetChildScoredPropertyValueAsString(node, name).View()));
}

CXString PrintCapabilitiesXmlDocument::GetChildDisplayNamePropertyValue(IXMLDOMNode* node) const {
    const OperationScope operation("PrintCapabilitiesXmlDocument::GetChildDisplayNamePropertyValue");
    RequireNode(node);
    RequireDocument();
    QueryFromNode query(FrameworkPrefix());
    query.AddProperty(KeywordsPrefix(), PrintSchema::DISPLAYNAME_VALUE_NAME);
    CXString text;
    if (ReadPropertyValue(node, query.Text(), text) != S_OK) ThrowComException(E_FAIL);
    return text;
}

void PrintCapabilitiesXmlDocument::GetWidthAndLengthPropertyValues(PrintTicketXmlDocument* ticket,
                                                                   IXMLDOMNode* option, int& width,
                                                                   int& length) const {
    const OperationScope operation("PrintCapabilitiesXmlDocument::GetWidthAndLengthPropertyValues");
    using namespace PrintSchema::PageMediaSize;
    RequireNode(option);
    CComBSTR name;
    ReadAttribute(option, PrintSchema::NAME_ATTRIBUTE_NAME, name);
    const std::wstring_view keyword = View(name).substr(View(name).find(L':') + 1);
    if (keyword != CustomMediaSize && keyword != PSCustomMediaSize) {
        width = GetChildScoredPropertyValueAsInteger(option, MEDIASIZEWIDTH_PROP);
        length = GetChildScoredPropertyValueAsInteger(option, MEDIASIZEHEIGHT_PROP);
        return;
    }

    if (ticket == nullptr) ThrowComException(E_POINTER);
    Size size = {};
    CComBSTR chosen;
    const CComBSTR prefix = ticket->GetKeywordsNsPrefix();
    if (ticket->GetFeatureOption(prefix, PAGESIZE_FEATURE, &chosen, nullptr) == S_OK &&
        View(chosen) == CustomMediaSize) {
        const auto read = [&](const wchar_t* property, int& value) {
            ThrowIfFailed(ticket->GetScoredPropertyValue(PAGESIZE_FEATURE, true, property, &value));
        };
        read(MEDIASIZEWIDTH_PROP, size.width);
        read(MEDIASIZEHEIGHT_PROP, size.length);
    }
    if (size.width == 0 || size.length == 0) size = OperatingSystem::UseEnglishPaperSizes() ? letter : a4;
    width = size.width;
    length = size.length;
}

HRESULT PrintCapabilitiesXmlDocument::DebugDumpXmlToFileInTempDirectory(const CXString& name) const {
    return PrintSchemaXmlDocument::DebugDumpXmlToFileInTempDirectory(L"PrintCapabilities_" + name, L"");
}
