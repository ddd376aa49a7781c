#include "Platform/Fonts/SelectedFont.h"
#include "Platform/Fonts/SystemFontFiles.h"
#include "Support/Rows.h"

#include <Com/FaultInjection.h>

#include <gtest/gtest.h>
#include <hb-ot.h>
#include <t2embapi.h>

#include <cstring>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace {

using Embed = decltype(&TTEmbedFont);

/// As drivers find it.
Embed EmbeddingCall() {
    static const auto found = reinterpret_cast<Embed>(
        reinterpret_cast<void*>(GetProcAddress(LoadLibraryW(L"T2Embed.dll"), "TTEmbedFont")));
    return found;
}

ULONG Take(void* stream, const void* bytes, ULONG count) {
    static_cast<std::string*>(stream)->append(static_cast<const char*>(bytes), count);
    return count;
}

std::uint32_t Little(const std::string& bytes, std::size_t offset, int size) {
    std::uint32_t number = 0;
    for (int byte = size; byte-- > 0;)
        number = number << 8 | static_cast<unsigned char>(bytes.at(offset + byte));
    return number;
}

struct Embedded {
    explicit Embedded(HDC context, std::u16string text, ULONG flags = TTEMBED_SUBSET,
                      ULONG charset = CHARSET_UNICODE, USHORT language = 0) {
        std::vector<USHORT> units(text.begin(), text.end());
        result = EmbeddingCall()(context, flags, charset, &privilege, &status, Take, &data, units.data(),
                                 static_cast<USHORT>(units.size()), language, nullptr);
        if (data.size() > 90) font = data.substr(data.size() - Little(data, 4, 4));
    }

    LONG result = -1;
    ULONG privilege = 0;
    ULONG status = 0;
    std::string data;
    std::string font;
};

/// A font read by the library that shapes text.
class ReadFont {
public:
    explicit ReadFont(const std::string& bytes, unsigned index = 0)
        : m_blob(hb_blob_create(bytes.data(), static_cast<unsigned>(bytes.size()), HB_MEMORY_MODE_DUPLICATE,
                                nullptr, nullptr)),
          m_face(hb_face_create(m_blob, index)), m_font(hb_font_create(m_face)) {}
    ReadFont(const ReadFont&) = delete;
    ReadFont& operator=(const ReadFont&) = delete;
    ~ReadFont() {
        hb_font_destroy(m_font);
        hb_face_destroy(m_face);
        hb_blob_destroy(m_blob);
    }

    [[nodiscard]] std::set<std::string> Tables() const {
        std::vector<hb_tag_t> tags(100);
        unsigned count = 100;
        hb_face_get_table_tags(m_face, 0, &count, tags.data());
        std::set<std::string> names;
        for (unsigned tag = 0; tag < count; ++tag) {
            char name[4];
            hb_tag_to_string(tags[tag], name);
            names.emplace(name, 4);
        }
        return names;
    }
    [[nodiscard]] unsigned Glyph(unsigned character) const {
        hb_codepoint_t glyph = 0;
        return hb_font_get_nominal_glyph(m_font, character, &glyph) ? glyph : 0;
    }
    /// What a pen draws, as text; empty for a blank glyph.
    [[nodiscard]] std::string Outline(unsigned glyph) const {
        static hb_draw_funcs_t* const pen = [] {
            hb_draw_funcs_t* funcs = hb_draw_funcs_create();
            hb_draw_funcs_set_move_to_func(funcs, Point, nullptr, nullptr);
            hb_draw_funcs_set_line_to_func(funcs, Point, nullptr, nullptr);
            hb_draw_funcs_set_cubic_to_func(
                funcs,
                [](hb_draw_funcs_t*, void* text, hb_draw_state_t*, float a, float b, float c, float d,
                   float x, float y, void*) {
                    for (const float number : {a, b, c, d, x, y})
                        *static_cast<std::string*>(text) += std::to_string(number) + ' ';
                },
                nullptr, nullptr);
            return funcs;
        }();
        std::string text;
        hb_font_get_glyph_shape(m_font, glyph, pen, &text);
        return text;
    }
    [[nodiscard]] std::vector<unsigned> Shaped(const std::u16string& text) const {
        hb_buffer_t* buffer = hb_buffer_create();
        hb_buffer_add_utf16(buffer, reinterpret_cast<const std::uint16_t*>(text.data()), -1, 0, -1);
        hb_buffer_guess_segment_properties(buffer);
        hb_shape(m_font, buffer, nullptr, 0);
        unsigned count = 0;
        const hb_glyph_info_t* glyphs = hb_buffer_get_glyph_infos(buffer, &count);
        std::vector<unsigned> ids;
        for (unsigned glyph = 0; glyph < count; ++glyph)
            ids.push_back(glyphs[glyph].codepoint);
        hb_buffer_destroy(buffer);
        return ids;
    }
    [[nodiscard]] hb_font_t* Font() const { return m_font; }

private:
    static void Point(hb_draw_funcs_t*, void* text, hb_draw_state_t*, float x, float y, void*) {
        *static_cast<std::string*>(text) += std::to_string(x) + ' ' + std::to_string(y) + ' ';
    }

