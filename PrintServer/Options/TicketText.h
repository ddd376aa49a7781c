#pragma once

#include "Queue/QueueOffer.h"

#include <map>
#include <string>

namespace OvPrintServer {

/// Builds the XML of a print ticket in a printer's own names.
class TicketText {
public:
    explicit TicketText(const QueueOffer& offer) : m_offer(offer) {}

    bool IsEmpty() const { return m_options.empty() && m_parameters.empty(); }
    bool Has(const std::string& feature) const { return m_options.contains(feature); }
    /// The feature by the offer's name: "JobNUpAllDocumentsContiguously/PresentationDirection".
    void Choose(const std::string& feature, const OfferedOption& option) { m_options[feature] = &option; }
    void Set(const std::string& parameter, const std::string& value) { m_parameters[parameter] = value; }

    std::string Xml() const;

private:
    std::string Feature(const std::string& path) const;

    const QueueOffer& m_offer;
    std::map<std::string, const OfferedOption*> m_options; // a nested feature behind that around it
    std::map<std::string, std::string> m_parameters;
};

} // namespace OvPrintServer
