#include "ObjectModel/PageIndexer.h"

#include "ObjectModel/MarkupFailure.h"
#include "ObjectModel/MarkupText.h"
#include "Package/PackageError.h"
#include "Xml/XmlString.h"

#include <algorithm>
#include <array>

namespace OvPlatform {

namespace {

constexpr LONG deepest = 256;
// Of a value, as much as its first word needs however it is written.
constexpr std::size_t longestEscaped = 256;

struct ReferringAttribute {
    ElementKind element;
    std::string_view name;
    ReferenceKind kind;
};
constexpr std::array referring = {
    ReferringAttribute{ElementKind::Glyphs, "FontUri", ReferenceKind::Whole},
    ReferringAttribute{ElementKind::ImageBrush, "ImageSource", ReferenceKind::Image},
    ReferringAttribute{ElementKind::ResourceDictionary, "Source", ReferenceKind::Whole},
};

constexpr std::string_view contextColor = "ContextColor "; // a profile's name follows
constexpr std::array coloring = {std::string_view("Color"), std::string_view("Fill"),
                                 std::string_view("OpacityMask"), std::string_view("Stroke")};

std::optional<ReferenceKind> KindOfReference(ElementKind element, const RawAttributes::Item& attribute) {
    for (const ReferringAttribute& row : referring)
        if (row.element == element && row.name == attribute.name) return row.kind;
    // The first character of a colour may be written as a reference.
    const bool mayBeColor =
        attribute.value.starts_with(contextColor.front()) || attribute.value.starts_with('&');
    if (!mayBeColor || std::ranges::find(coloring, attribute.name) == coloring.end()) return std::nullopt;
    return UnescapeAttribute(attribute.value.substr(0, longestEscaped)).starts_with(contextColor)
               ? std::optional(ReferenceKind::Context)
               : std::nullopt;
}

// `number`: of the reference in its value.
PartUse UseOf(ElementKind element, ReferenceKind kind, std::size_t number) noexcept {
    if (kind == ReferenceKind::Context || number != 0) return PartUse::ColorProfile;
    if (kind == ReferenceKind::Image) return PartUse::Image;
    return element == ElementKind::Glyphs ? PartUse::Font : PartUse::Dictionary;
}

HRESULT ResultOf(const XmlFailure& failure) noexcept {
    switch (failure.code) {
    case XML_E_INVALIDENCODING:
    case XML_E_INVALIDSWITCH:
    case XML_E_INVALID_UNICODE:
        return XPS_E_INVALID_XML_ENCODING;
    default:
        return HRESULT_FACILITY(failure.code) == FACILITY_XPS ? failure.code : XPS_E_INVALID_MARKUP;
    }
}

} // namespace

void PageIndexer::Run() {
    m_source.m_declarations.emplace_back(); // 0 stands for none
    if (TakeText(m_source.m_text) && Open(0)) EventParse::Run();
    if (Failure().code != S_OK)
        throw PackageError(ResultOf(Failure()), m_source.m_partName, static_cast<int>(Failure().line),
                           Failure().reason);
    // A tag may declare a prefix behind a reference.
    std::vector<SourceReference>& references = m_source.m_references;
    const auto byPlace = [](const SourceReference& left, const SourceReference& right) {
        return left.valueBegin < right.valueBegin;
    };
    if (!std::is_sorted(references.begin(), references.end(), byPlace))
        std::sort(references.begin(), references.end(), byPlace);
}

std::uint32_t PageIndexer::Position() {
    const xmlParserInput& input = *Parser()->input;
    return static_cast<std::uint32_t>(input.consumed + static_cast<std::size_t>(input.cur - input.base));
}

void PageIndexer::StartElement(const StartTagEvent& tag) {
    if (!Enter(deepest)) return;
    // The parser stands at the end of the tag, which holds no other '<' than its first.
    const std::uint32_t at = Position();
    SourceElement element{};
    element.begin = static_cast<std::uint32_t>(m_source.m_text.rfind('<', at));
    element.tagEnd = at + (m_source.m_text[at] == '/' ? 2 : 1);
    element.scope = Declare(m_open.empty() ? 0 : m_source.m_elements[m_open.back()].scope, tag);
    if (m_open.empty()) CheckRoot(tag);
    element.kind = KindOf(tag);
    if (element.kind == ElementKind::AlternateContent) ++m_alternates;
    m_open.push_back(static_cast<std::uint32_t>(m_source.m_elements.size()));
    m_source.m_elements.push_back(element);
    if (tag.declarationCount != 0) NoteNamespaces(element);
    // Of other namespaces, attributes mean something else.
    const bool mayRefer = tag.attributeCount != 0 || element.kind == ElementKind::Glyphs;
    const bool isOwn = View(tag.uri) == m_namespace;
    if (m_find && isOwn && mayRefer) NoteReferences(element);
}

void PageIndexer::EndElement(const xmlChar*, const xmlChar*, const xmlChar*) {
    Leave();
    if (m_open.empty()) return; // of an element that was refused
    SourceElement& element = m_source.m_elements[m_open.back()];
    element.end = Position();
    element.next = static_cast<std::uint32_t>(m_source.m_elements.size());
    if (element.kind == ElementKind::AlternateContent) --m_alternates;
    m_open.pop_back();
}

ElementKind PageIndexer::KindOf(const StartTagEvent& tag) const {
    const std::string_view uri = View(tag.uri);
    if (uri == m_namespace) return KindOfElement(View(tag.name));
    return uri == compatibilityNamespace && View(tag.name) == "AlternateContent"
               ? ElementKind::AlternateContent
               : ElementKind::Other;
}

void PageIndexer::CheckRoot(const StartTagEvent& tag) {
    m_source.m_type = TypeOfPageNamespace(View(tag.uri));
    m_namespace = PageNamespace(m_source.m_type);
    if (m_root == ElementKind::Other) return;
    if (m_source.m_type == XPS_DOCUMENT_TYPE_UNSPECIFIED || KindOfElement(View(tag.name)) != m_root)
        FailHere(XPS_E_INVALID_MARKUP, "The root element is not the one that the part must have");
}

std::uint32_t PageIndexer::Declare(std::uint32_t scope, const StartTagEvent& tag) {
    const auto element = static_cast<std::uint32_t>(m_source.m_elements.size());
    for (int index = 0; index < tag.declarationCount; ++index) {
        const xmlChar* const* declaration = tag.declarations + std::ptrdiff_t{2} * index;
        m_source.m_declarations.push_back(
            {scope, element, std::string(View(declaration[0])), std::string(View(declaration[1]))});
        scope = static_cast<std::uint32_t>(m_source.m_declarations.size() - 1);
    }
    for (int index = 0; index < tag.attributeCount; ++index) {
        const xmlChar* const* attribute = tag.attributes + std::ptrdiff_t{5} * index;
        if (View(attribute[2]) != compatibilityNamespace) continue;
        const std::string_view rule = CompatibilityRule(View(attribute[0]));
        if (rule.empty()) continue;
        m_source.m_declarations.push_back(
            {scope,
             element,
             {},
             std::string(View(attribute[3], static_cast<int>(attribute[4] - attribute[3]))),
             rule});
        scope = static_cast<std::uint32_t>(m_source.m_declarations.size() - 1);
    }
    return scope;
}

void PageIndexer::NoteNamespaces(const SourceElement& element) {
    RawAttributes attributes(m_source.Text(element.begin, element.tagEnd));
    for (RawAttributes::Item item; attributes.Next(item);) {
        if (item.name != "xmlns" && PrefixOf(item.name) != "xmlns") continue;
        const std::string uri = UnescapeAttribute(item.value);
        if (NamespaceIn(XPS_DOCUMENT_TYPE_XPS, uri) == NamespaceIn(XPS_DOCUMENT_TYPE_OPENXPS, uri)) continue;
        m_source.m_references.push_back({static_cast<std::uint32_t>(element.begin + item.valueBegin),
                                         static_cast<std::uint32_t>(item.value.size()),
                                         ReferenceKind::Namespace,
                                         {noPart, noPart}});
    }
}

void PageIndexer::NoteReferences(const SourceElement& element) {
    bool hasFont = false;
    RawAttributes attributes(m_source.Text(element.begin, element.tagEnd));
    for (RawAttributes::Item item; attributes.Next(item);) {
        if (const std::optional<ReferenceKind> kind = KindOfReference(element.kind, item); kind) {
            NoteReference(element, item, *kind);
            hasFont = hasFont || *kind == ReferenceKind::Whole;
        }
    }
    if (element.kind == ElementKind::Glyphs && !hasFont && m_alternates == 0)
        FailHere(XPS_E_MISSING_FONTURI, "Glyphs name no font");
}

void PageIndexer::NoteReference(const SourceElement& element, const RawAttributes::Item& item,
                                ReferenceKind kind) {
    SourceReference reference{static_cast<std::uint32_t>(element.begin + item.valueBegin),
                              static_cast<std::uint32_t>(item.value.size()),
                              kind,
                              {noPart, noPart}};
    const std::string value = UnescapeAttribute(item.value);
    std::size_t count = 0;
    for (const ReferenceSpan& span : ReferencesIn(kind, value)) {
        const PartUse use = UseOf(element.kind, kind, count);
        std::uint32_t& part = reference.parts[count++];
        if (Resolve(use, std::string_view(value).substr(span.begin, span.length), part) &&
            m_source.m_parts[part].resource)
            continue;
        if (m_alternates == 0)
            return FailHere(part == noPart ? Miss(element.kind) : XPS_E_MISSING_RESOURCE_RELATIONSHIP,
                            "A reference leads to no part of the page");
    }
    m_source.m_references.push_back(reference);
}

bool PageIndexer::Resolve(PartUse use, std::string_view reference, std::uint32_t& part) {
    auto known = m_partOfReference.find(reference);
    if (known == m_partOfReference.end()) {
        known = m_partOfReference.emplace(reference, noPart).first;
        try {
            std::string name = ResolvePartName(m_source.m_partName, reference);
            const auto [entry, isNewName] =
                m_source.m_partOfName.try_emplace(name, static_cast<std::uint32_t>(m_source.m_parts.size()));
            if (isNewName) {
                CComPtr<IXpsOMResource> resource = m_find(use, name);
                m_source.m_parts.push_back({std::move(name), std::move(resource)});
            }
            known->second = entry->second;
        } catch (const PartNameError&) {
            known->second = noPart;
        }
    }
    part = known->second;
    return part != noPart;
}

HRESULT PageIndexer::Miss(ElementKind kind) noexcept {
    return kind == ElementKind::Glyphs ? XPS_E_INVALID_FONT_URI : XPS_E_INVALID_MARKUP;
}

} // namespace OvPlatform
