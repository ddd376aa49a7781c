#pragma once

#include <ComSupport/FailureBarrier.h>

#include <windows.h>
#include <cguid.h>
#include <filterpipeline.h>

// What a filter module needs besides its filter: a class factory and the two exports that the pipeline asks
// for. Put FILTER_MODULE(YourFilter, {your class id}) once at the end of the filter's source.

/// Makes filters of one class. Lives as long as its module, so references are not counted.
template <class Filter>
class FilterFactory final : public IClassFactory {
public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** object) override {
        if (!object) return E_POINTER;
        const bool known = riid == __uuidof(IUnknown) || riid == __uuidof(IClassFactory);
        *object = known ? this : nullptr;
        return known ? S_OK : E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }

    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID riid, void** object) override {
        if (!object) return E_POINTER;
        *object = nullptr;
        if (outer) return CLASS_E_NOAGGREGATION;
        const OperationScope operation("FilterFactory::CreateInstance");
        HRESULT result = S_OK;
        try {
            Filter* filter = new Filter;
            result = filter->QueryInterface(riid, object);
            filter->Release();
        }
        CATCH_VARIOUS(result)
        return result;
    }
    HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }
};

#if defined(_WIN32)
#define FILTER_MODULE_EXPORT extern "C" __declspec(dllexport)
#else
#define FILTER_MODULE_EXPORT extern "C" __attribute__((visibility("default")))
#endif

#define FILTER_MODULE(Filter, ...)                                                                           \
    FILTER_MODULE_EXPORT HRESULT WINAPI DllGetClassObject(REFCLSID classId, REFIID riid, void** object) {    \
        static constexpr GUID ownClassId = __VA_ARGS__;                                                      \
        static FilterFactory<Filter> factory;                                                                \
        if (!object) return E_POINTER;                                                                       \
        *object = nullptr;                                                                                   \
        /* A host that is given nothing but the module's name asks for the null class. */                    \
        const bool known = classId == ownClassId || classId == GUID{};                                       \
        return known ? factory.QueryInterface(riid, object) : CLASS_E_CLASSNOTAVAILABLE;                     \
    }                                                                                                        \
    FILTER_MODULE_EXPORT HRESULT WINAPI DllCanUnloadNow() { return S_FALSE; }
