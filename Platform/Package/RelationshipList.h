#pragma once

#include <cstddef>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <tuple>
#include <unordered_set>
#include <vector>

namespace OvPlatform {

/// A relationship that is going to be written, with its texts in a pool of which equal ones are one: the
/// pages of a job say much the same.
struct NewRelationship {
    std::string_view id;
    std::string_view type;
    std::string_view target;
    bool external = false;
};

/// The relationships of one source, in their order; texts of one pool.
class RelationshipList {
public:
    /// One that says the same, whatever its id; null if there is none.
    const NewRelationship* FindSame(const NewRelationship& wanted) const;
    bool HasId(std::string_view id) const;
    /// R1, R2, ...
    std::string FreeId();
    void Add(const NewRelationship& relationship);

    const std::vector<NewRelationship>& All() const { return m_list; }

private:
    using Key = std::tuple<const char*, const char*, bool>;
    static Key KeyOf(const NewRelationship& relationship);

    struct Index {
        std::unordered_set<std::string_view> ids;
        std::map<Key, std::size_t> places;

        void Add(const NewRelationship& relationship, std::size_t place);
    };

    std::vector<NewRelationship> m_list;
    std::unique_ptr<Index> m_index; // null where there are few
    std::size_t m_nextNumber = 0;   // lower ones are not looked at again
};

} // namespace OvPlatform
