#pragma once

#include "PrinterExtension/SchemaElement.h"

namespace OvPlatform {

/// A feature of a ticket, to be read. What is absent is S_FALSE and null.
class ExtensionFeature final : public SchemaElement<IPrintSchemaFeature> {
public:
    explicit ExtensionFeature(CComPtr<IXMLDOMElement> feature) : SchemaElement(std::move(feature)) {}

    /// Its name: a ticket has no texts for people.
    HRESULT STDMETHODCALLTYPE get_DisplayName(BSTR* text) override { return get_Name(text); }
    HRESULT STDMETHODCALLTYPE get_SelectedOption(IPrintSchemaOption** option) override;
    HRESULT STDMETHODCALLTYPE put_SelectedOption(IPrintSchemaOption* option) override; // E_NOTIMPL
    /// Of many options, if the ticket chooses several.
    HRESULT STDMETHODCALLTYPE get_SelectionType(PrintSchemaSelectionType* type) override;
    /// Of the options that the ticket chooses. An empty namespace is that of public keywords.
    HRESULT STDMETHODCALLTYPE GetOption(BSTR name, BSTR namespaceUri, IPrintSchemaOption** option) override;
    /// TRUE: nothing in a ticket hides a feature.
    HRESULT STDMETHODCALLTYPE get_DisplayUI(BOOL* value) override;

private:
    ~ExtensionFeature() override;
};

} // namespace OvPlatform
