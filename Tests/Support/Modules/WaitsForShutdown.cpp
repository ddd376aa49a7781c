// A filter that takes the whole job and then works until it is told to shut down.
#include "Support/Modules/TestFilter.h"

#include <atomic>
#include <chrono>
#include <thread>

namespace {

class WaitsForShutdown final : public TakingFilter {
public:
    HRESULT STDMETHODCALLTYPE ShutdownOperation() override {
        m_isShutDown = true;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE StartOperation() override {
        TakingFilter::StartOperation();
        while (!m_isShutDown)
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        return S_OK;
    }

private:
    std::atomic<bool> m_isShutDown{false};
};

} // namespace

EXPORT HRESULT DllGetClassObject(REFCLSID, REFIID riid, void** object) {
    return HandOut<WaitsForShutdown>(riid, object);
}
