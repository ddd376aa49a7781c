#pragma once

#include "AttributeStore/AttributeBytesFeatureId.h"
#include "LowLevelFacilities/Numbers/Dimension.h"
#include "LowLevelFacilities/UtilitiesExport.h"
#include "LowLevelFacilities/WideStrings/CXString.h"

#include <windows.h>

class AttributeBytesIndexedList;

/// The questions of an AttributeBytesIndexedList, for a class that has such a list or can get it. The meaning
/// of results and of `found` (may be null) is that of the list's own operations; what the list's accessor
/// throws passes through.
class OV_UTILITIES_API AttributeBytesReader {
public:
    virtual ~AttributeBytesReader();
    /// May load the list.
    [[nodiscard]] virtual const AttributeBytesIndexedList& GetAttributeBytesIndexedListRef() const = 0;

    [[nodiscard]] LONG GetOptionValueFromAttributeBytes(AttributeBytesFeatureId feature, bool* found) const;
    [[nodiscard]] int GetIntegerValueFromAttributeBytes(AttributeBytesFeatureId feature, bool* found) const;
    [[nodiscard]] CXString GetStringValueFromAttributeBytes(AttributeBytesFeatureId feature,
                                                            bool* found) const;
    [[nodiscard]] Dimension GetDimensionValueFromAttributeBytes(AttributeBytesFeatureId feature,
                                                                bool* found) const;
    bool GetCollectionFromAttributeBytes(AttributeBytesFeatureId feature,
                                         AttributeBytesIndexedList& collection) const;
    /// The feature is there, of whatever kind, and specified.
    [[nodiscard]] bool IsSpecifiedInAttributeBytes(AttributeBytesFeatureId feature) const;
    [[nodiscard]] bool IsAttributeBytesListEmpty() const;

protected:
    AttributeBytesReader() = default;
    AttributeBytesReader(const AttributeBytesReader&) = default;
    AttributeBytesReader& operator=(const AttributeBytesReader&) = default;
};
