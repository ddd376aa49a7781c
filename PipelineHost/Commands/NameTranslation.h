#pragma once

#include <DataModel/FeatureIds.h>
#include <DataModel/NativeXmlConfigFeatureEntry.h>
#include <DataModel/ValueIds.h>

#include <optional>
#include <string>
#include <vector>

namespace OvPipeline {

/// "option", "collection" and so on.
const char* SyntaxName(NativeXmlConfigFeatureEntry::SyntaxEnum syntax);

/// What the driver's features and their values are called: in the ticket, in the administrator's
/// configuration and in the device's own vocabulary (CPSS), with their numbers and enumerators.
class NameTranslation {
public:
    struct Feature {
        DataModelIds::tagFeatureEnum number{};
        std::string enumerator = {}; // empty for a collection that has none
        std::string ticketName = {};
        std::string configurationName = {};
        std::string cpssName = {};
        const NativeXmlConfigFeatureEntry* entry = nullptr; // null for a feature that has only an enumerator
    };
    /// A value that has two words in one world stands there once for each.
    struct Value {
        DataModelIds::tagValueEnum number{};
        std::string enumerator = {};
        std::optional<DataModelIds::tagFeatureEnum> feature =
            {};                      // none for a value that has only an enumerator
        std::string ticketName = {}; // this and the next ones: empty for no name
        std::string configurationName = {};
        std::string cpssName = {};
    };

    NameTranslation();

    // What bears the text as a name in any world, as its enumerator or as its number. Upper and lower case
    // are one; a prefix before a colon does not count. Features come by ascending number.
    std::vector<const Feature*> FindFeatures(const std::string& text) const;
    std::vector<const Value*> FindValues(const std::string& text) const;
    /// Up to the given count of names that hold the text.
    std::vector<std::string> FindSimilar(const std::string& text, std::size_t count) const;

    std::vector<const Value*> ValuesOf(DataModelIds::tagFeatureEnum feature) const;
    // The features that the collection holds, and the collections that hold the feature.
    std::vector<const Feature*> MembersOf(DataModelIds::tagFeatureEnum collection) const;
    std::vector<Feature> CollectionsOf(const Feature& feature) const;
    /// The enumerator, or the number where there is none.
    std::string NameOf(DataModelIds::tagFeatureEnum feature) const;

private:
    const Feature* Find(DataModelIds::tagFeatureEnum feature) const;
    void AddFeatures();
    void AddDictionaryValues();
    void AddWords();
    void AddNamelessValues();
    /// Adds the word where the value has none yet in that world, else as one more row.
    void AddWord(DataModelIds::tagFeatureEnum feature, DataModelIds::tagValueEnum value,
                 std::string Value::*world, const std::string& word);

    std::vector<Feature> m_features; // by ascending number
    std::vector<Value> m_values;     // by feature, in the order of the tables
};

} // namespace OvPipeline
