#pragma once

#include "PrinterExtension/SchemaElement.h"

namespace OvPlatform {

/// An option that a ticket chooses, to be read.
class ExtensionOption final : public SchemaElement<IPrintSchemaOption> {
public:
    explicit ExtensionOption(CComPtr<IXMLDOMElement> option) : SchemaElement(std::move(option)) {}

    /// Its name: a ticket has no texts for people.
    HRESULT STDMETHODCALLTYPE get_DisplayName(BSTR* text) override { return get_Name(text); }
    /// TRUE: it stands in the ticket.
    HRESULT STDMETHODCALLTYPE get_Selected(BOOL* value) override;
    /// By nothing, as far as a ticket tells.
    HRESULT STDMETHODCALLTYPE get_Constrained(PrintSchemaConstrainedSetting* constrained) override;
    /// The element of the value, also where the property refers to a parameter; S_FALSE and null where there
    /// is none.
    HRESULT STDMETHODCALLTYPE GetPropertyValue(BSTR name, BSTR namespaceUri, IUnknown** object) override;

private:
    ~ExtensionOption() override;
};

} // namespace OvPlatform
