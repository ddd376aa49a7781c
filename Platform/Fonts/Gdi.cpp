// The font calls of contexts. Extents are those of the shaped text in its ideal widths, rounded once: what is
// measured here is drawn by devices of a higher resolution, and the rounding of single glyphs would add up.
#include "Com/FaultInjection.h"
#include "Fonts/DeviceContext.h"
#include "Locale/Utf16.h"

#include <algorithm>
#include <cstring>
#include <cwchar>
#include <new>

namespace {

using namespace OvPlatform;

constexpr BYTE isVariablePitch = 0x01; // named for the opposite where it is published
constexpr BYTE isVector = 0x02;
constexpr BYTE isTrueType = 0x04;

constexpr WORD noGlyph = 0xFFFF;

/// Runs a call; where its memory is out, the last error says so and the result is the one for failures.
template <class Result, class Call>
Result OrFailure(Result failure, Call&& call) {
    if (FaultPointHit()) return failure;
    try {
        return call();
    } catch (const std::bad_alloc&) {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return failure;
    }
}

template <class Result>
Result Refuse(DWORD error, Result failure) {
    SetLastError(error);
    return failure;
}

/// The same for calls that ask about the font that is selected.
template <class Result, class Call>
Result WithFont(HDC handle, Result failure, Call&& call) {
    return OrFailure(failure, [&] {
        const auto context = DeviceContext::Find(handle);
        if (!context) return Refuse(ERROR_INVALID_HANDLE, failure);
        const DeviceContext::Selection font = context->Selected();
        return font.choice ? call(font) : Refuse(ERROR_NOT_FOUND, failure);
    });
}

/// The bytes that a tag stands for, in the order of GetFontData; empty if there are none.
struct FontBytes {
    FontBytes(const FontFace& face, DWORD table) {
        constexpr DWORD collection = 0x66637474; // "ttcf"
        if (table == 0) {
            bytes = face.FileOfItsOwn();
        } else if (table == collection) {
            if (face.IsInCollection()) bytes = face.File();
        } else {
            owner = face.Table(__builtin_bswap32(table));
            unsigned length = 0;
            const char* data = hb_blob_get_data(owner.get(), &length);
            bytes = std::as_bytes(std::span(data, length));
        }
    }

    HbBlob owner;
    std::span<const std::byte> bytes;
};

TEXTMETRICW Metrics(const DeviceContext::Selection& font) {
    const FontFace::Design& design = font.choice->face->GetDesign();
    TEXTMETRICW metrics = {};
    metrics.tmAscent = font.Pixels(design.ascent);
    metrics.tmDescent = font.Pixels(design.descent);
    metrics.tmHeight = metrics.tmAscent + metrics.tmDescent;
    metrics.tmInternalLeading = std::max<LONG>(0, metrics.tmHeight - font.Pixels(design.unitsPerEm));
    metrics.tmExternalLeading = font.Pixels(design.lineGap);
    metrics.tmAveCharWidth = font.Pixels(design.averageAdvance);
    metrics.tmMaxCharWidth = font.Pixels(design.maximumAdvance);
    metrics.tmWeight = design.weight;
    metrics.tmDigitizedAspectX = DeviceContext::dotsPerInch;
    metrics.tmDigitizedAspectY = DeviceContext::dotsPerInch;
    metrics.tmFirstChar = design.firstCharacter;
    metrics.tmLastChar = design.lastCharacter;
    metrics.tmDefaultChar = design.defaultCharacter;
    metrics.tmBreakChar = design.breakCharacter;
    metrics.tmItalic = design.isItalic ? 0xFF : 0;
    metrics.tmPitchAndFamily =
        static_cast<BYTE>(isVector | isTrueType | (design.isFixedPitch ? 0 : isVariablePitch));
    metrics.tmCharSet = font.charset == DEFAULT_CHARSET ? ANSI_CHARSET : font.charset;
    return metrics;
}

} // namespace

HDC CreateDCW(LPCWSTR driver, LPCWSTR, LPCWSTR, const DEVMODEW*) {
    return OrFailure(HDC{}, [&] {
        if (driver == nullptr || _wcsicmp(driver, L"DISPLAY") != 0)
            return Refuse(ERROR_INVALID_PARAMETER, HDC{});
        return static_cast<HDC>(HandleTable::Open(std::make_shared<DeviceContext>()));
    });
}

// What gives up or puts back has no fault point: nobody could do anything about it.

BOOL DeleteDC(HDC hdc) {
    if (!DeviceContext::Find(hdc)) return Refuse(ERROR_INVALID_HANDLE, FALSE);
    return HandleTable::Close(hdc);
}

