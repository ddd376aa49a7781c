#include "FeatureAccess/RecordedFeatureAccess.h"

#include "FeatureAccess/FeatureRuleTable.h"

using Kind = FeatureQuestionKind;

RecordedFeatureAccess::RecordedFeatureAccess(IFilterFeatureAccess& access, SourceOf sourceOf)
    : m_access(access), m_sourceOf(std::move(sourceOf)) {}

RecordedFeatureAccess::~RecordedFeatureAccess() = default;

bool RecordedFeatureAccess::Record(Kind kind, const FeaturePath& path, RecordedAnswer::Value value,
                                   bool isSpecified) const {
    RecordedAnswer answer{.question = {kind, path}, .isSpecified = isSpecified};
    answer.isSecret = IsSecretFeature(kind, path);
    if (!answer.isSecret) answer.value = std::move(value);
    if (m_sourceOf) answer.source = m_sourceOf(answer.question);
    m_answers.push_back(std::move(answer));
    return isSpecified;
}

SimpleOptionValue RecordedFeatureAccess::Record(const FeaturePath& path,
                                                const SimpleOptionValue& option) const {
    Record(Kind::Option, path, option.GetValue(), option.IsSpecified());
    return option;
}

// ---- What is recorded

bool RecordedFeatureAccess::GetUnencodedPassword(ByteBuffer& password, tagFeatureEnum grandparent,
                                                 tagFeatureEnum parent, tagFeatureEnum feature) const {
    const bool isSpecified = m_access.GetUnencodedPassword(password, grandparent, parent, feature);
    return Record(Kind::Password, {grandparent, parent, feature}, {}, isSpecified);
}

bool RecordedFeatureAccess::GetUnencodedPassword(ByteBuffer& password, tagFeatureEnum feature) const {
    const bool isSpecified = m_access.GetUnencodedPassword(password, feature);
    return Record(Kind::Password, feature, {}, isSpecified);
}

bool RecordedFeatureAccess::GetDimensionValue(tagFeatureEnum feature, Dimension& value) const {
    const bool isSpecified = m_access.GetDimensionValue(feature, value);
    return Record(Kind::Length, feature, value, isSpecified);
}

bool RecordedFeatureAccess::GetIntegerValue(tagFeatureEnum grandparent, tagFeatureEnum parent,
                                            unsigned int index, tagFeatureEnum feature, int& value) const {
    const bool isSpecified = m_access.GetIntegerValue(grandparent, parent, index, feature, value);
    return Record(Kind::Integer, FeaturePath(grandparent, parent, feature).At(index), value, isSpecified);
}

bool RecordedFeatureAccess::GetIntegerValue(tagFeatureEnum grandparent, tagFeatureEnum parent,
                                            tagFeatureEnum feature, int& value) const {
    const bool isSpecified = m_access.GetIntegerValue(grandparent, parent, feature, value);
    return Record(Kind::Integer, {grandparent, parent, feature}, value, isSpecified);
}

bool RecordedFeatureAccess::GetIntegerValue(tagFeatureEnum parent, tagFeatureEnum feature, int& value) const {
    const bool isSpecified = m_access.GetIntegerValue(parent, feature, value);
    return Record(Kind::Integer, {parent, feature}, value, isSpecified);
}

bool RecordedFeatureAccess::GetIntegerValue(tagFeatureEnum feature, int& value) const {
    const bool isSpecified = m_access.GetIntegerValue(feature, value);
    return Record(Kind::Integer, feature, value, isSpecified);
}

bool RecordedFeatureAccess::GetStringValue(tagFeatureEnum grandparent, tagFeatureEnum parent,
                                           unsigned int index, tagFeatureEnum feature,
                                           CXString& value) const {
    const bool isSpecified = m_access.GetStringValue(grandparent, parent, index, feature, value);
    return Record(Kind::Text, FeaturePath(grandparent, parent, feature).At(index), value, isSpecified);
}

bool RecordedFeatureAccess::GetStringValue(tagFeatureEnum grandparent, tagFeatureEnum parent,
                                           tagFeatureEnum feature, CXString& value) const {
    const bool isSpecified = m_access.GetStringValue(grandparent, parent, feature, value);
    return Record(Kind::Text, {grandparent, parent, feature}, value, isSpecified);
}

