#pragma once

#include <oleauto.h>

namespace OvPlatform {

/// Frees an array and its elements whether it is locked or not.
void DestroySafeArray(SAFEARRAY* array) noexcept;

} // namespace OvPlatform
