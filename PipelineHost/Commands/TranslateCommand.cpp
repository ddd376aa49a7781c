#include "Commands/Commands.h"
#include "Commands/NameTranslation.h"
#include "Report/JsonText.h"
#include "Report/TextTable.h"

#include <algorithm>

namespace OvPipeline {

namespace {

using Entry = NativeXmlConfigFeatureEntry;
using Feature = NameTranslation::Feature;
using Value = NameTranslation::Value;
using Lines = std::vector<std::vector<std::string>>;

constexpr std::size_t maxSimilar = 5;

struct Found {
    std::vector<const Feature*> features;
    std::vector<const Value*> values;
};

const char* NameOf(Entry::ModeEnum mode) { return mode == Entry::DEVICE ? "device" : "document"; }

const char* WhoKnowsSupport(const Entry& entry) {
    return entry.ticketKind == Entry::TICKET_KIND ? "ticket" : "device";
}

std::string Number(int number) { return std::to_string(number); }

[[noreturn]] void ThrowNothingFound(const NameTranslation& names, const std::string& problem,
                                    const std::string& text) {
    std::string line = problem;
    const char* separator = "; similar: ";
    for (const std::string& similar : names.FindSimilar(text, maxSimilar)) {
        line += separator + similar;
        separator = ", ";
    }
    throw std::runtime_error(line);
}

Found FindWanted(const NameTranslation& names, const std::string& name, const std::string& featureName) {
    Found found{.features = {}, .values = names.FindValues(name)};
    if (featureName.empty()) {
        found.features = names.FindFeatures(name);
        if (found.features.empty() && found.values.empty())
            ThrowNothingFound(names, "there is no feature and no value \"" + name + "\"", name);
        return found;
    }
    const std::vector<const Feature*> features = names.FindFeatures(featureName);
    if (features.empty())
        ThrowNothingFound(names, "there is no feature \"" + featureName + "\"", featureName);
    std::erase_if(found.values, [&](const Value* value) {
        return std::none_of(features.begin(), features.end(),
                            [&](const Feature* feature) { return value->feature == feature->number; });
    });
    if (found.values.empty())
        throw std::runtime_error(features[0]->enumerator + " has no value \"" + name +
                                 "\"; its values: ov-pipeline translate " + features[0]->enumerator);
    return found;
}

// ---- For people

std::string Cell(const std::string& name) { return name.empty() ? "-" : name; }

std::string Joined(const auto& features) {
    std::string text;
    for (const Feature& feature : features)
        text += (text.empty() ? "" : ", ") +
                (feature.enumerator.empty() ? Number(feature.number) : feature.enumerator);
    return text;
}

std::string FeatureText(const NameTranslation& names, const Feature& feature, std::size_t width) {
    Lines lines{{"number", Number(feature.number)},
                {"ticket name", Cell(feature.ticketName)},
                {"configuration name", Cell(feature.configurationName)},
                {"CPSS name", Cell(feature.cpssName)}};
    if (feature.entry) {
        lines.push_back({"kind", std::string(SyntaxName(feature.entry->syntax)) + " of the " +
                                     NameOf(feature.entry->mode) + "; the " +
                                     WhoKnowsSupport(*feature.entry) + " tells whether it is supported"});
        if (const auto collections = names.CollectionsOf(feature); !collections.empty())
            lines.push_back({"part of", Joined(collections)});
    }
    std::string text = feature.enumerator + "\n" + AlignedTable(lines, width, "  ");

    Lines table{{"number", "value", "ticket name", "configuration name", "CPSS name"}};
    for (const Value* const value : names.ValuesOf(feature.number))
        table.push_back({Number(value->number), value->enumerator, Cell(value->ticketName),
                         Cell(value->configurationName), Cell(value->cpssName)});
    if (table.size() > 1) text += "\n" + AlignedTable(table, width, "  ");

    Lines members{{"number", "member", "ticket name", "configuration name", "CPSS name"}};
    for (const Feature* const member : names.MembersOf(feature.number))
        members.push_back({Number(member->number), member->enumerator, Cell(member->ticketName),
                           Cell(member->configurationName), Cell(member->cpssName)});
    if (members.size() > 1) text += "\n" + AlignedTable(members, width, "  ");
    return text;
}

std::string AsText(const NameTranslation& names, const Found& found, std::size_t width) {
    std::string text;
    for (const Feature* const feature : found.features)
        text += (text.empty() ? "" : "\n") + FeatureText(names, *feature, width);
    if (found.values.empty()) return text;
    Lines table{{"number", "value", "feature", "ticket name", "configuration name", "CPSS name"}};
    for (const Value* const value : found.values)
        table.push_back({Number(value->number), value->enumerator,
                         value->feature ? names.NameOf(*value->feature) : "-", Cell(value->ticketName),
                         Cell(value->configurationName), Cell(value->cpssName)});
    return text + (text.empty() ? "" : "\n") + AlignedTable(table, width);
}

// ---- For programs

void WriteText(JsonText& json, const char* key, const std::string& text) {
    json.Key(key);
    text.empty() ? json.Null() : json.Text(text);
}

// Of a feature or a value.
void WriteNames(JsonText& json, const auto& named) {
    WriteText(json, "cpssName", named.cpssName);
    WriteText(json, "configurationName", named.configurationName);
    WriteText(json, "ticketName", named.ticketName);
}

void WriteFeatureKey(JsonText& json, const Feature& feature) {
    json.Key("number").Number(feature.number);
    WriteText(json, "feature", feature.enumerator);
}

void WriteValueKey(JsonText& json, const Value& value) {
    json.Key("number").Number(value.number);
    WriteText(json, "value", value.enumerator);
}

void WriteFeature(JsonText& json, const NameTranslation& names, const Feature& feature) {
    json.BeginObject();
    WriteFeatureKey(json, feature);
    WriteNames(json, feature);
    if (feature.entry)
        json.Key("syntax")
            .Text(SyntaxName(feature.entry->syntax))
            .Key("mode")
            .Text(NameOf(feature.entry->mode))
            .Key("supportKnownBy")
            .Text(WhoKnowsSupport(*feature.entry));
    json.Key("partOf").BeginArray();
    for (const Feature& collection : names.CollectionsOf(feature)) {
        json.BeginObject();
        WriteFeatureKey(json, collection);
        json.EndObject();
    }
    json.EndArray().Key("values").BeginArray();
    for (const Value* const value : names.ValuesOf(feature.number)) {
        json.BeginObject();
        WriteValueKey(json, *value);
        WriteNames(json, *value);
        json.EndObject();
    }
    json.EndArray().Key("members").BeginArray();
    for (const Feature* const member : names.MembersOf(feature.number)) {
        json.BeginObject();
        WriteFeatureKey(json, *member);
        WriteNames(json, *member);
        json.EndObject();
    }
    json.EndArray().EndObject();
}

JsonText AsJson(const NameTranslation& names, const Found& found) {
    JsonText json;
    json.BeginObject().Key("features").BeginArray();
    for (const Feature* const feature : found.features)
        WriteFeature(json, names, *feature);
    json.EndArray().Key("values").BeginArray();
    for (const Value* const value : found.values) {
        json.BeginObject();
        WriteValueKey(json, *value);
        WriteText(json, "feature", value->feature ? names.NameOf(*value->feature) : "");
        WriteNames(json, *value);
        json.EndObject();
    }
    json.EndArray().EndObject();
    return json;
}

} // namespace

int TranslateCommand(const CommandOptions& options, ShownOutput& out, ShownOutput&) {
    const NameTranslation names;
    const Found found = FindWanted(names, options.operands.front(), options.feature);
    if (options.json)
        out.Json(AsJson(names, found));
    else
        out.Text(AsText(names, found, out.Width()));
    return ExitOk;
}

} // namespace OvPipeline
