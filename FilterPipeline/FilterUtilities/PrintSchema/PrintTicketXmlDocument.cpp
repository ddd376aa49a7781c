#include "PrintSchema/PrintTicketXmlDocument.h"

#include "ComSupport/ThrowHresult.h"
#include "PrintSchema/Bstr.h"
#include "PrintSchema/DocumentQuery.h"
#include "PrintSchema/TreeChange.h"

#include <LowLevelFacilities/Failures/CPComException.h>
#include <SystemServices/OrvelUtilities.h>

#include <filterpipeline.h>

#include <algorithm>
#include <new>
#include <string>

using namespace PrintSchemaText;

namespace {

constexpr wchar_t ocptForXps[] = L"Orvel_OcptForXps";
constexpr wchar_t ocptForNonXps[] = L"Orvel_OcptForNonXps";

/// Of the text in memory, at two bytes a character.
constexpr int longestSettingsText = 4000 / 2;

HRESULT FoundOrNot(HRESULT hr) { return hr == S_FALSE ? E_ELEMENT_NOT_FOUND : hr; }

/// Text that looks like a CDATA section and is none: written as text, its brackets are escaped, and a reader
/// gets the wrapper back as part of the value.
CComBSTR CDataWrapped(const CXString& text) { return Join({L"<![CDATA[\n", text.View(), L"\n]]>"}); }

HRESULT PutIntoBag(IPrintPipelinePropertyBag* bag, const wchar_t* key, const CXString& text) {
    if (bag == nullptr) return E_POINTER;
    const CComBSTR copy = Make(text.View());
    const VARIANT value = Borrowed(copy);
    bag->DeleteProperty(key);
    return bag->AddProperty(key, &value);
}

} // namespace

PrintTicketXmlDocument::PrintTicketXmlDocument(IXMLDOMDocument2* document)
    : PrintSchemaXmlDocument(PrintSchema::PRINTTICKET_NAME, document) {}

PrintTicketXmlDocument::PrintTicketXmlDocument(IXMLDOMDocument2* document, PrivateNames privateNames)
    : PrintSchemaXmlDocument(PrintSchema::PRINTTICKET_NAME, document, privateNames) {}

PrintTicketXmlDocument::PrintTicketXmlDocument(IStream* stream)
    : PrintSchemaXmlDocument(PrintSchema::PRINTTICKET_NAME, stream) {}

PrintTicketXmlDocument::PrintTicketXmlDocument(const CXString& xml)
    : PrintSchemaXmlDocument(PrintSchema::PRINTTICKET_NAME, xml) {}

CXString PrintTicketXmlDocument::GetBoilerplateForEmptyPrintTicket() {
    CXString ticket;
    ticket.Format(L"<?xml version=\"1.0\" encoding=\"UTF-8\"?>"
                  L"<psf:PrintTicket xmlns:psf=\"%s\" xmlns:psk=\"%s\" xmlns:pskv11=\"%s\" xmlns:xsi=\"%s\" "
                  L"xmlns:xsd=\"%s\" version=\"1\" xmlns:ok=\"%s\"></psf:PrintTicket>",
                  PrintSchema::FRAMEWORK_URI, PrintSchema::KEYWORDS_URI, PrintSchema::KEYWORDSV11_URI,
                  PrintSchema::SCHEMA_INST_URI, PrintSchema::SCHEMA_DEF_URI, PrintSchema::USER_KEYWORDS_URI);
    return ticket;
}

const CComBSTR& PrintTicketXmlDocument::Prefix(bool isPublic) const {
    return isPublic ? KeywordsPrefix() : UserKeywordsPrefix();
}

// ---- Reading

HRESULT PrintTicketXmlDocument::FeaturePresent(const wchar_t* name, bool isPublic, IXMLDOMNode** out) const {
    if (out != nullptr) *out = nullptr;
    CComPtr<IXMLDOMNode> node;
    const HRESULT hr = GetFeatureNodeIfExists(Prefix(isPublic), name, &node);
    if (out != nullptr) *out = node.Detach();
    return FoundOrNot(hr);
}

