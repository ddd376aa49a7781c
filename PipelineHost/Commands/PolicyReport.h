#pragma once

#include "Report/JsonText.h"

#include <Configuration/TicketEnforcement.h>
#include <Configuration/XmlConfigurationReading.h>

#include <string>
#include <vector>

namespace OvPipeline {

/// What an administrator's configuration does, element by element, for people and for programs.
class PolicyReport {
public:
    enum class Effect {
        Ticket,   // enforced in tickets
        JobType,  // decides only which types of jobs there are
        Nothing,  // known to the driver, and enforced nowhere
        Unknown,  // no feature of that name: skipped
        Repeated, // the first of that name counts
        Faulty,   // where reading stopped
        Lost,     // behind the fault
    };
    struct Row {
        std::string name;       // in the configuration
        std::string enumerator; // this and the next ones are empty for what is not a member of the set
        std::string cpssName;
        std::string value;           // in the configuration
        std::string valueEnumerator; // empty for a value that the dictionary does not have
        std::string behavior;
        Effect effect = Effect::Unknown;
        std::string words;                                    // what it does
        const TicketEnforcement::Feature* enforced = nullptr; // with the next one: of Effect::Ticket
        const TicketEnforcement::Value* written = nullptr;
    };

    /// What was read must outlive the call only.
    explicit PolicyReport(const XmlConfigurationReading& reading);

    const std::vector<Row>& Rows() const { return m_rows; } // in the order of the configuration

    /// Aligned columns, and below them how many do what.
    std::string AsTable(std::size_t width = 0) const;
    /// An object with "features" and "fault", which is null where there is none.
    JsonText AsJson() const;
    /// What is wrong, where, and what is lost by it; empty where nothing is.
    std::string FaultLine() const;

private:
    std::size_t Count(Effect effect) const;

    std::vector<Row> m_rows;
    std::optional<XmlConfigurationReading::Fault> m_fault;
};

} // namespace OvPipeline
