#include "FontsAndImages/GdiDeviceContext.h"

#include "ComSupport/HresultHelpers.h"
#include "FontsAndImages/SelectedFont.h"

#include <windows.h>
#include <atlcomcli.h>
#include <dwrite.h>
#include <t2embapi.h>
#include <utf16units.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <iterator>
#include <limits>
#include <new>
#include <string>
#include <string_view>
#include <vector>

namespace {

// Declared here, since headers differ in the type of the callback's bytes, and some lack the function.
using WriteEmbedded = ULONG(WINAPIV*)(void* stream, const void* bytes, ULONG count);
using EmbedFont = LONG(WINAPI*)(HDC context, ULONG flags, ULONG charset, ULONG* privilege, ULONG* status,
                                WriteEmbedded write, void* stream, USHORT* text, USHORT length,
                                USHORT language, TTEMBEDINFO* binding);
constexpr ULONG embedRawSubset = 0x1;

constexpr unsigned short noMember = 0xFFFF;
constexpr WORD noGlyph = 0xFFFF;
constexpr DWORD collectionTag = 0x66637474; // "ttcf", its first letter in the lowest byte

ULONG WINAPIV TTEmbedFontWriteToByteBufferCallback(void* stream, const void* bytes, ULONG count) {
    try {
        static_cast<ByteBuffer*>(stream)->appendLpbyte(static_cast<const unsigned char*>(bytes), count);
        return count;
    } catch (const std::bad_alloc&) {
        return 0; // what is not taken fails the call
    }
}

class LoadedLibrary {
public:
    explicit LoadedLibrary(const wchar_t* name) : m_module(LoadLibraryW(name)) {}
    LoadedLibrary(const LoadedLibrary&) = delete;
    LoadedLibrary& operator=(const LoadedLibrary&) = delete;
    ~LoadedLibrary() {
        if (m_module != nullptr) FreeLibrary(m_module);
    }

    template <class Function>
    Function Find(const char* name) const {
        if (m_module == nullptr) return nullptr;
        return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(m_module, name)));
    }

private:
    HMODULE m_module;
};

/// An em of so many points, in whole pixels.
std::int64_t Pixels(int pointSize, int dotsPerInch) { return std::int64_t{pointSize} * dotsPerInch / 72; }

HRESULT LastFailure() {
    const HRESULT result = GetLastErrorAsHResult();
    return FAILED(result) ? result : E_FAIL; // GDI does not always say what went wrong
}

std::uint32_t LittleEndian32(const unsigned char* bytes) {
    return bytes[0] | bytes[1] << 8 | bytes[2] << 16 | static_cast<std::uint32_t>(bytes[3]) << 24;
}
std::uint32_t BigEndian32(const unsigned char* bytes) {
    return static_cast<std::uint32_t>(bytes[0]) << 24 | bytes[1] << 16 | bytes[2] << 8 | bytes[3];
}
std::uint16_t BigEndian16(const unsigned char* bytes) {
    return static_cast<std::uint16_t>(bytes[0] << 8 | bytes[1]);
}

/// The units as the embedding call takes them; empty for a text that is too long for it.
std::vector<USHORT> UnitsToEmbed(std::wstring_view text) {
    constexpr std::size_t maximum = std::numeric_limits<USHORT>::max();
    OvPlatform::Utf16::DifferentCharacters different;
    if (text.size() > maximum) {
        different.Add(text);
        text = different.Text();
    }
    if (text.size() > maximum) return {};
    std::vector<USHORT> units;
    units.reserve(text.size());
    std::transform(text.begin(), text.end(), std::back_inserter(units),
                   [](wchar_t unit) { return static_cast<USHORT>(unit); });
    return units;
}

ByteBuffer FontData(HDC context, DWORD table) {
    const DWORD size = ::GetFontData(context, table, 0, nullptr, 0);
    if (size == GDI_ERROR || size == 0) return {};
    ByteBuffer data(size);
    if (::GetFontData(context, table, 0, data.data(), size) != size) data.clear();
    return data;
}

/// In American English if there is such a name, otherwise the first; empty on failure.
CXString FamilyName(IDWriteFontCollection& collection, UINT32 index) {
    CComPtr<IDWriteFontFamily> family;
    CComPtr<IDWriteLocalizedStrings> names;
    if (FAILED(collection.GetFontFamily(index, &family)) || FAILED(family->GetFamilyNames(&names))) return {};
    UINT32 name = 0;
    BOOL exists = FALSE;
    if (FAILED(names->FindLocaleName(L"en-us", &name, &exists))) return {};
    if (!exists) name = 0;
    UINT32 length = 0;
    if (FAILED(names->GetStringLength(name, &length))) return {};
    std::wstring text(std::size_t{length} + 1, L'\0');
    if (FAILED(names->GetString(name, text.data(), length + 1))) return {};
    text.resize(length);
    return CXString(std::move(text));
}

