#include "ObjectModel/GlyphsObject.h"

#include "Xml/TextConversion.h"

#include <array>
#include <charconv>

namespace OvPlatform {

namespace {

constexpr Words<4> simulationWords = {"None", "ItalicSimulation", "BoldSimulation", "BoldItalicSimulation"};
constexpr const char* fill = "Fill";

template <class Item>
void TakeItems(std::vector<Item>& items, UINT32 count, const Item* from) {
    if (count != 0) RequirePlace(from);
    items.assign(from, from + count);
}

UINT32 CountOf(std::size_t size) noexcept { return static_cast<UINT32>(size); }

// What a run says, and the values that say it: an empty one is none.
constexpr std::array runAttributes = {"UnicodeString", "Indices",    "CaretStops",
                                      "BidiLevel",     "IsSideways", "DeviceFontName"};
using RunTexts = std::array<std::string, runAttributes.size()>;

RunTexts TextsOf(const GlyphRun& run) {
    return {FormatUnicodeString(run.text),
            FormatIndices(run),
            FormatCaretStops(run.prohibitedCaretStops),
            run.bidiLevel == 0 ? "" : std::to_string(run.bidiLevel),
            run.isSideways ? "true" : "",
            ToMarkup(run.deviceFont)};
}

} // namespace

GlyphRun GlyphsObject::Run() const {
    GlyphRun run;
    run.text = ReadUnicodeString(Attribute("UnicodeString").value_or(""));
    ReadIndices(Attribute("Indices").value_or(""), run);
    run.prohibitedCaretStops = ReadCaretStops(Attribute("CaretStops").value_or(""));
    run.bidiLevel = static_cast<UINT32>(std::max(NumberOf(*this, "BidiLevel", 0), 0.0F));
    run.isSideways = Attribute("IsSideways").value_or("") == "true";
    AppendUtf16(run.deviceFont, Attribute("DeviceFontName").value_or(""));
    return run;
}

void GlyphsObject::SetRun(const GlyphRun& run) {
    // All texts ahead of the first that is set: one that cannot stand in markup leaves the run as it was.
    const RunTexts wanted = TextsOf(run);
    const RunTexts known = TextsOf(Run());
    for (std::size_t index = 0; index < wanted.size(); ++index) {
        // What says the same stays, however it was written.
        if (wanted[index] == known[index]) continue;
        if (wanted[index].empty())
            RemoveAttribute(runAttributes[index]);
        else
            SetAttribute(runAttributes[index], wanted[index]);
    }
}

void GlyphsObject::Prepare() {
    if (IsInSource()) return; // it was taken as it was
    if (!Attribute("UnicodeString") && !Attribute("Indices")) throw MarkupFailure(XPS_E_MISSING_GLYPHS);
    if (!Attribute("FontUri")) throw MarkupFailure(XPS_E_MISSING_FONTURI);
    // The format wants these three.
    for (const char* required : {"OriginX", "OriginY", "FontRenderingEmSize"})
        if (!Attribute(required)) SetAttribute(required, std::string("0"));
}

HRESULT GlyphsObject::GetUnicodeString(LPWSTR* text) {
    return ElementCall([&] { GiveTaskText(text, Run().text); });
}
HRESULT GlyphsObject::GetGlyphIndexCount(UINT32* count) {
    return ElementCall([&] { Give(count, CountOf(Run().indices.size())); });
}
HRESULT GlyphsObject::GetGlyphIndices(UINT32* count, XPS_GLYPH_INDEX* indices) {
    return ElementCall([&] { GiveItems(Run().indices, count, indices); });
}
HRESULT GlyphsObject::GetGlyphMappingCount(UINT32* count) {
    return ElementCall([&] { Give(count, CountOf(Run().mappings.size())); });
}
HRESULT GlyphsObject::GetGlyphMappings(UINT32* count, XPS_GLYPH_MAPPING* mappings) {
    return ElementCall([&] { GiveItems(Run().mappings, count, mappings); });
}
HRESULT GlyphsObject::GetProhibitedCaretStopCount(UINT32* count) {
    return ElementCall([&] { Give(count, CountOf(Run().prohibitedCaretStops.size())); });
}
HRESULT GlyphsObject::GetProhibitedCaretStops(UINT32* count, UINT32* stops) {
    return ElementCall([&] { GiveItems(Run().prohibitedCaretStops, count, stops); });
}
HRESULT GlyphsObject::GetBidiLevel(UINT32* level) {
    return ElementCall([&] { Give(level, Run().bidiLevel); });
}
HRESULT GlyphsObject::GetIsSideways(BOOL* isSideways) {
    return ElementCall([&] { Give(isSideways, Run().isSideways); });
}
HRESULT GlyphsObject::GetDeviceFontName(LPWSTR* name) {
    return ElementCall([&] { GiveTaskText(name, Attribute("DeviceFontName")); });
}

HRESULT GlyphsObject::GetStyleSimulations(XPS_STYLE_SIMULATION* simulations) {
    return ElementCall([&] {
        Give(simulations, WordOf(*this, "StyleSimulations", simulationWords, XPS_STYLE_SIMULATION_NONE));
    });
}
HRESULT GlyphsObject::SetStyleSimulations(XPS_STYLE_SIMULATION simulations) {
    return ElementCall([&] { SetWord(*this, "StyleSimulations", simulationWords, simulations); });
}

HRESULT GlyphsObject::GetOrigin(XPS_POINT* origin) {
    return ElementCall([&] {
        Give(origin, XPS_POINT{NumberOf(*this, "OriginX", 0), NumberOf(*this, "OriginY", 0)});
    });
}
HRESULT GlyphsObject::SetOrigin(const XPS_POINT* origin) {
    return ElementCall([&] {
        RequirePlace(origin);
        CheckFinite(origin->x);
        CheckFinite(origin->y);
        SetAttribute("OriginX", FormatNumber(origin->x));
        SetAttribute("OriginY", FormatNumber(origin->y));
    });
}

HRESULT GlyphsObject::GetFontRenderingEmSize(FLOAT* size) {
    return ElementCall([&] { Give(size, NumberOf(*this, "FontRenderingEmSize", 0)); });
}
HRESULT GlyphsObject::SetFontRenderingEmSize(FLOAT size) {
    return ElementCall([&] {
        CheckNotNegative(size);
        SetAttribute("FontRenderingEmSize", FormatNumber(size));
    });
}

HRESULT GlyphsObject::GetFontResource(IXpsOMFontResource** font) {
    return ElementCall([&] {
        RequirePlace(font);
        GiveInterface(Referred("FontUri", ReferenceKind::Whole), font);
    });
}
HRESULT GlyphsObject::SetFontResource(IXpsOMFontResource* font) {
    return ElementCall([&] {
        RequirePlace(font);
        SetFont(font, FaceIndex());
    });
}

HRESULT GlyphsObject::GetFontFaceIndex(SHORT* index) {
    return ElementCall([&] { Give(index, static_cast<SHORT>(FaceIndex())); });
}
HRESULT GlyphsObject::SetFontFaceIndex(SHORT index) {
    return ElementCall([&] {
        if (index < -1) throw MarkupFailure(E_INVALIDARG);
        IXpsOMResource* const font = Referred("FontUri", ReferenceKind::Whole);
        if (font == nullptr) throw MarkupFailure(XPS_E_MISSING_FONTURI);
        SetFont(font, index);
    });
}

// It is the fragment of the font's reference; -1 without one.
int GlyphsObject::FaceIndex() const {
    const std::string uri = Attribute("FontUri").value_or("");
    const std::size_t fragment = uri.find('#');
    int index = -1;
    if (fragment != std::string::npos)
        std::from_chars(uri.data() + fragment + 1, uri.data() + uri.size(), index);
    return index;
}

void GlyphsObject::SetFont(IXpsOMResource* font, int faceIndex) {
    ReferringValue value;
    value.pieces.push_back({"", font});
    if (faceIndex >= 0) value.pieces.push_back({"#" + std::to_string(faceIndex), {}});
    SetAttribute("FontUri", std::move(value));
}

HRESULT GlyphsObject::GetFillBrush(IXpsOMBrush** brush) { return GetValue(*this, fill, brush); }
HRESULT GlyphsObject::GetFillBrushLocal(IXpsOMBrush** brush) { return GetLocalValue(*this, fill, brush); }
HRESULT GlyphsObject::SetFillBrushLocal(IXpsOMBrush* brush) { return SetLocalValue(*this, fill, brush); }
HRESULT GlyphsObject::GetFillBrushLookup(LPWSTR* key) { return GetValueLookup(*this, fill, key); }
HRESULT GlyphsObject::SetFillBrushLookup(LPCWSTR key) { return SetValueLookup(*this, fill, key); }

HRESULT GlyphsObject::GetGlyphsEditor(IXpsOMGlyphsEditor** editor) {
    return ElementCall([&] {
        RequirePlace(editor);
        *editor = nullptr;
        m_editor.Begin();
        m_editor.AddRef();
        *editor = &m_editor;
    });
}

HRESULT GlyphsObject::Clone(IXpsOMGlyphs** glyphs) { return OvPlatform::Clone(*this, glyphs); }

// The editor.

void GlyphsObject::Editor::Begin() { m_run = m_glyphs.Run(); }

HRESULT GlyphsObject::Editor::ApplyEdits() {
    return ElementCall([&] {
        ThrowIfFailed(m_run.Check());
        m_glyphs.SetRun(m_run);
    });
}
HRESULT GlyphsObject::Editor::GetUnicodeString(LPWSTR* text) {
    return ElementCall([&] { GiveTaskText(text, m_run.text); });
}
HRESULT GlyphsObject::Editor::SetUnicodeString(LPCWSTR text) {
    return ElementCall([&] {
        const std::wstring_view wanted = text == nullptr ? std::wstring_view() : text;
        ToMarkup(wanted); // refuses what markup cannot hold
        m_run.text = wanted;
    });
}
HRESULT GlyphsObject::Editor::GetGlyphIndexCount(UINT32* count) {
    return ElementCall([&] { Give(count, CountOf(m_run.indices.size())); });
}
HRESULT GlyphsObject::Editor::GetGlyphIndices(UINT32* count, XPS_GLYPH_INDEX* indices) {
    return ElementCall([&] { GiveItems(m_run.indices, count, indices); });
}
HRESULT GlyphsObject::Editor::SetGlyphIndices(UINT32 count, const XPS_GLYPH_INDEX* indices) {
    return ElementCall([&] {
        for (UINT32 index = 0; indices != nullptr && index < count; ++index) {
            if (indices[index].index < -1 || indices[index].index > 0xFFFF) throw MarkupFailure(E_INVALIDARG);
            CheckFinite(indices[index].advanceWidth);
            CheckFinite(indices[index].horizontalOffset);
            CheckFinite(indices[index].verticalOffset);
        }
        TakeItems(m_run.indices, count, indices);
    });
}
HRESULT GlyphsObject::Editor::GetGlyphMappingCount(UINT32* count) {
    return ElementCall([&] { Give(count, CountOf(m_run.mappings.size())); });
}
HRESULT GlyphsObject::Editor::GetGlyphMappings(UINT32* count, XPS_GLYPH_MAPPING* mappings) {
    return ElementCall([&] { GiveItems(m_run.mappings, count, mappings); });
}
HRESULT GlyphsObject::Editor::SetGlyphMappings(UINT32 count, const XPS_GLYPH_MAPPING* mappings) {
    return ElementCall([&] { TakeItems(m_run.mappings, count, mappings); });
}
HRESULT GlyphsObject::Editor::GetProhibitedCaretStopCount(UINT32* count) {
    return ElementCall([&] { Give(count, CountOf(m_run.prohibitedCaretStops.size())); });
}
HRESULT GlyphsObject::Editor::GetProhibitedCaretStops(UINT32* count, UINT32* stops) {
    return ElementCall([&] { GiveItems(m_run.prohibitedCaretStops, count, stops); });
}
HRESULT GlyphsObject::Editor::SetProhibitedCaretStops(UINT32 count, const UINT32* stops) {
    return ElementCall([&] { TakeItems(m_run.prohibitedCaretStops, count, stops); });
}
HRESULT GlyphsObject::Editor::GetBidiLevel(UINT32* level) {
    return ElementCall([&] { Give(level, m_run.bidiLevel); });
}
HRESULT GlyphsObject::Editor::SetBidiLevel(UINT32 level) {
    return ElementCall([&] { m_run.bidiLevel = level; });
}
HRESULT GlyphsObject::Editor::GetIsSideways(BOOL* isSideways) {
    return ElementCall([&] { Give(isSideways, m_run.isSideways); });
}
HRESULT GlyphsObject::Editor::SetIsSideways(BOOL isSideways) {
    return ElementCall([&] { m_run.isSideways = isSideways; });
}
HRESULT GlyphsObject::Editor::GetDeviceFontName(LPWSTR* name) {
    return ElementCall([&] { GiveTaskText(name, m_run.deviceFont); });
}
HRESULT GlyphsObject::Editor::SetDeviceFontName(LPCWSTR name) {
    return ElementCall([&] { m_run.deviceFont = name == nullptr ? L"" : name; });
}

} // namespace OvPlatform
