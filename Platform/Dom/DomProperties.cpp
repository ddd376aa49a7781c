#include "Dom/DomProperties.h"

#include "Dom/DomDataType.h"
#include "Dom/DomErrorInfo.h"
#include "Xml/TextConversion.h"

#include <atlcomcli.h>

#include <array>

namespace OvPlatform {

namespace {

enum class Kind { Fixed, Flag, Number, Language, Namespaces };

struct Property {
    std::wstring_view name;
    Kind kind;
    bool fixed = false;
    bool DomSettings::*flag = nullptr;
    LONG DomSettings::*number = nullptr;
};

constexpr std::array<Property, 16> properties = {{
    {L"SelectionLanguage", Kind::Language},
    {L"SelectionNamespaces", Kind::Namespaces},
    {L"MaxElementDepth", Kind::Number, false, nullptr, &DomSettings::maxElementDepth},
    {L"MaxXMLSize", Kind::Number, false, nullptr, &DomSettings::maxXmlSize},
    {L"ValidateOnParse", Kind::Flag, false, &DomSettings::validateOnParse},
    {L"ResolveExternals", Kind::Flag, false, &DomSettings::resolveExternals},
    {L"ProhibitDTD", Kind::Fixed, true},
    {L"AllowDocumentFunction", Kind::Fixed, false},
    {L"AllowXsltScript", Kind::Fixed, false},
    {L"ForcedResync", Kind::Fixed, true},
    {L"MultipleErrorMessages", Kind::Fixed, false},
    {L"NewParser", Kind::Fixed, false},
    {L"NormalizeAttributeValues", Kind::Fixed, false},
    {L"PopulateElementDefaultValues", Kind::Fixed, false},
    {L"ServerHTTPRequest", Kind::Fixed, false},
    {L"UseInlineSchema", Kind::Fixed, false},
}};

const Property* Find(std::wstring_view name) noexcept {
    for (const Property& property : properties)
        if (property.name == name) return &property;
    return nullptr;
}

HRESULT ReadFlag(const VARIANT& value, bool& flag) {
    CComVariant changed;
    if (const HRESULT result = DomDataType::Convert(value, VT_BOOL, &changed); FAILED(result)) return result;
    flag = changed.boolVal != VARIANT_FALSE;
    return S_OK;
}

} // namespace

HRESULT DomProperties::Set(DomSettings& settings, std::wstring_view name, const VARIANT& value) {
    const Property* property = Find(name);
    if (property == nullptr) return E_FAIL;
    switch (property->kind) {
    case Kind::Language:
        if (value.vt != VT_BSTR) return E_INVALIDARG;
        return ViewOf(value.bstrVal) == L"XPath" ? S_OK : E_FAIL;
    case Kind::Namespaces: {
        std::string text;
        if (value.vt != VT_BSTR) return E_INVALIDARG;
        SelectionNamespaces::Pointer parsed;
        if (AppendXmlUtf8(text, ViewOf(value.bstrVal))) parsed = SelectionNamespaces::Parse(text);
        if (parsed == nullptr)
            return Failed(E_FAIL, "SelectionNamespaces must be a list of xmlns declarations");
        settings.namespaces = std::move(parsed);
        return S_OK;
    }
    case Kind::Number: {
        CComVariant changed;
        if (const HRESULT result = DomDataType::Convert(value, VT_I4, &changed); FAILED(result))
            return result;
        if (changed.lVal < 0) return E_INVALIDARG;
        settings.*property->number = changed.lVal;
        return S_OK;
    }
    case Kind::Flag:
        return ReadFlag(value, settings.*property->flag);
    case Kind::Fixed:
        break;
    }
    bool wanted = false;
    const HRESULT result = ReadFlag(value, wanted);
    if (FAILED(result)) return result;
    return wanted == property->fixed ? S_OK : E_NOTIMPL;
}

HRESULT DomProperties::Get(const DomSettings& settings, std::wstring_view name, VARIANT* value) {
    if (value == nullptr) return E_INVALIDARG;
    ::VariantInit(value);
    const Property* property = Find(name);
    if (property == nullptr) return E_FAIL;
    switch (property->kind) {
    case Kind::Language:
        return GiveText(value, "XPath");
    case Kind::Namespaces:
        return GiveText(value, settings.namespaces->Text());
    case Kind::Number:
        value->vt = VT_I4;
        value->lVal = settings.*property->number;
        return S_OK;
    case Kind::Flag:
    case Kind::Fixed:
        break;
    }
    const bool flag = property->kind == Kind::Flag ? settings.*property->flag : property->fixed;
    value->vt = VT_BOOL;
    value->boolVal = flag ? VARIANT_TRUE : VARIANT_FALSE;
    return S_OK;
}

} // namespace OvPlatform
