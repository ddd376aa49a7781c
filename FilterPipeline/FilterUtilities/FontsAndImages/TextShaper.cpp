#include "FontsAndImages/TextShaper.h"

#include <LowLevelFacilities/Failures/ThrowComException.h>
#include <LowLevelFacilities/Strings/CPStringUtils.h>

#include <utf16units.h>

#include <algorithm>
#include <numeric>

namespace {

// The font calls leave a reason where they have one. A system may have no font at all.
void Require(bool isDone, const CXString& face) {
    if (isDone) return;
    const DWORD error = GetLastError();
    ThrowComException(error != 0 ? HRESULT_FROM_WIN32(error) : E_FAIL,
                      "the font " + CPStringUtils::narrowToStdString(face) + " cannot be had");
}

/// The items of a paragraph that runs to the right (0) or to the left (1), and the place where it ends behind
/// them.
std::vector<SCRIPT_ITEM> Itemize(std::wstring_view text, WORD level) {
    SCRIPT_CONTROL control = {};
    SCRIPT_STATE state = {};
    state.uBidiLevel = level & 1;
    std::vector<SCRIPT_ITEM> items(16);
    int count = 0;
    HRESULT hr = E_OUTOFMEMORY;
    // There are no more items than units.
    for (std::size_t room = items.size(); hr == E_OUTOFMEMORY && room <= 4 * text.size() + 16; room *= 4) {
        items.resize(room);
        hr = ScriptItemize(text.data(), static_cast<int>(text.size()), static_cast<int>(room), &control,
                           &state, items.data(), &count);
    }
    ThrowIfFailed(hr);
    items.resize(static_cast<std::size_t>(count) + 1);
    return items;
}

/// How much of a text is shaped at once: clusters have small numbers, and marks on one letter cost the square
/// of their count. Words stay whole where they are not as long as that.
std::size_t PieceOf(std::wstring_view text) {
    constexpr std::size_t most = 1000;
    if (text.size() <= most) return text.size();
    const std::size_t blank = text.rfind(L' ', most - 1);
    if (blank != std::wstring_view::npos && blank > 0) return blank + 1;
    return OvPlatform::Utf16::IsPairAt(text, most - 1) ? most - 1 : most;
}

} // namespace

TextShaper::TextShaper(const CXString& face, int charset) {
    try {
        m_deviceContext = CreateDCW(L"DISPLAY", nullptr, nullptr, nullptr);
        Require(m_deviceContext != nullptr, face);
        Require(m_font.emplace(m_deviceContext, AskedFont(face, charset, unitsPerEm)).IsSelected(), face);
        TEXTMETRICW metrics = {};
        Require(GetTextMetricsW(m_deviceContext, &metrics), face);
        m_ascent = metrics.tmAscent;
        m_descent = metrics.tmDescent;
        WCHAR inUse[LF_FACESIZE] = {};
        if (GetTextFaceW(m_deviceContext, LF_FACESIZE, inUse) > 0) m_faceInUse = inUse;
    } catch (...) {
        Close();
        throw;
    }
}

TextShaper::~TextShaper() { Close(); }

void TextShaper::Close() {
    ScriptFreeCache(&m_cache);
    m_font.reset();
    if (m_deviceContext != nullptr) DeleteDC(m_deviceContext);
}

std::vector<GlyphRun> TextShaper::Shape(const CXString& line) const {
    const std::wstring_view text = line.View();
    if (text.empty()) return {};
    std::vector<SCRIPT_ITEM> items = Itemize(text, 0);
    if (items.front().a.fRTL != 0) items = Itemize(text, 1);

    const std::size_t count = items.size() - 1;
    std::vector<BYTE> levels(count);
    std::transform(items.begin(), items.end() - 1, levels.begin(),
                   [](const SCRIPT_ITEM& item) { return static_cast<BYTE>(item.a.s.uBidiLevel); });
    std::vector<int> order(count);
    ThrowIfFailed(ScriptLayout(static_cast<int>(count), levels.data(), order.data(), nullptr));

    std::vector<GlyphRun> runs;
    for (const int index : order) {
        const SCRIPT_ITEM* item = &items[static_cast<std::size_t>(index)];
        const auto begin = static_cast<std::size_t>(item->iCharPos);
        const auto end = static_cast<std::size_t>((item + 1)->iCharPos);
        const std::size_t first = runs.size();
        for (std::wstring_view rest = text.substr(begin, end - begin); !rest.empty();) {
            const std::size_t length = PieceOf(rest);
            runs.push_back(ShapeItem(rest.substr(0, length), item->a));
            rest.remove_prefix(length);
        }
        if (item->a.fRTL != 0) std::reverse(runs.begin() + static_cast<std::ptrdiff_t>(first), runs.end());
    }
    return runs;
}

GlyphRun TextShaper::ShapeItem(std::wstring_view text, SCRIPT_ANALYSIS analysis) const {
    GlyphRun run{std::wstring(text), analysis.fRTL != 0};
    analysis.fLogicalOrder = 1;
    run.clusters.resize(text.size());
    std::vector<WORD> glyphs;
    std::vector<SCRIPT_VISATTR> attributes;
    int count = 0;
    const auto shape = [&](std::size_t room) {
        glyphs.resize(room);
        attributes.resize(room);
        return ScriptShape(m_deviceContext, &m_cache, text.data(), static_cast<int>(text.size()),
                           static_cast<int>(room), &analysis, glyphs.data(), run.clusters.data(),
                           attributes.data(), &count);
    };
    // What is usual, and then what no font goes beyond.
    const std::size_t usual = text.size() * 3 / 2 + 16;
    HRESULT hr = shape(usual);
    if (hr == E_OUTOFMEMORY) hr = shape(64 * usual);
    if (hr == USP_E_SCRIPT_NOT_IN_FONT) {
        analysis.eScript = SCRIPT_UNDEFINED;
        hr = shape(usual);
    }
    ThrowIfFailed(hr);

    std::vector<int> advances(static_cast<std::size_t>(count));
    std::vector<GOFFSET> offsets(static_cast<std::size_t>(count));
    ABC extent = {};
    ThrowIfFailed(ScriptPlace(m_deviceContext, &m_cache, glyphs.data(), count, attributes.data(), &analysis,
                              advances.data(), offsets.data(), &extent));
    for (std::size_t index = 0; index < advances.size(); ++index)
        run.glyphs.push_back({glyphs[index], advances[index], offsets[index]});
    run.width = std::accumulate(advances.begin(), advances.end(), 0);
    return run;
}
