#pragma once

#include "ComSupport/FilterUtilitiesExport.h"
#include "FeatureAccess/FeatureAnswer.h"
#include "FeatureAccess/WantedFeature.h"

#include <AttributeStore/AttributeBytesIndexedList.h>

class AttributeBytesReader;

/// A job's features in its attribute bytes. A view of the reader, which stays the caller's; without one, and
/// over an empty list, there is nothing. Damaged bytes throw, at every question.
class OV_FILTER_UTILITIES_API AttributeBytesSettings {
public:
    explicit AttributeBytesSettings(const AttributeBytesReader* reader) : m_reader(reader) {}

    [[nodiscard]] bool HasAny() const;

    /// A value counts also if it is not specified, unless it is one that says nothing. Nothing where a
    /// collection or an entry on the way is missing.
    bool Ask(const WantedFeature& wanted, FeatureAnswer<DataModelIds::tagValueEnum>& answer) const;
    bool Ask(const WantedFeature& wanted, FeatureAnswer<int>& answer) const;
    bool Ask(const WantedFeature& wanted, FeatureAnswer<CXString>& answer) const;
    bool Ask(const WantedFeature& wanted, FeatureAnswer<Dimension>& answer) const;
    /// Whether the feature, of whatever kind, is specified.
    bool Ask(const WantedFeature& wanted, FeatureAnswer<CollectionState>& answer) const;
    /// The members of a collection, or the entries of a set of them.
    bool Ask(const WantedFeature& wanted, FeatureAnswer<unsigned int>& answer) const;

    /// The members of the collection at the path; false if there is none.
    bool GetMembers(const FeaturePath& path, AttributeBytesIndexedList& members) const;

private:
    /// The list in which a path's feature stands: the reader's own, or `opened`. Null if there is none.
    [[nodiscard]] const AttributeBytesIndexedList* FindList(const FeaturePath& path,
                                                            AttributeBytesIndexedList& opened) const;
    template <typename Value, typename Read>
    bool AskList(const WantedFeature& wanted, FeatureAnswer<Value>& answer, Read read) const;

    const AttributeBytesReader* m_reader;
};