HRESULT PrintTicketXmlDocument::GetFeatureOption(const wchar_t* prefix, const wchar_t* name, wchar_t** option,
                                                 wchar_t** optionPrefix) const {
    const OperationScope operation("PrintTicketXmlDocument::GetFeatureOption");
    if (option == nullptr) ThrowComException(E_POINTER);
    if (IsEmpty(name)) ThrowComException(E_INVALIDARG);
    *option = nullptr;
    if (optionPrefix != nullptr) *optionPrefix = nullptr;

    RequireDocument();
    DocumentQuery query(*this);
    query.AddFeature(prefix, name);
    query.AddOption();
    const CComPtr<IXMLDOMNode> node = query.FindFirst();
    if (!node) return E_ELEMENT_NOT_FOUND;

    CComBSTR fullName;
    std::size_t split = 0;
    if (ReadAttribute(node, PrintSchema::NAME_ATTRIBUTE_NAME, fullName)) {
        split = View(fullName).find(L':') + 1;
        if (split == 0) ThrowComException(E_FAIL);
    }
    CComBSTR local = Make(View(fullName).substr(split));
    if (optionPrefix != nullptr) *optionPrefix = Make(View(fullName).substr(0, split)).Detach();
    *option = local.Detach();
    return S_OK;
}

HRESULT PrintTicketXmlDocument::GetSubFeatureOption(const wchar_t* feature, bool featureIsPublic,
                                                    const wchar_t* subFeature, bool subFeatureIsPublic,
                                                    wchar_t** option) const {
    const OperationScope operation("PrintTicketXmlDocument::GetSubFeatureOption");
    if (option == nullptr) ThrowComException(E_POINTER);
    *option = nullptr;
    if (IsEmpty(feature) || IsEmpty(subFeature)) ThrowComException(E_INVALIDARG);
    RequireDocument();
    DocumentQuery query(*this);
    query.AddFeature(Prefix(featureIsPublic), feature);
    query.AddFeature(Prefix(subFeatureIsPublic), subFeature);
    query.AddOption();
    return OptionNameOf(query.FindFirst(), option);
}

HRESULT PrintTicketXmlDocument::QueryNodeOption(const wchar_t* xpath, wchar_t** option) const {
    const OperationScope operation("PrintTicketXmlDocument::QueryNodeOption");
    if (option == nullptr) ThrowComException(E_POINTER);
    *option = nullptr;
    CComPtr<IXMLDOMNode> node;
    GetNode(xpath, &node);
    return OptionNameOf(node, option);
}

HRESULT PrintTicketXmlDocument::OptionNameOf(IXMLDOMNode* node, wchar_t** option) const {
    CComBSTR name;
    if (node == nullptr || !ReadAttribute(node, PrintSchema::NAME_ATTRIBUTE_NAME, name))
        return E_ELEMENT_NOT_FOUND;
    StripKeywordNamespace(&name);
    *option = name.Detach();
    return S_OK;
}

HRESULT PrintTicketXmlDocument::StripKeywordNamespace(wchar_t** value) const {
    const OperationScope operation("PrintTicketXmlDocument::StripKeywordNamespace");
    if (value == nullptr) ThrowComException(E_POINTER);
    const std::wstring_view text = View(*value); // null is a BSTR without characters
    if (text.empty()) ThrowComException(E_INVALIDARG);
    for (const std::wstring_view prefix :
         {View(KeywordsPrefix()), View(UserKeywordsPrefix()), View(PrintSchema::USER_KEYWORDS_NS_PREFIX)}) {
        if (prefix.empty()) continue;
        // Deliberate: the prefix goes from wherever it stands in the text.
        const std::size_t start = text.find(prefix);
        if (start == std::wstring_view::npos) continue;
        CComBSTR stripped = Join({text.substr(0, start), text.substr(start + prefix.size())});
        ::SysFreeString(*value);
        *value = stripped.Detach();
        break;
    }
    return S_OK;
}

HRESULT PrintTicketXmlDocument::GetScoredPropertyValue(const wchar_t* feature, bool isPublic,
                                                       const wchar_t* property, wchar_t** out) const {
    const OperationScope operation("PrintTicketXmlDocument::GetScoredPropertyValue");
    if (IsEmpty(feature) || IsEmpty(property)) ThrowComException(E_INVALIDARG);
    RequireDocument();
    DocumentQuery query(*this);
    query.AddFeature(Prefix(isPublic), feature);
    query.AddScoredProperty(KeywordsPrefix(), property);
    return FoundOrNot(GetNodeValue(query, out));
}

