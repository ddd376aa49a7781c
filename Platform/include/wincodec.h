#pragma once

// Reading and writing of pictures, under the name of the SDK's header. Interfaces stand in their published
// slots; those that nobody here asks for are named only. What stands behind them is in Imaging/.

#include <windows.h>
#include <objidl.h>

#define WINCODEC_ERR_WRONGSTATE _HRESULT_TYPEDEF_(0x88982F04)
#define WINCODEC_ERR_VALUEOUTOFRANGE _HRESULT_TYPEDEF_(0x88982F05)
#define WINCODEC_ERR_UNKNOWNIMAGEFORMAT _HRESULT_TYPEDEF_(0x88982F07)
#define WINCODEC_ERR_UNSUPPORTEDVERSION _HRESULT_TYPEDEF_(0x88982F0B)
#define WINCODEC_ERR_NOTINITIALIZED _HRESULT_TYPEDEF_(0x88982F0C)
#define WINCODEC_ERR_PALETTEUNAVAILABLE _HRESULT_TYPEDEF_(0x88982F45)
#define WINCODEC_ERR_CODECNOTHUMBNAIL _HRESULT_TYPEDEF_(0x88982F44)
#define WINCODEC_ERR_CODECTOOMANYSCANLINES _HRESULT_TYPEDEF_(0x88982F46)
#define WINCODEC_ERR_INTERNALERROR _HRESULT_TYPEDEF_(0x88982F48)
#define WINCODEC_ERR_SOURCERECTDOESNOTMATCHDIMENSIONS _HRESULT_TYPEDEF_(0x88982F49)
#define WINCODEC_ERR_COMPONENTNOTFOUND _HRESULT_TYPEDEF_(0x88982F50)
#define WINCODEC_ERR_IMAGESIZEOUTOFRANGE _HRESULT_TYPEDEF_(0x88982F51)
#define WINCODEC_ERR_BADIMAGE _HRESULT_TYPEDEF_(0x88982F60)
#define WINCODEC_ERR_BADHEADER _HRESULT_TYPEDEF_(0x88982F61)
#define WINCODEC_ERR_FRAMEMISSING _HRESULT_TYPEDEF_(0x88982F62)
#define WINCODEC_ERR_BADSTREAMDATA _HRESULT_TYPEDEF_(0x88982F70)
#define WINCODEC_ERR_STREAMWRITE _HRESULT_TYPEDEF_(0x88982F71)
#define WINCODEC_ERR_STREAMREAD _HRESULT_TYPEDEF_(0x88982F72)
#define WINCODEC_ERR_UNSUPPORTEDPIXELFORMAT _HRESULT_TYPEDEF_(0x88982F80)
#define WINCODEC_ERR_UNSUPPORTEDOPERATION _HRESULT_TYPEDEF_(0x88982F81)
#define WINCODEC_ERR_INSUFFICIENTBUFFER _HRESULT_TYPEDEF_(0x88982F8C)

using WICPixelFormatGUID = GUID;
using REFWICPixelFormatGUID = REFGUID;
using WICColor = UINT32;

DECLARE_HANDLE(HPALETTE);
DECLARE_HANDLE(HICON);

inline constexpr GUID GUID_ContainerFormatBmp = {
    0x0af1d87e, 0xfcfe, 0x4188, {0xbd, 0xeb, 0xa7, 0x90, 0x64, 0x71, 0xcb, 0xe3}};
inline constexpr GUID GUID_ContainerFormatPng = {
    0x1b7cfaf4, 0x713f, 0x473c, {0xbb, 0xcd, 0x61, 0x37, 0x42, 0x5f, 0xae, 0xaf}};
inline constexpr GUID GUID_ContainerFormatJpeg = {
    0x19e4a5aa, 0x5662, 0x4fc5, {0xa0, 0xc0, 0x17, 0x58, 0x02, 0x8e, 0x10, 0x57}};
inline constexpr GUID GUID_ContainerFormatTiff = {
    0x163bcc30, 0xe2e9, 0x4f0b, {0x96, 0x1d, 0xa3, 0xe9, 0xfd, 0xb7, 0x88, 0xa3}};
