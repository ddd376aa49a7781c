#include "Commands/FeatureReport.h"

#include "Commands/NameTranslation.h"
#include "Common/Text.h"
#include "Report/TextTable.h"

#include <DataModel/NativeXmlConfigFeatureDictionary.h>
#include <DataModel/ValueNameTable.h>
#include <DeviceDescription/SimpleOcapParser.h>
#include <FeatureAccess/FeatureRuleTable.h>

#include <algorithm>

using namespace DataModelIds;

namespace OvPipeline {

namespace {

using Entry = NativeXmlConfigFeatureEntry;
using Answer = FeatureReport::Answer;

const char* NameOf(FeatureValueSource source) {
    switch (source) {
    case FeatureValueSource::None:
        return "";
    case FeatureValueSource::PrintTicket:
        return "ticket";
    case FeatureValueSource::PublicDocumentSettings:
        return "document settings";
    case FeatureValueSource::AttributeBytes:
        return "attribute bytes";
    case FeatureValueSource::FactoryDefault:
        return "factory default";
    case FeatureValueSource::Rule:
        return "rule";
    case FeatureValueSource::Queue:
        return "queue";
    }
    return "";
}

// Without the name of its enumeration.
std::string LastPart(const CPString& qualified) {
    const std::string name(qualified.view());
    return name.substr(name.rfind(':') + 1);
}

const char* YesOrNo(bool value) { return value ? "yes" : "no"; }

std::string Number(int value) { return std::to_string(value); }

// How a value is shown; nothing of one that says nothing.
struct Shown {
    Answer& answer;

    void operator()(std::monostate) const {}
    void operator()(tagValueEnum option) const {
        answer.isNumber = true;
        if (option == VAL_UNSPECIFIED && !answer.isSpecified) return;
        answer.value = Number(option);
        if (const char* const name = FindValueName(option)) answer.valueName = name;
    }
    void operator()(int value) const {
        answer.isNumber = true;
        if (answer.isSpecified || value != 0) answer.value = Number(value);
    }
    // As a number in the unit of the device's own lengths, and in words.
    void operator()(const Dimension& length) const {
        answer.isNumber = true;
        if (answer.source == FeatureValueSource::None) return;
        answer.value = Number(length.GetValue(Dimension::HundredthOfMillimeter).GetNearestIntValue());
        answer.valueName = std::string(
            length.GetStringValue(Dimension::Millimeter, 2, ::Number::toNearest, true, true).view());
    }
    void operator()(const CXString& text) const { answer.value = Utf8(text.View()); }
    void operator()(unsigned int count) const {
        if (count != 0) answer.valueName = Counted(count, "member");
    }
    void operator()(bool value) const {
        answer.isFlag = true;
        if (answer.source != FeatureValueSource::None) answer.value = YesOrNo(value);
    }
    void operator()(const RecordedAnswer::Size&) const {} // is not asked for
};

Answer Show(const RecordedAnswer& recorded) {
    Answer answer{
        .isSpecified = recorded.isSpecified, .isSecret = recorded.isSecret, .source = recorded.source};
    // The value of a collection is whether it is specified.
    if (recorded.question.kind != FeatureQuestionKind::Collection) std::visit(Shown{answer}, recorded.value);
    return answer;
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
    Answer answer = Show(access.Answer(question));
    if (question.kind == Kind::Collection)
        answer.valueName =
            Show(access.Answer(QuestionOf(question.path.Feature(), {Kind::Entries}))).valueName;
    return answer;
}

std::string ValueText(const Answer& answer) {
    if (answer.isSecret) return answer.isSpecified ? "(hidden)" : "";
    std::string text = answer.value;
    if (!answer.valueName.empty()) text += (text.empty() ? "" : " ") + answer.valueName;
    return text;
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
    answer.source == FeatureValueSource::None ? json.Null() : json.Text(NameOf(answer.source));
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

std::string FeatureReport::AsTable() const {
    std::vector<Line> lines = {{"number", "feature", "supported", "required", "specified", "value", "from",
                                "CPSS name", "configuration name", "ticket name"}};
    for (const Feature& feature : m_features)
        lines.push_back({std::to_string(feature.number), feature.enumerator, YesOrNo(feature.isSupported),
                         YesOrNo(feature.isRequired), YesOrNo(feature.answer.isSpecified),
                         ValueText(feature.answer), NameOf(feature.answer.source), feature.cpssName,
                         feature.configurationName, feature.ticketName});
    std::vector<Line> effective = {{"effective", "specified", "value", "from"}};
    for (const auto& [name, answer] : m_effective)
        effective.push_back({name, YesOrNo(answer.isSpecified), ValueText(answer), NameOf(answer.source)});
    return AlignedTable(lines) + "\n" + AlignedTable(effective);
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
