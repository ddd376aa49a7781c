#pragma once

#include "ComSupport/FilterUtilitiesExport.h"

#include <windows.h>
#include <gdiplus.h>

/// The thread's last error as an HRESULT; no last error is S_OK.
OV_FILTER_UTILITIES_API HRESULT GetLastErrorAsHResult();

/// The HRESULT that stands for a GDI+ status. Win32Error takes the thread's last error, so it is S_OK without
/// one.
OV_FILTER_UTILITIES_API HRESULT GetGDIStatusErrorAsHResult(Gdiplus::Status status);
