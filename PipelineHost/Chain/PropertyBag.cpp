#include "Chain/PropertyBag.h"

#include "Support/HostError.h"

namespace OvPipeline {

HRESULT PropertyBag::AddProperty(PCWSTR name, const VARIANT* value) {
    if (!name || !value) return E_POINTER;
    return Guarded([&] {
        CComVariant copy;
        if (const HRESULT hr = VariantCopy(&copy, const_cast<VARIANT*>(value)); FAILED(hr)) return hr;
        const std::lock_guard lock(m_mutex);
        m_values.insert_or_assign(name, std::move(copy));
        return S_OK;
    });
}

HRESULT PropertyBag::GetProperty(PCWSTR name, VARIANT* value) {
    if (!name || !value) return E_POINTER;
    return Guarded([&] {
        const std::lock_guard lock(m_mutex);
        const auto found = m_values.find(name);
        if (found == m_values.end()) {
            ThreadNote() = {E_ELEMENT_NOT_FOUND, {}, {}, false};
            return E_ELEMENT_NOT_FOUND;
        }
        return VariantCopy(value, &found->second);
    });
}

BOOL PropertyBag::DeleteProperty(PCWSTR name) {
    if (!name) return FALSE;
    const std::lock_guard lock(m_mutex);
    return m_values.erase(name) > 0 ? TRUE : FALSE;
}

CComPtr<PropertyBag> PropertyBag::Clone() {
    CComPtr<PropertyBag> clone = Make();
    const std::lock_guard lock(m_mutex);
    clone->m_values = m_values;
    return clone;
}

} // namespace OvPipeline
