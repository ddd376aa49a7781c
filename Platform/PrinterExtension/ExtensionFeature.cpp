#include "PrinterExtension/ExtensionFeature.h"

#include "PrinterExtension/ExtensionOption.h"

namespace OvPlatform {

ExtensionFeature::~ExtensionFeature() = default;

HRESULT ExtensionFeature::get_SelectedOption(IPrintSchemaOption** option) {
    if (option == nullptr) return E_POINTER;
    *option = nullptr;
    return OverSchema([&] { return GiveFound<ExtensionOption>(FindFirst(Element(), L"Option"), option); });
}

HRESULT ExtensionFeature::put_SelectedOption(IPrintSchemaOption*) { return E_NOTIMPL; }

HRESULT ExtensionFeature::get_SelectionType(PrintSchemaSelectionType* type) {
    if (type == nullptr) return E_POINTER;
    *type = PrintSchemaSelectionType_PickOne;
    return OverSchema([&] {
        if (CountOf(Element(), L"Option") > 1) *type = PrintSchemaSelectionType_PickMany;
        return S_OK;
    });
}

HRESULT ExtensionFeature::GetOption(BSTR name, BSTR namespaceUri, IPrintSchemaOption** option) {
    if (option == nullptr) return E_POINTER;
    *option = nullptr;
    return OverSchema([&] {
        return GiveFound<ExtensionOption>(FindNamed(Element(), {L"Option"}, AskedName(name, namespaceUri)),
                                          option);
    });
}

HRESULT ExtensionFeature::get_DisplayUI(BOOL* value) {
    if (value == nullptr) return E_POINTER;
    *value = TRUE;
    return S_OK;
}

} // namespace OvPlatform
