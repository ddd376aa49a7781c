#include "Commands/JobWishesOf.h"

#include "Commands/InputBytes.h"
#include "Common/HostError.h"

namespace OvPipeline {

namespace {

using OvPlatform::TicketOverlay;

// A ticket that says how many copies, and nothing else.
std::string TicketOfCopies(unsigned long copies) {
    return R"(<psf:PrintTicket xmlns:psf="http://schemas.microsoft.com/windows/2003/08/printing/printschemaframework")"
           R"( xmlns:psk="http://schemas.microsoft.com/windows/2003/08/printing/printschemakeywords")"
           R"( xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance" xmlns:xsd="http://www.w3.org/2001/XMLSchema")"
           R"( version="1"><psf:ParameterInit name="psk:JobCopiesAllDocuments"><psf:Value xsi:type="xsd:integer">)" +
           std::to_string(copies) + "</psf:Value></psf:ParameterInit></psf:PrintTicket>";
}

} // namespace

JobWishes WishesOf(const CommandOptions& options) {
    JobWishes wishes;
    wishes.pages = options.pages;
    std::string ticket;
    if (!options.ticket.empty()) ticket = ReadInputBytes(std::filesystem::path(options.ticket));
    try {
        if (!options.ticket.empty()) wishes.ticket = std::make_shared<TicketOverlay>(ticket);
        if (!options.copies) return wishes;
        const std::string copies = TicketOfCopies(*options.copies);
        wishes.ticket = std::make_shared<TicketOverlay>(
            options.ticket.empty() ? copies : TicketOverlay(copies).Over(ticket));
    } catch (const OvPlatform::PrintTicketError& error) {
        throw InputError(error.Result(), options.ticket, options.ticket + ": " + error.what());
    }
    return wishes;
}

} // namespace OvPipeline
