#include "Commands/TicketExplanation.h"

#include "Commands/QueueConfiguration.h"
#include "Common/SecretSettings.h"
#include "Common/Text.h"
#include "Report/TextTable.h"

#include <Locale/ShownText.h>
#include <PrintSchema/PrintTicketXmlDocument.h>

#include <algorithm>

namespace OvPipeline {

namespace {

constexpr const char* defaultLevel = "default";
constexpr const char* byPolicy = "policy";
constexpr const char* byValidation = "changed by validation";
constexpr const char* jobPasscode = "JobPasscode"; // a feature, without its prefix

// The whole of a snapshot of the driver's settings would fill the screen.
std::string Shortened(const std::string& text) { return OvPlatform::Shown(text, 48); }

// A nested feature stands indented below the one that it belongs to.
std::string Indented(const std::string& setting) {
    const auto depth = static_cast<std::size_t>(std::count(setting.begin(), setting.end(), '/'));
    return depth == 0 ? setting : std::string(2 * depth, ' ') + setting.substr(setting.rfind('/') + 1);
}

std::string Remark(const OvPlatform::SettingReport& setting) {
    if (setting.reason.empty()) return {};
    if (setting.requested.empty()) return setting.reason;
    return (IsSecretSetting(setting.name) ? hiddenValue : Shortened(setting.requested)) +
           " was asked for: " + setting.reason;
}

} // namespace

TicketExplanation::TicketExplanation(std::shared_ptr<const OvPlatform::QueueFolder> queue)
    : m_queue(std::move(queue)), m_merge(m_queue), m_ticket(m_queue->DefaultTicket()),
      m_configuration(ReadConfiguration(*m_queue)) {
    // The default ticket laid over nothing: tells its settings.
    OvPlatform::MergeReport report;
    m_merge.Merge(m_ticket, nullptr, kPTJobScope, &report);
    m_levels.push_back({defaultLevel, std::make_shared<const ReportedSettings>(std::move(report))});
}

void TicketExplanation::Add(const std::string& level, EPrintTicketScope scope, const std::string* ticket) {
    // Where there is no ticket the level above holds, which was obeyed already; but for the printer's
    // default.
    if (ticket == nullptr && scope != kPTJobScope) return;
    if (ticket == nullptr) return Enforce(scope);
    OvPlatform::MergeReport report;
    const std::string_view delta = *ticket;
    m_ticket = m_merge.Merge(m_ticket, &delta, scope, &report).ticket;
    Level next{level, std::make_shared<const ReportedSettings>(std::move(report))};
    // A passcode is the job's own: one of the queue's default does not pass to a job that brings a ticket
    // without.
    if (scope == kPTJobScope) m_hasDroppedPasscode = !next.settings->IsAskedFor(jobPasscode);
    // What this level says for itself holds, as long as it is not overruled again.
    std::erase_if(m_overruled, [&](const auto& one) { return next.settings->IsAskedFor(one.first); });
    m_levels.push_back(std::move(next));
    Enforce(scope);
}

void TicketExplanation::Enforce(EPrintTicketScope scope) {
    if (m_configuration.NumberOfFeatures() == 0) return;
    PrintTicketXmlDocument ticket{CXString(m_ticket.c_str())};
    const std::vector<EnforcedChange> changes = EnforceConfiguration(ticket, m_configuration);
    if (changes.empty()) return;
    CComBSTR text;
    if (FAILED(ticket.get_xml(&text))) throw std::bad_alloc();
    m_ticket = Utf8Argument(text);
    // Tells the values as the others are told.
    OvPlatform::MergeReport report;
    m_merge.Merge(m_ticket, nullptr, scope, &report);
    const ReportedSettings enforced(std::move(report));
    for (const EnforcedChange& change : changes)
        TakeOver(change, enforced);
}

void TicketExplanation::TakeOver(const EnforcedChange& change, const ReportedSettings& enforced) {
    const std::string name = Utf8Argument(change.feature->ticketName);
    const auto* const before = m_levels.back().settings->Find(name);
    const auto* const now = enforced.Find(name);
    if (now == nullptr) return;
    const std::string asked = before != nullptr ? before->value : Utf8Argument(change.before);
    const std::string behavior(change.configured->GetBehaviorString().view());
    m_overruled[name] = {now->value,
                         Shortened(asked) + " was asked for: the administrator's " +
                             std::string(change.feature->configurationName) + " is \"" +
                             Shortened(std::string(change.configured->GetXmlConfigValue().view())) + "\" (" +
                             behavior + ")"};
}

std::string TicketExplanation::OriginOf(const std::string& setting) const {
    for (std::size_t at = m_levels.size(); at-- > 0;) {
        const OvPlatform::SettingReport* report = m_levels[at].settings->Find(setting);
        if (report == nullptr) break;
        if (!report->reason.empty()) return byValidation;
        if (report->origin == OvPlatform::SettingOrigin::Delta) return m_levels[at].name;
        if (report->origin == OvPlatform::SettingOrigin::Queue) break;
    }
    return defaultLevel;
}

TicketExplanation::Row TicketExplanation::RowOf(const OvPlatform::SettingReport& setting) const {
    if (const auto found = m_overruled.find(LocalPath(setting.name)); found != m_overruled.end())
        return {setting.name, found->second.value, byPolicy, found->second.remark};
    const std::string origin = OriginOf(setting.name);
    std::string remark = Remark(setting);
    // What a level above changed, this level only took over.
    for (auto level = m_levels.rbegin() + 1; remark.empty() && level != m_levels.rend(); ++level) {
        const auto* above = level->settings->Find(setting.name);
        if (above == nullptr || origin != byValidation) break;
        remark = Remark(*above);
    }
    const bool isHidden = !setting.value.empty() && IsSecretSetting(setting.name);
    return {setting.name, isHidden ? hiddenValue : setting.value, origin, std::move(remark)};
}

std::vector<TicketExplanation::Row> TicketExplanation::Rows() const {
    std::vector<Row> rows;
    for (const auto& setting : m_levels.back().settings->Settings())
        if (!m_hasDroppedPasscode || LocalPath(setting.name) != jobPasscode) rows.push_back(RowOf(setting));
    return rows;
}

std::string FormatExplanation(const std::vector<TicketExplanation::Row>& rows, std::size_t width) {
    std::vector<std::vector<std::string>> lines{{"setting", "value", "from"}};
    for (const auto& row : rows)
        lines.push_back({Indented(row.setting), row.value.empty() ? "(left out)" : Shortened(row.value),
                         row.origin, row.remark});
    return AlignedTable(std::move(lines), width);
}

JsonText ExplanationAsJson(const std::vector<TicketExplanation::Row>& rows) {
    JsonText json;
    const auto text = [&](const char* key, const std::string& value) {
        json.Key(key);
        value.empty() ? json.Null() : json.Text(value);
    };
    json.BeginObject().Key("settings").BeginArray();
    for (const TicketExplanation::Row& row : rows) {
        json.BeginObject().Key("name").Text(row.setting);
        text("value", row.value);
        json.Key("from").Text(row.origin);
        text("remark", row.remark);
        json.EndObject();
    }
    json.EndArray().EndObject();
    return json;
}

} // namespace OvPipeline
