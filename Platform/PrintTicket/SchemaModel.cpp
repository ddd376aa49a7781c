#include "PrintTicket/SchemaModel.h"

#include <algorithm>

namespace OvPlatform {

const SchemaProperty* FindProperty(const std::vector<SchemaProperty>& properties, std::string_view space,
                                   std::string_view local) {
    const auto found =
        std::find_if(properties.begin(), properties.end(),
                     [&](const SchemaProperty& property) { return property.name.Is(space, local); });
    return found == properties.end() ? nullptr : &*found;
}

} // namespace OvPlatform
