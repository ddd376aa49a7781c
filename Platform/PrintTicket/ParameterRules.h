#pragma once

#include "Com/PlatformExport.h"
#include "PrintTicket/SchemaModel.h"
#include "PrintTicket/SettingLevel.h"

#include <cstddef>
#include <optional>
#include <string>

namespace OvPlatform {

/// What a ParameterDef of the capabilities asks of a parameter.
class ParameterRules {
public:
    enum class Mandatory {
        Optional,     // stands in a ticket if somebody put it there
        Conditional,  // stands in a ticket if, and only if, a chosen option refers to it
        Unconditional // always stands in a ticket
    };

    explicit ParameterRules(const SchemaParameterDef& definition);

    const KeywordName& Name() const { return m_name; }
    SettingLevel Level() const { return m_level; }
    /// For a name that says nothing of its level: a parameter reaches down to the features that refer to it.
    void ReachDownTo(SettingLevel level);

    Mandatory Need() const { return m_mandatory; }
    /// The definition's default, or null; one of another kind than the parameter's type is none.
    const SchemaValue* Default() const { return m_default ? &*m_default : nullptr; }

    /// Null if the value is good; otherwise what is wrong with it, a phrase for a person. What counts is the
    /// text: applications leave the type out, or write a string.
    const char* Problem(const SchemaValue& value) const;

    /// A good value in the form in which tickets carry it: with the definition's type.
    SchemaValue Normalised(const SchemaValue& value) const;

private:
    const char* NumberProblem(const SchemaValue& value) const;
    bool IsNumber() const;

    KeywordName m_name;
    SettingLevel m_level;
    bool m_reached = false;
    KeywordName m_type;
    Mandatory m_mandatory = Mandatory::Optional;
    std::optional<SchemaValue> m_default;
    std::optional<double> m_minimum;
    std::optional<double> m_maximum;
    std::optional<double> m_multiple;
    std::size_t m_minLength = 0;
    std::size_t m_maxLength = static_cast<std::size_t>(-1);
};

/// The number that a text spells, as xsd:integer or xsd:decimal has it.
OV_PLATFORM_API std::optional<double> NumberOf(std::string_view text, bool integer);

} // namespace OvPlatform
