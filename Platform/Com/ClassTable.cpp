#include "Com/ClassTable.h"

#include "Com/Apartment.h"
#include "Com/CountedObject.h"
#include "Com/FaultInjection.h"

#include <atlcomcli.h>

#include <map>
#include <mutex>
#include <new>

namespace OvPlatform {
namespace {

struct GuidOrder {
    bool operator()(REFGUID left, REFGUID right) const noexcept {
        return std::memcmp(&left, &right, sizeof(GUID)) < 0;
    }
};

struct Table {
    std::mutex lock;
    std::map<CLSID, CComPtr<IClassFactory>, GuidOrder> factories;
};

// Never destroyed: objects may be made until the very end of the process, by destructors of other statics.
Table& ClassTable() {
    static Table& table = *new Table;
    return table;
}

class FunctionFactory final : public CountedObject<IClassFactory> {
public:
    explicit FunctionFactory(CreateObject create) noexcept : m_create(create) {}

    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID iid, void** object) override {
        if (object == nullptr) return E_POINTER;
        *object = nullptr;
        if (outer != nullptr) return CLASS_E_NOAGGREGATION;
        return m_create(iid, object);
    }
    HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }

private:
    CreateObject m_create;
};

} // namespace

HRESULT RegisterClass(REFCLSID clsid, IClassFactory* factory) noexcept {
    if (factory == nullptr) return E_POINTER;
    try {
        Table& table = ClassTable();
        std::lock_guard guard(table.lock);
        table.factories[clsid] = factory;
        return S_OK;
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    }
}

HRESULT RegisterClass(REFCLSID clsid, CreateObject create) noexcept {
    CComPtr<IClassFactory> factory;
    factory.Attach(new (std::nothrow) FunctionFactory(create));
    return factory ? RegisterClass(clsid, factory.p) : E_OUTOFMEMORY;
}

namespace {

HRESULT FindFactory(REFCLSID clsid, DWORD context, CComPtr<IClassFactory>& factory) noexcept {
    if (!IsInApartment()) return CO_E_NOTINITIALIZED;
    // All classes live in this process.
    if ((context & CLSCTX_INPROC) == 0) return REGDB_E_CLASSNOTREG;
    Table& table = ClassTable();
    std::lock_guard guard(table.lock);
    const auto found = table.factories.find(clsid);
    if (found == table.factories.end()) return REGDB_E_CLASSNOTREG;
    factory = found->second;
    return S_OK;
}

} // namespace
} // namespace OvPlatform

HRESULT CoGetClassObject(REFCLSID clsid, DWORD context, LPVOID, REFIID iid, LPVOID* object) {
    if (object == nullptr) return E_INVALIDARG;
    *object = nullptr;
    if (HRESULT fault = OvPlatform::FaultPoint(); FAILED(fault)) return fault;
    CComPtr<IClassFactory> factory;
    if (HRESULT result = OvPlatform::FindFactory(clsid, context, factory); FAILED(result)) return result;
    return factory->QueryInterface(iid, object);
}

HRESULT CoCreateInstance(REFCLSID clsid, LPUNKNOWN outer, DWORD context, REFIID iid, LPVOID* object) {
    if (object == nullptr) return E_POINTER;
    *object = nullptr;
    if (HRESULT fault = OvPlatform::FaultPoint(); FAILED(fault)) return fault;
    CComPtr<IClassFactory> factory;
    if (HRESULT result = OvPlatform::FindFactory(clsid, context, factory); FAILED(result)) return result;
    return factory->CreateInstance(outer, iid, object);
}
