// Fonts to be embedded, as the system's library T2Embed hands them out.
#include "Com/FaultInjection.h"
#include "Fonts/DeviceContext.h"
#include "Fonts/EmbeddedOpenType.h"
#include "Fonts/FontSubset.h"

#include <hb-ot.h>
#include <t2embapi.h>
#include <utf8coder.h>

#include <limits>
#include <new>
#include <optional>
#include <span>

namespace {

using namespace OvPlatform;

constexpr ULONG builtFlags = TTEMBED_SUBSET | TTEMBED_FAILIFVARIATIONSIMULATED | TTEMBED_XORENCRYPTDATA;
constexpr ULONG knownFlags = builtFlags | TTEMBED_TTCOMPRESSED | TTEMBED_EMBEDEUDC | TTEMBED_WEBOBJECT;
constexpr std::byte scramble{0x50};

/// Fonts of symbols have their characters in a row of the private use area.
bool IsSymbolFont(const FontFace& face) {
    constexpr std::uint32_t symbolRow = 0xF000;
    for (std::uint32_t character = 0x21; character < 0x7F; ++character)
        if (face.Glyph(character) != 0 && face.Glyph(character) != face.Glyph(symbolRow + character))
            return false;
    return true;
}

/// The characters of the text; a lone surrogate is none.
std::vector<std::uint32_t> Characters(std::span<const USHORT> text) {
    std::vector<std::uint32_t> characters;
    characters.reserve(text.size());
    const USHORT* const end = text.data() + text.size();
    for (const USHORT* next = text.data(); next != end;) {
        bool isCharacter = false;
        const char32_t character = Utf8::DecodeUnits(next, end, isCharacter);
        if (isCharacter) characters.push_back(character);
    }
    return characters;
}

FontSubset SubsetOf(const FontFace& face, ULONG charset, std::span<const USHORT> text, USHORT language) {
    FontSubset subset;
    subset.language = language;
    if (charset == CHARSET_GLYPHIDX) {
        subset.glyphs.assign(text.begin(), text.end());
        return subset;
    }
    subset.characters = Characters(text);
    // Under both names, since the subsetter does not know one by the other.
    if (IsSymbolFont(face))
        for (const USHORT unit : text)
            if (unit <= 0xFF) subset.characters.push_back(0xF000U + unit);
    return subset;
}

LONG WriteEmbedded(const FontFace& face, const EmbeddingFacts& facts, std::span<const std::byte> font,
                   ULONG flags, WRITEEMBEDPROC write, LPVOID stream) {
    const std::vector<std::byte> header = EmbeddedOpenTypeHeader(face, facts, font, flags);
    if (font.size() > std::numeric_limits<ULONG>::max() - header.size()) return E_FONTDATAINVALID;
    std::vector<std::byte> scrambled;
    if ((flags & TTEMBED_XORENCRYPTDATA) != 0) {
        scrambled.assign(font.begin(), font.end());
        for (std::byte& byte : scrambled)
            byte ^= scramble;
        font = scrambled;
    }
    for (const std::span<const std::byte> block : {std::span<const std::byte>(header), font}) {
        const auto size = static_cast<ULONG>(block.size());
        if (write(stream, block.data(), size) != size) return E_SAVETOSTREAMFAILED;
    }
    return E_NONE;
}

LONG CheckRequest(ULONG flags, ULONG charset, const USHORT* text, USHORT count, const TTEMBEDINFO* binding) {
    if ((flags & ~knownFlags) != 0) return E_FLAGSINVALID;
    if ((flags & ~builtFlags) != 0) return E_API_NOTIMPL;
    if (binding != nullptr && binding->usRootStrSize != 0) return E_API_NOTIMPL;
    if ((flags & TTEMBED_SUBSET) == 0) return E_NONE;
    if (charset != CHARSET_UNICODE && charset != CHARSET_SYMBOL && charset != CHARSET_GLYPHIDX)
        return E_CHARSETINVALID;
    if (count == 0) return E_CHARCODECOUNTINVALID;
    return text != nullptr ? E_NONE : E_CHARCODESETINVALID;
}

} // namespace

LONG TTEmbedFont(HDC hdc, ULONG flags, ULONG charset, ULONG* privilege, ULONG* status, WRITEEMBEDPROC write,
                 LPVOID stream, USHORT* text, USHORT count, USHORT language, TTEMBEDINFO* binding) {
    if (FaultPointHit()) return E_NOFREEMEMORY;
    if (privilege == nullptr) return E_PRIVSTATUSINVALID;
    if (status == nullptr) return E_STATUSINVALID;
    *privilege = EMBED_NOEMBEDDING;
    *status = 0;
    if (write == nullptr) return E_INPUTPARAMINVALID;
    if (const LONG refused = CheckRequest(flags, charset, text, count, binding); refused != E_NONE)
        return refused;
    try {
        const auto context = DeviceContext::Find(hdc);
        if (!context) return E_HDCINVALID;
        const auto choice = context->Selected().choice;
        if (!choice) return E_ERRORACCESSINGFONTDATA;
        const FontFace& face = *choice->face;
        const auto facts = EmbeddingFacts::Of(face);
        if (!facts) return E_NOOS2;
        *privilege = facts->Privilege();
        if (!facts->MayBeEmbedded()) return E_FONTNOTEMBEDDABLE;
        if ((flags & TTEMBED_SUBSET) != 0 && !facts->MayBeCut()) {
            *status |= TTEMBED_SUBSETCANCEL;
            flags &= ~static_cast<ULONG>(TTEMBED_SUBSET);
        }
        if ((flags & TTEMBED_SUBSET) == 0) {
            const auto whole = face.FileOfItsOwn();
            if (whole.empty()) return E_FONTDATAINVALID;
            return WriteEmbedded(face, *facts, whole, flags, write, stream);
        }
        const HbBlob subset = SubsetOf(face, charset, {text, count}, language).CutFrom(face);
        if (!subset) return E_SUBSETTINGFAILED;
        unsigned length = 0;
        const char* data = hb_blob_get_data(subset.get(), &length);
        return WriteEmbedded(face, *facts, std::as_bytes(std::span(data, length)), flags, write, stream);
    } catch (const std::bad_alloc&) {
        return E_NOFREEMEMORY;
    }
}
