#include "Commands/CapabilitiesText.h"

#include "Common/Text.h"
#include "Report/TextTable.h"

#include <Locale/ShownText.h>
#include <PrintTicket/SettingText.h>

#include <cstdio>

using namespace OvPlatform;

namespace OvPipeline {

namespace {

constexpr std::size_t longestLine = 1000;  // characters
constexpr std::size_t longestDefault = 60; // characters of a parameter's value

// How a need reads in a sentence.
std::string NeedWords(std::string_view need) {
    if (need == "always") return "in every ticket";
    return need == "withOption" ? "with the options that refer to it" : "optional";
}

std::string Rounded(double number, int digits) {
    char text[64];
    std::snprintf(text, sizeof text, "%.*f", digits, number);
    std::string rounded = text;
    rounded.erase(rounded.find_last_not_of('0') + 1);
    if (rounded.ends_with('.')) rounded.pop_back();
    return rounded == "-0" ? "0" : rounded;
}

std::string Millimetres(double microns) { return Rounded(microns / 1000, 1); }
std::string Inches(double microns) { return Rounded(microns / 25400, 2); }

// Displayed names, which may hold commas.
std::string Quoted(const std::vector<std::string>& texts) {
    std::string joined;
    for (const std::string& text : texts)
        joined += (joined.empty() ? "\"" : ", \"") + text + "\"";
    return joined;
}

// A line that is no table's.
std::string Line(const std::string& indent, const std::string& text) {
    return indent + Shown(text, longestLine) + "\n";
}

std::string DetailsOf(const OfferedSettings::Option& option) {
    std::string text;
    if (option.size)
        text = Millimetres(static_cast<double>(option.size->width)) + " x " +
               Millimetres(static_cast<double>(option.size->height)) + " mm (" +
               Inches(static_cast<double>(option.size->width)) + " x " +
               Inches(static_cast<double>(option.size->height)) + " in)";
    for (const OfferedSettings::Setting& setting : option.scored) {
        const std::string local = LocalNameOf(setting.name);
        if (option.size &&
            (local == SchemaKeyword::MediaSizeWidth || local == SchemaKeyword::MediaSizeHeight))
            continue;
        text += (text.empty() ? "" : ", ") + local + (setting.isParameter ? " by " : " ") + setting.value;
    }
    return text;
}

std::string FeatureText(const OfferedSettings::Feature& feature, std::size_t width,
                        const std::string& indent) {
    const std::string kind = std::string("(") + feature.level + ", " +
                             (feature.isPickMany ? "any of " : "one of ") +
                             std::to_string(feature.options.size()) + ")";
    std::string text = Line(indent, (feature.displayName.empty() ? "" : feature.displayName + "  ") +
                                        feature.name + "  " + kind);
    std::vector<std::vector<std::string>> lines;
    for (const OfferedSettings::Option& option : feature.options) {
        const std::string name = option.name.empty() ? "-" : option.name;
        lines.push_back({option.isDefault ? "*" : " ", Titled(option.displayName, name),
                         option.displayName.empty() ? "" : name, DetailsOf(option),
                         option.constrained.empty() ? "" : "not available: " + option.constrained});
    }
    text += AlignedTable(std::move(lines), width, indent + "  ");
    for (const OfferedSettings::Demand& demand : feature.demands)
        text += Line(indent + "  ", "policy (" + demand.behavior + "): " + demand.words);
    for (const OfferedSettings::Feature& nested : feature.features)
        text += FeatureText(nested, width, indent + "    ");
    return text;
}

std::string ParametersText(const std::vector<OfferedSettings::Parameter>& parameters, std::size_t width) {
    std::vector<std::vector<std::string>> lines;
    for (const OfferedSettings::Parameter& parameter : parameters) {
        std::string range;
        if (!parameter.minimum.empty() || !parameter.maximum.empty())
            range = (parameter.minimum.empty() ? "up" : parameter.minimum) + " to " +
                    (parameter.maximum.empty() ? "any" : parameter.maximum);
        else if (!parameter.minLength.empty() || !parameter.maxLength.empty())
            range = (parameter.minLength.empty() ? "0" : parameter.minLength) + " to " +
                    (parameter.maxLength.empty() ? "any number of" : parameter.maxLength);
        if (!parameter.unit.empty()) range += (range.empty() ? "" : " ") + parameter.unit;
        if (const auto low = NumberOf(parameter.minimum, false), high = NumberOf(parameter.maximum, false);
            parameter.unit == "microns" && low && high)
            range += " (" + Millimetres(*low) + " to " + Millimetres(*high) + " mm)";
        if (!parameter.multiple.empty() && parameter.multiple != "1")
            range += ", in steps of " + parameter.multiple;
        const std::string need = std::string(parameter.level) + ", " + NeedWords(parameter.need);
        lines.push_back({Titled(parameter.displayName, parameter.name),
                         parameter.displayName.empty() ? "" : parameter.name,
                         parameter.type.empty() ? "-" : parameter.type, range, need,
                         parameter.fallback.empty()
                             ? "no default"
                             : "default " + Shown(parameter.fallback, longestDefault)});
    }
    return lines.empty() ? std::string() : "\nparameters\n" + AlignedTable(std::move(lines), width, "  ");
}

std::string RulesText(const std::vector<OfferedSettings::Rule>& rules) {
    std::string text = rules.empty() ? "" : "\ngo not together\n";
    for (const OfferedSettings::Rule& rule : rules) {
        std::string sentence;
        for (const OfferedSettings::Choice& choice : rule.choices)
            sentence += (sentence.empty() ? "" : " not with ") + choice.displayName + " " +
                        Quoted(choice.displayNames);
        text += Line("  ", sentence);
        text += Line("    ", "of choices made alike, " + rule.givesWay + " gives way");
    }
    return text;
}

} // namespace

std::string CapabilitiesText(const OfferedSettings& offered, std::size_t width) {
    std::string text;
    if (!offered.isPart)
        text = Line({}, offered.printer + ": " + Counted(offered.features.size(), "feature") + ", " +
                            Counted(offered.parameters.size(), "parameter") + ", " +
                            Counted(offered.rules.size(), "rule") + " on what goes not together") +
               "* stands before what the queue's default ticket has\n";
    for (const OfferedSettings::Feature& feature : offered.features)
        text += (text.empty() ? "" : "\n") + FeatureText(feature, width, {});
    text += ParametersText(offered.parameters, width);
    text += RulesText(offered.rules);
    std::vector<std::vector<std::string>> lines;
    for (const OfferedSettings::Setting& property : offered.properties)
        lines.push_back({property.name, property.value});
    if (!lines.empty()) text += "\nother properties\n" + AlignedTable(std::move(lines), width, "  ");
    return text.starts_with('\n') ? text.substr(1) : text;
}

} // namespace OvPipeline
