#include "Comparison/TicketComparison.h"

#include "Common/SecretSettings.h"

#include <PrintTicket/FrameworkCheck.h>
#include <PrintTicket/ParameterRules.h>
#include <PrintTicket/SchemaReader.h>
#include <PrintTicket/SettingText.h>

#include <algorithm>
#include <unordered_map>
#include <unordered_set>
#include <utility>

using namespace OvPlatform;

namespace OvPipeline {

namespace {

// The number without what may be written or not: a sign, zeros before and behind.
std::string PlainNumber(std::string_view text) {
    text = text.substr((std::min)(text.find_first_not_of(" \t\r\n"), text.size()));
    text = text.substr(0, text.find_last_not_of(" \t\r\n") + 1);
    const bool isNegative = text.starts_with('-');
    if (isNegative || text.starts_with('+')) text.remove_prefix(1);
    text.remove_prefix((std::min)(text.find_first_not_of('0'), text.size()));
    if (text.find('.') != std::string_view::npos) {
        text = text.substr(0, text.find_last_not_of('0') + 1);
        if (text.ends_with('.')) text.remove_suffix(1);
    }
    if (text.empty()) return "0";
    return (isNegative ? "-" : "") + std::string(text.starts_with('.') ? "0" : "") + std::string(text);
}

// What counts of a value. Applications leave the type of a number out, or call it a string.
std::string Meaning(const SchemaValue& value) {
    if (value.IsQName()) return "{" + std::string(value.space.Text()) + "}" + value.text;
    const bool isString = value.type.Is(SchemaSpace::Types, SchemaType::String);
    return !isString && NumberOf(value.text, false) ? PlainNumber(value.text) : value.text;
}

std::string Meaning(const KeywordName& name) {
    return "{" + std::string(name.space.Text()) + "}" + name.local;
}

// A ticket's settings one by one.
class SettingList {
public:
    struct Setting {
        std::string key;
        std::string option; // the key of the option that it belongs to; empty for one of none
        std::string meaning;
        std::string what;  // for people
        std::string value; // as above
    };

    SettingList(const SchemaDocument& ticket, const NamespacePrefixes& prefixes) : m_prefixes(prefixes) {
        const Place root;
        for (const SchemaFeature& feature : ticket.features)
            AddFeature(root, feature);
        for (const SchemaParameter& parameter : ticket.parameters)
            Add({"parameter " + Meaning(parameter.name),
                 {},
                 Meaning(parameter.value),
                 NameOf(parameter.name),
                 IsSecretSetting(parameter.name.local) ? hiddenValue : ValueOf(parameter.value)});
        AddProperties(root, "property", ticket.properties);
    }

    const std::vector<Setting>& All() const { return m_settings; }
    const Setting* Find(const std::string& key) const {
        const auto found = m_byKey.find(key);
        return found == m_byKey.end() ? nullptr : &m_settings[found->second];
    }
    bool HasOption(const std::string& key) const { return m_options.contains(key); }

private:
    struct Place {
        std::string key; // separated by what no XML holds
        std::string option;
        std::string what;

        Place Into(const std::string& inKey, const std::string& inWhat) const {
            return {key + inKey + '\1', option, what.empty() ? inWhat : what + " / " + inWhat};
        }
    };

    std::string NameOf(const KeywordName& name) const {
        return name.Empty() ? "(unnamed)" : m_prefixes.Qualified(name);
    }
    std::string ValueOf(const SchemaValue& value) const {
        return value.IsQName() ? m_prefixes.Qualified(value.space, value.text) : value.text;
    }

    bool Add(Setting setting) {
        if (!m_byKey.emplace(setting.key, m_settings.size()).second) return false;
        m_settings.push_back(std::move(setting));
        return true;
    }

    // What an option is, its own properties included.
    std::string Described(const SchemaOption& option) const {
        if (option.name.Empty()) return TextOf(option, m_prefixes);
        std::string text;
        for (const SchemaProperty& scored : option.scored)
            text += (text.empty() ? " (" : ", ") + NameOf(scored.name) + "=" +
                    (scored.value ? ValueOf(*scored.value) : NameOf(scored.parameter));
        return NameOf(option.name) + (text.empty() ? "" : text + ")");
    }

