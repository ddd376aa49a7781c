#pragma once

namespace OvPlatform {

/// Whether a start of GDI+ has not been taken back yet.
bool IsGdiplusRunning() noexcept;

} // namespace OvPlatform
