#include "FeatureAccess/AttributeBytesSettings.h"

#include <AttributeStore/AttributeBytesReader.h>

#include <functional>

using namespace DataModelIds;

bool AttributeBytesSettings::HasAny() const {
    return m_reader != nullptr && !m_reader->IsAttributeBytesListEmpty();
}

const AttributeBytesIndexedList* AttributeBytesSettings::FindList(const FeaturePath& path,
                                                                  AttributeBytesIndexedList& opened) const {
    if (!HasAny()) return nullptr;
    const AttributeBytesIndexedList* list = &m_reader->GetAttributeBytesIndexedListRef();
    for (const tagFeatureEnum collection : path.Collections()) {
        if (!list->GetCollection(AttributeBytesFeatureId(collection), opened)) return nullptr;
        list = &opened;
    }
    if (path.Index() && !list->GetCollectionByIndex(*path.Index(), opened)) return nullptr;
    return path.Index() ? &opened : list;
}

template <typename Value, typename Read>
bool AttributeBytesSettings::AskList(const WantedFeature& wanted, FeatureAnswer<Value>& answer,
                                     Read read) const {
    AttributeBytesIndexedList opened;
    const AttributeBytesIndexedList* const list = FindList(wanted.path, opened);
    if (list == nullptr) return false;
    answer.value = read(*list, AttributeBytesFeatureId(wanted.Feature()), &answer.isSpecified);
    if (!answer.HasValue()) return false;
    answer.source = FeatureValueSource::AttributeBytes;
    return true;
}

bool AttributeBytesSettings::Ask(const WantedFeature& wanted, FeatureAnswer<tagValueEnum>& answer) const {
    return AskList(wanted, answer, [](const auto& list, AttributeBytesFeatureId feature, bool* isSpecified) {
        return static_cast<tagValueEnum>(list.GetOptionValue(feature, isSpecified));
    });
}

bool AttributeBytesSettings::Ask(const WantedFeature& wanted, FeatureAnswer<int>& answer) const {
    return AskList(wanted, answer, std::mem_fn(&AttributeBytesIndexedList::GetIntegerValue));
}

bool AttributeBytesSettings::Ask(const WantedFeature& wanted, FeatureAnswer<CXString>& answer) const {
    return AskList(wanted, answer, std::mem_fn(&AttributeBytesIndexedList::GetStringValue));
}

bool AttributeBytesSettings::Ask(const WantedFeature& wanted, FeatureAnswer<Dimension>& answer) const {
    return AskList(wanted, answer, std::mem_fn(&AttributeBytesIndexedList::GetDimensionValue));
}

bool AttributeBytesSettings::Ask(const WantedFeature& wanted, FeatureAnswer<CollectionState>& answer) const {
    return AskList(wanted, answer, [](const auto& list, AttributeBytesFeatureId feature, bool* isSpecified) {
        const AttributeBytes* const attribute = list.GetAttributeBytesPtr(feature);
        *isSpecified = attribute != nullptr && attribute->IsSpecified();
        return *isSpecified ? CollectionState::Specified : CollectionState::NotSpecified;
    });
}

bool AttributeBytesSettings::Ask(const WantedFeature& wanted, FeatureAnswer<unsigned int>& answer) const {
    return AskList(wanted, answer, [](const auto& list, AttributeBytesFeatureId feature, bool* isSpecified) {
        AttributeBytesIndexedList members;
        list.GetCollection(feature, members);
        *isSpecified = !members.IsEmpty();
        return members.GetNumberOfAttributeBytes();
    });
}

bool AttributeBytesSettings::GetMembers(const FeaturePath& path, AttributeBytesIndexedList& members) const {
    const AttributeBytesIndexedList* const list = FindList(path, members);
    return list != nullptr && list->GetCollection(AttributeBytesFeatureId(path.Feature()), members);
}
