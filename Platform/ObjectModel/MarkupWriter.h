#pragma once

#include "ObjectModel/PageObjects.h"
#include "ObjectModel/PageSource.h"
#include "Package/PartName.h"

#include <functional>
#include <optional>
#include <unordered_map>

namespace OvPlatform {

/// A value that may refer to parts: each piece is a text, and then the reference to a part.
struct ReferringValue {
    struct Piece {
        std::string text;
        CComPtr<IXpsOMResource> part; ///< null for a text alone
    };
    std::vector<Piece> pieces;

    ReferringValue() = default;
    explicit ReferringValue(std::string text) : pieces{{std::move(text), {}}} {}
    /// Without references.
    std::string Text() const;
};

/// Writes markup that becomes one part: ranges of sources as they stand, and new elements with the prefixes
/// that hold where they come to stand.
class MarkupWriter {
public:
    /// Of text in UTF-8. May throw.
    using Sink = std::function<void(std::string_view)>;

    /// `partName`: references are relative to it.
    MarkupWriter(Sink sink, std::string partName, XPS_DOCUMENT_TYPE type);
    MarkupWriter(const MarkupWriter&) = delete;
    MarkupWriter& operator=(const MarkupWriter&) = delete;

    XPS_DOCUMENT_TYPE Type() const noexcept { return m_type; }

    void Write(std::string_view text);
    /// ` name="value"`.
    void WriteAttribute(std::string_view name, std::string_view value);
    std::string Resolve(const ReferringValue& value);

    /// A range of a source, with its references as they are from this part.
    void Copy(const PageSource& source, std::size_t begin, std::size_t end);
    /// The same of a whole element, with the declarations that it needs here.
    void CopyElement(const PageSource& source, std::uint32_t element);

    /// The begin of a source's start tag, "<name" and the declarations that it needs here. True where these
    /// say anew what its own attributes of markup compatibility say (IsRule), which are left out then.
    bool OpenTag(const PageSource& source, std::uint32_t element);
    static bool IsRule(const PageSource& source, std::uint32_t element, std::string_view attribute);
    /// The start tag of a root for a copy of an element, with all declarations that hold for that.
    void OpenRootAround(const PageSource& source, std::uint32_t element, std::string_view localName);
    /// What holds inside an element, for as long as this lives.
    class Inside {
    public:
        /// Of a source.
        Inside(MarkupWriter& writer, const PageSource& source, std::uint32_t element);
        Inside(const Inside&) = delete;
        Inside& operator=(const Inside&) = delete;
        ~Inside();

    private:
        MarkupWriter& m_writer;
        const PageSource* m_source;
        std::uint32_t m_scope;
        std::string m_prefix;
    };

    /// Declares the page's namespace, behind the name of an element that is the first to be written.
    void DeclareIfRoot();
    /// Of the page's namespace, as new elements here have it.
    std::string QualifiedName(std::string_view localName) const;
    /// The name of a key's attribute here, and in `declaration` what is to be declared for it.
    std::string KeyName(std::string& declaration) const;

    const std::vector<UsedPart>& Parts() const noexcept { return m_parts; }

private:
    /// Nothing where it is not declared.
    std::optional<std::string> NamespaceHere(std::string_view prefix) const;
    bool DeclareFor(const PageSource& source, std::uint32_t element);
    /// Gives the scope up to which all was there already: 0 for none.
    std::uint32_t DeclareScope(const PageSource& source, std::uint32_t scope,
                               std::vector<std::string> declared);
    using RuleWords = std::vector<PageSource::RuleWord>;
    void WriteRules(const PageSource& source, std::uint32_t scope, const RuleWords& words);
    std::string Renewed(const PageSource& source, const SourceReference& reference);
    void NoteParts(const PageSource& source, const SourceReference& reference);
    std::string Relative(const std::string& name) const;
    void Note(const std::string& name, IXpsOMResource* resource);

    struct KnownSource {
        bool differs = false;           // references and namespaces have to be written anew
        std::vector<bool> noted;        // of its parts
        std::vector<std::string> names; // of its parts, by now
    };
    KnownSource& Known(const PageSource& source);

    Sink m_sink;
    std::string m_partName;
    XPS_DOCUMENT_TYPE m_type;
    // Where the writing stands: in what scope of which source, and the prefix of the page's namespace there.
    const PageSource* m_source = nullptr;
    std::uint32_t m_scope = 0;
    std::string m_prefix;
    bool m_hasRoot = false;
    std::vector<UsedPart> m_parts;
    std::unordered_map<std::string, std::size_t, PartNameHash, PartNameEqual> m_partOfName;
    std::unordered_map<const PageSource*, KnownSource> m_known;
};

} // namespace OvPlatform