inline constexpr GUID GUID_ContainerFormatGif = {
    0x1f8a5601, 0x7d4d, 0x4cbd, {0x9c, 0x82, 0x1b, 0xc8, 0xd4, 0xee, 0xb9, 0xa5}};
inline constexpr GUID GUID_ContainerFormatWmp = {
    0x57a37caa, 0x367a, 0x4540, {0x91, 0x6b, 0xf1, 0x83, 0xc5, 0x09, 0x3a, 0x4b}};

inline constexpr GUID GUID_WICPixelFormatDontCare = {
    0x6fddc324, 0x4e03, 0x4bfe, {0xb1, 0x85, 0x3d, 0x77, 0x76, 0x8d, 0xc9, 0x00}};
inline constexpr GUID GUID_WICPixelFormat24bppBGR = {
    0x6fddc324, 0x4e03, 0x4bfe, {0xb1, 0x85, 0x3d, 0x77, 0x76, 0x8d, 0xc9, 0x0c}};
inline constexpr GUID GUID_WICPixelFormat24bppRGB = {
    0x6fddc324, 0x4e03, 0x4bfe, {0xb1, 0x85, 0x3d, 0x77, 0x76, 0x8d, 0xc9, 0x0d}};
inline constexpr GUID GUID_WICPixelFormat32bppBGRA = {
    0x6fddc324, 0x4e03, 0x4bfe, {0xb1, 0x85, 0x3d, 0x77, 0x76, 0x8d, 0xc9, 0x0f}};
inline constexpr GUID GUID_WICPixelFormat32bppRGBA = {
    0xf5c7ad2d, 0x6a8d, 0x43dd, {0xa7, 0xa8, 0xa2, 0x99, 0x35, 0x26, 0x1a, 0xe9}};

/// The class of the factory; it answers for IWICImagingFactory.
inline constexpr CLSID CLSID_WICImagingFactory2 = {
    0x317d06e8, 0x5f24, 0x433d, {0xbd, 0xf7, 0x79, 0xce, 0x68, 0xd8, 0xab, 0xc2}};

enum WICDecodeOptions { WICDecodeMetadataCacheOnDemand = 0x0, WICDecodeMetadataCacheOnLoad = 0x1 };
enum WICBitmapCreateCacheOption {
    WICBitmapNoCache = 0x0,
    WICBitmapCacheOnDemand = 0x1,
    WICBitmapCacheOnLoad = 0x2
};
enum WICBitmapEncoderCacheOption {
    WICBitmapEncoderCacheInMemory = 0x0,
    WICBitmapEncoderCacheTempFile = 0x1,
    WICBitmapEncoderNoCache = 0x2
};
enum WICBitmapDecoderCapabilities {
    WICBitmapDecoderCapabilityCanDecodeAllImages = 0x2,
    WICBitmapDecoderCapabilityCanDecodeSomeImages = 0x4
};
enum WICBitmapPaletteType { WICBitmapPaletteTypeCustom = 0x0 };
enum WICBitmapAlphaChannelOption { WICBitmapUseAlpha = 0x0 };

struct WICRect {
    INT X;
    INT Y;
    INT Width;
    INT Height;
};

struct IEnumUnknown;
struct IPropertyBag2;
struct IWICBitmap;
struct IWICBitmapClipper;
struct IWICBitmapDecoderInfo;
struct IWICBitmapEncoderInfo;
struct IWICBitmapFlipRotator;
struct IWICBitmapScaler;
struct IWICBitmapSource;
struct IWICColorContext;
struct IWICColorTransform;
struct IWICComponentInfo;
struct IWICFastMetadataEncoder;
struct IWICFormatConverter;
struct IWICMetadataQueryReader;
struct IWICMetadataQueryWriter;