HRESULT PrintTicketXmlDocument::GetScoredPropertyValue(const wchar_t* feature, bool isPublic,
                                                       const wchar_t* property, int* out) const {
    const OperationScope operation("PrintTicketXmlDocument::GetScoredPropertyValue");
    if (out == nullptr) ThrowComException(E_POINTER);
    CComBSTR text;
    const HRESULT hr = GetScoredPropertyValue(feature, isPublic, property, &text);
    if (hr == S_OK) *out = IntegerOf(text);
    return hr;
}

HRESULT PrintTicketXmlDocument::GetScoredPropertyValue(const wchar_t* feature, bool isPublic,
                                                       const wchar_t* property, float* out) const {
    const OperationScope operation("PrintTicketXmlDocument::GetScoredPropertyValue");
    if (out == nullptr) ThrowComException(E_POINTER);
    CComBSTR text;
    const HRESULT hr = GetScoredPropertyValue(feature, isPublic, property, &text);
    if (hr == S_OK) *out = RealOf(text);
    return hr;
}

DocumentQuery PrintTicketXmlDocument::ParameterInitQuery(const wchar_t* prefix, const wchar_t* name) const {
    DocumentQuery query(*this);
    query.AddParameterInit(prefix, name);
    return query;
}

HRESULT PrintTicketXmlDocument::GetParameterInitNodeIfExists(const wchar_t* prefix, const wchar_t* name,
                                                             IXMLDOMNode** out) const {
    const OperationScope operation("PrintTicketXmlDocument::GetParameterInitNodeIfExists");
    RequireQuestion(name, out);
    DocumentQuery query(*this);
    query.AddParameterInit(prefix, name);
    *out = query.FindFirst().Detach();
    return *out != nullptr ? S_OK : S_FALSE;
}

HRESULT PrintTicketXmlDocument::GetParameterInitValueNodeIfExists(const wchar_t* prefix, const wchar_t* name,
                                                                  IXMLDOMNode** out) const {
    const OperationScope operation("PrintTicketXmlDocument::GetParameterInitValueNodeIfExists");
    RequireQuestion(name, out);
    DocumentQuery query(*this);
    query.AddParameterInit(prefix, name);
    query.AddValue();
    *out = query.FindFirst().Detach();
    return *out != nullptr ? S_OK : S_FALSE;
}

HRESULT PrintTicketXmlDocument::GetStringParameterInitValue(const wchar_t* prefix, const wchar_t* name,
                                                            CXString& out) const {
    const OperationScope operation("PrintTicketXmlDocument::GetStringParameterInitValue");
    out.Empty();
    CComPtr<IXMLDOMNode> node;
    const HRESULT hr = GetParameterInitValueNodeIfExists(prefix, name, &node);
    if (hr != S_OK) return hr;
    CComBSTR text;
    ThrowIfFailed(node->get_text(&text));
    out = text.m_str;
    return S_OK;
}

HRESULT PrintTicketXmlDocument::GetOrvelCompleteDocSettingsFromPrintTicket(ByteBuffer& buffer) const {
    const OperationScope operation("PrintTicketXmlDocument::GetOrvelCompleteDocSettingsFromPrintTicket");
    buffer.clear();
    try {
        CComPtr<IXMLDOMNode> node;
        const HRESULT hr = GetParameterInitValueNodeIfExists(
            UserKeywordsPrefix(), PrintSchema::JobOrvelCompleteDocSettings::PARAMETERNAME, &node);
        if (hr != S_OK) return hr;
        CComBSTR text;
        ThrowIfFailed(node->get_text(&text));
        if (text.Length() == 0) return S_OK;
        const int characters = static_cast<int>(text.Length());
        int length = OrvelUtilities::Base64DecodeGetRequiredLength(characters);
        buffer.resize(static_cast<std::size_t>(length));
        const bool isBase64 =
            OrvelUtilities::Base64Decode(text.m_str, characters, buffer.getLpbyte(), &length);
        buffer.resize(isBase64 ? static_cast<std::size_t>(length) : 0);
        return isBase64 ? S_OK : E_FAIL;
    } catch (const CPComException& failure) {
        return failure.GetHresult();
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    }
}

