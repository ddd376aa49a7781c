#include "Com/FaultInjection.h"
#include "PrintTicket/PrintTicketProvider.h"
#include "PrintTicket/StreamBytes.h"
#include "Spooler/QueueRegistry.h"
#include "Xml/TextConversion.h"

#include <prntvpt.h>

#include <cstdlib>
#include <new>
#include <stdexcept>

using namespace OvPlatform;

namespace {

constexpr DWORD schemaVersion = 1;
// The published headers have no name for it.
constexpr HRESULT versionNotSupported = MAKE_HRESULT(SEVERITY_ERROR, FACILITY_ITF, 1);

// Runs a call, and turns what it throws into its result and error text.
template <typename Call>
HRESULT Guarded(BSTR* errorMessage, Call call) {
    if (errorMessage) *errorMessage = nullptr;
    try {
        return call();
    } catch (const PrintTicketError& error) {
        if (errorMessage) *errorMessage = ToBstr(error.what());
        return error.Result();
    } catch (const std::invalid_argument&) {
        return E_INVALIDARG;
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    } catch (const std::exception&) {
        return E_FAIL;
    }
}

bool IsScope(EPrintTicketScope scope) {
    return scope == kPTPageScope || scope == kPTDocumentScope || scope == kPTJobScope;
}

HRESULT Open(PCWSTR printerName, HPTPROVIDER* provider) {
    return Guarded(nullptr, [&] {
        const std::shared_ptr<const QueueFolder> queue = QueueRegistry::Find(printerName);
        if (!queue) return HRESULT_FROM_WIN32(ERROR_INVALID_PRINTER_NAME);
        *provider = PrintTicketProvider::Open(queue);
        return S_OK;
    });
}

} // namespace

HRESULT WINAPI PTQuerySchemaVersionSupport(PCWSTR pszPrinterName, DWORD* pMaxVersion) {
    if (const HRESULT fault = FaultPoint(); FAILED(fault)) return fault;
    if (pszPrinterName == nullptr || pMaxVersion == nullptr) return E_INVALIDARG;
    return Guarded(nullptr, [&] {
        if (!QueueRegistry::Find(pszPrinterName)) return HRESULT_FROM_WIN32(ERROR_INVALID_PRINTER_NAME);
        *pMaxVersion = schemaVersion;
        return S_OK;
    });
}

HRESULT WINAPI PTOpenProvider(PCWSTR pszPrinterName, DWORD dwVersion, HPTPROVIDER* phProvider) {
    if (const HRESULT fault = FaultPoint(); FAILED(fault)) return fault;
    if (pszPrinterName == nullptr || phProvider == nullptr || dwVersion == 0) return E_INVALIDARG;
    *phProvider = nullptr;
    if (dwVersion > schemaVersion) return versionNotSupported;
    return Open(pszPrinterName, phProvider);
}

HRESULT WINAPI PTOpenProviderEx(PCWSTR pszPrinterName, DWORD dwMaxVersion, DWORD, HPTPROVIDER* phProvider,
                                DWORD* pUsedVersion) {
    if (const HRESULT fault = FaultPoint(); FAILED(fault)) return fault;
    if (pszPrinterName == nullptr || phProvider == nullptr || pUsedVersion == nullptr || dwMaxVersion == 0)
        return E_INVALIDARG;
    *phProvider = nullptr;
    *pUsedVersion = 0;
    const HRESULT result = Open(pszPrinterName, phProvider);
    if (SUCCEEDED(result)) *pUsedVersion = schemaVersion;
    return result;
}

// No fault point: there is nothing in closing that can fail.
HRESULT WINAPI PTCloseProvider(HPTPROVIDER hProvider) {
    return PrintTicketProvider::Close(hProvider) ? S_OK : E_HANDLE;
}

HRESULT WINAPI PTReleaseMemory(PVOID pBuffer) {
    std::free(pBuffer);
    return S_OK;
}

HRESULT WINAPI PTGetPrintCapabilities(HPTPROVIDER hProvider, IStream* pPrintTicket, IStream* pCapabilities,
                                      BSTR* pbstrErrorMessage) {
    if (pbstrErrorMessage != nullptr) *pbstrErrorMessage = nullptr;
    if (const HRESULT fault = FaultPoint(); FAILED(fault)) return fault;
    if (pCapabilities == nullptr) return E_INVALIDARG;
    const auto provider = PrintTicketProvider::Find(hProvider);
    if (!provider) return E_HANDLE;
    return Guarded(pbstrErrorMessage, [&] {
        std::string ticket;
        if (pPrintTicket != nullptr)
            if (const HRESULT result = ReadStreamBytes(pPrintTicket, ticket); FAILED(result)) return result;
        const std::string_view view = ticket;
        return WriteStreamBytes(pCapabilities,
                                provider->Merge().Capabilities(pPrintTicket != nullptr ? &view : nullptr));
    });
}

HRESULT WINAPI PTMergeAndValidatePrintTicket(HPTPROVIDER hProvider, IStream* pBaseTicket,
                                             IStream* pDeltaTicket, EPrintTicketScope scope,
                                             IStream* pResultTicket, BSTR* pbstrErrorMessage) {
    if (pbstrErrorMessage != nullptr) *pbstrErrorMessage = nullptr;
    if (const HRESULT fault = FaultPoint(); FAILED(fault)) return fault;
    if (pBaseTicket == nullptr || pResultTicket == nullptr || !IsScope(scope)) return E_INVALIDARG;
    const auto provider = PrintTicketProvider::Find(hProvider);
    if (!provider) return E_HANDLE;
    return Guarded(pbstrErrorMessage, [&]() -> HRESULT {
        std::string base, delta;
        if (const HRESULT result = ReadStreamBytes(pBaseTicket, base); FAILED(result)) return result;
        if (pDeltaTicket != nullptr)
            if (const HRESULT result = ReadStreamBytes(pDeltaTicket, delta); FAILED(result)) return result;
        const std::string_view view = delta;
        const PrintTicketMerge::Result merged =
            provider->Merge().Merge(base, pDeltaTicket != nullptr ? &view : nullptr, scope);
        if (const HRESULT result = WriteStreamBytes(pResultTicket, merged.ticket); FAILED(result))
            return result;
        return merged.conflictResolved ? S_PT_CONFLICT_RESOLVED : S_PT_NO_CONFLICT;
    });
}

HRESULT WINAPI PTConvertPrintTicketToDevMode(HPTPROVIDER, IStream*, EDefaultDevmodeType, EPrintTicketScope,
                                             ULONG* pcbDevmode, PDEVMODE* ppDevmode,
                                             BSTR* pbstrErrorMessage) {
    if (pbstrErrorMessage != nullptr) *pbstrErrorMessage = nullptr;
    if (pcbDevmode != nullptr) *pcbDevmode = 0;
    if (ppDevmode != nullptr) *ppDevmode = nullptr;
    return E_NOTIMPL;
}

HRESULT WINAPI PTConvertDevModeToPrintTicket(HPTPROVIDER hProvider, ULONG cbDevmode, PDEVMODE pDevmode,
                                             EPrintTicketScope scope, IStream* pPrintTicket) {
    if (const HRESULT fault = FaultPoint(); FAILED(fault)) return fault;
    if (!pDevmode || pPrintTicket == nullptr || !IsScope(scope)) return E_INVALIDARG;
    const auto provider = PrintTicketProvider::Find(hProvider);
    if (!provider) return E_HANDLE;
    return Guarded(nullptr, [&] {
        return WriteStreamBytes(pPrintTicket, provider->Merge().ConvertDevmode(pDevmode, cbDevmode, scope));
    });
}
