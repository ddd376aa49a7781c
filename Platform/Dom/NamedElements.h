#pragma once

#include "Dom/ElementTest.h"

#include <libxml/tree.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace OvPlatform {

/// The elements of one local name by the value of their attribute `name`, which is how Print Schema documents
/// call their features.
class NamedElements {
public:
    /// Of a document without entities.
    NamedElements(xmlDoc* document, std::string_view local);

    const std::string& Local() const noexcept { return m_local; }
    /// Gives those of the test, which is one for the local name, in document order. False, and none, where
    /// that order is not known any more.
    bool Find(const ElementTest& test, std::string_view name, std::vector<xmlNode*>& found) const;

    /// An element of the document has a name now. Throws std::bad_alloc, and is of no more use.
    void Add(xmlNode* element, const xmlAttr* name);
    /// It has that name no more. False where it was not known by it. Throws std::bad_alloc.
    bool Remove(const xmlNode* element, const xmlAttr* name);

    /// The attribute `name` of an element; null where it has none.
    static const xmlAttr* NameOf(const xmlNode* element) noexcept {
        const xmlAttr* attribute = element->properties;
        while (attribute != nullptr && !IsName(attribute))
            attribute = attribute->next;
        return attribute;
    }
    static bool IsName(const xmlAttr* attribute) noexcept {
        const xmlChar* const text = attribute->name;
        return attribute->ns == nullptr && text[0] == 'n' && text[1] == 'a' && text[2] == 'm' &&
               text[3] == 'e' && text[4] == 0;
    }
    static bool HasValue(const xmlAttr* attribute, std::string_view value) noexcept;

private:
    struct Entry {
        xmlNode* element; // null for one that is removed
        std::uint32_t hash;
        std::uint32_t next; // of the chain
    };

    static std::uint32_t HashOf(const xmlAttr* name);
    std::uint32_t& ChainOf(std::uint32_t hash) noexcept { return m_chains[hash & (m_chains.size() - 1)]; }
    void LinkAll();

    std::string m_local;
    std::vector<Entry> m_entries;
    std::vector<std::uint32_t> m_chains; // a power of two, each the number of its first entry
    std::size_t m_inOrder = 0;           // so many entries stand in document order
};

/// Those of the local names that a document is asked for. They are kept up to date through small changes, and
/// given up at a large one.
class NamedElementsOnDemand {
public:
    void Find(xmlDoc* document, const ElementTest& test, std::string_view name, std::vector<xmlNode*>& found);

    // What changes the document, told before a node goes and after it came.

    void Linked(xmlNode* node) noexcept;
    void Unlinking(const xmlNode* node) noexcept;
    void AttributeChanging(const xmlAttr* attribute) noexcept;
    void AttributeChanged(const xmlAttr* attribute) noexcept;
    /// Of whatever kind a change may be.
    void GiveUp() noexcept { m_tables.clear(); }

private:
    NamedElements* TableOf(std::string_view local) noexcept;
    void Remove(const xmlNode* element, const xmlAttr* name) noexcept;
    void Add(xmlNode* element, const xmlAttr* name) noexcept;

    const xmlDoc* m_document = nullptr;
    std::vector<NamedElements> m_tables;
};

} // namespace OvPlatform
