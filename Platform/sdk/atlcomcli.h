#pragma once

// Owners of COM interfaces and of BSTRs, with the names and the meaning of the published wrapper classes.

#include <windows.h>
#include <objbase.h>
#include <oleauto.h>

#include <cstddef>
#include <functional>
#include <memory>
#include <utility>

/// What the wrappers throw: a bare HRESULT, E_OUTOFMEMORY when memory is out.
class CAtlException {
public:
    CAtlException() noexcept : m_hr(E_FAIL) {}
    CAtlException(HRESULT hr) noexcept : m_hr(hr) {}
    operator HRESULT() const noexcept { return m_hr; }

    HRESULT m_hr;
};

[[noreturn]] inline void AtlThrow(HRESULT hr) { throw CAtlException(hr); }

/// A counted reference to an interface. Null is allowed everywhere but where it is dereferenced.
template <class T>
class CComPtrBase {
public:
    using _PtrClass = T;

    ~CComPtrBase() {
        if (p) p->Release();
    }

    operator T*() const noexcept { return p; }
    T& operator*() const noexcept { return *p; }
    /// The place for an out argument. The reference must be null, or what it holds would never be released.
    T** operator&() noexcept { return &p; }
    T* operator->() const noexcept { return p; }
    bool operator!() const noexcept { return p == nullptr; }
    bool operator<(T* other) const noexcept { return std::less<T*>()(p, other); }
    bool operator==(T* other) const noexcept { return p == other; }
    bool operator!=(T* other) const noexcept { return p != other; }

    void Release() noexcept {
        if (T* old = std::exchange(p, nullptr)) old->Release();
    }
    /// Whether both are interfaces of one object.
    bool IsEqualObject(IUnknown* other) const noexcept {
        if (p == nullptr || other == nullptr) return p == nullptr && other == nullptr;
        IUnknown* own = nullptr;
        IUnknown* others = nullptr;
        const bool equal =
            SUCCEEDED(p->QueryInterface(__uuidof(IUnknown), reinterpret_cast<void**>(&own))) &&
            SUCCEEDED(other->QueryInterface(__uuidof(IUnknown), reinterpret_cast<void**>(&others))) &&
            own == others;
        if (own) own->Release();
        if (others) others->Release();
        return equal;
    }
    /// Takes over a reference that the caller owned.
    void Attach(T* other) noexcept {
        T* old = std::exchange(p, other);
        if (old) old->Release();
    }
    /// Hands the reference over to the caller.
    T* Detach() noexcept { return std::exchange(p, nullptr); }
    HRESULT CopyTo(T** other) const noexcept {
        if (other == nullptr) return E_POINTER;
        *other = p;
        if (p) p->AddRef();
        return S_OK;
    }
    HRESULT CoCreateInstance(REFCLSID clsid, IUnknown* outer = nullptr, DWORD context = CLSCTX_ALL) noexcept {
        return ::CoCreateInstance(clsid, outer, context, __uuidof(T), reinterpret_cast<void**>(&p));
    }
    template <class Q>
    HRESULT QueryInterface(Q** other) const noexcept {
        return p->QueryInterface(__uuidof(Q), reinterpret_cast<void**>(other));
    }

    T* p;

protected:
    CComPtrBase() noexcept : p(nullptr) {}
    CComPtrBase(T* other) noexcept : p(other) {
        if (p) p->AddRef();
    }
    CComPtrBase(const CComPtrBase&) = delete;
    CComPtrBase& operator=(const CComPtrBase&) = delete;

    void Assign(T* other) noexcept {
        if (other) other->AddRef();
        Attach(other);
    }
};

template <class T>
class CComPtr : public CComPtrBase<T> {
public:
    CComPtr() noexcept = default;
    CComPtr(std::nullptr_t) noexcept {}
    CComPtr(T* other) noexcept : CComPtrBase<T>(other) {}
    CComPtr(const CComPtr& other) noexcept : CComPtrBase<T>(other.p) {}
    CComPtr(CComPtr&& other) noexcept { this->p = other.Detach(); }

    T* operator=(T* other) noexcept {
        if (this->p != other) this->Assign(other);
        return this->p;
    }
    T* operator=(const CComPtr& other) noexcept { return *this = other.p; }
    T* operator=(CComPtr&& other) noexcept {
        if (this != std::addressof(other)) this->Attach(other.Detach());
        return this->p;
    }
    /// Asks another kind of reference for this interface; null if it has none.
    template <typename Q>
    T* operator=(const CComPtr<Q>& other) noexcept {
        T* found = nullptr;
        if (other.p) {
            if (FAILED(other.p->QueryInterface(__uuidof(T), reinterpret_cast<void**>(&found))))
                found = nullptr;
        }
        this->Attach(found);
        return this->p;
    }
};

/// Construction asks the object for the interface; null if it has none.
template <class T>
class CComQIPtr : public CComPtr<T> {
public:
    CComQIPtr() noexcept = default;
    CComQIPtr(T* other) noexcept : CComPtr<T>(other) {}
    CComQIPtr(const CComQIPtr& other) noexcept : CComPtr<T>(other.p) {}
    CComQIPtr(IUnknown* other) noexcept { Ask(other); }

