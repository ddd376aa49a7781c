#include "DataModelLessFeatureAccess.h"

#include <AttributeStore/AttributeBytesIndexedList.h>
#include <EmbeddedSettings/PrintTicketAttributeBytesReaderWriter.h>
#include <EmbeddedSettings/PublicDocSettingsDocument.h>

using namespace DataModelIds;

namespace {

bool IsMemberSpecified(const AttributeBytesIndexedList& collection, tagFeatureEnum feature) {
    const AttributeBytes* const member = collection.GetAttributeBytesPtr(AttributeBytesFeatureId(feature));
    return member != nullptr && member->IsSpecified();
}

} // namespace

// ---- Attributes

bool DataModelLessFeatureAccess::TryGetCollection(tagFeatureEnum feature,
                                                  AttributeBytesIndexedList& members) const {
    return HasAttributeBytes() &&
           m_attributeBytes->GetCollectionFromAttributeBytes(AttributeBytesFeatureId(feature), members);
}

bool DataModelLessFeatureAccess::TryGetCollection(tagFeatureEnum parent, tagFeatureEnum feature,
                                                  AttributeBytesIndexedList& members) const {
    AttributeBytesIndexedList outer;
    return TryGetCollection(parent, outer) && outer.GetCollection(AttributeBytesFeatureId(feature), members);
}

SimpleOptionValue
DataModelLessFeatureAccess::TryGetOptionValueFromAttributeBytesIfExists(tagFeatureEnum parent,
                                                                        tagFeatureEnum feature) const {
    AttributeBytesIndexedList members;
    if (!TryGetCollection(parent, members)) return {};
    bool isSpecified = false;
    const LONG value = members.GetOptionValue(AttributeBytesFeatureId(feature), &isSpecified);
    return {isSpecified, static_cast<tagValueEnum>(value)};
}

int DataModelLessFeatureAccess::TryGetIntegerValueFromAttributeBytesIfExists(tagFeatureEnum feature,
                                                                             bool& isSpecified) const {
    isSpecified = false;
    if (!HasAttributeBytes()) return 0;
    return m_attributeBytes->GetIntegerValueFromAttributeBytes(AttributeBytesFeatureId(feature),
                                                               &isSpecified);
}

int DataModelLessFeatureAccess::TryGetIntegerValueFromAttributeBytesIfExists(tagFeatureEnum parent,
                                                                             tagFeatureEnum feature,
                                                                             bool& isSpecified) const {
    isSpecified = false;
    AttributeBytesIndexedList members;
    if (!TryGetCollection(parent, members)) return 0;
    return members.GetIntegerValue(AttributeBytesFeatureId(feature), &isSpecified);
}

Dimension
DataModelLessFeatureAccess::TryGetDimensionValueFromAttributeBytesIfExists(tagFeatureEnum feature,
                                                                           bool& isSpecified) const {
    isSpecified = false;
    if (!HasAttributeBytes()) return {};
    return m_attributeBytes->GetDimensionValueFromAttributeBytes(AttributeBytesFeatureId(feature),
                                                                 &isSpecified);
}

Dimension DataModelLessFeatureAccess::TryGetDimensionValueFromAttributeBytesIfExists(
    tagFeatureEnum parent, tagFeatureEnum feature, bool& isSpecified) const {
    isSpecified = false;
    AttributeBytesIndexedList members;
    if (!TryGetCollection(parent, members)) return {};
    return members.GetDimensionValue(AttributeBytesFeatureId(feature), &isSpecified);
}

CXString DataModelLessFeatureAccess::TryGetStringValueFromAttributeBytesIfExists(tagFeatureEnum feature,
                                                                                 bool& isSpecified) const {
    isSpecified = false;
    if (!HasAttributeBytes()) return {};
    return m_attributeBytes->GetStringValueFromAttributeBytes(AttributeBytesFeatureId(feature), &isSpecified);
}

bool DataModelLessFeatureAccess::TryGetIsSpecifiedFromAttributeBytesIfExists(tagFeatureEnum feature) const {
    return HasAttributeBytes() &&
           m_attributeBytes->IsSpecifiedInAttributeBytes(AttributeBytesFeatureId(feature));
}

