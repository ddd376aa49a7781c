#include "FeatureAccess/RecordedFeatureAccess.h"

#include "FeatureAccess/FeatureRuleTable.h"

using Kind = FeatureQuestionKind;

RecordedFeatureAccess::RecordedFeatureAccess(IFilterFeatureAccess& access, SourceOf sourceOf)
    : ForwardedFeatureAccess(access), m_sourceOf(std::move(sourceOf)) {}

RecordedFeatureAccess::~RecordedFeatureAccess() = default;

bool RecordedFeatureAccess::Record(Kind kind, const FeaturePath& path, RecordedAnswer::Value value,
                                   bool isSpecified) const {
    RecordedAnswer answer{.question = {kind, path}};
    answer.isSecret = IsSecretFeature(kind, path);
    if (!IsWithheld(answer.question)) {
        answer.isSpecified = isSpecified;
        if (!answer.isSecret) answer.value = std::move(value);
        if (m_sourceOf) answer.source = m_sourceOf(answer.question);
    }
    m_answers.push_back(std::move(answer));
    return m_answers.back().isSpecified;
}

SimpleOptionValue RecordedFeatureAccess::Record(const FeaturePath& path,
                                                const SimpleOptionValue& option) const {
    Record(Kind::Option, path, option.GetValue(), option.IsSpecified());
    return IsWithheld({Kind::Option, path}) ? SimpleOptionValue() : option;
}

bool RecordedFeatureAccess::GetUnencodedPassword(ByteBuffer& password, tagFeatureEnum grandparent,
                                                 tagFeatureEnum parent, tagFeatureEnum feature) const {
    const bool isSpecified = Access().GetUnencodedPassword(password, grandparent, parent, feature);
    return Record(Kind::Password, {grandparent, parent, feature}, {}, isSpecified);
}

bool RecordedFeatureAccess::GetUnencodedPassword(ByteBuffer& password, tagFeatureEnum feature) const {
    const bool isSpecified = Access().GetUnencodedPassword(password, feature);
    return Record(Kind::Password, feature, {}, isSpecified);
}

bool RecordedFeatureAccess::GetDimensionValue(tagFeatureEnum feature, Dimension& value) const {
    const bool isSpecified = Access().GetDimensionValue(feature, value);
    return Record(Kind::Length, feature, value, isSpecified);
}

bool RecordedFeatureAccess::GetIntegerValue(tagFeatureEnum grandparent, tagFeatureEnum parent,
                                            unsigned int index, tagFeatureEnum feature, int& value) const {
    const bool isSpecified = Access().GetIntegerValue(grandparent, parent, index, feature, value);
    return Record(Kind::Integer, FeaturePath(grandparent, parent, feature).At(index), value, isSpecified);
}

bool RecordedFeatureAccess::GetIntegerValue(tagFeatureEnum grandparent, tagFeatureEnum parent,
                                            tagFeatureEnum feature, int& value) const {
    const bool isSpecified = Access().GetIntegerValue(grandparent, parent, feature, value);
    return Record(Kind::Integer, {grandparent, parent, feature}, value, isSpecified);
}

bool RecordedFeatureAccess::GetIntegerValue(tagFeatureEnum parent, tagFeatureEnum feature, int& value) const {
    const bool isSpecified = Access().GetIntegerValue(parent, feature, value);
    return Record(Kind::Integer, {parent, feature}, value, isSpecified);
}

bool RecordedFeatureAccess::GetIntegerValue(tagFeatureEnum feature, int& value) const {
    const bool isSpecified = Access().GetIntegerValue(feature, value);
    return Record(Kind::Integer, feature, value, isSpecified);
}

bool RecordedFeatureAccess::GetStringValue(tagFeatureEnum grandparent, tagFeatureEnum parent,
                                           unsigned int index, tagFeatureEnum feature,
                                           CXString& value) const {
    const bool isSpecified = Access().GetStringValue(grandparent, parent, index, feature, value);
    return Record(Kind::Text, FeaturePath(grandparent, parent, feature).At(index), value, isSpecified);
}

bool RecordedFeatureAccess::GetStringValue(tagFeatureEnum grandparent, tagFeatureEnum parent,
                                           tagFeatureEnum feature, CXString& value) const {
    const bool isSpecified = Access().GetStringValue(grandparent, parent, feature, value);
    return Record(Kind::Text, {grandparent, parent, feature}, value, isSpecified);
}

bool RecordedFeatureAccess::GetStringValue(tagFeatureEnum parent, tagFeatureEnum feature,
                                           CXString& value) const {
    const bool isSpecified = Access().GetStringValue(parent, feature, value);
    return Record(Kind::Text, {parent, feature}, value, isSpecified);
}

bool RecordedFeatureAccess::GetStringValue(tagFeatureEnum parent, unsigned int index, tagFeatureEnum feature,
                                           CXString& value) const {
    const bool isSpecified = Access().GetStringValue(parent, index, feature, value);
    return Record(Kind::Text, FeaturePath(parent, feature).At(index), value, isSpecified);
}

bool RecordedFeatureAccess::GetStringValue(tagFeatureEnum feature, CXString& value) const {
    const bool isSpecified = Access().GetStringValue(feature, value);
    return Record(Kind::Text, feature, value, isSpecified);
}

SimpleOptionValue RecordedFeatureAccess::GetOptionValue(tagFeatureEnum feature) const {
    return Record(feature, Access().GetOptionValue(feature));
}

