#include "Package/OpcUri.h"

#include "Com/CountedObject.h"
#include "Com/FaultInjection.h"
#include "Package/PartName.h"
#include "Xml/TextConversion.h"

#include <atlcomcli.h>

#include <new>

namespace OvPlatform {

template <>
struct ExtendedInterface<IOpcUri> {
    using Type = IUri;
};
template <>
struct ExtendedInterface<IOpcPartUri> {
    using Type = IOpcUri;
};

namespace {

// Runs what may throw behind an interface.
template <class Call>
HRESULT Guarded(Call call) {
    if (HRESULT fault = FaultPoint(); FAILED(fault)) return fault;
    try {
        return call();
    } catch (const PartNameError& error) {
        return error.Result();
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    }
}

HRESULT ToUtf8(const wchar_t* text, std::string& utf8) {
    return AppendUtf8(utf8, text) ? S_OK : OPC_E_NONCONFORMING_URI; // a lone surrogate
}

// What all have: the properties of a relative URI that is a path and nothing else.
template <class Interface>
class UriObject : public CountedObject<Interface> {
public:
    explicit UriObject(std::string text) : m_text(std::move(text)) {}

    HRESULT STDMETHODCALLTYPE GetPropertyBSTR(Uri_PROPERTY property, BSTR* text, DWORD) override {
        if (text == nullptr) return E_POINTER;
        *text = nullptr;
        if (HRESULT fault = FaultPoint(); FAILED(fault)) return fault;
        if (property > Uri_PROPERTY_STRING_LAST) return E_INVALIDARG;
        const std::string_view value = Property(property);
        if (HRESULT result = GiveText(text, value); FAILED(result)) return result;
        return value.empty() ? S_FALSE : S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetPropertyLength(Uri_PROPERTY property, DWORD* length, DWORD) override {
        if (length == nullptr) return E_POINTER;
        *length = 0;
        if (property > Uri_PROPERTY_STRING_LAST) return E_INVALIDARG;
        *length = static_cast<DWORD>(Property(property).size());
        return *length == 0 ? S_FALSE : S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetPropertyDWORD(Uri_PROPERTY property, DWORD* value, DWORD) override {
        if (value == nullptr) return E_POINTER;
        *value = 0;
        if (property < Uri_PROPERTY_DWORD_START || property > Uri_PROPERTY_DWORD_LAST) return E_INVALIDARG;
        return S_FALSE; // a path has no host, port, scheme or zone
    }
    HRESULT STDMETHODCALLTYPE HasProperty(Uri_PROPERTY property, BOOL* has) override {
        if (has == nullptr) return E_POINTER;
        *has = property <= Uri_PROPERTY_STRING_LAST && !Property(property).empty();
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetAbsoluteUri(BSTR* text) override {
        return Text(Uri_PROPERTY_ABSOLUTE_URI, text);
    }
    HRESULT STDMETHODCALLTYPE GetAuthority(BSTR* text) override { return Text(Uri_PROPERTY_AUTHORITY, text); }
    HRESULT STDMETHODCALLTYPE GetDisplayUri(BSTR* text) override {
        return Text(Uri_PROPERTY_DISPLAY_URI, text);
    }
    HRESULT STDMETHODCALLTYPE GetDomain(BSTR* text) override { return Text(Uri_PROPERTY_DOMAIN, text); }
    HRESULT STDMETHODCALLTYPE GetExtension(BSTR* text) override { return Text(Uri_PROPERTY_EXTENSION, text); }
    HRESULT STDMETHODCALLTYPE GetFragment(BSTR* text) override { return Text(Uri_PROPERTY_FRAGMENT, text); }
    HRESULT STDMETHODCALLTYPE GetHost(BSTR* text) override { return Text(Uri_PROPERTY_HOST, text); }
    HRESULT STDMETHODCALLTYPE GetPassword(BSTR* text) override { return Text(Uri_PROPERTY_PASSWORD, text); }
    HRESULT STDMETHODCALLTYPE GetPath(BSTR* text) override { return Text(Uri_PROPERTY_PATH, text); }
    HRESULT STDMETHODCALLTYPE GetPathAndQuery(BSTR* text) override {
        return Text(Uri_PROPERTY_PATH_AND_QUERY, text);
    }
    HRESULT STDMETHODCALLTYPE GetQuery(BSTR* text) override { return Text(Uri_PROPERTY_QUERY, text); }
    HRESULT STDMETHODCALLTYPE GetRawUri(BSTR* text) override { return Text(Uri_PROPERTY_RAW_URI, text); }
    HRESULT STDMETHODCALLTYPE GetSchemeName(BSTR* text) override {
        return Text(Uri_PROPERTY_SCHEME_NAME, text);
    }
    HRESULT STDMETHODCALLTYPE GetUserInfo(BSTR* text) override { return Text(Uri_PROPERTY_USER_INFO, text); }
    HRESULT STDMETHODCALLTYPE GetUserName(BSTR* text) override { return Text(Uri_PROPERTY_USER_NAME, text); }
    HRESULT STDMETHODCALLTYPE GetHostType(DWORD* value) override {
        return Number(Uri_PROPERTY_HOST_TYPE, value);
    }
    HRESULT STDMETHODCALLTYPE GetPort(DWORD* value) override { return Number(Uri_PROPERTY_PORT, value); }
    HRESULT STDMETHODCALLTYPE GetScheme(DWORD* value) override { return Number(Uri_PROPERTY_SCHEME, value); }
    HRESULT STDMETHODCALLTYPE GetZone(DWORD* value) override { return Number(Uri_PROPERTY_ZONE, value); }
    HRESULT STDMETHODCALLTYPE GetProperties(LPDWORD flags) override {
        if (flags == nullptr) return E_POINTER;
        *flags = 0;
        for (int i = Uri_PROPERTY_STRING_START; i <= Uri_PROPERTY_STRING_LAST; ++i)
            if (!Property(static_cast<Uri_PROPERTY>(i)).empty()) *flags |= DWORD{1} << i;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE IsEqual(IUri* other, BOOL* equal) override {
        if (equal == nullptr) return E_POINTER;
        *equal = FALSE;
        if (other == nullptr) return S_OK;
        return Guarded([&] {
            std::string text;
            if (HRESULT result = RawText(other, text); FAILED(result)) return result;
            *equal = text == m_text;
            return S_OK;
        });
    }

    static HRESULT RawText(IUri* uri, std::string& text) {
        CComBSTR raw;
        if (HRESULT result = uri->GetRawUri(&raw); FAILED(result)) return result;
        return ToUtf8(raw.m_str ? raw.m_str : L"", text);
    }

protected:
    const std::string& Uri() const { return m_text; }

private:
    std::string_view Property(Uri_PROPERTY property) const {
        switch (property) {
        case Uri_PROPERTY_DISPLAY_URI:
        case Uri_PROPERTY_PATH:
        case Uri_PROPERTY_PATH_AND_QUERY:
        case Uri_PROPERTY_RAW_URI:
            return m_text;
        case Uri_PROPERTY_EXTENSION: { // with its dot
            const std::size_t length = PartExtension(m_text).size();
            return length == 0 ? std::string_view()
                               : std::string_view(m_text).substr(m_text.size() - length - 1);
        }
        default:
            return {};
        }
    }

    HRESULT Text(Uri_PROPERTY property, BSTR* text) { return GetPropertyBSTR(property, text, 0); }
    HRESULT Number(Uri_PROPERTY property, DWORD* value) { return GetPropertyDWORD(property, value, 0); }

    const std::string m_text;
};

// The calls of a source of relationships, the root or a part.
template <class Interface>
class OpcUriObject : public UriObject<Interface> {
public:
    using UriObject<Interface>::UriObject;

    HRESULT STDMETHODCALLTYPE GetRelationshipsPartUri(IOpcPartUri** uri) override {
        if (uri == nullptr) return E_POINTER;
        *uri = nullptr;
        return Guarded([&] {
            if (IsRelationshipsPartName(this->Uri())) return OPC_E_NONCONFORMING_URI;
            return CreateOpcPartUri(RelationshipsPartName(this->Uri()), uri);
        });
    }

    HRESULT STDMETHODCALLTYPE GetRelativeUri(IOpcPartUri* target, IUri** uri) override {
        if (target == nullptr || uri == nullptr) return E_POINTER;
        *uri = nullptr;
        return Guarded([&] {
            std::string name;
            if (HRESULT result = this->RawText(target, name); FAILED(result)) return result;
            return CreateRelativeUri(RelativeReference(this->Uri(), name), uri);
        });
    }

    HRESULT STDMETHODCALLTYPE CombinePartUri(IUri* relative, IOpcPartUri** uri) override {
        if (relative == nullptr || uri == nullptr) return E_POINTER;
        *uri = nullptr;
        return Guarded([&] {
            CComBSTR reference;
            if (HRESULT result = relative->GetRawUri(&reference); FAILED(result)) return result;
            return ResolveOpcPartUri(this->Uri(), reference.m_str ? reference.m_str : L"", uri);
        });
    }
};

class OpcPartUri final : public OpcUriObject<IOpcPartUri> {
public:
    using OpcUriObject<IOpcPartUri>::OpcUriObject;

    HRESULT STDMETHODCALLTYPE ComparePartUri(IOpcPartUri* other, INT32* comparison) override {
        if (other == nullptr || comparison == nullptr) return E_POINTER;
        *comparison = 0;
        return Guarded([&] {
            std::string name;
            if (HRESULT result = RawText(other, name); FAILED(result)) return result;
            const int order = ComparePartNames(Uri(), name);
            *comparison = (order > 0) - (order < 0);
            return S_OK;
        });
    }

    HRESULT STDMETHODCALLTYPE GetSourceUri(IOpcUri** uri) override {
        if (uri == nullptr) return E_POINTER;
        *uri = nullptr;
        return Guarded([&] {
            if (!IsRelationshipsPartName(Uri())) return OPC_E_RELATIONSHIP_URI_REQUIRED;
            const std::string source = RelationshipsSource(Uri());
            if (source == packageRoot) return CreateOpcRootUri(uri);
            IOpcPartUri* part = nullptr;
            const HRESULT result = CreateOpcPartUri(source, &part);
            *uri = part;
            return result;
        });
    }

    HRESULT STDMETHODCALLTYPE IsRelationshipsPartUri(BOOL* is) override {
        if (is == nullptr) return E_POINTER;
        *is = IsRelationshipsPartName(Uri());
        return S_OK;
    }
};

class OpcRootUri final : public OpcUriObject<IOpcUri> {
public:
    using OpcUriObject<IOpcUri>::OpcUriObject;
};

class RelativeUri final : public UriObject<IUri> {
public:
    using UriObject<IUri>::UriObject;
};

template <class Object, class Interface>
HRESULT Create(const std::string& text, Interface** object) {
    *object = new (std::nothrow) Object(text);
    return *object ? S_OK : E_OUTOFMEMORY;
}

} // namespace

HRESULT CreateOpcRootUri(IOpcUri** uri) { return Create<OpcRootUri>(std::string(packageRoot), uri); }

HRESULT CreateOpcPartUri(const std::string& name, IOpcPartUri** uri) { return Create<OpcPartUri>(name, uri); }

HRESULT CreateRelativeUri(const std::string& reference, IUri** uri) {
    return Create<RelativeUri>(reference, uri);
}

HRESULT ResolveOpcPartUri(const std::string& source, const wchar_t* reference, IOpcPartUri** uri) {
    std::string text;
    if (HRESULT result = ToUtf8(reference, text); FAILED(result)) return result;
    if (text.empty() || text.find('#') != std::string::npos) return OPC_E_NONCONFORMING_URI;
    try {
        return CreateOpcPartUri(ResolvePartName(source, text), uri);
    } catch (const PartNameError& error) {
        return error.Result();
    }
}

} // namespace OvPlatform