    hb_blob_t* m_blob;
    hb_face_t* m_face;
    hb_font_t* m_font;
};

TEST(FontEmbedding, IsFoundInTheSystemsLibraryByName) {
    for (const wchar_t* name : {L"T2Embed.dll", L"t2embed", L"T2EMBED.DLL"}) {
        const HMODULE library = LoadLibraryW(name);
        ASSERT_NE(nullptr, library) << name;
        EXPECT_NE(nullptr, GetProcAddress(library, "TTEmbedFont"));
        EXPECT_EQ(nullptr, GetProcAddress(library, "TTEmbedFonts"));
        EXPECT_TRUE(FreeLibrary(library));
    }
    EXPECT_EQ(nullptr, LoadLibraryW(L"T2Embeds.dll"));
}

TEST(FontEmbedding, WritesTheFontsFactsInFrontOfIt) {
    const SelectedFont font(L"Two Names");
    const Embedded whole(font.context, u"", TTEMBED_RAW);
    ASSERT_EQ(E_NONE, whole.result);
    const std::string file = SystemFontFiles().at("two-names.ttf");
    EXPECT_EQ(file, whole.font);
    EXPECT_EQ(0U, whole.status);
    for (const auto& [offset, size, number] : Rows<int, int, std::uint32_t>{
             {0, 4, static_cast<std::uint32_t>(whole.data.size())},
             {4, 4, static_cast<std::uint32_t>(file.size())},
             {8, 4, 0x00020001},
             {12, 4, 0},
             {16, 4, 0x04030201}, // panose
             {26, 1, 1},
             {27, 1, 0},
             {28, 4, 400},
             {32, 2, 0},
             {34, 2, 0x504C},
             {36, 4, 0x80000001},
             {48, 4, 4},
             {52, 4, 0x20000001},
             {56, 4, 6},
             {60, 4, 0},
             {80, 2, 0},
             {82, 2, 18},
             {84, 2, u'T'},
             {102, 2, 0},
             {104, 2, 14}, // "Regular"
         })
        EXPECT_EQ(number, Little(whole.data, offset, size)) << "at " << offset;
    std::size_t end = 80;
    for (int text = 0; text < 5; ++text) // two bytes that say nothing, its size, and it
        end += 4 + Little(whole.data, end + 2, 2);
    EXPECT_EQ(whole.data.size() - file.size(), end);
    const Embedded scrambled(font.context, u"A", TTEMBED_XORENCRYPTDATA);
    ASSERT_EQ(file.size(), scrambled.font.size());
    EXPECT_EQ(0x10000000U, Little(scrambled.data, 12, 4));
    EXPECT_EQ(file[1] ^ 0x50, scrambled.font[1]);
    const Embedded checked(SelectedFont(L"DejaVu Sans").context, u"A");
    EXPECT_NE(0U, Little(checked.data, 60, 4)) << "the head's check sum";
    EXPECT_EQ(1U, Little(Embedded(SelectedFont(L"Nimbus Sans Italic").context, u"A").data, 27, 1));
    EXPECT_EQ(static_cast<ULONG>(TTEMBED_SUBSET), Little(checked.data, 12, 4));
}

