#include "PrintTicket/TicketInput.h"

#include <prntvpt.h>

#include <array>

namespace OvPlatform {
namespace {

struct InputRow {
    HRESULT result;
    const char* name;
};

// In the order of InputKind.
constexpr std::array<InputRow, 5> inputs{{
    {static_cast<HRESULT>(E_PRINTTICKET_FORMAT), "the base ticket"},
    {static_cast<HRESULT>(E_DELTA_PRINTTICKET_FORMAT), "the delta ticket"},
    {static_cast<HRESULT>(E_PRINTTICKET_FORMAT), "the ticket"},
    {static_cast<HRESULT>(E_PRINTCAPABILITIES_FORMAT), "the queue's capabilities"},
    {static_cast<HRESULT>(E_PRINTTICKET_FORMAT), "the queue's default ticket"},
}};

} // namespace

void RefuseInput(InputKind kind, const SchemaFormatError& error) {
    const InputRow& row = inputs[static_cast<std::size_t>(kind)];
    throw PrintTicketError(row.result, std::string(row.name) + ": " + error.what());
}

} // namespace OvPlatform
