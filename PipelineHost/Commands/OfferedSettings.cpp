#include "Commands/OfferedSettings.h"

#include "Common/Text.h"

#include <DataModel/PrintSchemaKeywordLiterals.h>

#include <algorithm>
#include <charconv>
#include <utility>

using namespace OvPlatform;

namespace OvPipeline {

namespace {

constexpr const char* displayNameKeyword = "DisplayName";

const char* LevelName(SettingLevel level) {
    switch (level) {
    case SettingLevel::Page:
        return "page";
    case SettingLevel::Document:
        return "document";
    default:
        return "job";
    }
}

const char* NeedName(ParameterRules::Mandatory need) {
    switch (need) {
    case ParameterRules::Mandatory::Unconditional:
        return "always";
    case ParameterRules::Mandatory::Conditional:
        return "withOption";
    default:
        return "optional";
    }
}

std::optional<long long> IntegerOf(const SchemaProperty* property) {
    if (property == nullptr || !property->value) return std::nullopt;
    const std::string& text = property->value->text;
    long long number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size() ? std::optional(number) : std::nullopt;
}

bool IsCalled(const std::string& name, const std::string& displayName, const std::string& wanted) {
    return EqualIgnoringAsciiCase(name, wanted) || EqualIgnoringAsciiCase(LocalNameOf(name), wanted) ||
           (!displayName.empty() && EqualIgnoringAsciiCase(displayName, wanted));
}

class Reading {
public:
    explicit Reading(const QueueTickets& tickets)
        : m_tickets(tickets), m_capabilities(tickets.Capabilities()) {
        m_read.printer = Utf8(tickets.PrinterName());
    }

    OfferedSettings Read(const PolicyReport& policy) {
        const auto& features = m_capabilities.Features();
        for (std::size_t i = 0; i < features.size(); ++i)
            m_read.features.push_back(ReadFeature(features[i], &m_tickets.Defaults().features[i]));
        AddParameters();
        AddRules();
        AddProperties();
        AddDemands(policy);
        return std::move(m_read);
    }

private:
    using Setting = OfferedSettings::Setting;
    using Option = OfferedSettings::Option;
    using Feature = OfferedSettings::Feature;
    using Parameter = OfferedSettings::Parameter;
    using Choice = OfferedSettings::Choice;
    using Rule = OfferedSettings::Rule;

    std::string NameOf(const KeywordName& name) const {
        return name.Empty() ? std::string() : m_capabilities.Prefixes().Qualified(name);
    }

    std::string ValueOf(const SchemaProperty& property) const {
        if (!property.parameter.Empty()) return NameOf(property.parameter);
        if (property.value)
            return m_capabilities.Prefixes().Qualified(property.value->space, property.value->text);
        std::string text;
        for (const SchemaProperty& nested : property.properties)
            text += (text.empty() ? "" : ", ") + nested.name.local + " " + ValueOf(nested);
        return text;
    }

    std::string DisplayNameOf(const std::vector<SchemaProperty>& properties) const {
        const SchemaProperty* const property =
            FindProperty(properties, SchemaSpace::Keywords, displayNameKeyword);
        return property != nullptr && property->value ? property->value->text : std::string();
    }

    std::vector<Setting> ReadScored(const std::vector<SchemaProperty>& properties) const {
        std::vector<Setting> scored;
        scored.reserve(properties.size());
        for (const SchemaProperty& property : properties)
            scored.push_back({NameOf(property.name), ValueOf(property), !property.parameter.Empty()});
        return scored;
    }

    Option ReadOption(const CapabilitiesOption& option) const {
        const SchemaOption& schema = *option.schema;
        Option read;
        read.name = NameOf(schema.name);
        read.displayName = DisplayNameOf(schema.properties);
        read.scored = ReadScored(schema.scored);
        const auto width =
            IntegerOf(FindProperty(schema.scored, SchemaSpace::Keywords, SchemaKeyword::MediaSizeWidth));
        const auto height =
            IntegerOf(FindProperty(schema.scored, SchemaSpace::Keywords, SchemaKeyword::MediaSizeHeight));
        if (width && height) read.size = OfferedSettings::Size{*width, *height};
        if (option.constrained) read.constrained = NameOf(schema.constrained);
        return read;
    }

    Feature ReadFeature(const CapabilitiesFeature& feature, const FeatureChoice* standard) const {
        Feature read;
        read.name = NameOf(feature.Name());
        read.displayName = DisplayNameOf(feature.schema->properties);
        read.level = LevelName(feature.level);
        read.isPickMany = feature.pickMany;
        for (std::size_t i = 0; i < feature.options.size(); ++i) {
            read.options.push_back(ReadOption(feature.options[i]));
            read.options.back().isDefault = standard != nullptr && standard->Has(i);
        }
        for (std::size_t i = 0; i < feature.features.size(); ++i) {
            const bool isChosen = standard != nullptr && i < standard->features.size();
            read.features.push_back(
                ReadFeature(feature.features[i], isChosen ? &standard->features[i] : nullptr));
        }
        return read;
    }

