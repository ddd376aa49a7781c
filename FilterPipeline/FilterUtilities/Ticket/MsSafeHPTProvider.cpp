#include "Ticket/MsSafeHPTProvider.h"

#include "ComSupport/DebugMessages.h"
#include "ComSupport/ThrowHresult.h"

#include <LowLevelFacilities/Formatter/CPFormat.h>
#include <LowLevelFacilities/WideStrings/CXString.h>
#include <SystemServices/SetThreadTokenWrapper.h>

namespace {

// Throws a failure together with what the provider has to say of it.
void ThrowIfProviderFailed(HRESULT hr, const CComBSTR& errorText,
                           const std::source_location& location = std::source_location::current()) {
    if (SUCCEEDED(hr)) return;
    const DebugContextReference place = OperationScope::PlaceOf(location);
    TraceFailedHRESULT(hr, place.file(), place.line(), CXString(place.function()));
    const wchar_t* const details = errorText ? static_cast<const wchar_t*>(errorText) : L"(None)";
    ThrowComException(hr, FormatStdString("Error details: %s.", details), location);
}

} // namespace

MsSafeHPTProvider::MsSafeHPTProvider(const wchar_t* printerName, void* userToken)
    : m_provider(nullptr), m_userToken(userToken) {
    const OperationScope operation("MsSafeHPTProvider::MsSafeHPTProvider");
    const SetThreadTokenWrapper impersonation(m_userToken);
    DWORD maxVersion = 0;
    ThrowIfFailed(PTQuerySchemaVersionSupport(printerName, &maxVersion));
    DWORD usedVersion = 0;
    ThrowIfFailed(PTOpenProviderEx(printerName, maxVersion, maxVersion, &m_provider, &usedVersion));
}

MsSafeHPTProvider::~MsSafeHPTProvider() {
    try {
        const SetThreadTokenWrapper impersonation(m_userToken);
        PTCloseProvider(m_provider);
    } catch (...) {
        PTCloseProvider(m_provider); // a token that is gone must not keep the provider open
    }
}

void MsSafeHPTProvider::PTMergeAndValidatePrintTicket_throws(const CComPtr<IStream>& base,
                                                             const CComPtr<IStream>& delta,
                                                             EPrintTicketScope scope,
                                                             CComPtr<IStream>& result) {
    const OperationScope operation("MsSafeHPTProvider::PTMergeAndValidatePrintTicket_throws");
    const SetThreadTokenWrapper impersonation(m_userToken);
    CComBSTR errorText;
    const HRESULT hr = PTMergeAndValidatePrintTicket(m_provider, base, delta, scope, result, &errorText);
    ThrowIfProviderFailed(hr, errorText);
}

void MsSafeHPTProvider::PTGetPrintCapabilities_throws(const CComPtr<IStream>& ticket,
                                                      CComPtr<IStream>& capabilities, wchar_t* errorText) {
    const OperationScope operation("MsSafeHPTProvider::PTGetPrintCapabilities_throws");
    const SetThreadTokenWrapper impersonation(m_userToken);
    CComBSTR text;
    text.Attach(errorText);
    const HRESULT hr = PTGetPrintCapabilities(m_provider, ticket, capabilities, &text);
    ThrowIfProviderFailed(hr, text);
}
