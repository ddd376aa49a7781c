#include "PrinterExtension/SchemaTicket.h"

#include "PrinterExtension/ExtensionFeature.h"
#include "PrinterExtension/ExtensionParameter.h"
#include "Xml/TextConversion.h"

#include <algorithm>

namespace OvPlatform {

namespace {

// Key names that are not the feature's own.
struct KeyName {
    std::wstring_view key;
    std::wstring_view feature;
};
constexpr KeyName keyNames[] = {{L"DocumentDuplex", L"JobDuplexAllDocumentsContiguously"}};

std::wstring_view FeatureOfKey(std::wstring_view key) {
    const auto found = std::find_if(std::begin(keyNames), std::end(keyNames),
                                    [&](const KeyName& row) { return row.key == key; });
    return found == std::end(keyNames) ? key : found->feature;
}

} // namespace

SchemaTicket::~SchemaTicket() = default;

HRESULT SchemaTicket::Create(const std::string& bytes, IPrintSchemaTicket** ticket) {
    return OverSchema([&] {
        *ticket = new SchemaTicket(LoadSchema(bytes));
        return S_OK;
    });
}

HRESULT SchemaTicket::GetFeatureByKeyName(BSTR name, IPrintSchemaFeature** feature) {
    if (feature == nullptr) return E_POINTER;
    *feature = nullptr;
    return OverSchema([&] {
        return GiveFound<ExtensionFeature>(
            FindNamed(Element(), {L"Feature"}, Keyword(FeatureOfKey(ViewOf(name)))), feature);
    });
}

HRESULT SchemaTicket::GetFeature(BSTR name, BSTR namespaceUri, IPrintSchemaFeature** feature) {
    if (feature == nullptr) return E_POINTER;
    *feature = nullptr;
    return OverSchema([&] {
        return GiveFound<ExtensionFeature>(FindNamed(Element(), {L"Feature"}, AskedName(name, namespaceUri)),
                                           feature);
    });
}

HRESULT SchemaTicket::ValidateAsync(IPrintSchemaAsyncOperation** operation) {
    if (operation != nullptr) *operation = nullptr;
    return E_NOTIMPL;
}

HRESULT SchemaTicket::CommitAsync(IPrintSchemaTicket*, IPrintSchemaAsyncOperation** operation) {
    if (operation != nullptr) *operation = nullptr;
    return E_NOTIMPL;
}

HRESULT SchemaTicket::NotifyXmlChanged() { return S_OK; }

HRESULT SchemaTicket::GetCapabilities(IPrintSchemaCapabilities** capabilities) {
    if (capabilities != nullptr) *capabilities = nullptr;
    return E_NOTIMPL;
}

HRESULT SchemaTicket::get_JobCopiesAllDocuments(ULONG* value) {
    if (value == nullptr) return E_POINTER;
    *value = 0;
    return OverSchema([&]() -> HRESULT {
        const auto found = FindNamed(Element(), {L"ParameterInit"}, Keyword(L"JobCopiesAllDocuments"));
        if (!found) return S_FALSE;
        CComVariant copies = ExtensionParameter::ValueOf(found);
        if (const HRESULT result = copies.ChangeType(VT_UI4); FAILED(result)) return result;
        *value = copies.ulVal;
        return S_OK;
    });
}

HRESULT SchemaTicket::put_JobCopiesAllDocuments(ULONG) { return E_NOTIMPL; }

HRESULT SchemaTicket::GetParameterInitializer(BSTR name, BSTR namespaceUri,
                                              IPrintSchemaParameterInitializer** initializer) {
    if (initializer == nullptr) return E_POINTER;
    *initializer = nullptr;
    return OverSchema([&] {
        return GiveFound<ExtensionParameter>(
            FindNamed(Element(), {L"ParameterInit"}, AskedName(name, namespaceUri)), initializer);
    });
}

} // namespace OvPlatform
