#pragma once

#include "Com/FaultInjection.h"

#include <objidl.h>

#include <atomic>
#include <type_traits>

namespace OvPlatform {

// The interface that an interface extends, so that an object answers for it too. Specialised where it is not
// IUnknown.
template <class Interface>
struct ExtendedInterface {
    using Type = IUnknown;
};
template <>
struct ExtendedInterface<IStream> {
    using Type = ISequentialStream;
};

// Reference count and identity of the platform's objects: born with one reference, answers for IUnknown, for
// each of the interfaces, and for what those extend. Threads may share it.
template <class Primary, class... Others>
class CountedObject : public Primary, public Others... {
public:
    CountedObject(const CountedObject&) = delete;
    CountedObject& operator=(const CountedObject&) = delete;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** object) override {
        if (!object) return E_POINTER;
        *object = nullptr;
        if (const HRESULT fault = FaultPoint(); FAILED(fault)) return fault;
        if (riid == __uuidof(IUnknown))
            *object = static_cast<Primary*>(this);
        else if (!(Answer<Primary, Primary>(riid, object) || ... || Answer<Others, Others>(riid, object)))
            return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++m_references; }
    ULONG STDMETHODCALLTYPE Release() override {
        const ULONG left = --m_references;
        if (left == 0) delete this;
        return left;
    }

protected:
    CountedObject() = default;
    virtual ~CountedObject() = default;

private:
    // Base: the one of this object's bases that is, or extends, the interface.
    template <class Interface, class Base>
    bool Answer(REFIID riid, void** object) {
        if (riid == __uuidof(Interface)) {
            *object = static_cast<Interface*>(static_cast<Base*>(this));
            return true;
        }
        using Extended = typename ExtendedInterface<Interface>::Type;
        if constexpr (!std::is_same_v<Extended, IUnknown>) return Answer<Extended, Base>(riid, object);
        return false;
    }

    std::atomic<ULONG> m_references{1};
};

} // namespace OvPlatform
