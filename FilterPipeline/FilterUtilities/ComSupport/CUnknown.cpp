#include "ComSupport/CUnknown.h"

template <typename T>
CUnknown<T>::CUnknown(const GUID& iid) : CUnknown(GUID{}, iid) {}

template <typename T>
CUnknown<T>::CUnknown(const GUID& clsid, const GUID& iid) : m_referenceCount(1), m_iid(iid), m_clsid(clsid) {}

template <typename T>
CUnknown<T>::CUnknown(const CUnknown& other)
    : T(other), m_referenceCount(other.m_referenceCount.load()), m_iid(other.m_iid), m_clsid(other.m_clsid) {}

template <typename T>
CUnknown<T>& CUnknown<T>::operator=(const CUnknown& other) {
    m_referenceCount.store(other.m_referenceCount.load());
    m_iid = other.m_iid;
    m_clsid = other.m_clsid;
    return *this;
}

template <typename T>
CUnknown<T>::~CUnknown() = default;

template <typename T>
HRESULT CUnknown<T>::QueryInterface(REFIID riid, void** out) {
    if (out == nullptr) return E_POINTER;
    if (riid != __uuidof(IUnknown) && riid != m_iid) {
        *out = nullptr;
        return E_NOINTERFACE;
    }
    *out = this;
    this->AddRef();
    return S_OK;
}

template <typename T>
ULONG CUnknown<T>::AddRef() {
    return static_cast<ULONG>(++m_referenceCount);
}

template <typename T>
ULONG CUnknown<T>::Release() {
    const std::int32_t count = --m_referenceCount;
    if (count == 0) delete this;
    return static_cast<ULONG>(count);
}

template <typename T>
GUID CUnknown<T>::GetIID() const {
    return m_iid;
}

template <typename T>
void CUnknown<T>::SetIID(const GUID& iid) {
    m_iid = iid;
}

template <typename T>
GUID CUnknown<T>::GetCLSID() const {
    return m_clsid;
}

template <typename T>
void CUnknown<T>::SetCLSID(const GUID& clsid) {
    m_clsid = clsid;
}

template class CUnknown<IPrintPipelineFilter>;
template class CUnknown<ISAXContentHandler>;
