#pragma once

#include "LowLevelFacilities/UtilitiesExport.h"
#include "LowLevelFacilities/WideStrings/CXString.h"

#include <windows.h>
#include <objidl.h>

#include <cstddef>

class OV_UTILITIES_API WindowsDesktopUtilities {
public:
    WindowsDesktopUtilities() = delete;

    /// Gives a read-only stream over a copy of the bytes. E_POINTER for a null out, or for null bytes with a
    /// length; E_OUTOFMEMORY.
    static HRESULT CreateReadOnlyIStreamFromBuffer(IStream** stream, const void* bytes,
                                                   std::size_t length) noexcept;

    /// A message box that cannot hang a service: the text goes to the debug output, and the box stands on a
    /// thread of its own, for whose answer this waits only a limited time. Gives the pressed button, or 0 if
    /// none came.
    static int noHangDebugMessageBox(HWND window, const CXString& text, const CXString& caption,
                                     UINT style) noexcept;
};
