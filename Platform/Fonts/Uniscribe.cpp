// Text to glyphs, by HarfBuzz, in items that ICU's bidirectional algorithm and scripts make.
#include "Com/FaultInjection.h"
#include "Fonts/DeviceContext.h"
#include "Locale/Utf16.h"

#include <hb.h>
#include <unicode/ubidi.h>
#include <unicode/uchar.h>
#include <unicode/uscript.h>
#include <usp10.h>

#include <algorithm>
#include <memory>
#include <new>
#include <numeric>
#include <string>
#include <utility>
#include <vector>

namespace {

using namespace OvPlatform;

using HbBuffer = std::unique_ptr<hb_buffer_t, Destroyer<hb_buffer_destroy>>;
using Bidi = std::unique_ptr<UBiDi, Destroyer<ubidi_close>>;

/// Runs a call that may throw: callers of such functions expect nothing of the kind.
template <class Call>
HRESULT Guarded(Call&& call) noexcept {
    if (const HRESULT fault = FaultPoint(); FAILED(fault)) return fault;
    try {
        return call();
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    } catch (...) {
        return E_UNEXPECTED;
    }
}

// A script's number in an analysis; SCRIPT_UNDEFINED is none.
WORD NumberOf(UScriptCode script) { return static_cast<WORD>(script + 1); }
hb_script_t ScriptOf(WORD number) {
    return hb_script_from_string(uscript_getShortName(static_cast<UScriptCode>(number - 1)), -1);
}

/// Of the character at the place, which moves behind it; USCRIPT_COMMON for those that go with any.
UScriptCode ScriptAt(const std::u16string& text, int32_t& place) {
    UChar32 character = 0;
    U16_NEXT(text.data(), place, static_cast<int32_t>(text.size()), character);
    UErrorCode status = U_ZERO_ERROR;
    const UScriptCode script = uscript_getScript(character, &status);
    return U_FAILURE(status) || script == USCRIPT_INHERITED || script == USCRIPT_UNKNOWN ? USCRIPT_COMMON
                                                                                         : script;
}

/// One item: a stretch of one level whose characters are of one script, or go with it.
struct Item {
    int32_t begin;
    UBiDiLevel level;
    UScriptCode script;
};

std::vector<Item> ItemsOf(const std::u16string& text, UBiDiLevel paragraphLevel) {
    UErrorCode status = U_ZERO_ERROR;
    const auto length = static_cast<int32_t>(text.size());
    const Bidi bidi(ubidi_openSized(length, 0, &status));
    if (!bidi) throw std::bad_alloc();
    ubidi_setPara(bidi.get(), text.data(), length, paragraphLevel, nullptr, &status);
    const UBiDiLevel* const levels = ubidi_getLevels(bidi.get(), &status);
    if (U_FAILURE(status)) throw std::bad_alloc(); // it refuses no text
    std::vector<Item> items;
    for (int32_t place = 0; place < length;) {
        const int32_t begin = place;
        const UScriptCode script = ScriptAt(text, place);
        Item* const last = items.empty() || items.back().level != levels[begin] ? nullptr : &items.back();
        if (last != nullptr && last->script == USCRIPT_COMMON) last->script = script;
        if (last == nullptr || (script != USCRIPT_COMMON && script != last->script))
            items.push_back({begin, levels[begin], script});
    }
    return items;
}

/// The glyphs of one item in the order of its text.
struct ShapedItem {
    struct Glyph {
        hb_codepoint_t id;
        int cluster; // the first unit
        hb_glyph_position_t position;
    };
    std::vector<Glyph> glyphs;
    bool isRightToLeft = false;
};

ShapedItem ShapeText(const FontFace& face, const std::u16string& text, const SCRIPT_ANALYSIS& analysis) {
    ShapedItem item;
    item.isRightToLeft = analysis.fRTL != 0;
    const HbBuffer buffer(hb_buffer_create());
    hb_buffer_add_utf16(buffer.get(), reinterpret_cast<const std::uint16_t*>(text.data()),
                        static_cast<int>(text.size()), 0, static_cast<int>(text.size()));
    hb_buffer_set_direction(buffer.get(), item.isRightToLeft ? HB_DIRECTION_RTL : HB_DIRECTION_LTR);
    hb_buffer_set_script(buffer.get(), ScriptOf(analysis.eScript));
    hb_shape(face.Font(), buffer.get(), nullptr, 0);
    if (!hb_buffer_allocation_successful(buffer.get())) throw std::bad_alloc();
    unsigned count = 0;
    const hb_glyph_info_t* const infos = hb_buffer_get_glyph_infos(buffer.get(), &count);
    const hb_glyph_position_t* const positions = hb_buffer_get_glyph_positions(buffer.get(), &count);
    for (unsigned index = 0; index < count; ++index)
        item.glyphs.push_back(
            {infos[index].codepoint, static_cast<int>(infos[index].cluster), positions[index]});
    if (item.isRightToLeft) std::reverse(item.glyphs.begin(), item.glyphs.end());
    return item;
}

/// One glyph for each character, by itself.
ShapedItem MapText(const FontFace& face, const std::u16string& text, const SCRIPT_ANALYSIS& analysis) {
    ShapedItem item;
    item.isRightToLeft = analysis.fRTL != 0;
    for (int32_t place = 0; place < static_cast<int32_t>(text.size());) {
        const int32_t begin = place;
        UChar32 character = 0;
        U16_NEXT(text.data(), place, static_cast<int32_t>(text.size()), character);
        const hb_codepoint_t glyph = face.Glyph(static_cast<std::uint32_t>(character));
        hb_glyph_position_t position = {};
        position.x_advance = hb_font_get_glyph_h_advance(face.Font(), glyph);
        item.glyphs.push_back({glyph, begin, position});
    }
    return item;
}

/// What a SCRIPT_CACHE points to.
struct LastItem {
    std::vector<WORD> ids; // in the order in which they were given
    std::vector<ShapedItem::Glyph> glyphs;
    bool isRightToLeft = false;
};

LastItem& CacheOf(SCRIPT_CACHE* cache) {
    if (*cache == nullptr) *cache = new LastItem;
    return *static_cast<LastItem*>(*cache);
}

/// Where the cluster that begins at a glyph ends.
std::size_t ClusterEnd(const std::vector<ShapedItem::Glyph>& glyphs, std::size_t first) {
    std::size_t end = first;
    while (end < glyphs.size() && glyphs[end].cluster == glyphs[first].cluster)
        ++end;
    return end;
}

void GiveClusters(const ShapedItem& item, std::size_t units, bool isReversed, WORD* clusters) {
    const std::size_t count = item.glyphs.size();
    std::size_t first = 0; // glyph of the cluster that the unit is in
    std::size_t next = ClusterEnd(item.glyphs, first);
    for (std::size_t unit = 0; unit < units; ++unit) {
        while (next < count && item.glyphs[next].cluster <= static_cast<int>(unit)) {
            first = next;
            next = ClusterEnd(item.glyphs, first);
        }
        clusters[unit] = static_cast<WORD>(isReversed ? count - 1 - first : first);
    }
}

} // namespace

