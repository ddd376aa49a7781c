// A filter that takes the whole job and then does what OV_TEST_MISBEHAVIOUR says; without it, it works until
// it is told to shut down.
#include "Support/Modules/TestFilter.h"

#include <signal.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <string_view>
#include <thread>

namespace {

void Misbehave() {
    const char* const asked = std::getenv("OV_TEST_MISBEHAVIOUR");
    const std::string_view how = asked ? asked : "";
    if (how == "exit") std::exit(0);
    if (how == "exit elsewhere") std::thread([] { std::exit(0); }).join();
    if (how == "quick_exit") std::quick_exit(0);
    if (how == "_exit") _exit(0);
    if (how == "kill") raise(SIGKILL);
    if (how == "abort") std::abort();
    if (how == "abort elsewhere") std::thread([] { std::abort(); }).join();
    if (how == "hang")
        for (;;)
            pause();
}

class Misbehaves final : public TakingFilter {
public:
    HRESULT STDMETHODCALLTYPE StartOperation() override {
        TakingFilter::StartOperation();
        Misbehave();
        while (!m_isShutDown)
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE ShutdownOperation() override {
        m_isShutDown = true;
        return S_OK;
    }

private:
    std::atomic<bool> m_isShutDown{false};
};

} // namespace

EXPORT HRESULT DllGetClassObject(REFCLSID, REFIID riid, void** object) {
    return HandOut<Misbehaves>(riid, object);
}