// ---- Editing

HRESULT PrintTicketXmlDocument::SetScoredPropertyValue(const wchar_t* feature, bool isPublic,
                                                       const wchar_t* property, int value) {
    const OperationScope operation("PrintTicketXmlDocument::SetScoredPropertyValue");
    if (IsEmpty(feature) || IsEmpty(property)) ThrowComException(E_INVALIDARG);
    RequireDocument();
    DocumentQuery query(*this);
    query.AddFeature(Prefix(isPublic), feature);
    query.AddScoredProperty(KeywordsPrefix(), property);
    // Deliberate: a negative number becomes a large unsigned text.
    CXString text;
    text.Format(L"%u", value);
    return FoundOrNot(SetNodeValue(query, text));
}

HRESULT PrintTicketXmlDocument::SetChildNodeOptionAttributeValue(const wchar_t* feature, bool isPublic,
                                                                 const wchar_t* attribute,
                                                                 const wchar_t* value) {
    const OperationScope operation("PrintTicketXmlDocument::SetChildNodeOptionAttributeValue");
    if (IsEmpty(feature) || IsEmpty(attribute)) ThrowComException(E_INVALIDARG);
    RequireDocument();
    DocumentQuery query(*this);
    query.AddFeature(Prefix(isPublic), feature);
    return FoundOrNot(SetOptionNodeAttributeValue(query, value, attribute));
}

HRESULT PrintTicketXmlDocument::SetFeatureOption(const wchar_t* feature, bool featureIsPublic,
                                                 const wchar_t* option, bool optionIsPublic) {
    const OperationScope operation("PrintTicketXmlDocument::SetFeatureOption");
    if (IsEmpty(feature) || IsEmpty(option)) ThrowComException(E_INVALIDARG);
    const CComBSTR name = Join({View(Prefix(optionIsPublic)), option});
    TreeChange change(GetRootNode());
    const HRESULT hr =
        SetChildNodeOptionAttributeValue(feature, featureIsPublic, PrintSchema::NAME_ATTRIBUTE_NAME, name);
    if (hr == S_OK) change.Keep();
    return hr;
}

HRESULT PrintTicketXmlDocument::CreateFeatureOptionPair(const wchar_t* name, bool isPublic,
                                                        IXMLDOMElement** feature, IXMLDOMElement** option) {
    const OperationScope operation("PrintTicketXmlDocument::CreateFeatureOptionPair");
    if (feature == nullptr || option == nullptr) ThrowComException(E_POINTER);
    *feature = *option = nullptr;
    if (IsEmpty(name)) ThrowComException(E_INVALIDARG);
    CComPtr<IXMLDOMElement> newFeature =
        CreateFrameworkElement(PrintSchema::FEATURE_ELEMENT_NAME, Prefix(isPublic), name);
    CComPtr<IXMLDOMElement> newOption = CreateFrameworkElement(PrintSchema::OPTION_ELEMENT_NAME);
    AppendChild(newFeature, newOption);
    *feature = newFeature.Detach();
    *option = newOption.Detach();
    return S_OK;
}

HRESULT PrintTicketXmlDocument::CreateFeatureOptionPair(const wchar_t* name, bool isPublic,
                                                        const wchar_t* optionName, bool optionIsPublic,
                                                        IXMLDOMElement** feature, IXMLDOMElement** option) {
    const OperationScope operation("PrintTicketXmlDocument::CreateFeatureOptionPair");
    if (feature == nullptr || option == nullptr) ThrowComException(E_POINTER);
    *feature = *option = nullptr;
    if (IsEmpty(optionName)) ThrowComException(E_INVALIDARG);
    TreeChange change(GetRootNode());
    CComPtr<IXMLDOMElement> newFeature;
    CComPtr<IXMLDOMElement> newOption;
    CreateFeatureOptionPair(name, isPublic, &newFeature, &newOption);
    GiveName(newOption, Prefix(optionIsPublic), optionName);
    change.Keep();
    *feature = newFeature.Detach();
    *option = newOption.Detach();
    return S_OK;
}

