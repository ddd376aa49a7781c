#pragma once

#include <atlcomcli.h>
#include <libxml/parser.h>
#include <objidl.h>

#include <string>

inline constexpr char frameworkUri[] =
    "http://schemas.microsoft.com/windows/2003/08/printing/printschemaframework";

/// A ticket of about 7 KB.
extern const std::string ticketBytes;

CComPtr<IStream> TicketStream();
/// Makes it another ticket, of the same length.
void NumberTicket(IStream* stream, int number);

/// What the tasks of this program are measured by. The caller frees the result.
xmlDoc* ParseWithLibxml();
