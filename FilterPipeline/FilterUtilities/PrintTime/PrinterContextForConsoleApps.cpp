#include "PrintTime/PrinterContextForConsoleApps.h"

#include "ComSupport/FailureBarrier.h"

#include <algorithm>
#include <cwchar>
#include <memory>
#include <new>

namespace {

// For each wait: a message that comes begins another one.
constexpr ULONG connectMilliseconds = 10000;

struct HandleCloser {
    void operator()(void* handle) const { CloseHandle(handle); }
};
using UniqueHandle = std::unique_ptr<void, HandleCloser>;

// False where the text is null or does not fit.
template <std::size_t size>
bool CopyWhole(const wchar_t* text, wchar_t (&target)[size]) {
    const std::size_t length = text != nullptr ? std::wcslen(text) : 0;
    const std::size_t copied = (std::min)(length, size - 1);
    std::copy_n(text, copied, target);
    target[copied] = L'\0';
    return text != nullptr && copied == length;
}

// The sink is known to the platform for the life of this object, and no longer.
class Connection {
public:
    Connection(IConnectionPoint& events, IXDriverEventSink& sink) : m_events(events), m_sink(sink) {
        m_result = m_events.Advise(&m_sink, &m_cookie);
    }
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;
    ~Connection() {
        if (SUCCEEDED(m_result)) m_events.Unadvise(m_cookie);
        m_sink.Forget();
    }

    [[nodiscard]] HRESULT Result() const { return m_result; }

private:
    IConnectionPoint& m_events;
    IXDriverEventSink& m_sink;
    DWORD m_cookie = 0;
    HRESULT m_result;
};

HRESULT LastResult() {
    const DWORD error = GetLastError();
    return error != ERROR_SUCCESS ? HRESULT_FROM_WIN32(error) : E_FAIL;
}

} // namespace

PrinterContextForConsoleApps::PrinterContextForConsoleApps(const wchar_t* printerName,
                                                           const wchar_t* driverId)
    : m_hasFailed(false) {
    const bool isNamed = CopyWhole(printerName, m_printerName);
    const bool isOfDriver = CopyWhole(driverId, m_driverId);
    // The beginning of a name may be another printer's.
    m_hasFailed = !isNamed || !isOfDriver;
    m_apartment.TryInitializeCom(COINIT_APARTMENTTHREADED, false);
}

PrinterContextForConsoleApps::~PrinterContextForConsoleApps() = default;

bool PrinterContextForConsoleApps::IsPrinterContextAvailable() {
    return SUCCEEDED(GetPrinterContextObjectOnFirstUse(false));
}

const wchar_t* PrinterContextForConsoleApps::GetPrinterName() { return m_printerName; }

const wchar_t* PrinterContextForConsoleApps::GetPrinterDriverID() { return m_driverId; }

HRESULT PrinterContextForConsoleApps::get_PrinterQueue(IPrinterQueue** queue) {
    if (queue == nullptr) return E_FAIL;
    *queue = nullptr;
    const HRESULT hr = GetPrinterContextObjectOnFirstUse(true);
    return FAILED(hr) ? hr : m_context->get_PrinterQueue(queue);
}

HRESULT PrinterContextForConsoleApps::get_PrintSchemaTicket(IPrintSchemaTicket** ticket) {
    if (ticket == nullptr) return E_FAIL;
    *ticket = nullptr;
    const HRESULT hr = GetPrinterContextObjectOnFirstUse(true);
    return FAILED(hr) ? hr : m_context->get_PrintSchemaTicket(ticket);
}

HRESULT PrinterContextForConsoleApps::GetUserPropertyBag(IPrinterPropertyBag** bag) {
    if (bag == nullptr) return E_FAIL;
    *bag = nullptr;
    const HRESULT hr = GetPrinterContextObjectOnFirstUse(true);
    return FAILED(hr) ? hr : m_context->get_UserProperties(bag);
}

HRESULT PrinterContextForConsoleApps::GetDriverPropertyBag(IPrinterPropertyBag** bag) {
    if (bag == nullptr) return E_FAIL;
    *bag = nullptr;
    const HRESULT hr = GetPrinterContextObjectOnFirstUse(true);
    return FAILED(hr) ? hr : m_context->get_DriverProperties(bag);
}

HRESULT PrinterContextForConsoleApps::GetQueuePropertyBag(IPrinterPropertyBag** bag) {
    if (bag == nullptr) return E_FAIL;
    *bag = nullptr;
    CComPtr<IPrinterQueue> queue;
    const HRESULT hr = get_PrinterQueue(&queue);
    return FAILED(hr) ? hr : queue->GetProperties(bag);
}

HRESULT PrinterContextForConsoleApps::GetPrinterContextObjectOnFirstUse(bool reportsFailure) {
    const OperationScope operation("PrinterContextForConsoleApps::GetPrinterContextObjectOnFirstUse");
    if (m_context) return S_OK;
    if (m_hasFailed) return E_FAIL;
    const HRESULT hr = Connect();
    m_hasFailed = FAILED(hr);
    return reportsFailure ? ReportIfFailed(hr) : hr;
}

HRESULT PrinterContextForConsoleApps::Connect() {
    GUID driver{};
    if (FAILED(CLSIDFromString(m_driverId, &driver))) return E_FAIL;
    CComPtr<IPrinterExtensionManager> manager;
    HRESULT hr = CoCreateInstance(__uuidof(PrinterExtensionManager), nullptr, CLSCTX_INPROC_SERVER,
                                  __uuidof(IPrinterExtensionManager), reinterpret_cast<void**>(&manager));
    if (FAILED(hr)) return hr;
    CComPtr<IConnectionPointContainer> container;
    hr = manager->QueryInterface(__uuidof(IConnectionPointContainer), reinterpret_cast<void**>(&container));
    if (FAILED(hr)) return hr;
    CComPtr<IConnectionPoint> events;
    hr = container->FindConnectionPoint(__uuidof(IPrinterExtensionEvent), &events);
    return FAILED(hr) ? hr : Ask(*events, *manager, driver);
}

HRESULT PrinterContextForConsoleApps::Ask(IConnectionPoint& events, IPrinterExtensionManager& manager,
                                          const GUID& driver) {
    const UniqueHandle event(CreateEventW(nullptr, TRUE, FALSE, nullptr));
    if (!event) return LastResult();
    m_sink.Release();
    m_sink.Attach(new (std::nothrow) IXDriverEventSink(m_printerName, event.get()));
    if (!m_sink) return E_OUTOFMEMORY;
    const Connection connection(events, *m_sink);
    if (FAILED(connection.Result())) return connection.Result();
    if (const HRESULT hr = manager.EnableEvents(driver); FAILED(hr)) return hr;
    RunMessageLoop(event.get(), connectMilliseconds);
    m_context = m_sink->GetContext();
    return m_context ? S_OK : E_FAIL;
}

bool PrinterContextForConsoleApps::RunMessageLoop(void* handle, ULONG milliseconds) {
    static_assert(QS_ALLINPUT == 7423);
    constexpr DWORD messagesCame = WAIT_OBJECT_0 + 1;
    HANDLE const event = handle;
    for (;;) {
        const DWORD ended = MsgWaitForMultipleObjects(1, &event, FALSE, milliseconds, QS_ALLINPUT);
        if (ended != messagesCame) return ended == WAIT_OBJECT_0;
        for (MSG message; PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE);) {
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
    }
}