TEST(FontEmbedding, ASubsetHasTheGlyphsOfItsTextUnderTheirIds) {
    const SelectedFont selected(L"DejaVu Sans");
    const ReadFont whole(selected.Data(0));
    const Embedded subset(selected.context, u"Az(\u00E9\xD835\xDD38\xD800\xDC00\xD801.");
    ASSERT_EQ(E_NONE, subset.result);
    EXPECT_LT(subset.font.size(), selected.Data(0).size() / 10);
    const ReadFont cut(subset.font);
    for (const unsigned character : {0x41U, 0x7AU, 0xE9U, 0x1D538U, 0x2EU}) {
        const unsigned glyph = whole.Glyph(character);
        EXPECT_EQ(glyph, cut.Glyph(character)) << character;
        EXPECT_NE("", cut.Outline(glyph)) << character;
        EXPECT_EQ(whole.Outline(glyph), cut.Outline(glyph)) << character;
    }
    EXPECT_EQ(whole.Outline(0), cut.Outline(0)) << "for what the font lacks";
    for (const unsigned character : {0x42U, 0x29U, 0xFFFDU, 0xD801U})
        EXPECT_EQ(0U, cut.Glyph(character)) << character;
    EXPECT_EQ("", cut.Outline(whole.Glyph(0x42)));
}

TEST(FontEmbedding, ASubsetHasWhatShapingPutsInPlaceOfItsText) {
    const SelectedFont selected(L"DejaVu Sans");
    const ReadFont whole(selected.Data(0));
    for (const auto& [characters, text] : Rows<std::u16string, std::u16string>{
             {u"\u0633\u0644\u0627\u0645 ",
              u"\u0633\u0644\u0627\u0645 \u0645\u0633"},     // joining, with a ligature
             {u"fil", u"fil"},                               // a ligature
             {u"\u03B9\u0308\u0301", u"\u03B9\u0308\u0301"}, // composed in two steps
             {u"\u05D0(\u0301", u"\u05D0("},                 // mirrored
         }) {
        const Embedded subset(selected.context, characters);
        ASSERT_EQ(E_NONE, subset.result);
        const ReadFont cut(subset.font);
        EXPECT_EQ(whole.Shaped(text), cut.Shaped(text));
        for (const unsigned glyph : whole.Shaped(text))
            EXPECT_EQ(whole.Outline(glyph), cut.Outline(glyph)) << glyph;
    }
}

TEST(FontEmbedding, FontsOfOtherKindsAreCutToWhatPagesNeed) {
    const std::set<std::string> notForPages = {"GPOS", "kern", "COLR", "CPAL", "fvar", "gvar", "fpgm"};
    for (const auto& [face, character, outlines] :
         Rows<const wchar_t*, char16_t, const char*>{{L"Variable", u'A', "glyf"},
                                                     {L"Colored", u'A', "glyf"},
                                                     {L"Member Two", u'X', "glyf"},
                                                     {L"DejaVu Sans", u'A', "glyf"},
                                                     {L"Droid Sans Fallback", u'\u65E5', "glyf"},
                                                     {L"Nimbus Sans", u'A', "CFF "}}) {
        const SelectedFont selected(face);
        const Embedded subset(selected.context, {character});
        ASSERT_EQ(E_NONE, subset.result) << face;
        const ReadFont cut(subset.font);
        const ReadFont whole(selected.Data(0));
        const unsigned glyph = whole.Glyph(character);
        EXPECT_EQ(glyph, cut.Glyph(character)) << face;
        EXPECT_NE("", cut.Outline(glyph)) << face;
        EXPECT_EQ(whole.Outline(glyph), cut.Outline(glyph)) << face;
        EXPECT_TRUE(cut.Tables().contains(outlines)) << face;
        for (const std::string& table : notForPages)
            EXPECT_FALSE(cut.Tables().contains(table)) << face << table;
    }
}

TEST(FontEmbedding, TheFontsPermissionIsHonoured) {
    for (const auto& [face, result, privilege, status] : Rows<const wchar_t*, LONG, ULONG, ULONG>{
             {L"Permission 0", E_NONE, EMBED_INSTALLABLE, 0},
             {L"Permission 2", E_FONTNOTEMBEDDABLE, EMBED_NOEMBEDDING, 0},
             {L"Permission 4", E_NONE, EMBED_PREVIEWPRINT, 0},
             {L"Permission 6", E_NONE, EMBED_PREVIEWPRINT, 0}, // the more generous counts
             {L"Permission 8", E_NONE, EMBED_EDITABLE, 0},
             {L"Permission 256", E_NONE, EMBED_INSTALLABLE, TTEMBED_SUBSETCANCEL},
             {L"Permission 260", E_NONE, EMBED_PREVIEWPRINT, TTEMBED_SUBSETCANCEL},
             {L"Permission 512", E_FONTNOTEMBEDDABLE, EMBED_NOEMBEDDING, 0},
         }) {
        const SelectedFont selected(face);
        const Embedded embedded(selected.context, u"A");
        EXPECT_EQ(result, embedded.result) << face;
        EXPECT_EQ(privilege, embedded.privilege) << face;
        EXPECT_EQ(status, embedded.status) << face;
        EXPECT_EQ(result == E_NONE, !embedded.data.empty()) << face;
        EXPECT_EQ(status == TTEMBED_SUBSETCANCEL, embedded.font == selected.Data(0)) << face;
    }
    EXPECT_EQ(E_NOOS2, Embedded(SelectedFont(L"No Permission").context, u"A").result);
}

