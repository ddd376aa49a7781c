#include "Commands/CapabilitiesJson.h"

namespace OvPipeline {

namespace {

void WriteText(JsonText& json, const char* key, const std::string& text) {
    json.Key(key);
    text.empty() ? json.Null() : json.Text(text);
}

void WriteSettings(JsonText& json, const char* key, const std::vector<OfferedSettings::Setting>& settings) {
    json.Key(key).BeginArray();
    for (const OfferedSettings::Setting& setting : settings)
        json.BeginObject()
            .Key("name")
            .Text(setting.name)
            .Key(setting.isParameter ? "parameter" : "value")
            .Text(setting.value)
            .EndObject();
    json.EndArray();
}

void WriteFeatures(JsonText& json, const std::vector<OfferedSettings::Feature>& features) {
    json.BeginArray();
    for (const OfferedSettings::Feature& feature : features) {
        json.BeginObject().Key("name").Text(feature.name);
        WriteText(json, "displayName", feature.displayName);
        json.Key("level").Text(feature.level).Key("pick").Text(feature.isPickMany ? "many" : "one");
        json.Key("options").BeginArray();
        for (const OfferedSettings::Option& option : feature.options) {
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
        for (const OfferedSettings::Demand& demand : feature.demands)
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

void WriteParameters(JsonText& json, const std::vector<OfferedSettings::Parameter>& parameters) {
    json.BeginArray();
    for (const OfferedSettings::Parameter& parameter : parameters) {
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

void WriteRules(JsonText& json, const std::vector<OfferedSettings::Rule>& rules) {
    json.BeginArray();
    for (const OfferedSettings::Rule& rule : rules) {
        json.BeginObject().Key("choices").BeginArray();
        for (const OfferedSettings::Choice& choice : rule.choices) {
            json.BeginObject().Key("feature").Text(choice.feature).Key("options").BeginArray();
            for (const std::string& option : choice.options)
                json.Text(option);
            json.EndArray().EndObject();
        }
        json.EndArray().Key("givesWay").Text(rule.givesWay).EndObject();
    }
    json.EndArray();
}

} // namespace

JsonText CapabilitiesJson(const OfferedSettings& offered) {
    JsonText json;
    json.BeginObject().Key("printer").Text(offered.printer).Key("features");
    WriteFeatures(json, offered.features);
    json.Key("parameters");
    WriteParameters(json, offered.parameters);
    json.Key("constraints");
    WriteRules(json, offered.rules);
    WriteSettings(json, "properties", offered.properties);
    json.EndObject();
    return json;
}

} // namespace OvPipeline
