#pragma once

#include "ObjectModel/Collections.h"
#include "ObjectModel/OwnObject.h"

namespace OvPlatform {

/// The parts of a document or a sequence, in their order. Each, an Object, belongs to one owner at a time
/// (XPS_E_ALREADY_OWNED).
template <class Interface, class Item, class Object, class Owner>
class OwnedCollection final : public Collection<Interface, Item> {
public:
    explicit OwnedCollection(Owner* owner) : m_owner(owner) {}
    /// With null as the owner ends.
    void SetOwner(Owner* owner) {
        m_owner = owner;
        for (const auto& item : this->Items())
            static_cast<Object*>(item.p)->SetOwner(owner);
    }

private:
    HRESULT Take(Item* item) override {
        const auto own = Behind<Object>(item);
        if (!own) return XPS_E_NO_CUSTOM_OBJECTS;
        if (own->HasOwner()) return XPS_E_ALREADY_OWNED;
        own->SetOwner(m_owner);
        return S_OK;
    }
    void LetGo(Item* item) override { static_cast<Object*>(item)->SetOwner(nullptr); }

    Owner* m_owner;
};

} // namespace OvPlatform
