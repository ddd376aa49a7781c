#include "HtmlReport/TimesSection.h"

#include "Common/Text.h"
#include "HtmlReport/HtmlTable.h"

#include <algorithm>
#include <cstdio>

namespace OvPipeline {

namespace {

// Units of the picture.
constexpr int chartWidth = 720;
constexpr int labelWidth = 190;
constexpr int valueWidth = 90;
constexpr int rowHeight = 34;
constexpr int barHeight = 16;
constexpr std::size_t labelBound = 24; // characters

std::string Milliseconds(double seconds) {
    char text[32];
    std::snprintf(text, sizeof text, "%.1f ms", 1000 * seconds);
    return text;
}

void Bar(HtmlText& html, HtmlText::Word style, int top, double share) {
    const int width = std::max(1, static_cast<int>(share * (chartWidth - labelWidth - valueWidth)));
    html.Open("rect", {{"class", std::string(style.View())},
                       {"x", std::to_string(labelWidth)},
                       {"y", std::to_string(top + (rowHeight - barHeight) / 2)},
                       {"width", std::to_string(width)},
                       {"height", std::to_string(barHeight)}})
        .Close();
}

struct Row {
    std::string name;
    double seconds;
    double processorSeconds;
};

std::vector<Row> RowsOf(const RunSummary& run) {
    std::vector<Row> rows;
    for (const RunSummary::FilterTime& time : run.times)
        rows.push_back({time.filter, time.seconds, time.processorSeconds});
    rows.push_back({"the whole job", run.seconds, run.processorSeconds});
    return rows;
}

void WriteChart(HtmlText& html, const std::vector<Row>& rows) {
    double longest = 1e-9;
    for (const Row& row : rows)
        longest = std::max(longest, row.seconds);
    const int height = static_cast<int>(rows.size()) * rowHeight;
    html.Open("svg", {{"class", "chart"},
                      {"role", "img"},
                      {"aria-label", "Times by filter; the table below has the numbers"},
                      {"viewBox", "0 0 " + std::to_string(chartWidth) + " " + std::to_string(height)}});
    int top = 0;
    for (const Row& row : rows) {
        const std::string middle = std::to_string(top + rowHeight / 2 + 5);
        const double share = row.seconds / longest;
        html.Open("text", {{"x", std::to_string(labelWidth - 10)}, {"y", middle}, {"class", "label"}})
            .Text(row.name, labelBound)
            .Close();
        Bar(html, "clock", top, share);
        if (row.processorSeconds > 0)
            Bar(html, "processor", top, std::min(row.processorSeconds / longest, share));
        const int end = labelWidth + static_cast<int>(share * (chartWidth - labelWidth - valueWidth));
        html.Open("text", {{"x", std::to_string(end + 8)}, {"y", middle}})
            .Text(Milliseconds(row.seconds))
            .Close();
        top += rowHeight;
    }
    html.Close();
}

void WriteTable(HtmlText& html, const std::vector<Row>& rows) {
    HtmlTable table(html, "Times by filter", {"filter", "by the clock", "on a processor"});
    for (const Row& row : rows)
        table.Row({row.name,
                   {Milliseconds(row.seconds), "number"},
                   {row.processorSeconds > 0 ? Milliseconds(row.processorSeconds) : "", "number"}});
}

} // namespace

HtmlText TimesSection(const RunSummary& run) {
    HtmlText html;
    if (run.exitCode != 0)
        html.Element("p", "The job did not come to its end: " + run.trouble, {{"class", "trouble"}});
    const std::vector<Row> rows = RowsOf(run);
    html.Open("p", {{"class", "note key"}})
        .Element("span", "by the clock, with waits for others", {{"class", "clock"}})
        .Element("span", "on a processor: the filter's own thread, or all of the job's",
                 {{"class", "processor"}})
        .Close();
    WriteChart(html, rows);
    WriteTable(html, rows);
    if (run.exitCode != 0) return html;
    html.Element("h3", "What was done");
    FactList facts(html);
    facts.Add("Parts", std::to_string(run.partsRead) + " to the first filter" +
                           (run.isPackage ? ", " + std::to_string(run.partsWritten) + " written" : ""));
    facts.Add("Pages", std::to_string(run.pagesRead) + " read" +
                           (run.isPackage ? ", " + std::to_string(run.pagesWritten) + " written" : ""));
    if (!run.leftOut.IsEmpty()) facts.Add("Left out", run.leftOut.Text());
    facts.Add("Merges of tickets", Counted(run.merges, "merge") + " made, " +
                                       std::to_string(run.SavedMerges()) + " saved by the cache");
    facts.Add("Conflicts", std::to_string(run.conflictsResolved) + " resolved by validation");
    facts.Add("Bytes", ByteCount(run.bytesIn) + " in, " + ByteCount(run.bytesOut) + " out");
    for (const std::string& warning : run.warnings)
        facts.Add("Warning", warning);
    return html;
}

} // namespace OvPipeline
