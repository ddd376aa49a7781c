#include "PrintSchema/PrivateKeywordNames.h"

#include "ComSupport/ThrowHresult.h"
#include "PrintSchema/Bstr.h"
#include "PrintSchema/PrintSchemaXmlDocument.h"
#include "PrintSchema/TreeChange.h"

#include <LowLevelFacilities/Formatter/CPFormat.h>
#include <LowLevelFacilities/WideStrings/CXString.h>

#include <string>
#include <utility>

using namespace PrintSchemaText;

namespace {

using Names = PrivateKeywordNames;

std::wstring_view Usual() { return View(PrintSchema::USER_KEYWORDS_NS_PREFIX); }

/// With its colon; empty for a name that has none.
std::wstring_view PrefixOf(std::wstring_view name) { return name.substr(0, name.find(L':') + 1); }

CComPtr<IXMLDOMNode> Next(IXMLDOMNodeList* nodes) {
    CComPtr<IXMLDOMNode> node;
    ThrowIfFailed(nodes->nextNode(&node));
    return node;
}

[[noreturn]] void RefuseForeign(std::wstring_view name) {
    ThrowComException(E_FAIL,
                      FormatStdString("The prefix of private names is bound to another namespace where %s "
                                      "stands",
                                      CXString(name.data(), static_cast<int>(name.size()))));
}

} // namespace

std::wstring_view Names::Own() const { return View(m_document.UserKeywordsPrefix()); }

bool Names::AreMeantBy(std::wstring_view prefix) const {
    return (prefix == Own() || prefix == Usual()) && !m_document.IsPrefixOfOthers(prefix);
}

std::optional<Names::Binding> Names::DeclaredBy(IXMLDOMNode* node, std::wstring_view prefix) const {
    if (prefix.size() < 2) return std::nullopt;
    const CComBSTR declaration = Join({L"xmlns:", prefix.substr(0, prefix.size() - 1)});
    CComBSTR uri;
    if (!PrintSchemaXmlDocument::ReadAttribute(node, declaration, uri)) return std::nullopt;
    return View(uri) == m_uri ? Binding::Private : Binding::Foreign;
}

CComPtr<IXMLDOMNode> Names::ParentOf(IXMLDOMNode* node) const {
    CComPtr<IXMLDOMNode> parent;
    ThrowIfFailed(node->get_parentNode(&parent));
    return parent;
}

Names::Binding Names::BindingWithin(CComPtr<IXMLDOMNode>& node, std::wstring_view prefix) const {
    while (node) {
        if (const auto declared = DeclaredBy(node, prefix)) return *declared;
        CComPtr<IXMLDOMNode> parent = ParentOf(node);
        if (!parent) break;
        node = std::move(parent);
    }
    return Binding::None;
}

Names::Binding Names::BindingAt(IXMLDOMNode* node, std::wstring_view prefix) const {
    CComPtr<IXMLDOMNode> top = node;
    const Binding binding = BindingWithin(top, prefix);
    if (binding != Binding::None || !top) return binding;
    DOMNodeType type = NODE_INVALID;
    ThrowIfFailed(top->get_nodeType(&type));
    if (type == NODE_DOCUMENT) return Binding::None;
    // What is new and stands nowhere yet goes below the root element.
    top = m_document.GetRootNode();
    return BindingWithin(top, prefix);
}

Names::Binding Names::BindingAt(IXMLDOMNode* node, std::wstring_view prefix, Remembered& parents) const {
    if (const auto declared = DeclaredBy(node, prefix)) return *declared;
    CComPtr<IXMLDOMNode> parent = ParentOf(node);
    if (parent.p != parents.node.p || prefix != parents.prefix)
        parents = {parent, std::wstring(prefix), BindingAt(parent, prefix)};
    return parents.binding;
}

CComBSTR Names::NameOf(IXMLDOMNode* element) const {
    CComBSTR name;
    PrintSchemaXmlDocument::ReadAttribute(element, PrintSchema::NAME_ATTRIBUTE_NAME, name);
    return name;
}

