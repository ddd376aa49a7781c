#include "PrintTicket/NamespaceUri.h"

#include "PrintTicket/KeywordName.h"

#include <algorithm>
#include <array>

namespace OvPlatform {

NamespaceUri::Shared NamespaceUri::OfSchema(std::string_view uri) {
    static const std::array<Shared, 5> all{std::make_shared<const Known>(SchemaSpace::Framework),
                                           std::make_shared<const Known>(SchemaSpace::Keywords),
                                           std::make_shared<const Known>(SchemaSpace::KeywordsV11),
                                           std::make_shared<const Known>(SchemaSpace::Instance),
                                           std::make_shared<const Known>(SchemaSpace::Types)};
    const auto found =
        std::find_if(all.begin(), all.end(), [uri](const Shared& known) { return known->text == uri; });
    return found == all.end() ? nullptr : *found;
}

NamespaceUri::NamespaceUri(std::string_view uri) {
    if (uri.empty()) return;
    m_known = OfSchema(uri);
    if (m_known == nullptr) m_known = std::make_shared<const Known>(uri);
}

} // namespace OvPlatform
