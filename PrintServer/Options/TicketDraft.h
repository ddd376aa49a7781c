#pragma once

#include "Options/JobTicket.h"
#include "Options/TicketText.h"

#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace OvPrintServer {

/// A ticket that comes to be option by option, with what each of them asks for, and what cannot be had.
class TicketDraft {
public:
    explicit TicketDraft(const QueueOffer& offer) : m_text(offer) {}

    /// What follows is asked for by that option.
    void Begin(std::string_view name, std::string_view value);
    /// The same, and its value is in no message.
    void BeginSecret(std::string_view name) { m_option = {std::string(name), std::string(name)}; }
    const std::string& OptionName() const { return m_option.name; }

    /// The first who asks for a feature has it. False for no option.
    bool Choose(std::string_view feature, const OfferedOption* option);
    /// The first who asks for a feature had it before.
    bool Has(std::string_view feature) const { return m_text.Has(std::string(feature)); }
    /// Sets a parameter without asking for it: the value belongs to a choice.
    void Set(std::string_view parameter, const std::string& value) {
        m_text.Set(std::string(parameter), value);
    }
    /// Sets a parameter that the option asks for.
    void Ask(std::string_view parameter, const std::string& value);

    void Took() { m_taken.insert(m_option.name); }
    void Leave(const std::string& reason) { m_left.push_back({m_option.text, m_option.name, reason}); }
    void Answer(bool isTaken, const std::string& reason) { isTaken ? Took() : Leave(reason); }

    /// Puts the ticket, what is asked and what is left there. An option with several rows is left only where
    /// none of them took it. Once.
    void MoveTo(JobTicket& ticket);

private:
    struct CurrentOption {
        std::string name;
        std::string text; // for messages
    };

    TicketText m_text;
    CurrentOption m_option;
    std::vector<AskedSetting> m_asked;
    std::vector<LeftOption> m_left;
    std::set<std::string> m_taken;
};

} // namespace OvPrintServer
