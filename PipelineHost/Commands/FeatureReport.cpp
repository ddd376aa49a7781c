#include "Commands/FeatureReport.h"

#include "Commands/NameTranslation.h"
#include "Common/Text.h"
#include "Report/TextTable.h"

#include <DataModel/NativeXmlConfigFeatureDictionary.h>
#include <DataModel/ValueNameTable.h>
#include <DeviceDescription/SimpleOcapParser.h>
#include <FeatureAccess/RecordedFeatureAccess.h>

#include <algorithm>
#include <array>
#include <iterator>

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
    void operator()(bool) const {}                        // is whether it is specified
    void operator()(const RecordedAnswer::Size&) const {} // is not asked for
};

Answer Show(const RecordedAnswer& recorded) {
    Answer answer{
        .isSpecified = recorded.isSpecified, .isSecret = recorded.isSecret, .source = recorded.source};
    std::visit(Shown{answer}, recorded.value);
    return answer;
}

// Integers of the dictionary that are lengths.
constexpr tagFeatureEnum lengths[] = {FEAT_X1_IMAGE_SHIFT, FEAT_Y1_IMAGE_SHIFT, FEAT_X2_IMAGE_SHIFT,
                                      FEAT_Y2_IMAGE_SHIFT};

// What is asked for one feature of the dictionary.
class Question {
public:
    Question(const RecordedFeatureAccess& access, const Entry& entry)
        : m_access(access), m_entry(entry), m_feature(entry.feature),
          m_isOfMedia(std::count(entry.parentFeatures.begin(), entry.parentFeatures.end(), FEAT_MEDIA_COL) !=
                      0) {}

    bool IsSupported() const {
        return m_isOfMedia ? m_access.IsSupportedFeature(FEAT_MEDIA_COL, m_feature)
                           : m_access.IsSupportedFeature(m_feature);
    }

    Answer Ask() const {
        if (m_feature == FEAT_JOB_PASSWORD) return AskPassword();
        switch (m_entry.syntax) {
        case Entry::STRING:
            return AskText();
        case Entry::INTEGER:
            return AskNumber();
        case Entry::PARENT:
            return AskCollection();
        case Entry::BOOLEAN:
        case Entry::OPTION:
            break;
        }
        return Answered(m_isOfMedia ? m_access.GetOptionValueWithContext(FEAT_MEDIA_COL, m_feature)
                                    : m_access.GetOptionValue(m_feature));
    }

private:
    // The record of the question that was just asked.
    template <typename Value>
    Answer Answered(const Value&) const {
        return Show(m_access.Answers().back());
    }

    Answer AskText() const {
        CXString text;
        return Answered(m_access.GetStringValue(m_feature, text));
    }

    Answer AskNumber() const {
        int value = 0;
        Dimension length;
        if (std::count(std::begin(lengths), std::end(lengths), m_feature) != 0)
            return Answered(m_access.GetDimensionValue(m_feature, length));
        return Answered(m_isOfMedia ? m_access.GetIntegerValue(FEAT_MEDIA_COL, m_feature, value)
                                    : m_access.GetIntegerValue(m_feature, value));
    }

    Answer AskCollection() const {
        Answer answer = Answered(m_access.IsCollectionSpecified(m_feature));
        answer.valueName =
            Answered(m_access.GetCountOfSpecified1SetOfCollectionElements(m_feature)).valueName;
        return answer;
    }

    Answer AskPassword() const {
        ByteBuffer password;
        return Answered(m_access.GetUnencodedPassword(password, m_feature));
    }

    const RecordedFeatureAccess& m_access;
    const Entry& m_entry;
    tagFeatureEnum m_feature;
    bool m_isOfMedia;
};

const char* YesOrNo(bool value) { return value ? "yes" : "no"; }

std::string ValueText(const Answer& answer) {
    if (answer.isSecret) return answer.isSpecified ? "(hidden)" : "";
    std::string text = answer.value;
    if (!answer.valueName.empty()) text += (text.empty() ? "" : " ") + answer.valueName;
    return text;
}

using Line = std::vector<std::string>;

void WriteAnswer(JsonText& json, const Answer& answer) {
    json.Key("specified").Bool(answer.isSpecified).Key("value");
    if (answer.value.empty() && (answer.isNumber || !answer.isSpecified || answer.isSecret))
        json.Null();
    else if (answer.isNumber)
        json.Number(std::stoll(answer.value));
    else
        json.Text(answer.value);
    json.Key("valueName");
    answer.valueName.empty() ? json.Null() : json.Text(answer.valueName);
    if (answer.isSecret) json.Key("secret").Bool(true);
    json.Key("source");
    answer.source == FeatureValueSource::None ? json.Null() : json.Text(NameOf(answer.source));
}

} // namespace

FeatureReport::FeatureReport(DataModelLessFeatureAccess& access, const SimpleOcapParser& device) {
    const RecordedFeatureAccess recorded(
        access, [&access](const FeatureQuestion& question) { return access.GetSource(question); });
    std::vector<const Entry*> entries;
    NativeXmlConfigFeatureDictionary::Instance()->GetAllEntries(entries);
    std::sort(entries.begin(), entries.end(),
              [](const Entry* left, const Entry* right) { return left->feature < right->feature; });
    for (const Entry* const entry : entries) {
        const Question question(recorded, *entry);
        m_features.push_back({.number = entry->feature,
                              .enumerator = LastPart(entry->featureEnumString),
                              .cpssName = std::string(entry->cpssFeatureName.view()),
                              .configurationName = std::string(entry->xmlConfigFeatureName.view()),
                              .ticketName = std::string(entry->narrowPrintTicketFeatureName.view()),
                              .syntax = SyntaxName(entry->syntax),
                              .isSupported = question.IsSupported(),
                              .isRequired = device.IsCpssFeatureRequired(entry->cpssFeatureName),
                              .answer = question.Ask()});
    }

    FeatureValueSource source{};
    const SimpleOptionValue mediaSize = access.GetEffectiveJobLevelMediaSize(source);
    m_effective.push_back({"media size", Show({.question = {FeatureQuestionKind::MediaSize},
                                               .value = mediaSize.GetValue(),
                                               .isSpecified = mediaSize.IsSpecified(),
                                               .source = source})});
    const auto add = [&](const char* name) {
        m_effective.push_back({name, Show(recorded.Answers().back())});
    };
    static_cast<void>(recorded.GetEffectiveOrientation());
    add("orientation");
    int copies = 0;
    recorded.GetIntegerValue(FEAT_COPIES, copies);
    add("copies");
    CXString jobName;
    recorded.GetStringValue(FEAT_JOB_NAME, jobName);
    add("job name");
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
