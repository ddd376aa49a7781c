#include "Package/RelationshipList.h"

#include <algorithm>

namespace OvPlatform {

namespace {

// Most parts have a handful, which is looked through as fast as it could be looked up.
constexpr std::size_t few = 32;

} // namespace

RelationshipList::Key RelationshipList::KeyOf(const NewRelationship& relationship) {
    return {relationship.type.data(), relationship.target.data(), relationship.external};
}

void RelationshipList::Index::Add(const NewRelationship& relationship, std::size_t place) {
    ids.insert(relationship.id);
    places.try_emplace(KeyOf(relationship), place);
}

const NewRelationship* RelationshipList::FindSame(const NewRelationship& wanted) const {
    if (m_index) {
        const auto found = m_index->places.find(KeyOf(wanted));
        return found == m_index->places.end() ? nullptr : &m_list[found->second];
    }
    const auto found = std::find_if(m_list.begin(), m_list.end(), [&](const NewRelationship& other) {
        return KeyOf(other) == KeyOf(wanted);
    });
    return found == m_list.end() ? nullptr : &*found;
}

bool RelationshipList::HasId(std::string_view id) const {
    if (m_index) return m_index->ids.contains(id);
    return std::any_of(m_list.begin(), m_list.end(),
                       [&](const NewRelationship& other) { return other.id == id; });
}

std::string RelationshipList::FreeId() {
    for (m_nextNumber = (std::max)(m_nextNumber, m_list.size() + 1);; ++m_nextNumber)
        if (std::string id = "R" + std::to_string(m_nextNumber); !HasId(id)) return id;
}

void RelationshipList::Add(const NewRelationship& relationship) {
    m_list.push_back(relationship);
    if (m_index) {
        m_index->Add(relationship, m_list.size() - 1);
    } else if (m_list.size() == few) {
        m_index = std::make_unique<Index>();
        for (std::size_t place = 0; place < m_list.size(); ++place)
            m_index->Add(m_list[place], place);
    }
}

} // namespace OvPlatform