/// The colours of pictures that have a table of them. No picture is handed out in such a form here.
MIDL_INTERFACE("00000040-a8f2-4877-ba0a-fd2b6645fb94") IWICPalette : public IUnknown {
public:
    virtual HRESULT STDMETHODCALLTYPE InitializePredefined(WICBitmapPaletteType type,
                                                           BOOL addTransparentColor) = 0;
    virtual HRESULT STDMETHODCALLTYPE InitializeCustom(WICColor * colors, UINT colorCount) = 0;
    virtual HRESULT STDMETHODCALLTYPE InitializeFromBitmap(IWICBitmapSource * surface, UINT colorCount,
                                                           BOOL addTransparentColor) = 0;
    virtual HRESULT STDMETHODCALLTYPE InitializeFromPalette(IWICPalette * palette) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetType(WICBitmapPaletteType * type) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetColorCount(UINT * count) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetColors(UINT colorCount, WICColor * colors, UINT * actualColors) = 0;
    virtual HRESULT STDMETHODCALLTYPE IsBlackWhite(BOOL * isBlackWhite) = 0;
    virtual HRESULT STDMETHODCALLTYPE IsGrayscale(BOOL * isGrayscale) = 0;
    virtual HRESULT STDMETHODCALLTYPE HasAlpha(BOOL * hasAlpha) = 0;
};
__CRT_UUID_DECL(IWICPalette, 0x00000040, 0xa8f2, 0x4877, 0xba, 0x0a, 0xfd, 0x2b, 0x66, 0x45, 0xfb, 0x94)

/// Rows of pixels. GetResolution: dots per inch, 96 where the picture says nothing. CopyPixels: the whole
/// picture without a rectangle; `bufferSize` in bytes, rows `stride` bytes apart.
MIDL_INTERFACE("00000120-a8f2-4877-ba0a-fd2b6645fb94") IWICBitmapSource : public IUnknown {
public:
    virtual HRESULT STDMETHODCALLTYPE GetSize(UINT * width, UINT * height) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetPixelFormat(WICPixelFormatGUID * pixelFormat) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetResolution(double* dpiX, double* dpiY) = 0;
    virtual HRESULT STDMETHODCALLTYPE CopyPalette(IWICPalette * palette) = 0;
    virtual HRESULT STDMETHODCALLTYPE CopyPixels(const WICRect* rectangle, UINT stride, UINT bufferSize,
                                                 BYTE* buffer) = 0;
};
__CRT_UUID_DECL(IWICBitmapSource, 0x00000120, 0xa8f2, 0x4877, 0xba, 0x0a, 0xfd, 0x2b, 0x66, 0x45, 0xfb, 0x94)

/// One picture of a container, which is decoded by the time there is a frame. It is handed out in 8 bits a
/// colour, with alpha or without (GUID_WICPixelFormat32bppRGBA, 24bppRGB), whatever the file has.
MIDL_INTERFACE("3b16811b-6a43-4ec9-a813-3d930c13b940") IWICBitmapFrameDecode : public IWICBitmapSource {
public:
    virtual HRESULT STDMETHODCALLTYPE GetMetadataQueryReader(IWICMetadataQueryReader *
                                                             *metadataQueryReader) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetColorContexts(UINT count, IWICColorContext * *colorContexts,
                                                       UINT * actualCount) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetThumbnail(IWICBitmapSource * *thumbnail) = 0;
};
__CRT_UUID_DECL(IWICBitmapFrameDecode, 0x3b16811b, 0x6a43, 0x4ec9, 0xa8, 0x13, 0x3d, 0x93, 0x0c, 0x13, 0xb9,
                0x40)

/// Reads a container from a stream. Here one picture of it: the first of an animation, and the first page of
/// a TIFF file.
MIDL_INTERFACE("9edde9e7-8dee-47ea-99df-e6faf2ed44bf") IWICBitmapDecoder : public IUnknown {
public:
    virtual HRESULT STDMETHODCALLTYPE QueryCapability(IStream * stream, DWORD * capability) = 0;
    virtual HRESULT STDMETHODCALLTYPE Initialize(IStream * stream, WICDecodeOptions cacheOptions) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetContainerFormat(GUID * containerFormat) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetDecoderInfo(IWICBitmapDecoderInfo * *decoderInfo) = 0;
    virtual HRESULT STDMETHODCALLTYPE CopyPalette(IWICPalette * palette) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetMetadataQueryReader(IWICMetadataQueryReader *
                                                             *metadataQueryReader) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetPreview(IWICBitmapSource * *source) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetColorContexts(UINT count, IWICColorContext * *colorContexts,
                                                       UINT * actualCount) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetThumbnail(IWICBitmapSource * *thumbnail) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetFrameCount(UINT * count) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetFrame(UINT index, IWICBitmapFrameDecode * *bitmapFrame) = 0;
};
__CRT_UUID_DECL(IWICBitmapDecoder, 0x9edde9e7, 0x8dee, 0x47ea, 0x99, 0xdf, 0xe6, 0xfa, 0xf2, 0xed, 0x44, 0xbf)

