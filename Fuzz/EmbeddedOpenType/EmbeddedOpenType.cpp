// Any bytes as Embedded OpenType data and as a font. What is taken out of the data is its end; a font that
// opens can be measured and cut, and what is cut can be embedded and taken out again.

#include <Fonts/EmbeddedOpenType.h>
#include <Fonts/FontFace.h>
#include <Fonts/FontSubset.h>
#include <FontsAndImages/GdiDeviceContext.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <span>
#include <vector>

namespace {

using namespace OvPlatform;

struct DeviceContext : GdiDeviceContext {
    using GdiDeviceContext::ConvertEmbeddedOpenTypeDataToTtf;
};

/// The font in the data; empty if it is none.
ByteBuffer TakeOut(const ByteBuffer& data) {
    ByteBuffer font = data;
    const HRESULT result = DeviceContext().ConvertEmbeddedOpenTypeDataToTtf(font);
    if (FAILED(result) != font.empty() || font.size() + 90 > std::max<std::size_t>(data.size(), 90))
        std::abort();
    return font;
}

void Embed(const FontFace& face, std::span<const std::byte> font) {
    const auto facts = EmbeddingFacts::Of(face);
    if (!facts) return;
    ByteBuffer data;
    const std::vector<std::byte> header = EmbeddedOpenTypeHeader(face, *facts, font, 1);
    for (const auto bytes : {std::span<const std::byte>(header), font})
        data.appendLpbyte(reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size());
    const ByteBuffer again = TakeOut(data);
    if (!std::ranges::equal(std::as_bytes(std::span(again)), font)) std::abort();
}

void Use(const ByteBuffer& bytes, std::uint32_t index) {
    const auto face = FontFace::Open(std::as_bytes(std::span(bytes)), index);
    if (!face) return;
    (void)face->Width(L"A B\u0301\u0644\u0627\xD835\xDD38");
    const auto own = face->FileOfItsOwn();
    if (!own.empty()) Embed(*face, own);
    FontSubset subset;
    subset.characters = {L'A', L'B', 0x301, 0x644, 0x627};
    subset.glyphs = {1, 0xFFFF};
    const HbBlob cut = subset.CutFrom(*face);
    if (!cut) return;
    unsigned length = 0;
    const char* data = hb_blob_get_data(cut.get(), &length);
    Embed(*face, std::as_bytes(std::span(data, length)));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const ByteBuffer bytes(data, size);
    Use(TakeOut(bytes), 0);
    Use(bytes, size > 0 ? data[size - 1] % 4U : 0);
    return 0;
}
