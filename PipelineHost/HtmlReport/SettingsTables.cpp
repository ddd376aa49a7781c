#include "HtmlReport/SettingsTables.h"

#include "Commands/ShownAnswer.h"
#include "Common/Text.h"
#include "HtmlReport/HtmlTable.h"

#include <algorithm>

namespace OvPipeline {

namespace {

// How a value's origin is set off from the others.
HtmlText::Word StyleOf(const std::string& origin) {
    if (origin == "default") return "quiet";
    if (origin == "policy" || origin == "changed by validation") return "changed";
    return "own";
}

// A nested feature stands below the one that it belongs to.
HtmlTable::Cell NameCell(const std::string& setting) {
    const std::size_t slash = setting.rfind('/');
    return slash == std::string::npos ? HtmlTable::Cell(setting)
                                      : HtmlTable::Cell(setting.substr(slash + 1), "nested");
}

HtmlTable::Cell ValueCell(const std::string& value) {
    return value.empty() ? HtmlTable::Cell("left out", "quiet") : HtmlTable::Cell(value);
}

std::string CountOf(const std::vector<TicketExplanation::Row>& rows) {
    std::size_t own = 0;
    std::size_t changed = 0;
    for (const auto& row : rows) {
        const std::string_view style = StyleOf(row.origin).View();
        if (style == "own") ++own;
        if (style == "changed") ++changed;
    }
    return Counted(rows.size(), "setting") + ", " + std::to_string(own) + " from the job's tickets, " +
           std::to_string(changed) + " changed by validation or policy";
}

} // namespace

HtmlText SettingsTables(const std::vector<TicketExplanation::Row>& rows,
                        const std::vector<SettingsReport::Setting>& heard) {
    HtmlText html;
    html.Element("p", CountOf(rows), {{"class", "note"}});
    {
        HtmlTable table(html, "Settings and where they came from", {"setting", "value", "from", "remark"});
        for (const auto& row : rows)
            table.Row({NameCell(row.setting),
                       ValueCell(row.value),
                       {row.origin, StyleOf(row.origin)},
                       {row.remark, row.remark.empty() ? HtmlText::Word("") : HtmlText::Word("remark")}});
    }
    html.Element("h4", "What a filter hears");
    HtmlTable table(html, "What a filter hears", {"setting", "value", "unit", "from"});
    for (const SettingsReport::Setting& setting : heard)
        table.Row({setting.name, setting.value, setting.unit, setting.origin});
    return html;
}

HtmlText FeaturesTable(const FeatureReport& report) {
    HtmlText html;
    std::size_t others = 0;
    {
        HtmlTable table(html, "Features",
                        {"feature", "supported", "required", "value", "from", "in tickets"});
        for (const FeatureReport::Feature& feature : report.Features()) {
            if (!feature.isSupported && !feature.isRequired && !feature.answer.isSpecified) {
                ++others;
                continue;
            }
            table.Row({feature.enumerator, YesOrNo(feature.isSupported), YesOrNo(feature.isRequired),
                       feature.answer.Text(), feature.answer.SourceName(), feature.ticketName});
        }
        for (const auto& [name, answer] : report.EffectiveValues())
            table.Row({std::string("effective ") + name, "", "", answer.Text(), answer.SourceName(), ""});
    }
    html.Element(
        "p", Counted(others, "more feature") + " that the device does not have and the job does not ask for",
        {{"class", "note"}});
    return html;
}

HtmlText PolicyTable(const PolicyReport& report) {
    HtmlText html;
    if (const std::string fault = report.FaultLine(); !fault.empty())
        html.Element("p", fault, {{"class", "trouble"}});
    if (report.Rows().empty()) return html;
    HtmlTable table(html, "The administrator's configuration",
                    {"in the configuration", "value", "behaviour", "does"});
    for (const PolicyReport::Row& row : report.Rows())
        table.Row({row.name, row.value, row.behavior, row.words});
    return html;
}

} // namespace OvPipeline
