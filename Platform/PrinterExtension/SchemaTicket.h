#pragma once

#include "Com/PlatformExport.h"
#include "PrinterExtension/SchemaElement.h"

#include <string>

namespace OvPlatform {

/// A ticket in an extension's hands, to be read. Its document is its own: what is changed in the nodes that
/// get_XmlNode gives is seen here, and reaches no printer. What is absent is S_FALSE and null.
class OV_PLATFORM_API SchemaTicket final : public SchemaElement<IPrintSchemaTicket2> {
public:
    /// From the bytes of a document. Throws std::bad_alloc; fails as the document's parser does.
    static HRESULT Create(const std::string& bytes, IPrintSchemaTicket** ticket);

    /// By one of the published key names, which is the feature's own but for two-sided printing.
    HRESULT STDMETHODCALLTYPE GetFeatureByKeyName(BSTR name, IPrintSchemaFeature** feature) override;
    /// Of the features that do not belong to another one. An empty namespace is that of public keywords.
    HRESULT STDMETHODCALLTYPE GetFeature(BSTR name, BSTR namespaceUri,
                                         IPrintSchemaFeature** feature) override;
    // Not served: E_NOTIMPL.
    HRESULT STDMETHODCALLTYPE ValidateAsync(IPrintSchemaAsyncOperation** operation) override;
    HRESULT STDMETHODCALLTYPE CommitAsync(IPrintSchemaTicket* ticket,
                                          IPrintSchemaAsyncOperation** operation) override;
    /// Nothing to do: each call reads the document as it is.
    HRESULT STDMETHODCALLTYPE NotifyXmlChanged() override;
    HRESULT STDMETHODCALLTYPE GetCapabilities(IPrintSchemaCapabilities** capabilities) override; // E_NOTIMPL
    /// S_FALSE and 0 for a ticket that does not say.
    HRESULT STDMETHODCALLTYPE get_JobCopiesAllDocuments(ULONG* value) override;
    HRESULT STDMETHODCALLTYPE put_JobCopiesAllDocuments(ULONG value) override; // E_NOTIMPL
    HRESULT STDMETHODCALLTYPE GetParameterInitializer(
        BSTR name, BSTR namespaceUri, IPrintSchemaParameterInitializer** initializer) override;

private:
    explicit SchemaTicket(CComPtr<IXMLDOMElement> root) : SchemaElement(std::move(root)) {}
    ~SchemaTicket() override;
};

} // namespace OvPlatform
