#include "Dom/SelectionNamespaces.h"

#include "Xml/XmlPointer.h"

#include <libxml/parser.h>

#include <deque>

namespace OvPlatform {

namespace {

constexpr std::size_t remembered = 16;

} // namespace

SelectionNamespaces::Pointer SelectionNamespaces::None() {
    static const Pointer none(new SelectionNamespaces);
    return none;
}

SelectionNamespaces::Pointer SelectionNamespaces::Parse(const std::string& text) {
    if (text.find_first_not_of(" \t\r\n") == std::string::npos) return None();
    thread_local std::deque<Pointer> recent;
    for (const Pointer& known : recent)
        if (known->m_text == text) return known;

    // A start tag is what such a list belongs into, so the parser reads it as one.
    if (text.find_first_of("<>") != std::string::npos) return nullptr;
    const std::string tag = "<n " + text + "/>";
    const XmlDocument parsed(xmlReadMemory(tag.data(), static_cast<int>(tag.size()), nullptr, "UTF-8",
                                           XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING));
    const xmlNode* root = parsed ? xmlDocGetRootElement(parsed.get()) : nullptr;
    if (root == nullptr || root->properties != nullptr) return nullptr;

    std::shared_ptr<SelectionNamespaces> made(new SelectionNamespaces);
    made->m_text = text;
    for (const xmlNs* declaration = root->nsDef; declaration != nullptr; declaration = declaration->next) {
        // A default namespace is allowed here and never matches an unprefixed step.
        if (declaration->prefix == nullptr) continue;
        xmlNs* own = xmlNewNs(nullptr, declaration->href, declaration->prefix);
        if (own == nullptr) throw std::bad_alloc();
        made->m_declarations.push_back(own);
    }
    recent.push_front(made);
    if (recent.size() > remembered) recent.pop_back();
    return made;
}

SelectionNamespaces::~SelectionNamespaces() {
    for (xmlNs* declaration : m_declarations)
        xmlFreeNs(declaration);
}

} // namespace OvPlatform
