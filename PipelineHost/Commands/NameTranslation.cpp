#include "Commands/NameTranslation.h"

#include "Common/Text.h"

#include <DataModel/FeatureNameTable.h>
#include <DataModel/NativeXmlConfigCpssOptionValueDictionary.h>
#include <DataModel/NativeXmlConfigFeatureDictionary.h>
#include <DataModel/NativeXmlConfigOptionValueDictionary.h>
#include <DataModel/ValueNameTable.h>
#include <FeatureAccess/FeatureRuleTable.h>
#include <Media/MediaSizeTable.h>

#include <algorithm>
#include <charconv>
#include <set>
#include <string_view>

using namespace DataModelIds;

namespace OvPipeline {

namespace {

using Feature = NameTranslation::Feature;
using Value = NameTranslation::Value;

template <class Entry>
std::vector<const Entry*> EntriesOf(const auto& dictionary) {
    std::vector<const Entry*> entries;
    dictionary.GetAllEntries(entries);
    return entries;
}

template <class Character>
std::basic_string_view<Character> WithoutPrefix(std::basic_string_view<Character> name) {
    return name.substr(name.rfind(Character(':')) + 1);
}

std::string Text(const CPString& name) { return std::string(name.view()); }

std::string Enumerator(const CPString& qualified) { return std::string(WithoutPrefix(qualified.view())); }

// What is asked for: by a name or, if it is one, by a number.
class Wanted {
public:
    explicit Wanted(const std::string& text) : m_text(text), m_tail(WithoutPrefix(std::string_view(text))) {
        int number = 0;
        const char* const end = text.data() + text.size();
        if (const auto read = std::from_chars(text.data(), end, number);
            read.ec == std::errc() && read.ptr == end)
            m_number = number;
    }

