#pragma once

#include "PrintTicket/MergeReport.h"
#include "PrintTicket/SchemaModel.h"

#include <prntvpt.h>

#include <vector>

namespace OvPlatform {

class CapabilitiesIndex;

/// Settings of one kind by name, each from the base or from the delta; they point into those documents.
template <typename T>
class MergedSettings {
public:
    struct Entry {
        const T* setting;
        SettingOrigin origin;
    };

    /// The first of a name in one document counts; one of the delta takes the place of the base's.
    void Add(const T& setting, SettingOrigin origin) {
        const auto [at, added] = m_byName.emplace(&setting.name, m_entries.size());
        if (added)
            m_entries.push_back({&setting, origin});
        else if (m_entries[at->second].origin != origin)
            m_entries[at->second] = {&setting, origin};
    }

    const Entry* Find(const KeywordName& name) const {
        const auto found = m_byName.find(&name);
        return found == m_byName.end() ? nullptr : &m_entries[found->second];
    }
    const std::vector<Entry>& All() const { return m_entries; }

private:
    std::vector<Entry> m_entries;
    struct NameHash : KeywordNameHash {
        std::size_t operator()(const KeywordName* name) const { return KeywordNameHash::operator()(*name); }
    };
    struct SameName {
        bool operator()(const KeywordName* one, const KeywordName* other) const { return *one == *other; }
    };
    std::unordered_map<const KeywordName*, std::size_t, NameHash, SameName> m_byName;
};

/// A delta laid over a base: whole features, parameters and properties, as far as they lie in the scope.
struct MergedTicket {
    MergedSettings<SchemaFeature> features;
    MergedSettings<SchemaParameter> parameters;
    MergedSettings<SchemaProperty> properties;
};

/// The result points into both documents. The delta may be null.
MergedTicket MergeTickets(const SchemaDocument& base, const SchemaDocument* delta, EPrintTicketScope scope,
                          const CapabilitiesIndex& capabilities);

} // namespace OvPlatform
