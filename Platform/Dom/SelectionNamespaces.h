#pragma once

#include <windows.h>
#include <libxml/tree.h>

#include <memory>
#include <string>
#include <vector>

namespace OvPlatform {

/// The prefixes that queries may use, from a text such as `xmlns:a='urn:x' xmlns:b='urn:y'`.
class SelectionNamespaces {
public:
    using Pointer = std::shared_ptr<const SelectionNamespaces>;

    static Pointer None();

    /// Null if `text` is not a list of declarations. Texts seen lately on this thread are remembered.
    static Pointer Parse(const std::string& text);

    ~SelectionNamespaces();
    SelectionNamespaces(const SelectionNamespaces&) = delete;
    SelectionNamespaces& operator=(const SelectionNamespaces&) = delete;

    const std::string& Text() const noexcept { return m_text; }

    /// For an XPath context, which does not change them.
    xmlNs** Declarations() const noexcept { return const_cast<xmlNs**>(m_declarations.data()); }
    int Count() const noexcept { return static_cast<int>(m_declarations.size()); }

private:
    SelectionNamespaces() = default;

    std::string m_text;
    std::vector<xmlNs*> m_declarations;
};

} // namespace OvPlatform
