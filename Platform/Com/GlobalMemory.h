#pragma once

#include <windows.h>

namespace OvPlatform::GlobalMemory {

// The functions behind the published ones, for the platform's own use: they are no fault points and leave the
// last error alone.

HGLOBAL Allocate(UINT flags, SIZE_T bytes) noexcept;
/// Null if memory is out, `memory` then stands, or if `memory` is no movable block.
HGLOBAL Resize(HGLOBAL memory, SIZE_T bytes, bool zeroInitialise) noexcept;
bool Free(HGLOBAL memory) noexcept;
bool IsBlock(HGLOBAL memory) noexcept;
SIZE_T Size(HGLOBAL memory) noexcept;
/// The bytes of a block as long as it is neither resized nor freed; null if it is none.
BYTE* Data(HGLOBAL memory) noexcept;

} // namespace OvPlatform::GlobalMemory
