#pragma once

// The families that the system has fonts of, under the name of the SDK's header. Interfaces stand in their
// published slots; those that nobody here asks for are named only.

#include <windows.h>
#include <unknwn.h>

enum DWRITE_FACTORY_TYPE { DWRITE_FACTORY_TYPE_SHARED = 0, DWRITE_FACTORY_TYPE_ISOLATED = 1 };
enum DWRITE_FONT_FACE_TYPE {
    DWRITE_FONT_FACE_TYPE_CFF = 0,
    DWRITE_FONT_FACE_TYPE_TRUETYPE = 1,
    DWRITE_FONT_FACE_TYPE_OPENTYPE_COLLECTION = 2,
    DWRITE_FONT_FACE_TYPE_TYPE1 = 3,
    DWRITE_FONT_FACE_TYPE_VECTOR = 4,
    DWRITE_FONT_FACE_TYPE_BITMAP = 5,
    DWRITE_FONT_FACE_TYPE_UNKNOWN = 6,
    DWRITE_FONT_FACE_TYPE_RAW_CFF = 7
};
enum DWRITE_FONT_WEIGHT { DWRITE_FONT_WEIGHT_NORMAL = 400, DWRITE_FONT_WEIGHT_BOLD = 700 };
enum DWRITE_FONT_STRETCH { DWRITE_FONT_STRETCH_UNDEFINED = 0, DWRITE_FONT_STRETCH_NORMAL = 5 };
enum DWRITE_FONT_STYLE {
    DWRITE_FONT_STYLE_NORMAL = 0,
    DWRITE_FONT_STYLE_OBLIQUE = 1,
    DWRITE_FONT_STYLE_ITALIC = 2
};
enum DWRITE_FONT_SIMULATIONS { DWRITE_FONT_SIMULATIONS_NONE = 0 };
enum DWRITE_PIXEL_GEOMETRY { DWRITE_PIXEL_GEOMETRY_FLAT = 0 };
enum DWRITE_RENDERING_MODE { DWRITE_RENDERING_MODE_DEFAULT = 0 };
enum DWRITE_MEASURING_MODE { DWRITE_MEASURING_MODE_NATURAL = 0 };
enum DWRITE_NUMBER_SUBSTITUTION_METHOD { DWRITE_NUMBER_SUBSTITUTION_METHOD_FROM_CULTURE = 0 };

struct DWRITE_MATRIX;
struct DWRITE_GLYPH_RUN;
struct HMONITOR__;

struct IDWriteFont;
struct IDWriteFontCollection;
struct IDWriteFontCollectionLoader;
struct IDWriteFontFace;
struct IDWriteFontFamily;
struct IDWriteFontFile;
struct IDWriteFontFileLoader;
struct IDWriteGdiInterop;
struct IDWriteGlyphRunAnalysis;
struct IDWriteInlineObject;
struct IDWriteNumberSubstitution;
struct IDWriteRenderingParams;
struct IDWriteTextAnalyzer;
struct IDWriteTextFormat;
struct IDWriteTextLayout;
struct IDWriteTypography;

// A text in several languages. Lengths are without the terminator, sizes with it.
MIDL_INTERFACE("08256209-099a-4b34-b86d-c22b110e7771") IDWriteLocalizedStrings : public IUnknown {
public:
    virtual UINT32 STDMETHODCALLTYPE GetCount() = 0;
    // Without regard to case. Where there is none, S_OK, FALSE and an index of all bits.
    virtual HRESULT STDMETHODCALLTYPE FindLocaleName(const WCHAR* localeName, UINT32* index,
                                                     BOOL* exists) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetLocaleNameLength(UINT32 index, UINT32 * length) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetLocaleName(UINT32 index, WCHAR * localeName, UINT32 size) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetStringLength(UINT32 index, UINT32 * length) = 0;
    // E_NOT_SUFFICIENT_BUFFER if the text and its terminator do not fit.
    virtual HRESULT STDMETHODCALLTYPE GetString(UINT32 index, WCHAR * buffer, UINT32 size) = 0;
};
__CRT_UUID_DECL(IDWriteLocalizedStrings, 0x08256209, 0x099a, 0x4b34, 0xb8, 0x6d, 0xc2, 0x2b, 0x11, 0x0e, 0x77,
                0x71)

MIDL_INTERFACE("a84cee02-3eea-4eee-a827-87c1a02a0fcc") IDWriteFontCollection : public IUnknown {
public:
    virtual UINT32 STDMETHODCALLTYPE GetFontFamilyCount() = 0;
    virtual HRESULT STDMETHODCALLTYPE GetFontFamily(UINT32 index, IDWriteFontFamily * *family) = 0;
    // By any of a family's names, without regard to case.
    virtual HRESULT STDMETHODCALLTYPE FindFamilyName(const WCHAR* name, UINT32* index, BOOL* exists) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetFontFromFontFace(IDWriteFontFace * face, IDWriteFont * *font) = 0;
};
__CRT_UUID_DECL(IDWriteFontCollection, 0xa84cee02, 0x3eea, 0x4eee, 0xa8, 0x27, 0x87, 0xc1, 0xa0, 0x2a, 0x0f,
                0xcc)

MIDL_INTERFACE("1a0d8438-1d97-4ec1-aef9-a2fb86ed6acb") IDWriteFontList : public IUnknown {
public:
    virtual HRESULT STDMETHODCALLTYPE GetFontCollection(IDWriteFontCollection * *collection) = 0;
    virtual UINT32 STDMETHODCALLTYPE GetFontCount() = 0;
    virtual HRESULT STDMETHODCALLTYPE GetFont(UINT32 index, IDWriteFont * *font) = 0;
};
__CRT_UUID_DECL(IDWriteFontList, 0x1a0d8438, 0x1d97, 0x4ec1, 0xae, 0xf9, 0xa2, 0xfb, 0x86, 0xed, 0x6a, 0xcb)

