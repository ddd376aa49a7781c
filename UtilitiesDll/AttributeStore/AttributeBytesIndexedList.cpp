#include "AttributeStore/AttributeBytesIndexedList.h"

#include "AttributeStore/AttributeBytesRawList.h"

#include <algorithm>
#include <utility>

namespace {

using SharedPtr = AttributeBytesList::SharedPtr;

bool precedes(const SharedPtr& left, const SharedPtr& right) noexcept {
    return left->GetFeatureId() < right->GetFeatureId();
}

bool precedesFeature(const SharedPtr& attribute, AttributeBytesFeatureId feature) noexcept {
    return attribute->GetFeatureId() < feature;
}

/// The value of an attribute that may be missing, as `get` finds it, or `otherwise`.
template <typename Value, typename Content>
Value valueOf(const AttributeBytes* attribute, const Content* (AttributeBytesValue::*get)() const noexcept,
              Value otherwise, bool* found) {
    const Content* const content =
        attribute == nullptr ? nullptr : (attribute->GetAttributeBytesValue().*get)();
    if (found != nullptr) *found = content != nullptr && attribute->IsSpecified();
    return content == nullptr ? std::move(otherwise) : Value(*content);
}

bool membersOf(const AttributeBytes* attribute, AttributeBytesIndexedList& collection) {
    const AttributeBytesRawList* const members =
        attribute == nullptr ? nullptr : attribute->GetAttributeBytesValue().GetCollection();
    // On the side: the list may be the one that keeps the members alive.
    AttributeBytesIndexedList imported;
    if (members != nullptr) imported.ImportFromRawList(*members);
    collection = std::move(imported);
    return members != nullptr;
}

} // namespace

AttributeBytesIndexedList::~AttributeBytesIndexedList() = default;

void AttributeBytesIndexedList::ImportFromRawList(const AttributeBytesRawList& list) {
    std::vector<SharedPtr> imported = AttributesOf(list);
    const auto isOutOfOrder = [](const SharedPtr& left, const SharedPtr& right) {
        return !precedes(left, right);
    };
    // As a rule the list comes from a store, and is in order.
    if (std::adjacent_find(imported.begin(), imported.end(), isOutOfOrder) == imported.end()) {
        m_attributes = std::move(imported);
        return;
    }
    std::stable_sort(imported.begin(), imported.end(), precedes);
    // Kept is the last of those with the same number.
    std::size_t kept = 0;
    for (std::size_t i = 0; i < imported.size(); ++i) {
        if (i + 1 < imported.size() && !precedes(imported[i], imported[i + 1])) continue;
        if (kept != i) imported[kept] = std::move(imported[i]);
        ++kept;
    }
    imported.resize(kept);
    m_attributes = std::move(imported);
}

void AttributeBytesIndexedList::AddAttributeBytes(SharedPtr attribute) {
    if (attribute == nullptr || m_attributes.empty() || precedes(m_attributes.back(), attribute)) {
        AttributeBytesList::AddAttributeBytes(std::move(attribute));
        return;
    }
    const auto place = std::lower_bound(m_attributes.begin(), m_attributes.end(), attribute, precedes);
    if (precedes(attribute, *place))
        m_attributes.insert(place, std::move(attribute));
    else
        *place = std::move(attribute);
}

LONG AttributeBytesIndexedList::GetOptionValue(AttributeBytesFeatureId feature, bool* found) const {
    return valueOf(GetAttributeBytesPtr(feature), &AttributeBytesValue::GetOption,
                   AttributeBytesValue::unspecifiedOption, found);
}

int AttributeBytesIndexedList::GetIntegerValue(AttributeBytesFeatureId feature, bool* found) const {
    return valueOf(GetAttributeBytesPtr(feature), &AttributeBytesValue::GetInteger, 0, found);
}

CXString AttributeBytesIndexedList::GetStringValue(AttributeBytesFeatureId feature, bool* found) const {
    return valueOf(GetAttributeBytesPtr(feature), &AttributeBytesValue::GetString, CXString(), found);
}

Dimension AttributeBytesIndexedList::GetDimensionValue(AttributeBytesFeatureId feature, bool* found) const {
    return valueOf(GetAttributeBytesPtr(feature), &AttributeBytesValue::GetDimension, Dimension(), found);
}

LONG AttributeBytesIndexedList::GetNewOptionValueId(AttributeBytesFeatureId feature, bool* found) const {
    bool isSpecified = false;
    const LONG value = GetOptionValue(feature, &isSpecified);
    if (found != nullptr) *found = isSpecified;
    return isSpecified ? value : AttributeBytesValue::unspecifiedOption;
}

bool AttributeBytesIndexedList::GetCollection(AttributeBytesFeatureId feature,
                                              AttributeBytesIndexedList& collection) const {
    return membersOf(GetAttributeBytesPtr(feature), collection);
}

bool AttributeBytesIndexedList::GetCollectionByIndex(unsigned int index,
                                                     AttributeBytesIndexedList& collection) const {
    return membersOf(index < m_attributes.size() ? m_attributes[index].get() : nullptr, collection);
}

const AttributeBytes*
AttributeBytesIndexedList::GetAttributeBytesPtr(AttributeBytesFeatureId feature) const noexcept {
    const auto place = std::lower_bound(m_attributes.begin(), m_attributes.end(), feature, precedesFeature);
    return place == m_attributes.end() || (*place)->GetFeatureId() != feature ? nullptr : place->get();
}

void AttributeBytesIndexedList::IncrementIndexedListIterator(IndexedListIterator& iterator) const noexcept {
    if (IsValid(iterator)) ++iterator.m_position;
}

const AttributeBytes*
AttributeBytesIndexedList::GetAttributeBytesPtr(const IndexedListIterator& iterator) const noexcept {
    return IsValid(iterator) ? m_attributes[iterator.m_position].get() : nullptr;
}
