#pragma once

#include "ObjectModel/PartObject.h"

#include <atlcomcli.h>

namespace OvPlatform {

/// An object by whose class the model can know it again: the class has an IID of its own, `identifier`.
template <class Object, class Interface>
class OwnObject : public CountedObject<Interface> {
public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** object) override {
        if (object == nullptr || riid != Object::identifier)
            return CountedObject<Interface>::QueryInterface(riid, object);
        *object = static_cast<Object*>(this);
        this->AddRef();
        return S_OK;
    }
};

/// The object behind an interface; null for one that the model did not make.
template <class Object>
CComPtr<Object> Behind(IUnknown* behind) {
    CComPtr<Object> object;
    if (behind != nullptr) behind->QueryInterface(Object::identifier, reinterpret_cast<void**>(&object.p));
    return object;
}

} // namespace OvPlatform