HRESULT ScriptFreeCache(SCRIPT_CACHE* cache) {
    if (cache == nullptr) return E_INVALIDARG;
    delete static_cast<LastItem*>(std::exchange(*cache, nullptr));
    return S_OK;
}

HRESULT ScriptItemize(const WCHAR* text, int length, int most, const SCRIPT_CONTROL*,
                      const SCRIPT_STATE* state, SCRIPT_ITEM* items, int* count) {
    return Guarded([&] {
        if (text == nullptr || length <= 0 || items == nullptr || most < 2) return E_INVALIDARG;
        const std::u16string units = ToUtf16({text, static_cast<std::size_t>(length)});
        const auto level = static_cast<UBiDiLevel>(state != nullptr ? state->uBidiLevel : 0);
        const std::vector<Item> found = ItemsOf(units, level);
        if (found.size() >= static_cast<std::size_t>(most)) return E_OUTOFMEMORY;
        SCRIPT_ITEM* target = items;
        for (const Item& item : found) {
            *target = {};
            target->iCharPos = item.begin;
            target->a.eScript = NumberOf(item.script) & 0x3FF;
            target->a.fRTL = target->a.fLayoutRTL = item.level & 1;
            target->a.s.uBidiLevel = item.level & 0x1F;
            ++target;
        }
        *target = {};
        target->iCharPos = length;
        if (count != nullptr) *count = static_cast<int>(found.size());
        return S_OK;
    });
}

