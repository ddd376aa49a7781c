#include "ObjectModel/PageSource.h"

#include "ObjectModel/MarkupFailure.h"
#include "ObjectModel/MarkupText.h"
#include "ObjectModel/PageIndexer.h"
#include "Package/OpcUri.h"
#include "Package/PartName.h"
#include "Xml/DocumentBound.h"
#include "Xml/TextConversion.h"
#include "Xml/XmlDeclaration.h"

#include <algorithm>

namespace OvPlatform {

namespace {

constexpr std::string_view blanks = " \t\r\n";
constexpr std::string_view utf8Mark = "\xEF\xBB\xBF";

// The first words of a value, from a place on.
std::vector<ReferenceSpan> WordsOf(std::string_view value, std::size_t at, std::size_t most) {
    std::vector<ReferenceSpan> words;
    while (words.size() < most && (at = value.find_first_not_of(blanks, at)) != std::string_view::npos) {
        const std::size_t end = std::min(value.find_first_of(blanks, at), value.size());
        words.push_back({at, end - at});
        at = end;
    }
    return words;
}

template <class Resource, class Collection>
CComPtr<IXpsOMResource> FindIn(IXpsOMPartResources* resources,
                               HRESULT (STDMETHODCALLTYPE IXpsOMPartResources::*get)(Collection**),
                               const std::string& name) {
    CComPtr<Collection> collection;
    ThrowIfFailed((resources->*get)(&collection));
    CComPtr<IOpcPartUri> uri;
    ThrowIfFailed(CreateOpcPartUri(name, &uri));
    CComPtr<Resource> resource;
    ThrowIfFailed(collection->GetByPartName(uri, &resource));
    return CComPtr<IXpsOMResource>(resource.p);
}

CComPtr<IXpsOMResource> FindResource(IXpsOMPartResources* resources, PartUse use, const std::string& name) {
    switch (use) {
    case PartUse::Font:
        return FindIn<IXpsOMFontResource>(resources, &IXpsOMPartResources::GetFontResources, name);
    case PartUse::Image:
        return FindIn<IXpsOMImageResource>(resources, &IXpsOMPartResources::GetImageResources, name);
    case PartUse::ColorProfile:
        return FindIn<IXpsOMColorProfileResource>(resources, &IXpsOMPartResources::GetColorProfileResources,
                                                  name);
    default:
        return FindIn<IXpsOMRemoteDictionaryResource>(
            resources, &IXpsOMPartResources::GetRemoteDictionaryResources, name);
    }
}

} // namespace

std::vector<ReferenceSpan> ReferencesIn(ReferenceKind kind, std::string_view value) {
    constexpr std::string_view converted = "{ColorConvertedBitmap";
    constexpr std::string_view context = "ContextColor";
    std::vector<ReferenceSpan> spans;
    switch (kind) {
    case ReferenceKind::Image:
        if (value.starts_with(converted)) {
            return WordsOf(value.substr(0, value.find('}')), converted.size(), 2);
        }
        [[fallthrough]];
    case ReferenceKind::Whole:
        spans.push_back({0, std::min(value.find('#'), value.size())});
        return spans;
    case ReferenceKind::Context:
        return value.starts_with(context) ? WordsOf(value, context.size(), 1) : spans;
    case ReferenceKind::Namespace:
        break;
    }
    return spans;
}

std::shared_ptr<const PageSource> PageSource::Read(std::string bytes, const std::string& partName,
                                                   IXpsOMPartResources* resources, ElementKind root) {
    const std::shared_ptr<PageSource> source = Decoded(std::move(bytes), partName);
    const auto find = [&](PartUse use, const std::string& name) {
        return FindResource(resources, use, name);
    };
    PageIndexer(*source, find, root).Run();
    return source;
}

std::shared_ptr<const PageSource> PageSource::ReadStructure(std::string bytes, const std::string& partName,
                                                            ElementKind root) {
    const std::shared_ptr<PageSource> source = Decoded(std::move(bytes), partName);
    PageIndexer(*source, {}, root).Run();
    return source;
}

std::shared_ptr<PageSource> PageSource::Decoded(std::string bytes, const std::string& partName) {
    if (bytes.size() > mostDocumentBytes) throw MarkupFailure(XPS_E_INVALID_MARKUP);
    std::shared_ptr<PageSource> source(new PageSource);
    source->m_partName = partName;
    source->Decode(std::move(bytes));
    return source;
}

std::shared_ptr<const PageSource> PageSource::FromText(std::string text, const std::string& partName,
                                                       const std::vector<SourcePart>& parts,
                                                       const PageSource* like) {
    const std::shared_ptr<PageSource> source(new PageSource);
    if (like != nullptr) {
        source->m_isUtf16 = like->m_isUtf16;
        source->m_isBigEndian = like->m_isBigEndian;
        source->m_hasMark = like->m_hasMark;
    }
    source->m_partName = partName;
    source->m_text = std::move(text);
    const auto find = [&](PartUse, const std::string& name) {
        const auto found = std::find_if(parts.begin(), parts.end(), [&](const SourcePart& part) {
            return ComparePartNames(part.name, name) == 0;
        });
        return found == parts.end() ? CComPtr<IXpsOMResource>() : found->resource;
    };
    PageIndexer(*source, find, ElementKind::FixedPage).Run();
    return source;
}

void PageSource::Decode(std::string bytes) {
    m_isBigEndian = bytes.starts_with("\xFE\xFF");
    m_isUtf16 = m_isBigEndian || bytes.starts_with("\xFF\xFE");
    m_hasMark = m_isUtf16 || bytes.starts_with(utf8Mark);
    if (m_isUtf16) {
        if (!FromUtf16Bytes(std::string_view(bytes).substr(2), m_isBigEndian, m_text))
            throw MarkupFailure(XPS_E_INVALID_XML_ENCODING);
    } else {
        m_text = std::move(bytes);
        if (m_hasMark) m_text.erase(0, utf8Mark.size());
    }
    const std::optional<XmlDeclaration> declaration = XmlDeclaration::FromDocument(m_text);
    if (!declaration || declaration->encoding.empty()) return;
    const TextEncoding declared = ClassifyEncoding(declaration->encoding);
    if (declared != (m_isUtf16 ? TextEncoding::Utf16 : TextEncoding::Utf8))
        throw MarkupFailure(XPS_E_INVALID_XML_ENCODING);
}

std::uint32_t PageSource::ContentEnd(std::uint32_t element) const noexcept {
    const SourceElement& at = At(element);
    if (IsEmptyTag(element)) return at.tagEnd;
    return static_cast<std::uint32_t>(m_text.rfind('<', at.end - 1));
}

const std::string* PageSource::FindNamespace(std::uint32_t scope, std::string_view prefix) const noexcept {
    for (; scope != 0; scope = m_declarations[scope].outer)
        if (m_declarations[scope].rule.empty() && m_declarations[scope].prefix == prefix)
            return m_declarations[scope].uri.empty() ? nullptr : &m_declarations[scope].uri;
    return nullptr;
}

std::vector<PageSource::RuleWord> PageSource::Rules(std::uint32_t scope, std::uint32_t outer) const {
    std::vector<RuleWord> rules;
    for (; scope != outer && scope != 0; scope = m_declarations[scope].outer) {
        const Declaration& said = m_declarations[scope];
        if (said.rule.empty()) continue;
        for (const ReferenceSpan& span : WordsOf(said.uri, 0, said.uri.size())) {
            const std::string_view word = std::string_view(said.uri).substr(span.begin, span.length);
            const std::size_t colon = word.find(':');
            const std::string* const uri = FindNamespace(said.outer, word.substr(0, colon));
            if (uri == nullptr) continue; // it says nothing
            RuleWord rule{said.rule, *uri,
                          colon == std::string_view::npos ? "" : std::string(word.substr(colon + 1))};
            if (std::find(rules.begin(), rules.end(), rule) == rules.end()) rules.push_back(std::move(rule));
        }
    }
    return rules;
}

std::uint32_t PageSource::ScopeAround(std::uint32_t element) const noexcept {
    std::uint32_t scope = At(element).scope;
    while (scope != 0 && m_declarations[scope].element == element)
        scope = m_declarations[scope].outer;
    return scope;
}

std::optional<std::string> PageSource::FindPrefix(std::uint32_t scope, std::string_view uri) const {
    for (std::uint32_t at = scope; at != 0; at = m_declarations[at].outer) {
        const Declaration& declared = m_declarations[at];
        if (!declared.rule.empty() || declared.prefix.empty() || declared.uri != uri) continue;
        if (FindNamespace(scope, declared.prefix) == &declared.uri) return declared.prefix;
    }
    return std::nullopt;
}

const SourcePart* PageSource::FindPart(std::string_view reference) const {
    const auto found = m_partOfName.find(ResolvePartName(m_partName, reference));
    return found == m_partOfName.end() ? nullptr : &m_parts[found->second];
}

} // namespace OvPlatform
