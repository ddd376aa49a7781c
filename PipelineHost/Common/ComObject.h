#pragma once

#include <filterpipeline.h>
#include <windows.h>

#include <atomic>
#include <tuple>
#include <type_traits>
#include <utility>

namespace OvPipeline {

// The interface that an interface extends, so that an object answers for it too.
template <class Interface>
struct ExtendedInterface {
    using Type = IUnknown;
};
template <>
struct ExtendedInterface<IFixedPage> {
    using Type = IPartBase;
};
template <>
struct ExtendedInterface<IPartImage> {
    using Type = IPartBase;
};
template <>
struct ExtendedInterface<IPartFont> {
    using Type = IPartBase;
};
template <>
struct ExtendedInterface<IPartFont2> {
    using Type = IPartFont;
};
template <>
struct ExtendedInterface<IPartThumbnail> {
    using Type = IPartBase;
};
template <>
struct ExtendedInterface<IPartPrintTicket> {
    using Type = IPartBase;
};
template <>
struct ExtendedInterface<IPartColorProfile> {
    using Type = IPartBase;
};
template <>
struct ExtendedInterface<IPartResourceDictionary> {
    using Type = IPartBase;
};
template <>
struct ExtendedInterface<IClassFactory> {
    using Type = IUnknown;
};

// Reference count and identity of the host's objects: born with one reference, answers for IUnknown, for each
// of the interfaces, and for what those extend. Threads may share it.
template <class Primary, class... Others>
class ComObject : public Primary, public Others... {
public:
    ComObject(const ComObject&) = delete;
    ComObject& operator=(const ComObject&) = delete;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** object) override {
        if (!object) return E_POINTER;
        *object = nullptr;
        if (riid == __uuidof(IUnknown))
            *object = static_cast<IUnknown*>(static_cast<Primary*>(this));
        else if (!Answer<Primary>(static_cast<Primary*>(this), riid, object))
            static_cast<void>((Answer<Others>(static_cast<Others*>(this), riid, object) || ...));
        if (!*object) return E_NOINTERFACE;
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
    ComObject() = default;
    virtual ~ComObject() = default;

private:
    template <class Interface, class From>
    static bool Answer(From* self, REFIID riid, void** object) {
        if (riid == __uuidof(Interface)) {
            *object = static_cast<Interface*>(self);
            return true;
        }
        using Extended = typename ExtendedInterface<Interface>::Type;
        if constexpr (!std::is_same_v<Extended, IUnknown>) return Answer<Extended>(self, riid, object);
        return false;
    }

    std::atomic<ULONG> m_references{1};
};

} // namespace OvPipeline
