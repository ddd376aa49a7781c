#include "PrintTicket/ParameterRules.h"

#include "PrintTicket/NamespaceScope.h"
#include "PrintTicket/SchemaWords.h"

#include <utf8coder.h>

#include <algorithm>
#include <charconv>
#include <cmath>

namespace OvPlatform {
namespace {

const SchemaValue* PropertyValue(const SchemaParameterDef& definition, std::string_view name) {
    const SchemaProperty* property = FindProperty(definition.properties, SchemaSpace::Framework, name);
    return property && property->value ? &*property->value : nullptr;
}

std::optional<double> PropertyNumber(const SchemaParameterDef& definition, std::string_view name) {
    const SchemaValue* value = PropertyValue(definition, name);
    return value ? NumberOf(value->text, false) : std::nullopt;
}

// The local part of a keyword that some documents write as a QName and others as a string.
std::string_view Keyword(const SchemaValue& value) {
    const std::string_view text = Trimmed(value.text);
    const std::size_t colon = text.find(':');
    return colon == std::string_view::npos ? text : text.substr(colon + 1);
}

} // namespace

std::optional<double> NumberOf(std::string_view text, bool integer) {
    text = Trimmed(text);
    if (text.starts_with('+')) text.remove_prefix(1);
    const std::string_view digits = text.starts_with('-') ? text.substr(1) : text;
    const std::size_t point = digits.find('.');
    const bool spelled = !digits.empty() &&
                         digits.find_first_not_of("0123456789.") == std::string_view::npos &&
                         digits.find_first_of("0123456789") != std::string_view::npos &&
                         (point == std::string_view::npos ||
                          (!integer && digits.find('.', point + 1) == std::string_view::npos));
    if (!spelled) return std::nullopt;
    double number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    return number;
}

ParameterRules::ParameterRules(const SchemaParameterDef& definition)
    : m_name(definition.name), m_level(LevelOf(definition.name.local)),
      m_minimum(PropertyNumber(definition, "MinValue")), m_maximum(PropertyNumber(definition, "MaxValue")),
      m_multiple(PropertyNumber(definition, "Multiple")) {
    const SchemaValue* type = PropertyValue(definition, "DataType");
    m_type = {SchemaSpace::Types, type ? std::string(Keyword(*type)) : SchemaType::String};
    if (const SchemaValue* mandatory = PropertyValue(definition, "Mandatory")) {
        if (Keyword(*mandatory) == "Unconditional") m_mandatory = Mandatory::Unconditional;
        if (Keyword(*mandatory) == "Conditional") m_mandatory = Mandatory::Conditional;
    }
    const auto length = [&](std::string_view name, std::size_t otherwise) {
        const auto number = PropertyNumber(definition, name);
        return number && *number >= 0 && *number < 1e15 ? static_cast<std::size_t>(*number) : otherwise;
    };
    m_minLength = length("MinLength", m_minLength);
    m_maxLength = length("MaxLength", m_maxLength);
    // A name where a text is wanted, or a text for a name, could not be written as what it has to be.
    const SchemaValue* value = PropertyValue(definition, "DefaultValue");
    if (value && value->IsQName() == (m_type.local == SchemaType::QName)) m_default = Normalised(*value);
}

void ParameterRules::ReachDownTo(SettingLevel level) {
    const bool saysNothing = m_level == SettingLevel::Job && !m_name.local.starts_with("Job");
    if (saysNothing || m_reached) {
        m_level = m_reached ? (std::min)(m_level, level) : level;
        m_reached = true;
    }
}

bool ParameterRules::IsNumber() const {
    return m_type.local == SchemaType::Integer || m_type.local == SchemaType::Decimal;
}

const char* ParameterRules::Problem(const SchemaValue& value) const {
    // Whatever the bounds say: a default that breaks them must not be replaced by itself for ever.
    if (m_default && value.text == m_default->text && value.space == m_default->space) return nullptr;
    if (value.IsQName() != (m_type.local == SchemaType::QName)) return "is of the wrong type";
    if (IsNumber()) return NumberProblem(value);
    const std::size_t length = Utf8::CountCharacters(value.text);
    if (length < m_minLength) return "is too short";
    if (length > m_maxLength) return "is too long";
    return nullptr;
}

const char* ParameterRules::NumberProblem(const SchemaValue& value) const {
    const auto number = NumberOf(value.text, m_type.local == SchemaType::Integer);
    if (!number) return m_type.local == SchemaType::Integer ? "is not an integer" : "is not a decimal number";
    if (m_minimum && *number < *m_minimum) return "is too small";
    if (m_maximum && *number > *m_maximum) return "is too large";
    if (m_multiple && *m_multiple > 0 && m_type.local == SchemaType::Integer &&
        std::fmod(*number, *m_multiple) != 0)
        return "is not one of the steps";
    return nullptr;
}

SchemaValue ParameterRules::Normalised(const SchemaValue& value) const {
    SchemaValue normalised = value;
    normalised.type = m_type;
    if (IsNumber()) normalised.text = std::string(Trimmed(value.text));
    return normalised;
}

} // namespace OvPlatform