/// Takes one picture: Initialize, SetSize, SetPixelFormat, then its rows, then Commit. SetPixelFormat says by
/// its argument which format it really takes.
MIDL_INTERFACE("00000105-a8f2-4877-ba0a-fd2b6645fb94") IWICBitmapFrameEncode : public IUnknown {
public:
    virtual HRESULT STDMETHODCALLTYPE Initialize(IPropertyBag2 * encoderOptions) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetSize(UINT width, UINT height) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetResolution(double dpiX, double dpiY) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetPixelFormat(WICPixelFormatGUID * pixelFormat) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetColorContexts(UINT count, IWICColorContext * *colorContext) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetPalette(IWICPalette * palette) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetThumbnail(IWICBitmapSource * thumbnail) = 0;
    virtual HRESULT STDMETHODCALLTYPE WritePixels(UINT lineCount, UINT stride, UINT bufferSize,
                                                  BYTE * pixels) = 0;
    virtual HRESULT STDMETHODCALLTYPE WriteSource(IWICBitmapSource * source, WICRect * rectangle) = 0;
    virtual HRESULT STDMETHODCALLTYPE Commit() = 0;
    virtual HRESULT STDMETHODCALLTYPE GetMetadataQueryWriter(IWICMetadataQueryWriter *
                                                             *metadataQueryWriter) = 0;
};
__CRT_UUID_DECL(IWICBitmapFrameEncode, 0x00000105, 0xa8f2, 0x4877, 0xba, 0x0a, 0xfd, 0x2b, 0x66, 0x45, 0xfb,
                0x94)

/// Writes a container. A PNG file has one frame: WINCODEC_ERR_UNSUPPORTEDOPERATION for a second.
MIDL_INTERFACE("00000103-a8f2-4877-ba0a-fd2b6645fb94") IWICBitmapEncoder : public IUnknown {
public:
    virtual HRESULT STDMETHODCALLTYPE Initialize(IStream * stream,
                                                 WICBitmapEncoderCacheOption cacheOption) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetContainerFormat(GUID * containerFormat) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetEncoderInfo(IWICBitmapEncoderInfo * *encoderInfo) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetColorContexts(UINT count, IWICColorContext * *colorContext) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetPalette(IWICPalette * palette) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetThumbnail(IWICBitmapSource * thumbnail) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetPreview(IWICBitmapSource * preview) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateNewFrame(IWICBitmapFrameEncode * *frameEncode,
                                                     IPropertyBag2 * *encoderOptions) = 0;
    virtual HRESULT STDMETHODCALLTYPE Commit() = 0;
    virtual HRESULT STDMETHODCALLTYPE GetMetadataQueryWriter(IWICMetadataQueryWriter *
                                                             *metadataQueryWriter) = 0;
};
__CRT_UUID_DECL(IWICBitmapEncoder, 0x00000103, 0xa8f2, 0x4877, 0xba, 0x0a, 0xfd, 0x2b, 0x66, 0x45, 0xfb, 0x94)

/// A stream over another one, over a file or over memory, which must stay as long as the stream. The first
/// Initialize... counts: WINCODEC_ERR_WRONGSTATE for a second, WINCODEC_ERR_NOTINITIALIZED before it.
MIDL_INTERFACE("135ff860-22b7-4ddf-b0f6-218f4f299a43") IWICStream : public IStream {
public:
    virtual HRESULT STDMETHODCALLTYPE InitializeFromIStream(IStream * stream) = 0;
    virtual HRESULT STDMETHODCALLTYPE InitializeFromFilename(LPCWSTR fileName, DWORD accessMode) = 0;
    virtual HRESULT STDMETHODCALLTYPE InitializeFromMemory(BYTE * buffer, DWORD bufferSize) = 0;
    virtual HRESULT STDMETHODCALLTYPE InitializeFromIStreamRegion(IStream * stream, ULARGE_INTEGER offset,
                                                                  ULARGE_INTEGER size) = 0;
};
__CRT_UUID_DECL(IWICStream, 0x135ff860, 0x22b7, 0x4ddf, 0xb0, 0xf6, 0x21, 0x8f, 0x4f, 0x29, 0x9a, 0x43)

