#pragma once

// Tickets with public document settings, and what of them is left in the ticket.

#include "FilterUtilities/Annotation/AnnotationSupport.h"
#include "FilterUtilities/PrintSchema/TicketSupport.h"

#include <algorithm>
#include <utility>

inline std::string EscapeXml(const std::string& text) {
    std::string escaped;
    for (const char c : text)
        escaped += c == '<' ? "&lt;" : c == '&' ? "&amp;" : std::string(1, c);
    return escaped;
}

inline std::string TicketWithSettings(const std::string& settings) {
    return Ticket("<psf:ParameterInit name='ok:JobOrvelPublicDocSettings'><psf:Value xsi:type='xsd:string'>" +
                      EscapeXml("<OrvelPublicDocSettings>" + settings + "</OrvelPublicDocSettings>") +
                      "</psf:Value></psf:ParameterInit>",
                  Declare("ok", PrivateUri()));
}

/// An element by its members' names, without the end of each, and texts.
inline std::string SettingsElement(std::initializer_list<std::pair<std::string, std::string>> members) {
    std::string element = "<e>";
    for (const auto& [name, text] : members)
        element += "<" + name + "-api>" + text + "</" + name + "-api>";
    return element + "</e>";
}
inline std::string SettingsElements(const std::string& elements, const std::string& mark = {}) {
    return "<annotation-col-api" + mark + "><annotation-element-col-api>" + elements +
           "</annotation-element-col-api></annotation-col-api>";
}

/// A ticket, and its settings as the driver holds them.
struct TicketAndSettings {
    explicit TicketAndSettings(const std::string& content)
        : ticket(TicketWithSettings(content)), settings(&ticket) {}

    /// What an expression finds in the settings that the ticket has.
    [[nodiscard]] std::string Committed(const std::string& xpath) const {
        return OutsideView(OutsideView(ticket, "//psf:Value"), xpath);
    }
    [[nodiscard]] std::string Committed() const { return OutsideView(ticket, "//psf:Value"); }
    [[nodiscard]] std::string Setting(const wchar_t* name) {
        bool isSpecified = false;
        CXString value;
        settings.GetCurrentValueAsStringForOrvelPublicDocSettingsFeature(name, isSpecified, value);
        return isSpecified ? Utf8(value) : "(none)";
    }

    OpenTicket ticket;
    Settings settings;
};
