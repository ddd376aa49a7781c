#include "PrintTicket/SettingText.h"

namespace OvPlatform {

std::string TextOf(const SchemaOption& option, const NamespacePrefixes& prefixes) {
    if (!option.name.Empty()) return prefixes.Qualified(option.name);
    std::string text;
    for (const SchemaProperty& scored : option.scored) {
        text += (text.empty() ? "(" : ", ") + prefixes.Qualified(scored.name) + "=";
        text += scored.value ? prefixes.Qualified(scored.value->space, scored.value->text)
                             : prefixes.Qualified(scored.parameter);
    }
    return text.empty() ? "(unnamed)" : text + ")";
}

std::string TextOf(const FeatureChoice& choice, const CapabilitiesFeature& feature,
                   const NamespacePrefixes& prefixes) {
    std::string text;
    for (const FeatureChoice::Chosen& chosen : choice.options)
        text += (text.empty() ? "" : ", ") + TextOf(*feature.options[chosen.option].schema, prefixes);
    return text;
}

} // namespace OvPlatform
