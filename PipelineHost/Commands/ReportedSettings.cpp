#include "Commands/ReportedSettings.h"

namespace OvPipeline {

std::string LocalPath(std::string_view setting) {
    std::string path;
    while (!setting.empty()) {
        const std::size_t slash = setting.find('/');
        std::string_view step = setting.substr(0, slash);
        setting.remove_prefix(slash == std::string_view::npos ? setting.size() : slash + 1);
        step.remove_prefix(step.find(':') + 1);
        path += (path.empty() ? "" : "/") + std::string(step);
    }
    return path;
}

ReportedSettings::ReportedSettings(OvPlatform::MergeReport report) : m_report(std::move(report)) {
    for (const OvPlatform::SettingReport& setting : m_report.settings) {
        m_byName.emplace(setting.name, &setting);
        std::string path = LocalPath(setting.name);
        if (setting.origin == OvPlatform::SettingOrigin::Delta) m_asked.insert(path);
        m_byLocalPath.emplace(std::move(path), &setting);
    }
}

const OvPlatform::SettingReport* ReportedSettings::Find(const std::string& setting) const {
    if (const auto exact = m_byName.find(setting); exact != m_byName.end()) return exact->second;
    const auto other = m_byLocalPath.find(LocalPath(setting));
    return other == m_byLocalPath.end() ? nullptr : other->second;
}

} // namespace OvPipeline
