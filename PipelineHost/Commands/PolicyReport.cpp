#include "Commands/PolicyReport.h"

#include "Common/Text.h"
#include "Report/TextTable.h"

#include <Configuration/JobTypeConfiguration.h>
#include <DataModel/FeatureNameTable.h>
#include <DataModel/ValueNameTable.h>

#include <algorithm>

using namespace DataModelIds;

namespace OvPipeline {

namespace {

using Configured = NativeXmlConfigurationFeature;
using Effect = PolicyReport::Effect;
using Row = PolicyReport::Row;
using Outcome = XmlConfigurationReading::Outcome;
using TicketEnforcement::Setter;

constexpr const char* effectNames[] = {"ticket",   "jobType", "nothing", "unknown",
                                       "repeated", "faulty",  "lost"};

constexpr const char* behaviorNames[] = {"", "Default", "EnforcedDefault", "EnforcedSetting"};

const char* NameOf(Effect effect) { return effectNames[static_cast<std::size_t>(effect)]; }

std::string NameOf(tagValueEnum value) {
    const char* const name = FindValueName(value);
    return name ? name : std::to_string(value);
}

const char* NameOf(Setter setter) {
    return setter == Setter::ScoredProperty ? "SetScoredPropertyValue" : "SetChildNodeOptionAttributeValue";
}

std::string TicketName(const TicketEnforcement::Feature& feature) {
    return (feature.isPublic ? "psk:" : "ok:") + Utf8Argument(feature.ticketName);
}

std::string Written(const TicketEnforcement::Feature& feature, const TicketEnforcement::Value& value) {
    return (feature.setter == Setter::PublicOption ? "psk:" : "") + Utf8Argument(value.text);
}

// ---- What a member of the set does

void DescribeEnforced(Row& row) {
    const bool isScored = row.enforced->setter == Setter::ScoredProperty;
    row.effect = Effect::Ticket;
    row.words = "tickets: " + (isScored ? Utf8Argument(row.enforced->attribute) + " of " : "option of ") +
                TicketName(*row.enforced) + " becomes " + Written(*row.enforced, *row.written);
    if (row.written->onlyOver) row.words += " where it is psk:" + Utf8Argument(row.written->onlyOver);
    row.words += std::string(" (") + NameOf(row.enforced->setter) + ")";
}

std::string WhyNothing(const Row& row, const Configured& configured) {
    if (configured.GetBehaviorEnum() == Configured::NoBehavior) return "nothing: it has no setting";
    if (row.valueEnumerator.empty()) return "nothing: it has no such value";
    return "nothing as " + row.behavior;
}

std::vector<tagValueEnum> JobTypesGuardedBy(tagFeatureEnum feature) {
    std::vector<tagValueEnum> jobTypes;
    for (const JobTypeConfiguration::Guard& guard : JobTypeConfiguration::guards)
        if (guard.feature == feature) jobTypes.push_back(guard.jobType);
    return jobTypes;
}

// Empty for a feature that has nothing to do with types of jobs.
std::string JobTypeWords(const Row& row, const Configured& configured) {
    const tagFeatureEnum feature = configured.GetFeatureEnum();
    const bool hasSetting = configured.GetBehaviorEnum() != Configured::NoBehavior;
    if (feature == FEAT_DEV_SECURE_PRINT_ONLY || feature == FEAT_JOB_TYPE) {
        if (row.valueEnumerator.empty()) return WhyNothing(row, configured);
        if (feature == FEAT_JOB_TYPE)
            return "every job becomes " + row.valueEnumerator + ", if that may be printed";
        return configured.TryGetValueEnum() == VAL_SECURE_PRINT_ONLY_ENABLED
                   ? "every job becomes " + NameOf(VAL_JOB_TYPE_SECURE_PRINT)
                   : "nothing as " + row.value;
    }
    std::string words;
    for (const tagValueEnum jobType : JobTypesGuardedBy(feature))
        words += (words.empty() ? "" : ", ") + NameOf(jobType);
    if (words.empty()) return words;
    if (!hasSetting) return WhyNothing(row, configured);
    return words + (configured.GetBooleanValue() ? " may be printed" : " is not printed as such");
}

void DescribeMember(Row& row, const Configured& configured) {
    row.enumerator = FindFeatureName(configured.GetFeatureEnum());
    row.cpssName = configured.GetCpssFeatName().view();
    row.value = configured.GetXmlConfigValue().view();
    row.behavior = behaviorNames[configured.GetBehaviorEnum()];
    if (const auto value = configured.TryGetValueEnum()) row.valueEnumerator = NameOf(*value);
    row.enforced = TicketEnforcement::Find(row.name);
    if (row.enforced) row.written = TicketEnforcement::FindValue(*row.enforced, configured);
    if (row.written) return DescribeEnforced(row);
    row.effect = Effect::Nothing;
    if (row.enforced) {
        row.words = WhyNothing(row, configured);
    } else if (const std::string words = JobTypeWords(row, configured); !words.empty()) {
        row.effect = Effect::JobType;
        row.words = "job types: " + words;
    } else {
        row.words = "known, but enforced nowhere";
    }
}

void Describe(Row& row, Outcome outcome, const Configured* configured) {
    switch (outcome) {
    case Outcome::Taken:
        return DescribeMember(row, *configured);
    case Outcome::Repeated:
        row.effect = Effect::Repeated;
        row.words = "repeated: the first of that name counts";
        return;
    case Outcome::Unknown:
        row.effect = Effect::Unknown;
        row.words = "unknown: skipped";
        return;
    case Outcome::Faulty:
        row.effect = Effect::Faulty;
        row.words = "reading stopped here";
        return;
    case Outcome::Lost:
        row.effect = Effect::Lost;
        row.words = "lost: it stands behind the fault";
        return;
    }
}

std::string Cell(const std::string& text) { return text.empty() ? "-" : text; }

std::string ValueCell(const Row& row) {
    return row.valueEnumerator.empty() ? Cell(row.value) : row.value + " (" + row.valueEnumerator + ")";
}

void WriteText(JsonText& json, const char* key, const std::string& text) {
    json.Key(key);
    text.empty() ? json.Null() : json.Text(text);
}

void WriteEnforcement(JsonText& json, const Row& row) {
    json.Key("ticket");
    if (!row.written) {
        json.Null();
        return;
    }
    json.BeginObject()
        .Key("setter")
        .Text(NameOf(row.enforced->setter))
        .Key("feature")
        .Text(TicketName(*row.enforced))
        .Key("attribute")
        .Text(Utf8Argument(row.enforced->attribute))
        .Key("written")
        .Text(Written(*row.enforced, *row.written));
    WriteText(json, "onlyOver", row.written->onlyOver ? "psk:" + Utf8Argument(row.written->onlyOver) : "");
    json.EndObject();
}

} // namespace

PolicyReport::PolicyReport(const XmlConfigurationReading& reading) : m_fault(reading.GetFault()) {
    for (const auto& [name, outcome] : reading.GetElements()) {
        const auto member = reading.GetFeatures().find(name);
        Row row;
        row.name = name.view();
        Describe(row, outcome, member == reading.GetFeatures().end() ? nullptr : &member->second);
        m_rows.push_back(std::move(row));
    }
}

std::string PolicyReport::AsTable(std::size_t width) const {
    std::vector<std::vector<std::string>> lines = {
        {"configuration name", "feature", "value", "behaviour", "does"}};
    for (const Row& row : m_rows)
        lines.push_back(
            {Cell(row.name), Cell(row.enumerator), ValueCell(row), Cell(row.behavior), row.words});
    std::string text = m_rows.empty() ? std::string() : AlignedTable(lines, width) + "\n";
    return text + Counted(Count(Effect::Ticket), "feature") + " enforced in tickets, " +
           std::to_string(Count(Effect::JobType)) + " about types of jobs, " +
           std::to_string(Count(Effect::Nothing)) + " enforced nowhere, " +
           std::to_string(Count(Effect::Unknown)) + " unknown\n";
}

JsonText PolicyReport::AsJson() const {
    JsonText json;
    json.BeginObject().Key("features").BeginArray();
    for (const Row& row : m_rows) {
        json.BeginObject().Key("configurationName").Text(row.name);
        WriteText(json, "feature", row.enumerator);
        WriteText(json, "cpssName", row.cpssName);
        WriteText(json, "value", row.value);
        WriteText(json, "valueName", row.valueEnumerator);
        WriteText(json, "behavior", row.behavior);
        json.Key("effect").Text(NameOf(row.effect)).Key("does").Text(row.words);
        WriteEnforcement(json, row);
        json.EndObject();
    }
    json.EndArray().Key("fault");
    if (!m_fault) {
        json.Null();
    } else {
        json.BeginObject().Key("message").Text(m_fault->message.view()).Key("line");
        m_fault->line > 0 ? json.Number(m_fault->line) : json.Null();
        json.Key("lostFeatures").Number(static_cast<long long>(Count(Effect::Lost)));
        json.Key("isXml").Bool(m_fault->isInContent).EndObject();
    }
    json.EndObject();
    return json;
}

std::string PolicyReport::FaultLine() const {
    if (!m_fault) return {};
    const std::string place = m_fault->line > 0 ? "line " + std::to_string(m_fault->line) + ": " : "";
    const std::string problem = place + std::string(m_fault->message.view());
    if (m_rows.empty()) return problem + "; nothing of it is enforced";
    return problem + "; what was read before holds, " + Counted(Count(Effect::Lost), "element") +
           " behind it lost";
}

std::size_t PolicyReport::Count(Effect effect) const {
    return static_cast<std::size_t>(std::ranges::count(m_rows, effect, &Row::effect));
}

} // namespace OvPipeline