// ---- Elements of the public document settings

HRESULT DataModelLessFeatureAccess::GetNumberOfChildrenForOrvelPublicDocSettingsFeature(
    const CXString& cpssName, bool& isSpecified, unsigned int& count) const {
    isSpecified = false;
    count = 0;
    const PublicDocSettingsDocument document(InitializeOrvelPublicDocSettingsInitOnFirstUse());
    return PublicDocSettingsDocument::Guarded(
        cpssName, [&] { return document.GetNumberOfChildren(cpssName, isSpecified, count); });
}

bool DataModelLessFeatureAccess::IsOrvelPublicDocSettingsFeaturePresent(const CXString& cpssName) const {
    const PublicDocSettingsDocument document(InitializeOrvelPublicDocSettingsInitOnFirstUse());
    return document.Find(cpssName, PublicDocSettingsDocument::Depth::Any) != nullptr;
}

bool DataModelLessFeatureAccess::IsOrvelPublicDocSettingsFeaturePresentAtJobLevel(
    const CXString& cpssName) const {
    const PublicDocSettingsDocument document(InitializeOrvelPublicDocSettingsInitOnFirstUse());
    return document.Find(cpssName, PublicDocSettingsDocument::Depth::JobLevel) != nullptr;
}

// ---- Collections

bool DataModelLessFeatureAccess::IsCollectionSpecified(tagFeatureEnum feature) const {
    FeatureValueSource source{};
    return IsCollectionSpecified(feature, source);
}

bool DataModelLessFeatureAccess::IsCollectionSpecified(tagFeatureEnum feature,
                                                       FeatureValueSource& source) const {
    // Deliberate: annotations in the settings count even if they are marked as not specified.
    if (feature == FEAT_ANNOTATION_COL &&
        IsOrvelPublicDocSettingsFeaturePresent(GetFeatureCpssName(feature))) {
        source = FeatureValueSource::PublicDocumentSettings;
        return true;
    }
    const bool isSpecified = TryGetIsSpecifiedFromAttributeBytesIfExists(feature);
    source = isSpecified ? FeatureValueSource::AttributeBytes : FeatureValueSource::None;
    return isSpecified;
}

bool DataModelLessFeatureAccess::IsCollectionSpecified(tagFeatureEnum parent, tagFeatureEnum feature) const {
    AttributeBytesIndexedList members;
    return TryGetCollection(parent, members) && IsMemberSpecified(members, feature);
}

bool DataModelLessFeatureAccess::IsCollectionSpecified(tagFeatureEnum grandparent, tagFeatureEnum parent,
                                                       tagFeatureEnum feature) const {
    AttributeBytesIndexedList members;
    return TryGetCollection(grandparent, parent, members) && IsMemberSpecified(members, feature);
}

unsigned int
DataModelLessFeatureAccess::GetCountOfSpecified1SetOfCollectionElements(tagFeatureEnum feature) const {
    AttributeBytesIndexedList entries;
    return TryGetCollection(feature, entries) ? entries.GetNumberOfAttributeBytes() : 0;
}

unsigned int
DataModelLessFeatureAccess::GetCountOfSpecified1SetOfCollectionElements(tagFeatureEnum parent,
                                                                        tagFeatureEnum feature) const {
    if (parent == FEAT_ANNOTATION_COL && feature == FEAT_ANNOTATION_ELEMENT_COL &&
        IsOrvelPublicDocSettingsFeaturePresent(GetFeatureCpssName(parent))) {
        bool isSpecified = false;
        unsigned int count = 0;
        const HRESULT result = GetNumberOfChildrenForOrvelPublicDocSettingsFeature(
            GetFeatureCpssName(feature), isSpecified, count);
        return SUCCEEDED(result) && isSpecified ? count : 0;
    }
    AttributeBytesIndexedList entries;
    return TryGetCollection(parent, feature, entries) ? entries.GetNumberOfAttributeBytes() : 0;
}