bool RecordedFeatureAccess::GetStringValue(tagFeatureEnum parent, tagFeatureEnum feature,
                                           CXString& value) const {
    const bool isSpecified = m_access.GetStringValue(parent, feature, value);
    return Record(Kind::Text, {parent, feature}, value, isSpecified);
}

bool RecordedFeatureAccess::GetStringValue(tagFeatureEnum parent, unsigned int index, tagFeatureEnum feature,
                                           CXString& value) const {
    const bool isSpecified = m_access.GetStringValue(parent, index, feature, value);
    return Record(Kind::Text, FeaturePath(parent, feature).At(index), value, isSpecified);
}

bool RecordedFeatureAccess::GetStringValue(tagFeatureEnum feature, CXString& value) const {
    const bool isSpecified = m_access.GetStringValue(feature, value);
    return Record(Kind::Text, feature, value, isSpecified);
}

SimpleOptionValue RecordedFeatureAccess::GetOptionValue(tagFeatureEnum feature) const {
    return Record(feature, m_access.GetOptionValue(feature));
}

SimpleOptionValue RecordedFeatureAccess::GetOptionValueWithContext(tagFeatureEnum grandparent,
                                                                   tagFeatureEnum parent,
                                                                   tagFeatureEnum feature) const {
    return Record({grandparent, parent, feature},
                  m_access.GetOptionValueWithContext(grandparent, parent, feature));
}

SimpleOptionValue RecordedFeatureAccess::GetOptionValueWithContext(tagFeatureEnum parent,
                                                                   tagFeatureEnum feature) const {
    return Record({parent, feature}, m_access.GetOptionValueWithContext(parent, feature));
}

bool RecordedFeatureAccess::GetBooleanValue(tagFeatureEnum feature, bool& value) const {
    const bool isSpecified = m_access.GetBooleanValue(feature, value);
    return Record(Kind::Flag, feature, value, isSpecified);
}

bool RecordedFeatureAccess::GetDateTimeValue(tagFeatureEnum parent, tagFeatureEnum feature,
                                             UtcTime& value) const {
    const bool isSpecified = m_access.GetDateTimeValue(parent, feature, value);
    return Record(Kind::Time, {parent, feature}, {}, isSpecified);
}

bool RecordedFeatureAccess::GetDateTimeValue(tagFeatureEnum feature, UtcTime& value) const {
    const bool isSpecified = m_access.GetDateTimeValue(feature, value);
    return Record(Kind::Time, feature, {}, isSpecified);
}

bool RecordedFeatureAccess::IsCollectionSpecified(tagFeatureEnum grandparent, tagFeatureEnum parent,
                                                  tagFeatureEnum feature) const {
    const bool isSpecified = m_access.IsCollectionSpecified(grandparent, parent, feature);
    return Record(Kind::Collection, {grandparent, parent, feature}, isSpecified, isSpecified);
}

bool RecordedFeatureAccess::IsCollectionSpecified(tagFeatureEnum parent, tagFeatureEnum feature) const {
    const bool isSpecified = m_access.IsCollectionSpecified(parent, feature);
    return Record(Kind::Collection, {parent, feature}, isSpecified, isSpecified);
}

bool RecordedFeatureAccess::IsCollectionSpecified(tagFeatureEnum feature) const {
    const bool isSpecified = m_access.IsCollectionSpecified(feature);
    return Record(Kind::Collection, feature, isSpecified, isSpecified);
}

bool RecordedFeatureAccess::GetBytesValue(tagFeatureEnum grandparent, tagFeatureEnum parent,
                                          tagFeatureEnum feature, ByteBuffer& value) const {
    const bool isSpecified = m_access.GetBytesValue(grandparent, parent, feature, value);
    return Record(Kind::Bytes, {grandparent, parent, feature}, {}, isSpecified);
}

bool RecordedFeatureAccess::GetBytesValue(tagFeatureEnum parent, tagFeatureEnum feature,
                                          ByteBuffer& value) const {
    const bool isSpecified = m_access.GetBytesValue(parent, feature, value);
    return Record(Kind::Bytes, {parent, feature}, {}, isSpecified);
}

