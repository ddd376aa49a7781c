#include "Commands/FeatureReport.h"

#include "Commands/NameTranslation.h"
#include "Common/Text.h"
#include "Report/TextTable.h"

#include <DataModel/NativeXmlConfigFeatureDictionary.h>
#include <DataModel/ValueNameTable.h>
#include <DeviceDescription/SimpleOcapParser.h>

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

Answer OptionAnswer(const SimpleOptionValue& option, FeatureValueSource source) {
    Answer answer{.isSpecified = option.IsSpecified(), .isNumber = true, .source = source};
    if (option == SimpleOptionValue()) return answer;
    answer.value = std::to_string(static_cast<int>(option.GetValue()));
    if (const char* const name = FindValueName(option.GetValue())) answer.valueName = name;
    return answer;
}

Answer IntegerAnswer(bool isSpecified, int value, FeatureValueSource source) {
    Answer answer{.isSpecified = isSpecified, .isNumber = true, .source = source};
    if (isSpecified || value != 0) answer.value = std::to_string(value);
    return answer;
}

// As a number in the unit of the device's own lengths, and in words.
Answer LengthAnswer(bool isSpecified, const Dimension& length, FeatureValueSource source) {
    Answer answer{.isSpecified = isSpecified, .isNumber = true, .source = source};
    if (source == FeatureValueSource::None) return answer;
    constexpr double toNearest = 0.499999;
    answer.value = std::to_string(length.GetValue(Dimension::HundredthOfMillimeter).GetIntValue(toNearest));
    answer.valueName =
        std::string(length.GetStringValue(Dimension::Millimeter, 2, toNearest, true, true).view());
    return answer;
}

Answer TextAnswer(bool isSpecified, const CXString& text, FeatureValueSource source) {
    return {.value = Utf8(text.View()), .isSpecified = isSpecified, .source = source};
}

// Integers of the dictionary that are lengths.
constexpr tagFeatureEnum lengths[] = {FEAT_X1_IMAGE_SHIFT, FEAT_Y1_IMAGE_SHIFT, FEAT_X2_IMAGE_SHIFT,
                                      FEAT_Y2_IMAGE_SHIFT};

// What is asked for one feature of the dictionary.
class Question {
public:
    Question(const DataModelLessFeatureAccess& access, const Entry& entry)
        : m_access(access), m_entry(entry), m_feature(entry.feature),
          m_isOfMedia(std::count(entry.parentFeatures.begin(), entry.parentFeatures.end(), FEAT_MEDIA_COL) !=
                      0) {}

    bool IsSupported() const {
        return m_isOfMedia ? m_access.IsSupportedFeature(FEAT_MEDIA_COL, m_feature)
                           : m_access.IsSupportedFeature(m_feature);
    }

    Answer Ask() const {
        if (m_feature == FEAT_JOB_PASSWORD || m_feature == FEAT_MS_PIN_PRINTING_STRING) return AskSecret();
        switch (m_entry.syntax) {
        case Entry::STRING:
            return AskText();
        case Entry::INTEGER:
            return std::count(std::begin(lengths), std::end(lengths), m_feature) != 0 ? AskLength()
                                                                                      : AskInteger();
        case Entry::PARENT:
            return AskCollection();
        case Entry::BOOLEAN:
        case Entry::OPTION:
            break;
        }
        FeatureValueSource source{};
        const SimpleOptionValue option =
            m_isOfMedia ? m_access.GetOptionValueWithContext(FEAT_MEDIA_COL, m_feature, source)
                        : m_access.GetOptionValue(m_feature, source);
        return OptionAnswer(option, source);
    }

private:
    Answer AskText() const {
        FeatureValueSource source{};
        CXString text;
        const bool isSpecified = m_access.GetStringValue(m_feature, text, source);
        return TextAnswer(isSpecified, text, source);
    }

    Answer AskInteger() const {
        FeatureValueSource source{};
        int value = 0;
        const bool isSpecified = m_isOfMedia
                                     ? m_access.GetIntegerValue(FEAT_MEDIA_COL, m_feature, value, source)
                                     : m_access.GetIntegerValue(m_feature, value, source);
        return IntegerAnswer(isSpecified, value, source);
    }

    Answer AskLength() const {
        FeatureValueSource source{};
        Dimension length;
        const bool isSpecified = m_access.GetDimensionValue(m_feature, length, source);
        return LengthAnswer(isSpecified, length, source);
    }

    Answer AskCollection() const {
        Answer answer;
        answer.isSpecified = m_access.IsCollectionSpecified(m_feature, answer.source);
        if (const unsigned int count = m_access.GetCountOfSpecified1SetOfCollectionElements(m_feature);
            count != 0)
            answer.valueName = Counted(count, "member");
        return answer;
    }

    // The password of a secure job is that of the ticket, if that has one, or that of the document settings.
    Answer AskSecret() const {
        CXString pin;
        Answer answer{.isSecret = true};
        const bool isInTicket =
            m_access.GetStringValue(FEAT_MS_PIN_PRINTING_STRING, pin, answer.source) && !pin.IsBlank();
        ByteBuffer password;
        answer.isSpecified = m_feature == FEAT_MS_PIN_PRINTING_STRING
                                 ? isInTicket
                                 : m_access.GetUnencodedPassword(password, m_feature);
        if (!isInTicket)
            answer.source =
                answer.isSpecified ? FeatureValueSource::PublicDocumentSettings : FeatureValueSource::None;
        return answer;
    }

    const DataModelLessFeatureAccess& m_access;
    const Entry& m_entry;
    tagFeatureEnum m_feature;
    bool m_isOfMedia;
};

Answer EffectiveOrientation(const DataModelLessFeatureAccess& access) {
    FeatureValueSource source{};
    const SimpleOptionValue asked = access.GetOptionValue(FEAT_MS_ORIENTATION, source);
    const SimpleOptionValue effective(access.GetEffectiveOrientation());
    return OptionAnswer(effective, asked == effective ? source : FeatureValueSource::Rule);
}

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

FeatureReport::FeatureReport(const DataModelLessFeatureAccess& access, const SimpleOcapParser& device) {
    std::vector<const Entry*> entries;
    NativeXmlConfigFeatureDictionary::Instance()->GetAllEntries(entries);
    std::sort(entries.begin(), entries.end(),
              [](const Entry* left, const Entry* right) { return left->feature < right->feature; });
    for (const Entry* const entry : entries) {
        const Question question(access, *entry);
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
    m_effective.push_back({"media size", OptionAnswer(mediaSize, source)});
    m_effective.push_back({"orientation", EffectiveOrientation(access)});
    int copies = 0;
    const bool hasCopies = access.GetIntegerValue(FEAT_COPIES, copies, source);
    m_effective.push_back({"copies", IntegerAnswer(hasCopies, copies, source)});
    CXString jobName;
    const bool hasJobName = access.GetStringValue(FEAT_JOB_NAME, jobName, source);
    m_effective.push_back({"job name", TextAnswer(hasJobName, jobName, source)});
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
