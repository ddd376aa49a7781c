#pragma once

#include "Parts/PartObject.h"

#include <atlcomcli.h>

namespace OvPipeline {

/// The one part of a kind that a sequence, document, page or package may have: a ticket, a thumbnail. The
/// object of a part of the package is made when it is first asked for.
template <class Interface, class Object>
class PartSlot {
public:
    PartSlot() = default;
    PartSlot(SharedContext context, const OvPlatform::PackagePart* stored)
        : m_context(std::move(context)), m_stored(stored) {}

    bool IsEmpty() const { return m_stored == nullptr && !m_object; }

    /// E_ELEMENT_NOT_FOUND where there is none.
    HRESULT Get(Interface** part, PartKind kind) {
        if (!part) return E_POINTER;
        *part = nullptr;
        return Guarded([&] {
            if (IsEmpty()) return E_ELEMENT_NOT_FOUND;
            if (!m_object) m_object.Attach(new Object(PartCore::Of(m_context, *m_stored, kind)));
            ThreadPart() = Name();
            return m_object.CopyTo(part);
        });
    }
    HRESULT Set(Interface* part) {
        if (!part) return E_POINTER;
        return Guarded([&] {
            m_object = part;
            m_stored = nullptr;
            return S_OK;
        });
    }
    /// Of the part in the slot, for those who write it; null where the slot is empty.
    CComPtr<Interface> Take(PartKind kind) {
        if (!m_object && m_stored) m_object.Attach(new Object(PartCore::Of(m_context, *m_stored, kind)));
        return m_object;
    }

    std::string Name() const {
        if (m_stored != nullptr) return m_stored->name;
        CComPtr<IHostPart> host;
        if (m_object) m_object->QueryInterface(__uuidof(IHostPart), reinterpret_cast<void**>(&host));
        return host ? host->Core().name : std::string();
    }

private:
    SharedContext m_context;
    const OvPlatform::PackagePart* m_stored = nullptr;
    CComPtr<Interface> m_object;
};

} // namespace OvPipeline
