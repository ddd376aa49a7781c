#include "HtmlReport/SharedTables.h"

namespace OvPipeline {

std::size_t SharedTables::Add(const std::string& title, const HtmlText& table) {
    const auto [place, isNew] = m_known.emplace(title + '\n' + table.Result(), m_tables.size());
    if (isNew) m_tables.push_back({title, table, {}});
    return place->second;
}

void SharedTables::Use(std::size_t table, std::size_t level) { m_tables[table].levels.push_back(level); }

void SharedTables::Write(HtmlText& html, const JobOutline& job, const std::string& prefix) const {
    for (std::size_t number = 0; number < m_tables.size(); ++number)
        html.Open("article", {{"id", prefix + "-" + std::to_string(number)}})
            .Element("h3", m_tables[number].title + " " + job.Names(m_tables[number].levels))
            .Add(m_tables[number].html)
            .Close();
}

} // namespace OvPipeline
