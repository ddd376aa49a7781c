#include "ObjectModel/GlyphRun.h"

#include "ObjectModel/MarkupFailure.h"
#include "ObjectModel/MarkupNumbers.h"
#include "Xml/TextConversion.h"

#include <algorithm>
#include <charconv>

namespace OvPlatform {

namespace {

constexpr UINT32 deepestBidiLevel = 61;
constexpr FLOAT unset = -1; // a width that the font decides

[[noreturn]] void Refuse() { throw MarkupFailure(XPS_E_INVALID_MARKUP); }

template <class Number>
Number ReadInteger(std::string_view& text) {
    Number number{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc()) Refuse();
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    return number;
}

void SkipBlanks(std::string_view& text) {
    text.remove_prefix(std::min(text.find_first_not_of(" \t\r\n"), text.size()));
}

// "(characters:glyphs)", either of which may be left out for 1.
void ReadCluster(std::string_view& entry, GlyphRun& run, UINT32 character) {
    entry.remove_prefix(1);
    XPS_GLYPH_MAPPING mapping{character, ReadInteger<UINT16>(entry), static_cast<UINT32>(run.indices.size()),
                              1};
    if (entry.starts_with(':')) {
        entry.remove_prefix(1);
        mapping.glyphIndicesLength = ReadInteger<UINT16>(entry);
    }
    if (!entry.starts_with(')') || mapping.unicodeStringLength == 0 || mapping.glyphIndicesLength == 0)
        Refuse();
    entry.remove_prefix(1);
    run.mappings.push_back(mapping);
}

FLOAT ReadMeasure(std::string_view& entry, FLOAT missing) {
    if (!entry.starts_with(',')) return missing;
    entry.remove_prefix(1);
    const std::size_t end = std::min(entry.find(','), entry.size());
    const std::string_view text = entry.substr(0, end);
    entry.remove_prefix(end);
    if (text.find_first_not_of(" \t\r\n") == std::string_view::npos) return missing;
    const std::optional<FLOAT> number = ParseNumber(text);
    if (!number) Refuse();
    return *number;
}

XPS_GLYPH_INDEX ReadGlyph(std::string_view entry) {
    XPS_GLYPH_INDEX glyph{-1, unset, 0, 0};
    SkipBlanks(entry);
    if (!entry.empty() && entry.front() != ',') glyph.index = ReadInteger<UINT16>(entry);
    SkipBlanks(entry);
    glyph.advanceWidth = ReadMeasure(entry, unset);
    glyph.horizontalOffset = ReadMeasure(entry, 0);
    glyph.verticalOffset = ReadMeasure(entry, 0);
    SkipBlanks(entry);
    if (!entry.empty() || glyph.advanceWidth < unset) Refuse();
    return glyph;
}

void AppendGlyph(std::string& text, const XPS_GLYPH_INDEX& glyph) {
    if (glyph.index >= 0) text += std::to_string(glyph.index);
    const bool hasOffset = glyph.horizontalOffset != 0 || glyph.verticalOffset != 0;
    if (glyph.advanceWidth < 0 && !hasOffset) return;
    text += ',';
    if (glyph.advanceWidth >= 0) AppendNumber(text, glyph.advanceWidth);
    if (!hasOffset) return;
    text += ',';
    AppendNumber(text, glyph.horizontalOffset);
    if (glyph.verticalOffset == 0) return;
    text += ',';
    AppendNumber(text, glyph.verticalOffset);
}

HRESULT CheckMappings(const GlyphRun& run) {
    std::size_t character = 0;
    std::size_t glyph = 0;
    for (const XPS_GLYPH_MAPPING& mapping : run.mappings) {
        if (mapping.unicodeStringLength == 0 || mapping.glyphIndicesLength == 0) return E_INVALIDARG;
        if (mapping.unicodeStringStart < character || mapping.glyphIndicesStart < glyph)
            return XPS_E_MAPPING_OUT_OF_ORDER;
        // What lies between two clusters is one character for one glyph.
        if (mapping.unicodeStringStart - character != mapping.glyphIndicesStart - glyph)
            return XPS_E_ONE_TO_ONE_MAPPING_EXPECTED;
        character = std::size_t{mapping.unicodeStringStart} + mapping.unicodeStringLength;
        glyph = std::size_t{mapping.glyphIndicesStart} + mapping.glyphIndicesLength;
        if (!run.text.empty() && character > run.text.size()) return XPS_E_MAPPING_OUTSIDE_STRING;
        if (glyph > run.indices.size()) return XPS_E_MAPPING_OUTSIDE_INDICES;
    }
    const std::size_t left = run.indices.size() - glyph;
    const bool fits = run.text.empty() || left <= run.text.size() - character;
    return fits ? S_OK : XPS_E_TOO_MANY_INDICES;
}

HRESULT CheckCaretStops(const GlyphRun& run) {
    for (std::size_t index = 0; index < run.prohibitedCaretStops.size(); ++index) {
        if (run.prohibitedCaretStops[index] > run.text.size()) return XPS_E_CARET_OUTSIDE_STRING;
        if (index != 0 && run.prohibitedCaretStops[index] <= run.prohibitedCaretStops[index - 1])
            return XPS_E_CARET_OUT_OF_ORDER;
    }
    return S_OK;
}

} // namespace

HRESULT GlyphRun::Check() const {
    if (text.empty() && indices.empty()) return XPS_E_MISSING_GLYPHS;
    if (bidiLevel > deepestBidiLevel) return E_INVALIDARG;
    if (isSideways && bidiLevel % 2 != 0) return XPS_E_ODD_BIDILEVEL;
    if (const HRESULT result = CheckMappings(*this); FAILED(result)) return result;
    return CheckCaretStops(*this);
}

void ReadIndices(std::string_view value, GlyphRun& run) {
    UINT32 character = 0;
    UINT32 clusterGlyphs = 0; // of the cluster that is open, still to come
    while (!value.empty()) {
        const std::size_t end = std::min(value.find(';'), value.size());
        std::string_view entry = value.substr(0, end);
        value.remove_prefix(std::min(end + 1, value.size()));
        SkipBlanks(entry);
        if (entry.starts_with('(')) {
            if (clusterGlyphs != 0) Refuse();
            ReadCluster(entry, run, character);
            clusterGlyphs = run.mappings.back().glyphIndicesLength;
            character += run.mappings.back().unicodeStringLength;
        } else if (clusterGlyphs == 0) {
            ++character;
        }
        if (clusterGlyphs != 0) --clusterGlyphs;
        run.indices.push_back(ReadGlyph(entry));
    }
    if (clusterGlyphs != 0) Refuse();
}

std::string FormatIndices(const GlyphRun& run) {
    std::string text;
    auto mapping = run.mappings.begin();
    for (std::size_t index = 0; index < run.indices.size(); ++index) {
        if (index != 0) text += ';';
        if (mapping != run.mappings.end() && mapping->glyphIndicesStart == index) {
            text += '(' + std::to_string(mapping->unicodeStringLength) + ':' +
                    std::to_string(mapping->glyphIndicesLength) + ')';
            ++mapping;
        }
        AppendGlyph(text, run.indices[index]);
    }
    // An empty entry at the end would be none.
    if (!run.indices.empty() && (text.empty() || text.back() == ';')) text += ';';
    return text;
}

std::vector<UINT32> ReadCaretStops(std::string_view value) {
    std::vector<UINT32> prohibited;
    UINT32 stop = 0;
    for (const char c : value) {
        int digit = 0;
        const auto [end, error] = std::from_chars(&c, &c + 1, digit, 16);
        if (error != std::errc()) Refuse();
        for (int bit = 3; bit >= 0; --bit, ++stop)
            if ((digit >> bit & 1) == 0) prohibited.push_back(stop);
    }
    return prohibited;
}

std::string FormatCaretStops(const std::vector<UINT32>& prohibited) {
    constexpr std::string_view hex = "0123456789ABCDEF";
    if (prohibited.empty()) return {};
    std::vector<unsigned> digits(prohibited.back() / 4 + 1, 0xF);
    for (const UINT32 stop : prohibited)
        digits[stop / 4] &= ~(8U >> stop % 4);
    std::string text;
    for (const unsigned digit : digits)
        text += hex[digit & 0xF];
    return text;
}

std::wstring ReadUnicodeString(std::string_view value) {
    if (value.starts_with("{}")) value.remove_prefix(2);
    std::wstring text;
    AppendUtf16(text, value);
    return text;
}

std::string FormatUnicodeString(std::wstring_view text) {
    return text.starts_with(L'{') ? "{}" + ToMarkup(text) : ToMarkup(text);
}

std::string ToMarkup(std::wstring_view text) {
    std::string utf8;
    if (!AppendXmlUtf8(utf8, text)) Refuse();
    return utf8;
}

} // namespace OvPlatform
