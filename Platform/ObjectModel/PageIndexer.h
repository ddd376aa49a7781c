#pragma once

#include "ObjectModel/MarkupText.h"
#include "ObjectModel/PageSource.h"
#include "Package/PartName.h"
#include "Xml/EventParse.h"

#include <functional>
#include <string>
#include <unordered_map>

namespace OvPlatform {

/// The one parse of a source: sees that the markup is well-formed and no deeper than is allowed, and notes
/// where everything stands.
class PageIndexer final : private EventParse {
public:
    /// Finds what a reference leads to; null where there is no such part. May throw. None for markup whose
    /// references lead to no resources.
    using FindResource = std::function<CComPtr<IXpsOMResource>(PartUse use, const std::string& name)>;

    PageIndexer(PageSource& source, FindResource find, ElementKind root)
        : m_source(source), m_find(std::move(find)), m_root(root) {}

    /// Throws PackageError, with the line of what is wrong, and what the search does.
    void Run();

private:
    void StartDocument() override {}
    void EndDocument() override {}
    void StartElement(const StartTagEvent& tag) override;
    void EndElement(const xmlChar*, const xmlChar*, const xmlChar*) override;
    void Characters(const xmlChar*, int) override {}
    void CData(const xmlChar*, int) override {}
    void Comment(const xmlChar*) override {}
    void ProcessingInstruction(const xmlChar*, const xmlChar*) override {}

    std::uint32_t Position();
    ElementKind KindOf(const StartTagEvent& tag) const;
    void CheckRoot(const StartTagEvent& tag);
    std::uint32_t Declare(std::uint32_t scope, const StartTagEvent& tag);
    void NoteNamespaces(const SourceElement& element);
    void NoteReferences(const SourceElement& element);
    void NoteReference(const SourceElement& element, const RawAttributes::Item& attribute,
                       ReferenceKind kind);
    bool Resolve(PartUse use, std::string_view reference, std::uint32_t& part);
    static HRESULT Miss(ElementKind kind) noexcept;

    struct TextHash {
        using is_transparent = void;
        std::size_t operator()(std::string_view text) const noexcept {
            return std::hash<std::string_view>()(text);
        }
    };

    PageSource& m_source;
    const FindResource m_find;
    const ElementKind m_root;
    std::vector<std::uint32_t> m_open;
    std::size_t m_alternates = 0; // of markup compatibility that are open
    std::string_view m_namespace; // of the root
    std::unordered_map<std::string, std::uint32_t, TextHash, std::equal_to<>> m_partOfReference;
};

} // namespace OvPlatform