CComPtr<IXMLDOMElement> PrintTicketXmlDocument::CreateParameterInit(const wchar_t* prefix,
                                                                    const wchar_t* name, const wchar_t* type,
                                                                    const wchar_t* value) {
    if (IsEmpty(prefix) || IsEmpty(name) || IsEmpty(value)) ThrowComException(E_INVALIDARG);
    CComPtr<IXMLDOMElement> init = CreateFrameworkElement(PrintSchema::PARAM_INIT_ELEMENT_NAME, prefix, name);
    AppendChild(init, CreateValue(type, value));
    return init;
}

HRESULT PrintTicketXmlDocument::CreateParamRefInitPair(const wchar_t* name, const wchar_t* type,
                                                       const wchar_t* value, IXMLDOMElement** ref,
                                                       IXMLDOMElement** init) {
    const OperationScope operation("PrintTicketXmlDocument::CreateParamRefInitPair");
    if (ref == nullptr || init == nullptr) ThrowComException(E_POINTER);
    if (IsEmpty(name) || IsEmpty(type) || IsEmpty(value)) ThrowComException(E_INVALIDARG);
    CComPtr<IXMLDOMElement> newRef =
        CreateFrameworkElement(PrintSchema::PARAM_REF_ELEMENT_NAME, KeywordsPrefix(), name);
    CComPtr<IXMLDOMElement> newInit =
        CreateFrameworkElement(PrintSchema::PARAM_INIT_ELEMENT_NAME, KeywordsPrefix(), name);
    AppendChild(newInit, CreateValue(type, value));
    *ref = newRef.Detach();
    *init = newInit.Detach();
    return S_OK;
}

HRESULT PrintTicketXmlDocument::CreateParamRefInitPair(const wchar_t* name, int value, IXMLDOMElement** ref,
                                                       IXMLDOMElement** init) {
    CXString text;
    text.Format(L"%i", value);
    return CreateParamRefInitPair(name, PrintSchema::SCHEMA_INTEGER, text, ref, init);
}

HRESULT PrintTicketXmlDocument::CreateStringParameterInit(const wchar_t* prefix, const wchar_t* name,
                                                          const wchar_t* value, IXMLDOMElement** out) {
    const OperationScope operation("PrintTicketXmlDocument::CreateStringParameterInit");
    if (out == nullptr) ThrowComException(E_POINTER);
    *out = CreateParameterInit(prefix, name, PrintSchema::SCHEMA_STRING, value).Detach();
    return S_OK;
}

HRESULT PrintTicketXmlDocument::CreateUntypedParameterInitFromString(const wchar_t* prefix,
                                                                     const wchar_t* name,
                                                                     const wchar_t* value,
                                                                     IXMLDOMElement** out) {
    const OperationScope operation("PrintTicketXmlDocument::CreateUntypedParameterInitFromString");
    if (out == nullptr) ThrowComException(E_POINTER);
    *out = CreateParameterInit(prefix, name, nullptr, value).Detach();
    return S_OK;
}

HRESULT PrintTicketXmlDocument::CreateCDATAStringParameterInit(const wchar_t* prefix, const wchar_t* name,
                                                               const CXString& value, IXMLDOMElement** out) {
    const OperationScope operation("PrintTicketXmlDocument::CreateCDATAStringParameterInit");
    return CreateStringParameterInit(prefix, name, CDataWrapped(value), out);
}

HRESULT PrintTicketXmlDocument::CreateIntegerParameterInit(const wchar_t* prefix, const wchar_t* name,
                                                           int value, IXMLDOMElement** out) {
    const OperationScope operation("PrintTicketXmlDocument::CreateIntegerParameterInit");
    if (out == nullptr) ThrowComException(E_POINTER);
    // Deliberate: written as unsigned.
    CXString text;
    text.Format(L"%u", value);
    *out = CreateParameterInit(prefix, name, PrintSchema::SCHEMA_INTEGER, text).Detach();
    return S_OK;
}

HRESULT PrintTicketXmlDocument::AppendStringParameterInit(const wchar_t* prefix, const wchar_t* name,
                                                          const wchar_t* value) {
    const OperationScope operation("PrintTicketXmlDocument::AppendStringParameterInit");
    TreeChange change(GetRootNode());
    CComPtr<IXMLDOMElement> init;
    CreateStringParameterInit(prefix, name, value, &init);
    AppendChildToRootNode(init);
    change.Keep();
    return S_OK;
}

