#pragma once

#include "Xml/StartTag.h"
#include "Xml/XmlString.h"

#include <libxml/tree.h>

#include <string_view>

namespace OvPlatform {

// An element's attributes and its namespace declarations form one sequence, that of the source text. The tree
// keeps them in two lists; each attribute remembers its rank, the number of declarations that stand before
// it.

constexpr const char* xmlnsUri = "http://www.w3.org/2000/xmlns/";

/// One member of the sequence: either an attribute or a declaration, or neither past the end.
struct AttributeSlot {
    xmlAttr* attribute = nullptr;
    xmlNs* declaration = nullptr;

    explicit operator bool() const noexcept { return attribute != nullptr || declaration != nullptr; }
};

/// Walks the sequence.
class AttributeCursor {
public:
    /// `element` may be of any node type; only elements have attributes.
    explicit AttributeCursor(const xmlNode* element) noexcept;

    AttributeSlot Next() noexcept;

private:
    xmlAttr* m_attribute;
    xmlNs* m_declaration;
    std::uintptr_t m_passed = 0;
};

namespace AttributeOrder {

std::uintptr_t Rank(const xmlAttr* attribute) noexcept;
void SetRank(xmlAttr* attribute, std::uintptr_t rank) noexcept;

/// Ranks the attributes of a freshly parsed element.
void RankFromSource(xmlNode* element, StartTag tag) noexcept;

/// The member of that qualified name.
AttributeSlot Find(const xmlNode* element, std::string_view name) noexcept;
/// The member of that local name and namespace; declarations are in XmlnsUri.
AttributeSlot Find(const xmlNode* element, std::string_view localName, std::string_view uri) noexcept;

/// Puts a detached attribute behind all members, or before `place`, which it is to replace.
void Insert(xmlNode* element, xmlAttr* attribute, xmlAttr* place) noexcept;

/// Puts a declaration behind all members.
void Append(xmlNode* element, xmlNs* declaration) noexcept;

/// Puts `fresh` where `declaration` was.
void Replace(xmlNode* element, xmlNs* declaration, xmlNs* fresh) noexcept;

/// Takes a declaration out; its owner is now the caller.
void Remove(xmlNode* element, xmlNs* declaration) noexcept;

} // namespace AttributeOrder

} // namespace OvPlatform
