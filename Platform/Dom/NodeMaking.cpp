#include "Dom/NodeMaking.h"

#include <libxml/parserInternals.h>

#include <cstddef>
#include <cstring>
#include <new>

namespace OvPlatform {

namespace {

/// What a text has no use for.
constexpr std::size_t roomInNode = offsetof(xmlNode, line) - offsetof(xmlNode, properties);

/// Zeroed.
template <class T>
T* Allocate() {
    void* memory = xmlMalloc(sizeof(T));
    if (memory == nullptr) throw std::bad_alloc();
    return new (memory) T();
}

} // namespace

xmlNode* MakeNode(xmlDoc* document, xmlElementType type) {
    auto* node = Allocate<xmlNode>();
    node->type = type;
    node->doc = document;
    if (type == XML_TEXT_NODE) node->name = xmlStringText;
    if (type == XML_COMMENT_NODE) node->name = xmlStringComment;
    return node;
}

void AppendNode(xmlNode* parent, xmlNode* node) noexcept {
    node->parent = parent;
    node->prev = parent->last;
    (node->prev != nullptr ? node->prev->next : parent->children) = node;
    parent->last = node;
}

xmlAttr* AppendAttribute(xmlNode* element, xmlAttr* last) {
    auto* attribute = Allocate<xmlAttr>();
    attribute->type = XML_ATTRIBUTE_NODE;
    attribute->doc = element->doc;
    attribute->parent = element;
    attribute->prev = last;
    (last != nullptr ? last->next : element->properties) = attribute;
    return attribute;
}

void SetValue(xmlAttr* attribute, std::string_view value) {
    xmlNode* text = MakeNode(attribute->doc, XML_TEXT_NODE);
    text->parent = reinterpret_cast<xmlNode*>(attribute);
    attribute->children = attribute->last = text;
    SetText(text, value);
}

void SetText(xmlNode* text, std::string_view content) {
    if (content.size() >= roomInNode) {
        text->content = DuplicateText(content);
        return;
    }
    // Where the tree library's own parser puts short texts.
    text->content = reinterpret_cast<xmlChar*>(&text->properties);
    std::memcpy(text->content, content.data(), content.size()); // what is behind is zero
}

xmlChar* DuplicateText(std::string_view text) {
    auto* memory = static_cast<xmlChar*>(xmlMalloc(text.size() + 1));
    if (memory == nullptr) throw std::bad_alloc();
    std::memcpy(memory, text.data(), text.size());
    memory[text.size()] = 0;
    return memory;
}

} // namespace OvPlatform
