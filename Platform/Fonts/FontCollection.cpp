// The system's families, as programs that draw text ask for them.
#include "Com/CountedObject.h"
#include "Com/Guarded.h"
#include "Fonts/SystemFonts.h"
#include "Locale/CharacterCase.h"
#include "Locale/Utf16.h"

#include <atlcomcli.h>
#include <dwrite.h>

#include <algorithm>
#include <new>

template <>
struct OvPlatform::ExtendedInterface<IDWriteFontFamily> {
    using Type = IDWriteFontList;
};

namespace {

using namespace OvPlatform;

constexpr UINT32 noIndex = 0xFFFFFFFF;

using Names = std::vector<SystemFonts::Name>;

bool AreEqualOrdinally(std::wstring_view left, std::wstring_view right) {
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](wchar_t one, wchar_t other) { return SimpleUpper(one) == SimpleUpper(other); });
}

/// The index of the first that is so, as the calls that find report it.
template <class Range, class IsWanted>
HRESULT FindFirst(const Range& range, UINT32* index, BOOL* exists, IsWanted&& isWanted) {
    const auto found = std::find_if(range.begin(), range.end(), isWanted);
    *exists = found != range.end();
    *index = *exists ? static_cast<UINT32>(found - range.begin()) : noIndex;
    return S_OK;
}

/// Hands out a new object, whose one reference is the caller's.
template <class Object, class Interface, class... Arguments>
HRESULT HandOut(Interface** out, Arguments&&... arguments) {
    if (out == nullptr) return E_POINTER;
    *out = nullptr;
    return Guarded([&] {
        *out = new Object(std::forward<Arguments>(arguments)...);
        return S_OK;
    });
}

// The names live as long as the process: the system's fonts are collected once.
class LocalizedStrings final : public CountedObject<IDWriteLocalizedStrings> {
public:
    explicit LocalizedStrings(const Names& names) : m_names(names) {}

    UINT32 STDMETHODCALLTYPE GetCount() override { return static_cast<UINT32>(m_names.size()); }
    HRESULT STDMETHODCALLTYPE FindLocaleName(const WCHAR* locale, UINT32* index, BOOL* exists) override {
        if (locale == nullptr || index == nullptr || exists == nullptr) return E_POINTER;
        return Guarded([&] {
            return FindFirst(m_names, index, exists, [locale](const SystemFonts::Name& name) {
                return AreEqualOrdinally(name.language, locale);
            });
        });
    }
    HRESULT STDMETHODCALLTYPE GetLocaleNameLength(UINT32 index, UINT32* length) override {
        return Length(index, length, &SystemFonts::Name::language);
    }
    HRESULT STDMETHODCALLTYPE GetLocaleName(UINT32 index, WCHAR* buffer, UINT32 size) override {
        return Copy(index, buffer, size, &SystemFonts::Name::language);
    }
    HRESULT STDMETHODCALLTYPE GetStringLength(UINT32 index, UINT32* length) override {
        return Length(index, length, &SystemFonts::Name::text);
    }
    HRESULT STDMETHODCALLTYPE GetString(UINT32 index, WCHAR* buffer, UINT32 size) override {
        return Copy(index, buffer, size, &SystemFonts::Name::text);
    }

private:
    using Text = std::wstring SystemFonts::Name::*;

    HRESULT Length(UINT32 index, UINT32* length, Text text) const {
        if (length == nullptr) return E_POINTER;
        *length = noIndex;
        return Guarded([&]() -> HRESULT {
            if (index >= m_names.size()) return E_FAIL;
            *length = static_cast<UINT32>((m_names[index].*text).size());
            return S_OK;
        });
    }
    HRESULT Copy(UINT32 index, WCHAR* buffer, UINT32 size, Text text) const {
        if (buffer == nullptr) return E_POINTER;
        if (size > 0) *buffer = L'\0';
        return Guarded([&]() -> HRESULT {
            if (index >= m_names.size()) return E_FAIL;
            return CopyText(m_names[index].*text, buffer, size) ? S_OK : E_NOT_SUFFICIENT_BUFFER;
        });
    }

    const Names& m_names;
};

class FontFamily final : public CountedObject<IDWriteFontFamily> {
public:
    explicit FontFamily(const SystemFonts::Family& family) : m_family(family) {}

    HRESULT STDMETHODCALLTYPE GetFontCollection(IDWriteFontCollection** collection) override;
    // Deliberate: single fonts are not told here, only families and their names.
    UINT32 STDMETHODCALLTYPE GetFontCount() override { return 0; }
    HRESULT STDMETHODCALLTYPE GetFont(UINT32, IDWriteFont**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetFamilyNames(IDWriteLocalizedStrings** names) override {
        return HandOut<LocalizedStrings>(names, m_family.names);
    }
    HRESULT STDMETHODCALLTYPE GetFirstMatchingFont(DWRITE_FONT_WEIGHT, DWRITE_FONT_STRETCH, DWRITE_FONT_STYLE,
                                                   IDWriteFont**) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE GetMatchingFonts(DWRITE_FONT_WEIGHT, DWRITE_FONT_STRETCH, DWRITE_FONT_STYLE,
                                               IDWriteFontList**) override {
        return E_NOTIMPL;
    }

private:
    const SystemFonts::Family& m_family;
};

class FontCollection final : public CountedObject<IDWriteFontCollection> {
public:
    FontCollection() : m_families(SystemFonts::Instance().Families()) {}

