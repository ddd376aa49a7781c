#include "Dom/TreeCopy.h"

#include "Dom/WhiteSpace.h"

#include <libxml/dict.h>
#include <libxml/parserInternals.h>

#include <cstddef>
#include <cstring>
#include <new>
#include <string>

namespace OvPlatform {

namespace {

/// What a text has no use for.
constexpr std::size_t roomInNode = offsetof(xmlNode, line) - offsetof(xmlNode, properties);

/// Zeroed, for the tree library to free.
template <class T>
T* Allocate() {
    void* memory = xmlMalloc(sizeof(T));
    if (memory == nullptr) throw std::bad_alloc();
    return new (memory) T();
}

xmlChar* Duplicate(std::string_view text) {
    auto* memory = static_cast<xmlChar*>(xmlMalloc(text.size() + 1));
    if (memory == nullptr) throw std::bad_alloc();
    std::memcpy(memory, text.data(), text.size());
    memory[text.size()] = 0;
    return memory;
}

} // namespace

TreeCopy::TreeCopy(const DomTree& source, DomTree& target) noexcept
    : m_source(source), m_target(target), m_document(target.Document()), m_parent(target.DocumentNode()) {}

DomTree::Pointer TreeCopy::Of(const DomTree& source, const DomSettings& settings) {
    // What the settings say of white space now is for the next text to be read.
    DomSettings own = settings;
    own.preserveWhiteSpace = source.PreservesWhiteSpace();
    DomTree::Pointer target = DomTree::Create(nullptr, own);
    target->Settings() = settings;
    // Names are looked up in it by nobody but the parser that made it, so that threads may share it.
    if (xmlDict* names = source.Document()->dict; names != nullptr && xmlDictReference(names) == 0)
        target->Document()->dict = names;
    TreeCopy(source, *target).Run();
    return target;
}

void TreeCopy::Run() {
    m_blanksCount.push_back(m_source.PreservesWhiteSpace());
    const xmlNode* top = m_source.DocumentNode();
    for (const xmlNode* node = top->children; node != nullptr;) {
        if (node->type == XML_ELEMENT_NODE) {
            CopyElement(node);
            if (node->children != nullptr) {
                node = node->children;
                continue;
            }
            m_parent = m_parent->parent;
            m_blanksCount.pop_back();
        } else {
            CopyLeaf(node);
        }
        while (node->next == nullptr) {
            node = node->parent;
            if (node == top) return;
            m_parent = m_parent->parent;
            m_blanksCount.pop_back();
        }
        node = node->next;
    }
}

void TreeCopy::CopyElement(const xmlNode* element) {
    xmlNode* copy = Append(XML_ELEMENT_NODE);
    copy->name = Name(element->name);
    copy->line = element->line;
    CopyDeclarations(element, copy);
    copy->ns = Namespace(element->ns, m_elementNs);
    CopyAttributes(element, copy);
    const SpaceRule rule = SpaceRuleOf(element);
    const bool blanksCount =
        m_source.PreservesWhiteSpace() ||
        (rule == SpaceRule::AsAround ? m_blanksCount.back() : rule == SpaceRule::Preserve);
    copy->extra = MarksReadBack(element, m_blanksCount.back(), blanksCount);
    m_blanksCount.push_back(blanksCount);
    m_parent = copy;
}

void TreeCopy::CopyDeclarations(const xmlNode* element, xmlNode* copy) {
    xmlNs** place = &copy->nsDef;
    for (const xmlNs* declaration = element->nsDef; declaration != nullptr; declaration = declaration->next) {
        *place = xmlNewNs(nullptr, declaration->href, declaration->prefix);
        if (*place == nullptr) throw std::bad_alloc();
        m_namespaces.emplace(declaration, *place);
        place = &(*place)->next;
    }
}

void TreeCopy::CopyAttributes(const xmlNode* element, xmlNode* copy) {
    xmlAttr* last = nullptr;
    for (const xmlAttr* attribute = element->properties; attribute != nullptr; attribute = attribute->next) {
        auto* own = Allocate<xmlAttr>();
        own->type = XML_ATTRIBUTE_NODE;
        own->doc = m_document;
        own->parent = copy;
        own->prev = last;
        (last != nullptr ? last->next : copy->properties) = own;
        last = own;
        own->name = Name(attribute->name);
        if (attribute->ns != nullptr) own->ns = Namespace(attribute->ns, m_attributeNs);
        AttributeOrder::SetRank(own, AttributeOrder::Rank(attribute));
        xmlNode* text = NewNode(XML_TEXT_NODE);
        text->parent = reinterpret_cast<xmlNode*>(own);
        own->children = own->last = text;
        const xmlNode* value = attribute->children;
        if (value != nullptr && value->next == nullptr)
            SetText(text, View(value->content));
        else
            SetText(text, DomTree::AttributeValue(attribute));
    }
}

void TreeCopy::CopyLeaf(const xmlNode* node) {
    xmlNode* copy = Append(node->type);
    if (node->type == XML_PI_NODE) copy->name = Name(node->name);
    if (node->type == XML_TEXT_NODE)
        SetText(copy, View(node->content));
    else if (node->content != nullptr)
        copy->content = Duplicate(View(node->content));
    copy->extra = MarksReadBack(node, m_blanksCount.back(), false);
}

xmlNode* TreeCopy::Append(xmlElementType type) {
    xmlNode* node = NewNode(type);
    node->parent = m_parent;
    node->prev = m_parent->last;
    (node->prev != nullptr ? node->prev->next : m_parent->children) = node;
    m_parent->last = node;
    return node;
}

xmlNode* TreeCopy::NewNode(xmlElementType type) {
    auto* node = Allocate<xmlNode>();
    node->type = type;
    node->doc = m_document;
    if (type == XML_TEXT_NODE) node->name = xmlStringText;
    if (type == XML_COMMENT_NODE) node->name = xmlStringComment;
    return node;
}

void TreeCopy::SetText(xmlNode* node, std::string_view text) {
    // Short texts stand in the node itself, where the tree library's own parser puts them.
    auto* inside = reinterpret_cast<xmlChar*>(&node->properties);
    if (text.size() >= roomInNode) {
        node->content = Duplicate(text);
        return;
    }
    std::memcpy(inside, text.data(), text.size()); // what is behind is zero
    node->content = inside;
}

const xmlChar* TreeCopy::Name(const xmlChar* name) {
    xmlDict* names = m_document->dict;
    return names != nullptr && xmlDictOwns(names, name) == 1 ? name : Duplicate(View(name));
}

xmlNs* TreeCopy::Namespace(const xmlNs* ns, std::pair<const xmlNs*, xmlNs*>& last) {
    if (ns == nullptr || last.first == ns) return ns == nullptr ? nullptr : last.second;
    xmlNs*& own = m_namespaces[ns];
    // One that no element of the document declares, or a later one.
    if (own == nullptr) own = m_target.Namespace(View(ns->prefix), View(ns->href));
    last = {ns, own};
    return own;
}

} // namespace OvPlatform
