#include "FeatureAccess/ForwardedFeatureAccess.h"

ForwardedFeatureAccess::ForwardedFeatureAccess(IFilterFeatureAccess& access) : m_access(access) {}

ForwardedFeatureAccess::~ForwardedFeatureAccess() = default;

bool ForwardedFeatureAccess::IsSupportedFeature(tagFeatureEnum grandparent, tagFeatureEnum parent,
                                                tagFeatureEnum feature) const {
    return m_access.IsSupportedFeature(grandparent, parent, feature);
}

bool ForwardedFeatureAccess::IsSupportedFeature(tagFeatureEnum parent, tagFeatureEnum feature) const {
    return m_access.IsSupportedFeature(parent, feature);
}

bool ForwardedFeatureAccess::IsSupportedFeature(tagFeatureEnum feature) const {
    return m_access.IsSupportedFeature(feature);
}

CXString ForwardedFeatureAccess::GetPrintJobDocumentName() const {
    return m_access.GetPrintJobDocumentName();
}

CXString ForwardedFeatureAccess::GetPrintJobUserName() const { return m_access.GetPrintJobUserName(); }

CXString ForwardedFeatureAccess::GetPrintJobUserDomainName() const {
    return m_access.GetPrintJobUserDomainName();
}

bool ForwardedFeatureAccess::GetUnencodedPassword(ByteBuffer& password, tagFeatureEnum grandparent,
                                                  tagFeatureEnum parent, tagFeatureEnum feature) const {
    return m_access.GetUnencodedPassword(password, grandparent, parent, feature);
}

bool ForwardedFeatureAccess::GetUnencodedPassword(ByteBuffer& password, tagFeatureEnum feature) const {
    return m_access.GetUnencodedPassword(password, feature);
}

bool ForwardedFeatureAccess::GetDimensionValue(tagFeatureEnum feature, Dimension& value) const {
    return m_access.GetDimensionValue(feature, value);
}

bool ForwardedFeatureAccess::GetIntegerValue(tagFeatureEnum grandparent, tagFeatureEnum parent,
                                             unsigned int index, tagFeatureEnum feature, int& value) const {
    return m_access.GetIntegerValue(grandparent, parent, index, feature, value);
}

bool ForwardedFeatureAccess::GetIntegerValue(tagFeatureEnum grandparent, tagFeatureEnum parent,
                                             tagFeatureEnum feature, int& value) const {
    return m_access.GetIntegerValue(grandparent, parent, feature, value);
}

bool ForwardedFeatureAccess::GetIntegerValue(tagFeatureEnum parent, tagFeatureEnum feature,
                                             int& value) const {
    return m_access.GetIntegerValue(parent, feature, value);
}

bool ForwardedFeatureAccess::GetIntegerValue(tagFeatureEnum feature, int& value) const {
    return m_access.GetIntegerValue(feature, value);
}

bool ForwardedFeatureAccess::GetStringValue(tagFeatureEnum grandparent, tagFeatureEnum parent,
                                            unsigned int index, tagFeatureEnum feature,
                                            CXString& value) const {
    return m_access.GetStringValue(grandparent, parent, index, feature, value);
}

bool ForwardedFeatureAccess::GetStringValue(tagFeatureEnum grandparent, tagFeatureEnum parent,
                                            tagFeatureEnum feature, CXString& value) const {
    return m_access.GetStringValue(grandparent, parent, feature, value);
}

bool ForwardedFeatureAccess::GetStringValue(tagFeatureEnum parent, tagFeatureEnum feature,
                                            CXString& value) const {
    return m_access.GetStringValue(parent, feature, value);
}

bool ForwardedFeatureAccess::GetStringValue(tagFeatureEnum parent, unsigned int index, tagFeatureEnum feature,
                                            CXString& value) const {
    return m_access.GetStringValue(parent, index, feature, value);
}

bool ForwardedFeatureAccess::GetStringValue(tagFeatureEnum feature, CXString& value) const {
    return m_access.GetStringValue(feature, value);
}

SimpleOptionValue ForwardedFeatureAccess::GetOptionValue(tagFeatureEnum feature) const {
    return m_access.GetOptionValue(feature);
}

SimpleOptionValue ForwardedFeatureAccess::GetOptionValueWithContext(tagFeatureEnum grandparent,
                                                                    tagFeatureEnum parent,
                                                                    tagFeatureEnum feature) const {
    return m_access.GetOptionValueWithContext(grandparent, parent, feature);
}