BOOL DeleteObject(HGDIOBJ object) {
    const auto font = HandleTable::FindAs<FontObject>(object);
    if (!font || font->IsStock() || font->selections > 0) return Refuse(ERROR_INVALID_HANDLE, FALSE);
    return HandleTable::Close(object);
}

HGDIOBJ SelectObject(HDC hdc, HGDIOBJ object) {
    const auto select = [&] {
        const auto context = DeviceContext::Find(hdc);
        return context ? context->Select(object) : Refuse(ERROR_INVALID_HANDLE, HGDIOBJ{});
    };
    const auto font = HandleTable::FindAs<FontObject>(object);
    return font && font->IsStock() ? select() : OrFailure(HGDIOBJ{}, select);
}

int GetDeviceCaps(HDC hdc, int index) {
    return OrFailure(0, [&] {
        if (!DeviceContext::Find(hdc)) return Refuse(ERROR_INVALID_HANDLE, 0);
        return index == LOGPIXELSX || index == LOGPIXELSY ? DeviceContext::dotsPerInch : 0;
    });
}

HFONT CreateFontIndirectW(const LOGFONTW* asked) {
    return OrFailure(HFONT{}, [&] {
        if (asked == nullptr) return Refuse(ERROR_INVALID_PARAMETER, HFONT{});
        return static_cast<HFONT>(HandleTable::Open(std::make_shared<FontObject>(*asked, false)));
    });
}

int GetTextFaceW(HDC hdc, int capacity, LPWSTR buffer) {
    return WithFont(hdc, 0, [&](const DeviceContext::Selection& font) {
        const std::wstring_view name = font.choice->name;
        const int needed = static_cast<int>(name.size()) + 1;
        if (buffer == nullptr) return needed;
        if (capacity <= 0) return Refuse(ERROR_INVALID_PARAMETER, 0);
        const int copied = std::min(needed, capacity);
        CopyText(name.substr(0, static_cast<std::size_t>(copied) - 1), buffer, capacity);
        return copied;
    });
}

DWORD GetGlyphIndicesW(HDC hdc, LPCWSTR text, int count, LPWORD glyphs, DWORD flags) {
    return WithFont(hdc, GDI_ERROR, [&](const DeviceContext::Selection& font) {
        if (text == nullptr || glyphs == nullptr || count < 0)
            return Refuse(ERROR_INVALID_PARAMETER, GDI_ERROR);
        const WORD missing = (flags & GGI_MARK_NONEXISTING_GLYPHS) != 0 ? noGlyph : 0;
        std::transform(text, text + count, glyphs, [&](wchar_t unit) {
            const std::uint32_t glyph = font.choice->face->Glyph(static_cast<std::uint16_t>(unit));
            return glyph != 0 ? static_cast<WORD>(glyph) : missing;
        });
        return static_cast<DWORD>(count);
    });
}

DWORD GetFontData(HDC hdc, DWORD table, DWORD offset, PVOID buffer, DWORD capacity) {
    return WithFont(hdc, GDI_ERROR, [&](const DeviceContext::Selection& font) {
        const FontBytes data(*font.choice->face, table);
        if (data.bytes.empty() || data.bytes.size() >= GDI_ERROR || offset > data.bytes.size())
            return Refuse(ERROR_INVALID_PARAMETER, GDI_ERROR);
        const auto rest = data.bytes.subspan(offset);
        if (buffer == nullptr) return static_cast<DWORD>(rest.size());
        const std::size_t copied = std::min<std::size_t>(rest.size(), capacity);
        std::memcpy(buffer, rest.data(), copied);
        return static_cast<DWORD>(copied);
    });
}

BOOL GetTextExtentPoint32W(HDC hdc, LPCWSTR text, int count, LPSIZE size) {
    return WithFont(hdc, FALSE, [&](const DeviceContext::Selection& font) {
        if (size == nullptr || count < 0 || (text == nullptr && count > 0))
            return Refuse(ERROR_INVALID_PARAMETER, FALSE);
        const std::wstring_view units(text, static_cast<std::size_t>(count));
        *size = {font.Pixels(font.choice->face->Width(units)), Metrics(font).tmHeight};
        return TRUE;
    });
}

BOOL GetTextMetricsW(HDC hdc, LPTEXTMETRICW metrics) {
    return WithFont(hdc, FALSE, [&](const DeviceContext::Selection& font) {
        if (metrics == nullptr) return Refuse(ERROR_INVALID_PARAMETER, FALSE);
        *metrics = Metrics(font);
        return TRUE;
    });
}
