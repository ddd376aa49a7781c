#pragma once

#include <PrintTicket/MergeReport.h>

#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace OvPipeline {

/// "a:B/c:D" without the prefixes: those of private namespaces may differ from level to level.
std::string LocalPath(std::string_view setting);

/// What a merge told of its settings, to be asked for by name as often as there are settings.
class ReportedSettings {
public:
    explicit ReportedSettings(OvPlatform::MergeReport report);
    ReportedSettings(const ReportedSettings&) = delete;
    ReportedSettings& operator=(const ReportedSettings&) = delete;

    const std::vector<OvPlatform::SettingReport>& Settings() const { return m_report.settings; }
    /// The first of that name, else the first whose name without the prefixes is the same; null without one.
    const OvPlatform::SettingReport* Find(const std::string& setting) const;
    /// Whether the ticket that was laid over the others names the setting, told without its prefixes.
    bool IsAskedFor(const std::string& localPath) const { return m_asked.contains(localPath); }

private:
    using ByName = std::unordered_map<std::string, const OvPlatform::SettingReport*>;

    OvPlatform::MergeReport m_report;
    ByName m_byName;
    ByName m_byLocalPath;
    std::unordered_set<std::string> m_asked;
};

} // namespace OvPipeline
