#include "Commands/CapabilitiesReport.h"

#include "Common/Text.h"
#include "Report/TextTable.h"

#include <DataModel/PrintSchemaKeywordLiterals.h>
#include <Locale/ShownText.h>
#include <PrintTicket/SettingText.h>

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <utility>

using namespace OvPlatform;

namespace OvPipeline {

namespace {

constexpr const char* displayNameKeyword = "DisplayName";
constexpr std::size_t longestLine = 1000;  // characters
constexpr std::size_t longestDefault = 60; // characters of a parameter's value

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

// How a need reads in a sentence.
std::string NeedWords(std::string_view need) {
    if (need == "always") return "in every ticket";
    return need == "withOption" ? "with the options that refer to it" : "optional";
}

std::optional<long long> IntegerOf(const SchemaProperty* property) {
    if (property == nullptr || !property->value) return std::nullopt;
    const std::string& text = property->value->text;
    long long number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size() ? std::optional(number) : std::nullopt;
}

std::string Rounded(double number, int digits) {
    char text[64];
    std::snprintf(text, sizeof text, "%.*f", digits, number);
    std::string rounded = text;
    rounded.erase(rounded.find_last_not_of('0') + 1);
    if (rounded.ends_with('.')) rounded.pop_back();
    return rounded == "-0" ? "0" : rounded;
}

std::string Millimetres(double microns) { return Rounded(microns / 1000, 1); }
std::string Inches(double microns) { return Rounded(microns / 25400, 2); }

std::string LocalOf(const std::string& name) { return name.substr(name.find(':') + 1); }

std::string Titled(const std::string& displayName, const std::string& name) {
    return displayName.empty() ? name : displayName;
}

bool IsCalled(const std::string& name, const std::string& displayName, const std::string& wanted) {
    return EqualIgnoringAsciiCase(name, wanted) || EqualIgnoringAsciiCase(LocalOf(name), wanted) ||
           (!displayName.empty() && EqualIgnoringAsciiCase(displayName, wanted));
}

// Displayed names, which may hold commas.
std::string Quoted(const std::vector<std::string>& texts) {
    std::string joined;
    for (const std::string& text : texts)
        joined += (joined.empty() ? "\"" : ", \"") + text + "\"";
    return joined;
}

void WriteText(JsonText& json, const char* key, const std::string& text) {
    json.Key(key);
    text.empty() ? json.Null() : json.Text(text);
}

// A line that is no table's.
std::string Line(const std::string& indent, const std::string& text) {
    return indent + Shown(text, longestLine) + "\n";
}

template <class Settings>
void WriteSettings(JsonText& json, const char* key, const Settings& settings) {
    json.Key(key).BeginArray();
    for (const auto& setting : settings)
        json.BeginObject()
            .Key("name")
            .Text(setting.name)
            .Key(setting.isParameter ? "parameter" : "value")
            .Text(setting.value)
            .EndObject();
    json.EndArray();
}

} // namespace

CapabilitiesReport::CapabilitiesReport(const QueueTickets& tickets, const PolicyReport& policy)
    : m_capabilities(tickets.Capabilities()), m_printer(Utf8(tickets.PrinterName())) {
    const auto& features = m_capabilities.Features();
    for (std::size_t i = 0; i < features.size(); ++i)
        m_features.push_back(ReadFeature(features[i], &tickets.Defaults().features[i]));
    AddParameters(tickets);
    AddRules();
    AddProperties();
    AddDemands(policy);
}

// ---- What the documents say

std::string CapabilitiesReport::NameOf(const KeywordName& name) const {
    return name.Empty() ? std::string() : m_capabilities.Prefixes().Qualified(name);
}

std::string CapabilitiesReport::ValueOf(const SchemaProperty& property) const {
    if (!property.parameter.Empty()) return NameOf(property.parameter);
    if (property.value)
        return m_capabilities.Prefixes().Qualified(property.value->space, property.value->text);
    std::string text;
    for (const SchemaProperty& nested : property.properties)
        text += (text.empty() ? "" : ", ") + nested.name.local + " " + ValueOf(nested);
    return text;
}

std::string CapabilitiesReport::DisplayNameOf(const std::vector<SchemaProperty>& properties) const {
    const SchemaProperty* const property =
        FindProperty(properties, SchemaSpace::Keywords, displayNameKeyword);
    return property != nullptr && property->value ? property->value->text : std::string();
}

std::vector<CapabilitiesReport::Setting>
CapabilitiesReport::ReadScored(const std::vector<SchemaProperty>& properties) const {
    std::vector<Setting> scored;
    for (const SchemaProperty& property : properties)
        scored.push_back({NameOf(property.name), ValueOf(property), !property.parameter.Empty()});
    return scored;
}

CapabilitiesReport::Option CapabilitiesReport::ReadOption(const CapabilitiesOption& option) const {
    const SchemaOption& schema = *option.schema;
    Option read;
    read.name = NameOf(schema.name);
    read.displayName = DisplayNameOf(schema.properties);
    read.scored = ReadScored(schema.scored);
    const auto width =
        IntegerOf(FindProperty(schema.scored, SchemaSpace::Keywords, SchemaKeyword::MediaSizeWidth));
    const auto height =
        IntegerOf(FindProperty(schema.scored, SchemaSpace::Keywords, SchemaKeyword::MediaSizeHeight));
    if (width && height) read.size = Size{*width, *height};
    if (option.constrained) read.constrained = NameOf(schema.constrained);
    return read;
}

CapabilitiesReport::Feature CapabilitiesReport::ReadFeature(const CapabilitiesFeature& feature,
                                                            const FeatureChoice* standard) const {
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

void CapabilitiesReport::AddParameters(const QueueTickets& tickets) {
    for (std::size_t i = 0; i < m_capabilities.Parameters().size(); ++i) {
        const ParameterRules& rules = m_capabilities.Parameters()[i];
        // Of definitions of one name the first counts.
        const auto definition =
            std::ranges::find(m_capabilities.Schema().definitions, rules.Name(), &SchemaParameterDef::name);
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
        parameter.type = LocalOf(text("DataType"));
        parameter.unit = text("UnitType");
        parameter.minimum = text("MinValue");
        parameter.maximum = text("MaxValue");
        parameter.multiple = text("Multiple");
        parameter.minLength = text("MinLength");
        parameter.maxLength = text("MaxLength");
        const std::optional<SchemaValue>& set = tickets.Defaults().parameters[i];
        if (const SchemaValue* const value = set ? &*set : rules.Default(); value != nullptr)
            parameter.fallback = m_capabilities.Prefixes().Qualified(value->space, value->text);
        m_parameters.push_back(std::move(parameter));
    }
}

void CapabilitiesReport::AddRules() {
    const ConstraintRules& constraints = m_capabilities.Constraints();
    for (std::size_t i = 0; i < constraints.Count(); ++i) {
        Rule rule;
        for (const ConstraintRules::Choice& needed : constraints.Choices(i)) {
            const Feature& feature = m_features[needed.feature];
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
        rule.givesWay = m_features[constraints.GivingWay(i).front()].name;
        m_rules.push_back(std::move(rule));
    }
}

void CapabilitiesReport::AddProperties() {
    for (const SchemaProperty& property : m_capabilities.Schema().properties)
        m_properties.push_back({NameOf(property.name), ValueOf(property)});
}

void CapabilitiesReport::AddDemands(const PolicyReport& policy) {
    for (const PolicyReport::Row& row : policy.Rows()) {
        if (row.written == nullptr) continue;
        const KeywordName name{row.enforced->isPublic
                                   ? NamespaceUri(SchemaSpace::Keywords)
                                   : NamespaceUri(Utf8(PrintSchema::Keywords::USER_KEYWORDS_URI)),
                               Utf8Argument(row.enforced->ticketName)};
        const std::size_t at = m_capabilities.FindFeature(name);
        if (at != CapabilitiesIndex::notFound) m_features[at].demands.push_back({row.behavior, row.words});
    }
}

bool CapabilitiesReport::KeepOnly(const std::string& name) {
    std::vector<Feature> wanted;
    const auto collect = [&](const auto& self, const std::vector<Feature>& features) -> void {
        for (const Feature& feature : features)
            if (IsCalled(feature.name, feature.displayName, name))
                wanted.push_back(feature);
            else
                self(self, feature.features);
    };
    collect(collect, m_features);
    m_features = std::move(wanted);
    std::erase_if(m_parameters, [&](const Parameter& parameter) {
        return !IsCalled(parameter.name, parameter.displayName, name);
    });
    std::erase_if(m_rules, [&](const Rule& rule) {
        return std::ranges::none_of(rule.choices, [&](const Choice& choice) {
            return std::ranges::find(m_features, choice.feature, &Feature::name) != m_features.end();
        });
    });
    m_properties.clear();
    m_isPart = true;
    return !m_features.empty() || !m_parameters.empty();
}

// ---- For people

std::string CapabilitiesReport::DetailsOf(const Option& option) const {
    std::string text;
    if (option.size)
        text = Millimetres(static_cast<double>(option.size->width)) + " x " +
               Millimetres(static_cast<double>(option.size->height)) + " mm (" +
               Inches(static_cast<double>(option.size->width)) + " x " +
               Inches(static_cast<double>(option.size->height)) + " in)";
    for (const Setting& setting : option.scored) {
        const std::string local = LocalOf(setting.name);
        if (option.size &&
            (local == SchemaKeyword::MediaSizeWidth || local == SchemaKeyword::MediaSizeHeight))
            continue;
        text += (text.empty() ? "" : ", ") + local + (setting.isParameter ? " by " : " ") + setting.value;
    }
    return text;
}

std::string CapabilitiesReport::FeatureText(const Feature& feature, std::size_t width,
                                            const std::string& indent) const {
    const std::string kind = std::string("(") + feature.level + ", " +
                             (feature.isPickMany ? "any of " : "one of ") +
                             std::to_string(feature.options.size()) + ")";
    std::string text = Line(indent, (feature.displayName.empty() ? "" : feature.displayName + "  ") +
                                        feature.name + "  " + kind);
    std::vector<std::vector<std::string>> lines;
    for (const Option& option : feature.options) {
        const std::string name = option.name.empty() ? "-" : option.name;
        lines.push_back({option.isDefault ? "*" : " ", Titled(option.displayName, name),
                         option.displayName.empty() ? "" : name, DetailsOf(option),
                         option.constrained.empty() ? "" : "not available: " + option.constrained});
    }
    text += AlignedTable(std::move(lines), width, indent + "  ");
    for (const Demand& demand : feature.demands)
        text += Line(indent + "  ", "policy (" + demand.behavior + "): " + demand.words);
    for (const Feature& nested : feature.features)
        text += FeatureText(nested, width, indent + "    ");
    return text;
}

std::string CapabilitiesReport::ParametersText(std::size_t width) const {
    std::vector<std::vector<std::string>> lines;
    for (const Parameter& parameter : m_parameters) {
        std::string range;
        if (!parameter.minimum.empty() || !parameter.maximum.empty())
            range = (parameter.minimum.empty() ? "up" : parameter.minimum) + " to " +
                    (parameter.maximum.empty() ? "any" : parameter.maximum);
        else if (!parameter.minLength.empty() || !parameter.maxLength.empty())
            range = (parameter.minLength.empty() ? "0" : parameter.minLength) + " to " +
                    (parameter.maxLength.empty() ? "any number of" : parameter.maxLength);
        if (!parameter.unit.empty()) range += (range.empty() ? "" : " ") + parameter.unit;
        if (const auto low = NumberOf(parameter.minimum, false), high = NumberOf(parameter.maximum, false);
            parameter.unit == "microns" && low && high)
            range += " (" + Millimetres(*low) + " to " + Millimetres(*high) + " mm)";
        if (!parameter.multiple.empty() && parameter.multiple != "1")
            range += ", in steps of " + parameter.multiple;
        const std::string need = std::string(parameter.level) + ", " + NeedWords(parameter.need);
        lines.push_back({Titled(parameter.displayName, parameter.name),
                         parameter.displayName.empty() ? "" : parameter.name,
                         parameter.type.empty() ? "-" : parameter.type, range, need,
                         parameter.fallback.empty()
                             ? "no default"
                             : "default " + Shown(parameter.fallback, longestDefault)});
    }
    return lines.empty() ? std::string() : "\nparameters\n" + AlignedTable(std::move(lines), width, "  ");
}

std::string CapabilitiesReport::RulesText() const {
    std::string text = m_rules.empty() ? "" : "\ngo not together\n";
    for (const Rule& rule : m_rules) {
        std::string sentence;
        for (const Choice& choice : rule.choices)
            sentence += (sentence.empty() ? "" : " not with ") + choice.displayName + " " +
                        Quoted(choice.displayNames);
        text += Line("  ", sentence);
        text += Line("    ", "of choices made alike, " + rule.givesWay + " gives way");
    }
    return text;
}

std::string CapabilitiesReport::AsText(std::size_t width) const {
    std::string text;
    if (!m_isPart)
        text = Line({}, m_printer + ": " + Counted(m_features.size(), "feature") + ", " +
                            Counted(m_parameters.size(), "parameter") + ", " +
                            Counted(m_rules.size(), "rule") + " on what goes not together") +
               "* stands before what the queue's default ticket has\n";
    for (const Feature& feature : m_features)
        text += (text.empty() ? "" : "\n") + FeatureText(feature, width, {});
    text += ParametersText(width);
    text += RulesText();
    std::vector<std::vector<std::string>> lines;
    for (const Setting& property : m_properties)
        lines.push_back({property.name, property.value});
    if (!lines.empty()) text += "\nother properties\n" + AlignedTable(std::move(lines), width, "  ");
    return text.starts_with('\n') ? text.substr(1) : text;
}

// ---- For programs

void CapabilitiesReport::WriteFeatures(JsonText& json, const std::vector<Feature>& features) const {
    json.BeginArray();
    for (const Feature& feature : features) {
        json.BeginObject().Key("name").Text(feature.name);
        WriteText(json, "displayName", feature.displayName);
        json.Key("level").Text(feature.level).Key("pick").Text(feature.isPickMany ? "many" : "one");
        json.Key("options").BeginArray();
        for (const Option& option : feature.options) {
            json.BeginObject();
            WriteText(json, "name", option.name);
            WriteText(json, "displayName", option.displayName);
            json.Key("isDefault").Bool(option.isDefault);
            WriteText(json, "constrained", option.constrained);
            json.Key("sizeInMicrons");
            if (option.size)
                json.BeginObject()
                    .Key("width")
                    .Number(option.size->width)
                    .Key("height")
                    .Number(option.size->height)
                    .EndObject();
            else
                json.Null();
            WriteSettings(json, "scoredProperties", option.scored);
            json.EndObject();
        }
        json.EndArray().Key("policy").BeginArray();
        for (const Demand& demand : feature.demands)
            json.BeginObject()
                .Key("behavior")
                .Text(demand.behavior)
                .Key("does")
                .Text(demand.words)
                .EndObject();
        json.EndArray().Key("features");
        WriteFeatures(json, feature.features);
        json.EndObject();
    }
    json.EndArray();
}

void CapabilitiesReport::WriteParameters(JsonText& json) const {
    json.BeginArray();
    for (const Parameter& parameter : m_parameters) {
        json.BeginObject().Key("name").Text(parameter.name);
        WriteText(json, "displayName", parameter.displayName);
        json.Key("level").Text(parameter.level).Key("need").Text(parameter.need);
        WriteText(json, "type", parameter.type);
        WriteText(json, "unit", parameter.unit);
        WriteText(json, "minimum", parameter.minimum);
        WriteText(json, "maximum", parameter.maximum);
        WriteText(json, "multiple", parameter.multiple);
        WriteText(json, "minLength", parameter.minLength);
        WriteText(json, "maxLength", parameter.maxLength);
        WriteText(json, "default", parameter.fallback);
        json.EndObject();
    }
    json.EndArray();
}

void CapabilitiesReport::WriteRules(JsonText& json) const {
    json.BeginArray();
    for (const Rule& rule : m_rules) {
        json.BeginObject().Key("choices").BeginArray();
        for (const Choice& choice : rule.choices) {
            json.BeginObject().Key("feature").Text(choice.feature).Key("options").BeginArray();
            for (const std::string& option : choice.options)
                json.Text(option);
            json.EndArray().EndObject();
        }
        json.EndArray().Key("givesWay").Text(rule.givesWay).EndObject();
    }
    json.EndArray();
}

JsonText CapabilitiesReport::AsJson() const {
    JsonText json;
    json.BeginObject().Key("printer").Text(m_printer).Key("features");
    WriteFeatures(json, m_features);
    json.Key("parameters");
    WriteParameters(json);
    json.Key("constraints");
    WriteRules(json);
    WriteSettings(json, "properties", m_properties);
    json.EndObject();
    return json;
}

} // namespace OvPipeline