    void AddParameters() {
        KeywordMap<const SchemaParameterDef*> definitions; // of one name the first counts
        for (const SchemaParameterDef& definition : m_capabilities.Schema().definitions)
            definitions.emplace(definition.name, &definition);
        for (std::size_t i = 0; i < m_capabilities.Parameters().size(); ++i) {
            const ParameterRules& rules = m_capabilities.Parameters()[i];
            const SchemaParameterDef* const definition = definitions.at(rules.Name());
            const auto text = [&](const char* name) {
                const SchemaProperty* const property =
                    FindProperty(definition->properties, SchemaSpace::Framework, name);
                return property != nullptr ? ValueOf(*property) : std::string();
            };
            Parameter parameter;
            parameter.name = NameOf(rules.Name());
            parameter.displayName = DisplayNameOf(definition->properties);
            parameter.level = LevelName(rules.Level());
            parameter.need = NeedName(rules.Need());
            parameter.type = LocalNameOf(text("DataType"));
            parameter.unit = text("UnitType");
            parameter.minimum = text("MinValue");
            parameter.maximum = text("MaxValue");
            parameter.multiple = text("Multiple");
            parameter.minLength = text("MinLength");
            parameter.maxLength = text("MaxLength");
            const std::optional<SchemaValue>& set = m_tickets.Defaults().parameters[i];
            if (const SchemaValue* const value = set ? &*set : rules.Default(); value != nullptr)
                parameter.fallback = m_capabilities.Prefixes().Qualified(value->space, value->text);
            m_read.parameters.push_back(std::move(parameter));
        }
    }

    void AddRules() {
        const ConstraintRules& constraints = m_capabilities.Constraints();
        for (std::size_t i = 0; i < constraints.Count(); ++i) {
            Rule rule;
            for (const ConstraintRules::Choice& needed : constraints.Choices(i)) {
                const Feature& feature = m_read.features[needed.feature];
                Choice choice;
                choice.feature = feature.name;
                choice.displayName = Titled(feature.displayName, feature.name);
                for (std::size_t option = 0; option < needed.options.size(); ++option) {
                    if (!needed.options[option]) continue;
                    const Option& named = feature.options[option];
                    choice.options.push_back(named.name);
                    choice.displayNames.push_back(Titled(named.displayName, named.name));
                }
                rule.choices.push_back(std::move(choice));
            }
            rule.givesWay = m_read.features[constraints.GivingWay(i).front()].name;
            m_read.rules.push_back(std::move(rule));
        }
    }

    void AddProperties() {
        for (const SchemaProperty& property : m_capabilities.Schema().properties)
            m_read.properties.push_back({NameOf(property.name), ValueOf(property)});
    }

    void AddDemands(const PolicyReport& policy) {
        for (const PolicyReport::Row& row : policy.Rows()) {
            if (row.written == nullptr) continue;
            const KeywordName name{row.enforced->isPublic
                                       ? NamespaceUri(SchemaSpace::Keywords)
                                       : NamespaceUri(Utf8(PrintSchema::Keywords::USER_KEYWORDS_URI)),
                                   Utf8Argument(row.enforced->ticketName)};
            const std::size_t at = m_capabilities.FindFeature(name);
            if (at != CapabilitiesIndex::notFound)
                m_read.features[at].demands.push_back({row.behavior, row.words});
        }
    }

    const QueueTickets& m_tickets;
    const CapabilitiesIndex& m_capabilities;
    OfferedSettings m_read;
};

} // namespace

OfferedSettings OfferedSettings::Read(const QueueTickets& tickets, const PolicyReport& policy) {
    return Reading(tickets).Read(policy);
}

bool OfferedSettings::KeepOnly(const std::string& name) {
    std::vector<Feature> wanted;
    const auto collect = [&](const auto& self, const std::vector<Feature>& features) -> void {
        for (const Feature& feature : features)
            if (IsCalled(feature.name, feature.displayName, name))
                wanted.push_back(feature);
            else
                self(self, feature.features);
    };
    collect(collect, features);
    features = std::move(wanted);
    std::erase_if(parameters, [&](const Parameter& parameter) {
        return !IsCalled(parameter.name, parameter.displayName, name);
    });
    std::erase_if(rules, [&](const Rule& rule) {
        return std::ranges::none_of(rule.choices, [&](const Choice& choice) {
            return std::ranges::find(features, choice.feature, &Feature::name) != features.end();
        });
    });
    properties.clear();
    isPart = true;
    return !features.empty() || !parameters.empty();
}

std::string LocalNameOf(const std::string& name) { return name.substr(name.find(':') + 1); }

std::string Titled(const std::string& displayName, const std::string& name) {
    return displayName.empty() ? name : displayName;
}

} // namespace OvPipeline
