#pragma once

// Tickets with public document settings.

#include "FilterUtilities/Annotation/AnnotationSupport.h"
#include "FilterUtilities/PrintSchema/TicketSupport.h"

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
        : ticket(Ticket("<psf:ParameterInit name='ok:JobOrvelPublicDocSettings'><psf:Value"
                        " xsi:type='xsd:string'><![CDATA[<OrvelPublicDocSettings>" +
                            content + "</OrvelPublicDocSettings>]]></psf:Value></psf:ParameterInit>",
                        Declare("ok", PrivateUri()))),
          settings(&ticket) {}

    /// What an expression finds in the settings that the ticket has.
    [[nodiscard]] std::string Committed(const std::string& xpath) const {
        return OutsideView(OutsideView(ticket, "//psf:Value"), xpath);
    }

    OpenTicket ticket;
    Settings settings;
};