CComPtr<IXMLDOMNodeList> Names::SelectPrefixed() const {
    CComBSTR query = Make(L"//*[contains(@name, ':')");
    for (const wchar_t* const uri : {PrintSchema::KEYWORDS_URI, PrintSchema::FRAMEWORK_URI}) {
        CComBSTR prefix;
        if (m_document.TryGetPrefixFromURI(uri, &prefix) == S_OK)
            query = Join({View(query), L" and not(starts-with(@name, '", View(prefix), L"'))"});
    }
    return m_document.SelectNodes(Join({View(query), L"]"}));
}

CComPtr<IXMLDOMNodeList> Names::SelectNamesWith(std::wstring_view prefix) const {
    return m_document.SelectNodes(Join({L"//*[starts-with(@name, '", prefix, L"')]"}));
}

// ---- Reading

bool Names::AreNormalised() const { return Own() == Usual(); }

std::vector<std::wstring_view> Names::Prefixes() const {
    if (AreNormalised()) return {Usual()};
    std::vector<std::wstring_view> prefixes;
    for (const std::wstring_view prefix : {Own(), Usual()})
        if (StandsAt(m_document.GetRootNode(), prefix)) prefixes.push_back(prefix);
    return prefixes;
}

bool Names::StandsAt(IXMLDOMNode* node, std::wstring_view name) const {
    const std::wstring_view prefix = PrefixOf(name);
    return IsPrivate(BindingAt(node, prefix), prefix);
}

bool Names::IsPrivate(Binding binding, std::wstring_view prefix) const {
    if (binding != Binding::None) return binding == Binding::Private;
    // A document need not declare what it gives out.
    return prefix == Own() && std::wstring_view(m_uri) == PrintSchema::USER_KEYWORDS_URI;
}

std::vector<CComPtr<IXMLDOMNode>> Names::NamedAmong(IXMLDOMNodeList* elements) const {
    std::vector<CComPtr<IXMLDOMNode>> named;
    Remembered parents;
    while (CComPtr<IXMLDOMNode> element = Next(elements)) {
        const CComBSTR name = NameOf(element);
        const std::wstring_view prefix = PrefixOf(View(name));
        if (!prefix.empty() && IsPrivate(BindingAt(element, prefix, parents), prefix))
            named.push_back(std::move(element));
    }
    return named;
}

// ---- Writing

bool Names::CanHaveUsualPrefix() const {
    const Binding atRoot = BindingAt(m_document.GetRootNode(), Usual());
    if (atRoot != Binding::None) return atRoot == Binding::Private;
    // Once the root element declares the namespace, such names of somebody else are refused.
    Remembered parents;
    const CComPtr<IXMLDOMNodeList> names = SelectNamesWith(Usual());
    while (const CComPtr<IXMLDOMNode> element = Next(names))
        if (BindingAt(element, Usual(), parents) == Binding::Foreign) return false;
    return true;
}

Names::Spelling Names::SpellAt(IXMLDOMNode* place, std::wstring_view wanted) const {
    // A document that gives out another prefix has none left of the two.
    const bool isEitherFree =
        AreNormalised() || Own() == View(PrintSchema::BASE_DRIVER_DEFAULT_USER_KEYWORDS_NS_PREFIX);
    const bool isUsualFree =
        isEitherFree && BindingAt(place, Usual()) != Binding::Foreign && CanHaveUsualPrefix();
    const Spelling usual{Usual(), Spelling::AtRoot};
    if (isUsualFree && wanted == Usual()) return usual;
    if (!AreNormalised()) {
        const Binding own = BindingAt(place, Own());
        if (own == Binding::Private) return {Own(), Spelling::None};
        if (isEitherFree && own == Binding::None)
            return {Own(), CanHaveUsualPrefix() ? Spelling::AtRoot : Spelling::WithName};
    }
    if (!isUsualFree)
        ThrowComException(E_FAIL, "Both prefixes of private names are bound to other namespaces");
    return usual;
}

