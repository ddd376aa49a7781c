#pragma once

#include <windows.h>

namespace Gdiplus {

/// What the imaging functions answer; a caller may meet numbers that are not named here.
enum Status : int {
    Ok = 0,
    GenericError = 1,
    InvalidParameter = 2,
    OutOfMemory = 3,
    ObjectBusy = 4,
    InsufficientBuffer = 5,
    NotImplemented = 6,
    Win32Error = 7,
    WrongState = 8,
    Aborted = 9,
    FileNotFound = 10,
    ValueOverflow = 11,
    AccessDenied = 12,
    UnknownImageFormat = 13,
    FontFamilyNotFound = 14,
    FontStyleNotFound = 15,
    NotTrueTypeFont = 16,
    UnsupportedGdiplusVersion = 17,
    GdiplusNotInitialized = 18,
    PropertyNotFound = 19,
    PropertyNotSupported = 20,
    ProfileNotFound = 21
};

using REAL = float;

class SizeF {
public:
    SizeF() = default;
    SizeF(REAL width, REAL height) : Width(width), Height(height) {}

    REAL Width = 0;
    REAL Height = 0;
};

class PointF {
public:
    PointF() = default;
    PointF(REAL x, REAL y) : X(x), Y(y) {}

    REAL X = 0;
    REAL Y = 0;
};

class RectF {
public:
    RectF() = default;
    RectF(REAL x, REAL y, REAL width, REAL height) : X(x), Y(y), Width(width), Height(height) {}
    RectF(const PointF& location, const SizeF& size)
        : X(location.X), Y(location.Y), Width(size.Width), Height(size.Height) {}

    REAL X = 0;
    REAL Y = 0;
    REAL Width = 0;
    REAL Height = 0;
};

} // namespace Gdiplus
