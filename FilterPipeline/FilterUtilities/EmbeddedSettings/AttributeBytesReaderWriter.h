#pragma once

#include "ComSupport/FilterUtilitiesExport.h"

#include <AttributeStore/AttributeBytesReader.h>

/// A reader of attributes whose list can be changed, too.
class OV_FILTER_UTILITIES_API AttributeBytesReaderWriter : public AttributeBytesReader {
public:
    AttributeBytesReaderWriter();
    ~AttributeBytesReaderWriter() override;

    [[nodiscard]] const AttributeBytesIndexedList& GetAttributeBytesIndexedListRef() const override = 0;
    /// May load the list. Valid until the list is loaded anew.
    [[nodiscard]] virtual AttributeBytesIndexedList& GetAttributeBytesIndexedListRef() = 0;
};
