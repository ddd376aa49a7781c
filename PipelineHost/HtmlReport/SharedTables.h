#pragma once

#include "HtmlReport/HtmlText.h"
#include "HtmlReport/JobOutline.h"

#include <string>
#include <unordered_map>
#include <vector>

namespace OvPipeline {

/// Tables that levels of a job share: what is the same for many stands in the report once, with the names of
/// all that it holds for.
class SharedTables {
public:
    /// The number of that table, from 0. title: what stands before the names of what it holds for.
    std::size_t Add(const std::string& title, const HtmlText& table);
    /// The table holds for a level of the job, by its place; ascending.
    void Use(std::size_t table, std::size_t level);

    std::size_t Count() const { return m_tables.size(); }
    /// An article for each, called "settings-0" by the prefix.
    void Write(HtmlText& html, const JobOutline& job, const std::string& prefix) const;

private:
    struct Table {
        std::string title;
        HtmlText html;
        std::vector<std::size_t> levels;
    };
    std::vector<Table> m_tables;
    std::unordered_map<std::string, std::size_t> m_known;
};

} // namespace OvPipeline
