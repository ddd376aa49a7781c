#include "AttributeStore/AttributeBytesRawList.h"

#include "AttributeStore/AttributeBytesIndexedList.h"

AttributeBytesRawList::~AttributeBytesRawList() = default;

void AttributeBytesRawList::ImportFromIndexedList(const AttributeBytesIndexedList& list) {
    m_attributes = AttributesOf(list);
}
