#include "Options/TicketDraft.h"

#include <utility>

namespace OvPrintServer {

void TicketDraft::Begin(std::string_view name, std::string_view value) {
    BeginSecret(name);
    m_option.text.append("=").append(value);
}

bool TicketDraft::Choose(std::string_view feature, const OfferedOption* option) {
    if (option == nullptr) return false;
    if (Has(feature)) return true;
    const std::string path(feature);
    m_text.Choose(path, *option);
    m_asked.push_back({m_option.text, m_option.name, path, option->localName});
    return true;
}

void TicketDraft::Ask(std::string_view parameter, const std::string& value) {
    Set(parameter, value);
    m_asked.push_back({m_option.text, m_option.name, std::string(parameter), value});
    Took();
}

void TicketDraft::MoveTo(JobTicket& ticket) {
    if (!m_text.IsEmpty()) ticket.xml = m_text.Xml();
    ticket.asked = std::move(m_asked);
    std::set<std::string> told;
    for (LeftOption& left : m_left)
        if (!m_taken.contains(left.name) && told.insert(left.option).second)
            ticket.left.push_back(std::move(left));
}

} // namespace OvPrintServer
