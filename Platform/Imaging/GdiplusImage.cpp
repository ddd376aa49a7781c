#include "Com/FaultInjection.h"
#include "Imaging/GdiplusRuntime.h"

#include <gdiplus.h>

#include <utility>

namespace Gdiplus {

Image::Image(const WCHAR*, BOOL) : m_status(NotImplemented) {}

Image::Image(IStream*, BOOL) : m_status(NotImplemented) {}

Status Image::GetLastStatus() const { return std::exchange(m_status, Ok); }

UINT Image::GetWidth() { return m_width; }
UINT Image::GetHeight() { return m_height; }
REAL Image::GetHorizontalResolution() { return m_horizontalResolution; }
REAL Image::GetVerticalResolution() { return m_verticalResolution; }

} // namespace Gdiplus
