#include "Dom/DomDataType.h"

#include "Dom/DomTree.h"
#include "Xml/TextConversion.h"

#include <atlcomcli.h>

#include <algorithm>
#include <array>
#include <cstring>

namespace OvPlatform {

namespace {

enum class Form { Plain, Automation, Base64, Hex };

struct Type {
    std::string_view name;
    Form form;
    VARTYPE automation;
};

constexpr std::array<Type, 18> types = {{
    {"string", Form::Plain, VT_BSTR},
    {"uri", Form::Plain, VT_BSTR},
    {"uuid", Form::Plain, VT_BSTR},
    {"boolean", Form::Automation, VT_BOOL},
    {"i1", Form::Automation, VT_I1},
    {"i2", Form::Automation, VT_I2},
    {"i4", Form::Automation, VT_I4},
    {"int", Form::Automation, VT_I4},
    {"ui1", Form::Automation, VT_UI1},
    {"ui2", Form::Automation, VT_UI2},
    {"ui4", Form::Automation, VT_UI4},
    {"r4", Form::Automation, VT_R4},
    {"r8", Form::Automation, VT_R8},
    {"float", Form::Automation, VT_R8},
    {"number", Form::Plain, VT_BSTR},
    {"char", Form::Plain, VT_BSTR},
    {"bin.base64", Form::Base64, VT_ARRAY | VT_UI1},
    {"bin.hex", Form::Hex, VT_ARRAY | VT_UI1},
}};

const Type* Find(std::string_view name) noexcept {
    const auto isLetter = [](char own, char given) {
        return own == (given >= 'A' && given <= 'Z' ? static_cast<char>(given - 'A' + 'a') : given);
    };
    for (const Type& type : types)
        if (std::equal(type.name.begin(), type.name.end(), name.begin(), name.end(), isLetter)) return &type;
    return nullptr;
}

/// How bytes are spelled: so many digits carry so many bytes.
struct Spelling {
    std::string_view digits;
    unsigned bitsOfDigit;
    std::size_t digitsOfGroup;
};
constexpr Spelling base64 = {"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/", 6, 4};
constexpr Spelling hex = {"0123456789abcdef", 4, 2};

const Spelling& SpellingOf(Form form) noexcept { return form == Form::Base64 ? base64 : hex; }

std::string Spell(const Spelling& spelling, std::string_view bytes) {
    std::string text;
    unsigned bits = 0;
    unsigned pending = 0;
    const unsigned mask = (1U << spelling.bitsOfDigit) - 1;
    for (char byte : bytes) {
        bits = (bits << 8 | static_cast<unsigned char>(byte)) & 0xFFFF;
        for (pending += 8; pending >= spelling.bitsOfDigit; pending -= spelling.bitsOfDigit)
            text += spelling.digits[bits >> (pending - spelling.bitsOfDigit) & mask];
    }
    if (pending != 0) text += spelling.digits[bits << (spelling.bitsOfDigit - pending) & mask];
    while (text.size() % spelling.digitsOfGroup != 0)
        text += '=';
    return text;
}

bool Unspell(const Spelling& spelling, std::string_view text, std::string& bytes) {
    unsigned bits = 0;
    unsigned pending = 0;
    while (text.ends_with('='))
        text.remove_suffix(1);
    for (char c : text) {
        if (c == ' ' || c == '\t' || c == '\r' || c == '\n') continue;
        if (&spelling == &hex && c >= 'A' && c <= 'F') c = static_cast<char>(c - 'A' + 'a');
        const std::size_t digit = spelling.digits.find(c);
        if (digit == std::string_view::npos) return false;
        bits = (bits << spelling.bitsOfDigit | static_cast<unsigned>(digit)) & 0xFFFF;
        pending += spelling.bitsOfDigit;
        if (pending < 8) continue;
        pending -= 8;
        bytes.push_back(static_cast<char>(bits >> pending & 0xFF));
    }
    return pending < spelling.bitsOfDigit;
}

} // namespace

std::string DomDataType::NameOf(const xmlNode* node) {
    if (node->type != XML_ELEMENT_NODE) return {};
    const xmlAttr* attribute = AttributeOrder::Find(node, attributeName, namespaceUri).attribute;
    return attribute != nullptr ? DomTree::AttributeValue(attribute) : std::string();
}

bool DomDataType::IsKnown(std::string_view type) noexcept { return Find(type) != nullptr; }

HRESULT DomDataType::Typed(std::string_view name, std::string_view text, VARIANT* value) {
    const Type* type = Find(name);
    if (value == nullptr || type == nullptr || type->form == Form::Plain) return GiveText(value, text);
    ::VariantInit(value);
    if (type->form == Form::Automation) {
        if (type->automation == VT_BOOL && (text == "0" || text == "1")) {
            value->vt = VT_BOOL;
            value->boolVal = text == "1" ? VARIANT_TRUE : VARIANT_FALSE;
            return S_OK;
        }
        CComVariant string;
        if (const HRESULT result = GiveText(&string, text); FAILED(result)) return result;
        const HRESULT result = Convert(string, type->automation, value);
        return result == E_INVALIDARG ? E_FAIL : result;
    }
    std::string bytes;
    if (!Unspell(SpellingOf(type->form), text, bytes)) return E_FAIL;
    SAFEARRAY* array = ::SafeArrayCreateVector(VT_UI1, 0, static_cast<ULONG>(bytes.size()));
    if (array == nullptr) return E_OUTOFMEMORY;
    void* data = nullptr;
    if (const HRESULT result = ::SafeArrayAccessData(array, &data); FAILED(result)) {
        ::SafeArrayDestroy(array);
        return result;
    }
    if (!bytes.empty()) std::memcpy(data, bytes.data(), bytes.size());
    ::SafeArrayUnaccessData(array);
    value->vt = VT_ARRAY | VT_UI1;
    value->parray = array;
    return S_OK;
}

HRESULT DomDataType::Untyped(std::string_view name, const VARIANT& value, std::string& text) {
    const Type* type = Find(name);
    const bool isBytes = value.vt == (VT_ARRAY | VT_UI1);
    if (!isBytes && value.vt == VT_BOOL && type != nullptr && type->automation == VT_BOOL) {
        text.assign(1, value.boolVal != VARIANT_FALSE ? '1' : '0');
        return S_OK;
    }
    if (!isBytes) return TextOf(value, text);
    if (type == nullptr || (type->form != Form::Base64 && type->form != Form::Hex) || value.parray == nullptr)
        return E_INVALIDARG;
    void* data = nullptr;
    if (const HRESULT result = ::SafeArrayAccessData(value.parray, &data); FAILED(result)) return result;
    text =
        Spell(SpellingOf(type->form), {static_cast<const char*>(data), value.parray->rgsabound[0].cElements});
    ::SafeArrayUnaccessData(value.parray);
    return S_OK;
}

HRESULT DomDataType::Convert(const VARIANT& value, VARTYPE type, VARIANT* converted) {
    const HRESULT result = ::VariantChangeType(converted, const_cast<VARIANT*>(&value), 0, type);
    return FAILED(result) && HRESULT_FACILITY(result) == FACILITY_DISPATCH ? E_INVALIDARG : result;
}

HRESULT DomDataType::TextOf(const VARIANT& value, std::string& text) {
    if (value.vt == VT_BSTR) return AppendXmlUtf8(text, ViewOf(value.bstrVal)) ? S_OK : E_INVALIDARG;
    CComVariant string;
    if (const HRESULT result = Convert(value, VT_BSTR, &string); FAILED(result)) return result;
    return AppendXmlUtf8(text, ViewOf(string.bstrVal)) ? S_OK : E_INVALIDARG;
}

} // namespace OvPlatform