std::vector<std::wstring_view> Names::MissingAtRoot(std::wstring_view prefix) const {
    std::vector<std::wstring_view> missing;
    for (const std::wstring_view each : {prefix, Usual()}) {
        const bool isListed = !missing.empty() && missing.front() == each;
        if (!isListed && BindingAt(m_document.GetRootNode(), each) != Binding::Private)
            missing.push_back(each);
    }
    return missing;
}

void Names::RequireSameMeaning(IXMLDOMNode* parent, IXMLDOMNode* child) const {
    if (parent == m_document.GetRootNode()) return;
    for (const std::wstring_view prefix : Prefixes()) {
        if (BindingAt(parent, prefix) != Binding::Foreign) continue;
        CComPtr<IXMLDOMNodeList> named;
        const CComBSTR query = Join({L"descendant-or-self::*[starts-with(@name, '", prefix, L"')]"});
        ThrowIfFailed(child->selectNodes(query, &named));
        while (const CComPtr<IXMLDOMNode> element = Next(named)) {
            CComPtr<IXMLDOMNode> top = element;
            if (BindingWithin(top, prefix) == Binding::None) RefuseForeign(View(NameOf(element)));
        }
    }
}

// ---- Normalising

bool Names::AreDeclaredOnce() const {
    CComBSTR xml;
    ThrowIfFailed(m_document.get_xml(&xml));
    const auto isOnce = [&](std::wstring_view text) {
        const std::size_t first = View(xml).find(text);
        return first != std::wstring_view::npos && View(xml).find(text, first + 1) == std::wstring_view::npos;
    };
    const auto declaration = [&](std::wstring_view prefix) {
        return Join({L"xmlns:", prefix.substr(0, prefix.size() - 1), L"="});
    };
    return isOnce(m_uri) && isOnce(View(declaration(Own()))) &&
           (AreNormalised() || View(xml).find(View(declaration(Usual()))) == std::wstring_view::npos);
}

CComBSTR Names::WithUsualPrefix(std::wstring_view name, std::wstring_view prefix) const {
    CXString text(name.data(), static_cast<int>(name.size()));
    text.Replace(CXString(prefix.data(), static_cast<int>(prefix.size())),
                 PrintSchema::USER_KEYWORDS_NS_PREFIX);
    return Make(text.View());
}

void Names::Normalise(TreeChange& change) const {
    if (AreDeclaredOnce()) {
        if (AreNormalised()) return;
        const CComPtr<IXMLDOMNodeList> named = SelectNamesWith(Own());
        while (const CComPtr<IXMLDOMNode> element = Next(named)) {
            const CComPtr<IXMLDOMNode> attribute =
                PrintSchemaXmlDocument::FindAttribute(element, PrintSchema::NAME_ATTRIBUTE_NAME);
            change.SetValue(attribute, WithUsualPrefix(View(NameOf(element)), Own()));
        }
        return;
    }
    std::vector<std::pair<CComPtr<IXMLDOMNode>, CComBSTR>> renamed;
    Remembered parents;
    Remembered parentsOfUsual;
    const CComPtr<IXMLDOMNodeList> elements = SelectPrefixed();
    while (const CComPtr<IXMLDOMNode> element = Next(elements)) {
        const CComBSTR name = NameOf(element);
        const std::wstring_view prefix = PrefixOf(View(name));
        const bool isUsual = prefix == Usual();
        if (!isUsual && BindingAt(element, prefix, parents) != Binding::Private) continue;
        if (BindingAt(element, Usual(), parentsOfUsual) == Binding::Foreign) RefuseForeign(View(name));
        if (isUsual) continue;
        renamed.emplace_back(PrintSchemaXmlDocument::FindAttribute(element, PrintSchema::NAME_ATTRIBUTE_NAME),
                             WithUsualPrefix(View(name), prefix));
    }
    for (const auto& [attribute, text] : renamed)
        change.SetValue(attribute, text);
}
