#pragma once

// What a configuration forces upon tickets, as data. Three features are enforced there; whatever else stands
// in a configuration, a ticket keeps. Of a feature of the set, Find gives the row; FindValue what its value
// and behaviour write, if they write anything; Replaces whether that goes over what the ticket has now. How
// it is written, the row's setter says.

#include "ComSupport/FilterUtilitiesExport.h"
#include "Configuration/NativeXmlConfigurationFeature.h"

#include <span>
#include <string_view>

namespace TicketEnforcement {

enum class Setter {
    /// SetScoredPropertyValue(feature, isPublic, attribute, value.number)
    ScoredProperty,
    /// SetChildNodeOptionAttributeValue(feature, isPublic, attribute, value.text)
    Option,
    /// The same, with the ticket's own prefix of the public keywords before the text. The ticket is asked for
    /// the option first: without an answer nothing is written.
    PublicOption,
};

struct Value {
    DataModelIds::tagValueEnum value;
    const wchar_t* text;
    int number = 0; // of a ScoredProperty
    /// The least behaviour that writes it.
    NativeXmlConfigurationFeature::BehaviorEnum leastBehavior =
        NativeXmlConfigurationFeature::EnforcedSetting;
    /// The one option, without prefix, that it takes the place of. Null: any other than its own.
    const wchar_t* onlyOver = nullptr;
};

struct Feature {
    std::string_view configurationName;
    const wchar_t* ticketName; // without prefix
    bool isPublic;             // the namespace of the feature in tickets
    Setter setter;
    const wchar_t* attribute; // the scored property, or the attribute of the option
    std::span<const Value> values;
};

/// In the order in which they are enforced.
[[nodiscard]] OV_FILTER_UTILITIES_API std::span<const Feature> GetFeatures() noexcept;
/// Null for a feature that is not enforced in tickets.
[[nodiscard]] OV_FILTER_UTILITIES_API const Feature* Find(std::string_view configurationName) noexcept;
/// Null where the configured value or behaviour writes nothing; also for a value that the dictionary does not
/// have.
[[nodiscard]] OV_FILTER_UTILITIES_API const Value* FindValue(const Feature& feature,
                                                             const NativeXmlConfigurationFeature& configured);
/// Of a PublicOption: whether it is written over the option that the ticket has, without prefix.
[[nodiscard]] OV_FILTER_UTILITIES_API bool Replaces(const Value& value, std::wstring_view current) noexcept;

} // namespace TicketEnforcement
