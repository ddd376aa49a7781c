#include "Commands/ShownAnswer.h"

#include "Common/Text.h"

#include <DataModel/ValueNameTable.h>

using namespace DataModelIds;

namespace OvPipeline {

namespace {

std::string Number(int value) { return std::to_string(value); }

std::string Millimeters(const Dimension& length) {
    return std::string(
        length.GetStringValue(Dimension::Millimeter, 2, ::Number::toNearest, true, true).view());
}

// How a value is shown; nothing of one that says nothing.
struct Shown {
    ShownAnswer& answer;

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
        answer.valueName = Millimeters(length);
    }
    void operator()(const CXString& text) const { answer.value = Utf8(text.View()); }
    void operator()(unsigned int count) const {
        if (count != 0) answer.valueName = Counted(count, "member");
    }
    void operator()(bool value) const {
        answer.isFlag = true;
        if (answer.source != FeatureValueSource::None) answer.value = YesOrNo(value);
    }
    void operator()(const RecordedAnswer::Size& size) const {
        if (answer.isSpecified)
            answer.valueName = Millimeters(size.first) + " by " + Millimeters(size.second);
    }
};

} // namespace

const char* YesOrNo(bool value) { return value ? "yes" : "no"; }

ShownAnswer ShownAnswer::Of(const RecordedAnswer& recorded) {
    ShownAnswer answer{
        .isSpecified = recorded.isSpecified, .isSecret = recorded.isSecret, .source = recorded.source};
    // The value of a collection is whether it is specified.
    if (recorded.question.kind != FeatureQuestionKind::Collection) std::visit(Shown{answer}, recorded.value);
    return answer;
}

std::string ShownAnswer::Text() const {
    if (isSecret) return isSpecified ? "(hidden)" : "";
    std::string text = value;
    if (!valueName.empty()) text += (text.empty() ? "" : " ") + valueName;
    return text;
}

const char* ShownAnswer::SourceName() const {
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

} // namespace OvPipeline
