#pragma once

#include "ComSupport/FilterUtilitiesExport.h"

#include <windows.h>
#include <gdiplus.h>

/// Keeps the runtime of GDI+ up for its life, so that pictures can be opened. A copy starts it for itself.
/// Any thread.
class OV_FILTER_UTILITIES_API GDIPlus {
public:
    GDIPlus();
    GDIPlus(const GDIPlus&);
    /// Both keep what they have started.
    GDIPlus& operator=(const GDIPlus&);
    virtual ~GDIPlus();

    /// How the start went; GdiplusNotInitialized while it is not running.
    Gdiplus::Status GetGDIPlusStartStatus();

private:
    ULONG_PTR m_token = 0;
    Gdiplus::Status m_startStatus = Gdiplus::GdiplusNotInitialized;
};
