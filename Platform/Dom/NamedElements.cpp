#include "Dom/NamedElements.h"

#include "Dom/DomTree.h"

namespace OvPlatform {

namespace {

constexpr std::string_view attributeName = "name";

std::string_view UriOf(const xmlNode* element) noexcept {
    return element->ns != nullptr ? View(element->ns->href) : std::string_view();
}

bool IsPlain(const xmlAttr* attribute) noexcept {
    const xmlNode* const text = attribute->children;
    return text == nullptr || (text->type == XML_TEXT_NODE && text->next == nullptr);
}

} // namespace

bool NamedElements::IsElement(const xmlNode* node, std::string_view local, std::string_view uri) noexcept {
    return node->type == XML_ELEMENT_NODE && View(node->name) == local && UriOf(node) == uri;
}

const xmlAttr* NamedElements::NameOf(const xmlNode* element) noexcept {
    for (const xmlAttr* attribute = element->properties; attribute != nullptr; attribute = attribute->next)
        if (attribute->ns == nullptr && View(attribute->name) == attributeName) return attribute;
    return nullptr;
}

std::unique_ptr<const NamedElements> NamedElements::Of(xmlDoc* document) {
    if (document->intSubset != nullptr) return nullptr;
    auto named = std::make_unique<NamedElements>();
    xmlNode* const top = reinterpret_cast<xmlNode*>(document);
    for (xmlNode* node = NextInTree(top, top); node != nullptr; node = NextInTree(node, top)) {
        if (node->type != XML_ELEMENT_NODE) continue;
        const xmlAttr* const name = NameOf(node);
        if (name == nullptr) continue;
        if (!IsPlain(name)) return nullptr;
        const xmlNode* const text = name->children;
        named->m_elements[text != nullptr ? View(text->content) : std::string_view()].push_back(node);
    }
    return named;
}

std::vector<xmlNode*> NamedElements::Find(std::string_view local, std::string_view uri,
                                          std::string_view name) const {
    std::vector<xmlNode*> found;
    if (const auto known = m_elements.find(name); known != m_elements.end())
        for (xmlNode* const node : known->second)
            if (IsElement(node, local, uri)) found.push_back(node);
    return found;
}

const NamedElements* NamedElementsOnDemand::Of(xmlDoc* document, std::uint64_t version) {
    if (version != m_version || m_questions == 0) {
        m_elements.reset();
        m_version = version;
        m_questions = 0;
    }
    if (m_questions < worthwhile && ++m_questions == worthwhile) m_elements = NamedElements::Of(document);
    return m_elements.get();
}

} // namespace OvPlatform