    UINT32 STDMETHODCALLTYPE GetFontFamilyCount() override { return static_cast<UINT32>(m_families.size()); }
    HRESULT STDMETHODCALLTYPE GetFontFamily(UINT32 index, IDWriteFontFamily** family) override {
        if (family == nullptr) return E_POINTER;
        *family = nullptr;
        if (index >= m_families.size()) return E_FAIL;
        return HandOut<FontFamily>(family, m_families[index]);
    }
    HRESULT STDMETHODCALLTYPE FindFamilyName(const WCHAR* name, UINT32* index, BOOL* exists) override {
        if (name == nullptr || index == nullptr || exists == nullptr) return E_POINTER;
        return Guarded([&] {
            return FindFirst(m_families, index, exists, [name](const SystemFonts::Family& family) {
                return std::any_of(
                    family.names.begin(), family.names.end(),
                    [name](const SystemFonts::Name& own) { return AreEqualOrdinally(own.text, name); });
            });
        });
    }
    HRESULT STDMETHODCALLTYPE GetFontFromFontFace(IDWriteFontFace*, IDWriteFont**) override {
        return E_NOTIMPL;
    }

private:
    const std::vector<SystemFonts::Family>& m_families;
};

HRESULT FontFamily::GetFontCollection(IDWriteFontCollection** collection) {
    return HandOut<FontCollection>(collection);
}

class Factory final : public CountedObject<IDWriteFactory> {
public:
    HRESULT STDMETHODCALLTYPE GetSystemFontCollection(IDWriteFontCollection** collection, BOOL) override {
        return HandOut<FontCollection>(collection);
    }

    HRESULT STDMETHODCALLTYPE CreateCustomFontCollection(IDWriteFontCollectionLoader*, const void*, UINT32,
                                                         IDWriteFontCollection**) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE RegisterFontCollectionLoader(IDWriteFontCollectionLoader*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE UnregisterFontCollectionLoader(IDWriteFontCollectionLoader*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE CreateFontFileReference(const WCHAR*, const FILETIME*,
                                                      IDWriteFontFile**) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE CreateCustomFontFileReference(const void*, UINT32, IDWriteFontFileLoader*,
                                                            IDWriteFontFile**) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE CreateFontFace(DWRITE_FONT_FACE_TYPE, UINT32, IDWriteFontFile* const*, UINT32,
                                             DWRITE_FONT_SIMULATIONS, IDWriteFontFace**) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE CreateRenderingParams(IDWriteRenderingParams**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE CreateMonitorRenderingParams(HMONITOR__*, IDWriteRenderingParams**) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE CreateCustomRenderingParams(FLOAT, FLOAT, FLOAT, DWRITE_PIXEL_GEOMETRY,
                                                          DWRITE_RENDERING_MODE,
                                                          IDWriteRenderingParams**) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE RegisterFontFileLoader(IDWriteFontFileLoader*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE UnregisterFontFileLoader(IDWriteFontFileLoader*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE CreateTextFormat(const WCHAR*, IDWriteFontCollection*, DWRITE_FONT_WEIGHT,
                                               DWRITE_FONT_STYLE, DWRITE_FONT_STRETCH, FLOAT, const WCHAR*,
                                               IDWriteTextFormat**) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE CreateTypography(IDWriteTypography**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetGdiInterop(IDWriteGdiInterop**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE CreateTextLayout(const WCHAR*, UINT32, IDWriteTextFormat*, FLOAT, FLOAT,
                                               IDWriteTextLayout**) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE CreateGdiCompatibleTextLayout(const WCHAR*, UINT32, IDWriteTextFormat*, FLOAT,
                                                            FLOAT, FLOAT, const DWRITE_MATRIX*, BOOL,
                                                            IDWriteTextLayout**) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE CreateEllipsisTrimmingSign(IDWriteTextFormat*, IDWriteInlineObject**) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE CreateTextAnalyzer(IDWriteTextAnalyzer**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE CreateNumberSubstitution(DWRITE_NUMBER_SUBSTITUTION_METHOD, const WCHAR*, BOOL,
                                                       IDWriteNumberSubstitution**) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE CreateGlyphRunAnalysis(const DWRITE_GLYPH_RUN*, FLOAT, const DWRITE_MATRIX*,
                                                     DWRITE_RENDERING_MODE, DWRITE_MEASURING_MODE, FLOAT,
                                                     FLOAT, IDWriteGlyphRunAnalysis**) override {
        return E_NOTIMPL;
    }
};

} // namespace

HRESULT DWriteCreateFactory(DWRITE_FACTORY_TYPE type, REFIID iid, IUnknown** factory) {
    if (factory == nullptr) return E_POINTER;
    *factory = nullptr;
    if (type != DWRITE_FACTORY_TYPE_SHARED && type != DWRITE_FACTORY_TYPE_ISOLATED) return E_INVALIDARG;
    // It has nothing of its own, so that a shared one need not be the same object.
    CComPtr<IDWriteFactory> made;
    const HRESULT result = HandOut<Factory>(&made);
    return FAILED(result) ? result : made->QueryInterface(iid, reinterpret_cast<void**>(factory));
}