CComPtr<IDWriteFontCollection> SystemFontCollection() {
    CComPtr<IUnknown> unknown;
    CComPtr<IDWriteFactory> factory;
    CComPtr<IDWriteFontCollection> collection;
    if (FAILED(DWriteCreateFactory(DWRITE_FACTORY_TYPE_SHARED, __uuidof(IDWriteFactory), &unknown)))
        return {};
    if (FAILED(unknown->QueryInterface(__uuidof(IDWriteFactory), reinterpret_cast<void**>(&factory))))
        return {};
    if (FAILED(factory->GetSystemFontCollection(&collection, FALSE))) return {};
    return collection;
}

} // namespace

GdiDeviceContext::~GdiDeviceContext() {
    UnSetAndDeleteFont();
    if (m_deviceContext != nullptr) DeleteDC(m_deviceContext);
}

ByteBuffer GdiDeviceContext::GetFontSubset(const CXString& face, int charset, int pointSize, CXString& text) {
    ByteBuffer data;
    const LoadedLibrary library(L"T2Embed.dll");
    const auto embedFont = library.Find<EmbedFont>("TTEmbedFont");
    if (embedFont == nullptr) return data;
    std::vector<USHORT> units = UnitsToEmbed(text.View());
    if (units.empty() && !text.IsEmpty()) return data;
    if (FAILED(CreateAndSetFont(face, charset, pointSize))) return data;
    ULONG privilege = 0;
    ULONG status = 0;
    const LONG failure = embedFont(m_deviceContext, embedRawSubset, CHARSET_UNICODE, &privilege, &status,
                                   TTEmbedFontWriteToByteBufferCallback, &data, units.data(),
                                   static_cast<USHORT>(units.size()), 0, nullptr);
    if (failure != 0) data.clear();
    UnSetAndDeleteFont();
    ConvertEmbeddedOpenTypeDataToTtf(data);
    return data;
}

CXString GdiDeviceContext::FindBestFontForDisplayingString(CXString& text, CXString& preferredFace) {
    if (CanFontDisplayString(text, preferredFace)) return preferredFace;
    const CComPtr<IDWriteFontCollection> collection = SystemFontCollection();
    if (!collection) return preferredFace;
    const UINT32 count = collection->GetFontFamilyCount();
    for (UINT32 index = 0; index < count; ++index) {
        CXString family = FamilyName(*collection, index);
        if (family.IsEmpty()) break;
        if (CanFontDisplayString(text, family)) return family;
    }
    return preferredFace;
}

bool GdiDeviceContext::CanFontDisplayString(const CXString& text, const CXString& face) {
    const HDC context = GetDeviceContext();
    if (context == nullptr) return false;
    const int dots = GetDeviceCaps(context, LOGPIXELSY);
    const SelectedFont font(context, AskedFont(face, DEFAULT_CHARSET, Pixels(9, dots)));
    if (!font.IsSelected()) return false;
    // Piece by piece, since most faces lack the first character that they lack early.
    std::array<WORD, 256> glyphs = {};
    for (std::wstring_view rest = text.View(); !rest.empty();) {
        const std::wstring_view piece = rest.substr(0, glyphs.size());
        // A call that fails writes none.
        glyphs.fill(noGlyph);
        GetGlyphIndicesW(context, piece.data(), static_cast<int>(piece.size()), glyphs.data(),
                         GGI_MARK_NONEXISTING_GLYPHS);
        const auto end = glyphs.begin() + static_cast<std::ptrdiff_t>(piece.size());
        if (std::find(glyphs.begin(), end, noGlyph) != end) return false;
        rest.remove_prefix(piece.size());
    }
    return true;
}

unsigned short GdiDeviceContext::FindIndexOfTrueTypeFontWithinSourceCollection(const ByteBuffer& font,
                                                                               const ByteBuffer& collection) {
    // A collection: tag, version, number of members, and the offset of each one's table.
    constexpr std::size_t headerSize = 12;
    constexpr std::size_t offsetSize = 4;
    if (collection.size() < headerSize || LittleEndian32(collection.data()) != collectionTag) return noMember;
    const auto number = [this](const ByteBuffer& bytes, ULONG offset) {
        return GetUniqueNumberRepresentingATrueTypeFont(const_cast<unsigned char*>(bytes.data()), offset,
                                                        bytes.getDword());
    };
    const ULONG wanted = number(font, 0);
    if (wanted == 0) return noMember;
    const std::size_t count = std::min<std::size_t>(
        {BigEndian32(&collection[8]), noMember, (collection.size() - headerSize) / offsetSize});
    for (std::size_t index = 0; index < count; ++index) {
        const ULONG offset = BigEndian32(&collection[headerSize + index * offsetSize]);
        if (number(collection, offset) == wanted) return static_cast<unsigned short>(index);
    }
    return noMember;
}

ByteBuffer GdiDeviceContext::GetTheFontData(const CXString& face, int charset, int pointSize,
                                            bool& isCollection, unsigned short& collectionIndex) {
    isCollection = false;
    collectionIndex = 0;
    if (FAILED(CreateAndSetFont(face, charset, pointSize))) return {};
    ByteBuffer data = FontData(m_deviceContext, collectionTag);
    ByteBuffer font = FontData(m_deviceContext, 0);
    UnSetAndDeleteFont();
    if (data.empty()) return font;
    isCollection = true;
    collectionIndex = FindIndexOfTrueTypeFontWithinSourceCollection(font, data);
    return data;
}