TEST(FontEmbedding, TextMayBeGlyphsAndNamesOfOneLanguage) {
    const SelectedFont selected(L"Two Names");
    const ReadFont cut(Embedded(selected.context, u"\2", TTEMBED_SUBSET, CHARSET_GLYPHIDX).font);
    EXPECT_NE("", cut.Outline(2));
    EXPECT_EQ("", cut.Outline(1));
    const auto names = [&](USHORT language) {
        const std::string name =
            Embedded(selected.context, u"A", TTEMBED_SUBSET, CHARSET_UNICODE, language).font;
        return std::pair(name.find(std::string("\0T\0w\0o", 6)) != std::string::npos,
                         name.find("\x4E\x8C\x30\x64") != std::string::npos);
    };
    EXPECT_EQ(std::pair(true, true), names(0));
    EXPECT_EQ(std::pair(true, false), names(0x409));
    EXPECT_EQ(std::pair(false, true), names(0x411));
}

TEST(FontEmbedding, WhatCannotBeDoneIsRefused) {
    const SelectedFont font(L"Two Names");
    std::string data;
    ULONG privilege = 0;
    ULONG status = 0;
    USHORT text[] = {u'A'};
    TTEMBEDINFO bound = {sizeof(TTEMBEDINFO), 2, text};
    const WRITEEMBEDPROC write = Take;
    const WRITEEMBEDPROC takesTooLittle = [](void*, const void*, const ULONG count) { return count - 1; };
    struct Request {
        LONG expected;
        HDC context;
        ULONG flags = TTEMBED_SUBSET;
        ULONG charset = CHARSET_UNICODE;
        WRITEEMBEDPROC write = Take;
        USHORT count = 1;
        TTEMBEDINFO* binding = nullptr;
    };
    for (const Request& request : {
             Request{E_HDCINVALID, nullptr},
             Request{E_HDCINVALID, reinterpret_cast<HDC>(font.font)},
             Request{E_FLAGSINVALID, font.context, 0x40000000},
             Request{E_API_NOTIMPL, font.context, TTEMBED_SUBSET | TTEMBED_TTCOMPRESSED},
             Request{E_API_NOTIMPL, font.context, TTEMBED_SUBSET, CHARSET_UNICODE, write, 1, &bound},
             Request{E_CHARSETINVALID, font.context, TTEMBED_SUBSET, 4},
             Request{E_CHARCODECOUNTINVALID, font.context, TTEMBED_SUBSET, CHARSET_UNICODE, write, 0},
             Request{E_INPUTPARAMINVALID, font.context, TTEMBED_SUBSET, CHARSET_UNICODE, nullptr},
             Request{E_SAVETOSTREAMFAILED, font.context, TTEMBED_SUBSET, CHARSET_UNICODE, takesTooLittle},
             Request{E_NONE, font.context},
         })
        EXPECT_EQ(request.expected,
                  TTEmbedFont(request.context, request.flags, request.charset, &privilege, &status,
                              request.write, &data, text, request.count, 0, request.binding));
    EXPECT_EQ(E_CHARCODESETINVALID, TTEmbedFont(font.context, TTEMBED_SUBSET, CHARSET_UNICODE, &privilege,
                                                &status, Take, &data, nullptr, 1, 0, nullptr));
    EXPECT_EQ(E_PRIVSTATUSINVALID, TTEmbedFont(font.context, TTEMBED_SUBSET, CHARSET_UNICODE, nullptr,
                                               &status, Take, &data, text, 1, 0, nullptr));
    EXPECT_EQ(E_STATUSINVALID, TTEmbedFont(font.context, TTEMBED_SUBSET, CHARSET_UNICODE, &privilege, nullptr,
                                           Take, &data, text, 1, 0, nullptr));
    ASSERT_EQ(E_NONE, Embedded(font.context, u"A").result);
    const OvPlatform::FaultInjectionScope fault(1);
    EXPECT_EQ(E_NOFREEMEMORY, Embedded(font.context, u"A").result);
}

} // namespace