HRESULT PrintTicketXmlDocument::AppendIntegerParameterInit(const wchar_t* prefix, const wchar_t* name,
                                                           int value) {
    const OperationScope operation("PrintTicketXmlDocument::AppendIntegerParameterInit");
    TreeChange change(GetRootNode());
    CComPtr<IXMLDOMElement> init;
    CreateIntegerParameterInit(prefix, name, value, &init);
    AppendChildToRootNode(init);
    change.Keep();
    return S_OK;
}

HRESULT PrintTicketXmlDocument::AppendToElement(const wchar_t* elementName, IXMLDOMNode* node) {
    const OperationScope operation("PrintTicketXmlDocument::AppendToElement");
    if (node == nullptr) ThrowComException(E_POINTER);
    if (IsEmpty(elementName)) ThrowComException(E_INVALIDARG);
    CComPtr<IXMLDOMNode> element;
    if (GetNode(Join({View(FrameworkPrefix()), elementName}), &element) != S_OK) ThrowComException(E_FAIL);
    return AppendChild(element, node);
}

HRESULT PrintTicketXmlDocument::DeleteParameterInitNodeIfExists(const wchar_t* prefix, const wchar_t* name) {
    CComPtr<IXMLDOMNode> node;
    if (GetParameterInitNodeIfExists(prefix, name, &node) != S_OK) return S_FALSE;
    return DeleteNode(node);
}

HRESULT PrintTicketXmlDocument::DeleteProperty(const wchar_t* name) {
    const OperationScope operation("PrintTicketXmlDocument::DeleteProperty");
    if (IsEmpty(name)) ThrowComException(E_INVALIDARG);
    RequireDocument();
    DocumentQuery query(*this);
    // Deliberate: the name of the property stands in the framework namespace.
    query.AddProperty(FrameworkPrefix(), name);
    CComPtr<IXMLDOMNode> node;
    if (GetNode(query.Text(), &node) != S_OK) return S_FALSE;
    return DeleteNode(node);
}

HRESULT PrintTicketXmlDocument::DeleteNodeList(IXMLDOMNodeList* list) {
    const OperationScope operation("PrintTicketXmlDocument::DeleteNodeList");
    if (list == nullptr) ThrowComException(E_POINTER);
    LONG count = 0;
    ThrowIfFailed(list->get_length(&count));
    TreeChange change(GetRootNode());
    for (LONG index = 0; index < count; ++index) {
        CComPtr<IXMLDOMNode> node;
        ThrowIfFailed(list->get_item(index, &node));
        if (node) change.Remove(node);
    }
    change.Keep();
    return S_OK;
}

HRESULT PrintTicketXmlDocument::DeleteParamInitOrphans(IXMLDOMNodeList* refs, IXMLDOMNodeList* inits) {
    const OperationScope operation("PrintTicketXmlDocument::DeleteParamInitOrphans");
    if (refs == nullptr || inits == nullptr) ThrowComException(E_POINTER);
    LONG refCount = 0;
    ThrowIfFailed(refs->get_length(&refCount));
    if (refCount == 0) return DeleteNodeList(inits);

    const auto isReferredTo = [&](const CComBSTR& name) {
        ThrowIfFailed(refs->reset());
        for (LONG index = 0; index < refCount; ++index) {
            CComPtr<IXMLDOMNode> ref;
            ThrowIfFailed(refs->get_item(index, &ref));
            CComBSTR refName;
            if (ref && ReadAttribute(ref, PrintSchema::NAME_ATTRIBUTE_NAME, refName) &&
                AreEqual(refName, name))
                return true;
        }
        return false;
    };
    LONG initCount = 0;
    ThrowIfFailed(inits->get_length(&initCount));
    TreeChange change(GetRootNode());
    for (LONG index = 0; index < initCount; ++index) {
        CComPtr<IXMLDOMNode> init;
        ThrowIfFailed(inits->get_item(index, &init));
        CComBSTR name;
        if (init && ReadAttribute(init, PrintSchema::NAME_ATTRIBUTE_NAME, name) && !isReferredTo(name))
            change.Remove(init);
    }
    change.Keep();
    return S_OK;
}