bool RecordedFeatureAccess::GetBytesValue(tagFeatureEnum feature, ByteBuffer& value) const {
    const bool isSpecified = m_access.GetBytesValue(feature, value);
    return Record(Kind::Bytes, feature, {}, isSpecified);
}

DataModelIds::tagValueEnum RecordedFeatureAccess::GetEffectiveOrientation() const {
    const DataModelIds::tagValueEnum value = m_access.GetEffectiveOrientation();
    Record(Kind::Orientation, {}, value, true);
    return value;
}

bool RecordedFeatureAccess::GetOutputSize(tagFeatureEnum feature, unsigned int index, Dimension& first,
                                          Dimension& second) const {
    const bool isSpecified = m_access.GetOutputSize(feature, index, first, second);
    return Record(Kind::OutputSize, FeaturePath(feature).At(index), RecordedAnswer::Size(first, second),
                  isSpecified);
}

bool RecordedFeatureAccess::GetOutputSize(tagFeatureEnum feature, Dimension& first, Dimension& second) const {
    const bool isSpecified = m_access.GetOutputSize(feature, first, second);
    return Record(Kind::OutputSize, feature, RecordedAnswer::Size(first, second), isSpecified);
}

bool RecordedFeatureAccess::GetOutputSize(Dimension& first, Dimension& second) const {
    const bool isSpecified = m_access.GetOutputSize(first, second);
    return Record(Kind::OutputSize, {}, RecordedAnswer::Size(first, second), isSpecified);
}

unsigned int
RecordedFeatureAccess::GetCountOfSpecified1SetOfCollectionElements(tagFeatureEnum parent,
                                                                   tagFeatureEnum feature) const {
    const unsigned int count = m_access.GetCountOfSpecified1SetOfCollectionElements(parent, feature);
    Record(Kind::Entries, {parent, feature}, count, count != 0);
    return count;
}

unsigned int
RecordedFeatureAccess::GetCountOfSpecified1SetOfCollectionElements(tagFeatureEnum feature) const {
    const unsigned int count = m_access.GetCountOfSpecified1SetOfCollectionElements(feature);
    Record(Kind::Entries, feature, count, count != 0);
    return count;
}

// ---- What passes through

bool RecordedFeatureAccess::IsSupportedFeature(tagFeatureEnum grandparent, tagFeatureEnum parent,
                                               tagFeatureEnum feature) const {
    return m_access.IsSupportedFeature(grandparent, parent, feature);
}

bool RecordedFeatureAccess::IsSupportedFeature(tagFeatureEnum parent, tagFeatureEnum feature) const {
    return m_access.IsSupportedFeature(parent, feature);
}

bool RecordedFeatureAccess::IsSupportedFeature(tagFeatureEnum feature) const {
    return m_access.IsSupportedFeature(feature);
}

CXString RecordedFeatureAccess::GetPrintJobDocumentName() const { return m_access.GetPrintJobDocumentName(); }

CXString RecordedFeatureAccess::GetPrintJobUserName() const { return m_access.GetPrintJobUserName(); }

CXString RecordedFeatureAccess::GetPrintJobUserDomainName() const {
    return m_access.GetPrintJobUserDomainName();
}

SimpleOptionValue RecordedFeatureAccess::GetFactoryDefaultOptionValue(tagFeatureEnum feature) const {
    return m_access.GetFactoryDefaultOptionValue(feature);
}

bool RecordedFeatureAccess::GetFactoryDefaultIntegerValue(tagFeatureEnum feature, int& value) const {
    return m_access.GetFactoryDefaultIntegerValue(feature, value);
}

bool RecordedFeatureAccess::GetFactoryDefaultDimensionValue(tagFeatureEnum feature, Dimension& value) const {
    return m_access.GetFactoryDefaultDimensionValue(feature, value);
}

void RecordedFeatureAccess::SetStringValue(tagFeatureEnum feature, const CXString& text, bool isSpecified) {
    m_access.SetStringValue(feature, text, isSpecified);
}

void RecordedFeatureAccess::SetOptionValue(tagFeatureEnum feature, const SimpleOptionValue& value) {
    m_access.SetOptionValue(feature, value);
}

CPString RecordedFeatureAccess::GetDumpDisplayString(const SimpleOptionValue& value) const {
    return m_access.GetDumpDisplayString(value);
}