SimpleOptionValue ForwardedFeatureAccess::GetOptionValueWithContext(tagFeatureEnum parent,
                                                                    tagFeatureEnum feature) const {
    return m_access.GetOptionValueWithContext(parent, feature);
}

bool ForwardedFeatureAccess::GetBooleanValue(tagFeatureEnum feature, bool& value) const {
    return m_access.GetBooleanValue(feature, value);
}

bool ForwardedFeatureAccess::GetDateTimeValue(tagFeatureEnum parent, tagFeatureEnum feature,
                                              UtcTime& value) const {
    return m_access.GetDateTimeValue(parent, feature, value);
}

bool ForwardedFeatureAccess::GetDateTimeValue(tagFeatureEnum feature, UtcTime& value) const {
    return m_access.GetDateTimeValue(feature, value);
}

bool ForwardedFeatureAccess::IsCollectionSpecified(tagFeatureEnum grandparent, tagFeatureEnum parent,
                                                   tagFeatureEnum feature) const {
    return m_access.IsCollectionSpecified(grandparent, parent, feature);
}

bool ForwardedFeatureAccess::IsCollectionSpecified(tagFeatureEnum parent, tagFeatureEnum feature) const {
    return m_access.IsCollectionSpecified(parent, feature);
}

bool ForwardedFeatureAccess::IsCollectionSpecified(tagFeatureEnum feature) const {
    return m_access.IsCollectionSpecified(feature);
}

bool ForwardedFeatureAccess::GetBytesValue(tagFeatureEnum grandparent, tagFeatureEnum parent,
                                           tagFeatureEnum feature, ByteBuffer& value) const {
    return m_access.GetBytesValue(grandparent, parent, feature, value);
}

bool ForwardedFeatureAccess::GetBytesValue(tagFeatureEnum parent, tagFeatureEnum feature,
                                           ByteBuffer& value) const {
    return m_access.GetBytesValue(parent, feature, value);
}

bool ForwardedFeatureAccess::GetBytesValue(tagFeatureEnum feature, ByteBuffer& value) const {
    return m_access.GetBytesValue(feature, value);
}

DataModelIds::tagValueEnum ForwardedFeatureAccess::GetEffectiveOrientation() const {
    return m_access.GetEffectiveOrientation();
}

bool ForwardedFeatureAccess::GetOutputSize(tagFeatureEnum feature, unsigned int index, Dimension& first,
                                           Dimension& second) const {
    return m_access.GetOutputSize(feature, index, first, second);
}

bool ForwardedFeatureAccess::GetOutputSize(tagFeatureEnum feature, Dimension& first,
                                           Dimension& second) const {
    return m_access.GetOutputSize(feature, first, second);
}

bool ForwardedFeatureAccess::GetOutputSize(Dimension& first, Dimension& second) const {
    return m_access.GetOutputSize(first, second);
}

unsigned int
ForwardedFeatureAccess::GetCountOfSpecified1SetOfCollectionElements(tagFeatureEnum parent,
                                                                    tagFeatureEnum feature) const {
    return m_access.GetCountOfSpecified1SetOfCollectionElements(parent, feature);
}

unsigned int
ForwardedFeatureAccess::GetCountOfSpecified1SetOfCollectionElements(tagFeatureEnum feature) const {
    return m_access.GetCountOfSpecified1SetOfCollectionElements(feature);
}

SimpleOptionValue ForwardedFeatureAccess::GetFactoryDefaultOptionValue(tagFeatureEnum feature) const {
    return m_access.GetFactoryDefaultOptionValue(feature);
}

bool ForwardedFeatureAccess::GetFactoryDefaultIntegerValue(tagFeatureEnum feature, int& value) const {
    return m_access.GetFactoryDefaultIntegerValue(feature, value);
}

bool ForwardedFeatureAccess::GetFactoryDefaultDimensionValue(tagFeatureEnum feature, Dimension& value) const {
    return m_access.GetFactoryDefaultDimensionValue(feature, value);
}

void ForwardedFeatureAccess::SetStringValue(tagFeatureEnum feature, const CXString& text, bool isSpecified) {
    m_access.SetStringValue(feature, text, isSpecified);
}

void ForwardedFeatureAccess::SetOptionValue(tagFeatureEnum feature, const SimpleOptionValue& value) {
    m_access.SetOptionValue(feature, value);
}

CPString ForwardedFeatureAccess::GetDumpDisplayString(const SimpleOptionValue& value) const {
    return m_access.GetDumpDisplayString(value);
}
