#pragma once

#include "Xml/XmlString.h"

#include <libxml/tree.h>

#include <string_view>

namespace OvPlatform {

/// Whether nodes are elements of one name, as a step of a query asks it. The texts are borrowed.
class ElementTest {
public:
    /// Of an element in no namespace.
    explicit ElementTest(std::string_view local) noexcept : m_local(local) {}
    ElementTest(std::string_view local, std::string_view uri) noexcept
        : m_local(local), m_uri(uri), m_hasNamespace(true) {}

    std::string_view Local() const noexcept { return m_local; }
    bool operator()(const xmlNode* node) const noexcept {
        return node->type == XML_ELEMENT_NODE && Equal(node->name, m_local) && IsInNamespace(node->ns);
    }

private:
    static bool Equal(const xmlChar* text, std::string_view wanted) noexcept {
        // Most names differ at their first letter.
        return text[0] == static_cast<xmlChar>(wanted[0]) && View(text) == wanted;
    }
    bool IsInNamespace(const xmlNs* ns) const noexcept {
        if (ns == nullptr || !m_hasNamespace) return (ns != nullptr) == m_hasNamespace;
        if (ns == m_known) return true;
        if (View(ns->href) != m_uri) return false;
        m_known = ns; // that of most elements of a document
        return true;
    }

    std::string_view m_local; // never empty
    std::string_view m_uri;
    bool m_hasNamespace = false;
    mutable const xmlNs* m_known = nullptr;
};

} // namespace OvPlatform
