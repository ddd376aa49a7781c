#include "HtmlReport/HtmlTable.h"

namespace OvPipeline {

namespace {

constexpr std::size_t cellBound = 240; // characters: what can still be read in a cell

} // namespace

HtmlTable::HtmlTable(HtmlText& html, const std::string& label, std::initializer_list<HtmlText::Word> heads)
    : m_html(html) {
    m_html.Open("div", {{"class", "table"}}).Open("table", {{"aria-label", label}}).Open("thead").Open("tr");
    for (const HtmlText::Word head : heads)
        m_html.Element("th", head.View(), {{"scope", "col"}});
    m_html.Close().Close().Open("tbody");
}

HtmlTable::~HtmlTable() { m_html.Close().Close().Close(); }

void HtmlTable::Row(std::initializer_list<Cell> cells) {
    m_html.Open("tr");
    bool isFirst = true;
    for (const Cell& cell : cells) {
        if (isFirst && cell.style.View().empty())
            m_html.Open("th", {{"scope", "row"}});
        else if (isFirst)
            m_html.Open("th", {{"scope", "row"}, {"class", std::string(cell.style.View())}});
        else if (cell.style.View().empty())
            m_html.Open("td");
        else
            m_html.Open("td", {{"class", std::string(cell.style.View())}});
        m_html.Text(cell.text, cellBound).Close();
        isFirst = false;
    }
    m_html.Close();
}

FactList::FactList(HtmlText& html) : m_html(html) { m_html.Open("dl"); }

FactList::~FactList() { m_html.Close(); }

void FactList::Add(HtmlText::Word name, const std::string& value) {
    if (value.empty()) return;
    m_html.Open("div").Element("dt", name.View()).Open("dd").Text(value, 4 * cellBound).Close().Close();
}

} // namespace OvPipeline
