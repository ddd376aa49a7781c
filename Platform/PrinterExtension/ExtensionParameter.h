#pragma once

#include "PrinterExtension/SchemaElement.h"

namespace OvPlatform {

/// A parameter that a ticket sets, to be read.
class ExtensionParameter final : public SchemaElement<IPrintSchemaParameterInitializer> {
public:
    explicit ExtensionParameter(CComPtr<IXMLDOMElement> parameter) : SchemaElement(std::move(parameter)) {}

    /// A parameter's value: VT_I4 for an integer, else VT_BSTR; VT_EMPTY where there is none. Throws as the
    /// functions over the document do.
    static CComVariant ValueOf(IXMLDOMElement* parameter);

    HRESULT STDMETHODCALLTYPE get_Value(VARIANT* value) override;
    HRESULT STDMETHODCALLTYPE put_Value(VARIANT* value) override; // E_NOTIMPL

private:
    ~ExtensionParameter() override;
};

} // namespace OvPlatform
