#include "AttributeStore/AttributeBytesReader.h"

#include "AttributeStore/AttributeBytesIndexedList.h"

AttributeBytesReader::~AttributeBytesReader() = default;

LONG AttributeBytesReader::GetOptionValueFromAttributeBytes(AttributeBytesFeatureId feature,
                                                            bool* found) const {
    return GetAttributeBytesIndexedListRef().GetOptionValue(feature, found);
}

int AttributeBytesReader::GetIntegerValueFromAttributeBytes(AttributeBytesFeatureId feature,
                                                            bool* found) const {
    return GetAttributeBytesIndexedListRef().GetIntegerValue(feature, found);
}

CXString AttributeBytesReader::GetStringValueFromAttributeBytes(AttributeBytesFeatureId feature,
                                                                bool* found) const {
    return GetAttributeBytesIndexedListRef().GetStringValue(feature, found);
}

Dimension AttributeBytesReader::GetDimensionValueFromAttributeBytes(AttributeBytesFeatureId feature,
                                                                    bool* found) const {
    return GetAttributeBytesIndexedListRef().GetDimensionValue(feature, found);
}

bool AttributeBytesReader::GetCollectionFromAttributeBytes(AttributeBytesFeatureId feature,
                                                           AttributeBytesIndexedList& collection) const {
    return GetAttributeBytesIndexedListRef().GetCollection(feature, collection);
}

bool AttributeBytesReader::IsSpecifiedInAttributeBytes(AttributeBytesFeatureId feature) const {
    const AttributeBytes* const attribute = GetAttributeBytesIndexedListRef().GetAttributeBytesPtr(feature);
    return attribute != nullptr && attribute->IsSpecified();
}

bool AttributeBytesReader::IsAttributeBytesListEmpty() const {
    return GetAttributeBytesIndexedListRef().IsEmpty();
}
