#pragma once

#include "DataModel/FeatureIds.h"

#include <AttributeStore/AttributeBytesIndexedList.h>

#include <optional>
#include <utility>

/// Questions about attributes that a client may have left unspecified: what was stored with those is what the
/// user chose not to have.
namespace AttributeCollections {

[[nodiscard]] inline bool IsSpecified(const AttributeBytesIndexedList& list,
                                      DataModelIds::tagFeatureEnum feature) noexcept {
    const AttributeBytes* const attribute = list.GetAttributeBytesPtr(AttributeBytesFeatureId(feature));
    return attribute != nullptr && attribute->IsSpecified();
}

/// Empty if there is no such collection.
[[nodiscard]] inline AttributeBytesIndexedList Open(const AttributeBytesIndexedList& list,
                                                    DataModelIds::tagFeatureEnum feature) {
    AttributeBytesIndexedList members;
    if (IsSpecified(list, feature)) list.GetCollection(AttributeBytesFeatureId(feature), members);
    return members;
}

/// Nothing if there is no such text; one that is there may be empty.
[[nodiscard]] inline std::optional<CXString> FindText(const AttributeBytesIndexedList& list,
                                                      DataModelIds::tagFeatureEnum feature) {
    bool isFound = false;
    CXString text = list.GetStringValue(AttributeBytesFeatureId(feature), &isFound);
    return isFound ? std::optional(std::move(text)) : std::nullopt;
}

/// Empty if there is no such text.
[[nodiscard]] inline CXString Text(const AttributeBytesIndexedList& list,
                                   DataModelIds::tagFeatureEnum feature) {
    return FindText(list, feature).value_or(CXString());
}

/// Hands each collection of a set to the function, in their order.
template <typename Visit>
void ForEach(const AttributeBytesIndexedList& set, Visit visit) {
    AttributeBytesIndexedList members;
    for (unsigned int i = 0; i < set.GetNumberOfAttributeBytes(); ++i)
        if (set.GetCollectionByIndex(i, members)) visit(members);
}

} // namespace AttributeCollections
