#pragma once

#include <objbase.h>

namespace OvPlatform {

/// Whether the calling thread may make objects: it has entered an apartment, or the multi-threaded one
/// exists.
bool IsInApartment() noexcept;

} // namespace OvPlatform
