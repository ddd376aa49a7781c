#include "PrinterExtension/SchemaFeature.h"

#include "PrinterExtension/SchemaOption.h"

namespace OvPlatform {

SchemaFeature::~SchemaFeature() = default;

HRESULT SchemaFeature::get_SelectedOption(IPrintSchemaOption** option) {
    if (option == nullptr) return E_POINTER;
    *option = nullptr;
    return OverSchema([&] { return GiveFound<SchemaOption>(FindFirst(Element(), L"Option"), option); });
}

HRESULT SchemaFeature::put_SelectedOption(IPrintSchemaOption*) { return E_NOTIMPL; }

HRESULT SchemaFeature::get_SelectionType(PrintSchemaSelectionType* type) {
    if (type == nullptr) return E_POINTER;
    *type = PrintSchemaSelectionType_PickOne;
    return OverSchema([&] {
        if (CountOf(Element(), L"Option") > 1) *type = PrintSchemaSelectionType_PickMany;
        return S_OK;
    });
}

HRESULT SchemaFeature::GetOption(BSTR name, BSTR namespaceUri, IPrintSchemaOption** option) {
    if (option == nullptr) return E_POINTER;
    *option = nullptr;
    return OverSchema([&] {
        return GiveFound<SchemaOption>(FindNamed(Element(), {L"Option"}, AskedName(name, namespaceUri)),
                                       option);
    });
}

HRESULT SchemaFeature::get_DisplayUI(BOOL* value) {
    if (value == nullptr) return E_POINTER;
    *value = TRUE;
    return S_OK;
}

} // namespace OvPlatform
