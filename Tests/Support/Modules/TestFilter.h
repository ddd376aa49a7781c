#pragma once

// What the modules of the tests are made of.

#include <Common/ComObject.h>

#define EXPORT extern "C" __attribute__((visibility("default")))

/// Does nothing.
class TestFilter : public OvPipeline::ComObject<IPrintPipelineFilter> {
public:
    HRESULT STDMETHODCALLTYPE InitializeFilter(IInterFilterCommunicator*, IPrintPipelinePropertyBag*,
                                               IPrintPipelineManagerControl*) override {
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE ShutdownOperation() override { return S_OK; }
};

/// Takes the whole job.
class TakingFilter : public TestFilter {
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
    HRESULT STDMETHODCALLTYPE StartOperation() override {
        for (bool more = true; more;) {
            IUnknown* part = nullptr;
            if (FAILED(m_reader->GetXpsPart(&part))) break;
            more = part != nullptr;
            if (part) part->Release();
        }
        return S_OK;
    }

private:
    IXpsDocumentProvider* m_reader = nullptr;
};

/// In the older way, without a class factory.
template <typename Filter>
HRESULT HandOut(REFIID riid, void** object) {
    *object = nullptr;
    if (riid != __uuidof(IPrintPipelineFilter)) return E_NOINTERFACE;
    *object = static_cast<IPrintPipelineFilter*>(new Filter);
    return S_OK;
}
