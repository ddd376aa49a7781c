#include "PrintTicket/NamespacePrefixes.h"

#include <array>

namespace OvPlatform {
namespace {

struct Conventional {
    const char* space;
    const char* prefix;
};
constexpr std::array<Conventional, 4> schema{{{SchemaSpace::Framework, "psf"},
                                              {SchemaSpace::Instance, "xsi"},
                                              {SchemaSpace::Types, "xsd"},
                                              {SchemaSpace::Keywords, SchemaSpace::KeywordsPrefix}}};
static_assert(NamespacePrefixes::beforeVersion == schema.size() - 1);

} // namespace

NamespacePrefixes::NamespacePrefixes(const Declarations& declared, std::string_view leftOut) {
    for (const auto& [prefix, space] : declared)
        m_taken.emplace(prefix, space);
    const auto declaredPrefix = [&](std::string_view space) {
        for (const auto& [prefix, uri] : declared)
            if (uri == space && !prefix.empty()) return prefix;
        return std::string();
    };
    for (std::size_t i = 0; i < beforeVersion; ++i) {
        std::string prefix = declaredPrefix(schema[i].space);
        Assign(schema[i].space, prefix.empty() ? schema[i].prefix : std::move(prefix));
    }
    for (const auto& [prefix, space] : declared)
        if (!prefix.empty() && space != leftOut) Assign(space, prefix);
    for (const auto& [prefix, space] : declared)
        if (prefix.empty() && space != leftOut)
            Assign(space, space == SchemaSpace::Keywords ? SchemaSpace::KeywordsPrefix : "ns0000");
    Assign(SchemaSpace::Keywords, SchemaSpace::KeywordsPrefix);
}

void NamespacePrefixes::Assign(const std::string& space, std::string preferred) {
    if (space.empty() || Has(space)) return;
    const auto isFree = [&](const std::string& prefix) {
        const auto taken = m_taken.find(prefix);
        return taken == m_taken.end() || taken->second == space;
    };
    while (!isFree(preferred)) {
        const std::string digits = std::to_string(m_number++);
        preferred = "ns" + std::string(digits.size() < 4 ? 4 - digits.size() : 0, '0') + digits;
    }
    m_taken[preferred] = space;
    m_prefixes.emplace(space, preferred);
    m_declarations.emplace_back(std::move(preferred), space);
}

const std::string* NamespacePrefixes::PrefixOf(const NamespaceUri& space) const {
    const auto found = m_prefixes.find(space);
    return found == m_prefixes.end() ? nullptr : &found->second;
}

std::string NamespacePrefixes::Qualified(const NamespaceUri& space, std::string_view local) const {
    const std::string* const prefix = PrefixOf(space);
    if (prefix == nullptr) return std::string(local);
    std::string name;
    name.reserve(prefix->size() + 1 + local.size());
    return name.append(*prefix).append(":").append(local);
}

} // namespace OvPlatform
