#include "Chain/PropertyBag.h"

#include "Common/HostError.h"

namespace OvPipeline {

namespace {

// What is held by reference, as handles are, is not the bag's: a bare VT_BYREF is no type that VariantCopy
// knows.
HRESULT CopyValue(VARIANT* to, const VARIANT& from) {
    if (!(from.vt & VT_BYREF)) return VariantCopy(to, const_cast<VARIANT*>(&from));
    *to = from;
    return S_OK;
}

} // namespace

PropertyBag::Value::Value(const VARIANT& from) {
    VariantInit(&variant);
    if (const HRESULT hr = CopyValue(&variant, from); FAILED(hr))
        throw HostError(hr, {}, "a property's value cannot be copied");
}

PropertyBag::Value::~Value() {
    if (!(variant.vt & VT_BYREF)) VariantClear(&variant);
}

HRESULT PropertyBag::AddProperty(PCWSTR name, const VARIANT* value) {
    if (name == nullptr || value == nullptr) return E_POINTER;
    return Guarded([&] {
        auto copy = std::make_shared<Value>(*value);
        const std::lock_guard lock(m_mutex);
        m_values.insert_or_assign(name, std::move(copy));
        return S_OK;
    });
}

HRESULT PropertyBag::GetProperty(PCWSTR name, VARIANT* value) {
    if (name == nullptr || value == nullptr) return E_POINTER;
    return Guarded([&] {
        const std::lock_guard lock(m_mutex);
        const auto found = m_values.find(name);
        if (found == m_values.end()) {
            ThreadNote() = {E_ELEMENT_NOT_FOUND, {}, {}, false};
            return E_ELEMENT_NOT_FOUND;
        }
        VariantInit(value);
        return CopyValue(value, found->second->variant);
    });
}

BOOL PropertyBag::DeleteProperty(PCWSTR name) {
    if (name == nullptr) return FALSE;
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
