#pragma once

#include "ComSupport/FilterUtilitiesExport.h"

#include <atlcomcli.h>
#include <prntvpt.h>

/// The platform's ticket provider, open for one printer for the life of this object. Every call runs under
/// the user's token, and stays on the thread that made the object. Failures are CPComException; the provider
/// stays usable after one.
class OV_FILTER_UTILITIES_API MsSafeHPTProvider {
public:
    /// Opens the provider in the highest schema version that the printer knows. The token is not owned; null
    /// leaves the thread as it is.
    MsSafeHPTProvider(const wchar_t* printerName, void* userToken);
    virtual ~MsSafeHPTProvider();
    MsSafeHPTProvider(const MsSafeHPTProvider&) = delete;
    MsSafeHPTProvider& operator=(const MsSafeHPTProvider&) = delete;

    /// Merges delta over base, validates, and writes what lies in the scope to the result stream. A null
    /// delta only validates base. The exception's text holds the provider's own.
    void PTMergeAndValidatePrintTicket_throws(const CComPtr<IStream>& base, const CComPtr<IStream>& delta,
                                              EPrintTicketScope scope, CComPtr<IStream>& result);

    /// Writes the capabilities under the ticket, which may be null, to the stream. errorText is what the
    /// error text starts with: null.
    void PTGetPrintCapabilities_throws(const CComPtr<IStream>& ticket, CComPtr<IStream>& capabilities,
                                       wchar_t* errorText);

private:
    HPTPROVIDER m_provider;
    void* m_userToken;
};
