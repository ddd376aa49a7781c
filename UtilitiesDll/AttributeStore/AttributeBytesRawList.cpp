#include "AttributeStore/AttributeBytesRawList.h"

#include "AttributeStore/AttributeBytesIndexedList.h"

AttributeBytesRawList::~AttributeBytesRawList() = default;

void AttributeBytesRawList::ImportFromIndexedList(const AttributeBytesIndexedList& list) {
    AttributeBytesRawList imported;
    for (auto i = list.GetIterator(); list.IsValid(i);)
        imported.AddAttributeBytes(list.GetNextAttributeBytesSharedPtr(i));
    *this = std::move(imported);
}
