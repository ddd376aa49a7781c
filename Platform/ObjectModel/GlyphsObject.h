#pragma once

#include "ObjectModel/GlyphRun.h"
#include "ObjectModel/VisualObject.h"

namespace OvPlatform {

/// A run of glyphs on a page.
class GlyphsObject final : public VisualObject<IXpsOMGlyphs> {
public:
    GlyphsObject() noexcept : VisualObject(ElementKind::Glyphs), m_editor(*this) {}
    GlyphsObject(std::shared_ptr<const PageSource> source, std::uint32_t index) noexcept
        : VisualObject(ElementKind::Glyphs, std::move(source), index), m_editor(*this) {}

    /// As the attributes have it.
    GlyphRun Run() const;
    void SetRun(const GlyphRun& run);

    HRESULT STDMETHODCALLTYPE GetUnicodeString(LPWSTR* text) override;
    HRESULT STDMETHODCALLTYPE GetGlyphIndexCount(UINT32* count) override;
    HRESULT STDMETHODCALLTYPE GetGlyphIndices(UINT32* count, XPS_GLYPH_INDEX* indices) override;
    HRESULT STDMETHODCALLTYPE GetGlyphMappingCount(UINT32* count) override;
    HRESULT STDMETHODCALLTYPE GetGlyphMappings(UINT32* count, XPS_GLYPH_MAPPING* mappings) override;
    HRESULT STDMETHODCALLTYPE GetProhibitedCaretStopCount(UINT32* count) override;
    HRESULT STDMETHODCALLTYPE GetProhibitedCaretStops(UINT32* count, UINT32* stops) override;
    HRESULT STDMETHODCALLTYPE GetBidiLevel(UINT32* level) override;
    HRESULT STDMETHODCALLTYPE GetIsSideways(BOOL* isSideways) override;
    HRESULT STDMETHODCALLTYPE GetDeviceFontName(LPWSTR* name) override;
    HRESULT STDMETHODCALLTYPE GetStyleSimulations(XPS_STYLE_SIMULATION* simulations) override;
    HRESULT STDMETHODCALLTYPE SetStyleSimulations(XPS_STYLE_SIMULATION simulations) override;
    HRESULT STDMETHODCALLTYPE GetOrigin(XPS_POINT* origin) override;
    HRESULT STDMETHODCALLTYPE SetOrigin(const XPS_POINT* origin) override;
    HRESULT STDMETHODCALLTYPE GetFontRenderingEmSize(FLOAT* size) override;
    HRESULT STDMETHODCALLTYPE SetFontRenderingEmSize(FLOAT size) override;
    HRESULT STDMETHODCALLTYPE GetFontResource(IXpsOMFontResource** font) override;
    HRESULT STDMETHODCALLTYPE SetFontResource(IXpsOMFontResource* font) override;
    HRESULT STDMETHODCALLTYPE GetFontFaceIndex(SHORT* index) override;
    HRESULT STDMETHODCALLTYPE SetFontFaceIndex(SHORT index) override;
    HRESULT STDMETHODCALLTYPE GetFillBrush(IXpsOMBrush** brush) override;
    HRESULT STDMETHODCALLTYPE GetFillBrushLocal(IXpsOMBrush** brush) override;
    HRESULT STDMETHODCALLTYPE SetFillBrushLocal(IXpsOMBrush* brush) override;
    HRESULT STDMETHODCALLTYPE GetFillBrushLookup(LPWSTR* key) override;
    HRESULT STDMETHODCALLTYPE SetFillBrushLookup(LPCWSTR key) override;
    HRESULT STDMETHODCALLTYPE GetGlyphsEditor(IXpsOMGlyphsEditor** editor) override;
    HRESULT STDMETHODCALLTYPE Clone(IXpsOMGlyphs** glyphs) override;

private:
    /// What is said of a run until it is applied.
    class Editor final : public PartOfElement<IXpsOMGlyphsEditor> {
    public:
        explicit Editor(GlyphsObject& glyphs) noexcept : PartOfElement(glyphs), m_glyphs(glyphs) {}

        /// Forgets what was not applied.
        void Begin();

        HRESULT STDMETHODCALLTYPE ApplyEdits() override;
        HRESULT STDMETHODCALLTYPE GetUnicodeString(LPWSTR* text) override;
        HRESULT STDMETHODCALLTYPE SetUnicodeString(LPCWSTR text) override;
        HRESULT STDMETHODCALLTYPE GetGlyphIndexCount(UINT32* count) override;
        HRESULT STDMETHODCALLTYPE GetGlyphIndices(UINT32* count, XPS_GLYPH_INDEX* indices) override;
        HRESULT STDMETHODCALLTYPE SetGlyphIndices(UINT32 count, const XPS_GLYPH_INDEX* indices) override;
        HRESULT STDMETHODCALLTYPE GetGlyphMappingCount(UINT32* count) override;
        HRESULT STDMETHODCALLTYPE GetGlyphMappings(UINT32* count, XPS_GLYPH_MAPPING* mappings) override;
        HRESULT STDMETHODCALLTYPE SetGlyphMappings(UINT32 count, const XPS_GLYPH_MAPPING* mappings) override;
        HRESULT STDMETHODCALLTYPE GetProhibitedCaretStopCount(UINT32* count) override;
        HRESULT STDMETHODCALLTYPE GetProhibitedCaretStops(UINT32* count, UINT32* stops) override;
        HRESULT STDMETHODCALLTYPE SetProhibitedCaretStops(UINT32 count, const UINT32* stops) override;
        HRESULT STDMETHODCALLTYPE GetBidiLevel(UINT32* level) override;
        HRESULT STDMETHODCALLTYPE SetBidiLevel(UINT32 level) override;
        HRESULT STDMETHODCALLTYPE GetIsSideways(BOOL* isSideways) override;
        HRESULT STDMETHODCALLTYPE SetIsSideways(BOOL isSideways) override;
        HRESULT STDMETHODCALLTYPE GetDeviceFontName(LPWSTR* name) override;
        HRESULT STDMETHODCALLTYPE SetDeviceFontName(LPCWSTR name) override;

    private:
        GlyphsObject& m_glyphs;
        GlyphRun m_run;
    };

    void Prepare() override;
    int FaceIndex() const;
    void SetFont(IXpsOMResource* font, int faceIndex);

    Editor m_editor;
};

} // namespace OvPlatform
