#include "Fonts/FontSubset.h"

#include <hb-ot.h>
#include <hb-subset.h>

#include <algorithm>
#include <new>

namespace OvPlatform {
namespace {

using Input = std::unique_ptr<hb_subset_input_t, Destroyer<hb_subset_input_destroy>>;

constexpr hb_tag_t substitutions = HB_TAG('G', 'S', 'U', 'B');

// The substitutions that a shaper makes without being asked to: of all scripts, then of those that join, and
// of those that reorder.
constexpr hb_tag_t shapingFeatures[] = {
    HB_TAG('r', 'v', 'r', 'n'), HB_TAG('c', 'c', 'm', 'p'), HB_TAG('l', 'o', 'c', 'l'),
    HB_TAG('r', 'l', 'i', 'g'), HB_TAG('l', 'i', 'g', 'a'), HB_TAG('c', 'l', 'i', 'g'),
    HB_TAG('c', 'a', 'l', 't'), HB_TAG('r', 'c', 'l', 't'), HB_TAG('l', 't', 'r', 'a'),
    HB_TAG('l', 't', 'r', 'm'), HB_TAG('r', 't', 'l', 'a'), HB_TAG('r', 't', 'l', 'm'),

    HB_TAG('i', 's', 'o', 'l'), HB_TAG('i', 'n', 'i', 't'), HB_TAG('m', 'e', 'd', 'i'),
    HB_TAG('m', 'e', 'd', '2'), HB_TAG('f', 'i', 'n', 'a'), HB_TAG('f', 'i', 'n', '2'),
    HB_TAG('f', 'i', 'n', '3'), HB_TAG('m', 's', 'e', 't'), HB_TAG('s', 't', 'c', 'h'),
    HB_TAG('l', 'j', 'm', 'o'), HB_TAG('v', 'j', 'm', 'o'), HB_TAG('t', 'j', 'm', 'o'),

    HB_TAG('n', 'u', 'k', 't'), HB_TAG('a', 'k', 'h', 'n'), HB_TAG('r', 'p', 'h', 'f'),
    HB_TAG('r', 'k', 'r', 'f'), HB_TAG('p', 'r', 'e', 'f'), HB_TAG('b', 'l', 'w', 'f'),
    HB_TAG('a', 'b', 'v', 'f'), HB_TAG('h', 'a', 'l', 'f'), HB_TAG('p', 's', 't', 'f'),
    HB_TAG('v', 'a', 't', 'u'), HB_TAG('c', 'j', 'c', 't'), HB_TAG('c', 'f', 'a', 'r'),
    HB_TAG('p', 'r', 'e', 's'), HB_TAG('a', 'b', 'v', 's'), HB_TAG('b', 'l', 'w', 's'),
    HB_TAG('p', 's', 't', 's'), HB_TAG('h', 'a', 'l', 'n'), HB_TAG_NONE,
};

constexpr hb_tag_t droppedTables[] = {
    substitutions,
    HB_TAG('G', 'P', 'O', 'S'),
    HB_TAG('G', 'D', 'E', 'F'),
    HB_TAG('B', 'A', 'S', 'E'),
    HB_TAG('J', 'S', 'T', 'F'),
    HB_TAG('M', 'A', 'T', 'H'),
    HB_TAG('k', 'e', 'r', 'n'),
    HB_TAG('D', 'S', 'I', 'G'),
    HB_TAG('C', 'O', 'L', 'R'),
    HB_TAG('C', 'P', 'A', 'L'),
    HB_TAG('C', 'B', 'D', 'T'),
    HB_TAG('C', 'B', 'L', 'C'),
    HB_TAG('S', 'V', 'G', ' '),
    HB_TAG('s', 'b', 'i', 'x'),
    HB_TAG('h', 'd', 'm', 'x'),
    HB_TAG('V', 'D', 'M', 'X'),
    HB_TAG('L', 'T', 'S', 'H'),
};

HbSet MakeSet() {
    HbSet set(hb_set_create());
    if (!hb_set_allocation_successful(set.get())) throw std::bad_alloc();
    return set;
}

/// Brackets and the like, which a shaper mirrors in text that runs from right to left.
void AddMirrored(hb_set_t* characters) {
    hb_unicode_funcs_t* const unicode = hb_unicode_funcs_get_default();
    const HbSet mirrored = MakeSet();
    bool runsToTheLeft = false;
    for (hb_codepoint_t character = HB_SET_VALUE_INVALID; hb_set_next(characters, &character);) {
        hb_set_add(mirrored.get(), hb_unicode_mirroring(unicode, character));
        runsToTheLeft |=
            hb_script_get_horizontal_direction(hb_unicode_script(unicode, character)) == HB_DIRECTION_RTL;
    }
    if (runsToTheLeft) hb_set_union(characters, mirrored.get());
}

/// What a shaper composes of two of the characters.
void AddComposed(const FontFace& face, hb_set_t* characters) {
    hb_unicode_funcs_t* const unicode = hb_unicode_funcs_get_default();
    bool hasMarks = false;
    for (hb_codepoint_t character = HB_SET_VALUE_INVALID; !hasMarks && hb_set_next(characters, &character);)
        hasMarks = hb_unicode_combining_class(unicode, character) != HB_UNICODE_COMBINING_CLASS_NOT_REORDERED;
    if (!hasMarks) return;
    const HbSet all = MakeSet();
    hb_face_collect_unicodes(face.Shaper(), all.get());
    // A letter may have been composed of one that was composed; none has more than two marks on it.
    for (int round = 0; round < 2; ++round)
        for (hb_codepoint_t whole = HB_SET_VALUE_INVALID; hb_set_next(all.get(), &whole);) {
            hb_codepoint_t letter = 0;
            hb_codepoint_t mark = 0;
            if (hb_unicode_decompose(unicode, whole, &letter, &mark) && mark != 0 &&
                hb_set_has(characters, letter) && hb_set_has(characters, mark))
                hb_set_add(characters, whole);
        }
}

void AddCharacters(const FontFace& face, hb_set_t* characters) {
    AddMirrored(characters);
    AddComposed(face, characters);
}

/// What shaping puts in the place of the characters' glyphs.
void AddSubstitutes(const FontFace& face, const hb_set_t* characters, hb_set_t* glyphs) {
    if (!hb_ot_layout_has_substitution(face.Shaper())) return;
    for (hb_codepoint_t character = HB_SET_VALUE_INVALID; hb_set_next(characters, &character);)
        if (const std::uint32_t glyph = face.Glyph(character); glyph != 0) hb_set_add(glyphs, glyph);
    const HbSet lookups = MakeSet();
    hb_ot_layout_collect_lookups(face.Shaper(), substitutions, nullptr, nullptr, shapingFeatures,
                                 lookups.get());
    hb_ot_layout_lookups_substitute_closure(face.Shaper(), lookups.get(), glyphs);
}

void PinToDefault(const FontFace& face, hb_subset_input_t* input) {
    // The outlines of the other kind are not rewritten by the subsetter; readers take their default anyway.
    const HbBlob outlines = face.Table(HB_TAG('g', 'l', 'y', 'f'));
    if (hb_blob_get_length(outlines.get()) == 0) return;
    const unsigned count = hb_ot_var_get_axis_count(face.Shaper());
    std::vector<hb_ot_var_axis_info_t> axes(count);
    unsigned length = count;
    hb_ot_var_get_axis_infos(face.Shaper(), 0, &length, axes.data());
    for (unsigned axis = 0; axis < length; ++axis)
        hb_subset_input_pin_axis_to_default(input, face.Shaper(), axes[axis].tag);
}

void KeepNames(std::uint16_t language, hb_subset_input_t* input) {
    hb_set_t* const languages = hb_subset_input_set(input, HB_SUBSET_SETS_NAME_LANG_ID);
    hb_set_clear(languages);
    if (language != 0)
        hb_set_add(languages, language);
    else
        hb_set_invert(languages);
}

} // namespace

HbBlob FontSubset::CutFrom(const FontFace& face) const {
    const Input input(hb_subset_input_create_or_fail());
    if (!input) throw std::bad_alloc();
    hb_set_t* const kept = hb_subset_input_unicode_set(input.get());
    hb_set_t* const keptGlyphs = hb_subset_input_glyph_set(input.get());
    for (const std::uint32_t character : characters)
        hb_set_add(kept, character);
    for (const std::uint32_t glyph : glyphs)
        hb_set_add(keptGlyphs, glyph);
    AddCharacters(face, kept);
    AddSubstitutes(face, kept, keptGlyphs);
    hb_set_t* const dropped = hb_subset_input_set(input.get(), HB_SUBSET_SETS_DROP_TABLE_TAG);
    for (const hb_tag_t table : droppedTables)
        hb_set_add(dropped, table);
    KeepNames(language, input.get());
    PinToDefault(face, input.get());
    hb_subset_input_set_flags(input.get(), HB_SUBSET_FLAGS_RETAIN_GIDS | HB_SUBSET_FLAGS_NO_HINTING |
                                               HB_SUBSET_FLAGS_NOTDEF_OUTLINE);
    const HbFace cut(hb_subset_or_fail(face.Shaper(), input.get()));
    if (!cut) return nullptr;
    HbBlob file(hb_face_reference_blob(cut.get()));
    return hb_blob_get_length(file.get()) > 0 ? std::move(file) : nullptr;
}

} // namespace OvPlatform
