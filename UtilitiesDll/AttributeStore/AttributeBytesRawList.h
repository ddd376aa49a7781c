#pragma once

#include "AttributeStore/AttributeBytesList.h"

class AttributeBytesIndexedList;

/// Attributes as they came, a feature possibly more than once: the form in which they go into a store and
/// come out of it.
class OV_UTILITIES_API AttributeBytesRawList : public AttributeBytesList {
public:
    AttributeBytesRawList() noexcept = default;
    AttributeBytesRawList(const AttributeBytesRawList&) = default;
    AttributeBytesRawList(AttributeBytesRawList&&) noexcept = default;
    AttributeBytesRawList& operator=(const AttributeBytesRawList&) = default;
    AttributeBytesRawList& operator=(AttributeBytesRawList&&) noexcept = default;
    ~AttributeBytesRawList() override;

    /// Replaces the content.
    void ImportFromIndexedList(const AttributeBytesIndexedList& list);
};
