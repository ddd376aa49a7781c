#pragma once

#include <hb.h>

#include <memory>
#include <new>

namespace OvPlatform {

template <auto Destroy>
struct Destroyer {
    template <class T>
    void operator()(T* object) const noexcept {
        Destroy(object);
    }
};
using HbBlob = std::unique_ptr<hb_blob_t, Destroyer<hb_blob_destroy>>;
using HbFace = std::unique_ptr<hb_face_t, Destroyer<hb_face_destroy>>;
using HbFont = std::unique_ptr<hb_font_t, Destroyer<hb_font_destroy>>;
using HbSet = std::unique_ptr<hb_set_t, Destroyer<hb_set_destroy>>;

/// An empty one. Throws std::bad_alloc.
inline HbSet MakeSet() {
    HbSet set(hb_set_create());
    if (!hb_set_allocation_successful(set.get())) throw std::bad_alloc();
    return set;
}

} // namespace OvPlatform
