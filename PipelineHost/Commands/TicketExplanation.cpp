#include "Commands/TicketExplanation.h"

#include <algorithm>
#include <array>

namespace OvPipeline {

namespace {

constexpr const char* DefaultLevel = "default";
constexpr const char* ByValidation = "changed by validation";

// "a:B/c:D" without the prefixes: those of private namespaces may differ from level to level.
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

const OvPlatform::SettingReport* Find(const OvPlatform::MergeReport& report, const std::string& setting) {
    if (const auto* exact = report.Find(setting)) return exact;
    const std::string path = LocalPath(setting);
    for (const auto& other : report.settings)
        if (LocalPath(other.name) == path) return &other;
    return nullptr;
}

// A text for one line of a table: the whole of a snapshot of the driver's settings would fill the screen.
std::string Shortened(const std::string& text) {
    constexpr std::size_t Longest = 60;
    constexpr std::size_t Kept = 32;
    std::string line = text.substr(0, text.size() > Longest ? Kept : text.size());
    while (!line.empty() && line.size() < text.size() && (text[line.size()] & 0xC0) == 0x80)
        line.pop_back(); // not within a character
    if (line.size() < text.size()) line += "... (" + std::to_string(text.size()) + " bytes)";
    std::replace_if(
        line.begin(), line.end(), [](char c) { return static_cast<unsigned char>(c) < ' '; }, ' ');
    return line;
}

// A nested feature stands indented below the one that it belongs to.
std::string Indented(const std::string& setting) {
    const auto depth = static_cast<std::size_t>(std::count(setting.begin(), setting.end(), '/'));
    return depth == 0 ? setting : std::string(2 * depth, ' ') + setting.substr(setting.rfind('/') + 1);
}

std::string Remark(const OvPlatform::SettingReport& setting) {
    if (setting.reason.empty()) return {};
    return setting.requested.empty() ? setting.reason
                                     : Shortened(setting.requested) + " was asked for: " + setting.reason;
}

} // namespace

TicketExplanation::TicketExplanation(std::shared_ptr<const OvPlatform::QueueFolder> queue)
    : m_queue(std::move(queue)), m_merge(m_queue), m_ticket(m_queue->DefaultTicket()) {
    // The default ticket laid over nothing: tells its settings.
    Level level{DefaultLevel, {}};
    m_merge.Merge(m_ticket, nullptr, kPTJobScope, &level.report);
    m_levels.push_back(std::move(level));
}

void TicketExplanation::Add(const std::string& level, EPrintTicketScope scope, const std::string* ticket) {
    if (!ticket) return; // the level above holds
    Level next{level, {}};
    const std::string_view delta = *ticket;
    m_ticket = m_merge.Merge(m_ticket, &delta, scope, &next.report).ticket;
    m_levels.push_back(std::move(next));
    // A passcode is the job's own: one of the queue's default does not pass to a job that brings a ticket
    // without.
    if (scope == kPTJobScope) m_hasDroppedPasscode = ticket->find("JobPasscode") == std::string::npos;
}

std::string TicketExplanation::OriginOf(const std::string& setting) const {
    for (std::size_t at = m_levels.size(); at-- > 0;) {
        const OvPlatform::SettingReport* report = Find(m_levels[at].report, setting);
        if (!report) break;
        if (!report->reason.empty()) return ByValidation;
        if (report->origin == OvPlatform::SettingOrigin::Delta) return m_levels[at].name;
        if (report->origin == OvPlatform::SettingOrigin::Queue) break;
    }
    return DefaultLevel;
}

std::vector<TicketExplanation::Row> TicketExplanation::Rows() const {
    std::vector<Row> rows;
    for (const auto& setting : m_levels.back().report.settings) {
        if (m_hasDroppedPasscode && LocalPath(setting.name) == "JobPasscode") continue;
        std::string remark = Remark(setting);
        // What a level above changed, this level only took over.
        for (auto level = m_levels.rbegin() + 1; remark.empty() && level != m_levels.rend(); ++level) {
            const auto* above = Find(level->report, setting.name);
            if (!above || OriginOf(setting.name) != ByValidation) break;
            remark = Remark(*above);
        }
        rows.push_back({setting.name, setting.value, OriginOf(setting.name), std::move(remark)});
    }
    return rows;
}

std::string FormatExplanation(const std::vector<TicketExplanation::Row>& rows) {
    constexpr std::size_t MaxColumn = 48;
    std::array<std::size_t, 3> widths{7, 5, 6};
    for (const auto& row : rows) {
        widths[0] = std::min(std::max(widths[0], Indented(row.setting).size()), MaxColumn);
        widths[1] = std::min(std::max(widths[1], Shortened(row.value).size()), MaxColumn);
        widths[2] = std::max(widths[2], row.origin.size());
    }
    std::string text;
    const auto cell = [&](const std::string& value, std::size_t width) {
        text += value;
        text.append(value.size() < width ? width - value.size() + 2 : 2, ' ');
    };
    const auto line = [&](const std::string& setting, const std::string& value, const std::string& origin,
                          const std::string& remark) {
        cell(setting, widths[0]);
        cell(value, widths[1]);
        if (remark.empty())
            text += origin;
        else
            cell(origin, widths[2]), text += remark;
        text += '\n';
    };
    line("setting", "value", "from", {});
    for (const auto& row : rows)
        line(Indented(row.setting), row.value.empty() ? "(left out)" : Shortened(row.value), row.origin,
             row.remark);
    return text;
}

} // namespace OvPipeline
