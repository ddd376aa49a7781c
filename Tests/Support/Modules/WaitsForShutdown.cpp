// A filter that takes the whole job and then works until it is told to shut down.
#include <filterpipeline.h>
#include <windows.h>

#include <atomic>
#include <chrono>
#include <thread>

namespace {

class WaitsForShutdown final : public IPrintPipelineFilter {
public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** object) override {
        const bool known = riid == __uuidof(IUnknown) || riid == __uuidof(IPrintPipelineFilter);
        *object = known ? this : nullptr;
        if (known) AddRef();
        return known ? S_OK : E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++m_references; }
    ULONG STDMETHODCALLTYPE Release() override {
        const ULONG left = --m_references;
        if (left == 0) delete this;
        return left;
    }
    HRESULT STDMETHODCALLTYPE InitializeFilter(IInterFilterCommunicator* communicator,
                                               IPrintPipelinePropertyBag*,
                                               IPrintPipelineManagerControl*) override {
        // Held no longer than needed; the pipeline keeps both ends while the filter runs.
        void* reader = nullptr;
        const HRESULT hr = communicator->RequestReader(&reader);
        if (FAILED(hr)) return hr;
        m_reader = static_cast<IXpsDocumentProvider*>(reader);
        m_reader->Release();
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE ShutdownOperation() override {
        m_isShutDown = true;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE StartOperation() override {
        for (bool more = true; more;) {
            IUnknown* part = nullptr;
            if (FAILED(m_reader->GetXpsPart(&part))) break;
            more = part != nullptr;
            if (part) part->Release();
        }
        while (!m_isShutDown)
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        return S_OK;
    }

private:
    std::atomic<ULONG> m_references{1};
    std::atomic<bool> m_isShutDown{false};
    IXpsDocumentProvider* m_reader = nullptr;
};

} // namespace

#define EXPORT extern "C" __attribute__((visibility("default")))

EXPORT HRESULT DllGetClassObject(REFCLSID, REFIID riid, void** object) {
    *object = nullptr;
    if (riid != __uuidof(IPrintPipelineFilter)) return E_NOINTERFACE;
    *object = new WaitsForShutdown;
    return S_OK;
}
