#pragma once

#include <windows.h>

#include <string_view>

namespace OvPlatform {

/// Puts `reason` (UTF-8) where the caller of a failed operation finds it (GetErrorInfo), and gives `result`
/// back.
HRESULT Failed(HRESULT result, std::string_view reason) noexcept;

} // namespace OvPlatform
