#pragma once

#include <PrintTicket/PrintTicketMerge.h>

#include <memory>
#include <string>

// A small printer of which every rule of validation has something to hold on to, and tickets for it.
namespace TicketFixture {

extern const char* const usualDeclarations; // of psf, xsi, xsd, psk and the printer's own t

// A root element with these children. A ticket may use the namespace o too, which the printer does not know.
std::string Ticket(const std::string& content);
std::string Capabilities(const std::string& content);

// <psf:Feature name="psk:PageOrientation"><psf:Option name="psk:Portrait"/></psf:Feature>; an empty option
// name makes a nameless option. Names without a prefix are public keywords.
std::string Feature(const std::string& name, const std::string& option, const std::string& insideOption = {},
                    const std::string& afterOption = {});
std::string Scored(const std::string& name, int value);
std::string Reference(const std::string& scored, const std::string& parameter);
std::string Property(const std::string& name, const std::string& type, const std::string& value);
std::string Parameter(const std::string& name, const std::string& value,
                      const std::string& type = "xsd:integer");

const std::string& PrinterCapabilities();
const std::string& DefaultTicket();
std::shared_ptr<const OvPlatform::QueueFolder> Queue(const std::string& capabilities = PrinterCapabilities(),
                                                     const std::string& defaultTicket = DefaultTicket());

// What a ticket in the provider's own form says, as "JobCopiesAllDocuments=1 PageOrientation=Portrait ...",
// in the order of the ticket and without the public prefix; "-" stands for a nameless option.
std::string Effective(const std::string& ticket);

// Of that, the setting of one name: "Portrait"; "(none)" if it is not there.
std::string EffectiveOf(const std::string& ticket, const std::string& name);

} // namespace TicketFixture