    T* operator=(T* other) noexcept { return CComPtr<T>::operator=(other); }
    T* operator=(const CComQIPtr& other) noexcept { return CComPtr<T>::operator=(other.p); }
    T* operator=(IUnknown* other) noexcept {
        Ask(other);
        return this->p;
    }

private:
    void Ask(IUnknown* other) noexcept {
        T* found = nullptr;
        if (other && FAILED(other->QueryInterface(__uuidof(T), reinterpret_cast<void**>(&found))))
            found = nullptr;
        this->Attach(found);
    }
};

/// An owned BSTR. Construction and assignment throw CAtlException(E_OUTOFMEMORY) when memory is out; the
/// operations with a result return it.
class CComBSTR {
public:
    CComBSTR() noexcept : m_str(nullptr) {}
    explicit CComBSTR(int length)
        : m_str(length > 0 ? ::SysAllocStringLen(nullptr, static_cast<UINT>(length)) : nullptr) {
        if (length < 0) AtlThrow(E_INVALIDARG);
        if (length > 0) Require();
    }
    /// `length` units of `text`, zero units included; contents are zero if `text` is null.
    CComBSTR(int length, LPCOLESTR text) : m_str(nullptr) {
        if (length < 0) AtlThrow(E_INVALIDARG);
        if (length == 0) return;
        m_str = ::SysAllocStringLen(text, static_cast<UINT>(length));
        Require();
        if (text == nullptr) {
            for (int index = 0; index < length; ++index)
                m_str[index] = 0;
        }
    }
    CComBSTR(LPCOLESTR text) : m_str(::SysAllocString(text)) {
        if (text) Require();
    }
    CComBSTR(const CComBSTR& other) : m_str(other.Copy()) {
        if (other.m_str) Require();
    }
    CComBSTR(CComBSTR&& other) noexcept : m_str(other.Detach()) {}
    ~CComBSTR() { ::SysFreeString(m_str); }

    CComBSTR& operator=(const CComBSTR& other) {
        if (this != std::addressof(other)) {
            BSTR copy = other.Copy();
            if (other.m_str && !copy) AtlThrow(E_OUTOFMEMORY);
            Attach(copy);
        }
        return *this;
    }
    CComBSTR& operator=(CComBSTR&& other) noexcept {
        if (this != std::addressof(other)) Attach(other.Detach());
        return *this;
    }
    CComBSTR& operator=(LPCOLESTR text) {
        if (text != m_str) {
            BSTR copy = ::SysAllocString(text);
            if (text && !copy) AtlThrow(E_OUTOFMEMORY);
            Attach(copy);
        }
        return *this;
    }

    /// In units.
    unsigned int Length() const noexcept { return ::SysStringLen(m_str); }
    /// In bytes of memory.
    unsigned int ByteLength() const noexcept { return ::SysStringByteLen(m_str); }
    operator BSTR() const noexcept { return m_str; }
    /// The place for an out argument. What the object holds is not freed.
    BSTR* operator&() noexcept { return &m_str; }
    bool operator!() const noexcept { return m_str == nullptr; }

    /// The caller's to free; null for null, and when memory is out.
    BSTR Copy() const noexcept {
        return m_str ? ::SysAllocStringByteLen(reinterpret_cast<LPCSTR>(m_str), ByteLength()) : nullptr;
    }
    HRESULT CopyTo(BSTR* other) const noexcept {
        if (other == nullptr) return E_POINTER;
        *other = Copy();
        return m_str && !*other ? E_OUTOFMEMORY : S_OK;
    }
    void Attach(BSTR other) noexcept {
        if (m_str != other) ::SysFreeString(std::exchange(m_str, other));
    }
    BSTR Detach() noexcept { return std::exchange(m_str, nullptr); }
    void Empty() noexcept { ::SysFreeString(Detach()); }

    HRESULT Append(const CComBSTR& other) noexcept { return AppendBSTR(other.m_str); }
    /// Zero units of `other` included.
    HRESULT AppendBSTR(BSTR other) noexcept { return AppendUnits(other, ::SysStringLen(other)); }
    HRESULT Append(LPCOLESTR text) noexcept { return Append(text, text ? Units(text) : 0); }
    HRESULT Append(WCHAR unit) noexcept { return AppendUnits(&unit, 1); }
    /// `length` units, zero units included; may be a part of this string.
    HRESULT Append(LPCOLESTR text, int length) noexcept {
        if (length < 0 || (text == nullptr && length > 0)) return E_INVALIDARG;
        return AppendUnits(text, static_cast<UINT>(length));
    }
    HRESULT AssignBSTR(BSTR other) noexcept {
        if (other == m_str) return S_OK;
        BSTR copy = nullptr;
        if (other) {
            copy = ::SysAllocStringByteLen(reinterpret_cast<LPCSTR>(other), ::SysStringByteLen(other));
            if (!copy) return E_OUTOFMEMORY;
        }
        Attach(copy);
        return S_OK;
    }
    CComBSTR& operator+=(const CComBSTR& other) {
        if (const HRESULT result = AppendBSTR(other.m_str); FAILED(result)) AtlThrow(result);
        return *this;
    }
    CComBSTR& operator+=(LPCOLESTR text) {
        if (const HRESULT result = Append(text); FAILED(result)) AtlThrow(result);
        return *this;
    }