// ---- What the driver hides in a ticket

HRESULT PrintTicketXmlDocument::DeleteOcptParameterInitIfExists() {
    return DeleteParameterInitNodeIfExists(UserKeywordsPrefix(),
                                           PrintSchema::JobOrvelOpifJobTicket::PARAMETERNAME);
}

HRESULT PrintTicketXmlDocument::AddOrReplaceOcptParameterInit(const CXString& ocpt) {
    const OperationScope operation("PrintTicketXmlDocument::AddOrReplaceOcptParameterInit");
    const wchar_t* const name = PrintSchema::JobOrvelOpifJobTicket::PARAMETERNAME;
    TreeChange change(GetRootNode());
    CComPtr<IXMLDOMElement> init;
    CreateCDATAStringParameterInit(UserKeywordsPrefix(), name, ocpt, &init);
    change.Replace(ParameterInitQuery(UserKeywordsPrefix(), name), init, TreeChange::Place::First);
    change.Keep();
    return S_OK;
}

HRESULT PrintTicketXmlDocument::UpdateOcptFieldsInPrintTicketAndPipelinePropertiesFromDocumentFilter(
    bool hasOcpt, DataModelIds::tagValueEnum value, const CXString& ocpt, IPrintPipelinePropertyBag* bag) {
    const OperationScope operation(
        "PrintTicketXmlDocument::UpdateOcptFieldsInPrintTicketAndPipelinePropertiesFromDocumentFilter");
    if (!hasOcpt || ocpt.IsEmpty()) return DeleteOcptParameterInitIfExists();
    const bool isForXps = value == DataModelIds::VAL_PDL_XPS;
    TreeChange change(GetRootNode());
    change.Replace(
        ParameterInitQuery(UserKeywordsPrefix(), PrintSchema::JobOrvelOpifJobTicket::PARAMETERNAME), nullptr);
    const HRESULT hr = PutIntoBag(bag, isForXps ? ocptForXps : ocptForNonXps, ocpt);
    if (SUCCEEDED(hr) && isForXps) AddOrReplaceOcptParameterInit(ocpt);
    // Deliberate: also what the bag refuses is no longer in the ticket.
    change.Keep();
    return hr;
}

HRESULT
PrintTicketXmlDocument::AddOrReplacePageOrvelCompleteDocSettingsInPrintTicket(const ByteBuffer& buffer) {
    const OperationScope operation(
        "PrintTicketXmlDocument::AddOrReplacePageOrvelCompleteDocSettingsInPrintTicket");
    try {
        constexpr unsigned int inOneLine = OrvelUtilities::base64WithoutLineBreaks;
        const int bytes = static_cast<int>(buffer.getDword());
        const int room = OrvelUtilities::Base64EncodeGetRequiredLength(bytes, inOneLine);
        std::wstring text(static_cast<std::size_t>(room), L'\0');
        int length = room;
        if (!OrvelUtilities::Base64Encode(buffer.getLpbyte(), bytes, text.data(), &length, inOneLine))
            return E_FAIL;
        text.resize(static_cast<std::size_t>((std::min)(length, room)));

        const wchar_t* const name = PrintSchema::JobOrvelCompleteDocSettings::PARAMETERNAME;
        // Deliberate: the old settings are gone also when the new ones are too long.
        const bool isTooLong = room > longestSettingsText;
        TreeChange change(GetRootNode());
        CComPtr<IXMLDOMElement> init;
        if (!isTooLong) CreateStringParameterInit(UserKeywordsPrefix(), name, text.c_str(), &init);
        change.Replace(ParameterInitQuery(UserKeywordsPrefix(), name), init);
        change.Keep();
        return isTooLong ? E_FAIL : S_OK;
    } catch (const CPComException& failure) {
        return failure.GetHresult();
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    }
}

HRESULT PrintTicketXmlDocument::DebugDumpXmlToFileInTempDirectory(const CXString& name) const {
    return PrintSchemaXmlDocument::DebugDumpXmlToFileInTempDirectory(L"PrintTicket_" + name, L"");
}
