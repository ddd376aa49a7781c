#pragma once

// No published header, but the reference count and the identity of objects of both builds. Header only, since
// the library's own streams need it beside the platform's.

#include <oaidl.h>
#include <objidl.h>

#include <atomic>
#include <type_traits>

namespace OvPlatform {

/// The interface that an interface extends, so that an object answers for it too. Specialised where it is
/// neither IDispatch nor IUnknown.
template <class Interface>
struct ExtendedInterface {
    using Type =
        std::conditional_t<std::is_base_of_v<IDispatch, Interface> && !std::is_same_v<Interface, IDispatch>,
                           IDispatch, IUnknown>;
};
template <>
struct ExtendedInterface<IStream> {
    using Type = ISequentialStream;
};

/// What an object's operations begin with: nothing.
struct PlainEntry {
    static HRESULT Enter() noexcept { return S_OK; }
};

/// An object that is born with one reference, ends with the last, and answers for IUnknown, for each of the
/// interfaces, and for what those extend. Threads may share it.
template <class Entry, class Primary, class... Others>
class CountedBase : public Primary, public Others... {
public:
    CountedBase(const CountedBase&) = delete;
    CountedBase& operator=(const CountedBase&) = delete;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** object) override {
        if (!object) return E_POINTER;
        *object = nullptr;
        if (const HRESULT refused = Entry::Enter(); FAILED(refused)) return refused;
        if (riid == __uuidof(IUnknown))
            *object = static_cast<Primary*>(this);
        else if (!(Answer<Primary, Primary>(riid, object) || ... || Answer<Others, Others>(riid, object)))
            return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override {
        return m_references.fetch_add(1, std::memory_order_relaxed) + 1;
    }
    ULONG STDMETHODCALLTYPE Release() override {
        const ULONG left = m_references.fetch_sub(1, std::memory_order_acq_rel) - 1;
        if (left == 0) delete this;
        return left;
    }

protected:
    CountedBase() = default;
    virtual ~CountedBase() = default;

private:
    /// Base: the one of this object's bases that is, or extends, the interface.
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
