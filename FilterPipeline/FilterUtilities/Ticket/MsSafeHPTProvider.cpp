#include "MsSafeHPTProvider.h"

#include <ComSupport/DebugMessages.h>
#include <ComSupport/ThrowHresult.h>
#include <LowLevelFacilities/CPFormat.h>
#include <SystemServices/SetThreadTokenWrapper.h>

namespace {

// Throws a failure together with what the provider has to say of it.
void ThrowIfProviderFailed(HRESULT hr, const CComBSTR& errorText, const char* function,
                           const wchar_t* wideFunction,
                           const std::source_location& location = std::source_location::current()) {
    if (SUCCEEDED(hr)) return;
    TraceFailedHRESULT(hr, location.file_name(), static_cast<int>(location.line()), wideFunction);
    const wchar_t* const details = errorText ? static_cast<const wchar_t*>(errorText) : L"(None)";
    ThrowComException(hr, function, FormatStdString("Error details: %s.", details), location);
}

} // namespace

MsSafeHPTProvider::MsSafeHPTProvider(const wchar_t* printerName, void* userToken)
    : m_provider(nullptr), m_userToken(userToken) {
    constexpr auto function = "MsSafeHPTProvider::MsSafeHPTProvider";
    const SetThreadTokenWrapper impersonation(m_userToken);
    DWORD maxVersion = 0;
    ThrowIfFailed(PTQuerySchemaVersionSupport(printerName, &maxVersion), function);
    DWORD usedVersion = 0;
    ThrowIfFailed(PTOpenProviderEx(printerName, maxVersion, maxVersion, &m_provider, &usedVersion), function);
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
    const SetThreadTokenWrapper impersonation(m_userToken);
    CComBSTR errorText;
    const HRESULT hr = PTMergeAndValidatePrintTicket(m_provider, base, delta, scope, result, &errorText);
    ThrowIfProviderFailed(hr, errorText, "MsSafeHPTProvider::PTMergeAndValidatePrintTicket_throws",
                          L"MsSafeHPTProvider::PTMergeAndValidatePrintTicket_throws");
}

void MsSafeHPTProvider::PTGetPrintCapabilities_throws(const CComPtr<IStream>& ticket,
                                                      CComPtr<IStream>& capabilities, wchar_t* errorText) {
    const SetThreadTokenWrapper impersonation(m_userToken);
    CComBSTR text;
    text.Attach(errorText);
    const HRESULT hr = PTGetPrintCapabilities(m_provider, ticket, capabilities, &text);
    ThrowIfProviderFailed(hr, text, "MsSafeHPTProvider::PTGetPrintCapabilities_throws",
                          L"MsSafeHPTProvider::PTGetPrintCapabilities_throws");
}
