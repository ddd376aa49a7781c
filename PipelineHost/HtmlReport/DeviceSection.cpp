#include "HtmlReport/DeviceSection.h"

#include "Common/SecretSettings.h"
#include "HtmlReport/HtmlTable.h"

#include <algorithm>

namespace OvPipeline {

namespace {

constexpr std::size_t lineBound = 1000; // characters
constexpr std::size_t mostLines = 2000; // of a piece: a product may bring lines by the thousand

using Causes = std::vector<FamilyHeader::Cause>;

// A line that a secret is behind, without what is said.
std::string WithoutValue(const std::string& line) {
    return line.substr(0, line.find_first_of("=\"") + 1) + hiddenValue;
}

void WritePiece(HtmlText& html, const std::string& piece, const Causes& causes) {
    const bool isSecret =
        std::ranges::any_of(causes, [](const FamilyHeader::Cause& cause) { return cause.answer.isSecret; });
    html.Open("pre");
    std::size_t count = 0;
    for (const std::string& line : PieceLines(piece)) {
        if (++count > mostLines) {
            html.Element("span", "more lines are left out", {{"class", "quiet"}});
            break;
        }
        html.Text(isSecret ? WithoutValue(line) : line, lineBound).Markup("\n");
    }
    html.Close();
}

void WriteCauses(HtmlText& html, const Causes& causes) {
    if (causes.empty()) {
        html.Element("p", "the family, where nothing else is asked for", {{"class", "quiet"}});
        return;
    }
    html.Open("ul");
    for (const FamilyHeader::Cause& cause : causes) {
        html.Open("li").Element("b", cause.name);
        if (const std::string value = cause.answer.Text(); !value.empty())
            html.Text(" = ").Text(value, lineBound);
        if (const std::string source = cause.answer.SourceName(); !source.empty())
            html.Text(" ").Element("span", source, {{"class", "quiet"}});
        html.Close();
    }
    html.Close();
}

} // namespace

HtmlText DeviceSection(const FamilyHeader& header) {
    HtmlText html;
    html.Open("p", {{"class", "note"}})
        .Text("What a device of the family ")
        .Element("b", header.Family().name)
        .Text(" gets around the pages, and what is behind each line.")
        .Close();
    for (std::size_t section = 0; section < HeaderText::sectionCount; ++section) {
        const HeaderText::Pieces& pieces = header.Text().sections[section];
        if (pieces.empty()) continue;
        const std::string title = HeaderText::Title(header.Family(), section);
        html.Element("h3", title).Open("div", {{"class", "table"}});
        html.Open("table", {{"class", "pieces"}, {"aria-label", title}}).Open("thead").Open("tr");
        html.Element("th", "line", {{"scope", "col"}}).Element("th", "because of", {{"scope", "col"}});
        html.Close().Close().Open("tbody");
        for (std::size_t piece = 0; piece < pieces.size(); ++piece) {
            html.Open("tr").Open("td");
            const Causes& causes = header.Causes(section, piece);
            WritePiece(html, pieces[piece], causes);
            html.Close().Open("td");
            WriteCauses(html, causes);
            html.Close().Close();
        }
        html.Close().Close().Close();
    }
    return html;
}

} // namespace OvPipeline
