#pragma once

#include <windows.h>

#include <algorithm>
#include <string>
#include <string_view>

/// A context of the display with a font in it.
class SelectedFont {
public:
    explicit SelectedFont(std::wstring_view face, LONG height = -1000, BYTE charset = DEFAULT_CHARSET,
                          LONG weight = FW_NORMAL, bool isItalic = false) {
        LOGFONTW asked = {};
        asked.lfHeight = height;
        asked.lfWeight = weight;
        asked.lfItalic = isItalic;
        asked.lfCharSet = charset;
        asked.lfOutPrecision = OUT_TT_ONLY_PRECIS;
        std::copy_n(face.begin(), std::min<std::size_t>(face.size(), LF_FACESIZE - 1), asked.lfFaceName);
        font = CreateFontIndirectW(&asked);
        before = SelectObject(context, font);
    }
    SelectedFont(const SelectedFont&) = delete;
    SelectedFont& operator=(const SelectedFont&) = delete;
    ~SelectedFont() {
        SelectObject(context, before);
        DeleteObject(font);
        DeleteDC(context);
    }

    [[nodiscard]] std::wstring Face() const {
        std::wstring name(GetTextFaceW(context, 0, nullptr), L'\0');
        GetTextFaceW(context, static_cast<int>(name.size()), name.data());
        if (!name.empty()) name.pop_back();
        return name;
    }
    [[nodiscard]] WORD Glyph(wchar_t unit, DWORD flags = GGI_MARK_NONEXISTING_GLYPHS) const {
        WORD glyph = 0;
        GetGlyphIndicesW(context, &unit, 1, &glyph, flags);
        return glyph;
    }
    [[nodiscard]] LONG Width(std::wstring_view text) const {
        SIZE size = {};
        GetTextExtentPoint32W(context, text.data(), static_cast<int>(text.size()), &size);
        return size.cx;
    }
    /// Empty where there is no such table.
    [[nodiscard]] std::string Data(DWORD table) const {
        const DWORD size = GetFontData(context, table, 0, nullptr, 0);
        std::string data(size == GDI_ERROR ? 0 : size, '\0');
        GetFontData(context, table, 0, data.data(), static_cast<DWORD>(data.size()));
        return data;
    }

    HDC context = CreateDCW(L"display", nullptr, nullptr, nullptr);
    HFONT font = nullptr;
    HGDIOBJ before = nullptr;
};
