#include "Fonts/FontSubset.h"

#include <hb-ot.h>
#include <hb-subset.h>

#include <new>

namespace OvPlatform {
namespace {

using Input = std::unique_ptr<hb_subset_input_t, Destroyer<hb_subset_input_destroy>>;

// Substitutions stay, with the classes of glyphs that they ask for: by them the subsetter finds the glyphs
// that shaping puts in the place of others.
constexpr hb_tag_t droppedTables[] = {
    HB_TAG('G', 'P', 'O', 'S'), HB_TAG('B', 'A', 'S', 'E'), HB_TAG('J', 'S', 'T', 'F'),
    HB_TAG('M', 'A', 'T', 'H'), HB_TAG('k', 'e', 'r', 'n'), HB_TAG('D', 'S', 'I', 'G'),
    HB_TAG('C', 'O', 'L', 'R'), HB_TAG('C', 'P', 'A', 'L'), HB_TAG('C', 'B', 'D', 'T'),
    HB_TAG('C', 'B', 'L', 'C'), HB_TAG('S', 'V', 'G', ' '), HB_TAG('s', 'b', 'i', 'x'),
    HB_TAG('h', 'd', 'm', 'x'), HB_TAG('V', 'D', 'M', 'X'), HB_TAG('L', 'T', 'S', 'H'),
};

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
    // A letter may be composed of one that is composed; none has more than two marks on it.
    for (int round = 0; round < 2; ++round)
        for (const FontFace::Composition& made : face.Compositions())
            if (hb_set_has(characters, made.letter) && hb_set_has(characters, made.mark))
                hb_set_add(characters, made.whole);
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
    AddMirrored(kept);
    AddComposed(face, kept);
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
