#include "Dom/TreeCopy.h"

#include "Dom/NodeMaking.h"
#include "Dom/WhiteSpace.h"

#include <libxml/dict.h>

#include <new>
#include <string>

namespace OvPlatform {

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
        xmlAttr* own = last = AppendAttribute(copy, last);
        own->name = Name(attribute->name);
        if (attribute->ns != nullptr) own->ns = Namespace(attribute->ns, m_attributeNs);
        AttributeOrder::SetRank(own, AttributeOrder::Rank(attribute));
        const xmlNode* value = attribute->children;
        if (value != nullptr && value->next == nullptr)
            SetValue(own, View(value->content));
        else
            SetValue(own, DomTree::AttributeValue(attribute));
    }
}

void TreeCopy::CopyLeaf(const xmlNode* node) {
    xmlNode* copy = Append(node->type);
    if (node->type == XML_PI_NODE) copy->name = Name(node->name);
    if (node->type == XML_TEXT_NODE)
        SetText(copy, View(node->content));
    else if (node->content != nullptr)
        copy->content = DuplicateText(View(node->content));
    copy->extra = MarksReadBack(node, m_blanksCount.back(), false);
}

xmlNode* TreeCopy::Append(xmlElementType type) {
    xmlNode* node = MakeNode(m_document, type);
    AppendNode(m_parent, node);
    return node;
}

const xmlChar* TreeCopy::Name(const xmlChar* name) {
    xmlDict* names = m_document->dict;
    return names != nullptr && xmlDictOwns(names, name) == 1 ? name : DuplicateText(View(name));
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