/// Makes the objects of imaging. What cannot be made here is E_NOTIMPL. CreateDecoderFromStream finds the
/// format by content: WINCODEC_ERR_COMPONENTNOTFOUND for what is none of PNG, JPEG, GIF, BMP and TIFF.
/// WINCODEC_ERR_IMAGESIZEOUTOFRANGE for a picture that would take too much memory, ahead of decoding.
MIDL_INTERFACE("ec5ec8a9-c395-4314-9c77-54d7a935ff70") IWICImagingFactory : public IUnknown {
public:
    virtual HRESULT STDMETHODCALLTYPE CreateDecoderFromFilename(
        LPCWSTR filename, const GUID* vendor, DWORD desiredAccess, WICDecodeOptions metadataOptions,
        IWICBitmapDecoder** decoder) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateDecoderFromStream(IStream * stream, const GUID* vendor,
                                                              WICDecodeOptions metadataOptions,
                                                              IWICBitmapDecoder** decoder) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateDecoderFromFileHandle(ULONG_PTR file, const GUID* vendor,
                                                                  WICDecodeOptions metadataOptions,
                                                                  IWICBitmapDecoder** decoder) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateComponentInfo(REFCLSID component, IWICComponentInfo * *info) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateDecoder(REFGUID containerFormat, const GUID* vendor,
                                                    IWICBitmapDecoder** decoder) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateEncoder(REFGUID containerFormat, const GUID* vendor,
                                                    IWICBitmapEncoder** encoder) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreatePalette(IWICPalette * *palette) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateFormatConverter(IWICFormatConverter * *formatConverter) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateBitmapScaler(IWICBitmapScaler * *bitmapScaler) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateBitmapClipper(IWICBitmapClipper * *bitmapClipper) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateBitmapFlipRotator(IWICBitmapFlipRotator * *bitmapFlipRotator) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateStream(IWICStream * *stream) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateColorContext(IWICColorContext * *colorContext) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateColorTransformer(IWICColorTransform * *colorTransform) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateBitmap(UINT width, UINT height, REFWICPixelFormatGUID pixelFormat,
                                                   WICBitmapCreateCacheOption option,
                                                   IWICBitmap * *bitmap) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateBitmapFromSource(
        IWICBitmapSource * source, WICBitmapCreateCacheOption option, IWICBitmap * *bitmap) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateBitmapFromSourceRect(
        IWICBitmapSource * source, UINT x, UINT y, UINT width, UINT height, IWICBitmap * *bitmap) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateBitmapFromMemory(
        UINT width, UINT height, REFWICPixelFormatGUID pixelFormat, UINT stride, UINT bufferSize,
        BYTE * buffer, IWICBitmap * *bitmap) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateBitmapFromHBITMAP(
        HBITMAP handle, HPALETTE palette, WICBitmapAlphaChannelOption options, IWICBitmap * *bitmap) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateBitmapFromHICON(HICON icon, IWICBitmap * *bitmap) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateComponentEnumerator(DWORD componentTypes, DWORD options,
                                                                IEnumUnknown * *enumUnknown) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateFastMetadataEncoderFromDecoder(
        IWICBitmapDecoder * decoder, IWICFastMetadataEncoder * *fastEncoder) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateFastMetadataEncoderFromFrameDecode(
        IWICBitmapFrameDecode * frameDecoder, IWICFastMetadataEncoder * *fastEncoder) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateQueryWriter(REFGUID metadataFormat, const GUID* vendor,
                                                        IWICMetadataQueryWriter** queryWriter) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateQueryWriterFromReader(
        IWICMetadataQueryReader * queryReader, const GUID* vendor, IWICMetadataQueryWriter** queryWriter) = 0;
};
__CRT_UUID_DECL(IWICImagingFactory, 0xec5ec8a9, 0xc395, 0x4314, 0x9c, 0x77, 0x54, 0xd7, 0xa9, 0x35, 0xff,
                0x70)