HRESULT ScriptLayout(int count, const BYTE* levels, int* visualToLogical, int* logicalToVisual) {
    return Guarded([&] {
        if (count <= 0 || levels == nullptr) return E_INVALIDARG;
        std::vector<int32_t> order(static_cast<std::size_t>(count));
        ubidi_reorderVisual(levels, count, order.data());
        for (int visual = 0; visual < count; ++visual) {
            const int32_t logical = order[static_cast<std::size_t>(visual)];
            if (visualToLogical != nullptr) visualToLogical[visual] = logical;
            if (logicalToVisual != nullptr) logicalToVisual[logical] = visual;
        }
        return S_OK;
    });
}

HRESULT ScriptShape(HDC handle, SCRIPT_CACHE* cache, const WCHAR* text, int length, int most,
                    SCRIPT_ANALYSIS* analysis, WORD* glyphs, WORD* clusters, SCRIPT_VISATTR* attributes,
                    int* count) {
    return Guarded([&] {
        if (cache == nullptr || text == nullptr || length <= 0 || analysis == nullptr || glyphs == nullptr ||
            clusters == nullptr || attributes == nullptr || count == nullptr)
            return E_INVALIDARG;
        if (handle == nullptr) return E_PENDING;
        const auto context = DeviceContext::Find(handle);
        if (!context) return E_INVALIDARG;
        const DeviceContext::Selection font = context->Selected();
        if (!font.choice) return E_FAIL;
        const std::u16string units = ToUtf16({text, static_cast<std::size_t>(length)});
        const FontFace& face = *font.choice->face;
        ShapedItem item = analysis->eScript == SCRIPT_UNDEFINED ? MapText(face, units, *analysis)
                                                                : ShapeText(face, units, *analysis);
        constexpr std::size_t mostNumbered = 0xFFFF; // by a cluster
        if (item.glyphs.size() > mostNumbered) return E_INVALIDARG;
        if (item.glyphs.size() > static_cast<std::size_t>(most)) return E_OUTOFMEMORY;
        const bool isReversed = item.isRightToLeft && analysis->fLogicalOrder == 0;
        GiveClusters(item, units.size(), isReversed, clusters);
        if (isReversed) std::reverse(item.glyphs.begin(), item.glyphs.end());
        LastItem last{{}, std::move(item.glyphs), item.isRightToLeft};
        for (std::size_t index = 0; index < last.glyphs.size(); ++index) {
            const ShapedItem::Glyph& glyph = last.glyphs[index];
            glyphs[index] = static_cast<WORD>(glyph.id);
            attributes[index] = {};
            attributes[index].fClusterStart = index == 0 || last.glyphs[index - 1].cluster != glyph.cluster;
            attributes[index].fZeroWidth = glyph.position.x_advance == 0;
            last.ids.push_back(glyphs[index]);
        }
        *count = static_cast<int>(last.glyphs.size());
        CacheOf(cache) = std::move(last);
        return S_OK;
    });
}

HRESULT ScriptPlace(HDC handle, SCRIPT_CACHE* cache, const WORD* glyphs, int count, const SCRIPT_VISATTR*,
                    SCRIPT_ANALYSIS* analysis, int* advances, GOFFSET* offsets, ABC* extent) {
    return Guarded([&] {
        if (cache == nullptr || glyphs == nullptr || count <= 0 || analysis == nullptr || advances == nullptr)
            return E_INVALIDARG;
        if (handle == nullptr) return E_PENDING;
        const auto context = DeviceContext::Find(handle);
        if (!context) return E_INVALIDARG;
        const DeviceContext::Selection font = context->Selected();
        if (!font.choice) return E_FAIL;
        const LastItem& last = CacheOf(cache);
        const bool isLast = std::equal(last.ids.begin(), last.ids.end(), glyphs, glyphs + count);
        for (int index = 0; index < count; ++index) {
            hb_glyph_position_t position = {};
            if (isLast)
                position = last.glyphs[static_cast<std::size_t>(index)].position;
            else
                position.x_advance = hb_font_get_glyph_h_advance(font.choice->face->Font(), glyphs[index]);
            advances[index] = font.Pixels(position.x_advance);
            if (offsets != nullptr)
                offsets[index] = {font.Pixels(analysis->fRTL != 0 ? -position.x_offset : position.x_offset),
                                  font.Pixels(position.y_offset)};
        }
        if (extent != nullptr)
            *extent = {0, static_cast<UINT>(std::max(std::accumulate(advances, advances + count, 0), 0)), 0};
        return S_OK;
    });
}
