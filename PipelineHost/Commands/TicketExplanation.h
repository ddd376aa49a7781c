#pragma once

#include "Commands/ReportedSettings.h"
#include "Report/JsonText.h"

#include <Configuration/NativeXmlConfigurationFeatureSet.h>
#include <PrintTicket/PrintTicketMerge.h>
#include <Spooler/QueueFolder.h>
#include <Ticket/EnforcedValue.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace OvPipeline {

/// A job's tickets merged level by level, with what the queue's administrator enforces in them, and an
/// account of each setting. The thread must be in a COM apartment.
class TicketExplanation {
public:
    /// Throws OvPlatform::PrintTicketError for a queue whose documents are wrong.
    explicit TicketExplanation(std::shared_ptr<const OvPlatform::QueueFolder> queue);

    /// The next level: "job", "document" or "page". ticket is the part's own, null where it has none. Throws
    /// OvPlatform::PrintTicketError, with words, for a ticket that is not a valid one.
    void Add(const std::string& level, EPrintTicketScope scope, const std::string* ticket);

    struct Row {
        std::string setting; // "psk:PageMediaSize", a nested feature behind a slash
        std::string value;   // empty: the setting is not in the ticket
        std::string origin;  // "default", "job", "document", "page", "policy", "changed by validation"
        std::string remark;  // what was asked for and why it was not had
    };
    /// The settings of the last level, in the ticket's order; then what was asked for there and left out.
    std::vector<Row> Rows() const;

    const std::string& Ticket() const { return m_ticket; }

private:
    struct Level {
        std::string name;
        std::shared_ptr<const ReportedSettings> settings;
    };

    /// A setting that the configuration has overruled.
    struct Overruled {
        std::string value;
        std::string remark;
    };

    std::string OriginOf(const std::string& setting) const;
    void Enforce(EPrintTicketScope scope);
    void TakeOver(const EnforcedChange& change, const ReportedSettings& enforced);
    Row RowOf(const OvPlatform::SettingReport& setting) const;

    std::shared_ptr<const OvPlatform::QueueFolder> m_queue;
    OvPlatform::PrintTicketMerge m_merge;
    std::string m_ticket;
    std::vector<Level> m_levels; // from the default down; a level without a ticket is not among them
    NativeXmlConfigurationFeatureSet m_configuration;
    std::map<std::string, Overruled, std::less<>> m_overruled; // by the setting's name without prefixes
    bool m_hasDroppedPasscode = false;
};

/// The rows as a table of aligned columns. width: as AlignedTable takes it.
std::string FormatExplanation(const std::vector<TicketExplanation::Row>& rows, std::size_t width = 0);
/// An object with "settings", which have a name, a value (null where the setting is not in the ticket), where
/// it came from, and a remark (null where there is none).
JsonText ExplanationAsJson(const std::vector<TicketExplanation::Row>& rows);

} // namespace OvPipeline
