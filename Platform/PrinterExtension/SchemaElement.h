#pragma once

#include "Com/Dispatch.h"
#include "PrinterExtension/SchemaNode.h"

#include <printerextension.h>

#include <utility>

namespace OvPlatform {

template <>
struct ExtendedInterface<IPrintSchemaTicket2> {
    using Type = IPrintSchemaTicket;
};
template <>
struct ExtendedInterface<IPrintSchemaTicket> {
    using Type = IPrintSchemaElement;
};
template <>
struct ExtendedInterface<IPrintSchemaFeature> {
    using Type = IPrintSchemaDisplayableElement;
};
template <>
struct ExtendedInterface<IPrintSchemaOption> {
    using Type = IPrintSchemaDisplayableElement;
};
template <>
struct ExtendedInterface<IPrintSchemaDisplayableElement> {
    using Type = IPrintSchemaElement;
};
template <>
struct ExtendedInterface<IPrintSchemaParameterInitializer> {
    using Type = IPrintSchemaElement;
};

/// The operations that all objects over an element of a Print Schema document have. One thread at a time.
template <class Interface>
class SchemaElement : public Dispatch<CountedObject<Interface>> {
public:
    HRESULT STDMETHODCALLTYPE get_XmlNode(IUnknown** object) override {
        if (object == nullptr) return E_POINTER;
        *object = nullptr;
        return m_element->QueryInterface(__uuidof(IUnknown), reinterpret_cast<void**>(object));
    }
    HRESULT STDMETHODCALLTYPE get_Name(BSTR* text) override {
        return GiveName(text, [](const SchemaName& name) { return name.local; });
    }
    HRESULT STDMETHODCALLTYPE get_NamespaceUri(BSTR* text) override {
        return GiveName(text, [](const SchemaName& name) { return name.namespaceUri; });
    }

protected:
    explicit SchemaElement(CComPtr<IXMLDOMElement> element) : m_element(std::move(element)) {}
    ~SchemaElement() override = default;

    IXMLDOMElement* Element() const { return m_element; }

    /// Hands out an object over a found element; S_FALSE and null where there is none.
    template <class Object, class Given>
    static HRESULT GiveFound(CComPtr<IXMLDOMElement> found, Given** place) {
        if (!found) return S_FALSE;
        *place = new Object(std::move(found));
        return S_OK;
    }

private:
    template <class Choose>
    HRESULT GiveName(BSTR* text, Choose choose) const {
        if (text == nullptr) return E_POINTER;
        *text = nullptr;
        return OverSchema([&] {
            const std::wstring chosen = choose(NameOf(m_element));
            *text = SysAllocStringLen(chosen.data(), static_cast<UINT>(chosen.size()));
            return *text != nullptr ? S_OK : E_OUTOFMEMORY;
        });
    }

    const CComPtr<IXMLDOMElement> m_element;
};

} // namespace OvPlatform
