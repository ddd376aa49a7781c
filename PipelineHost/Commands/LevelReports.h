#pragma once

#include "Commands/JobLevel.h"
#include "Report/JsonText.h"
#include "Report/ShownOutput.h"

namespace OvPipeline {

/// The reports of one command: of the one level that --document and --page choose, or of each page that
/// --pages names, under its number.
class LevelReports {
public:
    LevelReports(const CommandOptions& options, ShownOutput& out) : m_options(options), m_out(out) {}

    /// Calls make(parts, page) for each level, in the job's order, and writes what it makes: something that
    /// has AsTable(width) and AsJson(). page: from 1; 0 where --pages does not name it. Throws what OpenLevel
    /// throws, and what make throws.
    template <class Make>
    void Write(Make&& make) {
        if (m_options.pages.AreAll()) {
            const auto report = make(OpenLevel(m_options), std::uint64_t{0});
            return m_options.json ? m_out.Json(report.AsJson()) : m_out.Text(report.AsTable(m_out.Width()));
        }
        JsonText json;
        json.BeginObject().Key("pages").BeginArray();
        bool isFirst = true;
        ForEachPage(m_options, [&](std::uint64_t page, const LevelParts& parts) {
            const auto report = make(parts, page);
            if (m_options.json) {
                json.BeginObject().Key("page").Number(static_cast<long long>(page)).Key("report");
                json.Whole(report.AsJson().Result()).EndObject();
            } else {
                m_out.Text((isFirst ? "page " : "\npage ") + std::to_string(page) + "\n" +
                           report.AsTable(m_out.Width()));
            }
            isFirst = false;
        });
        if (m_options.json) m_out.Json(json.EndArray().EndObject());
    }

private:
    const CommandOptions& m_options;
    ShownOutput& m_out;
};

} // namespace OvPipeline
