#include "Com/ClassTable.h"
#include "Com/CountedObject.h"
#include "Com/FaultInjection.h"
#include "Package/OpcUri.h"
#include "Package/PartName.h"

#include <msopc.h>

#include <new>

namespace OvPlatform {

namespace {

// The factory of open packaging. It makes names; packages go through PackageReader and PackageWriter, so that
// the calls for whole packages answer E_NOTIMPL.
class OpcFactoryObject final : public CountedObject<IOpcFactory> {
public:
    static HRESULT Create(REFIID riid, void** object) {
        if (object == nullptr) return E_POINTER;
        *object = nullptr;
        auto* factory = new (std::nothrow) OpcFactoryObject;
        if (factory == nullptr) return E_OUTOFMEMORY;
        const HRESULT result = factory->QueryInterface(riid, object);
        factory->Release();
        return result;
    }

    HRESULT STDMETHODCALLTYPE CreatePackageRootUri(IOpcUri** rootUri) override {
        if (rootUri == nullptr) return E_POINTER;
        *rootUri = nullptr;
        if (HRESULT fault = FaultPoint(); FAILED(fault)) return fault;
        try {
            return CreateOpcRootUri(rootUri);
        } catch (const std::bad_alloc&) {
            return E_OUTOFMEMORY;
        }
    }

    HRESULT STDMETHODCALLTYPE CreatePartUri(LPCWSTR uri, IOpcPartUri** partUri) override {
        if (uri == nullptr || partUri == nullptr) return E_POINTER;
        *partUri = nullptr;
        if (HRESULT fault = FaultPoint(); FAILED(fault)) return fault;
        try {
            return ResolveOpcPartUri(std::string(packageRoot), uri, partUri);
        } catch (const std::bad_alloc&) {
            return E_OUTOFMEMORY;
        }
    }

    HRESULT STDMETHODCALLTYPE CreateStreamOnFile(LPCWSTR, OPC_STREAM_IO_MODE, SECURITY_ATTRIBUTES*, DWORD,
                                                 IStream**) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE CreatePackage(IOpcPackage**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE ReadPackageFromStream(IStream*, OPC_READ_FLAGS, IOpcPackage**) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE WritePackageToStream(IOpcPackage*, OPC_WRITE_FLAGS, IStream*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE CreateDigitalSignatureManager(IOpcPackage*,
                                                            IOpcDigitalSignatureManager**) override {
        return E_NOTIMPL;
    }
};

const ClassRegistration Registration(__uuidof(OpcFactory), OpcFactoryObject::Create);

} // namespace

} // namespace OvPlatform
