#pragma once

#include "Com/PlatformExport.h"
#include "PrintTicket/KeywordName.h"

#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace OvPlatform {

/// The prefixes under which a queue's tickets are written: those of its capabilities document, so that a
/// result never depends on the prefixes of the tickets that went into it.
class OV_PLATFORM_API NamespacePrefixes {
public:
    using Declarations = std::vector<std::pair<std::string, std::string>>; // prefix and URI

    /// Takes the declarations of a document; one without a prefix gets a prefix here, since names need one,
    /// and so does one whose prefix stands for another namespace elsewhere. `left out` is a URI that tickets
    /// do not declare.
    NamespacePrefixes(const Declarations& declared, std::string_view leftOut);

    bool Has(const NamespaceUri& space) const { return m_prefixes.contains(space); }
    /// Null for a namespace that is not there.
    const std::string* PrefixOf(const NamespaceUri& space) const;

    /// "psk:PageMediaSize"; the local part alone for a namespace that is not there.
    std::string Qualified(const NamespaceUri& space, std::string_view local) const;
    std::string Qualified(const KeywordName& name) const { return Qualified(name.space, name.local); }

    /// psf, xsi and xsd first, then the others in the order of the capabilities.
    const Declarations& All() const { return m_declarations; }
    /// How many of All() come before the root's version attribute.
    static constexpr std::size_t beforeVersion = 3;

private:
    void Assign(const std::string& space, std::string preferred);

    Declarations m_declarations;
    int m_number = 0; // of the next made-up prefix
    struct UriHash {
        std::size_t operator()(const NamespaceUri& uri) const { return uri.Hash(); }
    };
    std::unordered_map<NamespaceUri, std::string, UriHash> m_prefixes;
    std::unordered_map<std::string, std::string> m_taken; // by prefix
};

} // namespace OvPlatform
