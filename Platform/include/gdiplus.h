#pragma once

#include <Com/PlatformExport.h>

#include <windows.h>
#include <objidl.h>

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

struct GdiplusStartupInput {
    explicit GdiplusStartupInput(void* debugEventCallback = nullptr, BOOL suppressBackgroundThread = FALSE,
                                 BOOL suppressExternalCodecs = FALSE)
        : DebugEventCallback(debugEventCallback), SuppressBackgroundThread(suppressBackgroundThread),
          SuppressExternalCodecs(suppressExternalCodecs) {}

    UINT32 GdiplusVersion = 1;
    void* DebugEventCallback;
    BOOL SuppressBackgroundThread;
    BOOL SuppressExternalCodecs;
};

/// Of no use here: there is no background thread.
struct GdiplusStartupOutput;

/// Until each start has been taken back by a shutdown, pictures can be opened. Any thread.
extern "C" OV_PLATFORM_API Status WINAPI GdiplusStartup(ULONG_PTR* token, const GdiplusStartupInput* input,
                                                        GdiplusStartupOutput* output);
/// A token that is none is passed over.
extern "C" OV_PLATFORM_API void WINAPI GdiplusShutdown(ULONG_PTR token);

/// A picture from a file or a stream, found to be whole by decoding it; its pixels are not kept. Afterwards
/// the status says how that went: Ok, GdiplusNotInitialized, InvalidParameter for null, FileNotFound,
/// AccessDenied, UnknownImageFormat for what is none of PNG, JPEG, GIF, BMP and TIFF, OutOfMemory also for a
/// picture that would take too much, GenericError for a damaged one.
class OV_PLATFORM_API Image {
public:
    explicit Image(const WCHAR* filename, BOOL useEmbeddedColorManagement = FALSE);
    /// From the stream's beginning.
    explicit Image(IStream* stream, BOOL useEmbeddedColorManagement = FALSE);
    virtual ~Image() = default;
    Image(const Image&) = delete;
    Image& operator=(const Image&) = delete;

    /// Of the last call that failed; asking takes it back.
    Status GetLastStatus() const;
    /// In pixels; 0 without a picture.
    UINT GetWidth();
    UINT GetHeight();
    /// Dots per inch; 0 where the picture does not say, or says 0.
    REAL GetHorizontalResolution();
    REAL GetVerticalResolution();

private:
    void Load(const WCHAR* filename, IStream* stream);

    mutable Status m_status;
    UINT m_width = 0;
    UINT m_height = 0;
    REAL m_horizontalResolution = 0;
    REAL m_verticalResolution = 0;
};

class OV_PLATFORM_API Bitmap : public Image {
public:
    explicit Bitmap(const WCHAR* filename, BOOL useEmbeddedColorManagement = FALSE)
        : Image(filename, useEmbeddedColorManagement) {}
    explicit Bitmap(IStream* stream, BOOL useEmbeddedColorManagement = FALSE)
        : Image(stream, useEmbeddedColorManagement) {}
};

} // namespace Gdiplus
