#include "PrinterExtension/SchemaNode.h"

#include "Xml/TextConversion.h"

#include <algorithm>
#include <cstring>
#include <optional>

namespace OvPlatform {

namespace {

constexpr std::wstring_view frameworkNamespace =
    L"http://schemas.microsoft.com/windows/2003/08/printing/printschemaframework";
constexpr std::wstring_view keywordsNamespace =
    L"http://schemas.microsoft.com/windows/2003/08/printing/printschemakeywords";
constexpr std::wstring_view instanceNamespace = L"http://www.w3.org/2001/XMLSchema-instance";

void Check(HRESULT result) {
    if (FAILED(result)) throw SchemaFailure{result};
}

CComBSTR ToBstr(std::wstring_view text) {
    CComBSTR made;
    made.Attach(SysAllocStringLen(text.data(), static_cast<UINT>(text.size())));
    if (!made) throw std::bad_alloc();
    return made;
}

std::wstring_view View(const CComBSTR& text) { return ViewOf(text.m_str); }

std::optional<std::wstring> Attribute(IXMLDOMElement* element, std::wstring_view name) {
    CComVariant value;
    const HRESULT result = element->getAttribute(ToBstr(name), &value);
    Check(result);
    if (result != S_OK || value.vt != VT_BSTR) return std::nullopt;
    return std::wstring(ViewOf(value.bstrVal));
}

std::wstring BaseName(IXMLDOMNode* node) {
    CComBSTR name;
    Check(node->get_baseName(&name));
    return std::wstring(View(name));
}

std::wstring NamespaceOf(IXMLDOMNode* node) {
    CComBSTR uri;
    Check(node->get_namespaceURI(&uri));
    return std::wstring(View(uri));
}

// Of a prefix in the text of an attribute; empty where it is declared nowhere.
std::wstring Resolve(IXMLDOMElement* element, const std::wstring& prefix) {
    const std::wstring declaration = prefix.empty() ? L"xmlns" : L"xmlns:" + prefix;
    CComPtr<IXMLDOMElement> scope(element);
    while (scope) {
        if (auto uri = Attribute(scope, declaration)) return std::move(*uri);
        CComPtr<IXMLDOMNode> parent;
        Check(scope->get_parentNode(&parent));
        scope = CComQIPtr<IXMLDOMElement>(parent);
    }
    return {};
}

bool IsFramework(IXMLDOMNode* node, std::initializer_list<std::wstring_view> tags) {
    const std::wstring name = BaseName(node);
    return std::find(tags.begin(), tags.end(), name) != tags.end() && NamespaceOf(node) == frameworkNamespace;
}

// Each child element that is one of the framework's of those names, until `take` has what it wants.
template <class Take>
CComPtr<IXMLDOMElement> FindChild(IXMLDOMElement* parent, std::initializer_list<std::wstring_view> tags,
                                  Take take) {
    CComPtr<IXMLDOMNode> child;
    Check(parent->get_firstChild(&child));
    while (child) {
        const CComQIPtr<IXMLDOMElement> element(child);
        if (element && IsFramework(element, tags) && take(element.p))
            return CComPtr<IXMLDOMElement>(element.p);
        CComPtr<IXMLDOMNode> next;
        Check(child->get_nextSibling(&next));
        child = next;
    }
    return {};
}

struct SplitName {
    std::wstring prefix;
    std::wstring local;
};

SplitName Split(const std::wstring& qualified) {
    const std::size_t colon = qualified.find(L':');
    if (colon == std::wstring::npos) return {{}, qualified};
    return {qualified.substr(0, colon), qualified.substr(colon + 1)};
}

} // namespace

CComPtr<IXMLDOMElement> LoadSchema(const std::string& bytes) {
    CComPtr<IXMLDOMDocument2> document;
    Check(document.CoCreateInstance(__uuidof(DOMDocument60)));
    CComVariant source;
    source.parray = SafeArrayCreateVector(VT_UI1, 0, static_cast<ULONG>(bytes.size()));
    if (source.parray == nullptr) throw std::bad_alloc();
    source.vt = VT_ARRAY | VT_UI1;
    if (!bytes.empty()) std::memcpy(source.parray->pvData, bytes.data(), bytes.size());
    VARIANT_BOOL isLoaded = VARIANT_FALSE;
    Check(document->load(source, &isLoaded));
    CComPtr<IXMLDOMElement> root;
    Check(document->get_documentElement(&root));
    if (isLoaded == VARIANT_FALSE || !root) throw SchemaFailure{E_FAIL};
    return root;
}

SchemaName NameOf(IXMLDOMElement* element) {
    const auto name = Attribute(element, L"name");
    if (!name) return {BaseName(element), NamespaceOf(element)};
    SplitName split = Split(*name);
    // Without a prefix a name is in no namespace: the default one is that of elements.
    std::wstring uri = split.prefix.empty() ? std::wstring() : Resolve(element, split.prefix);
    return {std::move(split.local), std::move(uri)};
}

CComPtr<IXMLDOMElement> FindNamed(IXMLDOMElement* parent, std::initializer_list<std::wstring_view> tags,
                                  const SchemaName& name) {
    return FindChild(parent, tags, [&](IXMLDOMElement* child) {
        const auto written = Attribute(child, L"name");
        // Few bear the local name, so that only few prefixes are looked up.
        return written && Split(*written).local == name.local && NameOf(child) == name;
    });
}

CComPtr<IXMLDOMElement> FindFirst(IXMLDOMElement* parent, std::wstring_view tag) {
    return FindChild(parent, {tag}, [](IXMLDOMElement*) { return true; });
}

std::size_t CountOf(IXMLDOMElement* parent, std::wstring_view tag) {
    std::size_t count = 0;
    FindChild(parent, {tag}, [&](IXMLDOMElement*) {
        ++count;
        return false;
    });
    return count;
}

CComPtr<IXMLDOMElement> RootOf(IXMLDOMElement* element) {
    CComPtr<IXMLDOMDocument> document;
    Check(element->get_ownerDocument(&document));
    CComPtr<IXMLDOMElement> root;
    Check(document->get_documentElement(&root));
    return root;
}

std::wstring TypeOf(IXMLDOMElement* value) {
    CComPtr<IXMLDOMNamedNodeMap> attributes;
    Check(value->get_attributes(&attributes));
    CComPtr<IXMLDOMNode> type;
    Check(attributes->getQualifiedItem(ToBstr(L"type"), ToBstr(instanceNamespace), &type));
    return type ? Split(std::wstring(View(TextOf(type)))).local : std::wstring();
}

CComBSTR TextOf(IXMLDOMNode* node) {
    CComBSTR text;
    Check(node->get_text(&text));
    return text;
}

SchemaName AskedName(BSTR local, BSTR namespaceUri) {
    const std::wstring_view uri = ViewOf(namespaceUri);
    return {std::wstring(ViewOf(local)), std::wstring(uri.empty() ? keywordsNamespace : uri)};
}

SchemaName Keyword(std::wstring_view local) { return {std::wstring(local), std::wstring(keywordsNamespace)}; }

} // namespace OvPlatform
