#include "PrinterExtension/ExtensionOption.h"

namespace OvPlatform {

ExtensionOption::~ExtensionOption() = default;

HRESULT ExtensionOption::get_Selected(BOOL* value) {
    if (value == nullptr) return E_POINTER;
    *value = TRUE;
    return S_OK;
}

HRESULT ExtensionOption::get_Constrained(PrintSchemaConstrainedSetting* constrained) {
    if (constrained == nullptr) return E_POINTER;
    *constrained = PrintSchemaConstrainedSetting_None;
    return S_OK;
}

HRESULT ExtensionOption::GetPropertyValue(BSTR name, BSTR namespaceUri, IUnknown** object) {
    if (object == nullptr) return E_POINTER;
    *object = nullptr;
    return OverSchema([&]() -> HRESULT {
        auto property = FindNamed(Element(), {L"ScoredProperty", L"Property"}, AskedName(name, namespaceUri));
        if (!property) return S_FALSE;
        if (const auto reference = FindFirst(property, L"ParameterRef")) {
            property = FindNamed(RootOf(reference), {L"ParameterInit"}, NameOf(reference));
            if (!property) return S_FALSE;
        }
        const auto value = FindFirst(property, L"Value");
        return value ? value->QueryInterface(__uuidof(IUnknown), reinterpret_cast<void**>(object)) : S_FALSE;
    });
}

} // namespace OvPlatform