    // No empty name is ever meant.
    bool Matches(std::string_view name) const {
        return !name.empty() &&
               (EqualIgnoringAsciiCase(name, m_text) || EqualIgnoringAsciiCase(name, m_tail));
    }
    template <class Named>
    bool Matches(const Named& named) const {
        return m_number == static_cast<int>(named.number) || Matches(std::string_view(named.enumerator)) ||
               Matches(std::string_view(named.ticketName)) ||
               Matches(std::string_view(named.configurationName)) ||
               Matches(std::string_view(named.cpssName));
    }

private:
    std::string_view m_text;
    std::string_view m_tail;
    std::optional<int> m_number;
};

} // namespace

const char* SyntaxName(NativeXmlConfigFeatureEntry::SyntaxEnum syntax) {
    using Entry = NativeXmlConfigFeatureEntry;
    switch (syntax) {
    case Entry::BOOLEAN:
        return "boolean";
    case Entry::OPTION:
        return "option";
    case Entry::STRING:
        return "string";
    case Entry::INTEGER:
        return "integer";
    case Entry::PARENT:
        return "collection";
    }
    return "";
}

NameTranslation::NameTranslation() {
    AddFeatures();
    AddDictionaryValues();
    AddWords();
    std::stable_sort(m_values.begin(), m_values.end(),
                     [](const Value& left, const Value& right) { return left.feature < right.feature; });
    AddNamelessValues();
}

void NameTranslation::AddFeatures() {
    for (const auto* const entry :
         EntriesOf<NativeXmlConfigFeatureEntry>(*NativeXmlConfigFeatureDictionary::Instance()))
        m_features.push_back({entry->feature, Enumerator(entry->featureEnumString),
                              Text(entry->narrowPrintTicketFeatureName), Text(entry->xmlConfigFeatureName),
                              Text(entry->cpssFeatureName), entry});
    const auto& dictionary = *NativeXmlConfigFeatureDictionary::Instance();
    for (const auto& [feature, name] : GetFeatureNames())
        if (!dictionary.IsFeaturePresent(feature))
            m_features.push_back({.number = feature, .enumerator = name});
    std::sort(m_features.begin(), m_features.end(),
              [](const Feature& left, const Feature& right) { return left.number < right.number; });
}

void NameTranslation::AddDictionaryValues() {
    for (const auto* const entry :
         EntriesOf<NativeXmlConfigOptionValueEntry>(*NativeXmlConfigOptionValueDictionary::Instance()))
        m_values.push_back({entry->value,
                            Enumerator(entry->valueEnumString),
                            entry->feature,
                            Text(entry->printTicketOptionName),
                            Text(entry->xmlConfigOptionName),
                            {}});
    for (const auto* const entry : EntriesOf<NativeXmlConfigCpssOptionValueEntry>(
             *NativeXmlConfigCpssOptionValueDictionary::Instance()))
        AddWord(entry->feature, entry->value, &Value::cpssName, Text(entry->cpssOptionName));
}

// Of options that the dictionaries do not have.
void NameTranslation::AddWords() {
    for (const FeatureRule& rule : GetFeatureRules())
        for (const auto& row : rule.words.Rows())
            AddWord(rule.path.Feature(), row.value,
                    rule.HasWordsOfTicket() ? &Value::ticketName : &Value::cpssName, Utf8(row.keyword));
    for (const MediaSizeRecord& record : MediaSizeTable::GetRecords())
        AddWord(FEAT_APPLICATION_MEDIA_SIZE_OPTION, record.value, &Value::ticketName,
                Utf8(WithoutPrefix(record.keyword)));
}

void NameTranslation::AddNamelessValues() {
    std::set<tagValueEnum> named;
    for (const Value& value : m_values)
        named.insert(value.number);
    for (const auto& [value, name] : GetValueNames())
        if (!named.contains(value)) m_values.push_back({.number = value, .enumerator = name});
}

void NameTranslation::AddWord(tagFeatureEnum feature, tagValueEnum value, std::string Value::*world,
                              const std::string& word) {
    for (Value& known : m_values) {
        if (known.feature != feature || known.number != value) continue;
        if ((known.*world).empty()) known.*world = word;
        if (known.*world == word) return;
    }
    const char* const enumerator = FindValueName(value);
    Value added{.number = value, .enumerator = enumerator != nullptr ? enumerator : "", .feature = feature};
    added.*world = word;
    m_values.push_back(std::move(added));
}

std::vector<const Feature*> NameTranslation::FindFeatures(const std::string& text) const {
    const Wanted wanted(text);
    std::vector<const Feature*> found;
    for (const Feature& feature : m_features)
        if (wanted.Matches(feature)) found.push_back(&feature);
    return found;
}

std::vector<const Value*> NameTranslation::FindValues(const std::string& text) const {
    const auto& dictionary = *NativeXmlConfigOptionValueDictionary::Instance();
    const Wanted wanted(text);
    // A name of an older configuration is an entry's, but stands in none.
    const auto isOlderNameOf = [&](const Value& value) {
        if (!value.feature || value.configurationName.empty()) return false;
        const auto* const entry = dictionary.FindEntryByXmlConfigName(*value.feature, text);
        return entry != nullptr && entry->value == value.number;
    };
    std::vector<const Value*> found;
    for (const Value& value : m_values)
        if (wanted.Matches(value) || isOlderNameOf(value)) found.push_back(&value);
    return found;
}

std::vector<std::string> NameTranslation::FindSimilar(const std::string& text, std::size_t count) const {
    std::vector<std::string> found;
    const std::string wanted = LowerAscii(text);
    const auto add = [&](const auto& named) {
        for (const std::string* name :
             {&named.enumerator, &named.ticketName, &named.configurationName, &named.cpssName})
            if (found.size() < count && LowerAscii(*name).find(wanted) != std::string::npos &&
                std::find(found.begin(), found.end(), *name) == found.end())
                found.push_back(*name);
    };
    std::for_each(m_features.begin(), m_features.end(), add);
    std::for_each(m_values.begin(), m_values.end(), add);
    return found;
}

std::vector<const Value*> NameTranslation::ValuesOf(tagFeatureEnum feature) const {
    std::vector<const Value*> values;
    for (const Value& value : m_values)
        if (value.feature == feature) values.push_back(&value);
    return values;
}

std::vector<const Feature*> NameTranslation::MembersOf(tagFeatureEnum collection) const {
    std::vector<const Feature*> members;
    for (const Feature& feature : m_features)
        for (const Feature& parent : CollectionsOf(feature))
            if (parent.number == collection) members.push_back(&feature);
    return members;
}

std::vector<Feature> NameTranslation::CollectionsOf(const Feature& feature) const {
    std::vector<Feature> collections;
    if (!feature.entry) return collections;
    for (const tagFeatureEnum parent : feature.entry->parentFeatures) {
        const Feature* const known = Find(parent);
        collections.push_back(known != nullptr ? *known : Feature{.number = parent});
    }
    return collections;
}

std::string NameTranslation::NameOf(tagFeatureEnum feature) const {
    const Feature* const known = Find(feature);
    return known != nullptr ? known->enumerator : std::to_string(static_cast<int>(feature));
}

const Feature* NameTranslation::Find(tagFeatureEnum feature) const {
    const auto found =
        std::lower_bound(m_features.begin(), m_features.end(), feature,
                         [](const Feature& known, tagFeatureEnum wanted) { return known.number < wanted; });
    return found == m_features.end() || found->number != feature ? nullptr : &*found;
}

} // namespace OvPipeline
