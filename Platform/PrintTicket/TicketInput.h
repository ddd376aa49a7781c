#pragma once

#include "PrintTicket/PrintTicketError.h"
#include "PrintTicket/SchemaFormatError.h"

namespace OvPlatform {

/// The documents that come into the provider from outside, each with the result that it gives when it is
/// wrong.
enum class InputKind { BaseTicket, DeltaTicket, Ticket, Capabilities, DefaultTicket };

/// Turns what is wrong with a document into the failure of the call that was given it.
[[noreturn]] void RefuseInput(InputKind kind, const SchemaFormatError& error);

/// Reads an input by `read`.
template <typename Read>
auto AsInput(InputKind kind, Read read) {
    try {
        return read();
    } catch (const SchemaFormatError& error) {
        RefuseInput(kind, error);
    }
}

} // namespace OvPlatform
