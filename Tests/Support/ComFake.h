#pragma once

// Bases of the small stand-ins for platform objects that the tests of several rooms share.

#include <windows.h>
#include <atlcomcli.h>

#include <atomic>
#include <utility>

/// A counted object that answers for IUnknown, for Interface, and for those of its bases that are named. Born
/// with a count of 0: a CComPtr takes it over (MakeFake).
template <typename Interface, typename... Bases>
class ComFake : public Interface {
public:
    ComFake() = default;
    virtual ~ComFake() = default;
    ComFake(const ComFake&) = delete;
    ComFake& operator=(const ComFake&) = delete;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** out) override {
        if (!out) return E_POINTER;
        const bool answers =
            riid == __uuidof(IUnknown) || riid == __uuidof(Interface) || (... || (riid == __uuidof(Bases)));
        *out = answers ? static_cast<Interface*>(this) : nullptr;
        if (!answers) return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++m_references; }
    ULONG STDMETHODCALLTYPE Release() override {
        const ULONG left = --m_references;
        if (left == 0) delete this;
        return left;
    }

    ULONG References() const { return m_references; }

private:
    std::atomic<ULONG> m_references{0};
};

template <typename Fake, typename... Arguments>
CComPtr<Fake> MakeFake(Arguments&&... arguments) {
    CComPtr<Fake> made(new Fake(std::forward<Arguments>(arguments)...));
    // Others than these fakes are born with a reference.
    if constexpr (!requires { made.p->References(); }) made.p->Release();
    return made;
}