Gdiplus::RectF GdiDeviceContext::GetTextDimensionsInXpsUnits(const CXString& face, int charset, int pointSize,
                                                             CXString& text) {
    if (FAILED(CreateAndSetFont(face, charset, pointSize))) return {};
    SIZE extent = {};
    TEXTMETRICW metrics = {};
    const bool isMeasured = GetTextExtentPoint32W(m_deviceContext, text, text.GetLength(), &extent) &&
                            GetTextMetricsW(m_deviceContext, &metrics);
    const int dotsX = GetDeviceCaps(m_deviceContext, LOGPIXELSX);
    const int dotsY = GetDeviceCaps(m_deviceContext, LOGPIXELSY);
    UnSetAndDeleteFont();
    if (!isMeasured || dotsX <= 0 || dotsY <= 0) return {};
    constexpr Gdiplus::REAL unitsPerInch = 96;
    return {0, 0, static_cast<Gdiplus::REAL>(extent.cx) * unitsPerInch / static_cast<Gdiplus::REAL>(dotsX),
            static_cast<Gdiplus::REAL>(metrics.tmHeight) * unitsPerInch / static_cast<Gdiplus::REAL>(dotsY)};
}

HDC GdiDeviceContext::GetDeviceContext() {
    if (m_deviceContext == nullptr) m_deviceContext = CreateDCW(L"DISPLAY", nullptr, nullptr, nullptr);
    return m_deviceContext;
}

HRESULT GdiDeviceContext::CreateAndSetFont(const CXString& face, int charset, int pointSize) {
    const HDC context = GetDeviceContext();
    if (context == nullptr) return LastFailure();
    UnSetAndDeleteFont();
    const int dots = GetDeviceCaps(context, LOGPIXELSY);
    if (dots <= 0) return LastFailure();
    const LOGFONTW asked = AskedFont(face, charset, Pixels(pointSize, dots));
    const HFONT font = CreateFontIndirectW(&asked);
    if (font == nullptr) return LastFailure();
    const HGDIOBJ before = SelectObject(context, font);
    if (before == nullptr || before == HGDI_ERROR) {
        const HRESULT failure = LastFailure();
        DeleteObject(font);
        return failure;
    }
    m_font = font;
    m_fontBefore = before;
    return S_OK;
}

void GdiDeviceContext::UnSetAndDeleteFont() {
    if (m_font == nullptr) return;
    SelectObject(m_deviceContext, m_fontBefore);
    DeleteObject(m_font);
    m_font = nullptr;
    m_fontBefore = nullptr;
}

HRESULT GdiDeviceContext::ConvertEmbeddedOpenTypeDataToTtf(ByteBuffer& data) {
    constexpr std::size_t shortestWrapper = 90;
    constexpr std::uint32_t isCompressed = 0x4;
    constexpr std::uint32_t isScrambled = 0x10000000;
    constexpr unsigned char scramble = 0x50;
    if (data.size() > shortestWrapper) {
        const std::size_t size = LittleEndian32(&data[0]);
        const std::size_t fontSize = LittleEndian32(&data[4]);
        const std::uint32_t flags = LittleEndian32(&data[12]);
        if (size == data.size() && fontSize > 0 && fontSize < size && (flags & isCompressed) == 0) {
            data.erase(data.begin(), data.end() - static_cast<std::ptrdiff_t>(fontSize));
            if ((flags & isScrambled) != 0)
                for (unsigned char& byte : data)
                    byte ^= scramble;
            return S_OK;
        }
    }
    data.clear();
    return E_FAIL;
}

ULONG GdiDeviceContext::GetUniqueNumberRepresentingATrueTypeFont(unsigned char* bytes, ULONG offset,
                                                                 ULONG size) {
    // The offset table: version and number of tables; then a record for each table: tag, checksum, offset and
    // length.
    constexpr ULONG headerSize = 12;
    constexpr ULONG recordSize = 16;
    constexpr std::uint32_t versionOne = 0x00010000;
    constexpr std::uint32_t nameTag = 0x6E616D65;
    // No font has more; members of a made-up collection that share a long table would take forever.
    constexpr ULONG maximumTables = 256;
    if (bytes == nullptr || offset > size || size - offset < headerSize) return 0;
    const unsigned char* header = bytes + offset;
    if (BigEndian32(header) != versionOne) return 0;
    const ULONG count =
        std::min({ULONG{BigEndian16(header + 4)}, maximumTables, (size - offset - headerSize) / recordSize});
    for (ULONG index = 0; index < count; ++index) {
        const unsigned char* record = header + headerSize + std::size_t{index} * recordSize;
        if (BigEndian32(record) == nameTag) return BigEndian32(record + 4);
    }
    return 0;
}
