#pragma once

#include <ObjectModel/PartMarkup.h>

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace OvPipeline {

/// An event of markup, by what it means.
struct MarkupEvent {
    enum class Kind { Start, End, Text };
    struct Attribute {
        std::string name;    // "{uri}local", the local name alone where it has no namespace
        std::string meaning; // references as what they lead to
        std::string written;
    };

    Kind kind = Kind::Text;
    std::string name;                  // of an element, as of an attribute; XPS's own have no namespace here
    std::vector<Attribute> attributes; // by name
    std::string text;

    /// The same whatever prefixes stand in it, and whatever parts are called.
    bool Means(const MarkupEvent& other) const;
};

/// Markup of a part, event after event: prefixes, comments, the order of attributes, white space between
/// elements, and which of the two vocabularies of XPS is spoken make no difference. Memory does not grow with
/// the markup, but for what one element holds.
class MarkupReader {
public:
    /// What a reference to a part stands for; nothing for one that leads to none.
    using Resolve = std::function<std::optional<std::string>(const std::string& reference)>;

    static constexpr std::size_t deepest = 256; // levels of elements

    MarkupReader(std::string partName, OvPlatform::PartMarkup::ReadBytes bytes, Resolve resolve);
    MarkupReader(const MarkupReader&) = delete;
    MarkupReader& operator=(const MarkupReader&) = delete;

    /// False at the end. Throws OvPlatform::PackageError for markup that cannot be read, a document type
    /// declaration, elements that are nested too deeply, or too large a part, and for what the bytes throw.
    bool Next(MarkupEvent& event);

    /// Where the last event stands: "FixedPage/Canvas 2/Path 14", counted among its siblings.
    std::string Place() const;

private:
    void TakeStart(MarkupEvent& event);
    void TakeEnd(MarkupEvent& event);
    std::string NameHere(bool isAttribute) const;
    std::string MeaningHere(const std::string& element, const std::string& name,
                            const std::string& value) const;

    struct Open {
        std::string name;
        std::size_t number; // among its siblings, from 1
        std::size_t children = 0;
    };

    OvPlatform::PartMarkup m_markup;
    Resolve m_resolve;
    std::vector<Open> m_open;
    bool m_isEmptyElement = false; // its end is due
    bool m_hasEnded = false;       // the element at the back of m_open
    std::optional<MarkupEvent> m_due;
};

} // namespace OvPipeline