    void AddFeature(const Place& outer, const SchemaFeature& feature) {
        const Place place = outer.Into("feature " + Meaning(feature.name), NameOf(feature.name));
        std::vector<std::string> meanings;
        std::vector<std::string> names;
        for (const SchemaOption& option : feature.options) {
            meanings.push_back(OptionKey(option));
            names.push_back(Described(option));
        }
        if (!Add({place.key, outer.option, Joined(std::move(meanings)), place.what, Joined(names)})) return;
        for (const SchemaOption& option : feature.options)
            AddOption(place, option);
        AddProperties(place, "property", feature.properties);
        for (const SchemaFeature& nested : feature.features)
            AddFeature(place, nested);
    }

    // The order of several options means nothing.
    static std::string Joined(std::vector<std::string> texts) {
        std::ranges::sort(texts);
        texts.erase(std::unique(texts.begin(), texts.end()), texts.end());
        std::string joined;
        for (const std::string& text : texts)
            joined += (joined.empty() ? "" : ", ") + text;
        return joined.empty() ? "(no option)" : joined;
    }

    static std::string OptionKey(const SchemaOption& option) {
        if (!option.name.Empty()) return Meaning(option.name);
        std::vector<std::string> scored;
        for (const SchemaProperty& property : option.scored)
            scored.push_back(Meaning(property.name) + "=" +
                             (property.value ? Meaning(*property.value) : Meaning(property.parameter)));
        return "(" + Joined(std::move(scored)) + ")";
    }

    void AddOption(const Place& feature, const SchemaOption& option) {
        const std::string key = OptionKey(option);
        Place place = feature.Into("option " + key, Described(SchemaOption{option.name, {}, {}, {}}));
        place.option = place.key;
        if (!m_options.insert(place.key).second) return;
        AddProperties(place, "scored", option.scored);
        AddProperties(place, "property", option.properties);
    }

    void AddProperties(const Place& outer, const std::string& kind,
                       const std::vector<SchemaProperty>& properties) {
        for (const SchemaProperty& property : properties) {
            const Place place = outer.Into(kind + " " + Meaning(property.name), NameOf(property.name));
            const bool isParameter = !property.parameter.Empty();
            const std::string meaning = isParameter      ? "parameter " + Meaning(property.parameter)
                                        : property.value ? Meaning(*property.value)
                                                         : "";
            const std::string value = isParameter      ? NameOf(property.parameter)
                                      : property.value ? ValueOf(*property.value)
                                                       : "";
            if (!Add({place.key, place.option, meaning, place.what, value})) continue;
            AddProperties(place, "scored", property.scored);
            AddProperties(place, "property", property.properties);
        }
    }

    const NamespacePrefixes& m_prefixes;
    std::vector<Setting> m_settings;
    std::unordered_map<std::string, std::size_t> m_byKey;
    std::unordered_set<std::string> m_options;
};

} // namespace

ComparedTicket ComparedTicket::Read(std::string_view bytes) {
    const XmlDocument document = ParseSchemaXml(bytes);
    FrameworkCheck::Check(document.get(), FrameworkCheck::Kind::Ticket);
    return {ReadSchemaDocument(document.get()), DeclaredNamespaces(document.get())};
}

void CompareTickets(const ComparedTicket& a, const ComparedTicket& b, DifferenceReport& report) {
    NamespacePrefixes::Declarations declarations{
        {"psf", SchemaSpace::Framework}, {"psk", SchemaSpace::Keywords}, {"psk11", SchemaSpace::KeywordsV11}};
    declarations.insert(declarations.end(), a.declarations.begin(), a.declarations.end());
    declarations.insert(declarations.end(), b.declarations.begin(), b.declarations.end());
    const NamespacePrefixes prefixes(declarations, {});
    const SettingList left(a.settings, prefixes);
    const SettingList right(b.settings, prefixes);
    // What an option that the other has not got brings along is told with the option.
    const auto isTold = [](const SettingList::Setting& setting, const SettingList& other) {
        return !setting.option.empty() && !other.HasOption(setting.option);
    };
    for (const SettingList::Setting& setting : left.All()) {
        const SettingList::Setting* const same = right.Find(setting.key);
        if (same != nullptr && same->meaning != setting.meaning)
            report.Changed(setting.what, setting.value, same->value);
        else if (same == nullptr && !isTold(setting, right))
            report.OnlyInA(setting.what, setting.value);
    }
    for (const SettingList::Setting& setting : right.All())
        if (left.Find(setting.key) == nullptr && !isTold(setting, left))
            report.OnlyInB(setting.what, setting.value);
}

} // namespace OvPipeline
