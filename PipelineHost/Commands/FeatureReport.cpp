#include "Commands/FeatureReport.h"

#include "Commands/NameTranslation.h"
#include "Report/TextTable.h"

#include <DataModel/NativeXmlConfigFeatureDictionary.h>
#include <DeviceDescription/SimpleOcapParser.h>
#include <FeatureAccess/FeatureRuleTable.h>

#include <algorithm>

using namespace DataModelIds;

namespace OvPipeline {

namespace {

using Entry = NativeXmlConfigFeatureEntry;
using Answer = FeatureReport::Answer;

// Without the name of its enumeration.
std::string LastPart(const CPString& qualified) {
    const std::string name(qualified.view());
    return name.substr(name.rfind(':') + 1);
}

using Kind = FeatureQuestionKind;

// What is asked for a feature of that syntax, if the rules know it; the first where they do not.
std::vector<Kind> KindsOf(Entry::SyntaxEnum syntax) {
    switch (syntax) {
    case Entry::OPTION:
        return {Kind::Option};
    case Entry::BOOLEAN:
        return {Kind::Flag, Kind::Option};
    case Entry::STRING:
        return {Kind::Text, Kind::Password};
    case Entry::INTEGER:
        return {Kind::Integer, Kind::Length};
    case Entry::PARENT:
        return {Kind::Collection};
    }
    return {};
}

// As a rule asks it, in the collections that it stands in; of a feature without such a rule, alone.
FeatureQuestion QuestionOf(tagFeatureEnum feature, const std::vector<Kind>& kinds) {
    const auto rules = GetFeatureRules();
    const auto rule = std::ranges::find_if(rules, [&](const FeatureRule& row) {
        return row.path.Feature() == feature && std::ranges::find(kinds, row.kind) != kinds.end();
    });
    return rule == rules.end() ? FeatureQuestion{kinds.front(), feature}
                               : FeatureQuestion{rule->kind, rule->path};
}

bool IsSupported(const DataModelLessFeatureAccess& access, const FeaturePath& path) {
    const auto features = path.Features();
    return features.size() == 1   ? access.IsSupportedFeature(features[0])
           : features.size() == 2 ? access.IsSupportedFeature(features[0], features[1])
                                  : access.IsSupportedFeature(features[0], features[1], features[2]);
}

Answer Ask(const DataModelLessFeatureAccess& access, const FeatureQuestion& question) {
    Answer answer = ShownAnswer::Of(access.Answer(question));
    if (question.kind == Kind::Collection)
        answer.valueName =
            ShownAnswer::Of(access.Answer(QuestionOf(question.path.Feature(), {Kind::Entries}))).valueName;
    return answer;
}

using Line = std::vector<std::string>;

void WriteAnswer(JsonText& json, const Answer& answer) {
    json.Key("specified").Bool(answer.isSpecified).Key("value");
    if (answer.value.empty() && (answer.isNumber || answer.isFlag || !answer.isSpecified || answer.isSecret))
        json.Null();
    else if (answer.isNumber)
        json.Number(std::stoll(answer.value));
    else if (answer.isFlag)
        json.Bool(answer.value == YesOrNo(true));
    else
        json.Text(answer.value);
    json.Key("valueName");
    answer.valueName.empty() ? json.Null() : json.Text(answer.valueName);
    if (answer.isSecret) json.Key("secret").Bool(true);
    json.Key("source");
    answer.source == FeatureValueSource::None ? json.Null() : json.Text(answer.SourceName());
}

} // namespace

FeatureReport::FeatureReport(JobSettings& settings) {
    const DataModelLessFeatureAccess& access = settings.Features();
    std::vector<const Entry*> entries;
    NativeXmlConfigFeatureDictionary::Instance()->GetAllEntries(entries);
    std::sort(entries.begin(), entries.end(),
              [](const Entry* left, const Entry* right) { return left->feature < right->feature; });
    for (const Entry* const entry : entries) {
        const FeatureQuestion question = QuestionOf(entry->feature, KindsOf(entry->syntax));
        m_features.push_back({.number = entry->feature,
                              .enumerator = LastPart(entry->featureEnumString),
                              .cpssName = std::string(entry->cpssFeatureName.view()),
                              .configurationName = std::string(entry->xmlConfigFeatureName.view()),
                              .ticketName = std::string(entry->narrowPrintTicketFeatureName.view()),
                              .syntax = SyntaxName(entry->syntax),
                              .isSupported = IsSupported(access, question.path),
                              .isRequired = settings.Device().IsCpssFeatureRequired(entry->cpssFeatureName),
                              .answer = Ask(access, question)});
    }
    m_effective = {{"media size", Ask(access, {Kind::MediaSize})},
                   {"orientation", Ask(access, {Kind::Orientation})},
                   {"copies", Ask(access, {Kind::Integer, FEAT_COPIES})},
                   {"job name", Ask(access, {Kind::Text, FEAT_JOB_NAME})}};
}

std::string FeatureReport::AsTable(std::size_t width) const {
    std::vector<Line> lines = {{"number", "feature", "supported", "required", "specified", "value", "from",
                                "CPSS name", "configuration name", "ticket name"}};
    for (const Feature& feature : m_features)
        lines.push_back({std::to_string(feature.number), feature.enumerator, YesOrNo(feature.isSupported),
                         YesOrNo(feature.isRequired), YesOrNo(feature.answer.isSpecified),
                         feature.answer.Text(), feature.answer.SourceName(), feature.cpssName,
                         feature.configurationName, feature.ticketName});
    std::vector<Line> effective = {{"effective", "specified", "value", "from"}};
    for (const auto& [name, answer] : m_effective)
        effective.push_back({name, YesOrNo(answer.isSpecified), answer.Text(), answer.SourceName()});
    return AlignedTable(lines, width) + "\n" + AlignedTable(effective, width);
}

JsonText FeatureReport::AsJson() const {
    JsonText json;
    json.BeginObject().Key("features").BeginArray();
    for (const Feature& feature : m_features) {
        json.BeginObject()
            .Key("number")
            .Number(feature.number)
            .Key("feature")
            .Text(feature.enumerator)
            .Key("cpssName")
            .Text(feature.cpssName)
            .Key("configurationName")
            .Text(feature.configurationName)
            .Key("ticketName")
            .Text(feature.ticketName)
            .Key("syntax")
            .Text(feature.syntax)
            .Key("supported")
            .Bool(feature.isSupported)
            .Key("required")
            .Bool(feature.isRequired);
        WriteAnswer(json, feature.answer);
        json.EndObject();
    }
    json.EndArray().Key("effective").BeginArray();
    for (const auto& [name, answer] : m_effective) {
        json.BeginObject().Key("name").Text(name);
        WriteAnswer(json, answer);
        json.EndObject();
    }
    json.EndArray().EndObject();
    return json;
}

} // namespace OvPipeline