    bool operator<(const CComBSTR& other) const noexcept {
        return Compare(other.m_str) == static_cast<HRESULT>(VARCMP_LT);
    }
    bool operator>(const CComBSTR& other) const noexcept {
        return Compare(other.m_str) == static_cast<HRESULT>(VARCMP_GT);
    }
    bool operator==(const CComBSTR& other) const noexcept {
        return Compare(other.m_str) == static_cast<HRESULT>(VARCMP_EQ);
    }
    bool operator!=(const CComBSTR& other) const noexcept { return !(*this == other); }
    bool operator==(LPCOLESTR text) const { return *this == CComBSTR(text); }
    bool operator!=(LPCOLESTR text) const { return !(*this == text); }
    // Else the built-in comparison of pointers would be as good a match.
    bool operator==(LPOLESTR text) const { return *this == static_cast<LPCOLESTR>(text); }
    bool operator!=(LPOLESTR text) const { return !(*this == text); }
    bool operator==(std::nullptr_t) const noexcept { return m_str == nullptr; }
    bool operator!=(std::nullptr_t) const noexcept { return m_str != nullptr; }

    BSTR m_str;

private:
    static constexpr LCID UserLocale = 1024;

    HRESULT Compare(BSTR other) const noexcept { return ::VarBstrCmp(m_str, other, UserLocale, 0); }
    void Require() const {
        if (!m_str) AtlThrow(E_OUTOFMEMORY);
    }
    static int Units(LPCOLESTR text) noexcept {
        int length = 0;
        while (text[length])
            ++length;
        return length;
    }
    HRESULT AppendUnits(LPCOLESTR text, UINT length) noexcept {
        if (length == 0) return S_OK;
        const UINT own = Length();
        if (length > static_cast<UINT>(-1) / sizeof(OLECHAR) - own) return E_OUTOFMEMORY;
        BSTR joined = ::SysAllocStringLen(nullptr, own + length);
        if (!joined) return E_OUTOFMEMORY;
        for (UINT index = 0; index < own; ++index)
            joined[index] = m_str[index];
        for (UINT index = 0; index < length; ++index)
            joined[own + index] = text[index];
        Attach(joined);
        return S_OK;
    }
};

/// An owned VARIANT.
class CComVariant : public VARIANT {
public:
    CComVariant() noexcept { ::VariantInit(this); }
    CComVariant(const VARIANT& other) { Assign(other); }
    CComVariant(const CComVariant& other) : CComVariant(static_cast<const VARIANT&>(other)) {}
    CComVariant(CComVariant&& other) noexcept {
        ::VariantInit(this);
        std::swap(static_cast<VARIANT&>(*this), static_cast<VARIANT&>(other));
    }
    CComVariant(LPCOLESTR text) {
        ::VariantInit(this);
        bstrVal = ::SysAllocString(text);
        vt = VT_BSTR;
        if (text && !bstrVal) {
            vt = VT_EMPTY;
            AtlThrow(E_OUTOFMEMORY);
        }
    }
    CComVariant(bool value) noexcept {
        ::VariantInit(this);
        vt = VT_BOOL;
        boolVal = value ? VARIANT_TRUE : VARIANT_FALSE;
    }
    CComVariant(int value) noexcept {
        ::VariantInit(this);
        vt = VT_I4;
        lVal = value;
    }
    CComVariant(IUnknown* value) noexcept {
        ::VariantInit(this);
        vt = VT_UNKNOWN;
        punkVal = value;
        if (value) value->AddRef();
    }
    CComVariant(IDispatch* value) noexcept {
        ::VariantInit(this);
        vt = VT_DISPATCH;
        pdispVal = value;
        if (value) value->AddRef();
    }
    ~CComVariant() { ::VariantClear(this); }

    CComVariant& operator=(const CComVariant& other) { return *this = static_cast<const VARIANT&>(other); }
    CComVariant& operator=(const VARIANT& other) {
        if (const HRESULT result = ::VariantCopy(this, const_cast<VARIANT*>(&other)); FAILED(result))
            AtlThrow(result);
        return *this;
    }

    HRESULT Clear() noexcept { return ::VariantClear(this); }
    HRESULT Detach(VARIANT* other) noexcept {
        if (other == nullptr) return E_POINTER;
        *other = *this;
        vt = VT_EMPTY;
        return S_OK;
    }
    HRESULT ChangeType(VARTYPE type) noexcept { return ::VariantChangeType(this, this, 0, type); }

private:
    void Assign(const VARIANT& other) {
        ::VariantInit(this);
        if (const HRESULT result = ::VariantCopy(this, const_cast<VARIANT*>(&other)); FAILED(result))
            AtlThrow(result);
    }
};