MIDL_INTERFACE("da20d8ef-812a-4c43-9802-62ec4abd7add") IDWriteFontFamily : public IDWriteFontList {
public:
    virtual HRESULT STDMETHODCALLTYPE GetFamilyNames(IDWriteLocalizedStrings * *names) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetFirstMatchingFont(DWRITE_FONT_WEIGHT weight,
                                                           DWRITE_FONT_STRETCH stretch,
                                                           DWRITE_FONT_STYLE style, IDWriteFont * *font) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetMatchingFonts(DWRITE_FONT_WEIGHT weight, DWRITE_FONT_STRETCH stretch,
                                                       DWRITE_FONT_STYLE style, IDWriteFontList * *fonts) = 0;
};
__CRT_UUID_DECL(IDWriteFontFamily, 0xda20d8ef, 0x812a, 0x4c43, 0x98, 0x02, 0x62, 0xec, 0x4a, 0xbd, 0x7a, 0xdd)

// Of the factory, the system's collection is built here; the other calls answer E_NOTIMPL.
MIDL_INTERFACE("b859ee5a-d838-4b5b-a2e8-1adc7d93db48") IDWriteFactory : public IUnknown {
public:
    // Families by their first name, compared ordinally without regard to case.
    virtual HRESULT STDMETHODCALLTYPE GetSystemFontCollection(IDWriteFontCollection * *collection,
                                                              BOOL checkForUpdates = FALSE) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateCustomFontCollection(IDWriteFontCollectionLoader * loader,
                                                                 const void* key, UINT32 keySize,
                                                                 IDWriteFontCollection** collection) = 0;
    virtual HRESULT STDMETHODCALLTYPE RegisterFontCollectionLoader(IDWriteFontCollectionLoader * loader) = 0;
    virtual HRESULT STDMETHODCALLTYPE UnregisterFontCollectionLoader(IDWriteFontCollectionLoader *
                                                                     loader) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateFontFileReference(const WCHAR* path, const FILETIME* writeTime,
                                                              IDWriteFontFile** file) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateCustomFontFileReference(
        const void* key, UINT32 keySize, IDWriteFontFileLoader* loader, IDWriteFontFile** file) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateFontFace(
        DWRITE_FONT_FACE_TYPE type, UINT32 fileCount, IDWriteFontFile* const* files, UINT32 index,
        DWRITE_FONT_SIMULATIONS simulations, IDWriteFontFace** face) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateRenderingParams(IDWriteRenderingParams * *parameters) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateMonitorRenderingParams(HMONITOR__ * monitor,
                                                                   IDWriteRenderingParams * *parameters) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateCustomRenderingParams(
        FLOAT gamma, FLOAT enhancedContrast, FLOAT clearTypeLevel, DWRITE_PIXEL_GEOMETRY geometry,
        DWRITE_RENDERING_MODE mode, IDWriteRenderingParams * *parameters) = 0;
    virtual HRESULT STDMETHODCALLTYPE RegisterFontFileLoader(IDWriteFontFileLoader * loader) = 0;
    virtual HRESULT STDMETHODCALLTYPE UnregisterFontFileLoader(IDWriteFontFileLoader * loader) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateTextFormat(const WCHAR* family, IDWriteFontCollection* collection,
                                                       DWRITE_FONT_WEIGHT weight, DWRITE_FONT_STYLE style,
                                                       DWRITE_FONT_STRETCH stretch, FLOAT size,
                                                       const WCHAR* locale, IDWriteTextFormat** format) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateTypography(IDWriteTypography * *typography) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetGdiInterop(IDWriteGdiInterop * *interop) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateTextLayout(const WCHAR* text, UINT32 length,
                                                       IDWriteTextFormat* format, FLOAT maximumWidth,
                                                       FLOAT maximumHeight, IDWriteTextLayout** layout) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateGdiCompatibleTextLayout(
        const WCHAR* text, UINT32 length, IDWriteTextFormat* format, FLOAT width, FLOAT height,
        FLOAT pixelsPerDip, const DWRITE_MATRIX* transform, BOOL useGdiNatural,
        IDWriteTextLayout** layout) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateEllipsisTrimmingSign(IDWriteTextFormat * format,
                                                                 IDWriteInlineObject * *sign) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateTextAnalyzer(IDWriteTextAnalyzer * *analyzer) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateNumberSubstitution(DWRITE_NUMBER_SUBSTITUTION_METHOD method,
                                                               const WCHAR* locale, BOOL ignoreUserOverride,
                                                               IDWriteNumberSubstitution** substitution) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateGlyphRunAnalysis(
        const DWRITE_GLYPH_RUN* run, FLOAT pixelsPerDip, const DWRITE_MATRIX* transform,
        DWRITE_RENDERING_MODE renderingMode, DWRITE_MEASURING_MODE measuringMode, FLOAT baselineX,
        FLOAT baselineY, IDWriteGlyphRunAnalysis** analysis) = 0;
};
__CRT_UUID_DECL(IDWriteFactory, 0xb859ee5a, 0xd838, 0x4b5b, 0xa2, 0xe8, 0x1a, 0xdc, 0x7d, 0x93, 0xdb, 0x48)

EXTERN_C WINBASEAPI HRESULT WINAPI DWriteCreateFactory(DWRITE_FACTORY_TYPE factoryType, REFIID iid,
                                                       IUnknown** factory);
