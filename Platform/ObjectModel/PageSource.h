#pragma once

#include "Com/PlatformExport.h"
#include "ObjectModel/MarkupNames.h"
#include "Package/PartName.h"

#include <atlcomcli.h>
#include <msopc.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace OvPlatform {

/// An element of a source, by where it stands in the text.
struct SourceElement {
    std::uint32_t begin;  ///< of its '<'
    std::uint32_t tagEnd; ///< behind its start tag
    std::uint32_t end;    ///< behind its end tag, or behind its start tag if that is all
    std::uint32_t next;   ///< the element behind all that stands in this one
    std::uint32_t scope;  ///< its declarations and those around it, as an index
    ElementKind kind;
};

inline constexpr std::uint32_t noElement = 0xFFFFFFFF;

/// What a part that is referred to is used as.
enum class PartUse { Font, Image, ColorProfile, Dictionary };

/// What names parts in an attribute's value, and how.
enum class ReferenceKind : std::uint8_t {
    Whole,     ///< the value, less its fragment
    Image,     ///< the same, or {ColorConvertedBitmap IMAGE PROFILE}
    Context,   ///< ContextColor PROFILE ...
    Namespace, ///< none: the address that is declared, which says what type of document it is
};

/// A value that is written anew where the markup comes into another part or another type of document.
struct SourceReference {
    std::uint32_t valueBegin;
    std::uint32_t valueLength; ///< as it is written
    ReferenceKind kind;
    std::uint32_t parts[2]; ///< indices, noPart where it names none
};

inline constexpr std::uint32_t noPart = 0xFFFFFFFF;

/// A part that a source refers to, by what it was called as it was read.
struct SourcePart {
    std::string name;
    CComPtr<IXpsOMResource> resource; ///< null for one that was not found
};

/// Where in a decoded value the references stand: nothing for a value that has none.
struct ReferenceSpan {
    std::size_t begin;
    std::size_t length;
};
OV_PLATFORM_API std::vector<ReferenceSpan> ReferencesIn(ReferenceKind kind, std::string_view value);

/// The markup of a part that was read, with where its elements and references stand. It does not change.
class PageSource {
public:
    PageSource(const PageSource&) = delete;
    PageSource& operator=(const PageSource&) = delete;

    /// From a part's bytes, with the root element that it must have. Throws MarkupFailure and PackageError.
    static std::shared_ptr<const PageSource> Read(std::string bytes, const std::string& partName,
                                                  IXpsOMPartResources* resources, ElementKind root);
    /// Of markup that refers to no resources: a document's or a sequence's; Other stands for any root.
    static std::shared_ptr<const PageSource> ReadStructure(std::string bytes, const std::string& partName,
                                                           ElementKind root);
    /// From a page's text that was written here, with the parts that it refers to. `like`: what has the
    /// encoding that it is to be written in again; null for UTF-8.
    static std::shared_ptr<const PageSource> FromText(std::string text, const std::string& partName,
                                                      const std::vector<SourcePart>& parts,
                                                      const PageSource* like);

    const std::string& Text() const noexcept { return m_text; }
    std::string_view Text(std::size_t begin, std::size_t end) const noexcept {
        return std::string_view(m_text).substr(begin, end - begin);
    }
    const std::string& PartName() const noexcept { return m_partName; }
    XPS_DOCUMENT_TYPE Type() const noexcept { return m_type; }

    // Elements, in the order of the markup: 0 is the root.
    const SourceElement& At(std::uint32_t element) const noexcept { return m_elements[element]; }
    std::string_view StartTag(std::uint32_t element) const noexcept {
        return Text(At(element).begin, At(element).tagEnd);
    }
    /// noElement if there is none. The first child that `next` of its siblings leads on from.
    std::uint32_t FirstChild(std::uint32_t element) const noexcept {
        return At(element).next > element + 1 ? element + 1 : noElement;
    }
    std::uint32_t NextSibling(std::uint32_t parent, std::uint32_t element) const noexcept {
        return At(element).next < At(parent).next ? At(element).next : noElement;
    }
    /// Where its end tag begins; where the start tag ends if that is all there is.
    std::uint32_t ContentEnd(std::uint32_t element) const noexcept;
    bool IsEmptyTag(std::uint32_t element) const noexcept { return At(element).tagEnd == At(element).end; }

    // Declarations. Nothing where a prefix is not declared; the empty prefix is the default.
    struct Declaration {
        std::uint32_t outer;   ///< the scope around it
        std::uint32_t element; ///< that has it
        std::string prefix;
        std::string uri;
        /// Not empty for an attribute of markup compatibility: then `uri` is its value, whose words begin
        /// with prefixes that hold in `outer`.
        std::string_view rule = {};
    };
    const std::string* FindNamespace(std::uint32_t scope, std::string_view prefix) const noexcept;
    /// The one that a scope adds to the scope around it; null for the outermost.
    const Declaration* FindDeclaration(std::uint32_t scope) const noexcept {
        return scope == 0 ? nullptr : &m_declarations[scope];
    }

    /// A word of markup compatibility: for a namespace, or for what is called so in it.
    struct RuleWord {
        std::string_view rule;
        std::string uri;
        std::string name; ///< of an element or attribute, "*" for all; empty for the namespace itself
        bool operator==(const RuleWord&) const = default;
    };
    /// Those that a scope adds to another one that it stands in, 0 for none; each once.
    std::vector<RuleWord> Rules(std::uint32_t scope, std::uint32_t outer) const;
    /// The scope that an element stands in.
    std::uint32_t ScopeAround(std::uint32_t element) const noexcept;
    /// A prefix that stands for a namespace in a scope.
    std::optional<std::string> FindPrefix(std::uint32_t scope, std::string_view uri) const;

    // References, in the order of the markup.
    const std::vector<SourceReference>& References() const noexcept { return m_references; }
    const std::vector<SourcePart>& Parts() const noexcept { return m_parts; }
    /// The part that a reference of this source leads to; null if it has no such.
    const SourcePart* FindPart(std::string_view reference) const;

    // How the bytes were encoded.
    bool IsUtf16() const noexcept { return m_isUtf16; }
    bool IsBigEndian() const noexcept { return m_isBigEndian; }
    bool HasMark() const noexcept { return m_hasMark; }

private:
    friend class PageIndexer;

    PageSource() = default;
    static std::shared_ptr<PageSource> Decoded(std::string bytes, const std::string& partName);
    void Decode(std::string bytes);

    std::string m_text; // UTF-8 without a mark
    std::string m_partName;
    XPS_DOCUMENT_TYPE m_type = XPS_DOCUMENT_TYPE_UNSPECIFIED;
    std::vector<SourceElement> m_elements;
    std::vector<Declaration> m_declarations;
    std::vector<SourceReference> m_references;
    std::vector<SourcePart> m_parts;
    std::unordered_map<std::string, std::uint32_t, PartNameHash, PartNameEqual> m_partOfName;
    bool m_isUtf16 = false;
    bool m_isBigEndian = false;
    bool m_hasMark = false;
};

} // namespace OvPlatform
