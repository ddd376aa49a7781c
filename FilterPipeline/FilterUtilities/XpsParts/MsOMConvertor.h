#pragma once

// From the pipeline's part objects to memory streams and package URIs. Each function throws CPComException
// with the failing HRESULT. Callable on any thread that may use its arguments.

#include "ComSupport/FilterUtilitiesExport.h"

#include <atlcomcli.h>
#include <filterpipeline.h>
#include <msopc.h>

/// A copy of the part's bytes, positioned at its start. A null part is E_INVALIDARG.
OV_FILTER_UTILITIES_API CComPtr<IStream> GetIStreamFromPart(const CComPtr<IPartBase>& part);

/// A copy in memory of the whole stream, whatever its position was; the copy is positioned at its start. A
/// null reader is E_INVALIDARG.
OV_FILTER_UTILITIES_API CComPtr<IStream>
CreateIStreamFromIPrintReadStream(const CComPtr<IPrintReadStream>& reader);

/// No print ticket is larger than this: it becomes a document, of which a few bytes on disk can make memory
/// without bound. The portable DOM loads no more either.
inline constexpr ULONGLONG mostTicketBytes = ULONGLONG{64} << 20;

/// The same for a print ticket. E_OUTOFMEMORY for one larger than that, before any of it is read.
OV_FILTER_UTILITIES_API CComPtr<IStream> GetIStreamFromTicket(const CComPtr<IPartPrintTicket>& ticket);
OV_FILTER_UTILITIES_API CComPtr<IStream>
CreateIStreamFromTicketStream(const CComPtr<IPrintReadStream>& reader);

/// The part's name as a package URI. A name that is not a valid one throws what the factory says of it; a
/// null part or factory is E_INVALIDARG.
OV_FILTER_UTILITIES_API CComPtr<IOpcPartUri> CreateOpcPartUriFromPart(const CComPtr<IPartBase>& part,
                                                                      const CComPtr<IOpcFactory>& factory);
