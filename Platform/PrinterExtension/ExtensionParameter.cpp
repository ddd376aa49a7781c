#include "PrinterExtension/ExtensionParameter.h"

namespace OvPlatform {

ExtensionParameter::~ExtensionParameter() = default;

CComVariant ExtensionParameter::ValueOf(IXMLDOMElement* parameter) {
    CComVariant value;
    const auto element = FindFirst(parameter, L"Value");
    if (!element) return value;
    value.bstrVal = TextOf(element).Detach();
    value.vt = VT_BSTR;
    if (TypeOf(element) == L"integer")
        if (const HRESULT result = value.ChangeType(VT_I4); FAILED(result)) throw SchemaFailure{result};
    return value;
}

HRESULT ExtensionParameter::get_Value(VARIANT* value) {
    if (value == nullptr) return E_POINTER;
    VariantInit(value);
    return OverSchema([&] { return ValueOf(Element()).Detach(value); });
}

HRESULT ExtensionParameter::put_Value(VARIANT*) { return E_NOTIMPL; }

} // namespace OvPlatform
