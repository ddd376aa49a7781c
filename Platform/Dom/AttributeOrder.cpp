#include "Dom/AttributeOrder.h"

namespace OvPlatform {

namespace {

bool HasName(const xmlAttr* attribute, std::string_view name) noexcept {
    const std::string_view local = View(attribute->name);
    const std::string_view prefix = attribute->ns ? View(attribute->ns->prefix) : std::string_view();
    if (prefix.empty()) return name == local;
    return name.size() == prefix.size() + 1 + local.size() && name.starts_with(prefix) &&
           name[prefix.size()] == ':' && name.ends_with(local);
}

bool HasName(const xmlNs* declaration, std::string_view name) noexcept {
    if (!name.starts_with("xmlns")) return false;
    name.remove_prefix(5);
    if (declaration->prefix == nullptr) return name.empty();
    return name.starts_with(':') && name.substr(1) == View(declaration->prefix);
}

} // namespace

AttributeCursor::AttributeCursor(const xmlNode* element) noexcept
    : m_attribute(element->type == XML_ELEMENT_NODE ? element->properties : nullptr),
      m_declaration(element->type == XML_ELEMENT_NODE ? element->nsDef : nullptr) {}

AttributeSlot AttributeCursor::Next() noexcept {
    AttributeSlot slot;
    if (m_declaration != nullptr &&
        (m_attribute == nullptr || AttributeOrder::Rank(m_attribute) > m_passed)) {
        slot.declaration = m_declaration;
        m_declaration = m_declaration->next;
        ++m_passed;
    } else if (m_attribute != nullptr) {
        slot.attribute = m_attribute;
        m_attribute = m_attribute->next;
    }
    return slot;
}

namespace AttributeOrder {

// The tree library leaves this field to validators, which are not used here.
std::uintptr_t Rank(const xmlAttr* attribute) noexcept {
    return reinterpret_cast<std::uintptr_t>(attribute->psvi);
}
void SetRank(xmlAttr* attribute, std::uintptr_t rank) noexcept {
    attribute->psvi = reinterpret_cast<void*>(rank);
}

void RankFromSource(xmlNode* element, StartTag tag) noexcept {
    xmlAttr* attribute = element->properties;
    std::uintptr_t declarations = 0;
    for (std::string_view name = tag.NextName(); attribute != nullptr && !name.empty();
         name = tag.NextName()) {
        if (StartTag::IsDeclaration(name)) {
            ++declarations;
        } else {
            SetRank(attribute, declarations);
            attribute = attribute->next;
        }
    }
}

AttributeSlot Find(const xmlNode* element, std::string_view name) noexcept {
    AttributeCursor cursor(element);
    for (AttributeSlot slot = cursor.Next(); slot; slot = cursor.Next())
        if (slot.attribute ? HasName(slot.attribute, name) : HasName(slot.declaration, name)) return slot;
    return {};
}

AttributeSlot Find(const xmlNode* element, std::string_view localName, std::string_view uri) noexcept {
    AttributeCursor cursor(element);
    for (AttributeSlot slot = cursor.Next(); slot; slot = cursor.Next()) {
        if (slot.attribute) {
            const std::string_view own =
                slot.attribute->ns ? View(slot.attribute->ns->href) : std::string_view();
            if (View(slot.attribute->name) == localName && own == uri) return slot;
        } else if (uri == xmlnsUri) {
            const xmlChar* prefix = slot.declaration->prefix;
            if ((prefix != nullptr ? View(prefix) : std::string_view("xmlns")) == localName) return slot;
        }
    }
    return {};
}

void Insert(xmlNode* element, xmlAttr* attribute, xmlAttr* place) noexcept {
    attribute->parent = element;
    if (place != nullptr) {
        SetRank(attribute, Rank(place));
        attribute->next = place;
        attribute->prev = place->prev;
        (place->prev ? place->prev->next : element->properties) = attribute;
        place->prev = attribute;
        return;
    }
    std::uintptr_t declarations = 0;
    for (const xmlNs* declaration = element->nsDef; declaration != nullptr; declaration = declaration->next)
        ++declarations;
    SetRank(attribute, declarations);
    attribute->next = nullptr;
    attribute->prev = element->properties;
    if (element->properties == nullptr) {
        element->properties = attribute;
        return;
    }
    while (attribute->prev->next != nullptr)
        attribute->prev = attribute->prev->next;
    attribute->prev->next = attribute;
}

void Append(xmlNode* element, xmlNs* declaration) noexcept {
    xmlNs** place = &element->nsDef;
    while (*place != nullptr)
        place = &(*place)->next;
    *place = declaration;
}

void Replace(xmlNode* element, xmlNs* declaration, xmlNs* fresh) noexcept {
    xmlNs** place = &element->nsDef;
    while (*place != declaration)
        place = &(*place)->next;
    fresh->next = declaration->next;
    declaration->next = nullptr;
    *place = fresh;
}

void Remove(xmlNode* element, xmlNs* declaration) noexcept {
    std::uintptr_t index = 0;
    xmlNs** place = &element->nsDef;
    for (; *place != declaration; place = &(*place)->next)
        ++index;
    *place = declaration->next;
    declaration->next = nullptr;
    for (xmlAttr* attribute = element->properties; attribute != nullptr; attribute = attribute->next)
        if (Rank(attribute) > index) SetRank(attribute, Rank(attribute) - 1);
}

} // namespace AttributeOrder

} // namespace OvPlatform
