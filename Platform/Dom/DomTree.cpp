#include "Dom/DomTree.h"

#include "Dom/DomNodeObject.h"
#include "Dom/SharedTree.h"

#include <atomic>
#include <new>

namespace OvPlatform {

namespace {

template <class T>
T* Made(T* pointer) {
    if (pointer == nullptr) throw std::bad_alloc();
    return pointer;
}

xmlAttr* AsAttribute(xmlNode* node) noexcept { return reinterpret_cast<xmlAttr*>(node); }
xmlNode* AsNode(xmlAttr* attribute) noexcept { return reinterpret_cast<xmlNode*>(attribute); }
xmlAttr* Mirror(const xmlNs* declaration) noexcept { return static_cast<xmlAttr*>(declaration->_private); }
DomNodeObject* ObjectOf(const xmlNode* node) noexcept { return static_cast<DomNodeObject*>(node->_private); }

bool AttributeHasObjects(const xmlAttr* attribute) noexcept {
    if (attribute->_private != nullptr) return true;
    for (const xmlNode* text = attribute->children; text != nullptr; text = text->next)
        if (text->_private != nullptr) return true;
    return false;
}

} // namespace

DomTree::Pointer DomTree::Create(XmlDocument document, const DomSettings& settings) {
    Pointer tree(new DomTree);
    if (document == nullptr) document.reset(xmlNewDoc(nullptr));
    if (document == nullptr) throw std::bad_alloc();
    static std::atomic<std::uint64_t> trees{0};
    tree->m_version = tree->m_watchedVersion = ++trees << 32;
    tree->m_document = document.release();
    tree->m_settings = settings;
    tree->m_preservesWhiteSpace = settings.preserveWhiteSpace;
    return tree;
}

DomTree::~DomTree() {
    try {
        FreeEnded();
    } catch (const std::bad_alloc&) {
        // Nothing refers to them any more; they are lost.
    }
    for (xmlAttr* mirror : m_mirrors)
        xmlFreeProp(mirror);
    xmlFreeDoc(m_document);
    xmlFreeNsList(m_retired);
    for (const auto& [key, ns] : m_namespaces)
        xmlFreeNs(ns);
}

void DomTree::End() noexcept {
    // Whoever shares the tree may let go of it at any time from here on.
    const std::shared_ptr<SharedTree> shared = std::move(m_shared);
    m_count = 1;
    if (!shared || !shared->Inherit()) delete this;
}

void DomTree::Part() {
    if (m_shared) m_shared->Part();
    m_shared.reset();
    m_origin.reset();
}

const ReadBack& DomTree::Form() {
    if (!m_readBack) m_readBack = ReadBack::Of(*this);
    return *m_readBack;
}

void DomTree::CameFrom(const TreeShare& origin) { m_origin = std::make_unique<TreeShare>(origin); }

TreeShare DomTree::Share() {
    if (m_origin) return *m_origin;
    if (!m_shared) m_shared = std::make_shared<SharedTree>(*this, Form());
    return TreeShare(m_shared);
}

xmlNs* DomTree::NewNs(std::string_view prefix, std::string_view uri) {
    const std::string uriText(uri);
    const std::string prefixText(prefix);
    return Made(
        xmlNewNs(nullptr, AsXml(uriText.c_str()), prefix.empty() ? nullptr : AsXml(prefixText.c_str())));
}

xmlNs* DomTree::Namespace(std::string_view prefix, std::string_view uri) {
    if (uri.empty()) return nullptr;
    // The prefix xml is bound everywhere, and the tree library makes its namespace itself.
    if (prefix == "xml") return Made(xmlSearchNs(m_document, DocumentNode(), AsXml("xml")));
    std::string key(prefix);
    key.append(1, '\0').append(uri);
    xmlNs*& ns = m_namespaces[key];
    if (ns == nullptr) ns = NewNs(prefix, uri);
    return ns;
}

xmlNode* DomTree::NewElement(std::string_view name, xmlNs* ns) {
    // Not by the document's dictionary, which others may be reading.
    xmlNode* element = Made(xmlNewNode(ns, AsXml(std::string(name).c_str())));
    element->doc = m_document;
    return element;
}

xmlAttr* DomTree::NewAttribute(std::string_view name, xmlNs* ns, std::string_view value) {
    xmlAttr* attribute = Made(xmlNewNsProp(nullptr, ns, AsXml(std::string(name).c_str()), nullptr));
    attribute->doc = m_document;
    if (value.empty()) return attribute;
    // What stands nowhere yet changes nothing that others may share.
    xmlNode* text = xmlNewDocTextLen(m_document, AsXml(value.data()), static_cast<int>(value.size()));
    if (text == nullptr) {
        xmlFreeProp(attribute);
        throw std::bad_alloc();
    }
    text->parent = AsNode(attribute);
    attribute->children = attribute->last = text;
    return attribute;
}

xmlNode* DomTree::NewText(std::string_view text) {
    return Made(xmlNewDocTextLen(m_document, AsXml(text.data()), static_cast<int>(text.size())));
}

xmlNode* DomTree::NewCharacterData(xmlElementType type, std::string_view text) {
    if (type == XML_TEXT_NODE) return NewText(text);
    if (type == XML_CDATA_SECTION_NODE)
        return Made(xmlNewCDataBlock(m_document, AsXml(text.data()), static_cast<int>(text.size())));
    return Made(xmlNewDocComment(m_document, AsXml(std::string(text).c_str())));
}

xmlNode* DomTree::NewProcessingInstruction(std::string_view target, std::string_view data) {
    xmlNode* instruction =
        Made(xmlNewDocPI(nullptr, AsXml(std::string(target).c_str()), AsXml(std::string(data).c_str())));
    instruction->doc = m_document;
    return instruction;
}

xmlNode* DomTree::NewFragment() { return Made(xmlNewDocFragment(m_document)); }

bool DomTree::IsDeclaration(const xmlNode* attribute) noexcept {
    return attribute->type == XML_ATTRIBUTE_NODE && attribute->ns != nullptr &&
           View(attribute->ns->href) == xmlnsUri;
}

xmlAttr* DomTree::MirrorOf(xmlNode* element, xmlNs* declaration) {
    if (xmlAttr* known = Mirror(declaration)) return known;
    const bool isDefault = declaration->prefix == nullptr;
    xmlAttr* mirror = NewAttribute(isDefault ? "xmlns" : View(declaration->prefix),
                                   Namespace(isDefault ? "" : "xmlns", xmlnsUri), View(declaration->href));
    mirror->parent = element;
    mirror->psvi = declaration;
    try {
        m_mirrors.insert(mirror);
    } catch (...) {
        xmlFreeProp(mirror);
        throw;
    }
    declaration->_private = mirror;
    return mirror;
}

xmlNs* DomTree::DeclarationOf(const xmlNode* attribute) noexcept {
    if (!IsDeclaration(attribute) || attribute->parent == nullptr) return nullptr;
    return static_cast<xmlNs*>(reinterpret_cast<const xmlAttr*>(attribute)->psvi);
}

bool DomTree::IsPartOfDeclaration(const xmlNode* text) noexcept {
    return text->parent != nullptr && DeclarationOf(text->parent) != nullptr;
}

xmlAttr* DomTree::Declare(xmlNode* element, xmlAttr* mirror) {
    BeforeChange();
    const std::string_view prefix = mirror->ns->prefix ? View(mirror->name) : std::string_view();
    const std::string uri = AttributeValue(mirror);
    xmlNs* declaration = NewNs(prefix, uri);
    m_mirrors.insert(mirror);
    FollowDefault(element, prefix, uri);
    xmlNs* old = element->nsDef;
    while (old != nullptr && View(old->prefix) != prefix)
        old = old->next;
    xmlAttr* replaced = nullptr;
    if (old != nullptr) {
        replaced = MirrorOf(element, old);
        AttributeOrder::Replace(element, old, declaration);
        m_mirrors.erase(replaced);
        replaced->parent = nullptr;
        replaced->psvi = nullptr;
        Retire(old);
    } else {
        AttributeOrder::Append(element, declaration);
    }
    declaration->_private = mirror;
    mirror->parent = element;
    mirror->psvi = declaration;
    ContentChanged();
    return replaced;
}

xmlAttr* DomTree::Undeclare(xmlNode* element, xmlNs* declaration) {
    BeforeChange();
    xmlAttr* mirror = MirrorOf(element, declaration);
    AttributeOrder::Remove(element, declaration);
    m_mirrors.erase(mirror);
    mirror->parent = nullptr;
    mirror->psvi = nullptr;
    Retire(declaration);
    ContentChanged();
    return mirror;
}

void DomTree::ChangeDeclaration(xmlNode* element, xmlNs* declaration, std::string_view uri) {
    BeforeChange();
    xmlAttr* mirror = MirrorOf(element, declaration);
    xmlNs* fresh = NewNs(View(declaration->prefix), uri);
    AttributeOrder::Replace(element, declaration, fresh);
    fresh->_private = mirror;
    mirror->psvi = fresh;
    Retire(declaration);
    SetAttributeValue(mirror, uri, *this);
    FollowDefault(element, View(fresh->prefix), uri);
    ContentChanged();
}

void DomTree::FollowDefault(xmlNode* element, std::string_view prefix, std::string_view uri) {
    if (prefix.empty() && element->ns == nullptr) element->ns = Namespace({}, uri);
}

void DomTree::Retire(xmlNs* declaration) noexcept {
    declaration->_private = nullptr;
    declaration->next = m_retired;
    m_retired = declaration;
}

std::string DomTree::AttributeValue(const xmlAttr* attribute) {
    std::string value;
    for (const xmlNode* text = attribute->children; text != nullptr; text = text->next)
        value.append(View(text->content));
    return value;
}

void DomTree::SetAttributeValue(xmlAttr* attribute, std::string_view value, DomTree& tree) {
    tree.BeforeChange();
    xmlNode* text = value.empty() ? nullptr : tree.NewText(value);
    tree.m_named.AttributeChanging(attribute);
    while (xmlNode* old = attribute->children) {
        xmlUnlinkNode(old);
        tree.Dispose(old);
    }
    attribute->children = attribute->last = text;
    if (text != nullptr) text->parent = AsNode(attribute);
    tree.m_named.AttributeChanged(attribute);
    tree.ChildrenChanged(AsNode(attribute));
}

void DomTree::ChildrenChanged(const xmlNode* parent) noexcept {
    ContentChanged();
    if (parent == nullptr) return;
    // Documents and attributes have no marks; they count as watched.
    const bool hasMarks = parent->type != XML_DOCUMENT_NODE && parent->type != XML_ATTRIBUTE_NODE;
    if (!hasMarks || (MarksOf(parent) & Watched) != 0) ++m_watchedVersion;
}

void DomTree::Unlink(xmlNode* node) noexcept {
    m_named.Unlinking(node);
    ChildrenChanged(node->type == XML_ATTRIBUTE_NODE ? nullptr : node->parent);
    xmlUnlinkNode(node);
}

void DomTree::Link(xmlNode* parent, xmlNode* node, xmlNode* next) noexcept {
    node->parent = parent;
    node->next = next;
    node->prev = next != nullptr ? next->prev : parent->last;
    (node->prev != nullptr ? node->prev->next : parent->children) = node;
    (next != nullptr ? next->prev : parent->last) = node;
    ChildrenChanged(parent);
    m_named.Linked(node);
}

void DomTree::Dispose(xmlNode* node) noexcept {
    const auto [fate, top] = DetachedNodes::Look(node, DocumentNode());
    if (fate == DetachedNodes::Fate::Kept) return;
    if (fate == DetachedNodes::Fate::Ended && m_pins == 0) {
        Free(top);
        return;
    }
    try {
        m_detached.Wait(node);
        if (m_pins == 0 && m_detached.IsDue()) FreeEnded();
    } catch (const std::bad_alloc&) {
        // While pinned, the node is then kept for good, which is better than a list that refers to what is
        // gone.
        if (m_pins != 0) return;
        const DetachedNodes::Verdict last = DetachedNodes::LookThrough(node, DocumentNode());
        if (last.fate == DetachedNodes::Fate::Ended) Free(last.top);
    }
}

void DomTree::FreeEnded() {
    for (xmlNode* top : m_detached.TakeEnded(DocumentNode()))
        Free(top);
}

void DomTree::Unpin() noexcept {
    if (--m_pins != 0 || !m_detached.IsDue()) return;
    try {
        FreeEnded();
    } catch (const std::bad_alloc&) {
        // They wait on.
    }
}

void DomTree::Free(xmlNode* top) noexcept {
    if (top->type == XML_ATTRIBUTE_NODE) {
        FreeAttribute(AsAttribute(top));
        return;
    }
    // Other nodes may be in a namespace that an element in here declares.
    for (xmlNode* node = top; node != nullptr; node = NextInTree(node, top)) {
        m_detached.Forget(node);
        if (node->type != XML_ELEMENT_NODE) continue;
        for (xmlAttr* attribute = node->properties; attribute != nullptr; attribute = attribute->next)
            Forget(attribute);
        while (xmlNs* declaration = node->nsDef) {
            node->nsDef = declaration->next;
            FreeMirror(declaration);
            Retire(declaration);
        }
    }
    xmlFreeNode(top);
}

void DomTree::FreeMirror(xmlNs* declaration) noexcept {
    xmlAttr* mirror = Mirror(declaration);
    if (mirror == nullptr) return;
    m_mirrors.erase(mirror);
    FreeAttribute(mirror);
}

void DomTree::Forget(xmlAttr* attribute) noexcept {
    m_detached.Forget(AsNode(attribute));
    for (xmlNode* text = attribute->children; text != nullptr; text = text->next)
        m_detached.Forget(text);
}

void DomTree::FreeAttribute(xmlAttr* attribute) noexcept {
    Forget(attribute);
    xmlFreeProp(attribute);
}

xmlNs* DomTree::NamespaceFrom(const DomTree& from, xmlNs* ns) {
    if (ns == nullptr || &from == this) return ns;
    if (m_lastMapped.first != ns) m_lastMapped = {ns, Namespace(View(ns->prefix), View(ns->href))};
    return m_lastMapped.second;
}

xmlNode* DomTree::CopyNode(const DomTree& from, xmlNode* source) {
    xmlNode* copy = nullptr;
    switch (source->type) {
    case XML_ELEMENT_NODE:
        copy = NewElement(View(source->name), NamespaceFrom(from, source->ns));
        for (const xmlNs* declaration = source->nsDef; declaration != nullptr;
             declaration = declaration->next)
            AttributeOrder::Append(copy, NewNs(View(declaration->prefix), View(declaration->href)));
        for (xmlAttr* attribute = source->properties; attribute != nullptr; attribute = attribute->next) {
            xmlAttr* own = AsAttribute(CopyNode(from, AsNode(attribute)));
            AttributeOrder::Insert(copy, own, nullptr);
            AttributeOrder::SetRank(own, AttributeOrder::Rank(attribute));
        }
        break;
    case XML_ATTRIBUTE_NODE: {
        const XmlPointer<xmlChar> value(xmlNodeListGetString(from.m_document, source->children, 1));
        return AsNode(NewAttribute(View(source->name), NamespaceFrom(from, source->ns), View(value.get())));
    }
    case XML_PI_NODE:
        copy = NewProcessingInstruction(View(source->name), View(source->content));
        break;
    case XML_DOCUMENT_FRAG_NODE:
        copy = NewFragment();
        break;
    default:
        copy = NewCharacterData(source->type, View(source->content));
        break;
    }
    copy->extra = source->extra;
    return copy;
}

xmlNode* DomTree::Copy(const DomTree& from, xmlNode* source, bool deep) {
    m_lastMapped = {};
    xmlNode* top = CopyNode(from, source);
    if (!deep || source->type == XML_ATTRIBUTE_NODE) return top;
    try {
        xmlNode* parent = top;
        for (xmlNode *node = source, *next = NextInTree(node, source); next != nullptr;
             node = next, next = NextInTree(node, source)) {
            if (node->children != next) {
                // The walk left `node` and its last ancestors; it goes on beside one of them.
                for (const xmlNode* left = node; left->parent != next->parent; left = left->parent)
                    parent = parent->parent;
            }
            xmlNode* copy = CopyNode(from, next);
            Link(parent, copy, nullptr);
            if (next->children != nullptr) parent = copy;
        }
    } catch (...) {
        Free(top);
        throw;
    }
    return top;
}

xmlNode* DomTree::Adopt(DomTree& from, xmlNode* source) {
    xmlNode* top = Copy(from, source, true);
    const auto moveObject = [this](xmlNode* old, xmlNode* fresh) {
        if (DomNodeObject* object = ObjectOf(old)) object->MoveTo(*this, fresh);
    };
    const auto moveAttribute = [&](xmlAttr* old, xmlAttr* fresh) {
        moveObject(AsNode(old), AsNode(fresh));
        if (old->children != nullptr && fresh->children != nullptr)
            moveObject(old->children, fresh->children);
    };
    if (source->type == XML_ATTRIBUTE_NODE) {
        moveAttribute(AsAttribute(source), AsAttribute(top));
    } else {
        xmlNode* fresh = top;
        for (xmlNode* old = source; old != nullptr;
             old = NextInTree(old, source), fresh = NextInTree(fresh, top)) {
            moveObject(old, fresh);
            if (old->type != XML_ELEMENT_NODE) continue;
            for (xmlAttr *attribute = old->properties, *own = fresh->properties; attribute != nullptr;
                 attribute = attribute->next, own = own->next)
                moveAttribute(attribute, own);
            for (xmlNs *declaration = old->nsDef, *own = fresh->nsDef; declaration != nullptr;
                 declaration = declaration->next, own = own->next)
                if (Mirror(declaration) != nullptr && AttributeHasObjects(Mirror(declaration)))
                    moveAttribute(Mirror(declaration), MirrorOf(fresh, own));
        }
    }
    from.Dispose(source);
    return top;
}

} // namespace OvPlatform
