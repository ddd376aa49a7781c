#include "Fonts/FontFace.h"

#include "Fonts/FontTables.h"
#include "Locale/Utf16.h"

#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_TRUETYPE_TABLES_H

#include <hb-ot.h>
#include <utf8coder.h>

#include <algorithm>
#include <cstdlib>
#include <new>
#include <string>

namespace OvPlatform {
namespace {

using HbBuffer = std::unique_ptr<hb_buffer_t, Destroyer<hb_buffer_destroy>>;
using Measured = std::unique_ptr<FT_FaceRec_, Destroyer<FT_Done_Face>>;

/// The library, and the lock under which faces are opened, measured and closed.
struct MeasuringLibrary {
    MeasuringLibrary() {
        if (FT_Init_FreeType(&library) != 0) throw std::bad_alloc();
    }

    std::mutex lock;
    FT_Library library = nullptr;
};

MeasuringLibrary& Library() {
    static MeasuringLibrary& library = *new MeasuringLibrary;
    return library;
}

void MeasureWithOs2(const TT_OS2& os2, FontFace::Design& design) {
    const int height = design.ascent + design.descent + design.lineGap;
    // Windows' own measures, which is what contexts are laid out by.
    if (os2.usWinAscent != 0 || os2.usWinDescent != 0) {
        design.ascent = os2.usWinAscent;
        design.descent = os2.usWinDescent;
        design.lineGap = std::max(0, height - design.ascent - design.descent);
    }
    design.averageAdvance = os2.xAvgCharWidth;
    design.weight = os2.usWeightClass;
    design.firstCharacter = os2.usFirstCharIndex;
    design.lastCharacter = os2.usLastCharIndex;
    if (os2.version >= 2 && os2.version != 0xFFFF) {
        design.defaultCharacter = os2.usDefaultChar;
        design.breakCharacter = os2.usBreakChar;
    }
}

/// False if the bytes are no font with outlines.
bool Measure(std::span<const std::byte> bytes, std::uint32_t index, FontFace::Design& design) {
    MeasuringLibrary& library = Library();
    const std::lock_guard guard(library.lock);
    FT_Face opened = nullptr;
    const FT_Error failure =
        FT_New_Memory_Face(library.library, reinterpret_cast<const FT_Byte*>(bytes.data()),
                           static_cast<FT_Long>(bytes.size()), static_cast<FT_Long>(index), &opened);
    if (failure == FT_Err_Out_Of_Memory) throw std::bad_alloc();
    if (failure != 0) return false;
    const Measured face(opened);
    if (!FT_IS_SFNT(opened) || !FT_IS_SCALABLE(opened) || opened->units_per_EM == 0) return false;
    design.unitsPerEm = opened->units_per_EM;
    design.ascent = std::max<int>(opened->ascender, 0);
    design.descent = std::abs(opened->descender);
    design.lineGap = std::max(0, opened->height - design.ascent - design.descent);
    design.maximumAdvance = opened->max_advance_width;
    design.averageAdvance = opened->max_advance_width;
    design.isItalic = (opened->style_flags & FT_STYLE_FLAG_ITALIC) != 0;
    design.isFixedPitch = FT_IS_FIXED_WIDTH(opened);
    const auto* os2 = static_cast<const TT_OS2*>(FT_Get_Sfnt_Table(opened, FT_SFNT_OS2));
    if (os2 != nullptr && os2->version != 0xFFFF) MeasureWithOs2(*os2, design);
    return true;
}

/// Of a unit or a pair; those that belong to every script give HB_SCRIPT_COMMON.
hb_script_t ScriptAt(std::u16string_view text, std::size_t& position) {
    bool isCharacter = false;
    const char16_t* next = text.data() + position;
    const char32_t character = Utf8::Decode(next, text.data() + text.size(), isCharacter);
    position = static_cast<std::size_t>(next - text.data());
    const hb_script_t script = hb_unicode_script(hb_unicode_funcs_get_default(), character);
    return script == HB_SCRIPT_INHERITED || script == HB_SCRIPT_UNKNOWN ? HB_SCRIPT_COMMON : script;
}

/// The end of the run of one script that begins at the position; what belongs to every script goes with what
/// stands before it. A long run is cut, since marks that pile up on one letter take the square of their
/// number.
std::size_t RunEnd(std::u16string_view text, std::size_t position, hb_script_t& script) {
    constexpr std::size_t longestRun = 1000;
    const std::size_t limit = std::min(text.size(), position + longestRun);
    script = ScriptAt(text, position);
    while (position < limit) {
        std::size_t next = position;
        const hb_script_t other = ScriptAt(text, next);
        if (script == HB_SCRIPT_COMMON)
            script = other;
        else if (other != HB_SCRIPT_COMMON && other != script)
            break;
        position = next;
    }
    return position;
}

} // namespace

std::shared_ptr<const FontFace> FontFace::Open(std::shared_ptr<const FontFile> file, std::uint32_t index) {
    const std::shared_ptr<FontFace> face(new FontFace);
    if (!face->Load(file->Bytes(), index)) return nullptr;
    face->m_file = std::move(file);
    return face;
}

std::shared_ptr<const FontFace> FontFace::Open(std::span<const std::byte> bytes, std::uint32_t index) {
    const std::shared_ptr<FontFace> face(new FontFace);
    return face->Load(bytes, index) ? face : nullptr;
}

bool FontFace::Load(std::span<const std::byte> bytes, std::uint32_t index) {
    if (!Measure(bytes, index, m_design)) return false;
    m_bytes = bytes;
    m_index = index;
    const HbBlob blob(hb_blob_create(reinterpret_cast<const char*>(bytes.data()),
                                     static_cast<unsigned>(bytes.size()), HB_MEMORY_MODE_READONLY, nullptr,
                                     nullptr));
    m_face.reset(hb_face_create(blob.get(), index));
    hb_face_make_immutable(m_face.get());
    m_font.reset(hb_font_create(m_face.get()));
    const int unitsPerEm = m_design.unitsPerEm;
    hb_font_set_scale(m_font.get(), unitsPerEm, unitsPerEm);
    hb_font_make_immutable(m_font.get());
    return true;
}

bool FontFace::IsInCollection() const noexcept { return FontTables::IsCollection(m_bytes); }

std::span<const std::byte> FontFace::FileOfItsOwn() const {
    if (!IsInCollection()) return m_bytes;
    std::call_once(m_isTakenOut, [this] {
        if (const auto tables = FontTables::Read(m_bytes, m_index)) m_ownFile = tables->FileOfItsOwn();
    });
    return m_ownFile;
}

HbBlob FontFace::Table(std::uint32_t tag) const { return HbBlob(hb_face_reference_table(m_face.get(), tag)); }

std::uint32_t FontFace::Glyph(std::uint32_t character) const noexcept {
    hb_codepoint_t glyph = 0;
    return hb_font_get_nominal_glyph(m_font.get(), character, &glyph) ? glyph : 0;
}

std::int64_t FontFace::Width(std::wstring_view text) const {
    const std::u16string units = ToUtf16(text);
    const HbBuffer buffer(hb_buffer_create());
    std::int64_t width = 0;
    for (std::size_t start = 0; start < units.size();) {
        hb_script_t script = HB_SCRIPT_COMMON;
        const std::size_t end = RunEnd(units, start, script);
        hb_buffer_reset(buffer.get());
        hb_buffer_add_utf16(buffer.get(), reinterpret_cast<const std::uint16_t*>(units.data()),
                            static_cast<int>(units.size()), static_cast<unsigned>(start),
                            static_cast<int>(end - start));
        const hb_direction_t direction = hb_script_get_horizontal_direction(script);
        hb_buffer_set_direction(buffer.get(), direction == HB_DIRECTION_RTL ? direction : HB_DIRECTION_LTR);
        hb_buffer_set_script(buffer.get(), script);
        hb_shape(m_font.get(), buffer.get(), nullptr, 0);
        if (!hb_buffer_allocation_successful(buffer.get())) throw std::bad_alloc();
        unsigned count = 0;
        const hb_glyph_position_t* positions = hb_buffer_get_glyph_positions(buffer.get(), &count);
        for (unsigned glyph = 0; glyph < count; ++glyph)
            width += positions[glyph].x_advance;
        start = end;
    }
    return width;
}

const std::vector<FontFace::Composition>& FontFace::Compositions() const {
    std::call_once(m_hasCompositions, [this] {
        hb_unicode_funcs_t* const unicode = hb_unicode_funcs_get_default();
        const HbSet characters = MakeSet();
        hb_face_collect_unicodes(m_face.get(), characters.get());
        for (hb_codepoint_t whole = HB_SET_VALUE_INVALID; hb_set_next(characters.get(), &whole);) {
            hb_codepoint_t letter = 0;
            hb_codepoint_t mark = 0;
            if (hb_unicode_decompose(unicode, whole, &letter, &mark) && mark != 0)
                m_compositions.push_back({whole, letter, mark});
        }
    });
    return m_compositions;
}

} // namespace OvPlatform
