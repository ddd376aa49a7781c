#pragma once

#include "Com/PlatformExport.h"

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

namespace OvPlatform {

/// The URI of a namespace, or none. Copies share the text, and so do all of one of the schema's own: names
/// are copied and compared far more often than namespaces are declared. May be shared between threads.
class OV_PLATFORM_API NamespaceUri {
public:
    NamespaceUri() = default;
    NamespaceUri(std::string_view uri); // empty: none
    NamespaceUri(const std::string& uri) : NamespaceUri(std::string_view(uri)) {}
    NamespaceUri(const char* uri) : NamespaceUri(std::string_view(uri)) {}

    bool Empty() const { return m_known == nullptr; }
    std::string_view Text() const { return Empty() ? std::string_view() : std::string_view(m_known->text); }
    std::size_t Hash() const { return Empty() ? 0 : m_known->hash; }

    friend bool operator==(const NamespaceUri& one, const NamespaceUri& other) {
        return one.m_known == other.m_known || (one.Hash() == other.Hash() && one.Text() == other.Text());
    }

private:
    struct Known {
        explicit Known(std::string_view uri) : text(uri), hash(std::hash<std::string_view>()(uri)) {}
        const std::string text;
        const std::size_t hash;
    };
    using Shared = std::shared_ptr<const Known>;
    static Shared OfSchema(std::string_view uri);

    Shared m_known;
};

} // namespace OvPlatform