SimpleOptionValue RecordedFeatureAccess::GetOptionValueWithContext(tagFeatureEnum grandparent,
                                                                   tagFeatureEnum parent,
                                                                   tagFeatureEnum feature) const {
    return Record({grandparent, parent, feature},
                  Access().GetOptionValueWithContext(grandparent, parent, feature));
}

SimpleOptionValue RecordedFeatureAccess::GetOptionValueWithContext(tagFeatureEnum parent,
                                                                   tagFeatureEnum feature) const {
    return Record({parent, feature}, Access().GetOptionValueWithContext(parent, feature));
}

bool RecordedFeatureAccess::GetBooleanValue(tagFeatureEnum feature, bool& value) const {
    const bool isSpecified = Access().GetBooleanValue(feature, value);
    return Record(Kind::Flag, feature, value, isSpecified);
}

bool RecordedFeatureAccess::GetDateTimeValue(tagFeatureEnum parent, tagFeatureEnum feature,
                                             UtcTime& value) const {
    const bool isSpecified = Access().GetDateTimeValue(parent, feature, value);
    return Record(Kind::Time, {parent, feature}, {}, isSpecified);
}

bool RecordedFeatureAccess::GetDateTimeValue(tagFeatureEnum feature, UtcTime& value) const {
    const bool isSpecified = Access().GetDateTimeValue(feature, value);
    return Record(Kind::Time, feature, {}, isSpecified);
}

bool RecordedFeatureAccess::IsCollectionSpecified(tagFeatureEnum grandparent, tagFeatureEnum parent,
                                                  tagFeatureEnum feature) const {
    const bool isSpecified = Access().IsCollectionSpecified(grandparent, parent, feature);
    return Record(Kind::Collection, {grandparent, parent, feature}, isSpecified, isSpecified);
}

bool RecordedFeatureAccess::IsCollectionSpecified(tagFeatureEnum parent, tagFeatureEnum feature) const {
    const bool isSpecified = Access().IsCollectionSpecified(parent, feature);
    return Record(Kind::Collection, {parent, feature}, isSpecified, isSpecified);
}

bool RecordedFeatureAccess::IsCollectionSpecified(tagFeatureEnum feature) const {
    const bool isSpecified = Access().IsCollectionSpecified(feature);
    return Record(Kind::Collection, feature, isSpecified, isSpecified);
}

bool RecordedFeatureAccess::GetBytesValue(tagFeatureEnum grandparent, tagFeatureEnum parent,
                                          tagFeatureEnum feature, ByteBuffer& value) const {
    const bool isSpecified = Access().GetBytesValue(grandparent, parent, feature, value);
    return Record(Kind::Bytes, {grandparent, parent, feature}, {}, isSpecified);
}

bool RecordedFeatureAccess::GetBytesValue(tagFeatureEnum parent, tagFeatureEnum feature,
                                          ByteBuffer& value) const {
    const bool isSpecified = Access().GetBytesValue(parent, feature, value);
    return Record(Kind::Bytes, {parent, feature}, {}, isSpecified);
}

bool RecordedFeatureAccess::GetBytesValue(tagFeatureEnum feature, ByteBuffer& value) const {
    const bool isSpecified = Access().GetBytesValue(feature, value);
    return Record(Kind::Bytes, feature, {}, isSpecified);
}

DataModelIds::tagValueEnum RecordedFeatureAccess::GetEffectiveOrientation() const {
    const DataModelIds::tagValueEnum value = Access().GetEffectiveOrientation();
    return Record(Kind::Orientation, {}, value, true) ? value : DataModelIds::VAL_UNSPECIFIED;
}

// A size that is withheld is not even read: there are callers who take what they have where nobody says one.
bool RecordedFeatureAccess::GetOutputSize(tagFeatureEnum feature, unsigned int index, Dimension& first,
                                          Dimension& second) const {
    const FeaturePath path = FeaturePath(feature).At(index);
    const bool isSpecified =
        !IsWithheld({Kind::OutputSize, path}) && Access().GetOutputSize(feature, index, first, second);
    return Record(Kind::OutputSize, path, RecordedAnswer::Size(first, second), isSpecified);
}

bool RecordedFeatureAccess::GetOutputSize(tagFeatureEnum feature, Dimension& first, Dimension& second) const {
    const bool isSpecified =
        !IsWithheld({Kind::OutputSize, feature}) && Access().GetOutputSize(feature, first, second);
    return Record(Kind::OutputSize, feature, RecordedAnswer::Size(first, second), isSpecified);
}

bool RecordedFeatureAccess::GetOutputSize(Dimension& first, Dimension& second) const {
    const bool isSpecified = !IsWithheld({Kind::OutputSize, {}}) && Access().GetOutputSize(first, second);
    return Record(Kind::OutputSize, {}, RecordedAnswer::Size(first, second), isSpecified);
}

unsigned int
RecordedFeatureAccess::GetCountOfSpecified1SetOfCollectionElements(tagFeatureEnum parent,
                                                                   tagFeatureEnum feature) const {
    const unsigned int count = Access().GetCountOfSpecified1SetOfCollectionElements(parent, feature);
    return Record(Kind::Entries, {parent, feature}, count, count != 0) ? count : 0;
}

unsigned int
RecordedFeatureAccess::GetCountOfSpecified1SetOfCollectionElements(tagFeatureEnum feature) const {
    const unsigned int count = Access().GetCountOfSpecified1SetOfCollectionElements(feature);
    return Record(Kind::Entries, feature, count, count != 0) ? count : 0;
}
