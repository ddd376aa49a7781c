#pragma once

#include <AttributeStore/AttributeBytesIndexedList.h>
#include <AttributeStore/AttributeBytesRawList.h>
#include <AttributeStore/PersistentAttributes.h>

#include <initializer_list>
#include <utility>

/// A list of these attributes, in their order.
template <typename List = AttributeBytesIndexedList>
List Attributes(std::initializer_list<std::pair<LONG, AttributeBytesValue>> attributes) {
    List list;
    for (const auto& [id, value] : attributes)
        list.AddAttributeBytes(AttributeBytes(AttributeBytesFeatureId(id), value));
    return list;
}

/// The bytes of a store with this list in the name space of document properties, and with what it held
/// before.
inline ByteBuffer StoreOf(const AttributeBytesRawList& list, const ByteBuffer& before = {}) {
    AttributeBytesNameSpaces nameSpaces;
    nameSpaces.SetNameSpaceAttributes(PersistentAttributes::GetDataModelDocPropNameSpaceId(), list);
    PersistentAttributes store(before, false, nullptr);
    store.SetAttributeBytesNameSpaces(nameSpaces);
    return store.GetPersistentAttributesState();
}
