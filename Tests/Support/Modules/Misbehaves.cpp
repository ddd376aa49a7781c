// A filter that takes the whole job and then does what OV_TEST_MISBEHAVIOUR says.
#include <Common/ComObject.h>

#include <unistd.h>

#include <cstdlib>
#include <string_view>
#include <thread>

namespace {

void Misbehave() {
    const std::string_view how = std::getenv("OV_TEST_MISBEHAVIOUR");
    if (how == "exit") std::exit(0);
    if (how == "exit elsewhere") std::thread([] { std::exit(0); }).join();
    if (how == "quick_exit") std::quick_exit(0);
    if (how == "abort") std::abort();
    if (how == "hang")
        for (;;)
            pause();
}

class Misbehaves final : public OvPipeline::ComObject<IPrintPipelineFilter> {
public:
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
    HRESULT STDMETHODCALLTYPE ShutdownOperation() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE StartOperation() override {
        for (bool more = true; more;) {
            IUnknown* part = nullptr;
            if (FAILED(m_reader->GetXpsPart(&part))) break;
            more = part != nullptr;
            if (part) part->Release();
        }
        Misbehave();
        return S_OK;
    }

private:
    ~Misbehaves() override = default;

    IXpsDocumentProvider* m_reader = nullptr;
};

} // namespace

extern "C" __attribute__((visibility("default"))) HRESULT DllGetClassObject(REFCLSID, REFIID riid,
                                                                            void** object) {
    *object = nullptr;
    if (riid != __uuidof(IPrintPipelineFilter)) return E_NOINTERFACE;
    *object = static_cast<IPrintPipelineFilter*>(new Misbehaves);
    return S_OK;
}
