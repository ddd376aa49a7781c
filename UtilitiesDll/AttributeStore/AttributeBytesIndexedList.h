#pragma once

#include "AttributeStore/AttributeBytesList.h"
#include "LowLevelFacilities/Numbers/Dimension.h"
#include "LowLevelFacilities/WideStrings/CXString.h"

class AttributeBytesRawList;

/// Attributes found by feature number, each feature once, in the order of the numbers.
///
/// To change a member of a collection, take the collection out with GetCollection, change it, and add an
/// attribute made of it again.
class OV_UTILITIES_API AttributeBytesIndexedList : public AttributeBytesList {
public:
    using IndexedListIterator = Iterator;

    AttributeBytesIndexedList() noexcept = default;
    AttributeBytesIndexedList(const AttributeBytesIndexedList&) = default;
    AttributeBytesIndexedList(AttributeBytesIndexedList&&) noexcept = default;
    AttributeBytesIndexedList& operator=(const AttributeBytesIndexedList&) = default;
    AttributeBytesIndexedList& operator=(AttributeBytesIndexedList&&) noexcept = default;
    ~AttributeBytesIndexedList() override;

    /// Replaces the content. Of a feature that the list has more than once, the last attribute counts.
    void ImportFromRawList(const AttributeBytesRawList& list);

    using AttributeBytesList::AddAttributeBytes;
    /// Takes the place of an attribute of the same feature.
    void AddAttributeBytes(SharedPtr attribute) override;

    /// The value of a feature. `found` (may be null) becomes true if the list has it, of this kind, and it is
    /// specified. If it is there but not specified, the result is the value as stored; if it is not there or
    /// of another kind, unspecifiedOption, 0, an empty text, or 0 inches.
    [[nodiscard]] LONG GetOptionValue(AttributeBytesFeatureId feature, bool* found) const;
    [[nodiscard]] int GetIntegerValue(AttributeBytesFeatureId feature, bool* found) const;
    [[nodiscard]] CXString GetStringValue(AttributeBytesFeatureId feature, bool* found) const;
    [[nodiscard]] Dimension GetDimensionValue(AttributeBytesFeatureId feature, bool* found) const;
    /// As GetOptionValue, but unspecifiedOption also for one that is there and not specified: for callers
    /// who look at the value alone.
    [[nodiscard]] LONG GetNewOptionValueId(AttributeBytesFeatureId feature, bool* found) const;

    /// The members of a collection, specified or not; those of a set of collections have their positions as
    /// feature numbers. False, with an empty list, if the feature is not there or no collection. The result
    /// may be put into this list itself.
    bool GetCollection(AttributeBytesFeatureId feature, AttributeBytesIndexedList& collection) const;
    /// The same for the attribute at a position, from 0: the collections of a set.
    bool GetCollectionByIndex(unsigned int index, AttributeBytesIndexedList& collection) const;

    /// Null if the list does not have the feature. Valid until the list changes.
    [[nodiscard]] const AttributeBytes* GetAttributeBytesPtr(AttributeBytesFeatureId feature) const noexcept;

    /// From the attribute with the least number on.
    [[nodiscard]] IndexedListIterator GetIndexedListIterator() const noexcept { return {}; }
    [[nodiscard]] bool IsValidIndexedListIterator(const IndexedListIterator& iterator) const noexcept {
        return IsValid(iterator);
    }
    void IncrementIndexedListIterator(IndexedListIterator& iterator) const noexcept;
    /// Null at the end.
    [[nodiscard]] const AttributeBytes*
    GetAttributeBytesPtr(const IndexedListIterator& iterator) const noexcept;
};
