#pragma once

#include <libxml/tree.h>

#include <cstdint>
#include <memory>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace OvPlatform {

/// The elements of a document by the value of their attribute `name`, which is how Print Schema documents
/// call their features. Holds as long as the document does not change.
class NamedElements {
public:
    /// Null for a document whose attributes are not plain texts.
    static std::unique_ptr<const NamedElements> Of(xmlDoc* document);

    /// Those of a local name in a namespace, empty for none, in document order.
    std::vector<xmlNode*> Find(std::string_view local, std::string_view uri, std::string_view name) const;

    /// Whether a node is an element of that name.
    static bool IsElement(const xmlNode* node, std::string_view local, std::string_view uri) noexcept;
    /// The attribute `name` of an element; null where it has none.
    static const xmlAttr* NameOf(const xmlNode* element) noexcept;

private:
    std::unordered_map<std::string_view, std::vector<xmlNode*>> m_elements; // the texts are the document's
};

/// When a document's named elements are worth finding: at the third question between two changes. One that is
/// changed between all questions is searched for each.
class NamedElementsOnDemand {
public:
    /// Null where the document has to be searched.
    const NamedElements* Of(xmlDoc* document, std::uint64_t version);

private:
    static constexpr int worthwhile = 3;

    std::uint64_t m_version = 0;
    int m_questions = 0; // at that version
    std::unique_ptr<const NamedElements> m_elements;
};

} // namespace OvPlatform
